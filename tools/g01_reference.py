#!/usr/bin/python3
"""Reference values for the Normal distribution routines and the error functions.

Writes, with mpmath at 80 significant digits (30 are kept):
  tests/g01/data/g01ea_reference.txt  tail probabilities P(tail, x) for x in [-40, 40]
  tests/g01/data/g01fa_reference.txt  deviates x(tail, p) for p in [1e-300, 1 - 2^-53]
  tests/s15/data/s15ad_reference.txt  erfc(x)
  tests/s15/data/s15ae_reference.txt  erf(x)

Every input is a double (written in hexadecimal, so it reads back exactly) and
every reference value is exact at that double: 30 significant digits for the
reader, and for the tests a pair "hi units" (hi the double nearest the value,
in hexadecimal, and the rest in units in the last place), so that errors in
units in the last place are measured in double arithmetic alone.  The tail definitions, for a standard Normal variable X:
  L  P(X <= x)          U  P(X >= x)
  S  P(|X| >= |x|)      C  P(|X| <= |x|)
and the deviates invert them: the x >= 0 with S(x) = p and C(x) = p.

Beside the exact value each row carries the exact value of the routine's own
formula at the argument the routine forms in double arithmetic, so that a
test can tell the rounding of that argument from the error of the kernel:
  g01ea  z = fl(x * c), c = 0.7071067811865475:  erfc(-z)/2, erfc(z)/2,
         erfc(fl(|x| * c)), erf(fl(|x| * c))
  g01fa  the true inverse at p, p, 0.5 p and fl(0.5 p + 0.5) (with the
         kernel's guard where that argument is 1), and the exact value of the
         AS 241 rational approximation at the same argument (exact logarithm
         and square root, exact arithmetic), which separates the published
         approximation error from the rounding of its evaluation.

Usage: /usr/bin/python3 tools/g01_reference.py [repository root]
"""

import os
import random
import sys

import mpmath as mp

mp.mp.dps = 80
DIGITS = 30
SQRT2 = mp.sqrt(2)
SQRTPI = mp.sqrt(mp.pi)
COMMAND = "/usr/bin/python3 tools/g01_reference.py (mpmath %s, %d digits)" % (mp.__version__, mp.mp.dps)


def fmt(v):
    """30 significant digits, for the reader of the file."""
    if v == 0:
        return "0"
    return mp.nstr(mp.mpf(v), DIGITS, min_fixed=1, max_fixed=0, strip_zeros=False)


def ulp(v):
    """The spacing of doubles at v: 2^(e - 52) for |v| in [2^e, 2^(e+1)),
    and 2^-1074 below 2^-1022."""
    a = abs(mp.mpf(v))
    if a < mp.mpf(2) ** -1022:
        return mp.mpf(2) ** -1074
    return mp.mpf(2) ** (int(mp.floor(mp.log(a, 2))) - 52)


def pair(v):
    """The value as "hi units": hi the double nearest v (hexadecimal), units
    the rest v - hi in units of the spacing of doubles at v.  Tests measure
    errors with these in double arithmetic alone, in the subnormal range
    too (no wider type needed)."""
    v = mp.mpf(v)
    hi = float(v)
    units = float((v - mp.mpf(hi)) / ulp(v))
    return "%s %s" % (float.hex(hi), repr(units))


# ---------------------------------------------------------------------------
# Tail probabilities of a double x, by erfc and erf of the exact x/sqrt(2).

def lower(x):
    return mp.erfc(-mp.mpf(x) / SQRT2) / 2


def upper(x):
    return mp.erfc(mp.mpf(x) / SQRT2) / 2


def signif(x):
    return mp.erfc(abs(mp.mpf(x)) / SQRT2)


def confid(x):
    return mp.erf(abs(mp.mpf(x)) / SQRT2)


PROB = {"L": lower, "U": upper, "S": signif, "C": confid}

C_ROUTINE = 0.7071067811865475  # the constant g01ea multiplies by


