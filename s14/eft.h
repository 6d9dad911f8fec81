// Error-free transformations: sums and products of doubles kept exactly as
// an unevaluated pair hi + lo.  The library is built for every x86-64, so a
// fused multiply-add is not assumed: products are split by Veltkamp's
// constant (Dekker's product), which is exact for operands below 2^996.
// Both the split and the sums rely on every operation being rounded once to
// double (the build forbids contraction into fused operations).
#pragma once

namespace zem::s14 {

struct dd {
  double hi;
  double lo;
};

// a + b = s + e exactly, for any a, b.
inline dd two_sum(double a, double b) {
  const double s = a + b;
  const double bb = s - a;
  return {s, (a - (s - bb)) + (b - bb)};
}

// a + b = s + e exactly, when |a| >= |b| (or a = 0).
inline dd fast_two_sum(double a, double b) {
  const double s = a + b;
  return {s, b - (s - a)};
}

// a = hi + lo with hi holding the upper 26 bits; |a| < 2^996.
inline dd split(double a) {
  const double c = 134217729.0 * a;  // 2^27 + 1
  const double hi = c - (c - a);
  return {hi, a - hi};
}

// a b = p + e exactly (barring underflow), for |a|, |b| < 2^996.
inline dd two_prod(double a, double b) {
  const double p = a * b;
  const dd as = split(a);
  const dd bs = split(b);
  return {p, ((as.hi * bs.hi - p) + as.hi * bs.lo + as.lo * bs.hi) + as.lo * bs.lo};
}

// (a.hi + a.lo) b, relative error about 2^-104 (not normalised).
inline dd mul(dd a, double b) {
  const dd p = two_prod(a.hi, b);
  return {p.hi, p.lo + a.lo * b};
}

// (a.hi + a.lo)(b.hi + b.lo), normalised.
inline dd mul(dd a, dd b) {
  const dd p = two_prod(a.hi, b.hi);
  return fast_two_sum(p.hi, p.lo + (a.hi * b.lo + a.lo * b.hi));
}

// (a.hi + a.lo) / (b.hi + b.lo) as a pair; |b.hi| < 2^996.
inline dd div(dd a, dd b) {
  const double q = a.hi / b.hi;
  const dd qb = two_prod(q, b.hi);
  const double r = ((a.hi - qb.hi) - qb.lo + a.lo - q * b.lo) / b.hi;
  return fast_two_sum(q, r);
}

}  // namespace zem::s14
