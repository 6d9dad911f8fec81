/* Zem chapter e04: the optimization modelling suite.  Included by zem.h.
 *
 * A problem is built piece by piece in an opaque handle (void *, set to NULL
 * by the caller before e04rac), handed to a solver, read back and destroyed
 * by e04rzc.  share/doc/zem/e04-handle.md tells the handle's life; each routine has
 * its page share/doc/zem/e04XX.md.  Indices are 1-based in both interfaces; sparse
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

/* e04rb: define (*idgroup = 0, returns its identifier) or replace
 * (*idgroup > 0) a second-order cone on the variables group[0..lgroup-1];
 * gtype "QUAD"/"Q" quadratic (lgroup >= 2), "RQUAD"/"R" rotated (>= 3). */
void e04rbc(void *handle, const char *gtype, int64_t lgroup, const int64_t group[], int64_t *idgroup,
            Zem_Fail *fail);
void e04rbf_(void *const *handle, const char *gtype, const int64_t *lgroup, const int64_t group[],
             int64_t *idgroup, int64_t *ifail, size_t gtype_len);
#define zem_opt_handle_set_group e04rbc

/* e04rc: type of the variables idx[0..lidx-1]: "CONT"/"LIN", "INT"/"GEN", "BIN". */
void e04rcc(void *handle, const char *ptype, int64_t lidx, const int64_t idx[], Zem_Fail *fail);
void e04rcf_(void *const *handle, const char *ptype, const int64_t *lidx, const int64_t idx[], int64_t *ifail,
             size_t ptype_len);
#define zem_opt_handle_set_property e04rcc

/* e04re: linear objective cvec'x (nvar must be the handle's). */
void e04rec(void *handle, int64_t nvar, const double cvec[], Zem_Fail *fail);
void e04ref_(void *const *handle, const int64_t *nvar, const double cvec[], int64_t *ifail);
#define zem_opt_handle_set_linobj e04rec

/* e04rf: quadratic objective c'x + 0.5 x'Hx, c sparse, H by its upper triangle. */
void e04rfc(void *handle, int64_t nnzc, const int64_t idxc[], const double c[], int64_t nnzh,
            const int64_t irowh[], const int64_t icolh[], const double h[], Zem_Fail *fail);
void e04rff_(void *const *handle, const int64_t *nnzc, const int64_t idxc[], const double c[],
             const int64_t *nnzh, const int64_t irowh[], const int64_t icolh[], const double h[],
             int64_t *ifail);
#define zem_opt_handle_set_quadobj e04rfc

/* e04rg: nonlinear objective with the sparsity idxfd of its gradient. */
void e04rgc(void *handle, int64_t nnzfd, const int64_t idxfd[], Zem_Fail *fail);
void e04rgf_(void *const *handle, const int64_t *nnzfd, const int64_t idxfd[], int64_t *ifail);
#define zem_opt_handle_set_nlnobj e04rgc

/* e04rh: simple bounds bl <= x <= bu. */
void e04rhc(void *handle, int64_t nvar, const double bl[], const double bu[], Zem_Fail *fail);
void e04rhf_(void *const *handle, const int64_t *nvar, const double bl[], const double bu[], int64_t *ifail);
#define zem_opt_handle_set_simplebounds e04rhc

/* e04rj: linear constraints bl <= Bx <= bu; *idlc = 0 appends nclin rows
 * (returns the last row's identifier), *idlc > 0 replaces that row. */
void e04rjc(void *handle, int64_t nclin, const double bl[], const double bu[], int64_t nnzb,
            const int64_t irowb[], const int64_t icolb[], const double b[], int64_t *idlc, Zem_Fail *fail);
void e04rjf_(void *const *handle, const int64_t *nclin, const double bl[], const double bu[],
             const int64_t *nnzb, const int64_t irowb[], const int64_t icolb[], const double b[],
             int64_t *idlc, int64_t *ifail);
#define zem_opt_handle_set_linconstr e04rjc

/* e04rk: nonlinear constraints bl <= g(x) <= bu with their Jacobian sparsity. */
void e04rkc(void *handle, int64_t ncnln, const double bl[], const double bu[], int64_t nnzgd,
            const int64_t irowgd[], const int64_t icolgd[], Zem_Fail *fail);
void e04rkf_(void *const *handle, const int64_t *ncnln, const double bl[], const double bu[],
             const int64_t *nnzgd, const int64_t irowgd[], const int64_t icolgd[], int64_t *ifail);
