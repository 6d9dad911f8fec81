! s30faf example: up-and-out puts with barrier 120 and a rebate of 2.
program s30faf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem
  implicit none
  real(real64) :: x(3) = [90.0_real64, 100.0_real64, 110.0_real64], t(2) = [0.5_real64, 1.0_real64]
  real(real64) :: p(3, 2)
  integer(int64) :: ifail, i

  ifail = 0
  call s30faf('P', 'UO', 3_int64, 2_int64, x, 100.0_real64, 120.0_real64, 2.0_real64, t, 0.25_real64, &
              0.05_real64, 0.02_real64, p, 3_int64, ifail)
  write (*, '(a)') 'Up-and-out puts, barrier 120, rebate 2, s = 100, sigma = 0.25, r = 0.05, q = 0.02'
  do i = 1, 3
    write (*, '(f8.2, 2(2x, f11.6))') x(i), p(i, :)
  end do
end program s30faf_example
