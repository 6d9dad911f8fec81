// What the grid routines of chapter s30 share: the option type, the bounds
// of their arguments, the layout of the output matrices and the checks of
// the arguments every grid routine takes.
//
// Bounds.  With lo = 2^-511 (the square root of the safe range, rounded) and
// hi = 2^511 = 1/lo, and the model parameters at most par = 2^255:
//   lo <= s, x(i) <= hi,   lo <= t(j) <= hi,   lo <= sigma <= par,
//   0 <= r <= par,         0 <= q <= par.
// Then every intermediate of the closed forms is finite: ln s and ln x lie in
// [-355, 355]; sigma^2 t <= 2^1021, t (r - q + sigma^2/2) <= 2^1021 in
// magnitude; the volatility term sigma sqrt(t) >= 2^-766.5 is a normal number,
// so d1 and d2 are finite or the right infinity (never NaN); exp(-q t) and
// exp(-r t) lie in [0, 1].  Every test is written so that NaN fails it.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>

#include "frame/frame.h"
#include "s15/error_functions.h"

namespace zem::s30 {

inline constexpr double lo = 0x1p-511;   // 1.4916681462400413e-154
inline constexpr double hi = 0x1p511;    // 6.703903964971299e+153
inline constexpr double par = 0x1p255;   // 5.78960446186581e+76

// c of the cumulative Normal Phi(y) = erfc(-y c) / 2.
inline constexpr double c = 0.7071067811865475;
// 1/sqrt(2 pi), for the Normal density.
inline constexpr double inv_sqrt_2pi = 0.3989422804014327;

// The option type: 'C' call, 'P' put (Fortran, either case; the C entry
// passes the upper-case letter for Zem_Call and Zem_Put).
enum class kind : char { call = 'C', put = 'P', invalid = '\0' };

inline kind read_kind(const char *s, size_t len) {
  if (len < 1) return kind::invalid;
  switch (s[0]) {
    case 'C': case 'c': return kind::call;
    case 'P': case 'p': return kind::put;
    default: return kind::invalid;
  }
}
inline char shown_kind(const char *s, size_t len) { return len < 1 ? ' ' : s[0]; }
inline char kind_character(Zem_OptionType t) {
  switch (t) {
    case Zem_Call: return 'C';
    case Zem_Put: return 'P';
    default: return 0;
  }
}

// Storage order of the output matrices: the engine's code (1 column by
// column, the Fortran order; 2 row by row), and the C entry's translation
// (0 for a value that is not a member).
inline constexpr int64_t col_major = 1;
inline constexpr int64_t row_major = 2;
inline int64_t order_code(Zem_OrderType o) {
  switch (o) {
    case Zem_ColMajor: return col_major;
    case Zem_RowMajor: return row_major;
    default: return 0;
  }
}

// Element (i, j), 0-based, of an output matrix lies at i*ri + j*cj.
struct layout {
  int64_t ri, cj;
};
inline layout make_layout(int64_t order, int64_t ld) {
  return order == row_major ? layout{ld, 1} : layout{1, ld};
}

// The largest matrix extent (ldp times the number of columns, or rows).
inline constexpr int64_t max_elements = int64_t{1} << 62;

// The statuses and detail codes of the shared checks, the same in every grid
// routine (each routine's table repeats the rows through S30_GRID_ROWS).
enum grid_status : int64_t {
  st_calput = 1, st_m = 2, st_n = 3, st_x = 4, st_s = 5, st_t = 6, st_sigma = 7, st_r = 8, st_q = 9, st_ld = 11
};

// A failed check: status, detail and up to three values, written by the
// caller with zem::fail (the record's values are formatted there).
struct check_result {
  int64_t status = 0, detail = 0;
  double v1 = 0, v2 = 0, v3 = 0;
  int64_t index = 0;
};

// Fails the checks of one array whose elements must lie in [a, b]; returns
// the first bad index or -1.
inline int64_t first_outside(const double *v, int64_t len, double a, double b) {
  for (int64_t i = 0; i < len; ++i)
    if (!(v[i] >= a && v[i] <= b)) return i;
  return -1;
}

}  // namespace zem::s30

// The message rows of the shared checks.  Indices in the record are 0-based
// (the C entry's x[i]); the Fortran lines show them as x(k+1).
#define S30_ROW_CALPUT                                                                      \
  {zem::s30::st_calput, 1001, NE_BAD_PARAM, {"On entry, calput = '%s'.", "Constraint: calput = 'C' or 'P'."}}
