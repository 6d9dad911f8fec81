// Reading the reference tables of tests/<chapter>/data and measuring errors in
// units in the last place.
//
// A table row is "[tail] region input exact [formula [as241]]": the input is
// a hexadecimal double, the others exact values (30 digits, see
// tools/g01_reference.py for what each column holds), read as long doubles
// (64-bit significand), so that an error is measured to about 1e-3 units.
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

struct reference_row {
  char tail = 0;  // 'L', 'U', 'S', 'C', or 0 for a table without tails
  std::string region;
  double input = 0.0;
  long double exact = 0.0L;    // the exact function value at the input
  long double formula = 0.0L;  // the exact formula value at the rounded argument
  long double as241 = 0.0L;    // the exact AS 241 value there (deviates only)
};

inline std::vector<reference_row> read_reference(const std::string &path, bool with_tail) {
  std::vector<reference_row> rows;
  std::ifstream in(path);
  if (!in) {
    std::fprintf(stderr, "cannot open %s\n", path.c_str());
    std::exit(2);
  }
  std::string line;
  while (std::getline(in, line)) {
    if (line.empty() || line[0] == '#') continue;
    std::istringstream s(line);
    reference_row r;
    std::string tail, input, exact, formula, as241;
    if (with_tail) s >> tail;
    s >> r.region >> input >> exact >> formula >> as241;
    r.tail = with_tail ? tail.at(0) : 0;
    r.input = std::strtod(input.c_str(), nullptr);
    r.exact = std::strtold(exact.c_str(), nullptr);
    r.formula = formula.empty() ? r.exact : std::strtold(formula.c_str(), nullptr);
    r.as241 = as241.empty() ? r.formula : std::strtold(as241.c_str(), nullptr);
    rows.push_back(r);
  }
  return rows;
}

// The spacing of doubles at the exact value: 2^(e - 52) for an exact value
// in [2^e, 2^(e+1)), and 2^-1074 in the subnormal range and at 0.
inline long double ulp_at(long double exact) {
  const long double a = std::fabs(exact);
  if (a < 0x1p-1022L) return 0x1p-1074L;
  int e = 0;
  std::frexp(a, &e);  // a = m 2^e, 0.5 <= m < 1
  return std::ldexp(1.0L, e - 53);
}

inline double ulp_error(long double computed, long double exact) {
  return static_cast<double>(std::fabs(computed - exact) / ulp_at(exact));
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

using error_table = std::map<std::pair<char, std::string>, error_summary>;

}  // namespace zem::test
