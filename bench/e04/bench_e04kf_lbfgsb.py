#!/usr/bin/env python3
"""SciPy's L-BFGS-B (Debian's python3-scipy) on the problems of
foas_problems.h, for the side-by-side comparison with e04kf:
    python3 bench/e04/bench_e04kf_lbfgsb.py [reps] > lbfgsb.json
Same start points, bounds and stopping test (projected gradient below 1e-5
in the infinity norm: pgtol; factr small enough not to stop first).  For
each problem: iterations, function and gradient evaluations (L-BFGS-B
evaluates both together), the median time of `reps` solves, and the time
the objective-and-gradient function alone takes for those evaluations."""
import json, sys, time
import numpy as np
from scipy.optimize import minimize

def problem(kind, bounded, n):
    x0 = np.empty(n); bl = np.full(n, -np.inf); bu = np.full(n, np.inf); b = None
    if kind == 0:
        name = "rosenbrock_bounded" if bounded else "rosenbrock"
        x0[0::2] = -1.2; x0[1::2] = 1.0
        if bounded:
            bl[:] = -10.0; bu[0::2] = 10.0; bu[1::2] = 0.5
    elif kind == 1:
        name = "tridiagonal"
        x0[0::2] = -1.0; x0[1::2] = 2.0
    else:
        name = "bound_qp"
        k = np.arange(n) % 3
        xs = np.where(k == 0, 0.0, np.where(k == 1, 1.0, 0.5))
        z = np.where(k == 0, 1.0, np.where(k == 1, -1.0, 0.0))
        hx = 4 * xs; hx[1:] -= xs[:-1]; hx[:-1] -= xs[1:]
        b = hx - z
        x0[:] = 0.3; bl[:] = 0.0; bu[:] = 1.0
    return name, x0, bl, bu, b

def fg(kind, b):
    def rosen(x):
        x1 = x[0::2]; x2 = x[1::2]
        a = x2 - x1 * x1; c = 1 - x1
        g = np.empty_like(x)
        g[0::2] = -400 * a * x1 - 2 * c; g[1::2] = 200 * a
        return float(np.sum(100 * a * a + c * c)), g
    def tri(x):
        a = x[:-1] + x[1:] - 2; c = x[:-1] - x[1:]
        t = 2 * a + 2 * c + 4 * c ** 3; u = 2 * a - 2 * c - 4 * c ** 3
        g = np.zeros_like(x); g[:-1] += t; g[1:] += u
        return float(np.sum(a * a + c * c * (1 + c * c))), g
    def qp(x):
        hx = 4 * x; hx[1:] -= x[:-1]; hx[:-1] -= x[1:]
        return float(0.5 * x @ hx - b @ x), hx - b
    return (rosen, tri, qp)[kind]

def main():
    reps = int(sys.argv[1]) if len(sys.argv) > 1 else 5
    out = []
    for n in (1000, 100000, 1000000):
        for kind, bounded in ((0, False), (0, True), (1, False), (2, True)):
            name, x0, bl, bu, b = problem(kind, bounded, n)
            fun = fg(kind, b)
            bounds = list(zip(np.where(np.isfinite(bl), bl, None), np.where(np.isfinite(bu), bu, None)))
            times = []
            for _ in range(reps):
                t0 = time.process_time()
                r = minimize(fun, x0.copy(), jac=True, method="L-BFGS-B", bounds=bounds,
                             options={"maxcor": 10, "gtol": 1e-5, "ftol": 1e-15, "maxiter": 100000,
                                      "maxfun": 1000000})
                times.append(time.process_time() - t0)
            t0 = time.process_time()
            for _ in range(5):
                fun(x0)
            ev = (time.process_time() - t0) / 5 * r.nfev
            out.append({"problem": f"{name}_{n}", "n": n, "iters": int(r.nit), "nf": int(r.nfev),
                        "ng": int(r.njev), "f": float(r.fun), "status": int(r.status),
                        "time_s": float(np.median(times)), "eval_s": ev})
            print(json.dumps(out[-1]), file=sys.stderr)
    json.dump(out, sys.stdout, indent=1)

main()
