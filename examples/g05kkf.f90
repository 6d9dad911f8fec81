! g05kkf example: streams 2**100 values apart for Wichmann-Hill II.
program g05kkf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: g05kff, g05kkf, g05saf
  implicit none
  integer(int64) :: state(29), seed(1), lstate, ifail, s
  real(real64) :: x(2)

  write (*, '(a)') 'g05kkf example results'
  write (*, *)
  seed(1) = 1762
  lstate = 29
  ifail = 0
  call g05kff(4_int64, 0_int64, seed, 1_int64, state, lstate, ifail)
  do s = 1, 3
    call g05kkf(100_int64, state, ifail)
    call g05saf(2_int64, state, x, ifail)
    write (*, '(a,i0,a,2f10.6)') 'Block ', s, ':', x
  end do
end program g05kkf_example
