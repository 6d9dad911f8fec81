! The same program in Fortran, with the interface module.
module user_functions
  use, intrinsic :: iso_fortran_env, only: int64, real64
  implicit none
contains
  function g(x, iuser, ruser)
    real(real64) :: g
    real(real64), intent(in) :: x
    integer(int64), intent(inout) :: iuser(*)
    real(real64), intent(inout) :: ruser(*)
    g = exp(-x) - x
  end function g
  function h(x, iuser, ruser)
    real(real64) :: h
    real(real64), intent(in) :: x
    integer(int64), intent(inout) :: iuser(*)
    real(real64), intent(inout) :: ruser(*)
    h = 1.0_real64 / sqrt(x) + log(x)
  end function h
end module user_functions

program user
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: c05ayf, d01ajf, g05kff, g05saf
  use user_functions, only: g, h
  implicit none
  integer(int64) :: ifail, iuser(1), iw(100), seed(1), state(1260), lstate
  real(real64) :: ruser(1), root, integral, abserr, w(400), u(1000)
  character(len=80) :: line

  iuser = 0
  ruser = 0
  ifail = 0
  call c05ayf(0.0_real64, 1.0_real64, 1.0e-12_real64, 0.0_real64, g, root, iuser, ruser, ifail)
  ifail = 0
  call d01ajf(h, 0.0_real64, 1.0_real64, 0.0_real64, 1.0e-10_real64, integral, abserr, w, 400_int64, &
              iw, 100_int64, iuser, ruser, ifail)
  seed(1) = 1762543
  lstate = 1260
  ifail = 0
  call g05kff(3_int64, 1_int64, seed, 1_int64, state, lstate, ifail)
  ifail = 0
  call g05saf(1000_int64, state, u, ifail)
  write (line, '(a,f10.8,a,f10.8,a,f10.8)') 'root ', root, ' integral ', integral, ' mean ', sum(u) / 1000
  write (*, '(a)') trim(line)
end program user
