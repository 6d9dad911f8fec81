! Client test of the d01 Fortran interface: quiet, noisy and hard failures,
! the iflag stop.
module client_d01f_fun
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use, intrinsic :: iso_c_binding, only: c_ptr, c_associated
  implicit none
contains
  subroutine f(x, nx, fv, iflag, iuser, ruser, cpuser)
    integer(int64), intent(in) :: nx
    real(real64), intent(in) :: x(nx)
    real(real64), intent(out) :: fv(nx)
    integer(int64), intent(inout) :: iflag
    integer(int64), intent(inout) :: iuser(*)
    real(real64), intent(inout) :: ruser(*)
    type(c_ptr), intent(inout) :: cpuser
    iuser(1) = iuser(1) + 1
    if (iuser(1) == iuser(2)) iflag = -1
    fv = ruser(1) / sqrt(x)
    if (c_associated(cpuser)) fv = 0.0_real64
  end subroutine f
end module client_d01f_fun

program client_d01f
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use, intrinsic :: iso_c_binding, only: c_ptr, c_null_ptr
  use zem, only: d01rjf, d01rmf
  use client_d01f_fun, only: f
  implicit none
  integer(int64) :: ifail, iuser(2), iinfo(10)
  real(real64) :: result, abserr, rinfo(40), ruser(1)
  type(c_ptr) :: cpuser

  cpuser = c_null_ptr
  ruser(1) = 1.0_real64

  ! Quiet soft failure (ifail = 1): nothing printed.
  iuser = [0_int64, 0_int64]
  ifail = 1
  call d01rjf(f, 0.0_real64, 1.0_real64, 0.0_real64, 1.0e-10_real64, 3_int64, result, abserr, rinfo, iinfo, &
              iuser, ruser, cpuser, ifail)
  write (*, '(a,i0,a,i0)') 'quiet: ifail = ', ifail, ', n = ', iinfo(1)

  ! Noisy soft failure: the iflag stop on the second call.
  iuser = [0_int64, 2_int64]
  ifail = -1
  call d01rjf(f, 0.0_real64, 1.0_real64, 0.0_real64, 1.0e-10_real64, 10_int64, result, abserr, rinfo, iinfo, &
              iuser, ruser, cpuser, ifail)
  write (*, '(a,i0,a,i0,a,i0)') 'stop: ifail = ', ifail, ', n = ', iinfo(1), ', calls = ', iuser(1)

  ! Success sets ifail to 0.
  iuser = [0_int64, 0_int64]
  ifail = -1
  call d01rjf(f, 0.0_real64, 1.0_real64, 0.0_real64, 1.0e-10_real64, 10_int64, result, abserr, rinfo, iinfo, &
              iuser, ruser, cpuser, ifail)
  write (*, '(a,i0,a,f14.11)') 'success: ifail = ', ifail, ', result = ', result

  ! Hard failure (ifail = 0): the message, then the program stops.
  ifail = 0
  call d01rmf(f, 0.0_real64, 1_int64, 0.0_real64, 1.0e-10_real64, 0_int64, result, abserr, rinfo, iinfo, &
              iuser, ruser, cpuser, ifail)
  write (*, '(a)') 'not reached'
end program client_d01f
