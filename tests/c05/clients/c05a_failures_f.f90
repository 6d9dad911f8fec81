! Every failure of c05auf, c05avf, c05awf and c05axf as a Fortran client
! sees it: ifail = -1 on entry prints the message lines and returns; the
! last call, with ifail = 0, is a hard failure that stops the program.
module c05a_failures_funs
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use, intrinsic :: ieee_arithmetic, only: ieee_value, ieee_quiet_nan
  implicit none
contains
  ! The test functions, chosen by iuser(1) so that the user's data travels
  ! with every call: 1 x**3 - 2, 2 x**2 + 1, 3 1/(x - 0.5), 4 x**2 - 2,
  ! 5 constant, 6 a number only at 1 and 1 +- 1e-8; ruser(1) = 0 is added.
  function f(x, iuser, ruser)
    real(real64) :: f
    real(real64), intent(in) :: x
    integer(int64), intent(inout) :: iuser(*)
    real(real64), intent(inout) :: ruser(*)
    select case (iuser(1))
    case (1)
      f = x**3 - 2.0_real64
    case (2)
      f = x * x + 1.0_real64
    case (3)
      f = 1.0_real64 / (x - 0.5_real64)
    case (4)
      f = x * x - 2.0_real64
    case (5)
      f = 1.0_real64
    case default
      f = ieee_value(x, ieee_quiet_nan)
      if (x == 1.0_real64 .or. x == 1.0_real64 + 1.0e-8_real64 .or. x == 1.0_real64 - 1.0e-8_real64) f = x
    end select
    f = f + ruser(1)
  end function f
end module c05a_failures_funs

program c05a_failures_f
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use, intrinsic :: ieee_arithmetic, only: ieee_value, ieee_quiet_nan
  use zem, only: c05auf, c05avf, c05awf, c05axf
  use c05a_failures_funs
  implicit none
  integer(int64) :: ifail, iuser(1), ind
  real(real64) :: x, y, fx, ruser(1), c(36), nan

  nan = ieee_value(1.0_real64, ieee_quiet_nan)
  ruser(1) = 0.0_real64

  write (*, '(a)') '==== c05auf'
  call near(1.0_real64, 0.1_real64, 0.0_real64, 0.0_real64, 2.0_real64, 1)
  call near(1.0_real64, 0.1_real64, 1.0e-8_real64, 2.0_real64, 2.0_real64, 1)
  call near(3.0_real64, 0.1_real64, 1.0e-8_real64, 0.0_real64, 2.0_real64, 1)
  call near(1.0_real64, 5.0_real64, 1.0e-8_real64, 0.0_real64, 2.0_real64, 1)
  call near(1.0_real64, 1.0e-17_real64, 1.0e-8_real64, 0.0_real64, 2.0_real64, 1)
  call near(1.0_real64, 0.1_real64, 1.0e-30_real64, 0.0_real64, 2.0_real64, 4)
  call near(0.35_real64, 0.1_real64, 1.0e-10_real64, 0.0_real64, 1.0_real64, 3)
  call near(0.0_real64, 0.5_real64, 1.0e-8_real64, -1.0_real64, 1.0_real64, 2)

  write (*, '(a)') '==== c05avf'
  call search(0.0_real64, 0.1_real64, -1.0_real64, 1.0_real64, 7, 1, 0)
  call search(0.0_real64, 0.1_real64, 1.0_real64, -1.0_real64, 1, 1, 0)
  call search(nan, 0.1_real64, -1.0_real64, 1.0_real64, 1, 1, 0)
  call search(0.0_real64, 3.0_real64, -1.0_real64, 1.0_real64, 1, 1, 0)
  call search(0.5_real64, 0.0_real64, -1.0_real64, 1.0_real64, 1, 1, 0)
  call search(0.0_real64, 0.5_real64, -1.0_real64, 1.0_real64, 1, 2, 0)
  call search(0.0_real64, 0.1_real64, -1.0_real64, 1.0_real64, 1, 2, 3)

  write (*, '(a)') '==== c05awf'
  call cont(1.0_real64, nan, 10, 1)
  call cont(1.0_real64, 1.0e-8_real64, 0, 1)
  call cont(1.0_real64, 1.0e-8_real64, 100, 5)
  call cont(1.0_real64, 1.0e-8_real64, 20, 2)

  write (*, '(a)') '==== c05axf'
  call rcont(1.0_real64, 1.0e-8_real64, 0, 1.0e-8_real64, 0, 1, 0)
  call rcont(1.0_real64, 1.0e-8_real64, 0, 1.0e-8_real64, 1, 1, 8)
  call rcont(1.0_real64, -1.0_real64, 0, 1.0e-8_real64, 1, 1, 0)
  call rcont(1.0_real64, 1.0e-8_real64, 3, 1.0e-8_real64, 1, 1, 0)
  call rcont(1.0_real64, 1.0e-8_real64, 0, 1.0e-20_real64, 1, 1, 0)
  call rcont(2.0_real64, 1.0e-8_real64, 2, 1.0e-8_real64, 1, 5, 0)
  call rcont(1.0_real64, 1.0e-8_real64, 0, 1.0e-8_real64, 1, 6, 0)
  call rcont(1.0_real64, 1.0e-8_real64, 0, 1.0e-8_real64, 1, 2, 0)
  call rcont(1.0_real64, 1.0e-8_real64, 0, 1.0e-8_real64, 1, 1, -1)
  call rcont(0.5_real64 - 0.5e-8_real64, 1.0e-12_real64, 1, 1.0e-8_real64, 1, 3, 0)
  call rcont(3.0_real64, 1.0e-30_real64, 1, 1.0e-8_real64, 1, 4, 0)

  write (*, '(a)') '==== c05awf with ifail = 0: a hard failure'
  x = 1.0_real64
  iuser(1) = 2
  ifail = 0
  call c05awf(x, 1.0e-8_real64, 0.0_real64, f, 5_int64, iuser, ruser, ifail)
  write (*, '(a)') 'not reached'

