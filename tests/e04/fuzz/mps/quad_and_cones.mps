NAME          CONES
ROWS
 N  OBJ
 E  SUM
COLUMNS
    T         OBJ          1.0
    U         SUM          1.0
    V         SUM          1.0
    R1        OBJ          1.0
    R2        SUM          0.0
    R3        SUM          1.0
RHS
    RHS       SUM          1.0
BOUNDS
 FR BND       U
 FR BND       V
 FR BND       R3
CSECTION      K1           0.0        QUAD
    T
    U
    V
CSECTION      K2           0.0        RQUAD
    R1
    R2
    R3
QUADOBJ
    T         T            1.0
ENDATA
