// c05aw: zero of f near a point by continuation, within nfmax calls of f.
//
// 1. eps > 0 (a NaN fails); nfmax > 0: checked by the worker c05awfn_.
// 2. The continuation c05ax from x with tol = eps, absolute error control and
//    the internal scale scal = 2^-26 max(1, |x|), the usual increment of a
//    forward difference.  Each requested value is computed here, counted,
//    and accepted at once when it is an exact zero or |f| < eta.
// 3. When the continuation fails, it is restarted, for as long as calls of
//    f remain:
//    - no significant derivative at the start: the same start with scal
//      multiplied by 1000, at most four times (up to 2^-26 10^12 max(1,|x|));
//      beyond that, or when x + scal = x, the internal scale suits this
//      problem at no size and the routine gives up (status 2);
//    - any other failure (no step away, path lost, final problem unsolved):
//      from the point with the smallest |f| found so far, with its value
//      reused, and scal ten times larger at each such restart (up to 10^6
//      times, then from the start of that cycle again), so that a restart
//      does not repeat the previous attempt.  Every attempt costs at least
//      one call of f, so the restarts end within nfmax calls.
//    The solve ends with status 3 when f would have to be called more than
//    nfmax times; x is then the point with the smallest |f| found.
// 4. The work is bounded whatever f returns: an attempt that made no call
//    of f (the continuation refused a known start value that is NaN or
//    infinite) is followed by one that evaluates the start afresh, so every
//    two attempts cost a call; and once stalled_limit attempts in a row
//    found no point with a smaller |f| (every scale of the restart cycle
//    tried three times over, or f never finite), no internal scale suits
//    the problem: status 2, whatever nfmax is.
#include "c05/c05aw.h"

#include <algorithm>
#include <cmath>

#include "c05/message_fit.h"
#include <limits>

#include "c05/c05ax.h"

inline constexpr zem::message c05aw_messages[] = {
    {1, 1001, NE_REAL, {"On entry, eps = %s.", "Constraint: eps > 0.0."},
     {"On entry, eps = %s", "Constraint: eps > 0.0."}},
    {1, 1002, NE_INT, {"On entry, nfmax = %s.", "Constraint: nfmax > 0."},
     {"On entry, nfmax = %s", "Constraint: nfmax > 0."}},
    {2, 1003, NE_BAD_INTERNAL_SCALE,
     {"Internal scale factor invalid for this problem.", "Consider using c05axc instead and setting scal."},
     {"Internal scale factor invalid for this problem.", "Consider using c05axf instead and setting scal."}},
    {3, 1004, NE_TOO_MANY_CALLS,
     {"More than nfmax calls have been made to f.",
      "Either f has no zero near x or too much accuracy has been requested.",
      "Check the coding of f or increase eps."}},
};
ZEM_REGISTER_MESSAGES(c05aw)
static_assert(zem::c05::messages_fit(c05aw_messages), "a c05aw message line is too long");

namespace {

constexpr double sqrt_eps = 1.4901161193847656e-08;  // 2^-26
constexpr int max_rescales = 4;
constexpr double rescale_factor = 1000.0;
constexpr double restart_factor = 10.0;
constexpr double max_restart_scale = 1e6;
constexpr int stalled_limit = 21;

bool usable_scale(double x, double s) { return std::isfinite(x + s) && x + s != x; }

}  // namespace

ZEM_INTERNAL void c05awzn_(engine_data *en_data, double *x, double eps, double eta,
                           const zem::c05::evaluator *f, int64_t nfmax, char *errbuf,
                           int64_t *ifail) {
  double start = *x;
  double scal = sqrt_eps * std::max(1.0, std::fabs(start));
  if (!usable_scale(start, scal)) return zem::fail(errbuf, ifail, 2, 1003);

  const int64_t absolute = 1;
  double state[zem::c05ax::state_len] = {};
  double best = start, f_best = std::numeric_limits<double>::infinity();
  bool start_known = false;
  double f_start = 0.0;
  int64_t calls = 0;
  int rescales = 0;
  double restart_scale = 1.0;
  int stalled = 0;

  for (;;) {
    const int64_t calls_before = calls;
    const double f_best_before = f_best;
    double xs = start, fv = f_start;
    int64_t ind = start_known ? -1 : 1, status = 0;
    c05axfn_(en_data, &xs, &fv, &eps, &absolute, &scal, state, &ind, errbuf, &status);
    while (ind != 0) {
      if (calls >= nfmax) {
        *x = best;
        return zem::fail(errbuf, ifail, 3, 1004);
      }
      ++calls;
      if (const int64_t flag = (*f)(xs, &fv); flag != 0) {
        *x = xs;
        return zem::user_stop(errbuf, ifail, flag);
      }
      if (fv == 0.0 || std::fabs(fv) < eta) {
        *x = xs;
        return zem::succeed(ifail);
      }
      if (!std::isnan(fv) && std::fabs(fv) < std::fabs(f_best)) {
        best = xs;
        f_best = fv;
      }
      if (xs == start && std::isfinite(fv)) {
        start_known = true;
        f_start = fv;
      }
      c05axfn_(en_data, &xs, &fv, &eps, &absolute, &scal, state, &ind, errbuf, &status);
    }
    if (status == 0) {
      *x = xs;
      return zem::succeed(ifail);
    }
    if (status == 1) {  // x + scal = x at the start: the internal scale cannot work
      *x = best;
      return zem::fail(errbuf, ifail, 2, 1003);
    }
    if (status == 3) {  // no significant derivative: a larger increment
      scal *= rescale_factor;
      if (++rescales > max_rescales || !usable_scale(start, scal)) {
        *x = best;
        return zem::fail(errbuf, ifail, 2, 1003);
      }
      continue;
    }
    // No progress for too long: no internal scale works for this problem.
    stalled = std::fabs(f_best) < std::fabs(f_best_before) ? 0 : stalled + 1;
    if (stalled >= stalled_limit) {
      *x = best;
      return zem::fail(errbuf, ifail, 2, 1003);
    }
    if (calls == calls_before) start_known = false;
    // The continuation failed: start again from the best point found.
    if (best != start) {
      start = best;
      f_start = f_best;
      start_known = std::isfinite(f_best);
    }
    // Coarser increments up to 10^6 times the first, then round again; every
    // attempt costs at least one call, so the loop ends within nfmax calls.
    restart_scale = restart_scale >= max_restart_scale ? 1.0 : restart_scale * restart_factor;
    scal = sqrt_eps * std::max(1.0, std::fabs(start)) * restart_scale;
    if (!usable_scale(start, scal)) {
      *x = best;
      return zem::fail(errbuf, ifail, 2, 1003);
    }
  }
}