#define S30_ROW_M                                                                           \
  {zem::s30::st_m, 1002, NE_INT, {"On entry, m = %s.", "Constraint: m >= 1."}, {"On entry, m = %s", "Constraint: m >= 1."}}
#define S30_ROW_N                                                                           \
  {zem::s30::st_n, 1003, NE_INT, {"On entry, n = %s.", "Constraint: n >= 1."}, {"On entry, n = %s", "Constraint: n >= 1."}}
#define S30_ROW_X                                                                           \
  {zem::s30::st_x, 1004, NE_REAL_ARRAY, {"On entry, x[%s] = %s.", "Constraint: x[i] >= %s and", "x[i] <= %s."}, \
   {"On entry, x(%s+1) = %s", "Constraint: x(i) >= %s and", "x(i) <= %s."}}
#define S30_ROW_S                                                                           \
  {zem::s30::st_s, 1005, NE_REAL, {"On entry, s = %s.", "Constraint: s >= %s and s <= %s."}, \
   {"On entry, s = %s", "Constraint: s >= %s and", "s <= %s."}}
#define S30_ROW_T                                                                           \
  {zem::s30::st_t, 1006, NE_REAL_ARRAY, {"On entry, t[%s] = %s.", "Constraint: t[i] >= %s."}, \
   {"On entry, t(%s+1) = %s", "Constraint: t(i) >= %s."}},                                 \
  {zem::s30::st_t, 1007, NE_REAL_ARRAY, {"On entry, t[%s] = %s.", "Constraint: t[i] <= %s."}, \
   {"On entry, t(%s+1) = %s", "Constraint: t(i) <= %s."}}
#define S30_ROW_SIGMA                                                                       \
  {zem::s30::st_sigma, 1008, NE_REAL, {"On entry, sigma = %s.", "Constraint: sigma >= %s and", "sigma <= %s."}, \
   {"On entry, sigma = %s", "Constraint: sigma >= %s and", "sigma <= %s."}}
#define S30_ROW_R                                                                           \
  {zem::s30::st_r, 1009, NE_REAL, {"On entry, r = %s.", "Constraint: r >= 0.0."},           \
   {"On entry, r = %s", "Constraint: r >= 0.0."}},                                          \
  {zem::s30::st_r, 1010, NE_REAL, {"On entry, r = %s.", "Constraint: r <= %s."}, {"On entry, r = %s", "Constraint: r <= %s."}}
#define S30_ROW_Q                                                                           \
  {zem::s30::st_q, 1011, NE_REAL, {"On entry, q = %s.", "Constraint: q >= 0.0 and q <= %s."}, \
   {"On entry, q = %s", "Constraint: q >= 0.0 and q <= %s."}}
#define S30_ROW_LDP                                                                         \
  {zem::s30::st_ld, 1012, NE_INT_2, {"On entry, ldp = %s and m = %s.", "Constraint: ldp >= m."}, \
   {"On entry, ldp = %s and m = %s", "Constraint: ldp >= m."}},                             \
  {zem::s30::st_ld, 1013, NE_INT_2, {"On entry, ldp = %s and n = %s.", "Constraint: ldp >= n."}, \
   {"On entry, ldp = %s and n = %s", "Constraint: ldp >= n."}},                             \
  {zem::s30::st_ld, 1014, NE_INT_2, {"On entry, ldp = %s and n = %s.", "Constraint: ldp*n <= %s."}, \
   {"On entry, ldp = %s and n = %s", "Constraint: ldp*n <= %s."}},                          \
  {zem::s30::st_ld, 1015, NE_INT_2, {"On entry, ldp = %s and m = %s.", "Constraint: ldp*m <= %s."}, \
   {"On entry, ldp = %s and m = %s", "Constraint: ldp*m <= %s."}}
#define S30_GRID_ROWS S30_ROW_CALPUT, S30_ROW_M, S30_ROW_N, S30_ROW_X, S30_ROW_S, S30_ROW_T, S30_ROW_SIGMA, \
  S30_ROW_R, S30_ROW_Q, S30_ROW_LDP

