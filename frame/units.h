// The library's output units and the record writer.
//
// All printed output goes through write_record, one line at a time, to a
// Fortran unit number, so that the library's lines interleave correctly with
// a Fortran caller's own WRITE statements and reach whatever file the caller
// opened on that unit.  Two library-wide unit numbers say where messages go:
// the error message unit (x04aa) and the advisory message unit (x04ab), both
// initially 6, standard output.  A negative unit writes nothing.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace zem {

int64_t err_unit();
int64_t adv_unit();
void set_err_unit(int64_t unit);
void set_adv_unit(int64_t unit);

// Writes one record: trailing blanks dropped (at least one character kept;
// an empty record is written as one blank), then the unit is flushed.
// Returns 0, or 1 when the write failed.
int write_record(int64_t unit, std::string_view rec);

// Reads one record into rec (len characters, blank-filled).  Returns 0, 1 at
// end of file, 2 on any other read error.
int read_record(int64_t unit, char *rec, size_t len);

// Appends text as one line to the file "ZemDebug_file" in the current
// directory; does nothing if the file cannot be opened.
void debug_append(std::string_view text);

}  // namespace zem
