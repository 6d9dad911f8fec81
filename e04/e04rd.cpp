// e04rd: reads a problem in SDPA sparse format from an open stream into an
// empty handle (created by e04ra with nvar = 0): the variables, the linear
// objective and one matrix inequality, as e04re and e04rn would define them.
// The stream is a Fortran unit number in the Fortran interface and a POSIX
// file descriptor open for reading in the C interface; lines longer than
// 4096 characters are not supported by the Fortran unit reader.  Limits:
// the problem may have at most maxnvar variables, maxnblk blocks and maxnnz
// matrix entries; larger data fail with NE_INT_MAX, which reports the sizes
// needed.  Nothing is stored unless the whole stream reads correctly.
#include <cstdint>
#include <cstdio>
#include <new>
#include <string>
#include <unistd.h>

#include "e04/model.h"
#include "e04/reader_rows.h"
#include "e04/readers.h"
#include "frame/units.h"

inline constexpr zem::message e04rd_messages[] = {
    ZEM_E04_HANDLE_ROWS,
    ZEM_E04_PHASE_ROWS,
    {6, 1011, NE_INT, {"On entry, infile = %s.", "Constraint: infile >= 0."}},
    {6, 1012, NE_INT, {"On entry, maxnvar = %s.", "Constraint: maxnvar >= 0."}},
    {6, 1013, NE_INT, {"On entry, maxnblk = %s.", "Constraint: maxnblk >= 0."}},
    {6, 1014, NE_INT, {"On entry, maxnnz = %s.", "Constraint: maxnnz >= 0."}},
    {7, 1015, NE_ALREADY_DEFINED, {"A problem has already been defined in the handle;",
                                   "e04rd needs an empty handle (nvar = 0)."}},
    {2, 1016, NE_READ_ERROR, {"The stream infile = %s cannot be read."}},
    E04_READER_ROWS,
};
ZEM_REGISTER_MESSAGES(e04rd)

#define E04RD_ARGS(V, A, U)                                                                            \
  A(void *const *, handle) V(const int64_t *, infile) V(const int64_t *, maxnvar) V(const int64_t *, maxnblk) \
  V(const int64_t *, maxnnz) V(const int64_t *, stream_kind) V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(e04rd, E04RD_ARGS)

namespace {
// Stream kinds: a Fortran unit, or a file descriptor.
constexpr int64_t fortran_unit = 0, file_descriptor = 1;
}  // namespace

ZEM_INTERNAL void e04rdfn_(engine_data *, void *const *handle, const int64_t *infile, const int64_t *maxnvar,
                           const int64_t *maxnblk, const int64_t *maxnnz, const int64_t *stream_kind, char *errbuf,
                           int64_t *ifail) {
  using namespace zem::e04;
  *ifail = 0;
  E04_OPEN_EDITABLE(*handle);
  if (*infile < 0) return zem::fail(errbuf, ifail, 6, 1011, *infile);
  if (*maxnvar < 0) return zem::fail(errbuf, ifail, 6, 1012, *maxnvar);
  if (*maxnblk < 0) return zem::fail(errbuf, ifail, 6, 1013, *maxnblk);
  if (*maxnnz < 0) return zem::fail(errbuf, ifail, 6, 1014, *maxnnz);
  if (p->s.nvar != 0 || p->s.objective != obj_none || p->nlc() || !p->blocks.empty() || !p->cones.empty() ||
      !p->qcons.empty() || p->s.ncnln)
    return zem::fail(errbuf, ifail, 7, 1015);
  try {
    problem fresh;
    read_error e;
    const sdpa_limits lim{*maxnvar, *maxnblk, *maxnnz};
    if (*stream_kind == file_descriptor) {
      const int fd = dup(static_cast<int>(*infile));
      std::FILE *f = fd >= 0 ? fdopen(fd, "r") : nullptr;
      if (!f) {
        if (fd >= 0) close(fd);
        return zem::fail(errbuf, ifail, 2, 1016, *infile);
      }
      auto next = [f](std::string &line) {
        line.clear();
        int ch;
        while ((ch = std::fgetc(f)) != EOF && ch != '\n') line.push_back(static_cast<char>(ch));
        return !(ch == EOF && line.empty());
      };
      e = read_sdpa(next, lim, fresh);
      std::fclose(f);
    } else {
      std::string rec(4096, ' ');
      const int64_t unit = *infile;
      bool failed = false;
      auto next = [&](std::string &line) {
        const int st = zem::read_record(unit, rec.data(), rec.size());
        if (st != 0) {
          failed = st == 2;
          return false;
        }
        size_t n = rec.size();
        while (n > 0 && rec[n - 1] == ' ') --n;
        line.assign(rec, 0, n);
        return true;
      };
      e = read_sdpa(next, lim, fresh);
      if (failed && !e.status) return zem::fail(errbuf, ifail, 2, 1016, *infile);
    }
    if (e.status == -999) return zem::alloc_fail(ifail);
    if (e.status) return report_read_error(e, errbuf, ifail);
    fresh.s.phase = p->s.phase;
    p->s = fresh.s;
    p->bl = std::move(fresh.bl);
    p->bu = std::move(fresh.bu);
    p->vtype = std::move(fresh.vtype);
    p->c = std::move(fresh.c);
    p->blocks = std::move(fresh.blocks);
  } catch (const std::bad_alloc &) {
    return zem::alloc_fail(ifail);
  }
}

ZEM_API void e04rdf_(void *const *handle, const int64_t *infile, const int64_t *maxnvar, const int64_t *maxnblk,
                     const int64_t *maxnnz, int64_t *ifail) {
  zem::f_entry call("e04rdf", e04rd_messages);
  const int64_t kind = fortran_unit;
  e04rdft_(&call.en_data, handle, infile, maxnvar, maxnblk, maxnnz, &kind, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void e04rdc(void *handle, int64_t infile, int64_t maxnvar, int64_t maxnblk, int64_t maxnnz, Zem_Fail *fail) {
  zem::c_entry call("e04rdc", e04rd_messages, fail);
  const int64_t kind = file_descriptor;
  e04rdft_(&call.en_data, &handle, &infile, &maxnvar, &maxnblk, &maxnnz, &kind, call.errbuf, &call.status);
  call.finish();
}
