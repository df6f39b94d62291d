"""The silent setup: the installed files, upgrades, the uninstaller."""
import os
import shutil
import subprocess
import tempfile
import unittest

from installed import GUIDES, INSTALLED, RELEASE, VERSION, Installation, package, until


class Place(Installation):
    def test_setup_creates_program_files_uninstall_entry_and_shortcut(self):
        self.install()
        self.assertEqual(sorted(os.listdir(self.machine.path("C:\\Odomira"))), INSTALLED)
        self.assertEqual(self.program.journal, b"")
        self.assertEqual({name: self.entry(name) for name in (
            "DisplayName", "DisplayVersion", "Publisher", "DisplayIcon", "InstallLocation", "UninstallString",
            "QuietUninstallString")}, {
            "DisplayName": "Odomira", "DisplayVersion": VERSION, "Publisher": "Brenholt",
            "DisplayIcon": "C:\\Odomira\\odomira.exe,0", "InstallLocation": "C:\\Odomira",
            "UninstallString": '"C:\\Odomira\\uninstall.exe"',
            "QuietUninstallString": '"C:\\Odomira\\uninstall.exe" /S'})
        shortcut = "C:\\ProgramData\\Microsoft\\Windows\\Start Menu\\Programs\\Odomira.lnk"
        with open(self.machine.path(shortcut), "rb") as file:
            self.assertIn(b"\0C:\\Odomira\\odomira.exe\0", file.read())

    def test_the_first_start_shows_no_message(self):
        self.install()
        self.program.start()
        self.program.main_window()
        self.assertEqual(self.program.message_boxes(), [])
        self.program.end()

    def test_the_folder_option_chooses_the_folder(self):
        # /D must not be quoted.
        self.install(*"/D=C:\\Our cars\\Journal".split(" "))
        self.assertTrue(os.path.exists(self.machine.path("C:\\Our cars\\Journal\\odomira.exe")))
        self.assertEqual(self.entry("InstallLocation"), "C:\\Our cars\\Journal")

    def test_a_folder_with_other_files_is_refused_and_unchanged(self):
        folder = self.machine.path("C:\\Tools")
        os.mkdir(folder)
        with open(os.path.join(folder, "other.txt"), "wb") as file:
            file.write(b"mine")
        self.install("/D=C:\\Tools", expect=4, env=self.environment_with_request_log())
        self.assertEqual(os.listdir(folder), ["other.txt"])
        self.assertEqual(self.rights_set("C:\\Tools"), [])
        self.assertIsNone(self.entry("DisplayName"))

    def test_an_upgrade_to_another_folder_is_refused(self):
        self.install()
        self.install("/D=C:\\Elsewhere", expect=4)
        self.assertFalse(os.path.exists(self.machine.path("C:\\Elsewhere")))


class Guides(Installation):
    english = "C:\\ProgramData\\Microsoft\\Windows\\Start Menu\\Programs\\Odomira Guide.lnk"
    swedish = "C:\\ProgramData\\Microsoft\\Windows\\Start Menu\\Programs\\Handbok för Odomira.lnk"

    def page(self, name):
        with open(self.program.path(name), "rb") as file:
            return file.read()

    def on_the_start_menu(self):
        """The shortcuts to the guide. Checks which file each opens."""
        opened = {}
        for entry, guide in ((self.english, b"guide.html"), (self.swedish, b"guide.sv.html")):
            if os.path.exists(self.machine.path(entry)):
                with open(self.machine.path(entry), "rb") as file:
                    self.assertIn(b"\0C:\\Odomira\\" + guide + b"\0", file.read())
                opened[entry] = guide
        return list(opened)

    def test_setup_installs_both_and_adds_the_one_in_its_language_to_the_start_menu(self):
        self.install()
        for name in GUIDES:
            with open(os.path.join(RELEASE, name), "rb") as file:
                self.assertEqual(self.page(name), file.read(), name)
        self.assertEqual(self.on_the_start_menu(), [self.english])
        self.install("/LANG=sv")
        self.assertEqual(self.on_the_start_menu(), [self.swedish])
        self.uninstall()
        self.assertEqual(self.on_the_start_menu(), [])
        self.assertEqual(os.listdir(self.machine.path("C:\\Odomira")), ["datasource.jrn"])

    def test_an_upgrade_replaces_both_guides(self):
        with tempfile.TemporaryDirectory() as folder:
            for name in (*GUIDES, "odomira.exe"):
                shutil.copy(os.path.join(RELEASE, name), folder)
            for name in GUIDES:
                with open(os.path.join(folder, name), "ab") as file:
                    file.write(b"<!-- of the next version -->")
            setup, _ = package("99.0.0", folder, program=os.path.join(folder, "odomira.exe"))
            setup = self.copy_setup(setup)
        self.install()
        with open(self.program.path("guide.html"), "ab") as file:
            file.write(b"changed by a user")
        self.assertEqual(self.machine.run([setup, "/S"]), 0)
        for name in GUIDES:
            self.assertTrue(self.page(name).endswith(b"</html>\n<!-- of the next version -->"), name)

    def test_f1_opens_an_existing_section_of_the_installed_guide(self):
        self.install("/LANG=sv")
        shown = "C:\\shown.txt"
        self.machine.run(["reg", "add", "HKLM\\Software\\Classes\\https\\shell\\open\\command", "/d",
                          f"C:\\windows\\system32\\cmd.exe /c echo %1> {shown}", "/f"], stdout=subprocess.DEVNULL)
        self.program.start()
        self.program.ready()
        self.program.keys("F1")

        def address():
            if os.path.exists(self.machine.path(shown)):
                with open(self.machine.path(shown), "rb") as file:
                    return file.read().decode().strip()
            return None
        page, _, section = until(address, "browser").partition("#")
        self.assertEqual(page, "file:///C:/Odomira/guide.sv.html")
        self.assertIn(f'<h2 id="{section}">'.encode(), self.page("guide.sv.html"))
        self.program.end()


