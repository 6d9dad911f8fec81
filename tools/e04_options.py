#!/usr/bin/env python3
"""The option registry of the optimization suite: the one table.

Every option of every solver of chapter e04 is one row of TABLE below, in
registry order (the registry number of a row is its position, 1..303).  This
script turns the table into

  e04/options.def       the X-macro list the library is compiled from
  docs/e04_options.md   the reference page of every option

Both outputs are checked in; never edit them by hand.  After changing the
table run

  python3 tools/e04_options.py            # rewrite both files
  python3 tools/e04_options.py --check    # fail if either is out of date (a test does this)

Row format (fields separated by '|'):

  NAME | TYPE | DEFAULT | BOUNDS | KEYWORDS | WHAT IT STEERS

  NAME      upper case, words separated by single blanks, at most 30
            characters; the mixed-case form used in messages and listings is
            derived (see display_name) unless given as NAME = Display Form.
  TYPE      I integer, R real, C character (a keyword); I*, R*, C* the same
            for options kept for the library's own use (type codes 5, 6, 7:
            filled like 1, 2, 3, reached by name, printed only in the full
            listing).
  DEFAULT   a number; eps^(p/q) for a power of the machine precision 2^-53;
            "advisory unit" for the advisory message unit current when the
            defaults are filled; the default keyword for a character option.
  BOUNDS    numeric options: up to two of >=v >v <=v <v, or a..b (both
            inclusive); empty for no bound.
  KEYWORDS  character options: KEYWORD:code, ... ; spellings of one choice
            share a code; the first spelling of a code is the canonical one
            (printed, returned by e04zn).
"""
import math
import os
import re
import sys

YN = "YES:1,NO:0,Y:1,N:0"
MA97 = "NONE:0,MC64:1,MC77:2,MC30:3"
ORDER = "AUTO:0,BEST:1,METIS:2,AMD:3"
FORMULATION = "AUTO:0,NORMAL EQUATIONS:1,NE:1,AUGMENTED SYSTEM:2,AS:2"
AUTO_YN = "AUTO:2,YES:1,NO:0,Y:1,N:0"
SCALING = "NONE:0,ARITHMETIC:1,GEOMETRIC:2"
PRESOLVE = "FULL:2,BASIC:1,NONE:0,NO:0"
DENSECOL = "AUTO:0,NONE:1,SEPARATE:2"
INITIAL = "AUTOMATIC:0,AUTO:0,USER:1"
DENSITY = "AUTO:0,DENSE:1,SPARSE:2"

