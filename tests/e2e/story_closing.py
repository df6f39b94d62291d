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

    def test_with_alt_f4_works_right_after_the_start(self):
        self.until(lambda: self.tree.focused, "focus on the tree")
        self.main.close()
        self.assertEqual(self.program.wait_end(), 0)

    def test_without_changes_shows_no_message(self):
        self.program.menu(*EXIT)
        self.assertEqual(self.program.wait_end(), 0)
        self.assertEqual(self.program.journal, self.saved(*BEFORE))

    def test_and_answering_yes_saves_the_journal(self):
        self.change()
        self.program.menu(*EXIT)
        self.prompt().answer("Yes")
        self.assertEqual(self.program.wait_end(), 0)
        self.assertEqual(self.program.journal, self.saved(*AFTER))

    def test_and_answering_no_does_not_change_the_file(self):
        self.change()
        self.main.close()
        self.prompt().answer("No")
        self.assertEqual(self.program.wait_end(), 0)
        self.assertEqual(self.program.journal, self.saved(*BEFORE))

    def test_and_answering_cancel_keeps_the_program_open_and_asks_again_next_time(self):
        self.change()
        self.main.close()
        self.prompt().answer("Cancel")
        self.until(lambda: self.main.enabled, "enabled main window")
        self.assertEqual(self.program.journal, self.saved(*BEFORE))
        self.main.close()
        self.prompt().answer("Yes")
        self.assertEqual(self.program.wait_end(), 0)
        self.assertEqual(self.program.journal, self.saved(*AFTER))
