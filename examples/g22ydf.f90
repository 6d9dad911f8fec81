! g22ydf example: a design matrix built for the model A*B + x, and the
! columns and labels of the reduced model B + x within it.
program g22ydf_example
  use, intrinsic :: iso_fortran_env, only: int64, real64
  use, intrinsic :: iso_c_binding, only: c_ptr, c_null_ptr
  use zem, only: g22yaf, g22ybf, g22ycf, g22ydf, g22zaf
  implicit none
  character(len=1) :: vnames(3) = ['A', 'B', 'x']
  integer(int64) :: levels(3) = [2, 3, 1]
  real(real64) :: dat(6, 3), x(6, 7)
  type(c_ptr) :: hform = c_null_ptr, hsub = c_null_ptr, hddesc = c_null_ptr, hxdesc = c_null_ptr
  integer(int64) :: mx, iintcpt, p, isx(7), vinfo(64), mlterm, j, ifail
  character(len=5) :: plab(7)

  write (*, '(a)') 'g22ydf example results'
  write (*, *)
  dat(:, 1) = [1, 2, 1, 2, 1, 2]
  dat(:, 2) = [1, 1, 2, 2, 3, 3]
  dat(:, 3) = [0.1_real64, 0.4_real64, 0.2_real64, 0.5_real64, 0.3_real64, 0.6_real64]
  ifail = 0
  call g22ybf(hddesc, 6_int64, 3_int64, levels, 3_int64, vnames, ifail)
  call g22yaf(hform, 'A*B + x', ifail)
  call g22ycf(hform, hddesc, dat, 6_int64, 3_int64, hxdesc, x, 6_int64, 7_int64, mx, ifail)
  call g22yaf(hsub, 'B + x', ifail)
  call g22ydf(0_int64, hsub, hxdesc, iintcpt, p, 7_int64, isx, 7_int64, plab, 64_int64, vinfo, mlterm, ifail)
  write (*, '(a,i0,a,i0,a,i0)') 'Columns of the design matrix: ', mx, '; used by B + x: ', p, &
    '; mean at ', iintcpt
  write (*, '(a,*(1x,i0))') 'isx:', isx(1:mx)
  write (*, '(a,i0,a)') 'Labels (cut to 5 characters; the longest has ', mlterm, '):'
  write (*, '(4x,a)') (plab(j), j = 1, p)
  write (*, *)
  call g22yaf(hsub, 'A:x', ifail)
  ifail = -1
  call g22ydf(0_int64, hsub, hxdesc, iintcpt, p, 0_int64, isx, 0_int64, plab, 0_int64, vinfo, mlterm, ifail)
  ifail = 0
  call g22zaf(hform, ifail)
  call g22zaf(hsub, ifail)
  call g22zaf(hddesc, ifail)
  call g22zaf(hxdesc, ifail)
end program g22ydf_example
