// Plain references for the filter family tests: bordered pixel reads written from the rules
// (iterated reflection, repeated wrapping) rather than from the library's closed forms.
#pragma once

#include <cstdint>
#include <cstring>
#include <random>
#include <vector>

#include "rvpcv.h"
#include "support/images.h"

namespace rvpt {

// Index that supplies position i of a line of n, -1000000 for "border value"; positions on a
// side held in memory are kept.
inline int ref_map(int i, int n, int base, bool mem_lo, bool mem_hi) {
  if (i >= 0 && i < n) return i;
  if ((i < 0 && mem_lo) || (i >= n && mem_hi)) return i;
  switch (base) {
    case 0:
      return -1000000;
    case 1:
      return i < 0 ? 0 : n - 1;
    case 2:
      while (i < 0) i += n;
      while (i >= n) i -= n;
      return i;
    case 3:
      if (n == 1) return 0;
      while (i < 0 || i >= n) {
        if (i < 0) i = -i;
        if (i >= n) i = 2 * (n - 1) - i;
      }
      return i;
    default:
      while (i < 0 || i >= n) {
        if (i < 0) i = -i - 1;
        if (i >= n) i = 2 * n - 1 - i;
      }
      return i;
  }
}

// A bordered view of an image region given by pointer/step/size for selector `type`
// (6 meaning all sides in memory).
template <class T>
struct RefBorder {
  const T* base;
  int step, w, h, ch, type;
  const T* value;
  T at(int y, int x, int c) const {
    int b = type & 0xF, f = type & 0xF0;
    if (b == 6) {
      b = 0;
      f = 0xF0;
    }
    const int my = ref_map(y, h, b, f & 0x10, f & 0x20);
    const int mx = ref_map(x, w, b, f & 0x40, f & 0x80);
    if (my == -1000000 || mx == -1000000) return value[c];
    T v;
    std::memcpy(&v,
                reinterpret_cast<const uint8_t*>(base) + ptrdiff_t(step) * my +
                    (ptrdiff_t(mx) * ch + c) * ptrdiff_t(sizeof(T)),
                sizeof(T));
    return v;
  }
};

// Random fill of every element of every channel (fill_random of images.h indexes pixels, which
// only covers one-channel images).
template <class T>
void fill_all(TestImage<T>& img, std::mt19937& rng) {
  for (int y = 0; y < img.height(); ++y)
    for (int x = 0; x < img.width(); ++x)
      for (int c = 0; c < img.channels(); ++c) img.set(x, y, random_value<T>(rng), c);
}

}  // namespace rvpt
