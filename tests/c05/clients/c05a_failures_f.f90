! Every failure of c05auf, c05avf, c05awf and c05axf as a Fortran client
! sees it: ifail = -1 on entry prints the message lines and returns; the
! last call, with ifail = 0, is a hard failure that stops the program.
module c05a_failures_funs
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use, intrinsic :: ieee_arithmetic, only: ieee_value, ieee_quiet_nan
  implicit none
contains
  function cubic(x, iuser, ruser)
    real(real64) :: cubic
    real(real64), intent(in) :: x
    integer(int64), intent(inout) :: iuser(*)
    real(real64), intent(inout) :: ruser(*)
    iuser(1) = iuser(1) + 1
    cubic = x**3 - 2.0_real64 + ruser(1)
  end function cubic

  function no_zero(x, iuser, ruser)
    real(real64) :: no_zero
    real(real64), intent(in) :: x
    integer(int64), intent(inout) :: iuser(*)
    real(real64), intent(inout) :: ruser(*)
    iuser(1) = iuser(1) + 1
    no_zero = x * x + 1.0_real64 + ruser(1)
  end function no_zero

  function root2(x, iuser, ruser)
    real(real64) :: root2
    real(real64), intent(in) :: x
    integer(int64), intent(inout) :: iuser(*)
    real(real64), intent(inout) :: ruser(*)
    iuser(1) = iuser(1) + 1
    root2 = x * x - 2.0_real64 + ruser(1)
  end function root2

  function pole(x, iuser, ruser)
    real(real64) :: pole
    real(real64), intent(in) :: x
    integer(int64), intent(inout) :: iuser(*)
    real(real64), intent(inout) :: ruser(*)
    iuser(1) = iuser(1) + 1
    pole = 1.0_real64 / (x - 0.5_real64) + ruser(1)
  end function pole

  function flat(x, iuser, ruser)
    real(real64) :: flat
    real(real64), intent(in) :: x
    integer(int64), intent(inout) :: iuser(*)
    real(real64), intent(inout) :: ruser(*)
    iuser(1) = iuser(1) + 1
    flat = 1.0_real64 + 0.0_real64 * x + ruser(1)
  end function flat

  function only_here(x)
    real(real64) :: only_here
    real(real64), intent(in) :: x
    if (x == 1.0_real64 .or. x == 1.0_real64 + 1.0e-8_real64 .or. x == 1.0_real64 - 1.0e-8_real64) then
      only_here = x
    else
      only_here = ieee_value(x, ieee_quiet_nan)
    end if
  end function only_here
end module c05a_failures_funs

program c05a_failures_f
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use, intrinsic :: ieee_arithmetic, only: ieee_value, ieee_quiet_nan
  use zem, only: c05auf, c05avf, c05awf, c05axf
  use c05a_failures_funs
  implicit none
  integer(int64) :: ifail, iuser(1), ind, k
  real(real64) :: x, y, fx, ruser(1), c(36), nan

  nan = ieee_value(1.0_real64, ieee_quiet_nan)
  iuser(1) = 0
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
  call search(0.0_real64, 0.1_real64, -1.0_real64, 1.0_real64, 7_int64, 1)
  call search(0.0_real64, 0.1_real64, 1.0_real64, -1.0_real64, 1_int64, 1)
  call search(nan, 0.1_real64, -1.0_real64, 1.0_real64, 1_int64, 1)
  call search(0.0_real64, 3.0_real64, -1.0_real64, 1.0_real64, 1_int64, 1)
  call search(0.5_real64, 0.0_real64, -1.0_real64, 1.0_real64, 1_int64, 1)
  call search(0.0_real64, 0.5_real64, -1.0_real64, 1.0_real64, 1_int64, 2)
  ! The state array changed between calls.
  x = 0.0_real64
  fx = 0.0_real64
  ind = 1
  do k = 1, 3
    if (k == 3) c(5) = 9.0_real64
    ifail = -1
    call c05avf(x, fx, 0.1_real64, -1.0_real64, 1.0_real64, y, c, ind, ifail)
    if (ind == 0) exit
    fx = x * x + 1.0_real64
  end do
  write (*, '(a,i0)') 'ifail = ', ifail

  write (*, '(a)') '==== c05awf'
  call cont(1.0_real64, nan, 10_int64, 1)
  call cont(1.0_real64, 1.0e-8_real64, 0_int64, 1)
  call cont(1.0_real64, 1.0e-8_real64, 100_int64, 4)
  call cont(1.0_real64, 1.0e-8_real64, 20_int64, 2)

  write (*, '(a)') '==== c05axf'
  call rcont(1.0_real64, 1.0e-8_real64, 0_int64, 1.0e-8_real64, 0_int64, 1, 0_int64)
  call rcont(1.0_real64, 1.0e-8_real64, 0_int64, 1.0e-8_real64, 1_int64, 1, 8_int64)
  call rcont(1.0_real64, -1.0_real64, 0_int64, 1.0e-8_real64, 1_int64, 1, 0_int64)
  call rcont(1.0_real64, 1.0e-8_real64, 3_int64, 1.0e-8_real64, 1_int64, 1, 0_int64)
  call rcont(1.0_real64, 1.0e-8_real64, 0_int64, 1.0e-20_real64, 1_int64, 1, 0_int64)
  call rcont(2.0_real64, 1.0e-8_real64, 2_int64, 1.0e-8_real64, 1_int64, 4, 0_int64)
  call rcont(1.0_real64, 1.0e-8_real64, 0_int64, 1.0e-8_real64, 1_int64, 5, 0_int64)
  call rcont(1.0_real64, 1.0e-8_real64, 0_int64, 1.0e-8_real64, 1_int64, 2, 0_int64)
  call rcont(1.0_real64, 1.0e-8_real64, 0_int64, 1.0e-8_real64, 1_int64, 1, -7_int64)
  call rcont(0.5_real64 - 0.5e-8_real64, 1.0e-12_real64, 1_int64, 1.0e-8_real64, 1_int64, 3, 0_int64)
  call rcont(3.0_real64, 1.0e-30_real64, 1_int64, 1.0e-8_real64, 1_int64, 6, 0_int64)

  write (*, '(a)') '==== c05awf with ifail = 0: a hard failure'
  x = 1.0_real64
  ifail = 0
  call c05awf(x, 1.0e-8_real64, 0.0_real64, no_zero, 5_int64, iuser, ruser, ifail)
  write (*, '(a)') 'not reached'

