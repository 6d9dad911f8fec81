// The error exits of both interfaces, and the translation of the engine's
// status and message record into what each interface reports.
#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "entry.h"
#include "errbuf.h"
#include "units.h"

extern "C" void p01_fstop_();

namespace zem {
namespace {

constexpr int c_message_len = 512;
constexpr int f_line_len = 80;

// Rows every routine shares (looked up after the routine's own table).
constexpr message frame_messages[] = {
    {status_user_stop, detail_user_stop, NE_USER_STOP, {"User requested termination, user flag value = %s."}},
};
ZEM_REGISTER_MESSAGES(frame)

constexpr const char *alloc_fail_c = "NE_ALLOC_FAIL:\n  Dynamic memory allocation failed.";
constexpr const char *alloc_fail_f = "** Dynamic memory allocation failed.";

// A row for (status, detail), or nullptr.
const message *find_row(message_table table, int64_t status, int64_t detail) {
  for (const message &m : table)
    if (m.status == status && m.detail == detail) return &m;
  for (const message &m : frame_messages)
    if (m.status == status && m.detail == detail) return &m;
  return nullptr;
}

// Appends text to a fixed buffer, never past its end.
struct text_buffer {
  char *buf;
  int cap;
  int len = 0;
  void add(const char *s, int n) {
    for (int i = 0; i < n && len < cap - 1; ++i) buf[len++] = s[i];
    buf[len] = '\0';
  }
  void add(const char *s) { add(s, static_cast<int>(std::strlen(s))); }
  // A template line with each "%s" replaced by the next value.
  void fill(const char *line, const char (*values)[26], int &next) {
    for (const char *p = line; *p; ++p) {
      if (p[0] == '%' && p[1] == 's') {
        add(values[next++]);
        ++p;
      } else {
        add(p, 1);
      }
    }
  }
};

struct parsed_record {
  int64_t status = 0;
  int64_t detail = 0;
  char values[max_message_lines * 2][26];
  int nvalues = -1;
};

parsed_record parse(const char *errbuf) {
  parsed_record r;
  r.nvalues = p01abtn_(errbuf, &r.status, &r.detail, r.values, max_message_lines * 2);
  return r;
}

}  // namespace

void report_c(const char *routine, message_table table, int64_t status, const char *errbuf, Zem_Fail *fail) {
  if (status == 0) return;
  if (fail) fail->errnum = status;
  if (status == status_alloc_fail) return p01acc_c(alloc_fail_c, NE_ALLOC_FAIL, routine, fail);

  const parsed_record r = parse(errbuf);
  const message *row = r.nvalues < 0 ? nullptr : find_row(table, status, r.detail);
  if (!row || r.nvalues < count_values(row->c_lines)) return p01acc_c(nullptr, NE_INTERNAL_ERROR, routine, fail);

  char text[c_message_len];
  text_buffer out{text, c_message_len};
  const char *name = code_name(row->code);
  out.add(name ? name : "NE_INTERNAL_ERROR");
  out.add(":");
  int next = 0;
  for (const char *line : row->c_lines) {
    if (!line) break;
    out.add("\n  ");
    out.fill(line, r.values, next);
  }
  p01acc_c(text, row->code, routine, fail);
}

void report_f(const char *routine, message_table table, int64_t status, const char *errbuf, int64_t *ifail) {
  if (status == 0) {
    *ifail = 0;
    return;
  }
  char lines[max_message_lines][f_line_len];
  std::memset(lines, ' ', sizeof lines);
  int64_t nlines = 0;
  auto put = [&](const char *text) {
    std::memcpy(lines[nlines++], text, std::min<size_t>(std::strlen(text), f_line_len));
  };

  if (status == status_alloc_fail) {
    put(alloc_fail_f);
  } else if (status != 0) {
    const parsed_record r = parse(errbuf);
    const message *row = r.nvalues < 0 ? nullptr : find_row(table, status, r.detail);
    if (row && r.nvalues >= count_values(row->fortran())) {
      int next = 0;
      for (const char *line : row->fortran()) {
        if (!line) break;
        char tmp[f_line_len + 1];
        text_buffer l{tmp, f_line_len + 1};
        l.add("** ");
        l.fill(line, r.values, next);
        put(tmp);
      }
    } else {
      char tmp[f_line_len + 1];
      std::snprintf(tmp, sizeof tmp, "** Unexpected error (%5lld,%5lld)", static_cast<long long>(status),
                    static_cast<long long>(r.nvalues < 0 ? 0 : r.detail));
      put(tmp);
    }
  }
  p01abzu_(ifail, &status, routine, &lines[0][0], &nlines, std::strlen(routine), f_line_len);
}

void user_stop(char *errbuf, int64_t *ifail, int64_t flag) {
  fail(errbuf, ifail, status_user_stop, detail_user_stop, flag);
}

void c_entry::bad_param(const char *arg) {
  char text[c_message_len];
  std::snprintf(text, sizeof text, zem_errlist[NE_BAD_PARAM], arg);
  p01acc_c(text, NE_BAD_PARAM, routine_, fail_);
}

void c_entry::report() {
  report_c(routine_, table_, status, errbuf, fail_);
  if (fail_ && fail_->code == NE_NOERROR) p01acc_c(nullptr, NE_NOERROR, routine_, fail_);
}


}  // namespace zem

