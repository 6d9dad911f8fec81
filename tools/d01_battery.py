#!/usr/bin/python3
"""Reference battery for the one-dimensional adaptive quadrature of chapter d01.

    /usr/bin/python3 tools/d01_battery.py > tests/d01/data/qags_battery.txt

For every integrand it records
  * the exact integral, from a closed form evaluated by mpmath at 50 digits
    (or mpmath's own quadrature where no closed form is at hand, flagged
    "mpquad"), printed to 40 significant digits, "inf"/"-inf" when divergent;
  * what the classic QAGS reports through SciPy's QUADPACK binding
    (scipy.integrate._quadpack._qagse, the routine scipy.integrate.quad calls
    for a finite interval without weight or break points): result, abserr,
    neval, ier, last and the first `last` entries of the ordering list iord.
Some cases are also run through SciPy's break-point routine (_qagpe, the
classic QAGP) and its infinite-range routine (_qagie, the classic QAGI); they
are marked by the routine field.

The integrands are written so that Python's float arithmetic and libm calls
are the same operations, in the same order, as the C++ table in
tests/d01/battery.h: both call the same C library, so f(x) agrees bit for bit.
"""

import math
import sys

import mpmath
from mpmath import mp, mpf
from scipy.integrate import _quadpack

mp.dps = 50

THIRD = 1.0 / 3.0     # the double nearest 1/3: where the integrands jump
C03 = 0.3
C037 = 0.37
R2 = 0.7071067811865476  # 1/sqrt(2) rounded: not a dyadic bisection point

