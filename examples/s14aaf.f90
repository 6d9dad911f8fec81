! s14aaf example: the gamma function Gamma(x).
program s14aaf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: s14aaf
  implicit none
  real(real64), parameter :: xs(10) = [-2.5_real64, -0.5_real64, 1.0e-10_real64, 0.5_real64, 1.0_real64, &
                                       1.5_real64, 5.0_real64, 10.1_real64, 100.0_real64, 170.0_real64]
  integer(int64) :: ifail
  integer :: i
  real(real64) :: y

  write (*, '(a)') 's14aaf example results'
  write (*, *)
  write (*, '(a)') '        x             Gamma(x)'
  do i = 1, size(xs)
    ifail = 0
    y = s14aaf(xs(i), ifail)
    write (*, '(es12.4e2,2x,es23.15e3)') xs(i), y
  end do
end program s14aaf_example
