! c05auf example: the zero of exp(-x) - x near x = 1, searched with step -0.1
! inside [-10,10] (the search walks first in the direction of h, as far as
! the bound, so h points to where the zero is expected); then a function
! without a zero.
module c05auf_example_fun
  use, intrinsic :: iso_fortran_env, only: int64, real64
  implicit none
contains
  function f(x, iuser, ruser)
    real(real64) :: f
    real(real64), intent(in) :: x
    integer(int64), intent(inout) :: iuser(*)
    real(real64), intent(inout) :: ruser(*)
    iuser(1) = iuser(1) + 1
    f = exp(-x) - x + ruser(1)
  end function f

  function g(x, iuser, ruser)
    real(real64) :: g
    real(real64), intent(in) :: x
    integer(int64), intent(inout) :: iuser(*)
    real(real64), intent(inout) :: ruser(*)
    iuser(1) = iuser(1) + 1
    g = x * x + 1.0_real64 + ruser(1)
  end function g
end module c05auf_example_fun

program c05auf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: c05auf
  use c05auf_example_fun, only: f, g
  implicit none
  integer(int64) :: ifail, iuser(1)
  real(real64) :: x, ruser(1)

  write (*, '(a)') 'c05auf example results'
  write (*, *)
  iuser(1) = 0
  ruser(1) = 0.0_real64
  x = 1.0_real64
  ifail = -1
  call c05auf(x, -0.1_real64, 1.0e-10_real64, 0.0_real64, f, -10.0_real64, 10.0_real64, iuser, ruser, ifail)
  if (ifail == 0) then
    write (*, '(a,f12.8,a,i0,a)') 'Zero at x = ', x, ' after ', iuser(1), ' evaluations'
  end if

  ! x**2 + 1 has no real zero: with ifail = -1 the message is printed.
  write (*, *)
  write (*, '(a)') 'With x**2 + 1:'
  x = 0.0_real64
  ifail = -1
  call c05auf(x, 0.5_real64, 1.0e-10_real64, 0.0_real64, g, -5.0_real64, 5.0_real64, iuser, ruser, ifail)
  write (*, '(a,i0)') 'ifail = ', ifail
end program c05auf_example
