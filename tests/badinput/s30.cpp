// Bad-input sweeps of chapter s30: every scalar and array element hostile in
// turn, hostile sizes and leading dimensions with small arrays, both
// entries; a call either fails or returns finite prices, and never writes
// outside p and the sensitivity arrays.
#include <cmath>

#include "sweep.h"

using namespace badinput;

namespace {

constexpr int64_t M = 3, N = 2;

// The arguments of one grid call; `poke` sets the hostile value.
struct grid_case {
  double x[M] = {90.0, 100.0, 110.0};
  double t[N] = {0.5, 1.0};
  double s = 100.0, sigma = 0.2, r = 0.05, q = 0.01, k = 1.0;
  int64_t m = M, n = N, ldp = M;
};

// Runs the four grid routines' C and Fortran entries on a case.
void grid_all(sweep &s, grid_case g) {
  for (Zem_OptionType o : {Zem_Call, Zem_Put}) {
    const char cp = o == Zem_Call ? 'C' : 'P';
    guarded<double> p(M * N, 0.0);
    Zem_Fail fail = quiet();
    s30aac(Zem_ColMajor, o, g.m, g.n, g.x, g.s, g.t, g.sigma, g.r, g.q, p.data(), g.ldp, &fail);
    s.intact(p, "p");
    if (fail.code == 0) s.fail_or_finite(fail, {p[0], p[1], p[2], p[3], p[4], p[5]});
    int64_t ifail = 1;
    s30aaf_(&cp, &g.m, &g.n, g.x, &g.s, g.t, &g.sigma, &g.r, &g.q, p.data(), &g.ldp, &ifail, 1);
    s.intact(p, "p");

    std::vector<guarded<double>> a;
    for (int i = 0; i < 12; ++i) a.emplace_back(M * N, 0.0);
    fail = quiet();
    s30abc(Zem_ColMajor, o, g.m, g.n, g.x, g.s, g.t, g.sigma, g.r, g.q, a[0].data(), g.ldp, a[1].data(), a[2].data(),
           a[3].data(), a[4].data(), a[5].data(), a[6].data(), a[7].data(), a[8].data(), a[9].data(), a[10].data(),
           a[11].data(), &fail);
    if (fail.code == 0)
      for (int i = 0; i < 12; ++i) s.expect(!std::isnan(a[i][0]) && !std::isnan(a[i][5]), "a NaN sensitivity");
    ifail = 1;
    s30abf_(&cp, &g.m, &g.n, g.x, &g.s, g.t, &g.sigma, &g.r, &g.q, a[0].data(), &g.ldp, a[1].data(), a[2].data(),
            a[3].data(), a[4].data(), a[5].data(), a[6].data(), a[7].data(), a[8].data(), a[9].data(), a[10].data(),
            a[11].data(), &ifail, 1);
    for (int i = 0; i < 12; ++i) s.intact(a[i], "a sensitivity array");

    fail = quiet();
    s30cac(Zem_ColMajor, o, g.m, g.n, g.x, g.s, g.t, g.sigma, g.r, g.q, g.k, p.data(), g.ldp, &fail);
    if (fail.code == 0) s.fail_or_finite(fail, {p[0], p[5]});
    ifail = 1;
    s30caf_(&cp, &g.m, &g.n, g.x, &g.s, g.t, &g.sigma, &g.r, &g.q, &g.k, p.data(), &g.ldp, &ifail, 1);
    s.intact(p, "p");
  }
}

void grid_sweep(sweep &s) {
  for (double v : hostile_reals) {
    const char *names[] = {"s", "sigma", "r", "q", "k", "x[1]", "t[1]"};
    for (int w = 0; w < 7; ++w)
      s.call(names[w], v, [&] {
        grid_case g;
        double *place[] = {&g.s, &g.sigma, &g.r, &g.q, &g.k, &g.x[1], &g.t[1]};
        *place[w] = v;
        grid_all(s, g);
      });
  }
  for (int64_t v : hostile_sizes) {
    // An m above 3 is refused by ldp = 3 < m before any array is read.
    s.call("m", v, [&] {
      grid_case g;
      g.m = v;
      grid_all(s, g);
    });
    // A positive n promises n expiries in t: only sizes up to the array's,
    // or refused ones, can be passed.
    if (v <= N) s.call("n", v, [&] {
      grid_case g;
      g.n = v;
      grid_all(s, g);
    });
    s.call("ldp", v, [&] {
      grid_case g;
      g.ldp = v;
      g.n = 1;  // one column: the arrays hold it whatever ldp >= m is
      grid_all(s, g);
    });
  }
  s.call("enumerations and null arrays", [&] {
    grid_case g;
    double p[M * N];
    Zem_Fail fail = quiet();
    s30aac(static_cast<Zem_OrderType>(0), Zem_Call, M, N, g.x, g.s, g.t, g.sigma, g.r, g.q, p, M, &fail);
    s.failed(fail, NE_BAD_PARAM);
    fail = quiet();
    s30aac(Zem_ColMajor, static_cast<Zem_OptionType>(0), M, N, g.x, g.s, g.t, g.sigma, g.r, g.q, p, M, &fail);
    s.failed(fail, NE_BAD_PARAM);
    fail = quiet();
    s30cac(Zem_ColMajor, Zem_Put, M, N, nullptr, g.s, g.t, g.sigma, g.r, g.q, g.k, p, M, &fail);
    s.failed(fail, NE_BAD_PARAM);
    int64_t ifail = 1;
    s30aaf_("Q", &g.m, &g.n, g.x, &g.s, g.t, &g.sigma, &g.r, &g.q, p, &g.ldp, &ifail, 1);
    s.failed(ifail, 1);
    ifail = 1;
    s30aaf_("", &g.m, &g.n, g.x, &g.s, g.t, &g.sigma, &g.r, &g.q, p, &g.ldp, &ifail, 0);
    s.failed(ifail, 1);
  });
}

}  // namespace

