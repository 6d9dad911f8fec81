// The quadrature rules of chapter d01 laid out for the rule kernel.
//
// The published tables (zem_quad_gk_consts.h) store a symmetric rule by its
// non-negative half: nodes x_j > 0 (decreasing) and, for odd point counts, the
// centre.  The kernel works on pairs: for each node it evaluates f at
// c - h x_j and c + h x_j and sums the pair f(c - h x_j) + f(c + h x_j) before
// weighting it.  A sum of two numbers does not depend on their order, so an
// integrand that is symmetric about the centre, or two mirrored intervals,
// give bit-identical sums; equal error estimates of mirrored halves then
// compare equal, as the bisection's tie rule assumes.
//
// One block of pairs is laid out as
//     x[0 .. m)      c - h x_j   (increasing)
//     x[m .. 2m)     c + h x_j   (decreasing)
//     x[2m]          c           (if the block has the centre)
// and the arrays node, wk, wg hold x_j and the Kronrod and Gauss weights of
// the pair (Gauss weight 0 off the Gauss nodes), zero-padded to mpad, a
// multiple of 8 lanes.  The constants are typed once, in the published
// tables; the layouts are built from them at compile time.
#pragma once

#include <cstddef>
#include <cstdint>

#include "zem_quad_gk_consts.h"

namespace zem::quad {

inline constexpr int64_t lanes = 8;

constexpr int64_t padded(int64_t n) { return (n + lanes - 1) / lanes * lanes; }

// A block of symmetric pairs as the kernel sees it.
struct pair_block {
  int64_t m;           // pairs
  int64_t mpad;        // m rounded up to a multiple of 8
  const double *node;  // [mpad] x_j, then zeros
  const double *wk;    // [mpad] Kronrod weight of the pair, then zeros
  const double *wg;    // [mpad] Gauss weight of the pair, then zeros
  double wkc;          // centre weights (0 if the block has no centre)
  double wgc;
  bool centre;         // whether x[2m] = c belongs to the block
  bool gauss_first;    // sum order: Gauss pairs first (else j = 0, 1, ...)
  // Points the block asks of the integrand.
  constexpr int64_t points() const { return 2 * m + (centre ? 1 : 0); }
};

template <int64_t M>
struct pair_layout {
  static constexpr int64_t m = M;
  static constexpr int64_t mpad = padded(M);
  alignas(64) double node[mpad]{};
  alignas(64) double wk[mpad]{};
  alignas(64) double wg[mpad]{};
  double wkc = 0.0, wgc = 0.0;
  bool centre = false;

