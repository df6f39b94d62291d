"""Closing the program with and without unsaved changes."""
from driver import EXIT, Story

BEFORE = ("2004-11-03    100 ", "2004-02-12   12.5 Office - customer visit")
AFTER = ("2004-02-12   12.5 Office - customer visit",)


class Closing(Story):
    journal = "two-days.jrn"

    def change(self):
        self.delete_line(0).answer("Yes")
        self.expect_days()

    def prompt(self):
        box = self.program.message_box()
        self.assertEqual((box.text, box.message), ("Odomira", "Save last changes?"))
        self.assertEqual((box.buttons, box.default), (["Yes", "No", "Cancel"], "Cancel"))
        return box

    def test_with_the_keys_works_right_after_the_start(self):
        self.until(lambda: self.tree.focused, "focus on the tree")
        self.main.close()
        self.assertEqual(self.program.wait_end(), 0)

    def test_without_changes_asks_nothing(self):
        self.program.menu(*EXIT)
        self.assertEqual(self.program.wait_end(), 0)
        self.assertEqual(self.program.journal, self.saved(*BEFORE))

    def test_and_yes_saves(self):
        self.change()
        self.program.menu(*EXIT)
        self.prompt().answer("Yes")
        self.assertEqual(self.program.wait_end(), 0)
        self.assertEqual(self.program.journal, self.saved(*AFTER))

    def test_and_no_leaves_the_file_as_it_was(self):
        self.change()
        self.main.close()
        self.prompt().answer("No")
        self.assertEqual(self.program.wait_end(), 0)
        self.assertEqual(self.program.journal, self.saved(*BEFORE))

    def test_and_cancel_goes_on_and_asks_again_next_time(self):
        self.change()
        self.main.close()
        self.prompt().answer("Cancel")
        self.until(lambda: self.main.enabled, "main window to be usable again")
        self.assertEqual(self.program.journal, self.saved(*BEFORE))
        self.main.close()
        self.prompt().answer("Yes")
        self.assertEqual(self.program.wait_end(), 0)
        self.assertEqual(self.program.journal, self.saved(*AFTER))
