! The option routines e04zmf, e04znf and e04zpf as a Fortran program uses
! them: quiet failures (ifail = 1) reported by their ifail value, noisy ones
! (ifail = -1) printing their message lines, read-back of each type, an
! option file written by the program.
program client_options
  use, intrinsic :: iso_c_binding, only: c_ptr, c_null_ptr
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem
  implicit none
  type(c_ptr) :: handle
  integer(int64) :: ifail, ivalue, optype, i
  real(real64) :: rvalue
  character(len=20) :: cvalue
  character(len=2) :: short
  character(len=40), parameter :: quiet(6) = [character(len=40) :: &
    'Print Level = 3', 'print level = 1.5', 'Time Limit = -1', 'Task = Sideways', &
    'No Such Option = 2', 'Defaults']
  character(len=40), parameter :: noisy(4) = [character(len=40) :: &
    'Print Level = 1.5', 'Infinite Bound Size = 5e2', 'FOAS Memory = 200', 'Verify Derivatives = Perhaps']

  handle = c_null_ptr
  ifail = 0
  call e04raf(handle, 3_int64, ifail)

  do i = 1, size(quiet)
    ifail = 1
    call e04zmf(handle, quiet(i), ifail)
    write (*, '(a40, " ifail = ", i0)') quiet(i), ifail
  end do
  do i = 1, size(noisy)
    write (*, '(a, a)') 'noisy: ', trim(noisy(i))
    ifail = -1
    call e04zmf(handle, noisy(i), ifail)
  end do

  ifail = 0
  call e04zmf(handle, 'Stats Time = CPU', ifail)
  call e04zmf(handle, 'Stop Tolerance 1 = 1.0e-9', ifail)
  ifail = 0
  call e04znf(handle, 'Print Level', ivalue, rvalue, cvalue, optype, ifail)
  write (*, '(a, i0, a, i0)') 'Print Level: optype ', optype, ', value ', ivalue
  call e04znf(handle, 'stop tolerance 1', ivalue, rvalue, cvalue, optype, ifail)
  write (*, '(a, i0, a, es10.3)') 'Stop Tolerance 1: optype ', optype, ', value ', rvalue
  call e04znf(handle, 'Stats Time', ivalue, rvalue, cvalue, optype, ifail)
  write (*, '(a, i0, a, a, a, i0)') 'Stats Time: optype ', optype, ', value "', trim(cvalue), '", code ', ivalue
  ifail = -1
  call e04znf(handle, 'Stats Time', ivalue, rvalue, short, optype, ifail)

  open (unit=20, file='e04zpf.opt', status='replace', action='write')
  write (20, '(a)') 'Begin'
  write (20, '(a)') '  FOAS Memory = 25'
  write (20, '(a)') '  Task = Maximize'
  write (20, '(a)') 'End'
  close (20)
  ifail = 0
  call e04zpf(handle, 'e04zpf.opt', ifail)
  call e04znf(handle, 'FOAS Memory', ivalue, rvalue, cvalue, optype, ifail)
  write (*, '(a, i0)') 'FOAS Memory from the file: ', ivalue
  ifail = -1
  call e04zpf(handle, 'missing.opt', ifail)

  ifail = 0
  call e04rzf(handle, ifail)
  ifail = -1
  call e04zmf(handle, 'Print Level = 1', ifail)
end program client_options
