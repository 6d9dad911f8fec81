// c05aw: zero of f near a point x by continuation (c05ax), with at most
// nfmax calls of f, absolute tolerance eps, and any point with |f| < eta
// accepted at once.
#pragma once

#include <cstdint>

#include "c05/evaluator.h"
#include "frame/frame.h"

// Algorithm piece, after the worker has checked eps and nfmax: the
// continuation with restarts.  Statuses: 2 internal scale factor invalid
// (1003), 3 more than nfmax calls needed (1004), -1 the user asked to stop.
ZEM_INTERNAL void c05awzn_(engine_data *en_data, double *x, double eps, double eta,
                           const zem::c05::evaluator *f, int64_t nfmax, char *errbuf,
                           int64_t *ifail);
