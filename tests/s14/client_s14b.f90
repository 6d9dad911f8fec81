! Client test: s14ad, s14ae, s14af, s14ag, s14cc, s14cp, s14cq from Fortran
! with `use zem`; failures printed by the noisy soft-failure convention
! (ifail = -1), with their ifail.
program client_s14b
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: s14adf, s14aef, s14aff, s14agf, s14ccf, s14cpf, s14cqf
  implicit none
  real(real64) :: y, ans(2), w, w1, f(3), qw(3), qw1(3)
  real(real64) :: pa(3) = [1.0_real64, -2.0_real64, 2.0_real64], pb(3) = [1.0_real64, 1.0_real64, 3.0_real64]
  real(real64) :: qx(3) = [0.5_real64, 0.5_real64, -0.5_real64]
  complex(real64) :: z
  integer(int64) :: ifail, ivalid(3)

  ifail = -1
  y = s14aef(2.0_real64, 9_int64, ifail)
  write (*, '(a,es24.16e3,a,i0)') 's14aef =', y, '  ifail ', ifail
  ifail = -1
  y = s14aef(-4.0_real64, 0_int64, ifail)
  write (*, '(a,es24.16e3,a,i0)') 's14aef =', y, '  ifail ', ifail
  ifail = 0
  y = s14aef(1.0_real64, 1_int64, ifail)
  write (*, '(a,es24.16e3,a,i0)') 's14aef =', y, '  ifail ', ifail
  ifail = -1
  call s14adf(1.0_real64, 0_int64, 200_int64, ans, ifail)
  write (*, '(a,i0)') 's14adf m = 200: ifail ', ifail
  ifail = -1
  call s14adf(1.0e-200_real64, 2_int64, 2_int64, ans, ifail)
  write (*, '(a,2es24.16e3,a,i0)') 's14adf =', ans, '  ifail ', ifail
  ifail = -1
  z = s14aff((1.0_real64, 2.0_real64), 6_int64, ifail)
  write (*, '(a,2es24.16e3,a,i0)') 's14aff =', z, '  ifail ', ifail
  ifail = -1
  z = s14aff((0.0_real64, 0.0_real64), 0_int64, ifail)
  write (*, '(a,2es24.16e3,a,i0)') 's14aff =', z, '  ifail ', ifail
  ifail = 0
  z = s14aff((1.0_real64, 0.0_real64), 0_int64, ifail)
  write (*, '(a,2es24.16e3,a,i0)') 's14aff =', z, '  ifail ', ifail
  ifail = -1
  z = s14agf((-7.0_real64, 0.0_real64), ifail)
  write (*, '(a,2es24.16e3,a,i0)') 's14agf =', z, '  ifail ', ifail
  ifail = 0
  z = s14agf((1.0_real64, 1.0_real64), ifail)
  write (*, '(a,2es24.16e3,a,i0)') 's14agf =', z, '  ifail ', ifail
  ifail = -1
  call s14ccf(1.0_real64, 1.0_real64, -0.5_real64, w, w1, ifail)
  write (*, '(a,2es24.16e3,a,i0)') 's14ccf =', w, w1, '  ifail ', ifail
  ifail = -1
  call s14ccf(0.0_real64, 0.0_real64, 0.5_real64, w, w1, ifail)
  write (*, '(a,2es24.16e3,a,i0)') 's14ccf =', w, w1, '  ifail ', ifail
  ifail = 0
  call s14ccf(2.0_real64, 3.0_real64, 0.25_real64, w, w1, ifail)
  write (*, '(a,2es24.16e3,a,i0)') 's14ccf =', w, w1, '  ifail ', ifail
  ifail = -1
  call s14cpf(3_int64, pa, pb, f, ivalid, ifail)
  write (*, '(a,i0,a,3(1x,i0))') 's14cpf ifail ', ifail, ' ivalid', ivalid
  ifail = -1
  call s14cqf(3_int64, pa, pb, qx, qw, qw1, ivalid, ifail)
  write (*, '(a,i0,a,3(1x,i0))') 's14cqf ifail ', ifail, ' ivalid', ivalid
  ifail = 1
  call s14cqf(-1_int64, pa, pb, qx, qw, qw1, ivalid, ifail)
  write (*, '(a,i0)') 's14cqf n = -1, quiet: ifail ', ifail
end program client_s14b
