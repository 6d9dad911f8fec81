! The ifail convention from Fortran: 1 and 7 are quiet, -1 prints and
! returns; messages interleave with the program's own lines; a negative
! error unit silences them; a unit opened on a file receives them.
module ifail_soft_fun
  use, intrinsic :: iso_fortran_env, only: int64, real64
  implicit none
contains
  function f(x, iuser, ruser)
    real(real64) :: f
    real(real64), intent(in) :: x
    integer(int64), intent(inout) :: iuser(*)
    real(real64), intent(inout) :: ruser(*)
    iuser(1) = iuser(1) + 1
    f = x * x + ruser(1)
  end function f
end module ifail_soft_fun

program ifail_soft
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: c05ayf, x04aaf
  use ifail_soft_fun, only: f
  implicit none
  integer(int64) :: ifail, iuser(1), nerr, k
  real(real64) :: x, ruser(1)
  integer(int64), parameter :: entries(3) = [1_int64, 7_int64, -1_int64]
  character(100) :: line
  integer :: ios

  ruser(1) = 1.0_real64   ! f has no zero: f(a) and f(b) have the same sign
  do k = 1, 3
    iuser(1) = 0
    ifail = entries(k)
    write (*, '(a,i0)') 'before the call, ifail = ', ifail
    call c05ayf(-1.0_real64, 2.0_real64, 1.0e-12_real64, 0.0_real64, f, x, iuser, ruser, ifail)
    write (*, '(a,i0,a,i0)') 'after the call, ifail = ', ifail, ', evaluations ', iuser(1)
  end do

  write (*, '(a)') 'error unit -1: silent'
  nerr = -1
  call x04aaf(1_int64, nerr)
  ifail = -1
  call c05ayf(-1.0_real64, 2.0_real64, 0.0_real64, 0.0_real64, f, x, iuser, ruser, ifail)
  write (*, '(a,i0)') 'ifail = ', ifail

  write (*, '(a)') 'error unit 33, opened on a file'
  open (33, file='errors.txt', status='replace', action='write')
  nerr = 33
  call x04aaf(1_int64, nerr)
  ifail = -1
  call c05ayf(1.0_real64, 1.0_real64, 1.0e-12_real64, 0.0_real64, f, x, iuser, ruser, ifail)
  write (33, '(a)') 'a line of the program''s own, after the messages'
  close (33)
  nerr = 6
  call x04aaf(1_int64, nerr)
  open (33, file='errors.txt', status='old', action='read')
  do
    read (33, '(a)', iostat=ios) line
    if (ios /= 0) exit
    write (*, '(a,a)') '  file: ', trim(line)
  end do
  close (33)

  write (*, '(a)') 'success sets ifail to 0'
  ruser(1) = -1.0_real64
  ifail = -1
  call c05ayf(0.0_real64, 2.0_real64, 1.0e-12_real64, 0.0_real64, f, x, iuser, ruser, ifail)
  write (*, '(a,i0,a,f18.15)') 'ifail = ', ifail, ', x = ', x
end program ifail_soft
