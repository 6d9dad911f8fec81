! s30bbf example: a floating-strike lookback put with its sensitivities.
program s30bbf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem
  implicit none
  real(real64) :: sm(2) = [100.0_real64, 115.0_real64], t(1) = [1.0_real64]
  real(real64) :: p(2, 1), g(2, 1, 5)
  character(6), parameter :: name(5) = [character(6) :: 'delta', 'gamma', 'vega', 'theta', 'rho']
  integer(int64) :: ifail, k

  ifail = 0
  call s30bbf('P', 2_int64, 1_int64, sm, 100.0_real64, t, 0.3_real64, 0.04_real64, 0.01_real64, p, 2_int64, &
              g(:, :, 1), g(:, :, 2), g(:, :, 3), g(:, :, 4), g(:, :, 5), ifail)
  write (*, '(a)') 'Lookback put, s = 100, t = 1, sigma = 0.3, r = 0.04, q = 0.01'
  write (*, '(a8, 2es15.6)') 'maximum ', sm
  write (*, '(a8, 2es15.6)') 'price   ', p(:, 1)
  do k = 1, 5
    write (*, '(a8, 2es15.6)') name(k), g(:, 1, k)
  end do
end program s30bbf_example
