! e04rkf example: nonlinear constraints (e04rkf) and the Hessian structure
! of one of them (e04rlf).  Three variables, a linear objective
! x1 + x2 + x3 and the constraints
!   g1(x) = x1^2 + x2^2 + x3^2   in [1, 4]    (a spherical shell)
!   g2(x) = x1 x2                >= 0.5
! The Jacobian has five nonzeros: dg1/dx1, dg1/dx2, dg1/dx3, dg2/dx1,
! dg2/dx2.
program e04rkf_example
  use, intrinsic :: iso_c_binding, only: c_ptr, c_null_ptr
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: e04raf, e04ref, e04rkf, e04rlf, e04ryf, e04rzf
  implicit none
  type(c_ptr) :: handle
  integer(int64) :: ifail
  integer(int64), parameter :: irowgd(5) = [1, 1, 1, 2, 2], icolgd(5) = [1, 2, 3, 1, 2]
  integer(int64), parameter :: irowh1(3) = [1, 2, 3], icolh1(3) = [1, 2, 3]

  write (*, '(a)') 'e04rkf example results'
  write (*, *)
  handle = c_null_ptr
  ifail = 0
  call e04raf(handle, 3_int64, ifail)
  call e04ref(handle, 3_int64, [1.0_real64, 1.0_real64, 1.0_real64], ifail)
  call e04rkf(handle, 2_int64, [1.0_real64, 0.5_real64], [4.0_real64, 1.0e20_real64], 5_int64, irowgd, icolgd, &
              ifail)
  ! Second derivatives: 2 I for g1, one off-diagonal element for g2.
  call e04rlf(handle, 1_int64, 3_int64, irowh1, icolh1, ifail)
  call e04rlf(handle, 2_int64, 1_int64, [1_int64], [2_int64], ifail)
  call e04ryf(handle, 6_int64, 'Overview, Nonlinear Constraints Bounds, Nonlinear Constraints Detailed', ifail)
  ! The objective is linear: it has no Hessian to describe.
  write (*, *)
  write (*, '(a)') 'Hessian of the objective:'
  ifail = -1
  call e04rlf(handle, 0_int64, 1_int64, [1_int64], [2_int64], ifail)
  ifail = 0
  call e04rzf(handle, ifail)
end program e04rkf_example
