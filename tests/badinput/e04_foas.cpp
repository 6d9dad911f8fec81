// Bad-input sweep of the first-order solver e04kf: bad handles, nvar that
// is not the handle's, a start point and user functions with hostile
// values.  Each call must end with a documented code within the alarm.
#include <cmath>

#include "sweep.h"

using namespace badinput;

namespace {

void quad_f(int64_t n, const double x[], double *fx, int64_t *, Zem_Comm *comm) {
  const double v = *static_cast<const double *>(comm->p);
  double s = 0;
  for (int64_t i = 0; i < n; ++i) s += (x[i] - 1) * (x[i] - 1);
  *fx = s * v;  // v hostile: NaN, infinities, huge
}
void quad_g(int64_t n, const double x[], int64_t, double g[], int64_t *, Zem_Comm *comm) {
  const double v = *static_cast<const double *>(comm->p);
  for (int64_t i = 0; i < n; ++i) g[i] = 2 * (x[i] - 1) * v;
}

// A handle of 3 variables with a nonlinear objective and bounds [-1, 2].
template <typename Body>
void with_model(Body body) {
  void *h = nullptr;
  Zem_Fail f = quiet();
  e04rac(&h, 3, &f);
  const int64_t idx[3] = {1, 2, 3};
  const double bl[3] = {-1, -1, -1}, bu[3] = {2, 2, 2};
  e04rgc(h, 3, idx, &f);
  e04rhc(h, 3, bl, bu, &f);
  e04zmc(h, "Print Level = 0", &f);
  e04zmc(h, "FOAS Iteration Limit = 200", &f);
  body(h);
  e04rzc(&h, &f);
}

}  // namespace

ZEM_BADINPUT(e04kf) {
  double rinfo[100], stats[100];
  s.call("handle", "null", [&] {
    Zem_Fail f = quiet();
    double x[3] = {0, 0, 0};
    e04kfc(nullptr, quad_f, quad_g, nullptr, 3, x, rinfo, stats, nullptr, &f);
    s.failed(f, NE_HANDLE);
    int64_t ifail = 1, nvar = 3;
    void *h = nullptr;
    e04kff_(&h, nullptr, nullptr, nullptr, &nvar, x, rinfo, stats, nullptr, nullptr, &ifail);
    s.expect(ifail == 1, "a null handle was not refused by the Fortran entry");
  });
  s.call("handle", "garbage memory", [&] {
    guarded<int64_t> mem(16, 0x5a5a5a5a5a5a5a5a);
    Zem_Fail f = quiet();
    double x[3] = {0, 0, 0};
    e04kfc(mem.data(), quad_f, quad_g, nullptr, 3, x, rinfo, stats, nullptr, &f);
    s.failed(f, NE_HANDLE);
    s.intact(mem, "handle memory");
  });
  for (int64_t n : hostile_sizes)
    s.call("nvar", n, [&] {
      with_model([&](void *h) {
        Zem_Fail f = quiet();
        double x[3] = {0, 0, 0}, v = 1.0;
        Zem_Comm comm{};
        comm.p = &v;
        e04kfc(h, quad_f, quad_g, nullptr, n == 3 ? 3 : n, n == 3 ? x : nullptr, rinfo, stats, &comm, &f);
        if (n != 3) s.expect(f.code == NE_REF_MATCH || f.code == NE_BAD_PARAM, "a wrong nvar was not refused");
      });
    });
  for (double v : hostile_reals) {
    s.call("x", v, [&] {
      with_model([&](void *h) {
        Zem_Fail f = quiet();
        double x[3] = {v, 0, v}, one = 1.0;
        Zem_Comm comm{};
        comm.p = &one;
        e04kfc(h, quad_f, quad_g, nullptr, 3, x, rinfo, stats, &comm, &f);
        if (std::isfinite(v)) s.expect(f.code == NE_NOERROR, "a finite start was refused");
        else s.failed(f, NE_REAL_ARRAY);
      });
    });
    s.call("objective scale", v, [&] {
      with_model([&](void *h) {
        Zem_Fail f = quiet();
        double x[3] = {0, 0, 0}, vv = v;
        Zem_Comm comm{};
        comm.p = &vv;
        e04kfc(h, quad_f, quad_g, nullptr, 3, x, rinfo, stats, &comm, &f);
        s.expect(f.code == NE_NOERROR || f.code == NE_USER_NAN || f.code == NE_UNBOUNDED ||
                     f.code == NW_NOT_CONVERGED || f.code == NW_TOO_MANY_ITER,
                 "an undocumented code");
        for (double xi : x) s.expect(std::isfinite(xi), "x not finite");
      });
    });
  }
}
