// The exported message templates and name tables, built at compile time
// from the two lists include/zem_codes.def and include/zem_enums.def.
#include <algorithm>
#include <array>
#include <string_view>

#include "engine.h"
#include "messages.h"

namespace zem {
namespace {

constexpr const char *reserved_entry = "NE_RESERVED:\n  This error code is not in use.";

constexpr int code_count = 0
#define ZEM_CODE(name, number, text) +1
#include <zem_codes.def>
#undef ZEM_CODE
    ;

constexpr int enum_count = 0
#define ZEM_ENUM_BEGIN(type)
#define ZEM_ENUM_END(type)
#define ZEM_ENUM(member, number) +1
#include <zem_enums.def>
#undef ZEM_ENUM
    ;

// The layouts the header declares: an array of pointers, arrays of pairs.
struct errlist_t {
  const char *entry[ZEM_ERRLIST_SIZE];
};
template <int N>
struct name_table_t {
  Zem_NameValue entry[N];
};

constexpr errlist_t make_errlist() {
  errlist_t t{};
  for (auto &e : t.entry) e = reserved_entry;
#define ZEM_CODE(name, number, text) \
  if (number < ZEM_ERRLIST_SIZE) t.entry[number] = #name ":\n" text;
#include <zem_codes.def>
#undef ZEM_CODE
  return t;
}

constexpr bool by_name(const Zem_NameValue &x, const Zem_NameValue &y) {
  return std::string_view(x.name) < std::string_view(y.name);
}
constexpr bool by_value(const Zem_NameValue &x, const Zem_NameValue &y) { return x.value < y.value; }

constexpr name_table_t<code_count> make_error_names() {
  name_table_t<code_count> t{};
  int i = 0;
#define ZEM_CODE(name, number, text) t.entry[i++] = {#name, number};
#include <zem_codes.def>
#undef ZEM_CODE
  std::sort(t.entry, t.entry + code_count, by_value);
  return t;
}

constexpr name_table_t<enum_count> make_enum_names() {
  name_table_t<enum_count> t{};
  int i = 0;
#define ZEM_ENUM(member, number) t.entry[i++] = {#member, number};
#include <zem_enums.def>
#undef ZEM_ENUM
  std::sort(t.entry, t.entry + enum_count, by_name);
  return t;
}

constexpr auto error_names = make_error_names();
constexpr auto enum_names = make_enum_names();

// Numbers are unique within each table (a repeated number would make the
// name of a code, or the meaning of a member, ambiguous).
constexpr bool unique_values(const Zem_NameValue *e, int n) {
  std::array<int, 4096> seen{};
  for (int i = 0; i < n; ++i) {
    if (e[i].value < 0 || e[i].value >= 4096 || seen[e[i].value]++) return false;
  }
  return true;
}
static_assert(unique_values(error_names.entry, code_count), "two error codes share a number");
static_assert(unique_values(enum_names.entry, enum_count), "two enumeration members share a number");

}  // namespace

const char *code_name(int code) {
  const auto *end = error_names.entry + code_count;
  const auto *p = std::lower_bound(error_names.entry, end, Zem_NameValue{nullptr, code}, by_value);
  return p != end && p->value == code ? p->name : nullptr;
}

}  // namespace zem

// The exported objects carry the C names of the header; the assembler names
// give the C++ structures those symbols (their layout is the declared one).
ZEM_API const zem::errlist_t zem_errlist_storage __asm__("zem_errlist") = zem::make_errlist();
ZEM_API const decltype(zem::error_names) errornametable_storage __asm__("errornametable") = zem::error_names;
ZEM_API const decltype(zem::enum_names) enumtable_storage __asm__("enumtable") = zem::enum_names;
ZEM_API const int Zem_ErrorNameTableSize = zem::code_count;
ZEM_API const int Zem_EnumTableTypeSize = zem::enum_count;
