! d02puf example: the global error of a two-body orbit of eccentricity 0.9
! over one period, assessed by a second integration beside the first and
! compared with the true error (after one period the true solution is the
! initial value).
module d02puf_example_fun
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
end module d02puf_example_fun

program d02puf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: d02pqf, d02pef, d02puf
  use d02puf_example_fun, only: orbit
  implicit none
  real(real64), parameter :: pi = 3.14159265358979323846_real64, e = 0.9_real64
  integer(int64) :: iwsav(32), lrwsav, ifail, iuser(1), k
  real(real64) :: rwsav(512), yinit(4), thresh(4), tgot, y(4), yp(4), ymax(4), ruser(1), rmserr(4), errmax, terrmx
  real(real64) :: tol

  write (*, '(a)') 'd02puf example results'
  write (*, *)
  yinit = [1 - e, 0.0_real64, 0.0_real64, sqrt((1 + e) / (1 - e))]
  thresh = 1.0e-3_real64
  write (*, '(a)') '   tol    true error   largest assessed  at t'
  do k = 0, 2
    tol = 1.0e-5_real64 * 1.0e-2_real64**k
    lrwsav = 512
    ifail = 0
    ! method = -3: the 7(8) pair with global error assessment.
    call d02pqf(4_int64, 0.0_real64, 2 * pi, yinit, tol, thresh, -3_int64, 0.0_real64, iwsav, rwsav, lrwsav, ifail)
    call d02pef(orbit, 4_int64, 2 * pi, tgot, y, yp, ymax, iuser, ruser, iwsav, rwsav, ifail)
    call d02puf(4_int64, rmserr, errmax, terrmx, iwsav, rwsav, ifail)
    write (*, '(es7.0,es11.1,es15.1,f10.3)') tol, maxval(abs(y - yinit) / max(abs(y), thresh)), errmax, terrmx
  end do
  write (*, *)
  write (*, '(a)') 'Root-mean-square assessed errors, tol = 1e-9:'
  do k = 1, 4
    write (*, '(a,i0,a,es8.1)') '  component ', k, ': ', rmserr(k)
  end do
end program d02puf_example
