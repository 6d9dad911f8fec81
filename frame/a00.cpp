// a00aa: the library's implementation details, printed on the advisory
// message unit.  What varies from build to build (kernel, compilers, date)
// was captured when the library was configured.
#include "build_info.h"
#include "frame.h"
#include "units.h"

namespace {

void block(const char *what, const char *title) {
  const int64_t unit = zem::adv_unit();
  auto put = [unit](const std::string &s) { zem::write_record(unit, s); };
  put(std::string(" *** Start of ZEM ") + what + " implementation details ***");
  put("");
  put(std::string(" Implementation title: ") + title);
  put("            Precision: double precision");
  put(std::string("                 Mark: ") + ZEM_RELEASE + " (self-contained)");
  put("");
  put("  This is a 64-bit library using 64-bit integers.");
  put("");
  put(" Created using:");
  put("     hardware - x86_64");
  put(std::string("     op. sys. - ") + ZEM_KERNEL);
  put(std::string("     Fortran compiler - ") + ZEM_FORTRAN_COMPILER);
  put(std::string("     C compiler - ") + ZEM_C_COMPILER);
  put(std::string("     C++ compiler - ") + ZEM_CXX_COMPILER);
  put(std::string("     build date - ") + ZEM_BUILD_DATE);
  put("");
  put(" Applicable to:");
  put("     x86-64 Linux, 64-bit, with " ZEM_LIBC);
  put(" and compatible systems.");
  put("");
  put(std::string(" *** End of ZEM ") + what + " implementation details ***");
}

}  // namespace

#define A00AA_ARGS(V, A, U)
ZEM_ENGINE_LAYERS(a00aa, A00AA_ARGS)
ZEM_INTERNAL void a00aafn_(engine_data *) {
  block("Library", "Linux x86-64, 64-bit integers, C/C++ engine with C and Fortran interfaces (GNU compilers)");
  block("Engine", "C++20 engine, IEEE double precision, no fused multiply-add contraction");
}

ZEM_API void a00aaf_() {
  engine_data en_data;
  y90haan_(&en_data);
  a00aaft_(&en_data);
}
ZEM_API void a00aac() {
  f90_io_init();
  a00aaf_();
}
