"""The setup and the uninstaller as a user sees them, with mouse and keyboard, in both languages."""
import os
import unittest

from installed import KEY, Installation, Wizard, until

SETUP = "odomira-setup-under-test.exe"


class Pages(Installation):
    def open_setup(self):
        path = self.put()
        named = "C:\\" + SETUP
        os.rename(self.machine.path(path), self.machine.path(named))
        process = self.machine.start([named])
        return process, Wizard(self.program, SETUP)

    def open_uninstaller(self):
        """It runs from a copy of itself, which has a name of its own."""
        self.machine.run(["C:\\Odomira\\uninstall.exe"])
        return Wizard(self.program, "Un.exe")

    def exists(self, name):
        return os.path.exists(self.program.path(name))


class English(Pages):
    def test_setup_runs_from_page_to_page_and_starts_the_program(self):
        process, setup = self.open_setup()
        language = setup.page("Language / Språk:")
        self.assertEqual(language.control("ComboBox").lines, ["English", "Svenska"])
        setup.press(language, "OK")
        setup.press(setup.page("Journal and settings of an earlier version"), "Next >")
        folder = setup.page("Everybody who uses this computer gets the right")
        self.assertEqual(folder.control("Edit").text, "C:\\Odomira")
        setup.press(folder, "Install")
        setup.press(setup.page("Odomira is installed"), "Finish")
        self.assertEqual(process.wait(20), 0)
        self.program.main_window().button("Add...")
        self.assertEqual(self.program.setting("Settings", "Language"), "0")

    def test_a_folder_of_something_else_can_be_corrected(self):
        os.mkdir(self.machine.path("C:\\Odomira"))
        with open(self.machine.path("C:\\Odomira\\other.txt"), "wb"):
            pass
        _, setup = self.open_setup()
        setup.press(setup.page("Language / Språk:"), "OK")
        setup.press(setup.page("Journal and settings of an earlier version"), "Next >")
        folder = setup.page("Everybody who uses this computer gets the right")
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

    def test_an_upgrade_waits_for_the_program_to_be_closed_and_asks_for_no_folder(self):
        self.install()
        self.program.start()
        self.program.main_window()
        process, setup = self.open_setup()
        setup.press(setup.page("Journal and settings of an earlier version"), "Next >")
        question = setup.page("Odomira is running.")
        self.program.end()
        setup.press(question, "Retry")
        done = setup.page("Odomira is installed")
        done.control("Button", "Start Odomira").click()
        setup.press(done, "Finish")
        self.assertEqual(process.wait(20), 0)

    def test_uninstalling_keeps_the_journal_unless_told_otherwise(self):
        self.install()
        self.program.journal = b"mine"
        uninstaller = self.open_uninstaller()
        page = uninstaller.page("Keep the journal and the settings")
        self.assertTrue(page.control("Button", "Keep the journal and the settings").checked)
        uninstaller.press(page, "Uninstall")
        until(lambda: self.entry("DisplayName") is None, "end of the uninstaller")
        self.assertEqual(self.program.journal, b"mine")
        self.assertEqual(self.program.setting("Settings", "Language"), "0")

    def test_uninstalling_deletes_the_journal_when_told_so(self):
        self.install()
        self.program.journal = b"mine"
        uninstaller = self.open_uninstaller()
        page = uninstaller.page("Keep the journal and the settings")
        page.control("Button", "Delete the journal and the settings for good").click()
        uninstaller.press(page, "Uninstall")
        until(lambda: self.entry("DisplayName") is None, "end of the uninstaller")
        self.assertFalse(os.path.exists(self.machine.path("C:\\Odomira")))
        self.assertIsNone(self.program.setting("Settings", "Language"))
        self.assertNotEqual(self.machine.run(["reg", "query", "HKLM\\" + KEY.rstrip("\\")]), 0)


class Swedish(Pages):
    locale = "sv_SE.UTF-8"

    def test_setup_and_uninstaller_speak_swedish(self):
        process, setup = self.open_setup()
        language = setup.page("Language / Språk:")
        self.assertEqual(language.control("ComboBox").text, "Svenska")
        setup.press(language, "OK")
        setup.press(setup.page("En tidigare versions journal"), "Nästa >")
        setup.press(setup.page("Odomira sparar sin journal i programmets mapp."), "Installera")
        done = setup.page("Odomira är installerat")
        done.control("Button", "Starta Odomira").click()
        setup.press(done, "Slutför")
        self.assertEqual(process.wait(20), 0)
        self.assertEqual(self.program.setting("Settings", "Language"), "100")
        uninstaller = self.open_uninstaller()
        uninstaller.press(uninstaller.page("Behåll journalen och inställningarna"), "Avinstallera")
        until(lambda: not self.exists("odomira.exe"), "end of the uninstaller")
        self.assertTrue(self.exists("datasource.jrn"))


if __name__ == "__main__":
    unittest.main()
