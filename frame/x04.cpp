// x04: the output units, writing and reading one record, and printing a
// real matrix.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>

#include "frame.h"
#include "units.h"

// ---- x04aa, x04ab: the error and advisory message units ----------------

ZEM_API void x04aaf_(const int64_t *iflag, int64_t *nerr) {
  if (*iflag == 0) *nerr = zem::err_unit();
  else if (*iflag == 1) zem::set_err_unit(*nerr);
}
ZEM_API void x04abf_(const int64_t *iflag, int64_t *nadv) {
  if (*iflag == 0) *nadv = zem::adv_unit();
  else if (*iflag == 1) zem::set_adv_unit(*nadv);
}
ZEM_API void x04aac(int64_t iflag, int64_t *nerr) { if (nerr) x04aaf_(&iflag, nerr); }
ZEM_API void x04abc(int64_t iflag, int64_t *nadv) { if (nadv) x04abf_(&iflag, nadv); }

// ---- x04ba: write one record --------------------------------------------
// The writer reaches the engine as a routine argument through its callback
// chain, so that an interface layer can put another writer in its place.

typedef void (*zem_record_io)(const int64_t *unit, char *rec, const int64_t *len, int64_t *ios);

namespace {
void record_writer(const int64_t *unit, char *rec, const int64_t *len, int64_t *ios) {
  *ios = zem::write_record(*unit, std::string_view(rec, *len));
}
void record_reader(const int64_t *unit, char *rec, const int64_t *len, int64_t *ios) {
  *ios = zem::read_record(*unit, rec, *len);
}
}  // namespace

#define X04_REC_ARGS(V, A, U) V(const int64_t *, unit) A(char *, rec) V(const int64_t *, len) V(int64_t *, ios)
ZEM_CALLBACK_CHAIN(x04ba, print_rec, X04_REC_ARGS)
ZEM_INTERNAL void x04baf_print_rech_(engine_data *, zem_routine w, const int64_t *unit, char *rec, const int64_t *len,
                                     int64_t *ios) {
  reinterpret_cast<zem_record_io>(w)(unit, rec, len, ios);
}
ZEM_INTERNAL void x04bac_print_rec_helper(engine_data *, zem_routine w, const int64_t *unit, char *rec,
                                          const int64_t *len, int64_t *ios) {
  reinterpret_cast<zem_record_io>(w)(unit, rec, len, ios);
}

#define X04BA_ARGS(V, A, U) \
  V(const int64_t *, nout) A(char *, rec) V(const int64_t *, len) U(zem_routine, print_rec) U(x04ba_print_rec_adaptor, adaptor)
ZEM_ENGINE_LAYERS(x04ba, X04BA_ARGS)
ZEM_INTERNAL void x04bafn_(engine_data *en_data, const int64_t *nout, char *rec, const int64_t *len,
                           zem_routine print_rec, x04ba_print_rec_adaptor adaptor) {
  int64_t ios = 0;  // a failed write is the writer's status; x04ba reports nothing
  x04baf_print_print_rech_(adaptor, en_data, print_rec, nout, rec, len, &ios);
}

ZEM_API void x04baf_(const int64_t *nout, const char *rec, size_t rec_len) {
  engine_data en_data;
  y90haan_(&en_data);
  const int64_t len = static_cast<int64_t>(rec_len);
  x04baft_(&en_data, nout, const_cast<char *>(rec), &len, reinterpret_cast<zem_routine>(record_writer),
           x04baf_print_rech_);
}
ZEM_API void x04bac(int64_t nout, const char *rec) {
  f90_io_init();
  engine_data en_data;
  y90haan_(&en_data);
  const int64_t len = rec ? static_cast<int64_t>(std::strlen(rec)) : 0;
  x04baft_(&en_data, &nout, const_cast<char *>(rec ? rec : ""), &len, reinterpret_cast<zem_routine>(record_writer),
           x04bac_print_rec_helper);
}

// ---- x04bb: read one record ---------------------------------------------

inline constexpr zem::message x04bb_messages[] = {
    {1, 1001, NE_READ_EOF, {"End of file reached on unit %s."}},
    {2, 1002, NE_READ_ERROR, {"A record could not be read from unit %s."}},
};
ZEM_REGISTER_MESSAGES(x04bb)

