#!/usr/bin/python3
"""Reference implementations of the six base generators of chapter g05, in
plain Python integers, written from the defining recurrences.  They are the
independent side of the g05 tests (tools/g05_reference_data.py writes their
output under tests/g05/data/) and never call the library.

Doubles are Python floats (IEEE double, correctly rounded operations), so the
formulas below give bit-identical values to any implementation that evaluates
the same operations in the same order.
"""

M60 = 1 << 60
BASIC_A = 13 ** 13


# ---------------------------------------------------------------- basic (1)
def basic_seed(s):
    """x after seeding with s and the one advance made at initialisation."""
    assert s >= 1
    return (4 * s + 2) % M60 * BASIC_A % M60


def basic_double(x):
    t = float(x >> 30) * 2.0 ** -30 + float(x & (2 ** 30 - 1)) * 2.0 ** -60
    u = 1.0 - t
    if u == 0.0:
        u = float(M60 - x) * 2.0 ** -60
    return u


class Basic:
    def __init__(self, s, a=BASIC_A):
        self.x = basic_seed(s)
        self.a = a

    def next(self):
        self.x = self.a * self.x % M60
        return basic_double(self.x)


class Seeder:
    """The basic generator that seeds generators 2 to 6."""

    def __init__(self, s):
        self.x = basic_seed(s)

    def next(self):
        self.x = BASIC_A * self.x % M60
        return self.x

    def word32(self):
        return self.next() >> 28

    def word60(self):
        hi = self.next() >> 30
        lo = self.next() >> 30
        return hi << 30 | lo


# ------------------------------------------------- Wichmann-Hill (2 and 4)
def round_to_int(v):
    """Nearest integer of a small non-negative double, ties to even, as the
    engine obtains it by adding and subtracting 2^52."""
    return (v + 2.0 ** 52) - 2.0 ** 52


def wh_double(xs, ms):
    r = [1.0 / m for m in ms]
    s = float(xs[0]) * r[0] + float(xs[1]) * r[1]
    s = s + float(xs[2]) * r[2]
    s = s + float(xs[3]) * r[3]
    f = round_to_int(s)
    if f > s:
        f -= 1.0
    u = s - f
    return u if u > 0.0 else 2.0 ** -53


WH2 = [(11600, 2147483579), (47003, 2147483543), (23000, 2147483423), (33000, 2147483123)]


def wh1_table(path):
    """Members of the Wichmann-Hill I family read from the generated table."""
    rows = []
    for line in open(path):
        line = line.strip()
        if line.startswith("{"):
            v = [int(t) for t in line.strip("{},").split(",")]
            rows.append([(v[2 * j], v[2 * j + 1]) for j in range(4)])
    assert len(rows) == 273
    return rows


class WichmannHill:
    def __init__(self, comps, s):
        self.a = [a for a, _ in comps]
        self.m = [m for _, m in comps]
        sd = Seeder(s)
        self.x = [1 + sd.word60() % (m - 1) for m in self.m]

    def next(self):
        self.x = [a * x % m for a, x, m in zip(self.a, self.x, self.m)]
        return wh_double(self.x, self.m)


# ---------------------------------------------------- Mersenne Twister (3)
MT_N, MT_M = 624, 397


def mt_init_genrand(s):
    """The reference initialisation of the 624 words from a 32-bit seed."""
    w = [s & 0xFFFFFFFF]
    for i in range(1, MT_N):
        w.append((1812433253 * (w[-1] ^ (w[-1] >> 30)) + i) & 0xFFFFFFFF)
    return w


def mt_temper(y):
    y ^= y >> 11
    y ^= (y << 7) & 0x9D2C5680
    y ^= (y << 15) & 0xEFC60000
    y ^= y >> 18
    return y


def mt_next_word(w, t):
    """x_t from the window holding x_{t-624} .. x_{t-1} in w[t mod 624] ..."""
    i = t % MT_N
    y = (w[i] & 0x80000000) | (w[(i + 1) % MT_N] & 0x7FFFFFFF)
    v = w[(i + MT_M) % MT_N] ^ (y >> 1) ^ (0x9908B0DF if y & 1 else 0)
    w[i] = v
    return v


class MersenneTwister:
    """Incremental form: w is the window of the last 624 words and pos the
    position (modulo 624) of the oldest one."""

    def __init__(self, words, pos=0):
        self.w = list(words)
        self.pos = pos

    @classmethod
    def seeded(cls, s):
        sd = Seeder(s)
        w = [sd.word32() for _ in range(MT_N)]
        if not any(w):
            w[0] = 0x80000000
        return cls(w)

    def next_word(self):
        v = mt_next_word(self.w, self.pos)
        self.pos = (self.pos + 1) % MT_N
        return v

    def next32(self):
        return mt_temper(self.next_word())

    def next(self):
        return float(self.next32()) * 2.0 ** -32 + 2.0 ** -33

    def window(self):
        """The 624 words oldest first."""
        return [self.w[(self.pos + j) % MT_N] for j in range(MT_N)]


def berlekamp_massey_gf2(bits):
    """Connection polynomial C (bit i = c_i, c_0 = 1) and length L of the
    shortest LFSR s_n = sum_{i=1..L} c_i s_{n-i} producing bits."""
    C, B, L, m = 1, 1, 0, 1
    window = 0  # bit i = s_{n-i}
    for n, s in enumerate(bits):
        window = (window << 1) | s
        d = (C & window).bit_count() & 1
        if d == 0:
            m += 1
        elif 2 * L <= n:
            T = C
            C ^= B << m
            L = n + 1 - L
            B = T
            m = 1
        else:
            C ^= B << m
            m += 1
    return C, L


