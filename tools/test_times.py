#!/usr/bin/env python3
"""What the last run of the test suite cost, as the table of
docs/guarantees.md shows it (between <!-- table:test-times begin/end -->):

  /usr/bin/python3 tools/test_times.py <build dir> > test_times.txt
  /usr/bin/python3 tools/doc_tables.py test_times.txt

Reads ctest's log of its last run (<build dir>/Testing/Temporary/LastTest.log:
each test's time, and the time per label), and the wall time of the whole
run when tools/test.sh recorded it (Testing/Temporary/ZemWallTime.txt:
seconds and the -j used).  Prints the number of tests, the sum of their
times, the time of each label and the five slowest tests.  A run of part of
the suite (ctest -R) gives the figures of that part: regenerate the page
only from a run of the whole suite.  Needs: python3 alone.
"""
import pathlib
import re
import sys

build = pathlib.Path(sys.argv[1])
log = (build / "Testing" / "Temporary" / "LastTest.log").read_text(encoding="utf-8", errors="replace")
times = {}
current = None
for line in log.splitlines():
    m = re.match(r"^\d+/\d+ Test: (.+)$", line)
    if m:
        current = m.group(1).strip()
    m = re.match(r"^Test time =\s*([\d.]+) sec", line)
    if m and current:
        times[current] = float(m.group(1))
labels = re.findall(r"^(\w[\w-]*) =\s*([\d.]+) sec\*proc", log, re.M)
start = re.search(r"^Start testing: (.+)$", log, re.M)
wall = build / "Testing" / "Temporary" / "ZemWallTime.txt"
print("<!-- tables by: /usr/bin/python3 tools/test_times.py <build dir> (after bash tools/test.sh) -->")
print("<!-- table:test-times -->")
print(f"The last run ({start.group(1) if start else 'date unknown'}): {len(times)} tests, "
      f"{sum(times.values()):.0f} s of test time in all"
      + (" ({} s wall with -j{})".format(*wall.read_text().split()[:2]) if wall.exists() else "") + ".")
print()
print("| label | test time (s, times processors) |")
print("|---|---:|")
for name, secs in labels:
    print(f"| {name} | {float(secs):.0f} |")
print()
print("| slowest tests | test time (s) |")
print("|---|---:|")
for name, secs in sorted(times.items(), key=lambda kv: -kv[1])[:5]:
    print(f"| {name} | {secs:.1f} |")
