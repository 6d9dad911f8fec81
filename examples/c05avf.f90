! c05avf example: an interval on which exp(-x) - x changes sign, searched
! from x = 3 with step 0.5 inside [0,10] by reverse communication (the walk
! goes up to the bound first, then back from x = 3); then the
! zero on it with c05azf, started from the values the search left.
program c05avf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: c05avf, c05azf
  implicit none
  integer(int64) :: ifail, ind
  real(real64) :: x, y, fx, c(12), cz(10)

  write (*, '(a)') 'c05avf example results'
  write (*, *)
  write (*, '(a)') '  ind        x            f(x)'
  x = 3.0_real64
  y = 0.0_real64
  fx = 0.0_real64
  ind = 1
  do
    ifail = -1
    call c05avf(x, fx, 0.5_real64, 0.0_real64, 10.0_real64, y, c, ind, ifail)
    if (ind == 0) exit
    fx = exp(-x) - x
    write (*, '(2x,i3,2x,f10.4,2x,f14.8)') ind, x, fx
  end do
  if (ifail /= 0) stop 1
  write (*, *)
  write (*, '(a,f6.4,a,f6.4)') 'Sign change between x = ', x, ' and y = ', y

  ! f(x) is in fx and f(y) in c(1): c05azf can start with ind = -1.
  cz(1) = c(1)
  ind = -1
  do
    ifail = -1
    call c05azf(x, y, fx, 1.0e-10_real64, 1_int64, cz, ind, ifail)
    if (ind == 0) exit
    fx = exp(-x) - x
  end do
  write (*, '(a,f12.8)') 'Zero at x = ', x
end program c05avf_example
