// The three embedded Runge-Kutta pairs of the d02p suite, as exact rationals.
//
// Each coefficient is a numerator and a denominator; the engine expands them
// into doubles at compile time (numerator and denominator are exact doubles,
// the quotient is correctly rounded), and tests/d02 checks the order
// conditions of every pair in exact rational arithmetic.
//
//   bs23  Bogacki and Shampine (1989): the 3(2) pair, four stages, first
//         same as last (the fourth stage is f at the new point).  The step is
//         advanced with the order-3 weights b; bhat are the order-2 weights
//         of the error estimate.
//   bs45  Bogacki and Shampine (1996): the 5(4) pair, eight stages, first
//         same as last.  b are the order-5 weights (equal to the last row of
//         a); bhat the order-4 weights of the error estimate.
//   pd87  Prince and Dormand (1981), RK8(7)13M: thirteen stages, b of order 8
//         (the step), bhat of order 7 (the error estimate).  The published
//         coefficients are rational approximations, to about 18 digits, of
//         the irrational coefficients of the pair; their order conditions
//         hold to about 1e-17, not exactly (the test says how closely).
//
// The strictly lower triangle of a is stored row by row: a[2,1]; a[3,1],
// a[3,2]; ...
//
// bs45_dense is the pair's continuous extension used for dense output,
// derived for this library from the eight stages of the step itself (no
// further evaluations): weights b_i(theta) = sum_k d[i][k] theta^(k+1),
// k = 0..3, that satisfy the eight order conditions of order <= 4 for every
// theta in [0,1], give the order-5 weights at theta = 1 and make the
// interpolant's derivative equal f at both ends of the step (so the dense
// output is continuously differentiable across steps).  The order
// conditions of order 4 leave two degrees of freedom; they are set to zero.
// tools/d02_dense.py derives it and tests/d02 checks it.
#pragma once

#include <cstdint>

