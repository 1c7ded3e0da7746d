/* A small C program against the installed library: the absolute difference of two frames. */
#include <stdio.h>

#include "rvpcv.h"

int main(void) {
  enum { W = 8, H = 2 };
  Rvp8u frame1[H][W], frame2[H][W], diff[H][W];
  RvpiSize roi = {W, H};
  int x, y;
  for (y = 0; y < H; ++y)
    for (x = 0; x < W; ++x) {
      frame1[y][x] = (Rvp8u)(x * 30);
      frame2[y][x] = (Rvp8u)(255 - x * 30);
    }
  if (rvpiAbsDiff_8u_C1R(&frame1[0][0], W, &frame2[0][0], W, &diff[0][0], W, roi) != rvpStsNoErr)
    return 1;
  for (x = 0; x < W; ++x) printf("%d ", diff[0][x]);
  printf("\n%s\n", rvpcvGetLibVersion()->Version);
  return 0;
}