#define zem_opt_handle_set_nlnconstr e04rkc

/* e04rl: sparsity of a Hessian: idf = 0 objective, i constraint i, -1 Lagrangian. */
void e04rlc(void *handle, int64_t idf, int64_t nnzh, const int64_t irowh[], const int64_t icolh[],
            Zem_Fail *fail);
void e04rlf_(void *const *handle, const int64_t *idf, const int64_t *nnzh, const int64_t irowh[],
             const int64_t icolh[], int64_t *ifail);
#define zem_opt_handle_set_nlnhess e04rlc

/* e04rm: nonlinear least-squares objective with nres residuals; isparse 0
 * dense, 1 sparse first derivatives (irowrd variable, icolrd residual). */
void e04rmc(void *handle, int64_t nres, int64_t isparse, int64_t nnzrd, const int64_t irowrd[],
            const int64_t icolrd[], Zem_Fail *fail);
void e04rmf_(void *const *handle, const int64_t *nres, const int64_t *isparse, const int64_t *nnzrd,
             const int64_t irowrd[], const int64_t icolrd[], int64_t *ifail);
#define zem_opt_handle_set_nlnls e04rmc

/* e04rn: linear matrix inequality sum x_i A_i - A_0 >= 0 (*idblk = 0 on
 * entry; returns the block's identifier). */
void e04rnc(void *handle, int64_t nvar, int64_t dima, const int64_t nnza[], int64_t nnzasum,
            const int64_t irowa[], const int64_t icola[], const double a[], int64_t nblk,
            const int64_t blksizea[], int64_t *idblk, Zem_Fail *fail);
void e04rnf_(void *const *handle, const int64_t *nvar, const int64_t *dima, const int64_t nnza[],
             const int64_t *nnzasum, const int64_t irowa[], const int64_t icola[], const double a[],
             const int64_t *nblk, const int64_t blksizea[], int64_t *idblk, int64_t *ifail);
#define zem_opt_handle_set_linmatineq e04rnc

/* e04rp: bilinear terms x_qi x_qj Q of matrix inequality block idblk. */
void e04rpc(void *handle, int64_t idblk, int64_t dimq, int64_t nq, const int64_t qi[], const int64_t qj[],
            const int64_t nnzq[], int64_t nnzqsum, const int64_t irowq[], const int64_t icolq[],
            const double q[], Zem_Fail *fail);
void e04rpf_(void *const *handle, const int64_t *idblk, const int64_t *dimq, const int64_t *nq,
             const int64_t qi[], const int64_t qj[], const int64_t nnzq[], const int64_t *nnzqsum,
             const int64_t irowq[], const int64_t icolq[], const double q[], int64_t *ifail);
#define zem_opt_handle_set_quadmatineq e04rpc

/* e04rs: quadratic constraint bl <= 0.5 x'Qx + r'x <= bu; *idqc = 0 adds
 * (returns its identifier), > 0 replaces, -1 makes it the objective. */
void e04rsc(void *handle, int64_t nnzq, const int64_t irowq[], const int64_t icolq[], const double q[],
            int64_t nnzr, const int64_t idxr[], const double r[], double bl, double bu, int64_t *idqc,
            Zem_Fail *fail);
void e04rsf_(void *const *handle, const int64_t *nnzq, const int64_t irowq[], const int64_t icolq[],
             const double q[], const int64_t *nnzr, const int64_t idxr[], const double r[], const double *bl,
             const double *bu, int64_t *idqc, int64_t *ifail);
#define zem_opt_handle_set_qconstr e04rsc

/* e04rt: factored quadratic objective 0.5 ||Fx||^2 + r'x, F with mf rows. */
void e04rtc(void *handle, int64_t mf, int64_t nnzf, const int64_t irowf[], const int64_t icolf[],
            const double f[], int64_t nnzr, const int64_t idxr[], const double r[], Zem_Fail *fail);
void e04rtf_(void *const *handle, const int64_t *mf, const int64_t *nnzf, const int64_t irowf[],
             const int64_t icolf[], const double f[], const int64_t *nnzr, const int64_t idxr[],
             const double r[], int64_t *ifail);
#define zem_opt_handle_set_qobj_factor e04rtc

