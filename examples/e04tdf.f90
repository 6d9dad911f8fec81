! e04tdf example: editing bounds and coefficients in place (e04tdf and
! e04tjf).  A production model
!   maximize 3 x1 + 5 x2  (minimize -3 x1 - 5 x2)
!   subject to x1 <= 4,  2 x2 <= 12,  3 x1 + 2 x2 <= 18,  x >= 0
! is changed without rebuilding: the second variable gets an upper bound,
! the third constraint's capacity grows to 20 and its coefficient of x2
! becomes 3; a coefficient not yet in the matrix is added.
program e04tdf_example
  use, intrinsic :: iso_c_binding, only: c_ptr, c_null_ptr
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: e04raf, e04ref, e04rhf, e04rjf, e04tdf, e04tjf, e04ryf, e04rzf
  implicit none
  type(c_ptr) :: handle
  integer(int64) :: ifail, idlc
  real(real64), parameter :: big = 1.0e20_real64

  write (*, '(a)') 'e04tdf example results'
  write (*, *)
  handle = c_null_ptr
  ifail = 0
  call e04raf(handle, 2_int64, ifail)
  call e04ref(handle, 2_int64, [-3.0_real64, -5.0_real64], ifail)
  call e04rhf(handle, 2_int64, [0.0_real64, 0.0_real64], [big, big], ifail)
  idlc = 0
  call e04rjf(handle, 3_int64, [-big, -big, -big], [4.0_real64, 12.0_real64, 18.0_real64], 4_int64, &
              [1_int64, 2_int64, 3_int64, 3_int64], [1_int64, 2_int64, 1_int64, 2_int64], &
              [1.0_real64, 2.0_real64, 3.0_real64, 2.0_real64], idlc, ifail)
  call e04ryf(handle, 6_int64, 'Simple Bounds, Linear Constraints Detailed', ifail)
  call e04tdf(handle, 'X', 2_int64, 0.0_real64, 5.0_real64, ifail)
  call e04tdf(handle, 'LC', 3_int64, -big, 20.0_real64, ifail)
  call e04tjf(handle, 3_int64, 2_int64, 3.0_real64, ifail)
  call e04tjf(handle, 1_int64, 2_int64, 0.5_real64, ifail)
  write (*, *)
  write (*, '(a)') 'After the edits'
  call e04ryf(handle, 6_int64, 'Simple Bounds, Linear Constraints Detailed', ifail)
  write (*, *)
  write (*, '(a)') 'Bounds 3 <= x1 <= 2:'
  ifail = -1
  call e04tdf(handle, 'X', 1_int64, 3.0_real64, 2.0_real64, ifail)
  ifail = 0
  call e04rzf(handle, ifail)
end program e04tdf_example
