! s30qcf example: American calls on a dividend-paying stock.
program s30qcf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem
  implicit none
  real(real64) :: x(3) = [90.0_real64, 100.0_real64, 110.0_real64], t(2) = [0.5_real64, 2.0_real64]
  real(real64) :: p(3, 2)
  integer(int64) :: ifail, i

  ifail = 0
  call s30qcf('C', 3_int64, 2_int64, x, 100.0_real64, t, 0.3_real64, 0.03_real64, 0.07_real64, p, 3_int64, ifail)
  write (*, '(a)') 'American calls, s = 100, sigma = 0.3, r = 0.03, q = 0.07'
  do i = 1, 3
    write (*, '(f8.2, 2(2x, f11.6))') x(i), p(i, :)
  end do
end program s30qcf_example