def prob_formula(tail, x):
    """The prescribed formula, exact, at the double argument the routine forms."""
    if tail == "L":
        return mp.erfc(-mp.mpf(x * C_ROUTINE)) / 2
    if tail == "U":
        return mp.erfc(mp.mpf(x * C_ROUTINE)) / 2
    if tail == "S":
        return mp.erfc(mp.mpf(abs(x) * C_ROUTINE))
    return mp.erf(mp.mpf(abs(x) * C_ROUTINE))


# ---------------------------------------------------------------------------
# Inverses.  Newton's method at 80 digits from a rough start; each returns
# y >= 0.

def inv_erf(p):
    """erf(y) = p for small p (no cancellation: erf(y) ~ 2y/sqrt(pi))."""
    p = mp.mpf(p)
    y = p * SQRTPI / 2
    for _ in range(200):
        dy = (mp.erf(y) - p) / (2 / SQRTPI * mp.exp(-y * y))
        y -= dy
        if abs(dy) <= abs(y) * mp.mpf(10) ** (-70):
            return y
    raise RuntimeError("inv_erf did not converge for %s" % p)


def inv_erfc(s):
    """erfc(y) = s for 0 < s <= 1, in logarithmic form for small s."""
    s = mp.mpf(s)
    if s > mp.mpf("0.5"):
        y = (1 - s) * SQRTPI / 2
        for _ in range(200):
            dy = (mp.erfc(y) - s) / (-2 / SQRTPI * mp.exp(-y * y))
            y -= dy
            if abs(dy) <= abs(y) * mp.mpf(10) ** (-70):
                return y
        raise RuntimeError("inv_erfc did not converge for %s" % s)
    y = mp.sqrt(-mp.log(s))
    ls = mp.log(s)
    for _ in range(200):
        e = mp.erfc(y)
        dy = (mp.log(e) - ls) / (-2 / SQRTPI * mp.exp(-y * y) / e)
        y -= dy
        if abs(dy) <= abs(y) * mp.mpf(10) ** (-70):
            return y
    raise RuntimeError("inv_erfc did not converge for %s" % s)


def dev_lower(p):
    p = mp.mpf(p)
    if p <= mp.mpf("0.5"):
        return -SQRT2 * inv_erfc(2 * p)
    return SQRT2 * inv_erfc(2 * (1 - p))


def dev_upper(p):
    return -dev_lower(p)


def dev_signif(p):
    return SQRT2 * inv_erfc(mp.mpf(p))


def dev_confid(p):
    p = mp.mpf(p)
    if p <= mp.mpf("0.5"):
        return SQRT2 * inv_erf(p)
    return SQRT2 * inv_erfc(1 - p)


DEV = {"L": dev_lower, "U": dev_upper, "S": dev_signif, "C": dev_confid}

SAFE_RANGE = 2.225073858507202e-308  # the kernel's replacement for r = 0


def kernel_argument(tail, p):
    """(argument of the kernel, sign applied to its result) as the routine forms them."""
    if tail == "L":
        return p, 1
    if tail == "U":
        return p, -1
    if tail == "S":
        return 0.5 * p, -1
    return 0.5 * p + 0.5, 1  # rounded in double arithmetic, as the routine does


def true_inverse(a):
    """Q(a) exactly, with the kernel's guard at a = 0 and a = 1."""
    if a <= 0.0:
        return dev_lower(SAFE_RANGE)
    if a >= 1.0:
        return -dev_lower(SAFE_RANGE)
    return dev_lower(a)


