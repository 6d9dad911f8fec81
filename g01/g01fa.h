// g01fa: deviate of the standard Normal distribution for a tail probability.
#pragma once

#include "frame/frame.h"

// result := the deviate x whose probability of the kind tail selects is p
// (the inverse of g01ea).  Status 1: tail invalid; status 2: p <= 0.0
// (detail 99998) or p >= 1.0 (detail 89998).  On failure result is 0.0.
#define G01FA_ARGS(V, A, U) \
  A(const char *, tail) V(const double *, p) V(double *, result) V(char *, errbuf) V(int64_t *, ifail) \
  U(size_t, tail_len)

ZEM_INTERNAL void g01fafn_(ZEM_PARAMS(G01FA_ARGS));
