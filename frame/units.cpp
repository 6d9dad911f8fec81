// Output units and the record writer (see units.h).
#include "units.h"

#include <atomic>
#include <cstdio>

extern "C" {
void x04_fwrite_(const int64_t *unit, const char *rec, int64_t *ios, size_t rec_len);
void x04_fread_(const int64_t *unit, char *rec, int64_t *ios, size_t rec_len);
}

namespace zem {

namespace {
// The two library-wide unit numbers; not locked (setting one while another
// thread prints is not supported), atomic only so that reading is defined.
std::atomic<int64_t> error_unit{6};
std::atomic<int64_t> advisory_unit{6};
}  // namespace

int64_t err_unit() { return error_unit.load(std::memory_order_relaxed); }
int64_t adv_unit() { return advisory_unit.load(std::memory_order_relaxed); }
void set_err_unit(int64_t unit) { error_unit.store(unit, std::memory_order_relaxed); }
void set_adv_unit(int64_t unit) { advisory_unit.store(unit, std::memory_order_relaxed); }

// Fortran unit numbers are default integers of the run-time: a number
// beyond them names no unit (and is never handed to it).
constexpr int64_t max_unit = 2147483647;

int write_record(int64_t unit, std::string_view rec) {
  if (unit < 0) return 0;
  if (unit > max_unit) return 1;
  size_t n = rec.size();
  while (n > 1 && rec[n - 1] == ' ') --n;
  const char *text = n == 0 ? " " : rec.data();
  if (n == 0) n = 1;
  // A C caller's pending standard output goes first, so that its lines and
  // the library's stay in the order they were written.
  std::fflush(stdout);
  int64_t ios = 0;
  x04_fwrite_(&unit, text, &ios, n);
  return ios == 0 ? 0 : 1;
}

int read_record(int64_t unit, char *rec, size_t len) {
  if (unit < 0 || unit > max_unit) {
    for (size_t i = 0; i < len; ++i) rec[i] = ' ';
    return 2;
  }
  int64_t ios = 0;
  x04_fread_(&unit, rec, &ios, len);
  return ios == 0 ? 0 : ios < 0 ? 1 : 2;
}

void debug_append(std::string_view text) {
  std::FILE *f = std::fopen("ZemDebug_file", "a");
  if (!f) return;
  std::fwrite(text.data(), 1, text.size(), f);
  std::fputc('\n', f);
  std::fclose(f);
}

}  // namespace zem
