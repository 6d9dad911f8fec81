! e04kff example: an extended Rosenbrock problem with 100000 variables and
! simple bounds, solved by the first-order active-set method.  Every second
! variable is bounded above by 0.5, which is active at the solution.
module e04kff_funs
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
    integer(int64) :: i
    fx = 0.0_real64
    do i = 1, nvar - 1, 2
      fx = fx + 100.0_real64 * (x(i + 1) - x(i)**2)**2 + (1.0_real64 - x(i))**2
    end do
  end subroutine objfun

  subroutine objgrd(nvar, x, nnzfd, fdx, inform, iuser, ruser)
    integer(int64), intent(in) :: nvar, nnzfd
    real(real64), intent(in) :: x(nvar)
    real(real64), intent(inout) :: fdx(nnzfd)
    integer(int64), intent(inout) :: inform
    integer(int64), intent(inout) :: iuser(*)
    real(real64), intent(inout) :: ruser(*)
    integer(int64) :: i
    do i = 1, nvar - 1, 2
      fdx(i) = -400.0_real64 * (x(i + 1) - x(i)**2) * x(i) - 2.0_real64 * (1.0_real64 - x(i))
      fdx(i + 1) = 200.0_real64 * (x(i + 1) - x(i)**2)
    end do
  end subroutine objgrd

  subroutine monit(nvar, x, inform, rinfo, stats, iuser, ruser)
    integer(int64), intent(in) :: nvar
    real(real64), intent(in) :: x(nvar), rinfo(100), stats(100)
    integer(int64), intent(inout) :: inform
    integer(int64), intent(inout) :: iuser(*)
    real(real64), intent(inout) :: ruser(*)
  end subroutine monit
end module e04kff_funs

program e04kff_example
  use, intrinsic :: iso_c_binding, only: c_ptr, c_null_ptr
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem
  use e04kff_funs
  implicit none
  integer(int64), parameter :: n = 100000
  type(c_ptr) :: handle
  real(real64), allocatable :: x(:), bl(:), bu(:), u(:)
  integer(int64), allocatable :: idx(:)
  real(real64) :: rinfo(100), stats(100), ruser(1)
  integer(int64) :: i, ifail, iuser(1)

  write (*, '(a)') 'e04kff example results'
  allocate (x(n), bl(n), bu(n), u(n), idx(n))
  do i = 1, n
    idx(i) = i
    if (mod(i, 2_int64) == 0) then
      x(i) = 1.0_real64
      bu(i) = 0.5_real64
    else
      x(i) = -1.2_real64
      bu(i) = 10.0_real64
    end if
    bl(i) = -10.0_real64
  end do
  handle = c_null_ptr
  ifail = 0
  call e04raf(handle, n, ifail)
  call e04rgf(handle, n, idx, ifail)
  call e04rhf(handle, n, bl, bu, ifail)
  call e04zmf(handle, 'Print Level = 1', ifail)
  call e04zmf(handle, 'FOAS Stop Tolerance = 1.0e-8', ifail)
  ifail = -1
  call e04kff(handle, objfun, objgrd, monit, n, x, rinfo, stats, iuser, ruser, ifail)
  if (ifail /= 0) then
    call e04rzf(handle, ifail)
    deallocate (x, bl, bu, u, idx)
    stop 1
  end if
  ifail = 0
  call e04rxf(handle, 'DUAL VARIABLES', 0_int64, n, u, ifail)
  write (*, '(/a,f10.8,a,f10.8)') 'First pair of the solution:  x1 = ', x(1), '  x2 = ', x(2)
  write (*, '(a,f9.6)') 'Multiplier of the bound x2 <= 0.5: ', u(2)
  write (*, '(a,f0.8,a,i0,a)') 'Objective: ', rinfo(1), '  (', n / 2, ' pairs)'
  call e04rzf(handle, ifail)
  deallocate (x, bl, bu, u, idx)
end program e04kff_example
