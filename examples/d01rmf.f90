! d01rmf example: 1/((1 + x) sqrt(x)) over (0, +inf), which is pi.
module d01rmf_example_fun
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
    fv = 1.0_real64 / ((ruser(1) + x) * sqrt(x))
    ! cpuser carries no data in this example (iflag stays 0).
    if (.not. c_associated(cpuser)) iflag = 0
  end subroutine f
end module d01rmf_example_fun

program d01rmf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use, intrinsic :: iso_c_binding, only: c_ptr, c_null_ptr
  use zem, only: d01rmf
  use d01rmf_example_fun, only: f
  implicit none
  integer(int64), parameter :: maxsub = 50
  integer(int64) :: ifail, iuser(1), iinfo(maxsub)
  real(real64) :: result, abserr, rinfo(4*maxsub), ruser(1)
  type(c_ptr) :: cpuser

  write (*, '(a)') 'd01rmf example results'
  write (*, *)
  iuser(1) = 0
  ruser(1) = 1.0_real64
  cpuser = c_null_ptr
  ifail = -1
  call d01rmf(f, 0.0_real64, 1_int64, 0.0_real64, 1.0e-10_real64, maxsub, result, abserr, rinfo, iinfo, &
              iuser, ruser, cpuser, ifail)
  if (ifail == 0) then
    write (*, '(a,f18.14)') 'result  = ', result
    write (*, '(a,es10.2)') 'abserr  = ', abserr
    write (*, '(i0,a,i0,a)') iinfo(1), ' subintervals of (0,1], ', iuser(1), ' evaluations of f'
  end if

  ! An invalid range code: an error.
  write (*, *)
  ifail = -1
  call d01rmf(f, 0.0_real64, 3_int64, 0.0_real64, 1.0e-10_real64, maxsub, result, abserr, rinfo, iinfo, &
              iuser, ruser, cpuser, ifail)
  write (*, '(a,i0)') 'ifail = ', ifail
end program d01rmf_example
