#!/usr/bin/env python3
"""The summary of docs/g05-dieharder.txt (the whole output of
tools/g05_dieharder.sh), as the table of docs/g05-generators.md shows it:
per stream the number of p-values, how many dieharder flags WEAK and
FAILED, and the smallest and largest p-value.

  /usr/bin/python3 tools/g05_dieharder_table.py [docs/g05-dieharder.txt] > g05_dieharder_table.txt
  /usr/bin/python3 tools/doc_tables.py g05_dieharder_table.txt

(tools/accuracy_tables.sh runs both.)  Needs: python3 alone.
"""
import pathlib
import sys

path = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else
                    pathlib.Path(__file__).resolve().parent.parent / "docs" / "g05-dieharder.txt")
streams = []
for line in path.read_text().splitlines():
    if line.startswith("### "):
        streams.append((line.split(": ", 1)[1], []))
    elif "|" in line and streams:
        cells = [c.strip() for c in line.split("|")]
        streams[-1][1].append((float(cells[4]), cells[5], cells[0]))
print("<!-- tables by: /usr/bin/python3 tools/g05_dieharder_table.py docs/g05-dieharder.txt -->")
print("<!-- table:g05-dieharder -->")
print("| stream | p-values | WEAK | FAILED | smallest p | largest p |")
print("|---|---|---|---|---|---|")
for name, rows in streams:
    p = [v for v, _, _ in rows]
    print(f"| {name} | {len(rows)} | {sum(a == 'WEAK' for _, a, _ in rows)} | {sum(a == 'FAILED' for _, a, _ in rows)} "
          f"| {min(p):.4f} | {max(p):.4f} |")
total = sum(len(r) for _, r in streams)
weak = [(v, test) for _, r in streams for v, a, test in r if a == "WEAK"]
high = [test for v, test in weak if v > 0.5]
print(f"\n{sum(a == 'FAILED' for _, r in streams for _, a, _ in r)} of the {total} p-values FAILED; {len(weak)} are "
      f"WEAK (dieharder's flag for p < 0.005 or p > 0.995), {len(high)} of them on the high side, "
      f"{sum(t == 'sts_serial' for t in high)} of those in the STS serial test.")
