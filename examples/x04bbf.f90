! x04bbf example: read records from a file until its end.
program x04bbf_example
  use, intrinsic :: iso_fortran_env, only: int64
  use zem, only: x04baf, x04bbf
  implicit none
  character(32) :: rec
  integer(int64) :: ifail

  open (20, file='records.txt', status='replace', action='write')
  write (20, '(a)') 'first record'
  write (20, '(a)') 'second record'
  close (20)
  open (20, file='records.txt', status='old', action='read')
  do
    ifail = 1
    call x04bbf(20_int64, rec, ifail)
    if (ifail /= 0) exit
    call x04baf(6_int64, 'Read: ' // rec)
  end do
  write (*, '(a,i0)') 'End of file: ifail = ', ifail
  close (20)
end program x04bbf_example
