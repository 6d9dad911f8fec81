// g22za: release a g22 handle of any kind.
#include "frame/frame.h"
#include "g22/g22.h"

using namespace zem::g22;

inline constexpr zem::message g22za_messages[] = {
    {11, 1001, NE_HANDLE, {"handle has been corrupted."}},
    {12, 1002, NE_HANDLE, {"handle is a handle to an unknown data structure."}},
};
ZEM_REGISTER_MESSAGES(g22za)

inline constexpr translation g22za_translation[] = {
    {ierr_g22_handle_corrupt, 0, 11, 1001},
    {ierr_g22_handle_unknown, 0, 12, 1002},
};

#define G22ZA_ARGS(V, A, U) A(void **, handle) V(char *, errbuf) V(int64_t *, ifail)
ZEM_ENGINE_LAYERS(g22za, G22ZA_ARGS)

// A NULL handle is left alone (success); a valid one is released and set to
// NULL; anything else is reported and left untouched.
ZEM_INTERNAL void g22zafn_(engine_data *, void **handle, char *errbuf, int64_t *ifail) {
  *ifail = 0;
  if (!*handle) return;
  error_record e;
  e.routine = "g22za";
  kind k{};
  const ierr c = check(*handle, &k);
  if (c != ierr_g22_ok) {
    e.raise(c, "g22zafn");
    return translate(e, g22za_translation, errbuf, ifail);
  }
  release(*handle);
  *handle = nullptr;
}

ZEM_API void g22zaf_(void **handle, int64_t *ifail) {
  zem::f_entry call("g22zaf", g22za_messages);
  g22zaft_(&call.en_data, handle, call.errbuf, &call.status);
  call.finish(ifail);
}

ZEM_API void g22zac(void **handle, Zem_Fail *fail) {
  zem::c_entry call("g22zac", g22za_messages, fail);
  if (!handle) return call.bad_param("handle");
  g22zaft_(&call.en_data, handle, call.errbuf, &call.status);
  call.finish();
}
