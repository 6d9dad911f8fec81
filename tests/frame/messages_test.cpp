// The message record, its parsing, and the translation into each
// interface's message; every registered message table is checked.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <string>

#include "frame/frame.h"

extern "C" const zem::registered_table *const __start_zem_messages[], *const __stop_zem_messages[];

// c05ay's callback chain, reached directly.
using c05ay_f_adaptor = void (*)(engine_data *, zem_routine, const double *, double *, int64_t *, double *);
ZEM_INTERNAL void c05ayf_internal_fh_(engine_data *, zem_routine, const double *, double *, int64_t *, double *);
ZEM_INTERNAL void c05ayf_fh_(engine_data *, zem_routine, const double *, double *, int64_t *, double *);
ZEM_INTERNAL int64_t c05ayf_marshal_fh_(c05ay_f_adaptor, engine_data *, zem_routine, const double *, double *,
                                        int64_t *, double *);

namespace {

std::string record(const char *errbuf) { return std::string(errbuf, zem::errbuf_len); }

std::string text(double v) {
  auto t = zem::format_value(v);
  return std::string(t.text, t.len);
}

TEST(MessageRecord, RealsAreShortestRoundTripWithinTwentyFiveCharacters) {
  struct {
    double v;
    const char *want;
  } cases[] = {
      {0.0, "0.0"}, {-1.0, "-1.0"}, {0.5, "0.5"}, {1e-30, "1e-30"}, {1e22, "1e+22"},
      {0.1, "0.1"}, {1.0 / 3.0, "0.3333333333333333"}, {-2.2250738585072014e-308, "-2.2250738585072014e-308"},
      {std::numeric_limits<double>::infinity(), "inf"}, {std::nan(""), "nan"}, {123456789.0, "123456789.0"},
  };
  for (const auto &c : cases) EXPECT_EQ(text(c.v), c.want) << c.v;
  // Every finite double reads back exactly and fits the field.
  for (double v : {5e-324, 1.7976931348623157e308, -4.9406564584124654e-324, 0.1 + 0.2}) {
    const std::string s = text(v);
    EXPECT_LE(s.size(), 25u);
    EXPECT_EQ(std::strtod(s.c_str(), nullptr), v);
  }
}

TEST(MessageRecord, LayoutAndTerminator) {
  char errbuf[zem::errbuf_len];
  std::memset(errbuf, 'x', sizeof errbuf);
  int64_t ifail = 0;
  zem::fail(errbuf, &ifail, 2, 1004, 1e-30, int64_t{-7}, 'L');
  EXPECT_EQ(ifail, 2);
  const std::string r = record(errbuf);
  const std::string fields("\x01" "2\x01" "1004\x01" "1e-30\x01" "-7\x01" "L\x01");
  EXPECT_EQ(r.substr(0, fields.size()), fields);
  EXPECT_EQ(r.find_first_not_of(' ', fields.size()), 199u);  // blanks, then NUL at character 200
  EXPECT_EQ(r[199], '\0');
}

TEST(MessageRecord, ParseCountsCompleteFieldsOnly) {
  char values[8][26];
  int64_t status = 0, detail = 0;
  struct {
    const char *rec;
    int values;
  } cases[] = {
      {"\x01" "1\x01" "1001\x01" "0.5\x01", 1},
      {"\x01" "1\x01" "1001\x01" "0.5\x01" "2.5", 1},  // the last field has no closing 0x01
      {"\x01" "3\x01" "1005\x01", 0},
      {"\x01" "3\x01", -1},                            // no detail code
      {"garbage", -1},
      {"\x01" "1\x01" "1001\x01" "12345678901234567890123456\x01", 0},  // a value longer than 25
  };
  for (const auto &c : cases) {
    char errbuf[zem::errbuf_len] = {};
    std::strcpy(errbuf, c.rec);
    EXPECT_EQ(p01abtn_(errbuf, &status, &detail, values, 8), c.values) << c.rec;
  }
}

// Every table: details unique, known codes, C and Fortran lines take the
// same number of values, and every line fits its interface with 25-character
// values in every place.
TEST(MessageTables, EveryRegisteredTableIsConsistent) {
  int tables = 0;
  for (auto *const *entry = __start_zem_messages; entry != __stop_zem_messages; ++entry, ++tables) {
    const zem::registered_table *t = *entry;
    SCOPED_TRACE(t->routine);
    for (size_t i = 0; i < t->size; ++i) {
      const zem::message &m = t->rows[i];
      SCOPED_TRACE(m.detail);
      for (size_t j = 0; j < i; ++j)
        EXPECT_FALSE(t->rows[j].status == m.status && t->rows[j].detail == m.detail) << "repeated row";
      ASSERT_NE(zem::code_name(m.code), nullptr) << "unknown code " << m.code;
      ASSERT_NE(m.c_lines[0], nullptr);
      EXPECT_EQ(zem::count_values(m.c_lines), zem::count_values(m.fortran()));
      size_t c_len = std::strlen(zem::code_name(m.code)) + 1;
      for (const char *l : m.c_lines)
        if (l) c_len += 3 + std::strlen(l) + 23 * zem::count_values({l});
      EXPECT_LT(c_len, 512u);
      for (const char *l : m.fortran())
        if (l) {
          EXPECT_LE(3 + std::strlen(l) + 23 * zem::count_values({l}), 80u) << l;
        }
    }
  }
  EXPECT_GE(tables, 5);
}

constexpr zem::message test_messages[] = {
    {1, 1001, NE_REAL, {"On entry, eps = %s.", "Constraint: eps > 0.0."}},
    {1, 1002, NE_REAL_2, {"On entry, a = %s and b = %s.", "Constraint: a != b."},
     {"On entry, a = %s and b = %s.", "Constraint: a /= b."}},
    {5, 1006, NW_TOO_MUCH_ACC_REQUESTED, {"tolx = %s."}},
};

struct c_case {
  const char *rec;
  int64_t status;
  int code;
  const char *message;
};

TEST(CTranslation, RecordsBecomeFailRecords) {
  const c_case cases[] = {
      {"\x01" "1\x01" "1001\x01" "-1.0\x01", 1, NE_REAL, "NE_REAL:\n  On entry, eps = -1.0.\n  Constraint: eps > 0.0."},
      {"\x01" "1\x01" "1002\x01" "1.0\x01" "1.0\x01", 1, NE_REAL_2,
       "NE_REAL_2:\n  On entry, a = 1.0 and b = 1.0.\n  Constraint: a != b."},
      {"\x01" "5\x01" "1006\x01" "1e-30\x01", 5, NW_TOO_MUCH_ACC_REQUESTED,
       "NW_TOO_MUCH_ACC_REQUESTED:\n  tolx = 1e-30."},
      // A detail code the routine does not know, a status with the wrong
      // detail, too few values, an unreadable record.
      {"\x01" "1\x01" "1009\x01", 1, NE_INTERNAL_ERROR, nullptr},
      {"\x01" "2\x01" "1001\x01" "1.0\x01", 2, NE_INTERNAL_ERROR, nullptr},
      {"\x01" "1\x01" "1002\x01" "1.0\x01", 1, NE_INTERNAL_ERROR, nullptr},
      {"\x01", 1, NE_INTERNAL_ERROR, nullptr},
      {"", -999, NE_ALLOC_FAIL, "NE_ALLOC_FAIL:\n  Dynamic memory allocation failed."},
      {"\x01" "-1\x01" "9001\x01" "42\x01", -1, NE_USER_STOP,
       "NE_USER_STOP:\n  User requested termination, user flag value = 42."},
  };
  for (const c_case &c : cases) {
    SCOPED_TRACE(c.status);
    char errbuf[zem::errbuf_len] = {};
    std::strcpy(errbuf, c.rec);
    Zem_Fail fail = ZEM_FAIL_INIT;
    zem::report_c("testc", test_messages, c.status, errbuf, &fail);
    EXPECT_EQ(fail.code, c.code);
    EXPECT_EQ(fail.errnum, c.status);
    EXPECT_STREQ(fail.message, c.message ? c.message : zem_errlist[NE_INTERNAL_ERROR]);
  }
}

struct capture_handler {
  static inline std::string message, routine, record_during_call;
  static inline int code = -1, calls = 0;
  static inline Zem_Fail *fail = nullptr;
  static void handle(const char *m, int c, const char *r) {
    message = m;
    code = c;
    routine = r;
    record_during_call = fail->message;
    ++calls;
  }
};

TEST(CErrorExit, HandlerRunsBeforeTheCopyAndOnSuccess) {
  Zem_Fail fail = ZEM_FAIL_INIT;
  std::strcpy(fail.message, "previous text");
  fail.handler = capture_handler::handle;
  capture_handler::fail = &fail;
  p01acc_c("NE_REAL:\n  new text", NE_REAL, "testc", &fail);
  EXPECT_EQ(capture_handler::record_during_call, "previous text");
  EXPECT_EQ(capture_handler::message, "NE_REAL:\n  new text");
  EXPECT_EQ(capture_handler::routine, "testc");
  EXPECT_STREQ(fail.message, "NE_REAL:\n  new text");
  EXPECT_EQ(fail.code, NE_REAL);

  p01acc_c(nullptr, NE_NOERROR, "testc", &fail);
  EXPECT_EQ(capture_handler::code, 0);
  EXPECT_EQ(capture_handler::message, "NE_NOERROR:\n  No error.");
  EXPECT_EQ(capture_handler::calls, 2);
  p01acc_c(nullptr, NE_NOERROR, "testc", nullptr);  // nothing to do, no exit
}

TEST(CErrorExit, NullRecordPrintsAndTerminates) {
  EXPECT_EXIT(p01acc_c("NW_TOO_MUCH_ACC_REQUESTED:\n  w", NW_TOO_MUCH_ACC_REQUESTED, "testc", nullptr),
              ::testing::ExitedWithCode(1),
              "Warning from ZEM routine testc:\nNW_TOO_MUCH_ACC_REQUESTED:\n  w\n\\.\\.\\.ZEM Function Terminated\n");
  EXPECT_EXIT(p01acc_c(nullptr, NE_BAD_PARAM, "testc", nullptr), ::testing::ExitedWithCode(1),
              "Error detected by ZEM routine testc:\nNE_BAD_PARAM:");
}

// A stand-in adaptor of another kind: refuses its first `refusals` calls
// with the repeat status (as the guard does), then stores 2x.
int stand_in_calls;
int stand_in_refusals;
void stand_in(engine_data *en_data, zem_routine, const double *x, double *retval, int64_t *, double *) {
  ++stand_in_calls;
  if (stand_in_refusals-- > 0) {
    en_data->cb_status = zem::repeat_call;
    return;
  }
  *retval = 2.0 * *x;
}

TEST(CallbackChain, MarshalRepeatsRestoresTheModeAndDeliversTheValue) {
  // c05ay's chain reached directly.  The guard calls through only in mode 1;
  // the marshal layer turns a refusal into a repeat in mode 1, hands the
  // value back to the caller's place and restores the caller's mode.
  static int user_calls;
  auto user = [](const double *x, int64_t *, double *) {
    ++user_calls;
    return *x * 2.0;
  };
  struct {
    const char *what;
    c05ay_f_adaptor adaptor;
    int32_t mode;
    int refusals;
    int want_user_calls, want_stand_in_calls;
  } cases[] = {
      {"Fortran adaptor, mode 1", c05ayf_fh_, 1, 0, 1, 0},
      {"Fortran adaptor, mode 0 (not guarded)", c05ayf_fh_, 0, 0, 1, 0},
      {"guard, mode 1", c05ayf_internal_fh_, 1, 0, 1, 0},
      {"guard, mode 0: refused, repeated", c05ayf_internal_fh_, 0, 0, 1, 0},
      {"other adaptor", stand_in, 0, 0, 0, 1},
      {"other adaptor, two refusals", stand_in, 7, 2, 0, 3},
  };
  for (const auto &c : cases) {
    engine_data ed;
    y90haan_(&ed);
    ed.cb_mode = c.mode;
    user_calls = stand_in_calls = 0;
    stand_in_refusals = c.refusals;
    const double x = 1.5;
    double v = 0.0;
    int64_t iuser = 0;
    double ruser = 0.0;
    const int64_t status =
        c05ayf_marshal_fh_(c.adaptor, &ed, reinterpret_cast<zem_routine>(+user), &x, &v, &iuser, &ruser);
    EXPECT_EQ(status, 0) << c.what;
    EXPECT_EQ(v, 3.0) << c.what;
    EXPECT_EQ(user_calls, c.want_user_calls) << c.what;
    EXPECT_EQ(stand_in_calls, c.want_stand_in_calls) << c.what;
    EXPECT_EQ(ed.cb_mode, c.mode) << c.what;
    EXPECT_EQ(ed.cb_status, 0) << c.what;
  }
}

}  // namespace
