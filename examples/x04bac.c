/* x04bac example: write records to a unit; trailing blanks are dropped and
 * an empty record prints as one blank. */
#include <stdio.h>
#include <zem.h>

int main(void) {
  x04bac(6, "x04bac example results");
  x04bac(6, "");
  x04bac(6, "A record with trailing blanks      ");
  x04bac(6, "   and one with leading blanks");
  return 0;
}
