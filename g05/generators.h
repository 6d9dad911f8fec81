// The six base generators, each defined in its own file.  Only state.cpp
// looks at them directly; everything else goes through generator_for().
#pragma once

#include "g05/state.h"

namespace zem::g05 {

extern const generator basic_generator;               // basic.cpp
extern const generator wichmann_hill_1_generator;     // wichmann_hill.cpp
extern const generator mersenne_twister_generator;    // mersenne_twister.cpp
extern const generator wichmann_hill_2_generator;     // wichmann_hill.cpp
extern const generator acorn_generator;               // acorn.cpp
extern const generator mrg32k3a_generator;            // mrg32k3a.cpp

}  // namespace zem::g05