/* e04rd: read an SDPA problem into an empty handle from an open stream (C:
 * a POSIX file descriptor; Fortran: a unit number), within the limits
 * maxnvar, maxnblk, maxnnz (NE_INT_MAX reports the sizes needed). */
void e04rdc(void *handle, int64_t infile, int64_t maxnvar, int64_t maxnblk, int64_t maxnnz, Zem_Fail *fail);
void e04rdf_(void *const *handle, const int64_t *infile, const int64_t *maxnvar, const int64_t *maxnblk,
             const int64_t *maxnnz, int64_t *ifail);
#define zem_opt_sdpa_read e04rdc

/* e04rw: read (ioflag 0) or write (ioflag 1) the integer array named by
 * cmdstr ("WARM START BASIS", "MCS NUMBER POINTS", "MCS INITIAL POINTS",
 * "EXPORT TRF"); liarr must be the data's size. */
void e04rwc(void *handle, const char *cmdstr, int64_t ioflag, int64_t liarr, int64_t iarr[], Zem_Fail *fail);
void e04rwf_(void *const *handle, const char *cmdstr, const int64_t *ioflag, const int64_t *liarr, int64_t iarr[],
             int64_t *ifail, size_t cmdstr_len);
#define zem_opt_handle_set_get_integer e04rwc

/* e04kf: the first-order active-set solver for a nonlinear, linear or
 * quadratic objective with simple bounds (share/doc/zem/e04kf.md).  x holds
 * the start point on entry and the solution on exit; rinfo[100] and
 * stats[100] receive the final measures.  User functions (inform is 0 on
 * entry; a negative value asks the solver to stop):
 *   objfun(nvar, x, &fx, &inform, comm)          the objective at x
 *   objgrd(nvar, x, nnzfd, fdx, &inform, comm)   the gradient elements of
 *                                                the sparsity given to e04rgc
 *   monit(nvar, x, &inform, rinfo, stats, comm)  every 'FOAS Monitor
 *                                                Frequency' iterations
 * objfun and objgrd may be NULL for a linear or quadratic objective, objgrd
 * also when 'FOAS Estimate Derivatives' = YES, monit always. */
typedef void (*Zem_E04KF_ObjFun)(int64_t nvar, const double x[], double *fx, int64_t *inform, Zem_Comm *comm);
typedef void (*Zem_E04KF_ObjGrd)(int64_t nvar, const double x[], int64_t nnzfd, double fdx[], int64_t *inform,
                                 Zem_Comm *comm);
typedef void (*Zem_E04KF_Monit)(int64_t nvar, const double x[], int64_t *inform, const double rinfo[],
                                const double stats[], Zem_Comm *comm);
typedef void (*Zem_E04KF_FObjFun)(const int64_t *nvar, const double x[], double *fx, int64_t *inform,
                                  int64_t iuser[], double ruser[]);
typedef void (*Zem_E04KF_FObjGrd)(const int64_t *nvar, const double x[], const int64_t *nnzfd, double fdx[],
                                  int64_t *inform, int64_t iuser[], double ruser[]);
typedef void (*Zem_E04KF_FMonit)(const int64_t *nvar, const double x[], int64_t *inform, const double rinfo[],
                                 const double stats[], int64_t iuser[], double ruser[]);
void e04kfc(void *handle, Zem_E04KF_ObjFun objfun, Zem_E04KF_ObjGrd objgrd, Zem_E04KF_Monit monit, int64_t nvar,
            double x[], double rinfo[], double stats[], Zem_Comm *comm, Zem_Fail *fail);
void e04kff_(void *const *handle, Zem_E04KF_FObjFun objfun, Zem_E04KF_FObjGrd objgrd, Zem_E04KF_FMonit monit,
             const int64_t *nvar, double x[], double rinfo[], double stats[], int64_t iuser[], double ruser[],
             int64_t *ifail);
#define zem_handle_solve_bounds_foas e04kfc

/* e04rx: read (ioflag 0) or write (ioflag 1) the real array named by cmdstr
 * ("PRIMAL", "DUAL VARIABLES", "SLACK VARIABLES", ... see share/doc/zem/e04rx.md). */
void e04rxc(void *handle, const char *cmdstr, int64_t ioflag, int64_t lrarr, double rarr[], Zem_Fail *fail);
void e04rxf_(void *const *handle, const char *cmdstr, const int64_t *ioflag, const int64_t *lrarr, double rarr[],
             int64_t *ifail, size_t cmdstr_len);
