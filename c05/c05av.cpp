// c05av: reverse-communication search for a sign change of f near a point.
//
// Method.  From the start point x0 the search walks with a fixed step:
//   sweep k (k = 0, 1, 2, 3) uses the step h_k = h0 * (-0.1)^k;
//   a sweep first walks from x0 in the direction of h_k, through the points
//   x0 + j |h_k| sign(h_k), j = 1, 2, ...; a point that would pass boundl or
//   boundu is cut to that bound, and meeting the bound ends the walk in that
//   direction (so does the side_steps-th point, which bounds the range a
//   sweep covers to side_steps * |h_k| on each side);
//   the walk then reverses: it starts again from x0 and walks the other way;
//   each new value is compared with the value at the previous point of the
//   same walk (the first with f(x0)).
// A sign change between two neighbouring points ends the search; so does an
// exact zero.  A sweep that ends without either raises k; the sweep after
// k = 3, or a refined step too small to move x0, ends the search with a
// failure.  Refining by -0.1 both shrinks the mesh tenfold and starts the
// next sweep in the other direction.
//
// Sign tests compare whether each value is not greater than zero, as the
// Brent core does; a NaN value has no sign here: a pair of points counts as
// a sign change only when both values are numbers, so a bracket returned by
// the search never has a NaN end.
//
// The state array is checked on every re-entry: a request must be
// outstanding and match ind, and the stored counters and points must be
// consistent.  A state changed by the caller is therefore caught before it
// can steer the walk anywhere (or loop), and ends the search with the
// no-interval failure (detail 1007, which says why).
#include "c05/c05av.h"

#include <cmath>

#include "c05/message_fit.h"

inline constexpr zem::message c05av_messages[] = {
    {2, 1001, NE_INT, {"On entry, ind = %s.", "Constraint: ind = -1, 1, 2 or 3."},
     {"On entry, ind = %s", "Constraint: ind = -1, 1, 2 or 3."}},
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
    {1, 1005, NE_REAL_2,
     {"On entry, x = %s and h = %s.", "Constraint: h must be sufficiently large that x+h != x on the computer."},
     {"On entry, x = %s and h = %s", "Constraint: h must be sufficiently large that x+h /= x on the computer."}},
    {3, 1006, NE_NO_BRACKET, {"An interval containing the zero could not be found.", "Try restarting with modified x and h."}},
    {3, 1007, NE_NO_BRACKET,
     {"An interval containing the zero could not be found.",
      "The state array c was changed between calls; restart the search."}},
};
ZEM_REGISTER_MESSAGES(c05av)
static_assert(zem::c05::messages_fit(c05av_messages), "a c05av message line is too long");