# AS 241 (PPND16) coefficients, constant term first.
AS241 = {
    "a": ["3.3871328727963666080e0", "1.3314166789178437745e+2", "1.9715909503065514427e+3",
          "1.3731693765509461125e+4", "4.5921953931549871457e+4", "6.7265770927008700853e+4",
          "3.3430575583588128105e+4", "2.5090809287301226727e+3"],
    "b": ["1.0", "4.2313330701600911252e+1", "6.8718700749205790830e+2", "5.3941960214247511077e+3",
          "2.1213794301586595867e+4", "3.9307895800092710610e+4", "2.8729085735721942674e+4",
          "5.2264952788528545610e+3"],
    "c": ["1.42343711074968357734e0", "4.63033784615654529590e0", "5.76949722146069140550e0",
          "3.64784832476320460504e0", "1.27045825245236838258e0", "2.41780725177450611770e-1",
          "2.27238449892691845833e-2", "7.74545014278341407640e-4"],
    "d": ["1.0", "2.05319162663775882187e0", "1.67638483018380384940e0", "6.89767334985100004550e-1",
          "1.48103976427480074590e-1", "1.51986665636164571966e-2", "5.47593808499534494600e-4",
          "1.05075007164441684324e-9"],
    "e": ["6.65790464350110377720e0", "5.46378491116411436990e0", "1.78482653991729133580e0",
          "2.96560571828504891230e-1", "2.65321895265761230930e-2", "1.24266094738807843860e-3",
          "2.71155556874348757815e-5", "2.01033439929228813265e-7"],
    "f": ["1.0", "5.99832206555887937690e-1", "1.36929880922735805310e-1", "1.48753612908506148525e-2",
          "7.86869131145613259100e-4", "1.84631831751005468180e-5", "1.42151175831644588870e-7",
          "2.04426310338993978564e-15"],
}


def poly(name, r):
    # The decimal coefficients rounded to doubles, as the kernel holds them.
    return mp.polyval([mp.mpf(float(k)) for k in reversed(AS241[name])], r)


def as241_exact(a):
    """AS 241 in exact arithmetic on the double coefficients (guard included)."""
    a = mp.mpf(a)
    q = a - mp.mpf("0.5")
    if abs(q) <= mp.mpf(0.425):
        r = mp.mpf(0.180625) - q * q
        return q * poly("a", r) / poly("b", r)
    r = a if q < 0 else 1 - a
    if r <= 0:
        r = mp.mpf(SAFE_RANGE)
    r = mp.sqrt(-mp.log(r))
    if r <= 5:
        r -= mp.mpf(1.6)
        x = poly("c", r) / poly("d", r)
    else:
        r -= 5
        x = poly("e", r) / poly("f", r)
    return -x if q < 0 else x


# ---------------------------------------------------------------------------
# Sample points.

X_EDGES = [-40.0, -37.5, -27.0, -15.0, -6.0, -2.0, -0.5, 0.5, 2.0, 6.0, 15.0, 27.0, 37.5, 40.0]
X_SPECIAL = [0.0, 1.0, -1.0, 1.959963984540054, 2.5, 10.0, -10.0, 30.0, -30.0, 37.0, -37.0,
             38.0, -38.0, 38.5, -38.5, 39.0, -39.0, 40.0, -40.0, 5e-324, 1e-300, 1e-16, -1e-16]


def x_region(x):
    for lo, hi in zip(X_EDGES, X_EDGES[1:]):
        if lo <= x <= hi:
            return "[%g,%g]" % (lo, hi)
    raise ValueError(x)


def x_points(rng, per_region):
    xs = set(X_SPECIAL) | set(X_EDGES)
    for lo, hi in zip(X_EDGES, X_EDGES[1:]):
        for _ in range(per_region):
            xs.add(rng.uniform(lo, hi))
    return sorted(xs)


# Deviate regions: by p, log-uniform below 1/2 and mirrored above it.  The
# boundaries 0.075 and 0.925 and exp(-25) = 1.39e-11 are those of the AS 241
# regions for the lower tail.
FAR = float(mp.exp(-25))
P_LOW = [(1e-300, 1e-100), (1e-100, 1e-20), (1e-20, FAR), (FAR, 1e-3), (1e-3, 0.075)]
P_SPECIAL = [1e-300, 2.0 ** -1000, 2.0 ** -53, 2.0 ** -52, 1e-16, 1e-11, FAR, 0.001, 0.01, 0.025, 0.05,
             0.075, 0.1, 0.25, 0.4999999999999999, 0.5, 0.5000000000000001, 0.75, 0.9, 0.925, 0.95,
             0.975, 0.99, 0.999, 1 - 1e-11, 1 - 2.0 ** -50, 1 - 2.0 ** -52, 1 - 2.0 ** -53]