ZEM_BADINPUT(s30aa) { grid_sweep(s); }
ZEM_BADINPUT(s30ab) { grid_sweep(s); }
ZEM_BADINPUT(s30ca) { grid_sweep(s); }

ZEM_BADINPUT(s30ac) {
  static const int64_t three = 3;
  for (double v : hostile_reals)
    s.call("every argument of element 1", v, [&] {
      for (int w = 0; w < 6; ++w) {
        double a[6][3];
        for (auto &row : a) row[0] = row[1] = row[2] = 1.0;
        for (int e = 0; e < 3; ++e) a[0][e] = 100.0, a[1][e] = 100.0, a[3][e] = 0.2, a[4][e] = 0.05, a[5][e] = 0.0;
        a[w][1] = v;
        guarded<double> p(3, 0.0);
        guarded<int64_t> ivalid(3, -1);
        const Zem_OptionType o[3] = {Zem_Call, Zem_Put, Zem_Call};
        Zem_Fail fail = quiet();
        s30acc(o, 3, a[0], a[1], a[2], a[3], a[4], a[5], p.data(), ivalid.data(), &fail);
        s.expect(fail.code == 0 || fail.code == NW_IVALID, "an unexpected failure");
        for (int e = 0; e < 3; ++e) s.expect(std::isfinite(p[e]), "a price not finite");
        s.expect(ivalid[0] == 0 && ivalid[2] == 0, "a good element marked");
        int64_t ifail = 1;
        s30acf_("CPC", &three, a[0], a[1], a[2], a[3], a[4], a[5], p.data(), ivalid.data(), &ifail, 1);
        s.intact(p, "p");
        s.intact(ivalid, "ivalid");
      }
    });
  for (int64_t n : hostile_sizes)
    s.call("n", n, [&] {
      if (n > 0) return;  // a positive n promises n elements in every array
      Zem_Fail fail = quiet();
      s30acc(nullptr, n, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &fail);
      s.expect(n == 0 ? fail.code == 0 : fail.code != 0, "n < 0 accepted or n = 0 refused");
    });
}

