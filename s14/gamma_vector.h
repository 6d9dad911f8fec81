// The shared body of the vectorised routines s14an (Gamma) and s14ap
// (ln Gamma): elements are taken in blocks; each element is classed by its
// argument, the common classes are gathered two vectors at a time (whose
// independent chains of operations overlap: four lanes each with AVX2, eight
// for ln Gamma on processors with 512-bit vectors) and evaluated with
// vector operations, one element per lane (branch-free within a class), and
// every other element (bad arguments, NaN, the rare ranges) goes through
// the scalar routine with its checks, its substitute value and its status
// in ivalid.  No element stops the loop.
//
// Each lane does exactly the operations of the scalar kernel (s14/gamma.h)
// in the same order, so that an element's value does not depend on the
// routine, its neighbours or its position: s14an gives what s14aa gives,
// s14ap what s14ab gives, bit for bit (the tests compare them).
#pragma once

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>

#include "s14/gamma.h"

// g++ 12 takes the lanes of a vector set one by one, or from a braced list
// inside an inlined helper, for reads of an uninitialised vector (every
// vector here is initialised before it is read).
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"

namespace zem::s14 {

// --- lane-wise error-free operations -------------------------------------
//
// On vectors V of W doubles: lanes4 (W = 4, AVX2) or lanes8 (W = 8,
// AVX-512); every operation is element-wise, so that a lane computes what
// the scalar kernel computes whatever the width.

using lanes8 = double __attribute__((vector_size(64)));

template <class V>
inline constexpr int width_of = static_cast<int>(sizeof(V) / sizeof(double));

// The integer vector of the same width.
template <class V>
struct bits_of;
template <>
struct bits_of<lanes4> {
  using type = uint64_t __attribute__((vector_size(32)));
};
template <>
struct bits_of<lanes8> {
  using type = uint64_t __attribute__((vector_size(64)));
};

template <class V>
struct pairv {
  V hi{}, lo{};
};
using pair4 = pairv<lanes4>;

template <class V>
[[gnu::always_inline]] inline void splitv(const V &a, V &hi, V &lo) {
  const V c = 134217729.0 * a;
  hi = c - (c - a);
  lo = a - hi;
}

// a b = p.hi + p.lo exactly, lane by lane (two_prod of s14/eft.h).
template <bool Fma, class V>
[[gnu::always_inline]] inline void two_prod4(const V &a, const V &b, pairv<V> &p) {
  p.hi = a * b;
  p.lo = V{};
  if constexpr (Fma) {
    for (int k = 0; k < width_of<V>; ++k) p.lo[k] = __builtin_fma(a[k], b[k], -p.hi[k]);
  } else {
    V ah{}, al{}, bh{}, bl{};
    splitv(a, ah, al);
    splitv(b, bh, bl);
    p.lo = ((ah * bh - p.hi) + ah * bl + al * bh) + al * bl;
  }
}

template <class V>
[[gnu::always_inline]] inline void two_sum4(const V &a, const V &b, pairv<V> &s) {
  s.hi = a + b;
  const V bb = s.hi - a;
  s.lo = (a - (s.hi - bb)) + (b - bb);
}

template <class V>
[[gnu::always_inline]] inline void fast_two_sum4(const V &a, const V &b, pairv<V> &s) {
  s.hi = a + b;
  s.lo = b - (s.hi - a);
}

// Every lane := v (through a reference: a vector is never passed or
// returned by value).
template <class V>
[[gnu::always_inline]] inline void set4(V &a, double v) {
  if constexpr (width_of<V> == 4)
    a = V{v, v, v, v};
  else
    // Formed as +0 + v, a broadcast operand of an addition: exact for every
    // v set here (none is -0), and the eight-lane loop so compiled keeps its
    // constants in the instructions instead of hoisting sixty broadcasts
    // into spilled registers (the plain broadcast measured 20% slower).
    a = V{} + v;
}

// --- ln Gamma, lane by lane -----------------------------------------------

// log_table_parts of each lane, as l.hi = head and l.lo = r + tail.
template <bool Fma, class V>
[[gnu::always_inline]] inline void log_table_parts4(const V &x, pairv<V> &l) {
  // The exponent and the mantissa by integer vector operations (e as a
  // double by the 2^52 trick: exact); the table rows: four lanes as four
  // aligned loads turned into columns, eight lane by lane.
  using bitsv = typename bits_of<V>::type;
  const bitsv bits = (bitsv)x;  // a vector cast keeps the bits
  const V e = (V)((bits >> 52) | 0x4330000000000000ull) - (0x1p52 + 1023.0);
  const V m = (V)((bits & 0x000fffffffffffffull) | 0x3ff0000000000000ull);
  const bitsv ib = (bits >> 45) & 127;
  V c{}, t_lo{}, t_hi{};
  if constexpr (width_of<V> == 4) {
    using row4 = double __attribute__((vector_size(32), aligned(32), may_alias));
    const lanes4 row[4] = {*reinterpret_cast<const row4 *>(log_table[ib[0]]),
                           *reinterpret_cast<const row4 *>(log_table[ib[1]]),
                           *reinterpret_cast<const row4 *>(log_table[ib[2]]),
                           *reinterpret_cast<const row4 *>(log_table[ib[3]])};
    const lanes4 lo01 = __builtin_shufflevector(row[0], row[1], 0, 4, 2, 6);  // c0 c1 tl0 tl1
    const lanes4 hi01 = __builtin_shufflevector(row[0], row[1], 1, 5, 3, 7);  // th0 th1 - -
    const lanes4 lo23 = __builtin_shufflevector(row[2], row[3], 0, 4, 2, 6);
    const lanes4 hi23 = __builtin_shufflevector(row[2], row[3], 1, 5, 3, 7);
    c = __builtin_shufflevector(lo01, lo23, 0, 1, 4, 5);
    t_lo = __builtin_shufflevector(lo01, lo23, 2, 3, 6, 7);
    t_hi = __builtin_shufflevector(hi01, hi23, 0, 1, 4, 5);
  } else {
    for (int k = 0; k < width_of<V>; ++k) {
      const double *row = log_table[ib[k]];
      c[k] = row[0];
      t_hi[k] = row[1];
      t_lo[k] = row[2];
    }
  }
  V r{};
  if constexpr (Fma) {
    for (int k = 0; k < width_of<V>; ++k) r[k] = __builtin_fma(m[k], c[k], -1.0);
  } else {
    pairv<V> p;
    two_prod4<false>(m, c, p);
    r = (p.hi - 1.0) + p.lo;
  }
  const V r2 = r * r;
  const V q = (-0.5 + r * (1.0 / 3.0)) + r2 * ((-0.25 + r * 0.2) + r2 * (-1.0 / 6.0));
  l.hi = e * log_ln2_hi + t_hi;
  l.lo = r + ((t_lo + e * log_ln2_lo) + r2 * q);
}

// rational_pair of each lane: the four parts one after another, each with
// the operations of its lane in the scalar kernel.
template <bool Fma, bool PlainFirst, bool LowParts, class V>
[[gnu::always_inline]] inline void rational_pair4(const rational_lanes &t, const V &z, pairv<V> &y) {
  pairv<V> z2;
  two_prod4<Fma>(z, z, z2);
  const V zz = z2.hi, zl = z2.lo;
  V s[4] = {}, err[4] = {};
  for (int j = 0; j < 4; ++j) {
    set4(s[j], t.c[0][j]);
    if constexpr (PlainFirst) {
      V c1{};
      set4(c1, t.c[1][j]);
      s[j] = s[j] * zz + c1;
    }
    err[j] = V{};
    if constexpr (LowParts) set4(err[j], t.lo[0][j]);
  }
  constexpr int first = PlainFirst ? 2 : 1;
  for (int i = first; i < 5; ++i)
    for (int j = 0; j < 4; ++j) {
      pairv<V> p;
      two_prod4<Fma>(s[j], zz, p);
      V c{};
      set4(c, t.c[i][j]);
      const V u = p.hi + c;
      const V v = u - p.hi;
      const V se = (p.hi - (u - v)) + (c - v);
      V e = (p.lo + se) + s[j] * zl;
      if constexpr (LowParts) {
        V l{};
        set4(l, t.lo[i][j]);
        e += l;
      }
      if (i == first && !LowParts)
        err[j] = e;
      else
        err[j] = err[j] * zz + e;
      s[j] = u;
    }
  // N = Ne + z No (parts 0, 1), Q = Qe + z Qo (parts 2, 3).
  V hi[2] = {}, lo[2] = {};
  for (int j = 0; j < 2; ++j) {
    const V &eh = s[2 * j], &oh = s[2 * j + 1], &el = err[2 * j], &ol = err[2 * j + 1];
    pairv<V> a;
    two_prod4<Fma>(oh, z, a);
    const V sum = eh + a.hi;
    const V bb = sum - eh;
    hi[j] = sum;
    lo[j] = ((eh - (sum - bb)) + (a.hi - bb) + a.lo) + (el + z * ol);
  }
  const V iq = 1.0 / hi[1];
  const V yh = hi[0] * iq;
  V rem{};
  if constexpr (Fma) {
    for (int k = 0; k < width_of<V>; ++k) rem[k] = __builtin_fma(-yh[k], hi[1][k], hi[0][k]);
  } else {
    pairv<V> yq;
    two_prod4<false>(yh, hi[1], yq);
    rem = (hi[0] - yq.hi) - yq.lo;
  }
  y.hi = yh;
  y.lo = ((rem + lo[0]) - yh * lo[1]) * iq;
}

// The lanes of ln Gamma's classes: 1 for 12 < x < 2^52, 2 for
// 4 < x <= 12, 3 for 1.5 < x <= 4, 4 for 0.6796875 <= x <= 1.5; 0 (the
// scalar routine) otherwise.  The class is found without branches: the
// arguments come in any order.
struct lgamma_lanes {
  static constexpr int classes = 5;
  [[gnu::always_inline]] static int class_of(double x) {
    const int band = (x > 1.5) + (x > 4.0) + (x > 12.0);
    const int inside = (x >= 0.6796875) & (x < lgamma_x_near);  // 0 for a NaN
    return (4 - band) & -inside;
  }
  static double checked(double x, int &code) { return lgamma_checked(x, code); }
  template <bool Fma, class V>
  [[gnu::always_inline]] static void lanes(int cls, const V &x, V &f) {
    if (cls == 1) {
      pairv<V> l;
      log_table_parts4<Fma>(x, l);
      const V inv = 1.0 / x;
      const V w = inv * inv;
      const V w2 = w * w;
      const V lo = (lg_c[5] + w * lg_c[4]) + w2 * (lg_c[3] + w * lg_c[2]);
      const V hi = (lg_c[1] + w * lg_c[0]) + w2 * lg_c[6];
      const V res = (lo + (w2 * w2) * hi) * inv;
      const V y = x - 0.5;
      pairv<V> p;
      two_prod4<Fma>(y, l.hi, p);
      const V s = p.hi - x;
      const V s_lo = (p.hi - s) - x;
      f = s + (s_lo + (p.lo + y * l.lo + (0.9189385332046728 + res)));
    } else if (cls == 2) {
      pairv<V> y, s;
      V d{};
      set4(d, lg_d4);
      rational_pair4<Fma, true, false>(lg_lanes4, x - 4.0, y);
      two_sum4(d, y.hi, s);
      f = s.hi + (s.lo + y.lo);
    } else {
      // ln Gamma(2 + z) and ln Gamma(1 + z) alike: z (d + y).
      const V z = cls == 3 ? x - 2.0 : (x - 0.5) - 0.5;
      pairv<V> y, s, p;
      V d{};
      set4(d, cls == 3 ? lg_d2 : lg_d1);
      V d_lo{};
      if (cls == 3) {
        rational_pair4<Fma, true, false>(lg_lanes2, z, y);
      } else {
        rational_pair4<Fma, false, true>(lg_lanes1, z, y);
        set4(d_lo, lg_1_d_lo);
      }
      two_sum4(d, y.hi, s);
      const V lo = s.lo + (y.lo + d_lo);
      two_prod4<Fma>(s.hi, z, p);
      f = p.hi + (p.lo + lo * z);
    }
  }
  // A value of the class's range, for the idle lanes of the last group.
  static double filler(int cls) { return cls == 1 ? 20.0 : cls == 2 ? 8.0 : cls == 3 ? 3.0 : 1.25; }
};

// --- Gamma, lane by lane ---------------------------------------------------

// The lanes of Gamma's one class, 1 <= x <= 170: y = x - m in [1, 2) with
// m = floor(x) - 1 factors x - 1, ..., x - m, gathered as in gamma_core_t
// (odd factors in one chain, even in the other); a lane with fewer factors
// than its group multiplies by 1, which leaves its pairs unchanged.  The
// groups are formed after sorting the class by m, so that their lanes have
// about as many factors.
struct gamma_lanes {
  static constexpr int classes = 2;
  [[gnu::always_inline]] static int class_of(double x) { return (x >= 1.0) & (x <= gamma_x_max); }
  static double checked(double x, int &code) { return gamma_checked(x, code); }
  static int factors(double x) { return static_cast<int>(std::floor(x)) - 1; }
  template <bool Fma>
  [[gnu::always_inline]] static void lanes(int, const lanes4 &x, lanes4 &f) {
    lanes4 m{}, t{};
    double most = 0.0;
    for (int k = 0; k < 4; ++k) {
      m[k] = std::floor(x[k]) - 1.0;
      most = m[k] > most ? m[k] : most;
    }
    for (int k = 0; k < 4; ++k) t[k] = x[k] - (m[k] + 1.5);
    lanes4 q{}, one{};
    unit_poly(t, q);
    set4(one, 1.0);
    pair4 a{gamma_three_halves + t * q, lanes4{}}, b{one, lanes4{}};
    for (double k = 1.0; k <= most; k += 2.0) {
      lanes4 kk{}, k1{};
      set4(kk, k);
      set4(k1, k + 1.0);
      const lanes4 fa = kk <= m ? x - kk : one;
      const lanes4 fb = k1 <= m ? x - k1 : one;
      pair4 pa, pb;
      two_prod4<Fma>(a.hi, fa, pa);
      two_prod4<Fma>(b.hi, fb, pb);
      a = {pa.hi, pa.lo + a.lo * fa};
      b = {pb.hi, pb.lo + b.lo * fb};
    }
    pair4 an, bn, r;
    fast_two_sum4(a.hi, a.lo, an);
    fast_two_sum4(b.hi, b.lo, bn);
    two_prod4<Fma>(an.hi, bn.hi, r);
    // mul(dd, dd): the normalised sum's high part.
    f = r.hi + (r.lo + (an.hi * bn.lo + an.lo * bn.hi));
  }
  // Q(t) of gamma_unit, lane by lane, by the same Horner scheme.
  [[gnu::always_inline]] static void unit_poly(const lanes4 &t, lanes4 &s) {
    const auto &c = gamma_unit_set();
    constexpr int n = sizeof(c) / sizeof(c[0]);
    set4(s, c[n - 1]);
    for (int i = n - 2; i >= 0; --i) s = s * t + c[i];
  }
  static double filler(int) { return 1.5; }
};

// --- the blocked loop ------------------------------------------------------

// Fills f[i] and ivalid[i] for i < n; returns whether any element was bad.
template <class K, bool Fma, class V = lanes4>
[[gnu::always_inline]] inline bool vector_apply(int64_t n, const double *x, double *f, int64_t *ivalid) {
  // Long enough that the part-filled last vector of each class is rare
  // (blocks of 256 cost s14ap 12% on arguments spread over (0.5, 30)); the
  // lists take 20 KB of stack.
  constexpr int block = 1024;
  bool any = false;
  for (int64_t start = 0; start < n; start += block) {
    const int len = static_cast<int>(n - start < block ? n - start : block);
    const double *xb = x + start;
    double *fb = f + start;
    int64_t *vb = ivalid + start;
    // The classes first (compare and add only: the compiler takes the
    // elements a vector at a time), then the lists of each class by one
    // pass without branches: the counts of the classes are packed in one
    // register, 12 bits each, so that an element's place in its list does
    // not wait for a store of the previous element's count.
    static_assert(K::classes <= 5 && block < 4096);
    uint8_t cls_of[block];
    for (int i = 0; i < len; ++i) cls_of[i] = static_cast<uint8_t>(K::class_of(xb[i]));
    int idx[K::classes][block];
    int count[K::classes];
    {
      uint64_t packed = 0;
      for (int i = 0; i < len; ++i) {
        const unsigned shift = 12u * cls_of[i];
        idx[cls_of[i]][(packed >> shift) & 0xfff] = i;
        packed += uint64_t{1} << shift;
      }
      for (int c = 0; c < K::classes; ++c) count[c] = static_cast<int>((packed >> (12 * c)) & 0xfff);
    }
    for (int i = 0; i < len; ++i) vb[i] = 0;
    // Class 0, element by element: the scalar routine with its checks.
    for (int j = 0; j < count[0]; ++j) {
      const int i = idx[0][j];
      int code = 0;
      fb[i] = K::checked(xb[i], code);
      vb[i] = code;
      any |= code != 0;
    }
    for (int cls = 1; cls < K::classes; ++cls) {
      int *list = idx[cls];
      const int cnt = count[cls];
      if constexpr (requires { K::factors(0.0); }) {
        // Counting sort of the class by its number of factors.
        int sorted[block];
        int hist[172] = {};
        for (int j = 0; j < cnt; ++j) ++hist[K::factors(xb[list[j]]) + 1];
        for (int h = 1; h < 172; ++h) hist[h] += hist[h - 1];
        for (int j = 0; j < cnt; ++j) sorted[hist[K::factors(xb[list[j]])]++] = list[j];
        for (int j = 0; j < cnt; ++j) list[j] = sorted[j];
      }
      constexpr int w = width_of<V>;
      int j = 0;
      for (; j + 2 * w <= cnt; j += 2 * w) {
        V xv0, xv1, fv0, fv1;
        for (int k = 0; k < w; ++k) xv0[k] = xb[list[j + k]];
        for (int k = 0; k < w; ++k) xv1[k] = xb[list[j + w + k]];
        K::template lanes<Fma>(cls, xv0, fv0);
        K::template lanes<Fma>(cls, xv1, fv1);
        for (int k = 0; k < w; ++k) fb[list[j + k]] = fv0[k];
        for (int k = 0; k < w; ++k) fb[list[j + w + k]] = fv1[k];
      }
      for (; j < cnt; j += w) {
        const int used = cnt - j < w ? cnt - j : w;
        V xv{}, fv{};
        set4(xv, K::filler(cls));
        for (int k = 0; k < used; ++k) xv[k] = xb[list[j + k]];
        K::template lanes<Fma>(cls, xv, fv);
        for (int k = 0; k < used; ++k) fb[list[j + k]] = fv[k];
      }
    }
  }
  return any;
}

// The routines' loops, compiled for the processor in hand
// (s14/gamma_dispatch.cpp).
bool gamma_vector(int64_t n, const double *x, double *f, int64_t *ivalid);
bool lgamma_vector(int64_t n, const double *x, double *f, int64_t *ivalid);

}  // namespace zem::s14

#pragma GCC diagnostic pop
