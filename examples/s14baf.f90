! s14baf example: the regularised incomplete gamma functions P(a, x) and
! Q(a, x) = 1 - P(a, x).
program s14baf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: s14baf
  implicit none
  real(real64), parameter :: a(6) = [2.0_real64, 7.0_real64, 0.5_real64, 20.0_real64, 1.0e-8_real64, 100.0_real64]
  real(real64), parameter :: x(6) = [3.0_real64, 1.0_real64, 99.0_real64, 21.0_real64, 1.0_real64, 250.0_real64]
  real(real64) :: p, q
  integer(int64) :: ifail
  integer :: i

  write (*, '(a)') 's14baf example results'
  write (*, *)
  write (*, '(a)') '      a          x             P(a,x)                  Q(a,x)'
  do i = 1, 6
    ifail = 0
    call s14baf(a(i), x(i), 0.0_real64, p, q, ifail)
    write (*, '(es9.2e2,2x,es9.2e2,2x,es22.15e3,2x,es22.15e3)') a(i), x(i), p, q
  end do
end program s14baf_example
