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

Usage: /usr/bin/python3 tools/s30_reference.py [repository root] [part ...]
(parts: european exotic jump heston_term; all by default)
"""

import os
import random
import sys

import mpmath as mp

mp.mp.dps = 50


def N(y):
    return mp.erfc(-y / mp.sqrt(2)) / 2


def settled(f, *args):
    """f(*args) at 50, 100, 200, ... digits until two successive nonzero
    values agree to 1e-35 relative: a price that is a small difference of large terms
    (a knock-out near its barrier) needs as many more digits as it is
    smaller than its terms."""
    old, prev = mp.mp.dps, None
    try:
        for dps in (50, 100, 200, 400, 800):
            mp.mp.dps = dps
            val = f(*args)
            # Two exact zeros are no agreement: a price below the working
            # precision's share of its terms can cancel to exactly 0.
            if prev is not None and val != 0 and abs(val - prev) <= mp.mpf('1e-35') * abs(val):
                return val
            prev = val
        if abs(val) <= mp.mpf('1e-200') and abs(prev) <= mp.mpf('1e-200'):
            return mp.mpf(0)  # below 1e-200 at 400 and 800 digits: written as 0
        sys.exit('no settled value for %s%s' % (f.__name__, args))
    finally:
        mp.mp.dps = old


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


# ---- Exotic closed forms: lookback (s30ba/s30bb), binary sensitivities
# (s30cb), barriers (s30fa) and the American approximation (s30qc).  Each
# price is the published formula evaluated at 50 digits from the exact
# double inputs; each sensitivity is mpmath's high-precision numerical
# derivative of that price (at 60 digits), or, for s30cb, its closed form
# checked against that derivative.

def lookback(kind, s, sm, t, sigma, r, q):
    """Goldman-Sosin-Gatto (1979) / Conze-Viswanathan (1991) floating
    strike lookback; the limit form where r = q."""
    s, sm, t, sigma, r, q = (mp.mpf(a) for a in (s, sm, t, sigma, r, q))
    b = r - q
    v = sigma * mp.sqrt(t)
    a1 = (mp.log(s / sm) + (b + sigma ** 2 / 2) * t) / v
    a2 = a1 - v
    if kind == 'C':
        base = s * mp.exp(-q * t) * N(a1) - sm * mp.exp(-r * t) * N(a2)
        if b == 0:
            return base + s * mp.exp(-r * t) * v * (mp.npdf(a1) + a1 * (N(a1) - 1))
        nu = 2 * b / sigma ** 2
        return base + s * mp.exp(-r * t) / nu * (
            (s / sm) ** (-nu) * N(-a1 + 2 * b * mp.sqrt(t) / sigma) - mp.exp(b * t) * N(-a1))
    base = sm * mp.exp(-r * t) * N(-a2) - s * mp.exp(-q * t) * N(-a1)
    if b == 0:
        return base + s * mp.exp(-r * t) * v * (mp.npdf(a1) + a1 * N(a1))
    nu = 2 * b / sigma ** 2
    return base + s * mp.exp(-r * t) / nu * (
        -(s / sm) ** (-nu) * N(a1 - 2 * b * mp.sqrt(t) / sigma) + mp.exp(b * t) * N(a1))


def greeks5(f, s, t, sigma, r):
    """delta, gamma, vega, theta = -df/dt, rho of f(s, t, sigma, r)."""
    pt = (mp.mpf(s), mp.mpf(t), mp.mpf(sigma), mp.mpf(r))
    return [mp.diff(f, pt, (1, 0, 0, 0)), mp.diff(f, pt, (2, 0, 0, 0)), mp.diff(f, pt, (0, 0, 1, 0)),
            -mp.diff(f, pt, (0, 1, 0, 0)), mp.diff(f, pt, (0, 0, 0, 1))]


def binary_greeks(kind, s, x, t, sigma, r, q, k):
    """Closed forms of the cash-or-nothing sensitivities (docs/s30cb.md)."""
    s, x, t, sigma, r, q, k = (mp.mpf(a) for a in (s, x, t, sigma, r, q, k))
    v = sigma * mp.sqrt(t)
    d2 = (mp.log(s / x) + (r - q - sigma ** 2 / 2) * t) / v
    d1 = d2 + v
    e = 1 if kind == 'C' else -1
    kd = k * mp.exp(-r * t)
    ph = mp.npdf(d2)
    delta = e * kd * ph / (s * v)
    gamma = -e * kd * ph * d1 / (s * s * v * v)
    vega = -e * kd * ph * d1 / sigma
    dd2dt = (r - q - sigma ** 2 / 2) / v - d2 / (2 * t)
    theta = r * kd * N(e * d2) - e * kd * ph * dd2dt
    rho = -t * kd * N(e * d2) + e * kd * ph * mp.sqrt(t) / sigma
    return [delta, gamma, vega, theta, rho]


def barrier(kind, btype, s, x, h, k, t, sigma, r, q):
    """Merton (1973) and Reiner-Rubinstein (1991) single-barrier options;
    rebate k paid at expiry (knock-in) or at the hit (knock-out)."""
    s, x, h, k, t, sigma, r, q = (mp.mpf(a) for a in (s, x, h, k, t, sigma, r, q))
    b = r - q
    v = sigma * mp.sqrt(t)
    mu = (b - sigma ** 2 / 2) / sigma ** 2
    lam = mp.sqrt(mu ** 2 + 2 * r / sigma ** 2)
    x1 = mp.log(s / x) / v + (1 + mu) * v
    x2 = mp.log(s / h) / v + (1 + mu) * v
    y1 = mp.log(h * h / (s * x)) / v + (1 + mu) * v
    y2 = mp.log(h / s) / v + (1 + mu) * v
    z = mp.log(h / s) / v + lam * v
    eta = 1 if btype[0] == 'D' else -1
    ph = 1 if kind == 'C' else -1
    dq, dr = mp.exp(-q * t), mp.exp(-r * t)
    A = ph * s * dq * N(ph * x1) - ph * x * dr * N(ph * x1 - ph * v)
    B = ph * s * dq * N(ph * x2) - ph * x * dr * N(ph * x2 - ph * v)
    C = ph * s * dq * (h / s) ** (2 * (mu + 1)) * N(eta * y1) - ph * x * dr * (h / s) ** (2 * mu) * N(eta * y1 - eta * v)
    D = ph * s * dq * (h / s) ** (2 * (mu + 1)) * N(eta * y2) - ph * x * dr * (h / s) ** (2 * mu) * N(eta * y2 - eta * v)
    E = k * dr * (N(eta * x2 - eta * v) - (h / s) ** (2 * mu) * N(eta * y2 - eta * v))
    F = k * ((h / s) ** (mu + lam) * N(eta * z) + (h / s) ** (mu - lam) * N(eta * z - 2 * eta * lam * v))
    above = x > h
    table = {
        ('C', 'DI'): C + E if above else A - B + D + E,
        ('C', 'UI'): A + E if above else B - C + D + E,
        ('P', 'DI'): B - C + D + E if above else A + E,
        ('P', 'UI'): A - B + D + E if above else C + E,
        ('C', 'DO'): A - C + F if above else B - D + F,
        ('C', 'UO'): F if above else A - B + C - D + F,
        ('P', 'DO'): A - B + C - D + F if above else F,
        ('P', 'UO'): B - D + F if above else A - C + F,
    }
    return table[(kind, btype)]


def bs93_call(s, x, t, r, b, sigma):
    """Bjerksund-Stensland (1993) American call approximation."""
    if b >= r:
        v = sigma * mp.sqrt(t)
        d1 = (mp.log(s / x) + (b + sigma ** 2 / 2) * t) / v
        return s * mp.exp((b - r) * t) * N(d1) - x * mp.exp(-r * t) * N(d1 - v)
    beta = (mp.mpf(1) / 2 - b / sigma ** 2) + mp.sqrt((b / sigma ** 2 - mp.mpf(1) / 2) ** 2 + 2 * r / sigma ** 2)
    binf = beta / (beta - 1) * x
    b0 = max(x, r / (r - b) * x)
    ht = -(b * t + 2 * sigma * mp.sqrt(t)) * b0 / (binf - b0)
    i = b0 + (binf - b0) * (1 - mp.exp(ht)) if ht < 0 else b0  # held at B_0 where h(t) > 0
    if s >= i:
        return s - x
    alpha = (i - x) * i ** (-beta)

    def phi_(gamma, hh):
        lam = (-r + gamma * b + gamma * (gamma - 1) * sigma ** 2 / 2) * t
        d = -(mp.log(s / hh) + (b + (gamma - mp.mpf(1) / 2) * sigma ** 2) * t) / (sigma * mp.sqrt(t))
        kap = 2 * b / sigma ** 2 + (2 * gamma - 1)
        return mp.exp(lam) * s ** gamma * (N(d) - (i / s) ** kap * N(d - 2 * mp.log(i / s) / (sigma * mp.sqrt(t))))

    return (alpha * s ** beta - alpha * phi_(beta, i) + phi_(1, i) - phi_(1, x) - x * phi_(0, i)
            + x * phi_(0, x))


def american(kind, s, x, t, sigma, r, q):
    s, x, t, sigma, r, q = (mp.mpf(a) for a in (s, x, t, sigma, r, q))
    if kind == 'C':
        return bs93_call(s, x, t, r, r - q, sigma)
    return bs93_call(x, s, t, q, q - r, sigma)  # the put-call transformation


def write_blocks(path, header, blocks):
    with open(path, 'w') as fh:
        fh.write('\n'.join(header) + '\n')
        for head, xs, ts, rows in blocks:
            fh.write(head + '\n')
            fh.write('x ' + ' '.join(repr(float(x)) for x in xs) + '\n')
            fh.write('t ' + ' '.join(repr(float(t)) for t in ts) + '\n')
            for i, j, vals in rows:
                fh.write('%d %d %s\n' % (i, j, ' '.join(fmt(v) for v in vals)))


def exotic_main(root):
    gen = '# Generated by: /usr/bin/python3 tools/s30_reference.py (mpmath %s, %d digits)' % (mp.__version__, mp.mp.dps)
    data = os.path.join(root, 'tests', 's30', 'data')
    # Lookbacks: 'x' holds sm.  Rows: i j price delta gamma vega theta rho
    # (the sensitivities only where r != q; zeros otherwise).
    lb_cases = [
        ('C', 100.0, 0.2, 0.05, 0.02, [50.0, 80.0, 95.0, 100.0], [0.05, 0.5, 1.0, 5.0]),
        ('P', 100.0, 0.2, 0.05, 0.02, [100.0, 105.0, 120.0, 200.0], [0.05, 0.5, 1.0, 5.0]),
        ('C', 55.5, 0.45, 0.0, 0.07, [20.0, 50.0, 55.5], [0.01, 0.25, 2.0, 10.0]),
        ('P', 55.5, 0.45, 0.08, 0.0, [55.5, 60.0, 150.0], [0.01, 0.25, 2.0, 10.0]),
        ('C', 1.25, 0.08, 0.01, 0.03, [1.0, 1.2, 1.25], [0.1, 1.0, 3.0]),
        ('P', 1.25, 0.08, 0.0, 0.06, [1.25, 1.3, 1.6], [0.1, 1.0, 3.0]),
        # r = q (s30ba only) and r - q tiny, where the published form divides
        # by nearly zero
        ('C', 100.0, 0.3, 0.03, 0.03, [70.0, 90.0, 100.0], [0.1, 1.0, 4.0]),
        ('P', 100.0, 0.3, 0.03, 0.03, [100.0, 110.0, 130.0], [0.1, 1.0, 4.0]),
        ('C', 100.0, 0.3, 0.03, 0.030000001, [70.0, 90.0, 100.0], [0.1, 1.0, 4.0]),
        ('P', 100.0, 0.3, 0.03, 0.029999, [100.0, 110.0, 130.0], [0.1, 1.0, 4.0]),
        # strong drift against a small volatility
        ('C', 100.0, 0.05, 0.1, 0.0, [60.0, 99.0, 100.0], [0.5, 3.0]),
        ('P', 100.0, 0.05, 0.0, 0.1, [100.0, 101.0, 140.0], [0.5, 3.0]),
        ('C', 100.0, 0.05, 0.0, 0.1, [60.0, 99.0, 100.0], [0.5, 3.0]),
        ('P', 100.0, 0.05, 0.1, 0.0, [100.0, 101.0, 140.0], [0.5, 3.0]),
    ]
    blocks = []
    for kind, s, sigma, r, q, sms, ts in lb_cases:
        rows = []
        for j, t in enumerate(ts):
            for i, sm in enumerate(sms):
                p = lookback(kind, s, sm, t, sigma, r, q)
                g = [mp.mpf(0)] * 5
                if r != q:
                    with mp.workdps(60):
                        g = greeks5(lambda S, T, V, R: lookback(kind, S, sm, T, V, R, q), s, t, sigma, r)
                rows.append((i, j, [p] + g))
        blocks.append(('case %s %r %r %r %r %d %d' % (kind, s, sigma, r, q, len(sms), len(ts)), sms, ts, rows))
    write_blocks(os.path.join(data, 's30ba_reference.txt'),
                 ['# Floating-strike lookback prices and sensitivities for s30ba and s30bb.', gen,
                  '# x holds sm; a row: i j price delta gamma vega theta rho (zeros where r = q)'], blocks)

    # Binary sensitivities: the s30ca cases of the first ten, payoff 2.5.
    bin_cases = [
        ('C', 100.0, 0.2, 0.05, 0.02, [50.0, 80.0, 100.0, 120.0, 200.0], [0.05, 0.5, 1.0, 5.0]),
        ('P', 100.0, 0.2, 0.05, 0.02, [20.0, 50.0, 80.0, 100.0, 120.0, 200.0], [0.05, 0.5, 1.0, 5.0]),
        ('C', 55.5, 0.45, 0.0, 0.0, [5.0, 30.0, 55.5, 70.0, 150.0], [0.01, 0.25, 2.0, 10.0]),
        ('P', 55.5, 0.45, 0.0, 0.07, [5.0, 30.0, 55.5, 70.0, 150.0], [0.01, 0.25, 2.0, 10.0]),
        ('C', 100.0, 0.1, 0.03, 0.0, [150.0, 200.0, 300.0], [0.25, 1.0]),
        ('P', 1e6, 0.3, 0.12, 0.0, [1e4, 1e6, 1e8], [0.5, 30.0]),
    ]
    blocks = []
    for kind, s, sigma, r, q, xs, ts in bin_cases:
        rows = []
        for j, t in enumerate(ts):
            for i, x in enumerate(xs):
                p = binary(kind, s, x, t, sigma, r, q, 2.5)
                g = binary_greeks(kind, s, x, t, sigma, r, q, 2.5)
                if p > 1e-30:
                    with mp.workdps(60):
                        h = greeks5(lambda S, T, V, R: binary(kind, S, x, T, V, R, q, 2.5), s, t, sigma, r)
                    for a, b in zip(g, h):
                        if abs(a - b) > 1e-20 * max(abs(b), 1e-10):
                            sys.exit('binary sensitivity disagrees: %s %s at %s' % (a, b, (kind, s, x, t)))
                rows.append((i, j, [p] + g))
        blocks.append(('case %s %r %r %r %r %d %d' % (kind, s, sigma, r, q, len(xs), len(ts)), xs, ts, rows))
    write_blocks(os.path.join(data, 's30cb_reference.txt'),
                 ['# Cash-or-nothing binary prices (k = 2.5) and sensitivities for s30cb.', gen,
                  '# a row: i j price delta gamma vega theta rho'], blocks)

    # Barriers: a block per option type, barrier type, barrier and rebate.
    # Rows: i j price.  Before writing, in + out = vanilla + rebate terms is
    # checked (with k = 0: in + out = European).
    blocks = []
    for kind in 'CP':
        for btype, s, h in (('DI', 100.0, 90.0), ('DO', 100.0, 90.0), ('UI', 100.0, 110.0), ('UO', 100.0, 110.0),
                            ('DO', 100.0, 99.5), ('UI', 40.0, 75.0)):
            for k, sigma, r, q in ((0.0, 0.25, 0.05, 0.02), (3.0, 0.25, 0.05, 0.02), (0.0, 0.4, 0.0, 0.06)):
                xs = [70.0, 90.0, 100.0, 110.0, 130.0] if s == 100.0 else [30.0, 40.0, 60.0, 80.0]
                ts = [0.1, 0.5, 1.0, 3.0]
                rows = []
                for j, t in enumerate(ts):
                    for i, x in enumerate(xs):
                        p = settled(barrier, kind, btype, s, x, h, k, t, sigma, r, q)
                        if k == 0:
                            other = {'DI': 'DO', 'DO': 'DI', 'UI': 'UO', 'UO': 'UI'}[btype]
                            euro = price(kind, mp.mpf(s), mp.mpf(x), mp.mpf(t), mp.mpf(sigma), mp.mpf(r), mp.mpf(q))
                            tot = p + barrier(kind, other, s, x, h, 0, t, sigma, r, q)
                            if abs(tot - euro) > 1e-40 * euro:
                                sys.exit('in-out parity fails at %s' % ((kind, btype, s, x, h, t),))
                        rows.append((i, j, [p]))
                head = 'case %s %s %r %r %r %r %r %r %d %d' % (kind, btype, s, h, k, sigma, r, q, len(xs), len(ts))
                blocks.append((head, xs, ts, rows))
    # Where the terms cancel: the spot a relative 1e-2 ... 1e-9 from the
    # barrier (a knock-out is then a small multiple of that distance), the
    # strike on or next to the barrier, short expiries, a small volatility
    # (mu large), deep out of the money.  Prices at 50 to 800 digits
    # (settled), rows only where the price exceeds 1e-200.
    near = []

    def near_blocks(kind, btype, s, h, xs):
        for k, sigma, r, q in ((0.0, 0.25, 0.05, 0.02), (2.0, 0.25, 0.05, 0.02), (0.0, 0.03, 0.08, 0.0),
                               (1.0, 0.6, 0.0, 0.04)):
            ts = [1e-4, 0.02, 0.5, 4.0]
            rows = []
            for j, t in enumerate(ts):
                for i, x in enumerate(xs):
                    p = settled(barrier, kind, btype, s, x, h, k, t, sigma, r, q)
                    rows.append((i, j, [p if p > 1e-200 else mp.mpf(0)]))
            head = 'case %s %s %r %r %r %r %r %r %d %d' % (kind, btype, s, h, k, sigma, r, q, len(xs), len(ts))
            near.append((head, xs, ts, rows))

    for kind in 'CP':
        for btype, s, h in (('DO', 100.0, 99.0), ('DO', 100.0, 99.99999), ('DO', 100.0, 99.9999999),
                            ('UO', 100.0, 101.0), ('UO', 100.0, 100.00001), ('UO', 100.0, 100.0000001),
                            ('DI', 100.0, 99.99999), ('UI', 100.0, 100.00001), ('DI', 100.0, 50.0),
                            ('UI', 100.0, 200.0), ('DO', 100.0, 60.0), ('UO', 100.0, 150.0)):
            near_blocks(kind, btype, s, h, sorted({50.0, 99.0, h, h * (1 + 1e-9), 101.0, 160.0, 400.0}))
    # A put down-and-out and an up-and-out call with spot and strike both
    # within 1e-9 of the barrier (relative 1e-9, and absolute 1e-9): the
    # strike on the barrier, between barrier and spot, on the spot, and as
    # far beyond the spot as the barrier lies before it.
    for kind, btype, h in (('P', 'DO', 100.0 * (1 - 1e-9)), ('P', 'DO', 100.0 - 1e-9),
                           ('C', 'UO', 100.0 * (1 + 1e-9)), ('C', 'UO', 100.0 + 1e-9)):
        near_blocks(kind, btype, 100.0, h, sorted({h, 100.0 + 0.5 * (h - 100.0), 100.0, 100.0 - (h - 100.0)}))
    write_blocks(os.path.join(data, 's30fa_cancel_reference.txt'),
                 ['# Single-barrier option prices for s30fa where the closed form cancels.', gen,
                  '# Each price evaluated at 50, 100, 200, ... digits until two agree to 1e-35 (0 below 1e-200).',
                  '# case <C|P> <DI|DO|UI|UO> s h k sigma r q m n; a row: i j price'], near)
    write_blocks(os.path.join(data, 's30fa_reference.txt'),
                 ['# Single-barrier option prices for s30fa.', gen,
                  '# case <C|P> <DI|DO|UI|UO> s h k sigma r q m n; a row: i j price'], blocks)

    # American approximation: rows i j price.
    am_cases = [
        ('C', 100.0, 0.2, 0.05, 0.02, [80.0, 90.0, 100.0, 110.0, 120.0], [0.1, 0.5, 1.0, 3.0]),
        ('P', 100.0, 0.2, 0.05, 0.02, [80.0, 90.0, 100.0, 110.0, 120.0], [0.1, 0.5, 1.0, 3.0]),
        ('C', 42.0, 0.35, 0.04, 0.08, [30.0, 40.0, 50.0], [0.25, 0.75, 2.0]),
        ('P', 42.0, 0.35, 0.08, 0.0, [30.0, 40.0, 50.0, 80.0], [0.25, 0.75, 2.0]),
        ('C', 100.0, 0.3, 0.03, 0.0, [90.0, 100.0, 110.0], [0.5, 2.0]),    # no dividend: European
        ('P', 100.0, 0.3, 0.0, 0.0, [90.0, 100.0, 110.0], [0.5, 2.0]),     # r = 0: European
        ('C', 100.0, 0.15, 0.1, 0.12, [50.0, 60.0, 100.0], [0.5, 5.0]),    # deep in the money: s above I
    ]
    am_cases += [
        # where the approximation's terms cancel: deep out of the money, short
        # expiries, a small volatility, the spot near the boundary
        ('C', 100.0, 0.2, 0.05, 0.02, [150.0, 250.0, 400.0, 800.0], [1e-3, 0.02, 0.25, 2.0]),
        ('P', 100.0, 0.2, 0.05, 0.02, [60.0, 40.0, 25.0, 12.0], [1e-3, 0.02, 0.25, 2.0]),
        ('C', 100.0, 0.04, 0.03, 0.09, [101.0, 110.0, 130.0, 90.0], [0.01, 0.5, 5.0]),
        ('P', 100.0, 0.04, 0.09, 0.01, [99.0, 90.0, 70.0, 110.0], [0.01, 0.5, 5.0]),
        ('P', 100.0, 0.3, 0.2, 0.0, [60.0, 70.0, 80.0, 120.0], [0.1, 1.0, 10.0]),
        ('C', 100.0, 0.3, 0.0, 0.2, [140.0, 130.0, 120.0, 80.0], [0.1, 1.0, 10.0]),
        # far out of the money, prices from about 1e-190 to 1e-6 s
        ('C', 100.0, 0.3, 0.06, 0.04, [200.0, 300.0, 500.0, 1000.0], [0.02, 0.1, 0.5, 3.0]),
        ('P', 100.0, 0.3, 0.06, 0.04, [50.0, 30.0, 20.0, 10.0], [0.02, 0.1, 0.5, 3.0]),
        ('C', 100.0, 0.02, 0.04, 0.07, [103.0, 106.0, 110.0], [0.05, 0.5, 2.0]),
        ('P', 100.0, 0.02, 0.07, 0.04, [97.0, 94.0, 90.0], [0.05, 0.5, 2.0]),
        ('C', 7.5, 0.6, 0.1, 0.15, [30.0, 75.0, 300.0], [0.01, 0.25, 1.0]),
        ('P', 7.5, 0.6, 0.15, 0.1, [1.5, 0.75, 0.2], [0.01, 0.25, 1.0]),
    ]
    blocks = []
    for kind, s, sigma, r, q, xs, ts in am_cases:
        rows = [(i, j, [settled(american, kind, s, x, t, sigma, r, q)]) for j, t in enumerate(ts) for i, x in enumerate(xs)]
        rows = [(i, j, [p if p > 1e-200 else mp.mpf(0)]) for i, j, (p,) in rows]
        blocks.append(('case %s %r %r %r %r %d %d' % (kind, s, sigma, r, q, len(xs), len(ts)), xs, ts, rows))
    write_blocks(os.path.join(data, 's30qc_reference.txt'),
                 ['# American option prices, Bjerksund-Stensland (1993) approximation, for s30qc.', gen,
                  '# a row: i j price'], blocks)


# ---- Jump diffusion (s30ja, s30jb) and stochastic volatility (s30na, s30nb,
# s30nc).  Written by jump_heston_main(root); run as part of main.

def merton(kind, s, x, t, sigma, r, lam, jvol):
    """Merton's series with exact Poisson weights, to below 1e-45 of the sum."""
    s, x, t, sigma, r, lam, jvol = (mp.mpf(a) for a in (s, x, t, sigma, r, lam, jvol))
    mu = lam * t
    total = mp.mpf(0)
    top = int(mu + 60 + 40 * mp.sqrt(mu))
    for i in range(top + 1):
        w = mp.exp(-mu + i * mp.log(mu) - mp.loggamma(i + 1))
        sig_i = mp.sqrt((1 - jvol) * sigma ** 2 + i * jvol * sigma ** 2 / mu)
        total += w * price(kind, s, x, t, sig_i, r, 0)
    return total