#define zem_opt_handle_set_get_real e04rxc

/* e04ry: print the sections named by the comma-separated keywords of cmdstr
 * on unit nout (see share/doc/zem/e04ry.md). */
void e04ryc(void *handle, int64_t nout, const char *cmdstr, Zem_Fail *fail);
void e04ryf_(void *const *handle, const int64_t *nout, const char *cmdstr, int64_t *ifail, size_t cmdstr_len);
#define zem_opt_handle_print e04ryc

/* e04sa: create a handle from the file fname: ftype "MPS"/"M" or "SDPA"/"S". */
void e04sac(void **handle, const char *ftype, const char *fname, Zem_Fail *fail);
void e04saf_(void **handle, const char *ftype, const char *fname, int64_t *ifail, size_t ftype_len,
             size_t fname_len);
#define zem_opt_handle_read_file e04sac

/* e04ta: append nadd > 0 free continuous variables. */
void e04tac(void *handle, int64_t nadd, Zem_Fail *fail);
void e04taf_(void *const *handle, const int64_t *nadd, int64_t *ifail);
#define zem_opt_handle_add_vars e04tac

/* e04tb: delete components comp ("X", "LC", "QC", "NLC", "CN", "MI", "NLS")
 * idx[0..lidx-1]; identifiers are kept. */
void e04tbc(void *handle, const char *comp, int64_t lidx, const int64_t idx[], Zem_Fail *fail);
void e04tbf_(void *const *handle, const char *comp, const int64_t *lidx, const int64_t idx[], int64_t *ifail,
             size_t comp_len);
#define zem_opt_handle_disable e04tbc

/* e04td: bounds of one variable ("X") or constraint ("LC", "NLC"). */
void e04tdc(void *handle, const char *comp, int64_t idx, double bli, double bui, Zem_Fail *fail);
void e04tdf_(void *const *handle, const char *comp, const int64_t *idx, const double *bli, const double *bui,
             int64_t *ifail, size_t comp_len);
#define zem_opt_handle_set_bound e04tdc

/* e04te: one coefficient of a linear objective. */
void e04tec(void *handle, int64_t idxci, double cvalue, Zem_Fail *fail);
void e04tef_(void *const *handle, const int64_t *idxci, const double *cvalue, int64_t *ifail);
#define zem_opt_handle_set_linobj_coeff e04tec

/* e04tj: one element of the linear constraint matrix. */
void e04tjc(void *handle, int64_t idlc, int64_t icolbj, double bij, Zem_Fail *fail);
void e04tjf_(void *const *handle, const int64_t *idlc, const int64_t *icolbj, const double *bij, int64_t *ifail);
#define zem_opt_handle_set_linconstr_coeff e04tjc

/* ---- Options ---- */
/* Options steer the solvers of the suite; every handle holds a full set,
 * filled with the defaults when it is created.  share/doc/zem/e04_options.md lists
 * all 303 options with their types, defaults, bounds and keywords. */

/* e04zm: set one option from a string "Name = value" (name in any case);
 * "Defaults" resets every option. */
void e04zmc(void *handle, const char *optstr, Zem_Fail *fail);
void e04zmf_(void *const *handle, const char *optstr, int64_t *ifail, size_t optstr_len);
#define zem_opt_handle_opt_set e04zmc

/* e04zn: the value of the option named in optstr.  optype: 1 integer (in
 * ivalue), 2 real (in rvalue), 3 character (keyword in cvalue, of room
 * lcvalue including its NUL, and its code in ivalue). */
void e04znc(void *handle, const char *optstr, int64_t *ivalue, double *rvalue, char *cvalue, int64_t lcvalue,
            int64_t *optype, Zem_Fail *fail);
void e04znf_(void *const *handle, const char *optstr, int64_t *ivalue, double *rvalue, char *cvalue,
             int64_t *optype, int64_t *ifail, size_t optstr_len, size_t cvalue_len);
#define zem_opt_handle_opt_get e04znc

/* e04zp: options from a file: the settings "Name = value" on the lines
 * between a line BEGIN and a line END; all or none are applied. */
void e04zpc(void *handle, const char *fname, Zem_Fail *fail);
void e04zpf_(void *const *handle, const char *fname, int64_t *ifail, size_t fname_len);
#define zem_opt_handle_opt_set_file e04zpc

/* ---- Solvers ---- */

