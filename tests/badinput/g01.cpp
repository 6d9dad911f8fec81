// Bad-input sweeps of chapters g01 and s15: the functions of one value.
#include <cmath>

#include "sweep.h"

using namespace badinput;

ZEM_BADINPUT(g01ea) {
  for (double x : hostile_reals)
    for (Zem_TailProbability t : {Zem_LowerTail, Zem_UpperTail, Zem_TwoTailSignif, Zem_TwoTailConfid})
      s.call("x = " + sweep::text(x) + ", tail", static_cast<int>(t), [&] {
        Zem_Fail fail = quiet();
        const double p = g01eac(t, x, &fail);
        // (Documented: a NaN deviate gives a NaN probability.)
        if (!std::isnan(x)) s.fail_or_finite(fail, {p});
        if (fail.code == 0 && !std::isnan(x)) s.expect(p >= 0.0 && p <= 1.0, "a probability outside [0,1]");
        int64_t ifail = 1;
        const double pf = g01eaf_("L", &x, &ifail, 1);
        if (!std::isnan(x)) s.ifail_or_finite(ifail, {pf});
      });
  s.call("tail", [&] {
    Zem_Fail fail = quiet();
    g01eac(static_cast<Zem_TailProbability>(0), 0.0, &fail);
    s.expect(fail.code != 0, "an unknown tail accepted");
    int64_t ifail = 1;
    double x = 0.0;
    g01eaf_("Q", &x, &ifail, 1);
    s.expect(ifail != 0, "an unknown tail accepted");
    ifail = 1;
    g01eaf_("", &x, &ifail, 0);
    s.expect(ifail != 0, "an empty tail accepted");
  });
}

ZEM_BADINPUT(g01fa) {
  for (double p : hostile_reals)
    for (Zem_TailProbability t : {Zem_LowerTail, Zem_UpperTail, Zem_TwoTailSignif, Zem_TwoTailConfid})
      s.call("p = " + sweep::text(p) + ", tail", static_cast<int>(t), [&] {
        Zem_Fail fail = quiet();
        const double x = g01fac(t, p, &fail);
        // (Documented: a NaN probability passes the checks and gives a NaN.)
        if (fail.code == 0 && !std::isnan(p)) s.expect(!std::isnan(x), "success with a NaN deviate");
        if (!(p > 0.0 && p < 1.0) && !std::isnan(p)) s.expect(fail.code != 0, "p outside (0,1) accepted");
        int64_t ifail = 1;
        g01faf_("U", &p, &ifail, 1);
      });
}

ZEM_BADINPUT(s15ad) {
  for (double x : hostile_reals)
    s.call("x", x, [&] {
      Zem_Fail fail = quiet();
      const double v = s15adc(x, &fail);
      if (!std::isnan(x)) s.fail_or_finite(fail, {v});
      int64_t ifail = 1;
      s15adf_(&x, &ifail);
    });
}

ZEM_BADINPUT(s15ae) {
  for (double x : hostile_reals)
    s.call("x", x, [&] {
      Zem_Fail fail = quiet();
      const double v = s15aec(x, &fail);
      if (!std::isnan(x)) s.fail_or_finite(fail, {v});
      int64_t ifail = 1;
      s15aef_(&x, &ifail);
    });
}