# name, routine, f, a, b, epsabs, epsrel, limit, exact (mpmath callable), note
# routine: qags (finite, d01rj), qagp (break points, d01rl; the points follow
# the limit), qagi (infinite range, d01rm; a = bound, b = inf code).
CASES = [
    # Smooth.
    ("exp_m_x2", "qags", lambda x: math.exp(-x * x), 0.0, 1.0, 0.0, 1e-10, 50,
     lambda: mpmath.sqrt(mp.pi) / 2 * mpmath.erf(1)),
    ("exp", "qags", lambda x: math.exp(x), 0.0, 1.0, 0.0, 1e-12, 50, lambda: mp.e - 1),
    ("exp_reversed", "qags", lambda x: math.exp(x), 1.0, 0.0, 0.0, 1e-12, 50, lambda: 1 - mp.e),
    ("pow_x60", "qags", lambda x: math.pow(x, 60.0), 0.0, 1.0, 0.0, 1e-10, 50, lambda: mpf(1) / 61),
    ("runge_5", "qags", lambda x: 1.0 / (1.0 + 25.0 * x * x), -1.0, 1.0, 0.0, 1e-10, 50,
     lambda: mpf(2) / 5 * mpmath.atan(5)),
    ("x_cos_x", "qags", lambda x: x * math.cos(x), 0.0, 10.0, 0.0, 1e-10, 50,
     lambda: mpmath.cos(10) + 10 * mpmath.sin(10) - 1),
    ("exp_m_x_wide", "qags", lambda x: math.exp(-x), 0.0, 100.0, 0.0, 1e-10, 50,
     lambda: 1 - mpmath.exp(-100)),
    ("sin_odd_zero", "qags", lambda x: math.sin(x), -1.0, 1.0, 1e-12, 1e-10, 50, lambda: mpf(0)),
    ("sinc_long", "qags", lambda x: math.sin(x) / x, 0.5, 30.0, 0.0, 1e-10, 50,
     lambda: mpmath.si(30) - mpmath.si(mpf(0.5))),
    # Algebraic end-point singularities.
    ("inv_sqrt", "qags", lambda x: 1.0 / math.sqrt(x), 0.0, 1.0, 0.0, 1e-10, 50, lambda: mpf(2)),
    ("sqrt", "qags", lambda x: math.sqrt(x), 0.0, 1.0, 0.0, 1e-12, 50, lambda: mpf(2) / 3),
    ("pow_m09", "qags", lambda x: math.pow(x, -0.9), 0.0, 1.0, 0.0, 1e-8, 50,
     lambda: 1 / (1 - mpf(0.9))),
    ("pow_m099", "qags", lambda x: math.pow(x, -0.99), 0.0, 1.0, 0.0, 1e-6, 100,
     lambda: 1 / (1 - mpf(0.99))),
    ("inv_sqrt_right", "qags", lambda x: 1.0 / math.sqrt(1.0 - x), 0.0, 1.0, 0.0, 1e-10, 50,
     lambda: mpf(2)),
    ("sqrt_1mx2", "qags", lambda x: math.sqrt(1.0 - x * x), -1.0, 1.0, 0.0, 1e-10, 50,
     lambda: mp.pi / 2),
    ("inv_sqrt_1mx2", "qags", lambda x: 1.0 / math.sqrt(1.0 - x * x), -1.0, 1.0, 0.0, 1e-8, 50,
     lambda: mp.pi),
    # Logarithmic end-point singularities.
    ("log", "qags", lambda x: math.log(x), 0.0, 1.0, 0.0, 1e-10, 50, lambda: mpf(-1)),
    ("log_over_sqrt", "qags", lambda x: math.log(x) / math.sqrt(x), 0.0, 1.0, 0.0, 1e-10, 50,
     lambda: mpf(-4)),
    ("log_squared", "qags", lambda x: math.log(x) * math.log(x), 0.0, 1.0, 0.0, 1e-10, 50,
     lambda: mpf(2)),
    ("log_log", "qags", lambda x: math.log(-math.log(x)), 0.0, 1.0, 0.0, 1e-8, 50,
     lambda: -mp.euler),
    ("x_log", "qags", lambda x: x * math.log(x), 0.0, 1.0, 0.0, 1e-12, 50, lambda: mpf(-1) / 4),
    # Interior singularities and kinks.
    ("log_abs_third", "qags", lambda x: math.log(abs(x - THIRD)), 0.0, 1.0, 0.0, 1e-10, 100,
     lambda: (lambda c: c * mpmath.log(c) + (1 - c) * mpmath.log(1 - c) - 1)(mpf(THIRD))),
    ("inv_sqrt_abs_03", "qags", lambda x: 1.0 / math.sqrt(abs(x - C03)), 0.0, 1.0, 0.0, 1e-8, 100,
     lambda: 2 * (mpmath.sqrt(mpf(C03)) + mpmath.sqrt(1 - mpf(C03)))),
    ("abs_third", "qags", lambda x: abs(x - THIRD), 0.0, 1.0, 0.0, 1e-10, 50,
     lambda: (mpf(THIRD) ** 2 + (1 - mpf(THIRD)) ** 2) / 2),
    # Peaks.
    ("lorentz_03", "qags", lambda x: 1.0 / ((x - C03) * (x - C03) + 1e-4), 0.0, 1.0, 0.0, 1e-10, 50,
     lambda: (lambda c, h: (mpmath.atan((1 - c) / h) + mpmath.atan(c / h)) / h)(
         mpf(C03), mpmath.sqrt(mpf(1e-4)))),
    ("gauss_peak", "qags", lambda x: math.exp(-1e4 * (x - C037) * (x - C037)), 0.0, 1.0, 0.0, 1e-10, 50,
     lambda: mpmath.sqrt(mp.pi) / 200 * (mpmath.erf(100 * (1 - mpf(C037))) + mpmath.erf(100 * mpf(C037)))),
    ("runge_230", "qags", lambda x: 1.0 / (1.0 + (230.0 * x - 30.0) * (230.0 * x - 30.0)), 0.0, 1.0,
     0.0, 1e-10, 50, lambda: (mpmath.atan(200) + mpmath.atan(30)) / 230),
    ("sech2", "qags", lambda x: 1.0 / (math.cosh(20.0 * (x - 0.2)) * math.cosh(20.0 * (x - 0.2))),
     0.0, 1.0, 0.0, 1e-10, 50,
     lambda: (mpmath.tanh(20 * (1 - mpf(0.2))) + mpmath.tanh(20 * mpf(0.2))) / 20),
    # Oscillation.
    ("cos_100x", "qags", lambda x: math.cos(100.0 * x), 0.0, 1.0, 0.0, 1e-10, 50,
     lambda: mpmath.sin(100) / 100),
    ("exp_sin_256", "qags", lambda x: math.exp(20.0 * (x - 1.0)) * math.sin(256.0 * x), 0.0, 1.0,
     0.0, 1e-10, 50,
     lambda: mpmath.exp(-20) * ((mpmath.exp(20) * (20 * mpmath.sin(256) - 256 * mpmath.cos(256)))
                                - (20 * 0 - 256)) / (20 ** 2 + 256 ** 2)),
    ("x_sin_inv_x", "qags", lambda x: x * math.sin(1.0 / x), 0.0, 1.0, 0.0, 1e-8, 100,
     lambda: mpmath.sin(1) / 2 + mpmath.cos(1) / 2 - (mp.pi / 2 - mpmath.si(1)) / 2),
    ("cos_100x_over_sqrt", "qags", lambda x: math.cos(100.0 * x) / math.sqrt(x), 0.0, 1.0, 0.0, 1e-8, 100,
     lambda: mpmath.sqrt(2 * mp.pi / 100) * mpmath.fresnelc(mpmath.sqrt(200 / mp.pi))),
    # Discontinuities.
    ("step_third", "qags", lambda x: 0.0 if x < THIRD else 1.0, 0.0, 1.0, 0.0, 1e-10, 100,
     lambda: 1 - mpf(THIRD)),
    ("floor", "qags", lambda x: math.floor(x), 0.0, 5.5, 0.0, 1e-10, 100, lambda: mpf('12.5')),
    ("sign_third_tight", "qags", lambda x: -1.0 if x < THIRD else 1.0, 0.0, 1.0, 1e-15, 0.0, 200,
     lambda: 1 - 2 * mpf(THIRD)),
    ("jump_1e10", "qags", lambda x: 0.0 if x < R2 else 1e10, 0.0, 1.0, 1e-10, 0.0, 100,
     lambda: 1e10 * (1 - mpf(R2))),
    # Divergent.
    ("inv_x", "qags", lambda x: 1.0 / x, 0.0, 1.0, 0.0, 1e-10, 50, lambda: mpmath.inf),
    ("inv_x_limit_200", "qags", lambda x: 1.0 / x, 0.0, 1.0, 0.0, 1e-10, 200, lambda: mpmath.inf),
    ("log_over_x", "qags", lambda x: math.log(x) / x, 0.0, 1.0, 0.0, 1e-10, 50, lambda: -mpmath.inf),
    ("inv_x2", "qags", lambda x: 1.0 / (x * x), 0.0, 1.0, 0.0, 1e-10, 50, lambda: mpmath.inf),
    ("pow_m105", "qags", lambda x: math.pow(x, -1.05), 0.0, 1.0, 0.0, 1e-10, 50, lambda: mpmath.inf),
    # Trivial and limit cases.
    ("zero", "qags", lambda x: 0.0, 0.0, 1.0, 0.0, 1e-10, 50, lambda: mpf(0)),
    ("empty_interval", "qags", lambda x: math.exp(x), 1.0, 1.0, 0.0, 1e-10, 50, lambda: mpf(0)),
    ("maxsub_1", "qags", lambda x: math.exp(-x * x), 0.0, 10.0, 0.0, 2e-14, 1,
     lambda: mpmath.sqrt(mp.pi) / 2 * mpmath.erf(10)),
    ("maxsub_1_met", "qags", lambda x: math.exp(x), 0.0, 1.0, 0.0, 1e-10, 1, lambda: mp.e - 1),
    ("inv_sqrt_limit_3", "qags", lambda x: 1.0 / math.sqrt(x), 0.0, 1.0, 0.0, 1e-10, 3, lambda: mpf(2)),
    ("inv_sqrt_limit_4", "qags", lambda x: 1.0 / math.sqrt(x), 0.0, 1.0, 0.0, 1e-10, 4, lambda: mpf(2)),
    ("inv_sqrt_limit_6", "qags", lambda x: 1.0 / math.sqrt(x), 0.0, 1.0, 0.0, 1e-10, 6, lambda: mpf(2)),
    ("log_limit_6", "qags", lambda x: math.log(x), 0.0, 1.0, 0.0, 1e-10, 6, lambda: mpf(-1)),
    ("log_over_sqrt_limit_8", "qags", lambda x: math.log(x) / math.sqrt(x), 0.0, 1.0, 0.0, 1e-10, 8,
     lambda: mpf(-4)),
    ("log_limit_5", "qags", lambda x: math.log(x), 0.0, 1.0, 0.0, 1e-10, 5, lambda: mpf(-1)),
    ("cos_100x_limit_5", "qags", lambda x: math.cos(100.0 * x), 0.0, 1.0, 0.0, 1e-10, 5,
     lambda: mpmath.sin(100) / 100),
    ("inv_sqrt_tight", "qags", lambda x: 1.0 / math.sqrt(x), 0.0, 1.0, 0.0, 2e-14, 50, lambda: mpf(2)),
    ("log_tight", "qags", lambda x: math.log(x), 0.0, 1.0, 0.0, 2e-14, 50, lambda: mpf(-1)),
]


