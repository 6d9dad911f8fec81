! e04rgf example: a nonlinear objective and the structure of its Hessian
! (e04rgf and e04rlf).  The generalized Rosenbrock function of four
! variables
!   f(x) = sum_{i=1..3} 100 (x_{i+1} - x_i^2)^2 + (1 - x_i)^2
! depends on every variable; its Hessian is tridiagonal.  The solver will
! evaluate f and its derivatives through user functions; the handle holds
! which derivatives are nonzero.
program e04rgf_example
  use, intrinsic :: iso_c_binding, only: c_ptr, c_null_ptr
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: e04raf, e04rgf, e04rlf, e04rhf, e04ryf, e04rzf
  implicit none
  type(c_ptr) :: handle
  integer(int64) :: ifail
  integer(int64), parameter :: idxfd(4) = [1, 2, 3, 4]
  integer(int64), parameter :: irowh(7) = [1, 1, 2, 2, 3, 3, 4], icolh(7) = [1, 2, 2, 3, 3, 4, 4]

  write (*, '(a)') 'e04rgf example results'
  write (*, *)
  handle = c_null_ptr
  ifail = 0
  call e04raf(handle, 4_int64, ifail)
  ! Before an objective or constraint is nonlinear, no Hessian has a place.
  write (*, '(a)') 'Hessian structure before e04rgf:'
  ifail = -1
  call e04rlf(handle, 0_int64, 7_int64, irowh, icolh, ifail)
  write (*, *)
  ifail = 0
  call e04rgf(handle, 4_int64, idxfd, ifail)
  call e04rlf(handle, 0_int64, 7_int64, irowh, icolh, ifail)
  call e04rhf(handle, 4_int64, [-2.0_real64, -2.0_real64, -2.0_real64, -2.0_real64], &
              [2.0_real64, 2.0_real64, 2.0_real64, 2.0_real64], ifail)
  write (*, '(a)') 'Gradient with 4 nonzeros, Hessian with 7 in its upper triangle'
  call e04ryf(handle, 6_int64, 'Overview, Objective, Simple Bounds', ifail)
  call e04rzf(handle, ifail)
end program e04rgf_example
