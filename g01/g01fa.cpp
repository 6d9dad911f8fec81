// g01fa: standard Normal deviates from tail probabilities, by the Normal
// inverse kernel Q (AS 241, g05/normal_inverse.cpp), Q(p) = x with
// P(X <= x) = p:
//   'L'  Q(p)
//   'U'  -Q(p)            (not Q(1 - p), which would lose small p)
//   'S'  -Q(p/2)          (non-negative)
//   'C'  Q(p/2 + 1/2)     (formed in that order)
// The 'C' argument p/2 + 1/2 is rounded to the spacing 2^-53 of doubles below
// 1: for p below 2^-53 it is 1/2 and the deviate 0, and for p near 1 the
// distance 1 - (p/2 + 1/2) keeps only part of 1 - p (p = 1 - 2^-53 even
// rounds to 1, and the safe-range guard gives 37.5); docs/g01fa.md has the
// figures.
#include "g01/g01fa.h"

#include "g01/tail.h"
#include "g05/normal_inverse.h"

// Both ends of 0 < p < 1 share status 2; the detail code tells them apart.
inline constexpr zem::message g01fa_messages[] = {
    {1, 1001, NE_BAD_PARAM, {"On entry, tail = '%s'.", "Constraint: tail = 'L', 'U', 'S' or 'C'."}},
    {2, 99998, NE_REAL_ARG_LE, {"On entry, p = %s.", "Constraint: p > 0.0."}},
    {2, 89998, NE_REAL_ARG_GE, {"On entry, p = %s.", "Constraint: p < 1.0."}},
};

ZEM_ENGINE_LAYERS(g01fa, G01FA_ARGS)

namespace {

// The failures, kept out of the worker's straight path: the worker is called
// in loops, and its success path should not pay for writing a record.
[[gnu::cold, gnu::noinline]] void fail_tail(char *errbuf, int64_t *ifail, const char *tail, size_t tail_len) {
  zem::fail(errbuf, ifail, 1, 1001, zem::g01::shown_tail(tail, tail_len));
}
[[gnu::cold, gnu::noinline]] void fail_p(char *errbuf, int64_t *ifail, double p) {
  // 99998 for p <= 0, 89998 for p >= 1.
  zem::fail(errbuf, ifail, 2, 89998 + (p <= 0.0 ? 10000 : 0), p);
}

}  // namespace

// Small and called in loops: inlined into both entries (the symbol stays).
ZEM_LAYER_INLINE void g01fafn_(engine_data *, const char *tail, const double *p, double *result, char *errbuf,
                           int64_t *ifail, size_t tail_len) {
  using zem::g01::tail_kind;
  using zem::g05::normal_inverse;
  *ifail = 0;
  *result = 0.0;
  const tail_kind t = zem::g01::read_tail(tail, tail_len);
  if (t == tail_kind::invalid) return fail_tail(errbuf, ifail, tail, tail_len);
  const double v = *p;
  if (v <= 0.0 || v >= 1.0) return fail_p(errbuf, ifail, v);  // a NaN passes both tests

  // The kernel's argument and the sign of the result, per tail; one call of
  // the kernel serves all four.
  double a = v;
  bool negate = false;
  switch (t) {
    case tail_kind::lower: break;
    case tail_kind::upper: negate = true; break;
    case tail_kind::signif: a = 0.5 * v; negate = true; break;
    default: a = 0.5 * v + 0.5; break;
  }
  const double x = normal_inverse(a);
  *result = negate ? -x : x;
}

ZEM_API double g01faf_(const char *tail, const double *p, int64_t *ifail, size_t tail_len) {
  zem::f_entry call("g01faf", g01fa_messages);
  double result = 0.0;
  g01faft_(&call.en_data, tail, p, &result, call.errbuf, &call.status, tail_len);
  call.finish(ifail);
  return result;
}

ZEM_API double g01fac(Zem_TailProbability tail, double p, Zem_Fail *fail) {
  zem::c_entry call("g01fac", g01fa_messages, fail);
  const char t = zem::g01::tail_character(tail);
  if (!t) {
    call.bad_param("tail");
    return 0.0;
  }
  double result = 0.0;
  g01faft_(&call.en_data, &t, &p, &result, call.errbuf, &call.status, 1);
  call.finish();
  return result;
}
