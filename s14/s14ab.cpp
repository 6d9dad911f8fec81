// s14ab: ln Gamma(x) for x > 0.
//
// Checks in order: x <= 0 (status 1, result 0), x > x_big = 2.55e305
// (status 2, result the largest double).  Then the rational approximations
// of Cody and Hillstrom with the split points 0.5, 0.6796875, 1.5, 4 and 12,
// and the Stirling series above 12 whose correction is dropped above
// 2.24e76 (s14/gamma.h); x <= machine precision gives -ln x.
#include "s14/s14ab.h"

#include <bit>
#include <cstdint>

#include "s14/gamma.h"

inline constexpr zem::message s14ab_messages[] = {
    {1, 1001, NE_REAL_ARG_LE, {"On entry, x = %s.", "Constraint: x > 0.0."}},
    {2, 1002, NE_REAL_ARG_GT, {"On entry, x = %s and", "the constant x_big = %s.", "Constraint: x <= x_big."}},
};
ZEM_REGISTER_MESSAGES(s14ab)

ZEM_ENGINE_LAYERS(s14ab, S14AB_ARGS)

namespace {

[[gnu::cold, gnu::noinline]] void fail_s14ab(char *errbuf, int64_t *ifail, int code, double x) {
  if (code == 1) return zem::fail(errbuf, ifail, 1, 1001, x);
  zem::fail(errbuf, ifail, 2, 1002, x, zem::s14::lgamma_x_big);
}

}  // namespace

ZEM_LAYER_INLINE void s14abfn_(engine_data *, const double *x, double *result, char *errbuf, int64_t *ifail) {
  *ifail = 0;
  int code = 0;
  *result = zem::s14::lgamma_checked(*x, code);
  if (__builtin_expect(code != 0, 0)) fail_s14ab(errbuf, ifail, code, *x);
}

namespace {

[[gnu::noinline]] double s14abf_layers(const double *x, int64_t *ifail) {
  zem::f_entry call("s14abf", s14ab_messages);
  double result = 0.0;
  s14abft_(&call.en_data, x, &result, call.errbuf, &call.status);
  call.finish(ifail);
  return result;
}

[[gnu::noinline]] double s14abc_layers(double x, Zem_Fail *fail) {
  zem::c_entry call("s14abc", s14ab_messages, fail);
  double result = 0.0;
  s14abft_(&call.en_data, &x, &result, call.errbuf, &call.status);
  call.finish();
  return result;
}

}  // namespace

// Every call that succeeds skips the layers (frame/entry.h).  An argument
// inside the range of the kernel cannot fail: when nothing is left to do
// after the kernel (ifail set beforehand; no fail record to fill), the entry
// ends in a jump to the kernel, with no frame of its own around the call.
// Anything else (x <= 0, x > x_big, a NaN, tracing on, a fail record) takes
// the quick entry, whose checks decide.
namespace {

// 0 < x <= x_big, by one unsigned comparison of the bits: the positive
// doubles are ordered as their bits; +0 wraps round to the largest integer,
// and every negative value, infinity and NaN lies above the bits of x_big.
[[gnu::always_inline]] inline bool kernel_range(double x) {
  return std::bit_cast<uint64_t>(x) - 1 < std::bit_cast<uint64_t>(zem::s14::lgamma_x_big);
}

[[gnu::noinline]] double s14abc_quick(double x, Zem_Fail *fail) {
  return zem::quick_c_entry(
      fail, "s14abc", [x](int &code) noexcept { return zem::s14::lgamma_checked(x, code); },
      [x, fail] { return s14abc_layers(x, fail); });
}

}  // namespace

ZEM_API double s14abf_(const double *x, int64_t *ifail) {
  const double v = *x;
  if (__builtin_expect(kernel_range(v) && !zem::trace_on(), 1)) {
    *ifail = 0;
    return zem::s14::lgamma_core(v);
  }
  return zem::quick_f_entry(
      ifail, [x](int &code) noexcept { return zem::s14::lgamma_checked(*x, code); },
      [x, ifail] { return s14abf_layers(x, ifail); });
}

ZEM_API double s14abc(double x, Zem_Fail *fail) {
  // No fail record and no tracing, in one test (no short circuit: both are cheap loads).
  const bool plain = (reinterpret_cast<uintptr_t>(fail) | static_cast<uintptr_t>(zem::trace_on())) == 0;
  if (__builtin_expect(plain & kernel_range(x), 1)) return zem::s14::lgamma_core(x);
  return s14abc_quick(x, fail);
}
