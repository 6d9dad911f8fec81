// The shared body of the vectorised routines s14an (Gamma) and s14ap
// (ln Gamma): elements are taken in blocks; each element is classed by its
// argument, the common classes are gathered eight at a time (two vectors of
// four, whose independent chains of operations overlap) and evaluated with
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

// --- lane-wise error-free operations (lanes4: four elements) --------------

struct pair4 {
  lanes4 hi{}, lo{};
};

template <bool Fma>
[[gnu::always_inline]] inline void split4(const lanes4 &a, lanes4 &hi, lanes4 &lo) {
  const lanes4 c = 134217729.0 * a;
  hi = c - (c - a);
  lo = a - hi;
}

// a b = p.hi + p.lo exactly, lane by lane (two_prod of s14/eft.h).
template <bool Fma>
[[gnu::always_inline]] inline void two_prod4(const lanes4 &a, const lanes4 &b, pair4 &p) {
  p.hi = a * b;
  p.lo = lanes4{};
  if constexpr (Fma) {
    for (int k = 0; k < 4; ++k) p.lo[k] = __builtin_fma(a[k], b[k], -p.hi[k]);
  } else {
    lanes4 ah{}, al{}, bh{}, bl{};
    split4<Fma>(a, ah, al);
    split4<Fma>(b, bh, bl);
    p.lo = ((ah * bh - p.hi) + ah * bl + al * bh) + al * bl;
  }
}

[[gnu::always_inline]] inline void two_sum4(const lanes4 &a, const lanes4 &b, pair4 &s) {
  s.hi = a + b;
  const lanes4 bb = s.hi - a;
  s.lo = (a - (s.hi - bb)) + (b - bb);
}

[[gnu::always_inline]] inline void fast_two_sum4(const lanes4 &a, const lanes4 &b, pair4 &s) {
  s.hi = a + b;
  s.lo = b - (s.hi - a);
}

// Every lane := v (through a reference: a 32-byte vector is never passed or
// returned by value).
[[gnu::always_inline]] inline void set4(lanes4 &a, double v) { a = lanes4{v, v, v, v}; }

// --- ln Gamma, lane by lane -----------------------------------------------

// log_table_pair of each lane.
template <bool Fma>
[[gnu::always_inline]] inline void log_table_pair4(const lanes4 &x, pair4 &l) {
  // The exponent and the mantissa by integer vector operations (e as a
  // double by the 2^52 trick: exact), the four table rows as four aligned
  // loads, turned into columns.
  using bits4 = uint64_t __attribute__((vector_size(32)));
  using row4 = double __attribute__((vector_size(32), aligned(32), may_alias));
  const bits4 bits = (bits4)x;  // a vector cast keeps the bits
  const lanes4 e = (lanes4)((bits >> 52) | 0x4330000000000000ull) - (0x1p52 + 1023.0);
  const lanes4 m = (lanes4)((bits & 0x000fffffffffffffull) | 0x3ff0000000000000ull);
  const bits4 ib = (bits >> 45) & 127;
  const lanes4 row[4] = {*reinterpret_cast<const row4 *>(log_table[ib[0]]),
                         *reinterpret_cast<const row4 *>(log_table[ib[1]]),
                         *reinterpret_cast<const row4 *>(log_table[ib[2]]),
                         *reinterpret_cast<const row4 *>(log_table[ib[3]])};
  const lanes4 lo01 = __builtin_shufflevector(row[0], row[1], 0, 4, 2, 6);  // c0 c1 tl0 tl1
  const lanes4 hi01 = __builtin_shufflevector(row[0], row[1], 1, 5, 3, 7);  // th0 th1 - -
  const lanes4 lo23 = __builtin_shufflevector(row[2], row[3], 0, 4, 2, 6);
  const lanes4 hi23 = __builtin_shufflevector(row[2], row[3], 1, 5, 3, 7);
  const lanes4 c = __builtin_shufflevector(lo01, lo23, 0, 1, 4, 5);
  const lanes4 t_lo = __builtin_shufflevector(lo01, lo23, 2, 3, 6, 7);
  const lanes4 t_hi = __builtin_shufflevector(hi01, hi23, 0, 1, 4, 5);
  lanes4 r{};
  if constexpr (Fma) {
    for (int k = 0; k < 4; ++k) r[k] = __builtin_fma(m[k], c[k], -1.0);
  } else {
    pair4 p;
    two_prod4<false>(m, c, p);
    r = (p.hi - 1.0) + p.lo;
  }
  pair4 b;
  fast_two_sum4(e * log_ln2_hi + t_hi, r, b);
  const lanes4 r2 = r * r;
  const lanes4 q = (-0.5 + r * (1.0 / 3.0)) + r2 * ((-0.25 + r * 0.2) + r2 * (-1.0 / 6.0));
  l.hi = b.hi;
  l.lo = b.lo + ((t_lo + e * log_ln2_lo) + r2 * q);
}

