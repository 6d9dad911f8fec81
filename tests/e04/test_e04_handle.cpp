// The handle: header layout, validation on every kind of bad pointer, the
// phase rules, destruction, and the result store.
#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "e04/model.h"
#include "frame/frame.h"

extern "C" {
void e04rafn_(engine_data *, void **, const int64_t *, char *, int64_t *);
void e04rzfn_(engine_data *, void **, char *, int64_t *);
}

namespace {

using namespace zem::e04;

struct rec {
  int64_t status, detail;
};
rec parse(const char *errbuf) {
  int64_t s = 0, d = 0;
  char values[8][26];
  p01abtn_(errbuf, &s, &d, values, 8);
  return {s, d};
}

void *create(int64_t n) {
  engine_data ed;
  y90haan_(&ed);
  char eb[200] = {};
  int64_t st = 1;
  void *h = nullptr;
  e04rafn_(&ed, &h, &n, eb, &st);
  EXPECT_EQ(st, 0);
  return h;
}

// e04rz's worker on *h; its status.
int64_t destroy(void **h) {
  engine_data ed;
  y90haan_(&ed);
  char eb[200] = {};
  int64_t st = 1;
  e04rzfn_(&ed, h, eb, &st);
  return st;
}

TEST(E04Handle, HeaderLayout) {
  void *h = create(3);
  const auto *w = static_cast<const int64_t *>(h);
  EXPECT_EQ(w[0], 65535);
  EXPECT_EQ(std::string({char(w[1]), char(w[2]), char(w[3]), char(w[4])}), "ZOMS");
  EXPECT_EQ(w[5] | w[6] | w[7], 0);
  EXPECT_NE(w[8], 0);
  int64_t kind = -1;
  void *inner = nullptr;
  ASSERT_EQ(validate(h, &kind, &inner), handle_state::ok);
  EXPECT_EQ(kind, 0);
  EXPECT_EQ(num_vars(*static_cast<problem *>(inner)), 3);
  EXPECT_EQ(phase(*static_cast<problem *>(inner)), phase_editable);
  EXPECT_EQ(destroy(&h), 0);
  EXPECT_EQ(h, nullptr);
}

TEST(E04Handle, ValidationOfBadPointers) {
  char eb[200];
  int64_t st = 0;
  EXPECT_EQ(open_problem(nullptr, eb, &st), nullptr);
  EXPECT_EQ(parse(eb).detail, 1001);
  int64_t junk[9] = {1, 2, 3, 4, 5, 6, 7, 8, 9};
  EXPECT_EQ(open_problem(junk, eb, &st), nullptr);
  EXPECT_EQ(parse(eb).detail, 1002);
  int64_t tag_only[9] = {65535, 'Z', 'O', 'M', 'S', 0, 0, 0, 0};
  EXPECT_EQ(open_problem(tag_only, eb, &st), nullptr);
  EXPECT_EQ(parse(eb).detail, 1003);
  EXPECT_EQ(st, 1);
  int64_t target = 7;
  void *shell = make_shell(5, &target);
  int64_t kind = 0;
  void *inner = nullptr;
  ASSERT_EQ(validate(shell, &kind, &inner), handle_state::ok);
  EXPECT_EQ(kind, 5);
  EXPECT_EQ(inner, &target);
  EXPECT_EQ(open_problem(shell, eb, &st), nullptr);
  EXPECT_EQ(parse(eb).detail, 1004);
  EXPECT_EQ(destroy(&shell), 0);
  EXPECT_EQ(target, 7);
}

TEST(E04Handle, PhaseRules) {
  void *h = create(2);
  char eb[200];
  int64_t st = 0;
  problem *p = open_problem(h, eb, &st);
  ASSERT_NE(p, nullptr);
  EXPECT_TRUE(check_editable(*p, eb, &st));
  {
    solving_scope s(*p);
    EXPECT_TRUE(s.entered());
    EXPECT_FALSE(check_editable(*p, eb, &st));
    EXPECT_EQ(parse(eb).status, 2);
    EXPECT_EQ(parse(eb).detail, 1005);
    EXPECT_FALSE(check_not_solving(*p, eb, &st));
    EXPECT_EQ(parse(eb).detail, 1006);
    solving_scope second(*p);
    EXPECT_FALSE(second.entered());
  }
  EXPECT_EQ(phase(*p), phase_editable);
  EXPECT_EQ(destroy(&h), 0);
}

TEST(E04Handle, ResultStore) {
  void *h = create(2);
  char eb[200];
  int64_t st = 0;
  problem *p = open_problem(h, eb, &st);
  const double x[2] = {1.5, -2.0};
  ASSERT_TRUE(store_reals(*p, "PRIMAL", x));
  bool found = false;
  auto got = stored_reals(*p, "PRIMAL", &found);
  ASSERT_TRUE(found);
  ASSERT_EQ(got.size(), 2u);
  EXPECT_EQ(got[1], -2.0);
  const int64_t b[1] = {3};
  ASSERT_TRUE(store_ints(*p, "WARM START BASIS", b));
  EXPECT_EQ(stored_ints(*p, "WARM START BASIS")[0], 3);
  stored_reals(*p, "DUAL", &found);
  EXPECT_FALSE(found);
  clear_store(*p);
  stored_reals(*p, "PRIMAL", &found);
  EXPECT_FALSE(found);
  EXPECT_EQ(destroy(&h), 0);
}

}  // namespace
