#!/usr/bin/env python3
"""Runs e04kf's benchmark (bench_e04kf, Google Benchmark, JSON) and SciPy's
L-BFGS-B on the same problems (bench_e04kf_lbfgsb.py) in one go and prints
the comparison as a Markdown table (for docs/benchmarks.md):
    python3 bench/e04/bench_e04kf_compare.py <build-bench>/bench/e04/bench_e04kf [reps]
Columns: gradient evaluations of both, their ratio, median time per
iteration of both (whole solve / iterations), and the solver's own time per
iteration (the time of the user functions taken away)."""
import json, pathlib, subprocess, sys, tempfile

prog = pathlib.Path(sys.argv[1]).resolve()
reps = sys.argv[2] if len(sys.argv) > 2 else "5"
here = pathlib.Path(__file__).resolve().parent
with tempfile.TemporaryDirectory() as d:
    subprocess.run([str(prog), f"--benchmark_repetitions={reps}", f"--benchmark_out={d}/kf.json"], check=True,
                   cwd=d, stdout=subprocess.DEVNULL)
    kf = json.load(open(f"{d}/kf.json"))
peer = {r["problem"]: r for r in json.loads(subprocess.run(
    ["/usr/bin/python3", str(here / "bench_e04kf_lbfgsb.py"), reps], check=True, capture_output=True,
    text=True).stdout)}
ours = {}
for b in kf["benchmarks"]:
    if b.get("aggregate_name") == "median":
        ours[b["run_name"].split("/")[0]] = b
rows, fewer = [], 0
print("| problem | n | ng e04kf | ng L-BFGS-B | ratio | ms/iter e04kf | ms/iter L-BFGS-B | ratio | own ms/iter e04kf | own ms/iter L-BFGS-B |")
print("|---|---|---|---|---|---|---|---|---|---|")
for name, o in ours.items():
    p = peer[name]
    t_o = o["cpu_time"] / 1000.0  # ms -> s
    it_o, it_p = max(o["iters"], 1), max(p["iters"], 1)
    own_o = (t_o - o["eval_s"]) / it_o * 1e3
    own_p = (p["time_s"] - p["eval_s"]) / it_p * 1e3
    fewer += o["ng"] <= p["ng"]
    base, n = name.rsplit("_", 1)
    print(f"| {base} | {n} | {o['ng']:.0f} | {p['ng']} | {o['ng'] / p['ng']:.2f} | {t_o / it_o * 1e3:.3f} | "
          f"{p['time_s'] / it_p * 1e3:.3f} | {(t_o / it_o) / (p['time_s'] / it_p):.2f} | {own_o:.3f} | {own_p:.3f} |")
print(f"\nno more gradient evaluations than L-BFGS-B on {fewer} of {len(ours)} problems")