TABLE = f"""
# ---- general (75) ----
OUTER ITERATION LIMIT | I | 100 | >=0 | | Maximum number of outer iterations of the interior-point and penalty-barrier solvers.
INNER ITERATION LIMIT | I | 100 | >=0 | | Maximum number of inner (Newton) iterations per outer iteration.
RCONST | R | 1.0e-6 | >0 | | Regularization constant added to the diagonal of ill-conditioned Newton systems.
INFINITE BOUND SIZE | R | 1.0e20 | >=1000 | | Bounds at or beyond this magnitude mean "no bound" (simple bounds, constraint bounds).
NEWTON MODE | C | INEXACT | | INEXACT:1,FULL:2,MODIFIED:3 | How the Newton system of the inner iteration is solved.
INITIAL X | C | AUTOMATIC | | {INITIAL} | Starting point: chosen by the solver, or the user's x on entry.
INITIAL U | C | AUTOMATIC | | {INITIAL} | Starting Lagrangian multipliers of the standard constraints: automatic or the user's.
INITIAL P | C | AUTOMATIC | | {INITIAL} | Starting penalty parameters: automatic or the user's.
HESSIAN DENSITY | C | AUTO | | {DENSITY} | Storage of the Hessian of the Lagrangian: chosen automatically, dense or sparse.
INIT SCALE UBOX | R | 1.0 | >0 | | Scale of the starting multipliers of the simple bounds.
INIT SCALE ULIN | R | 1.0 | >0 | | Scale of the starting multipliers of the linear constraints.
INIT SCALE UNLN | R | 1.0 | >0 | | Scale of the starting multipliers of the nonlinear constraints.
INIT SCALE UMAT | R | 1.0 | >0 | | Scale of the starting multipliers of the matrix constraints.
INIT VALUE P | R | 1.0 | >0 | | Starting penalty parameter of the standard constraints.
INIT VALUE PMAT | R | 1.0 | >0 | | Starting penalty parameter of the matrix constraints.
PRESOLVE BLOCK DETECT | C | YES | | {YN} | Detect a block-diagonal structure of matrix constraints before solving.
PRINT FILE | I | advisory unit | >=-1 | | Output unit of the solver's log; -1 switches it off.
PRINT LEVEL | I | 2 | 0..5 | | Amount of output on the Print File: 0 none, 1 summary, 2 iteration log, 3..5 more detail.
PRINT OPTIONS | C | YES | | YES:1,NO:0,Y:1,N:0 | Print the option settings at the start of a solve.
PRINT SOLUTION | C | NO | | NO:0,ALL:1,X:2,X AND U:3,U:4,YES:1,N:0 | What part of the solution is printed at the end of a solve.
MONITORING FILE | I | -1 | >=-1 | | Output unit of a second log (the monitoring log); -1 switches it off.
MONITORING LEVEL | I | 4 | 0..5 | | Amount of output on the Monitoring File.
MONITOR FREQUENCY | I | 0 | >=0 | | Call the user's monitor every this many iterations; 0 never.
STATS TIME | C | NO | | YES:1,CPU:1,NO:0,WALL:2,WALL CLOCK:2,Y:1,N:0,PROCESSOR:1 | Time the solve and its parts: no, processor time, or wall-clock time.
P MIN | R | eps^(1/2) | >0 | | Smallest penalty parameter of the standard constraints.
PMAT MIN | R | eps^(1/2) | >0 | | Smallest penalty parameter of the matrix constraints.
PMAT FRACTION TO BND | R | 0.7 | >0 <1 | | Fraction of the distance to the boundary that a matrix-constraint penalty update may take.
P SLOWER | R | 0.3 | >0 <=1 | | Factor slowing the reduction of the penalty parameters of the standard constraints.
PMAT SLOWER | R | 0.3 | >0 <=1 | | Factor slowing the reduction of the penalty parameters of the matrix constraints.
U MIN | R | 1.0e-12 | >0 | | Smallest Lagrangian multiplier of the standard constraints.
UMAT MIN | R | 1.0e-12 | >0 | | Smallest eigenvalue of a matrix-constraint multiplier.
U UPDATE RESTRICTION | R | 0.5 | >0 <1 | | Largest relative change of a standard multiplier in one update.
UMAT UPDATE RESTRICTION | R | 0.3 | >0 <1 | | Largest relative change of a matrix multiplier in one update.
LINESEARCH ITERATION LIMIT | I | 20 | >=1 | | Maximum number of steps of one line search.
LINESEARCH ETA | R | 0.9 | >0 <1 | | Curvature parameter of the line search.
PREFERENCE | C | SPEED | | SPEED:1,MEMORY:2 | Trade speed for memory where a solver can (dense or sparse factorizations).
MATRIX CONSTRAINTS DENSITY | C | AUTO | | {DENSITY} | Storage of the matrix constraints: chosen automatically, dense or sparse.
TRANSFORM CONSTRAINTS | C | AUTO | | AUTO:0,NO:1,EQUALITIES:2 | Reformulate constraints before solving (equalities into pairs of inequalities).
LADDX START INDEX | I | 1 | >=0 | | First index used in the solver's internal numbering of added variables.
DIMACS MEASURES | C | CHECK | | CHECK:1,COMPUTE:2,NO:0 | Compute the DIMACS error measures of the solution, and use them in the stopping test.
STOP CRITERIA | C | SOFT | | SOFT:1,STRICT:2 | Soft: stop at the tolerance or a near-optimal stall; strict: only at the tolerance.
STOP TOLERANCE 1 | R | 1.0e-6 | >0 | | Relative tolerance of the optimality conditions (the main stopping test).
STOP TOLERANCE 2 | R | 1.0e-7 | >0 | | Tolerance of the complementarity gap.
STOP TOLERANCE FEASIBILITY | R | 1.0e-7 | >0 | | Tolerance of the constraint violation.
LINESEARCH MODE | C | AUTO | | AUTO:0,FULLSTEP:1,ARMIJO:2,GOLDSTEIN:3 | Step acceptance of the line search.
LINESEARCH FRACTION TO BND | R | 0.99 | >0 <1 | | Fraction of the distance to the boundary that a step may take.
INNER STOP TOLERANCE | R | 1.0e-2 | >0 | | Stopping tolerance of the inner iteration.
INNER STOP CRITERIA | C | HEURISTIC | | HEURISTIC:1,STRICT:2 | How the inner iteration decides that it has converged.
INNER STOP TOLERANCE UPDATE | R | 0.1 | >0 <1 | | Factor by which the inner tolerance tightens per outer iteration.
INNER STOP TOLERANCE UPDATE 2 | R | 0.5 | >0 <1 | | Factor tightening the inner tolerance once the outer iteration is close.
TASK | C | MINIMIZE | | MAXIMIZE:2,MINIMIZE:1,FEASIBLE POINT:3,MIN:1,MAX:2,FP:3,MAXIMISE:2,MINIMISE:1,FEASIBLE:3 | Minimize or maximize the objective, or only find a feasible point.
P UPDATE SPEED | I | 12 | 1..100 | | How aggressively the penalty parameters are reduced (higher is faster).
SUBOPTIMAL FACTOR | R | 100.0 | >=1 | | A stalled solve stops with a warning when the optimality measure is within this factor of its tolerance.
PRINT INTERNAL | C* | NO | | {YN} | Print the solver's internal diagnostics.
UMAT UPDATE MAX RESTRICTION | R | 0.1 | >0 <=1 | | Largest relative change of the smallest eigenvalue of a matrix multiplier in one update.
PRINT VALUES | C | NO | | {YN} | Print the values of the objective and constraints at every iteration.
LINESEARCH MU1 | R | 1.0e-4 | >0 <1 | | Sufficient-decrease parameter of the line search.
LINESEARCH MU2 | R | 0.9 | >0 <1 | | Curvature parameter of the Wolfe line search.
HESSIAN STABILIZATION | C | AUTO | | AUTO:0,YES:1,NO:2,Y:1,N:2 | Modify an indefinite Hessian so that the Newton step is a descent direction.
HESSIAN MODE | C | AUTO | | AUTO:0,EXACT:1,APPROX:2,APPROXIMATE:2 | Exact Hessian of the Lagrangian (user-supplied) or a limited-memory approximation; AUTO: exact when its structure is defined.
VERIFY DERIVATIVES | C | NO | | YES:1,NO:0,Y:1,N:0,AUTO:2,CHEAP:3 | Check the user's derivatives by finite differences before solving.
TIME LIMIT | R | 1.0e6 | >0 | | Stop after this many seconds.
CHECK DERIVATIVES NAN | C | NO | | {YN} | Check every derivative value returned by the user for NaN and infinities.
NLP SCALING METHOD | C | GRADIENT | | GRADIENT:1,GRADIENT BASED:1,NONE:0 | Scaling of the objective and constraints before solving.
OBJECTIVE SCALING FACTOR | R | 1.0 | >0 | | Factor applied to the objective inside the solver.
MA97 SCALING | C | NONE | | {MA97} | Scaling of the sparse symmetric indefinite factorization.
MA97 PIVOT THRESHOLD | R | 0.01 | >0 <=0.5 | | Relative pivot threshold of the sparse symmetric indefinite factorization.
BOUND RELAX FACTOR | R | 1.0e-8 | >=0 | | Relative relaxation of the bounds inside an interior-point solver.
QUASI NEWTON MAX HISTORY | I | 6 | >=1 | | Number of pairs kept by the limited-memory Hessian approximation.
LP MAX PRESOLVE ITERATIONS | I | 10 | >=0 | | Maximum number of presolve passes of the linear programming solver.
LP PRESOLVE | C | FULL | | {PRESOLVE} | Presolve of a linear program: full, basic reductions only, or none.
MATRIX ORDERING | C | AUTO | | {ORDER} | Fill-reducing ordering of sparse factorizations.
TRF FEASIBILITY TOLERANCE | R | 1.0e-6 | >0 | | Feasibility tolerance of the transformed problem.
REG TERM TYPE | C | OFF | | OFF:0,L1:1,L2:2 | Regularization term added to a data-fitting objective.
REG COEFFICIENT | R | 1.0e-2 | >=0 | | Coefficient of the regularization term (used when Reg Term Type is not OFF).
# ---- LPIPM (37) ----
LPIPM CENTRALITY CORRECTORS | I | 6 | >=0 | | Maximum number of centrality correctors per iteration of the LP interior-point solver.
LPIPM SCALING | C | ARITHMETIC | | {SCALING} | Scaling of the constraint matrix.
LPIPM SCALING ITERATIONS | I | 3 | >=1 | | Number of passes of the scaling.
LPIPM EQUILIBRATION SCALING | C | NO | | {YN} | Equilibrate the rows and columns after scaling.
LPIPM SYSTEM FORMULATION | C | AUTO | | {FORMULATION} | Linear system of each iteration: normal equations or augmented system.
LPIPM ALGORITHM | C | PRIMAL-DUAL | | PRIMAL-DUAL:1,PD:1,SELF-DUAL:2,SD:2 | Primal-dual method or homogeneous self-dual method.
LPIPM PRODFORM CHOLESKY | C | AUTO | | {AUTO_YN} | Handle dense columns with a product-form Cholesky factorization.
LPIPM MAX DENSE PRODFORM CHOL | I | 20 | >=0 | | Largest number of dense columns the product form takes.
LPIPM MA97 SCALING AS | C | NONE | | {MA97} | Scaling of the factorization of the augmented system.
LPIPM MA97 SCALING NE | C | NONE | | {MA97} | Scaling of the factorization of the normal equations.
LPIPM FACTORIZATION ORDERING | C | AUTO | | {ORDER} | Fill-reducing ordering of the factorization.
LPIPM STOP TOLERANCE | R | eps^(1/2) | >0 <1 | | Relative tolerance of optimality, feasibility and gap.
LPIPM MAX STEP SIZE | R | 0.9999 | >0 <=1 | | Fraction of the step to the boundary that is taken.
LPIPM FREE VAR PERT | R | 1.0e-6 | >0 | | Perturbation of the diagonal for free variables.
LPIPM MONITOR FREQUENCY | I | 0 | >=0 | | Call the user's monitor every this many iterations; 0 never.
LPIPM NE PERT MIN | R | 1.0e-10 | >0 | | Smallest regularization of the normal equations.
LPIPM NE PERT MAX | R | 1.0e-3 | >0 | | Largest regularization of the normal equations.
LPIPM TOL SWITCH NEAS | R | 1.0e-7 | >0 | | Tolerance at which an AUTO formulation switches from normal equations to augmented system.
LPIPM STOP TOLERANCE 2 | R | 1.0e-10 | >0 <1 | | Secondary tolerance, for the infeasibility tests.
LPIPM SWITCH NNZ ADA | R | 10.0 | >0 | | AUTO formulation: augmented system when nonzeros of A D A^T exceed this multiple of those of A.
LPIPM AS PERT ZERO BLOCK | R | 1.0e-8 | >0 | | Regularization of the zero block of the augmented system.
LPIPM MAX BACKSOLVE FACTOR | R | 3.0 | >=0 | | Largest cost of the solves of one iteration relative to its factorization.
LPIPM MAX ITERATIVE REFINEMENT | I | 5 | >=0 | | Maximum number of iterative refinement steps per solve.
LPIPM TOL IT REFINEMENT | R | 1.0e-10 | >0 | | Residual tolerance of iterative refinement.
LPIPM ITERATION LIMIT | I | 100 | >=1 | | Maximum number of iterations.
LPIPM SD MAX SLOW ITERATIONS | I | 5 | >=1 | | Self-dual method: iterations without progress before a stop.
LPIPM PD MAX SLOW ITERATIONS | I | 5 | >=1 | | Primal-dual method: iterations without progress before a stop.
LPIPM SD SUBOPT FACTOR | R | 100.0 | >=1 | | Self-dual method: a stall within this factor of the tolerance stops with a suboptimal warning.
LPIPM PD SUBOPT FACTOR | R | 100.0 | >=1 | | Primal-dual method: a stall within this factor of the tolerance stops with a suboptimal warning.
LPIPM DENSE COLUMNS ENCODING | C | AUTO | | {DENSECOL} | How dense columns of the constraint matrix are treated.
LPIPM NO SWITCH TOLERANCE | R | 1.0e-4 | >0 | | Above this relative accuracy the formulation is never switched.
LPIPM FREE VARS CHOOSE AS | C | YES | | {YN} | AUTO formulation: choose the augmented system when free variables are present.
LPIPM PD FIRST INFEAS ITER | I | 10 | >=0 | | Primal-dual method: first iteration of the infeasibility test.
LPIPM PD START TRACK ITER | I | 20 | >=0 | | Primal-dual method: first iteration at which progress is tracked.
LPIPM SD START TRACK ITER | I | 20 | >=0 | | Self-dual method: first iteration at which progress is tracked.
LPIPM PD SUBOPT FACTOR RELAX | R | 10.0 | >=1 | | Primal-dual method: relaxation of the suboptimality factor near the iteration limit.
LPIPM USE IMAP | C | NO | | {YN} | Keep an index map of the presolved problem for the postsolve.
# ---- DFO (25) ----
DFO TRUST REGION TOLERANCE | R | 1.0e-6 | >0 | | Final trust-region radius of the derivative-free solvers (the stopping test).
DFO MAX OBJECTIVE CALLS | I | 500 | >=1 | | Maximum number of objective evaluations.
DFO STARTING TRUST REGION | R | 0.1 | >0 | | Initial trust-region radius.
DFO NUMBER INTERP POINTS | I | 0 | >=0 | | Number of interpolation points; 0 chooses n+1 (least squares) or 2n+1.
DFO MONITOR FREQUENCY | I | 0 | >=0 | | Call the user's monitor every this many iterations; 0 never.
DFO PRINT FREQUENCY | I | 1 | >=0 | | Print a log line every this many iterations; 0 never.
DFO SIZE HISTORY | I | 5 | >=1 | | Length of the history used by the slow-progress test.
DFO MAXIMUM SLOW STEPS | I | 20 | >=0 | | Slow steps allowed before a soft restart or a stop; 0 switches the test off.
DFO SLOPE THRESHOLD | R | 1.0e-4 | >0 | | Decrease per step below which a step is slow.
DFO TRUST REGION SLOW TOL | R | 1.0e-4 | >0 | | Trust-region radius below which slow steps are counted.
DFO TRUST REGION UPDATE | R | 0.5 | >0 <1 | | Factor by which an unsuccessful step shrinks the trust region.
DFO GROWING STRATEGY | C | NONE | | NONE:0,LOW RANK:1,FULL:2 | How a model that starts with fewer points grows to the full interpolation set.
DFO NUMBER INITIAL POINTS | I | 0 | >=0 | | Interpolation points in the first model; 0 means the full set.
DFO NOISE TYPE | C | ADDITIVE | | ADDITIVE:1,MULTIPLICATIVE:2 | Kind of noise in the objective (for noisy problems).
DFO INITIAL INTERP POINTS | C | COORDINATE | | COORDINATE:1,RANDOM:2 | Placement of the first interpolation points.
DFO NUMBER SOFT RESTARTS PTS | I | 3 | >=1 | | Points replaced by one soft restart.
DFO MAX SOFT RESTARTS | I | 5 | >=0 | | Maximum number of soft restarts.
DFO MAX UNSUCC SOFT RESTARTS | I | 3 | >=0 | | Soft restarts without progress before a stop.
DFO SAFETY THRESHOLD | R | 0.5 | >0 | | Step length, relative to the trust region, below which a safety step is taken.
DFO NOISE LEVEL | R | 0.0 | >=0 | | Expected size of the noise in the objective.
DFO RANDOM SEED | I | 1 | >=0 | | Seed of the random placements (repeatable runs).
DFO PRINT EVALUATIONS | C | NO | | {YN} | Print every objective evaluation.
DFO DEBUG LEVEL | I* | 0 | 0..5 | | Diagnostic output of the derivative-free solvers.
DFO NOISY PROBLEM | C | NO | | {YN} | Treat the objective as noisy (soft restarts, noise-aware stopping).
DFO VERSION | I* | 2 | 1..2 | | Variant of the derivative-free model update.
# ---- DFLS (3) ----
DFLS SMALL RESIDUALS TOL | R | 1.0e-8 | >0 | | Residual norm below which the least-squares problem counts as solved.
DFLS RESCUE TOL | R | 1.0e-2 | >0 | | Geometry measure below which the interpolation set is rescued.
DFLS MODEL TYPE | C | LINEAR | | LINEAR:1,QUADRATIC:2 | Linear (Gauss-Newton) or quadratic models of the residuals.
# ---- FOAS (13) ----
FOAS ITERATION LIMIT | I | 10000000 | >0 | | Maximum number of iterations of e04kf.
FOAS MEMORY | I | 11 | 0..100 | | Number of pairs (s, y) of the limited-memory preconditioner of the conjugate gradients; 0 gives plain conjugate gradients.
FOAS MONITOR FREQUENCY | I | 0 | >=0 | | Call the user's monitor every this many iterations; 0 never.
FOAS PRINT FREQUENCY | I | 1 | >=1 | | Print a log line every this many iterations.
FOAS PROGRESS TOLERANCE | R | eps^(3/4) | >0 <1 | | Relative decrease of the best objective below which an iteration that leaves the active set alone is slow; 10 such in a row end the solve.
FOAS REL STOP TOLERANCE | R | eps^(3/4) | >=0 <1 | | Stop when the projected gradient falls below this fraction of its initial size.
FOAS RESTART FACTOR | R | 6.0 | >=0 | | The conjugate gradients restart every this many times the number of free variables of iterations; 0 restarts every iteration.
FOAS SLOW TOLERANCE | R | eps^(1/8) | >0 | | Switching fraction between the projected-gradient and the conjugate-gradient phases (the free part of the projected gradient against the whole).
FOAS STOP TOLERANCE | R | 1.0e-6 | >=0 <1 | | Stop when the norm of the projected gradient falls below this.
FOAS SUBSOLVER | C | BOTH | | BOTH:0,NPG:1,CG:2 | Iteration on the free variables: nonmonotone projected gradient, conjugate gradients, or both.
FOAS TOLERANCE NORM | C | INFINITY | | INFINITY:1,INF:1,TWO:2,2:2 | Norm of the projected gradient in the stopping tests.
FOAS ESTIMATE DERIVATIVES | C | NO | | NO:0,N:0,YES:1,Y:1 | Estimate the gradient by finite differences instead of calling the user's gradient.
FOAS FINITE DIFF INTERVAL | R | eps^(1/2) | 1.0e-12..0.1 | | Relative interval of the finite differences.
# ---- DFNO (4) ----
DFNO OBJECTIVE LIMIT | R | -1.0e20 | | | Stop when the objective falls below this value; at or below -Infinite Bound Size it is not used.
DFNO SCALE SYSTEM | C | YES | | {YN} | Scale the variables to the unit box before solving.
DFNO MINIMUM HESSIAN CHANGE | R | 1.0e-8 | >=0 | | Smallest change of the model Hessian accepted by an update.
DFNO DETECT UNBOUNDED | C | YES | | {YN} | Stop with a warning when the objective appears unbounded below.
# ---- SOCP (37) ----
SOCP SYSTEM FORMULATION | C | AUTO | | {FORMULATION} | Linear system of each iteration of the cone solver: normal equations or augmented system.
SOCP PRODFORM CHOLESKY | C | AUTO | | {AUTO_YN} | Handle dense columns with a product-form Cholesky factorization.
SOCP DENSE COLUMNS ENCODING | C | AUTO | | {DENSECOL} | How dense columns of the constraint matrix are treated.
SOCP MAX DENSE PRODFORM CHOL | I | 20 | >=0 | | Largest number of dense columns the product form takes.
SOCP DENSE FOLD | R | 0.5 | >0 <=1 | | Fraction of a cone's members above which its column block counts as dense.
SOCP DENSE RATIO | R | 0.1 | >0 <=1 | | Density above which a column counts as dense.
SOCP EQUILIBRATION SCALING | C | NO | | {YN} | Equilibrate the rows and columns after scaling.
SOCP SCALING | C | ARITHMETIC | | {SCALING} | Scaling of the constraint matrix.
SOCP SCALING ITERATIONS | I | 3 | >=1 | | Number of passes of the scaling.
SOCP ITERATION LIMIT | I | 100 | >=1 | | Maximum number of iterations.
SOCP MAX ITERATIVE REFINEMENT | I | 5 | >=0 | | Maximum number of iterative refinement steps per solve.
SOCP FACTORIZATION ORDERING | C | AUTO | | {ORDER} | Fill-reducing ordering of the factorization.
SOCP SWITCH NNZ ADA | R | 10.0 | >0 | | AUTO formulation: augmented system when nonzeros of A D A^T exceed this multiple of those of A.
SOCP MA97 SCALING AS | C | NONE | | {MA97} | Scaling of the factorization of the augmented system.
SOCP MA97 SCALING NE | C | NONE | | {MA97} | Scaling of the factorization of the normal equations.
SOCP USE STATIC REG | C | YES | | {YN} | Regularize the linear systems by a fixed perturbation.
SOCP USE DYNAMIC REG | C | YES | | {YN} | Regularize small pivots as they occur.
SOCP USE AUTO EXPAND | C | NO | | {YN} | Expand large cones into smaller ones automatically.
SOCP NE PERT MIN | R | 1.0e-10 | >0 | | Smallest regularization of the normal equations.
SOCP NE PERT MAX | R | 1.0e-3 | >0 | | Largest regularization of the normal equations.
SOCP TOL IT REFINEMENT | R | 1.0e-10 | >0 | | Residual tolerance of iterative refinement.
SOCP MAXIT STEPLENGTH | I | 50 | >=1 | | Maximum number of iterations of the step-length computation.
SOCP NO SWITCH TOLERANCE | R | 1.0e-4 | >0 | | Above this relative accuracy the formulation is never switched.
SOCP STOP TOLERANCE | R | eps^(1/2) | >0 <1 | | Relative tolerance of optimality, feasibility and gap.
SOCP STOP TOLERANCE 2 | R | 1.0e-10 | >0 <1 | | Secondary tolerance, for the infeasibility tests.
SOCP TOL SWITCH NEAS | R | 1.0e-7 | >0 | | Tolerance at which an AUTO formulation switches from normal equations to augmented system.
SOCP MONITOR FREQUENCY | I | 0 | >=0 | | Call the user's monitor every this many iterations; 0 never.
SOCP SUBOPT FACTOR | R | 100.0 | >=1 | | A stall within this factor of the tolerance stops with a suboptimal warning.
SOCP START TRACK ITER | I | 20 | >=0 | | First iteration at which progress is tracked.
SOCP MAX SLOW ITERATIONS | I | 5 | >=1 | | Iterations without progress before a stop.
SOCP MAX PRESOLVE ITERATIONS | I | 10 | >=0 | | Maximum number of presolve passes.
SOCP PRESOLVE | C | FULL | | {PRESOLVE} | Presolve: full, basic reductions only, or none.
SOCP NNZA THRES BLD AAT | I | 100000 | >=0 | | Nonzeros of A above which A A^T is built column by column.
SOCP DEN ROW THRES BLD AAT | R | 0.1 | >0 <=1 | | Density above which a row is left out of A A^T and treated apart.
SOCP DENSITY THRES BLD AAT | R | 0.3 | >0 <=1 | | Density of A A^T above which it is stored dense.
SOCP Q SIZE THRESHOLD | I | 100 | >=1 | | Cone size above which a cone's scaling block is kept in factored form.
SOCP Q DENSITY THRESHOLD | R | 0.3 | >0 <=1 | | Density above which a cone's scaling block is treated as dense.
# ---- BXNL (40) ----
BXNL MONITOR FREQUENCY | I | 0 | >=0 | | Call the user's monitor every this many iterations of the bound-constrained least-squares solver; 0 never.
BXNL DEBUG | C* | NO | | {YN} | Diagnostic output of the least-squares solver.
BXNL ITERATION LIMIT | I | 1000 | >=1 | | Maximum number of iterations.
BXNL PRINT HEADER | I | 30 | >=1 | | Repeat the log's column heading every this many lines.
BXNL MODEL | C | HYBRID | | GAUSS-NEWTON:1,GN:1,QUASI-NEWTON:2,QN:2,HYBRID:3,TENSOR-NEWTON:4,TN:4 | Model of the objective: Gauss-Newton, quasi-Newton, a hybrid of both, or tensor-Newton.
BXNL GLOB METHOD | C | TR | | TR:1,TRUST REGION:1,REG:2,REGULARIZATION:2 | Globalization: trust region or regularization.
BXNL NLLS METHOD | C | MORE-SORENSEN | | MORE-SORENSEN:1,MS:1,DOGLEG:2,POWELL DOGLEG:2,AINT:3 | Method of the trust-region subproblem.
BXNL USE SECOND DERIVATIVES | C | NO | | {YN} | Use the residuals' second derivatives supplied by the user.
BXNL STOP ABS TOL GRD | R | 1.0e-5 | >0 | | Absolute tolerance of the gradient.
BXNL STOP REL TOL GRD | R | eps^(1/2) | >=0 | | Tolerance of the gradient relative to the residual norm.
BXNL STOP ABS TOL FUN | R | eps^(1/2) | >=0 | | Absolute tolerance of the residual norm.
BXNL STOP REL TOL FUN | R | eps^(1/2) | >=0 | | Tolerance of the residual norm relative to its initial value.
BXNL STOP STEP TOL | R | eps^(1/1) | >=0 | | Relative step size below which the iteration stops.
BXNL BOX GAMMA | R | 0.9995 | >0 <1 | | Fraction of the step to the box that a projected step takes.
BXNL BOX DECMIN | R | eps^(1/1) | >0 | | Smallest relative decrease accepted in the box line search.
BXNL BOX WOLFE DESC | R | 1.0e-4 | >0 <1 | | Sufficient-decrease parameter of the Wolfe line search in the box.
BXNL BOX WOLFE CURV | R | 0.9 | >0 <1 | | Curvature parameter of the Wolfe line search in the box.
BXNL BOX TR POW | R | 2.0 | >0 | | Power of the trust-region radius in the projected-step test.
BXNL BOX TR DESC | R | 1.0e-4 | >0 <1 | | Sufficient decrease of a trust-region step in the box.
BXNL BOX QUAD DESC | R | 1.0e-4 | >0 <1 | | Sufficient decrease of the quadratic model in the box.
BXNL BOX TAU MIN | R | 0.1 | >0 <1 | | Smallest backtracking factor of the box line search.
BXNL BOX TAU DESC | R | 0.5 | >0 <1 | | Backtracking factor of the box line search.
BXNL BOX ALPHA SCL | R | 1.0 | >0 | | Scale of the first step of the projected-gradient search.
BXNL BOX DELTA SCL | R | 1.0 | >0 | | Scale of the trust-region radius after a projection.
BXNL BOX TAU WOLFE | R | 0.3 | >0 <1 | | Backtracking factor of the Wolfe line search.
BXNL BOX TAU TR | R | 0.3 | >0 <1 | | Backtracking factor of a projected trust-region step.
BXNL REG ORDER | C | AUTO | | AUTO:0,QUADRATIC:2,CUBIC:3 | Order of the regularization term (regularization globalization).
BXNL BASEREG TERM | R | 1.0e-2 | >=0 | | Coefficient of the base regularization.
BXNL BASEREG POW | R | 2.0 | 2..3 | | Power of the base regularization.
BXNL TN METHOD | C | MIN | | MIN:1,IMPLICIT:2,ADD-1:3,ADD-N:4 | Subproblem method of the tensor-Newton model.
BXNL BASEREG TYPE | C | NONE | | NONE:0,QUADRATIC:1 | Base regularization added to the model.
BXNL BOX PG MEMORY | I | 5 | >=0 | | Number of past steps kept by the projected-gradient search.
BXNL BOX LS MAXIT | I | 20 | >=1 | | Maximum number of steps of the box line search.
BXNL BOX TR STEP FAIL | I | 3 | >=1 | | Failed trust-region steps before a projected-gradient step is tried.
BXNL BOX QUAD CNT | I | 5 | >=0 | | Quadratic model checks per iteration.
BXNL BOX TEST TR STEP | C | YES | | {YN} | Test a trust-region step against the box before projecting it.
BXNL BOX TEST WO STEP | C | YES | | {YN} | Test a Wolfe line-search step against the box.
BXNL USE WEIGHTS | C | NO | | {YN} | Weight the residuals by the array stored as RESIDUAL WEIGHTS.
BXNL SAVE COVARIANCE MATRIX | C | NO | | {YN} | Store the covariance matrix of the solution in the handle.
BXNL LSQGRD PROVIDES | C | NO | | {YN} | The user's residual-gradient routine also gives the residuals.
# ---- MCS (13) ----
MCS INITIALIZATION METHOD | C | SIMPLE BOUNDS | | SIMPLE BOUNDS:0,USER:1,LINESEARCH:2 | How the coordinate search places its first points.
MCS LOCAL SEARCHES | C | ON | | ON:1,OFF:0,YES:1,NO:0 | Run local searches from promising boxes.
MCS LOCAL SEARCHES LIMIT | I | 50 | >=1 | | Maximum number of steps of one local search.
MCS LOCAL SEARCHES TOLERANCE | R | eps^(1/1) | >0 | | Stopping tolerance of a local search.
MCS MAX OBJECTIVE CALLS | I | 0 | >=0 | | Maximum number of objective evaluations; 0 chooses 100 n^2.
MCS MONITOR FREQUENCY | I | 0 | >=0 | | Call the user's monitor every this many sweeps; 0 never.
MCS REPEATABILITY | C | OFF | | ON:1,OFF:0,YES:1,NO:0 | Make runs with equal data give equal results.
MCS SPLITS LIMIT | I | 0 | >=0 | | Largest number of splits of one coordinate; 0 chooses d(n+2)/3 from the level limit.
MCS STATIC LIMIT | I | 0 | >=0 | | Sweeps without improvement before a stop; 0 chooses 3n.
MCS TARGET OBJECTIVE ERROR | R | eps^(1/4) | >0 | | Relative error of the target value at which the search stops.
MCS TARGET OBJECTIVE SAFEGUARD | R | eps^(1/2) | >0 | | Absolute error of the target value used when the target is near 0.
MCS TARGET OBJECTIVE VALUE | R | 0.0 | | | Target objective value; used only when set by the user.
MCS PRINT FREQUENCY | I | 1 | >=0 | | Print a log line every this many sweeps; 0 never.
# ---- SSQP (46) ----
SSQP FUNCTION PRECISION | R | eps^(4/5) | >0 <1 | | Relative precision of the user's functions.
SSQP FINITE DIFF CTRL INTERVAL | R | eps^(1/3) | >0 <1 | | Interval of the central differences used near a solution.
SSQP FINITE DIFF INTERVAL | R | eps^(1/2) | >0 <1 | | Interval of the forward differences.
SSQP DEBUG | I* | 0 | >=0 | | Diagnostic output of the sparse SQP solver.
SSQP ESTIMATE DERIVATIVES | C | NO | | {YN} | Estimate missing derivatives by finite differences.
SSQP SUPERBASICS LIMIT | I | 0 | >=0 | | Largest number of superbasic variables; 0 chooses min(500, n+1).
SSQP START TYPE | C | COLD | | COLD:1,WARM:2,HOT:3 | Cold start, or warm start from the stored basis (WARM START BASIS).
SSQP MEMORY FACTOR | R | 1.0 | >0 | | Factor applied to the solver's estimate of its workspace.
SSQP PRINT FREQUENCY | I | 1 | >=0 | | Print a log line every this many minor iterations; 0 never.
SSQP ITERATION LIMIT | I | 10000 | >=1 | | Maximum total number of minor iterations.
SSQP MAJOR ITERATION LIMIT | I | 1000 | >=0 | | Maximum number of major iterations.
SSQP MINOR ITERATION LIMIT | I | 500 | >=1 | | Maximum number of minor iterations per QP subproblem.
SSQP MAJOR OPTIMALITY TOL | R | 2.0e-6 | >0 | | Tolerance of the reduced gradient (optimality).
SSQP MAJOR FEASIBILITY TOL | R | 1.0e-6 | >0 | | Tolerance of the nonlinear constraint violation.
SSQP MINOR FEASIBILITY TOL | R | 1.0e-6 | >0 | | Tolerance of the bounds and linear constraints in the QP subproblems.
SSQP REDUCED HESSIAN DIMENSION | I | 0 | >=0 | | Size of the dense reduced Hessian; 0 chooses min(2000, n+1).
SSQP NEW SUPERBASICS LIMIT | I | 99 | >=1 | | New superbasics allowed per major iteration.
SSQP CHECK FREQUENCY | I | 60 | >=1 | | Check the accuracy of the basic solution every this many iterations.
SSQP EXPAND FREQUENCY | I | 10000 | >=0 | | Expand the feasibility tolerance every this many iterations (anti-cycling).
SSQP FACTORIZATION FREQUENCY | I | 50 | >=1 | | Refactorize the basis every this many updates.
SSQP HESSIAN FLUSH | I | 0 | >=0 | | Reset the Hessian approximation every this many iterations; 0 never.
SSQP HESSIAN FREQUENCY | I | 999999 | >=1 | | Reset the full-memory Hessian approximation after this many updates.
SSQP HESSIAN UPDATES | I | 10 | >=0 | | Updates kept by the limited-memory Hessian approximation.
SSQP PARTIAL PRICE | I | 1 | >=0 | | Pricing is done in this many sections; 0 chooses automatically.
SSQP CRASH OPTION | I | 3 | 0..3 | | Which constraints the crash procedure uses to build the first basis.
SSQP LINESEARCH TYPE | C | DERIVATIVE | | DERIVATIVE:1,NONDERIVATIVE:2 | Line search with or without derivatives.
SSQP HESSIAN | C | LIMITED MEMORY | | FULL MEMORY:1,FULL:1,LIMITED MEMORY:2,LIMITED:2 | Form of the Hessian approximation.
SSQP LU PIVOTING | C | TPP | | TPP:1,THRESHOLD PARTIAL:1,TRP:2,THRESHOLD ROOK:2,TCP:3,THRESHOLD COMPLETE:3 | Pivoting of the basis factorization.
SSQP QPSOLVER | C | CHOLESKY | | CHOLESKY:1,CG:2,QN:3 | Solver of the reduced QP subproblems.
SSQP SCALE PRINT | C | NO | | {YN} | Print the scale factors.
SSQP SCALE OPTION | I | 1 | 0..2 | | Scaling: 0 none, 1 linear constraints and variables, 2 all constraints.
SSQP PROXIMAL POINT METHOD NRM | I | 1 | 1..2 | | Norm of the proximal-point start (1 or 2).
SSQP MONITOR FREQUENCY | I | 0 | >=0 | | Call the user's monitor every this many major iterations; 0 never.
SSQP CRASH TOLERANCE | R | 0.1 | >=0 <1 | | Pivot tolerance of the crash procedure.
SSQP ELASTIC WEIGHT | R | 1.0e4 | >=0 | | Weight of the infeasibilities in elastic mode.
SSQP LU FACTOR TOLERANCE | R | 3.99 | >=1 | | Bound on the multipliers of the basis factorization.
SSQP LU SINGULARITY TOLERANCE | R | eps^(2/3) | >0 | | Pivots below this are treated as singular.
SSQP LU UPDATE TOLERANCE | R | 3.99 | >=1 | | Bound on the multipliers of the basis updates.
SSQP LINESEARCH TOLERANCE | R | 0.9 | >0 <1 | | Accuracy of the line search (smaller is more accurate).
SSQP MAJOR STEP LIMIT | R | 2.0 | >0 | | Largest relative change of the variables in one line search.
SSQP PENALTY PARAMETER | R | 0.0 | >=0 | | Initial penalty parameter of the merit function.
SSQP PIVOT TOLERANCE | R | eps^(2/3) | >0 | | Smallest pivot accepted in the simplex steps.
SSQP SCALE TOLERANCE | R | 0.9 | >0 <1 | | Scaling passes stop when the improvement is less than this factor.
SSQP UNBOUNDED OBJECTIVE | R | 1.0e15 | >0 | | An objective beyond this magnitude counts as unbounded.
SSQP UNBOUNDED STEP SIZE | R | 1.0e18 | >0 | | A step beyond this size counts as unbounded.
SSQP VIOLATION LIMIT | R | 1.0e6 | >0 | | Largest violation of the nonlinear constraints allowed along a line search, relative to the start.
# ---- NLDF (10) ----
NLDF LOSS FUNCTION TYPE | C | L2 | | L2:1,L1:2,HUBER:3,CAUCHY:4,ATAN:5,SMOOTHL1:6,LINF:7,QUANTILE:8 | Loss function of the data-fitting solver.
NLDF HUBER FUNCTION WIDTH | R | 1.0 | >0 | | Width of the quadratic part of the Huber loss.
NLDF CAUCHY FUNCTION SHARPNESS | R | 1.0 | >0 | | Sharpness of the Cauchy loss.
NLDF SMOOTHL1 FUNCTION WIDTH = NLDF SmoothL1 Function Width | R | 1.0 | >0 | | Width of the quadratic part of the smooth L1 loss.
NLDF QUANTILE PARAMETER | R | 0.5 | >0 <1 | | Quantile of the quantile loss.
NLDF ITERATION LIMIT | I | 1000 | >=1 | | Maximum number of iterations.
NLDF STOP TOLERANCE | R | 1.0e-6 | >0 | | Stopping tolerance of the data-fitting solver.
NLDF SLV PRINTING | C | NO | | {YN} | Let the inner solver print its own log.
NLDF SLV MONIT | C | NO | | {YN} | Let the inner solver call the user's monitor.
NLDF MONITOR FREQUENCY | I | 0 | >=0 | | Call the user's monitor every this many iterations; 0 never.
"""

