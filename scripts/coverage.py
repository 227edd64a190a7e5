"""Tells what the tests of the core reach. A line that they do not is a fault, and so are fewer branches than before.

    coverage.py COVERAGE.json        prints lines and branches, and each line that no test reaches
    coverage.py COVERAGE.json --keep the share of branches of now is the one to reach from here on

COVERAGE.json is gcovr's. Lines that no test can reach, or should, stand in tests/coverage/exceptions.txt: a file, a text
that such a line contains, and the reason. They are left out of the figures; one that is reached, or is no more, is told.
"""
import argparse
import json
import pathlib
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
EXCEPTIONS = ROOT / "tests/coverage/exceptions.txt"
KEPT = ROOT / "tests/coverage/figures.json"
TOLERANCE = 0.0005  # of the share of branches, of which a few are reached by chance


def exceptions():
    """Triples of a file, a text and a reason: `src/file.cpp | text | reason`, a line each."""
    for line in EXCEPTIONS.read_text().splitlines():
        if line.strip() and not line.startswith("#"):
            file, text, reason = (field.strip() for field in line.split(" | "))
            yield file, text, reason


class Reach:
    """Counts of lines and branches, and what is not reached."""

    def __init__(self):
        self.counts = {"lines": [0, 0], "branches": [0, 0]}
        self.missed = []  # file, number, text
        self.used = set()

    def add(self, file, listed):
        texts = (ROOT / file["file"]).read_text().splitlines()
        for line in file["lines"]:
            if line.get("gcovr/noncode"):
                continue
            number = line["line_number"]
            text = texts[number - 1].strip()
            exception = next((each for each in listed if each[0] == file["file"] and each[1] in text), None)
            if exception and not line["count"]:
                self.used.add(exception)
                continue
            self.count("lines", line["count"] > 0)
            for branch in line["branches"]:
                self.count("branches", branch["count"] > 0)
            if not line["count"]:
                self.missed.append((file["file"], number, text))

    def count(self, kind, reached):
        self.counts[kind][0] += reached
        self.counts[kind][1] += 1

    def figures(self):
        return {kind: round(reached / max(1, every), 4) for kind, (reached, every) in self.counts.items()}


def faults_of(reach, listed, kept):
    for file, text, _ in sorted(set(listed) - reach.used):
        yield f"the exception `{text}` of {file} is reached, or is no more"
    if reach.missed:
        yield f"{len(reach.missed)} lines that no test reaches, and that no exception names"
    branches = reach.figures()["branches"]
    if branches < kept.get("branches", 0) - TOLERANCE:
        yield f"branches: {branches:.2%}, before {kept['branches']:.2%}"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("coverage", type=pathlib.Path)
    parser.add_argument("--keep", action="store_true")
    arguments = parser.parse_args()
    listed = list(exceptions())
    reach = Reach()
    for file in json.loads(arguments.coverage.read_text())["files"]:
        reach.add(file, listed)
    for file, number, text in reach.missed:
        print(f"{file}:{number}: {text}")
    for kind, (reached, every) in reach.counts.items():
        print(f"{kind}: {reached} of {every}, {reach.figures()[kind]:.2%}")
    print(f"{len(listed)} exceptions, each with its reason, in {EXCEPTIONS.relative_to(ROOT)}")
    if arguments.keep:
        KEPT.write_text(json.dumps({"branches": reach.figures()["branches"]}) + "\n")
    faults = list(faults_of(reach, listed, json.loads(KEPT.read_text()) if KEPT.is_file() else {}))
    print(*faults, sep="\n", end="\n" if faults else "")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
