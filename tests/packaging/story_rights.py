"""The silent setup: the folders it accepts, and the rights it sets on folder and settings."""
import os
import subprocess
import unittest

from installed import GUIDES, INSTALLED, KEY, RIGHTS, Installation

USERS, ADMINISTRATORS, SYSTEM, OWNER_RIGHTS = "S-1-5-32-545", "S-1-5-32-544", "S-1-5-18", "S-1-3-4"


class Folder(Installation):
    """The folders that setup accepts, and those that it refuses without a change."""

    def make(self, folder, *names):
        os.makedirs(self.machine.path(folder), exist_ok=True)
        for name in names:
            with open(os.path.join(self.machine.path(folder), name), "wb") as file:
                file.write(b"mine")

    def assert_refused(self, folder):
        before = sorted(os.listdir(self.machine.path(folder)))
        self.install(*f"/D={folder}".split(" "), expect=4, env=self.environment_with_request_log())
        self.assertEqual(sorted(os.listdir(self.machine.path(folder))), before)
        self.assertEqual(self.rights_set(folder), [])
        self.assertIsNone(self.entry("DisplayName"))

    def test_a_folder_with_a_portable_program_among_other_files_is_refused(self):
        self.make("C:\\My documents", "odomira.exe", "datasource.jrn", "ReadMe.txt", "letter.txt")
        self.assert_refused("C:\\My documents")

    def test_a_folder_that_contains_a_folder_named_like_a_program_file_is_refused(self):
        self.make("C:\\Mine\\datasource.jrn", "letter.txt")
        self.assert_refused("C:\\Mine")

    def test_a_portable_folder_is_accepted_and_its_journal_kept(self):
        self.make("C:\\Portable", "odomira.exe", *GUIDES, "datasource.jrn", "ReadMe.txt")
        self.install("/D=C:\\Portable", env=self.environment_with_request_log())
        self.assertEqual(sorted(os.listdir(self.machine.path("C:\\Portable"))),
                         ["ReadMe.txt", *INSTALLED])
        with open(self.machine.path("C:\\Portable\\datasource.jrn"), "rb") as file:
            self.assertEqual(file.read(), b"mine")
        for path in ("", "\\odomira.exe", "\\guide.html", "\\guide.sv.html", "\\uninstall.exe", "\\datasource.jrn"):
            self.assertEqual(set(self.owners_set("C:\\Portable" + path)), {ADMINISTRATORS}, path)
        self.assertEqual(self.rights_set("C:\\Portable\\ReadMe.txt"), [])

    def test_a_folder_behind_a_link_is_refused(self):
        self.make("C:\\Elsewhere\\Odomira")
        os.symlink(self.machine.path("C:\\Elsewhere"), self.machine.path("C:\\Link"))
        self.assert_refused("C:\\Link\\Odomira")
        os.rmdir(self.machine.path("C:\\Elsewhere\\Odomira"))
        self.assert_refused("C:\\Link")
        self.assertEqual(self.rights_set("C:\\Elsewhere") + self.rights_set("C:\\Elsewhere\\Odomira"), [])

    def test_a_new_installation_uses_the_folder_of_the_earlier_one_and_keeps_files_of_users(self):
        self.install("/D=C:\\Cars")
        self.make("C:\\Cars", "journal of 2003.jrn")
        self.uninstall()
        self.install()
        self.assertEqual(self.entry("InstallLocation"), "C:\\Cars")
        self.assertEqual(sorted(os.listdir(self.machine.path("C:\\Cars"))),
                         sorted([*INSTALLED, "journal of 2003.jrn"]))

    def test_a_failed_setup_restores_the_rights_of_users_in_the_folder(self):
        self.install()
        os.remove(self.program.path("odomira.exe"))
        self.make("C:\\Odomira\\odomira.exe", "file of a user")
        self.install(expect=2, env=self.environment_with_request_log())
        add_files = ("0", "1200ab", USERS)
        self.assertEqual([add_files in one for one in self.rights_set("C:\\Odomira")], [False, True])

    def test_setup_does_not_write_to_files_elsewhere_through_hard_links(self):
        self.make("C:\\Elsewhere", "program", "journal")
        self.make("C:\\Odomira")
        for name, target in (("odomira.exe", "program"), ("guide.html", "program"), ("datasource.jrn", "journal")):
            os.link(self.machine.path("C:\\Elsewhere\\" + target), self.program.path(name))
        # New rights on the journal would also apply to the linked file. Setup therefore leaves it and reports an error.
        self.install(expect=5, env=self.environment_with_request_log())
        for name in ("program", "journal"):
            with open(self.machine.path("C:\\Elsewhere\\" + name), "rb") as file:
                self.assertEqual(file.read(), b"mine", name)
        self.assertEqual(self.rights_set("C:\\Odomira\\datasource.jrn"), [])


