"""Draws docs/images/folders.svg, the folders and what stands on what, by the tables of check_layers.py.

With --check it draws nothing and tells whether the picture that is kept is the one that it would draw.
"""
import pathlib
import sys
from xml.sax.saxutils import escape

from check_layers import ROOMS, SHELVES

PICTURE = pathlib.Path(__file__).resolve().parent.parent / "docs/images/folders.svg"

# What a folder holds, in the few words that fit on it. One that is missing here stops the drawing.
HOLDS = {
    "foundation": "numbers, boxes, clock, timers", "camera": "the record, the hub, operations",
    "shots": "moves by the clock", "render": "renderer base, icons", "story/history": "views of before",
    "interaction/tools": "orbit, pan, zoom, walk ...", "cube": "orientation cube", "disc": "navigation discs",
    "story": "storyboard", "toolbar": "bars", "controller": "six axes",
    "interaction/view_manager": "the one door for events of the window", "facade": "zov/: value types of a host's own",
    "files": "whole files", "texts": "words, languages", "stories": "stories in files", "views": "named views, BCF",
    "projection": "matrices", "images": "read, in memory", "scene": "import, rays", "hub": "ViewHub",
    "gl": "OpenGL state", "pictures": "the drawn set", "picture_files": "PNG, WebP",
    "widget_renderer": "GLRenderer", "scene_view": "GLSceneView", "window": "SDL, Gui", "input": "mouse, keys, touch",
    "focus": "by keyboard", "devices": "six axes, pads", "bars": "their host", "cube ": "its dress",
    "panels": "editors, menus", "dialogs": "the desktop's",
}
# Colours by storey: fill, edge.
CORE, PUBLIC, KIT, PROGRAM = ("#e3ecf7", "#7d9cc4"), ("#fff4d6", "#c9a84a"), ("#e4f1e6", "#7fae86"), ("#f3e6ee", "#b787a2")
WIDTH, ROW, GAP, MARGIN, LABEL = 940, 46, 8, 20, 92
ROOMS_IN_A_ROW = 8


def box(x, y, width, name, words, colours):
    fill, edge = colours
    middle = x + width / 2
    yield (f'<rect x="{x:.1f}" y="{y}" width="{width:.1f}" height="{ROW}" rx="5" fill="{fill}" stroke="{edge}"/>')
    yield f'<text x="{middle:.1f}" y="{y + 19}" class="name">{escape(name)}</text>'
    yield f'<text x="{middle:.1f}" y="{y + 35}" class="words">{escape(words)}</text>'


def row(y, boxes, colours, label=""):
    """`boxes` are pairs of a name and what it holds, side by side."""
    left = MARGIN + LABEL
    width = (WIDTH - left - MARGIN - GAP * (len(boxes) - 1)) / len(boxes)
    yield f'<text x="{MARGIN}" y="{y + 27}" class="label">{escape(label)}</text>'
    for place, (name, words) in enumerate(boxes):
        yield from box(left + place * (width + GAP), y, width, name, words, colours)


def rooms_by_height():
    """A room stands above each that it sees."""
    height = {}
    for room, seen in ROOMS.items():
        height[room] = 1 + max((height[other] for other in seen), default=-1)
    return [[room for room in ROOMS if height[room] == storey] for storey in range(max(height.values()) + 1)]


def hold(room, of_kit=False):
    return HOLDS[room + " " if of_kit and room in SHELVES else room]


def storeys():
    """Rows from the roof down: boxes, colours, label."""
    yield [("apps/zovview", "the viewer"), ("examples/", "one program for each way of embedding")], PROGRAM, "programs"
    for number, rooms in reversed(list(enumerate(rooms_by_height()))):
        parts = [rooms[at:at + ROOMS_IN_A_ROW] for at in range(0, len(rooms), ROOMS_IN_A_ROW)]
        for part in reversed(parts):
            yield [(room, hold(room, True)) for room in part], KIT, "host/src" if number == 0 and part is parts[0] else ""
    yield [("include/korvane, include/zov", "from here up only this is seen of the library")], PUBLIC, "public"
    for shelf in sorted(set(SHELVES.values()), reverse=True):
        folders = [folder for folder, place in SHELVES.items() if place == shelf]
        yield [(folder, hold(folder)) for folder in folders], CORE, "src" if shelf == 0 else ""


def draw():
    lines, y = [], MARGIN
    for boxes, colours, label in storeys():
        lines += row(y, boxes, colours, label)
        y += ROW + GAP
    height = y - GAP + MARGIN
    style = ("text{font-family:'DejaVu Sans',sans-serif;text-anchor:middle;fill:#22303f}"
             ".name{font-size:12px;font-weight:bold}.words{font-size:10.5px;fill:#4c5a69}"
             ".label{font-size:12px;fill:#4c5a69;text-anchor:start}")
    head = (f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {WIDTH} {height}" width="{WIDTH}" height="{height}">'
            f"<style>{style}</style>")
    ground = f'<rect width="{WIDTH}" height="{height}" fill="#ffffff"/>'
    return "\n".join([head, ground, *lines, "</svg>"]) + "\n"


def main():
    if sys.argv[1:] != ["--check"]:
        PICTURE.write_text(draw())
        return 0
    if PICTURE.is_file() and PICTURE.read_text() == draw():
        return 0
    print("docs/images/folders.svg shows another house: python3 scripts/house_picture.py draws it anew")
    return 1


if __name__ == "__main__":
    sys.exit(main())
