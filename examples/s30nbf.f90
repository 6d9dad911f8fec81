! s30nbf example: Heston put prices and their sensitivities.
program s30nbf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem
  implicit none
  character(5), parameter :: names(6) = [character(5) :: 'price', 'delta', 'gamma', 'vega', 'theta', 'rho']
  real(real64) :: x(2) = [95.0_real64, 105.0_real64], t(1) = [1.0_real64]
  real(real64) :: g(2, 6)
  integer(int64) :: ifail, k

  ifail = 0
  call s30nbf('P', 2_int64, 1_int64, x, 100.0_real64, t, 0.3_real64, 1.5_real64, -0.7_real64, 0.04_real64, &
              0.06_real64, 0.0_real64, 0.03_real64, 0.01_real64, g(:, 1), 2_int64, g(:, 2), g(:, 3), g(:, 4), &
              g(:, 5), g(:, 6), ifail)
  write (*, '(a)') 'Heston put, s = 100, t = 1, r = 0.03, q = 0.01'
  write (*, '(a)') '           x = 95          x = 105'
  do k = 1, 6
    write (*, '(a6, 2f16.8)') names(k), g(:, k)
  end do
end program s30nbf_example
