! Zem: the Fortran interface module.  Explicit interfaces for every Fortran
! entry, with 64-bit integers, so that gfortran checks each call:
!     use zem
module zem
  use, intrinsic :: iso_fortran_env, only: int64, real64
  implicit none
  private :: int64, real64
  include 'zem_frame.fi'
  include 'zem_c05.fi'
  include 'zem_d01.fi'
  include 'zem_d02.fi'
  include 'zem_e04.fi'
  include 'zem_g01.fi'
  include 'zem_g05.fi'
  include 'zem_g22.fi'
  include 'zem_s15.fi'
  include 'zem_s30.fi'
  include 'zem_s14.fi'
end module zem
