! g05saf example: uniform numbers from each of the six base generators.
program g05saf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: g05kff, g05saf
  implicit none
  integer(int64) :: state(1260), seed(1), lstate, ifail, genid
  real(real64) :: x(4)
  character(len=16), parameter :: names(6) = [character(len=16) :: 'basic', 'Wichmann-Hill I', &
       'Mersenne Twister', 'Wichmann-Hill II', 'ACORN', 'MRG32k3a']

  write (*, '(a)') 'g05saf example results'
  write (*, *)
  seed(1) = 1762
  do genid = 1, 6
    lstate = 1260
    ifail = 0
    call g05kff(genid, 1_int64, seed, 1_int64, state, lstate, ifail)
    call g05saf(4_int64, state, x, ifail)
    write (*, '(a16,4f10.6)') names(genid), x
  end do
  ! A negative n with ifail = -1: the message is printed, control returns.
  write (*, *)
  ifail = -1
  call g05saf(-1_int64, state, x, ifail)
  write (*, '(a,i0)') 'ifail = ', ifail
end program g05saf_example