/* e04st: solves the model in the handle (linear, quadratic or nonlinear
 * objective; simple bounds; linear, quadratic and nonlinear constraints)
 * by a primal-dual interior-point method for nonlinear programming.  The
 * nonlinear pieces are evaluated by the user functions below, with the
 * sparsity the handle declares (e04rg, e04rk, e04rl); the linear and
 * quadratic pieces by the library.  A function the model does not need may
 * be NULL; hess NULL selects the limited-memory Hessian.  A user function
 * stops the solve by setting *inform < 0 (or by changing comm->flag);
 * objfun, objgrd, confun, congrd and hess set *inform > 0 when x cannot be
 * evaluated, and the solver shortens its step.  x: the start on entry, the
 * solution on exit.  u (nnzu = 0, or nvar + the number of linear rows,
 * quadratic and nonlinear constraints): the multipliers.  rinfo[100] and
 * stats[100]: share/doc/zem/e04st.md. */
typedef void (*Zem_E04ST_Objfun)(int64_t nvar, const double x[], double *fx, int64_t *inform, Zem_Comm *comm);
typedef void (*Zem_E04ST_Objgrd)(int64_t nvar, const double x[], int64_t nnzfd, double fdx[], int64_t *inform,
                                 Zem_Comm *comm);
typedef void (*Zem_E04ST_Confun)(int64_t nvar, const double x[], int64_t ncnln, double gx[], int64_t *inform,
                                 Zem_Comm *comm);
typedef void (*Zem_E04ST_Congrd)(int64_t nvar, const double x[], int64_t nnzgd, double gdx[], int64_t *inform,
                                 Zem_Comm *comm);
typedef void (*Zem_E04ST_Hess)(int64_t nvar, const double x[], int64_t ncnln, int64_t idf, double sigma,
                               const double lambda[], int64_t nnzh, double hx[], int64_t *inform, Zem_Comm *comm);
typedef void (*Zem_E04ST_Monit)(int64_t nvar, const double x[], int64_t *inform, const double rinfo[],
                                const double stats[], Zem_Comm *comm);
/* The Fortran interface's user routines (all arguments by reference). */
typedef void (*Zem_E04ST_ObjfunF)(const int64_t *nvar, const double x[], double *fx, int64_t *inform,
                                  int64_t iuser[], double ruser[]);
typedef void (*Zem_E04ST_ObjgrdF)(const int64_t *nvar, const double x[], const int64_t *nnzfd, double fdx[],
                                  int64_t *inform, int64_t iuser[], double ruser[]);
typedef void (*Zem_E04ST_ConfunF)(const int64_t *nvar, const double x[], const int64_t *ncnln, double gx[],
                                  int64_t *inform, int64_t iuser[], double ruser[]);
typedef void (*Zem_E04ST_CongrdF)(const int64_t *nvar, const double x[], const int64_t *nnzgd, double gdx[],
                                  int64_t *inform, int64_t iuser[], double ruser[]);
typedef void (*Zem_E04ST_HessF)(const int64_t *nvar, const double x[], const int64_t *ncnln, const int64_t *idf,
                                const double *sigma, const double lambda[], const int64_t *nnzh, double hx[],
                                int64_t *inform, int64_t iuser[], double ruser[]);
typedef void (*Zem_E04ST_MonitF)(const int64_t *nvar, const double x[], int64_t *inform, const double rinfo[],
                                 const double stats[], int64_t iuser[], double ruser[]);
void e04stc(void *handle, Zem_E04ST_Objfun objfun, Zem_E04ST_Objgrd objgrd, Zem_E04ST_Confun confun,
            Zem_E04ST_Congrd congrd, Zem_E04ST_Hess hess, Zem_E04ST_Monit monit, int64_t nvar, double x[],
            int64_t nnzu, double u[], double rinfo[], double stats[], Zem_Comm *comm, Zem_Fail *fail);
void e04stf_(void *const *handle, Zem_E04ST_ObjfunF objfun, Zem_E04ST_ObjgrdF objgrd, Zem_E04ST_ConfunF confun,
             Zem_E04ST_CongrdF congrd, Zem_E04ST_HessF hess, Zem_E04ST_MonitF monit, const int64_t *nvar,
             double x[], const int64_t *nnzu, double u[], double rinfo[], double stats[], int64_t iuser[],
             double ruser[], int64_t *ifail);
#define zem_opt_handle_solve_ipopt e04stc