class Rights(Installation):
    def test_users_can_write_the_sections_of_the_settings_and_read_the_key_above(self):
        self.ask("lock", KEY + "Settings")
        self.install()
        system = "(A;CI;KA;;;SY)(A;CI;KA;;;BA)"
        self.assertEqual(self.ask("key", KEY.rstrip("\\")), f"O:BAD:P{system}(A;CI;KR;;;BU)")
        for section in ("Settings", "Userinfo", "Print"):
            # CCDCLCSWRPWPRC is 0x2003f, the access mask with which the program opens the key.
            self.assertEqual(self.ask("key", KEY + section), f"O:BAD:P{system}(A;;CCDCLCSWRPWPRC;;;BU)")

    def test_users_can_open_a_section_as_the_program_does_but_not_create_other_keys(self):
        self.install()

        def opened_by_user(key, mask):
            return self.machine.run([RIGHTS, "user", f'"{RIGHTS}" open {key} {mask}'], stderr=subprocess.DEVNULL) == 0
        for section in ("Settings", "Userinfo", "Print"):
            self.assertTrue(opened_by_user(KEY + section, "0x2003f"), section)
            self.assertFalse(opened_by_user(KEY + section, "0x40000"), section + ": WRITE_DAC")
        read, set_value, make_key, make_link = "0x20019", "0x2", "0x4", "0x20"
        for key in (KEY.rstrip("\\"), "Software\\Velmora\\Setup"):
            self.assertTrue(opened_by_user(key, read), key)
            for mask in (set_value, make_key, make_link):
                self.assertFalse(opened_by_user(key, mask), (key, mask))

    def test_an_upgrade_keeps_the_rights_of_keys_below_the_sections_and_of_other_files(self):
        self.install()
        self.ask("lock", KEY + "Settings\\Below")
        key = self.ask("key", KEY + "Settings\\Below")
        with open(self.program.path("copy.jrn"), "wb") as file:
            file.write(b"mine")
        self.upgrade("99.0.0", env=self.environment_with_request_log())
        self.assertEqual(self.ask("key", KEY + "Settings\\Below"), key)
        self.assertEqual(self.rights_set("C:\\Odomira\\copy.jrn"), [])
        self.assertNotEqual(self.rights_set("C:\\Odomira"), [])

    def test_a_link_in_place_of_a_section_is_replaced_and_its_target_unchanged(self):
        self.program.set_setting("..\\Elsewhere", "Heading", "theirs")
        self.ask("lock", "Software\\Elsewhere")
        self.machine.run(["reg", "add", "HKLM\\Software\\Elsewhere", "/v", "Language", "/d", "theirs", "/f"],
                         stdout=subprocess.DEVNULL)
        rights = self.ask("key", "Software\\Elsewhere")
        for section in ("Settings", "Print"):
            self.ask("link", KEY + section, "Software\\Elsewhere")
        self.install()
        self.assertEqual(self.ask("key", "Software\\Elsewhere"), rights)
        self.assertEqual(self.program.setting("Settings", "Language"), "0")
        self.program.set_setting("Print", "Heading", "mine")
        self.assertEqual(self.program.eyes.ask("settings-read", "Software\\Elsewhere", "Language"), "theirs")
        self.assertIsNone(self.program.eyes.ask("settings-read", "Software\\Elsewhere", "Heading"))

    def test_users_can_write_in_the_folder_but_not_replace_programs_or_change_rights(self):
        # Wine stores less of a file's rights than Windows. The test therefore reads the rights from the requests.
        self.install(env=self.environment_with_request_log())
        everything = [("3", "1f01ff", SYSTEM), ("3", "1f01ff", ADMINISTRATORS)]
        locked, final = self.rights_set("C:\\Odomira")
        # Users cannot add files while setup runs.
        self.assertEqual(locked, everything + [("0", "1200a9", USERS)])
        self.assertEqual(final, everything + [("0", "1200ab", USERS), ("9", "13019f", USERS),
                                              ("9", "13019f", OWNER_RIGHTS)])
        everything = [("0", "1f01ff", SYSTEM), ("0", "1f01ff", ADMINISTRATORS)]
        for program in ("odomira.exe", "uninstall.exe", *GUIDES):
            self.assertEqual(self.rights_set("C:\\Odomira\\" + program), [everything + [("0", "1200a9", USERS)]])
        self.assertEqual(self.rights_set("C:\\Odomira\\datasource.jrn"),
                         [everything + [("0", "13019f", USERS), ("0", "13019f", OWNER_RIGHTS)]])

    def test_a_user_who_is_not_an_administrator_can_save_settings_and_journal(self):
        self.ask("lock", KEY + "Settings")
        write = f'reg add "HKLM\\{KEY}Settings" /v Langdenhet /d miles /f'

        def written_by_user():
            return self.machine.run([RIGHTS, "user", write], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL) == 0
        self.assertFalse(written_by_user(), "users can write the locked key, so the test cannot fail")
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


if __name__ == "__main__":
    unittest.main()