// ---- The exotic closed forms: lookback (s30ba, s30bb), binary with
// sensitivities (s30cb), barrier (s30fa) and American (s30qc).
namespace {

struct exotic_case {
  double x[M] = {90.0, 100.0, 110.0};
  double smc[M] = {80.0, 90.0, 100.0};   // a call's minima so far
  double smp[M] = {100.0, 110.0, 120.0};  // a put's maxima so far
  double t[N] = {0.5, 1.0};
  double s = 100.0, sigma = 0.2, r = 0.05, q = 0.01, k = 1.0, h = 80.0;
  int64_t m = M, n = N, ldp = M;
};

void exotic_all(sweep &s, exotic_case g) {
  for (Zem_OptionType o : {Zem_Call, Zem_Put}) {
    const char cp = o == Zem_Call ? 'C' : 'P';
    double *sm = o == Zem_Call ? g.smc : g.smp;
    guarded<double> p(M * N, 0.0);
    std::vector<guarded<double>> a;
    for (int i = 0; i < 5; ++i) a.emplace_back(M * N, 0.0);
    Zem_Fail fail = quiet();
    s30bac(Zem_ColMajor, o, g.m, g.n, sm, g.s, g.t, g.sigma, g.r, g.q, p.data(), g.ldp, &fail);
    s.intact(p, "p");
    if (fail.code == 0) s.expect(!std::isnan(p[0]) && p[0] >= 0.0 && !std::isnan(p[5]), "a lookback price NaN");
    int64_t ifail = 1;
    s30baf_(&cp, &g.m, &g.n, sm, &g.s, g.t, &g.sigma, &g.r, &g.q, p.data(), &g.ldp, &ifail, 1);
    s.intact(p, "p");
    fail = quiet();
    s30bbc(Zem_ColMajor, o, g.m, g.n, sm, g.s, g.t, g.sigma, g.r, g.q, p.data(), g.ldp, a[0].data(), a[1].data(),
           a[2].data(), a[3].data(), a[4].data(), &fail);
    ifail = 1;
    s30bbf_(&cp, &g.m, &g.n, sm, &g.s, g.t, &g.sigma, &g.r, &g.q, p.data(), &g.ldp, a[0].data(), a[1].data(),
            a[2].data(), a[3].data(), a[4].data(), &ifail, 1);
    s.intact(p, "p");
    for (int i = 0; i < 5; ++i) s.intact(a[i], "a sensitivity array");

    fail = quiet();
    s30cbc(Zem_ColMajor, o, g.m, g.n, g.x, g.s, g.t, g.sigma, g.r, g.q, g.k, p.data(), g.ldp, a[0].data(),
           a[1].data(), a[2].data(), a[3].data(), a[4].data(), &fail);
    if (fail.code == 0) s.fail_or_finite(fail, {p[0], p[5]});
    ifail = 1;
    s30cbf_(&cp, &g.m, &g.n, g.x, &g.s, g.t, &g.sigma, &g.r, &g.q, &g.k, p.data(), &g.ldp, a[0].data(), a[1].data(),
            a[2].data(), a[3].data(), a[4].data(), &ifail, 1);
    s.intact(p, "p");
    for (int i = 0; i < 5; ++i) s.intact(a[i], "a sensitivity array");

    for (Zem_BarrierType bt : {Zem_DownandIn, Zem_DownandOut, Zem_UpandIn, Zem_UpandOut}) {
      const char *code = bt == Zem_DownandIn ? "DI" : bt == Zem_DownandOut ? "DO" : bt == Zem_UpandIn ? "UI" : "UO";
      fail = quiet();
      s30fac(Zem_ColMajor, o, bt, g.m, g.n, g.x, g.s, g.h, g.k, g.t, g.sigma, g.r, g.q, p.data(), g.ldp, &fail);
      if (fail.code == 0) s.fail_or_finite(fail, {p[0], p[1], p[2], p[3], p[4], p[5]});
      ifail = 1;
      s30faf_(&cp, code, &g.m, &g.n, g.x, &g.s, &g.h, &g.k, g.t, &g.sigma, &g.r, &g.q, p.data(), &g.ldp, &ifail, 1,
              2);
      s.intact(p, "p");
    }

    fail = quiet();
    s30qcc(Zem_ColMajor, o, g.m, g.n, g.x, g.s, g.t, g.sigma, g.r, g.q, p.data(), g.ldp, &fail);
    if (fail.code == 0) s.fail_or_finite(fail, {p[0], p[1], p[2], p[3], p[4], p[5]});
    ifail = 1;
    s30qcf_(&cp, &g.m, &g.n, g.x, &g.s, g.t, &g.sigma, &g.r, &g.q, p.data(), &g.ldp, &ifail, 1);
    s.intact(p, "p");
  }
}

void exotic_sweep(sweep &s) {
  for (double v : hostile_reals) {
    const char *names[] = {"s", "sigma", "r", "q", "k", "h", "x[1]", "sm[1]", "t[1]"};
    for (int w = 0; w < 9; ++w)
      s.call(names[w], v, [&] {
        exotic_case g;
        double *place[] = {&g.s, &g.sigma, &g.r, &g.q, &g.k, &g.h, &g.x[1], &g.smc[1], &g.t[1]};
        *place[w] = v;
        if (w == 7) g.smp[1] = v;
        exotic_all(s, g);
      });
  }
  for (int64_t v : hostile_sizes) {
    s.call("m", v, [&] {
      exotic_case g;
      g.m = v;
      exotic_all(s, g);
    });
    if (v <= N) s.call("n", v, [&] {
      exotic_case g;
      g.n = v;
      exotic_all(s, g);
    });
    s.call("ldp", v, [&] {
      exotic_case g;
      g.ldp = v;
      g.n = 1;
      exotic_all(s, g);
    });
  }
  s.call("enumerations and null arrays", [&] {
    exotic_case g;
    double p[M * N];
    Zem_Fail fail = quiet();
    s30fac(Zem_ColMajor, Zem_Call, static_cast<Zem_BarrierType>(0), M, N, g.x, g.s, g.h, g.k, g.t, g.sigma, g.r, g.q,
           p, M, &fail);
    s.failed(fail, NE_BAD_PARAM);
    fail = quiet();
    s30bac(Zem_ColMajor, Zem_Call, M, N, nullptr, g.s, g.t, g.sigma, g.r, g.q, p, M, &fail);
    s.failed(fail, NE_BAD_PARAM);
    fail = quiet();
    s30bbc(Zem_ColMajor, Zem_Call, M, N, g.smc, g.s, g.t, g.sigma, g.r, g.q, p, M, p, nullptr, p, p, p, &fail);
    s.failed(fail, NE_BAD_PARAM);
    int64_t ifail = 1;
    s30faf_("C", "D", &g.m, &g.n, g.x, &g.s, &g.h, &g.k, g.t, &g.sigma, &g.r, &g.q, p, &g.ldp, &ifail, 1, 1);
    s.failed(ifail, 12);
  });
}

}  // namespace

