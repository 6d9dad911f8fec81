// Kernels of the exotic closed forms of chapter s30 (lookback s30ba/s30bb,
// barrier s30fa, American approximation s30qc): the scaled complementary
// error function, the Mills ratio and its relatives, a power times a Normal
// probability without overflow, and a forward-mode differentiation number
// with which s30bb differentiates exactly the arithmetic s30ba performs.
//
// Notation: phi the standard Normal density, Q(w) = 1 - Phi(w) its upper
// tail, M(w) = Q(w)/phi(w) the Mills ratio (decreasing, M' = w M - 1),
// G(w) = 1 - w M(w) = -M'(w) > 0 and H(w) = phi(w) G(w) = phi(w) - w Q(w)
// = E[(Z - w)^+].
#pragma once

#include <cmath>

#include "s30/grid.h"

namespace zem::s30 {

inline constexpr double two_over_sqrt_pi = 1.1283791670955126;
inline constexpr double sqrt_half_pi = 1.2533141373155003;  // sqrt(pi/2)

// ---- A number carrying its derivatives with respect to four inputs (spot,
// volatility, rate, expiry: g[0..3]) and its second derivative with respect
// to the spot (h).  Values are formed by exactly the operations a double
// would see, so a routine run on duals returns bit for bit the prices of
// the same routine run on doubles.
struct dual {
  double v = 0, g[4] = {0, 0, 0, 0}, h = 0;
  dual() = default;
  dual(double x) : v(x) {}  // NOLINT: a constant
};

// d f where the derivative d is 0: 0 whatever f, also infinite.  At the
// ends of the accepted ranges a value may leave the double range (2(r - q)/
// sigma^2 with sigma near 2^-511) while a derivative it multiplies is 0 by
// construction (the derivative of a constant, or with respect to an input
// the value does not depend on); the product is then 0, not inf * 0.
inline double dmul(double d, double f) { return d == 0.0 ? 0.0 : d * f; }
inline double val(double x) { return x; }
inline double val(const dual &x) { return x.v; }

inline dual operator+(const dual &a, const dual &b) {
  dual r(a.v + b.v);
  for (int k = 0; k < 4; ++k) r.g[k] = a.g[k] + b.g[k];
  r.h = a.h + b.h;
  return r;
}
inline dual operator-(const dual &a, const dual &b) {
  dual r(a.v - b.v);
  for (int k = 0; k < 4; ++k) r.g[k] = a.g[k] - b.g[k];
  r.h = a.h - b.h;
  return r;
}
inline dual operator-(const dual &a) {
  dual r(-a.v);
  for (int k = 0; k < 4; ++k) r.g[k] = -a.g[k];
  r.h = -a.h;
  return r;
}
inline dual operator*(const dual &a, const dual &b) {
  dual r(a.v * b.v);
  for (int k = 0; k < 4; ++k) r.g[k] = dmul(a.g[k], b.v) + dmul(b.g[k], a.v);
  r.h = dmul(a.h, b.v) + 2.0 * dmul(a.g[0], b.g[0]) + dmul(b.h, a.v);
  return r;
}
inline dual operator/(const dual &a, const dual &b) {
  dual r(a.v / b.v);
  for (int k = 0; k < 4; ++k) r.g[k] = (a.g[k] - dmul(b.g[k], r.v)) / b.v;
  r.h = (a.h - 2.0 * dmul(r.g[0], b.g[0]) - dmul(b.h, r.v)) / b.v;
  return r;
}
inline dual operator+(const dual &a, double b) { return a + dual(b); }
inline dual operator+(double a, const dual &b) { return dual(a) + b; }
inline dual operator-(const dual &a, double b) { return a - dual(b); }
inline dual operator-(double a, const dual &b) { return dual(a) - b; }
inline dual operator*(const dual &a, double b) {
  dual r(a.v * b);
  for (int k = 0; k < 4; ++k) r.g[k] = dmul(a.g[k], b);
  r.h = dmul(a.h, b);
  return r;
}
inline dual operator*(double a, const dual &b) { return b * a; }
inline dual operator/(const dual &a, double b) { return a / dual(b); }
inline dual operator/(double a, const dual &b) { return dual(a) / b; }

// f(a) with f' = f1 and f'' = f2 at a.v.
inline dual chain(const dual &a, double f, double f1, double f2) {
  dual r(f);
  for (int k = 0; k < 4; ++k) r.g[k] = dmul(a.g[k], f1);
  r.h = dmul(a.h, f1) + dmul(a.g[0] * a.g[0], f2);
  return r;
}

// erfcx(x) = e^{x^2} erfc(x) for x >= 0 (the only arguments used): for
// x < 26 the product, with x^2 split exactly (fma) so that the exponential
// adds no error of the rounded square; beyond, the Laplace continued fraction
// erfcx(x) = (1/sqrt pi) / (x + (1/2) / (x + 1 / (x + (3/2) / (x + ...)))),
// whose 12 terms are exact to the last bit there.
inline double erfcx(double x) {
  if (x < 26.0) {
    const double x2 = x * x, e2 = std::fma(x, x, -x2);
    return std::exp(x2) * (1.0 + e2) * std::erfc(x);
  }
  if (!(x < 1e150)) return 0.5641895835477563 / x;
  double k = 0.0;
  for (int j = 12; j >= 1; --j) k = 0.5 * j / (x + k);
  return 0.5641895835477563 / (x + k);
}

inline double exp_(double x) { return std::exp(x); }
inline double log_(double x) { return std::log(x); }
inline double sqrt_(double x) { return std::sqrt(x); }
inline double erfc_(double x) { return std::erfc(x); }
inline double erfcx_(double x) { return erfcx(x); }
inline dual exp_(const dual &a) {
  const double f = std::exp(a.v);
  return chain(a, f, f, f);
}
inline dual log_(const dual &a) { return chain(a, std::log(a.v), 1.0 / a.v, -1.0 / (a.v * a.v)); }
inline dual sqrt_(const dual &a) {
  const double f = std::sqrt(a.v);
  return chain(a, f, 0.5 / f, -0.25 / (f * a.v));
}
inline dual erfc_(const dual &a) {
  const double f1 = -two_over_sqrt_pi * std::exp(-a.v * a.v);
  return chain(a, std::erfc(a.v), f1, -2.0 * a.v * f1);
}
inline dual erfcx_(const dual &a) {
  const double f = erfcx(a.v), f1 = 2.0 * a.v * f - two_over_sqrt_pi;
  return chain(a, f, f1, 2.0 * f + 2.0 * a.v * f1);
}

// Phi(y) = erfc(-y c)/2, Q(y) = erfc(y c)/2, phi(y).
template <class D> inline D Phi(const D &y) { return 0.5 * erfc_(-y * c); }
template <class D> inline D Qn(const D &y) { return 0.5 * erfc_(y * c); }
template <class D> inline D phi(const D &y) { return inv_sqrt_2pi * exp_(-0.5 * y * y); }

// M(w) for w >= 0.
template <class D> inline D mills(const D &w) { return sqrt_half_pi * erfcx_(w * c); }

// G(w) = 1 - w M(w) for w >= 0.  Below 4 the difference loses at most a
// factor 10; from 4 on, G = K M with K = 1/(w + 2/(w + 3/(w + ...))) (the
// tail of the continued fraction of M), 40 terms exact to 1e-16 at w = 4,
// 20 from w = 8.
template <class D> inline D g_mills(const D &w) {
  const D mw = mills(w);
  if (val(w) < 4.0) return 1.0 - w * mw;
  const int terms = val(w) < 8.0 ? 40 : 20;
  D k(0.0);
  for (int j = terms; j >= 2; --j) k = double(j) / (w + k);
  k = 1.0 / (w + k);
  return k * mw;
}

// Gauss-Legendre rules on [0, 1] with 4, 6, 8 and 12 nodes (node, weight).
inline constexpr double gl4[4][2] = {{0.069431844202973712388, 0.173927422568726928687}, {0.330009478207571867599, 0.326072577431273071313}, {0.669990521792428132401, 0.326072577431273071313}, {0.930568155797026287612, 0.173927422568726928687}};
inline constexpr double gl6[6][2] = {{0.0337652428984239860938, 0.0856622461895851725201}, {0.169395306766867743169, 0.180380786524069303785}, {0.380690406958401545685, 0.233956967286345523695}, {0.619309593041598454315, 0.233956967286345523695}, {0.830604693233132256831, 0.180380786524069303785}, {0.966234757101576013906, 0.0856622461895851725201}};
inline constexpr double gl8[8][2] = {{0.0198550717512318841582, 0.0506142681451881295763}, {0.101666761293186630204, 0.111190517226687235272}, {0.237233795041835507091, 0.156853322938943643669}, {0.40828267875217509753, 0.181341891689180991483}, {0.59171732124782490247, 0.181341891689180991483}, {0.762766204958164492909, 0.156853322938943643669}, {0.898333238706813369796, 0.111190517226687235272}, {0.980144928248768115842, 0.0506142681451881295763}};
inline constexpr double gl12[12][2] = {{0.00921968287664037465473, 0.0235876681932559135973}, {0.0479413718147625716608, 0.0534696629976592154801}, {0.115048662902847656482, 0.0800391642716731131673}, {0.206341022856691276352, 0.101583713361532960875}, {0.316084250500909903124, 0.11674626826917740438}, {0.437383295744265542264, 0.1245735229067013925}, {0.562616704255734457736, 0.1245735229067013925}, {0.683915749499090096876, 0.11674626826917740438}, {0.793658977143308723648, 0.101583713361532960875}, {0.884951337097152343518, 0.0800391642716731131673}, {0.952058628185237428339, 0.0534696629976592154801}, {0.990780317123359625345, 0.0235876681932559135973}};

// e^lp phi(z), with z^2 split exactly (fma) so that the exponential adds
// no rounding of the square: deep in the tails (|z| up to 38) the rounded
// square alone would carry a relative error of z^2 eps.
inline double exp_pdf(double lp, double z) {
  const double h = z * z, e = std::fma(z, z, -h);
  const double ex = std::exp(lp - 0.5 * h);
  return ex == 0.0 ? 0.0 : inv_sqrt_2pi * ex * (1.0 - 0.5 * e);
}

// e^lp phi(z) (M(z - d) - M(z)) for 0 <= z - d and d > 0: the difference
// of two Normal tail probabilities beyond w = z - d and z, scaled so that
// the common factor e^lp phi(z) is formed once:
//   e^lp' Q(w) - e^lp Q(z) = e^lp phi(z) (M(w) - M(z))
// where e^lp' phi(w) = e^lp phi(z) (the reflection identity of a European
// price, plain or mirrored).  Formed from the tail probabilities
// themselves, the two terms agree to a factor (w + d)/d and each carries a
// relative error of about w^2 eps from its rounded argument, so that far
// out of the money the difference would lose eps w^3 / d.  Here the
// difference of Mills ratios is formed directly where it loses at most a
// factor 256 of their own few units of rounding, and elsewhere it is the
// integral of G = -M' over [w, z] by the Gauss-Legendre rules of the
// lookback kernel (the same node counts for the same widths); only the
// common factor carries the rounding of z, as z^2 eps.
inline double tail_gap(double lp, double z, double d) {
  const double p = exp_pdf(lp, z);
  if (p == 0.0) return 0.0;
  const double w = z - d;
  // The two Mills ratios, each exact to a few units of rounding (their
  // arguments' rounding moves them by about eps relative), differ by
  // about max(z, 1)/d times less than they are: formed directly up to a
  // factor 256 (at most about 1e-13), beyond by the integral.
  if (std::fmax(z, 1.0) <= 256.0 * d) return p * (mills(w) - mills(z));
  const double kappa = w >= 1.0 ? d / w : d * (1.0 + w);
  auto integral = [&](const auto &rule) {
    double sum = 0.0;
    for (const auto &node : rule) sum += node[1] * g_mills(z - node[0] * d);
    return p * (d * sum);
  };
  if (kappa <= 0.025) return integral(gl4);
  if (kappa <= 0.15) return integral(gl6);
  if (kappa <= 0.35) return integral(gl8);
  return integral(gl12);
}

// S Phi(sg u) - X Phi(sg (u - v)), sg = +-1, v > 0, S = s0 e^k0 and
// X = x0 e^k1 with S phi(u) = e^gam X phi(u - v) (the reflection identity
// of a European price, gam = 0, or of a barrier's terms at x2 and y2, gam =
// ln(h/x)), where both probabilities are tails (w >= 0 below) and the
// direct difference would lose more than about 800 eps: for sg = +1, w =
// -u and the value is
//   X phi(w + v) (e^gam M(w) - M(w + v))
//     = tail_gap(ln X, w + v, v) + expm1(gam) X phi(w + v) M(w),
// for sg = -1, w = u - v and it is
//   -S phi(u) (e^-gam M(w) - M(u)) = -tail_gap(ln S, u, v) - expm1(-gam) S phi(u) M(w).
// The direct form loses about (1 + w^2) eps times the cancellation factor
// 2 (w + v)/v.  With gam != 0 the two parts are added only where they do
// not cancel (the same sign, or the second at most half the first).
// Returns false (and leaves out alone) where the direct form is used.
inline bool tail_pair(double sg, double u, double v, double s0, double k0, double x0, double k1, double &out,
                      double gam = 0.0) {
  const double w = sg > 0.0 ? -u : u - v;
  if (!(w >= 0.0) || (w + v) * (1.0 + w * w) <= 400.0 * v) return false;
  const double lp = sg > 0.0 ? std::log(x0) + k1 : std::log(s0) + k0, z = sg > 0.0 ? w + v : u;
  const double t = tail_gap(lp, z, v);
  if (gam == 0.0) {
    out = sg * t;
    return true;
  }
  const double g = std::expm1(sg * gam), extra = g * exp_pdf(lp, z) * mills(w);
  if (!(g >= 0.0 || std::fabs(extra) <= 0.5 * t)) return false;
  out = sg * (t + extra);
  return true;
}

// A knock-out beside its mirror image far out of the money:
//   T(u) - T'(u + dl),  T(u) = S Phi(sg u) - X Phi(sg (u - v)),
//   T'(y) = the same with S e^k0, X e^k1 (S phi(u) = X phi(u - v), and
//   likewise for the mirror at y = u + dl),
// where both are tails (tail_pair).  With F(a) = phi(a + v) (M(a) - M(a +
// v)), whose derivative is -v phi(a + v) M(a), T(u) = X F(-u) for sg = +1
// and -S F(u - v) for sg = -1, and, with w the argument of T and w' = w -
// sg dl that of T' and e^k the power of the side used,
//   X F(w) - X e^k F(w') = X [v int_w^w' phi(a + v) M(a) da - expm1(k) F(w')]
// (and -S times the same for sg = -1): where the spot lies near the
// barrier (|dl| and k small) the two terms are each small as ln(h/s) and
// no longer cancel.  The integral is by the Gauss-Legendre rules of the
// lookback kernel.  Elsewhere the two tails are formed apart and
// subtracted (they differ by a factor).  Returns false where either is no
// tail.
inline bool tail_mirror_gap(double sg, double u, double v, double dl, double s0, double k0, double x0, double k1,
                            double &out) {
  double t1, t2;
  if (!tail_pair(sg, u, v, s0, 0.0, x0, 0.0, t1) || !tail_pair(sg, u + dl, v, s0, k0, x0, k1, t2)) return false;
  const double k = sg > 0.0 ? k1 : k0;
  // The width from dl alone: w2 - w would carry the rounding of w.
  const double w = sg > 0.0 ? -u : u - v, width = -sg * dl, w2 = w + width;
  const double kappa = std::fabs(width) * std::fmax(std::fmax(w, w2) + v, 1.0);
  if (std::fabs(k) > 1.0 || kappa > 1.0) {
    out = t1 - t2;
    return true;
  }
  const double lp = std::log(sg > 0.0 ? x0 : s0);
  auto integral = [&](const auto &rule) {
    double sum = 0.0;
    for (const auto &node : rule) {
      const double a = w + node[0] * width;
      sum += node[1] * (exp_pdf(lp, a + v) * mills(a));
    }
    return v * width * sum;
  };
  const double in = kappa <= 0.025 ? integral(gl4) : kappa <= 0.15 ? integral(gl6) : kappa <= 0.35 ? integral(gl8) : integral(gl12);
  // X e^k F(w') is t2 (or -t2 for sg = -1); X F(w') = that over e^k.
  const double f2 = (sg > 0.0 ? t2 : -t2) * std::exp(-k);
  out = sg * (in - std::expm1(k) * f2);
  return true;
}

// The reflection kernel of the floating-strike lookback,
//   L(z, d) = phi(z) (M(z - d) - M(z)) / d,   L(z, 0) = H(z),
// a divided difference of the Mills ratio.  Where M varies little over
// [z - d, z] the difference would cancel, and L is the mean of
// phi(z) G(w) over that interval, by a Gauss-Legendre rule (the integrand is
// analytic and, in that regime, changes by a factor of at most about e);
// elsewhere the two values of M differ by a factor, and the difference is
// formed directly.  phi(z) M(w) and phi(z) G(w) are formed as
// Q(w) e^{(w^2 - z^2)/2} and H(w) e^{(w^2 - z^2)/2} for w < 0, where M(w)
// and G(w) alone could overflow.  The kernel returns pre L(z, d), pre =
// s e^{-qt} > 0; at w = z - d the factor s e^{-qt} e^{(w^2 - z^2)/2} is
// formed as s e^{ex}, ex passed in from the model's own quantities (z and d
// may be huge, and their rounding would swamp the exponent; ex itself is
// never positive where it is used).
template <class D> inline D lookback_kernel(const D &z, const D &d, const D &s, const D &pre, const D &ex) {
  const double zv = val(z), dv = val(d);
  if (!std::isfinite(zv)) return D(0.0);  // phi(z) = 0 and L -> 0
  const double wlo = std::fmin(zv, zv - dv);
  const bool quad = wlo >= 1.0 ? std::fabs(dv) <= wlo : std::fabs(dv) * (1.0 + std::fabs(wlo)) <= 1.0;
  if (quad) {
    // The fewest nodes that integrate phi(z) G(w) over [z - d, z] to the
    // last bit: with kappa = |d| / max(w_lo, 1) for w_lo >= 1 and
    // |d| (1 + |w_lo|) below, at most 1.6e-16 relative error (checked in
    // 30 digits over w_lo in [-30, 1000]) for 4 nodes to kappa 0.025, 6 to
    // 0.15, 8 to 0.35 and 12 to 1.
    const double kappa = wlo >= 1.0 ? std::fabs(dv) / wlo : std::fabs(dv) * (1.0 + std::fabs(wlo));
    const D pz = phi(z);
    auto integral = [&](const auto &rule) {
      D sum(0.0);
      for (const auto &node : rule) {
        const D sd = node[0] * d;
        const D w = z - sd;
        if (val(w) >= 0.0)
          sum = sum + node[1] * (pz * g_mills(w));
        else
          sum = sum + node[1] * ((phi(w) - w * Qn(w)) * exp_(-0.5 * sd * (2.0 * z - sd)));
      }
      return pre * sum;
    };
    if (kappa <= 0.025) return integral(gl4);
    if (kappa <= 0.15) return integral(gl6);
    if (kappa <= 0.35) return integral(gl8);
    return integral(gl12);
  }
  const D w = z - d;
  const D pm = val(w) >= 0.0 ? pre * (phi(z) * mills(w)) : s * (Qn(w) * exp_(ex));
  return (pm - pre * Qn(z)) / d;
}

// e^a Phi(y) without overflow of e^a or underflow of Phi(y) spoiling the
// product: for y >= -20 the plain product; below, Phi(y) =
// erfcx(-y c) e^{-y^2/2} / 2 and the exponents are added first.
inline double exp_phi(double a, double y) {
  if (y >= -20.0) {
    const double pr = 0.5 * std::erfc(-y * c);
    if (pr == 0.0) return 0.0;  // y = -inf: no inf * 0 from a huge power
    return a <= 709.0 ? std::exp(a) * pr : std::exp(a - 709.0) * (pr * std::exp(709.0));
  }
  const double e = a - 0.5 * y * y;
  // inf - inf only where both factors left the double range together, at
  // the ends of the accepted arguments; the terms formed with exp_phi are
  // probabilities under a changed measure, and the product is taken as 0.
  return std::isnan(e) ? 0.0 : 0.5 * erfcx(-y * c) * std::exp(e);
}

// exp_phi(a, y) with ea = e^a formed by the caller (once for a whole grid
// where a is fixed, as the powers of h/s of a barrier): the same product,
// bit for bit, without an exponential per call where it is a plain one.
inline double exp_phi(double a, double ea, double y) {
  if (y >= -20.0 && a <= 709.0) {
    const double pr = 0.5 * std::erfc(-y * c);
    return pr == 0.0 ? 0.0 : ea * pr;
  }
  return exp_phi(a, y);
}

// ln(a/b) for a, b > 0, to full relative accuracy however near a lies to
// b (the difference of the two logarithms would carry their rounding,
// eps |ln a|, into a result that may be as small as eps).  Beyond a factor
// 2 the logarithm of the rounded quotient is within about 2 eps absolute
// (the difference of the logarithms would carry eps (|ln a| + |ln b|),
// and far out of the money a price moves by |d| times the error of its
// Normal argument d); the difference is kept only where the quotient
// leaves the normal range.
inline double log_ratio(double a, double b) {
  const double d = a - b;  // exact for b/2 <= a <= 2b
  if (a >= 0.5 * b && a <= 2.0 * b) return std::log1p(d / b);
  const double q = a / b;
  return std::isnormal(q) && q < 0x1p1023 ? std::log(q) : std::log(a) - std::log(b);
}

// e^ex (Phi(b + w) - Phi(b)) to a few units of rounding relative to itself,
// for either sign of the width w, however small: w is passed on its own so
// that it carries no rounding of b.  Where the interval between b and b + w
// is short (|w| at most 1, and |w| max(|b|, |b + w|) at most 1, so that phi
// changes by a factor of at most e over it) the difference is the integral
// of phi over the interval, by the Gauss-Legendre rules of the lookback
// kernel (the same node counts for the same kappa = |w| max(|b|, |b + w|,
// 1)), with e^ex folded into each exponent; elsewhere the two tail
// probabilities on the same side of 0 differ by a factor of at least
// e^{1/2} (or the interval holds 0 and is longer than 1), and their
// difference loses at most a factor 2.6.
inline double exp_ndiff(double ex, double b, double w) {
  if (w == 0.0) return 0.0;
  const double a = b + w;
  const double sg = w > 0.0 ? 1.0 : -1.0;
  const double top = std::fmax(a, b), bot = std::fmin(a, b), aw = std::fabs(w);
  const double mx = std::fmax(std::fabs(a), std::fabs(b));
  if (aw <= 1.0 && aw * mx <= 1.0) {
    const double kappa = aw * std::fmax(mx, 1.0);
    auto integral = [&](const auto &rule) {
      double sum = 0.0;
      for (const auto &node : rule) {
        const double y = b + node[0] * w;
        sum += node[1] * std::exp(ex - 0.5 * y * y);
      }
      return w * inv_sqrt_2pi * sum;
    };
    if (kappa <= 0.025) return integral(gl4);
    if (kappa <= 0.15) return integral(gl6);
    if (kappa <= 0.35) return integral(gl8);
    return integral(gl12);
  }
  if (bot >= 0.0) return sg * (exp_phi(ex, -bot) - exp_phi(ex, -top));  // Q(bot) - Q(top)
  return sg * (exp_phi(ex, top) - exp_phi(ex, bot));
}

// Phi(g) - e^{al} Phi(g + dl): the bracket of a knock-out term beside its
// mirror image, which vanishes as the spot reaches the barrier (dl and al
// both proportional to ln(h/s)).  For |al| <= 1 it is formed as
// (Phi(g) - Phi(g + dl)) - expm1(al) Phi(g + dl), each part to full
// relative accuracy; beyond, e^{al} differs from 1 by a factor, and the
// direct form is as good.
// The direct form is kept wherever its error stays below about 64 units
// of rounding: each term carries about (1 + g^2) eps from its rounded
// argument, and the difference magnifies that by max(a, b)/|a - b|; so
// the integral, several times the cost, is formed only where it is needed
// (a spot near the barrier), not over the common region.
inline double mirror_gap(double g, double dl, double al, double eal) {
  const double a = 0.5 * std::erfc(-g * c), b = exp_phi(al, eal, g + dl);
  if (std::fabs(al) > 1.0 || 64.0 * std::fabs(a - b) >= (1.0 + g * g) * std::fmax(a, b)) return a - b;
  return -exp_ndiff(0.0, g, dl) - std::expm1(al) * (0.5 * std::erfc(-(g + dl) * c));
}
inline double mirror_gap(double g, double dl, double al) { return mirror_gap(g, dl, al, std::exp(al)); }

// mirror_gap(g) - mirror_gap(g + w) for |al| <= 1 (the caller checks):
//   (Phi(g + w) - Phi(g + w + dl)) - (Phi(g) - Phi(g + dl))
//     + expm1(al) (Phi(g + dl + w) - Phi(g + dl)),
// each difference formed by exp_ndiff, so that the two gaps, each small as
// ln(h/s) near the barrier, are not subtracted as whole numbers.
inline double mirror_gap_between(double g, double w, double dl, double al) {
  return exp_ndiff(0.0, g + w, dl) - exp_ndiff(0.0, g, dl) + std::expm1(al) * exp_ndiff(0.0, g + dl, w);
}

// Whether the interval from b to b + w is short for the Normal density:
// |w| <= 1 and |w| max(|b|, |b + w|) <= 1 (phi changes by a factor of at
// most e over it).
inline bool short_interval(double b, double w) {
  const double aw = std::fabs(w);
  return aw <= 1.0 && aw * std::fmax(std::fabs(b), std::fabs(b + w)) <= 1.0;
}

// int_0^w e^ex phi(y0 + a) expm1(-v a) F(a) da, F = 1 or, with the
// mirror, F(a) = expm1(dl (w - a)), for a short interval from
// y0 to y0 + w with |v w| <= 1 and |dl w| <= 1 (the caller checks), by
// the Gauss-Legendre rules of exp_ndiff (kappa = |w| max(|y0|, |y0 + w|,
// v, |dl|, 1)).  It is the difference of two vanilla terms over a
// corridor of strikes: with s e^{-qt} phi(d1 + a) = x e^{-rt} phi(d2 + a)
// e^{-v a} (d2 = d1 - v),
//   s e^{-qt} (Phi(d1 + w) - Phi(d1)) - x e^{-rt} (Phi(d2 + w) - Phi(d2))
//     = x e^{-rt} int_0^w phi(d2 + a) expm1(-v a) da,
// small as w^2 where the two differences are each small as w; and with
// its mirror image (the same with e^k phi(d2 + dl + a), e^k = (h/s)^{2 mu},
// dl = 2 ln(h/s)/v), phi(y) - e^k phi(y + dl) = -phi(y) expm1(k - dl (y +
// dl/2)), whose exponent is, exactly, dl (w - a) (w = ln(x/h)/v, y = d2 +
// a): formed so, it carries no rounding of k, and the knock-out's corridor
// is small as w^2 times ln(h/s) near the barrier.
template <bool Mirror>
inline double strike_gap(double y0, double w, double v, double ex, double dl = 0.0) {
  const double mx = std::fmax(std::fmax(std::fabs(y0), std::fabs(y0 + w)), std::fmax(std::fmax(v, std::fabs(dl)), 1.0));
  const double kappa = std::fabs(w) * mx;
  // Beyond kappa = 1 (up to 4, where the caller allows it) the interval is
  // cut into ceil(kappa) pieces of 12 nodes each; the integrand keeps one
  // sign throughout, so the sum cancels nowhere.
  const int pieces = kappa <= 1.0 ? 1 : static_cast<int>(std::ceil(std::fmin(kappa, 4.0)));
  const double hw = w / pieces;
  auto integral = [&](const auto &rule) {
    double sum = 0.0;
    for (int j = 0; j < pieces; ++j)
      for (const auto &node : rule) {
        const double a = (j + node[0]) * hw, y = y0 + a;
        double f = std::exp(ex - 0.5 * y * y) * std::expm1(-v * a);
        if constexpr (Mirror) f *= std::expm1(dl * (w - a));
        sum += node[1] * f;
      }
    return hw * inv_sqrt_2pi * sum;
  };
  return kappa <= 0.025 ? integral(gl4) : kappa <= 0.15 ? integral(gl6) : kappa <= 0.35 ? integral(gl8) : integral(gl12);
}

}  // namespace zem::s30
