// e04st against the interior-point dependency called directly through its
// own C++ interface, on the same problems with the same settings: the
// overhead of the handle (model assembly, the callback chains, the journal,
// the result store).  Target: at most 10% more time.
//   hs71       Hock-Schittkowski 71 (4 variables, 2 nonlinear constraints),
//              exact second derivatives
//   chain<n>   the chained Rosenbrock function of n variables with the
//              nonlinear constraints x_i^2 + x_{i+1}^2 <= 4 (i odd), exact
//              tridiagonal Hessian
//   build-bench/bench/e04/bench_e04st --benchmark_repetitions=3 --benchmark_min_time=0.1
#include <IpIpoptApplication.hpp>
#include <IpTNLP.hpp>

#include <zem.h>
#include <zem_bench.h>

#include <cmath>
#include <sstream>
#include <vector>

namespace {

using Ipopt::Index;
using Ipopt::Number;

// ---- The problems, written once for both contenders ----------------------
struct problem {
  int n, m;
  std::vector<double> x0, bl, bu, cl, cu;
  std::vector<int> jr, jc;  // Jacobian structure (0-based)
  std::vector<int> hr, hc;  // Hessian structure, row >= col (0-based)
  double (*f)(int n, const double *x);
  void (*grad)(int n, const double *x, double *g);
  void (*cons)(int n, const double *x, double *c);
  void (*jac)(int n, const double *x, double *v);
  void (*hess)(int n, const double *x, double sigma, const double *lambda, double *v);
};

problem hs71() {
  problem p{4, 2, {1, 5, 5, 1}, {1, 1, 1, 1}, {5, 5, 5, 5}, {25, 40}, {1e20, 40}, {}, {}, {}, {}, nullptr, nullptr,
            nullptr, nullptr, nullptr};
  for (int i = 0; i < 2; ++i)
    for (int j = 0; j < 4; ++j) p.jr.push_back(i), p.jc.push_back(j);
  for (int i = 0; i < 4; ++i)
    for (int j = 0; j <= i; ++j) p.hr.push_back(i), p.hc.push_back(j);
  p.f = [](int, const double *x) { return x[0] * x[3] * (x[0] + x[1] + x[2]) + x[2]; };
  p.grad = [](int, const double *x, double *g) {
    g[0] = x[3] * (2 * x[0] + x[1] + x[2]);
    g[1] = x[0] * x[3];
    g[2] = x[0] * x[3] + 1;
    g[3] = x[0] * (x[0] + x[1] + x[2]);
  };
  p.cons = [](int, const double *x, double *c) {
    c[0] = x[0] * x[1] * x[2] * x[3];
    c[1] = x[0] * x[0] + x[1] * x[1] + x[2] * x[2] + x[3] * x[3];
  };
  p.jac = [](int, const double *x, double *v) {
    v[0] = x[1] * x[2] * x[3], v[1] = x[0] * x[2] * x[3], v[2] = x[0] * x[1] * x[3], v[3] = x[0] * x[1] * x[2];
    for (int k = 0; k < 4; ++k) v[4 + k] = 2 * x[k];
  };
  // Lower triangle row by row: (0,0) (1,0) (1,1) (2,0) (2,1) (2,2) (3,0) (3,1) (3,2) (3,3)
  p.hess = [](int, const double *x, double s, const double *l, double *v) {
    v[0] = s * 2 * x[3] + 2 * l[1];
    v[1] = s * x[3] + l[0] * x[2] * x[3];
    v[2] = 2 * l[1];
    v[3] = s * x[3] + l[0] * x[1] * x[3];
    v[4] = l[0] * x[0] * x[3];
    v[5] = 2 * l[1];
    v[6] = s * (2 * x[0] + x[1] + x[2]) + l[0] * x[1] * x[2];
    v[7] = s * x[0] + l[0] * x[0] * x[2];
    v[8] = s * x[0] + l[0] * x[0] * x[1];
    v[9] = 2 * l[1];
  };
  return p;
}

problem chain(int n) {
  problem p{n, n / 2, std::vector<double>(n, -1.2), std::vector<double>(n, -1e20), std::vector<double>(n, 1e20),
            std::vector<double>(n / 2, -1e20), std::vector<double>(n / 2, 4.0), {}, {}, {}, {}, nullptr, nullptr,
            nullptr, nullptr, nullptr};
  for (int i = 0; i < n / 2; ++i) p.jr.push_back(i), p.jc.push_back(2 * i), p.jr.push_back(i), p.jc.push_back(2 * i + 1);
  for (int i = 0; i < n; ++i) {
    if (i > 0) p.hr.push_back(i), p.hc.push_back(i - 1);
    p.hr.push_back(i), p.hc.push_back(i);
  }
  p.f = [](int n, const double *x) {
    double f = 0;
    for (int i = 0; i + 1 < n; ++i) f += 100 * std::pow(x[i + 1] - x[i] * x[i], 2) + std::pow(1 - x[i], 2);
    return f;
  };
  p.grad = [](int n, const double *x, double *g) {
    for (int i = 0; i < n; ++i) g[i] = 0;
    for (int i = 0; i + 1 < n; ++i) {
      const double t = x[i + 1] - x[i] * x[i];
      g[i] += -400 * t * x[i] - 2 * (1 - x[i]);
      g[i + 1] += 200 * t;
    }
  };
  p.cons = [](int n, const double *x, double *c) {
    for (int i = 0; i < n / 2; ++i) c[i] = x[2 * i] * x[2 * i] + x[2 * i + 1] * x[2 * i + 1];
  };
  p.jac = [](int n, const double *x, double *v) {
    for (int i = 0; i < n / 2; ++i) v[2 * i] = 2 * x[2 * i], v[2 * i + 1] = 2 * x[2 * i + 1];
  };
  // Lower triangle: (0,0), then (i,i-1) (i,i) for each i.
  p.hess = [](int n, const double *x, double s, const double *l, double *v) {
    int k = 0;
    for (int i = 0; i < n; ++i) {
      double d = 0;
      if (i + 1 < n) d += s * (1200 * x[i] * x[i] - 400 * x[i + 1] + 2);
      if (i > 0) {
        v[k++] = -400 * s * x[i - 1];
        d += 200 * s;
      }
      d += 2 * l[i / 2];
      v[k++] = d;
    }
  };
  return p;
}

// ---- The dependency directly ----------------------------------------------
class direct_nlp final : public Ipopt::TNLP {
 public:
  explicit direct_nlp(const problem &p) : p_(p) {}
  double fstar = 0;
  bool get_nlp_info(Index &n, Index &m, Index &nj, Index &nh, IndexStyleEnum &s) override {
    n = p_.n, m = p_.m, nj = static_cast<Index>(p_.jr.size()), nh = static_cast<Index>(p_.hr.size()), s = C_STYLE;
    return true;
  }
  bool get_bounds_info(Index n, Number *xl, Number *xu, Index m, Number *gl, Number *gu) override {
    for (int i = 0; i < n; ++i) xl[i] = p_.bl[i], xu[i] = p_.bu[i];
    for (int i = 0; i < m; ++i) gl[i] = p_.cl[i], gu[i] = p_.cu[i];
    return true;
  }
  bool get_starting_point(Index n, bool, Number *x, bool, Number *, Number *, Index, bool, Number *) override {
    for (int i = 0; i < n; ++i) x[i] = p_.x0[i];
    return true;
  }
  bool eval_f(Index n, const Number *x, bool, Number &f) override {
    f = p_.f(n, x);
    return true;
  }
  bool eval_grad_f(Index n, const Number *x, bool, Number *g) override {
    p_.grad(n, x, g);
    return true;
  }
  bool eval_g(Index n, const Number *x, bool, Index, Number *g) override {
    p_.cons(n, x, g);
    return true;
  }
  bool eval_jac_g(Index n, const Number *x, bool, Index, Index, Index *r, Index *c, Number *v) override {
    if (!v) {
      for (size_t k = 0; k < p_.jr.size(); ++k) r[k] = p_.jr[k], c[k] = p_.jc[k];
      return true;
    }
    p_.jac(n, x, v);
    return true;
  }
  bool eval_h(Index n, const Number *x, bool, Number s, Index, const Number *l, bool, Index, Index *r, Index *c,
              Number *v) override {
    if (!v) {
      for (size_t k = 0; k < p_.hr.size(); ++k) r[k] = p_.hr[k], c[k] = p_.hc[k];
      return true;
    }
    p_.hess(n, x, s, l, v);
    return true;
  }
  void finalize_solution(Ipopt::SolverReturn, Index, const Number *, const Number *, const Number *, Index,
                         const Number *, const Number *, Number f, const Ipopt::IpoptData *,
                         Ipopt::IpoptCalculatedQuantities *) override {
    fstar = f;
  }

