! The library's only contact with the Fortran run-time: writing and reading
! one record on a unit, and stopping the program after a hard failure.
! Writing through the run-time (rather than to a file descriptor) is what
! lets the library's lines interleave with a Fortran caller's own output and
! reach a file the caller opened on the unit.

!
! The library writes and reads only units that are connected: the
! preconnected standard units, a file the program opened on the unit, or,
! for a unit nobody opened, the file fort.N that the run-time connects it to
! if that file already exists (a C program's way to name a file).  Any other
! unit is a failed write or read (ios = 1): no file is ever created behind
! the program's back.

logical function x04_connected(unit)
  implicit none
  integer(8), intent(in) :: unit
  integer :: stat
  logical :: opened, exists
  character(32) :: name
  x04_connected = .false.
  inquire (unit=unit, opened=opened, iostat=stat)
  if (stat /= 0) return
  if (.not. opened) then
    write (name, '(a,i0)') 'fort.', unit
    inquire (file=trim(name), exist=exists, iostat=stat)
    if (stat /= 0 .or. .not. exists) return
  end if
  x04_connected = .true.
end function x04_connected

subroutine x04_fwrite(unit, rec, ios)
  implicit none
  integer(8), intent(in) :: unit
  character(*), intent(in) :: rec
  integer(8), intent(out) :: ios
  integer :: stat
  logical, external :: x04_connected
  ios = 1
  if (.not. x04_connected(unit)) return
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
  logical, external :: x04_connected
  rec = ' '
  ios = 1
  if (.not. x04_connected(unit)) return
  read (unit, '(a)', iostat=stat) rec
  ios = stat
end subroutine x04_fread

! Ends the program with exit status 1; the message lines are already out.
subroutine p01_fstop()
  implicit none
  stop 1, quiet=.true.
end subroutine p01_fstop
