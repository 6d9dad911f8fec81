/* Zem numerical library: the public C header.
 *
 * Every routine XXXXX has a C entry XXXXXc, which reports failure through a
 * fail record (Zem_Fail, last argument, may be NULL), and a Fortran entry
 * XXXXXf_, which takes every argument by reference and reports failure
 * through a 64-bit integer ifail.  Integers are 64-bit throughout.
 *
 * This header compiles as C99 and as C++.
 */
#ifndef ZEM_H
#define ZEM_H

#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Error codes: NE_* errors and NW_* warnings ------------------------ */
enum {
#define ZEM_CODE(name, number, text) name = number,
#include "zem_codes.def"
#undef ZEM_CODE
  ZEM_ERRLIST_SIZE = 746
};

/* ---- Enumerations ------------------------------------------------------ */
#define ZEM_ENUM_BEGIN(type) typedef enum {
#define ZEM_ENUM(member, number) member = number,
#define ZEM_ENUM_END(type) } type;
#include "zem_enums.def"
#undef ZEM_ENUM_BEGIN
#undef ZEM_ENUM
#undef ZEM_ENUM_END

/* ---- The fail record ---------------------------------------------------
 * Set code and errnum to 0 on entry; on exit code holds NE_NOERROR or the
 * NE_/NW_ code, message the full text, errnum the engine's status (the
 * Fortran interface's ifail value).  With print non-zero the message is also
 * written to standard error.  A handler, if set, is called on every exit,
 * success included, before the message is copied into the record.
 * Passing NULL instead of a record: a failure is printed to standard error
 * and ends the program with exit status 1.  Initialise with ZEM_FAIL_INIT.
 */
typedef void (*Zem_ErrorHandler)(const char *message, int code, const char *routine);
typedef struct Zem_Fail {
  int code;                  /* NE_NOERROR or an NE_/NW_ code */
  int print;                 /* non-zero: also print the message */
  char message[512];         /* the message text, NUL-terminated */
  Zem_ErrorHandler handler;  /* optional, called on every exit */
  int64_t errnum;            /* the engine's status */
  int64_t info[2];           /* reserved for additional error information */
} Zem_Fail;
#define ZEM_FAIL_INIT {0, 0, {0}, NULL, 0, {0, 0}}

/* ---- The comm record ---------------------------------------------------
 * Handed untouched to every user function of the C interface: the library
 * never reads it for any purpose but the stop request below and never
 * writes to it.  user, iuser and p carry the caller's data.  comm may be
 * NULL where the caller needs none of this.
 *
 * Stopping: a user function asks the routine to stop after the current
 * evaluation by CHANGING flag, during its own call, to a non-zero value
 * other than -8888 (reserved by the library); the routine then fails with
 * NE_USER_STOP and reports the new value.  Whatever flag held before the
 * routine was called (a record never initialised, the value of an earlier
 * stop) does not matter and changes no result.  ZEM_COMM_INIT gives a
 * record with every field zero.
 */
typedef struct Zem_Comm {
  int64_t flag;
  double *user;
  int64_t *iuser;
  void *p;
} Zem_Comm;
#define ZEM_COMM_INIT {0, NULL, NULL, NULL}

/* ---- Complex numbers ----------------------------------------------------
 * A complex value of the C interface: real and imaginary parts, laid out
 * (and returned by functions) as C99's double _Complex and Fortran's
 * complex(real64).
 */
typedef struct Zem_Complex {
  double re;
  double im;
} Zem_Complex;

/* ---- Name tables ------------------------------------------------------- */
typedef struct Zem_NameValue {
  const char *name;
  int value;
} Zem_NameValue;
/* Message templates indexed by error code (ZEM_ERRLIST_SIZE entries). */
extern const char *const zem_errlist[];
/* Error code names with their numbers, in increasing order of number. */
extern const Zem_NameValue errornametable[];
extern const int Zem_ErrorNameTableSize;
/* Enumeration members with their numbers, sorted by name in byte order. */
extern const Zem_NameValue enumtable[];
extern const int Zem_EnumTableTypeSize;

/* ---- Routines, by chapter ---------------------------------------------- */
#include "zem_frame.h"
#include "zem_c05.h"
#include "zem_d01.h"
#include "zem_d02.h"
#include "zem_e04.h"
#include "zem_g01.h"
#include "zem_g05.h"
#include "zem_g22.h"
#include "zem_s15.h"
#include "zem_s30.h"
#include "zem_s14.h"

#ifdef __cplusplus
}
#endif

#endif /* ZEM_H */
