#!/usr/bin/python3
"""Writes tests/g05/data/reference.txt: sequences and skipped-ahead states of
the six base generators, computed by the Python-integer implementations of
tools/g05_reference.py.

Command:
    /usr/bin/python3 tools/g05_reference_data.py > tests/g05/data/reference.txt

Records (whitespace-separated tokens; doubles as 16 hex digits of their bits):
  sequence <label> <genid> <subid> <lseed> <seed...> <count> <doubles...>
      the first values after g05kf(genid, subid, seed)
  words <label> <count> <integers...>
  published <label> <count> <doubles...>
      MRG32k3a from 12345 in all six words
  skip <label> <genid> <subid> <lseed> <seed...> <draws> <kj|kk> <n>
       <count> <own words state[4..]> <count> <doubles...>
      after initialisation, `draws` values drawn, then g05kj(n) or g05kk(n):
      the generator's own words from state(5) on, then the next values
"""
import os
import struct
import sys

import g05_reference as R

HERE = os.path.dirname(os.path.abspath(__file__))
WH1 = R.wh1_table(os.path.join(HERE, "..", "g05", "wichmann_hill_1_table.inc"))
MT_P = R.mt_charpoly()


def hexd(u):
    assert 0.0 < u < 1.0
    return "%016x" % struct.unpack("<Q", struct.pack("<d", u))[0]


def put(tokens, per_line=8):
    tokens = [str(t) for t in tokens]
    for i in range(0, len(tokens), per_line):
        sys.stdout.write(" ".join(tokens[i:i + per_line]) + "\n")


# ------------------------------------------------ generators with states
# Each model exposes next() and own() (the own words from state(5) on, as
# the engine lays them out) and skip(e) / skip_pow2(n).

class BasicModel:
    def __init__(self, seed, subid):
        self.g = R.Basic(seed[0])

    def next(self):
        return self.g.next()

    def own(self):
        x, a = self.g.x, self.g.a
        return [(x >> (15 * i)) & 0x7FFF for i in range(4)] + \
               [(a >> (15 * i)) & 0x7FFF for i in range(4)] + [0, 0]

    def skip(self, e):
        self.g.x = pow(self.g.a, e, R.M60) * self.g.x % R.M60

    def skip_pow2(self, n):
        self.skip(2 ** n)


