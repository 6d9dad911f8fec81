#!/usr/bin/env python3
"""Derives the continuous extension of the 5(4) pair stored in d02/rk_tables.h.

    python3 tools/d02_dense.py d02/rk_tables.h     (needs python3-sympy)

Reads the pair's nodes and coupling coefficients from the table file and
solves, in exact rationals, for weights b_i(theta) = sum_k d[i][k] theta^(k+1)
(k = 0..3) that satisfy every order condition of order <= 4 for all theta,
equal the order-5 weights at theta = 1, and give the derivative f at both
ends of the step (d b_i/d theta = 1 for the first stage at theta = 0 and for
the last stage at theta = 1).  Free parameters are set to zero.  Prints the
rows of bs45_dense.
"""
import re
import sys
from fractions import Fraction as F

import sympy


def table(text, name):
    body = re.search(r"rational %s\[\] = \{(.*?)\};" % name, text, re.S).group(1)
    return [F(int(a), int(b)) for a, b in re.findall(r"\{(-?\d+), (\d+)\}", body)]


def trees(n):
    """Rooted trees with n nodes as sorted tuples of subtrees."""
    if n == 1:
        return [()]
    out = set()

    def forests(rem, bound):
        if rem == 0:
            yield ()
            return
        for k in range(rem, 0, -1):
            for t in trees(k):
                if bound is not None and (k, t) > bound:
                    continue
                for rest in forests(rem - k, (k, t)):
                    yield ((k, t),) + rest

    for f in forests(n - 1, None):
        out.add(tuple(sorted(t for _, t in f)))
    return sorted(out)


def gamma(t):
    g = 1 + sum(size(c) for c in t)
    for c in t:
        g *= gamma(c)
    return g


def size(t):
    return 1 + sum(size(c) for c in t)


def main():
    text = open(sys.argv[1]).read()
    c = table(text, "bs45_c")
    s = len(c)
    flat = table(text, "bs45_a")
    A = [[F(0)] * s for _ in range(s)]
    pos = 0
    for i in range(1, s):
        for j in range(i):
            A[i][j] = flat[pos]
            pos += 1
    b = table(text, "bs45_b")

    def phi(t):
        v = [F(1)] * s
        for ch in t:
            w = phi(ch)
            aw = [sum(A[i][j] * w[j] for j in range(s)) for i in range(s)]
            v = [v[i] * aw[i] for i in range(s)]
        return v

    deg = 4
    eqs, rhs = [], []
    for q in range(1, deg + 1):
        for t in trees(q):
            p = phi(t)
            for k in range(1, deg + 1):
                e = [0] * (s * deg)
                for i in range(s):
                    e[i * deg + k - 1] = p[i]
                eqs.append(e)
                rhs.append(F(1, gamma(t)) if k == q else F(0))
    for i in range(s):
        e = [0] * (s * deg)
        for k in range(deg):
            e[i * deg + k] = 1
        eqs.append(e)
        rhs.append(b[i])
        e = [0] * (s * deg)
        e[i * deg] = 1
        eqs.append(e)
        rhs.append(F(1 if i == 0 else 0))
        e = [0] * (s * deg)
        for k in range(deg):
            e[i * deg + k] = k + 1
        eqs.append(e)
        rhs.append(F(1 if i == s - 1 else 0))
    sol, params = sympy.Matrix(eqs).gauss_jordan_solve(sympy.Matrix(rhs))
    sol = sol.subs({p: 0 for p in params})
    for i in range(s):
        print(", ".join(str(sol[i * deg + k]) for k in range(deg)))


if __name__ == "__main__":
    main()
