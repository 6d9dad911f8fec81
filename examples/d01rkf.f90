! d01rkf example: a smooth peak, 1/(1 + (230x - 30)^2) over [0,1], with each
! of the six Gauss-Kronrod pairs.
module d01rkf_example_fun
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
    iuser(1) = iuser(1) + nx
    fv = 1.0_real64 / (1.0_real64 + (ruser(1) * x - 30.0_real64)**2)
    ! cpuser carries no data in this example (iflag stays 0).
    if (.not. c_associated(cpuser)) iflag = 0
  end subroutine f
end module d01rkf_example_fun

program d01rkf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use, intrinsic :: iso_c_binding, only: c_ptr, c_null_ptr
  use zem, only: d01rkf
  use d01rkf_example_fun, only: f
  implicit none
  integer(int64), parameter :: maxsub = 100
  integer(int64) :: ifail, key, iuser(1), iinfo(maxsub)
  real(real64) :: result, abserr, rinfo(4*maxsub), ruser(1)
  type(c_ptr) :: cpuser

  write (*, '(a)') 'd01rkf example results'
  write (*, *)
  ruser(1) = 230.0_real64
  cpuser = c_null_ptr
  write (*, '(a)') 'key        result            abserr  subintervals  evaluations'
  do key = 1, 6
    iuser(1) = 0
    ifail = -1
    call d01rkf(f, 0.0_real64, 1.0_real64, 0.0_real64, 1.0e-12_real64, key, maxsub, result, abserr, rinfo, &
                iinfo, iuser, ruser, cpuser, ifail)
    if (ifail /= 0) stop 1
    write (*, '(i3,2x,f18.15,2x,es10.2,2x,i12,2x,i11)') key, result, abserr, iinfo(1), iuser(1)
  end do
end program d01rkf_example
