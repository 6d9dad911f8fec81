! c05ayf example: the zero of exp(-x) - x in [0,1].
module c05ayf_example_fun
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
end module c05ayf_example_fun

program c05ayf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: c05ayf
  use c05ayf_example_fun, only: f
  implicit none
  integer(int64) :: ifail, iuser(1)
  real(real64) :: x, ruser(1)

  write (*, '(a)') 'c05ayf example results'
  write (*, *)
  iuser(1) = 0
  ruser(1) = 0.0_real64
  ifail = -1
  call c05ayf(0.0_real64, 1.0_real64, 1.0e-10_real64, 0.0_real64, f, x, iuser, ruser, ifail)
  if (ifail == 0) then
    write (*, '(a,f12.8,a,i0,a)') 'Zero at x = ', x, ' after ', iuser(1), ' evaluations'
  end if

  ! An interval without a sign change: with ifail = -1 on entry the
  ! message is printed and control returns.
  write (*, *)
  write (*, '(a)') 'With [2,3]:'
  ifail = -1
  call c05ayf(2.0_real64, 3.0_real64, 1.0e-10_real64, 0.0_real64, f, x, iuser, ruser, ifail)
  write (*, '(a,i0)') 'ifail = ', ifail
end program c05ayf_example
