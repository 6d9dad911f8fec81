! s14anf example: Gamma(x) for a vector of arguments, with a per-element
! status in ivalid (the third and fourth arguments are invalid).
program s14anf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: s14anf
  implicit none
  real(real64), parameter :: x(6) = [0.5_real64, 2.5_real64, -3.0_real64, 0.0_real64, 25.0_real64, 1.0e-3_real64]
  real(real64) :: f(6)
  integer(int64) :: ivalid(6), ifail
  integer :: i

  write (*, '(a)') 's14anf example results'
  write (*, *)
  ifail = 1
  call s14anf(6_int64, x, f, ivalid, ifail)
  if (ifail == 1) write (*, '(a,/)') 'Warning: at least one value of x was invalid (ifail = 1)'
  write (*, '(a)') '       x        Gamma(x)          ivalid'
  do i = 1, 6
    write (*, '(es10.3e2,2x,es22.15e3,2x,i0)') x(i), f(i), ivalid(i)
  end do
end program s14anf_example
