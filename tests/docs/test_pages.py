"""Checks the pages that are generated from the guides: they need no other file, and their links have targets."""
import html.parser
import os
import re
import subprocess
import sys
import tempfile
import unittest

import guides
from guides import DOCS, LANGUAGES

MAKE = os.path.join(DOCS, "guide", "make_page.py")


def make(language, guide, page, **environment):
    return subprocess.run([sys.executable, "-B", MAKE, language, guide, page], capture_output=True, text=True, check=False,
                          env=dict(os.environ, **environment))


class Page(html.parser.HTMLParser):
    """The elements of a page, as a browser reads them."""

    def __init__(self, path):
        super().__init__()
        with open(path, encoding="utf-8") as file:
            self.text = file.read()
        self.ids, self.links, self.sources, self.headings, self.cells = [], [], [], [], []
        self.language, self.contents, self.titles = None, [], 0
        self._in_contents = False
        self.feed(self.text)

    def handle_starttag(self, tag, attributes):
        attributes = dict(attributes)
        if "id" in attributes:
            self.ids.append(attributes["id"])
        if "src" in attributes:
            self.sources.append(attributes["src"])
        if tag == "html":
            self.language = attributes["lang"]
        elif tag == "nav":
            self._in_contents = True
        elif tag == "a":
            (self.contents if self._in_contents else self.links).append(attributes["href"])
        elif tag in ("h2", "h3"):
            self.headings.append(attributes["id"])
        elif tag == "td":
            self.cells.append(attributes["data-column"])
        elif tag == "img":
            self.titles += bool(attributes["alt"])

    def handle_endtag(self, tag):
        if tag == "nav":
            self._in_contents = False


class Pages(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory()
        cls.addClassCleanup(folder.cleanup)
        cls.folder = folder.name
        cls.pages = {}
        for language, name in LANGUAGES.items():
            path = os.path.join(cls.folder, name.replace(".md", ".html"))
            made = make(language, os.path.join(DOCS, name), path)
            assert made.returncode == 0, made.stderr
            cls.pages[language] = Page(path)

    def test_a_page_has_everything_inside(self):
        for language, page in self.pages.items():
            self.assertEqual(page.language, language)
            self.assertEqual(len(page.sources), len(guides.guide(language).pictures))
            self.assertEqual(page.titles, len(page.sources), "a picture without a description")
            for source in page.sources:
                self.assertTrue(source.startswith("data:image/png;base64,iVBOR"), source[:40])
            self.assertNotRegex(page.text, r"<(link|script|iframe|object)\b|@import|url\(")

    def test_every_link_leads_somewhere(self):
        other = {"en": "guide.sv.html", "sv": "guide.html"}
        for language, page in self.pages.items():
            self.assertEqual(len(set(page.ids)), len(page.ids), "an id that two elements have")
            inside = [link[1:] for link in page.links if link.startswith("#")]
            self.assertGreater(len(inside), 5)
            self.assertEqual([anchor for anchor in inside if anchor not in page.ids], [])
            self.assertEqual([link for link in page.links if not link.startswith("#")], [other[language]])

    def test_the_contents_are_the_headings(self):
        for language, page in self.pages.items():
            self.assertGreater(len(page.headings), 25)
            self.assertEqual(page.contents, ["#" + one for one in page.headings])
            self.assertEqual([one for one in guides.guide(language).anchors if one not in page.headings], [])

    def test_f1_names_sections_that_both_pages_have(self):
        asked = [section for text in guides.sources() for section in re.findall(r'ShowGuide\(\*this, L"([^"]*)"\)', text)]
        self.assertEqual(len(asked), 8)
        for page in self.pages.values():
            self.assertEqual([section for section in asked if section not in page.headings], [])

    def test_cells_say_what_column_they_are_of(self):
        for page in self.pages.values():
            self.assertGreater(len(page.cells), 60)
            self.assertNotIn("", page.cells)

    def test_a_page_is_the_same_wherever_and_whenever_it_is_made(self):
        for language, name in LANGUAGES.items():
            again = os.path.join(self.folder, "again.html")
            made = make(language, os.path.join(DOCS, name), again, TZ="Asia/Tokyo", LC_ALL="C", PYTHONHASHSEED="7")
            self.assertEqual(made.returncode, 0, made.stderr)
            self.assertEqual(Page(again).text, self.pages[language].text)

    def test_no_page_is_made_of_a_guide_with_a_fault(self):
        for text, complaint in {
            "# A\n\n## B\n\n[there](#c)\n": "no heading has the anchor #c",
            "# A\n\n## B\n\n![picture](images/none.png)\n": "images/none.png",
            "# A\n\n## B\n\n## B\n": "two headings have the anchor b",
            "# A\n\n## B\n\n[there](architecture.md)\n": "architecture.md is not in the user's folder",
        }.items():
            guide = os.path.join(self.folder, "faulty.md")
            with open(guide, "w", encoding="utf-8") as file:
                file.write(text)
            page = os.path.join(self.folder, "faulty.html")
            made = make("en", guide, page)
            self.assertNotEqual(made.returncode, 0, text)
            self.assertIn(complaint, made.stderr)
            self.assertFalse(os.path.exists(page))


if __name__ == "__main__":
    unittest.main()
