// libFuzzer targets of the option routines (built and run by
// tools/fuzz_e04.sh under AddressSanitizer and UBSan).
//   ZEM_FUZZ_E04ZM: the input is an option string for e04zmc and e04znc.
//   ZEM_FUZZ_E04ZP: the input is an options file for e04zpc.
// Every call must return with a fail record (never crash, hang or read out
// of bounds), and a failing call must leave the options unchanged.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include <unistd.h>

#include <zem.h>

#include "e04/handle.h"
#include "e04/options.h"

namespace {

void *the_handle() {
  static void *handle = [] {
    void *h = nullptr;
    Zem_Fail fail = ZEM_FAIL_INIT;
    e04rac(&h, 2, &fail);
    if (fail.code != NE_NOERROR) std::abort();
    return h;
  }();
  return handle;
}

const zem::e04::option_set &options_of(void *handle) {
  char errbuf[200];
  int64_t ifail = 0;
  return *zem::e04::options(*zem::e04::open_problem(handle, errbuf, &ifail));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  void *handle = the_handle();
  const zem::e04::option_set before = options_of(handle);
  Zem_Fail fail = ZEM_FAIL_INIT;
#if defined(ZEM_FUZZ_E04ZM)
  const std::string s(reinterpret_cast<const char *>(data), size);  // cut at the first NUL by the C entry
  e04zmc(handle, s.c_str(), &fail);
  const bool failed = fail.code != NE_NOERROR;
  int64_t ivalue = 0, optype = 0;
  double rvalue = 0.0;
  char cvalue[32];
  Zem_Fail fail2 = ZEM_FAIL_INIT;
  e04znc(handle, s.c_str(), &ivalue, &rvalue, cvalue, sizeof cvalue, &optype, &fail2);
  if (std::strlen(fail2.message) >= sizeof fail2.message) std::abort();
#else
  static const std::string path = std::string(access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp") + "/zem_fuzz_e04zp_" + std::to_string(getpid()) + ".opt";
  std::FILE *f = std::fopen(path.c_str(), "wb");
  if (!f) std::abort();
  std::fwrite(data, 1, size, f);
  std::fclose(f);
  e04zpc(handle, path.c_str(), &fail);
  const bool failed = fail.code != NE_NOERROR;
#endif
  if (std::strlen(fail.message) >= sizeof fail.message) std::abort();
  if (failed && std::memcmp(&before, &options_of(handle), sizeof before) != 0) std::abort();
  // Back to the defaults, so that every input starts from the same set.
  e04zmc(handle, "Defaults", &fail);
  return 0;
}
