#!/usr/bin/env python3
"""Reference optima of the Hock-Schittkowski problems 1..50 at 30 digits.

    python3 tests/e04/hs/tools/hs_optima.py > tests/e04/hs/data/hs_optima.txt

For every problem: the optimal point the book gives, in closed form or, where
the book only characterizes it (a root of a polynomial on the active
constraints), as a root found by mpmath.findroot; and f at that point, the
objective transcribed here a second time from the book, independently of
hs_problems.cpp. hs_check compares the records' xstar, fstar and f(xstar)
with these numbers.
"""
from mpmath import mp, mpf, sqrt, sin, cos, exp, log, pi, findroot, cbrt

mp.dps = 40
D = 30  # digits written


def rosen(x):
    return 100 * (x[1] - x[0] ** 2) ** 2 + (1 - x[0]) ** 2


def hs25(x):
    s = mpf(0)
    for i in range(1, 100):
        u = 25 + (-50 * log(mpf(i) / 100)) ** (mpf(2) / 3)
        s += (-mpf(i) / 100 + exp(-((u - x[1]) ** x[2]) / x[0])) ** 2
    return s


F = {
    1: rosen, 2: rosen,
    3: lambda x: x[1] + mpf('1e-5') * (x[1] - x[0]) ** 2,
    4: lambda x: (x[0] + 1) ** 3 / 3 + x[1],
    5: lambda x: sin(x[0] + x[1]) + (x[0] - x[1]) ** 2 - mpf('1.5') * x[0] + mpf('2.5') * x[1] + 1,
    6: lambda x: (1 - x[0]) ** 2,
    7: lambda x: log(1 + x[0] ** 2) - x[1],
    8: lambda x: mpf(-1),
    9: lambda x: sin(pi * x[0] / 12) * cos(pi * x[1] / 16),
    10: lambda x: x[0] - x[1],
    11: lambda x: (x[0] - 5) ** 2 + x[1] ** 2 - 25,
    12: lambda x: x[0] ** 2 / 2 + x[1] ** 2 - x[0] * x[1] - 7 * x[0] - 7 * x[1],
    13: lambda x: (x[0] - 2) ** 2 + x[1] ** 2,
    14: lambda x: (x[0] - 2) ** 2 + (x[1] - 1) ** 2,
    15: rosen, 16: rosen, 17: rosen,
    18: lambda x: x[0] ** 2 / 100 + x[1] ** 2,
    19: lambda x: (x[0] - 10) ** 3 + (x[1] - 20) ** 3,
    20: rosen,
    21: lambda x: x[0] ** 2 / 100 + x[1] ** 2 - 100,
    22: lambda x: (x[0] - 2) ** 2 + (x[1] - 1) ** 2,
    23: lambda x: x[0] ** 2 + x[1] ** 2,
    24: lambda x: ((x[0] - 3) ** 2 - 9) * x[1] ** 3 / (27 * sqrt(3)),
    25: hs25,
    26: lambda x: (x[0] - x[1]) ** 2 + (x[1] - x[2]) ** 4,
    27: lambda x: (x[0] - 1) ** 2 / 100 + (x[1] - x[0] ** 2) ** 2,
    28: lambda x: (x[0] + x[1]) ** 2 + (x[1] + x[2]) ** 2,
    29: lambda x: -x[0] * x[1] * x[2],
    30: lambda x: x[0] ** 2 + x[1] ** 2 + x[2] ** 2,
    31: lambda x: 9 * x[0] ** 2 + x[1] ** 2 + 9 * x[2] ** 2,
    32: lambda x: (x[0] + 3 * x[1] + x[2]) ** 2 + 4 * (x[0] - x[1]) ** 2,
    33: lambda x: (x[0] - 1) * (x[0] - 2) * (x[0] - 3) + x[2],
    34: lambda x: -x[0],
    35: lambda x: (9 - 8 * x[0] - 6 * x[1] - 4 * x[2] + 2 * x[0] ** 2 + 2 * x[1] ** 2 + x[2] ** 2
                   + 2 * x[0] * x[1] + 2 * x[0] * x[2]),
    36: lambda x: -x[0] * x[1] * x[2],
    37: lambda x: -x[0] * x[1] * x[2],
    38: lambda x: (100 * (x[1] - x[0] ** 2) ** 2 + (1 - x[0]) ** 2 + 90 * (x[3] - x[2] ** 2) ** 2
                   + (1 - x[2]) ** 2 + mpf('10.1') * ((x[1] - 1) ** 2 + (x[3] - 1) ** 2)
                   + mpf('19.8') * (x[1] - 1) * (x[3] - 1)),
    39: lambda x: -x[0],
    40: lambda x: -x[0] * x[1] * x[2] * x[3],
    41: lambda x: 2 - x[0] * x[1] * x[2],
    42: lambda x: (x[0] - 1) ** 2 + (x[1] - 2) ** 2 + (x[2] - 3) ** 2 + (x[3] - 4) ** 2,
    43: lambda x: (x[0] ** 2 + x[1] ** 2 + 2 * x[2] ** 2 + x[3] ** 2 - 5 * x[0] - 5 * x[1]
                   - 21 * x[2] + 7 * x[3]),
    44: lambda x: (x[0] - x[1] - x[2] - x[0] * x[2] + x[0] * x[3] + x[1] * x[2]
                   - x[1] * x[3]),
    45: lambda x: 2 - x[0] * x[1] * x[2] * x[3] * x[4] / 120,
    46: lambda x: (x[0] - x[1]) ** 2 + (x[2] - 1) ** 2 + (x[3] - 1) ** 4 + (x[4] - 1) ** 6,
    47: lambda x: (x[0] - x[1]) ** 2 + (x[1] - x[2]) ** 3 + (x[2] - x[3]) ** 4 + (x[3] - x[4]) ** 4,
    48: lambda x: (x[0] - 1) ** 2 + (x[1] - x[2]) ** 2 + (x[3] - x[4]) ** 2,
    49: lambda x: (x[0] - x[1]) ** 2 + (x[2] - 1) ** 2 + (x[3] - 1) ** 4 + (x[4] - 1) ** 6,
    50: lambda x: (x[0] - x[1]) ** 2 + (x[1] - x[2]) ** 2 + (x[2] - x[3]) ** 4 + (x[3] - x[4]) ** 2,
}


