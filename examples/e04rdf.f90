! e04rdf example: a semidefinite programme read in SDPA sparse format from
! an open unit (a unit number >= 0, so not one from newunit=).  The first
! call, with limits too small, reports the sizes the stream needs; the unit
! is rewound and read again.
program e04rdf_example
  use, intrinsic :: iso_c_binding, only: c_ptr, c_null_ptr
  use, intrinsic :: iso_fortran_env, only: int64
  use zem, only: e04raf, e04rdf, e04ryf, e04rzf
  implicit none
  type(c_ptr) :: handle
  integer(int64) :: ifail
  integer :: u

  u = 7
  open (unit=u, file='e04rdf.dat-s', status='replace', action='readwrite')
  write (u, '(a)') '"minimize x1 + x2 subject to [[x1, 1], [1, x2]] >= 0 and x1, x2 >= 0"'
  write (u, '(a)') '2 = mDIM'
  write (u, '(a)') '2 = nBLOCK'
  write (u, '(a)') '2 -2 = bLOCKsTRUCT'
  write (u, '(a)') '1.0 1.0'
  write (u, '(a)') '0 1 1 2 -1.0'
  write (u, '(a)') '1 1 1 1 1.0'
  write (u, '(a)') '1 2 1 1 1.0'
  write (u, '(a)') '2 1 2 2 1.0'
  write (u, '(a)') '2 2 2 2 1.0'
  rewind (u)

  write (*, '(a)') 'e04rdf example results'
  write (*, *)
  handle = c_null_ptr
  ifail = 0
  call e04raf(handle, 0_int64, ifail)
  write (*, '(a)') 'With limits 1, 1, 1:'
  ifail = -1
  call e04rdf(handle, int(u, int64), 1_int64, 1_int64, 1_int64, ifail)
  write (*, *)
  rewind (u)
  ifail = 0
  call e04rdf(handle, int(u, int64), 2_int64, 2_int64, 5_int64, ifail)
  close (u, status='delete')
  call e04ryf(handle, 6_int64, 'Overview, Objective, Matrix Constraints Detailed', ifail)
  call e04rzf(handle, ifail)
end program e04rdf_example
