"""Reads what the guides quote, and the texts that they may quote: the program's table of texts, the texts of the setup, and
the messages in the sources.

The guides follow one convention. Texts that Odomira and its setup show are in bold; a path through the menus has " - "
between the captions. Messages are in straight quotation marks. Texts of Windows are in italics and are not checked. Links
within a guide lead to the anchors before the headings, which are the same in every language.
"""
import os
import re

HERE = os.path.dirname(os.path.abspath(__file__))
PROJECT = os.path.dirname(os.path.dirname(HERE))
DOCS = os.path.join(PROJECT, "docs")
LANGUAGES = {"en": "guide.md", "sv": "guide.sv.md"}
PRODUCT = "Odomira"

# The offset of the Swedish texts of a form from its English ones.
SWEDISH = 100

# Shorter literals in the sources are not texts for users.
SHORTEST_LITERAL = 4


def read(*path):
    with open(os.path.join(PROJECT, *path), encoding="utf-8") as file:
        return file.read()


def single_spaced(text):
    return " ".join(text.split())


class Guide:
    """The parts of a guide that can be checked."""

    def __init__(self, text):
        self.text = text
        self.lines = re.findall(r"^```\n(.*?)^```", text, re.M | re.S)
        text = re.sub(r"^```\n.*?^```", "", text, flags=re.M | re.S)
        self.codes = re.findall(r"`([^`]+)`", text)
        text = re.sub(r"`[^`]+`", "", text)
        self.bold = [single_spaced(one) for one in re.findall(r"\*\*(.+?)\*\*", text, re.S)]
        self.captions = [caption for one in self.bold for caption in one.split(" - ")]
        self.anchors = re.findall(r'^<a id="([a-z-]+)"></a>$', text, re.M)
        self.pictures = re.findall(r"!\[([^]]*)\]\(([^)]*)\)", text)
        self.links = re.findall(r"(?<!!)\[[^]]+\]\(([^)]*)\)", text)
        self.headings = re.findall(r"^#+ (.+)$", text, re.M)
        self.anchored = re.findall(r'^<a id="([a-z-]+)"></a>\n\n(#+) .+$', text, re.M)
        text = re.sub(r"<a [^>]*>", "", text)
        self.messages = [single_spaced(one) for one in re.findall(r'"([^"]+)"', text)]
        self.odd_quotation_marks = text.count('"') % 2 == 1

    def section(self, anchor):
        """The section about a window or a subject."""
        begin = self.text.index(f'<a id="{anchor}"></a>')
        end = re.compile(r'^<a id="[a-z-]+"></a>\n\n## ', re.M).search(self.text, begin + 1)
        return Guide(self.text[begin:end.start() if end else None])

    def defaults(self):
        """The button that Enter presses for each question, from the table of the guide."""
        return dict(re.findall(r'^\| "([^"]+)" \| \*([^*]+)\* \|$', self.text, re.M))


def guide(language):
    return Guide(read("docs", LANGUAGES[language]))


def table_texts():
    """The program's texts by language: {"en": {...}, "sv": {...}}."""
    texts = {"en": set(), "sv": set()}
    for number, text in re.findall(r'^ +(\d+) "((?:[^"]|"")*)"$', read("resources", "odomira.rc"), re.M):
        texts["en" if int(number) % 1000 < SWEDISH else "sv"].add(text.replace('""', '"'))
    return texts


def setup_texts():
    """The setup's texts by language, without the ampersands of access keys."""
    found = re.findall(r'^!insertmacro Text \w+ \\\n +"(.*)" \\\n +"(.*)"$', read("packaging", "setup", "texts.nsh"), re.M)
    found = [[re.sub(r"&(?=\w)", "", text) for text in texts] for texts in found]
    return {"en": {english for english, _ in found}, "sv": {swedish for _, swedish in found}}


def sources():
    """The texts of the program's sources, without its tests."""
    for folder, names, files in os.walk(PROJECT):
        if folder == PROJECT:
            names[:] = [name for name in names if not name.startswith(".") and name not in ("build", "tests", "benchmark")]
        for name in files:
            if name.endswith((".cpp", ".h")):
                yield read(folder, name)


def source_literals():
    """Every string literal of the sources, with spaces instead of line breaks."""
    literals = set()
    for text in sources():
        for literal in re.findall(r'"((?:[^"\\\n]|\\.)*)"', text):
            literals.add(single_spaced(re.sub(r"\\[rn]", " ", literal)))
    return literals


def error_descriptions():
    """The descriptions of the run-time errors by their numbers."""
    text = "\n".join(sources())
    listed = re.search(r"enum class ErrorNumber[^{;]*\{(.*?)\}", text, re.S)[1]
    numbers = {name: int(number) for name, number in re.findall(r"(\w+) = (\d+)", listed)}
    return {numbers[name]: words for name, words in re.findall(r'ErrorNumber::(\w+), L?"([^"]+)"', text)}


class Vocabulary:
    """All that a guide of one language may quote."""

    def __init__(self, language):
        table = table_texts()[language]
        setup = setup_texts()[language]
        literals = source_literals()
        self.captions = table | setup | {f"{text} {PRODUCT}..." for text in table}
        if "OK" in literals:
            self.captions.add("OK")
        pieces = table | setup | {one for one in literals if len(one) >= SHORTEST_LITERAL}
        pieces = sorted(map(single_spaced, pieces), key=len, reverse=True)
        # A message may be put together of several texts, with numbers between them.
        self._messages = re.compile(r"(?:(?:" + "|".join(map(re.escape, pieces)) + r"|\d+|': ?)\s?)+")
        self._descriptions = error_descriptions()

    def shows_caption(self, caption):
        return caption in self.captions

    def shows_message(self, message):
        numbered = re.fullmatch(r"Run-time error '(\d+)': (.*)", message)
        if numbered:
            return self._descriptions.get(int(numbered[1])) == numbered[2]
        return self._messages.fullmatch(message) is not None
