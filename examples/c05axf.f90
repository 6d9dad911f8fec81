! c05axf example: the zero of x**3 - 2x - 5 from x = 0 by continuation and
! reverse communication, counting the requests of each kind.
program c05axf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: c05axf
  implicit none
  integer(int64) :: ifail, ind, counts(2:4)
  real(real64) :: x, fx, c(36)

  write (*, '(a)') 'c05axf example results'
  write (*, *)
  x = 0.0_real64
  fx = 0.0_real64
  counts = 0
  ind = 1
  do
    ifail = -1
    call c05axf(x, fx, 1.0e-12_real64, 0_int64, 1.0e-8_real64, c, ind, ifail)
    if (ind == 0) exit
    counts(ind) = counts(ind) + 1
    fx = x**3 - 2.0_real64 * x - 5.0_real64
  end do
  if (ifail /= 0) stop 1
  write (*, '(a,f16.12)') 'Zero at x = ', x
  write (*, '(a,i0,a,i0,a,i0,a)') 'Requests: ', counts(2), ' initial value, ', counts(3), &
    ' derivative estimate, ', counts(4), ' continuation and final solve'
end program c05axf_example
