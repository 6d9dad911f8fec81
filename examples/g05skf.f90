! g05skf example: Normal variates N(xmu, var) from a Mersenne Twister state.
program g05skf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: g05kff, g05skf
  implicit none
  integer(int64), parameter :: genid = 3, subid = 1, lseed = 1, n = 10
  integer(int64) :: seed(lseed), state(1260), lstate, ifail, i
  real(real64) :: x(n)

  write (*, '(a)') 'g05skf example results'
  write (*, *)
  seed(1) = 1762543
  lstate = size(state, kind=int64)
  ifail = 0
  call g05kff(genid, subid, seed, lseed, state, lstate, ifail)
  ! Ten variates with mean 0.5 and variance 1.0.
  ifail = 0
  call g05skf(n, 0.5_real64, 1.0_real64, state, x, ifail)
  do i = 1, n
    write (*, '(f10.4)') x(i)
  end do

  ! A negative variance: with ifail = -1 the message is printed and control
  ! returns.
  write (*, *)
  ifail = -1
  call g05skf(n, 0.5_real64, -1.0_real64, state, x, ifail)
  write (*, '(a,i0)') 'ifail = ', ifail
end program g05skf_example
