// The adaptive engines of chapter d01 (see quad_engine.h).
//
// adaptive_extrapolated follows the step list of the library's d01rj
// description; the step numbers in the comments are those of that list.
// Internal codes: 1 limit, 2 round-off, 3 round-off seen in the extrapolation
// (from ierro), 4 bad integrand, 5 round-off in the extrapolation table,
// 6 divergence; the reported code is the internal one, minus one above 2.

#include "quad_engine.h"

#include <algorithm>
#include <cmath>

#include "zem_blas_dsum.h"

namespace zem::quad {

namespace {

double global_sum(const double *r, int64_t n, const policy &P) {
  if (P.compensated_sum) return zem_blas_dsum(n, r, 1);
  double s = 0.0;
  for (int64_t i = 0; i < n; ++i) s += r[i];
  return s;
}

int64_t reported(int64_t code) { return code > 2 ? code - 1 : code; }

// The interval has shrunk to the resolution of the numbers: the midpoint
// a2 of [a1, b2] is no longer distinguishable from its ends.
bool too_small(double a1, double a2, double b2, const policy &P) {
  return std::max(std::fabs(a1), std::fabs(b2)) <=
         (1.0 + 100.0 * P.epmach) * (std::fabs(a2) + 1000.0 * P.uflow);
}

// The failure flags after a bisection (steps 5 and 8), with the codes of the
// extrapolating scheme: round-off (2, and ierro 3), the subdivision limit
// (1), an interval down to the resolution of the numbers (4); a later flag
// overwrites an earlier one.  The published order tests the limit after the
// round-off; the library's late placement tests it first.
void failure_flags(bool limit_first, int64_t last, int64_t limit, int64_t iroff1, int64_t iroff2,
                   int64_t iroff3, double a1, double a2, double b2, const policy &P, int64_t &code,
                   int64_t &ierro) {
  if (limit_first && last == limit) code = 1;
  if (iroff1 + iroff2 >= 10 || iroff3 >= 20) code = 2;
  if (iroff2 >= 5) ierro = 3;
  if (!limit_first && last == limit) code = 1;
  if (too_small(a1, a2, b2, P)) code = 4;
}

// The two halves of the bisected interval maxerr go to slots maxerr and
// last-1: the one with the larger error keeps maxerr.
void store_halves(const quad_lists &L, int64_t maxerr, int64_t newest, double a1, double b1,
                  double b2, const rule_estimate &h1, const rule_estimate &h2, const policy &P) {
  const bool right_keeps = P.tie_to_right ? h2.abserr >= h1.abserr : h2.abserr > h1.abserr;
  if (!right_keeps) {
    L.blist[maxerr] = b1;
    L.rlist[maxerr] = h1.result;
    L.elist[maxerr] = h1.abserr;
    L.alist[newest] = b1;
    L.blist[newest] = b2;
    L.rlist[newest] = h2.result;
    L.elist[newest] = h2.abserr;
  } else {
    L.alist[maxerr] = b1;
    L.rlist[maxerr] = h2.result;
    L.elist[maxerr] = h2.abserr;
    L.alist[newest] = a1;
    L.blist[newest] = b1;
    L.rlist[newest] = h1.result;
    L.elist[newest] = h1.abserr;
  }
}

// Round-off watch of a bisection (step 5): the halves reproduce the parent's
// integral while their error does not fall, or (late in the run) grows.
// Skipped when either half's error estimate is its own resasc, i.e. when the
// rule saw f as too rough to judge.
void watch_roundoff(const rule_estimate &h1, const rule_estimate &h2, double rparent, double area12,
                    double erro12, double errmax, int64_t last, bool extrap, int64_t &iroff1,
                    int64_t &iroff2, int64_t &iroff3) {
  if (h1.resasc == h1.abserr || h2.resasc == h2.abserr) return;
  if (std::fabs(rparent - area12) <= 1e-5 * std::fabs(area12) && erro12 >= 0.99 * errmax) {
    if (extrap)
      ++iroff2;
    else
      ++iroff1;
  }
  if (last > 10 && erro12 > errmax) ++iroff3;
}

// What the integrand's stop leaves: the best values held, over last intervals.
void stopped(quad_outcome &out, int64_t stop, int64_t last, double result, double abserr,
             double errsum, const quad_lists &L, const policy &P) {
  out.stop = stop;
  out.last = last;
  if (abserr == P.oflow) {
    // No extrapolated value accepted yet: the sum over the intact lists.
    out.result = global_sum(L.rlist, last, P);
    out.abserr = errsum;
  } else {
    out.result = result;
    out.abserr = abserr;
  }
  out.code = 0;
}

// Steps 12's decision for a run that holds an extrapolated result: keep it
// (after the divergence test) or fall back to the global sum.  Returns true
// for the global sum.
bool finish_extrapolated(int64_t &code, int64_t ierro, double &result, double &abserr, double correc,
                         double area, double errsum, int ksgn, double defabs) {
  bool divergence_test = true;
  if (code + ierro != 0) {
    if (ierro == 3) abserr += correc;
    if (code == 0) code = 3;
    if (result != 0.0 && area != 0.0) {
      if (abserr / std::fabs(result) > errsum / std::fabs(area)) return true;
    } else if (abserr > errsum) {
      return true;
    } else if (area == 0.0) {
      divergence_test = false;
    }
  }
  if (divergence_test && !(ksgn == -1 && std::max(std::fabs(result), std::fabs(area)) <= defabs * 0.01)) {
    if (0.01 > result / area || result / area > 100.0 || errsum > std::fabs(area)) code = 6;
  }
  return false;
}

}  // namespace

quad_outcome adaptive_extrapolated(rule_ref rule, int64_t npoints, double a, double b, double epsabs,
                                   double epsrel, const quad_lists &L, const policy &P) {
  return adaptive_extrapolated_direct(rule, npoints, a, b, epsabs, epsrel, L, P);
}

quad_outcome extrapolated_bisection(rule_ref rule, int64_t npoints, double a, double b, double epsabs,
                                    double epsrel, const quad_lists &L, const policy &P,
                                    const rule_estimate &first) {
  const int64_t limit = L.limit;
  double *alist = L.alist, *blist = L.blist, *elist = L.elist, *rlist = L.rlist;
  int64_t *iord = L.iord;
  const double epmach = P.epmach, oflow = P.oflow;
  quad_outcome out;
  double result = first.result, abserr = first.abserr;
  const double defabs = first.resabs;
  double errbnd = 0.0;
  int64_t last, code = 0;

  // Step 3.
  epsilon_state E;
  E.tab[0] = result;
  E.n = 1;
  double errmax = abserr, area = result, errsum = abserr;
  int64_t maxerr = 0, nrmax = 0;
  abserr = oflow;
  int64_t ktmin = 0, ierro = 0, iroff1 = 0, iroff2 = 0, iroff3 = 0;
  bool extrap = false, noext = false;
  const int ksgn = std::fabs(result) >= (1.0 - 50.0 * epmach) * defabs ? 1 : -1;
  double small = 0.0, erlarg = 0.0, ertest = 0.0, correc = 0.0;
  double a1 = a, b2 = b;
  bool global = false;

  // Step 4: bisect the interval with the largest error, while allowed.
  for (last = 2; last <= limit; ++last) {
    a1 = alist[maxerr];
    const double b1 = 0.5 * (alist[maxerr] + blist[maxerr]);
    const double a2 = b1;
    b2 = blist[maxerr];
    const double erlast = errmax;
    rule_estimate h1, h2;
    int64_t s = rule(a1, b1, h1);
    if (s == 0) s = rule(a2, b2, h2);
    if (s != 0) {
      stopped(out, s, last - 1, result, abserr, errsum, L, P);
      out.neval = npoints * (2 * out.last - 1);
      return out;
    }
    const double area12 = h1.result + h2.result;
    const double erro12 = h1.abserr + h2.abserr;
    errsum = errsum + erro12 - errmax;
    area = area + area12 - rlist[maxerr];

    // Step 5.
    watch_roundoff(h1, h2, rlist[maxerr], area12, erro12, errmax, last, extrap, iroff1, iroff2, iroff3);
    errbnd = std::max(epsabs, epsrel * std::fabs(area));

    if (!P.late_limit_test)  // the published order: every failure flag before the store
      failure_flags(false, last, limit, iroff1, iroff2, iroff3, a1, a2, b2, P, code, ierro);

    // Step 6.
    store_halves(L, maxerr, last - 1, a1, b1, b2, h1, h2, P);
    order_update(limit, last, maxerr, errmax, elist, iord, nrmax);

    // Step 7.
    if (errsum <= errbnd) {
      global = true;
      break;
    }

    // Step 8.
    if (P.late_limit_test) {
      failure_flags(true, last, limit, iroff1, iroff2, iroff3, a1, a2, b2, P, code, ierro);
      if (code == 4 || code == 2) break;
    } else if (code != 0) {
      break;
    }

    // Step 9.
    if (last == 2) {
      small = std::fabs(b - a) * 0.375;
      erlarg = errsum;
      ertest = errbnd;
      E.tab[1] = area;
      E.n = 2;
      continue;
    }

    // Step 10: erlarg is the error sum over the "large" intervals (longer
    // than small); bisect large intervals first while they hold enough of
    // the error, so that the extrapolation sees a sequence produced by
    // refining the small ones.  The new halves count as large when each of
    // them is, |b1 - a1| > small (the bisected interval's own length would
    // count halves of length up to `small` as large; 1/sqrt(x) on (0, 1) then
    // ends with the round-off code after 11 subintervals instead of meeting
    // 1e-10 with 6).
    if (noext) continue;
    erlarg -= erlast;
    if (std::fabs(b1 - a1) > small) erlarg += erro12;
    if (!extrap) {
      if (std::fabs(blist[maxerr] - alist[maxerr]) > small) continue;
      extrap = true;
      nrmax = 1;
    }
    if (ierro != 3 && erlarg > ertest) {
      const int64_t jupbnd = last > 2 + limit / 2 ? limit + 3 - last : last;
      bool found = false;
      for (int64_t k = nrmax + 1; k <= jupbnd; ++k) {
        maxerr = iord[nrmax];
        errmax = elist[maxerr];
        if (std::fabs(blist[maxerr] - alist[maxerr]) > small) {
          found = true;
          break;
        }
        ++nrmax;
      }
      if (found) continue;
    }

    // Step 11: extrapolate.
    E.tab[E.n++] = area;
    double reseps, abseps;
    epsilon_extrapolate(E, reseps, abseps, P);
    ++ktmin;
    if (ktmin > 5 && abserr < 1e-3 * errsum) code = 5;
    if (abseps < abserr) {
      ktmin = 0;
      abserr = abseps;
      result = reseps;
      correc = erlarg;
      ertest = std::max(epsabs, epsrel * std::fabs(reseps));
      if (abserr <= ertest) {
        // A limit reached in this step does not count when the
        // extrapolation meets the tolerance.
        if (P.late_limit_test && code == 1) code = 0;
        break;
      }
    }
    if (E.n == 1) noext = true;
    if (code == 5 || code == 1) break;
    // Restart on the small intervals, with a smaller notion of "small".
    maxerr = iord[0];
    errmax = elist[maxerr];
    nrmax = 0;
    extrap = false;
    small *= 0.5;
    erlarg = errsum;
  }
  if (last > limit) last = limit;

  // Step 12.
  if (!global) global = abserr == oflow || finish_extrapolated(code, ierro, result, abserr, correc,
                                                               area, errsum, ksgn, defabs);
  if (global) {
    result = global_sum(rlist, last, P);
    abserr = errsum;
  }
  out.result = result;
  out.abserr = abserr;
  out.last = last;
  out.code = reported(code);
  out.neval = npoints * (2 * last - 1);
  if (code == 4) {
    out.bad_a = a1;
    out.bad_b = b2;
  }
  return out;
}

quad_outcome adaptive_plain(rule_ref rule, int64_t npoints, double a, double b, double epsabs,
                            double epsrel, const quad_lists &L, const policy &P) {
  const int64_t limit = L.limit;
  double *alist = L.alist, *blist = L.blist, *elist = L.elist, *rlist = L.rlist;
  int64_t *iord = L.iord;
  quad_outcome out;

  alist[0] = a;
  blist[0] = b;
  rlist[0] = 0.0;
  elist[0] = 0.0;
  iord[0] = 0;
  rule_estimate first;
  if (int64_t s = rule(a, b, first)) {
    out.stop = s;
    return out;
  }
  double result = first.result, abserr = first.abserr;
  const double defabs = first.resabs;
  double errbnd = std::max(epsabs, epsrel * std::fabs(result));
  rlist[0] = result;
  elist[0] = abserr;
  const bool met = (abserr <= errbnd && abserr != first.resasc) || abserr == 0.0;
  int64_t code = 0;
  if (abserr <= (50.0 * P.epmach) * defabs && abserr > errbnd) code = 2;
  if (limit == 1 && !(P.late_limit_test && met)) code = 1;
  if (code != 0 || met) {
    out.result = result;
    out.abserr = abserr;
    out.last = 1;
    out.code = code;
    out.neval = npoints;
    return out;
  }

  double errmax = abserr, area = result, errsum = abserr;
  int64_t maxerr = 0, nrmax = 0, iroff1 = 0, iroff2 = 0, last;
  double a1 = a, b2 = b;
  for (last = 2; last <= limit; ++last) {
    a1 = alist[maxerr];
    const double b1 = 0.5 * (alist[maxerr] + blist[maxerr]);
    const double a2 = b1;
    b2 = blist[maxerr];
    rule_estimate h1, h2;
    int64_t s = rule(a1, b1, h1);
    if (s == 0) s = rule(a2, b2, h2);
    if (s != 0) {
      out.stop = s;
      out.last = last - 1;
      out.result = global_sum(rlist, out.last, P);
      out.abserr = errsum;
      out.neval = npoints * (2 * out.last - 1);
      return out;
    }
    const double area12 = h1.result + h2.result;
    const double erro12 = h1.abserr + h2.abserr;
    errsum = errsum + erro12 - errmax;
    area = area + area12 - rlist[maxerr];
    if (h1.resasc != h1.abserr && h2.resasc != h2.abserr) {
      if (std::fabs(rlist[maxerr] - area12) <= 1e-5 * std::fabs(area12) && erro12 >= 0.99 * errmax)
        ++iroff1;
      if (last > 10 && erro12 > errmax) ++iroff2;
    }
    errbnd = std::max(epsabs, epsrel * std::fabs(area));
    if (errsum > errbnd) {
      if (P.late_limit_test) {
        if (last == limit) code = 1;
        if (iroff1 >= 6 || iroff2 >= 20) code = 2;
      } else {
        if (iroff1 >= 6 || iroff2 >= 20) code = 2;
        if (last == limit) code = 1;
      }
      if (too_small(a1, a2, b2, P)) code = 3;
    }
    store_halves(L, maxerr, last - 1, a1, b1, b2, h1, h2, P);
    order_update(limit, last, maxerr, errmax, elist, iord, nrmax);
    if (code != 0 || errsum <= errbnd) break;
  }
  if (last > limit) last = limit;
  out.result = global_sum(rlist, last, P);
  out.abserr = errsum;
  out.last = last;
  out.code = code;
  out.neval = npoints * (2 * last - 1);
  if (code == 3) {
    out.bad_a = a1;
    out.bad_b = b2;
  }
  return out;
}

quad_outcome adaptive_breakpoints(rule_ref rule, int64_t npoints, const double *pts, int64_t nint,
                                  double sign, double epsabs, double epsrel, const quad_lists &L,
                                  int64_t *level, int64_t *ndin, const policy &P) {
  const int64_t limit = L.limit;
  double *alist = L.alist, *blist = L.blist, *elist = L.elist, *rlist = L.rlist;
  int64_t *iord = L.iord;
  const double epmach = P.epmach, oflow = P.oflow;
  quad_outcome out;

  // The rule on each interval of the initial partition.  An interval whose
  // error estimate is its own resasc (f too rough there for the rule to
  // judge) is given the whole first error sum instead, so that it is
  // bisected early.
  double abserr = 0.0, resabs = 0.0, plain_sum = 0.0;
  for (int64_t i = 0; i < nint; ++i) {
    rule_estimate r;
    if (int64_t s = rule(pts[i], pts[i + 1], r)) {
      out.stop = s;
      out.last = i;  // the intervals done so far are in the lists
      out.result = sign * global_sum(rlist, i, P);
      out.abserr = abserr;
      out.neval = npoints * i;
      return out;
    }
    abserr += r.abserr;
    plain_sum += r.result;
    ndin[i] = (r.abserr == r.resasc && r.abserr != 0.0) ? 1 : 0;
    resabs += r.resabs;
    level[i] = 0;
    alist[i] = pts[i];
    blist[i] = pts[i + 1];
    elist[i] = r.abserr;
    rlist[i] = r.result;
    iord[i] = i;
  }
  double result = P.compensated_sum ? global_sum(rlist, nint, P) : plain_sum;
  double errsum = 0.0;
  for (int64_t i = 0; i < nint; ++i) {
    if (ndin[i] == 1) elist[i] = abserr;
    errsum += elist[i];
  }
  int64_t last = nint;
  double errbnd = std::max(epsabs, epsrel * std::fabs(result));
  int64_t code = 0;
  if (abserr <= (100.0 * epmach) * resabs && abserr > errbnd) code = 2;
  // Selection sort of the initial intervals by decreasing error (the last of
  // equal errors first).
  for (int64_t i = 0; i + 1 < nint; ++i) {
    int64_t ind1 = iord[i], k = i;
    for (int64_t j = i + 1; j < nint; ++j) {
      const int64_t ind2 = iord[j];
      if (elist[ind1] > elist[ind2]) continue;
      ind1 = ind2;
      k = j;
    }
    if (ind1 != iord[i]) {
      iord[k] = iord[i];
      iord[i] = ind1;
    }
  }
  if (limit == nint && !(P.late_limit_test && abserr <= errbnd)) code = 1;
  if (code != 0 || abserr <= errbnd) {
    out.result = sign * result;
    out.abserr = abserr;
    out.last = last;
    out.code = code;
    out.neval = npoints * nint;
    return out;
  }

  epsilon_state E;
  E.tab[0] = result;
  E.n = 1;
  int64_t maxerr = iord[0], nrmax = 0;
  double errmax = elist[maxerr], area = result;
  int64_t ktmin = 0, ierro = 0, iroff1 = 0, iroff2 = 0, iroff3 = 0, levmax = 1;
  bool extrap = false, noext = false;
  double erlarg = errsum, ertest = errbnd, correc = 0.0;
  abserr = oflow;
  const int ksgn = std::fabs(result) >= (1.0 - 50.0 * epmach) * resabs ? 1 : -1;
  double a1 = pts[0], b2 = pts[nint];
  bool global = false;

  for (last = nint + 1; last <= limit; ++last) {
    // An interval's size is its bisection level: levels below levmax count
    // as large.
    const int64_t levcur = level[maxerr] + 1;
    a1 = alist[maxerr];
    const double b1 = 0.5 * (alist[maxerr] + blist[maxerr]);
    const double a2 = b1;
    b2 = blist[maxerr];
    const double erlast = errmax;
    rule_estimate h1, h2;
    int64_t s = rule(a1, b1, h1);
    if (s == 0) s = rule(a2, b2, h2);
    if (s != 0) {
      stopped(out, s, last - 1, result, abserr, errsum, L, P);
      out.result *= sign;
      out.neval = npoints * (2 * out.last - nint);
      return out;
    }
    const double area12 = h1.result + h2.result;
    const double erro12 = h1.abserr + h2.abserr;
    errsum = errsum + erro12 - errmax;
    area = area + area12 - rlist[maxerr];
    watch_roundoff(h1, h2, rlist[maxerr], area12, erro12, errmax, last, extrap, iroff1, iroff2, iroff3);
    level[maxerr] = levcur;
    level[last - 1] = levcur;
    errbnd = std::max(epsabs, epsrel * std::fabs(area));

    if (!P.late_limit_test)
      failure_flags(false, last, limit, iroff1, iroff2, iroff3, a1, a2, b2, P, code, ierro);
    store_halves(L, maxerr, last - 1, a1, b1, b2, h1, h2, P);
    order_update(limit, last, maxerr, errmax, elist, iord, nrmax);
    if (errsum <= errbnd) {
      global = true;
      break;
    }
    if (P.late_limit_test) {
      failure_flags(true, last, limit, iroff1, iroff2, iroff3, a1, a2, b2, P, code, ierro);
      if (code == 4 || code == 2) break;
    } else if (code != 0) {
      break;
    }

    if (noext) continue;
    erlarg -= erlast;
    if (levcur + 1 <= levmax) erlarg += erro12;
    if (!extrap) {
      if (level[maxerr] + 1 <= levmax) continue;
      extrap = true;
      nrmax = 1;
    }
    if (ierro != 3 && erlarg > ertest) {
      const int64_t jupbnd = last > 2 + limit / 2 ? limit + 3 - last : last;
      bool found = false;
      for (int64_t k = nrmax + 1; k <= jupbnd; ++k) {
        maxerr = iord[nrmax];
        errmax = elist[maxerr];
        if (level[maxerr] + 1 <= levmax) {
          found = true;
          break;
        }
        ++nrmax;
      }
      if (found) continue;
    }

    E.tab[E.n++] = area;
    if (E.n > 2) {
      double reseps, abseps;
      epsilon_extrapolate(E, reseps, abseps, P);
      ++ktmin;
      if (ktmin > 5 && abserr < 1e-3 * errsum) code = 5;
      if (abseps < abserr) {
        ktmin = 0;
        abserr = abseps;
        result = reseps;
        correc = erlarg;
        ertest = std::max(epsabs, epsrel * std::fabs(reseps));
        if (P.late_limit_test ? abserr <= ertest : abserr < ertest) {
          if (P.late_limit_test && code == 1) code = 0;
          break;
        }
      }
      if (E.n == 1) noext = true;
      if (code == 5 || code == 1) break;
    }
    maxerr = iord[0];
    errmax = elist[maxerr];
    nrmax = 0;
    extrap = false;
    ++levmax;
    erlarg = errsum;
  }
  if (last > limit) last = limit;

  if (!global) global = abserr == oflow || finish_extrapolated(code, ierro, result, abserr, correc,
                                                               area, errsum, ksgn, resabs);
  if (global) {
    result = global_sum(rlist, last, P);
    abserr = errsum;
  }
  out.result = sign * result;
  out.abserr = abserr;
  out.last = last;
  out.code = reported(code);
  out.neval = npoints * (2 * last - nint);
  if (code == 4) {
    out.bad_a = a1;
    out.bad_b = b2;
  }
  return out;
}

}  // namespace zem::quad