# Words that keep their upper case in the mixed-case names: the solver
# families and the abbreviations read letter by letter.
UPPER_WORDS = {
    "LPIPM", "DFO", "DFLS", "FOAS", "DFNO", "SOCP", "BXNL", "MCS", "SSQP", "NLDF", "MA97", "NLP", "LP",
    "TRF", "DIMACS", "LU", "AS", "NE", "NEAS", "ADA", "AAT", "IMAP", "PD", "SD", "TR", "PG", "LS", "WO",
    "TN", "NNZ", "NNZA", "Q", "P", "U", "X", "NPG", "CG", "QN",
}

EPS = 2.0 ** -53
TYPE_CODES = {"I": 1, "R": 2, "C": 3, "I*": 5, "R*": 6, "C*": 7}
BOUND_KINDS = {">=": "b_ge", ">": "b_gt", "<=": "b_le", "<": "b_lt"}


def display_name(name):
    return " ".join(w if w in UPPER_WORDS else w[0] + w[1:].lower() for w in name.split(" "))


def identifier(name):
    return re.sub(r"[^a-z0-9]+", "_", name.lower()).strip("_")


def real_value(text):
    m = re.fullmatch(r"eps\^\((\d+)/(\d+)\)", text)
    if m:
        p, q = int(m.group(1)), int(m.group(2))
        return EPS ** (p / q), ("\u03b5" if p == q else f"\u03b5^({p}/{q})")
    return float(text), text


