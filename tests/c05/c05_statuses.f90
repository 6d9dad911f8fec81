! Every exit of c05ayf and c05azf, as a Fortran client sees it (ifail = -1:
! the messages are printed and control returns).
module c05_statuses_fun
  use, intrinsic :: iso_fortran_env, only: int64, real64
  implicit none
contains
  function square_minus_two(x, iuser, ruser) result(f)
    real(real64) :: f
    real(real64), intent(in) :: x
    integer(int64), intent(inout) :: iuser(*)
    real(real64), intent(inout) :: ruser(*)
    f = x * x - 2.0_real64
  end function square_minus_two
  function pole(x, iuser, ruser) result(f)
    real(real64) :: f
    real(real64), intent(in) :: x
    integer(int64), intent(inout) :: iuser(*)
    real(real64), intent(inout) :: ruser(*)
    f = 1.0_real64 / (x - 0.5_real64)
  end function pole
end module c05_statuses_fun

program c05_statuses
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: c05ayf, c05azf
  use c05_statuses_fun
  implicit none
  integer(int64) :: ifail, iuser(1), ind, n
  real(real64) :: x, y, ruser(1), c(10), fx

  write (*, '(a)') '---- c05ayf'
  call ay(1.0_real64, 2.0_real64, 1.0e-12_real64, 1)
  call ay(1.0_real64, 2.0_real64, -1.0_real64, 1)
  call ay(1.0_real64, 1.0_real64, 1.0e-12_real64, 1)
  call ay(2.0_real64, 3.0_real64, 1.0e-12_real64, 1)
  call ay(1.0_real64, 2.0_real64, 1.0e-30_real64, 1)
  call ay(0.0_real64, 1.0_real64, 1.0e-10_real64, 2)

  write (*, '(a)') '---- c05azf'
  call az(1.0_real64, 2.0_real64, 1.0e-10_real64, 0_int64, 1_int64, 1)
  call az(2.0_real64, 3.0_real64, 1.0e-10_real64, 0_int64, 1_int64, 1)
  call az(0.0_real64, 1.0_real64, 1.0e-10_real64, 1_int64, 1_int64, 2)
  call az(1.0_real64, 2.0_real64, 1.0e-30_real64, 2_int64, 1_int64, 1)
  call az(1.0_real64, 2.0_real64, -1.0_real64, 0_int64, 1_int64, 1)
  call az(1.0_real64, 2.0_real64, 1.0e-10_real64, -1_int64, 1_int64, 1)
  call az(1.0_real64, 2.0_real64, 1.0e-10_real64, 0_int64, 0_int64, 1)

contains

  subroutine ay(a, b, eps, which)
    real(real64), intent(in) :: a, b, eps
    integer, intent(in) :: which
    ifail = -1
    if (which == 1) then
      call c05ayf(a, b, eps, 0.0_real64, square_minus_two, x, iuser, ruser, ifail)
    else
      call c05ayf(a, b, eps, 0.0_real64, pole, x, iuser, ruser, ifail)
    end if
    write (*, '(a,i0,a,f10.6)') 'ifail = ', ifail, ', x = ', x
  end subroutine ay

  subroutine az(x0, y0, tolx, ir, ind0, which)
    real(real64), intent(in) :: x0, y0, tolx
    integer(int64), intent(in) :: ir, ind0
    integer, intent(in) :: which
    x = x0
    y = y0
    ind = ind0
    fx = 0.0_real64
    n = 0
    do
      ifail = -1
      call c05azf(x, y, fx, tolx, ir, c, ind, ifail)
      if (ind == 0 .or. n > 200) exit
      n = n + 1
      if (which == 1) then
        fx = square_minus_two(x, iuser, ruser)
      else
        fx = pole(x, iuser, ruser)
      end if
    end do
    write (*, '(a,i0,a,f10.6,a,f10.6)') 'ifail = ', ifail, ', x = ', x, ', y = ', y
  end subroutine az
end program c05_statuses
