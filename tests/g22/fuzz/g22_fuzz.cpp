// libFuzzer target: the formula parser and option strings of chapter g22.
// The input is split at its first NUL byte: the part before it is parsed
// as a formula (through the C entry, so the handle checks, the error record
// and the message translation run too); the part after it is applied as an
// option string to the formula, data and design handles and read back as
// an option name.  Built and run by tools/g22_fuzz.sh.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

#include <zem.h>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
  const std::string in(reinterpret_cast<const char *>(data), size);
  const size_t cut = in.find('\0');
  const std::string formula = in.substr(0, cut);
  std::string option = cut == std::string::npos ? std::string() : in.substr(cut + 1);
  if (option.find('\0') != std::string::npos) return 0;
  // "PRINT = n" writes to Fortran unit n (a file fort.n for most n): only
  // the silent unit here.
  std::string upper = option;
  for (char &c : upper) c = static_cast<char>(c >= 'a' && c <= 'z' ? c - 32 : c);
  if (upper.find("PRINT") != std::string::npos) option = "PRINT = -1";

  Zem_Fail fail = ZEM_FAIL_INIT;
  void *hf = nullptr, *hd = nullptr, *hx = nullptr;
  g22yac(&hf, formula.c_str(), &fail);
  const int64_t levels[] = {2, 3, 1};
  const char *names[] = {"A", "B", "x"};
  g22ybc(&hd, 2, 3, levels, 3, names, &fail);
  if (hf) {
    // A small design matrix when the formula speaks of A, B, x only.
    const double dat[6] = {1, 2, 1, 3, 0.5, -1.0};
    double x[2 * 64];
    int64_t mx = 0;
    g22ycc(hf, hd, dat, 2, 3, &hx, x, 2, 64, &mx, &fail);
    if (hx) {
      int64_t ii, p, ml = 8, isx[64], vinfo[1024];
      char plab[64 * 8];
      g22ydc(0, hf, hx, &ii, &p, 64, isx, 64, plab, 1024, vinfo, &ml, &fail);
    }
  }
  for (void *h : {hf, hd, hx}) {
    if (!h) continue;
    g22zmc(h, option.c_str(), &fail);
    int64_t iv = 0, ot = 0;
    double rv = 0.0;
    char cv[32];
    g22znc(h, option.c_str(), &iv, &rv, cv, sizeof cv, &ot, &fail);
  }
  g22zac(&hf, &fail);
  g22zac(&hd, &fail);
  g22zac(&hx, &fail);
  return 0;
}
