"""Starting the program: with a journal, without one, with a damaged one, and a second time."""
import os
import shutil
from decimal import ROUND_HALF_UP, Decimal

from driver import Story


class AJournalOfThreeYears(Story):
    journal = "three-years-en.jrn"

    def test_opens_with_its_newest_month(self):
        self.assertEqual(self.main.text, "Odomira")
        years = [node["text"] for node in self.tree.nodes if node["level"] == 0]
        self.assertEqual(years, ["2004", "2003", "2002"])
        self.assertEqual(self.tree.selected_node(), ("2004", "December"))
        self.assertEqual(self.days.lines[0], "2004-12-31  392.2 Depot 4 to site, return")
        self.assertEqual(self.days.lines[2], "2004-12-29        Trade fair, hall B")
        self.assertFalse(self.main.button("Edit...").enabled)
        self.assertFalse(self.main.button("Delete").enabled)

    def test_shows_the_month_that_is_clicked_with_its_total(self):
        self.tree.click_node("2004", "November")
        self.until(lambda: self.days.lines and all(line.startswith("2004-11-") for line in self.days.lines), "November")
        distances = [Decimal(line[11:17].strip()) for line in self.days.lines if line[11:17].strip()]
        total = f"{sum(distances).quantize(Decimal(1), ROUND_HALF_UP):,}".replace(",", " ")
        self.assertIn(f"Total: {total} km", self.main.texts())

    def test_empties_the_list_when_a_year_is_clicked(self):
        self.tree.click_node("2004")
        self.expect_days()
        self.assertFalse([text for text in self.main.texts() if text.startswith("Total")])


class NoJournal(Story):
    def test_shows_an_empty_window_and_creates_an_empty_file(self):
        self.assertEqual(self.tree.nodes, [])
        self.expect_days()
        self.assertEqual(self.program.journal, b"")


class ADamagedJournal(Story):
    journal = "damaged.jrn"
    waits_for_main_window = False

    def test_shows_an_error_for_each_bad_line_and_is_not_changed(self):
        for _ in range(4):  # an empty line, two lines without numbers, one that ends after the date
            box = self.program.message_box()
            self.assertEqual((box.text, box.message, box.buttons), ("Odomira", "errorType mismatch", ["OK"]))
            box.answer("OK")
        self.main = self.program.main_window()
        self.expect_days("2004-05-03   12.5 good")
        self.tree.click_node("2004", "April")
        self.expect_days("2004-04-30        stored minus one", "2004-04-29  12.25 good again")
        self.main.close()
        self.assertEqual(self.program.wait_end(), 0)
        with open(os.path.join(os.path.dirname(__file__), "..", "samples", "damaged.jrn"), "rb") as file:
            self.assertEqual(self.program.journal, file.read())


class TheSecondStart(Story):
    journal = "two-days.jrn"

    def test_exits_at_once_without_a_window(self):
        self.program.start()
        self.assertEqual(self.program.wait_end(), 0)
        self.assertEqual(len(self.program.windows()), 1)

    def test_from_another_folder_opens_another_window_and_journal(self):
        other = self.machine.path("C:\\Other")
        os.mkdir(other)
        shutil.copy(self.program.path("odomira.exe"), other)
        self.machine.start(["C:\\Other\\odomira.exe"])
        self.until(lambda: len(self.program.windows()) == 2, "second window")
        self.until(lambda: os.path.exists(os.path.join(other, "datasource.jrn")), "journal of the other program")
