#!/usr/bin/env python3
"""Work-precision diagrams of the d02 benchmark.

    build/bench/d02/bench_d02 --benchmark_repetitions=3 \
        --benchmark_enable_random_interleaving=true --benchmark_min_time=0.02 \
        --benchmark_format=json --benchmark_out=d02.json
    python3 tools/d02_work_precision.py d02.json docs

Draws, for every problem, the error at tend against function evaluations and
against time (docs/d02-work-precision-<problem>.png, python3-matplotlib), and
writes the figures as Markdown tables (evaluations, microseconds and error at
tend for each tolerance, then the comparison at equal achieved error below)
between the markers <!-- d02-work-precision begin/end --> of
docs/benchmarks.md, and prints them.  tools/bench.sh does both steps.

    python3 tools/d02_work_precision.py --overhead before.json after.json

prints the per-evaluation table of docs/benchmarks.md from two runs of the
same bench binary (the harmonic oscillator at tol 1e-12, where the user
function costs nothing), one against the library before a change and one
after it (LD_LIBRARY_PATH): evaluations, median microseconds before and
after, nanoseconds per evaluation and per step after, and the ratio per
evaluation to the best peer of the same order in the same run.

    python3 tools/d02_work_precision.py --equal-error d02.json

prints, per problem and per achieved error 1e-3, 1e-4, ..., the evaluations
and microseconds each solver needs to reach it (log-log interpolation
between the two tolerances whose errors enclose it, along the tolerance
sequence), and the ratios of the 4(5) and 7(8) pairs to the best peer of
their order.
"""
import json
import math
import pathlib
import re
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


# Evaluations per step of each solver (new evaluations: first-same-as-last
# pairs reuse their last stage), and the peers of the same order.
PER_STEP = {"zem_rk45": 7, "zem_rk78": 13, "boost_dopri5": 6, "boost_fehlberg78": 13, "gsl_rk8pd": 13,
            "gsl_rkf45": 6, "zem_rk45_revcomm": 7, "zem_rk78_revcomm": 13}
PEERS = {"zem_rk45": ["boost_dopri5", "gsl_rkf45"], "zem_rk78": ["boost_fehlberg78", "gsl_rk8pd"],
         "zem_rk45_revcomm": ["boost_dopri5", "gsl_rkf45"], "zem_rk78_revcomm": ["boost_fehlberg78", "gsl_rk8pd"]}
# The reverse-communication runs (d02pg, harmonic oscillator at 1e-12 only)
# are for the overhead table, not for the work-precision tables.
OVERHEAD_ONLY = ("zem_rk45_revcomm", "zem_rk78_revcomm")


def medians(path):
    """solver -> (evaluations, median processor microseconds) at harmonic/1e-12."""
    out = {}
    for b in json.load(open(path))["benchmarks"]:
        if b.get("run_type") == "aggregate" and b.get("aggregate_name") != "median":
            continue
        prob, solver, tol = b.get("run_name", b["name"]).split("/")[:3]
        if prob == "harmonic" and float(tol) == 1e-12:
            out[solver] = (int(b["fevals"]), b["cpu_time"])
    return out


def overhead(before_path, after_path):
    before, after = medians(before_path), medians(after_path)
    per_eval = {s: 1e3 * us / ev for s, (ev, us) in after.items()}
    print("| solver | evaluations | us before | us after | ns per evaluation after | ns per step after "
          "| ratio per evaluation to the best peer of its order (before) |")
    print("|---|---|---|---|---|---|---|")
    for s in ["zem_rk78", "zem_rk78_revcomm", "boost_fehlberg78", "gsl_rk8pd", "zem_rk45", "zem_rk45_revcomm",
              "boost_dopri5", "gsl_rkf45"]:
        if s not in after:
            continue
        ev, us = after[s]
        ratio = ""
        if s in PEERS:
            best = min(per_eval[p] for p in PEERS[s] if p in after)
            best_b = min(1e3 * before[p][1] / before[p][0] for p in PEERS[s] if p in before)
            was = f"{1e3 * before[s][1] / before[s][0] / best_b:.2f}" if s in before else "-"
            ratio = f"{per_eval[s] / best:.2f} ({was})"
        ub = f"{before[s][1]:.1f}" if s in before else "-"
        print(f"| {s} | {ev} | {ub} | {us:.1f} | {per_eval[s]:.1f} | {per_eval[s] * PER_STEP[s]:.0f} | {ratio} |")


