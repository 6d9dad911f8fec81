// s30fa: single-barrier options in the Black-Scholes-Merton model, for m
// strikes and n expiries, with a rebate.  With b = r - q, v = sigma sqrt(t),
// mu = (b - sigma^2/2)/sigma^2, lambda = sqrt(mu^2 + 2r/sigma^2),
// L = ln(h/s), and the drift term t (b + sigma^2/2) of s30aa:
//
//   x1 = (ln(s/x) + drift)/v    x2 = (-L + drift)/v
//   y1 = (2L + ln(s/x) + drift)/v    y2 = (L + drift)/v
//   z  = L/v + lambda v
//
// and, with e = +1 (call) or -1 (put), n = +1 (down) or -1 (up):
//
//   A = e s e^{-qt} Phi(e x1) - e x e^{-rt} Phi(e (x1 - v))
//   B = the same with x2
//   C = e s e^{-qt} (h/s)^{2(mu+1)} Phi(n y1) - e x e^{-rt} (h/s)^{2mu} Phi(n (y1 - v))
//   D = the same with y2
//   E = k e^{-rt} [Phi(n (x2 - v)) - (h/s)^{2mu} Phi(n (y2 - v))]
//   F = k [(h/s)^{mu+lambda} Phi(n z) + (h/s)^{mu-lambda} Phi(n (z - 2 lambda v))]
//
//   x > h:  call DI C+E, UI A+E, DO A-C+F, UO F;
//           put  DI B-C+D+E, UI A-B+D+E, DO A-B+C-D+F, UO B-D+F
//   x <= h: call DI A-B+D+E, UI B-C+D+E, DO B-D+F, UO A-B+C-D+F;
//           put  DI A+E, UI C+E, DO F, UO A-C+F
//
// Each power of h/s is joined to the Normal probability it multiplies
// before either is formed (exp_phi, s30/exotic.h), so that neither an
// overflowing power nor an underflowing probability spoils the product.
// Where the terms cancel (a spot or a strike near the barrier, short
// expiries, small volatilities) the price is formed from differences: the
// ratios ln(s/x), ln(h/s), ln(h/x) by log1p where near 1, the knock-out
// beside its mirror image as a gap (mirror_gap), a corridor of strikes by
// the reflection identity as one integral (strike_gap), and of two exact
// arrangements of a price the one with the smaller parts (docs/s30fa.md
// gives the regions and the accuracy reached in each); a price below zero
// by rounding is returned as 0.
// Sources: R. C. Merton, Theory of rational option pricing, Bell J.
// Economics and Management Science 4 (1973) 141-183 (the down-and-out
// call); M. Rubinstein and E. Reiner, Breaking down the barriers, Risk 4(8)
// (1991) 28-35; E. G. Haug, The Complete Guide to Option Pricing Formulas,
// 2nd ed. (2007), section 4.17.1.
#include "s30/s30fa.h"

#include <cstdint>
#include <memory>
#include <new>

#include "s30/exotic.h"

inline constexpr zem::message s30fa_messages[] = {
    S30_GRID_ROWS,
    {10, 1016, NE_REAL, {"On entry, k = %s.", "Constraint: k >= 0.0."}, {"On entry, k = %s", "Constraint: k >= 0.0."}},
    {10, 1017, NE_REAL, {"On entry, k = %s.", "Constraint: k <= %s."}, {"On entry, k = %s", "Constraint: k <= %s."}},
    {12, 1030, NE_BAD_PARAM, {"On entry, btype = '%s'.", "Constraint: btype = 'DI', 'DO', 'UI' or 'UO'."}},
    {13, 1031, NE_REAL, {"On entry, h = %s.", "Constraint: h >= %s and h <= %s."},
     {"On entry, h = %s", "Constraint: h >= %s and", "h <= %s."}},
    {14, 1032, NE_ENUM_REAL_2, {"On entry, s and h are inconsistent with type:", "s = %s and h = %s."}},
};
ZEM_REGISTER_MESSAGES(s30fa)

ZEM_ENGINE_LAYERS(s30fa, S30FA_ARGS)

