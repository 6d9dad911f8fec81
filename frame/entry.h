// The entry layers: what the C entry XXXXXc and the Fortran entry XXXXXf_
// of every routine do around the engine call.
//
//   C entry                                Fortran entry
//   zem::c_entry call("c05ayc", tbl, fail)  zem::f_entry call("c05ayf", tbl)
//   if (!x) return call.bad_param("x");     c05ayft_(&call.en_data, ..., call.errbuf,
//   c05ayft_(&call.en_data, ...,                     &call.status);
//            call.errbuf, &call.status);    call.finish(ifail);
//   call.finish();
//
// The C entry reports through the fail record (p01acc_c), the Fortran entry
// through ifail and the error message unit (p01abzu_).  Neither lets an
// exception escape: the engine does not throw, and the reporting code below
// works in fixed buffers.
#pragma once

#include <cstdint>
#include <cstring>

#include "engine.h"
#include "messages.h"
#include "trace.h"

// Prepares the Fortran run-time for the library's output.  The run-time of
// this compiler initialises itself when it is loaded, before any entry can
// run, so there is nothing left to do (the step stays, named, in every C
// entry, for a run-time that needs it).
ZEM_INTERNAL inline void f90_io_init() {}

// The C error exit: reports (message, code) for routine through the fail
// record.  message may be null: the template zem_errlist[code] is used.
ZEM_INTERNAL void p01acc_c(const char *message, int code, const char *routine, Zem_Fail *fail);

// The Fortran error exit: with status 0 sets ifail to 0; otherwise prints
// the message lines (each line_len characters), the ABNORMAL EXIT line and
// the hard or soft failure line as the caller's ifail asks, stops the
// program on a hard failure, and stores the status in ifail.
ZEM_INTERNAL void p01abzu_(int64_t *ifail, const int64_t *status, const char *routine, const char *lines,
                           const int64_t *nlines, size_t routine_len, size_t line_len);

// Parses a message record: status, detail and up to max_values values
// (each NUL-terminated, at most 25 characters).  Returns the number of
// values read, or -1 when the two leading integers cannot be read.
ZEM_INTERNAL int p01abtn_(const char *errbuf, int64_t *status, int64_t *detail, char (*values)[26],
                          int max_values);

namespace zem {

// Fills a fail record from an engine status and message record.
void report_c(const char *routine, message_table table, int64_t status, const char *errbuf, Zem_Fail *fail);
// Hands an engine status and message record to the Fortran error exit.
void report_f(const char *routine, message_table table, int64_t status, const char *errbuf, int64_t *ifail);

// The engine side of a user stop: a worker that sees a non-zero callback
// status after an evaluation returns through this.
[[gnu::cold]] void user_stop(char *errbuf, int64_t *ifail, int64_t flag);

// The comm pointer of a C entry travels through the engine in the place of
// iuser, as it is (null when the caller gave none).  Nothing in the engine
// reads iuser but the C adaptors, which turn it back into the pointer: one
// register, where a pointer to a saved copy cost two dependent loads per
// evaluation (the compiler cannot keep a value read through memory across
// the user's call).
inline Zem_Comm *comm_from(int64_t *iuser) { return reinterpret_cast<Zem_Comm *>(iuser); }

// The stop request of the C interface.  The comm record belongs to the
// caller and is handed through untouched: the library never writes to it,
// and whatever it holds when a routine is called (a record never
// initialised, the value of an earlier stop, -8888) changes no result.  A
// user function asks to stop by changing flag, during its own call, to a
// non-zero value other than -8888; the adaptor compares the flag after the
// call with its value before it:
//
//   Zem_Comm *comm = zem::comm_from(iuser);
//   const zem::comm_watch watch(comm);
//   *retval = user_f(*x, comm);
//   watch.take(en_data);
class comm_watch {
 public:
  explicit comm_watch(const Zem_Comm *comm) : comm_(comm), before_(comm ? comm->flag : 0) {}
  void take(engine_data *en_data) const {
    if (comm_ && __builtin_expect(comm_->flag != before_, 0)) changed(en_data);
  }

 private:
  [[gnu::cold]] void changed(engine_data *en_data) const {
    const int64_t now = comm_->flag;
    if (now != 0 && now != repeat_call) en_data->cb_status = now;
  }
  const Zem_Comm *comm_;
  int64_t before_;
};

class c_entry {
 public:
  engine_data en_data;
  char errbuf[errbuf_len];  // written by the engine only when it fails
  int64_t status = 1;       // the engine never prints: every failure is quiet

