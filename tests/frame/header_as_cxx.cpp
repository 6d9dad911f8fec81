// The public header compiles as C++ and its entries link from C++.
#include <zem.h>

int main() {
  Zem_Fail fail = ZEM_FAIL_INIT;
  int64_t unit = 0;
  x04aac(0, &unit);
  return (x02bhc() == 2 && unit == 6 && fail.code == NE_NOERROR) ? 0 : 1;
}
