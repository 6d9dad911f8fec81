#!/usr/bin/env python3
"""Checks tools/typed_figures.py, the scanner for measured figures typed
into the prose of docs/: a table of lines it must flag (times, ratios
beside their baselines, "N times faster", loads, percentages of the time,
instruction counts, A/B records, a bench-value marker opening a line)
and of lines it must pass (accuracy, formulae, targets in words, option
tables, code, HTML comments, the sections the generators write, not
those of a marker no script writes); then a whole run on a small docs folder: a finding is printed
as page:line and fails, an allow-list entry passes exactly the figure it
covers, and an entry without a reason or one that allows nothing fails.
  typed_figures_check.py <tools/typed_figures.py> <scratch dir>
"""
import importlib.util
import pathlib
import subprocess
import sys

script, scratch = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
spec = importlib.util.spec_from_file_location("typed_figures", script)
tf = importlib.util.module_from_spec(spec)
spec.loader.exec_module(tf)

BAD = [  # (line, the figure the scanner must name)
    ("the C entry costs 112 ns against 93.4 for its baseline.", "112 ns"),
    ("about 8 ns through the C entry", "8 ns"),
    ("a fixed cost of 4.6-4.9 ns per call", "4.6-4.9 ns"),
    ("the solve took 107 microseconds", "107 microseconds"),
    ("1.38 µs per integral", "1.38 µs"),
    ("the read took 1.43 s of CPU time then", "1.43 s of"),
    ("s14ab is 2.5 times faster than lgamma", "2.5 times faster"),
    ("at most 1.45 and 1.33 times.", "1.45 and 1.33 times."),
    ("1.36 to 1.39 times dopri5 per evaluation", "1.36 to 1.39 times dopri5"),
    ("the lookback cost 19 times `s30aa` per price", "19 times `"),
    ("the speed-up is 1.8 on this grid", "speed-up is 1.8"),
    ("the ratio fell to 1.20 through the C entry", "ratio fell to 1.20"),
    ("(load below 2) the frame cost", "load below 2"),
    ("two rounds, load average 12 to 16 during the runs", "load average 12 to 16"),
    ("the frame cost 2-7% of this solve", "2-7% of this solve"),
    ("(perf): 30 % in the hash map's look-ups", "30 % in the hash map's look-ups"),
    ("about 137 instructions per evaluation", "137 instructions"),
    ("64 fewer instructions per solve", "64 fewer instructions"),
    ("1.46-1.50 before and 1.22-1.35 after through the C entry", "1.46-1.50 before"),
    ("C entry 391 before, 326 after", "391 before"),
    ("Fortran entry (123 against 108).", "(123 against 108)"),
    ("Second round: 7(8) 0.86 (1.03), 4(5) 1.39 (1.75).", "0.86 (1.03)"),
    ("<!-- bench-value:frame:g/c05ayc -->112 ns<!-- /bench-value --> a call", "<!-- bench-value:frame:g/c05ayc -->"),
]
GOOD = [
    "the largest error is 0.86 ULP on [1,2), 3.2e-16 relative",
    "Seeding: x = 4 s + 2 mod 2^60 for s = seed(1)",
    "Call: p = (0.5 s e^{-qt}) erfc(-d1 c)",
    "as the format \"%1.1s\" gives",
    "| 163 | SOCP Dense Ratio | real | 0.1 | > 0 and <= 1 |",
    "the lower tail with p uniform on (0,1) (15% outside the central region), time per call:",
    "ten times the step is tried before the routine gives up",
    "a fifth of its time goes to the layers; the frame is the larger part",
    "column j: -1 for l <= j, j for l = j+1, 0 after | 1..L-1 |",
    "a maxsub whose lists cannot exist is status −999 before any array is touched",
    "the errors at tend agree within 30 % except on the Arenstorf orbit",
    "evaluations: 1640 for the 7(8) pair, errors 2.9e-10 and 6.6e-11",
    "the ratio column of the table above says how much faster it is",
    "the C entry costs <!-- bench-ratio:frame:g/c05ayc | g/inline -->1.20<!-- /bench-ratio --> times its baseline",
    "run `bench --benchmark_min_time=0.5s` with `ZEM_ISA=avx2` and `12 ns` in code",
]
problems = []
for line, figure in BAD:
    got = [f[2] for f in tf.findings(line + "\n")]
    if figure not in got:
        problems.append(f"not flagged: {figure!r} in {line!r} (found {got})")
for line in GOOD:
    got = [f[2] for f in tf.findings(line + "\n")]
    if got:
        problems.append(f"flagged: {got} in {line!r}")

# What is not prose: code, comments, generated sections (with a key that
# holds spaces), and the lines of a paragraph numbered as in the page.
page = ("# x99\n\n```\n$ ./bench   # 12 ns per call\n```\n\n    indented code: 13 ns\n\n"
        "<!-- a comment, 14 ns,\n over two lines -->\n\n"
        "<!-- bench-group:x99:x99 fill n=10^7 begin -->\n| ours | 15 ns |\n<!-- bench-group:x99:x99 fill n=10^7 end -->\n\n"
        "<!-- d02-work-precision begin -->\n| 16 ns |\n<!-- d02-work-precision end -->\n\n"
        "Prose over\ntwo lines: 17\nns per call; target: under 1 ms.\n\n"
        "<!-- my-notes begin -->\nA marker no script writes: 18 ns.\n<!-- my-notes end -->\n")
got = [(f[0], f[2]) for f in tf.findings(page)]
if got != [(21, "17 ns"), (22, "1 ms"), (25, "18 ns")]:
    problems.append(f"a page's findings: {got}")

# A whole run on a docs folder with its allow-list.
docs = scratch / "docs"
(docs / "guide").mkdir(parents=True, exist_ok=True)
(docs / "x99.md").write_text(page)
(docs / "guide" / "x98.md").write_text("# x98\n\nThe fill costs 3 ns a double.\n")
allow = scratch / "allow.txt"


def run(entries):
    allow.write_text("# page | words | why\n" + "".join(e + "\n" for e in entries))
    return subprocess.run([sys.executable, str(script), "--docs", str(docs), "--allow", str(allow)],
                          capture_output=True, text=True)


r = run([])
if r.returncode == 0 or "docs/x99.md:21:" not in r.stdout or "docs/guide/x98.md:3:" not in r.stdout \
        or "4 measured figures" not in r.stderr:
    problems.append(f"findings not reported: {r.stdout} {r.stderr}")
ok = ["x99.md | target: under 1 ms | a stated target", "x99.md | two lines: 17 ns per call | a test's own line",
      "x99.md | no script writes: 18 ns | a test's own line",
      "guide/x98.md | costs 3 ns a double | a test's own line"]
r = run(ok)
if r.returncode != 0:
    problems.append(f"the allow-list did not pass its figures: {r.stdout} {r.stderr}")
r = run(ok[:2] + ["guide/x98.md | The fill | too short to cover the figure"])
if r.returncode == 0 or "x98.md:3:" not in r.stdout:
    problems.append("an entry that does not cover the figure passed it")
r = run(ok + ["x99.md | target: under 1 ms |"])
if r.returncode == 0 or "allow.txt:6:" not in r.stdout:
    problems.append(f"an entry without a reason was accepted: {r.stdout}")
r = run(ok + ["x99.md | 42 ns | a figure that is gone"])
if r.returncode == 0 or "allows nothing" not in r.stdout:
    problems.append(f"an entry that allows nothing was accepted: {r.stdout}")
if problems:
    sys.exit("typed_figures.py:\n  " + "\n  ".join(problems))
print("typed_figures.py: ok")