def load_rows(path):
    """problem -> solver -> [(tol, evaluations, error, microseconds)], medians when repeated."""
    data = json.load(open(path))
    repeated = any(b.get("run_type") == "aggregate" for b in data["benchmarks"])
    runs = defaultdict(lambda: defaultdict(list))
    for b in data["benchmarks"]:
        if repeated and b.get("aggregate_name") != "median":
            continue
        prob, solver, tol = b.get("run_name", b["name"]).split("/")[:3]
        if solver in OVERHEAD_ONLY:
            continue
        runs[prob][solver].append((float(tol), b["fevals"], b["error"], b["cpu_time"]))
    return runs


def at_error(rows, target):
    """(evaluations, microseconds) to reach the error target, or None outside the measured range."""
    rows = sorted(rows, reverse=True)  # tolerance decreasing
    for (_, e0, r0, u0), (_, e1, r1, u1) in zip(rows, rows[1:]):
        if r0 >= target >= r1 and r0 > r1 > 0:
            w = (math.log(r0) - math.log(target)) / (math.log(r0) - math.log(r1))
            return (math.exp((1 - w) * math.log(e0) + w * math.log(e1)),
                    math.exp((1 - w) * math.log(u0) + w * math.log(u1)))
    return None


def equal_error(runs):
    """Lines of the equal-error tables (Markdown), and a one-line summary per pair."""
    out, summary = [], []
    groups = [("zem_rk45", ["boost_dopri5", "gsl_rkf45"]), ("zem_rk78", ["boost_fehlberg78", "gsl_rk8pd"])]
    for ours, peers in groups:
        names = [ours] + peers
        out += [f"\n{ours} against {', '.join(peers)}: evaluations and microseconds at equal error at tend; "
                "ratios to the best peer (below 1: fewer, faster)\n",
                "| problem | error | " + " | ".join(names) + " | evaluations ratio | time ratio |",
                "|---|---|" + "---|" * (len(names) + 2)]
        ratios = []
        for prob, solvers in runs.items():
            for k in range(3, 12):
                target = 10.0 ** -k
                got = {n: at_error(solvers[n], target) for n in names if n in solvers}
                if got.get(ours) is None or all(got.get(p) is None for p in peers):
                    continue
                cells = [f"{got[n][0]:.0f}, {got[n][1]:.0f}" if got.get(n) else "-" for n in names]
                best_e = min(got[p][0] for p in peers if got.get(p))
                best_t = min(got[p][1] for p in peers if got.get(p))
                ratios.append((got[ours][0] / best_e, got[ours][1] / best_t))
                out.append(f"| {prob} | 1e-{k} | " + " | ".join(cells) +
                           f" | {ratios[-1][0]:.2f} | {ratios[-1][1]:.2f} |")
        if ratios:
            ev = sorted(r[0] for r in ratios)
            tm = sorted(r[1] for r in ratios)
            summary.append(f"- {ours} at equal error against the best of {', '.join(peers)}, {len(ratios)} points: "
                           f"evaluations {ev[0]:.2f} to {ev[-1]:.2f} (median {ev[len(ev) // 2]:.2f}, above 1 at "
                           f"{sum(r > 1 for r in ev)}), time {tm[0]:.2f} to {tm[-1]:.2f} (median {tm[len(tm) // 2]:.2f}, "
                           f"above 1 at {sum(r > 1 for r in tm)}).")
    return out, summary


