! s14acf example: psi(x) - ln x.
program s14acf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: s14acf
  implicit none
  real(real64), parameter :: xs(8) = [1.0e-5_real64, 0.1_real64, 0.5_real64, 1.0_real64, 2.5_real64, &
                                      10.0_real64, 1.0e3_real64, 1.0e10_real64]
  integer(int64) :: ifail
  integer :: i
  real(real64) :: y

  write (*, '(a)') 's14acf example results'
  write (*, *)
  write (*, '(a)') '        x          psi(x) - ln x'
  do i = 1, size(xs)
    ifail = 0
    y = s14acf(xs(i), ifail)
    write (*, '(es12.4e3,2x,es23.15e3)') xs(i), y
  end do
end program s14acf_example
