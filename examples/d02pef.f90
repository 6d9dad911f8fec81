! d02pef example: a two-body orbit of eccentricity 0.5 with the range
! integrator, answers at eight points of one period.
module d02pef_example_fun
  use, intrinsic :: iso_fortran_env, only: int64, real64
  implicit none
contains
  subroutine orbit(t, n, y, yp, iuser, ruser)
    real(real64), intent(in) :: t
    integer(int64), intent(in) :: n
    real(real64), intent(in) :: y(n)
    real(real64), intent(out) :: yp(n)
    integer(int64), intent(inout) :: iuser(*)
    real(real64), intent(inout) :: ruser(*)
    real(real64) :: r3
    r3 = sqrt(y(1)**2 + y(2)**2)**3
    yp(1) = y(3)
    yp(2) = y(4)
    yp(3) = -y(1) / r3
    yp(4) = -y(2) / r3
    iuser(1) = iuser(1) + 1
  end subroutine orbit
end module d02pef_example_fun

program d02pef_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: d02pqf, d02pef, d02ptf
  use d02pef_example_fun, only: orbit
  implicit none
  real(real64), parameter :: pi = 3.14159265358979323846_real64, e = 0.5_real64
  integer(int64) :: iwsav(32), lrwsav, ifail, iuser(1), k, fevals, stepcost, stepsok
  real(real64) :: rwsav(256), yinit(4), thresh(4), tgot, ygot(4), ypgot(4), ymax(4), ruser(1), waste, hnext

  write (*, '(a)') 'd02pef example results'
  write (*, *)
  yinit = [1 - e, 0.0_real64, 0.0_real64, sqrt((1 + e) / (1 - e))]
  thresh = 1.0e-10_real64
  lrwsav = 256
  iuser(1) = 0
  ifail = 0
  call d02pqf(4_int64, 0.0_real64, 2 * pi, yinit, 1.0e-8_real64, thresh, 2_int64, 0.0_real64, iwsav, rwsav, &
              lrwsav, ifail)
  write (*, '(a)') '      t          x          y'
  do k = 1, 8
    ifail = 0
    call d02pef(orbit, 4_int64, k * pi / 4, tgot, ygot, ypgot, ymax, iuser, ruser, iwsav, rwsav, ifail)
    write (*, '(f9.5,2f11.6)') tgot, ygot(1), ygot(2)
  end do
  write (*, *)
  write (*, '(a,es8.1)') 'After one period: |y - yinit| = ', maxval(abs(ygot - yinit))
  ifail = 0
  call d02ptf(fevals, stepcost, waste, stepsok, hnext, iwsav, rwsav, ifail)
  write (*, '(a,i0,a,i0,a,i0)') 'Evaluations ', fevals, ' (counted by f: ', iuser(1), '), accepted steps ', stepsok

  ! tend has been reached: a further call is refused.
  write (*, *)
  ifail = -1
  call d02pef(orbit, 4_int64, 7.0_real64, tgot, ygot, ypgot, ymax, iuser, ruser, iwsav, rwsav, ifail)
  write (*, '(a,i0)') 'ifail = ', ifail
end program d02pef_example