class WhModel:
    def __init__(self, seed, subid, genid):
        self.genid = genid
        self.member = subid % 273
        comps = WH1[self.member] if genid == 2 else R.WH2
        self.g = R.WichmannHill(comps, seed[0])

    def next(self):
        return self.g.next()

    def own(self):
        g = self.g
        w = list(g.x) + list(g.a) + list(g.m)
        if self.genid == 4:
            w += [m // a for a, m in zip(g.a, g.m)] + [m % a for a, m in zip(g.a, g.m)]
        return w + [0, 0]

    def skip(self, e):
        g = self.g
        g.x = [pow(a, e, m) * x % m for a, x, m in zip(g.a, g.x, g.m)]

    def skip_pow2(self, n):
        self.skip(2 ** n)


class MtModel:
    """Block form: the 624 words and the index of the next one to deliver."""

    def __init__(self, seed, subid):
        sd = R.Seeder(seed[0])
        self.block = [sd.word32() for _ in range(R.MT_N)]
        self.index = R.MT_N

    def _regenerate(self):
        self.block = R.mt_words_ahead(self.block, R.MT_N)[R.MT_N:]
        self.index = 0

    def next(self):
        if self.index == R.MT_N:
            self._regenerate()
        y = R.mt_temper(self.block[self.index])
        self.index += 1
        return float(y) * 2.0 ** -32 + 2.0 ** -33

    def own(self):
        return self.block + [self.index] + [0] * (R.MT_N + 4)

    def skip(self, e):
        pending = R.MT_N - self.index
        if e < pending:
            self.index += e
            return
        g = R.gf2_xpow(e - pending, MT_P, 19937)
        self.block = R.mt_jump_window(self.block, g)
        self.index = R.MT_N

    def skip_pow2(self, n):
        self.skip(2 ** n)


class AcornModel:
    def __init__(self, seed, subid):
        self.g = R.Acorn(seed)

    def next(self):
        return self.g.next()

    def own(self):
        out = []
        for y in self.g.y:
            out += [y & (2 ** 30 - 1), y >> 30]
        return out

    def skip(self, e):
        self.g.y = R.acorn_skip(self.g.y, e)

    def skip_pow2(self, n):
        self.skip(2 ** n)


class MrgModel:
    def __init__(self, seed, subid):
        self.g = R.Mrg32k3a.seeded(seed[0])

    def next(self):
        return self.g.next()

    def own(self):
        flat = lambda a: [v for row in a for v in row]
        return self.g.s1 + self.g.s2 + flat(R.MRG_A1) + flat(R.MRG_A2) + [0] * 30

    def skip(self, e):
        self.g.s1 = R.mat_vec(R.mat_pow(R.MRG_A1, e, R.MRG_M1), self.g.s1, R.MRG_M1)
        self.g.s2 = R.mat_vec(R.mat_pow(R.MRG_A2, e, R.MRG_M2), self.g.s2, R.MRG_M2)

    def skip_pow2(self, n):
        self.skip(2 ** n)


def model(genid, seed, subid):
    if genid == 1:
        return BasicModel(seed, subid)
    if genid in (2, 4):
        return WhModel(seed, subid, genid)
    if genid == 3:
        return MtModel(seed, subid)
    if genid == 5:
        return AcornModel(seed, subid)
    return MrgModel(seed, subid)


def sequence(label, genid, subid, seed, count):
    g = model(genid, seed, subid)
    put(["sequence", label, genid, subid, len(seed)] + list(seed) + [count])
    put([hexd(g.next()) for _ in range(count)])


def skip(label, genid, subid, seed, draws, kind, n, following=8):
    g = model(genid, seed, subid)
    for _ in range(draws):
        g.next()
    if kind == "kj":
        g.skip(n)
    else:
        g.skip_pow2(n)
    own = g.own()
    put(["skip", label, genid, subid, len(seed)] + list(seed) + [draws, kind, n])
    put([len(own)] + own, 12)
    put([following] + [hexd(g.next()) for _ in range(following)])


def main():
    sys.stdout.write("# Reference data of the g05 base generators.\n")
    sys.stdout.write("# Generated by: /usr/bin/python3 tools/g05_reference_data.py"
                     " > tests/g05/data/reference.txt\n")
    # Basic generator: several seeds, seed 1 long enough for the blocked fill.
    for seed, count in ((1, 5000), (2, 1000), (12345, 1000), (2 ** 40 + 7, 1000),
                        (2 ** 62 + 5, 1000)):
        sequence("basic-%d" % seed, 1, 0, [seed], count)
    sequence("wh1-0", 2, 0, [1], 5000)
    sequence("wh1-272", 2, 272, [77], 1000)
    sequence("wh1-12345", 2, 12345, [3], 1000)
    sequence("mt-1", 3, 0, [1], 5000)
    sequence("mt-5489", 3, 0, [5489], 1000)
    sequence("wh2-1", 4, 0, [1], 5000)
    sequence("wh2-99", 4, 0, [99], 1000)
    sequence("acorn-1", 5, 0, [1], 5000)
    sequence("acorn-order5", 5, 0, [7, 5], 1000)
    sequence("acorn-row", 5, 0, [3, 12, 2 ** 59 + 1, 5, 6, 7], 1000)
    sequence("mrg-1", 6, 0, [1], 5000)
    sequence("mrg-2", 6, 0, [2], 1000)

    # The reference initialisation of MT19937 from 5489 and its outputs.
    put(["words", "mt-init-5489", R.MT_N] + R.mt_init_genrand(5489), 12)
    g = R.MersenneTwister(R.mt_init_genrand(5489))
    outs = [g.next32() for _ in range(10000)]
    put(["words", "mt-out-5489", 1000] + outs[:1000], 12)
    assert outs[9999] == 4123659995
    put(["words", "mt-out-5489-10000th", 1, outs[9999]])

    # MRG32k3a from 12345 in all six words, as published.
    h = R.Mrg32k3a([12345] * 3, [12345] * 3)
    put(["published", "mrg-12345", 1000])
    put([hexd(h.next()) for _ in range(1000)])

    # Large skips, from a fresh state and after a few draws.
    for genid, seed in ((1, [11]), (2, [11]), (3, [11]), (4, [11]), (5, [11]), (5, [11, 17]),
                        (6, [11])):
        for draws in (0, 5):
            for kind, n in (("kj", 2 ** 40), ("kj", 2 ** 62), ("kk", 100)):
                skip("g%d-%s-%d" % (genid, kind, n), genid, 7, seed, draws, kind, n)


if __name__ == "__main__":
    main()
