// Shared checks of the matrix inequality routines e04rn and e04rp: counts
// per matrix and the block-diagonal structure of every element.
#pragma once

#include <cstdint>
#include <vector>

#include "e04/sparse_check.h"

namespace zem::e04 {

// Block number (0-based) of each row 1..dim, from the block sizes.
inline std::vector<int64_t> block_of_rows(const std::vector<int64_t> &blksize, int64_t dim) {
  std::vector<int64_t> b(static_cast<size_t>(dim) + 1, 0);
  int64_t r = 1;
  for (size_t k = 0; k < blksize.size(); ++k)
    for (int64_t i = 0; i < blksize[k] && r <= dim; ++i) b[r++] = static_cast<int64_t>(k);
  return b;
}

// Counts nnz[0..m-1] >= 0 (detail d), their sum >= 1 (d+1), their sum <=
// nnzsum (d+2).  *total receives the sum.
inline bool check_counts(const checker &ck, const int64_t *nnz, int64_t m, int64_t nnzsum, int64_t status,
                         int64_t d, int64_t *total) {
  int64_t sum = 0;
  for (int64_t i = 0; i < m; ++i) {
    if (nnz[i] < 0) return zem::fail(ck.errbuf, ck.ifail, status, d, i + 1, nnz[i]), false;
    sum = nnz[i] > INT64_MAX - sum ? INT64_MAX : sum + nnz[i];
  }
  if (sum < 1) return zem::fail(ck.errbuf, ck.ifail, status, d + 1, sum), false;
  if (nnzsum < sum) return zem::fail(ck.errbuf, ck.ifail, status, d + 2, nnzsum, sum), false;
  *total = sum;
  return true;
}

// The elements of m matrices stored one after the other (counts nnz):
// rows and columns in 1..dim (details d, d+1), upper triangle (d+2), within
// one diagonal block (d+3), no pair twice within a matrix (d+4), finite
// values (d+5).  Throws std::bad_alloc.
inline bool check_matrices(const checker &ck, const int64_t *nnz, int64_t m, int64_t total, const int64_t *irow,
                           const int64_t *icol, const double *val, int64_t dim,
                           const std::vector<int64_t> &blksize, int64_t status, int64_t d) {
  if (!ck.range(irow, total, 1, dim, status, d) || !ck.range(icol, total, 1, dim, status, d + 1) ||
      !ck.upper(irow, icol, total, status, d + 2))
    return false;
  const std::vector<int64_t> blk = block_of_rows(blksize, dim);
  for (int64_t i = 0; i < total; ++i)
    if (blk[irow[i]] != blk[icol[i]])
      return zem::fail(ck.errbuf, ck.ifail, status, d + 3, i + 1, irow[i], icol[i]), false;
  int64_t start = 0;
  for (int64_t k = 0; k < m; ++k) {
    if (!ck.unique(irow + start, icol + start, nnz[k], status, d + 4)) return false;
    start += nnz[k];
  }
  return ck.finite(val, total, status, d + 5);
}

}  // namespace zem::e04

#define E04_ROWS_MATRICES(st, d, ir, ic, v, dim, blk)                                                  \
  E04_ROW_RANGE(st, d, ir, dim), E04_ROW_RANGE(st, d + 1, ic, dim), E04_ROW_UPPER(st, d + 2, ir, ic),  \
  {st, d + 3, NE_INVALID_ARRAY, {"On entry, i = %s,", ir "[i-1] = %s and", ic "[i-1] = %s.",           \
                                 "Constraint: each element must lie within a diagonal block given by " blk "."}, \
   {"On entry, i = %s,", ir "(i) = %s and", ic "(i) = %s",                                              \
    "Constraint: each element must lie within a diagonal block given by " blk "."}},                     \
  E04_ROW_UNIQUE(st, d + 4), E04_ROW_FINITE(st, d + 5, v)
#define E04_ROWS_COUNTS(st, d, nnz, nnzsum)                                                            \
  {st, d, NE_INT_ARRAY, {"On entry, i = %s and", nnz "[i-1] = %s.", "Constraint: " nnz "[i-1] >= 0."}, \
   {"On entry, i = %s and", nnz "(i) = %s", "Constraint: " nnz "(i) >= 0."}},                           \
  {st, d + 1, NE_INT_ARRAY, {"On entry, sum(" nnz ") = %s.", "Constraint: sum(" nnz ") >= 1."}},        \
  {st, d + 2, NE_INT_2, {"On entry, " nnzsum " = %s and", "sum(" nnz ") = %s.",                            \
                         "Constraint: " nnzsum " >= sum(" nnz ")."},                                    \
   {"On entry, " nnzsum " = %s and", "sum(" nnz ") = %s", "Constraint: " nnzsum " >= sum(" nnz ")."}}
