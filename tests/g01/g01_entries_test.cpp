// g01ea, g01fa, s15ad and s15ae through their public entries: the C entry's
// enumeration check, fail record and exit, the Fortran entry's ifail
// convention, and the exact message texts.
#include <gtest/gtest.h>
#include <zem.h>

#include <cmath>
#include <string>

namespace {

using c_routine = double (*)(Zem_TailProbability, double, Zem_Fail *);
using f_routine = double (*)(const char *, const double *, int64_t *, size_t);

struct c_case {
  const char *name;
  c_routine fn;
  int tail;  // an enumeration member, or a value that is none
  double arg;
  int code;
  int64_t errnum;
  const char *message;
};

TEST(G01CEntry, FailRecordCodesAndMessages) {
  const c_case cases[] = {
      {"g01fac", g01fac, Zem_LowerTail, 0.0, NE_REAL_ARG_LE, 2,
       "NE_REAL_ARG_LE:\n  On entry, p = 0.0.\n  Constraint: p > 0.0."},
      {"g01fac", g01fac, Zem_TwoTailConfid, 1.0, NE_REAL_ARG_GE, 2,
       "NE_REAL_ARG_GE:\n  On entry, p = 1.0.\n  Constraint: p < 1.0."},
      {"g01fac", g01fac, Zem_UpperTail, -2.5e-7, NE_REAL_ARG_LE, 2,
       "NE_REAL_ARG_LE:\n  On entry, p = -2.5e-07.\n  Constraint: p > 0.0."},
      {"g01fac", g01fac, Zem_TwoTailSignif, 1.0000000000000002, NE_REAL_ARG_GE, 2,
       "NE_REAL_ARG_GE:\n  On entry, p = 1.0000000000000002.\n  Constraint: p < 1.0."},
      // An unknown member is rejected by the C entry before the engine, even
      // with an invalid p as well.
      {"g01fac", g01fac, 1333, 0.0, NE_BAD_PARAM, 0, "NE_BAD_PARAM:\n  On entry, parameter tail had an illegal value."},
      {"g01fac", g01fac, 0, 0.5, NE_BAD_PARAM, 0, "NE_BAD_PARAM:\n  On entry, parameter tail had an illegal value."},
      {"g01eac", g01eac, 1328, 1.0, NE_BAD_PARAM, 0, "NE_BAD_PARAM:\n  On entry, parameter tail had an illegal value."},
      {"g01eac", g01eac, 'L', 1.0, NE_BAD_PARAM, 0, "NE_BAD_PARAM:\n  On entry, parameter tail had an illegal value."},
  };
  for (const auto &c : cases) {
    Zem_Fail fail = ZEM_FAIL_INIT;
    const double r = c.fn(static_cast<Zem_TailProbability>(c.tail), c.arg, &fail);
    EXPECT_EQ(r, 0.0) << c.name << " " << c.arg;
    EXPECT_EQ(fail.code, c.code) << c.name << " " << c.arg;
    EXPECT_EQ(fail.errnum, c.errnum) << c.name << " " << c.arg;
    EXPECT_STREQ(fail.message, c.message) << c.name << " " << c.arg;
  }
}

TEST(G01CEntry, EveryMemberSelectsItsTail) {
  struct member {
    Zem_TailProbability tail;
    double p_at_1;  // g01eac(tail, 1.0)
  };
  for (const member m : {member{Zem_LowerTail, 0.841344746068542948}, member{Zem_UpperTail, 0.158655253931457051},
                         member{Zem_TwoTailSignif, 0.317310507862914102},
                         member{Zem_TwoTailConfid, 0.682689492137085898}}) {
    Zem_Fail fail = ZEM_FAIL_INIT;
    EXPECT_NEAR(g01eac(m.tail, 1.0, &fail), m.p_at_1, 2e-16);
    EXPECT_EQ(fail.code, NE_NOERROR);
    EXPECT_STREQ(fail.message, "NE_NOERROR:\n  No error.");
    EXPECT_NEAR(g01fac(m.tail, m.p_at_1, &fail), 1.0, 4e-15);
    EXPECT_EQ(fail.code, NE_NOERROR);
  }
}

TEST(G01CEntry, NullFailRecordPrintsAndEnds) {
  EXPECT_EXIT(g01fac(Zem_LowerTail, 1.5, NULL), ::testing::ExitedWithCode(1),
              "Error detected by ZEM routine g01fac:\nNE_REAL_ARG_GE:\n  On entry, p = 1.5.\n  Constraint: p < 1.0.\n"
              "...ZEM Function Terminated");
  EXPECT_EXIT(g01eac(static_cast<Zem_TailProbability>(7), 1.5, NULL), ::testing::ExitedWithCode(1),
              "Error detected by ZEM routine g01eac:\nNE_BAD_PARAM:\n  On entry, parameter tail had an illegal value.");
}

TEST(G01CEntry, NullFailRecordAndSuccessIsSilent) {
  EXPECT_EQ(g01eac(Zem_LowerTail, 0.0, NULL), 0.5);
  EXPECT_EQ(g01fac(Zem_LowerTail, 0.5, NULL), 0.0);
  EXPECT_EQ(s15adc(0.0, NULL), 1.0);
  EXPECT_EQ(s15aec(0.0, NULL), 0.0);
}

int handler_calls = 0;
int handler_code = -1;
void count_handler(const char *, int code, const char *routine) {
  ++handler_calls;
  handler_code = code;
  EXPECT_STREQ(routine, "s15adc");
}

TEST(S15CEntry, HandlerRunsOnSuccess) {
  Zem_Fail fail = ZEM_FAIL_INIT;
  fail.handler = count_handler;
  handler_calls = 0;
  EXPECT_EQ(s15adc(-40.0, &fail), 2.0);
  EXPECT_EQ(handler_calls, 1);
  EXPECT_EQ(handler_code, NE_NOERROR);
}

struct f_case {
  const char *name;
  f_routine fn;
  const char *tail;
  size_t tail_len;
  double arg;
  int64_t ifail_out;
};

TEST(G01FortranEntry, QuietSoftFailureSetsIfail) {
  const f_case cases[] = {
      {"g01faf", g01faf_, "L", 1, 0.0, 2},     {"g01faf", g01faf_, "c", 1, 1.0, 2},
      {"g01faf", g01faf_, "Q", 1, 0.0, 1},     {"g01faf", g01faf_, "Lower", 5, 0.5, 0},
      {"g01faf", g01faf_, "", 0, 0.5, 1},      {"g01eaf", g01eaf_, "x", 1, 0.0, 1},
      {"g01eaf", g01eaf_, "s", 1, 0.0, 0},
  };
  for (const auto &c : cases) {
    for (int64_t quiet : {1, 7, -3}) {  // every value but 0 and -1 is quiet
      int64_t ifail = quiet;
      const double r = c.fn(c.tail, &c.arg, &ifail, c.tail_len);
      EXPECT_EQ(ifail, c.ifail_out) << c.name << " '" << c.tail << "' " << c.arg;
      if (c.ifail_out != 0) {
        EXPECT_EQ(r, 0.0);
      }
    }
  }
}

TEST(G01FortranEntry, ValuesMatchTheCEntry) {
  for (double p : {1e-300, 0.01, 0.3, 0.5, 0.8, 0.999}) {
    int64_t ifail = 0;
    const char tails[] = "LUSC";
    const Zem_TailProbability members[] = {Zem_LowerTail, Zem_UpperTail, Zem_TwoTailSignif, Zem_TwoTailConfid};
    for (int t = 0; t < 4; ++t) {
      EXPECT_EQ(g01faf_(tails + t, &p, &ifail, 1), g01fac(members[t], p, NULL));
      EXPECT_EQ(g01eaf_(tails + t, &p, &ifail, 1), g01eac(members[t], p, NULL));
      EXPECT_EQ(ifail, 0);
    }
  }
  const double x = 0.75;
  int64_t ifail = 0;
  EXPECT_EQ(s15adf_(&x, &ifail), std::erfc(0.75));
  EXPECT_EQ(s15aef_(&x, &ifail), std::erf(0.75));
  EXPECT_EQ(ifail, 0);
}

}  // namespace
