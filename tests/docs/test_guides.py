"""Checks that the texts that the guides quote are the texts that users see."""
import os
import re
import unittest

import guides
from guides import DOCS, LANGUAGES, Guide, Vocabulary

ENGLISH_ONLY = "Run-time error '61': Disk full"


class Quotations(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.guides = {language: guides.guide(language) for language in LANGUAGES}
        cls.vocabularies = {language: Vocabulary(language) for language in LANGUAGES}

    def wrong(self, language, text=None):
        """The quotations of a guide, or of a text, that the program does not show."""
        guide = self.guides[language] if text is None else Guide(text)
        known = self.vocabularies[language]
        return ([one for one in guide.captions if not known.shows_caption(one)] +
                [one for one in guide.messages if not known.shows_message(one)])

    def test_every_caption_and_message_in_the_guides_is_one_that_the_program_shows(self):
        for language, guide in self.guides.items():
            with self.subTest(language):
                self.assertGreater(len(guide.captions), 40)
                self.assertGreater(len(guide.messages), 35)
                self.assertFalse(guide.odd_quotation_marks, "a quotation mark is missing")
                self.assertEqual(self.wrong(language), [])

    def test_a_wrong_quotation_is_found(self):
        for text, quoted in {
            "Click **Add**, then **Edi...**.": ["Edi..."],
            "Choose **File - Save all**.": ["Save all"],
            "Choose **Help - About Odomira**.": ["About Odomira"],
            'It says "You must choose a day".': ["You must choose a day"],
            'It says "Number of km must be negative."': ["Number of km must be negative."],
            'It says "Number of km must be\npositive."': [],
            "It says \"Run-time error '62': Disk full\".": ["Run-time error '62': Disk full"],
            "It says \"Run-time error '61': Disk is full\".": ["Run-time error '61': Disk is full"],
            'It says "errorDisk full" or "errorDisk is full".': ["errorDisk is full"],
        }.items():
            with self.subTest(text):
                self.assertEqual(self.wrong("en", text), quoted)

    def test_a_quotation_in_the_other_language_is_found(self):
        self.assertEqual(self.wrong("sv", "**Arkiv - Save**"), ["Save"])
        self.assertEqual(self.wrong("en", '"Du måste välja en dag."'), ["Du måste välja en dag."])
        self.assertEqual(self.wrong("sv", f'"{ENGLISH_ONLY}"'), [])

    def test_a_changed_text_of_the_program_makes_the_guides_fail(self):
        known = Vocabulary("en")
        known.captions.remove("Add...")
        self.assertFalse(all(known.shows_caption(one) for one in self.guides["en"].captions))

    def test_every_run_time_error_that_ends_an_operation_is_explained(self):
        seen_only_by_the_printing_dialog = {482, 32755}
        seen_only_while_reading = {52, 53, 54, 62}
        wanted = set(guides.error_descriptions()) - seen_only_by_the_printing_dialog - seen_only_while_reading
        for language, guide in self.guides.items():
            explained = {int(found[1]) for found in (re.match(r"Run-time error '(\d+)'", one) for one in guide.messages) if found}
            self.assertEqual(explained, wanted, language)

    def test_names_of_files_and_stored_values_are_those_of_the_program(self):
        known = guides.source_literals() | {"Odomira", "odomira.exe"}
        for language, guide in self.guides.items():
            names = [one for one in guide.codes if re.fullmatch(r"[A-Za-z_]+(\.\w{3})?", one)]
            self.assertGreaterEqual(len(names), 5)
            self.assertEqual([one for one in names if not any(one in literal for literal in known)], [], language)

    def test_the_example_of_the_journal_file_has_the_header_and_the_columns_of_a_journal(self):
        header = [literal for literal in guides.source_literals() if literal.startswith("'")]
        for guide in self.guides.values():
            lines = guide.lines[0].splitlines()
            comments = [line for line in lines if line.startswith("'")]
            self.assertEqual([line for line in comments if line not in header], [])
            days = [line for line in lines if not line.startswith("'")]
            self.assertGreaterEqual(len(days), 2)
            for line in days:
                self.assertRegex(line, r"^\d{4}-\d\d-\d\d [ \d,.-]{6} \S")


class Structure(unittest.TestCase):
    def setUp(self):
        self.guides = {language: guides.guide(language) for language in LANGUAGES}

    def test_every_link_leads_somewhere(self):
        for language, guide in self.guides.items():
            for link in guide.links:
                with self.subTest(language, link=link):
                    file, _, anchor = link.partition("#")
                    self.assertTrue(os.path.exists(os.path.join(DOCS, file)), link)
                    if anchor:
                        self.assertIn(anchor, guide.anchors)

    def test_a_link_to_no_section_and_a_picture_that_is_not_there_would_be_found(self):
        guide = Guide('<a id="add"></a>\n\n## Add\n\n[there](#add) [nowhere](#ad) ![](images/none.png)\n')
        self.assertEqual(guide.links, ["#add", "#ad"])
        self.assertEqual(guide.anchors, ["add"])
        self.assertFalse(os.path.exists(os.path.join(DOCS, guide.pictures[0][1])))

    def test_every_picture_is_there_and_is_described(self):
        for language, guide in self.guides.items():
            self.assertGreaterEqual(len(guide.pictures), 8)
            for description, path in guide.pictures:
                self.assertTrue(description, path)
                self.assertTrue(os.path.exists(os.path.join(DOCS, path)), path)
                self.assertIn(f"-{language}.png", path)

    def test_every_window_has_its_section_under_the_same_anchor_in_both_languages(self):
        for guide in self.guides.values():
            self.assertEqual([anchor for anchor, _ in guide.anchored], guide.anchors, "an anchor without a heading")
            self.assertEqual(len(set(guide.anchors)), len(guide.anchors))
            for window in ("main-window", "add", "edit", "print", "settings", "employee", "about"):
                self.assertIn((window, "##"), guide.anchored)
        self.assertEqual(*(guide.anchored for guide in self.guides.values()))

    def test_both_languages_say_the_same_in_the_same_order(self):
        english, swedish = self.guides.values()
        self.assertEqual(len(english.headings), len(swedish.headings))
        self.assertEqual(len(english.pictures), len(swedish.pictures))
        numbers = [[re.findall(r"'\d+'", one) for one in guide.messages if one.startswith("Run-time")]
                   for guide in (english, swedish)]
        numbers = [[one for one in of_guide if one] for of_guide in numbers]
        self.assertEqual(*numbers)


if __name__ == "__main__":
    unittest.main()