def xstar():
    s2, s3 = sqrt(2), sqrt(3)
    # 2: x2 = 1.5 active, x1 the root near 1.22 of d/dx1 f(x1, 1.5) = 0.
    x2_1 = findroot(lambda t: 400 * t ** 3 - 598 * t - 2, mpf('1.2'))
    # 8: x1^2 + x2^2 = 25, x1 x2 = 9, the root with x1 > x2 > 0.
    x8_1 = sqrt((25 + sqrt(301)) / 2)
    # 11: x2 = x1^2 active, x1 the real root of 2 x^3 + x - 5 = 0.
    x11_1 = findroot(lambda t: 2 * t ** 3 + t - 5, mpf('1.2'))
    # 19: both constraints active.
    x19 = [mpf('14.095'), 5 - sqrt(mpf('100') - (mpf('14.095') - 5) ** 2)]
    l10 = log(10)
    one = [mpf(1)] * 5
    return {
        1: [1, 1], 2: [x2_1, mpf('1.5')], 3: [0, 0], 4: [1, 0],
        5: [mpf(1) / 2 - pi / 3, -mpf(1) / 2 - pi / 3], 6: [1, 1], 7: [0, s3],
        8: [x8_1, 9 / x8_1], 9: [-3, -4], 10: [0, 1], 11: [x11_1, x11_1 ** 2],
        12: [2, 3], 13: [1, 0], 14: [(sqrt(7) - 1) / 2, (sqrt(7) + 1) / 4],
        15: [mpf('0.5'), 2], 16: [mpf('0.5'), mpf('0.25')], 17: [0, 0],
        18: [sqrt(250), sqrt(mpf('2.5'))], 19: x19, 20: [mpf('0.5'), s3 / 2],
        21: [2, 0], 22: [1, 1], 23: [1, 1], 24: [3, s3], 25: [50, 25, mpf('1.5')],
        26: [1, 1, 1], 27: [-1, 1, 0], 28: [mpf('0.5'), -mpf('0.5'), mpf('0.5')],
        29: [4, 2 * s2, 2], 30: [1, 0, 0], 31: [1 / s3, s3, 0], 32: [0, 0, 1],
        33: [0, s2, s2], 34: [log(l10), l10, 10],
        35: [mpf(4) / 3, mpf(7) / 9, mpf(4) / 9], 36: [20, 11, 15], 37: [24, 12, 12],
        38: one[:4], 39: [1, 1, 0, 0],
        40: [mpf(2) ** (-mpf(1) / 3), mpf(2) ** (-mpf(1) / 2), mpf(2) ** (-mpf(11) / 12),
             mpf(2) ** (-mpf(1) / 4)],
        41: [mpf(2) / 3, mpf(1) / 3, mpf(1) / 3, 2], 42: [2, 2, 3 * s2 / 5, 4 * s2 / 5],
        43: [0, 1, 2, -1], 44: [0, 3, 0, 4], 45: [1, 2, 3, 4, 5],
        46: one, 47: one, 48: one, 49: one, 50: one,
    }


def main():
    xs = xstar()
    print("# Hock-Schittkowski 1..50: number, f(x*) and x* at %d digits." % D)
    print("# Produced by: python3 tests/e04/hs/tools/hs_optima.py (mpmath %d digits)" % mp.dps)
    for k in range(1, 51):
        x = [mpf(v) for v in xs[k]]
        f = F[k](x)
        print(k, mp.nstr(f, D, min_fixed=-5, max_fixed=5), " ".join(mp.nstr(v, D) for v in x))


if __name__ == "__main__":
    main()
