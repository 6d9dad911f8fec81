// The problem-file readers behind e04sa (MPS, SDPA) and e04rd (SDPA from a
// stream).  A reader builds a complete problem body of its own and reports
// the first error it meets; only a reader that succeeded hands its body to
// the caller, so a failed read never leaves a half-built handle.
//
// Failures are described by a `read_error`: the detail code of the row in
// the calling routine's table (e04/reader_rows.h) and up to six values.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "e04/model.h"
#include "frame/frame.h"

namespace zem::e04 {

struct read_error {
  int64_t status = 0;  // 0: no error; -999: memory
  int64_t detail = 0;
  std::string v[6];
  int nv = 0;
};

// Limits of e04rd (each >= 0; INT64_MAX for e04sa) and the sizes a file
// needs, reported when a limit is too small.
struct sdpa_limits {
  int64_t maxnvar, maxnblk, maxnnz;
};

// Reads an MPS file (fixed or free format) held in text.  On success *out
// holds the model (variables, bounds and types, linear objective with its
// constant, or quadratic objective, linear constraints, cones).
read_error read_mps(std::string_view text, problem &out);

// Reads SDPA sparse format, line by line from next_line (returns false at
// the end of the data).  The problem: minimize c'x subject to
// sum x_i F_i - F_0 >= 0, as e04rn stores it.
read_error read_sdpa(const std::function<bool(std::string &)> &next_line, const sdpa_limits &lim, problem &out);

// Reports a reader's failure through the routine's record.
inline void report_read_error(const read_error &e, char *errbuf, int64_t *ifail) {
  switch (e.nv) {
    case 0: return zem::fail(errbuf, ifail, e.status, e.detail);
    case 1: return zem::fail(errbuf, ifail, e.status, e.detail, std::string_view(e.v[0]));
    case 2: return zem::fail(errbuf, ifail, e.status, e.detail, std::string_view(e.v[0]), std::string_view(e.v[1]));
    case 3:
      return zem::fail(errbuf, ifail, e.status, e.detail, std::string_view(e.v[0]), std::string_view(e.v[1]),
                       std::string_view(e.v[2]));
    default:
      return zem::fail(errbuf, ifail, e.status, e.detail, std::string_view(e.v[0]), std::string_view(e.v[1]),
                       std::string_view(e.v[2]), std::string_view(e.v[3]), std::string_view(e.v[4]),
                       std::string_view(e.v[5]));
  }
}

}  // namespace zem::e04
