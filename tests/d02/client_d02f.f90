! Client test of the d02p Fortran interface: the stiffness warning in its
! two forms.  y' = -1000 (y - cos t) over [0, 20] with the 4(5) pair through
! the range and the step integrator.  The first warning (short form) and the
! one given when the evaluation budget runs out on the still stiff problem
! (long form, the evaluations first) are printed (noisy soft failure,
! ifail = -1); the others are counted quietly (ifail = 1).  Every warning
! leaves the problem alive; the answer at tend is checked.
module client_d02f_fun
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
end module client_d02f_fun

program client_d02f
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: d02pqf, d02pef, d02pff, d02ptf
  use client_d02f_fun, only: f
  implicit none
  integer(int64) :: first, long, warnings, n1, n2
  logical :: good

  ! A quiet pass finds the calls that give the first warning and the one at
  ! which the budget runs out (the long form); the integration is the same
  ! every time, so a second pass prints exactly those two.
  write (*, '(a)') 'Range integrator'
  call run(.false., 0_int64, 0_int64, n1, n2, warnings, good)
  call run(.false., n1, n2, first, long, warnings, good)
  write (*, '(a,i0,a,l1)') 'warnings: ', warnings, '; |y(20) - ref| < 1e-3: ', good
  write (*, '(a)') 'Step integrator'
  call run(.true., 0_int64, 0_int64, n1, n2, warnings, good)
  call run(.true., n1, n2, first, long, warnings, good)
  write (*, '(a,i0,a,l1)') 'warnings: ', warnings, '; |y(20) - ref| < 1e-3: ', good

contains

  subroutine run(step, noisy1, noisy2, first, long, warnings, good)
    logical, intent(in) :: step
    integer(int64), intent(in) :: noisy1, noisy2
    integer(int64), intent(out) :: first, long, warnings
    logical, intent(out) :: good
    real(real64), parameter :: tend = 20
    integer(int64) :: iwsav(32), lrwsav, ifail, code, iuser(1), fevals, before, stepcost, stepsok, calls
    real(real64) :: rwsav(256), yinit(1), thresh(1), t, y(1), yp(1), ymax(1), ruser(1), waste, hnext, yref

    yref = (cos(tend) + 1.0e-3_real64 * sin(tend)) / (1 + 1.0e-6_real64)
    yinit = 0
    thresh = 1.0e-8_real64
    lrwsav = 256
    ifail = 0
    call d02pqf(1_int64, 0.0_real64, tend, yinit, 1.0e-4_real64, thresh, 2_int64, 0.0_real64, iwsav, rwsav, &
                lrwsav, ifail)
    t = 0
    first = 0
    long = 0
    warnings = 0
    calls = 0
    fevals = 0
    do while (t < tend .and. calls < 100000)
      calls = calls + 1
      before = fevals
      ifail = merge(-1_int64, 1_int64, calls == noisy1 .or. calls == noisy2)
      if (step) then
        call d02pff(f, 1_int64, t, y, yp, iuser, ruser, iwsav, rwsav, ifail)
      else
        call d02pef(f, 1_int64, tend, t, y, yp, ymax, iuser, ruser, iwsav, rwsav, ifail)
      end if
      if (ifail /= 0 .and. ifail /= 3) stop 1
      code = ifail
      ifail = 0
      call d02ptf(fevals, stepcost, waste, stepsok, hnext, iwsav, rwsav, ifail)
      if (code == 3) then
        warnings = warnings + 1
        if (first == 0) first = calls
        if (long == 0 .and. before < 50000 .and. fevals >= 50000) long = calls
      end if
    end do
    good = abs(y(1) - yref) < 1.0e-3_real64
  end subroutine run
end program client_d02f
