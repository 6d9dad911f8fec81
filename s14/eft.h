// Error-free transformations: sums and products of doubles kept exactly as
// an unevaluated pair hi + lo.  The library is built for every x86-64, so a
// fused multiply-add is not assumed: the product functions take Fma = false
// (Dekker's product, operands split by Veltkamp's constant, exact for
// operands below 2^996) or Fma = true (one fused multiply-add, for code
// compiled for processors that have it, s14/gamma_dispatch.cpp).  Both give
// the same pair, so results do not depend on the processor.
// Both the split and the sums rely on every operation being rounded once to
// double (the build forbids contraction into fused operations).
#pragma once

namespace zem::s14 {

struct dd {
  double hi;
  double lo;
};

// a + b = s + e exactly, for any a, b.
[[gnu::always_inline]] inline dd two_sum(double a, double b) {
  const double s = a + b;
  const double bb = s - a;
  return {s, (a - (s - bb)) + (b - bb)};
}

// a + b = s + e exactly, when |a| >= |b| (or a = 0).
[[gnu::always_inline]] inline dd fast_two_sum(double a, double b) {
  const double s = a + b;
  return {s, b - (s - a)};
}

// a = hi + lo with hi holding the upper 26 bits; |a| < 2^996.
[[gnu::always_inline]] inline dd split(double a) {
  const double c = 134217729.0 * a;  // 2^27 + 1
  const double hi = c - (c - a);
  return {hi, a - hi};
}

// a b = p + e exactly (barring underflow), for |a|, |b| < 2^996.
template <bool Fma>
[[gnu::always_inline]] inline dd two_prod(double a, double b) {
  const double p = a * b;
  if constexpr (Fma) return {p, __builtin_fma(a, b, -p)};
  const dd as = split(a);
  const dd bs = split(b);
  return {p, ((as.hi * bs.hi - p) + as.hi * bs.lo + as.lo * bs.hi) + as.lo * bs.lo};
}

// (a.hi + a.lo) b, relative error about 2^-104 (not normalised).
template <bool Fma>
[[gnu::always_inline]] inline dd mul(dd a, double b) {
  const dd p = two_prod<Fma>(a.hi, b);
  return {p.hi, p.lo + a.lo * b};
}

// (a.hi + a.lo)(b.hi + b.lo), normalised.
template <bool Fma>
[[gnu::always_inline]] inline dd mul(dd a, dd b) {
  const dd p = two_prod<Fma>(a.hi, b.hi);
  return fast_two_sum(p.hi, p.lo + (a.hi * b.lo + a.lo * b.hi));
}

// (a.hi + a.lo) / (b.hi + b.lo) as a pair; |b.hi| < 2^996.
template <bool Fma>
[[gnu::always_inline]] inline dd div(dd a, dd b) {
  const double q = a.hi / b.hi;
  const dd qb = two_prod<Fma>(q, b.hi);
  const double r = ((a.hi - qb.hi) - qb.lo + a.lo - q * b.lo) / b.hi;
  return fast_two_sum(q, r);
}

}  // namespace zem::s14
