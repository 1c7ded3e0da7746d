// Scalar numeric helpers with stated rounding: every kernel's scalar path uses these so that its
// vector path has one definition to match.
#pragma once

#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

namespace rvp {

// Round to nearest, ties to even (the default rounding mode; never changed by the library).
inline float round_even(float v) { return std::nearbyint(v); }
inline double round_even(double v) { return std::nearbyint(v); }

template <class T, class V>
inline T saturate(V v) {
  using L = std::numeric_limits<T>;
  if constexpr (std::is_floating_point_v<V>) {
    if (!(v >= static_cast<V>(L::lowest()))) return std::isnan(v) ? T(0) : L::lowest();
    if (v > static_cast<V>(L::max())) return L::max();
    return static_cast<T>(v);
  } else {
    if (v < static_cast<V>(L::lowest())) return L::lowest();
    if (v > static_cast<V>(L::max())) return L::max();
    return static_cast<T>(v);
  }
}

template <class T>
inline T clamp_to(int64_t v, T lo, T hi) {
  return v < lo ? lo : (v > hi ? hi : static_cast<T>(v));
}

// The sign bit cleared, NaN included (std::fabs is specified the same way; this says it).
inline float clear_sign(float v) {
  uint32_t b;
  std::memcpy(&b, &v, 4);
  b &= 0x7FFFFFFFu;
  std::memcpy(&v, &b, 4);
  return v;
}

inline float fma(float a, float b, float c) { return std::fmaf(a, b, c); }
inline double fma(double a, double b, double c) { return std::fma(a, b, c); }

}  // namespace rvp
