#!/usr/bin/python3
"""Generates d01/zem_quad_gk_consts.h: the nodes and weights of the quadrature
rules of chapter d01, computed from their definitions at 250 decimal digits.

    /usr/bin/python3 tools/d01_gk_consts.py > d01/zem_quad_gk_consts.h

Rules:
  * Gauss-Legendre n points, n = 7, 10, 15, 20, 25, 30: nodes are the zeros of
    the Legendre polynomial P_n.
  * Kronrod extension 2n+1 of each: the n+1 new nodes are the zeros of the
    Stieltjes polynomial E_{n+1}, the monic polynomial of degree n+1 orthogonal
    to every polynomial of degree <= n with respect to the sign-changing weight
    P_n(x) on [-1, 1].
  * Patterson's nested sequence 10, 21, 43, 87: each stage keeps all m nodes of
    the previous one and adds m+1 nodes, the zeros of the monic polynomial of
    degree m+1 orthogonal to degree <= m with respect to the weight
    prod(x - previous node).  21 is the Kronrod extension of Gauss 10.

In every case the new zeros are found one per gap between consecutive old
nodes (and the ends -1, 1), where the polynomial changes sign; the script
stops if a gap holds no sign change.  The weights of a rule with node set X are
those of the interpolatory rule on X, w_i = integral of the Lagrange basis
polynomial l_i over [-1, 1].

Checks made before anything is printed (the script aborts otherwise):
  * every node lies in (-1, 1) and every weight is positive;
  * each rule integrates x^k exactly (to 1e-200) for k up to its degree of
    exactness: 2n-1 for Gauss, N+k-1 for an extension of N points of which k
    are new (3n+1 for Kronrod 2n+1 with n even, 64 for Patterson 43, 130 for
    Patterson 87), and odd degrees one above by symmetry;
  * the centre weight of Gauss 7 equals 512/1225 exactly;
  * the 21 points and weights that Patterson's sequence starts from equal the
    Kronrod 10-21 pair.
Every printed digit comes from this script; nothing is copied from a table.
"""

import sys

import mpmath
from mpmath import mp, mpf

mp.dps = 250
PRINT_DIGITS = 40
TOL = mpf(10) ** -200


def moment(k):
    """Integral of x^k over [-1, 1]."""
    return mpf(2) / (k + 1) if k % 2 == 0 else mpf(0)


def poly_from_roots(roots):
    """Monic polynomial with the given zeros, coefficients low to high."""
    c = [mpf(1)]
    for r in roots:
        n = [mpf(0)] * (len(c) + 1)
        for i, ci in enumerate(c):
            n[i + 1] += ci
            n[i] -= r * ci
        c = n
    return c


def peval(c, x):
    s = mpf(0)
    for ci in reversed(c):
        s = s * x + ci
    return s


def orthogonal_extension(old_nodes):
    """Monic q of degree m+1 (m = number of old nodes) with
    integral of prod(x - old) * q(x) * x^j = 0 for j = 0..m."""
    p = poly_from_roots(old_nodes)
    m = len(old_nodes)
    k = m + 1

    def M(i):  # integral of p(x) x^i
        return mpmath.fsum(pt * moment(i + t) for t, pt in enumerate(p))

    # q(x) = x^k + sum_{l<k, l = k mod 2} c_l x^l; the conditions for j of the
    # same parity as m + k + j odd vanish by symmetry, the others determine c.
    ls = [l for l in range(k) if (l - k) % 2 == 0]
    js = [j for j in range(k) if (j + k + m) % 2 == 0]
    assert len(ls) == len(js)
    A = mpmath.matrix(len(js), len(ls))
    rhs = mpmath.matrix(len(js), 1)
    for r, j in enumerate(js):
        for s, l in enumerate(ls):
            A[r, s] = M(j + l)
        rhs[r] = -M(j + k)
    sol = mpmath.lu_solve(A, rhs)
    q = [mpf(0)] * (k + 1)
    q[k] = mpf(1)
    for s, l in enumerate(ls):
        q[l] = sol[s]
    return q


def zeros_between(q, old_nodes):
    """One zero of q in each gap of [-1, 1] cut at the old nodes."""
    edges = [mpf(-1)] + sorted(old_nodes) + [mpf(1)]
    out = []
    for lo, hi in zip(edges[:-1], edges[1:]):
        flo, fhi = peval(q, lo), peval(q, hi)
        if flo * fhi >= 0:
            sys.exit("no sign change of the extension polynomial in (%s, %s)"
                     % (mpmath.nstr(lo, 10), mpmath.nstr(hi, 10)))
        # Bisection to a good bracket, then the secant-type solver.
        for _ in range(60):
            mid = (lo + hi) / 2
            fm = peval(q, mid)
            if flo * fm <= 0:
                hi, fhi = mid, fm
            else:
                lo, flo = mid, fm
        out.append(mpmath.findroot(lambda x: peval(q, x), (lo, hi), solver='anderson'))
    return out