def self_check():
    """Cross-checks of the closed forms most easily got wrong, by mpmath's own
    quadrature (after the substitution u = 1/x, resp. x = t^2)."""
    mp.dps = 30
    v = mpmath.quadosc(lambda u: mpmath.sin(u) / u ** 3, [1, mpmath.inf], omega=1)
    w = mpmath.sin(1) / 2 + mpmath.cos(1) / 2 - (mp.pi / 2 - mpmath.si(1)) / 2
    assert abs(v - w) < mpf(10) ** -25, "x sin(1/x)"
    v = mpmath.quad(lambda t: 2 * mpmath.cos(100 * t * t), mpmath.linspace(0, 1, 40))
    w = mpmath.sqrt(2 * mp.pi / 100) * mpmath.fresnelc(mpmath.sqrt(200 / mp.pi))
    assert abs(v - w) < mpf(10) ** -25, "cos(100x)/sqrt(x)"
    v = mpmath.quad(lambda x: mpmath.exp(20 * (x - 1)) * mpmath.sin(256 * x), mpmath.linspace(0, 1, 50))
    w = [c for c in CASES if c[0] == "exp_sin_256"][0][8]()
    assert abs(v - w) < mpf(10) ** -25, "exp sin"
    v = mpmath.quad(lambda x: mpmath.log(-mpmath.log(x)), [0, 0.5, 1])
    assert abs(v + mp.euler) < mpf(10) ** -20, "log log"
    v = mpmath.quad(lambda x: x ** 3 * mpmath.log(abs((x * x - 1) * (x * x - 2))), [0, 1, mpmath.sqrt(2), 3])
    assert abs(v - (61 * mpmath.log(2) + mpf(77) / 4 * mpmath.log(7) - 27)) < mpf(10) ** -20, "cubic log"
    mp.dps = 50