contains

  subroutine near(x0, h, eps, lo, hi, which)
    real(real64), intent(in) :: x0, h, eps, lo, hi
    integer, intent(in) :: which
    x = x0
    iuser(1) = which
    ifail = -1
    call c05auf(x, h, eps, 0.0_real64, f, lo, hi, iuser, ruser, ifail)
    write (*, '(a,i0)') 'ifail = ', ifail
  end subroutine near

  ! A whole search by reverse communication; the refinement counter c(5) is
  ! changed before call number tamper (0: never).
  subroutine search(x0, h, lo, hi, ind0, which, tamper)
    real(real64), intent(in) :: x0, h, lo, hi
    integer, intent(in) :: ind0, which, tamper
    integer :: j
    x = x0
    fx = 0.0_real64
    ind = ind0
    iuser(1) = which
    j = 0
    do
      j = j + 1
      if (j == tamper) c(5) = 9.0_real64
      ifail = -1
      call c05avf(x, fx, h, lo, hi, y, c, ind, ifail)
      if (ind == 0) exit
      fx = f(x, iuser, ruser)
    end do
    write (*, '(a,i0)') 'ifail = ', ifail
  end subroutine search

  subroutine cont(x0, eps, nfmax, which)
    real(real64), intent(in) :: x0, eps
    integer, intent(in) :: nfmax, which
    x = x0
    iuser(1) = which
    ifail = -1
    call c05awf(x, eps, 0.0_real64, f, int(nfmax, int64), iuser, ruser, ifail)
    write (*, '(a,i0)') 'ifail = ', ifail
  end subroutine cont

  ! A whole continuation by reverse communication.  change > 0 replaces ind
  ! before the second call; change < 0 sets the direction c(8) to 0.5
  ! before the fourth.
  subroutine rcont(x0, tol, ir, scal, ind0, which, change)
    real(real64), intent(in) :: x0, tol, scal
    integer, intent(in) :: ir, ind0, which, change
    integer :: j
    x = x0
    fx = 0.0_real64
    ind = ind0
    iuser(1) = which
    c = 0.0_real64
    j = 0
    do
      j = j + 1
      if (change > 0 .and. j == 2) ind = change
      if (change < 0 .and. j == 4) c(8) = 0.5_real64
      ifail = -1
      call c05axf(x, fx, tol, int(ir, int64), scal, c, ind, ifail)
      if (ind == 0) exit
      fx = f(x, iuser, ruser)
    end do
    write (*, '(a,i0)') 'ifail = ', ifail
  end subroutine rcont
end program c05a_failures_f
