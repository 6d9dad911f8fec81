! g01faf example: deviates of the standard Normal distribution.
program g01faf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: g01faf
  implicit none
  character(1), parameter :: tails(5) = ['L', 'U', 'S', 'C', 'L']
  real(real64), parameter :: ps(5) = [0.975_real64, 0.025_real64, 0.05_real64, 0.95_real64, 1.0e-300_real64]
  integer(int64) :: ifail
  integer :: i
  real(real64) :: x

  write (*, '(a)') 'g01faf example results'
  write (*, *)
  write (*, '(a)') ' tail       p          deviate'
  do i = 1, size(ps)
    ifail = 0
    x = g01faf(tails(i), ps(i), ifail)
    write (*, '(2x,a,2x,es10.3e3,2x,f18.14)') tails(i), ps(i), x
  end do

  ! p must lie strictly between 0 and 1: with ifail = -1 the message is
  ! printed and control returns with the result 0.0.
  write (*, *)
  ifail = -1
  x = g01faf('L', 0.0_real64, ifail)
  write (*, '(a,i0,a,f3.1)') 'ifail = ', ifail, ', result = ', x
end program g01faf_example
