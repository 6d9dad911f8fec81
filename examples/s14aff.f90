! s14aff example: psi^(k)(z) for complex z.
program s14aff_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: s14aff
  implicit none
  complex(real64), parameter :: zs(4) = [(1.0_real64, 1.0_real64), (-2.5_real64, 0.5_real64), &
                                         (0.5_real64, -3.0_real64), (30.0_real64, 10.0_real64)]
  complex(real64) :: w
  integer(int64) :: ifail, k
  integer :: i

  write (*, '(a)') 's14aff example results'
  write (*, *)
  write (*, '(a)') '        z            k             psi^(k)(z)'
  do i = 1, size(zs)
    do k = 0, 2, 2
      ifail = 0
      w = s14aff(zs(i), k, ifail)
      write (*, '(a,f6.2,a,f6.2,a,2x,i2,2x,a,es22.14e3,a,es22.14e3,a)') '(', zs(i)%re, ',', zs(i)%im, ')', k, &
        '(', w%re, ',', w%im, ')'
    end do
  end do
end program s14aff_example
