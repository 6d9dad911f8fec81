// g01ea: tail probability of the standard Normal distribution.
#pragma once

#include "frame/frame.h"

// result := the probability that tail selects for the deviate x
// ('L' P(X <= x), 'U' P(X >= x), 'S' P(|X| >= |x|), 'C' P(|X| <= |x|)).
// Status 1: tail is not one of 'L', 'U', 'S', 'C' (either case); result 0.0.
#define G01EA_ARGS(V, A, U) \
  A(const char *, tail) V(const double *, x) V(double *, result) V(char *, errbuf) V(int64_t *, ifail) \
  U(size_t, tail_len)

ZEM_INTERNAL void g01eafn_(ZEM_PARAMS(G01EA_ARGS));
