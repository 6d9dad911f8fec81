// The tail selector shared by the Normal distribution routines.
//
// The Fortran interface passes one character, 'L', 'U', 'S' or 'C' in either
// case (only the first character of a longer string is read); the C entry
// turns its Zem_ enumeration member into the upper-case character first.
#pragma once

#include <cstddef>

#include <zem.h>

namespace zem::g01 {

// Which probability p is meant for a deviate x of a standard Normal X.
enum class tail_kind : char {
  lower = 'L',      // p = P(X <= x)
  upper = 'U',      // p = P(X >= x)
  signif = 'S',     // p = P(|X| >= |x|), the two-tailed significance level
  confid = 'C',     // p = P(|X| <= |x|), the two-tailed confidence level
  invalid = '\0'
};

inline tail_kind read_tail(const char *s, size_t len) {
  if (len < 1) return tail_kind::invalid;
  switch (s[0]) {
    case 'L': case 'l': return tail_kind::lower;
    case 'U': case 'u': return tail_kind::upper;
    case 'S': case 's': return tail_kind::signif;
    case 'C': case 'c': return tail_kind::confid;
    default: return tail_kind::invalid;
  }
}

// The character a failure message shows: the one passed, or a blank for an
// empty string.
inline char shown_tail(const char *s, size_t len) { return len < 1 ? ' ' : s[0]; }

// The C entry's translation of its enumeration member; 0 for a value that
// is not a member.
inline char tail_character(Zem_TailProbability t) {
  switch (t) {
    case Zem_LowerTail: return 'L';
    case Zem_UpperTail: return 'U';
    case Zem_TwoTailSignif: return 'S';
    case Zem_TwoTailConfid: return 'C';
    default: return 0;
  }
}

}  // namespace zem::g01
