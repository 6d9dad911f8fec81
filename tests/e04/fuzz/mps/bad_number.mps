* Every section of the fixed format: a small mixed-integer problem
NAME          ALLSEC
ROWS
 N  COST
 N  SPARE
 L  LIM1
 G  LIM2
 E  MYEQN
 E  RNGE
COLUMNS
    X1        COST         1.0   LIM1         1.0
    X1        LIM2         1.0
    MARKER    'MARKER'     'INTORG'
    X2        COST         2.0   LIM1         1.0
    X2        MYEQN       -1.0
    MARKER    'MARKER'     'INTEND'
    X3        COST        -1.0   MYEQN        1.0
    X3        SPARE        5.0   RNGE         1.0
    X4        COST         0.5   RNGE         2.0
    X5        LIM2         1.0   COST         1.0
    X6        COST         1.0   LIM1         3.0
    X7        COST         1.0
    X8        COST         1.0
    X9        COST         1.0
RHS
    RHS       COST        -4.5
    RHS       LIM1         4.0   LIM2         1.0
    RHS       MYEQN        7.0   RNGE         2.0
RANGES
    RNG       LIM1         2.5   RNGE        -3.0
BOUNDS
 UP BND       X1           4.O
 LO BND       X2          -1.0
 UP BND       X2           1.0
 MI BND       X3
 FX BND       X4           2.5
 FR BND       X5
 BV BND       X6
 LI BND       X7           2
 UI BND       X7           9
 SC BND       X8           3.0
 PL BND       X9
ENDATA
