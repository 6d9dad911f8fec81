// The option registry as compile-time data: one row per option in registry
// order, built from e04/options.def, with the upper-case names, the parsed
// keyword lists and a hash table of the names, all computed by the compiler.
//
// Names are looked up in constant time: a name is folded to upper case with
// runs of blanks collapsed (at most 30 characters survive), hashed (FNV-1a,
// 64 bits) and probed linearly in a table of 1024 buckets holding 303
// names; the table is built at compile time and a static_assert bounds the
// longest probe sequence.
#pragma once

#include <array>
#include <cstdint>
#include <limits>
#include <span>
#include <string_view>

#include "e04/options.h"

namespace zem::e04 {

enum bound_kind : int8_t { b_none = 0, b_ge, b_gt, b_le, b_lt };

// The default of "Print File": the advisory unit when the defaults are filled.
inline constexpr int64_t adv_unit_default = std::numeric_limits<int64_t>::min();

inline constexpr int max_name_len = 30;

struct option_info {
  std::string_view name;  // mixed case, as messages and listings show it
  int64_t type;           // 1..7
  int islot;              // integer store word (value; status at islot + 1), or a real's status word
  int rslot;              // real store slot, -1 for integer and character options
  int64_t idef;           // integer default or default keyword code
  double rdef;            // real default
  bound_kind lo_kind;
  double lo;
  bound_kind hi_kind;
  double hi;
  std::string_view keywords;  // "KEYWORD:code|..."
  std::string_view help;
};

inline constexpr option_info registry[option_count] = {
#define ZEM_E04_OPTION(id, name, type, islot, rslot, idef, rdef, lok, lo, hik, hi, keywords, help) \
  {name, type, islot, rslot, idef, rdef, lok, lo, hik, hi, keywords, help},
#include "e04/options.def"
#undef ZEM_E04_OPTION
};

// The type as the default loop and the setters see it: 5, 6, 7 act as 1, 2, 3.
constexpr int64_t base_type(int64_t type) { return type >= 5 ? type - 4 : type; }
constexpr bool is_real(const option_info &o) { return base_type(o.type) == type_real; }
constexpr bool is_character(const option_info &o) { return base_type(o.type) == type_character; }
constexpr bool is_internal(const option_info &o) { return o.type >= 5; }

constexpr const option_info &info(opt id) { return registry[static_cast<int>(id) - 1]; }
// Index into the status word of an option.
constexpr int status_word(const option_info &o) { return is_real(o) ? o.islot : o.islot + 1; }

constexpr char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

// ---- Keywords -------------------------------------------------------------
struct keyword {
  std::string_view word;  // upper case
  int64_t code;
};

constexpr int count_keywords() {
  int n = 0;
  for (const option_info &o : registry)
    if (!o.keywords.empty()) {
      ++n;
      for (char c : o.keywords) n += c == '|';
    }
  return n;
}
inline constexpr int keyword_count = count_keywords();

struct keyword_tables {
  std::array<keyword, keyword_count> words{};
  std::array<int, option_count + 1> first{};  // option i (0-based) has words[first[i] .. first[i+1])
};

constexpr keyword_tables make_keyword_tables() {
  keyword_tables t{};
  int n = 0;
  for (int i = 0; i < option_count; ++i) {
    t.first[i] = n;
    std::string_view s = registry[i].keywords;
    while (!s.empty()) {
      const size_t bar = s.find('|');
      const std::string_view item = s.substr(0, bar);
      const size_t colon = item.rfind(':');
      int64_t code = 0;
      bool neg = false;
      for (size_t k = colon + 1; k < item.size(); ++k) {
        if (item[k] == '-')
          neg = true;
        else
          code = code * 10 + (item[k] - '0');
      }
      t.words[n++] = {item.substr(0, colon), neg ? -code : code};
      s = bar == std::string_view::npos ? std::string_view{} : s.substr(bar + 1);
    }
  }
  t.first[option_count] = n;
  return t;
}
inline constexpr keyword_tables keywords = make_keyword_tables();

// The keywords of option i (0-based).
constexpr std::span<const keyword> keywords_of(int i) {
  return {keywords.words.data() + keywords.first[i], keywords.words.data() + keywords.first[i + 1]};
}
// The canonical spelling of a code: its first keyword ("" if none).
constexpr std::string_view keyword_of_code(int i, int64_t code) {
  for (const keyword &k : keywords_of(i))
    if (k.code == code) return k.word;
  return {};
}

// ---- Names ------------------------------------------------------------------
struct upper_names_t {
  std::array<std::array<char, max_name_len + 1>, option_count> text{};
  std::array<uint8_t, option_count> len{};
};
constexpr upper_names_t make_upper_names() {
  upper_names_t t{};
  for (int i = 0; i < option_count; ++i) {
    const std::string_view n = registry[i].name;
    for (size_t k = 0; k < n.size() && k < max_name_len; ++k) t.text[i][k] = upper(n[k]);
    t.len[i] = static_cast<uint8_t>(n.size());
  }
  return t;
}
inline constexpr upper_names_t upper_names = make_upper_names();

constexpr std::string_view upper_name_of(int i) { return {upper_names.text[i].data(), upper_names.len[i]}; }

constexpr uint64_t name_hash(std::string_view s) {
  uint64_t h = 14695981039346656037ull;
  for (char c : s) {
    h ^= static_cast<unsigned char>(c);
    h *= 1099511628211ull;
  }
  return h;
}

inline constexpr int hash_buckets = 1024;  // a power of two, over three times the option count

struct name_hash_t {
  std::array<int16_t, hash_buckets> slot{};  // option index + 1, 0 for an empty bucket
  int longest_probe = 0;
};
constexpr name_hash_t make_name_hash() {
  name_hash_t t{};
  for (int i = 0; i < option_count; ++i) {
    uint64_t b = name_hash(upper_name_of(i)) & (hash_buckets - 1);
    int probe = 1;
    while (t.slot[b] != 0) {
      b = (b + 1) & (hash_buckets - 1);
      ++probe;
    }
    t.slot[b] = static_cast<int16_t>(i + 1);
    if (probe > t.longest_probe) t.longest_probe = probe;
  }
  return t;
}
inline constexpr name_hash_t name_table = make_name_hash();
static_assert(name_table.longest_probe <= 8, "the name hash has a long probe sequence: change the bucket count");

// Folds a name to the registry's form: upper case, leading and trailing
// blanks dropped, runs of blanks (and tabs) inside collapsed to one blank.
// Returns the length, or -1 when the result would exceed 30 characters.
constexpr int fold_name(std::string_view in, char (&out)[max_name_len + 1]) {
  int n = 0;
  bool blank = false;
  for (char c : in) {
    if (c == ' ' || c == '\t') {
      blank = n > 0;
      continue;
    }
    if (blank) {
      if (n >= max_name_len) return -1;
      out[n++] = ' ';
      blank = false;
    }
    if (n >= max_name_len) return -1;
    out[n++] = upper(c);
  }
  out[n] = '\0';
  return n;
}

// Registry index (0-based) of a name in any case, or -1.
constexpr int find_index(std::string_view name) {
  char folded[max_name_len + 1] = {};
  const int n = fold_name(name, folded);
  if (n <= 0) return -1;
  const std::string_view key(folded, n);
  uint64_t b = name_hash(key) & (hash_buckets - 1);
  for (int probe = 0; probe < name_table.longest_probe; ++probe) {
    const int s = name_table.slot[b];
    if (s == 0) return -1;
    if (upper_name_of(s - 1) == key) return s - 1;
    b = (b + 1) & (hash_buckets - 1);
  }
  return -1;
}

}  // namespace zem::e04
