#!/usr/bin/env python3
"""Checks tools/bench_report.py on a small Google Benchmark file written
here: the table takes the median of the repetitions per item, a counter's
value from the repetitions (not the aggregates' statistics of it), group
names that hold a slash, a formula's asterisk kept out of Markdown's
emphasis, a peer's runs added by a script (named in the context's
zem_peers), run settings stripped from the names, and the section replaced
between its markers on a rerun, leaving the text around it alone; and a
routine page's table of one group (bench-group markers), and its table of
the groups of a prefix, a row a group (bench-groups markers), likewise; and
the groups of a prefix summed up (bench-summary markers); runs with the
instruction set forced (context zem_isa) kept out of the chapter's section
and shown as a row per set, widest first (bench-isa markers); one median
and one ratio of two inside a sentence (bench-value, bench-ratio), a name
the files lack refused; and --check,
which passes the pages just written and fails on the figures of another run.
  bench_report_check.py <tools/bench_report.py> <scratch dir>
"""
import json
import pathlib
import subprocess
import sys

script, scratch = pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2])
scratch.mkdir(parents=True, exist_ok=True)


def run(name, times, evals, items=1):
    rows = [{"name": name, "run_name": name, "run_type": "iteration", "family_index": 0,
             "per_family_instance_index": 0, "cpu_time": t, "time_unit": "ns", "items": items,
             "evals": evals} for t in times]
    for agg, value in (("mean", sum(times) / len(times)), ("stddev", 0.0), ("cv", float("nan"))):
        rows.append(dict(rows[0], name=name + "_" + agg, run_type="aggregate", aggregate_name=agg,
                         cpu_time=value, evals={"mean": evals, "stddev": 0.0, "cv": float("nan")}[agg]))
    return rows


bench = {"context": {"date": "2026-01-01", "num_cpus": 2, "mhz_per_cpu": 2000, "load_avg": [1.5, 1, 1],
                     "zem_chapter": "x99", "zem_program": "bench_x99", "zem_peers": "R 9.9, lm"},
         "benchmarks": run("x99 1/sqrt(x)/ours/min_time:0.050", [10, 30, 20], 7, items=2)
         + run("x99 1/sqrt(x)/peer/min_time:0.050", [40, 60, 50], 9, items=2)
         + run("x99 1/x/ours", [10, 10, 10], 1) + run("x99 1/x/peer", [5, 5, 5], 1)
         + run("x99 A*B + x/ours", [100, 100, 100], 1)
         + [{"name": "x99 A*B + x/R lm", "run_name": "x99 A*B + x/R lm", "run_type": "iteration",
             "family_index": 2, "cpu_time": t, "time_unit": "ms", "items": 1.0} for t in (1, 2, 3)]}
(scratch / "bench_x99.json").write_text(json.dumps(bench).replace("NaN", "NaN"))
page = scratch / "benchmarks.md"
VALUES = ("ours: <!-- bench-value:x99:x99 1/x/ours -->{}<!-- /bench-value -->, the peer over it: "
          "<!-- bench-ratio:x99:x99 1/sqrt(x)/peer | x99 1/x/ours -->{}<!-- /bench-ratio -->.")
page.write_text("# Benchmarks\n\nbefore " + VALUES.format("9 ns", "") + "\n\n<!-- bench-report:x99 begin -->\nstale 123 ns\n"
                "<!-- bench-report:x99 end -->\n\nafter\n")
# The same group with the instruction set forced, one file per set.
for isa, times in (("avx512", [4, 5, 6]), ("baseline", [70, 80, 90])):
    forced = {"context": dict(bench["context"], zem_isa=isa),
              "benchmarks": run("x99 1/sqrt(x)/ours", times, 7) + run("x99 1/sqrt(x)/peer", [40, 50, 60], 9)}
    (scratch / f"bench_x99_isa_{isa}.json").write_text(json.dumps(forced))
