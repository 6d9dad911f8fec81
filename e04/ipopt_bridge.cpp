// The interior-point dependency behind e04st: the problem it sees (built
// from the model in the handle), the journal through which it prints, the
// option mapping, the iteration log and the result store.
//
// The problem the dependency sees.  Variables are the handle's (a deleted
// variable is fixed at 0).  Constraint rows, in this order: the linear rows
// that are not deleted, the quadratic constraints, the nonlinear
// constraints.  The linear and quadratic pieces (objective, rows, their
// derivatives) are evaluated here; only the nonlinear ones call the user.
// Multipliers are reported in the handle's numbering (deleted components
// keep their places, with 0).
//
// Printing.  `unit_journal` is the journal class the dependency prints
// through; it is built from the engine context by value and writes whole
// lines through the library's record writer (frame/units.h), one unit per
// journal.  The dependency's own console output is never created, its
// options file is never read, and at print levels below 4 it prints
// nothing but the derivative checker's findings ("Verify Derivatives"):
// the iteration log is ours (docs/e04st.md lists its columns).
#include "e04/ipopt_bridge.h"

#include <IpIpoptApplication.hpp>
#include <IpJournalist.hpp>
#include <IpSolveStatistics.hpp>
#include <IpTNLP.hpp>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <ctime>
#include <limits>
#include <new>
#include <sstream>
#include <string>
#include <vector>

#include "e04/model.h"
#include "e04/options.h"
#include "frame/units.h"

namespace zem::e04::nlp {
namespace {

using Ipopt::Index;
using Ipopt::Number;

constexpr int64_t index_max = std::numeric_limits<Index>::max();

// ---- Printing -------------------------------------------------------------

// The journal: the dependency's text (which arrives in pieces) and our own
// lines, written as whole records through the output units.
class unit_journal final : public Ipopt::Journal {
 public:
  unit_journal(engine_data en, const char *name, int64_t unit, Ipopt::EJournalLevel level)
      : Ipopt::Journal(name, level), en_(en), unit_(unit), level_(level) {}
  ~unit_journal() override { flush_pending(); }

  // One line of our own output.
  void line(std::string_view text) {
    flush_pending();
    emit(text);
  }
  void flush_pending() {
    if (!pending_.empty()) {
      emit(pending_);
      pending_.clear();
    }
  }
  bool ok() const { return !failed_; }
  int64_t records() const { return en_.counter; }

  // Nothing of the dependency's (not even its insuppressible banner) below
  // the level this journal was made for.
  bool IsAccepted(Ipopt::EJournalCategory category, Ipopt::EJournalLevel level) const override {
    if (unit_ < 0) return false;
    if (checker_ && category == Ipopt::J_NLP && level > Ipopt::J_NONE && level <= Ipopt::J_WARNING) return true;
    if (level_ == Ipopt::J_NONE) return false;
    return Ipopt::Journal::IsAccepted(category, level);
  }
  // The derivative checker's findings (warnings of the NLP category) pass
  // whatever the level.
  void show_checker() { checker_ = true; }

 protected:
  void PrintImpl(Ipopt::EJournalCategory, Ipopt::EJournalLevel, const char *str) override { take(str); }
  void PrintfImpl(Ipopt::EJournalCategory, Ipopt::EJournalLevel, const char *fmt, va_list ap) override {
    char buf[512];
    va_list copy;
    va_copy(copy, ap);
    const int len = std::vsnprintf(buf, sizeof buf, fmt, copy);
    va_end(copy);
    if (len < 0) return;
    if (static_cast<size_t>(len) < sizeof buf) return take(buf);
    std::string big(static_cast<size_t>(len) + 1, '\0');
    std::vsnprintf(big.data(), big.size(), fmt, ap);
    big.resize(static_cast<size_t>(len));
    take(big);
  }
  void FlushBufferImpl() override {}

 private:
  void take(std::string_view s) {
    size_t start = 0;
    for (size_t i = 0; i < s.size(); ++i)
      if (s[i] == '\n') {
        pending_.append(s.substr(start, i - start));
        emit(pending_);
        pending_.clear();
        start = i + 1;
      }
    pending_.append(s.substr(start));
  }
  void emit(std::string_view text) {
    if (unit_ < 0) return;
    if (zem::write_record(unit_, text) != 0) failed_ = true;
    ++en_.counter;  // the journal's own copy of the context counts its records
  }
  engine_data en_;
  int64_t unit_;
  Ipopt::EJournalLevel level_;
  std::string pending_;
  bool failed_ = false;
  bool checker_ = false;
};

// The derivative checker's verdict.  The dependency's checker prints one
// line per derivative entry whose finite-difference estimate differs by
// more than its tolerance, marked by a '*' in the first column, as a
// warning of its NLP category; this journal, which takes nothing else,
// counts them.  (What it prints goes to the user through unit_journal.)
class check_journal final : public Ipopt::Journal {
 public:
  check_journal() : Ipopt::Journal("zem derivative check", Ipopt::J_WARNING) {}
  int64_t flagged() const { return flagged_; }
  // Nothing but those warnings (not the banner, which every journal is
  // offered at a level below J_NONE).
  bool IsAccepted(Ipopt::EJournalCategory category, Ipopt::EJournalLevel level) const override {
    return category == Ipopt::J_NLP && level > Ipopt::J_NONE && level <= Ipopt::J_WARNING;
  }

 protected:
  void PrintImpl(Ipopt::EJournalCategory, Ipopt::EJournalLevel, const char *str) override { take(str); }
  void PrintfImpl(Ipopt::EJournalCategory, Ipopt::EJournalLevel, const char *fmt, va_list ap) override {
    char buf[512];
    if (std::vsnprintf(buf, sizeof buf, fmt, ap) >= 0) take(buf);
  }
  void FlushBufferImpl() override {}

