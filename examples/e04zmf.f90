! e04zmf example: set options of a handle by "Name = value" strings.
program e04zmf_example
  use, intrinsic :: iso_c_binding, only: c_ptr, c_null_ptr
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem
  implicit none
  type(c_ptr) :: handle
  integer(int64) :: ifail, ivalue, optype
  real(real64) :: rvalue
  character(len=20) :: cvalue

  write (*, '(a, /)') 'e04zmf example results'
  handle = c_null_ptr
  ifail = 0
  call e04raf(handle, 4_int64, ifail)
  call e04zmf(handle, 'Print Level = 1', ifail)
  call e04zmf(handle, 'infinite bound size = 1.0d25', ifail)
  call e04zmf(handle, 'Task = Maximize', ifail)
  ifail = -1
  call e04zmf(handle, 'FOAS Memory = 500', ifail)
  ifail = 0
  call e04znf(handle, 'Infinite Bound Size', ivalue, rvalue, cvalue, optype, ifail)
  write (*, '(/, a, es10.3)') 'Infinite Bound Size is now ', rvalue
  call e04znf(handle, 'Task', ivalue, rvalue, cvalue, optype, ifail)
  write (*, '(a, a)') 'Task is ', trim(cvalue)
  call e04rzf(handle, ifail)
end program e04zmf_example
