"""The shared library shows its public classes, hides the others, and needs only the language's runtime."""
import argparse
import pathlib
import re
import subprocess
import sys

RUNTIME = {"libstdc++", "libm", "libgcc_s", "libc", "ld-linux-x86-64", "ld-linux-aarch64"}
CLASS = re.compile(r"^(?:class|struct)\s+(?:ZOVTOOLS_API\s+)?(\w+)[^;{]*\{", re.MULTILINE)
EXPORTED = re.compile(r"^(?:class|struct)\s+ZOVTOOLS_API\s+(\w+)[^;{]*\{", re.MULTILINE)
DEFAULT = re.compile(r"static const \S+ (default\w+);")
# What c++filt puts before the name of a class.
PREFIX = re.compile(r"^(?:typeinfo(?: name)? for |vtable for |(?:non-)?virtual thunk to )")


def run(*command):
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def classes_in(folder):
    return {name for header in folder.rglob("*.h") for name in CLASS.findall(header.read_text())}


def check_names(symbols, internal):
    for symbol in symbols:
        name = PREFIX.sub("", symbol)
        if not re.match(r"Korvane::|zov|qmString::", name):
            yield f"shown, but not of the library: {symbol}"
        elif set(re.findall(r"\w+", name.split("(")[0])) & internal:
            yield f"shown, but internal: {symbol}"


def check_facade(symbols, folder):
    """The classes of the facade stand outside of the namespace, so the linker's list names them one by one."""
    exported = {name for header in folder.rglob("*.h") for name in EXPORTED.findall(header.read_text())}
    if len(exported) < 10:
        yield f"only {len(exported)} classes of the facade are exported, which cannot be"
    shown = {symbol.split("::")[0] for symbol in symbols}
    for name in sorted(exported - shown):
        yield f"not shown: {name}"
    # With virtual operations comes a table, which a host that derives from the class needs.
    for name in sorted(name for name in exported if f"{name}::~{name}()" in symbols):
        if f"vtable for {name}" not in symbols:
            yield f"no table of operations: {name}"
    for symbol in symbols:
        if re.match(r"(?:vtable for |typeinfo (?:name )?for )?zov\w+P\b", symbol):
            yield f"shown, but private: {symbol}"


def check_constants(symbols, header):
    for constant in DEFAULT.findall(header.read_text()):
        if f"Korvane::ApplicationParameters::{constant}" not in symbols:
            yield f"not shown: ApplicationParameters::{constant}"


def check_needed(library, readelf):
    needed = re.findall(r"\(NEEDED\).*\[(.+?)\.so", run(readelf, "-d", library))
    if not needed:
        yield "no library is needed at all, which cannot be"
    for name in sorted(set(needed) - RUNTIME):
        yield f"needs {name}"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--source", type=pathlib.Path, required=True)
    parser.add_argument("--nm", required=True)
    parser.add_argument("--readelf", required=True)
    parser.add_argument("library")
    arguments = parser.parse_args()

    public = classes_in(arguments.source / "include")
    internal = classes_in(arguments.source / "src") - public
    lines = run(arguments.nm, "-DC", "--defined-only", arguments.library).splitlines()
    symbols = {line.split(" ", 2)[2] for line in lines}

    faults = [*check_names(symbols, internal),
              *check_facade(symbols, arguments.source / "include/zov"),
              *check_constants(symbols, arguments.source / "include/korvane/application_parameters.h"),
              *check_needed(arguments.library, arguments.readelf)]
    for name in ("CameraOperations", "Renderer", "TimerQueue"):
        if f"vtable for Korvane::{name}" not in symbols:
            faults.append(f"not shown: {name}")
    print(f"{len(symbols)} symbols, {len(internal)} internal classes, {len(faults)} faults")
    print(*faults, sep="\n")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
