// Bad-input sweeps of the option routines e04zm, e04zn, e04zp: handles that
// are null, destroyed, foreign or shells of nothing; option strings and
// files no user should write (huge, binary, overflowing numbers); sizes of
// cvalue that lie.  A failing call must leave the options unchanged.
#include <cstdio>
#include <cstring>
#include <string>

#include "sweep.h"

using namespace badinput;

namespace {

// A fresh handle, destroyed at the end of the case.
struct handle {
  void *h = nullptr;
  handle() {
    Zem_Fail f = quiet();
    e04rac(&h, 2, &f);
  }
  ~handle() {
    Zem_Fail f = quiet();
    e04rzc(&h, &f);
  }
};

// Reads Print Level back: the witness that a failed call changed nothing.
int64_t print_level(void *h) {
  Zem_Fail f = quiet();
  int64_t iv = -1, ot = 0;
  double rv = 0.0;
  char cv[8];
  e04znc(h, "Print Level", &iv, &rv, cv, 8, &ot, &f);
  return iv;
}

// Handles no routine may accept: each case gives the handle to body, which
// returns the C code and the Fortran ifail of the call.
template <typename Body>
void over_bad_handles(sweep &s, Body body) {
  guarded<int64_t> zeros(9, 0), garbage(9, 0x5a5a5a5a5a5a5a5a);
  void *destroyed = nullptr;
  {
    Zem_Fail f = quiet();
    e04rac(&destroyed, 1, &f);
    e04rzc(&destroyed, &f);
  }
  const std::pair<const char *, void *> cases[] = {
      {"null", nullptr}, {"zeroed memory", zeros.data()}, {"garbage", garbage.data()}, {"destroyed", destroyed}};
  for (const auto &[name, h] : cases)
    s.call(std::string("handle ") + name, [&] {
      const auto [code, ifail] = body(h);
      s.expect(code == NE_HANDLE, "C entry: not NE_HANDLE");
      s.expect(ifail == 1, "Fortran entry: not ifail = 1");
      s.intact(zeros, "zeros");
      s.intact(garbage, "garbage");
    });
}

const std::string hostile_strings[] = {
    "", "=", "= = =", "==1", std::string(100000, 'A') + " = 1", "Print Level = " + std::string(100000, '9'),
    "Print Level = 99999999999999999999999", "Print Level = -9223372036854775809",
    "Print Level = 9223372036854775807", "Infinite Bound Size = 1e99999", "Infinite Bound Size = nan",
    "Infinite Bound Size = -inf", "Infinite Bound Size = 0x1p90", "Infinite Bound Size = " + std::string(5000, '1'),
    "Task = \x01\x02\x7f\xff", "Print\tLevel\t=\t3", "\xff\xfe = \x80", "Defaults = 1", "Print Level = 1 2",
    "STATS TIME = WALL CLOCK WALL CLOCK",
};

}  // namespace

ZEM_BADINPUT(e04zm) {
  over_bad_handles(s, [](void *h) {
    Zem_Fail f = quiet();
    int64_t ifail = 1;
    e04zmc(h, "Print Level = 1", &f);
    e04zmf_(&h, "Print Level = 1", &ifail, 15);
    return std::pair<int, int64_t>{f.code, ifail};
  });
  for (const std::string &str : hostile_strings)
    s.call("optstr of length", static_cast<int64_t>(str.size()), [&] {
      handle h;
      Zem_Fail f = quiet();
      e04zmc(h.h, str.c_str(), &f);
      s.expect(f.code != -12345, "fail record not set");
      if (f.code != NE_NOERROR) s.expect(print_level(h.h) == 2, "a refused setting changed the options");
      int64_t ifail = 1;
      // The Fortran entry sees the whole string, NUL bytes included.
      const std::string with_nul = str + std::string(1, '\0') + "garbage";
      e04zmf_(&h.h, with_nul.data(), &ifail, with_nul.size());
      s.expect(ifail >= 0, "negative ifail");
    });
  s.call("optstr NULL", [&] {
    handle h;
    Zem_Fail f = quiet();
    e04zmc(h.h, nullptr, &f);
    s.failed(f, NE_BAD_PARAM);
  });
}

ZEM_BADINPUT(e04zn) {
  over_bad_handles(s, [](void *h) {
    Zem_Fail f = quiet();
    int64_t ifail = 1, iv = 0, ot = 0;
    double rv = 0.0;
    char cv[16];
    e04znc(h, "Print Level", &iv, &rv, cv, 16, &ot, &f);
    e04znf_(&h, "Print Level", &iv, &rv, cv, &ot, &ifail, 11, 16);
    return std::pair<int, int64_t>{f.code, ifail};
  });
  for (int64_t l : hostile_sizes)
    s.call("lcvalue", l, [&] {
      handle h;
      // The room the caller really has: a lie beyond 9 bytes must not be
      // written into beyond what the keyword needs ("MINIMIZE" and its NUL).
      guarded<char> cv(9, 'x');
      Zem_Fail f = quiet();
      int64_t iv = 0, ot = 0;
      double rv = 0.0;
      e04znc(h.h, "Task", &iv, &rv, l > 0 ? cv.data() : nullptr, l, &ot, &f);
      s.expect(l >= 9 ? f.code == NE_NOERROR : f.code == NE_INT, "wrong outcome for this lcvalue");
      s.intact(cv, "cvalue");
    });
  for (const std::string &str : hostile_strings)
    s.call("optstr of length", static_cast<int64_t>(str.size()), [&] {
      handle h;
      Zem_Fail f = quiet();
      int64_t iv = 0, ot = 0;
      double rv = 0.0;
      guarded<char> cv(32, 'x');
      e04znc(h.h, str.c_str(), &iv, &rv, cv.data(), 32, &ot, &f);
      s.expect(f.code == NE_NOERROR || f.code == NE_INVALID_OPTION, "unexpected code");
      s.intact(cv, "cvalue");
    });
}

ZEM_BADINPUT(e04zp) {
  over_bad_handles(s, [](void *h) {
    Zem_Fail f = quiet();
    int64_t ifail = 1;
    e04zpc(h, "/nonexistent/options", &f);
    e04zpf_(&h, "/nonexistent/options", &ifail, 20);
    return std::pair<int, int64_t>{f.code, ifail};
  });
  const char *const names[] = {"", ".", "/", "/nonexistent/options", "/dev/null", "/proc/self/mem"};
  for (const char *n : names)
    s.call("fname", n, [&] {
      handle h;
      Zem_Fail f = quiet();
      e04zpc(h.h, n, &f);
      s.expect(f.code == NE_NOT_READ_FILE, "not NE_NOT_READ_FILE");
      s.expect(print_level(h.h) == 2, "a refused file changed the options");
    });
  s.call("fname with a NUL (Fortran)", [&] {
    handle h;
    int64_t ifail = 1;
    e04zpf_(&h.h, "/dev/null\0x", &ifail, 11);
    s.failed(ifail, 14);
  });
  s.call("fname NULL", [&] {
    handle h;
    Zem_Fail f = quiet();
    e04zpc(h.h, nullptr, &f);
    s.failed(f, NE_BAD_PARAM);
  });
}
