"""A day of a driver whose mouse is broken: everything is done with keys."""
import datetime
import glob
import os
import subprocess

from driver import Story, Window


class WithoutAMouse(Story):
    printer = True

    def press_button(self, window, text):
        """Tab to it, and the space bar."""
        self.program.focus(window.button(text))
        self.program.keys("space")

    def type_into(self, edit, text):
        self.program.focus(edit)
        self.program.keys("Home", "shift+End")
        self.program.write(text)
        self.until(lambda: edit.text == text, f"'{text}' in the edit, which has '{edit.text}'")

    def choose_from_file_menu(self, row):
        """F10 goes to the menu bar; Down opens the first menu and then walks down in it."""
        self.program.keys("F10", *["Down"] * row, "Return")

    def printed(self):
        return glob.glob(os.path.join(self.machine.environment["ODOMIRA_PRINTED"], "*.pdf"))

    def focused_text(self):
        return Window(self.program, self.program.eyes.ask("focus")["control"]).text

    def test_a_day_is_entered_corrected_saved_printed_and_deleted(self):
        today = datetime.date.today()
        date = today.isoformat()

        self.press_button(self.main, "Add...")
        dialog = self.program.dialog("Add")
        dialog.control("ComboBox", nth=1).choose(str(today.day))
        self.type_into(dialog.control("Edit", nth=1), "12.5")
        self.type_into(dialog.control("Edit", nth=2), "Office")
        self.program.keys("Return")
        dialog.wait_gone()
        self.expect_days(f"{date}   12.5 Office")
        self.until(lambda: self.focused_text() == "Add...", "focus back on Add")

        self.press_button(self.main, "Edit...")
        dialog = self.program.dialog("Edit")
        self.type_into(dialog.control("Edit", nth=1), "20")
        self.program.keys("Return")
        dialog.wait_gone()
        self.expect_days(f"{date}     20 Office")

        self.choose_from_file_menu(2)
        wanted = self.saved(f"{date}     20 Office")
        self.until(lambda: self.program.journal == wanted, "the saved journal")

        self.choose_from_file_menu(3)
        dialog = self.program.dialog("Print inteval")
        self.program.keys("Return")
        self.until(lambda: self.program.eyes.ask("focus")["window"] != dialog.handle, "the printer dialog")
        self.program.keys("Return")
        dialog.wait_gone()
        self.until(self.printed, "the printed report")
        words = subprocess.run(["pdftotext", "-layout", self.printed()[0], "-"], capture_output=True, text=True,
                               check=True).stdout
        self.assertIn("Office", words)
        self.assertIn("Driver's journal", words)
        self.until(lambda: self.focused_text() == "Edit...", "focus back on Edit")

        self.press_button(self.main, "Delete")
        box = self.program.message_box()
        self.program.keys("Left", "Return")
        box.wait_gone()
        self.expect_days()

        self.main.close()
        box = self.program.message_box()
        self.assertEqual(box.default, "Cancel")
        self.program.keys("Left", "Return")
        self.assertEqual(self.program.wait_end(), 0)
        self.assertEqual(self.program.journal, wanted, "No keeps what was saved")
