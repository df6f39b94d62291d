"""make_page.py LANGUAGE GUIDE PAGE: makes one HTML page of a guide, with everything in it: pictures, style, contents.

Headings get the anchors that stand in front of them, the others one of their own words. A link that leads nowhere stops it.
The same guide gives the same bytes.
"""
import base64
import html
import os
import re
import string
import sys
import unicodedata

from markdown_it import MarkdownIt

HERE = os.path.dirname(os.path.abspath(__file__))
CONTENTS = {"en": "Contents", "sv": "Innehåll"}
ANCHOR = re.compile(r'<a id="([a-z-]+)"></a>')


class GuideError(Exception):
    """The guide cannot become a page."""


def read(name):
    with open(os.path.join(HERE, name), encoding="utf-8") as file:
        return file.read()


def words_of(text):
    """An anchor of the words of a heading: "Small paper" gives "small-paper"."""
    plain = unicodedata.normalize("NFKD", text.lower()).encode("ascii", "ignore").decode()
    return "-".join(re.findall(r"[a-z0-9]+", plain))


def plain_text(inline):
    return "".join(child.content for child in inline.children)


def give_anchors(tokens):
    """Moves the anchors into the headings behind them. Returns what is left, and the headings: level, anchor, text."""
    left, headings, anchor = [], [], None
    rest = iter(tokens)
    for token in rest:
        if token.type == "paragraph_open":
            inline = next(rest)
            if found := ANCHOR.fullmatch(inline.content):
                anchor = found[1]
                next(rest)
                continue
            left += [token, inline]
            continue
        if token.type == "heading_open":
            inline = next(rest)
            anchor = anchor or words_of(inline.content)
            if anchor in (one for _, one, _ in headings):
                raise GuideError(f"two headings have the anchor {anchor}")
            token.attrSet("id", anchor)
            headings.append((int(token.tag[1]), anchor, plain_text(inline)))
            left += [token, inline]
            anchor = None
            continue
        left.append(token)
    return left, headings


def name_cells(tokens):
    """Gives each cell the heading of its column: a narrow screen has no columns."""
    columns, column = [], 0
    for token, behind in zip(tokens, tokens[1:]):
        if token.type == "table_open":
            columns = []
        elif token.type == "th_open":
            columns.append(plain_text(behind))
        elif token.type == "tr_open":
            column = 0
        elif token.type == "td_open":
            token.attrSet("data-column", columns[column])
            column += 1


def put_inside(tokens, folder, anchors):
    """Puts the pictures into the page, and turns links to the other guide into links to its page."""
    for child in (child for token in tokens for child in token.children or []):
        if child.type == "image":
            with open(os.path.join(folder, child.attrGet("src")), "rb") as file:
                child.attrSet("src", "data:image/png;base64," + base64.b64encode(file.read()).decode())
        elif child.type == "link_open":
            target = child.attrGet("href")
            if target.startswith("#") and target[1:] not in anchors:
                raise GuideError(f"no heading has the anchor {target}")
            if not target.startswith(("#", "guide.")):
                raise GuideError(f"{target} is not in the user's folder")
            child.attrSet("href", re.sub(r"\.md$", ".html", target))


def contents(headings):
    """The table of contents: two levels of links."""
    lines, level = [], 1
    for depth, anchor, text in headings:
        if depth == 1:
            continue
        lines.append("</li>" if depth == level else "<ul>" if depth > level else "</li></ul></li>")
        lines.append(f'<li><a href="#{anchor}">{html.escape(text)}</a>')
        level = depth
    return "\n".join(lines + ["</li></ul>"] * (level - 1))


def page(language, text, folder):
    markdown = MarkdownIt("commonmark").enable("table")
    tokens, headings = give_anchors(markdown.parse(text))
    name_cells(tokens)
    put_inside(tokens, folder, {anchor for _, anchor, _ in headings})
    body = markdown.renderer.render(tokens, markdown.options, {})
    beginning, heading, rest = body.partition("<h2")
    return string.Template(read("page.html")).substitute(
        language=language, title=html.escape(headings[0][2]), style=read("style.css"), contents=CONTENTS[language],
        beginning=beginning, table=contents(headings), rest=heading + rest)


def main():
    language, guide, output = sys.argv[1:]
    with open(guide, encoding="utf-8") as file:
        made = page(language, file.read(), os.path.dirname(guide))
    with open(output, "w", encoding="utf-8", newline="\n") as file:
        file.write(made)


if __name__ == "__main__":
    try:
        main()
    except (GuideError, OSError) as error:
        sys.exit(f"{sys.argv[2]}: {error}")