def jump_sensitivities(kind, s, x, t, sigma, r, lam, jvol):
    """The eleven sensitivities of docs/s30jb.md by mpmath's numerical
    differentiation of the series (time derivatives negated)."""
    f = lambda S, T, SG, R: merton(kind, S, x, T, SG, R, lam, jvol)
    a = (mp.mpf(s), mp.mpf(t), mp.mpf(sigma), mp.mpf(r))
    d = lambda orders: mp.diff(f, a, orders)
    return [d((1, 0, 0, 0)), d((2, 0, 0, 0)), d((0, 0, 1, 0)), -d((0, 1, 0, 0)), d((0, 0, 0, 1)),
            d((1, 0, 1, 0)), -d((1, 1, 0, 0)), d((3, 0, 0, 0)), -d((2, 1, 0, 0)), d((2, 0, 1, 0)),
            d((0, 0, 2, 0))]


def heston_kappa_star(kappa, eta, sigmav, grisk):
    """The pricing-measure mean reversion and long-run variance (the model of
    docs/s30na.md): kappa* = sqrt(kappa^2 - grisk (1-grisk) sigmav^2) and
    kappa* eta* = kappa eta."""
    ks = mp.sqrt(kappa ** 2 - grisk * (1 - grisk) * sigmav ** 2)
    return ks, kappa * eta