ZEM_BADINPUT(s30ba) { exotic_sweep(s); }
ZEM_BADINPUT(s30bb) { exotic_sweep(s); }
ZEM_BADINPUT(s30cb) { exotic_sweep(s); }
ZEM_BADINPUT(s30fa) { exotic_sweep(s); }
ZEM_BADINPUT(s30qc) { exotic_sweep(s); }

// Jump diffusion and stochastic volatility: every real argument hostile in
// turn, both entries; a call fails or returns finite values, and writes only
// inside p and the sensitivity arrays.
namespace {

struct model_case {
  double x[M] = {90.0, 100.0, 110.0};
  double t[N] = {0.5, 1.0};
  double s = 100.0, sigma = 0.2, r = 0.05, lambda = 1.0, jvol = 0.3;
  double sigmav = 0.3, kappa = 1.5, corr = -0.7, var0 = 0.04, eta = 0.06, grisk = 0.0, q = 0.01;
  int64_t m = M, n = N, ldp = M;
};

void jump_all(sweep &s, model_case g) {
  for (Zem_OptionType o : {Zem_Call, Zem_Put}) {
    const char cp = o == Zem_Call ? 'C' : 'P';
    std::vector<guarded<double>> a;
    for (int i = 0; i < 12; ++i) a.emplace_back(M * N, 0.0);
    Zem_Fail fail = quiet();
    s30jac(Zem_ColMajor, o, g.m, g.n, g.x, g.s, g.t, g.sigma, g.r, g.lambda, g.jvol, a[0].data(), g.ldp, &fail);
    if (fail.code == 0) s.fail_or_finite(fail, {a[0][0], a[0][5]});
    int64_t ifail = 1;
    s30jaf_(&cp, &g.m, &g.n, g.x, &g.s, g.t, &g.sigma, &g.r, &g.lambda, &g.jvol, a[0].data(), &g.ldp, &ifail, 1);
    fail = quiet();
    s30jbc(Zem_ColMajor, o, g.m, g.n, g.x, g.s, g.t, g.sigma, g.r, g.lambda, g.jvol, a[0].data(), g.ldp, a[1].data(),
           a[2].data(), a[3].data(), a[4].data(), a[5].data(), a[6].data(), a[7].data(), a[8].data(), a[9].data(),
           a[10].data(), a[11].data(), &fail);
    if (fail.code == 0)
      for (int i = 0; i < 12; ++i) s.expect(!std::isnan(a[i][0]) && !std::isnan(a[i][5]), "a NaN sensitivity");
    ifail = 1;
    s30jbf_(&cp, &g.m, &g.n, g.x, &g.s, g.t, &g.sigma, &g.r, &g.lambda, &g.jvol, a[0].data(), &g.ldp, a[1].data(),
            a[2].data(), a[3].data(), a[4].data(), a[5].data(), a[6].data(), a[7].data(), a[8].data(), a[9].data(),
            a[10].data(), a[11].data(), &ifail, 1);
    for (int i = 0; i < 12; ++i) s.intact(a[i], "p or a sensitivity array");
  }
}

void heston_all(sweep &s, model_case g, bool greeks) {
  for (Zem_OptionType o : {Zem_Call, Zem_Put}) {
    const char cp = o == Zem_Call ? 'C' : 'P';
    std::vector<guarded<double>> a;
    for (int i = 0; i < 6; ++i) a.emplace_back(M * N, 0.0);
    Zem_Fail fail = quiet();
    int64_t ifail = 1;
    if (!greeks) {
      s30nac(Zem_ColMajor, o, g.m, g.n, g.x, g.s, g.t, g.sigmav, g.kappa, g.corr, g.var0, g.eta, g.grisk, g.r, g.q,
             a[0].data(), g.ldp, &fail);
      if (fail.code == 0 || fail.code == NE_CONVERGENCE)
        for (int e = 0; e < M * N; ++e) s.expect(std::isfinite(a[0][e]), "a price not finite");
      s30naf_(&cp, &g.m, &g.n, g.x, &g.s, g.t, &g.sigmav, &g.kappa, &g.corr, &g.var0, &g.eta, &g.grisk, &g.r, &g.q,
              a[0].data(), &g.ldp, &ifail, 1);
    } else {
      s30nbc(Zem_ColMajor, o, g.m, g.n, g.x, g.s, g.t, g.sigmav, g.kappa, g.corr, g.var0, g.eta, g.grisk, g.r, g.q,
             a[0].data(), g.ldp, a[1].data(), a[2].data(), a[3].data(), a[4].data(), a[5].data(), &fail);
      if (fail.code == 0 || fail.code == NE_CONVERGENCE)
        for (int i = 0; i < 6; ++i) s.expect(std::isfinite(a[i][0]) && std::isfinite(a[i][5]), "a value not finite");
      s30nbf_(&cp, &g.m, &g.n, g.x, &g.s, g.t, &g.sigmav, &g.kappa, &g.corr, &g.var0, &g.eta, &g.grisk, &g.r, &g.q,
              a[0].data(), &g.ldp, a[1].data(), a[2].data(), a[3].data(), a[4].data(), a[5].data(), &ifail, 1);
    }
    for (int i = 0; i < 6; ++i) s.intact(a[i], "p or a sensitivity array");
  }
}

template <typename Run>
void model_sweep(sweep &s, std::initializer_list<const char *> names, Run run) {
  for (double v : hostile_reals)
    for (const char *name : names)
      s.call(name, v, [&] {
        model_case g;
        const std::string w = name;
        double *place = w == "s" ? &g.s : w == "sigma" ? &g.sigma : w == "r" ? &g.r : w == "lambda" ? &g.lambda
                      : w == "jvol" ? &g.jvol : w == "sigmav" ? &g.sigmav : w == "kappa" ? &g.kappa
                      : w == "corr" ? &g.corr : w == "var0" ? &g.var0 : w == "eta" ? &g.eta
                      : w == "grisk" ? &g.grisk : w == "q" ? &g.q : w == "x[1]" ? &g.x[1] : &g.t[1];
        *place = v;
        run(g);
      });
  for (int64_t v : hostile_sizes)
    s.call("ldp", v, [&] {
      model_case g;
      g.ldp = v;
      g.n = 1;
      run(g);
    });
}

}  // namespace