def parse_bounds(text, kind):
    lo = hi = None
    if not text:
        return lo, hi
    m = re.fullmatch(r"(\S+)\.\.(\S+)", text)
    if m:
        return (">=", m.group(1)), ("<=", m.group(2))
    for part in text.split():
        m = re.fullmatch(r"(>=|>|<=|<)(\S+)", part)
        assert m, part
        if m.group(1).startswith(">"):
            lo = (m.group(1), m.group(2))
        else:
            hi = (m.group(1), m.group(2))
    return lo, hi


def parse_table():
    names = {"YN": YN, "MA97": MA97, "ORDER": ORDER, "FORMULATION": FORMULATION, "AUTO_YN": AUTO_YN,
             "SCALING": SCALING, "PRESOLVE": PRESOLVE, "DENSECOL": DENSECOL, "INITIAL": INITIAL,
             "DENSITY": DENSITY}
    rows = []
    group = None
    for line in TABLE.strip().splitlines():
        if line.startswith("#"):
            group = re.search(r"---- (\S+)", line).group(1)
            continue
        fields = [f.strip() for f in line.split("|")]
        assert len(fields) == 6, line
        name, typ, default, bounds, keywords, help_text = fields
        shown = None
        if " = " in name:
            name, shown = name.split(" = ")
        kw = []
        if keywords:
            for item in keywords.split(","):
                word, code = item.rsplit(":", 1)
                kw.append((word, int(code)))
        rows.append(dict(name=name, shown=shown or display_name(name), group=group, type=typ,
                         default=default, bounds=parse_bounds(bounds, typ), keywords=kw, help=help_text,
                         id=identifier(name)))
    return rows


