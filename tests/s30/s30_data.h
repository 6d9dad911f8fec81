// Reading tests/s30/data/s30aa_reference.txt (tools/s30_reference.py).
#pragma once

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace zem::test {

struct s30_case {
  char kind = 'C';
  double s = 0, sigma = 0, r = 0, q = 0;
  std::vector<double> x, t;
  // values[(i + j*m) * columns + k]: k = 0 the price, then the sensitivities.
  std::vector<double> values;
};

inline std::vector<s30_case> read_s30_cases(const std::string &path, int columns = 12) {
  std::ifstream in(path);
  if (!in) {
    std::fprintf(stderr, "cannot open %s\n", path.c_str());
    std::exit(2);
  }
  std::vector<s30_case> cases;
  std::string line;
  while (std::getline(in, line)) {
    if (line.empty() || line[0] == '#') continue;
    std::istringstream ls(line);
    std::string word;
    ls >> word;
    if (word == "case") {
      s30_case c;
      size_t m = 0, n = 0;
      ls >> c.kind >> c.s >> c.sigma >> c.r >> c.q >> m >> n;
      c.x.resize(m);
      c.t.resize(n);
      c.values.assign(m * n * columns, 0.0);
      cases.push_back(c);
    } else if (word == "x") {
      for (double &v : cases.back().x) ls >> v;
    } else if (word == "t") {
      for (double &v : cases.back().t) ls >> v;
    } else {
      s30_case &c = cases.back();
      const size_t i = std::stoul(word);
      size_t j = 0;
      ls >> j;
      for (int k = 0; k < columns; ++k) {
        std::string v;
        ls >> v;
        c.values[(i + j * c.x.size()) * columns + k] = std::strtod(v.c_str(), nullptr);
      }
    }
  }
  return cases;
}

}  // namespace zem::test
