/* Zem chapter e04: the optimization modelling suite.  Included by zem.h.
 *
 * A problem is built piece by piece in an opaque handle (void *, set to NULL
 * by the caller before e04rac), handed to a solver, read back and destroyed
 * by e04rzc.  docs/e04-handle.md tells the handle's life; each routine has
 * its page docs/e04XX.md.  Indices are 1-based in both interfaces; sparse
 * matrices are given in coordinate form, symmetric ones by their upper
 * triangle.  The Fortran entries take the handle as a type(c_ptr) by
 * reference and character arguments with their hidden lengths last. */

/* e04ra: create a handle for nvar >= 0 variables. */
void e04rac(void **handle, int64_t nvar, Zem_Fail *fail);
void e04raf_(void **handle, const int64_t *nvar, int64_t *ifail);
#define zem_opt_handle_init e04rac

/* e04rz: destroy a handle (NULL is accepted); *handle becomes NULL. */
void e04rzc(void **handle, Zem_Fail *fail);
void e04rzf_(void **handle, int64_t *ifail);
#define zem_opt_handle_free e04rzc

/* ---- Options ---- */
