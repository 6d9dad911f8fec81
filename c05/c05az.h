// c05az: the reverse-communication core of the zero finders, called by the
// other c05 workers directly (never through its entries).
#pragma once

#include "frame/frame.h"

#define C05AZ_ARGS(V, A, U)                                                                                 \
  V(double *, x) V(double *, y) V(const double *, fx) V(const double *, tolx) V(const int64_t *, ir)      \
  A(double *, c) V(int64_t *, ind) V(char *, errbuf) V(int64_t *, ifail)

ZEM_INTERNAL void c05azfn_(ZEM_PARAMS(C05AZ_ARGS));
