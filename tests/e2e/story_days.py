"""Adding, editing, deleting, saving and reverting days of the journal."""
from driver import REVERT, SAVE, Story


class Adding(Story):
    journal = "two-days.jrn"

    def open(self):
        self.main.button("Add...").click()
        return self.program.dialog("Add")

    def test_a_day_and_saving_writes_it_above_the_older_ones(self):
        dialog = self.open()
        self.assertNotIn("3", dialog.control("ComboBox", nth=1).lines, "that day has an entry")
        self.fill_day(dialog, "5", "12.5", "Depot; O'Brien's site")
        dialog.button("OK").click()
        dialog.wait_gone()
        self.expect_days("2004-11-05   12.5 Depot; O'Brien's site", "2004-11-03    100 ")
        self.assertEqual(self.days.index, 0)
        self.assertTrue(self.main.button("Edit...").enabled)

        self.program.menu(*SAVE)
        wanted = self.saved("2004-11-05   12.5 Depot; O'Brien's site", "2004-11-03    100 ",
                            "2004-02-12   12.5 Office - customer visit")
        self.until(lambda: self.program.journal == wanted, "the saved journal")
        self.main.close()
        self.assertEqual(self.program.wait_end(), 0)

    def test_without_a_day_shows_a_message_and_moves_the_focus_to_the_days(self):
        dialog = self.open()
        dialog.button("OK").click()
        box = self.program.message_box()
        self.assertEqual((box.text, box.message, box.buttons), ("Odomira", "You must choose a day.", ["OK"]))
        box.answer("OK")
        self.until(lambda: dialog.control("ComboBox", nth=1).focused, "focus on the day")

    def test_an_invalid_distance_shows_a_message_and_is_selected(self):
        dialog = self.open()
        self.fill_day(dialog, "5", "abc")
        for typed, message in (("abc", "Only integers and decimal numbers."), ("-5", "Number of km must be positive."),
                               ("1234567", "You can only specify the number of km with six (6) characters.\r\n"
                                           "You have used 7.")):
            distance = dialog.control("Edit", nth=1)
            distance.type(typed)
            dialog.button("OK").click()
            box = self.program.message_box()
            self.assertEqual(box.message.replace("\r\n", "\n"), message.replace("\r\n", "\n"))
            box.answer("OK")
            self.until(lambda: distance.focused and distance.selection == (0, len(typed)), f"selected '{typed}'")
        dialog.button("Cancel").click()
        dialog.wait_gone()
        self.expect_days("2004-11-03    100 ")


class Editing(Story):
    journal = "two-days.jrn"

    def test_by_double_click_changes_the_day(self):
        self.days.click_line(0, 2)
        dialog = self.program.dialog("Edit")
        self.assertEqual(dialog.control("Edit", nth=1).text, "100")
        self.fill_day(dialog, distance="0.5", route="Bank")
        dialog.button("OK").click()
        dialog.wait_gone()
        self.expect_days("2004-11-03    0.5 Bank")
        self.program.menu(*SAVE)
        wanted = self.saved("2004-11-03    0.5 Bank", "2004-02-12   12.5 Office - customer visit")
        self.until(lambda: self.program.journal == wanted, "the saved journal")

    def test_moves_the_day_to_another_month_and_shows_that_month(self):
        self.days.click_line(0, 2)
        dialog = self.program.dialog("Edit")
        dialog.control("ComboBox").choose("December")
        dialog.control("ComboBox", nth=1).choose("5")
        dialog.button("OK").click()
        dialog.wait_gone()
        self.expect_days("2004-12-05    100 ")
        self.assertEqual([node["text"] for node in self.tree.nodes], ["2004", "December", "February"])
        self.assertEqual(self.tree.selected_node(), ("2004", "December"))
        self.program.menu(*SAVE)
        wanted = self.saved("2004-12-05    100 ", "2004-02-12   12.5 Office - customer visit")
        self.until(lambda: self.program.journal == wanted, "the saved journal")


class Deleting(Story):
    journal = "two-days.jrn"

    def test_asks_for_confirmation_with_no_as_the_default_button(self):
        box = self.delete_line(0)
        self.assertEqual(box.message, "Do you want to delete selected day?")
        self.assertEqual((box.buttons, box.default), (["Yes", "No"], "No"))
        self.program.keys("Return")
        box.wait_gone()
        self.expect_days("2004-11-03    100 ")

    def test_the_only_day_of_a_month_removes_the_month_from_the_tree(self):
        self.delete_line(0).answer("Yes")
        self.expect_days()
        self.until(lambda: [node["text"] for node in self.tree.nodes] == ["2004", "February"], "tree without November")
        self.assertTrue(self.main.button("Delete").enabled)
        self.main.button("Delete").click()
        box = self.program.message_box()
        self.assertEqual(box.message, "Choose day to delete.")
        box.answer("OK")
        self.until(lambda: self.days.focused, "focus on the list")


class DeletingEverything(Story):
    journal = b"2004-11-03    100 \r\n"

    def test_and_saving_writes_only_the_header_and_leaves_the_file_open(self):
        self.delete_line(0).answer("Yes")
        self.expect_days()
        self.program.menu(*SAVE)
        self.until(lambda: self.program.journal == self.saved(), "the empty journal")
        self.main.button("Add...").click()
        dialog = self.program.dialog("Add")
        self.fill_day(dialog, distance="7", day="1")
        dialog.button("OK").click()
        dialog.wait_gone()
        self.program.menu(*SAVE)
        box = self.program.message_box()
        self.assertEqual(box.message.split(), ["Run-time", "error", "'55':", "File", "already", "open"])
        box.answer("OK")
        self.assertEqual(len(self.days.lines), 1, "the added day is still listed")
        self.assertEqual(self.program.journal, self.saved())


class Reverting(Story):
    journal = "two-days.jrn"

    def test_restores_the_saved_journal(self):
        self.delete_line(0).answer("Yes")
        self.expect_days()
        self.program.menu(*REVERT)
        box = self.program.message_box()
        self.assertEqual(box.message, "Revert to last time you saved?")
        self.assertEqual((box.buttons, box.default), (["Yes", "No"], "No"))
        box.answer("Yes")
        self.expect_days("2004-11-03    100 ")
        self.main.close()
        self.assertEqual(self.program.wait_end(), 0)
