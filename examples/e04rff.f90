! e04rff example: a convex quadratic programme
!   minimize  x1^2 + x1 x2 + x2^2 + 2 x3^2 - 3 x1 - x3
!   subject to x1 + x2 + x3 <= 1,  x >= 0
! with the Hessian H = [2 1 0; 1 2 0; 0 0 4] of 0.5 x'Hx given by its
! upper triangle and the linear part as a sparse vector.
program e04rff_example
  use, intrinsic :: iso_c_binding, only: c_ptr, c_null_ptr
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: e04raf, e04rff, e04rhf, e04rjf, e04ryf, e04rzf
  implicit none
  type(c_ptr) :: handle
  integer(int64) :: ifail, idlc
  real(real64), parameter :: big = 1.0e20_real64
  integer(int64), parameter :: idxc(2) = [1, 3], irowh(4) = [1, 1, 2, 3], icolh(4) = [1, 2, 2, 3]
  real(real64), parameter :: c(2) = [-3.0_real64, -1.0_real64]
  real(real64), parameter :: h(4) = [2.0_real64, 1.0_real64, 2.0_real64, 4.0_real64]

  write (*, '(a)') 'e04rff example results'
  write (*, *)
  handle = c_null_ptr
  ifail = 0
  call e04raf(handle, 3_int64, ifail)
  call e04rff(handle, 2_int64, idxc, c, 4_int64, irowh, icolh, h, ifail)
  call e04rhf(handle, 3_int64, [0.0_real64, 0.0_real64, 0.0_real64], [big, big, big], ifail)
  idlc = 0
  call e04rjf(handle, 1_int64, [-big], [1.0_real64], 3_int64, [1_int64, 1_int64, 1_int64], &
              [1_int64, 2_int64, 3_int64], [1.0_real64, 1.0_real64, 1.0_real64], idlc, ifail)
  call e04ryf(handle, 6_int64, 'Overview, Objective', ifail)
  ! An element below the diagonal is refused; the objective stays as it was.
  write (*, *)
  write (*, '(a)') 'H(2,1) given instead of H(1,2):'
  ifail = -1
  call e04rff(handle, 2_int64, idxc, c, 1_int64, [2_int64], [1_int64], h, ifail)
  ifail = 0
  call e04rzf(handle, ifail)
end program e04rff_example