def assign_slots(rows):
    """Integer and character options take two words of the integer store
    (value, status) in registry order; real options take the next real
    slot and, for their status, one integer word after all the pairs."""
    iword = 0
    for r in rows:
        if r["type"][0] in "IC":
            r["islot"], r["rslot"] = iword, -1
            iword += 2
    rslot = 0
    for r in rows:
        if r["type"][0] == "R":
            r["islot"], r["rslot"] = iword, rslot
            iword += 1
            rslot += 1
    assert iword <= 600 and rslot <= 200, (iword, rslot)
    return iword, rslot


def c_double(v):
    s = repr(float(v))
    return s if ("e" in s or "." in s or "inf" in s) else s + ".0"


def bound_args(bound):
    if bound is None:
        return "b_none", "0.0"
    return BOUND_KINDS[bound[0]], c_double(float(bound[1]))


def make_def(rows):
    out = ["// The option registry, in registry order.  GENERATED by tools/e04_options.py from its",
           "// table: do not edit; change the table and run the script.",
           "//",
           "// ZEM_E04_OPTION(id, name, type, islot, rslot, idef, rdef, lo_kind, lo, hi_kind, hi,",
           "//                keywords, help)",
           "//   name      the mixed-case name (the registry compares in upper case)",
           "//   islot     integer store word: value (and status in the next word) of an",
           "//             integer or character option; the status word of a real option",
           "//   rslot     real store slot of a real option, -1 otherwise",
           "//   idef      default of an integer option, default code of a character",
           "//             option; adv_unit_default = the advisory unit when filled",
           "//   keywords  \"KEYWORD:code|...\", first spelling of a code canonical",
           ""]
    for r in rows:
        t = r["type"]
        idef, rdef = "0", "0.0"
        if t[0] == "I":
            idef = "adv_unit_default" if r["default"] == "advisory unit" else str(int(r["default"]))
        elif t[0] == "R":
            rdef = c_double(real_value(r["default"])[0])
        else:
            codes = dict(r["keywords"])
            assert r["default"] in codes, r["name"]
            idef = str(codes[r["default"]])
        lok, lo = bound_args(r["bounds"][0])
        hik, hi = bound_args(r["bounds"][1])
        kws = "|".join(f"{w}:{c}" for w, c in r["keywords"])
        help_text = r["help"].replace("\\", "\\\\").replace('"', '\\"')
        out.append(f'ZEM_E04_OPTION({r["id"]}, "{r["shown"]}", {TYPE_CODES[t]}, {r["islot"]}, {r["rslot"]}, '
                   f'{idef}, {rdef}, {lok}, {lo}, {hik}, {hi},\n               "{kws}",\n'
                   f'               "{help_text}")')
    return "\n".join(out) + "\n"


