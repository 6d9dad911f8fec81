// The option registry checks itself: names, types, slots, defaults within
// their bounds, keyword codes; then the name look-up, the default loop in
// both modes, and the conversion of settings.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <algorithm>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "e04/option_parse.h"
#include "e04/registry.h"
#include "frame/units.h"

using namespace zem::e04;

namespace {

const double eps = std::ldexp(1.0, -53);

bool within(const option_info &o, double v) {
  if (o.lo_kind == b_ge && !(v >= o.lo)) return false;
  if (o.lo_kind == b_gt && !(v > o.lo)) return false;
  if (o.hi_kind == b_le && !(v <= o.hi)) return false;
  if (o.hi_kind == b_lt && !(v < o.hi)) return false;
  return true;
}

TEST(Registry, NamesTypesAndSlots) {
  std::set<std::string> names;
  std::set<int> iwords, rslots;
  for (int i = 0; i < option_count; ++i) {
    const option_info &o = registry[i];
    SCOPED_TRACE(std::string(o.name));
    const std::string up(upper_name_of(i));
    EXPECT_TRUE(names.insert(up).second) << "repeated name";
    EXPECT_LE(up.size(), 30u);
    EXPECT_EQ(up.find("  "), std::string::npos);
    EXPECT_NE(up.front(), ' ');
    EXPECT_NE(up.back(), ' ');
    EXPECT_TRUE(o.type == 1 || o.type == 2 || o.type == 3 || o.type == 5 || o.type == 6 || o.type == 7);
    EXPECT_FALSE(o.help.empty());
    // Storage: two integer words per integer or character option, one real
    // value and one integer status word per real option; no word shared.
    if (is_real(o)) {
      EXPECT_EQ(o.islot >= 0 && o.islot < int_store_words && iwords.insert(o.islot).second, true);
      EXPECT_EQ(o.rslot >= 0 && o.rslot < real_store_words && rslots.insert(o.rslot).second, true);
    } else {
      EXPECT_EQ(o.rslot, -1);
      EXPECT_TRUE(o.islot >= 0 && o.islot + 1 < int_store_words);
      EXPECT_TRUE(iwords.insert(o.islot).second && iwords.insert(o.islot + 1).second);
    }
  }
}

TEST(Registry, DefaultsWithinBoundsAndKeywordsConsistent) {
  for (int i = 0; i < option_count; ++i) {
    const option_info &o = registry[i];
    SCOPED_TRACE(std::string(o.name));
    EXPECT_TRUE(o.lo_kind == b_none || o.lo_kind == b_ge || o.lo_kind == b_gt);
    EXPECT_TRUE(o.hi_kind == b_none || o.hi_kind == b_le || o.hi_kind == b_lt);
    if (o.lo_kind != b_none && o.hi_kind != b_none) {
      EXPECT_LT(o.lo, o.hi);
    }
    const auto kws = keywords_of(i);
    if (is_character(o)) {
      EXPECT_EQ(o.lo_kind, b_none);
      EXPECT_EQ(o.hi_kind, b_none);
      ASSERT_GE(kws.size(), 2u);
      std::set<std::string_view> words;
      for (const keyword &k : kws) {
        EXPECT_TRUE(words.insert(k.word).second) << "repeated keyword " << k.word;
        for (char c : k.word) EXPECT_FALSE(c >= 'a' && c <= 'z') << k.word;
        EXPECT_EQ(k.word.find("  "), std::string_view::npos);
      }
      EXPECT_FALSE(keyword_of_code(i, o.idef).empty()) << "default code " << o.idef << " has no keyword";
    } else {
      EXPECT_TRUE(kws.empty());
      if (is_real(o)) {
        EXPECT_TRUE(std::isfinite(o.rdef));
        EXPECT_TRUE(within(o, o.rdef)) << o.rdef;
      } else if (o.idef != adv_unit_default) {
        EXPECT_TRUE(within(o, static_cast<double>(o.idef))) << o.idef;
      }
    }
  }
}

// The registry's order, group by group, and the values the option tables
// fix (the powers of the machine precision evaluated).
TEST(Registry, OrderAndFixedDefaults) {
  const struct {
    int number;
    const char *name;
  } order[] = {{1, "OUTER ITERATION LIMIT"}, {4, "INFINITE BOUND SIZE"},  {75, "REG COEFFICIENT"},
               {76, "LPIPM CENTRALITY CORRECTORS"}, {113, "DFO TRUST REGION TOLERANCE"},
               {138, "DFLS SMALL RESIDUALS TOL"}, {141, "FOAS ITERATION LIMIT"}, {154, "DFNO OBJECTIVE LIMIT"},
               {158, "SOCP SYSTEM FORMULATION"}, {195, "BXNL MONITOR FREQUENCY"},
               {235, "MCS INITIALIZATION METHOD"}, {248, "SSQP FUNCTION PRECISION"},
               {294, "NLDF LOSS FUNCTION TYPE"}, {303, "NLDF MONITOR FREQUENCY"}};
  for (const auto &o : order) EXPECT_EQ(find_index(o.name) + 1, o.number) << o.name;

  option_set s;
  init_options(s);
  const struct {
    opt id;
    double value;
    double lo;
    bound_kind lo_kind;
    double hi;
    bound_kind hi_kind;
  } fixed[] = {
      {opt::infinite_bound_size, 1.0e20, 1000, b_ge, 0, b_none},
      {opt::print_level, 2, 0, b_ge, 5, b_le},
      {opt::monitoring_file, -1, -1, b_ge, 0, b_none},
      {opt::monitoring_level, 4, 0, b_ge, 5, b_le},
      {opt::time_limit, 1.0e6, 0, b_gt, 0, b_none},
      {opt::foas_iteration_limit, 10000000, 0, b_gt, 0, b_none},
      {opt::foas_memory, 11, 0, b_ge, 100, b_le},
      {opt::foas_monitor_frequency, 0, 0, b_ge, 0, b_none},
      {opt::foas_print_frequency, 1, 1, b_ge, 0, b_none},
      {opt::foas_progress_tolerance, std::pow(eps, 0.75), 0, b_gt, 1, b_lt},
      {opt::foas_rel_stop_tolerance, std::pow(eps, 0.75), 0, b_ge, 1, b_lt},
      {opt::foas_restart_factor, 6.0, 0, b_ge, 0, b_none},
      {opt::foas_slow_tolerance, std::pow(eps, 0.125), 0, b_gt, 0, b_none},
      {opt::foas_stop_tolerance, 1.0e-6, 0, b_ge, 1, b_lt},
      {opt::foas_finite_diff_interval, std::sqrt(eps), 1.0e-12, b_ge, 0.1, b_le},
  };
  for (const auto &f : fixed) {
    const option_info &o = info(f.id);
    SCOPED_TRACE(std::string(o.name));
    EXPECT_EQ(is_real(o) ? real_value(s, f.id) : static_cast<double>(int_value(s, f.id)), f.value);
    EXPECT_EQ(o.lo_kind, f.lo_kind);
    EXPECT_EQ(o.hi_kind, f.hi_kind);
    if (f.lo_kind != b_none) {
      EXPECT_EQ(o.lo, f.lo);
    }
    if (f.hi_kind != b_none) {
      EXPECT_EQ(o.hi, f.hi);
    }
  }
  EXPECT_EQ(real_value(s, opt::foas_progress_tolerance), 1.0815775704056441e-12);
  EXPECT_EQ(real_value(s, opt::foas_slow_tolerance), 0.010131559020711013);
  EXPECT_EQ(real_value(s, opt::foas_finite_diff_interval), 1.0536712127723509e-08);
  EXPECT_EQ(int_value(s, opt::print_file), zem::adv_unit());

  // Keyword counts the option table fixes.
  const struct {
    const char *name;
    size_t count;
  } counts[] = {{"PRINT SOLUTION", 7}, {"STATS TIME", 8}, {"TASK", 9}, {"VERIFY DERIVATIVES", 6},
                {"MATRIX ORDERING", 4}, {"FOAS SUBSOLVER", 3}, {"FOAS TOLERANCE NORM", 4},
                {"FOAS ESTIMATE DERIVATIVES", 4}, {"PRINT OPTIONS", 4}};
  for (const auto &c : counts) EXPECT_EQ(keywords_of(find_index(c.name)).size(), c.count) << c.name;
}

TEST(Registry, NameLookup) {
  for (int i = 0; i < option_count; ++i) {
    std::string lower(registry[i].name);
    for (char &c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    EXPECT_EQ(find_index(lower), i);
    EXPECT_EQ(find_index("  " + std::string(registry[i].name) + " \t"), i);
    EXPECT_EQ(find_option(registry[i].name), static_cast<opt>(i + 1));
  }
  EXPECT_EQ(find_index("Print  Level"), static_cast<int>(opt::print_level) - 1);
  for (const char *bad : {"", "   ", "Print", "PrintLevel", "Print Level X", "DEFAULTS",
                          "SSQP PROXIMAL POINT METHOD NRMX", "NLDF CAUCHY FUNCTION SHARPNESS 1"})
    EXPECT_EQ(find_index(bad), -1) << bad;
  EXPECT_EQ(display_name(opt::dfo_trust_region_tolerance), "DFO Trust Region Tolerance");
  EXPECT_EQ(upper_name(opt::infinite_bound_size), "INFINITE BOUND SIZE");
}

TEST(Registry, DefaultLoopInBothModes) {
  option_set s;
  std::memset(&s, 0x5a, sizeof s);
  init_options(s, 7);
  EXPECT_EQ(s.solver_id, 7);
  EXPECT_EQ(s.final_word, 0);
  for (int i = 0; i < option_count; ++i) EXPECT_EQ(status_of(s, static_cast<opt>(i + 1)), status_default);

  EXPECT_EQ(apply_setting(s, "Print Level", "4").outcome, set_outcome::ok);
  EXPECT_EQ(apply_setting(s, "Stop Tolerance 1", "1e-9").outcome, set_outcome::ok);
  solver_set_int(s, opt::foas_memory, 3);
  solver_set_real(s, opt::time_limit, 5.0);
  solver_set_int(s, opt::task, 2);
  fill_defaults(s, fill_mode::solver_changed);
  EXPECT_EQ(int_value(s, opt::print_level), 4);
  EXPECT_EQ(status_of(s, opt::print_level), status_user);
  EXPECT_EQ(real_value(s, opt::stop_tolerance_1), 1e-9);
  EXPECT_EQ(int_value(s, opt::foas_memory), 11);
  EXPECT_EQ(real_value(s, opt::time_limit), 1.0e6);
  EXPECT_EQ(int_value(s, opt::task), 1);
  EXPECT_EQ(status_of(s, opt::task), status_default);
  fill_defaults(s, fill_mode::all);
  EXPECT_EQ(int_value(s, opt::print_level), 2);
  EXPECT_EQ(status_of(s, opt::print_level), status_default);
}

TEST(Settings, ConversionBoundsAndKeywords) {
  const struct {
    const char *name;
    const char *value;
    set_outcome outcome;
    double stored;  // the value read back (keyword code for a character option)
  } cases[] = {
      {"print level", " 3 ", set_outcome::ok, 3},
      {"Print Level", "+5", set_outcome::ok, 5},
      {"Print Level", "1.5", set_outcome::not_integer, 0},
      {"Print Level", "1e0", set_outcome::not_integer, 0},
      {"Print Level", "", set_outcome::not_integer, 0},
      {"Print Level", "99999999999999999999", set_outcome::not_integer, 0},
      {"Print Level", "6", set_outcome::int_bound, 0},
      {"Print Level", "-1", set_outcome::int_bound, 0},
      {"FOAS Iteration Limit", "0", set_outcome::int_bound, 0},
      {"Infinite Bound Size", "abc", set_outcome::not_real, 0},
      {"Infinite Bound Size", "inf", set_outcome::not_real, 0},
      {"Infinite Bound Size", "nan", set_outcome::not_real, 0},
      {"Infinite Bound Size", "1e400", set_outcome::not_real, 0},
      {"Infinite Bound Size", "0x10", set_outcome::not_real, 0},
      {"Infinite Bound Size", "999.9", set_outcome::real_bound, 0},
      {"Infinite Bound Size", "1000", set_outcome::ok, 1000},
      {"Infinite Bound Size", "1.0D+21", set_outcome::ok, 1e21},
      {"FOAS Stop Tolerance", "1", set_outcome::real_bound, 0},
      {"FOAS Stop Tolerance", "0", set_outcome::ok, 0},
      {"FOAS Progress Tolerance", "0", set_outcome::real_bound, 0},
      {"FOAS Finite Diff Interval", "0.2", set_outcome::real_bound, 0},
      {"Task", "maximise", set_outcome::ok, 2},
      {"Task", "  Feasible   Point ", set_outcome::ok, 3},
      {"Task", "MAXIMUM", set_outcome::bad_keyword, 0},
      {"Print Solution", "x and u", set_outcome::ok, 3},
      {"FOAS Tolerance Norm", "2", set_outcome::ok, 2},
      {"Verify Derivatives", "", set_outcome::bad_keyword, 0},
      {"No Such Option", "1", set_outcome::unknown_option, 0},
      {"Defaults", "", set_outcome::defaults, 0},
      {"Defaults", "1", set_outcome::unknown_option, 0},
  };
  for (const auto &c : cases) {
    SCOPED_TRACE(std::string(c.name) + " = " + c.value);
    option_set s, before;
    init_options(s);
    before = s;
    const set_result r = apply_setting(s, c.name, c.value);
    EXPECT_EQ(r.outcome, c.outcome);
    if (c.outcome != set_outcome::ok) {
      EXPECT_EQ(std::memcmp(&s, &before, sizeof s), 0) << "a failed setting changed the set";
      continue;
    }
    const opt id = find_option(c.name);
    EXPECT_EQ(status_of(s, id), status_user);
    EXPECT_EQ(is_real(info(id)) ? real_value(s, id) : static_cast<double>(int_value(s, id)), c.stored);
  }
  const set_result r = [] {
    option_set s;
    init_options(s);
    return apply_setting(s, "FOAS Memory", "101");
  }();
  EXPECT_EQ(r.broken, b_le);
  EXPECT_EQ(r.bound, 100.0);
}

TEST(Settings, MessageTextsFitTwoValues) {
  const struct {
    std::string text;
    const char *a;
    const char *b;
  } cases[] = {
      {"Print Level = 1", "\"Print Level = 1\"", "."},
      {"", "\"\"", "."},
      {std::string(60, 'x'), "\"xxxxxxxxxxxxxxxxxxxxxxxx", "xxxxxxxxxxxxxxxxxxxx...\"."},
      {"a\x01" "b", "\"a?b\"", "."},
  };
  for (const auto &c : cases) {
    const message_text m = split_for_message(c.text, "\"", "\".");
    EXPECT_STREQ(m.a, c.a);
    EXPECT_STREQ(m.b, c.b);
    EXPECT_LE(std::strlen(m.a), 25u);
    EXPECT_LE(std::strlen(m.b), 25u);
  }
}

TEST(Listing, FramedMixedCaseAndUnder80) {
  option_set s;
  init_options(s);
  apply_setting(s, "print level", "3");
  solver_set_real(s, opt::time_limit, 10.0);
  std::remove("fort.73");
  std::ofstream("fort.73").close();  // the unit's file must exist: the library creates none
  EXPECT_EQ(print_options(s, 73, print_which::user), 0);
  EXPECT_EQ(print_options(s, 73, print_which::solver_changed), 0);
  std::ifstream f("fort.73");
  std::string line;
  std::vector<std::string> lines;
  while (std::getline(f, line)) lines.push_back(line);
  int internal = 0;
  for (const option_info &o : registry) internal += is_internal(o);
  ASSERT_EQ(lines.size(), static_cast<size_t>(option_count - internal + 2 + 3));
  EXPECT_EQ(lines.front(), "Begin of Options");
  EXPECT_EQ(lines[option_count - internal + 1], "End of Options");
  for (const std::string &l : lines) EXPECT_LE(l.size(), 80u);
  EXPECT_EQ(lines[1], "     Outer Iteration Limit         =                       100   * d");
  EXPECT_NE(std::find(lines.begin(), lines.end(),
                      "     Print Level                   =                         3   * U"),
            lines.end());
  EXPECT_EQ(lines[lines.size() - 3], "Begin of options modified by the solver");
  EXPECT_EQ(lines[lines.size() - 2], "     Time Limit                    =                      10.0   * S");
  EXPECT_EQ(lines.back(), "End of Options");
}

}  // namespace
