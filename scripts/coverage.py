"""Tells what the tests of the core reach. A line that they do not is a fault, and so are fewer branches than before.

    coverage.py COVERAGE.json            prints lines and branches, and each line that no test reaches
    coverage.py COVERAGE.json --branches each line as well of whose branches some are not taken
    coverage.py COVERAGE.json --keep     the share of branches of now is the one to reach from here on

COVERAGE.json is gcovr's. What the compiler branches by itself does not count: around exceptions, around statics that are
made once, to a function that may be virtual. So only statements with a word or a sign that branches do, and of those no
assert, whose other branch ends the program. Lines that no test can reach, or should, stand in
tests/coverage/exceptions.txt: a file, a text that such a line contains, and the reason; and after the word `branches`, lines
of which no test can take all. They are left out of the figures; one that is reached, or is no more, is told.
"""
import argparse
import json
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
EXCEPTIONS = ROOT / "tests/coverage/exceptions.txt"
KEPT = ROOT / "tests/coverage/figures.json"
TOLERANCE = 0.0005  # of the share of branches, of which a few are reached by chance
BRANCHES = re.compile(r"\b(?:if|for|while|switch|case|catch)\b|\?|&&|\|\|")
ASSERT = re.compile(r"\bassert\(.*\);")
ENDS = (";", "{", "}")
REMARK = re.compile(r"//.*$")


def exceptions():
    """What is left out: the kind, a file, a text and a reason, of `src/file.cpp | text | reason`, a line each, where
    `branches src/file.cpp` begins one that is about branches."""
    for line in EXCEPTIONS.read_text().splitlines():
        if line.strip() and not line.startswith("#"):
            file, text, reason = (field.strip() for field in line.split(" | "))
            kind, _, file = file.rpartition(" ")
            yield kind or "lines", file, text, reason


def statement_of(texts, number):
    """The lines of the statement that a line belongs to, as far as they can be told by how lines end."""
    code = [REMARK.sub("", text).rstrip() for text in texts]
    first = last = number - 1
    while first > 0 and code[first - 1] and not code[first - 1].endswith(ENDS):
        first -= 1
    while last + 1 < len(code) and not code[last].endswith(ENDS):
        last += 1
    return " ".join(code[first:last + 1])


def may_branch(texts, number):
    return bool(BRANCHES.search(ASSERT.sub("", statement_of(texts, number))))


class Reach:
    """Counts of lines and branches, and what is not reached."""

    def __init__(self):
        self.counts = {"lines": [0, 0], "branches": [0, 0]}
        self.missed = {"lines": [], "branches": []}  # file, number, text
        self.used = set()

    def add(self, file, listed):
        texts = (ROOT / file["file"]).read_text().splitlines()
        for line in file["lines"]:
            if line.get("gcovr/noncode"):
                continue
            place = (file["file"], line["line_number"], texts[line["line_number"] - 1].strip())
            if not line["count"] and self.is_left_out("lines", place, listed):
                continue
            self.count("lines", [line["count"] > 0], place)
            taken = [branch["count"] > 0 for branch in line["branches"]] if may_branch(texts, line["line_number"]) else []
            if line["count"] and not all(taken) and self.is_left_out("branches", place, listed):
                taken = list(filter(None, taken))
            self.count("branches", taken, place if line["count"] else None)

    def is_left_out(self, kind, place, listed):
        exception = next((each for each in listed if each[:2] == (kind, place[0]) and each[2] in place[2]), None)
        self.used.add(exception)
        return exception is not None

    def count(self, kind, reached, place):
        self.counts[kind][0] += sum(reached)
        self.counts[kind][1] += len(reached)
        if place and not all(reached):
            self.missed[kind].append(place)

    def figures(self):
        return {kind: round(reached / max(1, every), 4) for kind, (reached, every) in self.counts.items()}


def faults_of(reach, listed, kept):
    for _, file, text, _ in sorted(set(listed) - reach.used):
        yield f"the exception `{text}` of {file} is reached, or is no more"
    if reach.missed["lines"]:
        yield f"{len(reach.missed['lines'])} lines that no test reaches, and that no exception names"
    branches = reach.figures()["branches"]
    if branches < kept.get("branches", 0) - TOLERANCE:
        yield f"branches: {branches:.2%}, before {kept['branches']:.2%}"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("coverage", type=pathlib.Path)
    parser.add_argument("--branches", action="store_true")
    parser.add_argument("--keep", action="store_true")
    arguments = parser.parse_args()
    listed = list(exceptions())
    reach = Reach()
    for file in json.loads(arguments.coverage.read_text())["files"]:
        reach.add(file, listed)
    for kind in reach.missed if arguments.branches else ["lines"]:
        for file, number, text in reach.missed[kind]:
            print(f"{kind}: {file}:{number}: {text}")
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