 private:
  const problem &p_;
};

double solve_direct(const problem &p) {
  Ipopt::SmartPtr<direct_nlp> nlp = new direct_nlp(p);
  Ipopt::SmartPtr<Ipopt::IpoptApplication> app = new Ipopt::IpoptApplication(false);
  auto o = app->Options();
  // The settings e04st passes with the handle's defaults.
  o->SetIntegerValue("max_iter", 3000);
  o->SetNumericValue("tol", 1e-8);
  o->SetNumericValue("constr_viol_tol", 1e-7);
  o->SetNumericValue("max_cpu_time", 1e20);
  o->SetNumericValue("nlp_lower_bound_inf", -1e20);
  o->SetNumericValue("nlp_upper_bound_inf", 1e20);
  o->SetNumericValue("obj_scaling_factor", 1.0);
  o->SetNumericValue("bound_relax_factor", 1e-8);
  o->SetStringValue("nlp_scaling_method", "gradient-based");
  o->SetStringValue("check_derivatives_for_naninf", "no");
  o->SetStringValue("linear_solver", "mumps");
  o->SetIntegerValue("mumps_pivot_order", 7);
  std::istringstream none;
  app->Initialize(none);
  app->OptimizeTNLP(Ipopt::GetRawPtr(nlp));
  return nlp->fstar;
}

// ---- Through the handle ------------------------------------------------------
struct user {
  const problem *p;
  std::vector<double> lower;  // Hessian values in the dependency's (lower) order
};
void objfun(int64_t n, const double x[], double *fx, int64_t *, Zem_Comm *c) {
  *fx = static_cast<user *>(c->p)->p->f(static_cast<int>(n), x);
}
void objgrd(int64_t n, const double x[], int64_t, double g[], int64_t *, Zem_Comm *c) {
  static_cast<user *>(c->p)->p->grad(static_cast<int>(n), x, g);
}
void confun(int64_t n, const double x[], int64_t, double g[], int64_t *, Zem_Comm *c) {
  static_cast<user *>(c->p)->p->cons(static_cast<int>(n), x, g);
}
void congrd(int64_t n, const double x[], int64_t, double v[], int64_t *, Zem_Comm *c) {
  static_cast<user *>(c->p)->p->jac(static_cast<int>(n), x, v);
}
// The structure is declared as the transposes of the lower-triangle
// elements, in the same order, so the values are the same.
void hess(int64_t n, const double x[], int64_t, int64_t, double s, const double l[], int64_t, double v[], int64_t *,
          Zem_Comm *c) {
  static_cast<user *>(c->p)->p->hess(static_cast<int>(n), x, s, l, v);
}

double solve_handle(const problem &p) {
  void *h = nullptr;
  Zem_Fail fail = ZEM_FAIL_INIT;
  const int64_t n = p.n;
  e04rac(&h, n, &fail);
  e04rhc(h, n, p.bl.data(), p.bu.data(), &fail);
  std::vector<int64_t> all(n);
  for (int64_t j = 0; j < n; ++j) all[j] = j + 1;
  e04rgc(h, n, all.data(), &fail);
  std::vector<int64_t> jr(p.jr.begin(), p.jr.end()), jc(p.jc.begin(), p.jc.end()), hr, hc;
  for (auto &v : jr) ++v;
  for (auto &v : jc) ++v;
  e04rkc(h, p.m, p.cl.data(), p.cu.data(), static_cast<int64_t>(jr.size()), jr.data(), jc.data(), &fail);
  for (size_t k = 0; k < p.hr.size(); ++k) hr.push_back(p.hc[k] + 1), hc.push_back(p.hr[k] + 1);
  e04rlc(h, -1, static_cast<int64_t>(hr.size()), hr.data(), hc.data(), &fail);
  for (const char *o : {"Print Level = 0", "Print Options = No", "Stop Tolerance 1 = 1e-8",
                        "Outer Iteration Limit = 3000"})
    e04zmc(h, o, &fail);
  std::vector<double> x = p.x0;
  double rinfo[100], stats[100];
  user u{&p, {}};
  Zem_Comm comm = ZEM_COMM_INIT;
  comm.p = &u;
  e04stc(h, objfun, objgrd, confun, congrd, hess, nullptr, n, x.data(), 0, nullptr, rinfo, stats, &comm, &fail);
  e04rzc(&h, nullptr);
  return rinfo[0];
}

}  // namespace

int main(int argc, char **argv) {
  static const problem problems[] = {hs71(), chain(1000)};
  static const char *names[] = {"hs71", "chain1000"};
  for (int k = 0; k < 2; ++k) {
    const problem &p = problems[k];
    zem_bench::add(names[k], "e04stc", 1, [&p] { return solve_handle(p); });
    zem_bench::add(names[k], "direct", 1, [&p] { return solve_direct(p); });
  }
  return zem_bench::run(argc, argv, "e04st");
}
