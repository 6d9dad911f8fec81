// c05au: zero of f near a point.
//
// 1. eps > 0 (a NaN fails), checked by the worker c05aufn_.
// 2. The search of c05av from x with step h inside [boundl, boundu]; its
//    argument checks are this routine's checks 2-5, reported with the same
//    values.  Every point it asks for is evaluated here; a value with
//    |f| < eta, or an exact zero, ends the solve at once.
// 3. On the interval [x, y] found, the Brent core c05az with tolx = eps and
//    absolute error control, started with both end values known (ind = -1),
//    so that no value is computed twice.  Its probable-pole and
//    tolerance-too-small outcomes become statuses 3 and 2, as in c05ay.
#include "c05/c05au.h"

#include <cmath>

#include "c05/message_fit.h"

#include "c05/c05av.h"
#include "c05/c05az.h"

inline constexpr zem::message c05au_messages[] = {
    {1, 1001, NE_REAL, {"On entry, eps = %s.", "Constraint: eps > 0.0."},
     {"On entry, eps = %s", "Constraint: eps > 0.0."}},
    {1, 1002, NE_REAL_2, {"On entry, boundl = %s,", "boundu = %s.", "Constraint: boundl < boundu."},
     {"On entry, boundl = %s,", "boundu = %s", "Constraint: boundl < boundu."}},
    {1, 1003, NE_3_REAL_ARG_CONS,
     {"On entry, x = %s,", "boundl = %s and boundu = %s.", "Constraint: boundl <= x <= boundu."},
     {"On entry, x = %s,", "boundl = %s and boundu = %s", "Constraint: boundl <= x <= boundu."}},
    {1, 1004, NE_4_REAL_ARG_CONS,
     {"On entry, x = %s and h = %s,", "boundl = %s and boundu = %s.",
      "Constraint: either x+h or x-h must lie inside the closed interval", "[boundl,boundu]."},
     {"On entry, x = %s and h = %s,", "boundl = %s and boundu = %s",
      "Constraint: either x+h or x-h must lie inside the closed interval", "[boundl,boundu]."}},
    {1, 1005, NE_REAL_2, {"On entry, x = %s and h = %s.", "Constraint: x+h != x (to machine accuracy)."},
     {"On entry, x = %s and h = %s", "Constraint: x+h /= x (to machine accuracy)."}},
    {2, 1006, NE_TOO_SMALL,
     {"No further improvement in the solution is possible.", "eps is too small: eps = %s.",
      "The final value of x returned is an accurate approximation to the zero."},
     {"No further improvement in the solution is possible.", "eps is too small: eps = %s",
      "The final value of x returned is an accurate approximation to the zero."}},
    {3, 1007, NE_PROBABLE_POLE,
     {"The function values in the interval [a,b] might contain",
      "a pole rather than a zero. Reducing eps may help in distinguishing between", "a pole and a zero."}},
    {4, 1008, NE_NO_BRACKET,
     {"An interval containing the zero could not be found.",
      "Increasing h and calling c05auc again will increase the range searched for",
      "the zero. Decreasing h and calling c05auc again will refine the mesh used", "in the search for the zero."},
     {"An interval containing the zero could not be found.",
      "Increasing h and calling c05auf again will increase the range searched for",
      "the zero. Decreasing h and calling c05auf again will refine the mesh used", "in the search for the zero."}},
};
ZEM_REGISTER_MESSAGES(c05au)
static_assert(zem::c05::messages_fit(c05au_messages), "a c05au message line is too long");

namespace {

// The point is acceptable as it stands: an exact zero, or |f| < eta.
bool acceptable(double fv, double eta) { return fv == 0.0 || std::fabs(fv) < eta; }

}  // namespace

ZEM_INTERNAL void c05auzn_(engine_data *en_data, double *x, double h, double eps, double eta,
                           double boundl, double boundu, const zem::c05::evaluator *f,
                           char *errbuf, int64_t *ifail) {
  // Search.  c05av checks boundl < boundu, boundl <= x <= boundu, x+h or
  // x-h inside, and |h| > |x| 2^-53, in that order, before any evaluation.
  double search[zem::c05av::state_len] = {};
  double xs = *x, ys = *x, fv = 0.0;
  int64_t ind = 1, status = 0;
  c05avfn_(en_data, &xs, &fv, &h, &boundl, &boundu, &ys, search, &ind, errbuf, &status);
  // The search fails on its initial entry only through the argument checks,
  // whose details (1002-1005) and values are the same in both routines, so
  // its message record stands as this routine's.
  if (status != 0) {
    *ifail = status;
    return;
  }
  while (ind != 0) {
    if (const int64_t flag = (*f)(xs, &fv); flag != 0) {
      *x = xs;
      return zem::user_stop(errbuf, ifail, flag);
    }
    if (acceptable(fv, eta)) {
      *x = xs;
      return zem::succeed(ifail);
    }
    c05avfn_(en_data, &xs, &fv, &h, &boundl, &boundu, &ys, search, &ind, errbuf, &status);
  }
  *x = xs;
  if (status != 0) return zem::fail(errbuf, ifail, 4, 1008);
  if (fv == 0.0) return zem::succeed(ifail);

  // Solve on the bracket [xs, ys]: f(xs) = fv, f(ys) = search[f_prev].
  double brent[10] = {};
  brent[0] = search[zem::c05av::f_prev];
  const double tolx = eps;
  const int64_t absolute = 1;
  ind = -1;
  c05azfn_(en_data, &xs, &ys, &fv, &tolx, &absolute, brent, &ind, errbuf, &status);
  while (ind != 0) {
    if (const int64_t flag = (*f)(xs, &fv); flag != 0) {
      *x = xs;
      return zem::user_stop(errbuf, ifail, flag);
    }
    if (acceptable(fv, eta)) {
      *x = xs;
      return zem::succeed(ifail);
    }
    c05azfn_(en_data, &xs, &ys, &fv, &tolx, &absolute, brent, &ind, errbuf, &status);
  }
  *x = xs;
  switch (status) {
    case 0: return zem::succeed(ifail);
    case 4: return zem::fail(errbuf, ifail, 3, 1007);
    case 5: return zem::fail(errbuf, ifail, 2, 1006, eps);
    default: return zem::fail(errbuf, ifail, 5, 1999);  // unreachable: the core's own checks pass
  }
}

