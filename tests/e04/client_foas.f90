! Client test of e04kff as a Fortran program uses it: a small
! bound-constrained problem solved quietly, the results read back with
! e04rxf, and a user stop through inform reported by ifail = -1.
module client_foas_funs
  use, intrinsic :: iso_fortran_env, only: int64, real64
  implicit none
contains
  subroutine objfun(nvar, x, fx, inform, iuser, ruser)
    integer(int64), intent(in) :: nvar
    real(real64), intent(in) :: x(nvar)
    real(real64), intent(out) :: fx
    integer(int64), intent(inout) :: inform
    integer(int64), intent(inout) :: iuser(*)
    real(real64), intent(inout) :: ruser(*)
    fx = sum((x - ruser(1:nvar))**2)
    iuser(1) = iuser(1) + 1
    if (iuser(2) > 0 .and. iuser(1) >= iuser(2)) inform = -9
  end subroutine objfun
  subroutine objgrd(nvar, x, nnzfd, fdx, inform, iuser, ruser)
    integer(int64), intent(in) :: nvar, nnzfd
    real(real64), intent(in) :: x(nvar)
    real(real64), intent(inout) :: fdx(nnzfd)
    integer(int64), intent(inout) :: inform
    integer(int64), intent(inout) :: iuser(*)
    real(real64), intent(inout) :: ruser(*)
    fdx = 2.0_real64 * (x - ruser(1:nvar))
  end subroutine objgrd
  subroutine monit(nvar, x, inform, rinfo, stats, iuser, ruser)
    integer(int64), intent(in) :: nvar
    real(real64), intent(in) :: x(nvar), rinfo(100), stats(100)
    integer(int64), intent(inout) :: inform
    integer(int64), intent(inout) :: iuser(*)
    real(real64), intent(inout) :: ruser(*)
  end subroutine monit
end module client_foas_funs

program client_foas
  use, intrinsic :: iso_c_binding, only: c_ptr, c_null_ptr
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem
  use client_foas_funs
  implicit none
  type(c_ptr) :: h
  integer(int64) :: ifail, iuser(2), idx(3) = [1, 2, 3]
  real(real64) :: x(3), u(3), rinfo(100), stats(100), ruser(3)
  real(real64) :: bl(3) = [0.0_real64, 0.0_real64, -1.0_real64], bu(3) = [1.0_real64, 1.0_real64, 1.0_real64]

  ! minimize |x - c|^2 over the box: the solution clips c = (2, 0.5, -3).
  ruser = [2.0_real64, 0.5_real64, -3.0_real64]
  h = c_null_ptr
  ifail = 0
  call e04raf(h, 3_int64, ifail)
  call e04rgf(h, 3_int64, idx, ifail)
  call e04rhf(h, 3_int64, bl, bu, ifail)
  call e04zmf(h, 'Print Level = 0', ifail)
  x = 0.5_real64
  iuser = 0
  call e04kff(h, objfun, objgrd, monit, 3_int64, x, rinfo, stats, iuser, ruser, ifail)
  write (*, '(a,i0)') 'ifail = ', ifail
  write (*, '(a,3f10.6)') 'x = ', x
  call e04rxf(h, 'DUAL VARIABLES', 0_int64, 3_int64, u, ifail)
  write (*, '(a,3f10.6)') 'u = ', u
  ! A stop asked for by inform at the second evaluation.
  x = 0.5_real64
  iuser = [0_int64, 2_int64]
  ifail = -1
  call e04kff(h, objfun, objgrd, monit, 3_int64, x, rinfo, stats, iuser, ruser, ifail)
  write (*, '(a,i0)') 'ifail = ', ifail
  ! nvar not the handle's.
  ifail = -1
  call e04kff(h, objfun, objgrd, monit, 2_int64, x, rinfo, stats, iuser, ruser, ifail)
  write (*, '(a,i0)') 'ifail = ', ifail
  call e04rzf(h, ifail)
end program client_foas
