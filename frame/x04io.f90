! The library's only contact with the Fortran run-time: writing and reading
! one record on a unit, and stopping the program after a hard failure.
! Writing through the run-time (rather than to a file descriptor) is what
! lets the library's lines interleave with a Fortran caller's own output and
! reach a file the caller opened on the unit.

subroutine x04_fwrite(unit, rec, ios)
  implicit none
  integer(8), intent(in) :: unit
  character(*), intent(in) :: rec
  integer(8), intent(out) :: ios
  integer :: stat
  write (unit, '(a)', iostat=stat) rec
  if (stat == 0) flush (unit, iostat=stat)
  ios = stat
end subroutine x04_fwrite

! ios: 0 read, negative end of file, positive any other error.
subroutine x04_fread(unit, rec, ios)
  implicit none
  integer(8), intent(in) :: unit
  character(*), intent(out) :: rec
  integer(8), intent(out) :: ios
  integer :: stat
  rec = ' '
  read (unit, '(a)', iostat=stat) rec
  ios = stat
end subroutine x04_fread

! Ends the program with exit status 1; the message lines are already out.
subroutine p01_fstop()
  implicit none
  stop 1, quiet=.true.
end subroutine p01_fstop
