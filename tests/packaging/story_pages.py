"""The pages of setup and uninstaller, used with mouse and keyboard, in both languages."""
import contextlib
import os
import pathlib
import re
import shutil
import subprocess
import unittest

from installed import KEY, PROJECT, RELEASE, RIGHTS, VERSION, Installation, Wizard, until

SETUP = "odomira-setup-under-test.exe"


def stored_settings():
    """Section and name of every value that the sources of the program store."""
    found = set()
    for folder in ("app", "forms"):
        for path in pathlib.Path(PROJECT, folder).rglob("*.cpp"):
            source = path.read_text(encoding="utf-8")
            own = re.search(r'section = L"(\w+)"', source)
            for section, name in re.findall(r'SaveRegistryValue\((?:L"(\w+)"|section), L"(\w+)"', source):
                found.add((section or own[1], name))
    return found


class Pages(Installation):
    @contextlib.contextmanager
    def held_open(self, name):
        """Another program has the file open, so that it cannot be deleted."""
        with self.machine.start([RIGHTS, "hold", self.program.folder + "\\" + name], stdin=subprocess.PIPE,
                                stdout=subprocess.PIPE) as holder:
            self.assertEqual(holder.stdout.readline().strip(), b"held")
            yield
            holder.stdin.close()

    def open_setup(self, path=None):
        path = path or self.copy_setup()
        named = "C:\\" + SETUP
        os.rename(self.machine.path(path), self.machine.path(named))
        process = self.machine.start([named])
        return process, Wizard(self.program, SETUP)

    def open_uninstaller(self):
        """Starts the uninstaller, which runs from a copy of itself with another name."""
        self.machine.run(["C:\\Odomira\\uninstall.exe"])
        return Wizard(self.program, "Un.exe")

    def exists(self, name):
        return os.path.exists(self.program.path(name))

    def pages_shown(self):
        """Registers a program that records the web pages that are opened. Returns a function that reads the record."""
        record = "C:\\shown.txt"
        for key, value in ((".html", "page"), ("page\\shell\\open\\command",
                                               f"C:\\windows\\system32\\cmd.exe /c echo %1>> {record}")):
            self.machine.run(["reg", "add", "HKLM\\Software\\Classes\\" + key, "/ve", "/d", value, "/f"],
                             stdout=subprocess.DEVNULL)

        def shown():
            if not os.path.exists(self.machine.path(record)):
                return []
            with open(self.machine.path(record), encoding="utf-8") as file:
                return [line.strip().strip('"') for line in file]
        return shown

    def on_the_desktop(self):
        return os.path.exists(self.machine.path("C:\\users\\Public\\Desktop\\Odomira.lnk"))


