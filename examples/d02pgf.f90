! d02pgf example: the harmonic oscillator y'' = -y by reverse
! communication: the program evaluates every derivative itself.
program d02pgf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: d02pqf, d02pgf
  implicit none
  integer(int64) :: iwsav(32), lrwsav, ifail, irevcm, evaluations, steps
  real(real64) :: rwsav(128), yinit(2), thresh(2), t, y(2), yp(2), tnow, ynow(2), ypnow(2)

  write (*, '(a)') 'd02pgf example results'
  write (*, *)
  yinit = [1.0_real64, 0.0_real64]
  thresh = 1.0e-8_real64
  lrwsav = 128
  ifail = 0
  call d02pqf(2_int64, 0.0_real64, 10.0_real64, yinit, 1.0e-6_real64, thresh, 1_int64, 0.0_real64, iwsav, rwsav, &
              lrwsav, ifail)
  tnow = 0
  evaluations = 0
  steps = 0
  do while (tnow < 10)
    irevcm = 0
    do
      ifail = 0
      call d02pgf(irevcm, 2_int64, t, y, yp, tnow, ynow, ypnow, iwsav, rwsav, ifail)
      if (irevcm == 0) exit
      yp = [y(2), -y(1)]
      evaluations = evaluations + 1
    end do
    steps = steps + 1
  end do
  write (*, '(a,f4.1,a,f9.6,a,f9.6)') 't = ', tnow, ': y = ', ynow(1), ', y'' = ', ynow(2)
  write (*, '(a,f9.6,a,f9.6)') 'cos(t) = ', cos(10.0_real64), ', -sin(t) = ', -sin(10.0_real64)
  write (*, '(i0,a,i0,a)') steps, ' steps, ', evaluations, ' evaluations'

  ! A negative irevcm is refused.
  write (*, *)
  irevcm = -1
  ifail = -1
  call d02pgf(irevcm, 2_int64, t, y, yp, tnow, ynow, ypnow, iwsav, rwsav, ifail)
end program d02pgf_example
