! g22zaf example: handles released; a stale copy of a released handle is
! refused, not followed (ifail = -1 prints the message).
program g22zaf_example
  use, intrinsic :: iso_fortran_env, only: int64
  use, intrinsic :: iso_c_binding, only: c_ptr, c_null_ptr, c_associated
  use zem, only: g22yaf, g22ybf, g22zaf
  implicit none
  type(c_ptr) :: hform = c_null_ptr, hddesc = c_null_ptr, stale
  integer(int64) :: levels(1) = [1], ifail
  character(len=1) :: vnames(1) = [' ']

  write (*, '(a)') 'g22zaf example results'
  write (*, *)
  ifail = 0
  call g22yaf(hform, 'V1', ifail)
  call g22ybf(hddesc, 5_int64, 1_int64, levels, 0_int64, vnames, ifail)
  stale = hform
  call g22zaf(hform, ifail)
  write (*, '(a,l1)') 'Formula handle released, still associated: ', c_associated(hform)
  call g22zaf(hddesc, ifail)
  call g22zaf(hddesc, ifail)
  write (*, '(a,i0)') 'Releasing a released (null) handle: ifail = ', ifail
  ifail = -1
  call g22zaf(stale, ifail)
end program g22zaf_example
