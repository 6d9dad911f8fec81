! g01eaf example: tail probabilities of the standard Normal distribution.
program g01eaf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: g01eaf
  implicit none
  character(1), parameter :: tails(7) = ['L', 'U', 'S', 'C', 'U', 'U', 'L']
  real(real64), parameter :: xs(7) = [1.96_real64, 1.96_real64, 1.96_real64, 1.96_real64, &
                                      10.0_real64, 30.0_real64, -37.5_real64]
  integer(int64) :: ifail
  integer :: i
  real(real64) :: p

  write (*, '(a)') 'g01eaf example results'
  write (*, *)
  write (*, '(a)') ' tail      x        probability'
  do i = 1, size(xs)
    ifail = 0
    p = g01eaf(tails(i), xs(i), ifail)
    write (*, '(2x,a,3x,f7.2,2x,es18.10e3)') tails(i), xs(i), p
  end do

  ! An invalid tail: with ifail = -1 the message is printed and control
  ! returns with the result 0.0.
  write (*, *)
  ifail = -1
  p = g01eaf('T', 1.0_real64, ifail)
  write (*, '(a,i0,a,f3.1)') 'ifail = ', ifail, ', result = ', p
end program g01eaf_example
