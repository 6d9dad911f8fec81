// The option entries on a handle being solved, and on a shell handle: the
// phase rule and the handle rules that client programs cannot reach.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "e04/handle.h"
#include "e04/options.h"

namespace {

TEST(OptionEntries, RefusedWhileSolvingAndReadable) {
  void *handle = nullptr;
  Zem_Fail fail = ZEM_FAIL_INIT;
  e04rac(&handle, 3, &fail);
  ASSERT_EQ(fail.code, NE_NOERROR);
  char errbuf[200];
  int64_t ifail = 0;
  zem::e04::problem *p = zem::e04::open_problem(handle, errbuf, &ifail);
  ASSERT_NE(p, nullptr);
  {
    zem::e04::solving_scope solving(*p);
    ASSERT_TRUE(solving.entered());
    const std::string phase = "NE_PHASE:\n  The options cannot be modified while solver is running.";
    e04zmc(handle, "Print Level = 1", &fail);
    EXPECT_EQ(fail.code, NE_PHASE);
    EXPECT_EQ(fail.message, phase);
    EXPECT_EQ(fail.errnum, 2);
    e04zmc(handle, "Defaults", &fail);
    EXPECT_EQ(fail.message, phase);
    e04zpc(handle, "no such file", &fail);  // refused before the file is looked at
    EXPECT_EQ(fail.message, phase);
    int64_t ivalue = 0, optype = 0;
    double rvalue = 0.0;
    char cvalue[16];
    e04znc(handle, "Print Level", &ivalue, &rvalue, cvalue, 16, &optype, &fail);
    EXPECT_EQ(fail.code, NE_NOERROR);
    EXPECT_EQ(ivalue, 2);
  }
  e04zmc(handle, "Print Level = 1", &fail);
  EXPECT_EQ(fail.code, NE_NOERROR);
  EXPECT_EQ(zem::e04::int_value(*zem::e04::options(*p), zem::e04::opt::print_level), 1);
  e04rzc(&handle, &fail);
}

TEST(OptionEntries, ShellAndCorruptedHandles) {
  int64_t inner = 0;
  void *shell = zem::e04::make_shell(5, &inner);
  ASSERT_NE(shell, nullptr);
  Zem_Fail fail = ZEM_FAIL_INIT;
  e04zmc(shell, "Print Level = 1", &fail);
  EXPECT_EQ(fail.code, NE_HANDLE);
  e04rzc(&shell, &fail);

  void *handle = nullptr;
  e04rac(&handle, 1, &fail);
  int64_t *words = static_cast<int64_t *>(handle);
  const int64_t body = words[8];
  words[8] = 0;  // the body address lost
  e04zmc(handle, "Print Level = 1", &fail);
  EXPECT_STREQ(fail.message, "NE_HANDLE:\n  handle has not been initialized properly or is corrupted.");
  words[8] = body;
  e04rzc(&handle, &fail);
  EXPECT_EQ(fail.code, NE_NOERROR);
}

}  // namespace

// The row a solver uses for two contradicting options reads as documented.
#include "e04/option_messages.h"
namespace {
inline constexpr zem::message pair_messages[] = {
    ZEM_E04_OPTION_PAIR_ROW(6, 1101, "LPIPM NE Pert Min", "LPIPM NE Pert Max",
                            "'LPIPM NE Pert Min' <= 'LPIPM NE Pert Max'."),
};
TEST(OptionEntries, PairRowOfTheSolvers) {
  char errbuf[200];
  int64_t ifail = 0;
  zem::fail(errbuf, &ifail, 6, 1101, 1.0e-2, 1.0e-3);
  Zem_Fail fail = ZEM_FAIL_INIT;
  zem::report_c("e04xxc", pair_messages, 6, errbuf, &fail);
  EXPECT_STREQ(fail.message,
               "NE_REAL_2:\n  On entry, 'LPIPM NE Pert Min' = 0.01 and\n  'LPIPM NE Pert Max' = 0.001.\n"
               "  Constraint: 'LPIPM NE Pert Min' <= 'LPIPM NE Pert Max'.\n"
               "  Use zem_opt_handle_opt_set (e04zmc) to set compatible option values.");
}
}  // namespace
