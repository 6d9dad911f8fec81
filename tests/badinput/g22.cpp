// Bad-input sweeps of chapter g22: hostile formulae and option strings,
// sizes, levels and data values, and pointers that are not handles
// (foreign, misaligned, unmapped).
#include <cmath>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "sweep.h"

using namespace badinput;

namespace {

constexpr int64_t i64_min = std::numeric_limits<int64_t>::min();
constexpr int64_t i64_max = std::numeric_limits<int64_t>::max();

// Formulae a caller may pass by mistake (or on purpose).
std::vector<std::string> hostile_formulae() {
  std::vector<std::string> f = {"", " ", "+", "-", "--A", "A++B", "()", "(((", ")))", "A^", "(A+B)^",
                                "(A+B)^99999999999999999999999", "(A+B+C+D+E+F+G+H+I+J+K+L+M)^13", "@", "A@",
                                "A@SUM", "A@SUM FIRST SECOND", "1:1", "0", "-0", "1.5", "A.B.C.D.E.F.G.H",
                                "A = ", "= A", "A CONTRAST = ", "A CONTRAST =  = ", "A SUBJECT = B C",
                                "A\x7f", "A\x01" "B", "\xff\xfe", "A:B:C:D:E:F:G:H:I:J:K:L:M:N:O:P"};
  f.push_back(std::string(5000, '('));
  f.push_back(std::string(100000, 'A'));
  std::string many;
  for (int i = 0; i < 3000; ++i) {
    many += 'V';
    many += std::to_string(i);
    many += i % 2 ? '*' : '+';
  }
  many += "Z";
  f.push_back(many);
  return f;
}

// Pointers that are not g22 handles.  (A stale copy of a released handle is
// tested in tests/g22: here a later handle may be given the same memory,
// and the copy would then be that handle.)
struct strays {
  double local[16] = {};
  std::vector<std::pair<std::string, void *>> list() {
    return {{"stack array", local},
            {"misaligned", reinterpret_cast<char *>(local) + 1},
            {"unmapped", reinterpret_cast<void *>(uintptr_t{0x1000})},
            {"kernel address", reinterpret_cast<void *>(~uintptr_t{0xfff})}};
  }
};

void *formula(const char *text) {
  void *h = nullptr;
  g22yac(&h, text, nullptr);
  return h;
}

void *data(int64_t nobs, std::vector<int64_t> levels) {
  void *h = nullptr;
  g22ybc(&h, nobs, static_cast<int64_t>(levels.size()), levels.data(), 0, nullptr, nullptr);
  return h;
}

}  // namespace

ZEM_BADINPUT(g22ya) {
  for (const std::string &f : hostile_formulae())
    s.call("formula", f.substr(0, 40), [&] {
      void *h = nullptr;
      Zem_Fail fail = quiet();
      g22yac(&h, f.c_str(), &fail);
      s.expect(fail.code != -12345, "fail record not set");
      s.expect((h != nullptr) == (fail.code == NE_NOERROR || fail.code == NW_POTENTIAL_PROBLEM),
               "a handle without success, or success without a handle");
      g22zac(&h, nullptr);
      int64_t ifail = 1;
      g22yaf_(&h, f.data(), &ifail, f.size());
      g22zac(&h, nullptr);
    });
  strays st;
  for (auto &[name, p] : st.list())
    s.call("hform", name, [&] {
      void *h = p;
      Zem_Fail fail = quiet();
      g22yac(&h, "A", &fail);
      s.failed(fail, NE_HANDLE);
      s.expect(h == p, "a stray hform was changed");
    });
  s.call("hform address", "NULL", [&] {
    Zem_Fail fail = quiet();
    g22yac(nullptr, "A", &fail);
    s.failed(fail, NE_BAD_PARAM);
  });
}

