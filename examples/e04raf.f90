! e04raf example: the life of a handle.  A small linear programme
!   minimize  x1 + 2 x2 - x3  subject to  x1 + x2 <= 4,  x2 - x3 = 1,
!             0 <= x1 <= 3, x2 >= 0, x3 free
! is built piece by piece, a coefficient is edited, the model is printed
! and the handle destroyed.
program e04raf_example
  use, intrinsic :: iso_c_binding, only: c_ptr, c_null_ptr, c_associated
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: e04raf, e04ref, e04rhf, e04rjf, e04tef, e04ryf, e04rzf
  implicit none
  type(c_ptr) :: handle
  integer(int64) :: ifail, idlc
  real(real64), parameter :: big = 1.0e20_real64
  real(real64) :: bl(3), bu(3), cvec(3), lbl(2), lbu(2), b(4)
  integer(int64) :: irowb(4), icolb(4)

  write (*, '(a)') 'e04raf example results'
  write (*, *)
  handle = c_null_ptr
  bl = [0.0_real64, 0.0_real64, -big]
  bu = [3.0_real64, big, big]
  cvec = [1.0_real64, 2.0_real64, -1.0_real64]
  lbl = [-big, 1.0_real64]
  lbu = [4.0_real64, 1.0_real64]
  irowb = [1, 1, 2, 2]
  icolb = [1, 2, 2, 3]
  b = [1.0_real64, 1.0_real64, 1.0_real64, -1.0_real64]
  ifail = 0
  call e04raf(handle, 3_int64, ifail)
  call e04ref(handle, 3_int64, cvec, ifail)
  call e04rhf(handle, 3_int64, bl, bu, ifail)
  idlc = 0
  call e04rjf(handle, 2_int64, lbl, lbu, 4_int64, irowb, icolb, b, idlc, ifail)
  write (*, '(a,i0)') 'Linear constraints added, last identifier ', idlc
  call e04tef(handle, 2_int64, 1.5_real64, ifail)
  call e04ryf(handle, 6_int64, 'Overview, Objective, Simple Bounds, Linear Constraints Detailed', ifail)
  call e04rzf(handle, ifail)
  write (*, *)
  write (*, '(a,l1)') 'Handle destroyed: ', .not. c_associated(handle)
end program e04raf_example
