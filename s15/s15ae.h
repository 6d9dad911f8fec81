// s15ae: the error function erf(x).
#pragma once

#include <cstdint>

#include "frame/engine.h"

// result := erf(x).  No failure exit: ifail is set to 0.
ZEM_INTERNAL void s15aefn_(engine_data *en_data, const double *x, double *result, char *errbuf,
                           int64_t *ifail);
