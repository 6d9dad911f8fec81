! s30acf example: European options element by element; the third element
! has an unknown option type and is marked in ivalid.
program s30acf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem
  implicit none
  character(1) :: calput(3) = ['C', 'p', 'X']
  real(real64) :: x(3) = [100.0_real64, 100.0_real64, 95.0_real64], s(3) = 100.0_real64
  real(real64) :: t(3) = [1.0_real64, 1.0_real64, 0.5_real64], sigma(3) = 0.2_real64
  real(real64) :: r(3) = 0.05_real64, q(3) = 0.0_real64, p(3)
  integer(int64) :: ivalid(3), ifail, k

  ifail = 1
  call s30acf(calput, 3_int64, x, s, t, sigma, r, q, p, ivalid, ifail)
  write (*, '(a, i0)') 'ifail = ', ifail
  do k = 1, 3
    write (*, '(i4, 3x, a1, f10.3, f14.8, i4)') k, calput(k), x(k), p(k), ivalid(k)
  end do
end program s30acf_example
