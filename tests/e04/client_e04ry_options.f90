! e04ryf's option listings as a Fortran program sees them: 'OPTIONS' (the
! options a user may set, between 'Begin of Options' and 'End of Options')
! and 'ALL OPTIONS' (every option of the registry, the internal ones
! included) after settings through e04zmf, printed on the caller's own
! unit 6 between the caller's lines; then a misspelt keyword, noisy.
program client_e04ry_options
  use, intrinsic :: iso_c_binding, only: c_ptr, c_null_ptr
  use, intrinsic :: iso_fortran_env, only: int64
  use zem, only: e04raf, e04zmf, e04ryf, e04rzf
  implicit none
  type(c_ptr) :: handle
  integer(int64) :: ifail
  integer :: i
  character(len=*), parameter :: settings(5) = [character(len=30) :: 'Print Level = 3', &
    'infinite bound size = 1.0e25', 'TASK = maximize', 'Stop Tolerance 1 = 1.5e-9', 'Hessian Density = Dense']

  handle = c_null_ptr
  ifail = 0
  call e04raf(handle, 2_int64, ifail)
  do i = 1, size(settings)
    call e04zmf(handle, trim(settings(i)), ifail)
  end do
  write (*, '(a)') '---- Options after five settings'
  call e04ryf(handle, 6_int64, ' options ', ifail)
  write (*, '(a)') '---- All options after five settings, with the overview'
  call e04ryf(handle, 6_int64, 'Overview, ALL OPTIONS', ifail)
  write (*, '(a)') '---- A misspelt keyword'
  ifail = -1
  call e04ryf(handle, 6_int64, 'OPTIONS, ALL OPTION', ifail)
  ifail = 0
  call e04rzf(handle, ifail)
end program client_e04ry_options