 private:
  void take(const char *s) {
    for (; *s; ++s) {
      if (at_line_start_ && *s == '*') ++flagged_;
      at_line_start_ = *s == '\n';
    }
  }
  int64_t flagged_ = 0;
  bool at_line_start_ = true;
};

// The dependency's level for our print level: its final statistics at 4,
// its iteration output as well at 5, nothing below.
Ipopt::EJournalLevel dependency_level(int64_t print_level) {
  if (print_level >= 5) return Ipopt::J_ITERSUMMARY;
  if (print_level >= 4) return Ipopt::J_SUMMARY;
  return Ipopt::J_NONE;
}

std::string fmt(const char *f, ...) __attribute__((format(printf, 1, 2)));
std::string fmt(const char *f, ...) {
  char buf[256];
  va_list ap;
  va_start(ap, f);
  std::vsnprintf(buf, sizeof buf, f, ap);
  va_end(ap);
  return buf;
}

// ---- The problem the dependency sees --------------------------------------

enum class row_kind { linear, quadratic, nonlinear };

struct settings {
  double sign = 1.0;           // +1 minimize, -1 maximize, 0 feasible point
  bool exact_hessian = true;
  int64_t monitor_frequency = 0;
  double time_limit = 1e6;
  int64_t stats_time = 0;      // 0 none, 1 processor, 2 wall clock
  bool warm_u = false;
  double bigbnd = 1e20;
};

double now(int64_t kind) {
  if (kind == 2)
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
  return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

class model_nlp final : public Ipopt::TNLP {
 public:
  model_nlp(problem &p, user_functions &f, const settings &s, double *x, double *u, double *rinfo, double *stats,
            unit_journal *out, int64_t out_level, unit_journal *mon, int64_t mon_level, const check_journal *check)
      : p_(p), f_(f), s_(s), x_(x), u_(u), rinfo_(rinfo), stats_(stats), out_(out), out_level_(out_level), mon_(mon),
        mon_level_(mon_level), check_(check) {
    build();
  }

  // Outcome bits the solve reads after the run.
  int64_t stop_flag = 0;
  bool time_up = false;
  bool wrong_derivatives = false;  // set at iteration 0 from the derivative check
  bool have_point = false;
  int64_t nan_count = 0;
  int64_t iterations = 0;
  double last_inf_du = 0.0, last_mu = 0.0;
  double f_final = 0.0;

  int64_t m() const { return static_cast<int64_t>(rows_.size()); }
  int64_t jac_nnz() const { return static_cast<int64_t>(jrow_.size()); }
  int64_t hess_nnz() const { return static_cast<int64_t>(hrow_.size()); }

  // ---- Problem description ----
  bool get_nlp_info(Index &n, Index &m, Index &nnz_jac, Index &nnz_h, IndexStyleEnum &style) override {
    n = static_cast<Index>(n_);
    m = static_cast<Index>(rows_.size());
    nnz_jac = static_cast<Index>(jrow_.size());
    nnz_h = s_.exact_hessian ? static_cast<Index>(hrow_.size()) : 0;
    style = C_STYLE;
    return true;
  }
  bool get_bounds_info(Index, Number *xl, Number *xu, Index, Number *gl, Number *gu) override {
    for (int64_t j = 0; j < n_; ++j) {
      const bool del = j < static_cast<int64_t>(p_.var_deleted.size()) && p_.var_deleted[j];
      xl[j] = del ? 0.0 : clamp(p_.bl[j]);
      xu[j] = del ? 0.0 : clamp(p_.bu[j]);
    }
    for (size_t r = 0; r < rows_.size(); ++r) {
      gl[r] = clamp(row_bl_[r]);
      gu[r] = clamp(row_bu_[r]);
    }
    return true;
  }
  bool get_starting_point(Index, bool init_x, Number *x, bool init_z, Number *zl, Number *zu, Index, bool init_l,
                          Number *lambda) override {
    if (init_x)
      for (int64_t j = 0; j < n_; ++j) x[j] = x_[j];
    if (init_z || init_l) {
      // Warm start of the multipliers from u (the handle's numbering).
      const double *w = warm_.data();
      if (init_z)
        for (int64_t j = 0; j < n_; ++j) {
          zl[j] = std::max(0.0, w[j]);
          zu[j] = std::max(0.0, -w[j]);
        }
      if (init_l)
        for (size_t r = 0; r < rows_.size(); ++r) lambda[r] = -w[u_index_[r]];
    }
    return true;
  }

  // ---- Evaluations ----
  bool eval_f(Index, const Number *x, bool new_x, Number &obj) override {
    if (new_x) remember(x);
    double f = 0.0;
    if (!objective(x, &f)) return false;
    obj = s_.sign * f;
    return true;
  }
  bool eval_grad_f(Index, const Number *x, bool new_x, Number *g) override {
    if (new_x) remember(x);
    std::fill(g, g + n_, 0.0);
    if (s_.sign == 0.0) return true;
    if (!gradient(x, g)) return false;
    if (s_.sign != 1.0)
      for (int64_t j = 0; j < n_; ++j) g[j] *= s_.sign;
    return true;
  }
  bool eval_g(Index, const Number *x, bool new_x, Index, Number *g) override {
    if (new_x) remember(x);
    return constraints(x, g);
  }
  bool eval_jac_g(Index, const Number *x, bool new_x, Index, Index, Index *irow, Index *jcol, Number *v) override {
    if (!v) {
      for (size_t e = 0; e < jrow_.size(); ++e) {
        irow[e] = static_cast<Index>(jrow_[e]);
        jcol[e] = static_cast<Index>(jcol_[e]);
      }
      return true;
    }
    if (new_x) remember(x);
    return jacobian(x, v);
  }
  bool eval_h(Index, const Number *x, bool new_x, Number sigma, Index, const Number *lambda, bool, Index,
              Index *irow, Index *jcol, Number *v) override {
    if (!v) {
      for (size_t e = 0; e < hrow_.size(); ++e) {
        irow[e] = static_cast<Index>(hrow_[e]);
        jcol[e] = static_cast<Index>(hcol_[e]);
      }
      return true;
    }
    if (new_x) remember(x);
    return hessian(x, sigma * s_.sign, lambda, v);
  }

  // ---- Progress ----
  bool intermediate_callback(Ipopt::AlgorithmMode mode, Index iter, Number obj, Number inf_pr, Number inf_du,
                             Number mu, Number d_norm, Number, Number, Number alpha_pr, Index ls_trials,
                             const Ipopt::IpoptData *, Ipopt::IpoptCalculatedQuantities *) override {
    if (iter == 0 && check_ && check_->flagged() > 0) {
      // The derivative check ran before this first call: stop before any
      // step with derivatives the check found wrong.
      wrong_derivatives = true;
      return false;
    }
    iterations = iter;
    last_inf_du = inf_du;
    last_mu = mu;
    const double fval = s_.sign == 0.0 ? 0.0 : obj * s_.sign;
    const bool resto = mode == Ipopt::RestorationPhaseMode;
    log_line(iter, resto, fval, inf_pr, inf_du, mu, d_norm, alpha_pr, ls_trials);
    if (stop_flag != 0) return false;
    if (s_.monitor_frequency > 0 && iter % s_.monitor_frequency == 0 && f_.has_monit) {
      double ri[info_len] = {}, st[info_len] = {};
      ri[0] = fval;
      ri[1] = inf_pr;
      ri[2] = inf_du;
      ri[5] = mu;
      ri[6] = d_norm;
      ri[8] = alpha_pr;
      fill_counts(st);
      st[0] = static_cast<double>(iter);
      st[7] = resto ? 1.0 : 0.0;
      st[8] = static_cast<double>(ls_trials);
      int64_t inform = 0;
      const int64_t status = f_.monit(last_x_.data(), &inform, ri, st);
      if (status != 0) {
        stop_flag = status;
        return false;
      }
    }
    if (elapsed() > s_.time_limit) {
      time_up = true;
      return false;
    }
    return true;
  }

  void finalize_solution(Ipopt::SolverReturn, Index, const Number *x, const Number *zl, const Number *zu, Index,
                         const Number *g, const Number *lambda, Number obj, const Ipopt::IpoptData *,
                         Ipopt::IpoptCalculatedQuantities *) override {
    if (!x) return;
    have_point = true;
    std::copy(x, x + n_, x_);
    f_final = s_.sign == 0.0 ? 0.0 : obj * s_.sign;
    mult_.assign(static_cast<size_t>(n_ + m_full_), 0.0);
    cvals_.assign(static_cast<size_t>(m_full_), 0.0);
    for (int64_t j = 0; j < n_; ++j) mult_[j] = (zl ? zl[j] : 0.0) - (zu ? zu[j] : 0.0);
    for (size_t r = 0; r < rows_.size(); ++r) {
      if (lambda) mult_[u_index_[r]] = -lambda[r];
      if (g) cvals_[u_index_[r] - n_] = g[r];
    }
    // Largest violation of a bound or a constraint at x.
    double viol = 0.0;
    for (int64_t j = 0; j < n_; ++j) viol = std::max({viol, lower_of(p_.bl[j]) - x[j], x[j] - upper_of(p_.bu[j])});
    if (g)
      for (size_t r = 0; r < rows_.size(); ++r)
        viol = std::max({viol, lower_of(row_bl_[r]) - g[r], g[r] - upper_of(row_bu_[r])});
    violation_ = viol;
  }

  // Results into u, rinfo, stats and the handle's store; false: no memory.
  bool deliver(double t_used) {
    std::fill(rinfo_, rinfo_ + info_len, 0.0);
    std::fill(stats_, stats_ + info_len, 0.0);
    fill_counts(stats_);
    stats_[0] = static_cast<double>(iterations);
    stats_[6] = t_used;
    if (!have_point) return true;
    rinfo_[0] = f_final;
    rinfo_[1] = violation_;
    rinfo_[2] = last_inf_du;
    rinfo_[3] = last_mu;
    if (u_) std::copy(mult_.begin(), mult_.end(), u_);
    // Slack of each linear row: the distance to its nearer bound, negative
    // when the row is violated.
    std::vector<double> slack(static_cast<size_t>(p_.nlc()), 0.0);
    for (int64_t i = 0; i < p_.nlc(); ++i) {
      const double a = cvals_[i];
      slack[i] = std::min(a - lower_of(p_.lc_bl[i]), upper_of(p_.lc_bu[i]) - a);
    }
    const double objv[1] = {f_final};
    return store_reals(p_, "PRIMAL", {x_, static_cast<size_t>(n_)}) && store_reals(p_, "DUAL", mult_) &&
           store_reals(p_, "[SLACK]", slack) && store_reals(p_, "CONSTRAINT VALUES", cvals_) &&
           store_reals(p_, "OBJECTIVE VALUE", objv) && store_reals(p_, "SOLVER STATISTICS", {stats_, info_len});
  }

  void set_warm(const double *w) {
    warm_.assign(w, w + n_ + m_full_);
  }
  void start_clock() { t0_ = now(s_.stats_time == 2 ? 2 : 1); }
  double elapsed() const { return now(s_.stats_time == 2 ? 2 : 1) - t0_; }
  int64_t full_rows() const { return m_full_; }

  void print_header() {
    if (out_level_ >= 3 && out_) problem_lines(out_);
    if (mon_level_ >= 3 && mon_) problem_lines(mon_);
    const char *h = " it   objective           pr.infeas  du.infeas  lg(mu)  ||d||      step      ls";
    if (out_level_ >= 2 && out_) out_->line(h);
    if (mon_level_ >= 2 && mon_) mon_->line(h);
  }

 private:
  void problem_lines(unit_journal *j) {
    j->line(" Interior-point solver: problem statistics");
    j->line(fmt("   variables                      %10lld", static_cast<long long>(n_)));
    j->line(fmt("   constraint rows                %10lld", static_cast<long long>(rows_.size())));
    j->line(fmt("   Jacobian nonzeros              %10lld", static_cast<long long>(jrow_.size())));
    if (s_.exact_hessian)
      j->line(fmt("   Hessian nonzeros (lower)       %10lld", static_cast<long long>(hrow_.size())));
    else
      j->line("   Hessian                        limited-memory");
  }

  void log_line(Index iter, bool resto, double f, double inf_pr, double inf_du, double mu, double d_norm,
                double alpha, Index ls) {
    if (!((out_ && out_level_ >= 2) || (mon_ && mon_level_ >= 2))) return;
    const std::string s = fmt("%4d%c %19.12e %9.2e %9.2e %6.2f %9.2e %9.2e %3d", static_cast<int>(iter),
                              resto ? 'r' : ' ', f, inf_pr, inf_du, mu > 0.0 ? std::log10(mu) : -99.0, d_norm,
                              alpha, static_cast<int>(ls));
    if (out_ && out_level_ >= 2) out_->line(s);
    if (mon_ && mon_level_ >= 2) mon_->line(s);
  }

  void fill_counts(double *st) const {
    st[1] = static_cast<double>(n_objfun_);
    st[2] = static_cast<double>(n_objgrd_);
    st[3] = static_cast<double>(n_confun_);
    st[4] = static_cast<double>(n_congrd_);
    st[5] = static_cast<double>(n_hess_);
    st[6] = elapsed_or_zero();
  }
  double elapsed_or_zero() const { return s_.stats_time == 0 ? 0.0 : elapsed(); }

  double clamp(double b) const { return std::max(-s_.bigbnd, std::min(s_.bigbnd, b)); }
  double lower_of(double b) const { return b <= -s_.bigbnd ? -inf : b; }
  double upper_of(double b) const { return b >= s_.bigbnd ? inf : b; }

  void remember(const double *x) { std::copy(x, x + n_, last_x_.begin()); }

  // A user call that asked to stop, or gave no usable value.
  bool user_ok(int64_t status, int64_t inform, const double *v, size_t len) {
    if (status != 0) {
      stop_flag = status;
      return false;
    }
    if (inform > 0) return false;
    for (size_t i = 0; i < len; ++i)
      if (!std::isfinite(v[i])) {
        ++nan_count;
        return false;
      }
    return true;
  }

  bool objective(const double *x, double *f) {
    if (stop_flag) return false;
    double v = p_.s.obj_constant;
    if (s_.sign == 0.0) {
      *f = 0.0;
      return true;
    }
    if (p_.s.objective == obj_nonlinear) {
      int64_t inform = 0;
      double fx = 0.0;
      ++n_objfun_;
      if (!user_ok(f_.objfun(x, &fx, &inform), inform, &fx, 1)) return false;
      *f = fx;
      return true;
    }
    for (size_t j = 0; j < p_.c.size(); ++j) v += p_.c[j] * x[j];
    for (size_t k = 0; k < p_.cs.idx.size(); ++k) v += p_.cs.val[k] * x[p_.cs.idx[k] - 1];
    if (p_.s.objective == obj_quadratic) {
      if (p_.s.factored) {
        fx_.assign(static_cast<size_t>(p_.mf), 0.0);
        for (size_t e = 0; e < p_.f.size(); ++e) fx_[p_.f.row[e] - 1] += p_.f.val[e] * x[p_.f.col[e] - 1];
        double q = 0.0;
        for (double t : fx_) q += t * t;
        v += 0.5 * q;
      } else {
        double q = 0.0;
        for (size_t e = 0; e < p_.h.size(); ++e) {
          const int64_t i = p_.h.row[e] - 1, j = p_.h.col[e] - 1;
          q += (i == j ? 0.5 : 1.0) * p_.h.val[e] * x[i] * x[j];
        }
        v += q;
      }
    }
    *f = v;
    return true;
  }

  bool gradient(const double *x, double *g) {
    if (stop_flag) return false;
    if (p_.s.objective == obj_nonlinear) {
      int64_t inform = 0;
      ++n_objgrd_;
      const size_t nz = p_.idxfd.size();
      if (!user_ok(f_.objgrd(x, static_cast<int64_t>(nz), fdx_.data(), &inform), inform, fdx_.data(), nz))
        return false;
      for (size_t k = 0; k < nz; ++k) g[p_.idxfd[k] - 1] += fdx_[k];
      return true;
    }
    for (size_t j = 0; j < p_.c.size(); ++j) g[j] += p_.c[j];
    for (size_t k = 0; k < p_.cs.idx.size(); ++k) g[p_.cs.idx[k] - 1] += p_.cs.val[k];
    if (p_.s.objective == obj_quadratic) {
      if (p_.s.factored) {
        fx_.assign(static_cast<size_t>(p_.mf), 0.0);
        for (size_t e = 0; e < p_.f.size(); ++e) fx_[p_.f.row[e] - 1] += p_.f.val[e] * x[p_.f.col[e] - 1];
        for (size_t e = 0; e < p_.f.size(); ++e) g[p_.f.col[e] - 1] += p_.f.val[e] * fx_[p_.f.row[e] - 1];
      } else {
        for (size_t e = 0; e < p_.h.size(); ++e) {
          const int64_t i = p_.h.row[e] - 1, j = p_.h.col[e] - 1;
          g[i] += p_.h.val[e] * x[j];
          if (i != j) g[j] += p_.h.val[e] * x[i];
        }
      }
    }
    return true;
  }

  bool constraints(const double *x, double *g) {
    if (stop_flag) return false;
    std::fill(g, g + rows_.size(), 0.0);
    for (size_t e = 0; e < p_.lc.size(); ++e) {
      const int64_t r = lin_row_[p_.lc.row[e] - 1];
      if (r >= 0) g[r] += p_.lc.val[e] * x[p_.lc.col[e] - 1];
    }
    for (size_t k = 0; k < p_.qcons.size(); ++k) {
      const int64_t r = q_row_[k];
      if (r < 0) continue;
      const quad_con &q = p_.qcons[k];
      double v = 0.0;
      for (size_t e = 0; e < q.q.size(); ++e) {
        const int64_t i = q.q.row[e] - 1, j = q.q.col[e] - 1;
        v += (i == j ? 0.5 : 1.0) * q.q.val[e] * x[i] * x[j];
      }
      for (size_t e = 0; e < q.r.idx.size(); ++e) v += q.r.val[e] * x[q.r.idx[e] - 1];
      g[r] = v;
    }
    if (p_.s.ncnln > 0 && any_nl_) {
      int64_t inform = 0;
      ++n_confun_;
      const size_t m = static_cast<size_t>(p_.s.ncnln);
      if (!user_ok(f_.confun(x, p_.s.ncnln, gx_.data(), &inform), inform, gx_.data(), m)) return false;
      for (size_t i = 0; i < m; ++i)
        if (nl_row_[i] >= 0) g[nl_row_[i]] = gx_[i];
    }
    return true;
  }

  bool jacobian(const double *x, double *v) {
    if (stop_flag) return false;
    std::fill(v, v + jrow_.size(), 0.0);
    for (const auto &c : lin_jac_) v[c.pos] += c.val;
    for (const auto &c : q_jac_) {
      v[c.pos_i] += c.val * x[c.j];
      if (c.pos_j >= 0) v[c.pos_j] += c.val * x[c.i];
    }
    for (const auto &c : q_lin_jac_) v[c.pos] += c.val;
    if (p_.s.ncnln > 0 && any_nl_) {
      int64_t inform = 0;
      ++n_congrd_;
      const size_t nz = p_.gd.size();
      if (!user_ok(f_.congrd(x, static_cast<int64_t>(nz), gdx_.data(), &inform), inform, gdx_.data(), nz))
        return false;
      for (size_t e = 0; e < nz; ++e)
        if (nl_jac_pos_[e] >= 0) v[nl_jac_pos_[e]] += gdx_[e];
    }
    return true;
  }

  bool hessian(const double *x, double sigma, const double *lambda, double *v) {
    if (stop_flag) return false;
    std::fill(v, v + hrow_.size(), 0.0);
    for (const auto &c : obj_hess_) v[c.pos] += sigma * c.val;
    for (const auto &c : q_hess_) v[c.pos] += lambda[c.row] * c.val;
    if (!user_hess_.empty()) {
      // Multipliers of the nonlinear constraints in the handle's numbering.
      for (size_t i = 0; i < lam_nl_.size(); ++i) lam_nl_[i] = nl_row_[i] >= 0 ? lambda[nl_row_[i]] : 0.0;
      for (const auto &block : user_hess_) {
        const int64_t idf = block.idf;
        const double scale = idf < 0 ? 1.0 : idf == 0 ? sigma : lam_nl_[idf - 1];
        if (idf > 0 && nl_row_[idf - 1] < 0) continue;  // a deleted constraint
        if (idf >= 0 && scale == 0.0) continue;
        if (idf == 0 && p_.s.objective != obj_nonlinear) continue;
        int64_t inform = 0;
        ++n_hess_;
        const size_t nz = block.pos.size();
        hx_.resize(nz);
        if (!user_ok(f_.hess(x, p_.s.ncnln, idf, sigma, lam_nl_.data(), static_cast<int64_t>(nz), hx_.data(), &inform),
                     inform, hx_.data(), nz))
          return false;
        for (size_t e = 0; e < nz; ++e) v[block.pos[e]] += scale * hx_[e];
      }
    }
    return true;
  }

  // ---- Building the structures ----
  struct lin_entry {
    int64_t pos;
    double val;
  };
  struct q_entry {
    int64_t pos_i, pos_j;  // gradient components i and j (pos_j < 0 on the diagonal)
    int64_t i, j;
    double val;
  };
  struct h_entry {
    int64_t pos;
    int64_t row;  // the dependency's constraint row whose multiplier scales it
    double val;
  };
  struct hess_block {
    int64_t idf;
    std::vector<int64_t> pos;
  };

  void build() {
    n_ = p_.s.nvar;
    last_x_.assign(static_cast<size_t>(n_), 0.0);
    const int64_t nlc = p_.nlc(), nqc = static_cast<int64_t>(p_.qcons.size()), ncn = p_.s.ncnln;
    m_full_ = nlc + nqc + ncn;
    // Rows.
    lin_row_.assign(static_cast<size_t>(nlc), -1);
    for (int64_t i = 0; i < nlc; ++i)
      if (!(i < static_cast<int64_t>(p_.lc_deleted.size()) && p_.lc_deleted[i])) {
        lin_row_[i] = static_cast<int64_t>(rows_.size());
        add_row(row_kind::linear, n_ + i, p_.lc_bl[i], p_.lc_bu[i]);
      }
    q_row_.assign(static_cast<size_t>(nqc), -1);
    for (int64_t k = 0; k < nqc; ++k)
      if (!p_.qcons[k].deleted) {
        q_row_[k] = static_cast<int64_t>(rows_.size());
        add_row(row_kind::quadratic, n_ + nlc + k, p_.qcons[k].bl, p_.qcons[k].bu);
      }
    nl_row_.assign(static_cast<size_t>(ncn), -1);
    for (int64_t i = 0; i < ncn; ++i)
      if (!(i < static_cast<int64_t>(p_.nl_deleted.size()) && p_.nl_deleted[i])) {
        nl_row_[i] = static_cast<int64_t>(rows_.size());
        add_row(row_kind::nonlinear, n_ + nlc + nqc + i, p_.nl_bl[i], p_.nl_bu[i]);
        any_nl_ = true;
      }
    // Jacobian: linear entries, then quadratic gradients, then the user's.
    for (size_t e = 0; e < p_.lc.size(); ++e) {
      const int64_t r = lin_row_[p_.lc.row[e] - 1];
      if (r < 0) continue;
      lin_jac_.push_back({jac_add(r, p_.lc.col[e] - 1), p_.lc.val[e]});
    }
    for (int64_t k = 0; k < nqc; ++k) {
      const int64_t r = q_row_[k];
      if (r < 0) continue;
      const quad_con &q = p_.qcons[k];
      std::vector<int64_t> cols;
      for (size_t e = 0; e < q.q.size(); ++e) {
        cols.push_back(q.q.row[e] - 1);
        cols.push_back(q.q.col[e] - 1);
      }
      for (int64_t idx : q.r.idx) cols.push_back(idx - 1);
      std::sort(cols.begin(), cols.end());
      cols.erase(std::unique(cols.begin(), cols.end()), cols.end());
      const int64_t base = static_cast<int64_t>(jrow_.size());
      for (int64_t c : cols) jac_add(r, c);
      auto pos_of = [&](int64_t c) { return base + (std::lower_bound(cols.begin(), cols.end(), c) - cols.begin()); };
      for (size_t e = 0; e < q.q.size(); ++e) {
        const int64_t i = q.q.row[e] - 1, j = q.q.col[e] - 1;
        // d/dx of (i==j ? 0.5 q x_i^2 : q x_i x_j): component i gets q x_j, component j gets q x_i.
        q_jac_.push_back({pos_of(i), i == j ? -1 : pos_of(j), i, j, q.q.val[e]});
      }
      for (size_t e = 0; e < q.r.idx.size(); ++e) q_lin_jac_.push_back({pos_of(q.r.idx[e] - 1), q.r.val[e]});
    }
    nl_jac_pos_.assign(p_.gd.size(), -1);
    for (size_t e = 0; e < p_.gd.size(); ++e) {
      const int64_t r = nl_row_[p_.gd.row[e] - 1];
      if (r >= 0) nl_jac_pos_[e] = jac_add(r, p_.gd.col[e] - 1);
    }
    gx_.assign(static_cast<size_t>(ncn), 0.0);
    gdx_.assign(p_.gd.size(), 0.0);
    fdx_.assign(p_.idxfd.size(), 0.0);
    lam_nl_.assign(static_cast<size_t>(ncn), 0.0);
    if (!s_.exact_hessian) return;
    // Hessian of the Lagrangian, lower triangle: every contribution's
    // element, then one position per distinct element.
    std::vector<std::pair<int64_t, int64_t>> el;
    auto lower = [](int64_t a, int64_t b) { return std::make_pair(std::max(a, b), std::min(a, b)); };
    std::vector<std::pair<std::pair<int64_t, int64_t>, double>> obj_el;
    if (p_.s.objective == obj_quadratic) {
      if (p_.s.factored) {
        // F'F: for each row of F, every pair of its entries.
        std::vector<std::vector<std::pair<int64_t, double>>> frows(static_cast<size_t>(p_.mf));
        for (size_t e = 0; e < p_.f.size(); ++e) frows[p_.f.row[e] - 1].push_back({p_.f.col[e] - 1, p_.f.val[e]});
        for (const auto &row : frows)
          for (size_t a = 0; a < row.size(); ++a)
            for (size_t b = 0; b <= a; ++b) {
              if (row[a].first == row[b].first && a != b) continue;
              obj_el.push_back({lower(row[a].first, row[b].first), row[a].second * row[b].second});
            }
      } else {
        for (size_t e = 0; e < p_.h.size(); ++e) obj_el.push_back({lower(p_.h.row[e] - 1, p_.h.col[e] - 1), p_.h.val[e]});
      }
    }
    for (const auto &o : obj_el) el.push_back(o.first);
    for (int64_t k = 0; k < nqc; ++k)
      if (q_row_[k] >= 0)
        for (size_t e = 0; e < p_.qcons[k].q.size(); ++e) el.push_back(lower(p_.qcons[k].q.row[e] - 1, p_.qcons[k].q.col[e] - 1));
    // The user's structures: the Lagrangian's (idf = -1) if declared, else
    // the objective's and each constraint's.
    std::vector<std::pair<int64_t, const coo *>> blocks;
    if (!p_.hess_defined.empty() && p_.hess_defined[0]) {
      blocks.push_back({-1, &p_.hess[0]});
    } else {
      for (size_t k = 1; k < p_.hess_defined.size(); ++k)
        if (p_.hess_defined[k]) blocks.push_back({static_cast<int64_t>(k) - 1, &p_.hess[k]});
    }
    for (const auto &b : blocks)
      for (size_t e = 0; e < b.second->size(); ++e) el.push_back(lower(b.second->row[e] - 1, b.second->col[e] - 1));
    std::vector<std::pair<int64_t, int64_t>> uniq = el;
    std::sort(uniq.begin(), uniq.end());
    uniq.erase(std::unique(uniq.begin(), uniq.end()), uniq.end());
    auto hpos = [&](std::pair<int64_t, int64_t> rc) {
      return static_cast<int64_t>(std::lower_bound(uniq.begin(), uniq.end(), rc) - uniq.begin());
    };
    for (const auto &rc : uniq) {
      hrow_.push_back(rc.first);
      hcol_.push_back(rc.second);
    }
    for (const auto &o : obj_el) obj_hess_.push_back({hpos(o.first), 0, o.second});
    for (int64_t k = 0; k < nqc; ++k)
      if (q_row_[k] >= 0)
        for (size_t e = 0; e < p_.qcons[k].q.size(); ++e)
          q_hess_.push_back({hpos(lower(p_.qcons[k].q.row[e] - 1, p_.qcons[k].q.col[e] - 1)), q_row_[k], p_.qcons[k].q.val[e]});
    if (f_.has_hess)
      for (const auto &b : blocks) {
        hess_block hb{b.first, {}};
        for (size_t e = 0; e < b.second->size(); ++e)
          hb.pos.push_back(hpos(lower(b.second->row[e] - 1, b.second->col[e] - 1)));
        user_hess_.push_back(std::move(hb));
      }
  }
  void add_row(row_kind k, int64_t uidx, double bl, double bu) {
    rows_.push_back(k);
    u_index_.push_back(uidx);
    row_bl_.push_back(bl);
    row_bu_.push_back(bu);
  }
  int64_t jac_add(int64_t r, int64_t c) {
    jrow_.push_back(r);
    jcol_.push_back(c);
    return static_cast<int64_t>(jrow_.size()) - 1;
  }

  problem &p_;
  user_functions &f_;
  settings s_;
  double *x_, *u_, *rinfo_, *stats_;
  unit_journal *out_;
  int64_t out_level_;
  unit_journal *mon_;
  int64_t mon_level_;
  const check_journal *check_;

  int64_t n_ = 0, m_full_ = 0;
  bool any_nl_ = false;
  std::vector<row_kind> rows_;
  std::vector<int64_t> u_index_;
  std::vector<double> row_bl_, row_bu_;
  std::vector<int64_t> lin_row_, q_row_, nl_row_;
  std::vector<int64_t> jrow_, jcol_, hrow_, hcol_;
  std::vector<lin_entry> lin_jac_, q_lin_jac_;
  std::vector<q_entry> q_jac_;
  std::vector<int64_t> nl_jac_pos_;
  std::vector<h_entry> obj_hess_, q_hess_;
  std::vector<hess_block> user_hess_;
  std::vector<double> last_x_, fx_, gx_, gdx_, fdx_, hx_, lam_nl_, warm_;
  std::vector<double> mult_, cvals_;
  double violation_ = 0.0;
  double t0_ = 0.0;
  int64_t n_objfun_ = 0, n_objgrd_ = 0, n_confun_ = 0, n_congrd_ = 0, n_hess_ = 0;
};

bool has_nonlinear_hessian_data(const problem &p) {
  for (char d : p.hess_defined)
    if (d) return true;
  return false;
}

bool has_nonlinear(const problem &p) { return p.s.objective == obj_nonlinear || p.s.ncnln > 0; }

}  // namespace

model_check check_model(const problem &p, const user_functions &f) noexcept {
  for (const cone &c : p.cones)
    if (!c.deleted) return model_check::unsupported;
  for (const matrix_block &b : p.blocks)
    if (!b.deleted) return model_check::unsupported;
  for (int64_t t : p.vtype)
    if (t != var_continuous) return model_check::unsupported;
  if (p.s.objective == obj_nlls) return model_check::unsupported;
  if (p.s.objective == obj_nonlinear && (!f.has_objfun || !f.has_objgrd)) return model_check::needs_objective;
  if (p.s.ncnln > 0 && (!f.has_confun || !f.has_congrd)) return model_check::needs_constraints;
  const int64_t mode = int_value(*options(p), opt::hessian_mode);
  if (mode == 1 && has_nonlinear(p) && (!f.has_hess || !has_nonlinear_hessian_data(p)))
    return model_check::needs_hessian;
  int64_t nnz = static_cast<int64_t>(p.lc.size() + p.gd.size());
  for (const quad_con &q : p.qcons) nnz += static_cast<int64_t>(q.q.size() * 2 + q.r.idx.size());
  if (p.s.nvar > index_max || multiplier_count(p) > index_max || nnz > index_max) return model_check::too_large;
  return model_check::ok;
}

int64_t multiplier_count(const problem &p) noexcept {
  return p.s.nvar + p.nlc() + static_cast<int64_t>(p.qcons.size()) + p.s.ncnln;
}

result solve(problem &p, engine_data en, user_functions &f, double *x, double *u, double *rinfo,
             double *stats) noexcept {
  result res;
  try {
    const option_set &o = *options(p);
    settings s;
    const int64_t task = int_value(o, opt::task);
    s.sign = task == 2 ? -1.0 : task == 3 ? 0.0 : 1.0;
    const int64_t hmode = int_value(o, opt::hessian_mode);
    s.exact_hessian = !has_nonlinear(p) || (hmode != 2 && f.has_hess && has_nonlinear_hessian_data(p));
    s.monitor_frequency = int_value(o, opt::monitor_frequency);
    s.time_limit = real_value(o, opt::time_limit);
    s.stats_time = int_value(o, opt::stats_time);
    s.bigbnd = real_value(o, opt::infinite_bound_size);
    s.warm_u = int_value(o, opt::initial_u) == 1;

    const int64_t plevel = int_value(o, opt::print_level), punit = int_value(o, opt::print_file);
    const int64_t mlevel = int_value(o, opt::monitoring_level), munit = int_value(o, opt::monitoring_file);
    Ipopt::SmartPtr<unit_journal> out = new unit_journal(en, "zem print file", punit, dependency_level(plevel));
    Ipopt::SmartPtr<unit_journal> mon = new unit_journal(en, "zem monitoring file", munit, dependency_level(mlevel));
    const bool print_on = punit >= 0 && plevel > 0, mon_on = munit >= 0 && mlevel > 0;

    const int64_t verify = int_value(o, opt::verify_derivatives);  // 0 No, 1 Yes, 2 Auto, 3 Cheap
    const bool check = verify == 1 || verify == 3;
    Ipopt::SmartPtr<check_journal> checked = new check_journal();
    Ipopt::SmartPtr<model_nlp> nlp =
        new model_nlp(p, f, s, x, u, rinfo, stats, print_on ? Ipopt::GetRawPtr(out) : nullptr, plevel,
                      mon_on ? Ipopt::GetRawPtr(mon) : nullptr, mlevel, check ? Ipopt::GetRawPtr(checked) : nullptr);
    const std::vector<double> x_start(x, x + p.s.nvar);
    // Starting multipliers: u on entry, or the handle's stored "DUAL".
    bool warm = false;
    if (s.warm_u) {
      const int64_t len = nlp->full_rows() + p.s.nvar;
      if (u) {
        nlp->set_warm(u);
        warm = true;
      } else {
        bool found = false;
        const auto d = stored_reals(p, "DUAL", &found);
        if (found && static_cast<int64_t>(d.size()) == len) {
          nlp->set_warm(d.data());
          warm = true;
        }
      }
    }

    Ipopt::SmartPtr<Ipopt::IpoptApplication> app = new Ipopt::IpoptApplication(false /* no console */);
    app->Jnlst()->AddJournal(Ipopt::GetRawPtr(out));
    app->Jnlst()->AddJournal(Ipopt::GetRawPtr(mon));
    if (check) app->Jnlst()->AddJournal(Ipopt::GetRawPtr(checked));
    Ipopt::SmartPtr<Ipopt::OptionsList> ol = app->Options();
    // The option mapping (docs/e04st.md has the table).
    ol->SetIntegerValue("max_iter", static_cast<Index>(std::min<int64_t>(int_value(o, opt::outer_iteration_limit), index_max)));
    ol->SetNumericValue("tol", real_value(o, opt::stop_tolerance_1));
    ol->SetNumericValue("constr_viol_tol", real_value(o, opt::stop_tolerance_feasibility));
    ol->SetNumericValue("max_cpu_time", 1e20);  // the time limit is ours (wall or processor time)
    ol->SetNumericValue("nlp_lower_bound_inf", -s.bigbnd);
    ol->SetNumericValue("nlp_upper_bound_inf", s.bigbnd);
    ol->SetNumericValue("obj_scaling_factor", real_value(o, opt::objective_scaling_factor));
    ol->SetNumericValue("bound_relax_factor", real_value(o, opt::bound_relax_factor));
    ol->SetStringValue("nlp_scaling_method", int_value(o, opt::nlp_scaling_method) == 0 ? "none" : "gradient-based");
    ol->SetStringValue("check_derivatives_for_naninf", int_value(o, opt::check_derivatives_nan) == 1 ? "yes" : "no");
    ol->SetStringValue("linear_solver", "mumps");
    static constexpr Index orderings[] = {7, 7, 5, 0};  // AUTO, BEST, METIS, AMD
    const int64_t ord = int_value(o, opt::matrix_ordering);
    ol->SetIntegerValue("mumps_pivot_order", orderings[ord >= 0 && ord <= 3 ? ord : 0]);
    if (!s.exact_hessian) {
      ol->SetStringValue("hessian_approximation", "limited-memory");
      ol->SetIntegerValue("limited_memory_max_history",
                          static_cast<Index>(std::min<int64_t>(int_value(o, opt::quasi_newton_max_history), 1000)));
    }
    if (check) {
      ol->SetStringValue("derivative_test", verify == 1 && s.exact_hessian ? "second-order" : "first-order");
      ol->SetStringValue("derivative_test_print_all", "no");
    }
    if (warm) {
      // A warm start keeps x and the multipliers where they are, moved off
      // their bounds by at most 1e-6 (relative), instead of the cold start's
      // push of 1e-2: a point that is already optimal is confirmed in two or
      // three iterations.  The barrier parameter starts as in a cold start,
      // so that poor multipliers (an edited model) are corrected.
      ol->SetStringValue("warm_start_init_point", "yes");
      for (const char *k : {"warm_start_bound_push", "warm_start_bound_frac", "warm_start_slack_bound_push",
                            "warm_start_slack_bound_frac", "warm_start_mult_bound_push"})
        ol->SetNumericValue(k, 1e-6);
    }
    // The derivative checker's findings are warnings of the dependency's
    // NLP category: on both outputs at every level that prints at all.
    if (check) {
      if (plevel > 0) out->show_checker();
      if (mlevel > 0) mon->show_checker();
    }
    std::istringstream no_file;  // never the dependency's options file
    Ipopt::ApplicationReturnStatus st = app->Initialize(no_file);
    if (st != Ipopt::Solve_Succeeded) {
      res.out = outcome::internal;
      return res;
    }
    if (print_on && int_value(o, opt::print_options) == 1) print_options(o, punit, print_which::changed);
    nlp->print_header();
    nlp->start_clock();
    st = app->OptimizeTNLP(Ipopt::SmartPtr<Ipopt::TNLP>(Ipopt::GetRawPtr(nlp)));
    const double t_used = s.stats_time == 0 ? 0.0 : nlp->elapsed();
    out->flush_pending();
    mon->flush_pending();

    if (nlp->wrong_derivatives) {
      // No step was taken: x as on entry, nothing stored but the counts.
      res.out = outcome::derivative_errors;
      res.wrong_derivatives = checked->flagged();
      nlp->have_point = false;
      std::copy(x_start.begin(), x_start.end(), x);
    } else if (nlp->stop_flag != 0) {
      res.out = outcome::user_stop;
      res.stop_flag = nlp->stop_flag;
    } else if (nlp->time_up) {
      res.out = outcome::time_limit;
    } else {
      switch (st) {
        case Ipopt::Solve_Succeeded:
        case Ipopt::Feasible_Point_Found: res.out = outcome::success; break;
        case Ipopt::Solved_To_Acceptable_Level: res.out = outcome::acceptable; break;
        case Ipopt::Search_Direction_Becomes_Too_Small: res.out = outcome::small_step; break;
        case Ipopt::Infeasible_Problem_Detected: res.out = outcome::infeasible; break;
        case Ipopt::Diverging_Iterates: res.out = outcome::unbounded; break;
        case Ipopt::Maximum_Iterations_Exceeded: res.out = outcome::iteration_limit; break;
        case Ipopt::Maximum_CpuTime_Exceeded: res.out = outcome::time_limit; break;
        case Ipopt::Invalid_Number_Detected: res.out = outcome::invalid_number; break;
        case Ipopt::Insufficient_Memory: res.out = outcome::memory; break;
        case Ipopt::User_Requested_Stop: res.out = outcome::user_stop; break;
        case Ipopt::Restoration_Failed:
        case Ipopt::Error_In_Step_Computation:
        case Ipopt::Not_Enough_Degrees_Of_Freedom:
          res.out = nlp->nan_count > 0 ? outcome::invalid_number : outcome::numerical;
          break;
        default: res.out = nlp->nan_count > 0 ? outcome::invalid_number : outcome::internal; break;
      }
    }
    if (!nlp->deliver(t_used)) res.out = outcome::memory;

    // The summary and the solution.
    auto summary = [&](unit_journal &j) {
      static constexpr const char *names[] = {"optimal solution found",
                                              "acceptable point found (short of the requested accuracy)",
                                              "search direction became too small",
                                              "iteration limit reached",
                                              "time limit reached",
                                              "stopped at the user's request",
                                              "problem seems infeasible",
                                              "problem seems unbounded",
                                              "numerical difficulties",
                                              "a user function gave a value that is not finite",
                                              "the derivative check found wrong derivatives",
                                              "out of memory",
                                              "internal error"};
      j.line(std::string(" Status: ") + names[static_cast<int>(res.out)]);
      j.line(fmt(" Final objective value        %15.8e", rinfo[0]));
      j.line(fmt(" Constraint violation         %15.1e", rinfo[1]));
      j.line(fmt(" Iterations                   %15lld", static_cast<long long>(stats[0])));
    };
    if (print_on) summary(*out);
    if (mon_on) summary(*mon);
    const int64_t ps = int_value(o, opt::print_solution);  // 0 NO, 1 ALL, 2 X, 3 X AND U, 4 U
    if (print_on && ps != 0 && nlp->have_point) {
      if (ps == 1 || ps == 2 || ps == 3) {
        out->line(" Primal variables:");
        out->line("   idx   Lower bound       Value       Upper bound");
        for (int64_t j = 0; j < p.s.nvar; ++j)
          out->line(fmt("%6lld   %11.4e   %11.4e   %11.4e", static_cast<long long>(j + 1),
                        std::max(-s.bigbnd, p.bl[j]), x[j], std::min(s.bigbnd, p.bu[j])));
      }
      if (ps == 1 || ps == 3 || ps == 4) {
        bool found = false;
        const auto d = stored_reals(p, "DUAL", &found);
        out->line(" Multipliers (bounds, then linear, quadratic, nonlinear constraints):");
        for (size_t k = 0; k < d.size(); ++k) out->line(fmt("%6lld   %11.4e", static_cast<long long>(k + 1), d[k]));
      }
    }
    return res;
  } catch (const std::bad_alloc &) {
    res.out = outcome::memory;
  } catch (...) {
    res.out = outcome::internal;
  }
  return res;
}

}  // namespace zem::e04::nlp
