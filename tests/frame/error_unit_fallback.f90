! Where the failure messages go when the error unit cannot take them: a unit
! the program never opened receives nothing and no file fort.57 appears
! (the lines go to standard error instead); a silenced unit (negative)
! keeps a soft failure quiet, but a hard failure still says why on
! standard error before the program stops.
module error_unit_fallback_fun
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
end module error_unit_fallback_fun

program error_unit_fallback
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: c05ayf, x04aaf
  use error_unit_fallback_fun, only: f
  implicit none
  integer(int64) :: ifail, iuser(1), unit
  real(real64) :: x, ruser(1)
  logical :: exists
  unit = 57
  call x04aaf(1_int64, unit)
  ifail = -1
  call c05ayf(0.0_real64, 1.0_real64, 0.0_real64, 0.0_real64, f, x, iuser, ruser, ifail)
  inquire (file='fort.57', exist=exists)
  write (*, '(a,i0,a,l1)') 'unit 57, noisy soft: ifail = ', ifail, ', fort.57 created: ', exists
  unit = -1
  call x04aaf(1_int64, unit)
  ifail = -1
  call c05ayf(0.0_real64, 1.0_real64, 0.0_real64, 0.0_real64, f, x, iuser, ruser, ifail)
  write (*, '(a,i0)') 'unit -1, noisy soft: ifail = ', ifail
  ifail = 0
  call c05ayf(0.0_real64, 1.0_real64, 0.0_real64, 0.0_real64, f, x, iuser, ruser, ifail)
  write (*, '(a)') 'not reached'
end program error_unit_fallback