namespace {

using namespace zem::c05av;

// 2^-53: the relative spacing below which x + h cannot differ from x.
constexpr double half_ulp = 1.1102230246251565e-16;

// True when v holds an integer in [lo, hi] (false for NaN).
bool is_count(double v, double lo, double hi) { return v >= lo && v <= hi && v == std::floor(v); }

// Step of sweep k: h0 * (-0.1)^k, formed by repeated multiplication so that
// every entry computes the same value.
double sweep_step(double h0, double k) {
  double h = h0;
  for (int i = 0; i < static_cast<int>(k); ++i) h *= -0.1;
  return h;
}

// +1 or -1: the direction of the walk on the current side.
double walk_direction(const double *c) {
  const double d = sweep_step(c[step0], c[refine]) > 0.0 ? 1.0 : -1.0;
  return c[side] == 0.0 ? d : -d;
}

// A walk is over once its last point lies on the bound ahead of it, or once
// it has taken side_steps points.
bool walk_over(const double *c) {
  if (c[nsteps] >= static_cast<double>(side_steps)) return true;
  return walk_direction(c) > 0.0 ? c[prev] >= c[upper] : c[prev] <= c[lower];
}

// Puts the next point of the current walk into x and asks for its value.
void request_next_point(double *c, double *x, int64_t *ind) {
  const double len = std::fabs(sweep_step(c[step0], c[refine]));
  const double dir = walk_direction(c);
  const double j = c[nsteps] + 1.0;
  double p = c[start] + dir * (j * len);
  if (dir > 0.0 && p > c[upper]) p = c[upper];
  if (dir < 0.0 && p < c[lower]) p = c[lower];
  c[nsteps] = j;
  c[current] = p;
  c[request] = static_cast<double>(want_search_value);
  *x = p;
  *ind = want_search_value;
}

// Restarts the walk from x0 (the value there is known).
void walk_from_start(double *c, double side_index) {
  c[side] = side_index;
  c[nsteps] = 0.0;
  c[prev] = c[start];
  c[f_prev] = c[f_start];
}

// Moves the search on to its next point: along the current walk, then the
// reverse walk, then a refined sweep.  Returns false when the search has
// failed.  The loop runs at most twice per sweep.
bool advance(double *c, double *x, int64_t *ind) {
  for (;;) {
    if (!walk_over(c)) {
      request_next_point(c, x, ind);
      return true;
    }
    if (c[side] == 0.0) {
      walk_from_start(c, 1.0);
      continue;
    }
    if (c[refine] >= static_cast<double>(last_refinement)) return false;
    c[refine] += 1.0;
    if (c[start] + sweep_step(c[step0], c[refine]) == c[start]) return false;
    walk_from_start(c, 0.0);
  }
}

// The stored state is one that this routine could have left for a request
// of kind ind.
bool state_is_consistent(const double *c, int64_t ind) {
  if (c[request] != static_cast<double>(ind)) return false;
  if (!std::isfinite(c[start]) || !std::isfinite(c[step0]) || c[step0] == 0.0) return false;
  if (!(c[lower] < c[upper]) || !(c[lower] <= c[start] && c[start] <= c[upper])) return false;
  if (!is_count(c[refine], 0.0, static_cast<double>(last_refinement))) return false;
  if (!is_count(c[side], 0.0, 1.0)) return false;
  if (ind == want_start_value) return c[refine] == 0.0 && c[side] == 0.0 && c[nsteps] == 0.0;
  if (!is_count(c[nsteps], 1.0, static_cast<double>(side_steps))) return false;
  return c[lower] <= c[current] && c[current] <= c[upper] && c[lower] <= c[prev] && c[prev] <= c[upper];
}

void finish(double *c, int64_t *ind, int64_t *ifail) {
  c[request] = 0.0;
  *ind = 0;
  zem::succeed(ifail);
}

void give_up(double *c, double *x, int64_t *ind, char *errbuf, int64_t *ifail) {
  *x = c[start];
  c[request] = 0.0;
  *ind = 0;
  zem::fail(errbuf, ifail, 3, 1006);
}

// f(x0) is known: either it is zero, or the first sweep begins.
void begin_search(double f0, double *x, double *y, double *c, int64_t *ind, char *errbuf,
                  int64_t *ifail) {
  c[f_start] = f0;
  if (f0 == 0.0) {
    *x = c[start];
    *y = c[start];
    c[f_prev] = f0;
    return finish(c, ind, ifail);
  }
  walk_from_start(c, 0.0);
  if (!advance(c, x, ind)) return give_up(c, x, ind, errbuf, ifail);
  zem::succeed(ifail);
}

// fv = f at the current search point.
void take_value(double fv, double *x, double *y, double *c, int64_t *ind, char *errbuf,
                int64_t *ifail) {
  const double p = c[current];
  if (fv == 0.0) {
    *x = p;
    *y = p;
    c[f_prev] = fv;
    return finish(c, ind, ifail);
  }
  const double fp = c[f_prev];
  if (!std::isnan(fv) && !std::isnan(fp) && ((fv <= 0.0) != (fp <= 0.0))) {
    *x = p;
    *y = c[prev];  // c[f_prev] keeps f(y)
    return finish(c, ind, ifail);
  }
  c[prev] = p;
  c[f_prev] = fv;
  if (!advance(c, x, ind)) return give_up(c, x, ind, errbuf, ifail);
  zem::succeed(ifail);
}

}  // namespace

