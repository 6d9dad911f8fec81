// g05sk: Normal variates N(xmu, var) by inversion.
//
// Each variate takes one uniform u from the generator (the chapter's uniform
// fill) and becomes sd * Q(u) + xmu, sd = sqrt(var), with Q the Normal inverse
// kernel (g05/normal_inverse.cpp): first the whole fill, then the
// transformation in place, so that the variates are, bit for bit, the
// scalar kernel's values for the uniforms that the same state gives to the
// uniform fill.  The transformation runs in the SIMD block kernel.
//
// var = 0 sets every element to xmu without drawing: the state does not
// advance (a caller who counts stream positions must allow for it).
#include "g05/g05sk.h"

#include <algorithm>
#include <cmath>

#include "g05/normal_inverse.h"
#include "g05/uniform.h"

inline constexpr zem::message g05sk_messages[] = {
    {1, 1001, NE_INT, {"On entry, n = %s.", "Constraint: n >= 0."}},
    {3, 1002, NE_REAL, {"On entry, var = %s.", "Constraint: var >= 0.0."}},
    {4, 1003, NE_INVALID_STATE, {"On entry, state vector has been corrupted or not initialized."}},
    {6, 1004, NE_INVALID_STATE, {"On entry, state vector has been corrupted or not initialized."}},
};

ZEM_ENGINE_LAYERS(g05sk, G05SK_ARGS)

namespace {

// An invalid state is status 4.  Status 6, the same message, is kept for a
// second kind of state fault; the uniform fill reports one kind only
// (uniform_bad_state), so 6 would come from a fill status of 6.
void state_fault(char *errbuf, int64_t *ifail, int64_t fill_status) {
  if (fill_status == 6) return zem::fail(errbuf, ifail, 6, 1004);
  return zem::fail(errbuf, ifail, 4, 1003);
}

}  // namespace

ZEM_INTERNAL void g05skfn_(engine_data *, const int64_t *n, const double *xmu, const double *var, int64_t *state,
                           double *x, char *errbuf, int64_t *ifail) {
  *ifail = 0;
  if (*n < 0) return zem::fail(errbuf, ifail, 1, 1001, *n);
  if (!(*var >= 0.0)) return zem::fail(errbuf, ifail, 3, 1002, *var);  // a NaN fails too
  // A fill of no numbers checks the state and draws nothing.
  if (const int64_t s = zem::g05::uniform_fill(state, 0, x)) return state_fault(errbuf, ifail, s);

  if (*var == 0.0) {
    std::fill_n(x, *n, *xmu);
    return;
  }
  if (const int64_t s = zem::g05::uniform_fill(state, *n, x)) return state_fault(errbuf, ifail, s);
  zem::g05::normal_inverse_affine(x, *n, std::sqrt(*var), *xmu);
}

ZEM_API void g05skf_(const int64_t *n, const double *xmu, const double *var, int64_t state[], double x[],
                     int64_t *ifail) {
  zem::f_entry call("g05skf", g05sk_messages);
  g05skft_(&call.en_data, n, xmu, var, state, x, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void g05skc(int64_t n, double xmu, double var, int64_t state[], double x[], Zem_Fail *fail) {
  zem::c_entry call("g05skc", g05sk_messages, fail);
  if (!state) return call.bad_param("state");
  if (!x && n > 0) return call.bad_param("x");  // as g05sa: nothing to write, nothing to check
  g05skft_(&call.en_data, &n, &xmu, &var, state, x, call.errbuf, &call.status);
  call.finish();
}
