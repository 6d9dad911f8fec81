// e04rp: the bilinear terms of an existing matrix inequality block idblk:
// the block becomes  sum x_i A_i - A_0 + sum_k x_{qi[k]} x_{qj[k]} Q_k >= 0.
// The nq symmetric matrices Q_k (dimq = the block's dimension, same block
// structure) are given one after the other by their upper triangles, nnzq[k]
// elements each.  A block takes its bilinear terms once.
#include <algorithm>
#include <cstdint>
#include <new>

#include "e04/lmi.h"
#include "e04/model.h"

inline constexpr zem::message e04rp_messages[] = {
    ZEM_E04_HANDLE_ROWS,
    ZEM_E04_PHASE_ROWS,
    {6, 1011, NE_INT, {"On entry, idblk = %s.", "Constraint: 1 <= idblk <= %s."},
                      {"On entry, idblk = %s", "Constraint: 1 <= idblk <= %s."}},
    {7, 1012, NE_DELETED, {"On entry, comp = MI and idx[i-1] = %s.", "This component has been deleted."},
                          {"On entry, comp = MI and idx(i) = %s", "This component has been deleted."}},
    {7, 1013, NE_ALREADY_DEFINED, {"On entry, idblk = %s.", "The bilinear terms of this block have already been defined."},
                                  {"On entry, idblk = %s", "The bilinear terms of this block have already been defined."}},
    {6, 1014, NE_INT_2, {"On entry, dimq = %s and", "the block's dimension = %s.", "Constraint: dimq must match the dimension of block idblk."},
                        {"On entry, dimq = %s and", "the block's dimension = %s", "Constraint: dimq must match the dimension of block idblk."}},
    {6, 1015, NE_INT, {"On entry, nq = %s.", "Constraint: nq > 0."}},
    E04_ROW_RANGE(8, 1016, "qi", "n"),
    E04_ROW_RANGE(8, 1017, "qj", "n"),
    {8, 1018, NE_INVALID_CS, {"On entry, more than one bilinear term has", "qi = %s and qj = %s.",
                              "Constraint: each pair (qi, qj) must be unique."},
                             {"On entry, more than one bilinear term has", "qi = %s and qj = %s",
                              "Constraint: each pair (qi, qj) must be unique."}},
    E04_ROWS_COUNTS(6, 1019, "nnzq", "nnzqsum"),
    E04_ROWS_MATRICES(8, 1031, "irowq", "icolq", "q", "dimq", "the block"),
};
ZEM_REGISTER_MESSAGES(e04rp)

#define E04RP_ARGS(V, A, U)                                                                              \
  A(void *const *, handle) V(const int64_t *, idblk) V(const int64_t *, dimq) V(const int64_t *, nq)     \
  A(const int64_t *, qi) A(const int64_t *, qj) A(const int64_t *, nnzq) V(const int64_t *, nnzqsum)     \
  A(const int64_t *, irowq) A(const int64_t *, icolq) A(const double *, q) V(char *, errbuf)             \
  V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(e04rp, E04RP_ARGS)

ZEM_INTERNAL void e04rpfn_(engine_data *, void *const *handle, const int64_t *idblk, const int64_t *dimq,
                           const int64_t *nq, const int64_t *qi, const int64_t *qj, const int64_t *nnzq,
                           const int64_t *nnzqsum, const int64_t *irowq, const int64_t *icolq, const double *q,
                           char *errbuf, int64_t *ifail) {
  using namespace zem::e04;
  *ifail = 0;
  E04_OPEN_EDITABLE(*handle);
  const int64_t nb = static_cast<int64_t>(p->blocks.size());
  if (*idblk < 1 || *idblk > nb) return zem::fail(errbuf, ifail, 6, 1011, *idblk, nb);
  matrix_block &blk = p->blocks[*idblk - 1];
  if (blk.deleted) return zem::fail(errbuf, ifail, 7, 1012, *idblk);
  if (blk.has_q) return zem::fail(errbuf, ifail, 7, 1013, *idblk);
  if (*dimq != blk.dim) return zem::fail(errbuf, ifail, 6, 1014, *dimq, blk.dim);
  if (*nq <= 0) return zem::fail(errbuf, ifail, 6, 1015, *nq);
  const checker ck{errbuf, ifail};
  try {
    if (!ck.range(qi, *nq, 1, p->s.nvar, 8, 1016) || !ck.range(qj, *nq, 1, p->s.nvar, 8, 1017)) return;
    // (qi, qj) and (qj, qi) are the same product.
    std::vector<int64_t> lo(static_cast<size_t>(*nq)), hi(static_cast<size_t>(*nq));
    for (int64_t k = 0; k < *nq; ++k) {
      lo[k] = std::min(qi[k], qj[k]);
      hi[k] = std::max(qi[k], qj[k]);
    }
    if (!ck.unique(lo.data(), hi.data(), *nq, 8, 1018)) return;
    int64_t total = 0;
    if (!check_counts(ck, nnzq, *nq, *nnzqsum, 6, 1019, &total)) return;
    if (!check_matrices(ck, nnzq, *nq, total, irowq, icolq, q, blk.dim, blk.blksize, 8, 1031)) return;
    std::vector<int64_t> vqi(qi, qi + *nq), vqj(qj, qj + *nq), vn(nnzq, nnzq + *nq);
    coo qm{{irowq, irowq + total}, {icolq, icolq + total}, {q, q + total}};
    blk.qi = std::move(vqi);
    blk.qj = std::move(vqj);
    blk.nnzq = std::move(vn);
    blk.q = std::move(qm);
    blk.has_q = true;
  } catch (const std::bad_alloc &) {
    return zem::alloc_fail(ifail);
  }
}

ZEM_API void e04rpf_(void *const *handle, const int64_t *idblk, const int64_t *dimq, const int64_t *nq,
                     const int64_t qi[], const int64_t qj[], const int64_t nnzq[], const int64_t *nnzqsum,
                     const int64_t irowq[], const int64_t icolq[], const double q[], int64_t *ifail) {
  zem::f_entry call("e04rpf", e04rp_messages);
  e04rpft_(&call.en_data, handle, idblk, dimq, nq, qi, qj, nnzq, nnzqsum, irowq, icolq, q, call.errbuf,
           &call.status);
  call.finish(ifail);
}

ZEM_API void e04rpc(void *handle, int64_t idblk, int64_t dimq, int64_t nq, const int64_t qi[], const int64_t qj[],
                    const int64_t nnzq[], int64_t nnzqsum, const int64_t irowq[], const int64_t icolq[],
                    const double q[], Zem_Fail *fail) {
  zem::c_entry call("e04rpc", e04rp_messages, fail);
  if (nq > 0 && (!qi || !qj || !nnzq)) return call.bad_param(!qi ? "qi" : !qj ? "qj" : "nnzq");
  if (nnzqsum > 0 && (!irowq || !icolq || !q)) return call.bad_param(!irowq ? "irowq" : !icolq ? "icolq" : "q");
  e04rpft_(&call.en_data, &handle, &idblk, &dimq, &nq, qi, qj, nnzq, &nnzqsum, irowq, icolq, q, call.errbuf,
           &call.status);
  call.finish();
}
