! d01rlf example: x^3 log|(x^2 - 1)(x^2 - 2)| over [0,3], with break points at
! the two singularities 1 and sqrt(2).
module d01rlf_example_fun
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
    fv = x**3 * log(abs((x**2 - 1.0_real64) * (x**2 - 2.0_real64))) + ruser(1)
    ! cpuser carries no data in this example (iflag stays 0).
    if (.not. c_associated(cpuser)) iflag = 0
  end subroutine f
end module d01rlf_example_fun

program d01rlf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use, intrinsic :: iso_c_binding, only: c_ptr, c_null_ptr
  use zem, only: d01rlf
  use d01rlf_example_fun, only: f
  implicit none
  integer(int64), parameter :: maxsub = 100
  integer(int64) :: ifail, iuser(1), iinfo(maxsub)
  real(real64) :: result, abserr, rinfo(4*maxsub), ruser(1), points(2)
  type(c_ptr) :: cpuser

  write (*, '(a)') 'd01rlf example results'
  write (*, *)
  iuser(1) = 0
  ruser(1) = 0.0_real64
  cpuser = c_null_ptr
  points = [1.0_real64, sqrt(2.0_real64)]
  ifail = -1
  call d01rlf(f, 0.0_real64, 3.0_real64, 2_int64, points, 0.0_real64, 1.0e-10_real64, maxsub, result, abserr, &
              rinfo, iinfo, iuser, ruser, cpuser, ifail)
  if (ifail == 0) then
    write (*, '(a,f18.14)') 'result  = ', result
    write (*, '(a,es10.2)') 'abserr  = ', abserr
    write (*, '(i0,a,i0,a)') iinfo(1), ' subintervals, ', iuser(1), ' evaluations of f'
  end if

  ! A break point outside the interval: an error.
  write (*, *)
  points(2) = 3.5_real64
  ifail = -1
  call d01rlf(f, 0.0_real64, 3.0_real64, 2_int64, points, 0.0_real64, 1.0e-10_real64, maxsub, result, abserr, &
              rinfo, iinfo, iuser, ruser, cpuser, ifail)
  write (*, '(a,i0)') 'ifail = ', ifail
end program d01rlf_example
