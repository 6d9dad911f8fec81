// Reading a large MPS file: e04sac against `glpsol --check` on the same
// file, side by side in one run.  The file (10^6 matrix entries, 50 000 rows,
// 100 000 columns, 38 MB) is written by tools/e04_mps_generate.py into the
// working directory when it is not there yet.
//   build-bench/bench/e04/bench_e04_mps_read --benchmark_repetitions=3
// Contenders of the group "mps_read_1e6":
//   zem_e04sac      e04sac + e04rzc inside this process (CPU time);
//   zem_process     the program bench_e04_mps_read_once (e04sac + e04rzc)
//                   run as a process of its own;
//   glpsol_process  `glpsol --check --mps file` run as a process.
// For the two processes the time is the child's CPU time (user + system,
// from wait4) and the counter zem_peak_rss_kb its peak resident set size
// (ru_maxrss): process start and library loading are counted for both.
// glpsol must be on the PATH (Debian's glpk-utils; bench set-up only).
#include <cstdio>
#include <cstdlib>
#include <string>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <zem.h>

#include "zem_bench.h"

namespace {

const std::string file = "bench_e04_mps_1e6.mps";

void make_file() {
  if (access(file.c_str(), R_OK) == 0) return;
  const std::string cmd = "python3 " ZEM_SOURCE_DIR "/tools/e04_mps_generate.py " + file + " 1000000";
  if (std::system(cmd.c_str()) != 0) {
    std::fprintf(stderr, "could not write %s\n", file.c_str());
    std::exit(1);
  }
}

struct child_usage {
  double cpu_seconds = -1.0;
  double peak_rss_kb = 0.0;
};

// Runs argv as a child with its output discarded; its CPU time and peak RSS.
child_usage run_child(const char *const argv[]) {
  child_usage u;
  const pid_t pid = fork();
  if (pid == 0) {
    const int null = open("/dev/null", O_WRONLY);
    dup2(null, 1);
    dup2(null, 2);
    execvp(argv[0], const_cast<char *const *>(argv));
    _exit(127);
  }
  int status = 0;
  rusage r{};
  if (pid < 0 || wait4(pid, &status, 0, &r) != pid || !WIFEXITED(status) || WEXITSTATUS(status) != 0) return u;
  u.cpu_seconds = double(r.ru_utime.tv_sec + r.ru_stime.tv_sec) + 1e-6 * double(r.ru_utime.tv_usec + r.ru_stime.tv_usec);
  u.peak_rss_kb = double(r.ru_maxrss);
  return u;
}

void add_process(const char *contender, std::vector<std::string> args) {
  benchmark::RegisterBenchmark((std::string("mps_read_1e6/") + contender).c_str(),
                               [args](benchmark::State &state) {
                                 std::vector<const char *> argv;
                                 for (const auto &a : args) argv.push_back(a.c_str());
                                 argv.push_back(nullptr);
                                 double peak = 0.0;
                                 for (auto _ : state) {
                                   const child_usage u = run_child(argv.data());
                                   if (u.cpu_seconds < 0) {
                                     state.SkipWithError((args[0] + " failed").c_str());
                                     break;
                                   }
                                   state.SetIterationTime(u.cpu_seconds);
                                   if (u.peak_rss_kb > peak) peak = u.peak_rss_kb;
                                 }
                                 state.counters["zem_peak_rss_kb"] = peak;
                                 state.counters["items"] = 1;
                               })
      ->UseManualTime()
      ->Iterations(1)
      ->Unit(benchmark::kMillisecond);
}

}  // namespace

int main(int argc, char **argv) {
  make_file();
  zem_bench::add("mps_read_1e6", "zem_e04sac", 1, [] {
    void *handle = nullptr;
    Zem_Fail fail = ZEM_FAIL_INIT;
    e04sac(&handle, "MPS", file.c_str(), &fail);
    const double ok = fail.code == NE_NOERROR ? 1.0 : 0.0;
    e04rzc(&handle, &fail);
    return ok;
  })->Iterations(1)->Unit(benchmark::kMillisecond);
  add_process("zem_process", {ZEM_READ_ONCE, file});
  add_process("glpsol_process", {"glpsol", "--check", "--mps", file});
  return zem_bench::run(argc, argv, "e04sa");
}
