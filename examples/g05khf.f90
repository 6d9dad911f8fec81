! g05khf example: three consumers share one Wichmann-Hill II stream by
! leap-frog; consumer k gets values k, k+3, k+6, ...
program g05khf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: g05kff, g05khf, g05saf
  implicit none
  integer(int64) :: base(29), state(29), seed(1), lstate, ifail, k
  real(real64) :: x(12)

  write (*, '(a)') 'g05khf example results'
  write (*, *)
  seed(1) = 1762
  lstate = 29
  ifail = 0
  call g05kff(4_int64, 0_int64, seed, 1_int64, base, lstate, ifail)
  state = base
  call g05saf(12_int64, state, x, ifail)
  write (*, '(a)') 'The stream:'
  write (*, '(6f9.6)') x
  do k = 1, 3
    state = base
    call g05khf(3_int64, k, state, ifail)
    call g05saf(4_int64, state, x, ifail)
    write (*, '(a,i0,a,4f9.6)') 'Consumer ', k, ':', x(1:4)
  end do
end program g05khf_example