class Language(Installation):
    def test_setup_stores_english_on_an_english_system(self):
        self.install()
        self.assertEqual(self.program.setting("Settings", "Language"), "0")

    def test_the_language_option_overrides_the_language_of_the_system(self):
        self.install("/LANG=sv")
        self.assertEqual(self.program.setting("Settings", "Language"), "100")

    def test_setup_keeps_a_stored_language(self):
        self.program.set_setting("Settings", "Language", "0")
        self.install("/LANG=sv")
        self.assertEqual(self.program.setting("Settings", "Language"), "0")

    def test_the_next_setup_keeps_the_language_of_setup_and_uninstaller(self):
        self.install("/LANG=sv")
        self.install()
        self.assertEqual(self.entry("Setup Language"), "1053")


class SwedishSystem(Installation):
    locale = "sv_SE.UTF-8"

    def test_setup_stores_swedish_on_a_swedish_system(self):
        self.install()
        self.assertEqual(self.program.setting("Settings", "Language"), "100")
        self.program.start()
        self.program.main_window().button("Lägg till...")
        self.program.end()


class Life(Installation):
    def test_upgrade_and_uninstallation_keep_journal_and_settings(self):
        self.install()
        self.program.start()
        self.program.add_day("Add...", "250.5", "To the coast")
        self.program.end()
        self.program.set_setting("Userinfo", "Company", "Cars & Co")
        self.program.set_setting("Settings", "Langdenhet", "miles")
        path = self.program.path("datasource.jrn")
        journal, when = self.program.journal, os.stat(path).st_mtime_ns

        self.upgrade("99.1.2")
        self.assertEqual(self.entry("DisplayVersion"), "99.1.2")
        self.assertEqual((self.program.journal, os.stat(path).st_mtime_ns), (journal, when))
        self.program.start()
        self.assertIn("To the coast", self.program.main_window().control("ListBox").lines[0])
        self.program.end()

        self.uninstall()
        self.assertEqual(os.listdir(self.machine.path("C:\\Odomira")), ["datasource.jrn"])
        self.assertEqual((self.program.journal, os.stat(path).st_mtime_ns), (journal, when))
        self.assertEqual(self.program.setting("Userinfo", "Company"), "Cars & Co")
        self.assertFalse(os.path.exists(self.machine.path(
            "C:\\ProgramData\\Microsoft\\Windows\\Start Menu\\Programs\\Odomira.lnk")))

        self.install()
        self.assertEqual(self.program.journal, journal)
        self.assertEqual(self.program.setting("Settings", "Langdenhet"), "miles")

    def test_a_silent_setup_does_not_replace_a_newer_version(self):
        self.upgrade("1.10.0")
        self.assertEqual(self.machine.run([self.another_version("1.9.0"), "/S"]), 6)
        self.assertEqual(self.entry("DisplayVersion"), "1.10.0")
        self.uninstall()
        self.assertEqual(self.machine.run([self.another_version("1.9.0"), "/S"]), 0)
        self.assertEqual(self.entry("DisplayVersion"), "1.9.0")

    def test_a_silent_setup_does_not_replace_a_newer_program_that_no_setup_has_registered(self):
        older = self.another_version("0.9.0")
        os.mkdir(self.machine.path("C:\\Odomira"))
        shutil.copy(os.path.join(RELEASE, "odomira.exe"), self.program.path("odomira.exe"))
        self.assertEqual(self.machine.run([older, "/S"]), 6)
        self.assertIsNone(self.entry("DisplayVersion"))
        self.install()
        self.assertEqual(self.entry("DisplayVersion"), VERSION)

    def test_an_upgrade_replaces_a_read_only_program_file(self):
        self.install()
        self.machine.run(["attrib", "+r", "C:\\Odomira\\odomira.exe"])
        self.upgrade("99.0.0")
        self.assertTrue(os.access(self.program.path("odomira.exe"), os.R_OK))

    def test_setup_refuses_and_keeps_the_read_only_file_of_a_running_program(self):
        self.install()
        self.program.start()
        self.program.main_window()
        self.machine.run(["attrib", "+r", "C:\\Odomira\\odomira.exe"])
        self.install(expect=3)
        self.assertEqual(os.stat(self.program.path("odomira.exe")).st_mode & 0o222, 0)

    def test_setup_and_uninstaller_change_nothing_while_the_program_runs(self):
        self.install()
        self.program.start()
        self.program.main_window()
        self.install(expect=3)
        # _?= runs the uninstaller itself instead of a copy, so that its exit code is available.
        self.assertEqual(self.machine.run(["C:\\Odomira\\uninstall.exe", "/S", "_?=C:\\Odomira"]), 3)
        self.assertTrue(os.path.exists(self.program.path("odomira.exe")))
        self.assertEqual(self.entry("DisplayName"), "Odomira")
        self.program.end()
        self.install()


if __name__ == "__main__":
    unittest.main()
