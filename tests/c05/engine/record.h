// Reading the engine's message record in tests:
// 0x01 status 0x01 detail 0x01 value 0x01 ... then blanks up to the NUL.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace c05test {

struct record {
  int64_t status = 0, detail = 0;
  std::vector<std::string> values;
};

inline record parse(const char *errbuf) {
  std::vector<std::string> fields;  // each opened by a 0x01; the last is the blank fill
  for (int i = 0; i < 199 && errbuf[i] != '\0'; ++i) {
    if (errbuf[i] == '\x01') fields.emplace_back();
    else if (!fields.empty()) fields.back().push_back(errbuf[i]);
  }
  record r;
  if (fields.size() < 3) return r;
  r.status = std::atoll(fields[0].c_str());
  r.detail = std::atoll(fields[1].c_str());
  r.values.assign(fields.begin() + 2, fields.end() - 1);
  return r;
}

}  // namespace c05test
