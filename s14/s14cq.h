// s14cq: the regularised incomplete beta function I_x(a, b) and its
// complement for vectors of (a, b, x).
#pragma once

#include "frame/frame.h"

// w[i] := I_x[i](a[i], b[i]), w1[i] := 1 - w[i], i < n, each as s14cc gives
// it, with ivalid[i] the status s14cc would give: 0, 1 (a < 0, b < 0, or x
// outside [0, 1]) or 2 (a = b = 0, x = a = 0, or 1 - x = b = 0), w[i] = w1[i]
// = 0 then.  Status 1: some ivalid[i] not 0 (a warning: w, w1 fully set);
// 2: n < 0.
#define S14CQ_ARGS(V, A, U) \
  V(const int64_t *, n) A(const double *, a) A(const double *, b) A(const double *, x) A(double *, w) \
  A(double *, w1) A(int64_t *, ivalid) V(char *, errbuf) V(int64_t *, ifail)

ZEM_INTERNAL void s14cqfn_(ZEM_PARAMS(S14CQ_ARGS));
