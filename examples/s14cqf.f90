! s14cqf example: I_x(a, b) and its complement for vectors, a bad element in ivalid.
program s14cqf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: s14cqf
  implicit none
  real(real64), parameter :: a(6) = [1.0_real64, 2.0_real64, 0.5_real64, 30.0_real64, 0.0_real64, 2.0_real64]
  real(real64), parameter :: b(6) = [1.0_real64, 3.0_real64, 0.5_real64, 40.0_real64, 0.0_real64, 2.0_real64]
  real(real64), parameter :: x(6) = [0.25_real64, 0.5_real64, 0.1_real64, 0.45_real64, 0.5_real64, 1.5_real64]
  real(real64) :: w(6), w1(6)
  integer(int64) :: ifail, ivalid(6)
  integer :: i

  write (*, '(a)') 's14cqf example results'
  write (*, *)
  ifail = 1
  call s14cqf(6_int64, a, b, x, w, w1, ivalid, ifail)
  write (*, '(a,i0)') 'ifail = ', ifail
  write (*, '(a)') '     a      b      x          I_x(a,b)               1 - I_x(a,b)      ivalid'
  do i = 1, 6
    write (*, '(3(f6.2,1x),1x,es22.15e2,2x,es22.15e2,2x,i0)') a(i), b(i), x(i), w(i), w1(i), ivalid(i)
  end do
end program s14cqf_example
