"""Prints a page of docs/ as the site has it: links to files of the tree that are no pages lead to copies of them, and
headings have names, to which links lead.

The copies are made by scripts/docs, which asks for their names with --files PAGE...
"""
import os
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
LINK = re.compile(r"(?<!!)\[([^\]]*)\]\(([^)#\s:]*)(#[^)]*)?\)")
HEADING = re.compile(r"^(##+\s+)([^{]*?)\s*$")
FENCE = re.compile(r"^\s*```")


def slug(heading):
    """The anchor of a heading, as forges make it."""
    return re.sub(r"\s", "-", re.sub(r"[^\w\s-]", "", heading.lower()))


def lines_outside_code(text):
    """Pairs of a line and whether it is text, not code."""
    inside = False
    for line in text.splitlines(keepends=True):
        fence = FENCE.match(line) is not None
        yield line, not (inside or fence)
        inside ^= fence


def file_of(page, target):
    """The path in the tree when the link leads to a file or folder that is no page."""
    path = pathlib.PurePath(os.path.normpath(page.parent / target))
    return path.as_posix() if path.suffix != ".md" and (ROOT / path).exists() else None


def filtered(page):
    def lead(link):
        text, target, anchor = link.groups()
        path = file_of(page, target) if target else None
        if path:
            return f'<a href="files/{path}">{text.replace("`", "")}</a>'
        if anchor:
            return f"[{text}](@ref {pathlib.PurePath(target or page).stem}-{anchor[1:]})"
        return link.group(0)

    for line, is_text in lines_outside_code((ROOT / page).read_text()):
        heading = HEADING.match(line) if is_text else None
        if heading:
            yield f"{heading.group(1)}{heading.group(2)} {{#{page.stem}-{slug(heading.group(2))}}}\n"
        else:
            yield LINK.sub(lead, line) if is_text else line


def files_of(page):
    for line, is_text in lines_outside_code((ROOT / page).read_text()):
        for link in LINK.finditer(line) if is_text else ():
            path = file_of(page, link.group(2)) if link.group(2) else None
            if path:
                yield path


def pages(names):
    return [pathlib.Path(name).resolve().relative_to(ROOT) for name in names]


if __name__ == "__main__":
    if sys.argv[1] == "--files":
        print(*sorted({path for page in pages(sys.argv[2:]) for path in files_of(page)}), sep="\n")
    else:
        sys.stdout.writelines(line for page in pages(sys.argv[1:]) for line in filtered(page))
