"""scripts/coverage.py: what it counts, what it leaves out, what it calls a fault.

    coverage_test.py SOURCE
"""
import json
import pathlib
import shutil
import subprocess
import sys
import tempfile

CODE = """int a() {
  if (x) return 1;
  return 0;
}
int b() {
  static const Name none;  // if it is not there
  assert(x && "no x");
  const bool same = x == 1 &&
                    y == 2;
}
"""
# Number, runs, runs of its branches.
LINES = [(1, 1, []), (2, 5, [5, 0]), (3, 0, []), (6, 1, [1, 0]), (7, 1, [0, 1]), (9, 1, [3, 0])]
BRANCH = "branches src/a.cpp | if (x) | no input has x"
SECOND = "branches src/a.cpp | y == 2; | y is always 2"
LINE = "src/a.cpp | return 0; | a compiler wants it"


def main():
    source = pathlib.Path(sys.argv[1])
    cases = [  # what it is, the exceptions, the figure that is kept, the status, what is told
        ("a line that is not reached", [], 0.5, 1, ("lines: src/a.cpp:3: return 0;", "lines: 5 of 6", "branches: 2 of 4, 50.00%")),
        ("a branch that is not taken is listed", [LINE], 0.5, 0, ("branches: src/a.cpp:2: if (x) return 1;", "branches: src/a.cpp:9: y == 2;", "lines: 5 of 5")),
        ("a branch that none can take", [LINE, BRANCH, SECOND], 1.0, 0, ("branches: 2 of 2, 100.00%",)),
        ("fewer branches than before", [LINE], 0.6, 1, ("branches: 50.00%, before 60.00%",)),
        ("an exception that is no more", [LINE, "branches src/a.cpp | return 1 | x", "branches src/a.cpp | z | x"], 0.5, 1,
         ("the exception `z` of src/a.cpp is reached, or is no more",)),
        ("a line's exception that is reached", [LINE, "src/a.cpp | int a | x"], 0.5, 1, ("the exception `int a` of",)),
    ]
    faults = []
    for what, exceptions, kept, status, told in cases:
        with tempfile.TemporaryDirectory() as name:
            root = pathlib.Path(name)
            for folder in ("scripts", "src", "tests/coverage"):
                (root / folder).mkdir(parents=True)
            shutil.copy(source / "scripts/coverage.py", root / "scripts")
            (root / "src/a.cpp").write_text(CODE)
            (root / "tests/coverage/exceptions.txt").write_text("# remark\n" + "\n".join(exceptions) + "\n")
            (root / "tests/coverage/figures.json").write_text(json.dumps({"branches": kept}))
            lines = [dict(line_number=number, count=count, branches=[dict(count=runs) for runs in branches])
                     for number, count, branches in LINES]
            (root / "coverage.json").write_text(json.dumps(dict(files=[dict(file="src/a.cpp", lines=lines)])))
            run = subprocess.run([sys.executable, "scripts/coverage.py", "coverage.json", "--branches"], cwd=root,
                                 capture_output=True, text=True)
        if run.returncode != status or any(text not in run.stdout for text in told):
            faults.append(f"{what}: {run.returncode}\n{run.stdout}{run.stderr}")
    print(f"{len(cases)} cases, {len(faults)} faults")
    print(*faults, sep="\n")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
