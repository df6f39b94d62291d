"""The settings in the registry: unit, language and employee."""
from driver import SETTINGS, USERINFO, Story


class Preferences(Story):
    journal = "two-days.jrn"

    def test_unit_and_language_are_applied_at_once_and_stored(self):
        self.program.menu(*SETTINGS)
        dialog = self.program.dialog("Settings")
        dialog.button("miles").click()
        left, top, _, _ = dialog.control("SysTabControl32").rect
        dialog.button("miles").click()
        self.program.keys("ctrl+Tab")
        dialog.button("Swedish (Svenska)").click()
        self.until(lambda: dialog.button("Swedish (Svenska)").checked, "selected Swedish")
        dialog.button("OK").click()
        dialog.wait_gone()
        self.until(lambda: "Färdväg" in self.main.texts(), "headings in Swedish")
        self.assertIn("mil", self.main.texts())
        self.assertIn("Total: 100 mil", self.main.texts(), "the total keeps its language until another month is shown")
        self.assertEqual(self.program.setting("Settings", "Language"), "100")
        self.assertEqual(self.program.setting("Settings", "Langdenhet"), "mil")

    def test_cancel_changes_no_setting(self):
        self.program.menu(*SETTINGS)
        dialog = self.program.dialog("Settings")
        dialog.button("miles").click()
        dialog.button("Cancel").click()
        dialog.wait_gone()
        self.assertIn("km", self.main.texts())
        self.assertIsNone(self.program.setting("Settings", "Langdenhet"))

    def test_the_next_start_shows_the_stored_employee(self):
        self.program.menu(*USERINFO)
        dialog = self.program.dialog("Employee information")
        for nth, text in enumerate(("Brenholt AB", "Åsa", "Öberg")):
            dialog.control("Edit", nth=nth).type(text)
        dialog.button("Use social security number").click()
        self.until(lambda: dialog.control("Edit", nth=3).enabled, "box for the number")
        dialog.control("Edit", nth=3).type("640823-3234")
        dialog.button("OK").click()
        dialog.wait_gone()
        names = ("Company", "Name", "Surname", "Aktiverat_personnummer", "Personnummer")
        self.assertEqual([self.program.setting("Userinfo", name) for name in names],
                         ["Brenholt AB", "Åsa", "Öberg", "1", "640823-3234"])
        self.main.close()
        self.assertEqual(self.program.wait_end(), 0)

        self.program.start()
        self.main = self.program.main_window()
        self.program.menu(*USERINFO)
        dialog = self.program.dialog("Employee information")
        self.assertEqual([dialog.control("Edit", nth=nth).text for nth in range(4)],
                         ["Brenholt AB", "Åsa", "Öberg", "640823-3234"])
        self.assertTrue(dialog.button("Use social security number").checked)
