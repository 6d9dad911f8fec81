! g05kjf example: independent blocks of one MRG32k3a stream for parallel
! workers; worker w skips ahead by w * 10**12 values.
program g05kjf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: g05kff, g05kjf, g05saf
  implicit none
  integer(int64) :: base(61), state(61), seed(1), lstate, ifail, w
  real(real64) :: x(3)

  write (*, '(a)') 'g05kjf example results'
  write (*, *)
  seed(1) = 1762
  lstate = 61
  ifail = 0
  call g05kff(6_int64, 0_int64, seed, 1_int64, base, lstate, ifail)
  do w = 0, 3
    state = base
    call g05kjf(w * 1000000000000_int64, state, ifail)
    call g05saf(3_int64, state, x, ifail)
    write (*, '(a,i0,a,3f10.6)') 'Worker ', w, ':', x
  end do
end program g05kjf_example