// rational_pair of each lane: the four parts one after another, each with
// the operations of its lane in the scalar kernel.
template <bool Fma>
[[gnu::always_inline]] inline void rational_pair4(const rational_lanes &t, const lanes4 &z, pair4 &y) {
  pair4 z2;
  two_prod4<Fma>(z, z, z2);
  const lanes4 zz = z2.hi, zl = z2.lo;
  lanes4 s[4] = {}, err[4] = {};
  for (int j = 0; j < 4; ++j) {
    set4(s[j], t.c[0][j]);
    err[j] = lanes4{};
  }
  for (int i = 1; i < 5; ++i)
    for (int j = 0; j < 4; ++j) {
      pair4 p;
      two_prod4<Fma>(s[j], zz, p);
      lanes4 c{};
      set4(c, t.c[i][j]);
      const lanes4 u = p.hi + c;
      const lanes4 v = u - p.hi;
      const lanes4 se = (p.hi - (u - v)) + (c - v);
      err[j] = err[j] * zz + ((p.lo + se) + s[j] * zl);
      s[j] = u;
    }
  // N = Ne + z No (parts 0, 1), Q = Qe + z Qo (parts 2, 3).
  lanes4 hi[2] = {}, lo[2] = {};
  for (int j = 0; j < 2; ++j) {
    const lanes4 &eh = s[2 * j], &oh = s[2 * j + 1], &el = err[2 * j], &ol = err[2 * j + 1];
    pair4 a;
    two_prod4<Fma>(oh, z, a);
    const lanes4 sum = eh + a.hi;
    const lanes4 bb = sum - eh;
    hi[j] = sum;
    lo[j] = ((eh - (sum - bb)) + (a.hi - bb) + a.lo) + (el + z * ol);
  }
  const lanes4 iq = 1.0 / hi[1];
  const lanes4 yh = hi[0] * iq;
  lanes4 rem{};
  if constexpr (Fma) {
    for (int k = 0; k < 4; ++k) rem[k] = __builtin_fma(-yh[k], hi[1][k], hi[0][k]);
  } else {
    pair4 yq;
    two_prod4<false>(yh, hi[1], yq);
    rem = (hi[0] - yq.hi) - yq.lo;
  }
  y.hi = yh;
  y.lo = ((rem + lo[0]) - yh * lo[1]) * iq;
}

// The lanes of ln Gamma's classes: 1 for 12 < x <= 2.24e76, 2 for
// 4 < x <= 12, 3 for 1.5 < x <= 4, 4 for 0.6796875 <= x <= 1.5; 0 (the
// scalar routine) otherwise.  The class is found without branches: the
// arguments come in any order.
struct lgamma_lanes {
  static constexpr int classes = 5;
  [[gnu::always_inline]] static int class_of(double x) {
    const int band = (x > 1.5) + (x > 4.0) + (x > 12.0);
    const int inside = (x >= 0.6796875) & (x <= lgamma_x_series);  // 0 for a NaN
    return (4 - band) & -inside;
  }
  static double checked(double x, int &code) { return lgamma_checked(x, code); }
  template <bool Fma>
  [[gnu::always_inline]] static void lanes(int cls, const lanes4 &x, lanes4 &f) {
    if (cls == 1) {
      pair4 l;
      log_table_pair4<Fma>(x, l);
      const lanes4 inv = 1.0 / x;
      const lanes4 w = inv * inv;
      const lanes4 w2 = w * w;
      const lanes4 lo = (lg_c[5] + w * lg_c[4]) + w2 * (lg_c[3] + w * lg_c[2]);
      const lanes4 hi = (lg_c[1] + w * lg_c[0]) + w2 * lg_c[6];
      const lanes4 res = (lo + (w2 * w2) * hi) * inv;
      const lanes4 rest = (0.9189385332046728 - 0.5 * l.hi) + res;
      pair4 p, s;
      two_prod4<Fma>(x, l.hi, p);
      fast_two_sum4(p.hi, -x, s);
      f = s.hi + (s.lo + (p.lo + (x - 0.5) * l.lo + rest));
    } else if (cls == 2) {
      pair4 y, s;
      lanes4 d{};
      set4(d, lg_d4);
      rational_pair4<Fma>(lg_lanes4, x - 4.0, y);
      two_sum4(d, y.hi, s);
      f = s.hi + (s.lo + y.lo);
    } else {
      // ln Gamma(2 + z) and ln Gamma(1 + z) alike: z (d + y).
      const lanes4 z = cls == 3 ? x - 2.0 : (x - 0.5) - 0.5;
      pair4 y, s, p;
      lanes4 d{};
      set4(d, cls == 3 ? lg_d2 : lg_d1);
      rational_pair4<Fma>(cls == 3 ? lg_lanes2 : lg_lanes1, z, y);
      two_sum4(d, y.hi, s);
      const lanes4 lo = s.lo + y.lo;
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
template <class K, bool Fma>
[[gnu::always_inline]] inline bool vector_apply(int64_t n, const double *x, double *f, int64_t *ivalid) {
  constexpr int block = 256;
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
      int j = 0;
      for (; j + 8 <= cnt; j += 8) {
        lanes4 xv0, xv1, fv0, fv1;
        for (int k = 0; k < 4; ++k) xv0[k] = xb[list[j + k]];
        for (int k = 0; k < 4; ++k) xv1[k] = xb[list[j + 4 + k]];
        K::template lanes<Fma>(cls, xv0, fv0);
        K::template lanes<Fma>(cls, xv1, fv1);
        for (int k = 0; k < 4; ++k) fb[list[j + k]] = fv0[k];
        for (int k = 0; k < 4; ++k) fb[list[j + 4 + k]] = fv1[k];
      }
      for (; j < cnt; j += 4) {
        const int used = cnt - j < 4 ? cnt - j : 4;
        lanes4 xv{}, fv{};
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
