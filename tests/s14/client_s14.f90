! Client test: the s14 routines from Fortran with `use zem`; every failure
! printed by the noisy soft-failure convention (ifail = -1), with its ifail.
program client_s14
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: s14aaf, s14abf, s14acf, s14anf, s14apf, s14baf
  implicit none
  real(real64) :: xs(5) = [171.0_real64, -171.0_real64, 0.0_real64, -4.0_real64, 2.5_real64]
  real(real64) :: f(5), y, p, q
  integer(int64) :: ifail, ivalid(5), i

  do i = 1, 5
    ifail = -1
    y = s14aaf(xs(i), ifail)
    write (*, '(a,es24.16e3,a,i0)') 's14aaf =', y, '  ifail ', ifail
  end do
  call scalar('s14abf', -1.0_real64, -1_int64)
  call scalar('s14abf', 3.0e305_real64, -1_int64)
  ! A success right after a failure, in each mode that returns: ifail 0,
  ! the value, no message.
  call scalar('s14abf quiet', 0.0_real64, 1_int64)
  call scalar('s14abf quiet', 3.0_real64, 1_int64)
  call scalar('s14aaf', -3.0_real64, -1_int64)
  call scalar('s14aaf', 5.0_real64, -1_int64)
  call scalar('s14aaf hard', 0.5_real64, 0_int64)
  call scalar('s14abf hard', 10.0_real64, 0_int64)
  ifail = -1
  call s14anf(5_int64, xs, f, ivalid, ifail)
  write (*, '(a,i0,a,5(1x,i0))') 's14anf ifail ', ifail, ' ivalid', ivalid
  ifail = -1
  call s14apf(5_int64, xs, f, ivalid, ifail)
  write (*, '(a,i0,a,5(1x,i0))') 's14apf ifail ', ifail, ' ivalid', ivalid
  ifail = 1
  call s14apf(-2_int64, xs, f, ivalid, ifail)
  write (*, '(a,i0)') 's14apf n = -2, quiet: ifail ', ifail
  ifail = -1
  call s14baf(-0.5_real64, 1.0_real64, 0.0_real64, p, q, ifail)
  write (*, '(a,2es12.4e2,a,i0)') 's14baf p, q =', p, q, '  ifail ', ifail
  ifail = -1
  call s14baf(0.5_real64, -1.0_real64, 0.0_real64, p, q, ifail)
  write (*, '(a,2es12.4e2,a,i0)') 's14baf p, q =', p, q, '  ifail ', ifail
  ifail = -1
  y = s14acf(1.0e308_real64, ifail)
  write (*, '(a,es24.16e3,a,i0)') 's14acf =', y, '  ifail ', ifail
  ifail = -1
  y = s14acf(1.0e-309_real64, ifail)
  write (*, '(a,es24.16e3,a,i0)') 's14acf =', y, '  ifail ', ifail
contains
  ! One call of s14aaf or s14abf (by the label's first six characters) with
  ! ifail set to mode first, printed under the label.
  subroutine scalar(label, x, mode)
    character(*), intent(in) :: label
    real(real64), intent(in) :: x
    integer(int64), intent(in) :: mode
    integer(int64) :: fl
    real(real64) :: v
    fl = mode
    if (label(1:6) == 's14aaf') then
      v = s14aaf(x, fl)
    else
      v = s14abf(x, fl)
    end if
    write (*, '(a,es24.16e3,a,i0)') label // ' =', v, '  ifail ', fl
  end subroutine scalar
end program client_s14
