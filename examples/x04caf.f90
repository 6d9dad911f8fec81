! x04caf example: print a matrix with more columns than fit on a line, then
! show the failure for an invalid matrix letter.
program x04caf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: x04caf
  implicit none
  real(real64) :: a(2, 9)
  integer(int64) :: i, j, ifail
  do j = 1, 9
    do i = 1, 2
      a(i, j) = real(i, real64) - real(j, real64) / 4.0_real64
    end do
  end do
  ifail = 0
  call x04caf('G', ' ', 2_int64, 9_int64, a, 2_int64, 'A 2 by 9 matrix', ifail)
  ifail = -1
  call x04caf('X', 'N', 2_int64, 9_int64, a, 2_int64, 'Not printed', ifail)
end program x04caf_example
