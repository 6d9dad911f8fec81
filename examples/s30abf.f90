! s30abf example: a European call with its eleven sensitivities.
program s30abf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem
  implicit none
  real(real64) :: x(2) = [95.0_real64, 105.0_real64], t(1) = [0.75_real64]
  real(real64) :: p(2, 1), g(2, 1, 11)
  character(6), parameter :: name(11) = [character(6) :: 'delta', 'gamma', 'vega', 'theta', 'rho', 'vanna', &
                                         'charm', 'speed', 'colour', 'zomma', 'vomma']
  integer(int64) :: ifail, k

  ifail = 0
  call s30abf('C', 2_int64, 1_int64, x, 100.0_real64, t, 0.3_real64, 0.04_real64, 0.01_real64, p, 2_int64, &
              g(:, :, 1), g(:, :, 2), g(:, :, 3), g(:, :, 4), g(:, :, 5), g(:, :, 6), g(:, :, 7), g(:, :, 8), &
              g(:, :, 9), g(:, :, 10), g(:, :, 11), ifail)
  write (*, '(a)') 'European call, s = 100, t = 0.75, sigma = 0.3, r = 0.04, q = 0.01'
  write (*, '(a8, 2es15.6)') 'strike  ', x
  write (*, '(a8, 2es15.6)') 'price   ', p(:, 1)
  do k = 1, 11
    write (*, '(a8, 2es15.6)') name(k), g(:, 1, k)
  end do
end program s30abf_example
