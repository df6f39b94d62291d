"""Printing the journal through the printer dialog of the system."""
import datetime
import glob
import os
import subprocess

from driver import PRINT, SETTINGS, Story


class Printing(Story):
    printer = True
    today = datetime.date.today()
    journal = f"{today:%Y-%m-%d}   12.5 Depot & site\r\n".encode("cp1252")
    settings = {("Userinfo", "Company"): "Brenholt", ("Userinfo", "Name"): "Anna", ("Userinfo", "Surname"): "Lind"}

    def open(self):
        self.program.menu(*PRINT)
        return self.program.dialog("Print inteval")

    def jobs(self):
        return sorted(glob.glob(os.path.join(self.machine.environment["ODOMIRA_PRINTED"], "*.pdf")))

    @staticmethod
    def words(job):
        return subprocess.run(["pdftotext", "-layout", job, "-"], capture_output=True, text=True, check=True).stdout

    def test_prints_the_number_of_copies_of_the_printer_dialog(self):
        dialog = self.open()
        dialog.control("Edit", nth=2).type("Drives of the month")
        dialog.controls("Button", "")[1].click()
        dialog.button("Print...").click()
        chooser = self.program.dialog("Print")
        copies = next(one for one in chooser.controls("Edit") if one.enabled and one.text == "1")
        copies.type("2")
        chooser.button("OK").click()
        dialog.wait_gone()
        self.until(lambda: len(self.jobs()) == 2, "two printed copies")
        for job in self.jobs():
            text = self.words(job)
            for words in ("Drives of the month", "Brenholt", "Anna Lind", "Depot & site", "12.5"):
                self.assertIn(words, text)
        self.assertEqual(self.program.setting("Print", "Heading"), "Drives of the month")
        self.assertEqual(self.program.setting("Print", "UseDefaultHeading"), "False")

    def test_cancelling_the_printer_dialog_prints_nothing_and_keeps_the_interval_dialog_open(self):
        dialog = self.open()
        dialog.button("Print...").click()
        self.program.dialog("Print").button("Cancel").click()
        self.until(lambda: dialog.enabled, "enabled interval dialog")
        dialog.button("Cancel").click()
        dialog.wait_gone()
        self.assertEqual(self.jobs(), [])

    def test_uses_the_language_and_unit_that_were_chosen_while_a_month_is_shown(self):
        self.program.menu(*SETTINGS)
        dialog = self.program.dialog("Settings")
        dialog.button("miles").click()
        self.program.keys("ctrl+Tab")
        dialog.button("Swedish (Svenska)").click()
        self.until(lambda: dialog.button("Swedish (Svenska)").checked, "selected Swedish")
        dialog.button("OK").click()
        dialog.wait_gone()
        self.program.menu(*PRINT)
        dialog = self.program.dialog("Utskriftsintervall")
        dialog.button("Skriv ut...").click()
        self.program.dialog("Print").button("OK").click()
        dialog.wait_gone()
        self.until(self.jobs, "a printed journal")
        text = self.words(self.jobs()[0])
        self.assertRegex(text, r"Datum +mil +Färdväg")
        self.assertIn("Körjournal", text)
