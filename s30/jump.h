// What s30ja and s30jb share: Merton's jump-diffusion model with jumps of
// mean relative size zero, priced as a Poisson mixture of Black-Scholes
// prices.
//
// Model.  sigma is the total volatility, jvol = gamma the share of the total
// variance that comes from the jumps, lambda the jump intensity.  The log
// price diffuses with variance rate (1 - gamma) sigma^2 and jumps at the
// times of a Poisson process of intensity lambda; each jump multiplies the
// price by a lognormal factor J with E[J] = 1 and Var(ln J) = delta^2 =
// gamma sigma^2 / lambda, so that no drift correction arises and the total
// variance rate is sigma^2.  Given i jumps up to t the price is lognormal
// with total variance
//     V_i = sigma^2 ((1 - gamma) t + i gamma / lambda),
// and the price is
//     p = sum_i w_i B(V_i),   w_i = e^{-mu} mu^i / i!,   mu = lambda t,
// B the Black-Scholes price (dividend yield 0) at volatility
// sigma_i = sqrt(V_i / t).  (R. C. Merton, Option pricing when underlying
// stock returns are discontinuous, J. Financial Economics 3 (1976) 125-144.)
//
// Summation and truncation.  The weights are summed from the mode outwards:
// for mu < 32 from i = 0 with w_0 = e^{-mu}; else from M = floor(mu), with
// ln w_M by Stirling's series to the 1/M^7 term (truncation below 2e-17),
// written as -(mu - M) + M log1p((mu - M)/M) - ln(2 pi M)/2 - ... so that
// nothing cancels.  Each term B(V_i) lies in [0, b], b = s for a call and
// x e^{-rt} for a put, and the neglected tails obey
//     sum_{j > i} w_j <= w_{i+1} / (1 - mu/(i+2))        (i + 2 > mu),
//     sum_{j < i} w_j <= w_{i-1} / (1 - (i-1)/mu)        (i - 1 < mu),
// so a direction ends when b times its tail bound is below 2^-54 times the
// partial sum (half an ulp), or its weight has underflowed, or after at most
// 60 + 40 sqrt(mu) terms: beyond that many standard deviations the Poisson
// tail mass is below e^-700 whatever mu.  With lambda t <= 2^24 (a checked
// bound) a price costs at most about 330000 terms, usually a few dozen.
#pragma once

#include <cmath>
#include <cstdint>

#include "s30/grid.h"

