! g22zmf example: options of a formula handle set by long and short name,
! read back, and an option string that is refused.
program g22zmf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use, intrinsic :: iso_c_binding, only: c_ptr, c_null_ptr
  use zem, only: g22yaf, g22zaf, g22zmf, g22znf
  implicit none
  type(c_ptr) :: hform = c_null_ptr
  integer(int64) :: ifail, ivalue, optype
  real(real64) :: rvalue
  character(len=20) :: cvalue

  write (*, '(a)') 'g22zmf example results'
  write (*, *)
  ifail = 0
  call g22yaf(hform, 'A*B', ifail)
  call g22zmf(hform, 'Contrast = Helmert', ifail)
  call g22zmf(hform, 'EXPLICIT_MEAN = YES', ifail)
  call g22znf(hform, 'CONTRAST', ivalue, rvalue, cvalue, optype, ifail)
  write (*, '(2a)') 'CONTRAST = ', trim(cvalue)
  call g22znf(hform, 'Explicit Mean', ivalue, rvalue, cvalue, optype, ifail)
  write (*, '(2a)') 'EXPLICIT MEAN = ', trim(cvalue)
  write (*, *)
  ifail = -1
  call g22zmf(hform, 'CONTRAST = SUM MIDDLE', ifail)
  ifail = 0
  call g22zaf(hform, ifail)
end program g22zmf_example
