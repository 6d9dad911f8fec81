! s14ccf example: the regularised incomplete beta function I_x(a, b).
program s14ccf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: s14ccf
  implicit none
  real(real64), parameter :: a(6) = [1.0_real64, 2.0_real64, 0.5_real64, 30.0_real64, 1000.0_real64, 0.01_real64]
  real(real64), parameter :: b(6) = [1.0_real64, 3.0_real64, 0.5_real64, 40.0_real64, 2000.0_real64, 5.0_real64]
  real(real64), parameter :: x(6) = [0.25_real64, 0.5_real64, 0.1_real64, 0.45_real64, 0.3_real64, 1.0e-4_real64]
  real(real64) :: w, w1
  integer(int64) :: ifail
  integer :: i

  write (*, '(a)') 's14ccf example results'
  write (*, *)
  write (*, '(a)') '      a          b          x            I_x(a,b)              1 - I_x(a,b)'
  do i = 1, 6
    ifail = 0
    call s14ccf(a(i), b(i), x(i), w, w1, ifail)
    write (*, '(3(es9.2e2,2x),es22.15e2,2x,es22.15e2)') a(i), b(i), x(i), w, w1
  end do
end program s14ccf_example