contains

  ! c05auf with the function chosen by which: 1 cubic, 2 no zero, 3 pole,
  ! 4 x**2 - 2.
  subroutine near(x0, h, eps, lo, hi, which)
    real(real64), intent(in) :: x0, h, eps, lo, hi
    integer, intent(in) :: which
    x = x0
    ifail = -1
    select case (which)
    case (1)
      call c05auf(x, h, eps, 0.0_real64, cubic, lo, hi, iuser, ruser, ifail)
    case (2)
      call c05auf(x, h, eps, 0.0_real64, no_zero, lo, hi, iuser, ruser, ifail)
    case (4)
      call c05auf(x, h, eps, 0.0_real64, root2, lo, hi, iuser, ruser, ifail)
    case default
      call c05auf(x, h, eps, 0.0_real64, pole, lo, hi, iuser, ruser, ifail)
    end select
    write (*, '(a,i0)') 'ifail = ', ifail
  end subroutine near

  ! A whole search by reverse communication: 1 cubic, 2 no zero.
  subroutine search(x0, h, lo, hi, ind0, which)
    real(real64), intent(in) :: x0, h, lo, hi
    integer(int64), intent(in) :: ind0
    integer, intent(in) :: which
    x = x0
    fx = 0.0_real64
    ind = ind0
    do
      ifail = -1
      call c05avf(x, fx, h, lo, hi, y, c, ind, ifail)
      if (ind == 0) exit
      if (which == 1) then
        fx = x**3 - 2.0_real64
      else
        fx = x * x + 1.0_real64
      end if
    end do
    write (*, '(a,i0)') 'ifail = ', ifail
  end subroutine search

  ! c05awf: 1 cubic, 2 no zero, 4 flat.
  subroutine cont(x0, eps, nfmax, which)
    real(real64), intent(in) :: x0, eps
    integer(int64), intent(in) :: nfmax
    integer, intent(in) :: which
    x = x0
    ifail = -1
    select case (which)
    case (1)
      call c05awf(x, eps, 0.0_real64, cubic, nfmax, iuser, ruser, ifail)
    case (2)
      call c05awf(x, eps, 0.0_real64, no_zero, nfmax, iuser, ruser, ifail)
    case default
      call c05awf(x, eps, 0.0_real64, flat, nfmax, iuser, ruser, ifail)
    end select
    write (*, '(a,i0)') 'ifail = ', ifail
  end subroutine cont

  ! A whole continuation by reverse communication: 1 cubic, 2 no zero,
  ! 3 pole, 4 flat, 5 defined only near 1, 6 x**2 - 2.  A non-zero new_ind replaces ind
  ! after the first return (-7: the direction c(8) is changed after the
  ! third return instead).
  subroutine rcont(x0, tol, ir, scal, ind0, which, new_ind)
    real(real64), intent(in) :: x0, tol, scal
    integer(int64), intent(in) :: ir, ind0, new_ind
    integer, intent(in) :: which
    integer :: j
    x = x0
    fx = 0.0_real64
    ind = ind0
    c = 0.0_real64
    j = 0
    do
      j = j + 1
      if (new_ind > 0 .and. j == 2) ind = new_ind
      if (new_ind == -7 .and. j == 4) c(8) = 0.5_real64
      ifail = -1
      call c05axf(x, fx, tol, ir, scal, c, ind, ifail)
      if (ind == 0) exit
      select case (which)
      case (1)
        fx = x**3 - 2.0_real64
      case (2)
        fx = x * x + 1.0_real64
      case (3)
        fx = 1.0_real64 / (x - 0.5_real64)
      case (4)
        fx = 1.0_real64
      case (6)
        fx = x * x - 2.0_real64
      case default
        fx = only_here(x)
      end select
    end do
    write (*, '(a,i0)') 'ifail = ', ifail
  end subroutine rcont
end program c05a_failures_f
