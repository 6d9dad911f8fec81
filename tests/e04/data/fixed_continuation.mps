* Fixed format as written by hand: comments after $, blank name fields
NAME          CONTIN
ROWS
 N  COST      $ the objective
 L  LIM1      $ capacity
 G  LIM2
COLUMNS
    X1        COST         1.0   LIM1         1.0
              LIM2         2.0   $ same column X1
    X2        COST         3.0
              LIM1         1.0
              LIM2         0.0
RHS
              LIM1         4.0   LIM2         1.0
BOUNDS
 UP           X2           2.5
ENDATA
