#!/usr/bin/env python3
"""Accuracy of the special functions in ULPs across their argument range,
against high-precision values (mpmath) and the peers, drawn as plots:

  accuracy_plots.py <libzem.so> [docs dir]

For erfc (s15ad), erf (s15ae), the upper-tail Normal probability (g01ea)
and the Normal deviate (g01fa) it evaluates ours, the C library's erf/erfc
and GSL's gsl_cdf_ugaussian_Q / gsl_cdf_ugaussian_Pinv (peers, read through
ctypes, never linked by the library) on a grid, measures the error of each
in units in the last place of the correctly rounded value, and writes
docs/figures/accuracy-<routine>.png and the generated page docs/accuracy.md
(the largest and the root-mean-square errors).  A rerun redraws both.
Needs: python3-mpmath, python3-matplotlib; GSL (libgsl27) for its column.
"""
import ctypes
import ctypes.util
import math
import pathlib
import sys

import mpmath

mpmath.mp.dps = 40
lib = ctypes.CDLL(sys.argv[1])
docs = pathlib.Path(sys.argv[2] if len(sys.argv) > 2 else pathlib.Path(__file__).resolve().parent.parent / "docs")
LOWER, UPPER = 1329, 1330  # Zem_LowerTail, Zem_UpperTail (include/zem_enums.def)


def cfun(handle, name, *argtypes):
    f = getattr(handle, name)
    f.restype = ctypes.c_double
    f.argtypes = list(argtypes)
    return f


D, I, P = ctypes.c_double, ctypes.c_int, ctypes.c_void_p
s15ad, s15ae = cfun(lib, "s15adc", D, P), cfun(lib, "s15aec", D, P)
s14aa, s14ab = cfun(lib, "s14aac", D, P), cfun(lib, "s14abc", D, P)
s14ac = cfun(lib, "s14acc", D, P)
s14ae = cfun(lib, "s14aec", D, ctypes.c_int64, P)
g01ea, g01fa = cfun(lib, "g01eac", I, D, P), cfun(lib, "g01fac", I, D, P)
libm = ctypes.CDLL(ctypes.util.find_library("m"))
c_erf, c_erfc = cfun(libm, "erf", D), cfun(libm, "erfc", D)
c_tgamma, c_lgamma = cfun(libm, "tgamma", D), cfun(libm, "lgamma", D)
try:
    gsl = ctypes.CDLL(ctypes.util.find_library("gsl") or "libgsl.so.27")
    gsl_q, gsl_pinv = cfun(gsl, "gsl_cdf_ugaussian_Q", D), cfun(gsl, "gsl_cdf_ugaussian_Pinv", D)
    gsl_gamma, gsl_lngamma = cfun(gsl, "gsl_sf_gamma", D), cfun(gsl, "gsl_sf_lngamma", D)
    gsl_psi, gsl_psi_1 = cfun(gsl, "gsl_sf_psi", D), cfun(gsl, "gsl_sf_psi_1", D)
except OSError:
    gsl_q = gsl_pinv = gsl_gamma = gsl_lngamma = gsl_psi = gsl_psi_1 = None


def linspace(a, b, n):
    return [a + (b - a) * i / (n - 1) for i in range(n)]


def ulps(value, exact, floor=0.0):
    """Error of value in ULPs of the double nearest the exact value (of floor
    where the exact value is smaller: an absolute measure near a zero)."""
    nearest = max(abs(float(exact)), floor)
    if nearest == 0.0 or math.isinf(nearest):
        return 0.0 if value == nearest else float("inf")
    return float((mpmath.mpf(value) - exact) / math.ulp(nearest))


def normal_deviate(p):
    """x with P(X <= x) = p, by Newton's method in 40 digits from a double start."""
    p = mpmath.mpf(p)
    x = mpmath.mpf(g01fa(LOWER, float(p), None))
    for _ in range(8):
        x -= (mpmath.erfc(-x / mpmath.sqrt(2)) / 2 - p) / mpmath.npdf(x)
    return x


# Deviates: probabilities spread evenly in log scale towards both ends.
# Gamma: away from the poles (at least 1e-3 from a non-positive integer), where
# the function is finite; ln Gamma: absolute error (ULPs of 1) near its zeros
# at 1 and 2, over 1e-10 .. 1e10 in log scale and densely on (0, 15).
gamma_grid = [x for x in linspace(-40.5, 170, 1500) if x > 0 or abs(x - round(x)) > 1e-3]
lngamma_grid = sorted(set(linspace(0.01, 15, 1000)) | {10.0 ** e for e in linspace(-10, 10, 500)})
# psi and its derivative: positive arguments in log scale, and negative ones
# at least 1e-3 from the poles; psi is measured against max(|psi|, 1) (its
# zeros), psi - ln x and psi' relative to their values.
psi_grid = sorted({10.0 ** e for e in linspace(-3, 6, 700)}
                  | {x for x in linspace(-20.5, 0, 800) if abs(x - round(x)) > 1e-3})