namespace zem::s30 {

// The largest lambda * t(j) accepted.
inline constexpr double max_mu = 0x1p24;

// The total standard deviation of the i-jump term, held below 2^500 (there
// the term is its limit already: phi(d1) = 0, N(d1) = 1, N(d2) = 0).
inline double jump_vol(double sigma, double gamma, double lambda, double t, double i) {
  const double v = sigma * std::sqrt((1.0 - gamma) * t + i * (gamma / lambda));
  return v <= 0x1p500 ? v : 0x1p500;
}

// Poisson weights from the mode outwards.  `first` is where the walk
// starts and its weight.
struct poisson_start {
  double i0, w0;
};
inline poisson_start poisson_mode(double mu) {
  if (mu < 32.0) return {0.0, std::exp(-mu)};
  const double M = std::floor(mu);
  const double f = (mu - M) / M;
  const double r = 1.0 / M, r2 = r * r;
  const double stirling = r * (1.0 / 12.0 - r2 * (1.0 / 360.0 - r2 * (1.0 / 1260.0 - r2 / 1680.0)));
  const double lw = -(mu - M) + M * std::log1p(f) - 0.5 * std::log(2.0 * M_PI * M) - stirling;
  return {M, std::exp(lw)};
}

// The Poisson mixture: term(i, w) adds w times the i-jump term to the
// caller's sums and returns the price term B_i; `sum` gives the current
// price sum.  Walks up from the mode, then down.
template <typename Term, typename Sum>
inline void poisson_mixture(double mu, double bound, Term &&term, Sum &&sum) {
  const poisson_start st = poisson_mode(mu);
  const double cap = 60.0 + 40.0 * std::sqrt(mu);
  const double half_ulp = 0x1p-54;
  // Upwards from the mode (inclusive).
  double w = st.w0, i = st.i0;
  for (double k = 0; k <= cap; k += 1.0) {
    term(i, w);
    const double wn = w * mu / (i + 1.0);
    if (wn == 0.0) break;
    if (i + 2.0 > mu) {
      const double tail = wn / (1.0 - mu / (i + 2.0)) * bound;
      if (tail <= half_ulp * std::fabs(sum())) break;
    }
    w = wn;
    i += 1.0;
  }
  // Downwards from below the mode.
  w = st.w0;
  i = st.i0;
  for (double k = 0; k <= cap && i >= 1.0; k += 1.0) {
    const double wp = w * i / mu;
    w = wp;
    i -= 1.0;
    if (w == 0.0) break;
    term(i, w);
    if (i >= 1.0 && i - 1.0 < mu) {
      const double tail = w * i / mu / (1.0 - (i - 1.0) / mu) * bound;
      if (tail <= half_ulp * std::fabs(sum())) break;
    }
  }
}

// The Black-Scholes price and sensitivities (dividend yield 0) of one term:
// total deviation v = sigma_i sqrt(t), d1 = (ln s - ln x + r t)/v + v/2.
// The formulas are those of s30ab (docs/s30ab.md) with q = 0.
struct bs_term {
  double price, delta, gamma, vega, theta, rho, vanna, charm, speed, colour, zomma, vomma;
};

inline double held_d(double d) { return std::fabs(d) <= 1e150 ? d : std::copysign(1e150, d); }

template <kind K>
inline double bs_price(double lnsx_rt, double v, double hs, double hk) {
  const double d1 = lnsx_rt / v + 0.5 * v;
  const double d2 = d1 - v;
  if constexpr (K == kind::call)
    return hs * zem::s15::erfc(-d1 * c) - hk * zem::s15::erfc(-d2 * c);
  else
    return -(hs * zem::s15::erfc(d1 * c) - hk * zem::s15::erfc(d2 * c));
}

template <kind K>
inline bs_term bs_greeks(double s, double x, double t, double sqrt_t, double r, double dr, double lnsx_rt,
                         double v) {
  bs_term o{};
  const double sig = v / sqrt_t;
  const double d1 = lnsx_rt / v + 0.5 * v;
  const double d2 = d1 - v;
  const double sg = K == kind::call ? -1.0 : 1.0;
  const double e1 = zem::s15::erfc(sg * d1 * c), e2 = zem::s15::erfc(sg * d2 * c);
  const double hs = 0.5 * s, hk = 0.5 * x * dr;
  o.price = K == kind::call ? hs * e1 - hk * e2 : -(hs * e1 - hk * e2);
  const double n1 = 0.5 * e1, n2 = 0.5 * e2;
  const double xdr = x * dr;
  const double h1 = held_d(d1), h2 = held_d(d2);
  const double phi = inv_sqrt_2pi * std::exp(-0.5 * h1 * h1);
  double theta_phi = 0, charm_phi = 0;
  if (phi != 0.0) {
    const double gt = r / v - h2 / (2.0 * t);
    o.gamma = phi / s / v;
    o.vega = s * phi * sqrt_t;
    theta_phi = -s * phi * sig / (2.0 * sqrt_t);
    charm_phi = -phi * gt;
    o.vanna = -phi * h2 / sig;
    o.speed = -o.gamma * (h1 / v + 1.0) / s;
    o.colour = o.gamma * (0.5 / t + h1 * gt);
    o.zomma = o.gamma * (h1 * h2 - 1.0) / sig;
    o.vomma = o.vega * h1 * h2 / sig;
  }
  if constexpr (K == kind::call) {
    o.delta = n1;
    o.theta = theta_phi - r * xdr * n2;
    o.rho = xdr * t * n2;
  } else {
    o.delta = -n1;
    o.theta = theta_phi + r * xdr * n2;
    o.rho = -xdr * t * n2;
  }
  o.charm = charm_phi;
  return o;
}

}  // namespace zem::s30

// The message rows of the jump parameters.
#define S30_JUMP_ROWS                                                                                     \
  {12, 1021, NE_REAL, {"On entry, lambda = %s.", "Constraint: lambda > 0.0."},                            \
   {"On entry, lambda = %s", "Constraint: lambda > 0.0."}},                                               \
      {13, 1022, NE_REAL, {"On entry, jvol = %s.", "Constraint: jvol >= 0.0 and jvol < 1.0."},            \
       {"On entry, jvol = %s", "Constraint: jvol >= 0.0 and jvol < 1.0."}},                               \
      {14, 1023, NE_REAL_2, {"On entry, lambda = %s and t[%s] = %s.", "Constraint: lambda*t[i] <= %s."}, \
       {"On entry, lambda = %s and", "t(%s+1) = %s", "Constraint: lambda*t(i) <= %s."}}

namespace zem::s30 {

// The checks of the jump parameters, after the grid's.
inline bool check_jump(double lambda, double jvol, const double *t, int64_t n, char *errbuf, int64_t *ifail) {
  if (!(lambda > 0.0)) return zem::fail(errbuf, ifail, 12, 1021, lambda), true;
  if (!(jvol >= 0.0 && jvol < 1.0)) return zem::fail(errbuf, ifail, 13, 1022, jvol), true;
  for (int64_t j = 0; j < n; ++j)
    if (!(lambda * t[j] <= max_mu)) return zem::fail(errbuf, ifail, 14, 1023, lambda, j, t[j], max_mu), true;
  return false;
}

}  // namespace zem::s30
