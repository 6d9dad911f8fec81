! g05kff example: a repeatable state for the Mersenne Twister, its length
! asked for first, then five uniform numbers.
program g05kff_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: g05kff, g05saf
  implicit none
  integer(int64), parameter :: genid = 3, subid = 0, lseed = 1
  integer(int64) :: seed(1), lstate, ifail, dummy(1)
  integer(int64), allocatable :: state(:)
  real(real64) :: x(5)

  write (*, '(a)') 'g05kff example results'
  write (*, *)
  seed(1) = 1762
  ! lstate <= 0: the required length comes back in lstate (a warning,
  ! silent with ifail = 1).
  lstate = 0
  ifail = 1
  call g05kff(genid, subid, seed, lseed, dummy, lstate, ifail)
  write (*, '(a,i0)') 'Required length of state: ', lstate
  allocate (state(lstate))
  ifail = 0
  call g05kff(genid, subid, seed, lseed, state, lstate, ifail)
  call g05saf(5_int64, state, x, ifail)
  write (*, '(f10.6)') x
  deallocate (state)
end program g05kff_example
