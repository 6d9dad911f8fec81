#!/usr/bin/python3
"""High-precision reference values for the option pricing chapter s30.

Writes tests/s30/data/s30ca_reference.txt (cash-or-nothing binaries, the
same cases, payoff 2.5) and tests/s30/data/s30aa_reference.txt: European call and put prices in the
Black-Scholes-Merton model with a continuous dividend yield, evaluated in
mpmath at 50 significant digits from the exact double inputs, and their
eleven sensitivities (delta, gamma, vega, theta, rho, vanna, charm, speed,
colour, zomma, vomma, as docs/s30ab.md defines them) by their closed forms,
evaluated at 50 digits.  Before anything is written, every closed form is
checked against mpmath's high-precision numerical differentiation of the
price (at 60 digits, on every case whose price exceeds 1e-30), so that a
wrong formula, sign or time convention stops the script.

Format: a block per case,
  case <C|P> s sigma r q m n
  x <m values>
  t <n values>
followed by m*n rows "i j price delta gamma vega theta rho vanna charm speed
colour zomma vomma" (0-based i, j), every number with 25 significant digits.
Inputs are doubles written with repr(), so they read back exactly.

Usage: /usr/bin/python3 tools/s30_reference.py [repository root]
"""

import os
import random
import sys

import mpmath as mp

mp.mp.dps = 50


def N(y):
    return mp.erfc(-y / mp.sqrt(2)) / 2


def price(kind, s, x, t, sigma, r, q):
    v = sigma * mp.sqrt(t)
    d1 = (mp.log(s) - mp.log(x) + t * (r - q + sigma ** 2 / 2)) / v
    d2 = d1 - v
    if kind == 'C':
        return s * mp.exp(-q * t) * N(d1) - x * mp.exp(-r * t) * N(d2)
    return x * mp.exp(-r * t) * N(-d2) - s * mp.exp(-q * t) * N(-d1)


def binary(kind, s, x, t, sigma, r, q, k):
    s, x, t, sigma, r, q, k = (mp.mpf(a) for a in (s, x, t, sigma, r, q, k))
    v = sigma * mp.sqrt(t)
    d2 = (mp.log(s) - mp.log(x) + t * (r - q - sigma ** 2 / 2)) / v
    return k * mp.exp(-r * t) * N(d2 if kind == 'C' else -d2)


def closed_forms(kind, s, x, t, sigma, r, q):
    s, x, t, sigma, r, q = (mp.mpf(a) for a in (s, x, t, sigma, r, q))
    b = r - q
    v = sigma * mp.sqrt(t)
    d1 = (mp.log(s) - mp.log(x) + t * (b + sigma ** 2 / 2)) / v
    d2 = d1 - v
    dq, dr = mp.exp(-q * t), mp.exp(-r * t)
    phi = mp.npdf(d1)
    g = (2 * b * t - d2 * v) / (2 * t * v)
    gamma = dq * phi / (s * v)
    vega = s * dq * phi * mp.sqrt(t)
    common_theta = -s * dq * phi * sigma / (2 * mp.sqrt(t))
    if kind == 'C':
        delta = dq * N(d1)
        theta = common_theta + q * s * dq * N(d1) - r * x * dr * N(d2)
        rho = x * t * dr * N(d2)
        charm = q * dq * N(d1) - dq * phi * g
    else:
        delta = -dq * N(-d1)
        theta = common_theta - q * s * dq * N(-d1) + r * x * dr * N(-d2)
        rho = -x * t * dr * N(-d2)
        charm = -q * dq * N(-d1) - dq * phi * g
    vanna = -dq * phi * d2 / sigma
    speed = -gamma / s * (d1 / v + 1)
    colour = gamma / (2 * t) * (2 * q * t + 1 + d1 * (2 * b * t - d2 * v) / v)
    zomma = gamma * (d1 * d2 - 1) / sigma
    vomma = vega * d1 * d2 / sigma
    return [delta, gamma, vega, theta, rho, vanna, charm, speed, colour, zomma, vomma]


def by_differences(kind, s, x, t, sigma, r, q):
    S, T, V, R = mp.mpf(s), mp.mpf(t), mp.mpf(sigma), mp.mpf(r)
    f = lambda a, b, c, d: price(kind, a, x, b, c, d, q)
    pt = (S, T, V, R)

    def D(order):
        return mp.diff(f, pt, order)

    return [
        D((1, 0, 0, 0)),    # delta
        D((2, 0, 0, 0)),    # gamma
        D((0, 0, 1, 0)),    # vega
        -D((0, 1, 0, 0)),   # theta = -dp/dt
        D((0, 0, 0, 1)),    # rho
        D((1, 0, 1, 0)),    # vanna
        -D((1, 1, 0, 0)),   # charm = -d(delta)/dt
        D((3, 0, 0, 0)),    # speed
        -D((2, 1, 0, 0)),   # colour = -d(gamma)/dt
        D((2, 0, 1, 0)),    # zomma
        D((0, 0, 2, 0)),    # vomma
    ]


NAMES = 'delta gamma vega theta rho vanna charm speed colour zomma vomma'.split()


def fmt(v):
    return mp.nstr(v, 25, min_fixed=1, max_fixed=0) if v != 0 else '0.0'