def gauss_nodes(n):
    roots = []
    for i in range(1, n + 1):
        # Tricomi's initial guess, then Newton.
        x = mpmath.cos(mpmath.pi * (4 * i - 1) / (4 * n + 2))
        for _ in range(100):
            pn, pm = mpmath.legendre(n, x), mpmath.legendre(n - 1, x)
            dx = pn / (n * (x * pn - pm) / (x * x - 1))
            x -= dx
            if abs(dx) < mpf(10) ** -(mp.dps - 10):
                break
        roots.append(x)
    roots = sorted(roots)
    for a, b in zip(roots[:-1], roots[1:]):
        assert b - a > mpf(10) ** -10, "Gauss nodes collapsed"
    if n % 2 == 1:
        roots[n // 2] = mpf(0)  # the centre zero, exactly
    return roots


def interpolatory_weights(nodes):
    """w_i = integral over [-1, 1] of the Lagrange polynomial of node i."""
    w = []
    for i, xi in enumerate(nodes):
        others = nodes[:i] + nodes[i + 1:]
        li = poly_from_roots(others)
        denom = mpmath.fprod(xi - xj for xj in others)
        w.append(mpmath.fsum(c * moment(t) for t, c in enumerate(li)) / denom)
    return w


def check_rule(name, nodes, weights, degree):
    for x in nodes:
        assert -1 < x < 1, name + ": node outside (-1, 1)"
    for wi in weights:
        assert wi > 0, name + ": weight not positive"
    for k in range(degree + 1):
        s = mpmath.fsum(wi * xi ** k for xi, wi in zip(nodes, weights))
        if abs(s - moment(k)) > TOL:
            sys.exit("%s: not exact for x^%d" % (name, k))
    return degree


def exact_degree(degree):
    """Odd degree one above an even one comes free with symmetric rules."""
    return degree + 1 if degree % 2 == 0 else degree


def positive_half(nodes, weights):
    """(node, weight) for node >= 0, node decreasing."""
    pairs = [(x, w) for x, w in zip(nodes, weights) if x >= 0]
    pairs.sort(key=lambda t: -t[0])
    return pairs


def fmt(x):
    s = mpmath.nstr(x, PRINT_DIGITS, min_fixed=-1, max_fixed=1)
    if s in ("0.0", "0"):
        return "0.0"
    return s


def emit_array(out, name, values, comment):
    out.append("// " + comment)
    out.append("inline constexpr double %s[%d] = {" % (name, len(values)))
    for v in values:
        out.append("    %s," % fmt(v))
    out.append("};")
    out.append("")


def main():
    out = []
    out.append("// Nodes and weights of the quadrature rules of chapter d01.")
    out.append("//")
    out.append("// GENERATED by tools/d01_gk_consts.py -- do not edit:")
    out.append("//     /usr/bin/python3 tools/d01_gk_consts.py > d01/zem_quad_gk_consts.h")
    out.append("// Every value was computed from the rule's definition at %d digits and" % mp.dps)
    out.append("// is printed to %d significant digits; the generator checks each rule's" % PRINT_DIGITS)
    out.append("// degree of exactness before printing (see its header for the method).")
    out.append("//")
    out.append("// Layout, on [-1, 1], symmetric rules stored by their non-negative half:")
    out.append("//   Gauss-Kronrod pair n / 2n+1 (n = 7, 10, 15, 20, 25, 30):")
    out.append("//     xgk_<2n+1>[n+1]  Kronrod nodes, decreasing; the Gauss nodes are the")
    out.append("//                      entries 1, 3, 5, ... (0-based); the last is 0.")
    out.append("//     wgk_<2n+1>[n+1]  Kronrod weights of those nodes.")
    out.append("//     wg_<n>[(n+1)/2]   Gauss weights of xgk[1], xgk[3], ...; for odd n the")
    out.append("//                      last one belongs to the centre.")
    out.append("//   Patterson's nested sequence 10 / 21 / 43 / 87:")
    out.append("//     x_10[5]          Gauss nodes (positive, decreasing), weights wg_10 above;")
    out.append("//     x_21[5]          the Kronrod nodes added to them;")
    out.append("//     wgk_21_a[5], wgk_21_b[6]  21-point weights of x_10, and of x_21 + centre;")
    out.append("//     xgk_43[11]       nodes added by the 43-point stage;")
    out.append("//     wgk_43_a[10]     43-point weights of x_10 then x_21;")
    out.append("//     wgk_43_b[12]     43-point weights of xgk_43, then of the centre;")
    out.append("//     xgk_87[22]       nodes added by the 87-point stage;")
    out.append("//     wgk_87_a[21]     87-point weights of x_10, x_21, xgk_43;")
    out.append("//     wgk_87_b[23]     87-point weights of xgk_87, then of the centre.")
    out.append("//   Degrees of exactness: Gauss n: 2n-1; Kronrod 2n+1: 3n+1 (n even) or")
    out.append("//   3n+2 (n odd); Patterson 43: 65; Patterson 87: 131.")
    out.append("#pragma once")
    out.append("")
    out.append("namespace zem_quad_gk_consts {")
    out.append("")

    gk21 = None
    for n in (7, 10, 15, 20, 25, 30):
        g = gauss_nodes(n)
        wg = interpolatory_weights(g)
        check_rule("Gauss %d" % n, g, wg, 2 * n - 1)
        if n == 7:
            assert abs(wg[3] - mpf(512) / 1225) < TOL, "Gauss 7 centre weight"
        q = orthogonal_extension(g)
        new = zeros_between(q, g)
        k = sorted(g + new)
        wk = interpolatory_weights(k)
        check_rule("Kronrod %d" % (2 * n + 1), k, wk, exact_degree(3 * n + 1))
        kh = positive_half(k, wk)
        gh = positive_half(g, wg)
        # Gauss nodes sit at the odd positions of the Kronrod half.
        for i, (x, _) in enumerate(gh):
            assert abs(kh[2 * i + 1][0] - x) < TOL, "Gauss nodes interleave"
        emit_array(out, "xgk_%d" % (2 * n + 1), [x for x, _ in kh],
                   "Kronrod %d-point nodes (extension of Gauss %d), decreasing" % (2 * n + 1, n))
        emit_array(out, "wgk_%d" % (2 * n + 1), [w for _, w in kh],
                   "Kronrod %d-point weights" % (2 * n + 1))
        emit_array(out, "wg_%d" % n, [w for _, w in gh],
                   "Gauss %d-point weights of xgk_%d[1], [3], ..." % (n, 2 * n + 1))
        if n == 10:
            gk21 = (g, new, k, wk)

    # Patterson's sequence.
    g10, new21, k21, w21 = gk21
    x10 = sorted([x for x in g10 if x > 0], reverse=True)
    x21 = sorted([x for x in new21 if x > 0], reverse=True)
    wg10 = interpolatory_weights(g10)
    w21map = dict(zip(k21, w21))
    q43 = orthogonal_extension(k21)
    new43 = zeros_between(q43, k21)
    k43 = sorted(k21 + new43)
    w43 = interpolatory_weights(k43)
    check_rule("Patterson 43", k43, w43, exact_degree(43 + 22 - 1))
    q87 = orthogonal_extension(k43)
    new87 = zeros_between(q87, k43)
    k87 = sorted(k43 + new87)
    w87 = interpolatory_weights(k87)
    check_rule("Patterson 87", k87, w87, exact_degree(87 + 44 - 1))
    w43map = dict(zip(k43, w43))
    w87map = dict(zip(k87, w87))
    x43 = sorted([x for x in new43 if x > 0], reverse=True)
    x87 = sorted([x for x in new87 if x > 0], reverse=True)
    zero = mpf(0)
    centre21 = [x for x in k21 if x == 0]
    assert len(centre21) == 1
    c0 = centre21[0]

    def wmap(m, x):
        return m[x]

    emit_array(out, "x_10", x10, "Patterson stage 1: Gauss 10-point nodes, positive, decreasing")
    assert [wg10[g10.index(x)] for x in x10] == [w for _, w in positive_half(g10, wg10)]
    emit_array(out, "x_21", x21, "Patterson stage 2: nodes added by the 21-point rule")
    emit_array(out, "wgk_21_a", [wmap(w21map, x) for x in x10], "21-point weights of x_10")
    emit_array(out, "wgk_21_b", [wmap(w21map, x) for x in x21] + [w21map[c0]],
               "21-point weights of x_21, then of the centre")
    emit_array(out, "xgk_43", x43, "Patterson stage 3: nodes added by the 43-point rule")
    emit_array(out, "wgk_43_a", [wmap(w43map, x) for x in x10 + x21], "43-point weights of x_10, x_21")
    emit_array(out, "wgk_43_b", [wmap(w43map, x) for x in x43] + [w43map[c0]],
               "43-point weights of xgk_43, then of the centre")
    emit_array(out, "xgk_87", x87, "Patterson stage 4: nodes added by the 87-point rule")
    emit_array(out, "wgk_87_a", [wmap(w87map, x) for x in x10 + x21 + x43],
               "87-point weights of x_10, x_21, xgk_43")
    emit_array(out, "wgk_87_b", [wmap(w87map, x) for x in x87] + [w87map[c0]],
               "87-point weights of xgk_87, then of the centre")
    assert zero == c0
    out.append("}  // namespace zem_quad_gk_consts")
    print("\n".join(out))


if __name__ == "__main__":
    main()
