// The step machine of the d02p suite, compiled once per pair, per n (1 to 4,
// or any) and per driver.
//
// rk_run_n<M, N, Direct> is the whole resumable step (rk_core.cpp explains the
// error control, the step size, the stiffness test and the assessment).
// Each pair is a compile-time constant (pair_k<M>): the stage loop is
// unrolled with its coefficients in the code, and the zero coefficients
// vanish at compile time.  The arithmetic is the same, operation for
// operation and in the same order, whichever driver runs it.
//
//   Direct = false  reverse communication (d02pg): every evaluation returns
//                   to the driver (rk_event::eval or eval_ga), which puts
//                   f(req.t, req.y) into req.yp and calls again.
//   Direct = true   callback integrators (d02pe, d02pf): the machine makes
//                   each evaluation itself through eval(t, n, y, yp), inlined into
//                   the stage loop, and returns only when a step is done
//                   and its driver's more() says so, or has failed (the
//                   range integrator lets it run from step to step until
//                   twant is passed); a non-zero eval status (the user asked to
//                   stop) returns rk_event::stopped with the step left as
//                   the reverse-communication driver would have left it
//                   and the status in req.status.
//
// In both modes iwsav's phase and stage say where the step stands whenever
// the machine returns, so a step is resumable by either driver.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <utility>

#include "d02/rk_core.h"
#include "d02/rk_root.h"
#include "frame/constants.h"

// The machine's small lambdas (the unrolled loops over stages) are always
// inlined: out of line, every value they use would be read through their
// closure on every stage.
#define ZEM_RK_INLINE __attribute__((always_inline))