def heston_cf(u, s, t, kappa, ke, sigmav, corr, var0, r, q):
    """E[exp(iu ln S_t)] in the rearranged form of Albrecher et al. (2007)."""
    xi = kappa - sigmav * corr * 1j * u
    d = mp.sqrt(xi ** 2 + sigmav ** 2 * (u ** 2 + 1j * u))
    g = (xi - d) / (xi + d)
    e = mp.exp(-d * t)
    c = ke / sigmav ** 2 * ((xi - d) * t - 2 * mp.log((1 - g * e) / (1 - g)))
    dd = (xi - d) / sigmav ** 2 * (1 - e) / (1 - g * e)
    return mp.exp(1j * u * (mp.log(s) + (r - q) * t) + c + dd * var0)


def heston(kind, s, x, t, sigmav, kappa, corr, var0, eta, grisk, r, q):
    """Heston's two probabilities P1, P2 (Gil-Pelaez inversion), by mpmath's
    quadrature on a fixed partition of (0, inf)."""
    s, x, t, sigmav, kappa, corr, var0, eta, grisk, r, q = (
        mp.mpf(a) for a in (s, x, t, sigmav, kappa, corr, var0, eta, grisk, r, q))
    ks, ke = heston_kappa_star(kappa, eta, sigmav, grisk)
    phi = lambda u: heston_cf(u, s, t, ks, ke, sigmav, corr, var0, r, q)
    lx = mp.log(x)
    norm = phi(-1j)
    f1 = lambda u: mp.re(mp.exp(-1j * u * lx) * phi(u - 1j) / (1j * u * norm))
    f2 = lambda u: mp.re(mp.exp(-1j * u * lx) * phi(u) / (1j * u))
    cuts = [0, 0.5, 2, 5, 10, 20, 40, 70, 120, 200, 400, mp.inf]
    p1 = mp.mpf(0.5) + mp.quad(f1, cuts) / mp.pi
    p2 = mp.mpf(0.5) + mp.quad(f2, cuts) / mp.pi
    call = s * mp.exp(-q * t) * p1 - x * mp.exp(-r * t) * p2
    return call if kind == 'C' else call - s * mp.exp(-q * t) + x * mp.exp(-r * t)


