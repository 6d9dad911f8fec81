// Output units, the record writer, the trace blocks, the debugging file and
// the legacy parameter messages.
#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

#include "frame/frame.h"
#include "frame/trace.h"
#include "frame/units.h"

ZEM_INTERNAL void p01abw_f(const int64_t *ifail, const char *param, const char *routine, const double *value);
ZEM_INTERNAL void p01aby_f(const int64_t *ifail, const char *param, const char *routine, const int64_t *value);

namespace {

std::string slurp(const std::string &name) {
  std::ifstream f(name);
  std::stringstream s;
  s << f.rdbuf();
  return s.str();
}

// Each test writes to a unit of its own; the Fortran run-time connects an
// unopened unit n to the file fort.n, which the library writes only if it
// exists: the tests create it first.
TEST(RecordWriter, TrailingBlanksEmptyRecordsAndNegativeUnits) {
  std::remove("fort.71");
  EXPECT_EQ(zem::write_record(71, "no file, no write"), 1);
  EXPECT_FALSE(std::ifstream("fort.71").good());
  std::ofstream("fort.71").close();
  EXPECT_EQ(zem::write_record(71, "abc   "), 0);
  EXPECT_EQ(zem::write_record(71, std::string(80, ' ')), 0);
  EXPECT_EQ(zem::write_record(71, ""), 0);
  EXPECT_EQ(zem::write_record(71, "  x"), 0);
  EXPECT_EQ(zem::write_record(-1, "never"), 0);
  EXPECT_EQ(slurp("fort.71"), "abc\n \n \n  x\n");
}

TEST(Units, ReadAndSetThroughBothInterfaces) {
  int64_t unit = 0, zero = 0, one = 1, two = 2;
  x04aaf_(&zero, &unit);
  EXPECT_EQ(unit, 6);
  x04abc(0, &unit);
  EXPECT_EQ(unit, 6);
  unit = 9;
  x04aaf_(&one, &unit);
  EXPECT_EQ(zem::err_unit(), 9);
  unit = 5;
  x04aaf_(&two, &unit);  // any other iflag does nothing
  EXPECT_EQ(zem::err_unit(), 9);
  x04aac(1, &(unit = 6));
  EXPECT_EQ(zem::err_unit(), 6);
}

double cube_minus_two(double x, Zem_Comm *) { return x * x * x - 2.0; }

TEST(Trace, BlocksForTheEngineEntryAndEachCallback) {
  std::remove("fort.72");
  std::ofstream("fort.72").close();
  zem::set_adv_unit(72);
  const int64_t on = 1, set = 1, read = 0;
  EXPECT_EQ(y90gczn_(&set, &on), 1);
  double x = 0.0;
  Zem_Fail fail = ZEM_FAIL_INIT;
  c05ayc(1.0, 2.0, -1.0, 0.0, cube_minus_two, &x, nullptr, &fail);  // fails before any evaluation
  c05ayc(1.0, 2.0, 1e-3, 0.0, cube_minus_two, &x, nullptr, &fail);
  const int64_t off = 0;
  y90gczn_(&set, &off);
  EXPECT_EQ(y90gczn_(&read, &on), 0);
  zem::set_adv_unit(6);
  const std::string t = slurp("fort.72");
  for (const char *want : {" ** c05ayfv entry\n      en_data = cb_status 0, cb_mode 1\n      a = 1.0\n      b = 2.0\n"
                           "      eps = -1.0\n",
                           "      errbuf = \"|1|1001|-1.0|\"\n      ifail = 1\n", " ** c05ayfv:f before\n",
                           "      x = 1.0\n", " ** c05ayfv:f after\n", "      retval = -1.0\n"})
    EXPECT_NE(t.find(want), std::string::npos) << want << "\nin\n" << t;
  // No block after the switch went off.
  c05ayc(1.0, 2.0, 1e-3, 0.0, cube_minus_two, &x, nullptr, &fail);
  EXPECT_EQ(slurp("fort.72"), t);
}

TEST(DebugFile, AppendsLines) {
  std::remove("ZemDebug_file");
  zem::debug_append("first");
  zem::debug_append("second");
  EXPECT_EQ(slurp("ZemDebug_file"), "first\nsecond\n");
}

// (The record writer drops the heading's trailing blank.)
TEST(LegacyMessages, FormatAndTheSilencingRule) {
  struct {
    int64_t ifail;
    bool prints;
  } rules[] = {{0, true}, {1, false}, {-1, false}, {11, true}, {101, false}, {21, true}, {7, true}};
  for (const auto &r : rules) {
    testing::internal::CaptureStdout();
    const int64_t v = 42;
    p01aby_f(&r.ifail, "N", "G05XYZ", &v);
    const std::string out = testing::internal::GetCapturedStdout();
    EXPECT_EQ(!out.empty(), r.prints) << r.ifail;
    if (r.prints) {
      EXPECT_EQ(out, " \n *****  Parameter  N  is invalid in routine  G  *****\n        Value supplied is    42\n");
    }
  }
  testing::internal::CaptureStdout();
  const int64_t hard = 0;
  const double v = 2.5;
  p01abw_f(&hard, "EPS", "D01XYZ", &v);
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            " \n *****  Parameter  E  is invalid in routine  D  *****\n        Value supplied is\n        2.5\n");
}

}  // namespace
