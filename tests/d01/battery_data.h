// Reader of tests/d01/data/qags_battery.txt (see tools/d01_battery.py).
#pragma once

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace d01test {

struct battery_case {
  std::string name, routine;  // qags, qagp (break points) or qagi (a = bound, b = range code)
  double a, b;
  std::vector<double> points;
  double epsabs, epsrel;
  int64_t limit;
  std::string exact_text;  // 40 digits, "inf", "-inf"
  double exact;            // rounded to double
  long double exact_ld;    // rounded to long double (64-bit significand), for true errors
  double result, abserr;   // the classic scheme's outputs
  int64_t neval, ier, last;
  std::vector<int64_t> iord;  // 1-based
};

inline std::vector<battery_case> read_battery(const std::string &path) {
  std::vector<battery_case> out;
  std::ifstream in(path);
  std::string line;
  while (std::getline(in, line)) {
    if (line.empty() || line[0] == '#') continue;
    std::istringstream s(line);
    battery_case c;
    std::string iord, pts;
    s >> c.name >> c.routine >> c.a >> c.b >> pts >> c.epsabs >> c.epsrel >> c.limit >> c.exact_text >>
        c.result >> c.abserr >> c.neval >> c.ier >> c.last >> iord;
    std::istringstream ps(pts);
    std::string p;
    while (std::getline(ps, p, ','))
      if (p != "-") c.points.push_back(std::strtod(p.c_str(), nullptr));
    c.exact = std::strtod(c.exact_text.c_str(), nullptr);
    c.exact_ld = std::strtold(c.exact_text.c_str(), nullptr);
    std::istringstream is(iord);
    std::string tok;
    while (std::getline(is, tok, ','))
      if (tok != "-") c.iord.push_back(std::stoll(tok));
    out.push_back(c);
  }
  return out;
}

}  // namespace d01test