namespace zem::d02 {

struct rational {
  int64_t num;
  int64_t den;
  constexpr double value() const { return static_cast<double>(num) / static_cast<double>(den); }
};

inline constexpr rational bs23_c[] = {
    {0, 1}, {1, 2}, {3, 4}, {1, 1},
};
inline constexpr rational bs23_a[] = {
    {1, 2}, {0, 1}, {3, 4}, {2, 9},
    {1, 3}, {4, 9},
};
inline constexpr rational bs23_b[] = {
    {2, 9}, {1, 3}, {4, 9}, {0, 1},
};
inline constexpr rational bs23_bhat[] = {
    {7, 24}, {1, 4}, {1, 3}, {1, 8},
};

inline constexpr rational bs45_c[] = {
    {0, 1}, {1, 6}, {2, 9}, {3, 7},
    {2, 3}, {3, 4}, {1, 1}, {1, 1},
};
inline constexpr rational bs45_a[] = {
    {1, 6}, {2, 27}, {4, 27}, {183, 1372},
    {-162, 343}, {1053, 1372}, {68, 297}, {-4, 11},
    {42, 143}, {1960, 3861}, {597, 22528}, {81, 352},
    {63099, 585728}, {58653, 366080}, {4617, 20480}, {174197, 959244},
    {-30942, 79937}, {8152137, 19744439}, {666106, 1039181}, {-29421, 29068},
    {482048, 414219}, {587, 8064}, {0, 1}, {4440339, 15491840},
    {24353, 124800}, {387, 44800}, {2152, 5985}, {7267, 94080},
};
inline constexpr rational bs45_b[] = {
    {587, 8064}, {0, 1}, {4440339, 15491840}, {24353, 124800},
    {387, 44800}, {2152, 5985}, {7267, 94080}, {0, 1},
};
inline constexpr rational bs45_bhat[] = {
    {2479, 34992}, {0, 1}, {123, 416}, {612941, 3411720},
    {43, 1440}, {2272, 6561}, {79937, 1113912}, {3293, 556956},
};

inline constexpr rational pd87_c[] = {
    {0, 1}, {1, 18}, {1, 12}, {1, 8},
    {5, 16}, {3, 8}, {59, 400}, {93, 200},
    {5490023248, 9719169821}, {13, 20}, {1201146811, 1299019798}, {1, 1},
    {1, 1},
};
inline constexpr rational pd87_a[] = {
    {1, 18}, {1, 48}, {1, 16}, {1, 32},
    {0, 1}, {3, 32}, {5, 16}, {0, 1},
    {-75, 64}, {75, 64}, {3, 80}, {0, 1},
    {0, 1}, {3, 16}, {3, 20}, {29443841, 614563906},
    {0, 1}, {0, 1}, {77736538, 692538347}, {-28693883, 1125000000},
    {23124283, 1800000000}, {16016141, 946692911}, {0, 1}, {0, 1},
    {61564180, 158732637}, {22789713, 633445777}, {545815736, 2771057229}, {-180193667, 1043307555},
    {39632708, 573591083}, {0, 1}, {0, 1}, {-433636366, 683701615},
    {-421739975, 2616292301}, {100302831, 723423059}, {790204164, 839813087}, {800635310, 3783071287},
    {246121993, 1340847787}, {0, 1}, {0, 1}, {-37695042795, 15268766246},
    {-309121744, 1061227803}, {-12992083, 490766935}, {6005943493, 2108947869}, {393006217, 1396673457},
    {123872331, 1001029789}, {-1028468189, 846180014}, {0, 1}, {0, 1},
    {8478235783, 508512852}, {1311729495, 1432422823}, {-10304129995, 1701304382}, {-48777925059, 3047939560},
    {15336726248, 1032824649}, {-45442868181, 3398467696}, {3065993473, 597172653}, {185892177, 718116043},
    {0, 1}, {0, 1}, {-3185094517, 667107341}, {-477755414, 1098053517},
    {-703635378, 230739211}, {5731566787, 1027545527}, {5232866602, 850066563}, {-4093664535, 808688257},
    {3962137247, 1805957418}, {65686358, 487910083}, {403863854, 491063109}, {0, 1},
    {0, 1}, {-5068492393, 434740067}, {-411421997, 543043805}, {652783627, 914296604},
    {11173962825, 925320556}, {-13158990841, 6184727034}, {3936647629, 1978049680}, {-160528059, 685178525},
    {248638103, 1413531060}, {0, 1},
};
inline constexpr rational pd87_b[] = {
    {14005451, 335480064}, {0, 1}, {0, 1}, {0, 1},
    {0, 1}, {-59238493, 1068277825}, {181606767, 758867731}, {561292985, 797845732},
    {-1041891430, 1371343529}, {760417239, 1151165299}, {118820643, 751138087}, {-528747749, 2220607170},
    {1, 4},
};
inline constexpr rational pd87_bhat[] = {
    {13451932, 455176623}, {0, 1}, {0, 1}, {0, 1},
    {0, 1}, {-808719846, 976000145}, {1757004468, 5645159321}, {656045339, 265891186},
    {-3867574721, 1518517206}, {465885868, 322736535}, {53011238, 667516719}, {2, 45},
    {0, 1},
};

inline constexpr rational bs45_dense[] = {
    {1, 1}, {-193, 64}, {3349, 1008}, {-3317, 2688},
    {0, 1}, {0, 1}, {0, 1}, {0, 1},
    {0, 1}, {17799021, 7745920}, {-6679341, 1936480}, {234495, 163072},
    {0, 1}, {185857, 62400}, {-5047, 975}, {59731, 24960},
    {0, 1}, {-83547, 22400}, {41967, 5600}, {-33651, 8960},
    {0, 1}, {2152, 1995}, {-4304, 5985}, {0, 1},
    {0, 1}, {21801, 15680}, {-7267, 2940}, {7267, 6272},
    {0, 1}, {-1, 1}, {1, 1}, {0, 1},
};

}  // namespace zem::d02
