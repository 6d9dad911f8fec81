! e04rmf example: a nonlinear least-squares objective.  Fitting the model
!   y = x1 exp(x2 t) + x3
! to five observations gives five residuals r_i(x) = y(t_i) - y_i, each
! depending on all three parameters (dense first derivatives).  The model is
! then changed to two exponentials with separate data sets, whose
! derivatives are sparse.
program e04rmf_example
  use, intrinsic :: iso_c_binding, only: c_ptr, c_null_ptr
  use, intrinsic :: iso_fortran_env, only: int64
  use zem, only: e04raf, e04rmf, e04taf, e04ryf, e04rzf
  implicit none
  type(c_ptr) :: handle
  integer(int64) :: ifail, none(1)
  ! Residuals 1-3 use x1, x2; residuals 4-6 use x3, x4 (irowrd: variable,
  ! icolrd: residual).
  integer(int64), parameter :: irowrd(12) = [1, 2, 1, 2, 1, 2, 3, 4, 3, 4, 3, 4]
  integer(int64), parameter :: icolrd(12) = [1, 1, 2, 2, 3, 3, 4, 4, 5, 5, 6, 6]

  write (*, '(a)') 'e04rmf example results'
  write (*, *)
  handle = c_null_ptr
  ifail = 0
  none = 0
  call e04raf(handle, 3_int64, ifail)
  call e04rmf(handle, 5_int64, 0_int64, 0_int64, none, none, ifail)
  write (*, '(a)') 'Dense model, 5 residuals in 3 parameters'
  call e04ryf(handle, 6_int64, 'Overview, Objective', ifail)
  call e04taf(handle, 1_int64, ifail)
  call e04rmf(handle, 6_int64, 1_int64, 12_int64, irowrd, icolrd, ifail)
  write (*, *)
  write (*, '(a)') 'Sparse model, 6 residuals in 4 parameters'
  call e04ryf(handle, 6_int64, 'Overview, Objective', ifail)
  call e04rzf(handle, ifail)
end program e04rmf_example
