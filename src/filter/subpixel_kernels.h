// Row kernel of the sub-pixel copies: four single-precision products added in a fixed order,
//   v = ((w00*s(x, y) + w01*s(x+1, y)) + w10*s(x, y+1)) + w11*s(x+1, y+1)
// (no fused multiply-add), then stored as float, or rounded to nearest (ties to even) and
// saturated for integer destinations.
#pragma once

#include <immintrin.h>

#include <type_traits>

#include "core/numeric.h"
#include "core/simd.h"
#include "rvpcv.h"

namespace rvp::subpix {

struct Weights {
  float w00, w01, w10, w11;
};

template <class S, class D>
struct CopyKernel {
  using Dst = D;
  static constexpr int lanes = 8;
  const S* r0;
  const S* r1;
  D* dst;
  Weights w;

  static float interp(const Weights& w, float a, float b, float c, float d) {
    float v = w.w00 * a;
    v = v + w.w01 * b;
    v = v + w.w10 * c;
    v = v + w.w11 * d;
    return v;
  }

  void scalar(int i) const {
    const float v = interp(w, static_cast<float>(r0[i]), static_cast<float>(r0[i + 1]),
                           static_cast<float>(r1[i]), static_cast<float>(r1[i + 1]));
    if constexpr (std::is_same_v<D, Rvp32f>)
      dst[i] = v;
    else
      dst[i] = saturate<D>(round_even(v));
  }

  void vector(int i) const {
    __m256 v = _mm256_mul_ps(_mm256_set1_ps(w.w00), simd::load8_as_f32(r0 + i));
    v = _mm256_add_ps(v, _mm256_mul_ps(_mm256_set1_ps(w.w01), simd::load8_as_f32(r0 + i + 1)));
    v = _mm256_add_ps(v, _mm256_mul_ps(_mm256_set1_ps(w.w10), simd::load8_as_f32(r1 + i)));
    v = _mm256_add_ps(v, _mm256_mul_ps(_mm256_set1_ps(w.w11), simd::load8_as_f32(r1 + i + 1)));
    if constexpr (std::is_same_v<D, Rvp32f>) {
      _mm256_storeu_ps(dst + i, v);
    } else {
      // Sources are non-negative integers, so v lies in [0, max(S)] and the conversion (ties to
      // even, the default mode) never overflows; the packs saturate like the scalar path.
      const __m256i q = _mm256_cvtps_epi32(v);
      const __m128i p16 =
          _mm_packus_epi32(_mm256_castsi256_si128(q), _mm256_extracti128_si256(q, 1));
      if constexpr (std::is_same_v<D, Rvp16u>)
        _mm_storeu_si128(reinterpret_cast<__m128i*>(dst + i), p16);
      else
        _mm_storel_epi64(reinterpret_cast<__m128i*>(dst + i), _mm_packus_epi16(p16, p16));
    }
  }
};

}  // namespace rvp::subpix
