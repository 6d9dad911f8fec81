! d02pff example: the orbit of d02pef with the step integrator, dense
! output at the same points (d02phf, d02pjf), and tend moved on by d02prf.
module d02pff_example_fun
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
  end subroutine orbit
end module d02pff_example_fun

program d02pff_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: d02pqf, d02pff, d02phf, d02pjf, d02prf, d02psf
  use d02pff_example_fun, only: orbit
  implicit none
  real(real64), parameter :: pi = 3.14159265358979323846_real64, e = 0.5_real64
  integer(int64) :: iwsav(32), lrwsav, ifail, iuser(1), steps
  real(real64) :: rwsav(256), wcomm(32), yinit(4), thresh(4), tnow, ynow(4), ypnow(4), ywant(4), ypwant(4)
  real(real64) :: ruser(1), tnext

  write (*, '(a)') 'd02pff example results'
  write (*, *)
  yinit = [1 - e, 0.0_real64, 0.0_real64, sqrt((1 + e) / (1 - e))]
  thresh = 1.0e-10_real64
  lrwsav = 256
  ifail = 0
  call d02pqf(4_int64, 0.0_real64, 2 * pi, yinit, 1.0e-8_real64, thresh, 2_int64, 0.0_real64, iwsav, rwsav, &
              lrwsav, ifail)
  write (*, '(a)') '      t          x          y         vx         vy'
  tnow = 0
  tnext = pi / 4
  steps = 0
  do while (tnow < 2 * pi)
    ifail = 0
    call d02pff(orbit, 4_int64, tnow, ynow, ypnow, iuser, ruser, iwsav, rwsav, ifail)
    steps = steps + 1
    if (tnow >= tnext) call d02phf(4_int64, 2_int64, iwsav, rwsav, wcomm, 32_int64, ifail)
    do while (tnext <= tnow + 1.0e-12_real64)
      call d02pjf(4_int64, tnext, 0_int64, 2_int64, ywant, ypwant, iwsav, rwsav, wcomm, 32_int64, ifail)
      call d02psf(4_int64, tnext, 1_int64, 4_int64, ypwant, ypwant, iwsav, rwsav, ifail)
      write (*, '(f9.5,4f11.6)') tnext, ywant(1), ywant(2), ypwant(1), ypwant(2)
      tnext = tnext + pi / 4
    end do
  end do
  write (*, *)
  write (*, '(i0,a)') steps, ' steps to t = 2 pi'

  ! Half a period more.
  ifail = 0
  call d02prf(3 * pi, iwsav, rwsav, ifail)
  do while (tnow < 3 * pi)
    call d02pff(orbit, 4_int64, tnow, ynow, ypnow, iuser, ruser, iwsav, rwsav, ifail)
  end do
  write (*, '(a,f9.6,a,f9.6,a)') 'At t = 3 pi: x = ', ynow(1), ', y = ', abs(ynow(2)), ' (aphelion: -1.5, 0)'
end program d02pff_example
