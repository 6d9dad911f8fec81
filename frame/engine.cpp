// The engine context, the trace switch and the trace blocks.
#include "engine.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <stdexcept>

#include "entry.h"
#include "errbuf.h"
#include "layers.h"
#include "trace.h"
#include "units.h"

// The internal routine that the Fortran entries hand to the engine in the
// place of a library-supplied user routine.  Nothing calls it in the
// routines written so far; it does nothing.
ZEM_INTERNAL void y90jdsn_() {}

namespace zem {

std::atomic<bool> trace_switch{false};

namespace {
// The trace switch from the environment, read once when the library loads.
struct trace_from_environment {
  trace_from_environment() {
    const char *v = std::getenv("ZEM_TRACE");
    if (v && *v && std::strcmp(v, "0") != 0) trace_switch.store(true, std::memory_order_relaxed);
  }
} const trace_init;

void trace_line(const char *name, const char *text) {
  char line[320];
  std::snprintf(line, sizeof line, "      %s = %s", name, text);
  write_record(adv_unit(), line);
}
}  // namespace

trace_block::trace_block(const char *heading, const char *when) {
  char line[128];
  std::snprintf(line, sizeof line, " ** %s %s", heading, when);
  write_record(adv_unit(), line);
}

void trace_block::value(const char *name, const engine_data *v) {
  char text[96];
  std::snprintf(text, sizeof text, "cb_status %lld, cb_mode %d", static_cast<long long>(v->cb_status),
                static_cast<int>(v->cb_mode));
  trace_line(name, text);
}

void trace_block::value(const char *name, const double *v) {
  value_text t = format_value(*v);
  t.text[t.len] = '\0';
  trace_line(name, t.text);
}

void trace_block::value(const char *name, const int64_t *v) {
  value_text t = format_value(*v);
  t.text[t.len] = '\0';
  trace_line(name, t.text);
}

void trace_block::value(const char *name, const char *errbuf) {
  char text[errbuf_len + 2];
  int n = 0;
  text[n++] = '"';
  for (int i = 0; i < errbuf_len - 1 && errbuf[i] != '\0'; ++i) text[n++] = errbuf[i] == '\x01' ? '|' : errbuf[i];
  while (n > 1 && text[n - 1] == ' ') --n;
  text[n++] = '"';
  text[n] = '\0';
  trace_line(name, text);
}

void trace_block::address(const char *name, const void *p) {
  char text[48];
  std::snprintf(text, sizeof text, "(address %p)", p);
  trace_line(name, text);
}

void exception_sink::report() const {
  int64_t status = status_exception;
  try {
    throw;
  } catch (const std::bad_alloc &) {
    status = status_alloc_fail;
  } catch (const std::length_error &) {
    status = status_alloc_fail;
  } catch (...) {
  }
  if (errbuf) {
    errbuf[0] = '\0';
    errbuf[errbuf_len - 1] = '\0';
  }
  if (ifail) *ifail = status;
}

}  // namespace zem

ZEM_INTERNAL int64_t y90gczn_(const int64_t *set, const int64_t *value) {
  if (*set != 0) zem::trace_switch.store(*value != 0, std::memory_order_relaxed);
  return zem::trace_on() ? 1 : 0;
}