// One evaluation of f: the point, the value, and the user's data.
#define C05AW_F_ARGS(V, A, U) V(const double *, x) V(double *, retval) A(int64_t *, iuser) A(double *, ruser)
ZEM_CALLBACK_CHAIN(c05aw, f, C05AW_F_ARGS)

ZEM_INTERNAL void c05awf_fh_(engine_data *, zem_routine f, const double *x, double *retval, int64_t *iuser,
                             double *ruser) {
  *retval = reinterpret_cast<Zem_C05AW_FFun>(f)(x, iuser, ruser);
}
ZEM_INTERNAL void c05awc_f_helper(engine_data *en_data, zem_routine f, const double *x, double *retval,
                                  int64_t *iuser, double *) {
  Zem_Comm *comm = zem::comm_from(iuser);
  const zem::comm_watch watch(comm);
  *retval = reinterpret_cast<Zem_C05AW_Fun>(f)(*x, comm);
  watch.take(en_data);
}

#define C05AW_ARGS(V, A, U)                                                                               \
  V(double *, x) V(const double *, eps) V(const double *, eta) U(zem_routine, f) U(zem_routine, internal) \
  U(c05aw_f_adaptor, adaptor) V(const int64_t *, nfmax) A(int64_t *, iuser) A(double *, ruser)            \
  V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(c05aw, C05AW_ARGS)

namespace {

// The callback chain of one c05aw call, seen by the algorithm as f(x).
struct f_chain {
  engine_data *en_data;
  zem_routine f;
  c05aw_f_adaptor adaptor;
  int64_t *iuser;
  double *ruser;

  static int64_t call(void *self, double x, double *fx) {
    auto *k = static_cast<f_chain *>(self);
    return c05awf_print_fh_(k->adaptor, k->en_data, k->f, &x, fx, k->iuser, k->ruser);
  }
};

}  // namespace

ZEM_INTERNAL void c05awfn_(engine_data *en_data, double *x, const double *eps, const double *eta, zem_routine f,
                           zem_routine, c05aw_f_adaptor adaptor, const int64_t *nfmax, int64_t *iuser, double *ruser,
                           char *errbuf, int64_t *ifail) {
  *ifail = 0;
  if (!(*eps > 0.0)) return zem::fail(errbuf, ifail, 1, 1001, *eps);  // a NaN fails
  if (*nfmax <= 0) return zem::fail(errbuf, ifail, 1, 1002, *nfmax);
  f_chain chain{en_data, f, adaptor, iuser, ruser};
  const zem::c05::evaluator ev{f_chain::call, &chain};
  c05awzn_(en_data, x, *eps, *eta, &ev, *nfmax, errbuf, ifail);
}

ZEM_API void c05awf_(double *x, const double *eps, const double *eta, Zem_C05AW_FFun f, const int64_t *nfmax,
                     int64_t iuser[], double ruser[], int64_t *ifail) {
  zem::f_entry call("c05awf", c05aw_messages);
  c05awft_(&call.en_data, x, eps, eta, reinterpret_cast<zem_routine>(f), y90jdsn_, c05awf_fh_, nfmax, iuser, ruser,
           call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void c05awc(double *x, double eps, double eta, Zem_C05AW_Fun f, int64_t nfmax, Zem_Comm *comm,
                    Zem_Fail *fail) {
  zem::c_entry call("c05awc", c05aw_messages, fail);
  if (!x) return call.bad_param("x");
  if (!f) return call.bad_param("f");
  c05awft_(&call.en_data, x, &eps, &eta, reinterpret_cast<zem_routine>(f), nullptr, c05awc_f_helper, &nfmax,
           call.comm_slot(comm), call.ruser(), call.errbuf, &call.status);
  call.finish();
}
