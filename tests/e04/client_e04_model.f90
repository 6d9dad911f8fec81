! Client test of the modelling suite through the Fortran interface: a
! model built and printed, quiet and noisy failures with their message
! lines, the handle checks and a destroyed handle.
program client_e04_model
  use, intrinsic :: iso_c_binding, only: c_ptr, c_null_ptr, c_associated
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem
  implicit none
  type(c_ptr) :: h
  integer(int64) :: ifail, idlc, idgroup
  real(real64) :: bl(3), bu(3), lbl(1), lbu(1), b(2), c(3)
  integer(int64) :: irowb(2), icolb(2), grp(3), idx(2)

  h = c_null_ptr
  bl = [-1.0_real64, 0.0_real64, -1.0e20_real64]
  bu = [1.0_real64, 1.0e20_real64, 2.0_real64]
  lbl = [-1.0e20_real64]
  lbu = [4.0_real64]
  irowb = [1_int64, 1_int64]
  icolb = [1_int64, 3_int64]
  b = [1.0_real64, -1.0_real64]
  c = [1.0_real64, 0.5_real64, -2.0_real64]
  grp = [3_int64, 1_int64, 2_int64]

  ifail = 0
  call e04raf(h, 3_int64, ifail)
  call e04ref(h, 3_int64, c, ifail)
  call e04rhf(h, 3_int64, bl, bu, ifail)
  idlc = 0
  call e04rjf(h, 1_int64, lbl, lbu, 2_int64, irowb, icolb, b, idlc, ifail)
  write (*, '(a,i0)') 'idlc = ', idlc
  idgroup = 0
  call e04rbf(h, 'QUAD', 3_int64, grp, idgroup, ifail)
  call e04tef(h, 2_int64, 4.0_real64, ifail)
  call e04ryf(h, 6_int64, 'OVERVIEW, OBJECTIVE, CONE CONSTRAINTS', ifail)

  write (*, '(a)') 'Failures, quiet'
  ifail = 1
  idx = [2_int64, 2_int64]
  call e04rgf(h, 2_int64, idx, ifail)
  write (*, '(a,i0)') 'e04rgf idxfd (2,2): ifail = ', ifail
  ifail = 1
  call e04tdf(h, 'NLC', 1_int64, 0.0_real64, 1.0_real64, ifail)
  write (*, '(a,i0)') 'e04tdf NLC 1: ifail = ', ifail
  ifail = 1
  call e04rlf(h, 0_int64, 1_int64, idx, idx, ifail)
  write (*, '(a,i0)') 'e04rlf: ifail = ', ifail

  write (*, '(a)') 'Failures, noisy'
  ifail = -1
  call e04tbf(h, 'CN', 1_int64, [5_int64], ifail)
  ifail = -1
  call e04ryf(h, 6_int64, 'OVERVIEW,SIMPLE BOUNDS DETAILED', ifail)
  ifail = 0
  call e04rzf(h, ifail)
  write (*, '(a,l1)') 'destroyed: ', .not. c_associated(h)
  ifail = -1
  call e04taf(h, 1_int64, ifail)
end program client_e04_model
