// c05ay: a zero of a continuous function f in a given interval [a,b].
//
// The worker checks eps and the interval, evaluates f at both ends through
// the callback chain, and runs the iteration of the core c05az (c05/brent.h) with
// absolute error control, accepting at once any point where |f| < eta or
// f = 0.  The core's pole warning becomes status 3, its "tolerance too small"
// warning status 2; in both cases x holds the core's best estimate.
#include <algorithm>
#include <cmath>

#include "c05/brent.h"
#include "c05/c05az.h"

inline constexpr zem::message c05ay_messages[] = {
    {1, 1001, NE_REAL, {"On entry, eps = %s.", "Constraint: eps > 0.0."},
     {"On entry, eps = %s", "Constraint: eps > 0.0."}},
    {1, 1002, NE_REAL_2, {"On entry, a = %s and b = %s.", "Constraint: a != b."},
     {"On entry, a = %s and b = %s", "Constraint: a /= b."}},
    {1, 1006, NE_REAL_2, {"On entry, a = %s and b = %s.", "Constraint: a and b must be finite."},
     {"On entry, a = %s and b = %s", "Constraint: a and b must be finite."}},
    {1, 1003, NE_FUNC_END_VAL,
     {"On entry, f(a) and f(b) have the same sign with neither equalling 0.0:", "f(a) = %s and f(b) = %s."},
     {"On entry, f(a) and f(b) have the same sign with neither equalling 0.0:", "f(a) = %s and f(b) = %s"}},
    {2, 1004, NE_TOO_SMALL,
     {"No further improvement in the solution is possible.", "eps is too small: eps = %s.",
      "The final value of x returned is an accurate approximation to the zero."},
     {"No further improvement in the solution is possible.", "eps is too small: eps = %s",
      "The final value of x returned is an accurate approximation to the zero."}},
    {3, 1005, NE_PROBABLE_POLE,
     {"The function values in the interval [a,b] might contain",
      "a pole rather than a zero. Reducing eps may help in distinguishing between", "a pole and a zero."}},
};
ZEM_REGISTER_MESSAGES(c05ay)

// One evaluation of f: the point, the value, and the user's data.
#define C05AY_F_ARGS(V, A, U) V(const double *, x) V(double *, retval) A(int64_t *, iuser) A(double *, ruser)
ZEM_CALLBACK_CHAIN(c05ay, f, C05AY_F_ARGS)

ZEM_INTERNAL void c05ayf_fh_(engine_data *, zem_routine f, const double *x, double *retval, int64_t *iuser,
                             double *ruser) {
  *retval = reinterpret_cast<Zem_C05AY_FFun>(f)(x, iuser, ruser);
}
ZEM_INTERNAL void c05ayc_f_helper(engine_data *en_data, zem_routine f, const double *x, double *retval,
                                  int64_t *iuser, double *) {
  Zem_Comm *comm = zem::comm_from(iuser);
  const zem::comm_watch watch(comm);
  *retval = reinterpret_cast<Zem_C05AY_Fun>(f)(*x, comm);
  watch.take(en_data);
}

#define C05AY_ARGS(V, A, U)                                                                               \
  V(const double *, a) V(const double *, b) V(const double *, eps) V(const double *, eta)                \
  U(zem_routine, f) U(zem_routine, internal) U(c05ay_f_adaptor, adaptor) V(double *, x)                 \
  A(int64_t *, iuser) A(double *, ruser) V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(c05ay, C05AY_ARGS)

// The iteration of c05ay once both end values are known (inlined into the
// worker).
ZEM_LAYER_INLINE void c05ayzn_(engine_data *en_data, double a, double fa, double b, double fb, double eps, double eta,
                           zem_routine f, c05ay_f_adaptor adaptor, double *x, int64_t *iuser, double *ruser,
                           char *errbuf, int64_t *ifail);