namespace zem::d02 {

namespace detail {
template <size_t N>
constexpr std::array<double, N> doubles(const rational (&r)[N]) {
  std::array<double, N> d{};
  for (size_t i = 0; i < N; ++i) d[i] = r[i].value();
  return d;
}
template <size_t N>
constexpr std::array<double, N> differences(const rational (&b)[N], const rational (&bh)[N]) {
  std::array<double, N> d{};
  for (size_t i = 0; i < N; ++i) {
    // b_i - bhat_i as one rational, then one rounding.
    const __int128 num = static_cast<__int128>(b[i].num) * bh[i].den - static_cast<__int128>(bh[i].num) * b[i].den;
    const __int128 den = static_cast<__int128>(b[i].den) * bh[i].den;
    d[i] = static_cast<double>(num) / static_cast<double>(den);
  }
  return d;
}
// a_il - a_jl, l < i: Y_i - Y_j = h sum_l (a_il - a_jl) k_l (zero for l >= j
// in the second row).
template <size_t K, size_t L>
constexpr std::array<double, K> stage_difference(const std::array<double, L> &a, int i, int j) {
  std::array<double, K> d{};
  for (int l = 0; l < i; ++l) d[l] = a[i * (i - 1) / 2 + l] - (l < j ? a[j * (j - 1) / 2 + l] : 0.0);
  return d;
}
}  // namespace detail

inline constexpr auto bs23_cd = detail::doubles(bs23_c);
inline constexpr auto bs23_ad = detail::doubles(bs23_a);
inline constexpr auto bs23_bd = detail::doubles(bs23_b);
inline constexpr auto bs23_ed = detail::differences(bs23_b, bs23_bhat);
inline constexpr auto bs45_cd = detail::doubles(bs45_c);
inline constexpr auto bs45_ad = detail::doubles(bs45_a);
inline constexpr auto bs45_bd = detail::doubles(bs45_b);
inline constexpr auto bs45_ed = detail::differences(bs45_b, bs45_bhat);
inline constexpr auto pd87_cd = detail::doubles(pd87_c);
inline constexpr auto pd87_ad = detail::doubles(pd87_a);
inline constexpr auto pd87_bd = detail::doubles(pd87_b);
inline constexpr auto pd87_ed = detail::differences(pd87_b, pd87_bhat);
inline constexpr auto bs45_dd = detail::doubles(bs45_dense);

// The pairs as compile-time constants: stages, first-same-as-last, lower
// order q (exponent 1/(q+1)), order p, stability radius and tangent, cost in
// evaluations, the two stages of the stiffness estimate, and c, a (lower
// triangle row by row), b, e = b - bhat, and the stiffness estimate's row
// differences.
template <int64_t M>
struct pair_k;
template <>
struct pair_k<rk23> {
  static constexpr int s = 4, q = 2, p = 3, cost = 3, stiff_i = 3, stiff_j = 2;
  static constexpr bool fsal = true;
  static constexpr double radius = 2.3, tangent = 8.9;
  static constexpr const auto &c = bs23_cd, &a = bs23_ad, &b = bs23_bd, &e = bs23_ed;
  static constexpr auto stiff_d = detail::stage_difference<stiff_i>(a, stiff_i, stiff_j);
};
template <>
struct pair_k<rk45> {
  static constexpr int s = 8, q = 4, p = 5, cost = 7, stiff_i = 7, stiff_j = 6;
  static constexpr bool fsal = true;
  static constexpr double radius = 3.9, tangent = 5.2;
  static constexpr const auto &c = bs45_cd, &a = bs45_ad, &b = bs45_bd, &e = bs45_ed;
  static constexpr auto stiff_d = detail::stage_difference<stiff_i>(a, stiff_i, stiff_j);
};
template <>
struct pair_k<rk78> {
  static constexpr int s = 13, q = 7, p = 8, cost = 13, stiff_i = 12, stiff_j = 11;
  static constexpr bool fsal = false;
  static constexpr double radius = 5.2, tangent = 11.0;
  static constexpr const auto &c = pd87_cd, &a = pd87_ad, &b = pd87_bd, &e = pd87_ed;
  static constexpr auto stiff_d = detail::stage_difference<stiff_i>(a, stiff_i, stiff_j);
};

namespace detail {

inline constexpr double safety = 0.8;
inline constexpr double grow_max = 4.0, shrink_min = 0.125, shrink_second = 0.5;

// Phases the machine passes through without returning (never stored).
enum : int64_t { ph_attempt = 100, ph_stages, ph_accepted, ph_sec_half, ph_sec_stages, ph_sec_done };

// The whole machine is compiled for n = 1 .. 4 as well as for any n (N = 0):
// for the small systems, where the step's own work is a few dozen flops,
// the stages' addresses become constant offsets and the loops over the
// components disappear.  The choice is made once per call of the machine,
// not per loop.  (Same operations in the same order for every n.)

// sum_{J<Count} c[Off + J] x[J n] with the zero coefficients left out (so
// that a non-finite value they would multiply stays out), in the order of
// J.  The sum begins with its first term, not with 0 + that term: one
// addition fewer on every stage's chain.  The two differ only when every
// term is zero and one of them is -0, in the sign of that zero sum.
template <const auto &C, int Off, int Count>
[[gnu::always_inline]] inline double combo(const double *x, int64_t n) {
  double sum = 0.0;
  bool first = true;
  [&]<int... J>(std::integer_sequence<int, J...>) ZEM_RK_INLINE {
    ((C[Off + J] != 0.0 ? void(first ? (sum = C[Off + J] * x[J * n], first = false)
                                     : (sum += C[Off + J] * x[J * n], false))
                        : void()),
     ...);
  }(std::make_integer_sequence<int, Count>{});
  return sum;
}

// Whether any of c[Off], ..., c[Off + Count - 1] is nonzero.
template <const auto &C, int Off, int Count>
constexpr bool any_nonzero() {
  for (int j = 0; j < Count; ++j)
    if (C[Off + j] != 0.0) return true;
  return false;
}

// out = y0 + h sum_{j<I} a_Ij k_j, one pass per component (the stages lie n
// apart).  The newest stage k_{I-1} is the one the point waits for: it
// comes back from the user's function, and the next call waits for the
// point.  Everything else is known before that call returns.  So the point
// is formed as
//   (y0 + h sum_{j<I-1} a_Ij k_j) + (h a_{I,I-1}) k_{I-1},
// whose first part the processor computes while the user's function still
// runs, leaving one product and one sum between the derivative and the next
// call (the plain y0 + h (... + a_{I,I-1} k_{I-1}) leaves four).  The two
// forms are the same sum in another order; they differ in the last bits of
// the point, far below any local error the control accepts.  A zero a_{I,I-1}
// (none of the three pairs has one) keeps the plain form.
template <class P, int I, int N>
[[gnu::always_inline]] inline void stage_point(const double *__restrict y0, const double *__restrict k0,
                                               int64_t n_, double h, double *__restrict out) {
  constexpr int off = I * (I - 1) / 2;
  const int64_t n = N ? N : n_;
  if constexpr (P::a[off + I - 1] == 0.0) {
    for (int64_t m = 0; m < n; ++m) out[m] = y0[m] + h * combo<P::a, off, I>(k0 + m, n);
  } else {
    const double hlast = h * P::a[off + I - 1];
    const double *klast = k0 + (I - 1) * n;
    for (int64_t m = 0; m < n; ++m) {
      double base = y0[m];
      if constexpr (any_nonzero<P::a, off, I - 1>()) base += h * combo<P::a, off, I - 1>(k0 + m, n);
      out[m] = base + hlast * klast[m];
    }
  }
}

// ynew and the weighted error estimate of an attempt of size h from y0
// (k0: its stages; ylast: the point of the last stage, ynew itself for a
// first-same-as-last pair, which is then left where it is: ynew is not
// written, and the caller takes ylast).
template <class P, int N>
[[gnu::always_inline]] inline double finish_attempt(const double *__restrict y0, const double *__restrict k0,
                                                    const double *__restrict ylast, const double *__restrict th,
                                                    int64_t n_, double h, double *__restrict ynew) {
  const int64_t n = N ? N : n_;
  double err = 0.0;
  for (int64_t m = 0; m < n; ++m) {
    const double *km = k0 + m;
    double yn;
    if constexpr (P::fsal) {
      yn = ylast[m];
    } else {
      yn = y0[m] + h * combo<P::b, 0, P::s>(km, n);
    }
    if constexpr (!P::fsal) ynew[m] = yn;
    const double e = combo<P::e, 0, P::s>(km, n);
    const double wt = std::max(th[m], 0.5 * (std::fabs(y0[m]) + std::fabs(yn)));
    const double r = std::fabs(h * e) / wt;
    // r is +0, positive or NaN (wt > 0), so the first component's r is the
    // maximum so far as it stands.  A NaN sticks: it is taken when it comes
    // (!(NaN <= err)) and kept once taken (err == err is false), so that a
    // non-finite derivative in any component rejects the attempt.
    if (m == 0 || (!(r <= err) && err == err)) err = r;
  }
  return err;
}

// The stiffness estimate's two squared sums for one step of size h:
// |k_i - k_j|^2 and |Y_i - Y_j|^2 with Y_i - Y_j = h sum_l (a_il - a_jl) k_l.
template <class P, int N>
[[gnu::always_inline]] inline void stiff_sums(const double *k0, int64_t n_, double h, double &dk, double &dy) {
  const int64_t n = N ? N : n_;
  constexpr int i = P::stiff_i, j = P::stiff_j;
  for (int64_t m = 0; m < n; ++m) {
    const double *km = k0 + m;
    const double s = h * combo<P::stiff_d, 0, i>(km, n);
    const double d = km[i * n] - km[j * n];
    // The sums begin with their first terms (0 + x = x for a square x).
    dk = m == 0 ? d * d : dk + d * d;
    dy = m == 0 ? s * s : dy + s * s;
  }
}

template <int N>
[[gnu::always_inline]] inline void copy_n(const double *__restrict from, int64_t n_, double *__restrict to) {
  const int64_t n = N ? N : n_;
  for (int64_t m = 0; m < n; ++m) to[m] = from[m];
}

// The size of the next attempt towards the target: never past it, and no
// sliver left before it.  h has the sign of the direction (every size the
// machine makes is dir |h|, or a positive multiple of one), so the size
// left as it is, dir |h|, is h itself, bit for bit: the common case takes
// no operation on the path from the step-size factor to the next stage.
[[gnu::always_inline]] inline double clip(int64_t *iw, const double *rw, double h) {
  const double t = rw[rw_t], target = rw[rw_target], dir = rw[rw_dir];
  const double rest = target - t, arest = std::fabs(rest);
  double ah = std::fabs(h);
  int64_t cut = 0;
  double out = h;
  if (1.01 * ah >= arest || arest - ah <= 16.0 * machine_eps * std::max(std::fabs(t), std::fabs(target))) {
    if (8.0 * arest < ah) cut = 1;  // drastically shortened
    out = rest;
  } else if (2.0 * ah > arest) {
    out = dir * (0.5 * arest);  // share the rest in two
  }
  iw[iw_last_cut] = cut;
  return out;
}

// Stages from..s-1 of an attempt of size h from y0 at t0, into k0 + I n.
// True when all are in; false when the machine must return: a request is
// handed to the driver (reverse communication) or the user asked to stop.
// The callback machine counts its evaluations in a register and books them
// once.
// Fresh: from is 1 (a new attempt), known at compile time.
template <class P, int N, bool Direct, bool Sec, bool Fresh, class Eval>
[[gnu::always_inline]] inline bool run_stages(int64_t *iw, int64_t n, int from_, const double *y0, double *k0,
                                              double *ytmp, double h, double t0, rk_request &req, Eval &eval) {
  const int from = Fresh ? 1 : from_;
  auto one = [&]<int I>(std::integral_constant<int, I>) ZEM_RK_INLINE -> bool {
    if (!Fresh && I < from) return true;
    stage_point<P, I, N>(y0, k0, n, h, ytmp);
    int64_t status = 0;
    if constexpr (Direct) {
      status = eval(t0 + P::c[I] * h, n, ytmp, k0 + I * n);
      if (__builtin_expect(status == 0, 1)) return true;
    }
    // With Direct: the user's stop, and its flag.  (The request is formed
    // here, not kept across the user's call.)
    req = {t0 + P::c[I] * h, ytmp, k0 + I * n, 0.0, status};
    iw[iw_stage] = I;
    iw[iw_phase] = Sec ? ph_sec_stage : ph_stage;
    return false;
  };
  const bool all = [&]<int... I>(std::integer_sequence<int, I...>) ZEM_RK_INLINE {
    return (one(std::integral_constant<int, I + 1>{}) && ...);
  }(std::make_integer_sequence<int, P::s - 1>{});
  if constexpr (Direct) {
    // Stages from .. s-1 were made, or from .. up to the one that stopped.
    const int64_t done = (all ? P::s : iw[iw_stage]) - from;
    if constexpr (Sec) {
      iw[iw_nfcn_ga] += done;
    } else {
      iw[iw_nfcn] += done;
      iw[iw_budget] += done;
    }
  }
  if (all) iw[iw_stage] = P::s;
  return all;
}

// The step machine for the pair M and N components (N = 0: any n).
template <int64_t M, int N, bool Direct, class Eval, class More>
rk_event rk_run_n(const rk_state &st, rk_request &req, const Eval &eval_in, const More &more_in) {
  using P = pair_k<M>;
  // Copies of the evaluation and of the driver's test: what they capture
  // stays in this frame, out of reach of the user's calls.
  Eval eval = eval_in;
  More more = more_in;
  const int64_t n = N ? N : st.n;
  int64_t *const iw = st.iw;
  double *const rw = st.rw;
  // The arrays' parts (rk_state's layout), computed once.
  double *const thresh = rw + rwsav_header, *const y = thresh + n, *const yp = y + n, *const yold = yp + n,
                *const ytmp = yold + n, *const ymax = ytmp + n, *const ynew = ymax + n, *const k0 = ynew + n;
  // The assessment's parts (only with errass): ysec, ypsec, ysnew, rms, ksec.
  auto sec = [&](int part) { return k0 + (P::s + part) * n; };
  constexpr rk_event wait = Direct ? rk_event::stopped : rk_event::eval;
  constexpr rk_event wait_ga = Direct ? rk_event::stopped : rk_event::eval_ga;
  (void)eval;
  (void)more;
  // An evaluation the machine waits for in the given phase: true when it has
  // been made here and the machine goes on.
  auto ask = [&](int64_t waiting, double t, const double *yy, double *yyp) -> bool {
    int64_t status = 0;
    if constexpr (Direct) {
      status = eval(t, n, yy, yyp);
      if (status == 0) return true;
    }
    req = {t, yy, yyp, 0.0, status};
    iw[iw_phase] = waiting;
    return false;
  };
  auto finished = [&](rk_event ev) {
    iw[iw_phase] = ph_idle;
    return ev;
  };
  // A step is complete: the callback machine goes straight on to the next
  // one while its driver wants more (the driver would only call it again).
  auto step_done = [&]() -> bool {
    iw[iw_phase] = ph_idle;
    if constexpr (Direct) {
      return !more();
    } else {
      return true;
    }
  };
  int from = 1;
  int64_t phase = iw[iw_phase];
  // The size of the current (or next) attempt, always equal to rw[rw_h]:
  // kept here as well, so that the next step's stages take the new size
  // from a register rather than from memory stored a moment before (the
  // size is on the longest path of a step: the last stage, the error
  // estimate, the factor, the first stage of the next step).
  double hcur = rw[rw_h];
  for (;;) {
    switch (phase) {
      case ph_idle:
        if (!iw[iw_have_yp]) {
          if (!ask(ph_yp0, rw[rw_t], y, yp)) return wait;
          phase = ph_yp0;
          continue;
        }
        copy_n<N>(yp, n, k0);
        iw[iw_rejects] = 0;
        phase = ph_attempt;
        continue;

      case ph_yp0: {
        ++iw[iw_nfcn];
        ++iw[iw_budget];
        iw[iw_have_yp] = 1;
        if (iw[iw_errass]) {
          copy_n<N>(y, n, sec(0));
          copy_n<N>(yp, n, sec(1));
        }
        if (hcur != 0.0) {
          copy_n<N>(yp, n, k0);
          iw[iw_rejects] = 0;
          phase = ph_attempt;
          continue;
        }
        // Initial step: a first guess from |y0| and |f0|, and a trial point.
        const double d0 = rk_weighted_max(st, y, y);
        const double d1 = rk_weighted_max(st, yp, y);
        const double range = std::fabs(rw[rw_target] - rw[rw_t]);
        double h0 = (d0 < 1e-5 || d1 < 1e-5) ? 1e-6 * range : 0.01 * d0 / d1;
        h0 = std::min(h0, range);
        h0 = std::max(h0, 2.0 * rk_hmin(st, rw[rw_t]));
        rw[rw_hnext] = h0;
        for (int64_t m = 0; m < n; ++m) ytmp[m] = y[m] + rw[rw_dir] * h0 * yp[m];
        if (!ask(ph_hinit, rw[rw_t] + rw[rw_dir] * h0, ytmp, k0 + n)) return wait;
        phase = ph_hinit;
        continue;
      }

      case ph_hinit: {
        ++iw[iw_nfcn];
        ++iw[iw_budget];
        const double h0 = rw[rw_hnext];
        for (int64_t m = 0; m < n; ++m) ytmp[m] = (k0[n + m] - yp[m]) / h0;
        const double d2 = rk_weighted_max(st, ytmp, y);
        const double d1 = rk_weighted_max(st, yp, y);
        const double dm = std::max(d1, d2);
        double h1 = dm <= 1e-15 ? std::max(1e-6, h0 * 1e-3) : std::pow(rw[rw_tol] / dm, 1.0 / (P::p + 1));
        if (!(h1 > 0.0)) h1 = h0;
        double h = std::min(100.0 * h0, h1);
        h = std::min(h, std::fabs(rw[rw_target] - rw[rw_t]));
        hcur = rw[rw_dir] * h;
        rw[rw_h] = hcur;
        copy_n<N>(yp, n, k0);
        iw[iw_rejects] = 0;
        phase = ph_attempt;
        continue;
      }

      case ph_attempt:
        hcur = clip(iw, rw, hcur);
        rw[rw_h] = hcur;
        from = 1;
        phase = ph_stages;
        continue;

      case ph_stage:
        ++iw[iw_nfcn];
        ++iw[iw_budget];
        from = static_cast<int>(iw[iw_stage]) + 1;
        phase = ph_stages;
        continue;

      case ph_stages: {
        const double h = hcur;
        // The callback machine makes a whole attempt from its first stage
        // (from = 1) except when it resumes one that the user stopped.
        const bool in = Direct && from == 1
                            ? run_stages<P, N, Direct, false, true>(iw, n, 1, y, k0, ytmp, h, rw[rw_t], req, eval)
                            : run_stages<P, N, Direct, false, false>(iw, n, from, y, k0, ytmp, h, rw[rw_t], req, eval);
        if (!in) return wait;
        // All stages: the estimate decides.
        const double err = finish_attempt<P, N>(y, k0, ytmp, thresh, n, h, ynew);
        const double tol = rw[rw_tol];
        rw[rw_err] = err;
        if (!(err <= tol)) {
          ++iw[iw_fails];
          ++iw[iw_rejects];
          double r = std::isfinite(err) ? safety * step_root<P::q + 1>(tol / err) : shrink_min;
          r = std::clamp(r, shrink_min, safety);
          if (iw[iw_rejects] >= 2) r = std::min(r, shrink_second);
          const double hn = h * r;
          const double hmin = rk_hmin(st, rw[rw_t]);
          if (std::fabs(hn) < hmin) {
            rw[rw_hnext] = hn;
            req = {rw[rw_t], y, nullptr, hmin, 0};
            return finished(rk_event::too_small);
          }
          hcur = hn;
          rw[rw_h] = hn;
          phase = ph_attempt;
          continue;
        }
        // Accept.  (tol/err)^(1/(q+1)) is needed only below the growth limit:
        // 0.8 x^(1/(q+1)) < 4 exactly when x < 5^(q+1).
        constexpr double grow_cut = [] {
          double g = 5.0;
          for (int k = 0; k < P::q; ++k) g *= 5.0;
          return g;
        }();
        const double x = tol / err;
        double r = !(x < grow_cut) ? grow_max : safety * step_root<P::q + 1>(x);
        r = std::min(r, iw[iw_rejects] > 0 ? 1.0 : grow_max);
        const bool cut = iw[iw_last_cut] != 0;
        const double t = rw[rw_t], target = rw[rw_target];
        const bool hit = std::fabs(target - t) == std::fabs(h);
        iw[iw_hit_target] = hit;
        rw[rw_told] = t;
        rw[rw_hlast] = h;
        const double tnew = hit ? target : t + h;
        rw[rw_t] = tnew;
        // Do not let a step shortened to reach the target shrink the next one.
        // The new size is dir |h r|; h has the direction's sign and r > 0
        // (r >= 0.8 here), so without the cut that is h r itself, bit for bit.
        const double hr = h * r;
        const double hnext = cut ? rw[rw_dir] * std::max(std::fabs(hr), std::fabs(rw[rw_hnext])) : hr;
        rw[rw_hnext] = hnext;
        rw[rw_h] = hnext;
        hcur = hnext;
        ++iw[iw_steps];
        if (cut) ++iw[iw_cuts];
        copy_n<N>(y, n, yold);
        copy_n<N>(P::fsal ? ytmp : ynew, n, y);
        if constexpr (P::fsal) {
          copy_n<N>(k0 + (P::s - 1) * n, n, yp);
          phase = ph_accepted;
          continue;
        } else {
          if (!ask(ph_ynew, tnew, y, yp)) return wait;
          phase = ph_ynew;
          continue;
        }
      }

      case ph_ynew:
        ++iw[iw_nfcn];
        ++iw[iw_budget];
        phase = ph_accepted;
        continue;

      case ph_accepted: {
        // Stiffness: the difference of two stages, compared in squares
        // (rw_lambda holds the square of the estimate).
        const double h = rw[rw_hlast];
        double dk2 = 0.0, dy2 = 0.0;  // (set by the first component)
        stiff_sums<P, N>(k0, n, h, dk2, dy2);
        bool limited = false;
        if (dy2 * 1e20 >= dk2 && dy2 > 0.0) {
          const double lambda2 = dk2 / dy2, prev2 = rw[rw_lambda];
          const bool trusted = prev2 > 0.0 && lambda2 >= 0.04 * prev2 && lambda2 <= 25.0 * prev2;
          rw[rw_lambda] = lambda2;
          constexpr double bound2 = (0.9 * P::radius) * (0.9 * P::radius);
          limited = trusted && (h * h) * lambda2 >= bound2;
        } else {
          rw[rw_lambda] = 0.0;
        }
        const int64_t state = iw[iw_stiff_state];
        iw[iw_stiff_state] = (state & stiff_seen) | (limited ? int64_t{stiff_limited} : int64_t{0});
        if (limited) {
          if (++iw[iw_stiff] >= rk_stiff_steps) {
            const double rest = std::fabs(rw[rw_tend] - rw[rw_t]);
            const double nf = static_cast<double>(std::max<int64_t>(1, iw[iw_nfcn]));
            rw[rw_stiff_ratio] = rest / std::fabs(h) * P::cost / nf;
            iw[iw_stiff_flag] = 1;
            iw[iw_stiff_state] |= stiff_seen;
            iw[iw_stiff] = rk_stiff_steps - 100;
          }
        } else if (iw[iw_stiff] > 0) {
          iw[iw_stiff] = 0;
        }
        for (int64_t m = 0; m < n; ++m) ymax[m] = std::max(ymax[m], std::fabs(y[m]));
        if (!iw[iw_errass]) {
          if (step_done()) return rk_event::step_done;
          phase = ph_idle;
          continue;
        }
        // The assessment: two half steps from ysec at told.
        rw[rw_tsec] = rw[rw_told];
        iw[iw_spare] = 0;  // which half
        phase = ph_sec_half;
        continue;
      }

      case ph_sec_half:
        copy_n<N>(sec(1), n, sec(4));
        from = 1;
        phase = ph_sec_stages;
        continue;

      case ph_sec_stage:
        ++iw[iw_nfcn_ga];
        from = static_cast<int>(iw[iw_stage]) + 1;
        phase = ph_sec_stages;
        continue;

      case ph_sec_stages: {
        const double hs = 0.5 * rw[rw_hlast];
        double *const ysec = sec(0), *const ypsec = sec(1), *const ysnew = sec(2), *const ksec = sec(4);
        if (!run_stages<P, N, Direct, true, false>(iw, n, from, ysec, ksec, ytmp, hs, rw[rw_tsec], req, eval))
          return wait_ga;
        const double err = finish_attempt<P, N>(ysec, ksec, ytmp, thresh, n, hs, ysnew);
        if (!(err <= rw[rw_tol]) && !(err <= rw[rw_err])) {
          rw[rw_tsec] = rw[rw_told];
          return finished(iw[iw_ga_steps] == 0 ? rk_event::ga_start : rk_event::ga_later);
        }
        copy_n<N>(P::fsal ? ytmp : ysnew, n, ysec);
        rw[rw_tsec] = iw[iw_spare] == 0 ? rw[rw_tsec] + hs : rw[rw_t];
        if constexpr (P::fsal) {
          copy_n<N>(ksec + (P::s - 1) * n, n, ypsec);
          phase = ph_sec_done;
          continue;
        } else {
          if (!ask(ph_sec_ynew, rw[rw_tsec], ysec, ypsec)) return wait_ga;
          phase = ph_sec_ynew;
          continue;
        }
      }

      case ph_sec_ynew:
        ++iw[iw_nfcn_ga];
        phase = ph_sec_done;
        continue;

      case ph_sec_done: {
        if (iw[iw_spare] == 0) {
          iw[iw_spare] = 1;
          phase = ph_sec_half;
          continue;
        }
        // Both halves done: ysec is at t; compare.
        const double *ys = sec(0);
        double *rms = sec(3);
        for (int64_t m = 0; m < n; ++m) {
          const double e = std::fabs(y[m] - ys[m]) / std::max(std::fabs(y[m]), thresh[m]);
          rms[m] += e * e;
          if (e > rw[rw_errmax]) {
            rw[rw_errmax] = e;
            rw[rw_terrmx] = rw[rw_t];
          }
        }
        ++iw[iw_ga_steps];
        if (step_done()) return rk_event::step_done;
        phase = ph_idle;
        continue;
      }

      default:
        return finished(rk_event::too_small);  // not reached: the phase is one of the above
    }
  }
}

}  // namespace detail

// The step machine (see the head of this file) for the pair of the arrays.
// The callback machine (Direct) goes on to the next step while more()
// is true, so that a range integration stays inside it.
template <bool Direct, class Eval, class More>
inline rk_event rk_run(const rk_state &st, rk_request &req, Eval &&eval, More &&more) {
  using namespace detail;
#define ZEM_RK_CALL(M, N) return rk_run_n<M, N, Direct>(st, req, eval, more)
#define ZEM_RK_BY_N(M)                  \
  switch (st.n) {                       \
    case 1: ZEM_RK_CALL(M, 1);          \
    case 2: ZEM_RK_CALL(M, 2);          \
    case 3: ZEM_RK_CALL(M, 3);          \
    case 4: ZEM_RK_CALL(M, 4);          \
    default: ZEM_RK_CALL(M, 0);         \
  }
  switch (st.iw[iw_method]) {
    case rk23: ZEM_RK_BY_N(rk23)
    case rk45: ZEM_RK_BY_N(rk45)
    default: ZEM_RK_BY_N(rk78)
  }
#undef ZEM_RK_BY_N
#undef ZEM_RK_CALL
}

// One step at a time.
template <bool Direct, class Eval>
inline rk_event rk_run(const rk_state &st, rk_request &req, Eval &&eval) {
  return rk_run<Direct>(st, req, eval, [] { return false; });
}

}  // namespace zem::d02