  c_entry(const char *routine, message_table table, Zem_Fail *fail)
      : routine_(routine), table_(table), fail_(fail) {
    errbuf[0] = errbuf[errbuf_len - 1] = '\0';
    f90_io_init();
    if (fail_) {
      fail_->code = 0;
      fail_->errnum = 0;
    }
    y90haan_(&en_data);
  }

  // The place of iuser for the engine: the comm pointer itself (comm_from).
  static int64_t *comm_slot(Zem_Comm *comm) { return reinterpret_cast<int64_t *>(comm); }
  // The place of ruser: the C interface has none.
  double *ruser() { return &ruser_; }

  // A null pointer or an unknown enumeration member, caught before the
  // engine is called: NE_BAD_PARAM naming the argument.
  void bad_param(const char *arg);

  // Translates the engine's status and record; reports success through the
  // error exit when nothing else was reported (so the handler always runs).
  void finish() {
    if (status != 0) return report();
    if (fail_) success();  // a success without a record reports nothing
  }

  // What an entry that succeeds leaves in the fail record (nothing without
  // one): code and errnum 0, the handler called, "NE_NOERROR:\n  No error."
  // -- what the error exit does for code 0, inline.
  static void succeed(Zem_Fail *fail, const char *routine) {
    if (!fail) return;
    static constexpr char no_error[] = "NE_NOERROR:\n  No error.";
    fail->code = NE_NOERROR;
    fail->errnum = 0;
    if (fail->handler) fail->handler(no_error, NE_NOERROR, routine);
    std::memcpy(fail->message, no_error, sizeof no_error);
  }

 private:
  void report();
  void success() { succeed(fail_, routine_); }
  const char *routine_;
  message_table table_;
  Zem_Fail *fail_;
  double ruser_ = 0.0;
};

// The quick C entry of a routine that cannot call back and whose worker is
// a pure function of its arguments (no callback, no message but a failure,
// no exception): with tracing off, worker(status) runs bare, and on status 0
// the fail record gets what c_entry::finish gives it and the result is
// returned, without the layers (their set-up cost a cheap special function
// about a fifth of its time).  Otherwise -- tracing on, or any failure --
// layers() runs the routine's whole C entry, which runs the worker again
// (the same result: it is pure) and reports through the record as every
// entry does.
//
//   ZEM_API double s14abc(double x, Zem_Fail *fail) {
//     return zem::quick_c_entry(fail, "s14abc", [x](int &code) noexcept { ... },
//                               [x, fail] { return s14abc_layers(x, fail); });
//   }
template <class Worker, class Layers>
[[gnu::always_inline]] inline auto quick_c_entry(Zem_Fail *fail, const char *routine, Worker worker, Layers layers) {
  int code = 0;
  static_assert(noexcept(worker(code)), "the quick entry runs its worker outside the thunk's handler");
  if (__builtin_expect(!trace_on(), 1)) {
    const auto result = worker(code);
    if (__builtin_expect(code == 0, 1)) {
      c_entry::succeed(fail, routine);
      return result;
    }
  }
  return layers();
}

// The same for a Fortran entry: with tracing off and status 0, ifail := 0
// (all that f_entry::finish does on success, whatever the mode ifail
// chose); otherwise layers() runs the whole Fortran entry, which reads the
// mode from ifail and reports as every entry does.
template <class Worker, class Layers>
[[gnu::always_inline]] inline auto quick_f_entry(int64_t *ifail, Worker worker, Layers layers) {
  int code = 0;
  static_assert(noexcept(worker(code)), "the quick entry runs its worker outside the thunk's handler");
  if (__builtin_expect(!trace_on(), 1)) {
    const auto result = worker(code);
    if (__builtin_expect(code == 0, 1)) {
      *ifail = 0;
      return result;
    }
  }
  return layers();
}

class f_entry {
 public:
  engine_data en_data;
  char errbuf[errbuf_len];
  int64_t status = 1;

  f_entry(const char *routine, message_table table) : routine_(routine), table_(table) {
    errbuf[0] = errbuf[errbuf_len - 1] = '\0';
    y90haan_(&en_data);
  }
  void finish(int64_t *ifail) {
    if (status == 0) {
      *ifail = 0;
      return;
    }
    report_f(routine_, table_, status, errbuf, ifail);
  }

 private:
  const char *routine_;
  message_table table_;
};

}  // namespace zem