def central(f, v, h, order):
    """Five-point central differences (order 1 or 2)."""
    fm2, fm1, fp1, fp2 = f(v - 2 * h), f(v - h), f(v + h), f(v + 2 * h)
    if order == 1:
        return (fm2 - 8 * fm1 + 8 * fp1 - fp2) / (12 * h)
    return (-fm2 + 16 * fm1 - 30 * f(v) + 16 * fp1 - fp2) / (12 * h ** 2)


def jump_heston_main(root):
    old = mp.mp.dps
    mp.mp.dps = 40
    out = [
        '# Merton jump-diffusion prices and sensitivities for s30ja and s30jb.',
        '# Generated by: /usr/bin/python3 tools/s30_reference.py (mpmath %s, %d digits)' % (mp.__version__, mp.mp.dps),
        '# Series with exact Poisson weights; sensitivities by mpmath.diff of the series.',
        '# case kind s sigma r lambda jvol m n; rows: i j price delta gamma vega theta rho vanna charm speed',
        '#   colour zomma vomma',
    ]
    jcases = [
        ('C', 100.0, 0.25, 0.05, 1.0, 0.3, [80.0, 100.0, 125.0], [0.25, 1.0, 3.0]),
        ('P', 100.0, 0.25, 0.05, 1.0, 0.3, [80.0, 100.0, 125.0], [0.25, 1.0, 3.0]),
        ('C', 45.0, 0.4, 0.0, 0.05, 0.9, [30.0, 45.0, 70.0], [0.5, 2.0]),
        ('P', 45.0, 0.4, 0.02, 8.0, 0.5, [30.0, 45.0, 70.0], [0.5, 2.0]),
        ('C', 1.5, 0.15, 0.01, 40.0, 0.2, [1.2, 1.5, 1.9], [1.0, 5.0]),
        ('P', 1.5, 0.15, 0.01, 40.0, 0.0, [1.2, 1.5, 1.9], [1.0]),
    ]
    for kind, s, sigma, r, lam, jvol, xs, ts in jcases:
        out.append('case %s %r %r %r %r %r %d %d' % (kind, s, sigma, r, lam, jvol, len(xs), len(ts)))
        out.append('x ' + ' '.join(repr(v) for v in xs))
        out.append('t ' + ' '.join(repr(v) for v in ts))
        for j, t in enumerate(ts):
            for i, x in enumerate(xs):
                p = merton(kind, s, x, t, sigma, r, lam, jvol)
                g = jump_sensitivities(kind, s, x, t, sigma, r, lam, jvol)
                out.append('%d %d %s' % (i, j, ' '.join(fmt(v) for v in [p] + g)))
    with open(os.path.join(root, 'tests', 's30', 'data', 's30ja_reference.txt'), 'w') as fh:
        fh.write('\n'.join(out) + '\n')

    mp.mp.dps = 30
    out = [
        '# Heston prices for s30na and sensitivities for s30nb.',
        '# Generated by: /usr/bin/python3 tools/s30_reference.py (mpmath %s, %d digits)' % (mp.__version__, mp.mp.dps),
        '# Two-probability form (Gil-Pelaez) by mpmath.quad; sensitivities (delta gamma vega theta rho) by',
        '# five-point central differences of it; vega is d/d sqrt(var0), theta -d/dt.',
        '# case kind s sigmav kappa corr var0 eta grisk r q m n; rows: i j price [5 sensitivities]',
    ]
    hcases = [
        ('C', 100.0, 0.3, 1.5, -0.7, 0.04, 0.06, 0.0, 0.03, 0.01, [70.0, 90.0, 100.0, 110.0, 140.0], [0.25, 1.0, 3.0]),
        ('P', 100.0, 0.3, 1.5, -0.7, 0.04, 0.06, 0.0, 0.03, 0.01, [70.0, 90.0, 100.0, 110.0, 140.0], [0.25, 1.0, 3.0]),
        ('P', 50.0, 0.05, 0.5, 0.3, 0.0, 0.02, 1.0, 0.05, 0.02, [40.0, 50.0, 65.0], [0.5, 2.0]),
    ]
    greeks = {(0, 1)}  # (case, expiry) pairs whose even strikes get sensitivities
    for c, (kind, s, sv, ka, co, v0, eta, gr, r, q, xs, ts) in enumerate(hcases):
        out.append('case %s %r %r %r %r %r %r %r %r %r %d %d' % (kind, s, sv, ka, co, v0, eta, gr, r, q, len(xs), len(ts)))
        out.append('x ' + ' '.join(repr(v) for v in xs))
        out.append('t ' + ' '.join(repr(v) for v in ts))
        for j, t in enumerate(ts):
            for i, x in enumerate(xs):
                P = lambda S=s, T=t, V0=v0, R=r: heston(kind, S, x, T, sv, ka, co, V0, eta, gr, R, q)
                row = [P()]
                if (c, j) in greeks and i % 2 == 0:
                    S, T, R = mp.mpf(s), mp.mpf(t), mp.mpf(r)
                    sig0 = mp.sqrt(mp.mpf(v0))
                    row += [central(lambda a: P(S=a), S, S * mp.mpf('1e-3'), 1),
                            central(lambda a: P(S=a), S, S * mp.mpf('1e-3'), 2),
                            central(lambda a: P(V0=a * a), sig0, sig0 * mp.mpf('1e-3'), 1),
                            -central(lambda a: P(T=a), T, T * mp.mpf('1e-3'), 1),
                            central(lambda a: P(R=a), R, mp.mpf('1e-4'), 1)]
                out.append('%d %d %s' % (i, j, ' '.join(fmt(v) for v in row)))
    with open(os.path.join(root, 'tests', 's30', 'data', 's30na_reference.txt'), 'w') as fh:
        fh.write('\n'.join(out) + '\n')
    mp.mp.dps = old


