! s15aef example: the error function erf(x).
program s15aef_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: s15aef
  implicit none
  real(real64), parameter :: xs(8) = [-2.0_real64, -0.5_real64, 0.0_real64, 1.0e-10_real64, &
                                      0.5_real64, 1.0_real64, 2.0_real64, 6.0_real64]
  integer(int64) :: ifail
  integer :: i
  real(real64) :: y

  write (*, '(a)') 's15aef example results'
  write (*, *)
  write (*, '(a)') '     x           erf(x)'
  do i = 1, size(xs)
    ifail = 0
    y = s15aef(xs(i), ifail)
    write (*, '(es9.2,2x,es22.15e2)') xs(i), y
  end do
end program s15aef_example
