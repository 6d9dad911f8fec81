/* Zem chapter g22: model formulae, data descriptions and design matrices.
 * Included by zem.h.
 *
 * A model formula (g22ya), a data description (g22yb) and a design matrix
 * description (g22yc) each live in a handle: an opaque pointer that the
 * library allocates and the caller passes back, NULL before first use and
 * released by g22za.  Options of each handle are set by g22zm
 * ("NAME = value") and read by g22zn.  The formula language is described
 * in share/doc/zem/g22-formulae.md.  Arrays are column-major: with the storage order
 * "Observations" (the default) dat and x hold one observation a row. */

/* g22ya: parse formula into a new model formula handle *hform. */
void g22yac(void **hform, const char *formula, Zem_Fail *fail);
void g22yaf_(void **hform, const char *formula, int64_t *ifail, size_t formula_len);
#define zem_model_formula g22yac

/* g22yb: describe nobs observations of nvar variables; levels[j] is 1 for a
 * continuous variable, else its number of categories; vnames[0..lvnames-1]
 * are the names (lvnames = 0: the names are V1, V2, ...). */
void g22ybc(void **hddesc, int64_t nobs, int64_t nvar, const int64_t levels[], int64_t lvnames,
            const char *vnames[], Zem_Fail *fail);
void g22ybf_(void **hddesc, const int64_t *nobs, const int64_t *nvar, const int64_t levels[],
             const int64_t *lvnames, const char *vnames, int64_t *ifail, size_t vnames_len);
#define zem_model_data_description g22ybc

/* g22yc: the design matrix x (leading dimension ldx, second dimension sdx)
 * that hform implies for the data dat (lddat, sddat) described by hddesc;
 * its column count in *mx and its description in *hxdesc.  A too small x
 * is a size query: *mx and *hxdesc are returned with a warning. */
void g22ycc(void *hform, void *hddesc, const double dat[], int64_t lddat, int64_t sddat, void **hxdesc,
            double x[], int64_t ldx, int64_t sdx, int64_t *mx, Zem_Fail *fail);
void g22ycf_(void *const *hform, void *const *hddesc, const double dat[], const int64_t *lddat,
             const int64_t *sddat, void **hxdesc, double x[], const int64_t *ldx, const int64_t *sdx,
             int64_t *mx, int64_t *ifail);
#define zem_model_design_matrix g22ycc

/* g22yd: the columns of the design matrix described by hxdesc that the
 * model hform uses (what = 0) or all of them (what = 1): their number *p,
 * the position of the mean among them *iintcpt (0: none), flags isx (lisx
 * = 0 or >= m_x), labels plab (lplab fields of *mlterm characters each,
 * NUL included; on exit *mlterm is the longest label's length) and vinfo
 * (share/doc/zem/g22yd.md).  A length too small: the minimum lengths of isx, plab
 * and vinfo are returned in vinfo[0..2] (when lvinfo >= 3). */
void g22ydc(int64_t what, void *hform, void *hxdesc, int64_t *iintcpt, int64_t *p, int64_t lisx, int64_t isx[],
            int64_t lplab, char plab[], int64_t lvinfo, int64_t vinfo[], int64_t *mlterm, Zem_Fail *fail);
void g22ydf_(const int64_t *what, void *const *hform, void *const *hxdesc, int64_t *iintcpt, int64_t *p,
             const int64_t *lisx, int64_t isx[], const int64_t *lplab, char *plab, const int64_t *lvinfo,
             int64_t vinfo[], int64_t *mlterm, int64_t *ifail, size_t plab_len);
#define zem_model_submodel g22ydc

/* g22za: release a g22 handle of any kind and set it to NULL. */
void g22zac(void **handle, Zem_Fail *fail);
void g22zaf_(void **handle, int64_t *ifail);
#define zem_g22_handle_free g22zac

/* g22zm: set an option: "NAME = value". */
void g22zmc(void *handle, const char *optstr, Zem_Fail *fail);
void g22zmf_(void *const *handle, const char *optstr, int64_t *ifail, size_t optstr_len);
#define zem_g22_optset g22zmc

/* g22zn: read the option named optstr; *optype says where the value is:
 * 1 *ivalue, 2 *rvalue, 3 cvalue (lcvalue characters, NUL included). */
void g22znc(void *handle, const char *optstr, int64_t *ivalue, double *rvalue, char cvalue[], int64_t lcvalue,
            int64_t *optype, Zem_Fail *fail);
void g22znf_(void *const *handle, const char *optstr, int64_t *ivalue, double *rvalue, char *cvalue,
             int64_t *optype, int64_t *ifail, size_t optstr_len, size_t cvalue_len);
#define zem_g22_optget g22znc
