! s30baf example: floating-strike lookback puts.
program s30baf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem
  implicit none
  real(real64) :: sm(3) = [100.0_real64, 110.0_real64, 120.0_real64], t(2) = [0.5_real64, 1.0_real64]
  real(real64) :: p(3, 2)
  integer(int64) :: ifail, i

  ifail = 0
  call s30baf('P', 3_int64, 2_int64, sm, 100.0_real64, t, 0.25_real64, 0.05_real64, 0.02_real64, p, 3_int64, ifail)
  write (*, '(a)') 'Lookback puts, s = 100, sigma = 0.25, r = 0.05, q = 0.02'
  do i = 1, 3
    write (*, '(f9.2, 2(2x, f11.6))') sm(i), p(i, :)
  end do
end program s30baf_example
