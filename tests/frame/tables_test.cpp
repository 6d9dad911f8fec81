// The exported message templates, the name tables and the machine constants.
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstring>
#include <string>

#include <zem.h>

namespace {

TEST(ErrList, TemplatesOfTheDocumentedCodes) {
  struct {
    int code;
    const char *text;
  } cases[] = {
      {0, "NE_NOERROR:\n  No error."},
      {1, "NE_CODE_NOT_SET:\n  Error code has not been set by the last function called."},
      {3, "NE_TOO_MANY:\n  Too many iterations (%ld)."},
      {68, "NE_USER_STOP:\n  User requested termination, user flag value = %1ld."},
      {70, "NE_BAD_PARAM:\n  On entry, parameter %s had an illegal value."},
      {72, "NE_ARG_INVALID:\n  On entry, %s = %1ld.\n Constraint: %s must be one of %s."},
      {73, "NE_ALLOC_FAIL:\n  Memory allocation failed."},
      {74, "NE_INTERNAL_ERROR:\n  An internal error has occurred in this function.\n  Check the function call and any "
           "array sizes. If the call is correct\n  then please consult ZEM for assistance."},
      {100, "NE_REAL:\n  On entry, %s = %g.\n  Constraint: %s."},
      {101, "NE_REAL_2:\n  On entry, %s = %g, %s = %g.\n  Constraint: %s."},
      {139, "NE_FUNC_END_VAL:\n  On entry, f(%s) and f(%s) have the same sign, with f(%s) != 0.0."},
      {140, "NE_PROBABLE_POLE:\n  Indicates that the function values in the interval %s might\n  contain a pole rather "
            "than a zero. Reducing xtol may help\n  in distinguishing between a pole and a zero."},
      {555, "NE_TOO_SMALL:\n  On entry, the value of %s is too small."},
  };
  for (const auto &c : cases) EXPECT_STREQ(zem_errlist[c.code], c.text) << c.code;
  EXPECT_EQ(ZEM_ERRLIST_SIZE, 746);
  // Every entry starts with a name and a colon; continuation lines are
  // indented (two blanks; one in NE_ARG_INVALID's constraint line).
  for (int i = 0; i < ZEM_ERRLIST_SIZE; ++i) {
    const std::string t = zem_errlist[i];
    ASSERT_TRUE(t.rfind("NE_", 0) == 0 || t.rfind("NW_", 0) == 0) << i;
    ASSERT_NE(t.find(":\n  "), std::string::npos) << i;
    for (size_t p = t.find('\n'); p != std::string::npos; p = t.find('\n', p + 1)) EXPECT_EQ(t[p + 1], ' ') << i;
  }
}

TEST(NameTables, ErrorNamesInNumberOrderWithTheGenericFamily) {
  const char *family[] = {
      "NE_NOERROR", "NE_CODE_NOT_SET", "NE_ERR_MSG_STRING", "NE_TOO_MANY", "NE_REAL_ARG_EQ", "NE_REAL_ARG_LT",
      "NE_REAL_ARG_LE", "NE_REAL_ARG_GT", "NE_REAL_ARG_GE", "NE_REAL_ARG_CONS", "NE_INT_ARG_EQ", "NE_INT_ARG_LT",
      "NE_INT_ARG_LE", "NE_INT_ARG_GT", "NE_INT_ARG_GE", "NE_INT_ARG_CONS", "NE_2_INT_ARG_EQ", "NE_2_INT_ARG_LT",
      "NE_2_INT_ARG_LE", "NE_2_INT_ARG_GT", "NE_2_INT_ARG_GE", "NE_2_INT_ARG_ZERO", "NE_2_REAL_ARG_EQ",
      "NE_2_REAL_ARG_LT", "NE_2_REAL_ARG_LE", "NE_2_REAL_ARG_GT", "NE_2_REAL_ARG_GE", "NE_2_REAL_ARG_TOO_CLOSE",
      "NE_2_INT_ARG_CONS", "NE_3_INT_ARG_CONS", "NE_4_INT_ARG_CONS", "NE_2_REAL_ARG_CONS", "NE_3_REAL_ARG_CONS",
      "NE_4_REAL_ARG_CONS", "NE_2_REAL_ENUM_ARG_CONS", "NE_3_REAL_ENUM_ARG_CONS", "NE_REAL_INT_ARG_CONS",
      "NE_REAL_ENUM_ARG_CONS", "NE_ENUM_ENUM_ARG_CONS", "NE_INVALID_INT_RANGE_1", "NE_INVALID_INT_RANGE_2",
      "NE_INVALID_REAL_RANGE_E", "NE_INVALID_REAL_RANGE_F", "NE_INVALID_REAL_RANGE_EE", "NE_INVALID_REAL_RANGE_EF",
      "NE_INVALID_REAL_RANGE_FF", "NE_INVALID_REAL_RANGE_FE", "NE_INVALID_REAL_RANGE_CONS", "NE_INT_RANGE_CONS",
      "NE_INT_RANGE_CONS_2", "NE_REAL_RANGE_CONS", "NE_2_INT_REAL_ARG_CONS", "NE_2_REAL_INT_ARG_CONS",
      "NE_INT_ARRAY_1", "NE_INT_ARRAY_2", "NE_REAL_ARRAY_INPUT", "NE_INT_ARRAY_VAL_1_OR_2", "NE_REAL_ARRAY_CONS",
      "NE_ARRAY_CONS", "NE_ARRAY_INPUT", "NE_2_REAL_ARRAYS_CONS", "NE_REAL_ARRAY_ELEM_CONS", "NE_NOT_INCREASING",
      "NE_NOT_STRICTLY_INCREASING", "NE_NOT_DECREASING", "NE_NOT_STRICTLY_DECREASING", "NE_NOT_NON_DECREASING",
      "NE_NO_NORMALISATION", "NE_USER_STOP", "NE_BOOL_NOT_SET", "NE_BAD_PARAM", "NE_F06_BAD_PARAM",
      "NE_ARG_INVALID", "NE_ALLOC_FAIL", "NE_INTERNAL_ERROR", "NE_MESG_NOT_INIT", "NE_NOT_READ_FILE",
      "NE_NOT_WRITE_FILE", "NE_NOT_APPEND_FILE", "NE_NOT_CLOSE_FILE"};
  ASSERT_GE(Zem_ErrorNameTableSize, 80);
  for (int i = 0; i < 80; ++i) {
    EXPECT_STREQ(errornametable[i].name, family[i]);
    EXPECT_EQ(errornametable[i].value, i);
  }
  for (int i = 1; i < Zem_ErrorNameTableSize; ++i) EXPECT_LT(errornametable[i - 1].value, errornametable[i].value);
  struct {
    const char *name;
    int value;
  } fixed[] = {{"NE_INT", 90}, {"NE_REAL", 100}, {"NE_REAL_2", 101}, {"NE_FUNC_END_VAL", 139},
               {"NE_PROBABLE_POLE", 140}, {"NE_TOO_SMALL", 555}, {"NW_TOO_MUCH_ACC_REQUESTED", 2143},
               {"NE_NOT_SIGN_CHANGE", 2145}};
  for (const auto &f : fixed) {
    bool found = false;
    for (int i = 0; i < Zem_ErrorNameTableSize; ++i)
      if (std::strcmp(errornametable[i].name, f.name) == 0) found = errornametable[i].value == f.value;
    EXPECT_TRUE(found) << f.name;
  }
}

TEST(NameTables, EnumerationMembersSortedByNameWithUniqueNumbers) {
  ASSERT_GT(Zem_EnumTableTypeSize, 0);
  for (int i = 1; i < Zem_EnumTableTypeSize; ++i)
    EXPECT_LT(std::strcmp(enumtable[i - 1].name, enumtable[i].name), 0) << enumtable[i].name;
  for (int i = 0; i < Zem_EnumTableTypeSize; ++i)
    for (int j = 0; j < i; ++j) EXPECT_NE(enumtable[i].value, enumtable[j].value);
  auto value_of = [](const char *name) {
    for (int i = 0; i < Zem_EnumTableTypeSize; ++i)
      if (std::strcmp(enumtable[i].name, name) == 0) return enumtable[i].value;
    return -1;
  };
  EXPECT_EQ(value_of("Zem_Mixed"), 1089);
  EXPECT_EQ(value_of("Zem_Absolute"), 1088);
  EXPECT_EQ(value_of("Zem_Relative"), 1087);
}

template <typename T>
uint64_t bits(T v) {
  return std::bit_cast<uint64_t>(v);
}

TEST(MachineConstants, BitExactInBothInterfaces) {
  struct {
    double (*c)(void);
    double (*f)(void);
    uint64_t bits;
  } reals[] = {
      {x02ahc, x02ahf_, 0x4950000000000000}, {x02ajc, x02ajf_, 0x3CA0000000000000},
      {x02akc, x02akf_, 0x0010000000000000}, {x02alc, x02alf_, 0x7FEFFFFFFFFFFFFF},
      {x02amc, x02amf_, 0x0010000000000001}, {x02anc, x02anf_, 0x0010000000000001},
  };
  for (const auto &r : reals) {
    EXPECT_EQ(bits(r.c()), r.bits);
    EXPECT_EQ(bits(r.f()), r.bits);
  }
  struct {
    int64_t (*c)(void);
    int64_t (*f)(void);
    int64_t value;
  } ints[] = {{x02bbc, x02bbf_, INT64_MAX}, {x02bec, x02bef_, 15}, {x02bhc, x02bhf_, 2},
              {x02bjc, x02bjf_, 53},       {x02bkc, x02bkf_, -1021}, {x02blc, x02blf_, 1024}};
  for (const auto &i : ints) {
    EXPECT_EQ(i.c(), i.value);
    EXPECT_EQ(i.f(), i.value);
  }
  // The properties the constants stand for.
  volatile double one = 1.0;
  EXPECT_EQ(one + x02ajc(), 1.0);
  EXPECT_EQ(std::nextafter(1.0, 2.0) - 1.0, 2.0 * x02ajc());
  EXPECT_GT(x02amc(), x02akc());
  EXPECT_TRUE(std::isfinite(1.0 / x02amc()));
}

}  // namespace
