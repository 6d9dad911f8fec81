! g22znf example: options of a formula and a data handle read back, with
! the kind of value each returns.
module g22znf_show
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use, intrinsic :: iso_c_binding, only: c_ptr
  use zem, only: g22znf
  implicit none
contains
  subroutine show(h, name)
    type(c_ptr), intent(in) :: h
    character(len=*), intent(in) :: name
    integer(int64) :: ivalue, optype, ifail
    real(real64) :: rvalue
    character(len=30) :: cvalue
    ifail = 1
    call g22znf(h, name, ivalue, rvalue, cvalue, optype, ifail)
    if (ifail /= 0) then
      write (*, '(a,a,i0)') name, ': ifail = ', ifail
    else if (optype == 1) then
      write (*, '(a14,a,i0)') name, ' (integer)   ', ivalue
    else
      write (*, '(a14,a,a)') name, ' (character) ', trim(cvalue)
    end if
  end subroutine show
end module g22znf_show

program g22znf_example
  use, intrinsic :: iso_fortran_env, only: int64
  use, intrinsic :: iso_c_binding, only: c_ptr, c_null_ptr
  use zem, only: g22yaf, g22ybf, g22zaf
  use g22znf_show, only: show
  implicit none
  type(c_ptr) :: hform = c_null_ptr, hddesc = c_null_ptr
  integer(int64) :: levels(2) = [2, 1], ifail
  character(len=1) :: vnames(1) = [' ']

  write (*, '(a)') 'g22znf example results'
  write (*, *)
  ifail = 0
  call g22yaf(hform, 'V1*V2 SUBJECT = id', ifail)
  call g22ybf(hddesc, 8_int64, 2_int64, levels, 0_int64, vnames, ifail)
  call show(hform, 'FORMULA')
  call show(hform, 'CONTRAST')
  call show(hform, 'EXPLICIT MEAN')
  call show(hform, 'SUBJECT')
  call show(hddesc, 'SORDER')
  call show(hddesc, 'CONTRAST')
  call g22zaf(hform, ifail)
  call g22zaf(hddesc, ifail)
end program g22znf_example
