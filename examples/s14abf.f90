! s14abf example: the logarithm of the gamma function, ln Gamma(x).
program s14abf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: s14abf
  implicit none
  real(real64), parameter :: xs(10) = [1.0e-20_real64, 0.5_real64, 1.0_real64, 1.5_real64, 2.0_real64, &
                                       3.5_real64, 10.0_real64, 1.0e3_real64, 1.0e100_real64, 1.0e305_real64]
  integer(int64) :: ifail
  integer :: i
  real(real64) :: y

  write (*, '(a)') 's14abf example results'
  write (*, *)
  write (*, '(a)') '        x           ln Gamma(x)'
  do i = 1, size(xs)
    ifail = 0
    y = s14abf(xs(i), ifail)
    write (*, '(es12.4e3,2x,es23.15e3)') xs(i), y
  end do
end program s14abf_example
