! d01ajf example: the integral of 1/sqrt(x) + log(x) over [0,1], which is 1,
! with a scalar integrand and workspace arrays.
module d01ajf_example_fun
  use, intrinsic :: iso_fortran_env, only: int64, real64
  implicit none
contains
  function f(x, iuser, ruser)
    real(real64) :: f
    real(real64), intent(in) :: x
    integer(int64), intent(inout) :: iuser(*)
    real(real64), intent(inout) :: ruser(*)
    iuser(1) = iuser(1) + 1
    f = 1.0_real64 / sqrt(x) + log(x) + ruser(1)
  end function f
end module d01ajf_example_fun

program d01ajf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: d01ajf
  use d01ajf_example_fun, only: f
  implicit none
  integer(int64), parameter :: lw = 400, liw = 100
  integer(int64) :: ifail, iuser(1), iw(liw)
  real(real64) :: result, abserr, w(lw), ruser(1)

  write (*, '(a)') 'd01ajf example results'
  write (*, *)
  iuser(1) = 0
  ruser(1) = 0.0_real64
  ifail = -1
  call d01ajf(f, 0.0_real64, 1.0_real64, 0.0_real64, 1.0e-10_real64, result, abserr, w, lw, iw, liw, &
              iuser, ruser, ifail)
  if (ifail == 0) then
    write (*, '(a,f18.14)') 'result  = ', result
    write (*, '(a,es10.2)') 'abserr  = ', abserr
    write (*, '(i0,a,i0,a)') iw(1), ' subintervals, ', iuser(1), ' evaluations of f'
  end if

  ! Too little workspace: an error, printed because ifail = -1 on entry.
  write (*, *)
  ifail = -1
  call d01ajf(f, 0.0_real64, 1.0_real64, 0.0_real64, 1.0e-10_real64, result, abserr, w, 3_int64, iw, liw, &
              iuser, ruser, ifail)
  write (*, '(a,i0)') 'ifail = ', ifail
end program d01ajf_example
