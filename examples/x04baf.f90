! x04baf example: write records to a unit; trailing blanks are dropped and
! an empty record prints as one blank.
program x04baf_example
  use, intrinsic :: iso_fortran_env, only: int64
  use zem, only: x04baf
  implicit none
  character(40) :: rec
  call x04baf(6_int64, 'x04baf example results')
  call x04baf(6_int64, '')
  rec = 'A record in a 40-character variable'
  call x04baf(6_int64, rec)
  write (*, '(a)') 'A line from the program itself, in order.'
end program x04baf_example
