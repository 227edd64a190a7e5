"""scripts/bench --compare, with a benchmark program that is slow when it is told to be: what seems to have lost is timed
once more, alone, and only what has lost both times fails.

    bench_compare_test.py SOURCE
"""
import json
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

NAMES = ("orbit step", "orbit step, snapping", "pick (26 quads) a+b [x]")
PROGRAM = """#!{python}
import json, pathlib, re, sys
given = dict(argument[2:].split("=", 1) for argument in sys.argv[1:] if "=" in argument)
wanted = re.compile(given.get("benchmark_filter", ""))
here = pathlib.Path(__file__).parent
runs = json.loads((here / "runs.json").read_text())
(here / "runs.json").write_text(json.dumps(runs[1:]))
rows = [dict(run_type="iteration", run_name=f"{{name}}/{{side}}/min_time:0.1", cpu_time=time)
        for name, time in runs[0].items() for side, time in (("library", time), ("bare", 10.0))
        if wanted.search(f"{{name}}/{{side}}")]
pathlib.Path(given["benchmark_out"]).write_text(json.dumps(dict(benchmarks=rows * 4)))
with open(here / "asked", "a") as asked:
    asked.write(",".join(sorted({{row["run_name"].split("/")[0] for row in rows}})) + "\\n")
"""


def executable(path, text):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(text)
    path.chmod(0o755)


class Tree:
    """The script as it stands, in a tree in which nothing is built."""

    def __init__(self, source, folder):
        self.folder = folder
        (folder / "scripts").mkdir()
        for name in ("bench", "bench_ratios.py", "lib.sh"):
            shutil.copy(source / "scripts" / name, folder / "scripts")
        executable(folder / "scripts/setup", "#!/bin/sh\n")
        executable(folder / "bin/cmake", "#!/bin/sh\n")
        self.program = folder / "build/release/benchmarks/zovtools_bench"
        executable(self.program, PROGRAM.format(python=sys.executable))

    def compare(self, kept, runs):
        (self.folder / "kept.json").write_text(
            json.dumps({name: {"ratio": time / 10.0, "noise": 0.0, "nanoseconds": time} for name, time in kept.items()}))
        (self.program.parent / "runs.json").write_text(json.dumps(runs))
        asked = self.program.parent / "asked"
        asked.unlink(missing_ok=True)
        environment = {**os.environ, "PATH": f"{self.folder / 'bin'}:{os.environ['PATH']}"}
        run = subprocess.run(["bash", "scripts/bench", "--compare", "kept.json"], cwd=self.folder, env=environment,
                             capture_output=True, text=True)
        return run.returncode, run.stdout + run.stderr, asked.read_text().splitlines()


def main():
    source = pathlib.Path(sys.argv[1])
    fine = dict.fromkeys(NAMES, 20.0)
    slow = {**fine, NAMES[0]: 40.0, NAMES[2]: 40.0}
    everything, both = ",".join(sorted(NAMES)), ",".join(sorted((NAMES[0], NAMES[2])))
    cases = [  # what it is, the runs, the status, what was timed, what is told
        ("nothing has lost", [fine], 0, [everything], "3 cases compared, none has lost"),
        ("a loss that was none", [slow, fine], 0, [everything, both], "2 cases compared, none has lost"),
        ("a loss", [slow, slow], 1, [everything, both], "slower than kept.json"),
        ("one of two is a loss", [slow, {**fine, NAMES[2]: 30.0}], 1, [everything, both], "slower than kept.json"),
        ("less than the bound", [{**fine, NAMES[1]: 22.9}], 0, [everything], "none has lost"),
        ("a run without a case", [{}], 2, [""], "no case with both sides"),
        ("a case that is no more", [{name: fine[name] for name in NAMES[:2]}], 2, [",".join(sorted(NAMES[:2]))],
         f"kept, but not in this run: {NAMES[2]}"),
        ("a case that is new", [{**fine, "new": 20.0}], 0, [",".join(sorted((*NAMES, "new")))], "3 cases compared"),
        ("one of those timed again is no more", [slow, {NAMES[0]: 20.0}], 1, [everything, NAMES[0]],
         f"kept, but not in this run: {NAMES[2]}"),
    ]
    faults = []
    for what, runs, status, asked, told in cases:
        with tempfile.TemporaryDirectory() as folder:
            found = Tree(source, pathlib.Path(folder)).compare(fine, runs)
        if (found[0], found[2]) != (status, asked) or told not in found[1]:
            faults.append(f"{what}: {found[0]}, timed {found[2]}\n{found[1]}")
    print(f"{len(cases)} cases, {len(faults)} faults")
    print(*faults, sep="\n")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
