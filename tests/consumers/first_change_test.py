"""The first change of CONTRIBUTING.md, made in copies of its files, compiles: the command, and its test.

    first_change_test.py SOURCE BUILD
"""
import json
import pathlib
import re
import shlex
import subprocess
import sys
import tempfile

PAGE = "CONTRIBUTING.md"
BLOCK = re.compile(r"^ *```cpp\n(.*?)^ *```", re.MULTILINE | re.DOTALL)
# Where each block goes, in the order of the page: a file, and what stands in the line behind it.
PLACES = (
    ("apps/zovview/commands/view_commands.h", "/// From the corner of the front"),
    ("apps/zovview/commands/view_commands.cpp", "void ShowIsometric("),
    ("apps/zovview/commands/view_commands.cpp", '{Views, "isometric"'),
    ("tests/apps/view_commands_test.cpp", 'StandardView{"isometric"'),
)
FOLDERS = ("apps/zovview", "tests")  # as the sources name their headers
KEY = re.compile(r"\bSDLK_\w+")


def command_for(entry, changed, folder):
    """The compiler's command of a file of the tree, for the changed copy of it, looking at changed headers first."""
    words = shlex.split(entry["command"])
    options = words[1:words.index("-o")]
    beside = pathlib.Path(entry["file"]).parent
    return [words[0], *(f"-I{folder / name}" for name in FOLDERS), *options, f"-I{beside}", "-fsyntax-only", str(changed)]


def change(root, folder, blocks):
    """Copies with the blocks in them; tells of a place that is not there."""
    texts = {name: (root / name).read_text() for name, _ in PLACES}
    for (name, behind), block in zip(PLACES, blocks):
        lines = texts[name].splitlines(keepends=True)
        at = next((i for i, line in enumerate(lines) if behind in line), None)
        if at is None:
            yield f"{name} has no line with {behind}"
            continue
        for key in KEY.findall(block):
            if key in texts[name]:
                yield f"{key} is another command's"
        texts[name] = "".join([*lines[:at], block, *lines[at:]])
    for name, text in texts.items():
        (folder / name).parent.mkdir(parents=True, exist_ok=True)
        (folder / name).write_text(text)


def main():
    root, build = map(pathlib.Path, sys.argv[1:3])
    blocks = BLOCK.findall((root / PAGE).read_text())
    faults = [] if len(blocks) == len(PLACES) else [f"{PAGE} has {len(blocks)} blocks of C++, not {len(PLACES)}"]
    entries = {entry["file"]: entry for entry in json.loads((build / "compile_commands.json").read_text())}
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        faults += change(root, folder, blocks)
        sources = sorted({file for file, _ in PLACES if file.endswith(".cpp")})
        for source in sources:
            entry = entries[str(root / source)]
            run = subprocess.run(command_for(entry, folder / source, folder), cwd=entry["directory"], capture_output=True, text=True)
            if run.returncode:
                faults.append(f"{source}, changed as {PAGE} says, does not compile:\n{run.stderr}")
    print(f"{len(blocks)} blocks in {len(sources)} sources, {len(faults)} faults")
    print(*faults, sep="\n")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
