// c05au: zero of f near a point x: a search for a sign change from x with
// step h inside [boundl, boundu] (c05av), then the Brent core (c05az) on the
// interval found, with absolute tolerance eps; any point with |f| < eta is
// accepted at once.
#pragma once

#include <cstdint>

#include "c05/evaluator.h"
#include "frame/frame.h"

// Algorithm piece, after the worker has checked eps: the search (whose own
// checks give details 1002-1005) and the solve.  Statuses: 1 bad arguments,
// 2 eps too small (1006), 3 probable pole (1007), 4 no interval found
// (1008), -1 the user asked to stop.
ZEM_INTERNAL void c05auzn_(engine_data *en_data, double *x, double h, double eps, double eta,
                           double boundl, double boundu, const zem::c05::evaluator *f,
                           char *errbuf, int64_t *ifail);
