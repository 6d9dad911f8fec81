! x04aaf example: send the library's error messages to a file the program
! opened, then silence them, then restore the standard output unit.
program x04aaf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: x04aaf, c05azf
  implicit none
  integer(int64) :: nerr, saved, ifail, ind
  real(real64) :: x, y, c(10)
  character(80) :: line
  integer :: ios

  call x04aaf(0_int64, saved)
  write (*, '(a,i0)') 'Error message unit on entry: ', saved

  ! 1. Messages to unit 10, a file.
  open (10, file='messages.txt', status='replace', action='write')
  nerr = 10
  call x04aaf(1_int64, nerr)
  ind = 0          ! an invalid request code: a failure with a message
  ifail = -1
  x = 0.0_real64
  y = 1.0_real64
  call c05azf(x, y, 0.0_real64, 1.0e-5_real64, 0_int64, c, ind, ifail)
  close (10)
  write (*, '(a,i0,a)') 'ifail = ', ifail, '; the file holds:'
  open (10, file='messages.txt', status='old', action='read')
  do
    read (10, '(a)', iostat=ios) line
    if (ios /= 0) exit
    write (*, '(2x,a)') trim(line)
  end do
  close (10)

  ! 2. A negative unit silences the messages.
  nerr = -1
  call x04aaf(1_int64, nerr)
  ifail = -1
  ind = 0
  call c05azf(x, y, 0.0_real64, 1.0e-5_real64, 0_int64, c, ind, ifail)
  write (*, '(a,i0,a)') 'ifail = ', ifail, ' with the unit silenced'

  call x04aaf(1_int64, saved)
end program x04aaf_example
