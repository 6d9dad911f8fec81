// Message rows the routines of the d02p suite share.  Each routine's own
// table (beside its worker) is made of these rows and its own; detail codes
// are common to the suite, so a failure reads the same from every routine.
//
// Statuses: 1 errors in the arguments or in the call sequence; for the
// integrators 2 the evaluation budget (warning), 3 stiffness (warning; 3002
// its long form, with the evaluations used, rk_step_warning says when),
// 4 step size too small (error), 5 inefficient use (warning), 6 global
// error assessment failed (error); -1 the user asked to stop.
#pragma once

#include "frame/frame.h"

// The communication arrays and the problem size.
#define D02P_ARRAY_ROWS                                                                                \
  {1, 1001, NE_MISSING_CALL,                                                                           \
   {"On entry, a previous call to the setup function has not been made or",                           \
    "the communication arrays have become corrupted."}},                                               \
      {1, 1002, NE_INT_CHANGED,                                                                        \
       {"On entry, n = %s, but the value passed", "to the setup function was n = %s."}},               \
      {1, 1003, NE_PREV_CALL,                                                                          \
       {"On entry, the communication arrays have become corrupted, or a catastrophic",                 \
        "error has already been detected elsewhere.", "You cannot continue integrating the problem."}}

// The three integrators.
#define D02P_INTEGRATOR_ROWS                                                                           \
  {1, 1009, NE_PREV_CALL_INI,                                                                          \
   {"You cannot call this function after it has returned an error.",                                   \
    "You must call the setup function to start another problem."}},                                    \
      {1, 1010, NE_RK_INVALID_CALL,                                                                    \
       {"You cannot call this function when you have specified, in the setup",                         \
        "function, that the step integrator will be used."}},                                          \
      {1, 1011, NE_RK_INVALID_CALL,                                                                    \
       {"You cannot call this function when you have specified, in the setup",                         \
        "function, that the range integrator will be used."}},                                         \
      {2, 2001, NW_RK_TOO_MANY,                                                                        \
       {"Approximately %s function evaluations have been used to",                                     \
        "compute the solution since the integration started or since this message",                    \
        "was last printed. However, you can continue integrating the problem."},                       \
       {"Approximately %s function evaluations have been used",                                        \
        "to compute the solution since the integration started or since this",                         \
        "message was last printed. However, you can continue integrating the problem."}},              \
      {3, 3001, NE_STIFF_PROBLEM,                                                                      \
       {"Your problem has been diagnosed as stiff. If the situation persists,",                        \
        "it will cost roughly %s times as much to reach tend",                                         \
        "(setup) as it has cost to reach the current time. You should probably call",                  \
        "functions intended for stiff problems. However, you can continue",                            \
        "integrating the problem."}},                                                                  \
      {3, 3002, NE_STIFF_PROBLEM,                                                                      \
       {"Approximately %s function evaluations have been used to",                                     \
        "compute the solution since the integration started or since this count",                      \
        "was last given.",                                                                             \
        "Your problem has been diagnosed as stiff. If the situation persists,",                        \
        "it will cost roughly %s times as much to reach tend",                                         \
        "(setup) as it has cost to reach the current time. You should probably call",                  \
        "functions intended for stiff problems. However, you can continue",                            \
        "integrating the problem."},                                                                    \
       {"Approximately %s function evaluations have been used",                                        \
        "to compute the solution since the integration started or since this",                         \
        "count was last given.",                                                                       \
        "Your problem has been diagnosed as stiff. If the situation persists,",                        \
        "it will cost roughly %s times as much to reach tend",                                         \
        "(setup) as it has cost to reach the current time. You should probably call",                  \
        "functions intended for stiff problems. However, you can continue",                            \
        "integrating the problem."}},                                                                   \
      {4, 4001, NE_RK_STEP_TOO_SMALL,                                                                  \
       {"In order to satisfy your error requirements the solver has to",                               \
        "use a step size of %s at the current time,", "%s. This step size is too small for the",      \
        "machine precision, and is smaller than %s."}},                                                \
      {6, 6001, NE_RK_GLOBAL_ERROR_S,                                                                  \
       {"The global error assessment algorithm failed at start of integration.",                       \
        "The integration is being terminated."}},                                                      \
  {                                                                                                    \
    6, 6002, NE_RK_GLOBAL_ERROR_T, {                                                                   \
      "The global error assessment may not be reliable for times beyond", "t = %s.",                   \
          "The integration is being terminated."                                                       \
    }                                                                                                  \
  }

// The step integrators (d02pf, d02pg): tend reached, and many points.
#define D02P_STEP_ROWS                                                                                 \
  {1, 1012, NE_RK_TGOT_EQ_TEND,                                                                        \
   {"tend, as specified in the setup function, has already been reached.",                             \
    "To continue integration beyond tend then",                                                        \
    "zem_ode_ivp_rkts_reset_tend (d02prc) must first be called to", "reset tend to a new end value."}, \
   {"tend, as specified in the setup function, has already been reached.",                             \
    "To continue integration beyond tend then", "d02prf must first be called to",                     \
    "reset tend to a new end value."}},                                                                \
  {                                                                                                    \
    5, 5002, NE_RK_POINTS, {                                                                      \
      "More than 100 output points have been obtained by integrating to",                              \
          "tend (as specified in the setup function).",                                                \
          "Stepping past the points and interpolating would be more efficient.",                       \
          "You can continue integrating this problem."                                                 \
    }                                                                                                  \
  }

// Interpolation and reset: only after the step integrator has taken a step.
#define D02P_AFTER_STEP_ROW                                                                            \
  {1, 1014, NE_RK_INVALID_CALL,                                                                        \
   {"You cannot call this function before the step integrator has taken", "a step."}}
// Interpolation: nwant, and the pair without dense output.
#define D02P_INTERP_ROWS                                                                               \
  {1, 1015, NE_INT_2, {"On entry, nwant = %s", "and n = %s.", "Constraint: 1 <= nwant <= n."}},          \
  {                                                                                                    \
    1, 1019, NE_RK_NO_INTERP, {                                                                        \
      "method = Zem_RK_7_8 in setup, but interpolation is not available",                              \
          "for this method. Either use method = Zem_RK_4_5 in setup or use reset",                     \
          "function to force the integrator to step to particular points."                             \
    }                                                                                                  \
  }
