// The failures of the readers, as rows of e04sa's and e04rd's message
// tables (details 1101 upward, shared by both routines).
#pragma once

#define E04_READER_ROWS                                                                              \
  /* MPS */                                                                                          \
  {8, 1101, NE_INVALID_FORMAT, {"MPS file, line %s:", "unknown section %s."}},                       \
  {8, 1102, NE_INVALID_FORMAT, {"MPS file, line %s, section %s:", "too few fields."}},              \
  {8, 1103, NE_INVALID_FORMAT, {"MPS file, line %s, section ROWS:", "unknown row type %s."}},       \
  {8, 1104, NE_INVALID_FORMAT, {"MPS file, line %s, section %s:", "name %s is defined twice."}},    \
  {8, 1105, NE_INVALID_FORMAT, {"MPS file, line %s, section %s:", "unknown row %s."}},              \
  {8, 1106, NE_INVALID_FORMAT, {"MPS file, line %s, section %s:", "unknown column %s."}},           \
  {8, 1107, NE_INVALID_FORMAT, {"MPS file, line %s, section %s:", "%s is not a number."}},          \
  {8, 1108, NE_INVALID_FORMAT, {"MPS file, line %s, section BOUNDS:", "unknown bound type %s."}},   \
  {8, 1109, NE_INVALID_FORMAT, {"MPS file, line %s, section %s:", "entry %s is given twice."}},     \
  {8, 1110, NE_INVALID_FORMAT, {"MPS file, line %s, section CSECTION:", "unknown cone type %s."}},   \
  {8, 1111, NE_INVALID_FORMAT, {"MPS file, line %s, section CSECTION:", "cone %s has too few members."}}, \
  {8, 1112, NE_INVALID_FORMAT, {"MPS file, line %s, section CSECTION:", "column %s repeats in its cone."}}, \
  {8, 1113, NE_INVALID_FORMAT, {"MPS file, line %s, section %s:", "a name holds a character that is not printable."}}, \
  {8, 1114, NE_INVALID_FORMAT, {"MPS file: the quadratic objective and the cones of section CSECTION", \
                                "cannot be used together."}},                                        \
  {8, 1115, NE_FILE_INCOMPLETE, {"MPS file: section %s is missing."}},                               \
  {8, 1116, NE_FILE_INCOMPLETE, {"MPS file: the file ends before ENDATA."}},                         \
  {8, 1117, NE_INVALID_FORMAT, {"MPS file, line %s, section %s:", "marker %s is not understood."}}, \
  {8, 1118, NE_BOUND, {"MPS file: column %s", "has a lower bound above its upper bound."}},          \
  {8, 1119, NE_INVALID_FORMAT, {"MPS file, line %s, section %s:", "data before the first section."}}, \
  /* SDPA */                                                                                         \
  {8, 1131, NE_FILE_INCOMPLETE, {"SDPA data: the number of variables is missing."}},                \
  {8, 1132, NE_FILE_INCOMPLETE, {"SDPA data: the number of blocks is missing."}},                   \
  {8, 1133, NE_FILE_INCOMPLETE, {"SDPA data: the block sizes are missing or incomplete."}},         \
  {8, 1134, NE_FILE_INCOMPLETE, {"SDPA data: the objective vector is missing or incomplete."}},     \
  {8, 1135, NE_FILE_INCOMPLETE, {"SDPA data: the matrix entries are missing."}},                    \
  {8, 1136, NE_FILE_INCOMPLETE, {"SDPA data: the matrix entry on line %s is incomplete."}},         \
  {8, 1137, NE_INVALID_FORMAT, {"SDPA data: line %s,", "position %s: the number could not be read."}}, \
  {8, 1138, NE_INVALID_FORMAT, {"SDPA data: line %s:", "%s is out of range."}},                      \
  {8, 1139, NE_INVALID_FORMAT, {"SDPA data: line %s:", "the entry is not in the upper triangle."}},  \
  {8, 1140, NE_INVALID_FORMAT, {"SDPA data: line %s:", "a diagonal block has an entry off its diagonal."}}, \
  {8, 1141, NE_INVALID_FORMAT, {"SDPA data: line %s:", "the entry was given before, on line %s."}}, \
  {9, 1142, NE_INT_MAX, {"The problem needs larger limits:", "nvar = %s (maxnvar = %s),",            \
                         "nblk = %s (maxnblk = %s),", "nnz = %s (maxnnz = %s)."}},                  \
  {8, 1143, NE_INVALID_FORMAT, {"SDPA data: line %s:", "a block size must not be zero."}}
