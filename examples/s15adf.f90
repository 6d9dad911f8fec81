! s15adf example: the complementary error function erfc(x).
program s15adf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: s15adf
  implicit none
  real(real64), parameter :: xs(8) = [-10.0_real64, -1.0_real64, 0.0_real64, 0.5_real64, &
                                      1.0_real64, 5.0_real64, 10.0_real64, 26.0_real64]
  integer(int64) :: ifail
  integer :: i
  real(real64) :: y

  write (*, '(a)') 's15adf example results'
  write (*, *)
  write (*, '(a)') '     x           erfc(x)'
  do i = 1, size(xs)
    ifail = 0
    y = s15adf(xs(i), ifail)
    write (*, '(f7.2,2x,es22.15e3)') xs(i), y
  end do
end program s15adf_example
