// Reading the engine's message record in tests: status, detail and values.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace c05test {

struct record {
  int64_t status = 0;
  int64_t detail = 0;
  std::vector<std::string> values;
};

// Splits 0x01 status 0x01 detail 0x01 v1 0x01 ... ; fields end at the last
// 0x01 before the blank fill.
inline record parse(const char *errbuf) {
  std::vector<std::string> fields;
  std::string cur;
  bool open = false;
  for (int i = 0; i < 199 && errbuf[i] != '\0'; ++i) {
    if (errbuf[i] == '\x01') {
      if (open) fields.push_back(cur);
      cur.clear();
      open = true;
    } else if (open) {
      cur.push_back(errbuf[i]);
    }
  }
  record r;
  if (fields.size() >= 2) {
    r.status = std::atoll(fields[0].c_str());
    r.detail = std::atoll(fields[1].c_str());
    r.values.assign(fields.begin() + 2, fields.end());
  }
  return r;
}

// A fresh record: blanks and a final NUL, as the entry layer provides it.
struct errbuf {
  char text[200];
  errbuf() {
    for (char &ch : text) ch = ' ';
    text[199] = '\0';
  }
};

}  // namespace c05test
