// Bad-input sweeps of the modelling suite's model routines: every routine
// on a null, destroyed, foreign and corrupted handle (each must fail with
// NE_HANDLE and leave the memory alone), and the counts and bounds of the
// definition routines with hostile sizes and values on a valid handle.
#include <cmath>
#include <cstring>
#include <functional>
#include <string>

#include "sweep.h"

using namespace badinput;

namespace {

// A call of one routine on a handle through its C entry; returns the code.
using c_call = std::function<int(void *)>;

// Handles a caller may pass by mistake, in guard cells where they are
// memory.  (A destroyed handle is null: e04rz sets it so; a stale copy
// points at freed memory, which no check can read safely.)
void over_bad_handles(sweep &s, const c_call &body) {
  s.call("handle", "null", [&] { s.expect(body(nullptr) == NE_HANDLE, "a null handle was not refused"); });
  s.call("handle", "zeroed memory", [&] {
    guarded<int64_t> mem(16, 0);
    s.expect(body(mem.data()) == NE_HANDLE, "memory without the tag was not refused");
    s.intact(mem, "handle memory");
  });
  s.call("handle", "garbage memory", [&] {
    guarded<int64_t> mem(16, 0x5a5a5a5a5a5a5a5a);
    s.expect(body(mem.data()) == NE_HANDLE, "garbage was not refused");
    s.intact(mem, "handle memory");
  });
  s.call("handle", "tag without body", [&] {
    guarded<int64_t> mem(16, 0);
    const int64_t hdr[5] = {65535, 'Z', 'O', 'M', 'S'};
    std::memcpy(mem.data(), hdr, sizeof hdr);
    s.expect(body(mem.data()) == NE_HANDLE, "a header without body was not refused");
    s.intact(mem, "handle memory");
  });
}

// A valid handle of n variables for the duration of body.
template <typename Body>
void with_handle(int64_t n, Body body) {
  void *h = nullptr;
  Zem_Fail f = quiet();
  e04rac(&h, n, &f);
  body(h);
  e04rzc(&h, &f);
}

int code_of(const Zem_Fail &f) { return f.code; }

const int64_t i3[3] = {1, 2, 3};
const double r3[3] = {1.0, 2.0, 3.0};

}  // namespace

#define E04_HANDLE_SWEEP(rtn, ...)                      \
  ZEM_BADINPUT(rtn) {                                         \
    over_bad_handles(s, [&](void *h) {                        \
      Zem_Fail f = quiet();                                   \
      __VA_ARGS__;                                            \
      return code_of(f);                                      \
    });                                                       \
  }

ZEM_BADINPUT(e04ra) {
  for (int64_t n : hostile_sizes)
    s.call("nvar", n, [&] {
      void *h = nullptr;
      Zem_Fail f = quiet();
      e04rac(&h, n, &f);
      s.expect((f.code == NE_NOERROR) == (h != nullptr), "handle set without success or success without handle");
      if (n < 0) s.failed(f, NE_INT);
      e04rzc(&h, &f);
      int64_t ifail = 1;
      void *g = nullptr;
      e04raf_(&g, &n, &ifail);
      e04rzf_(&g, &ifail);
    });
}

E04_HANDLE_SWEEP(e04rb, { int64_t id = 0; e04rbc(h, "QUAD", 3, i3, &id, &f); })
E04_HANDLE_SWEEP(e04rc, e04rcc(h, "INT", 3, i3, &f))
E04_HANDLE_SWEEP(e04rd, e04rdc(h, 0, 1, 1, 1, &f))
E04_HANDLE_SWEEP(e04re, e04rec(h, 3, r3, &f))
E04_HANDLE_SWEEP(e04rf, e04rfc(h, 3, i3, r3, 3, i3, i3, r3, &f))
E04_HANDLE_SWEEP(e04rg, e04rgc(h, 3, i3, &f))
E04_HANDLE_SWEEP(e04rj, { int64_t id = 0; e04rjc(h, 1, r3, r3, 1, i3, i3, r3, &id, &f); })
E04_HANDLE_SWEEP(e04rk, e04rkc(h, 1, r3, r3, 1, i3, i3, &f))
E04_HANDLE_SWEEP(e04rl, e04rlc(h, 0, 1, i3, i3, &f))
E04_HANDLE_SWEEP(e04rm, e04rmc(h, 1, 1, 1, i3, i3, &f))
E04_HANDLE_SWEEP(e04rn, { int64_t id = 0; const int64_t nz[4] = {1, 0, 0, 0}; e04rnc(h, 3, 1, nz, 1, i3, i3, r3, 1, i3, &id, &f); })
E04_HANDLE_SWEEP(e04rp, { const int64_t nz[1] = {1}; e04rpc(h, 1, 1, 1, i3, i3, nz, 1, i3, i3, r3, &f); })
E04_HANDLE_SWEEP(e04rs, { int64_t id = 0; e04rsc(h, 1, i3, i3, r3, 1, i3, r3, -1.0, 1.0, &id, &f); })
E04_HANDLE_SWEEP(e04rt, e04rtc(h, 1, 1, i3, i3, r3, 1, i3, r3, &f))
E04_HANDLE_SWEEP(e04rw, { int64_t a[3] = {0, 0, 0}; e04rwc(h, "WARM START BASIS", 0, 3, a, &f); })
E04_HANDLE_SWEEP(e04rx, { double a[3] = {0, 0, 0}; e04rxc(h, "PRIMAL", 0, 3, a, &f); })
E04_HANDLE_SWEEP(e04ry, e04ryc(h, -1, "OVERVIEW", &f))
E04_HANDLE_SWEEP(e04ta, e04tac(h, 1, &f))
E04_HANDLE_SWEEP(e04tb, e04tbc(h, "LC", 1, i3, &f))
E04_HANDLE_SWEEP(e04td, e04tdc(h, "X", 1, 0.0, 1.0, &f))
E04_HANDLE_SWEEP(e04te, e04tec(h, 1, 1.0, &f))
E04_HANDLE_SWEEP(e04tj, e04tjc(h, 1, 1, 1.0, &f))

