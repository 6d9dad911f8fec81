! c05awf example: the zero of x**3 - 2x - 5 by continuation from x = 0, and
! the limit nfmax on the calls of f for x**2 + 1, which has no real zero.
module c05awf_example_fun
  use, intrinsic :: iso_fortran_env, only: int64, real64
  implicit none
contains
  function f(x, iuser, ruser)
    real(real64) :: f
    real(real64), intent(in) :: x
    integer(int64), intent(inout) :: iuser(*)
    real(real64), intent(inout) :: ruser(*)
    iuser(1) = iuser(1) + 1
    f = x**3 - 2.0_real64 * x - 5.0_real64 + ruser(1)
  end function f

  function g(x, iuser, ruser)
    real(real64) :: g
    real(real64), intent(in) :: x
    integer(int64), intent(inout) :: iuser(*)
    real(real64), intent(inout) :: ruser(*)
    iuser(1) = iuser(1) + 1
    g = x * x + 1.0_real64 + ruser(1)
  end function g
end module c05awf_example_fun

program c05awf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: c05awf
  use c05awf_example_fun, only: f, g
  implicit none
  integer(int64) :: ifail, iuser(1)
  real(real64) :: x, ruser(1)

  write (*, '(a)') 'c05awf example results'
  write (*, *)
  iuser(1) = 0
  ruser(1) = 0.0_real64
  x = 0.0_real64
  ifail = -1
  call c05awf(x, 1.0e-12_real64, 0.0_real64, f, 1000_int64, iuser, ruser, ifail)
  if (ifail == 0) then
    write (*, '(a,f16.12,a,i0,a)') 'Zero at x = ', x, ' after ', iuser(1), ' evaluations'
  end if

  write (*, *)
  write (*, '(a)') 'With x**2 + 1 and nfmax = 50:'
  iuser(1) = 0
  x = 1.0_real64
  ifail = -1
  call c05awf(x, 1.0e-12_real64, 0.0_real64, g, 50_int64, iuser, ruser, ifail)
  write (*, '(a,i0,a,i0)') 'ifail = ', ifail, ', evaluations: ', iuser(1)
end program c05awf_example
