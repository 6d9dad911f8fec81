// e04zp: options of a handle read from a file.
//
// Lines are skipped up to the first line whose first word is BEGIN (any
// case); each following line up to the first line whose first word is END
// holds one setting "Name = value", the delimiter being ' = ' (an equals
// sign with a blank on each side).  Blank lines, and lines whose first
// non-blank character is '*' or '!', are comments; a line holding only the
// word "Defaults" resets every option.  The settings are checked and applied
// in order to a copy of the handle's options, which replaces them only when
// the whole file has been read without a failure: a file with an error
// leaves the handle's options exactly as they were.
#include <cstdio>
#include <memory>
#include <new>
#include <string>

#include "e04/option_messages.h"

inline constexpr zem::message e04zp_messages[] = {
    ZEM_E04_HANDLE_ROWS,
    ZEM_E04_OPTION_PHASE_ROW,
    {14, 1061, NE_NOT_READ_FILE, {"Cannot open the options file for reading:", "file = %s%s"}},
    {14, 1062, NE_NOT_READ_FILE, {"End-of-file or read error detected before BEGIN was found."}},
    {14, 1063, NE_NOT_READ_FILE, {"BEGIN found, but end-of-file found before END."}},
    {12, 1064, NE_INVALID_FORMAT, {"The expected delimiter ' = ' was not found on line %s."}},
    {11, 1065, NE_INVALID_OPTION, {"The option provided on line %s was not recognized."}},
    {12, 1066, NE_INVALID_FORMAT, {"The optval provided on line %s could not be converted",
                                   "to the expected numerical type."}},
    {13, 1067, NE_INVALID_VALUE, {"The optval provided on line %s for the real", "optional parameter is out of bounds."}},
    {13, 1068, NE_INVALID_VALUE, {"The optval provided on line %s for the integer",
                                  "optional parameter is out of bounds."}},
    {13, 1069, NE_INVALID_VALUE, {"The optval provided on line %s for the character",
                                  "optional parameter is not valid."}},
};
ZEM_REGISTER_MESSAGES(e04zp)

#define E04ZP_ARGS(V, A, U) \
  A(void *const *, handle) A(const char *, fname) V(char *, errbuf) V(int64_t *, ifail) U(size_t, fname_len)
ZEM_ENGINE_LAYERS(e04zp, E04ZP_ARGS)

namespace {

struct file_closer {
  void operator()(std::FILE *f) const { std::fclose(f); }
};

// Reads one line (without its end-of-line characters) into line; false at
// the end of the file or on a read error with nothing read.
bool next_line(std::FILE *f, std::string &line) {
  line.clear();
  char buf[512];
  bool any = false;
  while (std::fgets(buf, sizeof buf, f)) {
    any = true;
    const size_t n = std::strlen(buf);
    line.append(buf, n);
    if (n > 0 && buf[n - 1] == '\n') break;
  }
  while (!line.empty() && (line.back() == '\n' || line.back() == '\r')) line.pop_back();
  return any;
}

// The first word of a line, upper case, compared with word.
bool first_word_is(std::string_view line, std::string_view word) {
  line = zem::e04::trim(line);
  if (line.size() < word.size()) return false;
  for (size_t i = 0; i < word.size(); ++i)
    if (zem::e04::upper(line[i]) != word[i]) return false;
  return line.size() == word.size() || line[word.size()] == ' ' || line[word.size()] == '\t';
}

}  // namespace

ZEM_INTERNAL void e04zpfn_(engine_data *, void *const *handle, const char *fname, char *errbuf, int64_t *ifail,
                           size_t fname_len) {
  using namespace zem::e04;
  *ifail = 0;
  problem *p = open_for_options(*handle, true, errbuf, ifail);
  if (!p) return;
  try {
    std::string name(fname, fname_len);
    while (!name.empty() && name.back() == ' ') name.pop_back();  // a Fortran name comes blank-padded
    const std::unique_ptr<std::FILE, file_closer> f(name.find('\0') == std::string::npos
                                                        ? std::fopen(name.c_str(), "r")
                                                        : nullptr);
    if (!f) {
      const message_text m = split_for_message(name, "\"", "\".");
      return zem::fail(errbuf, ifail, 14, 1061, m.a, m.b);
    }
    std::string line;
    int64_t lineno = 0;
    for (;;) {
      if (!next_line(f.get(), line)) return zem::fail(errbuf, ifail, 14, 1062);
      ++lineno;
      if (first_word_is(line, "BEGIN")) break;
    }
    option_set work = *options(*p);
    for (;;) {
      if (!next_line(f.get(), line)) return zem::fail(errbuf, ifail, 14, 1063);
      ++lineno;
      const std::string_view l = trim(line);
      if (l.empty() || l.front() == '*' || l.front() == '!') continue;
      if (first_word_is(l, "END")) break;
      const size_t eq = l.find(" = ");
      set_result r;
      if (eq == std::string_view::npos) {
        r = apply_setting(work, l, {});  // only "Defaults" stands alone
        if (r.outcome != set_outcome::defaults) return zem::fail(errbuf, ifail, 12, 1064, lineno);
        continue;
      }
      r = apply_setting(work, l.substr(0, eq), l.substr(eq + 3));
      switch (r.outcome) {
        case set_outcome::ok:
        case set_outcome::defaults:
          break;
        case set_outcome::unknown_option:
          return zem::fail(errbuf, ifail, 11, 1065, lineno);
        case set_outcome::not_integer:
        case set_outcome::not_real:
          return zem::fail(errbuf, ifail, 12, 1066, lineno);
        case set_outcome::real_bound:
          return zem::fail(errbuf, ifail, 13, 1067, lineno);
        case set_outcome::int_bound:
          return zem::fail(errbuf, ifail, 13, 1068, lineno);
        case set_outcome::bad_keyword:
          return zem::fail(errbuf, ifail, 13, 1069, lineno);
      }
    }
    *options(*p) = work;
  } catch (const std::bad_alloc &) {
    return zem::alloc_fail(ifail);
  }
}

ZEM_API void e04zpf_(void *const *handle, const char *fname, int64_t *ifail, size_t fname_len) {
  zem::f_entry call("e04zpf", e04zp_messages);
  e04zpft_(&call.en_data, handle, fname, call.errbuf, &call.status, fname_len);
  call.finish(ifail);
}

ZEM_API void e04zpc(void *handle, const char *fname, Zem_Fail *fail) {
  zem::c_entry call("e04zpc", e04zp_messages, fail);
  if (!fname) return call.bad_param("fname");
  e04zpft_(&call.en_data, &handle, fname, call.errbuf, &call.status, std::strlen(fname));
  call.finish();
}
