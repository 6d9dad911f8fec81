// s15ad: the complementary error function erfc(x).
#pragma once

#include <cstdint>

#include "frame/engine.h"

// result := erfc(x).  No failure exit: ifail is set to 0.
ZEM_INTERNAL void s15adfn_(engine_data *en_data, const double *x, double *result, char *errbuf,
                           int64_t *ifail);