class English(Pages):
    def test_setup_runs_from_page_to_page_and_starts_the_program(self):
        process, setup = self.open_setup()
        language = setup.page("Which language do you want to use?")
        self.assertEqual(language.text, "Odomira Setup")
        self.assertEqual([one.text for one in language.controls("Button")], ["English", "Svenska", "Cancel"])
        setup.press(language, "English")
        setup.press(setup.page("With Odomira you keep"), "Next >")
        folder = setup.page("Everyone who uses this computer may change")
        self.assertEqual(folder.control("Edit").text, "C:\\Odomira")
        setup.press(folder, "Install")
        done = setup.page("Odomira is installed")
        done.control("Button", "Read the guide")
        setup.press(done, "Finish")
        self.assertEqual(process.wait(20), 0)
        self.program.main_window().button("Add...")
        self.assertEqual(self.program.setting("Settings", "Language"), "0")
        self.assertFalse(self.on_the_desktop())

    def test_cancelling_the_choice_of_language_installs_nothing(self):
        process, setup = self.open_setup()
        setup.press(setup.page("Which language do you want to use?"), "Cancel")
        self.assertEqual(process.wait(20), 1)
        self.assertIsNone(self.entry("DisplayName"))

    def test_enter_chooses_the_language_of_windows(self):
        _, setup = self.open_setup()
        language = setup.page("Which language do you want to use?")
        until(lambda: self.program.eyes.ask("focus")["window"] == language.handle, "focus in the language dialog")
        setup.keys("Return")
        setup.page("With Odomira you keep")

    def test_another_folder_can_be_entered_if_the_first_contains_other_files(self):
        os.mkdir(self.machine.path("C:\\Odomira"))
        with open(self.machine.path("C:\\Odomira\\other.txt"), "wb"):
            pass
        _, setup = self.open_setup()
        setup.press(setup.page("Which language do you want to use?"), "English")
        setup.press(setup.page("With Odomira you keep"), "Next >")
        folder = setup.page("Everyone who uses this computer may change")
        setup.press(folder, "Install")
        setup.press(setup.page("Odomira needs a folder of its own"), "OK")
        edit = folder.control("Edit")
        edit.click()
        until(lambda: edit.focused, "focus on the folder")
        setup.keys("End")
        setup.write("2")
        until(lambda: edit.text == "C:\\Odomira2", "another folder")
        setup.press(folder, "Install")
        setup.page("Odomira is installed")
        self.assertTrue(os.path.exists(self.machine.path("C:\\Odomira2\\odomira.exe")))
        self.assertEqual(os.listdir(self.machine.path("C:\\Odomira")), ["other.txt"])

    def test_an_upgrade_shows_both_versions_and_does_not_ask_for_a_folder(self):
        self.install()
        process, setup = self.open_setup(self.another_version("99.1.2"))
        page = setup.page("Setup replaces it with version 99.1.2")
        self.assertIn(f"Odomira {VERSION} is installed in\r\nC:\\Odomira\r\n", "\n".join(page.texts()))
        setup.press(page, "Upgrade")
        done = setup.page("Odomira is installed")
        done.control("Button", "&Start Odomira").click()
        setup.press(done, "Finish")
        self.assertEqual(process.wait(20), 0)
        self.assertEqual(self.entry("DisplayVersion"), "99.1.2")

    def test_an_upgrade_waits_for_the_program_to_be_closed(self):
        self.install()
        self.program.start()
        self.program.main_window()
        process, setup = self.open_setup()
        setup.press(setup.page("Setup replaces it with"), "Install")
        setup.page("Odomira is running.")
        self.program.end()

        def installed():
            """Windows may keep the program file locked for a moment. Until then the message appears again."""
            for window in setup.windows():
                texts = "".join(window.texts())
                if "Odomira is running." in texts:
                    setup.press(window, "Retry")
                    window.wait_gone()
                elif "Odomira is installed" in texts:
                    return window
            return None
        done = until(installed, "last page")
        done.control("Button", "&Start Odomira").click()
        setup.press(done, "Finish")
        self.assertEqual(process.wait(20), 0)

    def test_nothing_is_changed_when_the_user_does_not_close_the_program(self):
        self.install()
        self.program.start()
        self.program.main_window()
        process, setup = self.open_setup(self.another_version("99.1.2"))
        setup.press(setup.page("Setup replaces it with"), "Upgrade")
        setup.press(setup.page("Odomira is running."), "Cancel")
        setup.press(setup.page("Nothing was changed."), "OK")
        self.assertEqual(process.wait(20), 3)
        self.assertEqual(self.entry("DisplayVersion"), VERSION)
        uninstaller = self.open_uninstaller()
        uninstaller.press(uninstaller.page("Odomira is running."), "Cancel")
        uninstaller.press(uninstaller.page("Nothing was changed."), "OK")
        until(lambda: not uninstaller.windows(), "end of the uninstaller")
        self.assertTrue(self.exists("odomira.exe"))

    def test_an_older_version_replaces_a_newer_one_only_after_confirmation(self):
        self.upgrade("99.1.2")
        process, setup = self.open_setup()
        question = setup.page("A newer version of Odomira, 99.1.2, is installed.")
        setup.press(question, "No")
        self.assertEqual(process.wait(20), 1)
        self.assertEqual(self.entry("DisplayVersion"), "99.1.2")
        process, setup = self.open_setup()
        setup.press(setup.page("A newer version of Odomira, 99.1.2, is installed."), "Yes")
        setup.press(setup.page("Setup replaces it with"), "Install")
        setup.page("Odomira is installed")
        self.assertEqual(self.entry("DisplayVersion"), VERSION)

    def test_an_older_version_replaces_an_unregistered_newer_program_only_after_confirmation(self):
        older = self.another_version("0.9.0")
        os.mkdir(self.machine.path("C:\\Odomira"))
        shutil.copy(os.path.join(RELEASE, "odomira.exe"), self.program.path("odomira.exe"))
        process, setup = self.open_setup(older)
        setup.press(setup.page("Which language do you want to use?"), "English")
        setup.press(setup.page("With Odomira you keep"), "Next >")
        for answer in ("No", "Yes"):
            folder = setup.page("Everyone who uses this computer may change")
            setup.press(folder, "Install")
            setup.press(setup.page(f"A newer version of Odomira, {VERSION}, is installed."), answer)
        done = setup.page("Odomira is installed")
        done.control("Button", "&Start Odomira").click()
        setup.press(done, "Finish")
        self.assertEqual(process.wait(20), 0)
        self.assertEqual(self.entry("DisplayVersion"), "0.9.0")

    def test_a_desktop_shortcut_is_made_on_request_and_removed_with_the_program(self):
        process, setup = self.open_setup()
        setup.press(setup.page("Which language do you want to use?"), "English")
        setup.press(setup.page("With Odomira you keep"), "Next >")
        setup.press(setup.page("Everyone who uses this computer may change"), "Install")
        done = setup.page("Odomira is installed")
        shortcut = done.control("Button", "Create a shortcut on the &desktop")
        self.assertFalse(shortcut.checked)
        shortcut.click()
        done.control("Button", "&Start Odomira").click()
        setup.press(done, "Finish")
        self.assertEqual(process.wait(20), 0)
        self.assertTrue(self.on_the_desktop())
        self.uninstall()
        self.assertFalse(self.on_the_desktop())

    def test_uninstalling_keeps_the_journal_by_default_and_shows_where_it_is(self):
        self.install()
        self.program.journal = b"mine"
        uninstaller = self.open_uninstaller()
        page = uninstaller.page("Keep the journal and the settings")
        self.assertTrue(page.control("Button", "&Keep the journal and the settings").checked)
        uninstaller.press(page, "Uninstall")
        last = uninstaller.page("The journal is still here:\r\nC:\\Odomira\\datasource.jrn")
        uninstaller.press(last, "Finish")
        self.assertIsNone(self.entry("DisplayName"))
        self.assertEqual(self.program.journal, b"mine")
        self.assertEqual(self.program.setting("Settings", "Language"), "0")

    def test_uninstalling_deletes_journal_and_every_setting_only_after_choice_and_confirmation(self):
        self.install()
        self.program.journal = b"mine"
        self.assertGreater(len(stored_settings()), 8)
        for section, name in stored_settings():
            self.program.set_setting(section, name, "mine")
        uninstaller = self.open_uninstaller()
        page = uninstaller.page("Keep the journal and the settings")
        page.control("Button", "&Permanently delete the journal and the settings").click()
        uninstaller.press(page, "Uninstall")
        uninstaller.press(uninstaller.page("You can't undo this."), "No")
        self.assertTrue(self.exists("odomira.exe"))
        uninstaller.press(page, "Uninstall")
        uninstaller.press(uninstaller.page("You can't undo this."), "Yes")
        uninstaller.press(uninstaller.page("The journal and the settings are deleted."), "Finish")
        self.assertFalse(os.path.exists(self.machine.path("C:\\Odomira")))
        self.assertNotEqual(self.machine.run(["reg", "query", "HKLM\\Software\\Velmora"]), 0)

    def test_the_last_page_names_a_journal_that_could_not_be_deleted(self):
        self.install()
        self.program.journal = b"mine"
        uninstaller = self.open_uninstaller()
        page = uninstaller.page("Keep the journal and the settings")
        page.control("Button", "&Permanently delete the journal and the settings").click()
        uninstaller.press(page, "Uninstall")
        question = uninstaller.page("You can't undo this.")
        with self.held_open("datasource.jrn"):
            uninstaller.press(question, "Yes")
            last = uninstaller.page("the journal could not be deleted:\r\nC:\\Odomira\\datasource.jrn")
        uninstaller.press(last, "Finish")
        self.assertEqual(self.program.journal, b"mine")

    def test_deleting_the_settings_keeps_keys_of_users_and_targets_of_links(self):
        self.install()
        self.program.set_setting("Userinfo", "Company", "Cars & Co")
        theirs = "Software\\Elsewhere"
        for key in (theirs, theirs + "\\Below", KEY + "Settings\\Made by a user"):
            self.machine.run(["reg", "add", "HKLM\\" + key, "/v", "Language", "/d", "theirs", "/f"])
        self.ask("link", KEY + "Planted", theirs)
        self.ask("link", KEY + "Print\\Planted", theirs)
        self.machine.run(["reg", "delete", "HKLM\\" + KEY + "Userinfo", "/f"])
        self.ask("link", KEY + "Userinfo", theirs)
        uninstaller = self.open_uninstaller()
        page = uninstaller.page("Keep the journal and the settings")
        page.control("Button", "&Permanently delete the journal and the settings").click()
        uninstaller.press(page, "Uninstall")
        uninstaller.press(uninstaller.page("You can't undo this."), "Yes")
        uninstaller.press(uninstaller.page("The journal and the settings are deleted."), "Finish")

        def value(key):
            return self.program.eyes.ask("settings-read", key, "Language")
        self.assertEqual((value(theirs), value(theirs + "\\Below")), ("theirs", "theirs"))
        self.assertEqual(value(KEY + "Settings\\Made by a user"), "theirs")
        self.assertIsNone(value(KEY + "Settings"))


