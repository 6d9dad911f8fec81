! s14aef example: psi^(k)(x), the derivatives of the psi function.
program s14aef_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: s14aef
  implicit none
  real(real64), parameter :: xs(5) = [-2.5_real64, 0.5_real64, 1.0_real64, 3.75_real64, 100.0_real64]
  integer(int64) :: ifail, k
  integer :: i
  real(real64) :: y

  write (*, '(a)') 's14aef example results'
  write (*, *)
  write (*, '(a)') '     x     k        psi^(k)(x)'
  do i = 1, size(xs)
    do k = 0, 6, 3
      ifail = 0
      y = s14aef(xs(i), k, ifail)
      write (*, '(f8.2,2x,i2,2x,es23.15e3)') xs(i), k, y
    end do
  end do
end program s14aef_example
