#!/usr/bin/env python3
"""Writes a large random linear programme in fixed-format MPS, for the reader
benchmark (bench/e04/bench_mps_read.cpp):
    python3 tools/e04_mps_generate.py OUT.mps [NONZEROS [SEED]]
NONZEROS (default 1000000) matrix entries in NONZEROS/20 rows and NONZEROS/10
columns, ten per column at distinct random rows; every column has an
objective coefficient; rows of all three types with right-hand sides, a
RANGES entry on every tenth row, and UP/LO/FX/FR/MI bounds on a fifth of the
columns; an integer MARKER section around the first tenth of the columns.
Names fit the fixed format (at most 8 characters) so that the file reads as
fixed MPS by any reader (glpsol --mps).  The same arguments give the same
file."""
import random, sys


def main():
    out = sys.argv[1]
    nnz = int(sys.argv[2]) if len(sys.argv) > 2 else 1000000
    rng = random.Random(int(sys.argv[3]) if len(sys.argv) > 3 else 20261124)
    per_col = 10
    n = max(1, nnz // per_col)
    m = max(per_col, nnz // 20)
    num = lambda v: f"{v:.6g}"

    def pair(name, r1, v1, r2=None, v2=None):
        s = f"    {name:<8}  {r1:<8}  {num(v1):>12}"
        if r2 is not None:
            s += f"   {r2:<8}  {num(v2):>12}"
        return s + "\n"

    with open(out, "w") as f:
        w = f.write
        w("* Random LP for the MPS reader benchmark: python3 tools/e04_mps_generate.py "
          + " ".join(sys.argv[1:]) + "\n")
        w("NAME          RANDLP\nROWS\n N  COST\n")
        types = "LGE"
        for i in range(m):
            w(f" {types[i % 3]}  R{i:07d}\n")
        w("COLUMNS\n")
        for j in range(n):
            name = f"C{j:07d}"
            if j == 0:
                w("    MARKER    'MARKER'                 'INTORG'\n")
            if j == n // 10:
                w("    MARKER    'MARKER'                 'INTEND'\n")
            rows = rng.sample(range(m), per_col)
            vals = [round(rng.uniform(-10, 10), 3) or 1.0 for _ in rows]
            items = [("COST", round(rng.uniform(-5, 5), 4) or 1.0)] + [(f"R{i:07d}", v) for i, v in zip(rows, vals)]
            for k in range(0, len(items), 2):
                if k + 1 < len(items):
                    w(pair(name, items[k][0], items[k][1], items[k + 1][0], items[k + 1][1]))
                else:
                    w(pair(name, items[k][0], items[k][1]))
        w("RHS\n")
        for i in range(0, m, 2):
            if i + 1 < m:
                w(pair("RHS", f"R{i:07d}", rng.randint(1, 100), f"R{i + 1:07d}", rng.randint(1, 100)))
            else:
                w(pair("RHS", f"R{i:07d}", rng.randint(1, 100)))
        w("RANGES\n")
        for i in range(0, m, 10):
            w(pair("RNG", f"R{i:07d}", rng.randint(1, 20)))
        w("BOUNDS\n")
        kinds = ["UP", "LO", "FX", "FR", "MI"]
        for j in range(0, n, 5):
            t = kinds[(j // 5) % 5]
            name = f"C{j:07d}"
            if t in ("FR", "MI"):
                w(f" {t} BND       {name}\n")
            else:
                w(f" {t} BND       {name:<8}  {num(rng.randint(1, 50)):>12}\n")
        w("ENDATA\n")


if __name__ == "__main__":
    main()
