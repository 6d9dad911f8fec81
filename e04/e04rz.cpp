// e04rz: destroys a handle.  A null handle is accepted and left alone.
// Everything the body owns is released, the header's nine words are zeroed
// (a stale copy of the pointer then reads as not initialized, not as ours)
// and the caller's handle becomes null.  A shell releases only its own two
// words, never the object it wraps.
#include <cstdint>
#include <cstring>

#include "e04/model.h"

inline constexpr zem::message e04rz_messages[] = {ZEM_E04_HANDLE_ROWS};
ZEM_REGISTER_MESSAGES(e04rz)

#define E04RZ_ARGS(V, A, U) A(void **, handle) V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(e04rz, E04RZ_ARGS)

ZEM_INTERNAL void e04rzfn_(engine_data *, void **handle, char *errbuf, int64_t *ifail) {
  using namespace zem::e04;
  *ifail = 0;
  if (!*handle) return;
  int64_t kind = 0;
  void *inner = nullptr;
  switch (validate(*handle, &kind, &inner)) {
    case handle_state::null: return;
    case handle_state::foreign: return zem::fail(errbuf, ifail, 1, 1002);
    case handle_state::no_body: return zem::fail(errbuf, ifail, 1, 1003);
    case handle_state::ok: break;
  }
  auto *w = static_cast<int64_t *>(*handle);
  void *body = reinterpret_cast<void *>(w[word_body]);
  const bool shell = w[5] == shell_variant[0];
  if (shell) {
    delete static_cast<shell_body *>(body);
  } else {
    auto *p = static_cast<problem *>(body);
    release_options(*p);
    delete p;
  }
  std::memset(w, 0, header_words * sizeof(int64_t));
  delete[] w;
  *handle = nullptr;
}

ZEM_API void e04rzf_(void **handle, int64_t *ifail) {
  zem::f_entry call("e04rzf", e04rz_messages);
  e04rzft_(&call.en_data, handle, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void e04rzc(void **handle, Zem_Fail *fail) {
  zem::c_entry call("e04rzc", e04rz_messages, fail);
  if (!handle) return call.bad_param("handle");
  e04rzft_(&call.en_data, handle, call.errbuf, &call.status);
  call.finish();
}
