// Reading the reference tables of tests/<chapter>/data and measuring errors in
// units in the last place.
//
// A table row is "[tail] region input decimal hi units [hi units [hi units]]":
// the input is a hexadecimal double, and each reference value (the exact
// value, then for the g01 tables the exact formula value at the rounded
// argument and the exact AS 241 value; tools/g01_reference.py says what each
// holds) is the double hi nearest it and the rest in units in the last place.
// Errors are measured in double arithmetic alone, to about 1e-3 units and in
// the subnormal range too, so that the tests also hold where a wider type is
// not available or not exact (under valgrind, long double has 53 bits).
#pragma once

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace zem::test {

// A value as hi + units * (the spacing of doubles at the value),
// |units| <= 1/2.
struct reference {
  double hi = 0.0;
  double units = 0.0;
};

struct reference_row {
  char tail = 0;  // 'L', 'U', 'S', 'C', or 0 for a table without tails
  std::string region;
  double input = 0.0;
  reference exact;    // the exact function value at the input
  reference formula;  // the exact formula value at the rounded argument
  reference as241;    // the exact AS 241 value there (deviates only)
};

inline std::vector<reference_row> read_reference(const std::string &path, bool with_tail) {
  std::vector<reference_row> rows;
  std::ifstream in(path);
  if (!in) {
    std::fprintf(stderr, "cannot open %s\n", path.c_str());
    std::exit(2);
  }
  std::string line;
  auto number = [](const std::string &s) { return std::strtod(s.c_str(), nullptr); };
  while (std::getline(in, line)) {
    if (line.empty() || line[0] == '#') continue;
    std::istringstream s(line);
    reference_row r;
    std::string tail, input, decimal;
    if (with_tail) s >> tail;
    s >> r.region >> input >> decimal;
    r.tail = with_tail ? tail.at(0) : 0;
    r.input = number(input);
    std::vector<reference> refs;
    for (std::string hi, lo; s >> hi >> lo;) refs.push_back({number(hi), number(lo)});
    if (refs.empty()) {
      std::fprintf(stderr, "%s: no reference pair in: %s\n", path.c_str(), line.c_str());
      std::exit(2);
    }
    r.exact = refs[0];
    r.formula = refs.size() > 1 ? refs[1] : r.exact;
    r.as241 = refs.size() > 2 ? refs[2] : r.formula;
    rows.push_back(r);
  }
  return rows;
}

// The spacing of doubles at the value: 2^(e - 52) in the binade [2^e, 2^(e+1))
// that holds it (one binade below hi when hi is a power of two and the value
// lies below it), and 2^-1074 below 2^-1022.
inline double ulp_at(const reference &v) {
  const double a = std::fabs(v.hi);
  if (a < 0x1p-1022) return 0x1p-1074;
  int e = 0;
  const double m = std::frexp(a, &e);  // a = m 2^e, 0.5 <= m < 1
  const bool below_power = m == 0.5 && v.units != 0.0 && (v.units < 0.0) == (v.hi > 0.0);
  return std::ldexp(1.0, e - 53 - (below_power ? 1 : 0));
}

// (a - b) in units of b's last place.  a - b.hi is exact whenever a is within
// a factor 2 of b.hi (Sterbenz), which holds for every error worth measuring,
// and the division by a power of two is exact.
inline double ulp_error(double a, const reference &b) { return std::fabs((a - b.hi) / ulp_at(b) - b.units); }

inline double ulp_error(const reference &a, const reference &b) {
  const double ub = ulp_at(b);
  return std::fabs((a.hi - b.hi) / ub + a.units * (ulp_at(a) / ub) - b.units);
}

// Relative error of a against b (1 when b is 0 and a is not).
inline double relative_error(double a, const reference &b) {
  if (b.hi == 0.0 && b.units == 0.0) return a == 0.0 ? 0.0 : 1.0;
  const double u = ulp_at(b);
  return std::fabs(((a - b.hi) / u - b.units) * u / (b.hi != 0.0 ? b.hi : b.units * u));
}

// Largest error per (tail, region), with the worst input.
struct error_summary {
  double max_ulp = 0.0;
  double worst_input = 0.0;
  double rms_sum = 0.0;
  long count = 0;
  void add(double ulp, double input) {
    if (ulp > max_ulp || count == 0) {
      max_ulp = ulp;
      worst_input = input;
    }
    rms_sum += ulp * ulp;
    ++count;
  }
  double rms() const { return count ? std::sqrt(rms_sum / count) : 0.0; }
};

}  // namespace zem::test
