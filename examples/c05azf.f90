! c05azf example: the zero of exp(-x) - x in [0,1] by reverse communication.
program c05azf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: c05azf
  implicit none
  integer(int64) :: ifail, ind, k
  real(real64) :: x, y, fx, c(10)

  write (*, '(a)') 'c05azf example results'
  write (*, *)
  write (*, '(a)') '  Iterate        x               y'
  x = 0.0_real64
  y = 1.0_real64
  fx = 0.0_real64
  ind = 1
  k = 0
  do
    ifail = -1
    call c05azf(x, y, fx, 1.0e-5_real64, 0_int64, c, ind, ifail)
    if (ind == 0) exit
    fx = exp(-x) - x
    k = k + 1
    write (*, '(2x,i4,4x,f14.8,2x,f14.8)') k, x, y
  end do
  if (ifail == 0) then
    write (*, *)
    write (*, '(a,f12.5)') 'Zero at x = ', x
  end if
end program c05azf_example