  constexpr pair_block block(bool gauss_first = true) const {
    return {m, mpad, node, wk, wg, wkc, wgc, centre, gauss_first};
  }
  // The same nodes with other weights (Patterson's stages).
  constexpr pair_block block(const double *k, double kc, const double *g, double gc) const {
    return {m, mpad, node, k, g, kc, gc, centre, true};
  }
};

// Gauss-Kronrod pair from its half tables: xgk[0..H) decreasing with
// xgk[H-1] = 0 the centre; Gauss nodes at the odd positions, wg[i/2] the
// Gauss weight of xgk[i] for odd i (so the centre is a Gauss node when H-1 is
// odd, i.e. for an odd Gauss point count).
template <std::size_t H, std::size_t G>
constexpr pair_layout<H - 1> make_gk(const double (&xgk)[H], const double (&wgk)[H],
                                     const double (&wg)[G]) {
  pair_layout<H - 1> l{};
  for (std::size_t j = 0; j + 1 < H; ++j) {
    l.node[j] = xgk[j];
    l.wk[j] = wgk[j];
    l.wg[j] = (j % 2 == 1) ? wg[j / 2] : 0.0;
  }
  l.wkc = wgk[H - 1];
  l.wgc = ((H - 1) % 2 == 1) ? wg[(H - 1) / 2] : 0.0;
  l.centre = true;
  return l;
}

namespace gkc = zem_quad_gk_consts;

inline constexpr auto gk15 = make_gk(gkc::xgk_15, gkc::wgk_15, gkc::wg_7);
inline constexpr auto gk21 = make_gk(gkc::xgk_21, gkc::wgk_21, gkc::wg_10);
inline constexpr auto gk31 = make_gk(gkc::xgk_31, gkc::wgk_31, gkc::wg_15);
inline constexpr auto gk41 = make_gk(gkc::xgk_41, gkc::wgk_41, gkc::wg_20);
inline constexpr auto gk51 = make_gk(gkc::xgk_51, gkc::wgk_51, gkc::wg_25);
inline constexpr auto gk61 = make_gk(gkc::xgk_61, gkc::wgk_61, gkc::wg_30);

// Room an evaluator needs for x and fv of one block of at most 30 pairs and
// the centre: the kernel reads 8-lane vectors from fv + m + 8k, up to
// m + mpad <= 30 + 32 (the lanes past the block are masked off).
inline constexpr int64_t block_buffer = 64;

// Patterson's nested 10/21/43/87 sequence: one block per stage, so that each
// stage evaluates only its new points.  Stage 1 is the Kronrod 21-point
// block (its nodes in the order x_10[0], x_21[0], x_10[1], ...: the
// interleaved xgk_21), stage 2 adds the 11 pairs of xgk_43, stage 3 the 22
// pairs of xgk_87.  Weight arrays per stage and block:
//   stage 1:  K21 on block 1 (Gauss 10 as the lower rule)
//   stage 2:  K43 on blocks 1 and 2 (K21 as the lower rule)
//   stage 3:  K87 on blocks 1, 2 and 3 (K43 as the lower rule)
struct patterson_layout {
  pair_layout<10> b1{};
  pair_layout<11> b2{};
  pair_layout<22> b3{};
  // Block 1 weights (pairs, centre) for K21, K43, K87; Gauss 10.
  alignas(64) double w21_1[16]{}, w43_1[16]{}, w87_1[16]{}, g10_1[16]{};
  double w21_c = 0.0, w43_c = 0.0, w87_c = 0.0;
  // Block 2 weights for K43 and K87; block 3 weights for K87.
  alignas(64) double w43_2[16]{}, w87_2[16]{};
  alignas(64) double w87_3[24]{};
  alignas(64) double zero[24]{};
};

constexpr patterson_layout make_patterson() {
  patterson_layout p{};
  // Block 1: node j of xgk_21 is the Gauss node x_10[(j-1)/2] for odd j and
  // the Kronrod node x_21[j/2] for even j.
  for (int64_t j = 0; j < 10; ++j) {
    p.b1.node[j] = gkc::xgk_21[j];
    if (j % 2 == 1) {
      p.g10_1[j] = gkc::wg_10[j / 2];
      p.w21_1[j] = gkc::wgk_21_a[j / 2];
      p.w43_1[j] = gkc::wgk_43_a[j / 2];
      p.w87_1[j] = gkc::wgk_87_a[j / 2];
    } else {
      p.w21_1[j] = gkc::wgk_21_b[j / 2];
      p.w43_1[j] = gkc::wgk_43_a[5 + j / 2];
      p.w87_1[j] = gkc::wgk_87_a[5 + j / 2];
    }
  }
  p.b1.centre = true;
  p.w21_c = gkc::wgk_21_b[5];
  p.w43_c = gkc::wgk_43_b[11];
  p.w87_c = gkc::wgk_87_b[22];
  for (int64_t j = 0; j < 11; ++j) {
    p.b2.node[j] = gkc::xgk_43[j];
    p.w43_2[j] = gkc::wgk_43_b[j];
    p.w87_2[j] = gkc::wgk_87_a[10 + j];
  }
  for (int64_t j = 0; j < 22; ++j) {
    p.b3.node[j] = gkc::xgk_87[j];
    p.w87_3[j] = gkc::wgk_87_b[j];
  }
  return p;
}

inline constexpr patterson_layout patterson = make_patterson();

}  // namespace zem::quad