# Break points (d01rl, the classic QAGP): name, f, a, b, points, epsabs,
# epsrel, limit, exact.
BREAK_CASES = [
    ("bp_log_abs_third", lambda x: math.log(abs(x - THIRD)), 0.0, 1.0, [THIRD], 0.0, 1e-10, 50,
     lambda: (lambda c: c * mpmath.log(c) + (1 - c) * mpmath.log(1 - c) - 1)(mpf(THIRD))),
    ("bp_log_abs_third_reversed", lambda x: math.log(abs(x - THIRD)), 1.0, 0.0, [THIRD], 0.0, 1e-10, 50,
     lambda: -((lambda c: c * mpmath.log(c) + (1 - c) * mpmath.log(1 - c) - 1)(mpf(THIRD)))),
    ("bp_inv_sqrt_abs_03", lambda x: 1.0 / math.sqrt(abs(x - C03)), 0.0, 1.0, [C03], 0.0, 1e-10, 50,
     lambda: 2 * (mpmath.sqrt(mpf(C03)) + mpmath.sqrt(1 - mpf(C03)))),
    ("bp_step_third", lambda x: 0.0 if x < THIRD else 1.0, 0.0, 1.0, [THIRD], 0.0, 1e-10, 50,
     lambda: 1 - mpf(THIRD)),
    ("bp_floor", lambda x: math.floor(x), 0.0, 5.5, [1.0, 2.0, 3.0, 4.0, 5.0], 0.0, 1e-10, 50,
     lambda: mpf('12.5')),
    ("bp_cubic_log", lambda x: x * x * x * math.log(abs((x * x - 1.0) * (x * x - 2.0))), 0.0, 3.0,
     [1.0, math.sqrt(2.0)], 0.0, 1e-10, 100,
     lambda: 61 * mpmath.log(2) + mpf(77) / 4 * mpmath.log(7) - 27),
    ("bp_none_exp", lambda x: math.exp(x), 0.0, 1.0, [], 0.0, 1e-12, 50, lambda: mp.e - 1),
    ("bp_lorentz_03", lambda x: 1.0 / ((x - C03) * (x - C03) + 1e-4), 0.0, 1.0, [C03], 0.0, 1e-10, 50,
     lambda: (lambda c, h: (mpmath.atan((1 - c) / h) + mpmath.atan(c / h)) / h)(
         mpf(C03), mpmath.sqrt(mpf(1e-4)))),
    ("bp_abs_third_unsorted", lambda x: abs(x - THIRD) + math.sqrt(x), 0.0, 1.0, [0.7, THIRD], 0.0, 1e-10,
     50, lambda: (mpf(THIRD) ** 2 + (1 - mpf(THIRD)) ** 2) / 2 + mpf(2) / 3),
    ("bp_limit_2_met", lambda x: math.exp(x), 0.0, 1.0, [0.5], 0.0, 1e-10, 2, lambda: mp.e - 1),
    ("bp_limit_2", lambda x: math.log(abs(x - THIRD)), 0.0, 1.0, [THIRD], 0.0, 1e-10, 2,
     lambda: (lambda c: c * mpmath.log(c) + (1 - c) * mpmath.log(1 - c) - 1)(mpf(THIRD))),
    ("bp_inv_x", lambda x: 1.0 / x, 0.0, 1.0, [0.5], 0.0, 1e-10, 50, lambda: mpmath.inf),
]

