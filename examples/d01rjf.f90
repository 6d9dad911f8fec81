! d01rjf example: the integral of log(x)/sqrt(x) over [0,1], which is -4.
module d01rjf_example_fun
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
    fv = log(x) / sqrt(x) + ruser(1)
    ! cpuser carries no data in this example (iflag stays 0).
    if (.not. c_associated(cpuser)) iflag = 0
  end subroutine f
end module d01rjf_example_fun

program d01rjf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use, intrinsic :: iso_c_binding, only: c_ptr, c_null_ptr
  use zem, only: d01rjf
  use d01rjf_example_fun, only: f
  implicit none
  integer(int64), parameter :: maxsub = 50
  integer(int64) :: ifail, iuser(1), iinfo(maxsub)
  real(real64) :: result, abserr, rinfo(4*maxsub), ruser(1)
  type(c_ptr) :: cpuser

  write (*, '(a)') 'd01rjf example results'
  write (*, *)
  iuser(1) = 0
  ruser(1) = 0.0_real64
  cpuser = c_null_ptr
  ifail = -1
  call d01rjf(f, 0.0_real64, 1.0_real64, 0.0_real64, 1.0e-10_real64, maxsub, result, abserr, rinfo, iinfo, &
              iuser, ruser, cpuser, ifail)
  if (ifail == 0) then
    write (*, '(a)') 'Integral of log(x)/sqrt(x) over [0,1]'
    ! The last digits depend on how the compiler evaluates f's array
    ! expression; the first twelve do not.
    write (*, '(a,f16.12)') 'result  = ', result
    write (*, '(a,l1)') 'abserr below 1e-12: ', abserr < 1.0e-12_real64
    write (*, '(i0,a,i0,a)') iinfo(1), ' subintervals, ', iuser(1), ' evaluations of f'
  end if

  ! With room for only four subintervals: a warning, printed because
  ! ifail = -1 on entry; result and abserr hold the best estimate.
  write (*, *)
  ifail = -1
  call d01rjf(f, 0.0_real64, 1.0_real64, 0.0_real64, 1.0e-10_real64, 4_int64, result, abserr, rinfo, iinfo, &
              iuser, ruser, cpuser, ifail)
  write (*, '(a,i0,a,f11.8)') 'ifail = ', ifail, ', result = ', result
end program d01rjf_example
