// e04sa: creates a handle from a problem file: ftype "MPS" (or "M") for MPS
// in fixed or free format, "SDPA" (or "S") for SDPA sparse format.  The
// file is read whole and checked before anything is created: on any failure
// the caller's handle is left as it was (e04/readers.cpp has the formats).
#include <cstdint>
#include <cstdio>
#include <new>
#include <string>

#include "e04/model.h"
#include "e04/reader_rows.h"
#include "e04/readers.h"
#include "e04/sparse_check.h"

inline constexpr zem::message e04sa_messages[] = {
    {6, 1011, NE_STR_UNKNOWN, {"On entry, ftype = %s.", "Constraint: ftype = MPS, M, SDPA or S."},
                              {"On entry, ftype = %s", "Constraint: ftype = MPS, M, SDPA or S."}},
    {2, 1012, NE_READ_ERROR, {"Cannot open file \"%s\" for reading."}},
    {2, 1013, NE_READ_ERROR, {"An error occurred when reading file \"%s\"."}},
    E04_READER_ROWS,
};
ZEM_REGISTER_MESSAGES(e04sa)

#define E04SA_ARGS(V, A, U)                                                                        \
  A(void **, handle) A(const char *, ftype) A(const char *, fname) V(char *, errbuf) V(int64_t *, ifail) \
  U(size_t, ftype_len) U(size_t, fname_len)
ZEM_ENGINE_LAYERS(e04sa, E04SA_ARGS)


ZEM_INTERNAL void e04safn_(engine_data *, void **handle, const char *ftype, const char *fname, char *errbuf,
                           int64_t *ifail, size_t ftype_len, size_t fname_len) {
  using namespace zem::e04;
  *ifail = 0;
  const std::string k = keyword(ftype, ftype_len);
  const bool mps = k == "MPS" || k == "M", sdpa = k == "SDPA" || k == "S";
  if (!mps && !sdpa) return zem::fail(errbuf, ifail, 6, 1011, std::string_view(k));
  try {
    std::string name(fname, fname_len);
    while (!name.empty() && name.back() == ' ') name.pop_back();
    if (const size_t z = name.find('\0'); z != std::string::npos) name.resize(z);
    std::FILE *f = std::fopen(name.c_str(), "rb");
    // A message value holds 25 characters: a longer name is shown by its end.
    const std::string_view shown = std::string_view(name).substr(name.size() > 25 ? name.size() - 25 : 0);
    if (!f) return zem::fail(errbuf, ifail, 2, 1012, shown);
    // The whole file in one string of its exact size (no growth by
    // doubling, which would copy it and could double the peak memory).
    std::string text;
    if (std::fseek(f, 0, SEEK_END) == 0) {
      const long size = std::ftell(f);
      if (size > 0) text.reserve(static_cast<size_t>(size));
      std::rewind(f);
    } else {
      std::clearerr(f);
    }
    char buf[1 << 16];
    size_t got;
    while ((got = std::fread(buf, 1, sizeof buf, f)) > 0) text.append(buf, got);
    const bool read_failed = std::ferror(f) != 0;
    std::fclose(f);
    if (read_failed) return zem::fail(errbuf, ifail, 2, 1013, shown);
    auto *p = new problem;
    read_error e;
    if (mps) {
      e = read_mps(text, *p);
    } else {
      size_t pos = 0;
      auto next = [&](std::string &line) {
        if (pos >= text.size()) return false;
        size_t eol = text.find('\n', pos);
        if (eol == std::string::npos) eol = text.size();
        line.assign(text, pos, eol - pos);
        pos = eol + 1;
        return true;
      };
      e = read_sdpa(next, sdpa_limits{INT64_MAX, INT64_MAX, INT64_MAX}, *p);
    }
    if (e.status) {
      delete p;
      if (e.status == -999) return zem::alloc_fail(ifail);
      return report_read_error(e, errbuf, ifail);
    }
    void *h = attach_options(*p) ? new_header(p) : nullptr;
    if (!h) {
      release_options(*p);
      delete p;
      return zem::alloc_fail(ifail);
    }
    *handle = h;
  } catch (const std::bad_alloc &) {
    return zem::alloc_fail(ifail);
  }
}

ZEM_API void e04saf_(void **handle, const char *ftype, const char *fname, int64_t *ifail, size_t ftype_len,
                     size_t fname_len) {
  zem::f_entry call("e04saf", e04sa_messages);
  e04saft_(&call.en_data, handle, ftype, fname, call.errbuf, &call.status, ftype_len, fname_len);
  call.finish(ifail);
}

ZEM_API void e04sac(void **handle, const char *ftype, const char *fname, Zem_Fail *fail) {
  zem::c_entry call("e04sac", e04sa_messages, fail);
  if (!handle) return call.bad_param("handle");
  if (!ftype) return call.bad_param("ftype");
  if (!fname) return call.bad_param("fname");
  e04saft_(&call.en_data, handle, ftype, fname, call.errbuf, &call.status, std::strlen(ftype), std::strlen(fname));
  call.finish();
}
