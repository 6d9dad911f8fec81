! e04znf example: read options of each type back from a handle.
program e04znf_example
  use, intrinsic :: iso_c_binding, only: c_ptr, c_null_ptr
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem
  implicit none
  type(c_ptr) :: handle
  integer(int64) :: ifail, ivalue, optype, i
  real(real64) :: rvalue
  character(len=20) :: cvalue
  character(len=20), parameter :: names(4) = [character(len=20) :: &
    'Print Level', 'FOAS Stop Tolerance', 'Stats Time', 'Task']

  write (*, '(a, /)') 'e04znf example results'
  handle = c_null_ptr
  ifail = 0
  call e04raf(handle, 2_int64, ifail)
  call e04zmf(handle, 'Stats Time = Wall Clock', ifail)
  do i = 1, size(names)
    call e04znf(handle, names(i), ivalue, rvalue, cvalue, optype, ifail)
    select case (optype)
    case (1)
      write (*, '(a20, " integer    ", i0)') names(i), ivalue
    case (2)
      write (*, '(a20, " real       ", es10.3)') names(i), rvalue
    case default
      write (*, '(a20, " character  ", a, " (code ", i0, ")")') names(i), trim(cvalue), ivalue
    end select
  end do
  call e04rzf(handle, ifail)
end program e04znf_example
