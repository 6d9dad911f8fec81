! e04rnf example: a matrix inequality and its bilinear terms (e04rnf and
! e04rpf).  In two variables the 3 x 3 block-diagonal constraint
!   x1 A1 + x2 A2 - A0 >= 0,  blocks of sizes 2 and 1,
!   A1 = [1 0; 0 0] (+) [0],  A2 = [0 0; 0 1] (+) [1],
!   A0 = [0 1; 1 0] (+) [-1]
! says x1 x2 >= 1 (x1, x2 >= 0) and x2 >= -1.  The bilinear term
! x1 x2 Q with Q = [0 0; 0 0] (+) [1] is then added to the block, and the
! constraint reads x1 A1 + x2 A2 + x1 x2 Q - A0 >= 0.
program e04rnf_example
  use, intrinsic :: iso_c_binding, only: c_ptr, c_null_ptr
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: e04raf, e04rnf, e04rpf, e04ryf, e04rzf
  implicit none
  type(c_ptr) :: handle
  integer(int64) :: ifail, idblk
  ! A0, A1, A2 one after the other, upper triangles.
  integer(int64), parameter :: nnza(3) = [2, 1, 2], blksizea(2) = [2, 1]
  integer(int64), parameter :: irowa(5) = [1, 3, 1, 2, 3], icola(5) = [2, 3, 1, 2, 3]
  real(real64), parameter :: a(5) = [1.0_real64, -1.0_real64, 1.0_real64, 1.0_real64, 1.0_real64]

  write (*, '(a)') 'e04rnf example results'
  write (*, *)
  handle = c_null_ptr
  ifail = 0
  call e04raf(handle, 2_int64, ifail)
  idblk = 0
  call e04rnf(handle, 2_int64, 3_int64, nnza, 5_int64, irowa, icola, a, 2_int64, blksizea, idblk, ifail)
  write (*, '(a,i0)') 'Matrix inequality defined, idblk = ', idblk
  call e04rpf(handle, idblk, 3_int64, 1_int64, [1_int64], [2_int64], [1_int64], 1_int64, [3_int64], [3_int64], &
              [1.0_real64], ifail)
  call e04ryf(handle, 6_int64, 'Overview, Matrix Constraints, Matrix Constraints Detailed', ifail)
  ! A block takes its bilinear terms once.
  write (*, *)
  write (*, '(a,i0,a)') 'Second e04rpf on block ', idblk, ':'
  ifail = -1
  call e04rpf(handle, idblk, 3_int64, 1_int64, [1_int64], [2_int64], [1_int64], 1_int64, [3_int64], [3_int64], &
              [1.0_real64], ifail)
  ifail = 0
  call e04rzf(handle, ifail)
end program e04rnf_example