# Infinite ranges (d01rm, the classic QAGI): name, f, bound, inf, epsabs,
# epsrel, limit, exact.
INF_CASES = [
    ("inf_exp", lambda x: math.exp(-x), 0.0, 1, 0.0, 1e-10, 50, lambda: mpf(1)),
    ("inf_exp_shifted", lambda x: math.exp(-x), 2.0, 1, 0.0, 1e-10, 50, lambda: mpmath.exp(-2)),
    ("inf_cauchy_both", lambda x: 1.0 / (1.0 + x * x), 0.0, 2, 0.0, 1e-10, 50, lambda: mp.pi),
    ("inf_gauss_both", lambda x: math.exp(-x * x), 0.0, 2, 0.0, 1e-10, 50, lambda: mpmath.sqrt(mp.pi)),
    ("inf_exp_left", lambda x: math.exp(x), 0.0, -1, 0.0, 1e-10, 50, lambda: mpf(1)),
    ("inf_cauchy_left", lambda x: 1.0 / (1.0 + x * x), 0.0, -1, 0.0, 1e-10, 50, lambda: mp.pi / 2),
    ("inf_sqrt_pole", lambda x: 1.0 / ((1.0 + x) * math.sqrt(x)), 0.0, 1, 0.0, 1e-10, 50, lambda: mp.pi),
    ("inf_pow_m15", lambda x: math.pow(x, -1.5), 1.0, 1, 0.0, 1e-10, 50, lambda: mpf(2)),
    ("inf_exp_cos", lambda x: math.exp(-x) * math.cos(x), 0.0, 1, 0.0, 1e-10, 50, lambda: mpf(1) / 2),
    ("inf_exp_inv_sqrt", lambda x: math.exp(-x) / math.sqrt(x), 0.0, 1, 0.0, 1e-10, 50,
     lambda: mpmath.sqrt(mp.pi)),
    ("inf_log_cauchy", lambda x: math.log(x) / (1.0 + x * x), 0.0, 1, 1e-12, 1e-10, 50, lambda: mpf(0)),
    ("inf_pow_m101", lambda x: math.pow(x, -1.01), 1.0, 1, 0.0, 1e-8, 50, lambda: 1 / (mpf(1.01) - 1)),
    ("inf_inv_x", lambda x: 1.0 / x, 1.0, 1, 0.0, 1e-10, 50, lambda: mpmath.inf),
    ("inf_limit_4", lambda x: 1.0 / ((1.0 + x) * math.sqrt(x)), 0.0, 1, 0.0, 1e-10, 4, lambda: mp.pi),
]


