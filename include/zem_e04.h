/* Zem chapter e04: the optimization modelling suite.  Included by zem.h. */

/* ---- Options ----
 * Options steer the solvers of the suite; every handle holds a full set,
 * filled with the defaults when it is created.  docs/e04_options.md lists
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
