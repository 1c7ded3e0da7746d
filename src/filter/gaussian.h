// Gaussian kernel construction shared by the specification functions and the single-call
// 32f Gaussian, and the integer arithmetic of the Gaussian passes.
#pragma once

#include <cmath>
#include <cstdint>

#include "core/numeric.h"
#include "rvpcv.h"

namespace rvp::filter {

// Normalised weights w_i / S for i = -K/2 .. K/2: the exponent in single precision, the
// exponential in double rounded to single, S summed in single precision in order.
inline void gauss_weights(int K, float sigma, float* out) {
  const int r = K / 2;
  const float d = 2.0f * sigma * sigma;
  float s = 0.0f;
  for (int i = -r; i <= r; ++i) {
    const float q = static_cast<float>(i * i) / d;
    out[i + r] = static_cast<float>(std::exp(-static_cast<double>(q)));
    s = s + out[i + r];
  }
  for (int i = 0; i < K; ++i) out[i] = out[i] / s;
}

// Integer taps: trunc(w / S * 2^shift + 0.5), formed in single precision.
inline int32_t gauss_int_tap(float w, int shift) {
  return static_cast<int32_t>(w * static_cast<float>(1 << shift) + 0.5f);
}

constexpr int kGaussShift8u = 12;
constexpr int kGaussShift16 = 15;
// The row pass drops this many fraction bits (rounded half up); the column pass drops the
// remaining 2*shift - kGaussRowDrop.
constexpr int kGaussRowDrop = 8;

inline int64_t shift_round(int64_t v, int s) { return (v + (int64_t{1} << (s - 1))) >> s; }

// 16-bit sources: 64-bit sums.
template <class S>
inline void gauss_row16(const S* src, int32_t* out, int n, const int32_t* taps, int K, int stride) {
  for (int i = 0; i < n; ++i) {
    int64_t acc = 0;
    for (int k = 0; k < K; ++k) acc += int64_t{taps[k]} * src[i + k * stride];
    out[i] = static_cast<int32_t>(shift_round(acc, kGaussRowDrop));
  }
}

template <class D>
inline void gauss_col16(const int32_t* const* rows, D* dst, int n, const int32_t* taps, int K) {
  for (int i = 0; i < n; ++i) {
    int64_t acc = 0;
    for (int k = 0; k < K; ++k) acc += int64_t{taps[k]} * rows[k][i];
    const int64_t v = shift_round(acc, 2 * kGaussShift16 - kGaussRowDrop);
    dst[i] = saturate<D>(v);
  }
}

}  // namespace rvp::filter