ZEM_ENGINE_LAYERS(c05av, C05AV_ARGS)

ZEM_INTERNAL void c05avfn_(engine_data *, double *x, const double *fx, const double *h, const double *boundl,
                           const double *boundu, double *y, double *c, int64_t *ind, char *errbuf,
                           int64_t *ifail) {
  *ifail = 0;
  const int64_t mode = *ind;
  if (mode != -1 && mode != 1 && mode != want_start_value && mode != want_search_value) {
    *ind = 0;
    c[request] = 0.0;
    return zem::fail(errbuf, ifail, 2, 1001, mode);
  }

  if (mode == 1 || mode == -1) {
    const double lo = *boundl, hi = *boundu, x0 = *x, h0 = *h;
    auto inside = [&](double v) { return lo <= v && v <= hi; };
    // Each test is written so that a NaN fails it.
    int64_t detail = 0;
    if (!(lo < hi))
      detail = 1002;
    else if (!inside(x0))
      detail = 1003;
    else if (!inside(x0 + h0) && !inside(x0 - h0))
      detail = 1004;
    else if (!(std::fabs(h0) > std::fabs(x0) * half_ulp))
      detail = 1005;
    if (detail != 0) {
      *ind = 0;
      c[request] = 0.0;
      switch (detail) {
        case 1002: return zem::fail(errbuf, ifail, 1, 1002, lo, hi);
        case 1003: return zem::fail(errbuf, ifail, 1, 1003, x0, lo, hi);
        case 1004: return zem::fail(errbuf, ifail, 1, 1004, x0, h0, lo, hi);
        default: return zem::fail(errbuf, ifail, 1, 1005, x0, h0);
      }
    }
    c[start] = x0;
    c[step0] = h0;
    c[lower] = lo;
    c[upper] = hi;
    c[refine] = 0.0;
    c[side] = 0.0;
    c[nsteps] = 0.0;
    c[prev] = x0;
    c[current] = x0;
    if (mode == 1) {
      c[request] = static_cast<double>(want_start_value);
      *ind = want_start_value;
      return zem::succeed(ifail);
    }
    return begin_search(*fx, x, y, c, ind, errbuf, ifail);
  }

  if (!state_is_consistent(c, mode)) {
    // x is left as the caller passed it: the stored start may be garbage.
    c[request] = 0.0;
    *ind = 0;
    return zem::fail(errbuf, ifail, 3, 1007);
  }
  if (mode == want_start_value) return begin_search(*fx, x, y, c, ind, errbuf, ifail);
  return take_value(*fx, x, y, c, ind, errbuf, ifail);
}

ZEM_API void c05avf_(double *x, const double *fx, const double *h, const double *boundl, const double *boundu,
                     double *y, double c[], int64_t *ind, int64_t *ifail) {
  zem::f_entry call("c05avf", c05av_messages);
  c05avft_(&call.en_data, x, fx, h, boundl, boundu, y, c, ind, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void c05avc(double *x, double fx, double h, double boundl, double boundu, double *y, double c[],
                    int64_t *ind, Zem_Fail *fail) {
  zem::c_entry call("c05avc", c05av_messages, fail);
  if (!ind) return call.bad_param("ind");
  auto bad = [&](const char *arg) {
    *ind = 0;
    call.bad_param(arg);
  };
  if (!x) return bad("x");
  if (!y) return bad("y");
  if (!c) return bad("c");
  c05avft_(&call.en_data, x, &fx, &h, &boundl, &boundu, y, c, ind, call.errbuf, &call.status);
  // A function value is wanted: return at once, nothing to report.
  if (*ind != 0) return;
  call.finish();
}
