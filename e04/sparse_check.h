// Checks of the coordinate sparse input of the model routines, in the order
// every routine applies them: counts, then each index against its range,
// then the upper triangle, then ascending order, then uniqueness of index
// pairs.  Each check reports the first failing element with its 1-based
// position i through the routine's own message row (given by detail), so
// the message names the caller's array.
//
// Message rows for these checks are made with the macros at the end, e.g.
//     E04_ROW_RANGE(6, 1021, "irowh", "n")
// reads "On entry, i = 3, irowh[i-1] = 7 and / n = 5. /
//        Constraint: 1 <= irowh[i-1] <= n."
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <new>
#include <cctype>
#include <numeric>
#include <string>
#include <vector>

#include "frame/frame.h"

namespace zem::e04 {

struct checker {
  char *errbuf;
  int64_t *ifail;

  // Every a[i-1] within lo..hi; the message carries i, a[i-1] and hi.
  bool range(const int64_t *a, int64_t n, int64_t lo, int64_t hi, int64_t status, int64_t detail) const {
    for (int64_t i = 0; i < n; ++i)
      if (a[i] < lo || a[i] > hi) return zem::fail(errbuf, ifail, status, detail, i + 1, a[i], hi), false;
    return true;
  }
  // irow[i-1] <= icol[i-1].
  bool upper(const int64_t *irow, const int64_t *icol, int64_t n, int64_t status, int64_t detail) const {
    for (int64_t i = 0; i < n; ++i)
      if (irow[i] > icol[i]) return zem::fail(errbuf, ifail, status, detail, i + 1, irow[i], icol[i]), false;
    return true;
  }
  // a strictly increasing; the message carries i, a[i-2] and a[i-1].
  bool increasing(const int64_t *a, int64_t n, int64_t status, int64_t detail) const {
    for (int64_t i = 1; i < n; ++i)
      if (a[i] <= a[i - 1]) return zem::fail(errbuf, ifail, status, detail, i + 1, a[i - 1], a[i]), false;
    return true;
  }
  // No pair (irow, icol) twice; the message carries the repeated row and
  // column of the earliest second occurrence.  Throws std::bad_alloc.
  bool unique(const int64_t *irow, const int64_t *icol, int64_t n, int64_t status, int64_t detail) const {
    if (n < 2) return true;
    std::vector<int64_t> order(static_cast<size_t>(n));
    std::iota(order.begin(), order.end(), int64_t{0});
    std::sort(order.begin(), order.end(), [&](int64_t a, int64_t b) {
      if (irow[a] != irow[b]) return irow[a] < irow[b];
      if (icol[a] != icol[b]) return icol[a] < icol[b];
      return a < b;
    });
    int64_t first = -1;
    for (int64_t k = 1; k < n; ++k) {
      const int64_t a = order[k - 1], b = order[k];
      if (irow[a] == irow[b] && icol[a] == icol[b] && (first < 0 || b < first)) first = b;
    }
    if (first < 0) return true;
    return zem::fail(errbuf, ifail, status, detail, irow[first], icol[first]), false;
  }
  // Values all finite.
  bool finite(const double *v, int64_t n, int64_t status, int64_t detail) const {
    for (int64_t i = 0; i < n; ++i)
      if (!std::isfinite(v[i])) return zem::fail(errbuf, ifail, status, detail, i + 1, v[i]), false;
    return true;
  }
  // Bounds of one item j (1-based): bl <= bu, bl < bigbnd, bu > -bigbnd,
  // reported with details detail, detail+1, detail+2.  NaN fails the first.
  bool bound(int64_t j, double bl, double bu, double bigbnd, int64_t status, int64_t detail) const {
    if (!(bl <= bu)) return zem::fail(errbuf, ifail, status, detail, j, bl, bu), false;
    if (!(bl < bigbnd)) return zem::fail(errbuf, ifail, status, detail + 1, j, bl, bigbnd), false;
    if (!(bu > -bigbnd)) return zem::fail(errbuf, ifail, status, detail + 2, j, bu, bigbnd), false;
    return true;
  }
  bool bounds(const double *bl, const double *bu, int64_t n, double bigbnd, int64_t status, int64_t detail) const {
    for (int64_t j = 0; j < n; ++j)
      if (!bound(j + 1, bl[j], bu[j], bigbnd, status, detail)) return false;
    return true;
  }
};

// Trimmed, upper-cased copy of a character argument (at most cap characters
// are looked at) for keyword matching.
inline std::string keyword(const char *s, size_t len, size_t cap = 64) {
  std::string k;
  if (!s) return k;
  for (size_t i = 0; i < len && i < cap && s[i]; ++i) k += static_cast<char>(std::toupper(static_cast<unsigned char>(s[i])));
  while (!k.empty() && k.back() == ' ') k.pop_back();
  size_t b = 0;
  while (b < k.size() && k[b] == ' ') ++b;
  return k.substr(b);
}

}  // namespace zem::e04