// The worker proper, for one adaptor (c05ayfn_ below picks it once per call).
ZEM_LAYER_INLINE void c05ayyn_(engine_data *en_data, const double *a, const double *b, const double *eps,
                               const double *eta, zem_routine f, c05ay_f_adaptor adaptor, double *x, int64_t *iuser,
                               double *ruser, char *errbuf, int64_t *ifail) {
  *ifail = 0;
  if (0.0 >= *eps) return zem::fail(errbuf, ifail, 1, 1001, *eps);  // a NaN passes
  if (*a == *b) return zem::fail(errbuf, ifail, 1, 1002, *a, *b);
  if (!std::isfinite(*a) || !std::isfinite(*b)) return zem::fail(errbuf, ifail, 1, 1006, *a, *b);

  // f at the point *x; false when the user asked to stop.  (Plain calls,
  // no closures: a closure kept for an out-of-line call would hold the
  // addresses of these locals and pin them to memory.)
  const double eta_v = *eta;
  auto small = [eta_v](double fx) { return std::fabs(fx) < eta_v || fx == 0.0; };

  double fa = 0.0, fb = 0.0;  // set, so that a trace block before the call shows 0
  *x = *a;
  if (c05ayf_print_fh_(adaptor, en_data, f, x, &fa, iuser, ruser) != 0)
    return zem::user_stop(errbuf, ifail, en_data->cb_status);
  if (small(fa)) return;
  *x = *b;
  if (c05ayf_print_fh_(adaptor, en_data, f, x, &fb, iuser, ruser) != 0)
    return zem::user_stop(errbuf, ifail, en_data->cb_status);
  if (small(fb)) return;
  if ((fa <= 0.0) == (fb <= 0.0)) return zem::fail(errbuf, ifail, 1, 1003, fa, fb);

  // The core's iteration, started with both end values known, exactly as
  // c05az runs it from ind = -1 but with the state in registers rather than
  // in a state array (the same points, the same exits).
  return c05ayzn_(en_data, *a, fa, *b, fb, *eps, eta_v, f, adaptor, x, iuser, ruser, errbuf, ifail);
}

ZEM_LAYER_INLINE void c05ayfn_(engine_data *en_data, const double *a, const double *b, const double *eps,
                               const double *eta, zem_routine f, zem_routine, c05ay_f_adaptor adaptor, double *x,
                               int64_t *iuser, double *ruser, char *errbuf, int64_t *ifail) {
  ZEM_WITH_KNOWN_ADAPTOR(c05ay, f, adaptor, known,
                         c05ayyn_(en_data, a, b, eps, eta, f, known, x, iuser, ruser, errbuf, ifail));
}

ZEM_LAYER_INLINE void c05ayzn_(engine_data *en_data, double a, double fa, double b, double fb, double eps,
                               double eta, zem_routine f, c05ay_f_adaptor adaptor, double *x, int64_t *iuser,
                               double *ruser, char *errbuf, int64_t *ifail) {
  using zem::c05::brent_next;
  zem::c05::brent_state s{a, fa, b, fb, a, fa, b - a, b - a};
  const double fmax = std::max(std::fabs(fa), std::fabs(fb));  // for the pole test
  double fx = 0.0;
  // The final evaluation (at the converged point, for the pole test) has a
  // call of its own, apart from the one at each new iterate: with one call
  // site for both, the choice between b and b_new and the outcome of the
  // iteration stayed live across the user's call, and the compiler kept the
  // last step in a stack slot, so that every new point waited for a store
  // and a load on the critical path of every evaluation.
  for (int64_t iteration = 0;; ++iteration) {
    double b_new = 0.0;
    const brent_next next = zem::c05::brent_iterate(s, eps, 1, b_new);  // absolute error control
    if (next == brent_next::converged && __builtin_expect(iteration != zem::c05::max_iterations, 1)) {
      // The final evaluation at the converged point, for the pole test.
      *x = s.b;
      if (c05ayf_print_fh_(adaptor, en_data, f, x, &fx, iuser, ruser) != 0)
        return zem::user_stop(errbuf, ifail, en_data->cb_status);
      if (std::fabs(fx) < eta || fx == 0.0 || std::fabs(fx) <= fmax) return;
      return zem::fail(errbuf, ifail, 3, 1005);
    }
    if (next != brent_next::evaluate || __builtin_expect(iteration == zem::c05::max_iterations, 0)) {
      *x = s.b;
      return zem::fail(errbuf, ifail, 2, 1004, eps);
    }
    *x = b_new;
    if (c05ayf_print_fh_(adaptor, en_data, f, x, &fx, iuser, ruser) != 0)
      return zem::user_stop(errbuf, ifail, en_data->cb_status);
    if (std::fabs(fx) < eta || fx == 0.0) return;
    s.fb = fx;
  }
}

ZEM_API void c05ayf_(const double *a, const double *b, const double *eps, const double *eta, Zem_C05AY_FFun f,
                     double *x, int64_t iuser[], double ruser[], int64_t *ifail) {
  zem::f_entry call("c05ayf", c05ay_messages);
  c05ayft_(&call.en_data, a, b, eps, eta, reinterpret_cast<zem_routine>(f), y90jdsn_, c05ayf_fh_, x, iuser, ruser,
           call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void c05ayc(double a, double b, double eps, double eta, Zem_C05AY_Fun f, double *x, Zem_Comm *comm,
                    Zem_Fail *fail) {
  zem::c_entry call("c05ayc", c05ay_messages, fail);
  if (!x) return call.bad_param("x");
  if (!f) return call.bad_param("f");
  c05ayft_(&call.en_data, &a, &b, &eps, &eta, reinterpret_cast<zem_routine>(f), nullptr, c05ayc_f_helper, x,
           call.comm_slot(comm), call.ruser(), call.errbuf, &call.status);
  call.finish();
}
