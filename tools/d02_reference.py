#!/usr/bin/env python3
"""Reference solutions of the d02 accuracy problems, to 30 digits.

    python3 tools/d02_reference.py > tests/d02/data/reference.txt

Needs python3-mpmath.  Each line: problem name, t, then the components of
y(t), 20 significant digits each.  The problems (tests/d02 states them):
  harmonic   y1' = y2, y2' = -y1, y(0) = (1, 0):        (cos t, -sin t)
  kepler05   the two-body problem, eccentricity 0.5, from perihelion
  kepler09   the same, eccentricity 0.9: position and velocity from
             Kepler's equation M = E - e sin E with M = t (unit mean motion)
  euler      Euler's rigid body y1' = y2 y3, y2' = -y1 y3, y3' = -0.51 y1 y2,
             y(0) = (0, 1, 1): (sn, cn, dn)(t | m = 0.51)
  linear     y' = A y with the non-normal A below, y(0) = (1, 0, 1):
             expm(t A) y(0)
  arenstorf  the restricted three-body orbit of period T (its state at T is
             the initial state); listed at T for completeness.
"""
import mpmath as mp

mp.mp.dps = 40


def out(name, t, ys):
    print(name, mp.nstr(mp.mpf(t), 20, min_fixed=-100, max_fixed=100),
          " ".join(mp.nstr(y, 20) for y in ys))


def kepler(e, t):
    e = mp.mpf(e)
    M = mp.mpf(t)
    E = mp.findroot(lambda E: E - e * mp.sin(E) - M, M + e * mp.sin(M))
    r = 1 - e * mp.cos(E)
    b = mp.sqrt(1 - e * e)
    return [mp.cos(E) - e, b * mp.sin(E), -mp.sin(E) / r, b * mp.cos(E) / r]


A = mp.matrix([[-0.1, 1, 0], [-1, -0.1, 0.5], [0, 0, -0.3]])
for t in (0, 5, 10, 20):
    out("harmonic", t, [mp.cos(t), -mp.sin(t)])
for t in (0, 5, 10, 20):
    out("kepler05", t, kepler("0.5", t))
for t in (0, 5, 10, 20):
    out("kepler09", t, kepler("0.9", t))
for t in (0, 5, 10, 20):
    m = mp.mpf("0.51")
    out("euler", t, [mp.ellipfun("sn", t, m=m), mp.ellipfun("cn", t, m=m), mp.ellipfun("dn", t, m=m)])
for t in (0, 5, 10, 20):
    y = mp.expm(t * A) * mp.matrix([1, 0, 1])
    out("linear", t, [y[0], y[1], y[2]])
out("arenstorf", "17.0652165601579625588917206249",
    [mp.mpf("0.994"), 0, 0, mp.mpf("-2.00158510637908252240537862224")])