#define E04_ROW_RANGE(st, det, arr, lim)                                                   \
  {st, det, NE_INVALID_ARRAY, {"On entry, i = %s,", arr "[i-1] = %s and", lim " = %s.",   \
                               "Constraint: 1 <= " arr "[i-1] <= " lim "."},              \
   {"On entry, i = %s,", arr "(i) = %s and", lim " = %s",                                 \
    "Constraint: 1 <= " arr "(i) <= " lim "."}}
#define E04_ROW_UPPER(st, det, ir, ic)                                                     \
  {st, det, NE_INVALID_ARRAY, {"On entry, i = %s,", ir "[i-1] = %s and", ic "[i-1] = %s.", \
                               "Constraint: " ir "[i-1] <= " ic "[i-1] (elements within the upper triangle)."}, \
   {"On entry, i = %s,", ir "(i) = %s and", ic "(i) = %s",                                 \
    "Constraint: " ir "(i) <= " ic "(i) (elements within the upper triangle)."}}
#define E04_ROW_INCREASING(st, det, arr)                                                   \
  {st, det, NE_NOT_INCREASING, {"On entry, i = %s,", arr "[i-2] = %s and", arr "[i-1] = %s.", \
                                "Constraint: " arr "[i-2] < " arr "[i-1] (ascending order)."}, \
   {"On entry, i = %s,", arr "(i-1) = %s and", arr "(i) = %s",                             \
    "Constraint: " arr "(i-1) < " arr "(i) (ascending order)."}}
#define E04_ROW_UNIQUE(st, det)                                                            \
  {st, det, NE_INVALID_CS, {"On entry, more than one element of the matrix has", "row index %s", \
                            "and column index %s.",                                         \
                            "Constraint: each element of the matrix must have a unique row and", \
                            "column index."},                                               \
   {"On entry, more than one element of the matrix has", "row index %s", "and column index %s", \
    "Constraint: each element of the matrix must have a unique row and", "column index."}}
#define E04_ROW_FINITE(st, det, arr)                                                       \
  {st, det, NE_REAL_ARRAY, {"On entry, i = %s and", arr "[i-1] = %s.",                     \
                            "Constraint: " arr "[i-1] must be finite."},                  \
   {"On entry, i = %s and", arr "(i) = %s", "Constraint: " arr "(i) must be finite."}}
#define E04_ROWS_BOUNDS(st, det, bl, bu, j)                                                  \
  {st, det, NE_BOUND, {"On entry, " j " = %s,", bl "[" j "-1] = %s and", bu "[" j "-1] = %s.",   \
                       "Constraint: " bl "[" j "-1] <= " bu "[" j "-1]."},                          \
   {"On entry, " j " = %s,", bl "(" j ") = %s and", bu "(" j ") = %s",                             \
    "Constraint: " bl "(" j ") <= " bu "(" j ")."}},                                               \
  {st, det + 1, NE_BOUND, {"On entry, " j " = %s,", bl "[" j "-1] = %s,", "bigbnd = %s.",         \
                           "Constraint: " bl "[" j "-1] < bigbnd."},                                \
   {"On entry, " j " = %s,", bl "(" j ") = %s,", "bigbnd = %s", "Constraint: " bl "(" j ") < bigbnd."}}, \
  {st, det + 2, NE_BOUND, {"On entry, " j " = %s,", bu "[" j "-1] = %s,", "bigbnd = %s.",         \
                           "Constraint: " bu "[" j "-1] > -bigbnd."},                               \
   {"On entry, " j " = %s,", bu "(" j ") = %s,", "bigbnd = %s", "Constraint: " bu "(" j ") > -bigbnd."}}
