! e04rsf example: a quadratic constraint and a factored quadratic
! objective (e04rsf and e04rtf).  A least-squares problem over the unit
! disc:
!   minimize   0.5 ||F x||^2 - x1,   F = [1 1; 0 2; 3 0]
!   subject to x1^2 + x2^2 <= 1      (0.5 x'Qx with Q = 2 I)
!              x1 x2 >= -0.25        (Q(1,2) = 1)
! The second constraint is then replaced by x1 + x2 <= 1.5 written as a
! purely linear quadratic-constraint row.
program e04rsf_example
  use, intrinsic :: iso_c_binding, only: c_ptr, c_null_ptr
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: e04raf, e04rsf, e04rtf, e04ryf, e04rzf
  implicit none
  type(c_ptr) :: handle
  integer(int64) :: ifail, iddisc, idprod
  real(real64), parameter :: big = 1.0e20_real64
  integer(int64), parameter :: irowf(4) = [1, 1, 2, 3], icolf(4) = [1, 2, 2, 1], idxr(2) = [1, 2]
  real(real64), parameter :: f(4) = [1.0_real64, 1.0_real64, 2.0_real64, 3.0_real64]
  real(real64), parameter :: qdisc(2) = [2.0_real64, 2.0_real64], ones(2) = [1.0_real64, 1.0_real64]

  write (*, '(a)') 'e04rsf example results'
  write (*, *)
  handle = c_null_ptr
  ifail = 0
  call e04raf(handle, 2_int64, ifail)
  call e04rtf(handle, 3_int64, 4_int64, irowf, icolf, f, 1_int64, idxr, [-1.0_real64], ifail)
  iddisc = 0
  call e04rsf(handle, 2_int64, idxr, idxr, qdisc, 0_int64, idxr, ones, -big, 1.0_real64, iddisc, ifail)
  idprod = 0
  call e04rsf(handle, 1_int64, [1_int64], [2_int64], [1.0_real64], 0_int64, idxr, ones, -0.25_real64, big, &
              idprod, ifail)
  write (*, '(a,i0,a,i0,a)') 'Quadratic constraints ', iddisc, ' and ', idprod, ' defined'
  call e04ryf(handle, 6_int64, 'Overview, Objective, Quadratic Constraints Detailed', ifail)
  call e04rsf(handle, 0_int64, idxr, idxr, qdisc, 2_int64, idxr, ones, -big, 1.5_real64, idprod, ifail)
  write (*, *)
  write (*, '(a,i0,a)') 'Constraint ', idprod, ' replaced'
  call e04ryf(handle, 6_int64, 'Quadratic Constraints Detailed', ifail)
  call e04rzf(handle, ifail)
end program e04rsf_example