ZEM_BADINPUT(g22yb) {
  for (int64_t n : hostile_sizes)
    s.call("nobs", n, [&] {
      void *h = nullptr;
      const int64_t levels[] = {1};
      Zem_Fail fail = quiet();
      g22ybc(&h, n, 1, levels, 0, nullptr, &fail);
      s.expect((n >= 0) == (fail.code == NE_NOERROR), "nobs check");
      g22zac(&h, nullptr);
    });
  for (int64_t n : {i64_min, int64_t{-1}})
    s.call("nvar", n, [&] {
      void *h = nullptr;
      Zem_Fail fail = quiet();
      g22ybc(&h, 1, n, nullptr, 0, nullptr, &fail);
      s.failed(fail, NE_INT);
    });
  for (int64_t l : {i64_min, int64_t{-1}, int64_t{0}})
    s.call("levels", l, [&] {
      void *h = nullptr;
      guarded<int64_t> levels(2, 1);
      levels[1] = l;
      Zem_Fail fail = quiet();
      g22ybc(&h, 1, 2, levels.data(), 0, nullptr, &fail);
      s.failed(fail, NE_INT_ARRAY);
      s.intact(levels, "levels");
    });
  for (int64_t lv : {i64_min, int64_t{-1}, int64_t{1}, int64_t{3}, i64_max})
    s.call("lvnames", lv, [&] {
      void *h = nullptr;
      const int64_t levels[] = {1, 1};
      const char *names[] = {"a", "b"};
      Zem_Fail fail = quiet();
      g22ybc(&h, 1, 2, levels, lv, names, &fail);
      s.failed(fail, NE_ARRAY_SIZE);
    });
  for (const char *bad : {"", " ", "a b", "a+b", "x@y", "1", "a=b", "\t", "\x01"})
    s.call("vnames", bad, [&] {
      void *h = nullptr;
      const int64_t levels[] = {1};
      const char *names[] = {bad};
      Zem_Fail fail = quiet();
      g22ybc(&h, 1, 1, levels, 1, names, &fail);
      s.failed(fail, NE_INVALID_FORMAT);
      int64_t ifail = 1, one = 1;
      g22ybf_(&h, &one, &one, levels, &one, bad, &ifail, std::strlen(bad));
      s.expect(ifail != 0 || std::strlen(bad) == 0, "Fortran entry accepted a bad name");
      g22zac(&h, nullptr);
    });
  strays st;
  for (auto &[name, p] : st.list())
    s.call("hddesc", name, [&] {
      void *h = p;
      const int64_t levels[] = {1};
      Zem_Fail fail = quiet();
      g22ybc(&h, 1, 1, levels, 0, nullptr, &fail);
      s.failed(fail, NE_HANDLE);
    });
}

ZEM_BADINPUT(g22yc) {
  // Categorical variables of hostile level counts: refused before anything
  // of their size is made.
  for (int64_t L : {int64_t{1} << 31, int64_t{1} << 40, int64_t{1} << 62, i64_max})
    for (const char *f : {"V1", "V1 - 1", "V1 CONTRAST = POLYNOMIAL", "V1:V2"})
      s.call(std::string("levels, formula ").append(f), L, [&] {
        void *hf = formula(f), *hd = data(2, {L, L}), *hx = nullptr;
        guarded<double> dat(4, 1.0), x(8);
        int64_t mx = -1;
        Zem_Fail fail = quiet();
        g22ycc(hf, hd, dat.data(), 2, 2, &hx, x.data(), 2, 4, &mx, &fail);
        s.expect(fail.code == NE_ARRAY_SIZE || fail.code == NE_INT, "a huge design was not refused");
        s.intact(dat, "dat");
        s.intact(x, "x");
        for (void **h : {&hf, &hd, &hx}) g22zac(h, nullptr);
      });
  // Level values that are not level numbers.
  for (double v : hostile_reals)
    s.call("categorical value", v, [&] {
      void *hf = formula("V1*V2"), *hd = data(2, {3, 1}), *hx = nullptr;
      guarded<double> dat(4, 1.0), x(2 * 8);
      dat[1] = v;
      dat[3] = v;  // the continuous variable too
      int64_t mx = -1;
      Zem_Fail fail = quiet();
      g22ycc(hf, hd, dat.data(), 2, 2, &hx, x.data(), 2, 8, &mx, &fail);
      if (v == 1.0)
        s.expect(fail.code == NE_NOERROR, "level 1 refused");
      else
        s.failed(fail, NE_REAL_ARRAY_INPUT);
      s.intact(x, "x");
      for (void **h : {&hf, &hd, &hx}) g22zac(h, nullptr);
    });
  // Sizes: too small leading dimensions of dat fail; x of any too small size
  // is a size query that writes nothing.
  for (int64_t n : hostile_sizes) {
    s.call("lddat", n, [&] {
      if (n >= 2) return;
      void *hf = formula("V1"), *hd = data(2, {1}), *hx = nullptr;
      guarded<double> dat(2, 1.0), x(4);
      int64_t mx = -1;
      Zem_Fail fail = quiet();
      g22ycc(hf, hd, dat.data(), n, 1, &hx, x.data(), 2, 2, &mx, &fail);
      s.failed(fail, NE_INT);
      s.intact(x, "x");
      for (void **h : {&hf, &hd, &hx}) g22zac(h, nullptr);
    });
    s.call("ldx with sdx = 0", n, [&] {
      void *hf = formula("V1"), *hd = data(2, {1}), *hx = nullptr;
      guarded<double> dat(2, 1.0), x(1);
      int64_t mx = -1;
      Zem_Fail fail = quiet();
      g22ycc(hf, hd, dat.data(), 2, 1, &hx, x.data(), n, 0, &mx, &fail);
      s.expect(fail.code == NW_ARRAY_SIZE && mx == 2, "size query");
      s.intact(x, "x");
      for (void **h : {&hf, &hd, &hx}) g22zac(h, nullptr);
    });
  }
  strays st;
  for (auto &[name, p] : st.list())
    s.call("handles", name, [&] {
      void *hf = formula("V1"), *hd = data(1, {1}), *hx = p;
      double dat[1] = {1.0}, x[2];
      int64_t mx = 0;
      Zem_Fail fail = quiet();
      g22ycc(p, hd, dat, 1, 1, &hx, x, 1, 2, &mx, &fail);
      s.failed(fail, NE_HANDLE);
      g22ycc(hf, p, dat, 1, 1, &hx, x, 1, 2, &mx, &fail);
      s.failed(fail, NE_HANDLE);
      g22ycc(hf, hd, dat, 1, 1, &hx, x, 1, 2, &mx, &fail);
      s.failed(fail, NE_HANDLE);
      g22zac(&hf, nullptr);
      g22zac(&hd, nullptr);
    });
}