def mt_charpoly():
    """Characteristic polynomial p(x) of the MT19937 recurrence (degree
    19937), as an int with bit i = coefficient of x^i, found by
    Berlekamp-Massey on one output bit of 2 * 19937 successive words."""
    g = MersenneTwister(mt_init_genrand(5489))
    bits = [g.next_word() & 1 for _ in range(2 * 19937 + 64)]
    C, L = berlekamp_massey_gf2(bits)
    assert L == 19937, L
    p = 0
    for i in range(L + 1):
        if (C >> i) & 1:
            p |= 1 << (L - i)
    return p


def gf2_mulmod(a, b, p, deg):
    r = 0
    while b:
        if b & 1:
            r ^= a
        b >>= 1
        a <<= 1
        if (a >> deg) & 1:
            a ^= p
    return r


def gf2_square(a):
    """a(x)^2 over GF(2): spread the bits."""
    h = format(a, "b")
    return int("0".join(h), 2) if a else 0


def gf2_mod(r, p, deg):
    while r.bit_length() > deg:
        r ^= p << (r.bit_length() - 1 - deg)
    return r


def gf2_xpow(e, p, deg):
    """x^e mod p by left-to-right squaring."""
    g = 1
    for bit in format(e, "b"):
        g = gf2_mod(gf2_square(g), p, deg)
        if bit == "1":
            g <<= 1
            if (g >> deg) & 1:
                g ^= p
    return g


def mt_words_ahead(words, count):
    """The window `words` (oldest first) followed by the next `count` words."""
    mt = MersenneTwister(words)
    return list(words) + [mt.next_word() for _ in range(count)]


def mt_jump_window(words, g):
    """sum_i g_i T^i applied to the window `words` (oldest first): the
    window moved on by e words when g = x^e mod p.  Window i is words
    i .. i + 623 of the sequence that starts with `words`; the sequence is
    packed into one integer so that each window is a shift and a mask."""
    seq = mt_words_ahead(words, 19937 + MT_N)
    packed = int.from_bytes(b"".join(w.to_bytes(4, "little") for w in seq), "little")
    mask = (1 << (32 * MT_N)) - 1
    acc = 0
    i = 0
    while g:
        if g & 1:
            acc ^= (packed >> (32 * i)) & mask
        g >>= 1
        i += 1
    return [(acc >> (32 * j)) & 0xFFFFFFFF for j in range(MT_N)]


# ------------------------------------------------------------- ACORN (5)
class Acorn:
    def __init__(self, seed):
        s = seed[0]
        k = seed[1] if len(seed) >= 2 else 10
        sd = Seeder(s)
        y0 = seed[2] if len(seed) >= 3 else sd.word60() | 1
        given = list(seed[3:3 + k])
        ys = [y0] + given + [sd.word60() for _ in range(k - len(given))]
        self.k = k
        self.y = ys

    def next(self):
        for m in range(1, self.k + 1):
            self.y[m] = (self.y[m] + self.y[m - 1]) % M60
        v = self.y[self.k] >> 8
        return float(2 * v + 1) * 2.0 ** -53


def acorn_skip(ys, n):
    """The row after n steps, from binomial coefficients: n steps multiply by
    the lower triangular matrix of ones to the n-th power, whose (m, j) entry
    is C(n - 1 + m - j, m - j)."""
    import math
    k = len(ys) - 1
    out = [ys[0]]
    for m in range(1, k + 1):
        v = ys[m]  # j = m term has coefficient C(n - 1, 0) = 1
        for j in range(0, m):
            d = m - j
            v += math.comb(n - 1 + d, d) * ys[j]
        out.append(v % M60)
    return out


# ---------------------------------------------------------- MRG32k3a (6)
MRG_M1, MRG_M2 = 4294967087, 4294944443
MRG_A12, MRG_A13N, MRG_A21, MRG_A23N = 1403580, 810728, 527612, 1370589
MRG_NORM = 2.328306549295727688e-10


class Mrg32k3a:
    """s1 = (x1(n-3), x1(n-2), x1(n-1)), s2 likewise."""

    def __init__(self, s1, s2):
        self.s1 = list(s1)
        self.s2 = list(s2)

    @classmethod
    def seeded(cls, s):
        sd = Seeder(s)
        s1 = [sd.word60() % MRG_M1 for _ in range(3)]
        s2 = [sd.word60() % MRG_M2 for _ in range(3)]
        if not any(s1):
            s1[2] = 1
        if not any(s2):
            s2[2] = 1
        return cls(s1, s2)

    def next(self):
        p1 = (MRG_A12 * self.s1[1] - MRG_A13N * self.s1[0]) % MRG_M1
        self.s1 = [self.s1[1], self.s1[2], p1]
        p2 = (MRG_A21 * self.s2[2] - MRG_A23N * self.s2[0]) % MRG_M2
        self.s2 = [self.s2[1], self.s2[2], p2]
        d = p1 - p2
        if p1 <= p2:
            d += MRG_M1
        return float(d) * MRG_NORM


MRG_A1 = [[0, 1, 0], [0, 0, 1], [-MRG_A13N % MRG_M1, MRG_A12, 0]]
MRG_A2 = [[0, 1, 0], [0, 0, 1], [-MRG_A23N % MRG_M2, 0, MRG_A21]]


def mat_mul(x, y, m):
    return [[sum(x[i][k] * y[k][j] for k in range(3)) % m for j in range(3)] for i in range(3)]


def mat_pow(x, e, m):
    r = [[int(i == j) for j in range(3)] for i in range(3)]
    while e:
        if e & 1:
            r = mat_mul(r, x, m)
        x = mat_mul(x, x, m)
        e >>= 1
    return r


def mat_vec(x, v, m):
    return [sum(x[i][k] * v[k] for k in range(3)) % m for i in range(3)]
