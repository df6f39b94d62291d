"""Everything that a driver does in a day, with the keyboard only."""
import datetime
import glob
import os
import subprocess

from driver import Story, Window


class WithoutAMouse(Story):
    printer = True

    def press_button(self, window, text):
        """Tabs to the button and presses the space bar."""
        self.program.focus(window.button(text))
        self.program.keys("space")

    def type_into(self, edit, text):
        self.program.focus(edit)
        self.program.keys("Home", "shift+End")
        self.program.write(text)
        self.until(lambda: edit.text == text, f"'{text}' in the edit, which contains '{edit.text}'")

    def choose_from_file_menu(self, row):
        """F10 activates the menu bar. The first Down opens the File menu; each further one moves to the next item."""
        self.program.keys("F10", *["Down"] * row, "Return")

    def printed(self):
        return glob.glob(os.path.join(self.machine.environment["ODOMIRA_PRINTED"], "*.pdf"))

    def focused_text(self):
        return Window(self.program, self.program.eyes.ask("focus")["control"]).text

    def add(self, day, distance, route):
        self.press_button(self.main, "Add...")
        dialog = self.program.dialog("Add")
        dialog.control("ComboBox", nth=1).choose(day)
        self.type_into(dialog.control("Edit", nth=1), distance)
        self.type_into(dialog.control("Edit", nth=2), route)
        self.program.keys("Return")
        dialog.wait_gone()

    def correct_distance(self, distance):
        self.press_button(self.main, "Edit...")
        dialog = self.program.dialog("Edit")
        self.type_into(dialog.control("Edit", nth=1), distance)
        self.program.keys("Return")
        dialog.wait_gone()

    def print_journal(self):
        """Prints with the defaults of both dialogs and returns the printed text."""
        self.choose_from_file_menu(3)
        dialog = self.program.dialog("Print inteval")
        self.program.keys("Return")
        self.until(lambda: self.program.eyes.ask("focus")["window"] != dialog.handle, "the printer dialog")
        self.program.keys("Return")
        dialog.wait_gone()
        self.until(self.printed, "the printed report")
        return subprocess.run(["pdftotext", "-layout", self.printed()[0], "-"], capture_output=True, text=True,
                              check=True).stdout

    def delete(self):
        self.press_button(self.main, "Delete")
        box = self.program.message_box()
        self.program.keys("Left", "Return")
        box.wait_gone()

    def close_without_saving(self):
        self.main.close()
        box = self.program.message_box()
        self.assertEqual(box.default, "Cancel")
        self.program.keys("Left", "Return")
        self.assertEqual(self.program.wait_end(), 0)

    def test_a_day_is_added_edited_saved_printed_and_deleted(self):
        today = datetime.date.today()
        date = today.isoformat()

        self.add(str(today.day), "12.5", "Office")
        self.expect_days(f"{date}   12.5 Office")
        self.until(lambda: self.focused_text() == "Add...", "focus back on Add")

        self.correct_distance("20")
        self.expect_days(f"{date}     20 Office")

        self.choose_from_file_menu(2)
        wanted = self.saved(f"{date}     20 Office")
        self.until(lambda: self.program.journal == wanted, "the saved journal")

        words = self.print_journal()
        self.assertIn("Office", words)
        self.assertIn("Driver's journal", words)
        self.until(lambda: self.focused_text() == "Edit...", "focus back on Edit")

        self.delete()
        self.expect_days()

        self.close_without_saving()
        self.assertEqual(self.program.journal, wanted, "No keeps the saved file")

    def test_shortcut_keys_run_the_commands(self):
        today = datetime.date.today()
        date = today.isoformat()

        self.until(lambda: self.tree.focused, "focus on the tree")
        self.program.keys("ctrl+n")
        dialog = self.program.dialog("Add")
        self.until(lambda: dialog.control("ComboBox", nth=1).focused, "focus on the days")
        self.program.keys(*["Down"] * today.day, "Tab")
        self.program.write("12.5")
        self.program.keys("Return")
        dialog.wait_gone()
        self.expect_days(f"{date}   12.5 ")

        self.program.focus(self.days)
        self.program.keys("Return")
        dialog = self.program.dialog("Edit")
        self.until(lambda: dialog.control("Edit", nth=1).selection == (0, 4), "selected distance")
        self.program.write("20")
        self.program.keys("Return")
        dialog.wait_gone()
        self.expect_days(f"{date}     20 ")

        self.program.keys("ctrl+s")
        wanted = self.saved(f"{date}     20 ")
        self.until(lambda: self.program.journal == wanted, "the saved journal")

        self.program.keys("ctrl+p")
        dialog = self.program.dialog("Print inteval")
        self.program.keys("Escape")
        dialog.wait_gone()

        self.until(lambda: self.days.focused, "focus back on the list")
        self.program.keys("Escape", "Delete")
        box = self.program.message_box()
        self.program.keys("Left", "Return")
        box.wait_gone()
        self.expect_days()
        self.close_without_saving()
