"""Swedish texts of the program, with the decimal comma and the month names of the system."""
from driver import SAVE, Story


class InSwedish(Story):
    locale = "sv_SE.UTF-8"
    journal = b"2004-11-03  100,5 Kontoret\r\n"
    settings = {("Settings", "Language"): "100", ("Settings", "Langdenhet"): "mil"}

    def test_a_day_with_a_decimal_comma_and_swedish_letters_is_saved(self):
        self.assertEqual(self.tree.selected_node(), ("2004", "november"))
        for text in ("Datum", "mil", "Färdväg", "Totalt: 101 mil"):
            self.assertIn(text, self.main.texts())
        self.main.button("Lägg till...").click()
        dialog = self.program.dialog("Lägg till")
        self.assertIn("Antal mil", dialog.texts())
        self.fill_day(dialog, "30", "12,5", "Åre - Östersund")
        dialog.button("OK").click()
        dialog.wait_gone()
        self.expect_days("2004-11-30   12,5 Åre - Östersund", "2004-11-03  100,5 Kontoret")
        self.program.menu(*SAVE)
        wanted = self.saved("2004-11-30   12,5 Åre - Östersund", "2004-11-03  100,5 Kontoret")
        self.until(lambda: self.program.journal == wanted, "the saved journal")

    def test_a_decimal_point_is_refused(self):
        self.main.button("Lägg till...").click()
        dialog = self.program.dialog("Lägg till")
        self.fill_day(dialog, "30", "12.5")
        dialog.button("OK").click()
        box = self.program.message_box()
        self.assertEqual(box.message, "Endast heltal eller decimaltal.")
        box.answer("OK")

    def test_closing_asks_in_swedish(self):
        self.days.click_line(0)
        self.main.button("Ta bort").click()
        box = self.program.message_box()
        self.assertEqual((box.message, box.buttons), ("Vill du ta bort vald dag?", ["Ja", "Nej"]))
        box.answer("Ja")
        self.expect_days()
        self.main.close()
        box = self.program.message_box()
        self.assertEqual(box.message, "Vill du spara de senaste ändringarna?")
        self.assertEqual((box.buttons, box.default), (["Ja", "Nej", "Avbryt"], "Avbryt"))
        box.answer("Nej")
        self.assertEqual(self.program.wait_end(), 0)
        self.assertEqual(self.program.journal, self.journal)
