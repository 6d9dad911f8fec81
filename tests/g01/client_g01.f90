! Client test: g01eaf, g01faf, s15adf and s15aef as a Fortran program uses
! them, with the three ifail conventions of soft failure and both cases of
! the tail character.
program client_g01
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: g01eaf, g01faf, s15adf, s15aef
  implicit none
  character(1), parameter :: tails(8) = ['L', 'U', 'S', 'C', 'l', 'u', 's', 'c']
  integer(int64) :: ifail
  integer :: t
  real(real64) :: v

  write (*, '(a)') 'g01eaf and g01faf at x = 1.5 and p = 0.1'
  do t = 1, 8
    ifail = 0
    v = g01eaf(tails(t), 1.5_real64, ifail)
    write (*, '(a,1x,es20.12e3,1x,i0)', advance='no') tails(t), v, ifail
    ifail = 0
    v = g01faf(tails(t), 0.1_real64, ifail)
    write (*, '(1x,f17.12,1x,i0)') v, ifail
  end do
  ifail = 0
  write (*, '(a,f17.15,1x,f17.15)') 's15adf, s15aef at 0.5: ', s15adf(0.5_real64, ifail), s15aef(0.5_real64, ifail)

  write (*, '(/,a)') 'Noisy soft failures (ifail = -1)'
  ifail = -1
  v = g01faf('L', 0.0_real64, ifail)
  write (*, '(a,i0,a,f4.1)') 'ifail = ', ifail, ', result ', v
  ifail = -1
  v = g01faf('u', 1.0_real64, ifail)
  write (*, '(a,i0,a,f4.1)') 'ifail = ', ifail, ', result ', v
  ifail = -1
  v = g01faf('X', 0.0_real64, ifail)
  write (*, '(a,i0,a,f4.1)') 'ifail = ', ifail, ', result ', v
  ifail = -1
  v = g01eaf('q', 2.0_real64, ifail)
  write (*, '(a,i0,a,f4.1)') 'ifail = ', ifail, ', result ', v

  write (*, '(/,a)') 'Quiet soft failure (ifail = 1)'
  ifail = 1
  v = g01faf('S', -0.5_real64, ifail)
  write (*, '(a,i0,a,f4.1)') 'ifail = ', ifail, ', result ', v

  write (*, '(/,a)') 'Hard failure (ifail = 0)'
  flush (6)
  ifail = 0
  v = g01faf('C', 2.0_real64, ifail)
  write (*, '(a)') 'not reached'
end program client_g01
