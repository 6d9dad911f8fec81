! s14adf example: scaled derivatives (-1)^(k+1) psi^(k)(x)/k!, k = n..n+m-1.
program s14adf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: s14adf
  implicit none
  real(real64), parameter :: xs(4) = [0.1_real64, 1.0_real64, 2.5_real64, 40.0_real64]
  real(real64) :: ans(4)
  integer(int64) :: ifail
  integer :: i

  write (*, '(a)') 's14adf example results'
  write (*, *)
  write (*, '(a)') '     x       k=0            k=1            k=2            k=9'
  do i = 1, size(xs)
    ifail = 0
    call s14adf(xs(i), 0_int64, 3_int64, ans, ifail)
    ifail = 0
    call s14adf(xs(i), 9_int64, 1_int64, ans(4:4), ifail)
    write (*, '(f7.2,4(2x,es13.6e2))') xs(i), ans
  end do
end program s14adf_example
