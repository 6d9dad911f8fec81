// s14aa: the gamma function Gamma(x) for real x.
//
// The range checks come first, in this order, each with its status and its
// substitute result: x > 170 (status 1, 4.3e304, Gamma(170) rounded),
// x < -170 (status 2, 0), |x| < 2.23e-308 (status 3, +-1/2.23e-308), and a
// negative integer (status 4, the same 4.3e304).  For |x| <= 1e-17 the result
// is 1/x.  Otherwise x is reduced by the recurrence to [1, 2), where a
// polynomial with constant term Gamma(3/2) gives the value (s14/gamma.h).
#include "s14/s14aa.h"

#include "s14/gamma.h"

inline constexpr zem::message s14aa_messages[] = {
    {1, 1001, NE_REAL_ARG_GT,
     {"On entry, x = %s.", "Constraint: x <= %s.",
      "The argument is too large, the function returns the approximate value of",
      "Gamma(x) at the nearest valid argument."}},
    {2, 1002, NE_REAL_ARG_LT,
     {"On entry, x = %s.", "The function returns zero.", "Constraint: x >= %s.",
      "The argument is too large and negative, the function returns zero."}},
    {3, 1003, NE_REAL_ARG_TOO_SMALL,
     {"On entry, x = %s.", "Constraint: abs(x) >= %s.",
      "The argument is too close to zero, the function returns the approximate",
      "value of Gamma(x) at the nearest valid argument."}},
    {4, 1004, NE_REAL_ARG_NEG_INT,
     {"On entry, x = %s.", "Constraint: x must not be a negative integer.",
      "The argument is a negative integer, at which values Gamma(x) is infinite.",
      "The function returns a large positive value."}},
};
ZEM_REGISTER_MESSAGES(s14aa)

ZEM_ENGINE_LAYERS(s14aa, S14AA_ARGS)

namespace {

// The failures, out of the straight path.  Each message quotes the limit.
[[gnu::cold, gnu::noinline]] void fail_s14aa(char *errbuf, int64_t *ifail, int code, double x) {
  switch (code) {
    case 1: return zem::fail(errbuf, ifail, 1, 1001, x, zem::s14::gamma_x_max);
    case 2: return zem::fail(errbuf, ifail, 2, 1002, x, -zem::s14::gamma_x_max);
    case 3: return zem::fail(errbuf, ifail, 3, 1003, x, zem::s14::gamma_x_tiny);
    default: return zem::fail(errbuf, ifail, 4, 1004, x);
  }
}

}  // namespace

// Small and called in loops: inlined into both entries (the symbol stays).
ZEM_LAYER_INLINE void s14aafn_(engine_data *, const double *x, double *result, char *errbuf, int64_t *ifail) {
  *ifail = 0;
  int code = 0;
  *result = zem::s14::gamma_checked(*x, code);
  if (__builtin_expect(code != 0, 0)) fail_s14aa(errbuf, ifail, code, *x);
}

namespace {

[[gnu::noinline]] double s14aaf_layers(const double *x, int64_t *ifail) {
  zem::f_entry call("s14aaf", s14aa_messages);
  double result = 0.0;
  s14aaft_(&call.en_data, x, &result, call.errbuf, &call.status);
  call.finish(ifail);
  return result;
}

[[gnu::noinline]] double s14aac_layers(double x, Zem_Fail *fail) {
  zem::c_entry call("s14aac", s14aa_messages, fail);
  double result = 0.0;
  s14aaft_(&call.en_data, &x, &result, call.errbuf, &call.status);
  call.finish();
  return result;
}

}  // namespace

// Every call that succeeds skips the layers (frame/entry.h).
ZEM_API double s14aaf_(const double *x, int64_t *ifail) {
  return zem::quick_f_entry(
      ifail, [x](int &code) noexcept { return zem::s14::gamma_checked(*x, code); },
      [x, ifail] { return s14aaf_layers(x, ifail); });
}

ZEM_API double s14aac(double x, Zem_Fail *fail) {
  return zem::quick_c_entry(
      fail, "s14aac", [x](int &code) noexcept { return zem::s14::gamma_checked(x, code); },
      [x, fail] { return s14aac_layers(x, fail); });
}
