"""Tells the links that lead nowhere: of pages, to files of the tree and to headings; of a built site, to its files.

    check_links.py [--without FOLDER] PAGE.md|SITE...   a site is a folder of HTML; what would be in FOLDER of it may be missing
Links to other machines are not followed.
"""
import argparse
import html.parser
import pathlib
import re
import sys
import urllib.parse

from docs_filter import lines_outside_code, slug

LINK = re.compile(r"!?\[[^\]]*\]\(([^)\s]+)\)")
HEADING = re.compile(r"^#+\s+(.*?)\s*$", re.MULTILINE)
# What doxygen itself links above a class whose nested classes are all private.
ITS_OWN = ("#nested-classes",)
OUTSIDE = ("http:", "https:", "mailto:", "data:", "javascript:")


def anchors_of_page(page):
    text = "".join(line for line, is_text in lines_outside_code(page.read_text()) if is_text)
    return {slug(heading) for heading in HEADING.findall(text)}


class Names(html.parser.HTMLParser):
    """Of a file of the site: where its links lead, and the places in it that links may name."""

    def __init__(self):
        super().__init__()
        self.links, self.anchors = set(), set()

    def handle_starttag(self, tag, attributes):
        for name, value in attributes:
            if name in ("id", "name") and value:
                self.anchors.add(value)
            elif name in ("href", "src") and value:
                self.links.add(value)


def faults_of_page(page):
    for line, is_text in lines_outside_code(page.read_text()):
        for target in LINK.findall(line) if is_text else ():
            name, _, anchor = target.partition("#")
            if target.startswith(OUTSIDE):
                continue
            path = page.parent / name if name else page
            if not path.exists():
                yield f"{page}: {target} leads to no file"
            elif anchor and path.suffix == ".md" and anchor not in anchors_of_page(path):
                yield f"{page}: {target} leads to no heading"


def read_site(folder):
    site = {}
    for path in folder.rglob("*.html"):
        if "files" not in path.relative_to(folder).parts[:1]:
            site[path.resolve()] = names = Names()
            names.feed(path.read_text(errors="replace"))
    return site


def faults_of_site(folder, without):
    site = read_site(folder)
    for path, names in site.items():
        for link in sorted(names.links):
            if link.startswith(OUTSIDE) or link in ITS_OWN or without and link.startswith(f"{without}/"):
                continue
            name, anchor = urllib.parse.urldefrag(link)
            other = (path.parent / urllib.parse.unquote(name.partition("?")[0])).resolve() if name else path
            if not other.exists():
                yield f"{path.name}: {link} leads to no file"
            elif anchor and other in site and urllib.parse.unquote(anchor) not in site[other].anchors:
                yield f"{path.name}: {link} leads to no place of that page"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--without")
    parser.add_argument("names", type=pathlib.Path, nargs="+")
    arguments = parser.parse_args()
    faults = [fault for name in arguments.names
              for fault in (faults_of_site(name, arguments.without) if name.is_dir() else faults_of_page(name))]
    print(*faults, sep="\n", end="\n" if faults else "")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
