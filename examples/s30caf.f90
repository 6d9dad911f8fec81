! s30caf example: cash-or-nothing binary puts paying 10.
program s30caf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem
  implicit none
  real(real64) :: x(3) = [90.0_real64, 100.0_real64, 110.0_real64], t(2) = [0.25_real64, 1.0_real64]
  real(real64) :: p(3, 2)
  integer(int64) :: ifail, i

  ifail = 0
  call s30caf('P', 3_int64, 2_int64, x, 100.0_real64, t, 0.3_real64, 0.04_real64, 0.0_real64, 10.0_real64, &
              p, 3_int64, ifail)
  write (*, '(a)') 'Binary put paying 10, s = 100, sigma = 0.3, r = 0.04, q = 0'
  do i = 1, 3
    write (*, '(f8.2, 2(2x, f11.8))') x(i), p(i, :)
  end do
end program s30caf_example
