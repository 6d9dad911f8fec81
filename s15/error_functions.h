// The error function kernels of the special-function chapter.
//
// erfc and erf are the platform math library's own (accurate to a few units
// in the last place); s15ad and s15ae are these kernels inside the call
// frame, and the Normal probabilities of g01ea are formed from them.
#pragma once

#include <cmath>

namespace zem::s15 {

inline double erfc(double x) { return std::erfc(x); }
inline double erf(double x) { return std::erf(x); }

}  // namespace zem::s15