routine = scratch / "x99aa.md"
routine.write_text("# x99aa\n\n<!-- bench-group:x99:x99 1/sqrt(x) begin -->\nstale\n"
                   "<!-- bench-group:x99:x99 1/sqrt(x) end -->\n\nmiddle\n\n"
                   "<!-- bench-groups:x99:x99 1/ begin -->\nstale\n<!-- bench-groups:x99:x99 1/ end -->\n\n"
                   "<!-- bench-summary:x99:x99 1/ begin -->\nstale\n<!-- bench-summary:x99:x99 1/ end -->\n\n"
                   "<!-- bench-isa:x99:x99 1/sqrt(x) begin -->\nstale\n<!-- bench-isa:x99:x99 1/sqrt(x) end -->\n"
                   "\n" + VALUES.format("", "0.5") + "\nend\n")
for _ in range(2):  # a rerun replaces the section it wrote
    subprocess.run([sys.executable, str(script), "--docs", str(scratch), "--no-charts",
                    str(scratch / "bench_x99_isa_baseline.json"), str(scratch / "bench_x99.json"),
                    str(scratch / "bench_x99_isa_avx512.json")], check=True, stdout=subprocess.DEVNULL)
text = page.read_text()
expected = ["**x99 1/sqrt(x)**", "| ours | 10 ns |", "| peer | 25 ns |", "| 2.50 |", " 7 |", " 9 |",
            "load average 1.5", "**x99 A\\*B + x**", "| R lm | 2 ms | ", "| 20000.00 |",
            "Added to its file in the same session: R 9.9, lm."]
missing = [e for e in expected if e not in text]
problems = missing + [bad for bad in ("stale", "min_time", "nan", "## x99", "isa", "kernel set", "80 ns") if bad in text]
if VALUES.format("10 ns", "2.50") not in text or VALUES.format("10 ns", "2.50") not in routine.read_text():
    problems.append("the bench-value and bench-ratio figures")
if text.count("bench-report:x99 begin") != 1 or not text.startswith("# Benchmarks\n\nbefore") \
        or not text.rstrip().endswith("after"):
    problems.append("the text around the section changed")
own = routine.read_text()
if not all(e in own for e in ("| ours | 10 ns |", "| peer | 25 ns |", "load average 1.5",
                              "| | ours | peer | peer / ours |", "| sqrt(x) | 10 ns | 25 ns | 2.50 |")) \
        or "stale" in own or own.count("bench-group:x99:x99 1/sqrt(x) end") != 1 \
        or own.count("bench-groups:x99:x99 1/ end") != 1 or "\n\nmiddle\n\n" not in own \
        or not own.rstrip().endswith("end") or "A*B" in own \
        or not all(e in own for e in ("| kernel set | ours | peer |", "| avx512 | 5 ns | 50 ns |",
                                      "| baseline | 80 ns | 50 ns |", "forced by ZEM_ISA: avx512, baseline.")) \
        or "| peer | 2 | 1.50 | 1.12 | 0.50 | 2.50 | 1 |" not in own or own.count("bench-summary:x99:x99 1/ end") != 1 \
        or own.count("bench-isa:x99:x99 1/sqrt(x) end") != 1 or own.index("avx512 |") > own.index("baseline |"):
    problems.append("the routine page's group table: " + own)
# --check: the pages show the figures of these files, and not those of others.
files = [str(scratch / n) for n in ("bench_x99.json", "bench_x99_isa_avx512.json", "bench_x99_isa_baseline.json")]
check = [sys.executable, str(script), "--docs", str(scratch), "--check"]
if subprocess.run(check + files, capture_output=True).returncode != 0:
    problems.append("--check refuses the pages just written")
bench["benchmarks"][0]["cpu_time"] = 100  # a repetition of another run: median 15 ns
(scratch / "bench_x99.json").write_text(json.dumps(bench))
if subprocess.run(check + files, capture_output=True).returncode == 0:
    problems.append("--check accepts figures of another run")
if page.read_text() != text or routine.read_text() != own:
    problems.append("--check wrote a page")
# A figure whose benchmark the files lack is refused, not left as typed.
routine.write_text(own + "<!-- bench-value:x99:x99 1/x/gone -->1 ns<!-- /bench-value -->\n")
r = subprocess.run(check + files, capture_output=True, text=True)
if r.returncode == 0 or "no such benchmark" not in r.stderr:
    problems.append("a bench-value of a benchmark not in the files was accepted")
if problems:
    print(text)
    sys.exit(f"bench_report.py: {problems}")
print("bench_report.py: ok")
