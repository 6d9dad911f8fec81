! e04saf example: a handle made from an SDPA file (written here first), its
! overview and matrix constraints printed.
program e04saf_example
  use, intrinsic :: iso_c_binding, only: c_ptr, c_null_ptr
  use, intrinsic :: iso_fortran_env, only: int64
  use zem, only: e04saf, e04ryf, e04rzf
  implicit none
  type(c_ptr) :: handle
  integer(int64) :: ifail
  integer :: u

  open (newunit=u, file='tiny.dat-s', status='replace', action='write')
  write (u, '(a)') '"two variables, one 2x2 block"'
  write (u, '(a)') '2 = mDIM'
  write (u, '(a)') '1 = nBLOCK'
  write (u, '(a)') '2 = bLOCKsTRUCT'
  write (u, '(a)') '1.0 1.0'
  write (u, '(a)') '0 1 1 1 1.0'
  write (u, '(a)') '0 1 2 2 1.0'
  write (u, '(a)') '1 1 1 2 1.0'
  write (u, '(a)') '2 1 1 1 1.0'
  write (u, '(a)') '2 1 2 2 1.0'
  close (u)

  write (*, '(a)') 'e04saf example results'
  write (*, *)
  handle = c_null_ptr
  ifail = 0
  call e04saf(handle, 'SDPA', 'tiny.dat-s', ifail)
  call e04ryf(handle, 6_int64, 'OVERVIEW,MATRIX CONSTRAINTS DETAILED', ifail)
  call e04rzf(handle, ifail)
  open (newunit=u, file='tiny.dat-s')
  close (u, status='delete')
end program e04saf_example
