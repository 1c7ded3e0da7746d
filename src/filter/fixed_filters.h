// Kernel tables of the fixed-kernel filters (Sobel family, Scharr, Laplacian, Lowpass).
#pragma once

#include <cstdint>
#include <cstdlib>
#include <initializer_list>

namespace rvp::filter {

enum class Fixed {
  NegVert,
  HorizSecond,
  VertSecond,
  Cross,
  ScharrHoriz,
  ScharrVert,
  Laplacian,
  Lowpass,
  SobelHoriz,
  SobelVert
};

// A filter as a sum of `terms` separable terms, each a horizontal factor h and a vertical
// factor v of K taps.
struct FixedKernel {
  int K = 3;
  int terms = 1;
  int16_t h[2][5] = {};
  int16_t v[2][5] = {};
};

inline FixedKernel fixed_kernel(Fixed f, bool five) {
  FixedKernel k;
  k.K = five ? 5 : 3;
  auto set = [&](int t, std::initializer_list<int> h, std::initializer_list<int> v) {
    int i = 0;
    for (int x : h) k.h[t][i++] = static_cast<int16_t>(x);
    i = 0;
    for (int x : v) k.v[t][i++] = static_cast<int16_t>(x);
  };
  switch (f) {
    case Fixed::NegVert:
      five ? set(0, {1, 2, 0, -2, -1}, {1, 4, 6, 4, 1}) : set(0, {1, 0, -1}, {1, 2, 1});
      break;
    case Fixed::HorizSecond:
      five ? set(0, {1, 4, 6, 4, 1}, {1, 0, -2, 0, 1}) : set(0, {1, 2, 1}, {1, -2, 1});
      break;
    case Fixed::VertSecond:
      five ? set(0, {1, 0, -2, 0, 1}, {1, 4, 6, 4, 1}) : set(0, {1, -2, 1}, {1, 2, 1});
      break;
    case Fixed::Cross:
      five ? set(0, {1, 2, 0, -2, -1}, {-1, -2, 0, 2, 1}) : set(0, {1, 0, -1}, {-1, 0, 1});
      break;
    case Fixed::ScharrHoriz:
      set(0, {3, 10, 3}, {-1, 0, 1});
      break;
    case Fixed::ScharrVert:
      set(0, {-1, 0, 1}, {3, 10, 3});
      break;
    case Fixed::Laplacian:
      k.terms = 2;
      if (five) {
        set(0, {1, 0, -2, 0, 1}, {1, 4, 6, 4, 1});
        set(1, {1, 4, 6, 4, 1}, {1, 0, -2, 0, 1});
      } else {
        set(0, {1, -2, 1}, {1, 2, 1});
        set(1, {1, 2, 1}, {1, -2, 1});
      }
      break;
    case Fixed::Lowpass:
      five ? set(0, {1, 1, 1, 1, 1}, {1, 1, 1, 1, 1}) : set(0, {1, 1, 1}, {1, 1, 1});
      break;
    case Fixed::SobelHoriz:
      five ? set(0, {1, 4, 6, 4, 1}, {-1, -2, 0, 2, 1}) : set(0, {1, 2, 1}, {-1, 0, 1});
      break;
    case Fixed::SobelVert:
      five ? set(0, {-1, -2, 0, 2, 1}, {1, 4, 6, 4, 1}) : set(0, {-1, 0, 1}, {1, 2, 1});
      break;
  }
  return k;
}

// Sum of the absolute values of the 2-D kernel: the divisor of the 8u8s forms (and of Lowpass).
inline int kernel_abs_sum(const FixedKernel& k) {
  int s = 0;
  for (int y = 0; y < k.K; ++y)
    for (int x = 0; x < k.K; ++x) {
      int v = 0;
      for (int t = 0; t < k.terms; ++t) v += k.h[t][x] * k.v[t][y];
      s += std::abs(v);
    }
  return s;
}

}  // namespace rvp::filter
