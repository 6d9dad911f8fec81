// The bad-input sweep's runner: the routine list from libzem.so's dynamic
// symbols, one test per registered routine, the alarm, the checks shared by
// every case.  The tables are the other files of this folder.
#include <dlfcn.h>
#include <elf.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <set>

#include "sweep.h"

namespace badinput {
namespace {

std::map<std::string, sweep_fn> &registry() {
  static std::map<std::string, sweep_fn> r;
  return r;
}

// The case under way, for the alarm handler (plain storage: the handler
// may only write it out).
char current_case[512];
unsigned timeout_seconds = 20;

void on_alarm(int) {
  static const char head[] = "\nhang: no return within the alarm from ";
  ssize_t ignored = write(2, head, sizeof head - 1);
  ignored = write(2, current_case, std::strlen(current_case));
  ignored = write(2, "\n", 1);
  (void)ignored;
  _exit(3);
}

// The five-character names of the routines whose entries libzem.so exports
// (XXXXXc and XXXXXf_ function symbols of its dynamic symbol table).
std::set<std::string> exported_routines() {
  Dl_info info{};
  if (!dladdr(reinterpret_cast<void *>(&a00aac), &info) || !info.dli_fname) return {};
  const int fd = open(info.dli_fname, O_RDONLY);
  if (fd < 0) return {};
  struct stat st{};
  fstat(fd, &st);
  void *map = mmap(nullptr, st.st_size, PROT_READ, MAP_PRIVATE, fd, 0);
  close(fd);
  if (map == MAP_FAILED) return {};
  const auto *base = static_cast<const unsigned char *>(map);
  const auto *eh = reinterpret_cast<const Elf64_Ehdr *>(base);
  const auto *sh = reinterpret_cast<const Elf64_Shdr *>(base + eh->e_shoff);
  std::set<std::string> out;
  for (int i = 0; i < eh->e_shnum; ++i) {
    if (sh[i].sh_type != SHT_DYNSYM) continue;
    const auto *sym = reinterpret_cast<const Elf64_Sym *>(base + sh[i].sh_offset);
    const char *names = reinterpret_cast<const char *>(base + sh[sh[i].sh_link].sh_offset);
    for (size_t k = 0; k < sh[i].sh_size / sizeof(Elf64_Sym); ++k) {
      if (sym[k].st_shndx == SHN_UNDEF || ELF64_ST_TYPE(sym[k].st_info) != STT_FUNC) continue;
      const std::string name = names + sym[k].st_name;
      const bool five = name.size() >= 6 && std::islower(name[0]) && std::isdigit(name[1]) &&
                        std::isdigit(name[2]) && std::islower(name[3]) && std::islower(name[4]);
      if (five && (name.size() == 6 && name[5] == 'c')) out.insert(name.substr(0, 5));
      if (five && (name.size() == 7 && name.substr(5) == "f_")) out.insert(name.substr(0, 5));
    }
  }
  munmap(map, st.st_size);
  return out;
}

// Names of the files in the current directory.
std::set<std::string> directory_listing() {
  std::set<std::string> names;
  for (const auto &e : std::filesystem::directory_iterator(".")) names.insert(e.path().filename().string());
  return names;
}

}  // namespace

registration::registration(const char *routine, sweep_fn fn) { registry()[routine] = fn; }

std::string sweep::text(double v) {
  char b[40];
  std::snprintf(b, sizeof b, "%.17g", v);
  return b;
}
std::string sweep::text(int64_t v) { return std::to_string(v); }

void sweep::call(const std::string &label, const std::function<void()> &body) {
  label_ = label;
  std::snprintf(current_case, sizeof current_case, "%s: %s", routine_.c_str(), label.c_str());
  ++calls_;
  alarm(timeout_seconds);
  body();
  alarm(0);
}

void sweep::expect(bool ok, const std::string &what) {
  if (!ok) faults_.push_back(label_ + ": " + what);
}

void sweep::fail_or_finite(const Zem_Fail &fail, std::initializer_list<double> outputs) {
  expect(fail.code != -12345, "the fail record's code was not set");
  if (fail.code != NE_NOERROR) return;
  for (double v : outputs) expect(std::isfinite(v), "success with a non-finite result " + text(v));
}

void sweep::ifail_or_finite(int64_t ifail, std::initializer_list<double> outputs) {
  if (ifail != 0) return;
  for (double v : outputs) expect(std::isfinite(v), "ifail = 0 with a non-finite result " + text(v));
}

void sweep::failed(const Zem_Fail &fail, int code) {
  expect(fail.code == code, "code " + text(fail.code) + ", expected " + text(code));
}

void sweep::failed(int64_t ifail, int64_t expected) {
  expect(ifail == expected, "ifail " + text(ifail) + ", expected " + text(expected));
}

}  // namespace badinput

namespace {

using namespace badinput;

TEST(BadInput, EveryExportedRoutineHasASweep) {
  const std::set<std::string> exported = exported_routines();
  ASSERT_GT(exported.size(), 10u) << "could not read the dynamic symbols of libzem.so";
  for (const auto &r : exported) EXPECT_TRUE(registry().count(r)) << r << " is exported but has no bad-input sweep";
  for (const auto &[r, fn] : registry()) EXPECT_TRUE(exported.count(r)) << r << " has a sweep but is not exported";
}

class routine_sweep : public testing::Test {
 public:
  routine_sweep(std::string routine, sweep_fn fn) : routine_(std::move(routine)), fn_(fn) {}
  void TestBody() override {
    const auto before = directory_listing();
    sweep s(routine_);
    fn_(s);
    for (const auto &f : s.faults()) ADD_FAILURE() << routine_ << ": " << f;
    EXPECT_GT(s.calls(), 0) << routine_ << ": the sweep makes no call";
    const auto after = directory_listing();
    for (const auto &name : after)
      EXPECT_TRUE(before.count(name)) << routine_ << " created the file " << name << " in the current directory";
    std::printf("[ sweep    ] %s: %lld calls\n", routine_.c_str(), static_cast<long long>(s.calls()));
  }

 private:
  std::string routine_;
  sweep_fn fn_;
};

}  // namespace

int main(int argc, char **argv) {
  testing::InitGoogleTest(&argc, argv);
  if (const char *t = std::getenv("ZEM_BADINPUT_TIMEOUT")) timeout_seconds = static_cast<unsigned>(std::atoi(t));
  signal(SIGALRM, on_alarm);
  for (const auto &[r, fn] : registry()) {
    const std::string name = r;
    const sweep_fn f = fn;
    testing::RegisterTest("BadInput", name.c_str(), nullptr, nullptr, __FILE__, __LINE__,
                          [name, f]() -> testing::Test * { return new routine_sweep(name, f); });
  }
  return RUN_ALL_TESTS();
}