namespace zem::s30 {

enum class barrier : int { down_in, down_out, up_in, up_out, invalid };

inline barrier read_barrier(const char *s, size_t len) {
  if (len < 2) return barrier::invalid;
  const char a = s[0] & ~0x20, b = s[1] & ~0x20;  // upper case
  if (a == 'D' && b == 'I') return barrier::down_in;
  if (a == 'D' && b == 'O') return barrier::down_out;
  if (a == 'U' && b == 'I') return barrier::up_in;
  if (a == 'U' && b == 'O') return barrier::up_out;
  return barrier::invalid;
}

struct barrier_args {
  barrier type;
  double h, k;
};

// Of two exact arrangements p1 + p2 and q1 - q2 of one price, the one whose
// parts are smaller (the less cancellation); at the ends of the accepted
// ranges, where one arrangement holds an infinite part, the other.
inline double smaller_parts(double p1, double p2, double q1, double q2) {
  const double sp = std::fabs(p1) + std::fabs(p2), sq = std::fabs(q1) + std::fabs(q2);
  return std::isfinite(sq) && !(sp <= sq) ? q1 - q2 : p1 + p2;
}

// The powers of h/s of a grid, their logarithms and their values formed
// once: k1 = 2 (mu + 1) L, k2 = 2 mu L of the mirror terms, kr1 = (mu +
// lambda) L and kr2 = (mu - lambda) L of the knock-out's rebate (an
// exponential per price and power would cost as much as the price's
// Normal probabilities).
struct barrier_powers {
  double k1, k2, kr1, kr2, e1, e2, er1, er2;
  barrier_powers(double mu, double lam, double L)
      : k1(2.0 * (mu + 1.0) * L), k2(2.0 * mu * L), kr1((mu + lam) * L), kr2((mu - lam) * L), e1(std::exp(k1)),
        e2(std::exp(k2)), er1(std::exp(kr1)), er2(std::exp(kr2)) {}
};

// One price; the terms are formed only where the case uses them, and the
// pairs that cancel are formed as differences (see the head of the file).
inline double barrier_price(kind K, barrier B, double lsx, double lhx, double x, double L, double rq,
                            const expiry_terms &e, double lam, const barrier_powers &pw, const barrier_args &a) {
  const double ph = K == kind::call ? 1.0 : -1.0;
  const double eta = B == barrier::down_in || B == barrier::down_out ? 1.0 : -1.0;
  const double v = e.vol;
  const double xdr = x * e.dr;
  const double x1 = (lsx + e.drift) / v;
  const double x2 = (-L + e.drift) / v;
  const double y1 = (2.0 * L + lsx + e.drift) / v;
  const double y2 = (L + e.drift) / v;
  const double k1 = pw.k1, k2 = pw.k2;  // ln of the two powers of h/s
  const double dl = 2.0 * L / v;                               // y1 - x1 = y2 - x2
  const double dw = -lhx / v;                                  // x2 - x1 = y2 - y1 = ln(x/h)/v
  // A or B at u, and C or D at u.  Where v (1 + |u|) <= 1/10 the two
  // terms agree to 10% and more; then, with delta = ln(s e^{-qt} / (x
  // e^{-rt})) = ln(s/x) + (r - q) t from the accurate ln(s/x) (and 2 ln(h/s)
  // more for the mirror), the term is -e x e^{-rt} mirror_gap(e (u - v),
  // e v, delta), or the same with eta and the factor (h/s)^{2 mu}.
  const double delta = lsx + rq * e.t;
  // Far out of the money the two parts are tails of nearly equal size: by
  // the reflection identity s e^{-qt} phi(x1) = x e^{-rt} phi(x1 - v) (and
  // its mirror at y1; at x2 and y2 with a factor h/x) the term is a scaled
  // difference of Mills ratios (tail_pair).
  auto plain = [&](double u) {
    if (double tv; tail_pair(ph, u, v, e.sdq, 0.0, xdr, 0.0, tv, u == x1 ? 0.0 : lhx)) return ph * tv;
    if (v * (1.0 + std::fabs(u)) <= 0.1) return -ph * xdr * mirror_gap(ph * (u - v), ph * v, delta);
    return ph * (e.sdq * Phi(ph * u) - xdr * Phi(ph * (u - v)));
  };
  auto mirror = [&](double u) {
    if (double tv; tail_pair(eta, u, v, e.sdq, k1, xdr, k2, tv, u == y1 ? 0.0 : lhx)) return ph * tv;
    if (v * (1.0 + std::fabs(u)) <= 0.1 && std::fabs(k2) <= 700.0)
      return -ph * xdr * pw.e2 * mirror_gap(eta * (u - v), eta * v, delta + 2.0 * L);
    return ph * (e.sdq * exp_phi(k1, pw.e1, eta * u) - xdr * exp_phi(k2, pw.e2, eta * (u - v)));
  };
  // A - B at (x1, x2) and C - D at (y1, y2), the widths x2 - x1 = y2 - y1
  // = dw formed from ln(h/x) alone.
  // A strike near the barrier makes both differences small as dw^2: then
  // each is one integral (strike_gap), by the reflection identities
  // s e^{-qt} phi(x1) = x e^{-rt} phi(x1 - v) and the same with the powers
  // of h/s at y1.
  const bool narrow = std::fabs(v * dw) <= 1.0;
  auto plain_diff = [&](double u1) {
    if (narrow && short_interval(u1 - v, dw)) return -xdr * strike_gap<false>(u1 - v, dw, v, 0.0);
    // Far out of the money, A and B apart; on a long interval they differ
    // by a factor.
    if (double ta, tb; tail_pair(ph, x1, v, e.sdq, 0.0, xdr, 0.0, ta) && tail_pair(ph, x2, v, e.sdq, 0.0, xdr, 0.0, tb, lhx))
      return ph * (ta - tb);
    return -ph * (e.sdq * exp_ndiff(0.0, ph * u1, ph * dw) - xdr * exp_ndiff(0.0, ph * (u1 - v), ph * dw));
  };
  auto mirror_diff = [&](double w1) {
    if (narrow && short_interval(w1 - v, dw)) return -ph * eta * xdr * strike_gap<false>(w1 - v, dw, v, k2);
    if (double tc, td; tail_pair(eta, y1, v, e.sdq, k1, xdr, k2, tc) && tail_pair(eta, y2, v, e.sdq, k1, xdr, k2, td, lhx))
      return ph * (tc - td);
    return -ph * (e.sdq * exp_ndiff(k1, eta * w1, eta * dw) - xdr * exp_ndiff(k2, eta * (w1 - v), eta * dw));
  };
  // A - C at x1 (or B - D at x2) with the mirror's probabilities taken on
  // the side of the plain ones (C_eta - D_eta = D_-eta - C_-eta makes every
  // knock-out one of these where eta differs from the type's sign).
  auto gap = [&](double u) {
    if (double tv; u == x1 && tail_mirror_gap(ph, u, v, dl, e.sdq, k1, xdr, k2, tv)) return ph * tv;
    return ph * (e.sdq * mirror_gap(ph * u, ph * dl, k1, pw.e1) - xdr * mirror_gap(ph * (u - v), ph * dl, k2, pw.e2));
  };
  // A - B + C - D, where eta differs from the type's sign: the smaller of
  // the two exact arrangements, (A - B) + (C - D) (small where the strike
  // lies near the barrier) or (A - C') - (B - D') (small where the spot
  // does), by the size of its parts.
  auto corridor = [&]() {
    // A strike near the barrier: (A - B) + (C - D) as one integral, small
    // as dw^2, and as dw^2 ln(h/s) where the spot is near the barrier too.
    // (An interval up to four times as long as short_interval allows, in
    // pieces.)
    if (narrow && std::fabs(dl * dw) <= 1.0 && std::fabs(dw) <= 1.0 &&
        std::fabs(dw) * std::fmax(std::fabs(x1 - v), std::fabs(x1 - v + dw)) <= 4.0)
      return xdr * strike_gap<true>(x1 - v, dw, v, 0.0, dl);
    const double p1 = plain_diff(x1), p2 = mirror_diff(y1);
    double q1 = gap(x1), q2 = gap(x2);
    if (std::fabs(k1) <= 1.0 && std::fabs(k2) <= 1.0) {  // q1 - q2 at once
      q1 = ph * e.sdq * mirror_gap_between(ph * x1, ph * dw, ph * dl, k1);
      q2 = ph * xdr * mirror_gap_between(ph * (x1 - v), ph * dw, ph * dl, k2);
    }
    return smaller_parts(p1, p2, q1, q2);
  };
  // A - B + D, where eta is the type's sign (a knock-in whose strike lies
  // beyond the barrier): (A - B) + D, or A - (B - D), small near the
  // barrier, by the size of the parts as above.
  auto beyond = [&]() {
    const double p1 = plain_diff(x1), p2 = mirror(y2);
    const double q1 = plain(x1), q2 = gap(x2);
    return smaller_parts(p1, p2, q1, q2);
  };
  const bool in = B == barrier::down_in || B == barrier::up_in;
  double rebate = 0.0;
  if (a.k != 0.0) {
    if (in) {
      rebate = a.k * e.dr * mirror_gap(eta * (x2 - v), eta * dl, k2, pw.e2);
    } else {
      const double z = L / v + lam * v;
      rebate = a.k * (exp_phi(pw.kr1, pw.er1, eta * z) + exp_phi(pw.kr2, pw.er2, eta * (z - 2.0 * lam * v)));
    }
  }
  const bool above = x > a.h;
  double p = 0.0;
  if (K == kind::call) {
    switch (B) {
      case barrier::down_in: p = above ? mirror(y1) : beyond(); break;
      case barrier::up_in: p = above ? plain(x1) : plain(x2) - mirror_diff(y1); break;
      case barrier::down_out: p = above ? gap(x1) : gap(x2); break;
      case barrier::up_out: p = above ? 0.0 : corridor(); break;
      default: break;
    }
  } else {
    switch (B) {
      case barrier::down_in: p = above ? plain(x2) - mirror_diff(y1) : plain(x1); break;
      case barrier::up_in: p = above ? beyond() : mirror(y1); break;
      case barrier::down_out: p = above ? corridor() : 0.0; break;
      case barrier::up_out: p = above ? gap(x2) : gap(x1); break;
      default: break;
    }
  }
  p += rebate;
  return p < 0.0 ? 0.0 : p;  // NaN, were it possible, would show
}

}  // namespace zem::s30