namespace zem::s30 {

// The model parameters of the lognormal grid routines, once checked.
struct grid_args {
  kind type;
  int64_t m, n;
  const double *x;  // strikes (or, with check_x false, an array the routine checks itself)
  double s;
  const double *t;
  double sigma, r, q;
  int64_t ld, order;
};

// The shared checks, in the order of the arguments: calput, m, n, then ldp
// (which bounds every array access), x, s, t, sigma, r, q.  Returns true (after writing the record) on the first
// violation.
[[gnu::cold, gnu::noinline]] inline void fail_index(char *errbuf, int64_t *ifail, int64_t st, int64_t detail,
                                                    int64_t i, double v, double a) {
  zem::fail(errbuf, ifail, st, detail, i, v, a);
}
[[gnu::cold, gnu::noinline]] inline void fail_index(char *errbuf, int64_t *ifail, int64_t st, int64_t detail,
                                                    int64_t i, double v, double a, double b) {
  zem::fail(errbuf, ifail, st, detail, i, v, a, b);
}

inline bool check_grid(const grid_args &g, bool check_x, const char *calput, size_t calput_len, char *errbuf,
                       int64_t *ifail) {
  if (g.type == kind::invalid) return zem::fail(errbuf, ifail, st_calput, 1001, shown_kind(calput, calput_len)), true;
  if (!(g.m >= 1)) return zem::fail(errbuf, ifail, st_m, 1002, g.m), true;
  if (!(g.n >= 1)) return zem::fail(errbuf, ifail, st_n, 1003, g.n), true;
  // ldp next, before any array is read: it and m, n bound every access.
  // The last element lies at (m-1) ri + (n-1) cj, which must be
  // representable: ldp times the number of columns (rows) at most 2^62.
  if (g.order == row_major) {
    if (!(g.ld >= g.n)) return zem::fail(errbuf, ifail, st_ld, 1013, g.ld, g.n), true;
    if (g.ld > max_elements / g.m) return zem::fail(errbuf, ifail, st_ld, 1015, g.ld, g.m, max_elements), true;
  } else {
    if (!(g.ld >= g.m)) return zem::fail(errbuf, ifail, st_ld, 1012, g.ld, g.m), true;
    if (g.ld > max_elements / g.n) return zem::fail(errbuf, ifail, st_ld, 1014, g.ld, g.n, max_elements), true;
  }
  if (check_x) {
    if (const int64_t i = first_outside(g.x, g.m, lo, hi); i >= 0)
      return fail_index(errbuf, ifail, st_x, 1004, i, g.x[i], lo, hi), true;
  }
  if (!(g.s >= lo && g.s <= hi)) return zem::fail(errbuf, ifail, st_s, 1005, g.s, lo, hi), true;
  for (int64_t j = 0; j < g.n; ++j) {
    if (!(g.t[j] >= lo)) return fail_index(errbuf, ifail, st_t, 1006, j, g.t[j], lo), true;
    if (!(g.t[j] <= hi)) return fail_index(errbuf, ifail, st_t, 1007, j, g.t[j], hi), true;
  }
  if (!(g.sigma >= lo && g.sigma <= par)) return zem::fail(errbuf, ifail, st_sigma, 1008, g.sigma, lo, par), true;
  if (!(g.r >= 0.0)) return zem::fail(errbuf, ifail, st_r, 1009, g.r), true;
  if (!(g.r <= par)) return zem::fail(errbuf, ifail, st_r, 1010, g.r, par), true;
  if (!(g.q >= 0.0 && g.q <= par)) return zem::fail(errbuf, ifail, st_q, 1011, g.q, par), true;
  return false;
}

// The quantities of one expiry that every closed form of the lognormal model
// uses (step 1 of s30aa).
struct expiry_terms {
  double t, sqrt_t, vol, drift, dq, dr, sdq;
};
inline expiry_terms per_expiry(double s, double t, double sigma, double r, double q) {
  expiry_terms e;
  e.t = t;
  e.sqrt_t = std::sqrt(t);
  e.dq = std::exp(-q * t);
  e.dr = std::exp(-r * t);
  e.sdq = s * e.dq;
  e.drift = t * ((r - q) + sigma * sigma / 2.0);
  e.vol = sigma * e.sqrt_t;
  return e;
}

// ln v(i) for i < m, in a new array (null where it cannot be allocated;
// m >= 1 has been checked, and the size is checked here before it is formed).
inline std::unique_ptr<double[]> logs_of(const double *v, int64_t m) {
  std::unique_ptr<double[]> out(
      static_cast<uint64_t>(m) <= PTRDIFF_MAX / sizeof(double) ? new (std::nothrow) double[m] : nullptr);
  if (out)
    for (int64_t i = 0; i < m; ++i) out[i] = std::log(v[i]);
  return out;
}

}  // namespace zem::s30
