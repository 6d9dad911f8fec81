! a00aaf example: print the library's implementation details.
program a00aaf_example
  use zem, only: a00aaf
  implicit none
  call a00aaf()
end program a00aaf_example
