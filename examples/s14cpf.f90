! s14cpf example: ln B(a, b) for vectors, with a bad element reported in ivalid.
program s14cpf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: s14cpf
  implicit none
  real(real64), parameter :: a(6) = [1.0_real64, 0.5_real64, 2.0_real64, 1.0e-5_real64, 50.0_real64, -1.0_real64]
  real(real64), parameter :: b(6) = [1.0_real64, 0.5_real64, 3.0_real64, 10.0_real64, 1.0e6_real64, 2.0_real64]
  real(real64) :: f(6)
  integer(int64) :: ifail, ivalid(6)
  integer :: i

  write (*, '(a)') 's14cpf example results'
  write (*, *)
  ifail = 1
  call s14cpf(6_int64, a, b, f, ivalid, ifail)
  write (*, '(a,i0)') 'ifail = ', ifail
  write (*, '(a)') '        a            b              ln B(a,b)      ivalid'
  do i = 1, 6
    write (*, '(es11.4e2,2x,es11.4e2,2x,es23.15e3,2x,i0)') a(i), b(i), f(i), ivalid(i)
  end do
end program s14cpf_example
