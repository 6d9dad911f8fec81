! e04taf example: growing and pruning a model (e04taf and e04tbf).  A
! transport-like model starts with two variables and two linear
! constraints; two variables are appended, a third constraint row on them
! is added, and then the first row and the variable x2 are deleted.
! Identifiers are never renumbered: the remaining rows keep theirs, and a
! second deletion is refused.
program e04taf_example
  use, intrinsic :: iso_c_binding, only: c_ptr, c_null_ptr
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: e04raf, e04rjf, e04taf, e04tbf, e04ryf, e04rzf
  implicit none
  type(c_ptr) :: handle
  integer(int64) :: ifail, idlc
  real(real64), parameter :: big = 1.0e20_real64

  write (*, '(a)') 'e04taf example results'
  write (*, *)
  handle = c_null_ptr
  ifail = 0
  call e04raf(handle, 2_int64, ifail)
  idlc = 0
  call e04rjf(handle, 2_int64, [-big, 1.0_real64], [10.0_real64, big], 3_int64, [1_int64, 2_int64, 2_int64], &
              [1_int64, 1_int64, 2_int64], [1.0_real64, 1.0_real64, 1.0_real64], idlc, ifail)
  call e04taf(handle, 2_int64, ifail)
  idlc = 0
  call e04rjf(handle, 1_int64, [0.0_real64], [5.0_real64], 2_int64, [1_int64, 1_int64], [3_int64, 4_int64], &
              [1.0_real64, -1.0_real64], idlc, ifail)
  write (*, '(a,i0,a)') 'Two variables appended, constraint row ', idlc, ' added on them'
  call e04ryf(handle, 6_int64, 'Overview, Linear Constraints Detailed', ifail)
  call e04tbf(handle, 'LC', 1_int64, [1_int64], ifail)
  call e04tbf(handle, 'X', 1_int64, [2_int64], ifail)
  write (*, *)
  write (*, '(a)') 'Row 1 and variable x2 deleted'
  call e04ryf(handle, 6_int64, 'Overview, Linear Constraints Detailed', ifail)
  write (*, *)
  write (*, '(a)') 'Deleting row 1 again:'
  ifail = -1
  call e04tbf(handle, 'LC', 1_int64, [1_int64], ifail)
  ifail = 0
  call e04rzf(handle, ifail)
end program e04taf_example
