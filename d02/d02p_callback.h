// The derivative function of the d02p integrators: one callback chain per
// routine (frame/layers.h), with the two adaptors that make the user call.
//   C:        void f(double t, int64_t n, const double y[], double yp[], Zem_Comm *comm)
//   Fortran:  subroutine f(t, n, y, yp, iuser, ruser)
#pragma once

#include "frame/frame.h"

#define D02P_F_ARGS(V, A, U)                                                                            \
  V(const double *, t) V(const int64_t *, n) A(const double *, y) A(double *, yp) A(int64_t *, iuser)   \
  A(double *, ruser)

#define ZEM_D02P_CALLBACK(rtn)                                                                          \
  ZEM_CALLBACK_CHAIN(rtn, f, D02P_F_ARGS)                                                               \
  ZEM_INTERNAL void rtn##f_fh_(engine_data *, zem_routine f, const double *t, const int64_t *n,         \
                               const double *y, double *yp, int64_t *iuser, double *ruser) {            \
    reinterpret_cast<Zem_D02P_FFun>(f)(t, n, y, yp, iuser, ruser);                                      \
  }                                                                                                     \
  ZEM_INTERNAL void rtn##c_f_helper(engine_data *en_data, zem_routine f, const double *t, const int64_t *n, \
                                    const double *y, double *yp, int64_t *iuser, double *) {            \
    Zem_Comm *comm = zem::comm_from(iuser);                                                              \
    const zem::comm_watch watch(comm);                                                                   \
    reinterpret_cast<Zem_D02P_Fun>(f)(*t, *n, y, yp, comm);                                              \
    watch.take(en_data);                                                                                 \
  }
