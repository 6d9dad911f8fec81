// e04rs: a quadratic constraint  bl <= 0.5 x'Qx + r'x <= bu  (Q symmetric,
// upper triangle; r sparse with idxr strictly ascending).  idqc = 0 adds
// the constraint and returns its identifier, idqc > 0 replaces it, and
// idqc = -1 makes 0.5 x'Qx + r'x the objective (bl and bu not read),
// replacing any objective defined before.
#include <cstdint>
#include <new>

#include "e04/model.h"
#include "e04/sparse_check.h"

inline constexpr zem::message e04rs_messages[] = {
    ZEM_E04_HANDLE_ROWS,
    ZEM_E04_PHASE_ROWS,
    {6, 1011, NE_INT, {"On entry, idqc = %s.", "Constraint: -1 <= idqc <= %s."},
                      {"On entry, idqc = %s", "Constraint: -1 <= idqc <= %s."}},
    {7, 1012, NE_DELETED, {"On entry, comp = QC and idx[i-1] = %s.", "This component has been deleted."},
                          {"On entry, comp = QC and idx(i) = %s", "This component has been deleted."}},
    {6, 1013, NE_INT, {"On entry, nnzq = %s.", "Constraint: nnzq >= 0."}},
    {6, 1014, NE_INT, {"On entry, nnzr = %s.", "Constraint: nnzr >= 0."}},
    E04_ROW_RANGE(8, 1015, "irowq", "n"),
    E04_ROW_RANGE(8, 1016, "icolq", "n"),
    E04_ROW_RANGE(8, 1017, "idxr", "n"),
    E04_ROW_UPPER(8, 1018, "irowq", "icolq"),
    E04_ROW_INCREASING(8, 1019, "idxr"),
    E04_ROW_UNIQUE(8, 1020),
    E04_ROW_FINITE(8, 1021, "q"),
    E04_ROW_FINITE(8, 1022, "r"),
    E04_ROWS_BOUNDS(10, 1031, "bl", "bu", "j"),
};
ZEM_REGISTER_MESSAGES(e04rs)

#define E04RS_ARGS(V, A, U)                                                                          \
  A(void *const *, handle) V(const int64_t *, nnzq) A(const int64_t *, irowq) A(const int64_t *, icolq) \
  A(const double *, q) V(const int64_t *, nnzr) A(const int64_t *, idxr) A(const double *, r)         \
  V(const double *, bl) V(const double *, bu) V(int64_t *, idqc) V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(e04rs, E04RS_ARGS)

ZEM_INTERNAL void e04rsfn_(engine_data *, void *const *handle, const int64_t *nnzq, const int64_t *irowq,
                           const int64_t *icolq, const double *q, const int64_t *nnzr, const int64_t *idxr,
                           const double *r, const double *bl, const double *bu, int64_t *idqc, char *errbuf,
                           int64_t *ifail) {
  using namespace zem::e04;
  *ifail = 0;
  E04_OPEN_EDITABLE(*handle);
  const int64_t nq = static_cast<int64_t>(p->qcons.size()), id = *idqc, n = p->s.nvar;
  if (id < -1 || id > nq) return zem::fail(errbuf, ifail, 6, 1011, id, nq);
  if (id > 0 && p->qcons[id - 1].deleted) return zem::fail(errbuf, ifail, 7, 1012, id);
  if (*nnzq < 0) return zem::fail(errbuf, ifail, 6, 1013, *nnzq);
  if (*nnzr < 0) return zem::fail(errbuf, ifail, 6, 1014, *nnzr);
  const checker ck{errbuf, ifail};
  try {
    if (!ck.range(irowq, *nnzq, 1, n, 8, 1015) || !ck.range(icolq, *nnzq, 1, n, 8, 1016) ||
        !ck.range(idxr, *nnzr, 1, n, 8, 1017) || !ck.upper(irowq, icolq, *nnzq, 8, 1018) ||
        !ck.increasing(idxr, *nnzr, 8, 1019) || !ck.unique(irowq, icolq, *nnzq, 8, 1020) ||
        !ck.finite(q, *nnzq, 8, 1021) || !ck.finite(r, *nnzr, 8, 1022))
      return;
    if (id >= 0 && !ck.bound(1, *bl, *bu, infinite_bound_size(*p), 10, 1031)) return;
    coo qm{{irowq, irowq + *nnzq}, {icolq, icolq + *nnzq}, {q, q + *nnzq}};
    sparse_vec rv{{idxr, idxr + *nnzr}, {r, r + *nnzr}};
    if (id == -1) {
      clear_objective(*p);
      p->h = std::move(qm);
      p->cs = std::move(rv);
      p->s.objective = obj_quadratic;
      return;
    }
    quad_con qc{std::move(qm), std::move(rv), *bl, *bu, false};
    if (id > 0) {
      p->qcons[id - 1] = std::move(qc);
    } else {
      p->qcons.push_back(std::move(qc));
      *idqc = nq + 1;
    }
  } catch (const std::bad_alloc &) {
    return zem::alloc_fail(ifail);
  }
}

ZEM_API void e04rsf_(void *const *handle, const int64_t *nnzq, const int64_t irowq[], const int64_t icolq[],
                     const double q[], const int64_t *nnzr, const int64_t idxr[], const double r[], const double *bl,
                     const double *bu, int64_t *idqc, int64_t *ifail) {
  zem::f_entry call("e04rsf", e04rs_messages);
  e04rsft_(&call.en_data, handle, nnzq, irowq, icolq, q, nnzr, idxr, r, bl, bu, idqc, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void e04rsc(void *handle, int64_t nnzq, const int64_t irowq[], const int64_t icolq[], const double q[],
                    int64_t nnzr, const int64_t idxr[], const double r[], double bl, double bu, int64_t *idqc,
                    Zem_Fail *fail) {
  zem::c_entry call("e04rsc", e04rs_messages, fail);
  if (nnzq > 0 && (!irowq || !icolq || !q)) return call.bad_param(!irowq ? "irowq" : !icolq ? "icolq" : "q");
  if (nnzr > 0 && (!idxr || !r)) return call.bad_param(!idxr ? "idxr" : "r");
  if (!idqc) return call.bad_param("idqc");
  e04rsft_(&call.en_data, &handle, &nnzq, irowq, icolq, q, &nnzr, idxr, r, &bl, &bu, idqc, call.errbuf,
           &call.status);
  call.finish();
}
