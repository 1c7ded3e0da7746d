// Row kernel of the motion-history update. Both paths work on the bit patterns without
// branches: the clear decision is a signed comparison of ordered integer keys, the silhouette
// decision a compare-to-zero mask, and the new value is selected with and/or.
#pragma once

#include <immintrin.h>

#include <cstdint>
#include <cstring>
#include <type_traits>

#include "core/simd.h"
#include "rvpcv.h"

namespace rvp::arith {

// Ordered integer key of a float's bit pattern: floating-point order for non-NaN values, with
// -0.0 (key -1) below +0.0 (key 0).
inline int32_t order_key(int32_t b) { return (b & 0x7FFFFFFF) ^ (b >> 31); }

inline __m256i order_key(__m256i b) {
  return _mm256_xor_si256(_mm256_and_si256(b, _mm256_set1_epi32(0x7FFFFFFF)),
                          _mm256_srai_epi32(b, 31));
}

template <class S>
struct MotionKernel {
  using Dst = Rvp32f;
  static constexpr int lanes = 8;
  const S* silh;
  Rvp32f* dst;
  int32_t key_t;  // order_key of timestamp - duration
  int32_t stamp;  // bit pattern of timestamp

  void scalar(int i) const {
    int32_t h;
    std::memcpy(&h, dst + i, 4);
    const int32_t clear = -static_cast<int32_t>(order_key(h) < key_t);
    const int32_t set = -static_cast<int32_t>(silh[i] != S(0));
    h &= ~clear;
    h = (h & ~set) | (stamp & set);
    std::memcpy(dst + i, &h, 4);
  }

  void vector(int i) const {
    const __m256i h = _mm256_load_si256(reinterpret_cast<const __m256i*>(dst + i));
    const __m256i clear = _mm256_cmpgt_epi32(_mm256_set1_epi32(key_t), order_key(h));
    __m256i set;
    if constexpr (std::is_same_v<S, Rvp32f>) {
      // Unordered-or-unequal: NaN is motion, -0.0 is not.
      set = _mm256_castps_si256(
          _mm256_cmp_ps(_mm256_loadu_ps(silh + i), _mm256_setzero_ps(), _CMP_NEQ_UQ));
    } else {
      __m256i s;
      if constexpr (std::is_same_v<S, Rvp8u>)
        s = _mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(silh + i)));
      else
        s = _mm256_cvtepu16_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(silh + i)));
      set = _mm256_xor_si256(_mm256_cmpeq_epi32(s, _mm256_setzero_si256()), _mm256_set1_epi32(-1));
    }
    const __m256i kept = _mm256_andnot_si256(clear, h);
    const __m256i r = _mm256_or_si256(_mm256_andnot_si256(set, kept),
                                      _mm256_and_si256(set, _mm256_set1_epi32(stamp)));
    _mm256_store_si256(reinterpret_cast<__m256i*>(dst + i), r);
  }
};

}  // namespace rvp::arith