// One evaluation of f: the point, the value, and the user's data.
#define C05AU_F_ARGS(V, A, U) V(const double *, x) V(double *, retval) A(int64_t *, iuser) A(double *, ruser)
ZEM_CALLBACK_CHAIN(c05au, f, C05AU_F_ARGS)

ZEM_INTERNAL void c05auf_fh_(engine_data *, zem_routine f, const double *x, double *retval, int64_t *iuser,
                             double *ruser) {
  *retval = reinterpret_cast<Zem_C05AU_FFun>(f)(x, iuser, ruser);
}
ZEM_INTERNAL void c05auc_f_helper(engine_data *en_data, zem_routine f, const double *x, double *retval,
                                  int64_t *iuser, double *) {
  Zem_Comm *comm = zem::comm_from(iuser);
  const zem::comm_watch watch(comm);
  *retval = reinterpret_cast<Zem_C05AU_Fun>(f)(*x, comm);
  watch.take(en_data);
}

#define C05AU_ARGS(V, A, U)                                                                               \
  V(double *, x) V(const double *, h) V(const double *, eps) V(const double *, eta) U(zem_routine, f)    \
  U(zem_routine, internal) U(c05au_f_adaptor, adaptor) V(const double *, boundl)                         \
  V(const double *, boundu) A(int64_t *, iuser) A(double *, ruser) V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(c05au, C05AU_ARGS)

namespace {

// The callback chain of one c05au call, seen by the algorithm as f(x).
struct f_chain {
  engine_data *en_data;
  zem_routine f;
  c05au_f_adaptor adaptor;
  int64_t *iuser;
  double *ruser;

  static int64_t call(void *self, double x, double *fx) {
    auto *k = static_cast<f_chain *>(self);
    return c05auf_print_fh_(k->adaptor, k->en_data, k->f, &x, fx, k->iuser, k->ruser);
  }
};

}  // namespace

ZEM_INTERNAL void c05aufn_(engine_data *en_data, double *x, const double *h, const double *eps, const double *eta,
                           zem_routine f, zem_routine, c05au_f_adaptor adaptor, const double *boundl,
                           const double *boundu, int64_t *iuser, double *ruser, char *errbuf, int64_t *ifail) {
  *ifail = 0;
  if (!(*eps > 0.0)) return zem::fail(errbuf, ifail, 1, 1001, *eps);  // a NaN fails
  f_chain chain{en_data, f, adaptor, iuser, ruser};
  const zem::c05::evaluator ev{f_chain::call, &chain};
  c05auzn_(en_data, x, *h, *eps, *eta, *boundl, *boundu, &ev, errbuf, ifail);
}

ZEM_API void c05auf_(double *x, const double *h, const double *eps, const double *eta, Zem_C05AU_FFun f,
                     const double *boundl, const double *boundu, int64_t iuser[], double ruser[], int64_t *ifail) {
  zem::f_entry call("c05auf", c05au_messages);
  c05auft_(&call.en_data, x, h, eps, eta, reinterpret_cast<zem_routine>(f), y90jdsn_, c05auf_fh_, boundl, boundu,
           iuser, ruser, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void c05auc(double *x, double h, double eps, double eta, Zem_C05AU_Fun f, double boundl, double boundu,
                    Zem_Comm *comm, Zem_Fail *fail) {
  zem::c_entry call("c05auc", c05au_messages, fail);
  if (!x) return call.bad_param("x");
  if (!f) return call.bad_param("f");
  c05auft_(&call.en_data, x, &h, &eps, &eta, reinterpret_cast<zem_routine>(f), nullptr, c05auc_f_helper, &boundl,
           &boundu, call.comm_slot(comm), call.ruser(), call.errbuf, &call.status);
  call.finish();
}
