// s30jb: European options in Merton's jump-diffusion model with eleven
// sensitivities.
#pragma once

#include "frame/frame.h"

// As s30ja, and the sensitivities of each price (docs/s30jb.md), each an m
// by n matrix of the layout of p.
#define S30JB_ARGS(V, A, U)                                                                                 \
  A(const char *, calput) V(const int64_t *, m) V(const int64_t *, n) A(const double *, x) V(const double *, s) \
  A(const double *, t) V(const double *, sigma) V(const double *, r) V(const double *, lambda)              \
  V(const double *, jvol) A(double *, p) V(const int64_t *, ldp) A(double *, delta) A(double *, gamma)       \
  A(double *, vega) A(double *, theta) A(double *, rho) A(double *, vanna) A(double *, charm)                \
  A(double *, speed) A(double *, colour) A(double *, zomma) A(double *, vomma) V(const int64_t *, order)     \
  V(char *, errbuf) V(int64_t *, ifail) U(size_t, calput_len)

ZEM_INTERNAL void s30jbfn_(ZEM_PARAMS(S30JB_ARGS));
