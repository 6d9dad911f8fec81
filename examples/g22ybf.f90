! g22ybf example: a dataset of 100 observations described by its names
! and levels, printed; then one described without names (V1, V2, ...).
program g22ybf_example
  use, intrinsic :: iso_fortran_env, only: int64
  use, intrinsic :: iso_c_binding, only: c_ptr, c_null_ptr
  use zem, only: g22ybf, g22zaf, g22zmf
  implicit none
  character(len=6) :: vnames(4) = [character(len=6) :: 'dose', 'group', 'site', 'weight']
  integer(int64) :: levels(4) = [1, 3, 4, 1], ifail
  type(c_ptr) :: hddesc = c_null_ptr

  write (*, '(a)') 'g22ybf example results'
  write (*, *)
  ifail = 0
  call g22ybf(hddesc, 100_int64, 4_int64, levels, 4_int64, vnames, ifail)
  call g22zmf(hddesc, 'SORDER = Variables', ifail)
  call g22zmf(hddesc, 'PRINT = 6', ifail)
  call g22ybf(hddesc, 10_int64, 2_int64, levels, 0_int64, vnames, ifail)
  call g22zmf(hddesc, 'PRINT = 6', ifail)
  write (*, *)
  vnames(3) = 'dose'
  ifail = -1
  call g22ybf(hddesc, 100_int64, 4_int64, levels, 4_int64, vnames, ifail)
  ifail = 0
  call g22zaf(hddesc, ifail)
end program g22ybf_example
