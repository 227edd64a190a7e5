#!/usr/bin/env python3
"""A key for each of the sources named on the input: it changes when the file does, or a file of the project that
it includes, however indirectly. Prints the key and the name, a line each."""
import hashlib
import pathlib
import re
import sys

ROOTS = [pathlib.Path(root) for root in ("include", "src", "host/include", "host/src", "apps/zovview")]
INCLUDE = re.compile(rb'^\s*#\s*include\s*["<]([^">]+)[">]', re.MULTILINE)
included = {}


def find(name, folder):
    """The file of the project that an include means, or None for one of a library."""
    for root in [folder, *ROOTS]:
        path = root / name
        if path.is_file():
            return path.resolve()
    return None


def read(path):
    """The hash of a file and what it includes itself."""
    if path not in included:
        text = path.read_bytes()
        names = (name.decode() for name in INCLUDE.findall(text))
        found = [find(name, path.parent) for name in names]
        included[path] = hashlib.sha256(text).hexdigest(), [each for each in found if each]
    return included[path]


def reach(path):
    """All files that are read where this one is compiled."""
    seen, waiting = set(), [path]
    while waiting:
        each = waiting.pop()
        if each not in seen:
            seen.add(each)
            waiting += read(each)[1]
    return seen


for line in sys.stdin:
    source = line.rstrip("\n")
    hashes = sorted(read(path)[0] for path in reach(pathlib.Path(source).resolve()))
    print(hashlib.sha256("".join(hashes).encode()).hexdigest()[:32], source)
