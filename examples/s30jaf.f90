! s30jaf example: European put prices in Merton's jump-diffusion model.
program s30jaf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem
  implicit none
  real(real64) :: x(3) = [90.0_real64, 100.0_real64, 110.0_real64], t(2) = [0.5_real64, 1.0_real64]
  real(real64) :: p(3, 2)
  integer(int64) :: ifail, i

  ifail = 0
  call s30jaf('P', 3_int64, 2_int64, x, 100.0_real64, t, 0.25_real64, 0.05_real64, 1.0_real64, 0.3_real64, &
              p, 3_int64, ifail)
  write (*, '(a)') 'Jump-diffusion put, s = 100, sigma = 0.25, r = 0.05, lambda = 1, jvol = 0.3'
  write (*, '(a, f4.2, a, f4.2)') '  strike   t = ', t(1), '     t = ', t(2)
  do i = 1, 3
    write (*, '(f8.2, 2(2x, f11.6))') x(i), p(i, :)
  end do

  ! jvol = 1 (all variance from jumps) is refused.
  ifail = -1
  call s30jaf('P', 3_int64, 2_int64, x, 100.0_real64, t, 0.25_real64, 0.05_real64, 1.0_real64, 1.0_real64, &
              p, 3_int64, ifail)
  write (*, '(a, i0)') 'ifail = ', ifail
end program s30jaf_example
