// The same program in C++: zem.h is a C header that C++ includes as it is.
#include <cmath>
#include <cstdio>
#include <numeric>
#include <vector>

#include <zem.h>

int main() {
  Zem_Comm comm{};
  Zem_Fail fail = ZEM_FAIL_INIT;
  auto g = [](double x, Zem_Comm *) { return std::exp(-x) - x; };
  auto h = [](double x, Zem_Comm *) { return 1.0 / std::sqrt(x) + std::log(x); };
  double root = 0, integral = 0, abserr = 0;
  std::vector<double> w(400), u(1000);
  std::vector<int64_t> iw(100), state(1260);
  int64_t seed[1] = {1762543}, lstate = 1260;

  c05ayc(0.0, 1.0, 1e-12, 0.0, g, &root, &comm, &fail);
  if (fail.code != NE_NOERROR) return 1;
  d01ajc(h, 0.0, 1.0, 0.0, 1e-10, &integral, &abserr, w.data(), 400, iw.data(), 100, &comm, &fail);
  if (fail.code != NE_NOERROR) return 2;
  zem_rand_init_repeatable(Zem_MersenneTwister, 1, seed, 1, state.data(), &lstate, &fail);
  if (fail.code != NE_NOERROR) return 3;
  zem_rand_uniform01(1000, state.data(), u.data(), &fail);
  if (fail.code != NE_NOERROR) return 4;
  const double sum = std::accumulate(u.begin(), u.end(), 0.0);
  std::printf("root %.8f integral %.8f mean %.8f\n", root, integral, sum / 1000);
  return 0;
}
