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
