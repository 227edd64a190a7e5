"""Keeps and compares the ratios of a run of the benchmarks; scripts/bench calls it.

    bench_ratios.py RUN.json                     a table of the run
    bench_ratios.py RUN.json --keep FILE         writes its ratios into FILE, and some into README.md
    bench_ratios.py RUN.json --compare FILE      fails with 1 for cases that have lost; its last line is a filter of their
                                                 names for the benchmarks. Fails with 2 where the run lacks one of FILE
                    --only FILTER                and only cases whose whole name the filter fits

A ratio is the library's time by that of the bare arithmetic in the same run. The least time of some repetitions is the
one that nothing disturbed; how far that can be trusted is seen by what other halves of the repetitions would have given.
"""
import argparse
import json
import pathlib
import random
import re
import sys

LOSS = 0.15
HALVES = 200
SURE = 0.9  # of the halves lie within the noise
SIDES = ("library", "bare")
README = pathlib.Path(__file__).resolve().parent.parent / "README.md"
BEGIN, END = "<!-- by scripts/bench --keep -->\n", "<!-- end -->\n"
IN_README = ("orbit step", "pan step", "zoom step", "frame of a move", "FitBoundingBoxToView", "idle frame",
             "mouse over the cube", "cube drawn", "disc drawn", "toolbar drawn")


def times_of(run):
    """The times of each case by side, in the order of the repetitions."""
    times = {}
    for row in json.loads(run.read_text())["benchmarks"]:
        if row.get("run_type") != "iteration" or row.get("error_occurred"):
            continue
        name, _, side = row["run_name"].split("/min_time")[0].rpartition("/")
        times.setdefault(name, {}).setdefault(side, []).append(row["cpu_time"])
    return {name: sides for name, sides in times.items() if all(side in sides for side in SIDES)}


def ratio_of(sides):
    return min(sides["library"]) / min(sides["bare"])


def noise_of(sides, chance):
    """How far the ratio of half of the repetitions is from that of all, as a fraction."""
    whole = ratio_of(sides)
    halves = [{side: chance.sample(sides[side], max(1, len(sides[side]) // 2)) for side in SIDES} for _ in range(HALVES)]
    return sorted(abs(ratio_of(half) / whole - 1) for half in halves)[int(SURE * HALVES)]


def ratios_of(run):
    chance = random.Random(1)
    return {name: {"ratio": round(ratio_of(sides), 4), "noise": round(noise_of(sides, chance), 4),
                   "nanoseconds": round(min(sides["library"]), 1)} for name, sides in sorted(times_of(run).items())}


def table_of(ratios):
    rows = [f"| {name} | {case['nanoseconds']:.0f} | {case['ratio']:.2f} | {case['noise']:.0%} |\n"
            for name, case in ratios.items()]
    return "".join(["| case | ns | times the bare arithmetic | noise |\n", "|---|--:|--:|--:|\n", *rows])


def fill_readme(ratios):
    before, begin, rest = README.read_text().partition(BEGIN)
    _, end, after = rest.partition(END)
    table = table_of({name: ratios[name] for name in IN_README if name in ratios})
    README.write_text(before + begin + table + end + after)


def losses(kept, ratios):
    for name, case in ratios.items():
        if name in kept:
            change = case["ratio"] / kept[name]["ratio"] - 1
            allowed = LOSS + case["noise"] + kept[name]["noise"]
            if change > allowed:
                print(f"{name}: {kept[name]['ratio']:.2f} times the bare arithmetic became {case['ratio']:.2f}, "
                      f"{change:+.0%}; {allowed:.0%} is within loss and noise")
                yield name


def filter_of(names):
    """For the extended regular expressions of POSIX."""
    return "|".join(re.sub(r"[].^$*+?()[{}|\\]", r"\\\g<0>", name) for name in names)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("run", type=pathlib.Path)
    parser.add_argument("--keep", type=pathlib.Path)
    parser.add_argument("--compare", type=pathlib.Path)
    parser.add_argument("--only", default=".*")
    arguments = parser.parse_args()
    ratios = ratios_of(arguments.run)
    if not ratios:
        print("the run has no case with both sides")
        return 2
    if arguments.keep:
        arguments.keep.write_text(json.dumps(ratios, indent=1) + "\n")
        fill_readme(ratios)
    if not arguments.compare:
        print(table_of(ratios), end="")
        return 0
    kept = {name: case for name, case in json.loads(arguments.compare.read_text()).items()
            if re.fullmatch(arguments.only, name)}
    lost = list(losses(kept, ratios))
    missing = sorted(set(kept) - set(ratios))
    if missing:
        print(f"kept, but not in this run: {', '.join(missing)}")
        return 2
    if lost:
        print(filter_of(lost))
        return 1
    print(f"{len(kept)} cases compared, none has lost")
    return 0


if __name__ == "__main__":
    sys.exit(main())
