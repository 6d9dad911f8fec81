! s30jbf example: a jump-diffusion put and its sensitivities.
program s30jbf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem
  implicit none
  character(6), parameter :: names(12) = [character(6) :: 'price', 'delta', 'gamma', 'vega', 'theta', 'rho', &
                                          'vanna', 'charm', 'speed', 'colour', 'zomma', 'vomma']
  real(real64) :: x(2) = [95.0_real64, 105.0_real64], t(1) = [0.75_real64]
  real(real64) :: g(2, 12)
  integer(int64) :: ifail, k

  ifail = 0
  call s30jbf('P', 2_int64, 1_int64, x, 100.0_real64, t, 0.3_real64, 0.04_real64, 2.0_real64, 0.4_real64, &
              g(:, 1), 2_int64, g(:, 2), g(:, 3), g(:, 4), g(:, 5), g(:, 6), g(:, 7), g(:, 8), g(:, 9), &
              g(:, 10), g(:, 11), g(:, 12), ifail)
  write (*, '(a)') 'Jump-diffusion put, s = 100, t = 0.75, sigma = 0.3, r = 0.04, lambda = 2, jvol = 0.4'
  write (*, '(a)') '            x = 95          x = 105'
  do k = 1, 12
    write (*, '(a7, 2f16.8)') names(k), g(:, k)
  end do
end program s30jbf_example
