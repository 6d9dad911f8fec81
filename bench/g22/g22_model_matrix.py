#!/usr/bin/python3
"""R's model.matrix beside g22ycc: the same formulae on the same data,
added to the JSON file of bench_g22 so that tools/bench_report.py tables
them with the C++ contenders of the same session.

Usage: /usr/bin/python3 bench/g22/g22_model_matrix.py BENCH_G22 BENCH_G22_JSON

BENCH_G22 is the program (it writes the data: `--write-data FILE`), the
JSON file its output.  The formulae and the number of observations are
read from the JSON's context (g22_designs, g22_nobs), the number of
repetitions from its g22ycc runs; bench/g22/g22_model_matrix.R times each
formula that many times (process CPU time of one model.matrix call, as the
C++ figures are CPU times) and measures the memory R holds at the peak of
one call beyond the data.  Each run becomes a repetition of the contender
"R model.matrix" of its design's group, with the counter
zem_peak_alloc_bytes.  R's column count must equal the group's, or the
designs differ and the script stops.  Needs Rscript (Debian's r-base-core;
bench only: tools/bench.sh runs this script only where it is installed).
"""
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile

prog, path = sys.argv[1], sys.argv[2]
data = json.load(open(path))
ctx = data["context"]
formulae = ctx["g22_designs"].split(";")
nobs = int(ctx["g22_nobs"])
groups = {}
for b in data["benchmarks"]:
    m = re.match(r"(design (.*), (\d+) columns)/g22ycc", b.get("run_name", b["name"]))
    if m and b.get("run_type") == "iteration":
        g = groups.setdefault(m.group(2), {"group": m.group(1), "columns": int(m.group(3)), "reps": 0})
        g["reps"] += 1
if not groups:
    sys.exit(0)  # the run was filtered to other groups: nothing to set R beside
reps = max(g["reps"] for g in groups.values())

with tempfile.TemporaryDirectory() as tmp:
    dat = os.path.join(tmp, "g22_data.bin")
    subprocess.run([prog, "--write-data", dat], check=True)
    script = pathlib.Path(__file__).with_name("g22_model_matrix.R")
    out = subprocess.run(["Rscript", str(script), dat, str(nobs), str(reps)] + formulae,
                         check=True, capture_output=True, text=True).stdout
    version = subprocess.run(["Rscript", "-e", "cat(R.version.string)"], check=True, capture_output=True,
                             text=True).stdout.strip()

runs, memory = {}, {}
for line in out.splitlines():
    w = line.split()
    if w[0] == "run":
        i, sec, cols = int(w[1]) - 1, float(w[3]), int(w[4])
        if cols != groups[formulae[i]]["columns"]:
            sys.exit(f"{formulae[i]}: R made {cols} columns, g22ycc {groups[formulae[i]]['columns']}")
        runs.setdefault(i, []).append(sec)
    elif w[0] == "memory":
        memory[int(w[1]) - 1] = float(w[2])

family = max(b.get("family_index", 0) for b in data["benchmarks"]) + 1
for i, formula in enumerate(formulae):
    name = groups[formula]["group"] + "/R model.matrix"
    for k, sec in enumerate(runs[i]):
        data["benchmarks"].append({
            "name": name, "run_name": name, "run_type": "iteration", "family_index": family + i,
            "per_family_instance_index": 0, "repetition_index": k, "iterations": 1,
            "cpu_time": sec * 1e3, "real_time": sec * 1e3, "time_unit": "ms", "items": 1.0,
            "zem_peak_alloc_bytes": memory[i]})
    runs[i].sort()
    print(f"R model.matrix, {formula}: median {1e3 * runs[i][len(runs[i]) // 2]:.1f} ms CPU over {len(runs[i])} runs, "
          f"peak {memory[i] / 2**20:.1f} MiB beyond the data")
ctx["zem_peers"] = f"{version}, model.matrix, {reps} runs of each formula (process CPU time of one call)"
json.dump(data, open(path, "w"), indent=1)
