! e04rbf example: second-order cones and integer variables (e04rbf and
! e04rcf).  A model in five variables (x1, x2, x3, x4, t):
!   minimize   t + x3 + x4
!   subject to t >= ||(x1, x2)||            (quadratic cone)
!              2 x3 x4 >= x1^2               (rotated quadratic cone)
!              x1 + x2 = 2,  x3 and x4 integer.
! The first cone is defined, then replaced through its identifier.
program e04rbf_example
  use, intrinsic :: iso_c_binding, only: c_ptr, c_null_ptr
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: e04raf, e04ref, e04rjf, e04rbf, e04rcf, e04ryf, e04rzf
  implicit none
  type(c_ptr) :: handle
  integer(int64) :: ifail, idlc, idcone, idrot
  integer(int64), parameter :: quad(3) = [5, 1, 2], rquad(3) = [3, 4, 1], ints(2) = [3, 4]
  real(real64), parameter :: cvec(5) = [0.0_real64, 0.0_real64, 1.0_real64, 1.0_real64, 1.0_real64]

  write (*, '(a)') 'e04rbf example results'
  write (*, *)
  handle = c_null_ptr
  ifail = 0
  call e04raf(handle, 5_int64, ifail)
  call e04ref(handle, 5_int64, cvec, ifail)
  idlc = 0
  call e04rjf(handle, 1_int64, [2.0_real64], [2.0_real64], 2_int64, [1_int64, 1_int64], [1_int64, 2_int64], &
              [1.0_real64, 1.0_real64], idlc, ifail)
  ! A first cone on (t, x1) only, replaced below by the cone on (t, x1, x2).
  idcone = 0
  call e04rbf(handle, 'QUAD', 2_int64, quad, idcone, ifail)
  idrot = 0
  call e04rbf(handle, 'RQUAD', 3_int64, rquad, idrot, ifail)
  write (*, '(a,i0,a,i0)') 'Cones defined with identifiers ', idcone, ' and ', idrot
  call e04rbf(handle, 'Q', 3_int64, quad, idcone, ifail)
  write (*, '(a,i0,a)') 'Cone ', idcone, ' replaced'
  call e04rcf(handle, 'INT', 2_int64, ints, ifail)
  write (*, '(a)') 'x3 and x4 declared integer'
  write (*, '(a)') 'An unknown type is refused:'
  ifail = -1
  call e04rcf(handle, 'REAL', 2_int64, ints, ifail)
  ifail = 0
  call e04ryf(handle, 6_int64, 'Overview, Cone Constraints Detailed', ifail)
  call e04rzf(handle, ifail)
end program e04rbf_example
