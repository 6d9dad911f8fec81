// The integrands of the reference battery (tools/d01_battery.py), written as
// the same floating-point operations in the same order as the Python table,
// so that both sides see the same f(x) bit for bit (both call the same C
// mathematical library).
#pragma once

#include <cmath>
#include <string_view>

namespace d01test {

inline constexpr double third = 1.0 / 3.0;
inline constexpr double c03 = 0.3;
inline constexpr double c037 = 0.37;
inline constexpr double r2 = 0.7071067811865476;

struct battery_integrand {
  std::string_view name;
  double (*f)(double);
};

// clang-format off
inline constexpr battery_integrand battery_integrands[] = {
    {"exp_m_x2", [](double x) { return std::exp(-x * x); }},
    {"exp", [](double x) { return std::exp(x); }},
    {"exp_reversed", [](double x) { return std::exp(x); }},
    {"pow_x60", [](double x) { return std::pow(x, 60.0); }},
    {"runge_5", [](double x) { return 1.0 / (1.0 + 25.0 * x * x); }},
    {"x_cos_x", [](double x) { return x * std::cos(x); }},
    {"exp_m_x_wide", [](double x) { return std::exp(-x); }},
    {"sin_odd_zero", [](double x) { return std::sin(x); }},
    {"sinc_long", [](double x) { return std::sin(x) / x; }},
    {"inv_sqrt", [](double x) { return 1.0 / std::sqrt(x); }},
    {"sqrt", [](double x) { return std::sqrt(x); }},
    {"pow_m09", [](double x) { return std::pow(x, -0.9); }},
    {"pow_m099", [](double x) { return std::pow(x, -0.99); }},
    {"inv_sqrt_right", [](double x) { return 1.0 / std::sqrt(1.0 - x); }},
    {"sqrt_1mx2", [](double x) { return std::sqrt(1.0 - x * x); }},
    {"inv_sqrt_1mx2", [](double x) { return 1.0 / std::sqrt(1.0 - x * x); }},
    {"log", [](double x) { return std::log(x); }},
    {"log_over_sqrt", [](double x) { return std::log(x) / std::sqrt(x); }},
    {"log_squared", [](double x) { return std::log(x) * std::log(x); }},
    {"log_log", [](double x) { return std::log(-std::log(x)); }},
    {"x_log", [](double x) { return x * std::log(x); }},
    {"log_abs_third", [](double x) { return std::log(std::fabs(x - third)); }},
    {"inv_sqrt_abs_03", [](double x) { return 1.0 / std::sqrt(std::fabs(x - c03)); }},
    {"abs_third", [](double x) { return std::fabs(x - third); }},
    {"lorentz_03", [](double x) { return 1.0 / ((x - c03) * (x - c03) + 1e-4); }},
    {"gauss_peak", [](double x) { return std::exp(-1e4 * (x - c037) * (x - c037)); }},
    {"runge_230", [](double x) { return 1.0 / (1.0 + (230.0 * x - 30.0) * (230.0 * x - 30.0)); }},
    {"sech2", [](double x) { return 1.0 / (std::cosh(20.0 * (x - 0.2)) * std::cosh(20.0 * (x - 0.2))); }},
    {"cos_100x", [](double x) { return std::cos(100.0 * x); }},
    {"exp_sin_256", [](double x) { return std::exp(20.0 * (x - 1.0)) * std::sin(256.0 * x); }},
    {"x_sin_inv_x", [](double x) { return x * std::sin(1.0 / x); }},
    {"cos_100x_over_sqrt", [](double x) { return std::cos(100.0 * x) / std::sqrt(x); }},
    {"step_third", [](double x) { return x < third ? 0.0 : 1.0; }},
    {"floor", [](double x) { return std::floor(x); }},
    {"sign_third_tight", [](double x) { return x < third ? -1.0 : 1.0; }},
    {"jump_1e10", [](double x) { return x < r2 ? 0.0 : 1e10; }},
    {"inv_x", [](double x) { return 1.0 / x; }},
    {"inv_x_limit_200", [](double x) { return 1.0 / x; }},
    {"log_over_x", [](double x) { return std::log(x) / x; }},
    {"inv_x2", [](double x) { return 1.0 / (x * x); }},
    {"pow_m105", [](double x) { return std::pow(x, -1.05); }},
    {"zero", [](double) { return 0.0; }},
    {"empty_interval", [](double x) { return std::exp(x); }},
    {"maxsub_1", [](double x) { return std::exp(-x * x); }},
    {"maxsub_1_met", [](double x) { return std::exp(x); }},
    {"inv_sqrt_limit_3", [](double x) { return 1.0 / std::sqrt(x); }},
    {"inv_sqrt_limit_4", [](double x) { return 1.0 / std::sqrt(x); }},
    {"inv_sqrt_limit_6", [](double x) { return 1.0 / std::sqrt(x); }},
    {"log_limit_6", [](double x) { return std::log(x); }},
    {"log_over_sqrt_limit_8", [](double x) { return std::log(x) / std::sqrt(x); }},
    {"log_limit_5", [](double x) { return std::log(x); }},
    {"cos_100x_limit_5", [](double x) { return std::cos(100.0 * x); }},
    {"inv_sqrt_tight", [](double x) { return 1.0 / std::sqrt(x); }},
    {"log_tight", [](double x) { return std::log(x); }},
    // Break points (classic QAGP rows).
    {"bp_log_abs_third", [](double x) { return std::log(std::fabs(x - third)); }},
    {"bp_log_abs_third_reversed", [](double x) { return std::log(std::fabs(x - third)); }},
    {"bp_inv_sqrt_abs_03", [](double x) { return 1.0 / std::sqrt(std::fabs(x - c03)); }},
    {"bp_step_third", [](double x) { return x < third ? 0.0 : 1.0; }},
    {"bp_floor", [](double x) { return std::floor(x); }},
    {"bp_cubic_log", [](double x) { return x * x * x * std::log(std::fabs((x * x - 1.0) * (x * x - 2.0))); }},
    {"bp_none_exp", [](double x) { return std::exp(x); }},
    {"bp_lorentz_03", [](double x) { return 1.0 / ((x - c03) * (x - c03) + 1e-4); }},
    {"bp_abs_third_unsorted", [](double x) { return std::fabs(x - third) + std::sqrt(x); }},
    {"bp_limit_2_met", [](double x) { return std::exp(x); }},
    {"bp_limit_2", [](double x) { return std::log(std::fabs(x - third)); }},
    {"bp_inv_x", [](double x) { return 1.0 / x; }},
    // Infinite ranges (classic QAGI rows).
    {"inf_exp", [](double x) { return std::exp(-x); }},
    {"inf_exp_shifted", [](double x) { return std::exp(-x); }},
    {"inf_cauchy_both", [](double x) { return 1.0 / (1.0 + x * x); }},
    {"inf_gauss_both", [](double x) { return std::exp(-x * x); }},
    {"inf_exp_left", [](double x) { return std::exp(x); }},
    {"inf_cauchy_left", [](double x) { return 1.0 / (1.0 + x * x); }},
    {"inf_sqrt_pole", [](double x) { return 1.0 / ((1.0 + x) * std::sqrt(x)); }},
    {"inf_pow_m15", [](double x) { return std::pow(x, -1.5); }},
    {"inf_exp_cos", [](double x) { return std::exp(-x) * std::cos(x); }},
    {"inf_exp_inv_sqrt", [](double x) { return std::exp(-x) / std::sqrt(x); }},
    {"inf_log_cauchy", [](double x) { return std::log(x) / (1.0 + x * x); }},
    {"inf_pow_m101", [](double x) { return std::pow(x, -1.01); }},
    {"inf_inv_x", [](double x) { return 1.0 / x; }},
    {"inf_limit_4", [](double x) { return 1.0 / ((1.0 + x) * std::sqrt(x)); }},
};
// clang-format on

inline double (*battery_function(std::string_view name))(double) {
  for (const auto &b : battery_integrands)
    if (b.name == name) return b.f;
  return nullptr;
}

}  // namespace d01test
