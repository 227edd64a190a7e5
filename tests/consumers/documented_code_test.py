"""Each block of C++ in README.md and docs/ stands in a file that is compiled, and some are whole programs. Those of
CONTRIBUTING.md are a change that is yet to be made; first_change_test.py makes it."""
import pathlib
import re
import sys

BLOCK = re.compile(r"^ *```cpp\n(.*?)^ *```", re.MULTILINE | re.DOTALL)
WHOLE = {"README.md": "examples/window_view/main.cpp", "docs/embedding.md": "examples/first_orbit/main.cpp"}
COMPILED = ("examples", "host", "apps", "tests", "include", "src")


def normal(text):
    """Lines without indentation and without empty ones, so that an excerpt may stand further left."""
    return "\n" + "".join(line.strip() + "\n" for line in text.splitlines() if line.strip())


def main():
    root = pathlib.Path(sys.argv[1])
    sources = [normal(path.read_text()) for folder in COMPILED for pattern in ("*.cpp", "*.h")
               for path in (root / folder).rglob(pattern)]
    pages = [root / "README.md", *sorted((root / "docs").rglob("*.md"))]
    faults = []
    blocks = 0
    for page in pages:
        for block in BLOCK.findall(page.read_text()):
            blocks += 1
            if not any(normal(block) in source for source in sources):
                faults.append(f"{page.relative_to(root)}: no compiled file has this:\n{block}")
    for page, program in WHOLE.items():
        if normal((root / program).read_text()) not in map(normal, BLOCK.findall((root / page).read_text())):
            faults.append(f"{page}: no block is {program}")
    print(f"{blocks} blocks in {len(pages)} pages, {len(faults)} faults")
    print(*faults, sep="\n")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
