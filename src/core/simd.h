// AVX2 building blocks shared by the families' kernels, and the row runner that gives every
// element-wise kernel the same shape: a scalar prologue up to the destination's 32-byte
// boundary, a vector body, a scalar tail. The scalar steps are the reference arithmetic, so a
// row's result never depends on its alignment or width.
#pragma once

#include <immintrin.h>

#include <cstdint>

#include "rvpcv.h"

namespace rvp::simd {

// Eight elements of type T widened exactly to single precision.
template <class T>
inline __m256 load8_as_f32(const T* p);

template <>
inline __m256 load8_as_f32<Rvp8u>(const Rvp8u* p) {
  return _mm256_cvtepi32_ps(_mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p))));
}
template <>
inline __m256 load8_as_f32<Rvp8s>(const Rvp8s* p) {
  return _mm256_cvtepi32_ps(_mm256_cvtepi8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p))));
}
template <>
inline __m256 load8_as_f32<Rvp16u>(const Rvp16u* p) {
  return _mm256_cvtepi32_ps(_mm256_cvtepu16_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p))));
}
template <>
inline __m256 load8_as_f32<Rvp16s>(const Rvp16s* p) {
  return _mm256_cvtepi32_ps(_mm256_cvtepi16_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p))));
}
template <>
inline __m256 load8_as_f32<Rvp32f>(const Rvp32f* p) {
  return _mm256_loadu_ps(p);
}

// Eight mask bytes as lanes of all ones where the byte is zero, all zeros where it is not.
inline __m256 mask8_zero(const Rvp8u* m) {
  const __m256i v = _mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(m)));
  return _mm256_castsi256_ps(_mm256_cmpeq_epi32(v, _mm256_setzero_si256()));
}

// Eight mask bytes as lanes of all ones (nonzero byte) or all zeros.
inline __m256 mask8_nonzero(const Rvp8u* m) {
  return _mm256_xor_ps(mask8_zero(m), _mm256_castsi256_ps(_mm256_set1_epi32(-1)));
}

// `value` where the mask byte is nonzero, +0.0 where it is zero (one and-not).
inline __m256 select8_nonzero(const Rvp8u* m, __m256 value) {
  return _mm256_andnot_ps(mask8_zero(m), value);
}

inline __m256 clear_sign(__m256 v) {
  return _mm256_and_ps(v, _mm256_castsi256_ps(_mm256_set1_epi32(0x7FFFFFFF)));
}

// Runs kernel K over n elements. K provides: `using Dst`, `static constexpr int lanes`, a `dst`
// pointer member, `scalar(i)` for element i and `vector(i)` for elements i..i+lanes-1.
// Rows too short for the body, or whose destination is not element-aligned, run scalar only.
template <class K>
inline void run_row(const K& k, int n) {
  using Dst = typename K::Dst;
  const auto addr = reinterpret_cast<uintptr_t>(k.dst);
  int i = 0;
  if (addr % sizeof(Dst) == 0) {
    const int prologue = static_cast<int>(((-addr) & 31) / sizeof(Dst));
    if (n - prologue >= K::lanes) {
      for (; i < prologue; ++i) k.scalar(i);
      for (; i + K::lanes <= n; i += K::lanes) k.vector(i);
    }
  }
  for (; i < n; ++i) k.scalar(i);
}

// The reference: every element through the scalar arithmetic.
template <class K>
inline void run_row_scalar(const K& k, int n) {
  for (int i = 0; i < n; ++i) k.scalar(i);
}

}  // namespace rvp::simd
