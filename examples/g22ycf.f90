! g22ycf example: the design matrix of the model A + x under each of the
! seven contrasts, for four observations of a categorical variable A
! (3 levels) and a continuous x; the first call asks for the size.
program g22ycf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use, intrinsic :: iso_c_binding, only: c_ptr, c_null_ptr
  use zem, only: g22yaf, g22ybf, g22ycf, g22ydf, g22zaf, g22zmf
  implicit none
  character(len=10), parameter :: contrasts(7) = [character(len=10) :: 'FIRST', 'LAST', 'SUM FIRST', &
                                                  'SUM LAST', 'HELMERT', 'POLYNOMIAL', 'DUMMY']
  character(len=1) :: vnames(2) = ['A', 'x']
  integer(int64) :: levels(2) = [3, 1]
  real(real64) :: dat(4, 2), x(4, 8), nox(1, 1)
  type(c_ptr) :: hform = c_null_ptr, hddesc = c_null_ptr, hxdesc = c_null_ptr
  integer(int64) :: mx, i, k, ip, p, mlterm, ifail, isx(1), vinfo(1)
  character(len=12) :: plab(8)

  write (*, '(a)') 'g22ycf example results'
  write (*, *)
  dat(:, 1) = [1, 2, 3, 2]
  dat(:, 2) = [0.5_real64, 1.0_real64, 1.5_real64, 2.0_real64]
  ifail = 0
  call g22ybf(hddesc, 4_int64, 2_int64, levels, 2_int64, vnames, ifail)
  call g22yaf(hform, 'A + x', ifail)
  ! x of no size: a size query (a warning, reported with ifail = -1).
  ifail = -1
  call g22ycf(hform, hddesc, dat, 4_int64, 2_int64, hxdesc, nox, 0_int64, 0_int64, mx, ifail)
  write (*, '(a,i0)') 'Size query: mx = ', mx
  do k = 1, 7
    ifail = 0
    call g22zmf(hform, 'CONTRAST = ' // trim(contrasts(k)), ifail)
    call g22ycf(hform, hddesc, dat, 4_int64, 2_int64, hxdesc, x, 4_int64, 8_int64, mx, ifail)
    call g22ydf(1_int64, c_null_ptr, hxdesc, ip, p, 0_int64, isx, 8_int64, plab, 0_int64, vinfo, mlterm, ifail)
    write (*, *)
    write (*, '(a,a)') 'Contrast ', trim(contrasts(k))
    write (*, '(a4,*(a10))') '   A', (adjustr(plab(i)(1:10)), i = 1, mx)
    do i = 1, 4
      write (*, '(i4,*(f10.4))') nint(dat(i, 1), int64), x(i, 1:mx)
    end do
  end do
  call g22zaf(hform, ifail)
  call g22zaf(hddesc, ifail)
  call g22zaf(hxdesc, ifail)
end program g22ycf_example
