// The engine of the Runge-Kutta suite d02p: the communication arrays, the
// call-sequence rules and the resumable step.
//
// Everything a problem needs lives in the caller's arrays iwsav (int64,
// liwsav elements) and rwsav (double, rk_rwsav_len(n, method, errass)
// elements); nothing is allocated.  The step is a resumable machine
// (d02/rk_machine.h, compiled per pair): in reverse communication
// (rk_resume, d02pg) it returns to its driver whenever it needs a
// derivative, with the point and the place for the result, and continues
// from iwsav's phase when called again; the callback integrators (d02pe,
// d02pf) run the same machine with the evaluations made inline through the
// frame's callback chain.  One machine, so the three integrators take the
// same steps.
#pragma once

#include <cstdint>

#include "d02/rk_tables.h"

namespace zem::d02 {

inline constexpr int64_t liwsav = 32;
inline constexpr int64_t rwsav_header = 64;

// Pairs, as the engine codes them (the Fortran method's absolute value).
enum : int64_t { rk23 = 1, rk45 = 2, rk78 = 3 };

// iwsav, by index.
enum iw : int {
  iw_magic, iw_n, iw_method, iw_errass, iw_lrwsav, iw_check,
  iw_mode,        // 0 no integrator yet, 1 range integrator, 2 step integrator
  iw_dead,        // 0 alive; else the routine code (rtn_*) whose error ended the problem
  iw_diag_once,   // 1: an accuracy failure; d02pt may be called once more
  iw_at_tend,     // 1: the current t is tend
  iw_phase,       // the machine's phase (rk_phase)
  iw_stage,       // stage being evaluated
  iw_nfcn,        // evaluations of the integration proper
  iw_nfcn_ga,     // evaluations of the global error assessment
  iw_steps,       // accepted steps
  iw_fails,       // rejected attempts
  iw_budget,      // evaluations since the last budget warning
  iw_stiff,       // consecutive steps whose size looked limited by stability
  iw_rejects,     // consecutive rejections of the current step
  iw_cuts,        // steps shortened drastically to reach an output point
  iw_nwant,       // components prepared by d02ph (0: none)
  iw_interp_step, // iw_steps when d02ph prepared them
  iw_ga_steps,    // steps whose global error has been assessed
  iw_irevcm,      // d02pg: the request it is waiting for (0 none)
  iw_have_yp,     // 1: rwsav holds f(t, y)
  iw_stiff_flag,  // set by the step when stiffness is diagnosed
  iw_last_cut,    // 1: the current attempt was shortened to reach the target
  iw_tend_hits,   // steps ended exactly on tend by the step integrator
  iw_hit_target,  // 1: the last step ended exactly on the target
  iw_spare,       // assessment: which half step (0, 1)
  iw_dest,        // d02pg: where in rwsav the requested derivative goes
  iw_stiff_state, // stiff_seen | stiff_limited (below)
  iw_count,
};
static_assert(iw_count <= liwsav);

// iw_stiff_state's bits: stiffness has been diagnosed in this problem; the
// last accepted step looked limited by stability.
enum : int64_t { stiff_seen = 1, stiff_limited = 2 };

// rwsav header, by index.
enum rw : int {
  rw_tstart, rw_tend, rw_tol, rw_t, rw_h, rw_hlast, rw_told, rw_dir, rw_hstart, rw_target,
  rw_lambda, rw_errmax, rw_terrmx, rw_hnext, rw_err, rw_tsec, rw_stiff_ratio, rw_tgot,
};

enum rk_phase : int64_t {
  ph_idle = 0,    // between steps
  ph_yp0,         // waiting for f(t0, y0)
  ph_hinit,       // waiting for the trial evaluation of the initial step size
  ph_stage,       // waiting for stage iw_stage
  ph_ynew,        // waiting for f(tnew, ynew) (pair without first-same-as-last)
  ph_sec_stage,   // assessment: waiting for a stage of a half step
  ph_sec_ynew,    // assessment: waiting for f at the end of a half step
};

// Routines, for the "which routine ended the problem" record.
enum rtn : int64_t { rtn_pe = 1, rtn_pf = 2, rtn_pg = 3 };

// One pair, with its doubles and its constants.
struct pair_info {
  int s;            // stages
  bool fsal;        // first same as last
  int q;            // lower order (the exponent of the step formula is 1/(q+1))
  int p;            // order of the step
  double radius;    // stability region on the negative real axis
  double tangent;   // tangent of the region's half-angle
  int cost;         // evaluations per step
  const double *c;  // nodes
  const double *a;  // lower triangle, row by row
  const double *b;  // weights of the step
  const double *e;  // b - bhat: weights of the error estimate
  int stiff_i, stiff_j;  // two stages whose difference feeds the stiffness estimate
};
const pair_info &pair_of(int64_t method);

// Required rwsav length for n equations.
int64_t rk_rwsav_len(int64_t n, int64_t method, bool errass);

// A view of the two arrays.
struct rk_state {
  int64_t *iw;
  double *rw;
  int64_t n;
  const pair_info *pr;
  double *thresh() const { return rw + rwsav_header; }
  double *y() const { return thresh() + n; }
  double *yp() const { return y() + n; }
  double *yold() const { return yp() + n; }
  double *ytmp() const { return yold() + n; }
  double *ymax() const { return ytmp() + n; }
  double *ynew() const { return ymax() + n; }
  double *k(int j) const { return ynew() + n + j * n; }  // stage j of the last step
  // Global error assessment (only with errass).
  double *ysec() const { return k(pr->s); }
  double *ypsec() const { return ysec() + n; }
  double *ysnew() const { return ypsec() + n; }
  double *rms() const { return ysnew() + n; }
  double *ksec(int j) const { return rms() + n + j * n; }
};

// Validity of the arrays: the magic word and the check of the header.
int64_t rk_check_word(const int64_t *iw);
// A view, or false when the arrays were not set up (or were overwritten).
bool rk_view(int64_t *iwsav, double *rwsav, rk_state &st);

// What the machine asks of its driver.
enum class rk_event {
  eval,        // put f(req_t, req_y) into req_yp, then call rk_resume again
  eval_ga,     // the same, for the global error assessment
  step_done,   // a step was accepted; t, y, yp are the new values
  too_small,   // the step size fell below the precision limit (h, t, hmin in rw)
  ga_start,    // assessment unreliable at the first step
  ga_later,    // assessment unreliable later (time in rw_tsec)
  stopped,     // (callback drivers) the user asked to stop during an evaluation
};
struct rk_request {
  double t;
  const double *y;
  double *yp;
  double hmin;     // with too_small: the limit
  int64_t status;  // with stopped: the status of the evaluation
};
// Continues the current step, returning at every evaluation (the reverse
// communication driver; the callback drivers run rk_run<true> of
// d02/rk_machine.h, the same machine with the evaluations made inline).
rk_event rk_resume(const rk_state &st, rk_request &req);

// max_i |v_i| / max(thresh_i, |y_i|, 0.01 max_j |y_j|): the norm of the
// initial step selection.
double rk_weighted_max(const rk_state &st, const double *v, const double *y);

// Dense output on the last accepted step at tw: y (if yw) and y' (if ypw)
// for the first m components.
void rk_interp(const rk_state &st, double tw, int64_t m, double *yw, double *ypw);

// Smallest step size the precision allows at t.
double rk_hmin(const rk_state &st, double t);

// Largest number of evaluations between two budget warnings.
inline constexpr int64_t rk_budget = 50000;
// Consecutive stiff-looking steps before stiffness is reported.
inline constexpr int64_t rk_stiff_steps = 15;

}  // namespace zem::d02