def heston_term_m(w, t, var0, periods):
    """E[(F_t/fwd)^w] of the piecewise model: the Riccati coefficients
    integrated in closed form period by period, backwards from the expiry
    (periods: (length, alpha, lambda, corr, sigmat), the last extended)."""
    segs, start = [], mp.mpf(0)
    for k, (ln, al, la, co, st) in enumerate(periods):
        if start >= t:
            break
        end = t if k == len(periods) - 1 else min(start + ln, t)
        segs.append((end - start, al, la, co, st))
        start = end
    A, B = mp.mpc(0), mp.mpc(0)
    for tau, al, la, co, st in reversed(segs):
        beta = la - co * al * w
        d = mp.sqrt(beta ** 2 - al ** 2 * (w * w - w))
        b1, b2 = (beta - d) / al ** 2, (beta + d) / al ** 2
        g = (B - b1) / (B - b2)
        e = mp.exp(-d * tau)
        A += la * st ** 2 * (b1 * tau - 2 / al ** 2 * mp.log((1 - g * e) / (1 - g)))
        B = (b1 - b2 * g * e) / (1 - g * e)
    return mp.exp(A + B * var0)


def heston_term(kind, x, fwd, disc, t, var0, periods):
    """disc (fwd P1 - x P2) by the Gil-Pelaez inversion in mpmath."""
    x, fwd, disc, t, var0 = (mp.mpf(a) for a in (x, fwd, disc, t, var0))
    periods = [tuple(mp.mpf(v) for v in p) for p in periods]
    lk = mp.log(x / fwd)
    f1 = lambda u: mp.re(mp.exp(-1j * u * lk) * heston_term_m(1j * u + 1, t, var0, periods) / (1j * u))
    f2 = lambda u: mp.re(mp.exp(-1j * u * lk) * heston_term_m(1j * u, t, var0, periods) / (1j * u))
    cuts = [0, 0.5, 2, 5, 10, 20, 40, 70, 120, 200, 400, mp.inf]
    p1 = mp.mpf(0.5) + mp.quad(f1, cuts) / mp.pi
    p2 = mp.mpf(0.5) + mp.quad(f2, cuts) / mp.pi
    call = disc * (fwd * p1 - x * p2)
    return call if kind == 'C' else call - disc * (fwd - x)


