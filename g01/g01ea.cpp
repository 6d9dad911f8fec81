// g01ea: standard Normal tail probabilities through erfc and erf.
//
// With z = x c, c = 1/sqrt(2):
//   P(X <= x)      = erfc(-z) / 2
//   P(X >= x)      = erfc(z) / 2
//   P(|X| >= |x|)  = erfc(|z|)
//   P(|X| <= |x|)  = erf(|z|)
// No branch forms 1 - P: a small tail probability keeps its full relative
// accuracy (P(X >= 30) = 4.9e-198, not 0).  Only 'C' uses erf.
//
// Accuracy.  A relative perturbation d of z moves erfc(z) relatively by
// about s d, s = 2 z exp(-z^2) / (sqrt(pi) erfc(z)), which grows like
// 2 z^2 + 1.  The product x c is rounded (|d| <= 2^-53), and c =
// 0.7071067811865475 = 0x1.6a09e667f3bccp-1 itself lies 8.9e-17 (0.80 units
// of 2^-53) below 1/sqrt(2) (the double nearest 1/sqrt(2) is
// 0x1.6a09e667f3bcdp-1).  In the far tails these two, not erfc, set the
// error: up to about 1.8 (2 z^2 + 1) units in the last place (1726 units at
// x = -36.9); docs/g01ea.md has the measured figures.
#include "g01/g01ea.h"

#include <cmath>

#include "g01/tail.h"
#include "s15/error_functions.h"

inline constexpr zem::message g01ea_messages[] = {
    {1, 1001, NE_BAD_PARAM, {"On entry, tail = '%s'.", "Constraint: tail = 'L', 'U', 'S' or 'C'."}},
};

ZEM_ENGINE_LAYERS(g01ea, G01EA_ARGS)

namespace {

constexpr double c = 0.7071067811865475;  // 1/sqrt(2) as the routine defines it

// The failure, kept out of the worker's straight path (see g01fa.cpp).
[[gnu::cold, gnu::noinline]] void fail_tail(char *errbuf, int64_t *ifail, const char *tail, size_t tail_len) {
  zem::fail(errbuf, ifail, 1, 1001, zem::g01::shown_tail(tail, tail_len));
}

}  // namespace

ZEM_INTERNAL void g01eafn_(engine_data *, const char *tail, const double *x, double *result, char *errbuf,
                           int64_t *ifail, size_t tail_len) {
  using zem::g01::tail_kind;
  *ifail = 0;
  *result = 0.0;
  const tail_kind t = zem::g01::read_tail(tail, tail_len);
  if (t == tail_kind::invalid) return fail_tail(errbuf, ifail, tail, tail_len);

  const double v = *x;
  switch (t) {
    case tail_kind::lower: *result = 0.5 * zem::s15::erfc(-v * c); break;
    case tail_kind::upper: *result = 0.5 * zem::s15::erfc(v * c); break;
    case tail_kind::signif: *result = zem::s15::erfc(std::fabs(v) * c); break;
    default: *result = zem::s15::erf(std::fabs(v) * c); break;
  }
}

ZEM_API double g01eaf_(const char *tail, const double *x, int64_t *ifail, size_t tail_len) {
  zem::f_entry call("g01eaf", g01ea_messages);
  double result = 0.0;
  g01eaft_(&call.en_data, tail, x, &result, call.errbuf, &call.status, tail_len);
  call.finish(ifail);
  return result;
}

ZEM_API double g01eac(Zem_TailProbability tail, double x, Zem_Fail *fail) {
  zem::c_entry call("g01eac", g01ea_messages, fail);
  const char t = zem::g01::tail_character(tail);
  if (!t) {
    call.bad_param("tail");
    return 0.0;
  }
  double result = 0.0;
  g01eaft_(&call.en_data, &t, &x, &result, call.errbuf, &call.status, 1);
  call.finish();
  return result;
}
