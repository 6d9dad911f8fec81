/* a00aac example: print the library's implementation details. */
#include <zem.h>

int main(void) {
  a00aac();
  return 0;
}