ZEM_INTERNAL void s30fafn_(engine_data *, const char *calput, const char *btype, const int64_t *m, const int64_t *n,
                           const double *x, const double *s, const double *h, const double *k, const double *t,
                           const double *sigma, const double *r, const double *q, double *p, const int64_t *ldp,
                           const int64_t *order, char *errbuf, int64_t *ifail, size_t calput_len,
                           size_t btype_len) {
  using namespace zem::s30;
  *ifail = 0;
  const grid_args g{read_kind(calput, calput_len), *m, *n, x, *s, t, *sigma, *r, *q, *ldp, *order};
  // The barrier's arguments are checked after the shared ones.
  if (check_grid(g, true, calput, calput_len, errbuf, ifail)) return;
  if (!(*k >= 0.0)) return zem::fail(errbuf, ifail, 10, 1016, *k);
  if (!(*k <= hi)) return zem::fail(errbuf, ifail, 10, 1017, *k, hi);
  const barrier_args a{read_barrier(btype, btype_len), *h, *k};
  if (a.type == barrier::invalid) {
    char shown[3] = {btype_len > 0 ? btype[0] : ' ', btype_len > 1 ? btype[1] : '\0', '\0'};
    return zem::fail(errbuf, ifail, 12, 1030, static_cast<const char *>(shown));
  }
  if (!(a.h >= lo && a.h <= hi)) return zem::fail(errbuf, ifail, 13, 1031, a.h, lo, hi);
  // A down barrier lies below the spot, an up barrier above it; a spot on
  // the barrier has already touched it, and is refused as well.
  const bool down = a.type == barrier::down_in || a.type == barrier::down_out;
  if (down ? !(g.s > a.h) : !(g.s < a.h)) return zem::fail(errbuf, ifail, 14, 1032, g.s, a.h);

  // ln(s/x(i)) and ln(h/x(i)), to full relative accuracy however near the
  // two lie (the latter is the width of the differences of Normal
  // probabilities, the former sets the European terms' ratio).
  std::unique_ptr<double[]> lsx(
      static_cast<uint64_t>(g.m) <= PTRDIFF_MAX / sizeof(double) / 2 ? new (std::nothrow) double[2 * g.m] : nullptr);
  if (!lsx) return zem::alloc_fail(ifail);
  double *const lhx = lsx.get() + g.m;
  for (int64_t i = 0; i < g.m; ++i) lsx[i] = log_ratio(g.s, x[i]), lhx[i] = log_ratio(a.h, x[i]);
  const layout Ly = make_layout(g.order, g.ld);
  const double L = log_ratio(a.h, g.s);
  const double sig2 = g.sigma * g.sigma;
  // mu is held within +-2^900: beyond, only for sigma^2 below 2^-900 |b|,
  // the Normal arguments of the mirror terms are far beyond +-1e100 and the
  // price is at its limit, while 2 mu L must stay a number.
  const double mu = std::fmax(-0x1p900, std::fmin(0x1p900, ((g.r - g.q) - sig2 / 2.0) / sig2));
  const double lam = std::hypot(mu, std::sqrt(2.0 * g.r) / g.sigma);  // mu^2 may overflow
  const barrier_powers pw(mu, lam, L);
  for (int64_t j = 0; j < g.n; ++j) {
    const expiry_terms e = per_expiry(g.s, g.t[j], g.sigma, g.r, g.q);
    double *col = p + j * Ly.cj;
    for (int64_t i = 0; i < g.m; ++i)
      col[i * Ly.ri] = barrier_price(g.type, a.type, lsx[i], lhx[i], x[i], L, g.r - g.q, e, lam, pw, a);
  }
}