def fmt(v):
    return repr(float(v))


def exact_text(fn):
    v = fn()
    if mpmath.isinf(v):
        return "inf" if v > 0 else "-inf"
    return mpmath.nstr(v, 40, min_fixed=-5, max_fixed=5) if v != 0 else "0"


def main():
    self_check()
    out = []
    out.append("# Reference battery for chapter d01: exact integrals and the classic QAGS.")
    out.append("# Generated by: /usr/bin/python3 tools/d01_battery.py > tests/d01/data/qags_battery.txt")
    out.append("# SciPy %s (scipy.integrate._quadpack._qagse), mpmath %s at %d digits."
               % (__import__("scipy").__version__, mpmath.__version__, mp.dps))
    out.append("# Columns: name routine a b points epsabs epsrel limit exact result abserr neval ier last")
    out.append("#   iord")
    out.append("# routine qags: finite [a,b]; qagp: with break points (comma separated, - for none);")
    out.append("# qagi: a = bound, b = the range code (1: (a,+inf), -1: (-inf,a), 2: both).")
    out.append("# iord: the first `last` entries of the ordering list, 1-based, comma separated;")
    out.append("# 0 marks an entry outside 1..last, one the classic code never wrote.")

    def row(name, routine, a, b, pts, epsabs, epsrel, limit, exact, res):
        result, abserr, info, ier = res
        last = int(info["last"])
        # Entries outside 1..last were never written (the array's previous
        # contents); they are recorded as 0 so that the file is reproducible.
        iord = ",".join(str(int(v)) if 1 <= int(v) <= last else "0" for v in info["iord"][:last]) \
            if last > 0 else "-"
        ptxt = ",".join(fmt(p) for p in pts) if pts else "-"
        out.append("\t".join([name, routine, fmt(a), fmt(b), ptxt, fmt(epsabs), fmt(epsrel), str(limit),
                              exact_text(exact), fmt(result), fmt(abserr), str(int(info["neval"])),
                              str(int(ier)), str(last), iord]))

    for name, routine, f, a, b, epsabs, epsrel, limit, exact in CASES:
        assert routine == "qags"
        row(name, routine, a, b, [], epsabs, epsrel, limit, exact,
            _quadpack._qagse(f, a, b, (), 1, epsabs, epsrel, limit))
    for name, f, a, b, pts, epsabs, epsrel, limit, exact in BREAK_CASES:
        row(name, "qagp", a, b, pts, epsabs, epsrel, limit, exact,
            # The binding takes the points followed by two spare places, as
            # scipy.integrate.quad passes them.
            _quadpack._qagpe(f, a, b, list(pts) + [0.0, 0.0], (), 1, epsabs, epsrel, limit))
    for name, f, bound, inf, epsabs, epsrel, limit, exact in INF_CASES:
        row(name, "qagi", bound, float(inf), [], epsabs, epsrel, limit, exact,
            _quadpack._qagie(f, bound, inf, (), 1, epsabs, epsrel, limit))
    print("\n".join(out))


if __name__ == "__main__":
    main()