def per_evaluation(path):
    """Lines of the per-evaluation table (harmonic oscillator, n = 2, tol 1e-12)."""
    med = medians(path)
    if not med:
        return []
    out = ["\nPer evaluation at n = 2 (harmonic oscillator at tol 1e-12, where the user function costs "
           "nothing): processor nanoseconds per evaluation and per step, and each Zem integrator's ratio per "
           "evaluation to the best peer of its order (the target is at most 1.2)\n",
           "| solver | evaluations | ns per evaluation | ns per step | ratio per evaluation to the best peer |",
           "|---|---|---|---|---|"]
    per_eval = {s: 1e3 * us / ev for s, (ev, us) in med.items()}
    for solver in sorted(med):
        ev, _ = med[solver]
        ratio = "-"
        peers = [p for p in PEERS.get(solver, []) if p in per_eval]
        if peers:
            ratio = f"{per_eval[solver] / min(per_eval[p] for p in peers):.2f}"
        step = f"{per_eval[solver] * PER_STEP[solver]:.1f}" if solver in PER_STEP else "-"
        out.append(f"| {solver} | {ev} | {per_eval[solver]:.2f} | {step} | {ratio} |")
    return out


MARK = re.compile(r"<!-- d02-work-precision begin -->.*?<!-- d02-work-precision end -->", re.S)


def main():
    if sys.argv[1] == "--overhead":
        overhead(sys.argv[2], sys.argv[3])
        return
    if sys.argv[1] == "--equal-error":
        out, summary = equal_error(load_rows(sys.argv[2]))
        print("\n".join(summary + out))
        return
    data = json.load(open(sys.argv[1]))
    outdir = sys.argv[2]
    runs = defaultdict(lambda: defaultdict(list))  # problem -> solver -> rows
    # With repetitions, the medians only (their names end in "_median").
    repeated = any(b.get("run_type") == "aggregate" for b in data["benchmarks"])
    for b in data["benchmarks"]:
        if repeated and b.get("aggregate_name") != "median":
            continue
        prob, solver, tol = b.get("run_name", b["name"]).split("/")[:3]
        if solver in OVERHEAD_ONLY:
            continue
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
    # The tables: per problem and tolerance, evaluations / time / error of
    # each solver; then the comparison at equal achieved error.
    lines = []
    for prob, solvers in runs.items():
        names = sorted(solvers)
        lines += [f"\n{prob}: evaluations, processor microseconds, error at tend\n",
                  "| tol | " + " | ".join(names) + " |",
                  "|---|" + "---|" * len(names)]
        tols = sorted({r[0] for rows in solvers.values() for r in rows}, reverse=True)
        for tol in tols:
            cells = []
            for n in names:
                row = [r for r in solvers[n] if r[0] == tol]
                cells.append(f"{int(row[0][1])}, {row[0][3]:.0f}, {row[0][2]:.1e}" if row else "-")
            lines.append(f"| {tol:.0e} | " + " | ".join(cells) + " |")
    eq, summary = equal_error(load_rows(sys.argv[1]))
    ctx = data.get("context", {})
    body = "\n".join([f"Run of {ctx.get('date', '?')} ({ctx.get('num_cpus', '?')} processors, load average "
                       f"{', '.join(f'{x:.1f}' for x in ctx.get('load_avg', [])) or '?'} at its start).", ""]
                      + summary + per_evaluation(sys.argv[1]) + lines + eq)
    print(body)
    page = pathlib.Path(outdir) / "benchmarks.md"
    if page.exists():
        text = page.read_text(encoding="utf-8")
        new = f"<!-- d02-work-precision begin -->\n{body}\n\n<!-- d02-work-precision end -->"
        if MARK.search(text):
            page.write_text(MARK.sub(lambda m: new, text), encoding="utf-8")
            print(f"tables -> {page}")

if __name__ == "__main__":
    main()