def main():
    root = sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(__file__), '..')
    rng = random.Random(30)
    cases = [
        # kind, s, sigma, r, q, strikes, expiries
        ('C', 100.0, 0.2, 0.05, 0.02, [50.0, 80.0, 100.0, 120.0, 200.0, 400.0], [0.05, 0.5, 1.0, 5.0]),
        ('P', 100.0, 0.2, 0.05, 0.02, [20.0, 50.0, 80.0, 100.0, 120.0, 200.0], [0.05, 0.5, 1.0, 5.0]),
        ('C', 55.5, 0.45, 0.0, 0.0, [5.0, 30.0, 55.5, 70.0, 150.0], [0.01, 0.25, 2.0, 10.0]),
        ('P', 55.5, 0.45, 0.0, 0.07, [5.0, 30.0, 55.5, 70.0, 150.0], [0.01, 0.25, 2.0, 10.0]),
        ('C', 1.25, 0.08, 0.01, 0.03, [1.0, 1.2, 1.25, 1.3, 1.6], [0.1, 1.0, 3.0]),
        ('P', 1.25, 0.08, 0.01, 0.03, [0.9, 1.2, 1.25, 1.3, 1.6], [0.1, 1.0, 3.0]),
        # deep out of the money: prices down to about 1e-200
        ('C', 100.0, 0.1, 0.03, 0.0, [150.0, 200.0, 300.0, 500.0, 800.0], [0.25, 1.0]),
        ('P', 100.0, 0.1, 0.03, 0.0, [60.0, 40.0, 30.0, 20.0, 12.0], [0.25, 1.0]),
        ('C', 1e-3, 1.5, 0.2, 0.1, [1e-5, 1e-3, 0.1], [0.5, 30.0]),
        ('P', 1e6, 0.3, 0.12, 0.0, [1e4, 1e6, 1e8], [0.5, 30.0]),
    ]
    for _ in range(6):
        kind = rng.choice('CP')
        s = round(rng.uniform(10, 200), 4)
        sigma = round(rng.uniform(0.05, 0.9), 4)
        r = round(rng.uniform(0, 0.1), 4)
        q = round(rng.uniform(0, 0.08), 4)
        xs = sorted(round(s * mp.exp(rng.uniform(-1.2, 1.2)), 3) for _ in range(4))
        ts = sorted(round(rng.uniform(0.02, 8), 4) for _ in range(3))
        cases.append((kind, s, sigma, r, q, [float(x) for x in xs], ts))

    out = [
        '# European prices and sensitivities for s30aa and s30ab.',
        '# Generated by: /usr/bin/python3 tools/s30_reference.py (mpmath %s, %d digits)' % (mp.__version__, mp.mp.dps),
        '# Columns of a row: i j price delta gamma vega theta rho vanna charm speed colour zomma vomma',
    ]
    for kind, s, sigma, r, q, xs, ts in cases:
        out.append('case %s %r %r %r %r %d %d' % (kind, s, sigma, r, q, len(xs), len(ts)))
        out.append('x ' + ' '.join(repr(float(x)) for x in xs))
        out.append('t ' + ' '.join(repr(float(t)) for t in ts))
        for j, t in enumerate(ts):
            for i, x in enumerate(xs):
                p = price(kind, mp.mpf(s), mp.mpf(x), mp.mpf(t), mp.mpf(sigma), mp.mpf(r), mp.mpf(q))
                g = closed_forms(kind, s, x, t, sigma, r, q)
                if p > 1e-30:
                    with mp.workdps(60):
                        h = by_differences(kind, s, mp.mpf(x), t, sigma, r, mp.mpf(q))
                    for name, a, b in zip(NAMES, g, h):
                        if abs(a - b) > 1e-20 * max(abs(b), 1e-10):
                            sys.exit('closed form of %s disagrees: %s %s at %s' % (name, a, b, (kind, s, x, t)))
                out.append('%d %d %s' % (i, j, ' '.join(fmt(v) for v in [p] + g)))
    path = os.path.join(root, 'tests', 's30', 'data', 's30aa_reference.txt')
    with open(path, 'w') as fh:
        fh.write('\n'.join(out) + '\n')

    # Cash-or-nothing binaries paying k: k e^{-rt} N(+-d2), on the same cases.
    out = [
        '# Cash-or-nothing binary prices for s30ca (payoff k = 2.5).',
        '# Generated by: /usr/bin/python3 tools/s30_reference.py (mpmath %s, %d digits)' % (mp.__version__, mp.mp.dps),
        '# Same case blocks as s30aa_reference.txt; a row: i j price',
    ]
    for kind, s, sigma, r, q, xs, ts in cases:
        out.append('case %s %r %r %r %r %d %d' % (kind, s, sigma, r, q, len(xs), len(ts)))
        out.append('x ' + ' '.join(repr(float(x)) for x in xs))
        out.append('t ' + ' '.join(repr(float(t)) for t in ts))
        for j, t in enumerate(ts):
            for i, x in enumerate(xs):
                out.append('%d %d %s' % (i, j, fmt(binary(kind, s, x, t, sigma, r, q, 2.5))))
    with open(os.path.join(root, 'tests', 's30', 'data', 's30ca_reference.txt'), 'w') as fh:
        fh.write('\n'.join(out) + '\n')


if __name__ == '__main__':
    main()
