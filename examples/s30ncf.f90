! s30ncf example: puts in Heston's model with a term structure of three periods.
program s30ncf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem
  implicit none
  real(real64) :: x(3) = [90.0_real64, 100.0_real64, 110.0_real64]
  real(real64) :: ts(3) = [0.25_real64, 0.25_real64, 0.5_real64]
  real(real64) :: alpha(3) = [0.5_real64, 0.4_real64, 0.3_real64], lambda(3) = [2.0_real64, 1.5_real64, 1.0_real64]
  real(real64) :: corr(3) = [-0.8_real64, -0.7_real64, -0.6_real64], sigmat(3) = [0.3_real64, 0.25_real64, 0.22_real64]
  real(real64) :: p(3)
  integer(int64) :: ifail, i

  ifail = 0
  call s30ncf('P', 3_int64, 3_int64, x, 102.0_real64, 0.97_real64, ts, 1.0_real64, alpha, lambda, corr, sigmat, &
              0.04_real64, p, ifail)
  write (*, '(a)') 'Term-structure Heston put, fwd = 102, disc = 0.97, t = 1, var0 = 0.04'
  do i = 1, 3
    write (*, '(f8.2, 2x, f11.6)') x(i), p(i)
  end do

  ! numts = 0 is refused.
  ifail = -1
  call s30ncf('P', 3_int64, 0_int64, x, 102.0_real64, 0.97_real64, ts, 1.0_real64, alpha, lambda, corr, sigmat, &
              0.04_real64, p, ifail)
  write (*, '(a, i0)') 'ifail = ', ifail
end program s30ncf_example
