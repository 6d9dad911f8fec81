! g05kgf example: a non-repeatable state for MRG32k3a.  The numbers differ
! from run to run, so the example prints only what does not.
program g05kgf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: g05kgf, g05saf
  implicit none
  integer(int64) :: state(61), lstate, ifail
  real(real64) :: x(1000)

  write (*, '(a)') 'g05kgf example results'
  write (*, *)
  lstate = 61
  ifail = 0
  call g05kgf(6_int64, 0_int64, state, lstate, ifail)
  call g05saf(1000_int64, state, x, ifail)
  write (*, '(a,i0,a)') 'Values strictly inside (0,1): ', count(x > 0 .and. x < 1), ' of 1000'
  write (*, '(a,l1)') 'Mean within 0.05 of 1/2: ', abs(sum(x) / 1000 - 0.5_real64) < 0.05_real64
end program g05kgf_example
