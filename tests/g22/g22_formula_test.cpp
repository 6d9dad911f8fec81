// The formula language, the handles and every failure of the chapter, as
// C callers see them (codes and exact messages).
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include <zem.h>

#include "g22/g22.h"

namespace {

struct outcome {
  int code;
  std::string message;
};

std::string pos_line(int p) {
  std::string s = "\n  The position in the formula string of the error is ";
  s += std::to_string(p);
  s += '.';
  return s;
}

// The terms of a parsed formula, "Intercept" first when the mean is in.
std::string expand(const char *formula) {
  zem::g22::formula_model m;
  zem::g22::error_record e;
  zem::g22::parse_formula(formula, m, e);
  if (e.failed()) return "error";
  std::string s = m.has_mean() ? "Intercept" : "";
  for (const auto &t : m.terms) {
    if (!s.empty()) s += ' ';
    s += zem::g22::term_label(m, t);
  }
  return s;
}

TEST(G22Formula, ExpansionOrderAndLabels) {
  const struct {
    const char *formula, *terms;
  } cases[] = {
      {"A*B", "Intercept A B A:B"},
      {"A.B", "Intercept A B A:B"},
      {"A*B*C", "Intercept A B C A:B A:C B:C A:B:C"},
      {"(A + B + C)^2", "Intercept A B C A:B A:C B:C"},
      {"(A + B + C)^007", "Intercept A B C A:B A:C B:C A:B:C"},
      {"(A + B)^1", "Intercept A B"},
      {"A:B:C + A", "Intercept A A:B:C"},
      {"B:A + A", "Intercept A B:A"},  // variables keep their order of first appearance
      {"A:A + B", "Intercept A B"},
      {"A*B - A", "Intercept B A:B"},
      {"A*B - A:B - 1", "A B"},
      {"-1 + A", "A"},
      {"A - 1 + 1", "Intercept A"},
      {"A - A", "Intercept"},
      {"A*(B + C)", "Intercept A B C A:B A:C"},
      {"(A + B):C", "Intercept A:C B:C"},
      {"(A - A + B)", "Intercept B"},
      {"A@SUM FIRST*B@HELMERT", "Intercept A@SUM FIRST B@HELMERT A@SUM FIRST:B@HELMERT"},
      {"  A  +B ", "Intercept A B"},
      {"A + B EXPLICIT_MEAN = YES", "A B"},
      {"1 + A EXPLICIT_MEAN = YES CONTRAST = SUM LAST", "Intercept A"},
  };
  for (const auto &c : cases) EXPECT_EQ(expand(c.formula), c.terms) << c.formula;
}

outcome parse(const char *formula) {
  void *h = nullptr;
  Zem_Fail fail = ZEM_FAIL_INIT;
  g22yac(&h, formula, &fail);
  g22zac(&h, nullptr);
  return {fail.code, fail.message};
}

TEST(G22Formula, EveryErrorWithItsPosition) {
  const std::string long_name(51, 'v');
  const std::string tab = std::string("A + B") + '\t' + "C";
  const struct {
    std::string formula;
    int code;
    std::string text;  // first lines of the message, then the position line
    int pos;
  } cases[] = {
      {"A + (B", NE_INVALID_FORMAT, "The formula contained a mismatched parenthesis.", 5},
      {"A + B)", NE_INVALID_FORMAT, "The formula contained a mismatched parenthesis.", 6},
      {"A B", NE_INVALID_FORMAT, "An operator was missing.", 3},
      {"(A + B)C", NE_INVALID_FORMAT, "An operator was missing.", 8},
      {"A + * B", NE_INVALID_FORMAT, "Invalid use of an operator.", 5},
      {"A +", NE_INVALID_FORMAT, "Invalid use of an operator.", 3},
      {"* A", NE_INVALID_FORMAT, "Invalid use of an operator.", 1},
      {"A^2", NE_INVALID_FORMAT, "Invalid specification for the power operator.", 2},
      {"(A + B)^x", NE_INVALID_FORMAT, "Invalid specification for the power operator.", 9},
      {"(A + B)^0", NE_INVALID_FORMAT, "Invalid specification for the power operator.", 9},
      {"1:A", NE_INVALID_FORMAT, "Invalid specification for the colon operator.", 2},
      {"A:1", NE_INVALID_FORMAT, "Invalid specification for the colon operator.", 2},
      {"A + 2", NE_INVALID_FORMAT, "Invalid specification for the mean.", 5},
      {"A*1", NE_INVALID_FORMAT, "Invalid specification for the mean.", 3},
      {"(A + 1)", NE_INVALID_FORMAT, "Invalid specification for the mean.", 6},
      {tab, NE_INVALID_FORMAT, "Invalid variable name.", 6},
      {"A + " + long_name, NE_INVALID_FORMAT, "Invalid variable name.", 5},
      {"A + @SUM", NE_INVALID_FORMAT, "Missing variable name.", 5},
      {"A + ()", NE_INVALID_FORMAT, "Missing variable name.", 6},
      {"A@FOO", NE_INVALID_FORMAT, "An invalid contrast specifier has been supplied.", 3},
      {"A@SUM  FIRST", NE_INVALID_FORMAT, "An invalid contrast specifier has been supplied.", 3},
      {"A@", NE_INVALID_FORMAT, "An invalid contrast specifier has been supplied.", 3},
      {"A + B FOO = 1", NE_INVALID_OPTION, "On entry, an invalid option was supplied in formula.", 7},
      {"A + B SORDER = Variables", NE_INVALID_OPTION, "On entry, an invalid option was supplied in formula.", 7},
      {"A + B CONTRAST=SUM LAST", NE_INVALID_FORMAT,
       "On entry, an option was supplied in formula,\n  but the expected delimiter ' = ' was not found.", 15},
      {"A + B CONTRAST = BAD", NE_INVALID_FORMAT,
       "On entry, an option was supplied in formula,\n  but the supplied optval was invalid.", 18},
      {"A@HELMERT:A@SUM LAST", NW_POTENTIAL_PROBLEM,
       "A term contained a repeated variable with a\n  different contrast specifier.", 10},
  };
  for (const auto &c : cases) {
    const outcome o = parse(c.formula.c_str());
    EXPECT_EQ(o.code, c.code) << c.formula;
    const char *name = c.code == NE_INVALID_OPTION ? "NE_INVALID_OPTION:\n  "
                       : c.code == NW_POTENTIAL_PROBLEM ? "NW_POTENTIAL_PROBLEM:\n  "
                                                        : "NE_INVALID_FORMAT:\n  ";
    std::string want = name;
    want += c.text;
    want += pos_line(c.pos);
    EXPECT_EQ(o.message, want) << c.formula;
  }
  // No terms: no position line.
  for (const char *f : {"A - A - 1", "", "   ", "-1", "CONTRAST = HELMERT"})
    EXPECT_EQ(parse(f).message, "NE_INVALID_FORMAT:\n  After processing, the model contains no terms.") << f;
  // Deep nesting and huge expansions stay bounded.
  std::string deep(300, '(');
  deep += 'A';
  deep.append(300, ')');
  EXPECT_EQ(parse(deep.c_str()).code, NE_INVALID_FORMAT);
  EXPECT_EQ(parse("(A+B+C+D+E+F+G+H+I+J+K+L+M+N+O+P+Q)^99999999999999999999").code, NE_INVALID_FORMAT);
}

// ---- Handles ----
outcome release(void *h) {
  Zem_Fail fail = ZEM_FAIL_INIT;
  g22zac(&h, &fail);
  return {fail.code, fail.message};
}

TEST(G22Handles, ForeignFreedCorruptedAndWrongKind) {
  void *hf = nullptr;
  g22yac(&hf, "A + B", nullptr);
  void *stale = hf;
  // A corrupted header (the kind word changed) is refused; restored, the
  // handle is released normally and its stale copy is refused after.
  uint64_t *words = static_cast<uint64_t *>(hf);
  words[1] = 3;
  EXPECT_EQ(release(hf).message, "NE_HANDLE:\n  handle has been corrupted.");
  words[1] = 1;
  EXPECT_EQ(release(hf).code, NE_NOERROR);
  hf = nullptr;
  const std::string unknown = "NE_HANDLE:\n  handle is a handle to an unknown data structure.";
  EXPECT_EQ(release(stale).message, unknown);
  double local[16] = {};
  EXPECT_EQ(release(local).message, unknown);
  EXPECT_EQ(release(reinterpret_cast<void *>(uintptr_t{0x1000})).message, unknown);
  EXPECT_EQ(release(reinterpret_cast<char *>(local) + 3).message, unknown);
  EXPECT_EQ(release(nullptr).code, NE_NOERROR);

  // Wrong kinds and strays given to the routines that take handles.
  Zem_Fail fail = ZEM_FAIL_INIT;
  void *hd = nullptr, *hx = nullptr;
  const int64_t levels[] = {1};
  g22ybc(&hd, 1, 1, levels, 0, nullptr, &fail);
  double dat[1] = {1.0}, x[4];
  int64_t mx = 0;
  g22ycc(hd, hd, dat, 1, 1, &hx, x, 1, 4, &mx, &fail);
  EXPECT_EQ(std::string(fail.message), "NE_HANDLE:\n  hform has not been initialized or is corrupt.");
  g22yac(&hf, "V1", &fail);
  g22ycc(hf, hf, dat, 1, 1, &hx, x, 1, 4, &mx, &fail);
  EXPECT_EQ(std::string(fail.message), "NE_HANDLE:\n  hddesc has not been initialized or is corrupt.");
  void *stray = local;
  g22ycc(hf, hd, dat, 1, 1, &stray, x, 1, 4, &mx, &fail);
  EXPECT_EQ(std::string(fail.message), "NE_HANDLE:\n  On entry, hxdesc is not NULL or a recognised G22 handle.");
  g22yac(&stray, "A", &fail);
  EXPECT_EQ(std::string(fail.message), "NE_HANDLE:\n  On entry, hform is not NULL or a recognised G22 handle.");
  g22ybc(&stray, 1, 1, levels, 0, nullptr, &fail);
  EXPECT_EQ(std::string(fail.message), "NE_HANDLE:\n  On entry, hddesc is not NULL or a recognised G22 handle.");
  g22zmc(nullptr, "CONTRAST = LAST", &fail);
  EXPECT_EQ(std::string(fail.message), "NE_HANDLE:\n  handle has not been initialized or is corrupt.");
  g22zmc(stray, "CONTRAST = LAST", &fail);
  EXPECT_EQ(std::string(fail.message), unknown);
  int64_t iv = 0, ot = 0;
  double rv = 0;
  char cv[8];
  g22znc(stray, "CONTRAST", &iv, &rv, cv, 8, &ot, &fail);
  EXPECT_EQ(std::string(fail.message), unknown);
  int64_t ii = 0, p = 0, ml = 0;
  g22ydc(0, hf, hf, &ii, &p, 0, nullptr, 0, nullptr, 0, nullptr, &ml, &fail);
  EXPECT_EQ(std::string(fail.message), "NE_HANDLE:\n  hxdesc has not been initialized or is corrupt.");
  // A handle of one kind replaces one of another kind in g22ya/g22yb.
  g22yac(&hd, "A", &fail);
  EXPECT_EQ(fail.code, NE_NOERROR);
  g22zac(&hd, &fail);
  g22zac(&hf, &fail);
  EXPECT_EQ(hf, nullptr);
}

// ---- Data descriptions ----
TEST(G22Data, Failures) {
  const std::string n51(51, 'n');
  std::string n51b(50, 'n');
  n51b += 'm';
  const struct {
    int64_t nobs, nvar, lvnames;
    std::vector<int64_t> levels;
    std::vector<std::string> names;
    int code;
    std::string message;
  } cases[] = {
      {-1, 1, 0, {1}, {}, NE_INT, "NE_INT:\n  On entry, nobs = -1.\n  Constraint: nobs >= 0."},
      {1, -2, 0, {}, {}, NE_INT, "NE_INT:\n  On entry, nvar = -2.\n  Constraint: nvar >= 0."},
      {1, 2, 0, {1, 0}, {}, NE_INT_ARRAY,
       "NE_INT_ARRAY:\n  On entry, j = 2 and levels[j-1] = 0.\n  Constraint: levels[i-1] >= 1."},
      {1, 2, 1, {1, 2}, {"a"}, NE_ARRAY_SIZE,
       "NE_ARRAY_SIZE:\n  On entry, lvnames = 1 and nvar = 2.\n  Constraint: lvnames = 0 or nvar."},
      {1, 2, 2, {1, 2}, {"a", "b c"}, NE_INVALID_FORMAT,
       "NE_INVALID_FORMAT:\n  On entry, variable name i contains one more invalid characters,\n  i = 2."},
      {1, 2, 2, {1, 2}, {"a", "a:b"}, NE_INVALID_FORMAT,
       "NE_INVALID_FORMAT:\n  On entry, variable name i contains one more invalid characters,\n  i = 2."},
      {1, 3, 3, {1, 2, 1}, {"a", "b", "a"}, NE_NON_UNIQUE,
       "NE_NON_UNIQUE:\n  On entry, variable names i and j are not unique,\n  i = 1 and j = 3."},
      {1, 2, 2, {1, 2}, {n51, n51b}, NE_NON_UNIQUE,
       "NE_NON_UNIQUE:\n  On entry, variable names i and j are not unique (possibly due to truncation),\n"
       "  i = 1 and j = 2.\n  Maximum variable name length is 50."},
      {1, 2, 2, {1, 2}, {n51, "b"}, NW_TRUNCATED,
       "NW_TRUNCATED:\n  At least one variable name was truncated to 50 characters.\n"
       "  Each truncated name is unique and will be used in all output."},
  };
  for (const auto &c : cases) {
    void *h = nullptr;
    std::vector<const char *> names;
    for (const auto &n : c.names) names.push_back(n.c_str());
    Zem_Fail fail = ZEM_FAIL_INIT;
    g22ybc(&h, c.nobs, c.nvar, c.levels.data(), c.lvnames, names.data(), &fail);
    EXPECT_EQ(fail.code, c.code);
    EXPECT_EQ(std::string(fail.message), c.message);
    EXPECT_EQ(h != nullptr, c.code == NW_TRUNCATED);  // a warning leaves the handle made
    g22zac(&h, nullptr);
  }
}

// ---- Design matrices: failures, size queries, warnings ----
struct design_fixture {
  void *hf = nullptr, *hd = nullptr, *hx = nullptr;
  Zem_Fail fail = ZEM_FAIL_INIT;
  // Three observations of A (2 levels) and x.
  double dat[6] = {1, 2, 1, 0.5, 1.5, 2.5};
  design_fixture(const char *formula, std::vector<int64_t> levels = {2, 1}) {
    const char *names[] = {"A", "x"};
    g22ybc(&hd, 3, 2, levels.data(), 2, names, nullptr);
    g22yac(&hf, formula, &fail);
  }
  ~design_fixture() {
    g22zac(&hf, nullptr);
    g22zac(&hd, nullptr);
    g22zac(&hx, nullptr);
  }
  int64_t build(double *x, int64_t ldx, int64_t sdx) {
    int64_t mx = -1;
    g22ycc(hf, hd, dat, 3, 2, &hx, x, ldx, sdx, &mx, &fail);
    return mx;
  }
};

TEST(G22Design, FailuresAndSizeQueries) {
  double x[32];
  {
    design_fixture f("A + y");
    f.build(x, 3, 8);
    EXPECT_EQ(std::string(f.fail.message), "NE_FIELD_UNKNOWN:\n  A variable name used when creating hform is "
                                           "not present in hddesc.\n  Variable name: y.");
    EXPECT_EQ(f.hx, nullptr);
  }
  {
    design_fixture f("A");
    f.dat[1] = 3;
    f.build(x, 3, 8);
    EXPECT_EQ(std::string(f.fail.message),
              "NE_REAL_ARRAY_INPUT:\n  On entry, categorical variable 1,\n  observation 2: value 3.0.\n"
              "  Constraint: each value is a level number, 1 to levels[j-1].");
    f.dat[1] = 1.5;
    f.build(x, 3, 8);
    EXPECT_EQ(f.fail.code, NE_REAL_ARRAY_INPUT);
  }
  {
    design_fixture f("A*x");
    int64_t mx = f.build(nullptr, 0, 0);
    EXPECT_EQ(mx, 4);
    EXPECT_EQ(std::string(f.fail.message), "NW_ARRAY_SIZE:\n  On entry, n = 3 and pdx = 0.\n  Constraint: pdx >= n.");
    EXPECT_NE(f.hx, nullptr);
    mx = f.build(x, 3, 2);
    EXPECT_EQ(std::string(f.fail.message),
              "NW_ARRAY_SIZE:\n  On entry, m_x = 4 and sdx = 2.\n  Constraint: sdx >= m_x.");
    g22zmc(f.hd, "SORDER = VARIABLES", &f.fail);
    const double vdat[6] = {1, 0.5, 2, 1.5, 1, 2.5};
    g22ycc(f.hf, f.hd, vdat, 2, 3, &f.hx, x, 2, 3, &mx, &f.fail);
    EXPECT_EQ(std::string(f.fail.message),
              "NW_ARRAY_SIZE:\n  On entry, m_x = 4 and pdx = 2.\n  Constraint: pdx >= m_x.");
    g22ycc(f.hf, f.hd, vdat, 2, 3, &f.hx, x, 4, 2, &mx, &f.fail);
    EXPECT_EQ(std::string(f.fail.message), "NW_ARRAY_SIZE:\n  On entry, n = 3 and sdx = 2.\n  Constraint: sdx >= n.");
    g22ycc(f.hf, f.hd, f.dat, 1, 3, &f.hx, x, 4, 3, &mx, &f.fail);
    EXPECT_EQ(std::string(f.fail.message), "NE_INT:\n  On entry, lddat = 1 and nvar = 2.\n  Constraint: lddat >= nvar.");
  }
  {
    design_fixture f("A + x - 1", {1, 1});  // the design matrix is dat itself
    EXPECT_EQ(f.build(nullptr, 0, 0), 2);
    EXPECT_EQ(std::string(f.fail.message), "NW_ALTERNATIVE:\n  On entry, the size of x is too small to hold the "
                                           "design matrix.\n  dat can be used instead.");
  }
  {
    design_fixture f("A:x - 1");
    EXPECT_EQ(f.build(x, 3, 8), 2);
    EXPECT_EQ(f.fail.code, NW_POTENTIAL_PROBLEM);
    EXPECT_EQ(x[0], 0.5);  // the matrix is written: x:A1, x:A2
    EXPECT_EQ(x[3], 0.0);
  }
}

// ---- g22yd ----
TEST(G22Submodel, ColumnsLabelsInfoAndFailures) {
  const int64_t levels[] = {2, 3, 1};
  const char *names[] = {"A", "B", "x"};
  double dat[12] = {1, 2, 1, 2, 1, 2, 3, 3, 0.1, 0.2, 0.3, 0.4};
  void *hd = nullptr, *hf = nullptr, *hm = nullptr, *hx = nullptr;
  Zem_Fail fail = ZEM_FAIL_INIT;
  g22ybc(&hd, 4, 3, levels, 3, names, &fail);
  g22yac(&hf, "A*B + x", &fail);
  double x[4 * 7];
  int64_t mx = 0;
  g22ycc(hf, hd, dat, 4, 3, &hx, x, 4, 7, &mx, &fail);
  ASSERT_EQ(mx, 7);  // Intercept A2 B2 B3 x A2:B2 A2:B3

  int64_t ii = 0, p = 0, isx[7], vinfo[64], ml = 6;
  char plab[7 * 6];
  g22yac(&hm, "B + x", &fail);
  g22ydc(0, hm, hx, &ii, &p, 7, isx, 7, plab, 64, vinfo, &ml, &fail);
  ASSERT_EQ(fail.code, NE_NOERROR) << fail.message;
  EXPECT_EQ(p, 4);
  EXPECT_EQ(ii, 1);
  EXPECT_EQ(ml, 9);  // "Intercept"
  const int64_t want_isx[] = {1, 0, 1, 1, 1, 0, 0};
  for (int j = 0; j < 7; ++j) EXPECT_EQ(isx[j], want_isx[j]);
  EXPECT_EQ(std::string(plab), "Inter");  // cut to the field
  EXPECT_EQ(std::string(plab + 6), "B2");
  const int64_t want_vinfo[] = {0, 0, 2, 1, 2, 1, 2, 1, 2, 2, 3, 1, 3, 0};
  for (int j = 0; j < 14; ++j) EXPECT_EQ(vinfo[j], want_vinfo[j]) << j;

  // Too short: the minimum lengths come back in vinfo[0..2].
  g22ydc(0, hm, hx, &ii, &p, 3, isx, 0, nullptr, 3, vinfo, &ml, &fail);
  EXPECT_EQ(std::string(fail.message), "NE_INT:\n  On entry, lisx = 3 and m_x = 7.\n  Constraint: lisx = 0 or lisx >= m_x.");
  EXPECT_EQ(vinfo[0], 7);
  EXPECT_EQ(vinfo[1], 4);
  EXPECT_EQ(vinfo[2], 14);
  g22ydc(0, hm, hx, &ii, &p, 0, nullptr, 2, plab, 0, nullptr, &ml, &fail);
  EXPECT_EQ(std::string(fail.message), "NE_INT:\n  On entry, lplab = 2 and p = 4.\n  Constraint: lplab = 0 or lplab >= p.");
  g22ydc(0, hm, hx, &ii, &p, 0, nullptr, 0, nullptr, 5, vinfo, &ml, &fail);
  EXPECT_EQ(std::string(fail.message), "NE_INT:\n  On entry, lvinfo = 5,\n  the required length is 14.\n"
                                       "  Constraint: lvinfo = 0 or lvinfo >= the required length.");
  // Inconsistent models, other contrasts, unknown what.
  const struct {
    const char *formula;
    int64_t what;
    int code;
    std::string message;
  } cases[] = {
      {"A:x", 0, NE_NOT_CONS,
       "NE_NOT_CONS:\n  The model and the design matrix are not consistent.\n  The model includes a term not "
       "present in the design matrix.\n  Term: A:x."},
      {"A CONTRAST = HELMERT", 0, NW_NOT_CONS,
       "NW_NOT_CONS:\n  The model specifies different contrasts to those used when the design matrix\n  was "
       "constructed. The contrasts specified in hform will be ignored."},
      {"A", 2, NE_INVALID_ENUM_RANGE,
       "NE_INVALID_ENUM_RANGE:\n  Supplied value of what is not valid for the G22 handle supplied in hxdesc."},
  };
  for (const auto &c : cases) {
    g22yac(&hm, c.formula, &fail);
    g22ydc(c.what, hm, hx, &ii, &p, 0, nullptr, 0, nullptr, 0, nullptr, &ml, &fail);
    EXPECT_EQ(fail.code, c.code);
    EXPECT_EQ(std::string(fail.message), c.message);
  }
  g22yac(&hm, "A - 1", &fail);
  void *hx2 = nullptr;
  g22ycc(hm, hd, dat, 4, 3, &hx2, x, 4, 7, &mx, &fail);
  g22ydc(0, hf, hx2, &ii, &p, 0, nullptr, 0, nullptr, 0, nullptr, &ml, &fail);
  EXPECT_EQ(std::string(fail.message), "NE_NOT_CONS:\n  The model and the design matrix are not consistent.\n"
                                       "  The model includes a term not present in the design matrix.\n  Term: B.");
  g22yac(&hm, "A", &fail);
  g22ydc(0, hm, hx2, &ii, &p, 0, nullptr, 0, nullptr, 0, nullptr, &ml, &fail);
  EXPECT_EQ(std::string(fail.message), "NE_NOT_CONS:\n  The model and the design matrix are not consistent.\n"
                                       "  The model includes a mean effect not present in the design matrix.");
  for (void **h : {&hd, &hf, &hm, &hx, &hx2}) g22zac(h, nullptr);
}

// ---- Options ----
TEST(G22Options, SetAndReadByLongAndShortNames) {
  void *hf = nullptr, *hd = nullptr;
  Zem_Fail fail = ZEM_FAIL_INIT;
  g22yac(&hf, "A + B SUBJECT = S", &fail);
  const int64_t levels[] = {1};
  g22ybc(&hd, 1, 1, levels, 0, nullptr, &fail);
  auto read = [&](void *h, const char *name) {
    int64_t iv = 0, ot = 0;
    double rv = 0;
    char cv[64];
    g22znc(h, name, &iv, &rv, cv, 64, &ot, &fail);
    return fail.code ? std::string(fail.message) : ot == 1 ? std::to_string(iv) : std::string(cv);
  };
  EXPECT_EQ(read(hf, "contrast"), "FIRST");
  EXPECT_EQ(read(hf, "Subject"), "S");
  EXPECT_EQ(read(hf, "EXPLICIT MEAN"), "NO");
  EXPECT_EQ(read(hd, "sorder"), "Observations");
  EXPECT_EQ(read(hf, "FORMULA"), "A + B SUBJECT = S");
  EXPECT_EQ(read(hf, "PRINT"), "6");
  const struct {
    void *h;
    const char *optstr;
    std::string message;  // "" success
  } cases[] = {
      {hf, "Contrast = sum first", ""},
      {hf, "EXPLICIT_MEAN = yes", ""},
      {hd, "STORAGE ORDER = Variables", ""},
      {hf, "FOO = 1", "NE_INVALID_OPTION:\n  On entry, option was not recognized.\n  optstr: FOO = 1"},
      {hd, "CONTRAST = LAST", "NE_INVALID_OPTION:\n  On entry, option was not recognized.\n  optstr: CONTRAST = LAST"},
      {hf, "FORMULA = A", "NE_WRITE_ERROR:\n  On entry, option is read only.\n  optstr: FORMULA = A"},
      {hf, "CONTRAST=LAST", "NE_INVALID_FORMAT:\n  On entry, the expected delimiter ' = ' was not found.\n"
                            "  optstr: CONTRAST=LAST"},
      {hf, "CONTRAST LAST", "NE_INVALID_FORMAT:\n  On entry, the expected delimiter ' = ' was not found.\n"
                            "  optstr: CONTRAST LAST"},
      {hf, "PRINT = six", "NE_INVALID_FORMAT:\n  On entry, could not convert optval to an integer.\n"
                          "  optstr: PRINT = six"},
      {hf, "CONTRAST = ODD", "NE_INVALID_VALUE:\n  On entry, optval is not a valid value for option.\n"
                             "  optstr: CONTRAST = ODD"},
      {hf, "PRINT = -1", ""},
  };
  for (const auto &c : cases) {
    g22zmc(c.h, c.optstr, &fail);
    EXPECT_EQ(fail.code ? std::string(fail.message) : "", c.message) << c.optstr;
  }
  EXPECT_EQ(read(hf, "CONTRAST"), "SUM FIRST");
  EXPECT_EQ(read(hf, "explicit_mean"), "YES");
  EXPECT_EQ(read(hd, "Storage Order"), "Variables");
  EXPECT_EQ(read(hf, "NOPE"), "NE_INVALID_OPTION:\n  On entry, option was not recognized.\n  optstr: NOPE");
  g22zac(&hf, nullptr);
  g22zac(&hd, nullptr);
}

}  // namespace
