#!/usr/bin/env python3
"""Work-precision diagrams of the d02 benchmark.

    build/bench/d02/bench_d02 --benchmark_repetitions=3 \
        --benchmark_enable_random_interleaving=true --benchmark_min_time=0.02 \
        --benchmark_format=json --benchmark_out=d02.json
    python3 tools/d02_work_precision.py d02.json docs

Draws, for every problem, the error at tend against function evaluations and
against time (docs/d02-work-precision-<problem>.png, python3-matplotlib), and
prints the figures as a Markdown table (evaluations and microseconds to reach
each tolerance's error) for docs/benchmarks.md.
"""
import json
import sys
from collections import defaultdict

import matplotlib

matplotlib.use("Agg")
import matplotlib.pyplot as plt  # noqa: E402

STYLE = {
    "zem_rk23": ("C0", "o-"), "zem_rk45": ("C1", "o-"), "zem_rk78": ("C2", "o-"),
    "gsl_rk2": ("C0", "x--"), "gsl_rkf45": ("C1", "x--"), "gsl_rk8pd": ("C2", "x--"),
    "boost_dopri5": ("C3", "s:"), "boost_fehlberg78": ("C4", "s:"),
}


def main():
    data = json.load(open(sys.argv[1]))
    outdir = sys.argv[2]
    runs = defaultdict(lambda: defaultdict(list))  # problem -> solver -> rows
    # With repetitions, the medians only (their names end in "_median").
    repeated = any(b.get("run_type") == "aggregate" for b in data["benchmarks"])
    for b in data["benchmarks"]:
        if repeated and b.get("aggregate_name") != "median":
            continue
        prob, solver, tol = b.get("run_name", b["name"]).split("/")[:3]
        runs[prob][solver].append((float(tol), b["fevals"], b["error"], b["cpu_time"], 1e3 * b["cpu_time"] / b["fevals"]))
    for prob, solvers in runs.items():
        fig, axes = plt.subplots(1, 2, figsize=(11, 4.2))
        for solver, rows in sorted(solvers.items()):
            rows.sort()
            color, style = STYLE.get(solver, ("k", "-"))
            err = [max(r[2], 1e-17) for r in rows]
            axes[0].loglog([r[1] for r in rows], err, style, color=color, label=solver, ms=4)
            axes[1].loglog([r[3] for r in rows], err, style, color=color, label=solver, ms=4)
        axes[0].set_xlabel("function evaluations")
        axes[1].set_xlabel("processor time (microseconds)")
        for ax in axes:
            ax.set_ylabel("error at tend")
            ax.grid(True, which="both", alpha=0.3)
        axes[0].legend(fontsize=7)
        fig.suptitle(f"d02 work-precision: {prob}")
        fig.tight_layout()
        fig.savefig(f"{outdir}/d02-work-precision-{prob}.png", dpi=90)
        plt.close(fig)
    # The table: per problem and tolerance, evaluations / time / error of each solver.
    for prob, solvers in runs.items():
        names = sorted(solvers)
        print(f"\n{prob}: evaluations, processor microseconds, error at tend\n")
        print("| tol | " + " | ".join(names) + " |")
        print("|---|" + "---|" * len(names))
        tols = sorted({r[0] for rows in solvers.values() for r in rows}, reverse=True)
        for tol in tols:
            cells = []
            for n in names:
                row = [r for r in solvers[n] if r[0] == tol]
                cells.append(f"{int(row[0][1])}, {row[0][3]:.0f}, {row[0][2]:.1e}" if row else "-")
            print(f"| {tol:.0e} | " + " | ".join(cells) + " |")


if __name__ == "__main__":
    main()