ZEM_BADINPUT(g22yd) {
  void *hf = formula("V1*V2"), *hd = data(2, {2, 1}), *hx = nullptr;
  double dat[4] = {1, 2, 0.5, 0.25}, x[2 * 4];
  int64_t mx = 0;
  g22ycc(hf, hd, dat, 2, 2, &hx, x, 2, 4, &mx, nullptr);
  for (int64_t w : {i64_min, int64_t{-1}, int64_t{2}, i64_max})
    s.call("what", w, [&] {
      int64_t ii, p, ml = 0;
      Zem_Fail fail = quiet();
      g22ydc(w, hf, hx, &ii, &p, 0, nullptr, 0, nullptr, 0, nullptr, &ml, &fail);
      s.failed(fail, NE_INVALID_ENUM_RANGE);
    });
  for (int64_t n : {i64_min, int64_t{-1}, int64_t{1}, int64_t{2}, int64_t{3}})
    s.call("lisx, lplab, lvinfo", n, [&] {
      guarded<int64_t> isx(4), vinfo(16);
      guarded<char> plab(4 * 8);
      int64_t ii, p, ml = 8;
      Zem_Fail fail = quiet();
      g22ydc(0, hf, hx, &ii, &p, n, isx.data(), 0, nullptr, 0, nullptr, &ml, &fail);
      s.failed(fail, NE_INT);
      g22ydc(0, hf, hx, &ii, &p, 0, nullptr, n, plab.data(), 0, nullptr, &ml, &fail);
      s.failed(fail, NE_INT);
      g22ydc(0, hf, hx, &ii, &p, 0, nullptr, 0, nullptr, n, vinfo.data(), &ml, &fail);
      s.failed(fail, NE_INT);
      s.intact(isx, "isx");
      s.intact(vinfo, "vinfo");
      s.intact(plab, "plab");
    });
  for (int64_t width : {int64_t{1}, int64_t{2}})
    s.call("label width", width, [&] {
      guarded<char> plab(static_cast<size_t>(4 * width));
      int64_t ii, p, ml = width;
      Zem_Fail fail = quiet();
      g22ydc(1, nullptr, hx, &ii, &p, 0, nullptr, 4, plab.data(), 0, nullptr, &ml, &fail);
      s.expect(fail.code == NE_NOERROR, "labels cut to the field");
      s.intact(plab, "plab");
    });
  strays st;
  for (auto &[name, p] : st.list())
    s.call("handles", name, [&] {
      int64_t ii, np, ml = 0;
      Zem_Fail fail = quiet();
      g22ydc(0, p, hx, &ii, &np, 0, nullptr, 0, nullptr, 0, nullptr, &ml, &fail);
      s.failed(fail, NE_HANDLE);
      g22ydc(1, nullptr, p, &ii, &np, 0, nullptr, 0, nullptr, 0, nullptr, &ml, &fail);
      s.failed(fail, NE_HANDLE);
    });
  for (void **h : {&hf, &hd, &hx}) g22zac(h, nullptr);
}

