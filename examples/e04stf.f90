! e04stf example: Hock and Schittkowski's problem 71 solved with the
! limited-memory Hessian ("Hessian Mode = Approximate"; hess is not called),
! then a linear program read from an MPS file.
module e04stf_functions
  use, intrinsic :: iso_fortran_env, only: int64, real64
  implicit none
contains
  subroutine objfun(nvar, x, fx, inform, iuser, ruser)
    integer(int64), intent(in) :: nvar
    real(real64), intent(in) :: x(nvar)
    real(real64), intent(out) :: fx
    integer(int64), intent(inout) :: inform, iuser(*)
    real(real64), intent(inout) :: ruser(*)
    fx = x(1)*x(4)*(x(1) + x(2) + x(3)) + x(3)
  end subroutine objfun
  subroutine objgrd(nvar, x, nnzfd, fdx, inform, iuser, ruser)
    integer(int64), intent(in) :: nvar, nnzfd
    real(real64), intent(in) :: x(nvar)
    real(real64), intent(inout) :: fdx(nnzfd)
    integer(int64), intent(inout) :: inform, iuser(*)
    real(real64), intent(inout) :: ruser(*)
    fdx(1) = x(4)*(2*x(1) + x(2) + x(3))
    fdx(2) = x(1)*x(4)
    fdx(3) = x(1)*x(4) + 1
    fdx(4) = x(1)*(x(1) + x(2) + x(3))
  end subroutine objgrd
  subroutine confun(nvar, x, ncnln, gx, inform, iuser, ruser)
    integer(int64), intent(in) :: nvar, ncnln
    real(real64), intent(in) :: x(nvar)
    real(real64), intent(inout) :: gx(ncnln)
    integer(int64), intent(inout) :: inform, iuser(*)
    real(real64), intent(inout) :: ruser(*)
    gx(1) = x(1)*x(2)*x(3)*x(4)
    gx(2) = sum(x**2)
  end subroutine confun
  subroutine congrd(nvar, x, nnzgd, gdx, inform, iuser, ruser)
    integer(int64), intent(in) :: nvar, nnzgd
    real(real64), intent(in) :: x(nvar)
    real(real64), intent(inout) :: gdx(nnzgd)
    integer(int64), intent(inout) :: inform, iuser(*)
    real(real64), intent(inout) :: ruser(*)
    gdx(1:4) = [x(2)*x(3)*x(4), x(1)*x(3)*x(4), x(1)*x(2)*x(4), x(1)*x(2)*x(3)]
    gdx(5:8) = 2*x
  end subroutine congrd
  ! Not called: the Hessian is approximated.
  subroutine hess(nvar, x, ncnln, idf, sigma, lambda, nnzh, hx, inform, iuser, ruser)
    integer(int64), intent(in) :: nvar, ncnln, idf, nnzh
    real(real64), intent(in) :: x(nvar), sigma, lambda(ncnln)
    real(real64), intent(inout) :: hx(nnzh)
    integer(int64), intent(inout) :: inform, iuser(*)
    real(real64), intent(inout) :: ruser(*)
    inform = -1
  end subroutine hess
  subroutine monit(nvar, x, inform, rinfo, stats, iuser, ruser)
    integer(int64), intent(in) :: nvar
    real(real64), intent(in) :: x(nvar), rinfo(100), stats(100)
    integer(int64), intent(inout) :: inform, iuser(*)
    real(real64), intent(inout) :: ruser(*)
  end subroutine monit
end module e04stf_functions

program e04stf_example
  use, intrinsic :: iso_c_binding, only: c_ptr, c_null_ptr
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: e04raf, e04rhf, e04rgf, e04rkf, e04zmf, e04stf, e04saf, e04rzf
  use e04stf_functions
  implicit none
  type(c_ptr) :: handle
  integer(int64) :: ifail, iuser(1)
  real(real64) :: x(4), u(6), rinfo(100), stats(100), ruser(1), xl(3), ul(1)
  integer :: un

  write (*, '(a)') 'e04stf example results'
  write (*, *)
  handle = c_null_ptr
  ifail = 0
  call e04raf(handle, 4_int64, ifail)
  call e04rhf(handle, 4_int64, [1d0, 1d0, 1d0, 1d0], [5d0, 5d0, 5d0, 5d0], ifail)
  call e04rgf(handle, 4_int64, [1_int64, 2_int64, 3_int64, 4_int64], ifail)
  call e04rkf(handle, 2_int64, [25d0, 40d0], [1d20, 40d0], 8_int64, &
              [1_int64, 1_int64, 1_int64, 1_int64, 2_int64, 2_int64, 2_int64, 2_int64], &
              [1_int64, 2_int64, 3_int64, 4_int64, 1_int64, 2_int64, 3_int64, 4_int64], ifail)
  call e04zmf(handle, 'Hessian Mode = Approximate', ifail)
  call e04zmf(handle, 'Print Level = 1', ifail)
  call e04zmf(handle, 'Print Options = No', ifail)
  x = [1d0, 5d0, 5d0, 1d0]
  ifail = -1
  call e04stf(handle, objfun, objgrd, confun, congrd, hess, monit, 4_int64, x, 6_int64, u, rinfo, stats, &
              iuser, ruser, ifail)
  if (ifail /= 0) stop 1
  write (*, *)
  write (*, '(a,f10.5,a,4f10.5)') 'HS 71: f = ', rinfo(1), ' at x =', x
  call e04rzf(handle, ifail)

  ! A linear program from an MPS file, solved quietly.
  open (newunit=un, file='diet.mps', status='replace', action='write')
  write (un, '(a)') 'NAME          DIET'
  write (un, '(a)') 'ROWS'
  write (un, '(a)') ' N  COST'
  write (un, '(a)') ' G  PROTEIN'
  write (un, '(a)') ' G  ENERGY'
  write (un, '(a)') ' L  FAT'
  write (un, '(a)') 'COLUMNS'
  write (un, '(a)') '    BEANS     COST         2.0   PROTEIN      8.0'
  write (un, '(a)') '    BEANS     ENERGY       3.0   FAT          1.0'
  write (un, '(a)') '    BREAD     COST         1.5   PROTEIN      3.0'
  write (un, '(a)') '    BREAD     ENERGY       6.0   FAT          0.5'
  write (un, '(a)') '    CHEESE    COST         4.0   PROTEIN     10.0'
  write (un, '(a)') '    CHEESE    ENERGY       4.0   FAT          3.0'
  write (un, '(a)') 'RHS'
  write (un, '(a)') '    RHS       PROTEIN     30.0   ENERGY      24.0'
  write (un, '(a)') '    RHS       FAT          9.0'
  write (un, '(a)') 'ENDATA'
  close (un)
  ifail = 0
  call e04saf(handle, 'MPS', 'diet.mps', ifail)
  open (newunit=un, file='diet.mps')
  close (un, status='delete')
  call e04zmf(handle, 'Print Level = 0', ifail)
  xl = 0
  call e04stf(handle, objfun, objgrd, confun, congrd, hess, monit, 3_int64, xl, 0_int64, ul, rinfo, stats, &
              iuser, ruser, ifail)
  write (*, *)
  write (*, '(a,f10.5,a,3f10.5)') 'Diet LP: cost = ', rinfo(1), ', x =', xl
  call e04rzf(handle, ifail)
end program e04stf_example
