! Client test of the g05 generator routines through the Fortran interface:
! the ifail convention on a length query and on failures, first values of
! every generator, leap-frog and skip-ahead.  The last call fails with
! ifail = 0 on entry and so stops the program.
program client_g05f
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use zem, only: g05kff, g05kgf, g05khf, g05kjf, g05kkf, g05saf
  implicit none
  integer(int64), parameter :: ls = 1260
  integer(int64) :: state(ls), copy(ls), seed(2), lstate, ifail, genid
  real(real64) :: x(12)
  character(len=16), parameter :: names(6) = [character(len=16) :: 'basic', 'Wichmann-Hill I', &
       'Mersenne Twister', 'Wichmann-Hill II', 'ACORN', 'MRG32k3a']

  seed = [1762_int64, 0_int64]
  write (*, '(a)') 'Length queries (ifail = 1: quiet) and first values'
  do genid = 1, 6
    lstate = 0
    ifail = 1
    call g05kff(genid, 1_int64, seed, 1_int64, state, lstate, ifail)
    write (*, '(a16,a,i5,a,i3)', advance='no') names(genid), ' lstate', lstate, ' ifail', ifail
    ifail = 0
    call g05kff(genid, 1_int64, seed, 1_int64, state, lstate, ifail)
    call g05saf(3_int64, state, x, ifail)
    write (*, '(3es25.16)') x(1:3)
  end do

  write (*, '(/a)') 'A length query with ifail = 0 warns and returns'
  lstate = 0
  ifail = 0
  call g05kgf(6_int64, 0_int64, state, lstate, ifail)
  write (*, '(a,i0,a,i0)') 'lstate = ', lstate, ', ifail = ', ifail

  write (*, '(/a)') 'Leap-frog: stream 3 of 3 is every third value from the third'
  lstate = ls
  ifail = 0
  call g05kff(3_int64, 0_int64, seed, 1_int64, state, lstate, ifail)
  copy = state
  call g05saf(9_int64, state, x, ifail)
  call g05khf(3_int64, 3_int64, copy, ifail)
  call g05saf(3_int64, copy, x(10:), ifail)
  write (*, '(a,3es25.16)') 'values 3, 6, 9:', x(3), x(6), x(9)
  write (*, '(a,3es25.16)') 'stream 3 of 3: ', x(10:12)

  write (*, '(/a)') 'Skip-ahead by 2**40 (g05kkf) and by 1099511627776 (g05kjf)'
  ifail = 0
  call g05kff(3_int64, 0_int64, seed, 1_int64, state, lstate, ifail)
  copy = state
  call g05kkf(40_int64, state, ifail)
  call g05kjf(1099511627776_int64, copy, ifail)
  call g05saf(2_int64, state, x, ifail)
  call g05saf(2_int64, copy, x(3:), ifail)
  write (*, '(2es25.16)') x(1:4)

  write (*, '(/a)') 'Failures with ifail = -1 (noisy soft)'
  ifail = -1
  call g05kff(7_int64, 0_int64, seed, 1_int64, state, lstate, ifail)
  ifail = -1
  call g05kff(5_int64, 0_int64, seed, 0_int64, state, lstate, ifail)
  seed(1) = 0
  ifail = -1
  call g05kff(5_int64, 0_int64, seed, 1_int64, state, lstate, ifail)
  seed(1) = 1762
  lstate = 20
  ifail = -1
  call g05kff(2_int64, 0_int64, seed, 1_int64, state, lstate, ifail)
  lstate = 700
  ifail = 0
  call g05kff(3_int64, 0_int64, seed, 1_int64, state, lstate, ifail)
  ifail = -1
  call g05kjf(1_int64, state, ifail)
  ifail = -1
  call g05kkf(1_int64, state, ifail)
  lstate = ls
  seed(2) = 10
  ifail = 0
  call g05kff(5_int64, 0_int64, seed, 2_int64, state, lstate, ifail)
  ifail = -1
  call g05khf(4_int64, 1_int64, state, ifail)
  ifail = -1
  call g05khf(4_int64, 5_int64, state, ifail)
  ifail = 7
  call g05kjf(-3_int64, state, ifail)
  write (*, '(a,i0)') 'ifail = 7 on entry: quiet, ifail = ', ifail
  state(2) = 0
  copy = state
  ifail = -1
  call g05saf(1_int64, state, x, ifail)
  write (*, '(a,l1)') 'state unchanged: ', all(state == copy)
  write (*, '(/a)') 'ifail = 0 on entry: a hard failure stops the program'
  ifail = 0
  call g05saf(1_int64, state, x, ifail)
  write (*, '(a)') 'not reached'
end program client_g05f