psi_ln_grid = [10.0 ** e for e in linspace(-3, 8, 1200)]
probs = sorted({10.0 ** -e for e in linspace(1, 300, 300)} | set(linspace(0.001, 0.999, 700)))
CASES = [
    ("s15ad", "erfc(x)", linspace(-6, 27, 1500), lambda x: mpmath.erfc(x),
     [("s15adc", lambda x: s15ad(x, None)), ("C library erfc", c_erfc)]),
    ("s15ae", "erf(x)", linspace(-6, 6, 1500), lambda x: mpmath.erf(x),
     [("s15aec", lambda x: s15ae(x, None)), ("C library erf", c_erf)]),
    ("g01ea", "upper tail Q(x)", linspace(-10, 38, 1500), lambda x: mpmath.erfc(mpmath.mpf(x) / mpmath.sqrt(2)) / 2,
     [("g01eac", lambda x: g01ea(UPPER, x, None))] + ([("GSL ugaussian_Q", gsl_q)] if gsl_q else [])),
    ("g01fa", "deviate of a lower-tail p", probs, normal_deviate,
     [("g01fac", lambda p: g01fa(LOWER, p, None))] + ([("GSL ugaussian_Pinv", gsl_pinv)] if gsl_pinv else [])),
    ("s14aa", "Gamma(x)", gamma_grid, lambda x: mpmath.gamma(x),
     [("s14aac", lambda x: s14aa(x, None)), ("C library tgamma", c_tgamma)]
     + ([("GSL sf_gamma", gsl_gamma)] if gsl_gamma else [])),
    ("s14ab", "ln Gamma(x)", lngamma_grid, lambda x: mpmath.loggamma(x),
     [("s14abc", lambda x: s14ab(x, None)), ("C library lgamma", c_lgamma)]
     + ([("GSL sf_lngamma", gsl_lngamma)] if gsl_lngamma else [])),
    ("s14ac", "psi(x) - ln x", psi_ln_grid, lambda x: mpmath.digamma(x) - mpmath.log(x),
     [("s14acc", lambda x: s14ac(x, None))]
     + ([("GSL sf_psi - log", lambda x: gsl_psi(x) - math.log(x))] if gsl_psi else [])),
    ("s14ae", "psi(x) and psi'(x) (k = 0, 1)", psi_grid, None,
     [("s14aec, k = 0", lambda x: s14ae(x, 0, None)), ("s14aec, k = 1", lambda x: s14ae(x, 1, None))]
     + ([("GSL sf_psi", gsl_psi), ("GSL sf_psi_1", gsl_psi_1)] if gsl_psi else [])),
]
# Per contender, the exact function where a routine's contenders compute
# different functions (psi and psi').
EXACT = {"s14aec, k = 1": lambda x: mpmath.psi(1, x), "GSL sf_psi_1": lambda x: mpmath.psi(1, x),
         "s14aec, k = 0": mpmath.digamma, "GSL sf_psi": mpmath.digamma}
FLOOR = {"s14ab": 1.0, "s14aec, k = 0": 1.0, "GSL sf_psi": 1.0}

import matplotlib  # noqa: E402
matplotlib.use("Agg")
import matplotlib.pyplot as plt  # noqa: E402

rows = []
(docs / "figures").mkdir(parents=True, exist_ok=True)
for routine, what, grid, exact_fn, contenders in CASES:
    exact = [exact_fn(x) for x in grid] if exact_fn else None
    fig, ax = plt.subplots(figsize=(8, 3.6))
    for (name, fn), marker in zip(contenders, ["o", "x", "+", "1", "2"]):
        want = exact if exact is not None else [EXACT[name](x) for x in grid]
        err = [ulps(fn(x), e, FLOOR.get(name, FLOOR.get(routine, 0.0))) for x, e in zip(grid, want)]
        finite = [abs(e) for e in err if math.isfinite(e)]
        rows.append((routine, what, name, max(finite), math.sqrt(sum(e * e for e in finite) / len(finite)),
                     len(err) - len(finite)))
        where = [float(e) for e in exact] if routine == "g01fa" else grid
        ax.plot(where, [e if math.isfinite(e) else float("nan") for e in err], marker, markersize=2.5,
                linestyle="none", label=name, alpha=0.7)
    ax.set_xlabel("the deviate x (p = P(X <= x) from 1e-300 to 0.999)" if routine == "g01fa" else "x")
    if routine in ("s14ab", "s14ac"):
        ax.set_xscale("log")
    if routine == "s14ae":
        ax.set_xscale("symlog", linthresh=1)
    if max(r[3] for r in rows if r[0] == routine) > 50:
        ax.set_yscale("symlog", linthresh=4)  # linear within 4 ULPs, logarithmic beyond
    ax.set_ylabel("error (ULPs)")
    ax.set_title(f"{routine}: {what}, error against 40-digit values")
    ax.legend(fontsize=8)
    ax.grid(alpha=0.3)
    fig.tight_layout()
    fig.savefig(docs / "figures" / f"accuracy-{routine}.png", dpi=100)
    plt.close(fig)

page = ["# Accuracy of the special functions", "",
        "<!-- generated by tools/accuracy_plots.py: do not edit; rerun it to redraw -->", "",
        "Error in units in the last place (ULPs) of the correctly rounded value, on a grid",
        "across each argument range, against 40-digit values from mpmath; the peers are the",
        "C library's erf/erfc, tgamma/lgamma and GSL's Normal distribution and gamma",
        "functions. ln Gamma and psi are measured in ULPs of max(|f(x)|, 1), an absolute",
        "measure near their zeros. Regenerate with",
        "`python3 tools/accuracy_plots.py build/libzem.so`.", "",
        "| routine | function | implementation | largest error (ULPs) | rms error (ULPs) | not finite |",
        "|---|---|---|---|---|---|"]
for routine, what, name, worst, rms, bad in rows:
    page.append(f"| [{routine}]({routine}.md) | {what} | {name} | {worst:.2f} | {rms:.2f} | {bad} |")
page.append("")
for routine, what, *_ in CASES:
    page += [f"## {routine}", "", f"![{routine}: error in ULPs]( figures/accuracy-{routine}.png)".replace("( ", "("), ""]
(docs / "accuracy.md").write_text("\n".join(page), encoding="utf-8")
print("\n".join(f"{r[0]} {r[2]}: max {r[3]:.2f} ulp, rms {r[4]:.2f}" for r in rows))
