// The order conditions of the three pairs and of the 5(4) pair's continuous
// extension, in exact rational arithmetic (GMP rationals).
//
// For every rooted tree t with at most p + 1 nodes the weights b must give
// sum_i b_i Phi_i(t) = 1/gamma(t) for |t| <= p (Butcher's conditions).  The
// residuals of the two Bogacki-Shampine pairs and of the dense output are
// exactly zero; those of the Prince-Dormand pair, whose published
// coefficients are 18-digit rational approximations, are below 1e-16.  Each
// pair must also fail some condition of order p + 1 (its order is exactly p),
// and the rows of a must sum to the nodes.
//
// The step machine's root x^(1/K) (d02/rk_root.h), against closed forms.
#include <gmpxx.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <functional>
#include <span>
#include <vector>

#include "d02/rk_root.h"
#include "d02/rk_tables.h"

namespace {

using zem::d02::rational;
using Vec = std::vector<mpq_class>;

// A rooted tree: the list of its subtrees.
struct Tree {
  std::vector<Tree> kids;
  int size() const {
    int n = 1;
    for (const Tree &k : kids) n += k.size();
    return n;
  }
  mpz_class gamma() const {
    mpz_class g = size();
    for (const Tree &k : kids) g *= k.gamma();
    return g;
  }
};

// Trees with n nodes, each once: children in non-increasing order of index
// within the list of all trees of smaller size.
std::vector<std::vector<Tree>> all_trees(int nmax) {
  std::vector<Tree> flat;           // every tree, sizes increasing
  std::vector<std::vector<Tree>> by(nmax + 1);
  std::vector<int> first(nmax + 2, 0);
  by[1] = {Tree{}};
  flat.push_back(Tree{});
  first[2] = 1;
  for (int n = 2; n <= nmax; ++n) {
    // Multisets of trees (indices into flat, non-increasing) with sizes summing to n - 1.
    std::vector<int> pick;
    std::function<void(int, int)> rec = [&](int rem, int maxidx) {
      if (rem == 0) {
        Tree t;
        for (int i : pick) t.kids.push_back(flat[i]);
        by[n].push_back(t);
        return;
      }
      for (int i = std::min<int>(maxidx, static_cast<int>(flat.size()) - 1); i >= 0; --i) {
        if (flat[i].size() > rem) continue;
        pick.push_back(i);
        rec(rem - flat[i].size(), i);
        pick.pop_back();
      }
    };
    rec(n - 1, static_cast<int>(flat.size()) - 1);
    for (const Tree &t : by[n]) flat.push_back(t);
  }
  return by;
}

struct Pair {
  const char *name;
  std::span<const rational> c, a, b, bhat;
  int p, phat;
  bool exact;
};

mpq_class q(const rational &r) { return mpq_class(mpz_class(r.num), mpz_class(r.den)); }

struct Tableau {
  int s;
  std::vector<Vec> A;
  Vec c;
  explicit Tableau(const Pair &pr) : s(static_cast<int>(pr.c.size())), A(s, Vec(s, 0)), c(s) {
    size_t k = 0;
    for (int i = 0; i < s; ++i) c[i] = q(pr.c[i]);
    for (int i = 1; i < s; ++i)
      for (int j = 0; j < i; ++j) A[i][j] = q(pr.a[k++]);
  }
  Vec phi(const Tree &t) const {
    Vec v(s, 1);
    for (const Tree &k : t.kids) {
      const Vec w = phi(k);
      for (int i = 0; i < s; ++i) {
        mpq_class aw = 0;
        for (int j = 0; j < i; ++j) aw += A[i][j] * w[j];
        v[i] *= aw;
      }
    }
    return v;
  }
};

// Largest |residual| over the trees of order <= p, and whether some tree of
// order p + 1 is violated.
void residuals(const Tableau &tb, const Vec &b, int p, const std::vector<std::vector<Tree>> &trees,
               double &worst, bool &next_order_fails) {
  worst = 0;
  next_order_fails = false;
  for (int n = 1; n <= p + 1; ++n)
    for (const Tree &t : trees[n]) {
      const Vec ph = tb.phi(t);
      mpq_class r = -mpq_class(1, t.gamma());
      for (int i = 0; i < tb.s; ++i) r += b[i] * ph[i];
      const double ar = std::abs(r.get_d());
      if (n <= p)
        worst = std::max(worst, ar);
      else if (ar > 1e-12)
        next_order_fails = true;
    }
}

Vec weights(std::span<const rational> w) {
  Vec v;
  for (const rational &r : w) v.push_back(q(r));
  return v;
}

const Pair pairs[] = {
    {"bs23", zem::d02::bs23_c, zem::d02::bs23_a, zem::d02::bs23_b, zem::d02::bs23_bhat, 3, 2, true},
    {"bs45", zem::d02::bs45_c, zem::d02::bs45_a, zem::d02::bs45_b, zem::d02::bs45_bhat, 5, 4, true},
    {"pd87", zem::d02::pd87_c, zem::d02::pd87_a, zem::d02::pd87_b, zem::d02::pd87_bhat, 8, 7, false},
};

TEST(D02Tables, OrderConditions) {
  const auto trees = all_trees(9);
  ASSERT_EQ(trees[8].size(), 115u);  // 1, 1, 2, 4, 9, 20, 48, 115 trees of order 1..8
  for (const Pair &pr : pairs) {
    SCOPED_TRACE(pr.name);
    const Tableau tb(pr);
    ASSERT_EQ(pr.a.size(), static_cast<size_t>(tb.s * (tb.s - 1) / 2));
    for (int i = 0; i < tb.s; ++i) {
      mpq_class row = 0;
      for (int j = 0; j < i; ++j) row += tb.A[i][j];
      if (pr.exact)
        EXPECT_EQ(row, tb.c[i]) << "row " << i;
      else
        EXPECT_LT(std::abs(mpq_class(row - tb.c[i]).get_d()), 1e-16) << "row " << i;
    }
    for (auto [w, p] : {std::pair{pr.b, pr.p}, std::pair{pr.bhat, pr.phat}}) {
      double worst;
      bool fails;
      residuals(tb, weights(w), p, trees, worst, fails);
      if (pr.exact)
        EXPECT_EQ(worst, 0.0) << "order " << p;
      else
        EXPECT_LT(worst, 1e-16) << "order " << p;
      EXPECT_TRUE(fails) << "order " << p << " holds beyond " << p;
    }
  }
}

// The 5(4) pair's continuous extension: order 4 for every theta (checked at
// theta = 1/3, 1/2, 7/10, 1 exactly), the order-5 weights at theta = 1, and
// derivative f at both ends of the step.
TEST(D02Tables, ContinuousExtension) {
  const auto trees = all_trees(5);
  const Tableau tb(pairs[1]);
  const int s = tb.s, deg = 4;
  ASSERT_EQ(std::size(zem::d02::bs45_dense), static_cast<size_t>(s * deg));
  auto d = [&](int i, int k) { return q(zem::d02::bs45_dense[i * deg + k]); };
  for (mpq_class theta : {mpq_class(1, 3), mpq_class(1, 2), mpq_class(7, 10), mpq_class(1)}) {
    Vec b(s, 0);
    for (int i = 0; i < s; ++i) {
      mpq_class pw = theta;
      for (int k = 0; k < deg; ++k, pw *= theta) b[i] += d(i, k) * pw;
    }
    for (int n = 1; n <= 4; ++n)
      for (const Tree &t : trees[n]) {
        const Vec ph = tb.phi(t);
        mpq_class lhs = 0, rhs = 1 / mpq_class(t.gamma());
        for (int i = 0; i < s; ++i) lhs += b[i] * ph[i];
        for (int k = 0; k < n; ++k) rhs *= theta;
        EXPECT_EQ(lhs, rhs) << "theta " << theta << " order " << n;
      }
    if (theta == 1) {
      for (int i = 0; i < s; ++i) EXPECT_EQ(b[i], q(zem::d02::bs45_b[i]));
    }
  }
  for (int i = 0; i < s; ++i) {
    mpq_class slope0 = d(i, 0), slope1 = 0;
    for (int k = 0; k < deg; ++k) slope1 += (k + 1) * d(i, k);
    EXPECT_EQ(slope0, i == 0 ? 1 : 0);
    EXPECT_EQ(slope1, i == s - 1 ? 1 : 0);
  }
}

// x = (v 2^s)^K is exact for v = j/16, j <= 64, so its root is v 2^s; the
// v cover every part of the mantissa's table and the exponents every
// residue b mod K.  Four units in the last place at most; zero and numbers
// below 2^-1000 give zero.
template <int K>
void check_root() {
  SCOPED_TRACE(K);
  for (int j = 1; j <= 64; ++j)
    for (int s = -30; s <= 30; s += 1) {
      const double v = std::ldexp(j / 16.0, s);
      double x = 1.0;
      for (int k = 0; k < K; ++k) x *= v;
      const double r = zem::d02::step_root<K>(x);
      ASSERT_LE(std::fabs(r - v), 4 * std::numeric_limits<double>::epsilon() * v) << j << " " << s;
    }
  EXPECT_EQ(zem::d02::step_root<K>(0.0), 0.0);
  EXPECT_EQ(zem::d02::step_root<K>(std::ldexp(1.0, -1001)), 0.0);
  EXPECT_NEAR(zem::d02::step_root<K>(std::ldexp(1.0, 1000)), std::ldexp(1.0, 1000 / K) * std::exp2((1000 % K) / double(K)),
              1e-15 * std::ldexp(1.0, 1000 / K + 1));
}

TEST(D02Tables, StepSizeRoot) {
  check_root<3>();
  check_root<5>();
  check_root<8>();
}

}  // namespace
