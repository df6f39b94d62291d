"""The silent setup: what it puts where, the rights it gives, upgrades, uninstalling."""
import os
import subprocess
import unittest

from installed import KEY, RIGHTS, VERSION, Installation

USERS, ADMINISTRATORS, SYSTEM = "S-1-5-32-545", "S-1-5-32-544", "S-1-5-18"
JOURNAL = b"""'Source file for Odomira\r
'Do not change this file unless absolutely sure.\r
2004-02-12     17 Home - office\r
"""


class Place(Installation):
    def test_program_entry_and_shortcut_are_in_place(self):
        self.install()
        self.assertEqual(sorted(os.listdir(self.machine.path("C:\\Odomira"))),
                         ["datasource.jrn", "odomira.exe", "uninstall.exe"])
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

    def test_a_new_user_meets_no_error_at_the_first_start(self):
        self.install()
        self.program.start()
        self.program.main_window()
        self.assertEqual(self.program.message_boxes(), [])
        self.program.end()

    def test_a_folder_may_be_chosen(self):
        # Unquoted, as /D wants it.
        self.install(*"/D=C:\\Our cars\\Journal".split(" "))
        self.assertTrue(os.path.exists(self.machine.path("C:\\Our cars\\Journal\\odomira.exe")))
        self.assertEqual(self.entry("InstallLocation"), "C:\\Our cars\\Journal")

    def test_a_folder_of_something_else_is_refused_and_left_alone(self):
        folder = self.machine.path("C:\\Tools")
        os.mkdir(folder)
        with open(os.path.join(folder, "other.txt"), "wb") as file:
            file.write(b"mine")
        environment = dict(self.machine.environment, WINEDEBUG="+server")
        self.install("/D=C:\\Tools", expect=4, env=environment)
        self.assertEqual(os.listdir(folder), ["other.txt"])
        self.assertEqual(self.rights_given("C:\\Tools"), [])
        self.assertIsNone(self.entry("DisplayName"))

    def test_an_installed_program_does_not_move_by_an_upgrade(self):
        self.install()
        self.install("/D=C:\\Elsewhere", expect=4)
        self.assertFalse(os.path.exists(self.machine.path("C:\\Elsewhere")))


class Rights(Installation):
    def test_users_get_the_settings_keys_and_nobody_is_named(self):
        self.ask("lock", KEY + "Settings")
        self.install()
        for key in ("", "\\Settings", "\\Userinfo", "\\Print"):
            # CCDCLCSWRPWPRC is 0x2003f, what the program asks for.
            self.assertEqual(self.ask("key", KEY.rstrip("\\") + key),
                             "O:BAD:(A;CI;KA;;;SY)(A;CI;KA;;;BA)(A;CI;CCDCLCSWRPWPRC;;;BU)")

    def test_users_may_write_in_the_folder_but_not_replace_the_program(self):
        # Wine stores less of a file's rights than Windows, so they are taken from what the system was asked to store.
        # Here it adds what the parent folder hands down (flag 10, hexadecimal), which Windows keeps out when asked to.
        self.install(env=dict(self.machine.environment, WINEDEBUG="+server"))

        def own(path):
            lists = self.rights_given(path)
            self.assertEqual(len(lists), 1, path)
            return [one for one in lists[0] if not int(one[0], 16) & 0x10]
        self.assertEqual(own("C:\\Odomira"), [("3", "1f01ff", SYSTEM), ("3", "1f01ff", ADMINISTRATORS),
                                              ("0", "1200ab", USERS), ("9", "13019f", USERS)])
        for program in ("odomira.exe", "uninstall.exe"):
            self.assertEqual(own("C:\\Odomira\\" + program), [("0", "1f01ff", SYSTEM), ("0", "1f01ff", ADMINISTRATORS),
                                                              ("0", "1200a9", USERS)])

    def test_a_user_who_is_no_administrator_keeps_settings_and_journal(self):
        self.ask("lock", KEY + "Settings")
        write = f'reg add "HKLM\\{KEY}Settings" /v Langdenhet /d miles /f'

        def written_by_user():
            return self.machine.run([RIGHTS, "user", write], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL) == 0
        self.assertFalse(written_by_user(), "the machine lets users write: this test would show nothing")
        self.install("/LANG=sv")
        self.assertTrue(written_by_user())

        self.program.start_as_user()
        self.program.main_window().button("Lägg till...")
        self.program.add_day("Lägg till...", "17", "Hem")
        self.program.end()
        self.program.start_as_user()
        line = self.program.main_window().control("ListBox").lines[0]
        self.assertIn("Hem", line)
        self.program.end()


class Language(Installation):
    def test_an_english_system_gets_english(self):
        self.install()
        self.assertEqual(self.program.setting("Settings", "Language"), "0")

    def test_the_option_decides(self):
        self.install("/LANG=sv")
        self.assertEqual(self.program.setting("Settings", "Language"), "100")

    def test_a_stored_language_stays(self):
        self.program.set_setting("Settings", "Language", "0")
        self.install("/LANG=sv")
        self.assertEqual(self.program.setting("Settings", "Language"), "0")

    def test_the_next_setup_and_the_uninstaller_speak_the_chosen_language(self):
        self.install("/LANG=sv")
        self.install()
        self.assertEqual(self.entry("Setup Language"), "1053")


class SwedishSystem(Installation):
    locale = "sv_SE.UTF-8"

    def test_a_swedish_system_gets_swedish(self):
        self.install()
        self.assertEqual(self.program.setting("Settings", "Language"), "100")
        self.program.start()
        self.program.main_window().button("Lägg till...")
        self.program.end()


class Life(Installation):
    def test_journal_and_settings_outlive_upgrade_and_uninstall(self):
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

    def test_a_portable_program_becomes_an_installed_one_with_its_journal(self):
        os.mkdir(self.machine.path("C:\\Odomira"))
        self.program.journal = JOURNAL
        self.install()
        self.assertEqual(self.program.journal, JOURNAL)

    def test_nothing_happens_while_the_program_runs(self):
        self.install()
        self.program.start()
        self.program.main_window()
        self.install(expect=3)
        # In place, so that its exit code is to be had; else it is a copy of the uninstaller that does the work.
        self.assertEqual(self.machine.run(["C:\\Odomira\\uninstall.exe", "/S", "_?=C:\\Odomira"]), 3)
        self.assertTrue(os.path.exists(self.program.path("odomira.exe")))
        self.assertEqual(self.entry("DisplayName"), "Odomira")
        self.program.end()
        self.install()


if __name__ == "__main__":
    unittest.main()
