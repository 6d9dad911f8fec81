// c05az: a zero of a continuous function by reverse communication (Brent's
// method).  The method and the layout of the state array are described in
// c05/brent.h, which holds the core; this file is its entries and messages.
#include "c05/brent.h"
#include "c05/c05az.h"

inline constexpr zem::message c05az_messages[] = {
    {1, 1001, NE_NOT_SIGN_CHANGE,
     {"On entry, f(x) and f(y) have the same sign with neither equalling 0.0:", "f(x) = %s and f(y) = %s."},
     {"On entry, f(x) and f(y) have the same sign with neither equalling 0.0:", "f(x) = %s and f(y) = %s"}},
    {2, 1002, NE_INT, {"On entry, ind = %s.", "Constraint: ind = -1, 1, 2, 3 or 4."},
     {"On entry, ind = %s", "Constraint: ind = -1, 1, 2, 3 or 4."}},
    {3, 1003, NE_REAL, {"On entry, tolx = %s.", "Constraint: tolx > 0.0."},
     {"On entry, tolx = %s", "Constraint: tolx > 0.0."}},
    {3, 1004, NE_INT, {"On entry, ir = %s.", "Constraint: ir = 0, 1 or 2."},
     {"On entry, ir = %s", "Constraint: ir = 0, 1 or 2."}},
    {3, 1007, NE_REAL_2, {"On entry, x = %s and y = %s.", "Constraint: x and y finite, x != y."},
     {"On entry, x = %s and y = %s", "Constraint: x and y finite, x /= y."}},
    {2, 1008, NE_INT,
     {"On entry, ind = %s.", "Constraint: x, y and c as the previous call left them."},
     {"On entry, ind = %s", "Constraint: x, y and c as the previous call left them."}},
    {4, 1005, NE_PROBABLE_POLE,
     {"The final interval may contain a pole rather than a zero.",
      "Note that this error exit is not completely reliable: it may be taken",
      "in extreme cases when [x,y] contains a zero, or it may not be taken", "when [x,y] contains a pole.",
      "Both these cases occur most frequently when tolx is large."}},
    {5, 1006, NW_TOO_MUCH_ACC_REQUESTED,
     {"The tolerance tolx has been set too small for the problem",
      "being solved. However, the values x and y returned may well", "be good approximations to the zero.",
      "tolx = %s."},
     {"The tolerance tolx has been set too small for the problem",
      "being solved. However, the values x and y returned may well", "be good approximations to the zero.",
      "tolx = %s"}},
};
ZEM_REGISTER_MESSAGES(c05az)

ZEM_ENGINE_LAYERS(c05az, C05AZ_ARGS)

ZEM_INTERNAL void c05azfn_(engine_data *, double *x, double *y, const double *fx, const double *tolx,
                           const int64_t *ir, double *c, int64_t *ind, char *errbuf, int64_t *ifail) {
  zem::c05::c05az_core(x, y, fx, tolx, ir, c, ind, errbuf, ifail);
}

ZEM_API void c05azf_(double *x, double *y, const double *fx, const double *tolx, const int64_t *ir, double c[],
                     int64_t *ind, int64_t *ifail) {
  zem::f_entry call("c05azf", c05az_messages);
  c05azft_(&call.en_data, x, y, fx, tolx, ir, c, ind, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void c05azc(double *x, double *y, double fx, double tolx, Zem_ErrorControl ir, double c[], int64_t *ind,
                    Zem_Fail *fail) {
  zem::c_entry call("c05azc", c05az_messages, fail);
  if (!ind) return call.bad_param("ind");
  auto bad = [&](const char *arg) {
    *ind = 0;
    call.bad_param(arg);
  };
  if (!x) return bad("x");
  if (!y) return bad("y");
  if (!c) return bad("c");
  const int64_t irc = ir == Zem_Mixed ? 0 : ir == Zem_Absolute ? 1 : ir == Zem_Relative ? 2 : -1;
  if (irc < 0) return bad("ir");
  c05azft_(&call.en_data, x, y, &fx, &tolx, &irc, c, ind, call.errbuf, &call.status);
  // A function value is wanted: return at once, nothing to report.
  if (*ind != 0) return;
  call.finish();
}
