! e04rwf example: arrays in the handle's store (e04rwf for integers,
! e04rxf for reals).  Before a solver runs, a caller may leave a starting
! point ('PRIMAL') and a warm-start basis ('WARM START BASIS', one status
! per variable and linear constraint row) in the handle; a solver leaves
! its results there, and they are read back the same way.  Data a solver
! has not stored yet are reported as not available.
program e04rwf_example
  use, intrinsic :: iso_c_binding, only: c_ptr, c_null_ptr
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: e04raf, e04ref, e04rjf, e04rwf, e04rxf, e04rzf
  implicit none
  type(c_ptr) :: handle
  integer(int64) :: ifail, idlc, basis(4), back(4)
  real(real64) :: x0(3), x(3), dual(4)

  write (*, '(a)') 'e04rwf example results'
  write (*, *)
  handle = c_null_ptr
  ifail = 0
  call e04raf(handle, 3_int64, ifail)
  call e04ref(handle, 3_int64, [1.0_real64, 2.0_real64, 3.0_real64], ifail)
  idlc = 0
  call e04rjf(handle, 1_int64, [1.0_real64], [1.0e20_real64], 3_int64, [1_int64, 1_int64, 1_int64], &
              [1_int64, 2_int64, 3_int64], [1.0_real64, 1.0_real64, 1.0_real64], idlc, ifail)
  x0 = [0.5_real64, 0.25_real64, 0.25_real64]
  basis = [1, 0, 0, 2]
  call e04rxf(handle, 'PRIMAL', 1_int64, 3_int64, x0, ifail)
  call e04rwf(handle, 'WARM START BASIS', 1_int64, 4_int64, basis, ifail)
  call e04rxf(handle, 'Primal', 0_int64, 3_int64, x, ifail)
  call e04rwf(handle, 'warm start basis', 0_int64, 4_int64, back, ifail)
  write (*, '(a,3f7.3)') 'Starting point read back:', x
  write (*, '(a,4i7)') 'Basis read back:         ', back
  write (*, *)
  write (*, '(a)') 'A basis of 3 entries:'
  ifail = -1
  call e04rwf(handle, 'WARM START BASIS', 1_int64, 3_int64, basis, ifail)
  write (*, *)
  write (*, '(a)') 'Dual variables before a solve:'
  ifail = -1
  call e04rxf(handle, 'DUAL VARIABLES', 0_int64, 4_int64, dual, ifail)
  ifail = 0
  call e04rzf(handle, ifail)
end program e04rwf_example
