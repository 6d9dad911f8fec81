#!/usr/bin/env python3
"""How the adaptive quadrature divides its interval, drawn as pictures:

  quadrature_plots.py <libzem.so> [docs dir]

For a handful of integrands that show the typical difficulties (an
end-point singularity, a sharp interior peak, a kink, fast oscillation) it
calls d01rjc through ctypes, reads the subintervals it kept from rinfo
(ends, error estimates, integral estimates) and draws for each one
docs/figures/subdivision-<name>.png: the integrand with the subinterval
ends marked, and below it every subinterval's width and error estimate on a
logarithmic scale.  The generated page docs/d01-subdivision.md shows the
pictures with a table of the subinterval count, the number of integrand
values, the error estimate and the true error against the closed form
(evaluated with mpmath).  A rerun redraws everything.
Needs: python3-matplotlib, python3-mpmath.
"""
import ctypes
import math
import pathlib
import sys

import matplotlib
matplotlib.use("Agg")
import matplotlib.pyplot as plt  # noqa: E402
import mpmath  # noqa: E402

mpmath.mp.dps = 30
lib = ctypes.CDLL(sys.argv[1])
docs = pathlib.Path(sys.argv[2] if len(sys.argv) > 2 else pathlib.Path(__file__).resolve().parent.parent / "docs")
(docs / "figures").mkdir(parents=True, exist_ok=True)


class Comm(ctypes.Structure):
    _fields_ = [("flag", ctypes.c_int64), ("user", ctypes.c_void_p),
                ("iuser", ctypes.c_void_p), ("p", ctypes.c_void_p)]


class Fail(ctypes.Structure):
    _fields_ = [("code", ctypes.c_int), ("print", ctypes.c_int), ("message", ctypes.c_char * 512),
                ("handler", ctypes.c_void_p), ("errnum", ctypes.c_int64), ("info", ctypes.c_int64 * 2)]


VecFun = ctypes.CFUNCTYPE(None, ctypes.POINTER(ctypes.c_double), ctypes.c_int64,
                          ctypes.POINTER(ctypes.c_double), ctypes.POINTER(ctypes.c_int64),
                          ctypes.POINTER(Comm))
d01rjc = lib.d01rjc
d01rjc.restype = None
d01rjc.argtypes = [VecFun, ctypes.c_double, ctypes.c_double, ctypes.c_double, ctypes.c_double,
                   ctypes.c_int64, ctypes.POINTER(ctypes.c_double), ctypes.POINTER(ctypes.c_double),
                   ctypes.POINTER(ctypes.c_double), ctypes.POINTER(ctypes.c_int64),
                   ctypes.POINTER(Comm), ctypes.POINTER(Fail)]

# name, title, f (double), a, b, exact value (mpmath), tolerance, log-scaled x axis
CASES = [
    ("endpoint", "ln(x)/sqrt(x) on [0, 1]: an integrable end-point singularity",
     lambda x: math.log(x) / math.sqrt(x) if x > 0 else 0.0, 0.0, 1.0, mpmath.mpf(-4), 1e-10, True),
    ("peak", "1/((x - 0.3)^2 + 1e-6) on [0, 1]: a sharp interior peak",
     lambda x: 1.0 / ((x - 0.3) ** 2 + 1e-6), 0.0, 1.0,
     1000 * (mpmath.atan(mpmath.mpf(700)) + mpmath.atan(mpmath.mpf(300))), 1e-10, False),
    ("kink", "sqrt(|x - 1/3|) on [0, 1]: a kink with an infinite derivative",
     lambda x: math.sqrt(abs(x - 1.0 / 3.0)), 0.0, 1.0,
     mpmath.mpf(2) / 3 * (mpmath.mpf(1) / 3) ** 1.5 + mpmath.mpf(2) / 3 * (mpmath.mpf(2) / 3) ** 1.5,
     1e-10, False),
    ("oscillation", "cos(200 x) exp(-x) on [0, 2]: fast oscillation",
     lambda x: math.cos(200.0 * x) * math.exp(-x), 0.0, 2.0,
     mpmath.re(mpmath.quad(lambda t: mpmath.exp(mpmath.mpc(-1, 200) * t), [0, 2])), 1e-10, False),
]
MAXSUB = 500


