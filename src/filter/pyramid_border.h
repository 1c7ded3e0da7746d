// Index mapping for the pyramid filters: mirror without repeating the edge pixel. For a row
// a b c d the positions -2, -1 read c, b and positions 4, 5 read c, b; the reflection repeats
// with period 2(n - 1), so a kernel wider than the image still lands inside it. A one-pixel
// row has nothing to mirror and repeats its only pixel.
#pragma once

#include <cstdint>

namespace rvp::pyr {

inline int mirror_index(int64_t i, int n) {
  if (n <= 1) return 0;
  const int64_t period = 2 * int64_t{n - 1};
  int64_t m = i % period;
  if (m < 0) m += period;
  return static_cast<int>(m >= n ? period - m : m);
}

}  // namespace rvp::pyr