ZEM_BADINPUT(s30ja) {
  model_sweep(s, {"s", "sigma", "r", "lambda", "jvol", "x[1]", "t[1]"}, [&](model_case g) { jump_all(s, g); });
}
ZEM_BADINPUT(s30jb) {
  model_sweep(s, {"sigma", "lambda", "jvol", "t[1]"}, [&](model_case g) { jump_all(s, g); });
}
ZEM_BADINPUT(s30na) {
  model_sweep(s, {"s", "sigmav", "kappa", "corr", "var0", "eta", "grisk", "r", "q", "x[1]", "t[1]"},
              [&](model_case g) { heston_all(s, g, false); });
}
ZEM_BADINPUT(s30nb) {
  model_sweep(s, {"sigmav", "kappa", "var0", "t[1]"}, [&](model_case g) { heston_all(s, g, true); });
}
ZEM_BADINPUT(s30nc) {
  for (double v : hostile_reals)
    for (int w = 0; w < 10; ++w)
      s.call("an argument of s30nc", v, [&] {
        double x[3] = {90.0, 100.0, 110.0}, ts[2] = {0.5, 1.0}, alpha[2] = {0.3, 0.3}, lambda[2] = {1.5, 1.0},
               corr[2] = {-0.7, -0.5}, sigmat[2] = {0.25, 0.2}, fwd = 100.0, disc = 0.97, t = 1.0, var0 = 0.04;
        double *place[10] = {&x[1], &fwd, &disc, &ts[1], &t, &alpha[1], &lambda[0], &corr[1], &sigmat[1], &var0};
        *place[w] = v;
        guarded<double> p(3, 0.0);
        Zem_Fail fail = quiet();
        s30ncc(Zem_Put, 3, 2, x, fwd, disc, ts, t, alpha, lambda, corr, sigmat, var0, p.data(), &fail);
        s.fail_or_finite(fail, {p[0], p[1], p[2]});
        int64_t ifail = 1, m = 3, numts = 2;
        s30ncf_("C", &m, &numts, x, &fwd, &disc, ts, &t, alpha, lambda, corr, sigmat, &var0, p.data(), &ifail, 1);
        s.intact(p, "p");
      });
  for (int64_t v : hostile_sizes)
    s.call("numts and m", v, [&] {
      if (v > 2) return;  // a larger size promises more elements
      double x[3] = {90.0, 100.0, 110.0}, ts[2] = {0.5, 1.0}, al[2] = {0.3, 0.3}, la[2] = {1.5, 1.0},
             co[2] = {-0.7, -0.5}, st[2] = {0.25, 0.2};
      guarded<double> p(3, 0.0);
      Zem_Fail fail = quiet();
      s30ncc(Zem_Call, 3, v, x, 100.0, 0.97, ts, 1.0, al, la, co, st, 0.04, p.data(), &fail);
      fail = quiet();
      s30ncc(Zem_Call, v, 2, x, 100.0, 0.97, ts, 1.0, al, la, co, st, 0.04, p.data(), &fail);
      s.intact(p, "p");
    });
}
