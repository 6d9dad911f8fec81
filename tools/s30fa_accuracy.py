#!/usr/bin/python3
"""Accuracy of s30fa against its checked-in reference prices: the worst
relative error per region, as the table of docs/s30fa.md shows it.

  /usr/bin/python3 tools/s30fa_accuracy.py <libzem.so> [repository root] > s30fa_accuracy.txt
  /usr/bin/python3 tools/doc_tables.py s30fa_accuracy.txt

Reads tests/s30/data/s30fa_reference.txt and s30fa_cancel_reference.txt
(exact prices of tools/s30_reference.py, 50 to 800 digits), prices every
case through the C entry s30fac (column-major grid of strikes by expiries)
and prints, between the markers that tools/doc_tables.py reads, the worst
relative error of the prices above 1e-6 s and of those from 1e-200 to 1e-6 s
(far out of the money) in each file, and the number of prices; prices below
1e-200 are counted apart (the library must give at most 1e-200 there).
Needs: python3 alone (the reference prices are parsed as Python floats
only for the error, which is measured in exact rational arithmetic).
"""
import ctypes
import fractions
import pathlib
import sys

KIND = {"C": 1901, "P": 1902}
TYPE = {"DI": 1905, "DO": 1906, "UI": 1907, "UO": 1908}
COL_MAJOR = 1903


def cases(path):
    """Each case: (kind, type, s, h, k, sigma, r, q, x[], t[], {(i, j): exact price as text})."""
    out, cur = [], None
    for line in pathlib.Path(path).read_text().splitlines():
        if not line or line.startswith("#"):
            continue
        w = line.split()
        if w[0] == "case":
            cur = {"kind": w[1], "type": w[2], "num": [float(v) for v in w[3:9]], "x": [], "t": [], "p": {}}
            out.append(cur)
        elif w[0] == "x":
            cur["x"] = [float(v) for v in w[1:]]
        elif w[0] == "t":
            cur["t"] = [float(v) for v in w[1:]]
        else:
            cur["p"][(int(w[0]), int(w[1]))] = w[2]
    return out


def exact(text):
    """A decimal reference price as an exact rational."""
    return fractions.Fraction(text)


def main():
    lib = ctypes.CDLL(sys.argv[1])
    root = pathlib.Path(sys.argv[2] if len(sys.argv) > 2 else pathlib.Path(__file__).resolve().parent.parent)
    D, I64, PD = ctypes.c_double, ctypes.c_int64, ctypes.POINTER(ctypes.c_double)
    lib.s30fac.restype = None
    lib.s30fac.argtypes = [ctypes.c_int, ctypes.c_int, ctypes.c_int, I64, I64, PD, D, D, D, PD, D, D, D, PD, I64,
                           ctypes.c_void_p]
    rows = []
    for name in ("s30fa_reference.txt", "s30fa_cancel_reference.txt"):
        worst = {False: 0.0, True: 0.0}
        count = {False: 0, True: 0}
        tiny = 0
        for c in cases(root / "tests" / "s30" / "data" / name):
            m, n = len(c["x"]), len(c["t"])
            s, h, k, sigma, r, q = c["num"]
            x, t, p = (D * m)(*c["x"]), (D * n)(*c["t"]), (D * (m * n))()
            lib.s30fac(COL_MAJOR, KIND[c["kind"]], TYPE[c["type"]], m, n, x, s, h, k, t, sigma, r, q, p, m, None)
            for (i, j), text in c["p"].items():
                ref, got = exact(text), p[i + j * m]
                if not ref > fractions.Fraction(1, 10 ** 200):
                    tiny += 1
                    if abs(got) > 1e-200:
                        print(f"{name}: {c['kind']}{c['type']} x={c['x'][i]} t={c['t'][j]}: {got} above 1e-200",
                              file=sys.stderr)
                    continue
                tail = ref < fractions.Fraction(s) / 10 ** 6
                err = abs(fractions.Fraction(got) - ref) / ref
                worst[tail] = max(worst[tail], float(err))
                count[tail] += 1
        rows.append((name, worst, count, tiny))
    (plain, cancel) = rows
    print("<!-- tables by: /usr/bin/python3 tools/s30fa_accuracy.py build/libzem.so -->")
    print("<!-- table:s30fa-accuracy -->")
    print("| region | rows | prices | worst relative error |")
    print("|---|---|---:|---:|")
    what = [(plain, False, "prices above 1e-6 s, no cancellation"),
            (cancel, False, "prices above 1e-6 s where the published terms cancel (knock-outs 1e-7 and 1e-9 "
                            "from the barrier, strikes on it, both at once)"),
            (plain, True, "far out of the money, prices from 1e-200 to 1e-6 s"),
            (cancel, True, "far out of the money where the terms cancel as well")]
    for (name, worst, count, _), tail, label in what:
        print(f"| {label} | {name} | {count[tail]} | {worst[tail]:.2g} |")
    print(f"\nPrices below 1e-200 (the library must give at most 1e-200): {plain[3]} in {plain[0]}, "
          f"{cancel[3]} in {cancel[0]}.")


if __name__ == "__main__":
    main()