def integrate(f, a, b, tol):
    calls = [0]

    def vec(x, nx, fv, iflag, comm):
        for i in range(nx):
            fv[i] = f(x[i])
        calls[0] += nx

    cb = VecFun(vec)
    result, abserr = ctypes.c_double(), ctypes.c_double()
    rinfo = (ctypes.c_double * (4 * MAXSUB))()
    iinfo = (ctypes.c_int64 * MAXSUB)()
    comm, fail = Comm(), Fail()
    d01rjc(cb, a, b, 0.0, tol, MAXSUB, ctypes.byref(result), ctypes.byref(abserr), rinfo, iinfo,
           ctypes.byref(comm), ctypes.byref(fail))
    n = iinfo[0]
    pieces = sorted((rinfo[k], rinfo[n + k], rinfo[2 * n + k], rinfo[3 * n + k]) for k in range(n))
    return result.value, abserr.value, calls[0], pieces, fail.code


rows = []
for name, title, f, a, b, exact, tol, logx in CASES:
    result, abserr, calls, pieces, code = integrate(f, a, b, tol)
    true_error = float(abs(mpmath.mpf(result) - exact))
    rows.append((name, title, len(pieces), calls, abserr, true_error, code, tol))
    fig, (top, bottom) = plt.subplots(2, 1, figsize=(8, 5.5), sharex=True,
                                      gridspec_kw={"height_ratios": [3, 2]})
    if logx:
        lo = max(a, min(p[1] for p in pieces) * 1e-2)
        grid = [lo * (b / lo) ** (i / 1999) for i in range(2000)]
    else:
        grid = [a + (b - a) * i / 3999 for i in range(4000)]
    top.plot(grid, [f(x) for x in grid], color="tab:blue", linewidth=0.8)
    for p in pieces:
        top.axvline(p[0], color="tab:red", linewidth=0.4, alpha=0.6)
    top.axvline(pieces[-1][1], color="tab:red", linewidth=0.4, alpha=0.6)
    top.set_ylabel("f(x)")
    top.set_title(title, fontsize=10)
    widths = [p[1] - p[0] for p in pieces]
    errors = [max(p[2], 1e-300) for p in pieces]
    mids = [(p[0] + p[1]) / 2 for p in pieces]
    bottom.stairs(widths, [p[0] for p in pieces] + [pieces[-1][1]], color="tab:green",
                  label="subinterval width")
    bottom.scatter(mids, errors, s=8, color="tab:red", label="error estimate")
    bottom.set_yscale("log")
    bottom.set_xlabel("x")
    bottom.legend(fontsize=8, loc="best")
    if logx:
        top.set_xscale("log")
        top.set_xlim(grid[0], b)
    else:
        top.set_xlim(a, b)
    fig.text(0.99, 0.005, f"{len(pieces)} subintervals, {calls} values, estimate {abserr:.1e}, "
             f"true error {true_error:.1e}", ha="right", fontsize=8)
    fig.tight_layout()
    fig.savefig(docs / "figures" / f"subdivision-{name}.png", dpi=90)
    plt.close(fig)

page = ["# How d01rj divides the interval", "",
        "Generated by `tools/quadrature_plots.py` (rerun it to redraw): each picture shows an",
        "integrand with the ends of the subintervals that `d01rjc` kept (red lines),",
        "and below it each subinterval's width (green steps) and error estimate (red",
        "dots) on a logarithmic scale.  The adaptive bisection spends its subintervals",
        "where the integrand is hard: they shrink geometrically towards a singularity",
        "or a peak and stay wide where the 21-point rule is already exact to rounding.",
        "Relative tolerance 1e-10, `epsabs` = 0, at most 500 subintervals.  Where the",
        "extrapolation of the partial sums is at work (the end-point singularity) the",
        "interval next to the singularity keeps a large local error estimate: the",
        "extrapolated result, not the sum of local estimates, carries the accuracy.", "",
        "| integrand | subintervals | values | error estimate | true error | status |",
        "|---|---|---|---|---|---|"]
for name, title, n, calls, abserr, true_error, code, tol in rows:
    page.append(f"| {title.split(':')[0].replace('|', chr(92) + '|')} | {n} | {calls} | {abserr:.2e} | {true_error:.2e} | "
                f"{'NE_NOERROR' if code == 0 else code} |")
page.append("")
for name, title, *_ in rows:
    page += [f"## {name.capitalize()}: {title}", "",
             f"![{name}: subintervals chosen by d01rj](figures/subdivision-{name}.png)", ""]
(docs / "d01-subdivision.md").write_text("\n".join(page), encoding="utf-8")
print("wrote", docs / "d01-subdivision.md")
