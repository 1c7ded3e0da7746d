/* The public header compiled as strict C99 and used from C. */
#include <stdio.h>
#include <string.h>

#include "rvpcv.h"

int main(void) {
  const RvpLibraryVersion* v = rvpcvGetLibVersion();
  Rvp8u a[6] = {1, 200, 3, 4, 5, 6}, b[6] = {3, 100, 3, 0, 9, 6}, d[6];
  RvpiSize roi = {3, 2};
  RvpStatus st = rvpiAbsDiff_8u_C1R(a, 3, b, 3, d, 3, roi);
  if (v->major != 8 || strcmp(v->targetCpu, "l9") != 0 || st != rvpStsNoErr || d[0] != 2 ||
      d[1] != 100 || d[4] != 4) {
    fprintf(stderr, "C99 smoke test failed\n");
    return 1;
  }
  printf("C99 program linked %s %s\n", v->Name, v->Version);
  return 0;
}
