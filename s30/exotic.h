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
  for (int k = 0; k < 4; ++k) r.g[k] = a.g[k] * b.v + a.v * b.g[k];
  r.h = a.h * b.v + 2.0 * a.g[0] * b.g[0] + a.v * b.h;
  return r;
}
inline dual operator/(const dual &a, const dual &b) {
  dual r(a.v / b.v);
  for (int k = 0; k < 4; ++k) r.g[k] = (a.g[k] - r.v * b.g[k]) / b.v;
  r.h = (a.h - 2.0 * r.g[0] * b.g[0] - r.v * b.h) / b.v;
  return r;
}
inline dual operator+(const dual &a, double b) { return a + dual(b); }
inline dual operator+(double a, const dual &b) { return dual(a) + b; }
inline dual operator-(const dual &a, double b) { return a - dual(b); }
inline dual operator-(double a, const dual &b) { return dual(a) - b; }
inline dual operator*(const dual &a, double b) {
  dual r(a.v * b);
  for (int k = 0; k < 4; ++k) r.g[k] = a.g[k] * b;
  r.h = a.h * b;
  return r;
}
inline dual operator*(double a, const dual &b) {
  dual r(a * b.v);
  for (int k = 0; k < 4; ++k) r.g[k] = a * b.g[k];
  r.h = a * b.h;
  return r;
}
inline dual operator/(const dual &a, double b) { return a / dual(b); }
inline dual operator/(double a, const dual &b) { return dual(a) / b; }

// f(a) with f' = f1 and f'' = f2 at a.v.
inline dual chain(const dual &a, double f, double f1, double f2) {
  dual r(f);
  for (int k = 0; k < 4; ++k) r.g[k] = f1 * a.g[k];
  r.h = f1 * a.h + f2 * a.g[0] * a.g[0];
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

// 16-point Gauss-Legendre rule on [0, 1] (nodes, weights).
inline constexpr double gl16[16][2] = {
    {0.00529953250417503370192, 0.0135762297058770474259}, {0.027712488463383711961, 0.0311267619693239464314},
    {0.0671843988060841280598, 0.047579255841246392405},   {0.122297795822498483052, 0.0623144856277669360262},
    {0.191061877798678125777, 0.0747979944082883660408},   {0.270991611171386306829, 0.0845782596975012690947},
    {0.359198224610370543385, 0.0913017075224617944334},   {0.452493745081181279907, 0.0947253052275342481427},
    {0.547506254918818720093, 0.0947253052275342481427},   {0.640801775389629456615, 0.0913017075224617944334},
    {0.729008388828613693171, 0.0845782596975012690947},   {0.808938122201321874223, 0.0747979944082883660408},
    {0.877702204177501516948, 0.0623144856277669360262},   {0.93281560119391587194, 0.047579255841246392405},
    {0.972287511536616288039, 0.0311267619693239464314},   {0.994700467495824966298, 0.0135762297058770474259},
};

// The reflection kernel of the floating-strike lookback,
//   L(z, d) = phi(z) (M(z - d) - M(z)) / d,   L(z, 0) = H(z),
// a divided difference of the Mills ratio.  Where M varies little over
// [z - d, z] the difference would cancel, and L is the mean of
// phi(z) G(w) over that interval, by the 16-point rule (the integrand is
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
    const D pz = phi(z);
    D sum(0.0);
    for (const auto &node : gl16) {
      const D sd = node[0] * d;
      const D w = z - sd;
      if (val(w) >= 0.0)
        sum = sum + node[1] * (pz * g_mills(w));
      else
        sum = sum + node[1] * ((phi(w) - w * Qn(w)) * exp_(-0.5 * sd * (2.0 * z - sd)));
    }
    return pre * sum;
  }
  const D w = z - d;
  const D pm = val(w) >= 0.0 ? pre * (phi(z) * mills(w)) : s * (Qn(w) * exp_(ex));
  return (pm - pre * Qn(z)) / d;
}

// e^a Phi(y) without overflow of e^a or underflow of Phi(y) spoiling the
// product: for y >= -20 the plain product; below, Phi(y) =
// erfcx(-y c) e^{-y^2/2} / 2 and the exponents are added first.
inline double exp_phi(double a, double y) {
  if (y >= -20.0) return a <= 709.0 ? std::exp(a) * 0.5 * std::erfc(-y * c) : std::exp(a - 709.0) * (0.5 * std::erfc(-y * c) * std::exp(709.0));
  const double e = a - 0.5 * y * y;
  // inf - inf only where both factors left the double range together, at
  // the ends of the accepted arguments; the terms formed with exp_phi are
  // probabilities under a changed measure, and the product is taken as 0.
  return std::isnan(e) ? 0.0 : 0.5 * erfcx(-y * c) * std::exp(e);
}

}  // namespace zem::s30
