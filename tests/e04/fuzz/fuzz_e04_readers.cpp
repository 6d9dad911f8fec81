// libFuzzer targets of the problem-file readers (built and run by
// tools/fuzz_e04.sh under AddressSanitizer and UBSan).
//   ZEM_FUZZ_MPS:         the input is an MPS file for e04sac ("MPS").
//   ZEM_FUZZ_SDPA:        the input is an SDPA file for e04sac ("SDPA").
//   ZEM_FUZZ_SDPA_STREAM: the input is an SDPA stream for e04rdc, read from
//                         a file descriptor; the first three bytes choose
//                         the limits maxnvar, maxnblk, maxnnz (0..255 each,
//                         so that NE_INT_MAX and its sizes are exercised).
// Every call must return with a fail record (never crash, hang or read out
// of bounds); a failed e04sac leaves the handle null, a failed e04rdc leaves
// the handle empty, and a handle that was read prints without failure.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include <fcntl.h>
#include <unistd.h>

#include <zem.h>

#include "e04/handle.h"
#include "e04/model.h"

namespace {

const std::string &scratch() {
  static const std::string path = std::string(access("/dev/shm", W_OK) == 0 ? "/dev/shm" : "/tmp") +
                                  "/zem_fuzz_e04_reader_" + std::to_string(getpid());
  return path;
}

void write_file(const uint8_t *data, size_t size) {
  std::FILE *f = std::fopen(scratch().c_str(), "wb");
  if (!f) std::abort();
  if (size) std::fwrite(data, 1, size, f);
  std::fclose(f);
}

// A handle that was read must print every section of the model; the
// printing goes to unit -1 (nothing written) so that only the walk over the
// stored model is exercised.
void print_all(void *handle) {
  Zem_Fail fail = ZEM_FAIL_INIT;
  e04ryc(handle, -1,
         "OVERVIEW,OBJECTIVE,SIMPLE BOUNDS,LINEAR CONSTRAINTS DETAILED,CONE CONSTRAINTS DETAILED,"
         "MATRIX CONSTRAINTS DETAILED,MULTIPLIERS SIZES",
         &fail);
  if (fail.code != NE_NOERROR) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  void *handle = nullptr;
  Zem_Fail fail = ZEM_FAIL_INIT;
  fail.print = 0;
#if defined(ZEM_FUZZ_MPS) || defined(ZEM_FUZZ_SDPA)
  write_file(data, size);
#if defined(ZEM_FUZZ_MPS)
  e04sac(&handle, "MPS", scratch().c_str(), &fail);
#else
  e04sac(&handle, "SDPA", scratch().c_str(), &fail);
#endif
  if (std::strlen(fail.message) >= sizeof fail.message) std::abort();
  if (fail.code != NE_NOERROR) {
    if (handle) std::abort();  // a failed read leaves nothing behind
    return 0;
  }
  print_all(handle);
#else
  int64_t lim[3] = {0, 0, 0};
  for (int k = 0; k < 3 && size > 0; ++k, ++data, --size) lim[k] = *data;
  write_file(data, size);
  e04rac(&handle, 0, &fail);
  if (fail.code != NE_NOERROR) std::abort();
  const int fd = open(scratch().c_str(), O_RDONLY);
  if (fd < 0) std::abort();
  e04rdc(handle, fd, lim[0], lim[1], lim[2], &fail);
  close(fd);
  if (std::strlen(fail.message) >= sizeof fail.message) std::abort();
  if (fail.code != NE_NOERROR) {
    // Nothing is stored unless the whole stream read correctly.
    char errbuf[200];
    int64_t ifail = 0;
    const zem::e04::problem *p = zem::e04::open_problem(handle, errbuf, &ifail);
    if (!p || p->s.nvar != 0 || !p->blocks.empty() || p->s.objective != zem::e04::obj_none) std::abort();
  } else {
    print_all(handle);
  }
#endif
  e04rzc(&handle, &fail);
  if (fail.code != NE_NOERROR || handle) std::abort();
  return 0;
}