def fmt_bound(b):
    return "" if b is None else f"{b[0]} {b[1]}"


def make_doc(rows, iwords, rslots):
    out = ["# Options of the optimization suite (e04zm, e04zn, e04zp)", "",
           "GENERATED by `tools/e04_options.py` from the registry's table; do not edit by hand.", "",
           "Options are set with `e04zm` (\"Name = value\"), read with `e04zn`, read in bulk",
           "from a file with `e04zp`. Names are matched without regard to case; the",
           "listing and the messages show the mixed-case form below. A new handle holds",
           "every default (status 1); a value set by `e04zm`/`e04zp` has status 2; a value",
           "a solver changed for its own run has status 3.", "",
           "Keyword options accept every spelling listed; spellings of one choice share a",
           "code, and `e04zn` returns the first spelling of the code. A bound `>= v` or",
           "`> v` is the smallest value accepted, inclusive or strict. ε = 2^-53.", "",
           "`e04zm` also accepts the single word \"Defaults\", which puts every option back",
           "to its default. Names are never abbreviated.", "",
           "The defaults, bounds and keyword lists below are the registry's own, one row",
           "of one table per option (`tools/e04_options.py`). \"Print File\" defaults to the",
           "advisory message unit current when the handle is created (`x04ab`).", "",
           f"Storage: {iwords} of the 600 integer words and {rslots} of the 200 real values are in use.",
           "Internal options (type marked *) serve the library's own diagnostics and are",
           "printed only by the full listing (`e04ry` \"ALL OPTIONS\").", ""]
    groups = []
    for r in rows:
        if not groups or groups[-1][0] != r["group"]:
            groups.append((r["group"], []))
        groups[-1][1].append(r)
    out += ["## Contents", ""]
    for g, rs in groups:
        out.append(f"- {g} ({len(rs)} options): numbers {rows.index(rs[0]) + 1} to {rows.index(rs[-1]) + 1}")
    out.append("")
    kinds = {"I": "integer", "R": "real", "C": "character"}
    for g, rs in groups:
        out += [f"## {g}", "", "| No | Option | Type | Default | Bounds or keywords | What it steers |",
                "|---|---|---|---|---|---|"]
        for r in rs:
            t = r["type"]
            typ = kinds[t[0]] + (" *" if t.endswith("*") else "")
            if t[0] == "C":
                canon = {}
                for w, c in r["keywords"]:
                    canon.setdefault(c, w)
                spell = ", ".join(f'"{w}"' for w, _ in r["keywords"])
                bounds = spell
                default = f'"{r["default"]}"'
            else:
                parts = [fmt_bound(b) for b in r["bounds"] if b]
                bounds = " and ".join(parts) if parts else "none"
                if t[0] == "R":
                    v, shown = real_value(r["default"])
                    default = f"{shown} = {v!r}" if shown != r["default"] or "eps" in r["default"] else shown
                else:
                    default = r["default"]
            out.append(f'| {rows.index(r) + 1} | {r["shown"]} | {typ} | {default} | {bounds} | {r["help"]} |')
        out.append("")
    return "\n".join(out)


def main():
    root = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
    rows = parse_table()
    assert len(rows) == 303, len(rows)
    iwords, rslots = assign_slots(rows)
    outputs = {os.path.join(root, "e04", "options.def"): make_def(rows),
               os.path.join(root, "docs", "e04_options.md"): make_doc(rows, iwords, rslots)}
    stale = []
    for path, text in outputs.items():
        old = open(path).read() if os.path.exists(path) else None
        if old != text:
            stale.append(path)
            if "--check" not in sys.argv:
                with open(path, "w") as f:
                    f.write(text)
    if "--check" in sys.argv and stale:
        print("out of date (run python3 tools/e04_options.py):", *stale)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
