! e04zpf example: read options from a file.
program e04zpf_example
  use, intrinsic :: iso_c_binding, only: c_ptr, c_null_ptr
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem
  implicit none
  type(c_ptr) :: handle
  integer(int64) :: ifail, ivalue, optype
  real(real64) :: rvalue
  character(len=20) :: cvalue

  write (*, '(a, /)') 'e04zpf example results'
  open (unit=10, file='e04zpf.opt', status='replace', action='write')
  write (10, '(a)') 'Options of the e04zpf example'
  write (10, '(a)') 'Begin'
  write (10, '(a)') '  Print Level = 1'
  write (10, '(a)') '  Time Limit = 3600'
  write (10, '(a)') 'End'
  close (10)
  handle = c_null_ptr
  ifail = 0
  call e04raf(handle, 2_int64, ifail)
  call e04zpf(handle, 'e04zpf.opt', ifail)
  call e04znf(handle, 'Print Level', ivalue, rvalue, cvalue, optype, ifail)
  write (*, '(a, i0)') 'Print Level = ', ivalue
  call e04znf(handle, 'Time Limit', ivalue, rvalue, cvalue, optype, ifail)
  write (*, '(a, f8.1)') 'Time Limit = ', rvalue

  ! A file without an END line is refused.
  open (unit=10, file='e04zpf.opt', status='replace', action='write')
  write (10, '(a)') 'BEGIN'
  write (10, '(a)') 'Print Level = 3'
  close (10)
  ifail = -1
  call e04zpf(handle, 'e04zpf.opt', ifail)
  ifail = 0
  call e04rzf(handle, ifail)
end program e04zpf_example