def heston_term_main(root):
    old = mp.mp.dps
    mp.mp.dps = 30
    periods = [(0.3, 0.5, 2.0, -0.8, 0.3), (0.5, 0.3, 1.0, -0.5, 0.25), (1.0, 0.2, 0.5, 0.0, 0.2)]
    out = [
        '# Prices of the piecewise-constant stochastic-volatility model (s30nc).',
        '# Generated by: /usr/bin/python3 tools/s30_reference.py (mpmath %s, %d digits)' % (mp.__version__, mp.mp.dps),
        '# periods (length alpha lambda corr sigmat): ' + ' '.join('(%r %r %r %r %r)' % p for p in periods),
        '# case kind fwd disc t var0 m n; x; t (the same t); rows: i 0 price',
    ]
    for kind, fwd, disc, t, var0, xs in [('C', 102.0, 0.97, 1.0, 0.04, [80.0, 100.0, 125.0]),
                                         ('P', 102.0, 0.97, 1.0, 0.04, [80.0, 100.0, 125.0]),
                                         ('C', 50.0, 0.9, 2.5, 0.09, [40.0, 50.0, 65.0]),
                                         ('P', 50.0, 0.99, 0.2, 0.09, [40.0, 50.0, 65.0])]:
        out.append('case %s %r %r %r %r %d 1' % (kind, fwd, disc, t, var0, len(xs)))
        out.append('x ' + ' '.join(repr(v) for v in xs))
        out.append('t %r' % t)
        for i, x in enumerate(xs):
            out.append('%d 0 %s' % (i, fmt(heston_term(kind, x, fwd, disc, t, var0, periods))))
    with open(os.path.join(root, 'tests', 's30', 'data', 's30nc_reference.txt'), 'w') as fh:
        fh.write('\n'.join(out) + '\n')
    mp.mp.dps = old


if __name__ == '__main__':
    # tools/s30_reference.py [root] [part ...], parts european exotic jump heston_term (all by default)
    where = sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(__file__), '..')
    parts = sys.argv[2:] or ['european', 'exotic', 'jump', 'heston_term']
    if 'european' in parts:
        main()
    if 'exotic' in parts:
        exotic_main(where)
    if 'jump' in parts:
        jump_heston_main(where)
    if 'heston_term' in parts:
        heston_term_main(where)
