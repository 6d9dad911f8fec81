! d02ptf example: the stiff problem y' = -1000 (y - cos t) with the 4(5)
! pair: the range integrator warns that the problem is stiff, the program
! continues, and d02ptf reports what it cost.
module d02ptf_example_fun
  use, intrinsic :: iso_fortran_env, only: int64, real64
  implicit none
contains
  subroutine f(t, n, y, yp, iuser, ruser)
    real(real64), intent(in) :: t
    integer(int64), intent(in) :: n
    real(real64), intent(in) :: y(n)
    real(real64), intent(out) :: yp(n)
    integer(int64), intent(inout) :: iuser(*)
    real(real64), intent(inout) :: ruser(*)
    yp(1) = -1000 * (y(1) - cos(t))
  end subroutine f
end module d02ptf_example_fun

program d02ptf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: d02pqf, d02pef, d02ptf
  use d02ptf_example_fun, only: f
  implicit none
  integer(int64) :: iwsav(32), lrwsav, ifail, iuser(1), fevals, stepcost, stepsok, warnings
  real(real64) :: rwsav(256), yinit(1), thresh(1), tgot, y(1), yp(1), ymax(1), ruser(1), waste, hnext

  write (*, '(a)') 'd02ptf example results'
  write (*, *)
  yinit = 0
  thresh = 1.0e-8_real64
  lrwsav = 256
  ifail = 0
  call d02pqf(1_int64, 0.0_real64, 10.0_real64, yinit, 1.0e-4_real64, thresh, 2_int64, 0.0_real64, iwsav, rwsav, &
              lrwsav, ifail)
  tgot = 0
  warnings = 0
  do while (tgot < 10)
    ! The first warning is printed (ifail = -1), the others are quiet (ifail = 1).
    ifail = merge(-1_int64, 1_int64, warnings == 0)
    call d02pef(f, 1_int64, 10.0_real64, tgot, y, yp, ymax, iuser, ruser, iwsav, rwsav, ifail)
    if (ifail == 3) warnings = warnings + 1
    if (ifail /= 0 .and. ifail /= 3) stop 1
  end do
  write (*, '(a,i0)') 'Stiffness warnings: ', warnings
  write (*, '(a,f9.6,a,f9.6,a)') 'y(10) = ', y(1), ' (true: ', &
      (cos(10.0_real64) + 1.0e-3_real64 * sin(10.0_real64)) / (1 + 1.0e-6_real64), ')'
  ifail = 0
  call d02ptf(fevals, stepcost, waste, stepsok, hnext, iwsav, rwsav, ifail)
  write (*, '(a,i0,a,i0,a,i0)') 'Evaluations ', fevals, ', cost of a step ', stepcost, ', accepted steps ', stepsok
  write (*, '(a,f6.3,a,es9.2)') 'Fraction of failed attempts ', waste, ', next step ', hnext
end program d02ptf_example
