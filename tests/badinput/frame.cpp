// Bad-input sweeps of the frame: machine constants, output units, matrix
// printing, identification.  Output is switched off (unit -1) where the
// sweep only checks that nothing breaks.
#include <unistd.h>

#include <cmath>
#include <cstdio>

#include "sweep.h"

using namespace badinput;

namespace {

// Runs body with both message units set to u, then restores them.
template <typename Body>
void with_units(int64_t u, Body body) {
  int64_t err = 0, adv = 0;
  x04aac(0, &err);
  x04abc(0, &adv);
  x04aac(1, &u);
  x04abc(1, &u);
  body();
  x04aac(1, &err);
  x04abc(1, &adv);
}

}  // namespace

#define ZEM_BADINPUT_CONSTANT(rtn)                                \
  ZEM_BADINPUT(rtn) {                                             \
    s.call("value", [&] {                                         \
      const auto c = rtn##c();                                    \
      s.expect(c == rtn##f_() && c == c, "the entries disagree"); \
    });                                                           \
  }
ZEM_BADINPUT_CONSTANT(x02ah)
ZEM_BADINPUT_CONSTANT(x02aj)
ZEM_BADINPUT_CONSTANT(x02ak)
ZEM_BADINPUT_CONSTANT(x02al)
ZEM_BADINPUT_CONSTANT(x02am)
ZEM_BADINPUT_CONSTANT(x02an)
ZEM_BADINPUT_CONSTANT(x02bb)
ZEM_BADINPUT_CONSTANT(x02be)
ZEM_BADINPUT_CONSTANT(x02bh)
ZEM_BADINPUT_CONSTANT(x02bj)
ZEM_BADINPUT_CONSTANT(x02bk)
ZEM_BADINPUT_CONSTANT(x02bl)

ZEM_BADINPUT(x04aa) {
  for (int64_t iflag : {int64_t{-1}, int64_t{2}, std::numeric_limits<int64_t>::min()})
    s.call("iflag", iflag, [&] {
      int64_t before = 0, u = 77, after = 0;
      x04aac(0, &before);
      x04aac(iflag, &u);
      x04aaf_(&iflag, &u);
      x04aac(0, &after);
      s.expect(before == after && u == 77, "an unknown iflag changed something");
    });
}

ZEM_BADINPUT(x04ab) {
  for (int64_t iflag : {int64_t{-1}, int64_t{2}})
    s.call("iflag", iflag, [&] {
      int64_t before = 0, u = 77, after = 0;
      x04abc(0, &before);
      x04abc(iflag, &u);
      x04abf_(&iflag, &u);
      x04abc(0, &after);
      s.expect(before == after && u == 77, "an unknown iflag changed something");
    });
}

ZEM_BADINPUT(x04ba) {
  // Units no program opened: nothing may be created in the current directory
  // (checked by the runner after the sweep).
  for (int64_t u : {int64_t{-1}, int64_t{0} - 1000, int64_t{57}, int64_t{99}, int64_t{1} << 40,
                    std::numeric_limits<int64_t>::max(), std::numeric_limits<int64_t>::min()})
    s.call("nout", u, [&] {
      x04bac(u, "record to a unit nobody opened");
      x04baf_(&u, "record", 6);
    });
  s.call("empty record", [&] {
    const int64_t u = -1;
    x04bac(u, "");
    x04baf_(&u, "", 0);
  });
}

ZEM_BADINPUT(x04bb) {
  for (int64_t u : {int64_t{-1}, int64_t{57}, int64_t{1} << 40, std::numeric_limits<int64_t>::min()})
    s.call("nin", u, [&] {
      guarded<char> rec(81, 'x');
      Zem_Fail fail = quiet();
      x04bbc(u, rec.data(), 80, &fail);
      s.expect(fail.code != 0, "a read from a unit nobody opened succeeded");
      s.intact(rec, "recin");
      guarded<char> recf(80, 'x');
      int64_t ifail = 1;
      x04bbf_(&u, recf.data(), &ifail, 80);
      s.expect(ifail != 0, "a read from a unit nobody opened succeeded");
      s.intact(recf, "recin");
    });
  for (int64_t l : {int64_t{-1}, int64_t{0}})
    s.call("lrec", l, [&] {
      guarded<char> rec(1, 'x');
      Zem_Fail fail = quiet();
      x04bbc(57, rec.data(), l, &fail);
      s.intact(rec, "recin");
    });
}

ZEM_BADINPUT(x04ca) {
  with_units(-1, [&] {
    for (int64_t m : {int64_t{-1}, int64_t{0}, int64_t{3}, int64_t{1} << 62})
      for (int64_t lda : {int64_t{-1}, int64_t{1}, int64_t{3}})
        s.call("m = " + sweep::text(m) + ", lda", lda, [&] {
          guarded<double> a(9, nan_v);
          Zem_Fail fail = quiet();
          const int64_t n = m > 3 ? 3 : m;
          x04cac(Zem_GeneralMatrix, Zem_NonUnitDiag, m, n, a.data(), lda, "title", &fail);
          if (lda < m) s.expect(fail.code != 0, "lda < m accepted");
          s.intact(a, "a");
        });
    s.call("enumerations", [&] {
      double a[4] = {inf, -inf, nan_v, huge};
      Zem_Fail fail = quiet();
      x04cac(static_cast<Zem_MatrixType>(0), Zem_NonUnitDiag, 2, 2, a, 2, "t", &fail);
      s.expect(fail.code != 0, "an unknown matrix type accepted");
      fail = quiet();
      x04cac(Zem_LowerMatrix, static_cast<Zem_DiagType>(0), 2, 2, a, 2, "t", &fail);
      s.expect(fail.code != 0, "an unknown diag accepted");
      fail = quiet();
      x04cac(Zem_GeneralMatrix, Zem_NonUnitDiag, 2, 2, a, 2, nullptr, &fail);
      int64_t m = 2, n = 2, lda = 2, ifail = 1;
      x04caf_("Q", "N", &m, &n, a, &lda, "t", &ifail, 1, 1, 1);
      s.expect(ifail != 0, "an unknown matrix type accepted");
    });
  });
}

ZEM_BADINPUT(a00aa) {
  with_units(-1, [&] {
    s.call("silenced", [&] {
      a00aac();
      a00aaf_();
    });
  });
}