class Swedish(Pages):
    locale = "sv_SE.UTF-8"

    def test_setup_and_uninstaller_are_in_swedish(self):
        process, setup = self.open_setup()
        language = setup.page("Vilket språk vill du använda?")
        self.assertEqual(language.text, "Installation av Odomira")
        self.assertEqual([one.text for one in language.controls("Button")], ["English", "Svenska", "Avbryt"])
        setup.press(language, "Svenska")
        setup.press(setup.page("Med Odomira för du körjournal."), "Nästa >")
        setup.press(setup.page("Odomira sparar journalen i programmets mapp."), "Installera")
        done = setup.page("Odomira är installerat")
        shown = self.pages_shown()
        done.control("Button", "Läs handboken").click()
        until(lambda: shown() == ["C:\\Odomira\\guide.sv.html"], "the guide")
        done.control("Button", "&Starta Odomira").click()
        setup.press(done, "Slutför")
        self.assertEqual(process.wait(20), 0)
        self.assertEqual(self.program.setting("Settings", "Language"), "100")
        uninstaller = self.open_uninstaller()
        uninstaller.press(uninstaller.page("Behåll journalen och inställningarna"), "Avinstallera")
        uninstaller.press(uninstaller.page("Journalen finns kvar här:\r\nC:\\Odomira\\datasource.jrn"), "Slutför")
        until(lambda: not self.exists("odomira.exe"), "end of the uninstaller")
        self.assertTrue(self.exists("datasource.jrn"))


if __name__ == "__main__":
    unittest.main()
