"""The guide compared with the program: the captions that it quotes, and the default buttons that it lists."""
import os
import sys

from driver import PRINT, REVERT, TESTS, USERINFO, Story

sys.path.insert(0, os.path.join(TESTS, "docs"))
import guides  # noqa: E402


class GuideOnScreen:
    """The tests for both languages. A derived class defines language, add and delete."""

    def shown(self, *windows):
        return {one.text for window in windows for one in window.controls()}

    def expect_quoted(self, anchor, *windows):
        """Expects the quoted captions in the windows, without menu paths: menu items are not controls."""
        quoted = [one for one in self.guide.section(anchor).bold if " - " not in one]
        self.assertGreater(len(quoted), 2)
        self.until(lambda: not set(quoted) - self.shown(*windows), f"all of {quoted}, but found {self.shown(*windows)}")

    def close(self, dialog):
        self.program.keys("Escape")
        dialog.wait_gone()

    def setUp(self):
        self.guide = guides.guide(self.language)
        super().setUp()

    def test_every_dialog_shows_the_captions_that_its_section_quotes(self):
        self.main.button(self.add).click()
        dialog = self.program.dialog()
        self.expect_quoted("add", dialog, self.main)
        self.close(dialog)
        self.days.click_line(0, 2)
        dialog = self.program.dialog()
        self.expect_quoted("edit", dialog, self.main)
        self.close(dialog)
        self.program.menu(*PRINT)
        dialog = self.program.dialog()
        self.expect_quoted("print", dialog)
        self.close(dialog)
        self.program.menu(*USERINFO)
        dialog = self.program.dialog()
        self.expect_quoted("employee", dialog)
        self.close(dialog)

    def expect_default_button_of_the_guide(self):
        box = self.program.message_box()
        self.assertEqual(self.defaults.pop(box.message, None), box.default, box.message)
        self.program.keys("Return")
        box.wait_gone()

    def test_every_question_has_the_default_button_that_the_guide_lists(self):
        self.defaults = self.guide.section("keys").defaults()
        self.days.click_line(0)
        self.until(lambda: self.main.button(self.delete).enabled, "enabled Delete button")
        self.main.button(self.delete).click()
        self.expect_default_button_of_the_guide()
        self.main.button(self.delete).click()
        box = self.program.message_box()
        box.answer(box.buttons[0])
        self.expect_days()
        self.program.menu(*REVERT)
        self.expect_default_button_of_the_guide()
        self.main.close()
        self.expect_default_button_of_the_guide()
        self.until(lambda: self.main.enabled, "enabled main window")
        self.assertEqual(self.defaults, {}, "questions that the program did not ask")


class InEnglish(GuideOnScreen, Story):
    language, add, delete = "en", "Add...", "Delete"
    journal = b"2004-11-03  100.5 Office\r\n"


class InSwedish(GuideOnScreen, Story):
    language, add, delete = "sv", "Lägg till...", "Ta bort"
    locale = "sv_SE.UTF-8"
    journal = b"2004-11-03  100,5 Kontoret\r\n"
    settings = {("Settings", "Language"): "100"}
