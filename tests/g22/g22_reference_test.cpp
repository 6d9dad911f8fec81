// Design matrices and labels against R's model.matrix (data written by
// tools/g22_reference.R): every case in both storage orders.
#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include <zem.h>

namespace {

struct reference_case {
  std::string formula, contrast;
  int64_t mx = 0;
  std::vector<std::string> labels;
  std::vector<double> x;  // nobs rows, mx columns, row by row
};

struct reference {
  int64_t nobs = 0, nvar = 0;
  std::vector<std::string> names;
  std::vector<int64_t> levels;
  std::vector<double> dat;  // row by row
  std::vector<reference_case> cases;
};

std::vector<std::string> words(const std::string &line) {
  std::istringstream in(line);
  std::vector<std::string> w;
  for (std::string s; in >> s;) w.push_back(s);
  return w;
}

std::vector<double> numbers(std::ifstream &in, int64_t rows, int64_t cols) {
  std::vector<double> v(static_cast<size_t>(rows * cols));
  for (double &d : v) in >> d;
  std::string rest;
  std::getline(in, rest);
  return v;
}

reference read_reference() {
  reference r;
  std::ifstream in(ZEM_TEST_DATA "/design_reference.txt");
  std::string line;
  while (std::getline(in, line)) {
    if (line.empty() || line[0] == '#') continue;
    const auto w = words(line);
    if (w[0] == "DATA") {
      r.nobs = std::stoll(w[1]);
      r.nvar = std::stoll(w[2]);
    } else if (w[0] == "NAMES") {
      r.names.assign(w.begin() + 1, w.end());
    } else if (w[0] == "LEVELS") {
      for (size_t i = 1; i < w.size(); ++i) r.levels.push_back(std::stoll(w[i]));
      r.dat = numbers(in, r.nobs, r.nvar);
    } else if (w[0] == "CASE") {
      r.cases.emplace_back();
      r.cases.back().formula = line.substr(5);
    } else if (w[0] == "CONTRAST") {
      r.cases.back().contrast = line.substr(9);
    } else if (w[0] == "MX") {
      r.cases.back().mx = std::stoll(w[1]);
    } else if (w[0] == "LABELS") {
      auto &c = r.cases.back();
      c.labels.assign(w.begin() + 1, w.end());
      for (auto &l : c.labels)
        if (l == "(Intercept)") l = "Intercept";
      c.x = numbers(in, r.nobs, c.mx);
    }
  }
  return r;
}

TEST(G22Reference, DesignMatricesEqualR) {
  const reference r = read_reference();
  ASSERT_GE(r.cases.size(), 40u);
  std::vector<const char *> names;
  for (const auto &n : r.names) names.push_back(n.c_str());
  for (bool by_variables : {false, true}) {
    void *hd = nullptr;
    Zem_Fail fail = ZEM_FAIL_INIT;
    g22ybc(&hd, r.nobs, r.nvar, r.levels.data(), r.nvar, names.data(), &fail);
    ASSERT_EQ(fail.code, NE_NOERROR);
    if (by_variables) g22zmc(hd, "Storage Order = Variables", &fail);
    ASSERT_EQ(fail.code, NE_NOERROR);
    // dat in the storage order: one observation a row, or one variable a row.
    std::vector<double> dat(r.dat.size());
    for (int64_t i = 0; i < r.nobs; ++i)
      for (int64_t j = 0; j < r.nvar; ++j)
        dat[by_variables ? j + i * r.nvar : i + j * r.nobs] = r.dat[i * r.nvar + j];
    const int64_t lddat = by_variables ? r.nvar : r.nobs, sddat = by_variables ? r.nobs : r.nvar;
    for (const reference_case &c : r.cases) {
      SCOPED_TRACE(c.formula + " / " + c.contrast + (by_variables ? " / Variables" : " / Observations"));
      void *hf = nullptr, *hx = nullptr;
      g22yac(&hf, c.formula.c_str(), &fail);
      ASSERT_EQ(fail.code, NE_NOERROR) << fail.message;
      std::string opt = "CONTRAST = ";
      opt += c.contrast;
      g22zmc(hf, opt.c_str(), &fail);
      ASSERT_EQ(fail.code, NE_NOERROR) << fail.message;
      const int64_t ldx = by_variables ? c.mx : r.nobs, sdx = by_variables ? r.nobs : c.mx;
      std::vector<double> x(static_cast<size_t>(ldx * sdx), -99.0);
      int64_t mx = 0;
      g22ycc(hf, hd, dat.data(), lddat, sddat, &hx, x.data(), ldx, sdx, &mx, &fail);
      ASSERT_TRUE(fail.code == NE_NOERROR || fail.code == NW_POTENTIAL_PROBLEM) << fail.message;
      ASSERT_EQ(mx, c.mx);
      for (int64_t i = 0; i < r.nobs; ++i)
        for (int64_t j = 0; j < mx; ++j)
          ASSERT_NEAR(x[by_variables ? j + i * ldx : i + j * ldx], c.x[i * mx + j], 4e-15)
              << "observation " << i + 1 << ", column " << j + 1;
      // Labels, through g22yd over every column.
      int64_t iintcpt = -1, p = 0, mlterm = 40;
      std::vector<char> plab(static_cast<size_t>(mx * 40));
      g22ydc(1, nullptr, hx, &iintcpt, &p, 0, nullptr, mx, plab.data(), 0, nullptr, &mlterm, &fail);
      ASSERT_EQ(fail.code, NE_NOERROR) << fail.message;
      ASSERT_EQ(p, mx);
      for (int64_t j = 0; j < mx; ++j) EXPECT_EQ(std::string(&plab[j * 40]), c.labels[j]) << j + 1;
      EXPECT_EQ(iintcpt, c.labels[0] == "Intercept" ? 1 : 0);
      g22zac(&hf, &fail);
      g22zac(&hx, &fail);
    }
    g22zac(&hd, &fail);
  }
}

}  // namespace
