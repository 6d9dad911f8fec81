! Every exit of c05ayf and c05azf, as a Fortran client sees it (ifail = -1:
! the messages are printed and control returns).
module c05_statuses_fun
  use, intrinsic :: iso_fortran_env, only: int64, real64
  implicit none
contains
  ! iuser(1) chooses: 1 x**2 - 2, 2 a pole at 0.5.
  function f(x, iuser, ruser)
    real(real64) :: f
    real(real64), intent(in) :: x
    integer(int64), intent(inout) :: iuser(*)
    real(real64), intent(inout) :: ruser(*)
    if (iuser(1) == 1) then
      f = x * x - 2.0_real64 + ruser(1)
    else
      f = 1.0_real64 / (x - 0.5_real64) + ruser(1)
    end if
  end function f
end module c05_statuses_fun

program c05_statuses
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: c05ayf, c05azf
  use c05_statuses_fun
  implicit none
  integer(int64) :: ifail, iuser(1), ind
  real(real64) :: x, y, ruser(1) = 0.0_real64, c(10), fx

  write (*, '(a)') '---- c05ayf'
  call ay(1.0_real64, 2.0_real64, 1.0e-12_real64, 1)
  call ay(1.0_real64, 2.0_real64, -1.0_real64, 1)
  call ay(1.0_real64, 1.0_real64, 1.0e-12_real64, 1)
  call ay(2.0_real64, 3.0_real64, 1.0e-12_real64, 1)
  call ay(1.0_real64, 2.0_real64, 1.0e-30_real64, 1)
  call ay(0.0_real64, 1.0_real64, 1.0e-10_real64, 2)

  write (*, '(a)') '---- c05azf'
  call az(1.0_real64, 2.0_real64, 1.0e-10_real64, 0, 1, 1)
  call az(2.0_real64, 3.0_real64, 1.0e-10_real64, 0, 1, 1)
  call az(0.0_real64, 1.0_real64, 1.0e-10_real64, 1, 1, 2)
  call az(1.0_real64, 2.0_real64, 1.0e-30_real64, 2, 1, 1)
  call az(1.0_real64, 2.0_real64, -1.0_real64, 0, 1, 1)
  call az(1.0_real64, 2.0_real64, 1.0e-10_real64, -1, 1, 1)
  call az(1.0_real64, 2.0_real64, 1.0e-10_real64, 0, 0, 1)

contains

  subroutine ay(a, b, eps, which)
    real(real64), intent(in) :: a, b, eps
    integer, intent(in) :: which
    iuser(1) = which
    ifail = -1
    call c05ayf(a, b, eps, 0.0_real64, f, x, iuser, ruser, ifail)
    write (*, '(a,i0,a,f10.6)') 'ifail = ', ifail, ', x = ', x
  end subroutine ay

  subroutine az(x0, y0, tolx, ir, ind0, which)
    real(real64), intent(in) :: x0, y0, tolx
    integer, intent(in) :: ir, ind0, which
    integer :: n
    x = x0
    y = y0
    ind = ind0
    iuser(1) = which
    fx = 0.0_real64
    do n = 0, 200
      ifail = -1
      call c05azf(x, y, fx, tolx, int(ir, int64), c, ind, ifail)
      if (ind == 0) exit
      fx = f(x, iuser, ruser)
    end do
    write (*, '(a,i0,a,f10.6,a,f10.6)') 'ifail = ', ifail, ', x = ', x, ', y = ', y
  end subroutine az
end program c05_statuses
