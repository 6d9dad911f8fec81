// Machine quantities for the engine, the same values the x02 routines give.
#pragma once

#include <bit>
#include <cstdint>

namespace zem {
inline constexpr double machine_eps = 0x1p-53;                                        // x02aj
inline constexpr double min_normal = 0x1p-1022;                                       // x02ak
inline constexpr double max_double = std::bit_cast<double>(0x7FEFFFFFFFFFFFFFull);    // x02al
inline constexpr double safe_min = std::bit_cast<double>(0x0010000000000001ull);      // x02am
}  // namespace zem
