! g22yaf example: a formula parsed into a handle and printed under its
! title; then a formula with an unclosed parenthesis (ifail = -1 prints).
program g22yaf_example
  use, intrinsic :: iso_fortran_env, only: int64
  use, intrinsic :: iso_c_binding, only: c_ptr, c_null_ptr
  use zem, only: g22yaf, g22zaf, g22zmf
  implicit none
  type(c_ptr) :: hform = c_null_ptr
  integer(int64) :: ifail

  write (*, '(a)') 'g22yaf example results'
  write (*, *)
  ifail = 0
  call g22yaf(hform, '(A + B@HELMERT + x)^2 - A:x CONTRAST = SUM LAST', ifail)
  call g22zmf(hform, 'PRINT = 6', ifail)
  write (*, *)
  ifail = -1
  call g22yaf(hform, 'A + (B*C', ifail)
  ifail = 0
  call g22zaf(hform, ifail)
end program g22yaf_example
