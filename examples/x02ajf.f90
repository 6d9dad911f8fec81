! x02 example: the machine constants through the Fortran interface
! (x02ahf, x02ajf, x02akf, x02alf, x02amf, x02anf, x02bbf, x02bef, x02bhf,
! x02bjf, x02bkf, x02blf).
program x02ajf_example
  use zem
  implicit none
  write (*, '(a)') 'x02 example results (Fortran interface)'
  write (*, *)
  write (*, '(a,es24.16e3)') 'x02ahf  largest sine/cosine argument ', x02ahf()
  write (*, '(a,es24.16e3)') 'x02ajf  machine precision            ', x02ajf()
  write (*, '(a,es24.16e3)') 'x02akf  smallest normalised number   ', x02akf()
  write (*, '(a,es24.16e3)') 'x02alf  largest number               ', x02alf()
  write (*, '(a,es24.16e3)') 'x02amf  safe range                   ', x02amf()
  write (*, '(a,es24.16e3)') 'x02anf  safe range (complex)         ', x02anf()
  write (*, '(a,i0)') 'x02bbf  largest integer              ', x02bbf()
  write (*, '(a,i0)') 'x02bef  decimal digits               ', x02bef()
  write (*, '(a,i0)') 'x02bhf  base                         ', x02bhf()
  write (*, '(a,i0)') 'x02bjf  base digits in the mantissa  ', x02bjf()
  write (*, '(a,i0)') 'x02bkf  minimum exponent             ', x02bkf()
  write (*, '(a,i0)') 'x02blf  maximum exponent             ', x02blf()
end program x02ajf_example
