// The bad-input sweep: every exported routine is called with hostile
// arguments (NaN, infinities, huge and tiny values, negative and huge sizes,
// null pointers where the interface checks them, corrupted states, user
// functions that return NaN or stop) and must
//   - return within the alarm (a hang fails the sweep);
//   - either report a failure or return finite results (no quiet wrong
//     answer), and report the failure a case names where it names one;
//   - leave the guard cells around every caller array untouched;
//   - create no file in the current directory.
//
// One table file per chapter (tests/badinput/<chapter>.cpp) holds the sweeps
// of its routines, each introduced by ZEM_BADINPUT(<five-character name>):
//
//   ZEM_BADINPUT(c05ay) {
//     for (double a : badinput::hostile_reals) {
//       s.call("a", a, [&] { ...call c05ayc and c05ayf_...; s.fail_or_finite(fail, {x}); });
//     }
//   }
//
// The test reads the routine list from the dynamic symbols of libzem.so: a
// routine exported without a sweep fails the test, so a new routine cannot
// be forgotten.
#pragma once

#include <zem.h>

#include <cstdint>
#include <cstring>
#include <functional>
#include <initializer_list>
#include <limits>
#include <string>
#include <vector>

namespace badinput {

inline constexpr double nan_v = std::numeric_limits<double>::quiet_NaN();
inline constexpr double inf = std::numeric_limits<double>::infinity();
inline constexpr double huge = std::numeric_limits<double>::max();
inline constexpr double tiny = std::numeric_limits<double>::denorm_min();

// Real scalars a caller may pass by mistake.
inline const std::vector<double> hostile_reals = {nan_v, inf, -inf, huge, -huge, 1e300, -1e300,
                                                  tiny, -tiny, 0.0, -0.0, 1e-300, 1.0};
// Sizes and counts: negative, zero, and so large that a size computed from
// them overflows or cannot be allocated.
inline const std::vector<int64_t> hostile_sizes = {
    std::numeric_limits<int64_t>::min(), -1, 0, 1, int64_t{1} << 31, int64_t{1} << 40, int64_t{1} << 61,
    int64_t{1} << 62, (int64_t{1} << 62) + 1, std::numeric_limits<int64_t>::max()};
// Values a user function returns by mistake.
inline const std::vector<double> hostile_values = {nan_v, inf, -inf, huge, -huge};

// A caller array with guard cells on both sides; intact() says whether a
// call wrote outside the n cells it was given.
template <typename T>
class guarded {
 public:
  explicit guarded(size_t n, T fill = T{}) : buf_(n + 2 * pad), n_(n) {
    for (size_t i = 0; i < pad; ++i) buf_[i] = buf_[pad + n + i] = sentinel();
    for (size_t i = 0; i < n; ++i) buf_[pad + i] = fill;
  }
  T *data() { return buf_.data() + pad; }
  T &operator[](size_t i) { return buf_[pad + i]; }
  size_t size() const { return n_; }
  bool intact() const {
    const T s = sentinel();
    for (size_t i = 0; i < pad; ++i)
      if (std::memcmp(&buf_[i], &s, sizeof s) != 0 || std::memcmp(&buf_[pad + n_ + i], &s, sizeof s) != 0)
        return false;
    return true;
  }

 private:
  static constexpr size_t pad = 8;
  static T sentinel() {
    T v;
    const uint64_t bits = 0x7ff4deadbeefcafeULL;  // a signalling NaN nobody computes
    std::memcpy(&v, &bits, sizeof v < sizeof bits ? sizeof v : sizeof bits);
    return v;
  }
  std::vector<T> buf_;
  size_t n_;
};

// A quiet fail record: nothing printed, nothing ends the program.
inline Zem_Fail quiet() {
  Zem_Fail f = ZEM_FAIL_INIT;
  f.code = -12345;  // stale values the entry must overwrite
  f.errnum = -12345;
  return f;
}

// The sweep of one routine: runs cases and collects what went wrong.
class sweep {
 public:
  explicit sweep(std::string routine) : routine_(std::move(routine)) {}

  // Runs body under the alarm; label and value name the case in reports.
  void call(const std::string &label, const std::function<void()> &body);
  template <typename V>
  void call(const std::string &label, V value, const std::function<void()> &body) {
    call(label + " = " + text(value), body);
  }

  // Records a fault of the current case unless ok.
  void expect(bool ok, const std::string &what);
  // The call failed, or every output is finite.
  void fail_or_finite(const Zem_Fail &fail, std::initializer_list<double> outputs);
  void ifail_or_finite(int64_t ifail, std::initializer_list<double> outputs);
  // The call failed with this code (C) / this ifail (Fortran, ifail = 1 on entry).
  void failed(const Zem_Fail &fail, int code);
  void failed(int64_t ifail, int64_t expected);
  // No write outside a caller array.
  template <typename T>
  void intact(const guarded<T> &g, const char *name) {
    expect(g.intact(), std::string("write outside the array ") + name);
  }

  const std::vector<std::string> &faults() const { return faults_; }
  int64_t calls() const { return calls_; }
  static std::string text(double v);
  static std::string text(int64_t v);
  static std::string text(int v) { return text(static_cast<int64_t>(v)); }
  static std::string text(const char *v) { return v; }
  static std::string text(const std::string &v) { return v; }

 private:
  std::string routine_, label_;
  std::vector<std::string> faults_;
  int64_t calls_ = 0;
};

using sweep_fn = void (*)(sweep &);
struct registration {
  registration(const char *routine, sweep_fn fn);
};

}  // namespace badinput

// Introduces the sweep of routine XXXXX (both its entries); the body sees the
// sweep as `s`.
#define ZEM_BADINPUT(rtn)                                                                    \
  static void badinput_sweep_##rtn(badinput::sweep &s);                                      \
  static const badinput::registration badinput_registration_##rtn(#rtn, badinput_sweep_##rtn); \
  static void badinput_sweep_##rtn([[maybe_unused]] badinput::sweep &s)
