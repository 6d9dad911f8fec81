// The design matrix pieces (design.cpp): the plan of the columns, the
// checks on the data, and the fill.
#pragma once

#include "g22/g22.h"

namespace zem::g22 {

// Columns, labels and codings of the design matrix that formula f implies
// for dataset d (no data read).
void plan_design(const formula_model &f, const data_description &d, design_description &x, error_record &e);
// Whether the design matrix is the data matrix itself (no mean, every
// variable continuous, as a main effect, in data order).
bool design_is_data(const design_description &x, const data_description &d);
// Every categorical variable the design uses takes values 1..levels.
bool check_levels(const design_description &x, const data_description &d, const double *dat, int64_t lddat,
                  error_record &e);
// Writes the design matrix into out (leading dimension ldx) in the
// description's storage order; the levels must have been checked.
void fill_design(const design_description &x, const double *dat, int64_t lddat, double *out, int64_t ldx);

}  // namespace zem::g22
