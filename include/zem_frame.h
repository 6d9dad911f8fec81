/* Zem: machine constants (x02), output units and printing (x04), library
 * identification (a00).  Included by zem.h. */

/* x02: properties of the arithmetic; fixed constants of IEEE double
 * precision and 64-bit integers. */
double x02ahc(void); /* largest argument for sine and cosine, 2^150 */
double x02ajc(void); /* machine precision, 2^-53 */
double x02akc(void); /* smallest positive normalised number, 2^-1022 */
double x02alc(void); /* largest positive number */
double x02amc(void); /* safe range: one unit above 2^-1022 */
double x02anc(void); /* safe range for complex arithmetic */
int64_t x02bbc(void); /* largest integer, 2^63 - 1 */
int64_t x02bec(void); /* decimal digits that can be represented, 15 */
int64_t x02bhc(void); /* base of the floating-point model, 2 */
int64_t x02bjc(void); /* base digits in the mantissa, 53 */
int64_t x02bkc(void); /* minimum exponent, -1021 */
int64_t x02blc(void); /* maximum exponent, 1024 */
double x02ahf_(void);
double x02ajf_(void);
double x02akf_(void);
double x02alf_(void);
double x02amf_(void);
double x02anf_(void);
int64_t x02bbf_(void);
int64_t x02bef_(void);
int64_t x02bhf_(void);
int64_t x02bjf_(void);
int64_t x02bkf_(void);
int64_t x02blf_(void);

/* x04: the error message unit and the advisory message unit (Fortran unit
 * numbers, both initially 6, standard output).  iflag = 0 reads the unit
 * into *unit, iflag = 1 sets it from *unit; a negative unit silences it. */
void x04aac(int64_t iflag, int64_t *nerr);
void x04abc(int64_t iflag, int64_t *nadv);
void x04aaf_(const int64_t *iflag, int64_t *nerr);
void x04abf_(const int64_t *iflag, int64_t *nadv);
/* Write one record (trailing blanks dropped) to a unit. */
void x04bac(int64_t nout, const char *rec);
void x04baf_(const int64_t *nout, const char *rec, size_t rec_len);
/* Read one record from a unit into recin (lrec characters, blank-filled;
 * the C entry adds a NUL, so recin must hold lrec + 1 characters).  End of
 * file fails with NE_READ_EOF (Fortran ifail = 1), any other read error
 * with NE_READ_ERROR (ifail = 2). */
void x04bbc(int64_t nin, char *recin, int64_t lrec, Zem_Fail *fail);
void x04bbf_(const int64_t *nin, char *recin, int64_t *ifail, size_t recin_len);
/* Print a real m by n matrix (general, lower or upper triangular) on the
 * advisory message unit under a title. */
void x04cac(Zem_MatrixType matrix, Zem_DiagType diag, int64_t m, int64_t n, const double a[],
            int64_t lda, const char *title, Zem_Fail *fail);
void x04caf_(const char *matrix, const char *diag, const int64_t *m, const int64_t *n, const double a[],
             const int64_t *lda, const char *title, int64_t *ifail, size_t matrix_len, size_t diag_len,
             size_t title_len);

/* a00: print the library's implementation details on the advisory unit. */
void a00aac(void);
void a00aaf_(void);