ZEM_BADINPUT(e04rh) {
  over_bad_handles(s, [&](void *h) {
    Zem_Fail f = quiet();
    e04rhc(h, 3, r3, r3, &f);
    return code_of(f);
  });
  for (double v : hostile_reals)
    s.call("bl", v, [&] {
      with_handle(3, [&](void *h) {
        const double bl[3] = {v, v, v}, bu[3] = {1.0, 1.0, 1.0};
        Zem_Fail f = quiet();
        e04rhc(h, 3, bl, bu, &f);
        s.expect(f.code == NE_NOERROR || f.code == NE_BOUND, "a bound failure with another code");
        if (std::isnan(v) || v > 1.0) s.failed(f, NE_BOUND);
      });
    });
}

ZEM_BADINPUT(e04rz) {
  s.call("handle", "null", [&] {
    void *h = nullptr;
    Zem_Fail f = quiet();
    e04rzc(&h, &f);
    s.expect(f.code == NE_NOERROR, "a null handle was not accepted");
  });
  s.call("handle", "garbage memory", [&] {
    guarded<int64_t> mem(16, 0x5a5a5a5a5a5a5a5a);
    void *h = mem.data();
    Zem_Fail f = quiet();
    e04rzc(&h, &f);
    s.failed(f, NE_HANDLE);
    s.intact(mem, "handle memory");
  });
}

ZEM_BADINPUT(e04sa) {
  for (const char *name : {"", "no-such-file.mps", "."})
    s.call("fname", name, [&] {
      void *h = nullptr;
      Zem_Fail f = quiet();
      e04sac(&h, "MPS", name, &f);
      s.expect(f.code != NE_NOERROR && h == nullptr, "a missing file gave a handle");
    });
  s.call("ftype", "LP", [&] {
    void *h = nullptr;
    Zem_Fail f = quiet();
    e04sac(&h, "LP", "x", &f);
    s.failed(f, NE_STR_UNKNOWN);
  });
}

// e04st: the handle checks, then hostile nvar and nnzu on a valid handle
// with a linear model (no user function is needed).
ZEM_BADINPUT(e04st) {
  over_bad_handles(s, [&](void *h) {
    Zem_Fail f = quiet();
    double x[3] = {0, 0, 0}, ri[100], st[100];
    e04stc(h, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, 3, x, 0, nullptr, ri, st, nullptr, &f);
    return code_of(f);
  });
  for (int64_t n : hostile_sizes)
    s.call("nvar", n, [&] {
      with_handle(2, [&](void *h) {
        const double c[2] = {1.0, -1.0}, bl[2] = {0.0, 0.0}, bu[2] = {1.0, 1.0};
        e04rec(h, 2, c, nullptr);
        e04rhc(h, 2, bl, bu, nullptr);
        Zem_Fail f = quiet();
        e04zmc(h, "Print Level = 0", &f);
        guarded<double> x(2, 0.5), ri(100, 0.0), st(100, 0.0), u(4, 0.0);
        e04stc(h, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, n, x.data(), n, u.data(), ri.data(),
               st.data(), nullptr, &f);
        s.expect(n == 2 ? f.code == NE_INT : f.code == NE_REF_MATCH, "a wrong nvar or nnzu was not refused");
        s.intact(x, "x");
        s.intact(u, "u");
        int64_t ifail = 1, iu[1] = {0};
        double ru[1] = {0.0};
        e04stf_(&h, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, &n, x.data(), &n, u.data(), ri.data(),
                st.data(), iu, ru, &ifail);
        s.expect(ifail != 0, "the Fortran entry accepted a wrong nvar or nnzu");
      });
    });
}
