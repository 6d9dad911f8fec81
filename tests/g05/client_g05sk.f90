! Client test: g05skf as a Fortran program uses it, from the Mersenne Twister.
program client_g05sk
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: g05kff, g05skf
  implicit none
  integer(int64) :: seed(1), state(1260), lstate, ifail
  real(real64) :: x(4)

  seed(1) = 42
  lstate = 1260
  ifail = 0
  call g05kff(3_int64, 1_int64, seed, 1_int64, state, lstate, ifail)
  ifail = 0
  call g05skf(4_int64, 1.0_real64, 0.25_real64, state, x, ifail)
  write (*, '(a,4f12.8,a,i0)') 'N(1, 0.25):', x, '  ifail ', ifail

  ifail = -1
  call g05skf(-1_int64, 0.0_real64, 1.0_real64, state, x, ifail)
  write (*, '(a,i0)') 'ifail = ', ifail
  state(1) = 5
  ifail = -1
  call g05skf(4_int64, 0.0_real64, 1.0_real64, state, x, ifail)
  write (*, '(a,i0)') 'ifail = ', ifail
end program client_g05sk
