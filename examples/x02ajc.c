/* x02 example: the machine constants through the C interface
 * (x02ahc, x02ajc, x02akc, x02alc, x02amc, x02anc, x02bbc, x02bec, x02bhc,
 * x02bjc, x02bkc, x02blc). */
#include <stdio.h>
#include <zem.h>

int main(void) {
  printf("x02 example results (C interface)\n\n");
  printf("x02ahc  largest sine/cosine argument   %.17g\n", x02ahc());
  printf("x02ajc  machine precision              %.17g\n", x02ajc());
  printf("x02akc  smallest normalised number     %.17g\n", x02akc());
  printf("x02alc  largest number                 %.17g\n", x02alc());
  printf("x02amc  safe range                     %.17g\n", x02amc());
  printf("x02anc  safe range (complex)           %.17g\n", x02anc());
  printf("x02bbc  largest integer                %lld\n", (long long)x02bbc());
  printf("x02bec  decimal digits                 %lld\n", (long long)x02bec());
  printf("x02bhc  base                           %lld\n", (long long)x02bhc());
  printf("x02bjc  base digits in the mantissa    %lld\n", (long long)x02bjc());
  printf("x02bkc  minimum exponent               %lld\n", (long long)x02bkc());
  printf("x02blc  maximum exponent               %lld\n", (long long)x02blc());
  return 0;
}