ZEM_API void s30faf_(const char *calput, const char *btype, const int64_t *m, const int64_t *n, const double *x,
                     const double *s, const double *h, const double *k, const double *t, const double *sigma,
                     const double *r, const double *q, double *p, const int64_t *ldp, int64_t *ifail,
                     size_t calput_len, size_t btype_len) {
  zem::f_entry call("s30faf", s30fa_messages);
  const int64_t order = zem::s30::col_major;
  s30faft_(&call.en_data, calput, btype, m, n, x, s, h, k, t, sigma, r, q, p, ldp, &order, call.errbuf,
           &call.status, calput_len, btype_len);
  call.finish(ifail);
}

ZEM_API void s30fac(Zem_OrderType order, Zem_OptionType option, Zem_BarrierType type, int64_t m, int64_t n,
                    const double x[], double s, double h, double k, const double t[], double sigma, double r,
                    double q, double p[], int64_t ldp, Zem_Fail *fail) {
  zem::c_entry call("s30fac", s30fa_messages, fail);
  const int64_t ord = zem::s30::order_code(order);
  if (!ord) return call.bad_param("order");
  const char kc = zem::s30::kind_character(option);
  if (!kc) return call.bad_param("option");
  const char *bt = type == Zem_DownandIn    ? "DI"
                   : type == Zem_DownandOut ? "DO"
                   : type == Zem_UpandIn    ? "UI"
                   : type == Zem_UpandOut   ? "UO"
                                            : nullptr;
  if (!bt) return call.bad_param("type");
  if (!x) return call.bad_param("x");
  if (!t) return call.bad_param("t");
  if (!p) return call.bad_param("p");
  s30faft_(&call.en_data, &kc, bt, &m, &n, x, &s, &h, &k, t, &sigma, &r, &q, p, &ldp, &ord, call.errbuf,
           &call.status, 1, 2);
  call.finish();
}
