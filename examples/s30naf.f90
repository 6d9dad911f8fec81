! s30naf example: European put prices in Heston's stochastic-volatility model.
program s30naf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem
  implicit none
  real(real64) :: x(3) = [90.0_real64, 100.0_real64, 110.0_real64], t(2) = [0.5_real64, 1.0_real64]
  real(real64) :: p(3, 2)
  integer(int64) :: ifail, i

  ifail = 0
  call s30naf('P', 3_int64, 2_int64, x, 100.0_real64, t, 0.3_real64, 1.5_real64, -0.7_real64, 0.04_real64, &
              0.06_real64, 0.0_real64, 0.03_real64, 0.01_real64, p, 3_int64, ifail)
  write (*, '(a)') 'Heston put, s = 100, r = 0.03, q = 0.01'
  write (*, '(a, f4.2, a, f4.2)') '  strike   t = ', t(1), '     t = ', t(2)
  do i = 1, 3
    write (*, '(f8.2, 2(2x, f11.6))') x(i), p(i, :)
  end do

  ! |corr| > 1 is refused.
  ifail = -1
  call s30naf('P', 3_int64, 2_int64, x, 100.0_real64, t, 0.3_real64, 1.5_real64, -1.2_real64, 0.04_real64, &
              0.06_real64, 0.0_real64, 0.03_real64, 0.01_real64, p, 3_int64, ifail)
  write (*, '(a, i0)') 'ifail = ', ifail
end program s30naf_example
