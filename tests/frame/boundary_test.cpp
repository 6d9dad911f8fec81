// What crosses the boundary between the library and its caller: the stop
// request of the C interface (zem::comm_watch: only a change of comm->flag
// made during the user's call, to a non-zero value other than -8888, asks
// the engine to stop; whatever the flag held before does not), and
// exceptions (none: the thunk turns them into statuses).
#include <gtest/gtest.h>

#include <cstring>
#include <new>
#include <stdexcept>

#include "frame/entry.h"

namespace {

struct stop_case {
  int64_t before, after, expected_status;  // status 0: no stop
};

TEST(CommWatch, OnlyAChangeMadeDuringTheCallStops) {
  constexpr int64_t garbage = static_cast<int64_t>(0xa5a5a5a5a5a5a5a5ULL);
  const stop_case cases[] = {
      {0, 0, 0},          {garbage, garbage, 0}, {5, 5, 0},  {-8888, -8888, 0}, {0, 7, 7},
      {garbage, 7, 7},    {7, 8, 8},             {7, 0, 0},  {3, -8888, 0},     {-8888, -1, -1},
  };
  for (const stop_case &c : cases) {
    SCOPED_TRACE(testing::Message() << c.before << " -> " << c.after);
    Zem_Comm comm;
    std::memset(&comm, 0xa5, sizeof comm);
    comm.flag = c.before;
    engine_data en;
    y90haan_(&en);
    const zem::comm_watch watch(&comm);
    comm.flag = c.after;  // what the user's function did
    watch.take(&en);
    EXPECT_EQ(en.cb_status, c.expected_status);
    EXPECT_EQ(comm.flag, c.after);  // the record is never written
  }
}

TEST(CommWatch, NullCommNeverStops) {
  engine_data en;
  y90haan_(&en);
  const zem::comm_watch watch(nullptr);
  watch.take(&en);
  EXPECT_EQ(en.cb_status, 0);
}

// A user function written in C++ that throws: the exception ends in the
// thunk, as the status the exception's kind calls for, through both entries.
int thrown_kind = 0;
double throwing(double x) {
  if (x > 0.25) {
    if (thrown_kind == 0) throw std::bad_alloc();
    if (thrown_kind == 1) throw std::length_error("size");
    throw std::runtime_error("user");
  }
  return x - 0.5;
}
double throwing_c(double x, Zem_Comm *) { return throwing(x); }
double throwing_f(const double *x, int64_t *, double *) { return throwing(*x); }

TEST(Boundary, ExceptionsEndAtTheThunk) {
  struct {
    int kind;
    int64_t status;
    int code;
  } const cases[] = {{0, -999, NE_ALLOC_FAIL}, {1, -999, NE_ALLOC_FAIL}, {2, -998, NE_INTERNAL_ERROR}};
  for (const auto &c : cases) {
    SCOPED_TRACE(c.kind);
    thrown_kind = c.kind;
    Zem_Fail fail = ZEM_FAIL_INIT;
    double x = 0.0;
    c05ayc(0.0, 1.0, 1e-10, 0.0, throwing_c, &x, nullptr, &fail);
    EXPECT_EQ(fail.code, c.code);
    EXPECT_EQ(fail.errnum, c.status);
    const double a = 0.0, b = 1.0, eps = 1e-10, eta = 0.0;
    int64_t ifail = 1;
    c05ayf_(&a, &b, &eps, &eta, throwing_f, &x, nullptr, nullptr, &ifail);
    EXPECT_EQ(ifail, c.status);
  }
}

}  // namespace
