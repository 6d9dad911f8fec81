! Client test of the g05 generator routines through the Fortran interface:
! the ifail convention on a length query and on failures, and the messages
! whose Fortran text differs from the C one (the others are in
! client_g05c.c; values, leap-frog and skip-ahead are in the examples).  The
! last call fails with ifail = 0 on entry and so stops the program.
program client_g05f
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: g05kff, g05kgf, g05kjf, g05kkf, g05saf
  implicit none
  integer(int64), parameter :: ls = 1260
  integer(int64) :: state(ls), seed(1), lstate, ifail
  real(real64) :: x(3)

  seed = [1762_int64]
  write (*, '(a)') 'A length query with ifail = 0 warns and returns'
  lstate = 0
  ifail = 0
  call g05kgf(6_int64, 0_int64, state, lstate, ifail)
  write (*, '(a,i0,a,i0)') 'lstate = ', lstate, ', ifail = ', ifail

  write (*, '(/a)') 'Failures with ifail = -1 (noisy soft): the texts of this interface'
  ifail = -1
  call g05kff(7_int64, 0_int64, seed, 1_int64, state, lstate, ifail)
  lstate = 700
  ifail = 0
  call g05kff(3_int64, 0_int64, seed, 1_int64, state, lstate, ifail)
  ifail = -1
  call g05kjf(1_int64, state, ifail)
  ifail = -1
  call g05kkf(1_int64, state, ifail)
  ifail = 7
  call g05kjf(-3_int64, state, ifail)
  write (*, '(a,i0)') 'ifail = 7 on entry: quiet, ifail = ', ifail
  state(2) = 0
  ifail = -1
  call g05saf(1_int64, state, x, ifail)
  write (*, '(/a)') 'ifail = 0 on entry: a hard failure stops the program'
  ifail = 0
  call g05saf(1_int64, state, x, ifail)
  write (*, '(a)') 'not reached'
end program client_g05f
