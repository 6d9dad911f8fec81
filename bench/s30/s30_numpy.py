#!/usr/bin/python3
"""numpy/scipy vectorised European call prices on the 1000 by 1000 grid of
bench/s30/s30_bench.cpp (same strikes, expiries and parameters); prints the
median process CPU time of 9 runs per grid and per price (CPU time, as
the C++ figures, so that a loaded machine does not skew the comparison).

Usage: /usr/bin/python3 bench/s30/s30_numpy.py [s30_bench.json]

Given the JSON file of s30_bench, the nine runs are added to it as a
contender of its European group (one repetition each, the time of one grid
with items = M N), so that tools/bench_report.py tables them beside the
C++ contenders of the same session.
"""
import json
import sys
import time

import numpy as np
from scipy.special import ndtr

M = N = 1000
S, SIGMA, R, Q = 100.0, 0.25, 0.03, 0.01
x = 50.0 + 100.0 * np.arange(M) / M
t = 0.05 + 5.0 * np.arange(N) / N


def grid():
    K = x[:, None]
    T = t[None, :]
    v = SIGMA * np.sqrt(T)
    d1 = (np.log(S) - np.log(K) + T * ((R - Q) + SIGMA ** 2 / 2)) / v
    d2 = d1 - v
    return S * np.exp(-Q * T) * ndtr(d1) - K * np.exp(-R * T) * ndtr(d2)


times = []
for _ in range(9):
    t0 = time.process_time()
    p = grid()
    times.append(time.process_time() - t0)
times.sort()
med = times[len(times) // 2]
print('numpy_scipy_vectorised  median %.2f ms per grid, %.2f ns per price (checksum %.6e)' % (med * 1e3, med * 1e9 / (M * N), p.sum()))

if len(sys.argv) > 1:
    path = sys.argv[1]
    data = json.load(open(path))
    group = next(b["run_name"].rsplit("/", 1)[0] for b in data["benchmarks"]
                 if b["run_name"].startswith("s30aa European call"))
    family = max(b.get("family_index", 0) for b in data["benchmarks"]) + 1
    for i, sec in enumerate(times):
        data["benchmarks"].append({
            "name": group + "/numpy and scipy vectorised", "run_name": group + "/numpy and scipy vectorised",
            "run_type": "iteration", "family_index": family, "per_family_instance_index": 0,
            "repetition_index": i, "iterations": 1, "cpu_time": sec * 1e9, "real_time": sec * 1e9,
            "time_unit": "ns", "items": float(M * N)})
    json.dump(data, open(path, "w"), indent=1)