ZEM_INTERNAL void p01acc_c(const char *message, int code, const char *routine, Zem_Fail *fail) {
  if (!message) message = zem_errlist[code >= 0 && code < ZEM_ERRLIST_SIZE ? code : NE_INTERNAL_ERROR];
  if (code != 0) {
    if (!fail || fail->print) {
      // Error or warning, from the message's own name: the character after
      // the first 'N' within its first five characters ("NE_" or "NW_").
      bool error = false;
      for (int i = 0; i < 5 && message[i]; ++i) {
        if (message[i] == 'N') {
          error = message[i + 1] == 'E';
          break;
        }
      }
      std::fprintf(stderr, error ? "Error detected by ZEM routine %s:\n%s\n" : "Warning from ZEM routine %s:\n%s\n",
                   routine, message);
    }
    if (!fail) {
      std::fputs("...ZEM Function Terminated\n", stderr);
      std::exit(1);
    }
  } else if (!fail) {
    return;
  }
  fail->code = code;
  // The handler runs before the copy: the record's message still holds the
  // previous text while it runs.
  if (fail->handler) fail->handler(message, code, routine);
  const size_t n = std::min(std::strlen(message), sizeof fail->message - 1);
  std::memcpy(fail->message, message, n);
  fail->message[n] = '\0';
}

ZEM_INTERNAL void p01abzu_(int64_t *ifail, const int64_t *status, const char *routine, const char *lines,
                           const int64_t *nlines, size_t routine_len, size_t line_len) {
  if (*status == 0) {
    *ifail = 0;
    return;
  }
  // -1 is the only noisy soft value; 0 is hard; 1 and every other value
  // are quiet soft.
  const bool hard = *ifail == 0;
  const bool quiet = !hard && *ifail != -1;
  if (!quiet) {
    // The error unit, unless it cannot take the lines: a unit nobody
    // opened (or beyond the run-time's numbers) sends them to standard
    // error instead, and so does a silenced unit when the program is about
    // to stop: a hard failure always says why.  A silenced unit and a soft
    // failure print nothing, as asked.
    const int64_t unit = zem::err_unit();
    bool to_stderr = unit < 0 && hard;
    auto put = [&](std::string_view text) {
      if (unit < 0 && !to_stderr) return;
      if (!to_stderr && zem::write_record(unit, text) != 0) to_stderr = true;  // from now on
      if (to_stderr) {
        size_t n = text.size();
        while (n > 1 && text[n - 1] == ' ') --n;
        std::fprintf(stderr, "%.*s\n", static_cast<int>(n), text.data());
      }
    };
    for (int64_t i = 0; i < *nlines; ++i) put(std::string_view(lines + i * line_len, line_len));
    char line[160];
    std::snprintf(line, sizeof line, "** ABNORMAL EXIT from ZEM Library routine %.*s: IFAIL =%6lld",
                  static_cast<int>(routine_len), routine, static_cast<long long>(*status));
    put(line);
    if (hard) {
      put(" ** ZEM hard failure - execution terminated");
      std::fflush(stderr);
      p01_fstop_();
    }
    put(" ** ZEM soft failure - control returned");
  }
  *ifail = *status;
}

ZEM_INTERNAL int p01abtn_(const char *errbuf, int64_t *status, int64_t *detail, char (*values)[26], int max_values) {
  int st = 0, de = 0, used = 0;
  if (std::sscanf(errbuf, "\x01%d\x01%d\x01%n", &st, &de, &used) < 2 || used == 0) return -1;
  *status = st;
  *detail = de;
  const char *p = errbuf + used;
  int n = 0;
  // Each value: at most 25 characters up to the next 0x01.
  while (n < max_values) {
    const char *end = static_cast<const char *>(std::memchr(p, '\x01', zem::value_len + 1));
    if (!end || end == p || end > errbuf + zem::errbuf_len - 1 || std::memchr(p, '\0', end - p)) break;
    std::memcpy(values[n], p, end - p);
    values[n][end - p] = '\0';
    ++n;
    p = end + 1;
  }
  return n;
}

// Legacy parameter messages.  They print on unit 6 always (their unit query
// answers 6 and ignores any setting), unless the units digit of their
// ifail-style argument is 1 and its tens digit 0; every call is counted.
namespace zem {
std::atomic<int64_t> legacy_message_count{0};
}

namespace {
bool legacy_silent(int64_t ifail) {
  const int64_t a = ifail < 0 ? -ifail : ifail;
  return a % 10 == 1 && (a / 10) % 10 == 0;
}
void legacy_heading(const char *param, const char *routine) {
  char line[120];
  std::snprintf(line, sizeof line, " *****  Parameter  %1.1s  is invalid in routine  %1.1s  ***** ", param, routine);
  zem::write_record(6, "");
  zem::write_record(6, line);
}
}  // namespace

ZEM_INTERNAL void p01abw_f(const int64_t *ifail, const char *param, const char *routine, const double *value) {
  zem::legacy_message_count.fetch_add(1, std::memory_order_relaxed);
  if (legacy_silent(*ifail)) return;
  legacy_heading(param, routine);
  zem::write_record(6, "        Value supplied is");
  zem::value_text t = zem::format_value(*value);
  char line[48];
  std::snprintf(line, sizeof line, "        %.*s", t.len, t.text);
  zem::write_record(6, line);
}

ZEM_INTERNAL void p01aby_f(const int64_t *ifail, const char *param, const char *routine, const int64_t *value) {
  zem::legacy_message_count.fetch_add(1, std::memory_order_relaxed);
  if (legacy_silent(*ifail)) return;
  legacy_heading(param, routine);
  char line[64];
  std::snprintf(line, sizeof line, "        Value supplied is%6ld", static_cast<long>(*value));
  zem::write_record(6, line);
}
