// The gamma kernels compiled twice: for every x86-64, and for processors
// with fused multiply-add (and AVX2), where each error-free product is one
// instruction instead of Dekker's seventeen.  The pairs, and so the results,
// are the same bits either way; the choice is made per call from the
// processor's feature bits (no state of our own).
//
// Every fast variant is flattened: the kernels are templates that are not
// all inlined, and a template instantiated out of line is compiled for the
// baseline processor whatever its caller's target, so that its
// __builtin_fma became a call of the library's fma, slower than Dekker's
// product.  Flattened, the whole call tree of a fast variant is one function
// compiled for fused multiply-add (tests/s14 checks that no s14 code calls
// fma out of line).
#include <cstdlib>
#include <string_view>

#include "s14/gamma.h"
#include "s14/gamma_vector.h"
#include "s14/psi.h"
#include "s14/beta.h"
#include "s14/complex_gamma.h"

namespace zem::s14 {
namespace {

[[gnu::target("avx2,fma"), gnu::flatten]] double gamma_fast(double x) { return gamma_core_t<true>(x); }
[[gnu::target("avx2,fma"), gnu::flatten]] double lgamma_fast(double x) { return lgamma_core_t<true>(x); }
[[gnu::target("avx2,fma"), gnu::flatten]] double lgamma1p_fast(double a) { return lgamma1p_t<true>(a); }
double lgamma1p_plain(double a) { return lgamma1p_t<false>(a); }
[[gnu::target("avx2,fma"), gnu::flatten]] dd log_ratio_fast(double a, double x) { return log_ratio_term_t<true>(a, x); }
dd log_ratio_plain(double a, double x) { return log_ratio_term_t<false>(a, x); }
double gamma_plain(double x) { return gamma_core_t<false>(x); }
[[gnu::target("avx2,fma"), gnu::flatten]] double psi_fast(double x, int k, psi_status &s) { return psi_derivative_t<true>(x, k, s); }
[[gnu::target("avx2,fma"), gnu::flatten]] double log_beta_fast(double a, double b) { return log_beta_t<true>(a, b); }
double log_beta_plain(double a, double b) { return log_beta_t<false>(a, b); }
[[gnu::target("avx2,fma"), gnu::flatten]] void ibeta_fast(double a, double b, double x, double &w, double &w1) {
  incomplete_beta_t<true>(a, b, x, w, w1);
}
void ibeta_plain(double a, double b, double x, double &w, double &w1) { incomplete_beta_t<false>(a, b, x, w, w1); }
double psi_plain(double x, int k, psi_status &s) { return psi_derivative_t<false>(x, k, s); }
double lgamma_plain(double x) { return lgamma_core_t<false>(x); }
[[gnu::target("avx2,fma"), gnu::flatten]] bool gamma_vector_fast(int64_t n, const double *x, double *f, int64_t *ivalid) {
  return vector_apply<gamma_lanes, true>(n, x, f, ivalid);
}
bool gamma_vector_plain(int64_t n, const double *x, double *f, int64_t *ivalid) {
  return vector_apply<gamma_lanes, false>(n, x, f, ivalid);
}
[[gnu::target("avx2,fma"), gnu::flatten]] bool lgamma_vector_fast(int64_t n, const double *x, double *f, int64_t *ivalid) {
  return vector_apply<lgamma_lanes, true>(n, x, f, ivalid);
}
bool lgamma_vector_plain(int64_t n, const double *x, double *f, int64_t *ivalid) {
  return vector_apply<lgamma_lanes, false>(n, x, f, ivalid);
}
// Eight lanes: the same element-wise operations on 512-bit vectors.
[[gnu::target("avx512f,avx512dq,avx512vl,avx2,fma"), gnu::flatten]] bool lgamma_vector_wide(int64_t n, const double *x,
                                                                                           double *f, int64_t *ivalid) {
  return vector_apply<lgamma_lanes, true, lanes8>(n, x, f, ivalid);
}
[[gnu::target("avx2,fma"), gnu::flatten]] cplx psi_complex_fast(cplx z, int k) { return psi_complex_t<true>(z, k); }
cplx psi_complex_plain(cplx z, int k) { return psi_complex_t<false>(z, k); }
[[gnu::target("avx2,fma"), gnu::flatten]] cplx lgamma_complex_fast(cplx z) { return lgamma_complex_t<true>(z); }
cplx lgamma_complex_plain(cplx z) { return lgamma_complex_t<false>(z); }

// Decided once per process: the processor's fused multiply-add (with AVX2),
// unless ZEM_ISA, the library's one instruction-set switch, says
// "baseline".  Either variant gives the same bits.
bool choose_fma() {
  if (const char *forced = std::getenv("ZEM_ISA"); forced && std::string_view(forced) == "baseline") return false;
  return __builtin_cpu_supports("fma") && __builtin_cpu_supports("avx2");
}
bool has_fma() {
  static const bool fma = choose_fma();
  return fma;
}
// The vector loops may also take 512-bit vectors, unless ZEM_ISA says
// "baseline" or "avx2" (the tests run the narrower loops that way).
bool choose_wide() {
  if (!has_fma()) return false;
  if (const char *forced = std::getenv("ZEM_ISA"); forced && std::string_view(forced) == "avx2") return false;
  return __builtin_cpu_supports("avx512f") && __builtin_cpu_supports("avx512dq") && __builtin_cpu_supports("avx512vl");
}
bool has_wide() {
  static const bool wide = choose_wide();
  return wide;
}

}  // namespace

double (*const gamma_kernel)(double) = has_fma() ? gamma_fast : gamma_plain;
double (*const lgamma_kernel)(double) = has_fma() ? lgamma_fast : lgamma_plain;
dd log_ratio_term(double a, double x) { return has_fma() ? log_ratio_fast(a, x) : log_ratio_plain(a, x); }
double lgamma1p(double a) { return has_fma() ? lgamma1p_fast(a) : lgamma1p_plain(a); }
double log_beta(double a, double b) { return has_fma() ? log_beta_fast(a, b) : log_beta_plain(a, b); }
void incomplete_beta(double a, double b, double x, double &w, double &w1) {
  return has_fma() ? ibeta_fast(a, b, x, w, w1) : ibeta_plain(a, b, x, w, w1);
}
double psi_derivative(double x, int k, psi_status &s) { return has_fma() ? psi_fast(x, k, s) : psi_plain(x, k, s); }
cplx psi_complex(cplx z, int k) { return has_fma() ? psi_complex_fast(z, k) : psi_complex_plain(z, k); }
cplx lgamma_complex(cplx z) { return has_fma() ? lgamma_complex_fast(z) : lgamma_complex_plain(z); }

bool gamma_vector(int64_t n, const double *x, double *f, int64_t *ivalid) {
  return has_fma() ? gamma_vector_fast(n, x, f, ivalid) : gamma_vector_plain(n, x, f, ivalid);
}
bool lgamma_vector(int64_t n, const double *x, double *f, int64_t *ivalid) {
  if (has_wide()) return lgamma_vector_wide(n, x, f, ivalid);
  return has_fma() ? lgamma_vector_fast(n, x, f, ivalid) : lgamma_vector_plain(n, x, f, ivalid);
}

// For the tests: both variants, whatever the processor.
double gamma_core_variant(double x, bool fma) { return fma && has_fma() ? gamma_fast(x) : gamma_plain(x); }
double lgamma_core_variant(double x, bool fma) { return fma && has_fma() ? lgamma_fast(x) : lgamma_plain(x); }
cplx psi_complex_variant(cplx z, int k, bool fma) {
  return fma && has_fma() ? psi_complex_fast(z, k) : psi_complex_plain(z, k);
}
cplx lgamma_complex_variant(cplx z, bool fma) { return fma && has_fma() ? lgamma_complex_fast(z) : lgamma_complex_plain(z); }

}  // namespace zem::s14
