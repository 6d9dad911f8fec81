// The rule kernel of chapter d01 and its run-time dispatch.
//
// The kernel is the arithmetic of one rule application that does not depend
// on the integrand: the abscissae of a block of symmetric pairs (layout in
// quad_rules.h) and the weighted sums over the function values.  It is
// compiled from one source (quad_kernel.inc) for three processor families,
// baseline x86-64 (SSE2), AVX2 and AVX-512, and the family is chosen once per
// process from what the processor supports; the environment variable
// ZEM_ISA = baseline, avx2 or avx512 (the one instruction-set switch of the
// library) forces a family (a family the processor lacks is ignored).
//
// All builds give the same bits: the source works on the family's native
// vectors (2, 4 or 8 doubles), the compiler may not contract a*b+c into a
// fused multiply-add (-ffp-contract=off), the vectors only form the
// abscissae and the per-pair products (element-wise, correctly rounded), and
// every sum is then accumulated by scalar additions in one fixed order, the
// order of the published rule evaluation:
//   k   = w_kc f_c, then the Gauss-node pairs (odd j), then the others (even j)
//   g   = w_gc f_c (0 if the centre is not a Gauss node), then the odd j
//   abs = w_kc |f_c|, then odd j, then even j
//   asc = w_kc |f_c - k/2|, then j = 0, 1, 2, ...
// or, for a block marked !gauss_first (the transformed 15-point rule of the
// infinite range), k, g and abs over j = 0, 1, 2, ... with g adding the zero
// weights of the Kronrod-only pairs too.
// (pair j has node x_j of the half table, xgk[j]; pair sums are formed as
// f_L + f_R, which is also f_R + f_L: mirrored intervals give equal sums).
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "quad_rules.h"

namespace zem::quad {

// Weighted sums over one block's function values (p_j the pair sum
// f(c - h x_j) + f(c + h x_j), q_j = |f(c - h x_j)| + |f(c + h x_j)|), in the
// order given above.
struct kernel_sums {
  double k;    // w_kc f_c + sum wk_j p_j                       (Kronrod)
  double g;    // w_gc f_c + sum wg_j p_j                       (Gauss)
  double abs;  // w_kc |f_c| + sum wk_j q_j
  double asc;  // w_kc |f_c - k/2| + sum wk_j (|f_L - k/2| + |f_R - k/2|)
};

struct rule_kernels {
  const char *name;
  // The block's abscissae for centre c and half-length h (layout in
  // quad_rules.h); writes x[0 .. m + mpad) (the lanes past the block's
  // points are scratch) and x[2m] = c for a block with a centre.
  void (*abscissae)(const pair_block &b, double c, double h, double *x);
  // Reads fv[0 .. m + mpad); only the block's points enter the sums.
  kernel_sums (*sums)(const pair_block &b, const double *fv);
};

enum class isa { baseline = 0, avx2 = 1, avx512 = 2 };

// The build for one family (callable only if the processor supports it).
const rule_kernels &kernels_for(isa family);
// Whether this processor (and its operating system) supports the family.
bool isa_supported(isa family);
// "baseline", "avx2", "avx512" (any case) -> the family; anything else: none.
std::optional<isa> parse_isa(std::string_view name);
// The family to use: `forced` (the value of ZEM_ISA, may be null) if it
// names a supported family, else the widest supported.
isa choose_isa(const char *forced);
// The kernels of this process, chosen on first use.
const rule_kernels &active_kernels();

}  // namespace zem::quad
