#!/usr/bin/python3
"""Turns the documentation into HTML pages that need nothing but each other."""

import argparse
import html
import pathlib
import re
import shutil
import sys

import markdown

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
# For who operates and makes panels, in the order of the index.
PAGES = ("../CHANGELOG", "handing-over", "operating", "panel-app", "keys-and-mouse", "building-panels", "properties-of-controls",
         "bindings", "snapshots", "panel-check", "panel-files", "style-of-panels", "device-files", "interface-controls",
         "terminal", "host-guide", "property-reference")

STYLE = """body { font: 15px/1.5 "Segoe UI", Tahoma, sans-serif; color: #1c2126; max-width: 60em; margin: 2em auto; padding: 0 1em }
pre, code { font: 13px/1.45 Consolas, "Courier New", monospace; background: #f0f2f4 }
pre { padding: .8em; overflow-x: auto } img { max-width: 100% } a { color: #1a5fa0 }
table { border-collapse: collapse } th, td { border: 1px solid #ccd2d8; padding: .25em .6em; text-align: left; vertical-align: top }"""

PAGE = """<!DOCTYPE html>
<html lang="en"><head><meta charset="utf-8"><title>{title}</title><style>
{style}
</style></head><body>
{navigation}{body}
</body></html>
"""

LINK = re.compile(r'<a href="([^"]*)">(.*?)</a>', re.DOTALL)
IMAGE = re.compile(r'<img alt="([^"]*)" src="([^"]*)"')


def anchor(heading, separator):
    """The name that a heading has in links, as hosts of source code make it."""
    return re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", separator)


class Page:
    def __init__(self, source):
        self.source = source
        converter = markdown.Markdown(
            extensions=["fenced_code", "tables", "toc", "sane_lists"],
            extension_configs={"toc": {"slugify": anchor}})
        self.body = converter.convert(source.read_text(encoding="utf-8"))
        self.anchors = set(re.findall(r'\bid="([^"]+)"', self.body))
        self.title = html.unescape(re.sub("<.*?>", "", re.search("<h1.*?>(.*?)</h1>", self.body, re.DOTALL).group(1)))
        self.name = source.stem + ".html"


def write_pages(sources, folder, product):
    """Writes a page for each source, and index.html. A link to a page that is among them leads there, one to another file
    becomes plain text; one that leads nowhere is an error."""
    pages = {source.resolve(): Page(source) for source in map(pathlib.Path, sources)}
    folder.mkdir(parents=True, exist_ok=True)
    for page in pages.values():
        def follow(match, page=page):
            target, text = html.unescape(match.group(1)), match.group(2)
            if re.match(r"[a-z]+:", target):
                return match.group(0)
            path, _, place = target.partition("#")
            file = (page.source.parent / path).resolve() if path else page.source.resolve()
            if not file.exists():
                raise ValueError(f"{page.source}: a link leads to {target}, which is not there")
            other = pages.get(file)
            if other is None:
                return text
            if place and place not in other.anchors:
                raise ValueError(f"{page.source}: a link leads to {target}, which has no such heading")
            return f'<a href="{other.name if path else ""}{"#" + place if place else ""}">{text}</a>'

        def take_along(match, page=page):
            file = page.source.parent / match.group(2)
            shutil.copy(file, folder / file.name)
            return f'<img alt="{match.group(1)}" src="{file.name}"'

        body = IMAGE.sub(take_along, LINK.sub(follow, page.body))
        navigation = f'<p><a href="index.html">{html.escape(product)}</a></p>\n'
        write(folder / page.name, PAGE.format(title=html.escape(page.title), style=STYLE, navigation=navigation, body=body))
    entries = "\n".join(f'<li><a href="{page.name}">{html.escape(page.title)}</a></li>' for page in pages.values())
    write(folder / "index.html", PAGE.format(
        title=html.escape(product), style=STYLE, navigation="",
        body=f"<h1>{html.escape(product)}</h1>\n<ul>\n{entries}\n</ul>"))


def write(path, text):
    path.write_text(text, encoding="utf-8", newline="\n")


def write_documentation(folder, product):
    """The pages beside the programs. What an earlier build has left goes."""
    shutil.rmtree(folder, ignore_errors=True)
    write_pages([ROOT / "docs" / f"{page}.md" for page in PAGES], folder, product)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--product", required=True, help="what is documented, with its version")
    parser.add_argument("folder", type=pathlib.Path, help="where the pages go; whatever lies in it goes first")
    arguments = parser.parse_args()
    try:
        write_documentation(arguments.folder, arguments.product)
    except ValueError as wrong:
        sys.exit(f"documents: {wrong}")


if __name__ == "__main__":
    main()
