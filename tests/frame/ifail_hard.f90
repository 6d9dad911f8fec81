! ifail = 0 on entry and a failure: the message lines, the ABNORMAL EXIT
! line and the hard-failure line, then the program stops with status 1.
module ifail_hard_fun
  use, intrinsic :: iso_fortran_env, only: int64, real64
  implicit none
contains
  function f(x, iuser, ruser)
    real(real64) :: f
    real(real64), intent(in) :: x
    integer(int64), intent(inout) :: iuser(*)
    real(real64), intent(inout) :: ruser(*)
    f = x - 0.5_real64
  end function f
end module ifail_hard_fun

program ifail_hard
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: c05ayf
  use ifail_hard_fun, only: f
  implicit none
  integer(int64) :: ifail, iuser(1)
  real(real64) :: x, ruser(1)
  write (*, '(a)') 'calling with ifail = 0 and eps = 0'
  ifail = 0
  call c05ayf(0.0_real64, 1.0_real64, 0.0_real64, 0.0_real64, f, x, iuser, ruser, ifail)
  write (*, '(a)') 'not reached'
end program ifail_hard
