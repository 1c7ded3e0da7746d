// Arithmetic of the row/column pipeline: one definition per form, shared by the drivers and
// the tests. The row kernels take the K source values under the kernel through an accessor so
// that interior columns (read straight from the row) and border columns (read through the
// border model) go through the same arithmetic.
#pragma once

#include <cmath>
#include <cstdint>

#include "core/numeric.h"
#include "rvpcv.h"

namespace rvp::filter {

// Which pipeline form: decides the accumulator and the conversion.
enum class PipeForm { S16, U8S16, U16, F32, Low };

// Row outputs of the 16s and 8u16s forms are converted with rounding inside whole blocks of
// this many columns starting at xAnchor, by truncation outside them (the first xAnchor columns
// and the remainder at the row end).
constexpr int kRowBlock = 8;

inline bool row_column_rounds(int x, int width, int anchor) {
  if (x < anchor) return false;
  const int blocks = width > anchor ? (width - anchor) / kRowBlock : 0;
  return x < anchor + blocks * kRowBlock;
}

// Multiplier of the reduced-precision forms: trunc(16384 / divisor) in single precision.
inline int32_t low_multiplier(int divisor) {
  return static_cast<int32_t>(16384.0f / static_cast<float>(divisor));
}

inline int16_t low_finish(int16_t sum, int32_t m) {
  return saturate<int16_t>((int32_t{sum} * m) >> 14);
}

template <class T>
inline T convert_scaled(float v, bool round) {
  return saturate<T>(round ? round_even(v) : std::trunc(v));
}

// Row filter: one output value from the K source values `get(k)`.
template <PipeForm F, class Src, class Dst, class Tap, class Get>
inline Dst row_value(const Tap* taps, int K, const Get& get, float recip, bool exact, int32_t m,
                     bool round) {
  if constexpr (F == PipeForm::F32) {
    float s = get(0) * taps[0];
    for (int k = 1; k < K; ++k) s = s + get(k) * taps[k];
    return s;
  } else if constexpr (F == PipeForm::Low) {
    int16_t s = 0;
    for (int k = 0; k < K; ++k)
      s = static_cast<int16_t>(s + static_cast<int16_t>(int32_t{get(k)} * taps[k]));
    return low_finish(s, m);
  } else if constexpr (F == PipeForm::U16) {
    int64_t s = 0;
    for (int k = 0; k < K; ++k) s += int64_t{get(k)} * taps[k];
    return convert_scaled<Dst>(static_cast<float>(s) * recip, true);
  } else {
    float f;
    if (exact) {
      int32_t s = 0;
      for (int k = 0; k < K; ++k) s += int32_t{get(k)} * taps[k];
      f = static_cast<float>(s);
    } else {
      f = static_cast<float>(get(0)) * static_cast<float>(taps[0]);
      for (int k = 1; k < K; ++k) f = f + static_cast<float>(get(k)) * static_cast<float>(taps[k]);
    }
    return convert_scaled<Dst>(f * recip, round);
  }
}

// Column filter: output x of one row from K source rows. Each tap is first scaled to
// tap·(1/divisor) in single precision (recip = 1 for 32f); `scaled` holds those values
// precomputed, or is null and they are formed here.
template <PipeForm F, class Src, class Dst, class Tap>
inline Dst column_value(const Src* const* rows, int x, const Tap* taps, const float* scaled,
                        float recip, int K, int32_t m) {
  if constexpr (F == PipeForm::Low) {
    int16_t s = 0;
    for (int k = 0; k < K; ++k)
      s = static_cast<int16_t>(s + static_cast<int16_t>(int32_t{rows[k][x]} * taps[k]));
    return low_finish(s, m);
  } else {
    auto tap = [&](int k) { return scaled ? scaled[k] : static_cast<float>(taps[k]) * recip; };
    float s = static_cast<float>(rows[0][x]) * tap(0);
    for (int k = 1; k < K; ++k) s = s + static_cast<float>(rows[k][x]) * tap(k);
    if constexpr (F == PipeForm::F32)
      return s;
    else
      return convert_scaled<Dst>(s, true);
  }
}

// A column row: K fixed at compile time for the dedicated 3- and 5-tap paths (0 = any).
template <int KC, PipeForm F, class Src, class Dst, class Tap>
inline void column_row(const Src* const* rows, Dst* dst, int n, const Tap* taps,
                       const float* scaled, float recip, int Kr, int32_t m) {
  const int K = KC > 0 ? KC : Kr;
  for (int x = 0; x < n; ++x)
    dst[x] = column_value<F, Src, Dst, Tap>(rows, x, taps, scaled, recip, K, m);
}

}  // namespace rvp::filter
