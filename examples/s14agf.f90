! s14agf example: ln Gamma(z) for complex z.
program s14agf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: s14agf
  implicit none
  complex(real64), parameter :: zs(6) = [(0.5_real64, 0.0_real64), (1.0_real64, 1.0_real64), &
                                         (-2.5_real64, 0.0_real64), (-2.5_real64, 1.0e-3_real64), &
                                         (3.0_real64, -4.0_real64), (100.0_real64, 50.0_real64)]
  complex(real64) :: w
  integer(int64) :: ifail
  integer :: i

  write (*, '(a)') 's14agf example results'
  write (*, *)
  write (*, '(a)') '        z                       ln Gamma(z)'
  do i = 1, size(zs)
    ifail = 0
    w = s14agf(zs(i), ifail)
    write (*, '(a,f7.2,a,f8.3,a,2x,a,es22.14e3,a,es22.14e3,a)') '(', zs(i)%re, ',', zs(i)%im, ')', &
      '(', w%re, ',', w%im, ')'
  end do
end program s14agf_example
