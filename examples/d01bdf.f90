! d01bdf example: exp(-x^2) over [-2,2] by Patterson's nested rules.
module d01bdf_example_fun
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
    fv = exp(-ruser(1) * x**2)
    ! cpuser carries no data in this example (iflag stays 0).
    if (.not. c_associated(cpuser)) iflag = 0
  end subroutine f
end module d01bdf_example_fun

program d01bdf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use, intrinsic :: iso_c_binding, only: c_ptr, c_null_ptr
  use zem, only: d01bdf
  use d01bdf_example_fun, only: f
  implicit none
  integer(int64) :: ifail, iuser(1)
  real(real64) :: result, abserr, ruser(1)
  type(c_ptr) :: cpuser

  write (*, '(a)') 'd01bdf example results'
  write (*, *)
  iuser(1) = 0
  ruser(1) = 1.0_real64
  cpuser = c_null_ptr
  ifail = -1
  call d01bdf(f, -2.0_real64, 2.0_real64, 0.0_real64, 1.0e-13_real64, result, abserr, iuser, ruser, cpuser, &
              ifail)
  write (*, '(a,f18.15)') 'result  = ', result
  write (*, '(a,es10.2)') 'abserr  = ', abserr
  write (*, '(i0,a)') iuser(1), ' points'

  ! A tolerance no rule of the sequence can meet: a warning.
  write (*, *)
  ifail = -1
  call d01bdf(f, -2.0_real64, 2.0_real64, 0.0_real64, 1.0e-17_real64, result, abserr, iuser, ruser, cpuser, &
              ifail)
  write (*, '(a,i0)') 'ifail = ', ifail
end program d01bdf_example