def p_region(p):
    if p < 0.075:
        for lo, hi in P_LOW:
            if p < hi:
                return "[%.3g,%.3g)" % (lo, hi)
    if p <= 0.925:
        return "[0.075,0.925]"
    t = 1.0 - p  # exact for p >= 0.5
    for lo, hi in P_LOW:
        if t < hi:
            # 1 - p is at least 2^-53 for a double p < 1.
            return "(1-%.3g,1-%.3g]" % (hi, max(lo, 2.0 ** -53))
    raise ValueError(p)


def p_points(rng, per_region):
    ps = set(P_SPECIAL)
    for lo, hi in P_LOW:
        for _ in range(per_region):
            t = 10 ** rng.uniform(mp.log10(lo), mp.log10(hi))
            ps.add(float(t))
            u = 1.0 - float(t)  # the double next to 1 - t
            if 0.925 < u < 1.0:
                ps.add(u)
    for _ in range(2 * per_region):
        ps.add(rng.uniform(0.075, 0.925))
    return sorted(p for p in ps if 1e-300 <= p <= 1 - 2.0 ** -53)


# ---------------------------------------------------------------------------

def header(f, what, columns):
    f.write("# %s\n" % what)
    f.write("# Generated by: %s\n" % COMMAND)
    f.write("# Columns: %s\n" % columns)


def write_probabilities(path, rng):
    with open(path, "w") as f:
        header(f, "Standard Normal tail probabilities of double deviates (g01ea).",
               "tail, region of x, x (hexadecimal double), exact probability (30 digits), "
               "the same as hi units, the exact formula value at the rounded argument as hi units")
        for x in x_points(rng, 160):
            for tail in "LUSC":
                exact = PROB[tail](x)
                f.write("%s %s %s %s %s %s\n" % (tail, x_region(x), float.hex(x), fmt(exact), pair(exact),
                                                 pair(prob_formula(tail, x))))


def write_deviates(path, rng):
    with open(path, "w") as f:
        header(f, "Standard Normal deviates of double probabilities (g01fa).",
               "tail, region of p, p (hexadecimal double), exact deviate (30 digits), the same as hi units, "
               "exact inverse at the kernel's argument as hi units, exact AS 241 value at that argument as hi units")
        for p in p_points(rng, 120):
            for tail in "LUSC":
                a, sign = kernel_argument(tail, p)
                exact = DEV[tail](p)
                f.write("%s %s %s %s %s %s %s\n" % (tail, p_region(p), float.hex(p), fmt(exact), pair(exact),
                                                    pair(sign * true_inverse(a)), pair(sign * as241_exact(a))))


def write_function(path, name, fn, edges, rng, per_region):
    with open(path, "w") as f:
        header(f, "%s of double arguments (%s)." % (name, os.path.basename(path)[:5]),
               "region of x, x (hexadecimal double), exact value (30 digits), the same as hi units")
        xs = set(edges) | {0.0, 1e-300, -1e-300, 1e-10}
        for lo, hi in zip(edges, edges[1:]):
            for _ in range(per_region):
                xs.add(rng.uniform(lo, hi))
        for x in sorted(xs):
            for lo, hi in zip(edges, edges[1:]):
                if lo <= x <= hi:
                    region = "[%g,%g]" % (lo, hi)
                    break
            y = fn(mp.mpf(x))
            f.write("%s %s %s %s\n" % (region, float.hex(x), fmt(y), pair(y)))


def main():
    root = sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(__file__), "..")
    g01 = os.path.join(root, "tests", "g01", "data")
    s15 = os.path.join(root, "tests", "s15", "data")
    os.makedirs(g01, exist_ok=True)
    os.makedirs(s15, exist_ok=True)
    rng = random.Random(20240501)
    write_probabilities(os.path.join(g01, "g01ea_reference.txt"), rng)
    write_deviates(os.path.join(g01, "g01fa_reference.txt"), rng)
    write_function(os.path.join(s15, "s15ad_reference.txt"), "erfc", mp.erfc,
                   [-6.0, -0.5, 0.5, 2.0, 6.0, 15.0, 26.5, 27.5], rng, 100)
    write_function(os.path.join(s15, "s15ae_reference.txt"), "erf", mp.erf,
                   [-6.0, -2.0, -0.5, 0.5, 2.0, 6.0], rng, 100)


if __name__ == "__main__":
    main()