ZEM_BADINPUT(g22za) {
  strays st;
  for (auto &[name, p] : st.list())
    s.call("handle", name, [&] {
      void *h = p;
      Zem_Fail fail = quiet();
      g22zac(&h, &fail);
      s.failed(fail, NE_HANDLE);
      int64_t ifail = 1;
      g22zaf_(&h, &ifail);
      s.failed(ifail, int64_t{12});
    });
  s.call("handle address", "NULL", [&] {
    Zem_Fail fail = quiet();
    g22zac(nullptr, &fail);
    s.failed(fail, NE_BAD_PARAM);
  });
}

namespace {
std::vector<std::string> hostile_options() {
  std::vector<std::string> o = {"", " ", "=", " = ", "==", "CONTRAST", "CONTRAST =", "CONTRAST = ",
                                "CONTRAST  =  FIRST", "PRINT = 99999999999999999999", "PRINT = -9223372036854775808",
                                "PRINT = 99", "PRINT = 1e3", "PRINT = ", "SORDER = Sideways",
                                "STORAGE ORDER = VARIABLES EXTRA", "SUBJECT = a b", "\x01 = \x02", "\xff"};
  o.push_back(std::string(100000, 'X'));
  std::string subject = "SUBJECT = ";
  subject.append(60, 's');
  o.push_back(subject);
  return o;
}
}  // namespace

ZEM_BADINPUT(g22zm) {
  void *hs[] = {formula("V1*V2"), data(1, {1}), nullptr};
  for (const std::string &o : hostile_options())
    for (void *h : hs)
      s.call("optstr", o.substr(0, 40), [&] {
        if (!h) return;
        Zem_Fail fail = quiet();
        g22zmc(h, o.c_str(), &fail);
        s.expect(fail.code != -12345, "fail record not set");
        int64_t ifail = 1;
        g22zmf_(&h, o.data(), &ifail, o.size());
      });
  strays st;
  for (auto &[name, p] : st.list())
    s.call("handle", name, [&] {
      Zem_Fail fail = quiet();
      g22zmc(p, "CONTRAST = LAST", &fail);
      s.failed(fail, NE_HANDLE);
    });
  for (void *&h : hs) g22zac(&h, nullptr);
}

ZEM_BADINPUT(g22zn) {
  void *h = formula("V1 SUBJECT = S");
  for (const std::string &o : hostile_options())
    for (int64_t len : {int64_t{0}, int64_t{1}, int64_t{3}})
      s.call("optstr", o.substr(0, 40), [&] {
        guarded<char> cv(static_cast<size_t>(len));
        int64_t iv = 0, ot = 0;
        double rv = 0.0;
        Zem_Fail fail = quiet();
        g22znc(h, o.c_str(), &iv, &rv, cv.data(), len, &ot, &fail);
        s.intact(cv, "cvalue");
      });
  for (const char *name : {"FORMULA", "SUBJECT", "CONTRAST"})
    s.call("cvalue length", name, [&] {
      guarded<char> cv(2);
      int64_t iv = 0, ot = 0, ifail = 1;
      double rv = 0.0;
      g22znf_(&h, name, &iv, &rv, cv.data(), &ot, &ifail, std::strlen(name), 2);
      s.intact(cv, "cvalue");
    });
  strays st;
  for (auto &[name, p] : st.list())
    s.call("handle", name, [&] {
      int64_t iv, ot;
      double rv;
      char cv[8];
      Zem_Fail fail = quiet();
      g22znc(p, "CONTRAST", &iv, &rv, cv, 8, &ot, &fail);
      s.failed(fail, NE_HANDLE);
    });
  g22zac(&h, nullptr);
}