ZEM_CALLBACK_CHAIN(x04bb, read_rec, X04_REC_ARGS)
ZEM_INTERNAL void x04bbf_read_rech_(engine_data *, zem_routine r, const int64_t *unit, char *rec, const int64_t *len,
                                    int64_t *ios) {
  reinterpret_cast<zem_record_io>(r)(unit, rec, len, ios);
}
ZEM_INTERNAL void x04bbc_read_rec_helper(engine_data *, zem_routine r, const int64_t *unit, char *rec,
                                         const int64_t *len, int64_t *ios) {
  reinterpret_cast<zem_record_io>(r)(unit, rec, len, ios);
}

#define X04BB_ARGS(V, A, U)                                                                           \
  V(const int64_t *, nin) A(char *, recin) V(const int64_t *, len) U(zem_routine, read_rec)          \
  U(x04bb_read_rec_adaptor, adaptor) A(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(x04bb, X04BB_ARGS)
ZEM_INTERNAL void x04bbfn_(engine_data *en_data, const int64_t *nin, char *recin, const int64_t *len,
                           zem_routine read_rec, x04bb_read_rec_adaptor adaptor, char *errbuf, int64_t *ifail) {
  *ifail = 0;
  int64_t ios = 0;
  x04bbf_print_read_rech_(adaptor, en_data, read_rec, nin, recin, len, &ios);
  if (ios == 1) return zem::fail(errbuf, ifail, 1, 1001, *nin);
  if (ios != 0) return zem::fail(errbuf, ifail, 2, 1002, *nin);
}

ZEM_API void x04bbf_(const int64_t *nin, char *recin, int64_t *ifail, size_t recin_len) {
  zem::f_entry call("x04bbf", x04bb_messages);
  const int64_t len = static_cast<int64_t>(recin_len);
  x04bbft_(&call.en_data, nin, recin, &len, reinterpret_cast<zem_routine>(record_reader), x04bbf_read_rech_,
           call.errbuf, &call.status);
  call.finish(ifail);
}
ZEM_API void x04bbc(int64_t nin, char *recin, int64_t lrec, Zem_Fail *fail) {
  zem::c_entry call("x04bbc", x04bb_messages, fail);
  if (!recin) return call.bad_param("recin");
  if (lrec < 0) return call.bad_param("lrec");
  x04bbft_(&call.en_data, &nin, recin, &lrec, reinterpret_cast<zem_routine>(record_reader), x04bbc_read_rec_helper,
           call.errbuf, &call.status);
  recin[lrec] = '\0';
  call.finish();
}

// ---- x04ca: print a real matrix -----------------------------------------
//
// Layout (fixed choices): the title on a line of its own; then the columns in
// blocks as wide as fit in 80 characters, each block headed by its column
// numbers and each row led by its row number.  Numbers print as F11.4 when
// every printed value lies in [1e-3, 1e5) in magnitude or is zero, else as
// ES12.4 for the whole matrix.  A triangular matrix prints only its triangle;
// its diagonal prints as stored ('N'), as 1.0 whatever is stored ('U'), or
// blank ('B').

inline constexpr zem::message x04ca_messages[] = {
    {1, 1001, NE_BAD_PARAM, {"On entry, matrix = '%s'.", "Constraint: matrix = 'G', 'L' or 'U'."}},
    {2, 1002, NE_BAD_PARAM, {"On entry, diag = '%s'.", "Constraint: diag = 'U', 'N' or 'B'."}},
    {3, 1003, NE_INT_2, {"On entry, lda = %s and m = %s.", "Constraint: lda >= m."}},
};
ZEM_REGISTER_MESSAGES(x04ca)

namespace {

char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

void print_matrix(int64_t unit, char kind, char diag, int64_t m, int64_t n, const double *a, int64_t lda,
                  std::string_view title) {
  while (!title.empty() && title.back() == ' ') title.remove_suffix(1);
  if (!title.empty()) zem::write_record(unit, title);
  if (m <= 0 || n <= 0) return;

  auto shown = [&](int64_t i, int64_t j) {  // 0 blank, 1 stored value, 2 unit diagonal
    if ((kind == 'L' && j > i) || (kind == 'U' && j < i)) return 0;
    if (kind != 'G' && i == j) return diag == 'B' ? 0 : diag == 'U' ? 2 : 1;
    return 1;
  };
  bool fixed = true;
  for (int64_t j = 0; j < n && fixed; ++j)
    for (int64_t i = 0; i < m; ++i) {
      const int s = shown(i, j);
      const double v = s == 2 ? 1.0 : a[i + j * lda];
      if (s && v != 0.0 && !(std::fabs(v) >= 1e-3 && std::fabs(v) < 1e5)) {
        fixed = false;
        break;
      }
    }
  const int width = fixed ? 11 : 12;
  const int label = std::max(3, static_cast<int>(std::to_string(m).size()) + 1);
  const int64_t per_block = std::max<int64_t>(1, (80 - label) / width);
  char line[1024];
  for (int64_t j0 = 0; j0 < n; j0 += per_block) {
    const int64_t j1 = std::min(n, j0 + per_block);
    int len = std::snprintf(line, sizeof line, "%*s", label, "");
    for (int64_t j = j0; j < j1; ++j) len += std::snprintf(line + len, sizeof line - len, "%*lld", width, static_cast<long long>(j + 1));
    zem::write_record(unit, std::string_view(line, len));
    for (int64_t i = 0; i < m; ++i) {
      len = std::snprintf(line, sizeof line, "%*lld", label, static_cast<long long>(i + 1));
      for (int64_t j = j0; j < j1; ++j) {
        const int s = shown(i, j);
        if (s == 0) len += std::snprintf(line + len, sizeof line - len, "%*s", width, "");
        else len += std::snprintf(line + len, sizeof line - len, fixed ? "%11.4f" : "%12.4e", s == 2 ? 1.0 : a[i + j * lda]);
      }
      zem::write_record(unit, std::string_view(line, len));
    }
    if (j1 < n) zem::write_record(unit, "");
  }
}

}  // namespace

#define X04CA_ARGS(V, A, U)                                                                                   \
  A(const char *, matrix) A(const char *, diag) V(const int64_t *, m) V(const int64_t *, n) A(const double *, a) \
  V(const int64_t *, lda) A(const char *, title) A(char *, errbuf) V(int64_t *, ifail) U(size_t, title_len)
ZEM_ENGINE_LAYERS(x04ca, X04CA_ARGS)
ZEM_INTERNAL void x04cafn_(engine_data *, const char *matrix, const char *diag, const int64_t *m, const int64_t *n,
                           const double *a, const int64_t *lda, const char *title, char *errbuf, int64_t *ifail,
                           size_t title_len) {
  *ifail = 0;
  const char kind = upper(*matrix);
  if (kind != 'G' && kind != 'L' && kind != 'U') return zem::fail(errbuf, ifail, 1, 1001, *matrix);
  const char d = upper(*diag);
  if (kind != 'G' && d != 'U' && d != 'N' && d != 'B') return zem::fail(errbuf, ifail, 2, 1002, *diag);
  if (*lda < *m) return zem::fail(errbuf, ifail, 3, 1003, *lda, *m);
  print_matrix(zem::adv_unit(), kind, d, *m, *n, a, *lda, std::string_view(title, title_len));
}

ZEM_API void x04caf_(const char *matrix, const char *diag, const int64_t *m, const int64_t *n, const double a[],
                     const int64_t *lda, const char *title, int64_t *ifail, size_t, size_t, size_t title_len) {
  zem::f_entry call("x04caf", x04ca_messages);
  x04caft_(&call.en_data, matrix, diag, m, n, a, lda, title, call.errbuf, &call.status, title_len);
  call.finish(ifail);
}

ZEM_API void x04cac(Zem_MatrixType matrix, Zem_DiagType diag, int64_t m, int64_t n, const double a[], int64_t lda,
                    const char *title, Zem_Fail *fail) {
  zem::c_entry call("x04cac", x04ca_messages, fail);
  const char kind = matrix == Zem_GeneralMatrix ? 'G' : matrix == Zem_LowerMatrix ? 'L' : matrix == Zem_UpperMatrix ? 'U' : 0;
  if (!kind) return call.bad_param("matrix");
  const char d = diag == Zem_UnitDiag ? 'U' : diag == Zem_NonUnitDiag ? 'N' : diag == Zem_BlankDiag ? 'B' : 0;
  if (kind != 'G' && !d) return call.bad_param("diag");
  if (!a && m > 0 && n > 0) return call.bad_param("a");
  const char *t = title ? title : "";
  const char dd = d ? d : 'N';
  x04caft_(&call.en_data, &kind, &dd, &m, &n, a, &lda, t, call.errbuf, &call.status, std::strlen(t));
  call.finish();
}
