// e04rn: a linear matrix inequality  sum_{i=1..n} x_i A_i - A_0 >= 0  (the
// matrix positive semidefinite), dima by dima, block diagonal with nblk
// blocks of sizes blksizea.  The n+1 symmetric matrices A_0, ..., A_n are
// given one after the other by their upper triangles: nnza[i] elements of
// A_i.  idblk must be 0 on entry and returns the new block's identifier.
#include <cstdint>
#include <new>

#include "e04/lmi.h"
#include "e04/model.h"

inline constexpr zem::message e04rn_messages[] = {
    ZEM_E04_HANDLE_ROWS,
    ZEM_E04_PHASE_ROWS,
    ZEM_E04_REF_MATCH_ROW(5, 1011),
    {6, 1012, NE_INT, {"On entry, dima = %s.", "Constraint: dima > 0."}},
    {6, 1013, NE_INT, {"On entry, nblk = %s.", "Constraint: nblk > 0."}},
    {6, 1014, NE_INT, {"On entry, idblk = %s.", "Constraint: idblk = 0."}},
    E04_ROWS_COUNTS(6, 1015, "nnza", "nnzasum"),
    {6, 1018, NE_INT_ARRAY, {"On entry, i = %s and", "blksizea[i-1] = %s.", "Constraint: blksizea[i-1] >= 1."},
                            {"On entry, i = %s and", "blksizea(i) = %s", "Constraint: blksizea(i) >= 1."}},
    {6, 1019, NE_INT_2, {"On entry, sum(blksizea) = %s and", "dima = %s.", "Constraint: sum(blksizea) = dima."},
                        {"On entry, sum(blksizea) = %s and", "dima = %s", "Constraint: sum(blksizea) = dima."}},
    E04_ROWS_MATRICES(8, 1021, "irowa", "icola", "a", "dima", "blksizea"),
};
ZEM_REGISTER_MESSAGES(e04rn)

#define E04RN_ARGS(V, A, U)                                                                              \
  A(void *const *, handle) V(const int64_t *, nvar) V(const int64_t *, dima) A(const int64_t *, nnza)    \
  V(const int64_t *, nnzasum) A(const int64_t *, irowa) A(const int64_t *, icola) A(const double *, a)   \
  V(const int64_t *, nblk) A(const int64_t *, blksizea) V(int64_t *, idblk) V(char *, errbuf)            \
  V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(e04rn, E04RN_ARGS)

ZEM_INTERNAL void e04rnfn_(engine_data *, void *const *handle, const int64_t *nvar, const int64_t *dima,
                           const int64_t *nnza, const int64_t *nnzasum, const int64_t *irowa, const int64_t *icola,
                           const double *a, const int64_t *nblk, const int64_t *blksizea, int64_t *idblk,
                           char *errbuf, int64_t *ifail) {
  using namespace zem::e04;
  *ifail = 0;
  E04_OPEN_EDITABLE(*handle);
  if (*nvar != p->s.nvar) return zem::fail(errbuf, ifail, 5, 1011, *nvar, p->s.nvar);
  if (*dima <= 0 || *dima > max_vars) return zem::fail(errbuf, ifail, 6, 1012, *dima);
  if (*nblk <= 0) return zem::fail(errbuf, ifail, 6, 1013, *nblk);
  if (*idblk != 0) return zem::fail(errbuf, ifail, 6, 1014, *idblk);
  const checker ck{errbuf, ifail};
  int64_t total = 0;
  if (!check_counts(ck, nnza, *nvar + 1, *nnzasum, 6, 1015, &total)) return;
  int64_t sum = 0;
  for (int64_t i = 0; i < *nblk; ++i) {
    if (blksizea[i] < 1) return zem::fail(errbuf, ifail, 6, 1018, i + 1, blksizea[i]);
    sum = blksizea[i] > INT64_MAX - sum ? INT64_MAX : sum + blksizea[i];
  }
  if (sum != *dima) return zem::fail(errbuf, ifail, 6, 1019, sum, *dima);
  try {
    std::vector<int64_t> bs(blksizea, blksizea + *nblk);
    if (!check_matrices(ck, nnza, *nvar + 1, total, irowa, icola, a, *dima, bs, 8, 1021)) return;
    matrix_block b;
    b.dim = *dima;
    b.nvar = *nvar;
    b.blksize = std::move(bs);
    b.nnz.assign(nnza, nnza + *nvar + 1);
    b.a = coo{{irowa, irowa + total}, {icola, icola + total}, {a, a + total}};
    p->blocks.push_back(std::move(b));
  } catch (const std::bad_alloc &) {
    return zem::alloc_fail(ifail);
  }
  *idblk = static_cast<int64_t>(p->blocks.size());
}

ZEM_API void e04rnf_(void *const *handle, const int64_t *nvar, const int64_t *dima, const int64_t nnza[],
                     const int64_t *nnzasum, const int64_t irowa[], const int64_t icola[], const double a[],
                     const int64_t *nblk, const int64_t blksizea[], int64_t *idblk, int64_t *ifail) {
  zem::f_entry call("e04rnf", e04rn_messages);
  e04rnft_(&call.en_data, handle, nvar, dima, nnza, nnzasum, irowa, icola, a, nblk, blksizea, idblk, call.errbuf,
           &call.status);
  call.finish(ifail);
}

ZEM_API void e04rnc(void *handle, int64_t nvar, int64_t dima, const int64_t nnza[], int64_t nnzasum,
                    const int64_t irowa[], const int64_t icola[], const double a[], int64_t nblk,
                    const int64_t blksizea[], int64_t *idblk, Zem_Fail *fail) {
  zem::c_entry call("e04rnc", e04rn_messages, fail);
  if (!nnza) return call.bad_param("nnza");
  if (nnzasum > 0 && (!irowa || !icola || !a)) return call.bad_param(!irowa ? "irowa" : !icola ? "icola" : "a");
  if (nblk > 0 && !blksizea) return call.bad_param("blksizea");
  if (!idblk) return call.bad_param("idblk");
  e04rnft_(&call.en_data, &handle, &nvar, &dima, nnza, &nnzasum, irowa, icola, a, &nblk, blksizea, idblk,
           call.errbuf, &call.status);
  call.finish();
}
