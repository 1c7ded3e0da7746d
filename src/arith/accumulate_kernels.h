// Row kernels of the accumulation and difference functions. Each kernel's scalar(i) states the
// arithmetic; vector(i) computes the same for a run of lanes and must match it bit for bit.
#pragma once

#include <immintrin.h>

#include <type_traits>

#include "core/numeric.h"
#include "core/simd.h"
#include "rvpcv.h"

namespace rvp::arith {

enum class AccOp { Add, Square, Product, Weighted };

// In-place accumulation of one or two sources into an Rvp32f row. Unmasked forms fuse the square
// or product into the addition; masked forms round the square or product first and then fuse
// the mask factor (0.0 or 1.0, or 0.0 or alpha) into the update. The mask is a multiplication,
// never a skip, so masked-off pixels still see NaN and infinity.
template <class S, AccOp Op, bool Masked>
struct AccumulateKernel {
  using Dst = Rvp32f;
  // Masked forms whose masked-off term is always +0.0 can clear masked-off source bytes before
  // widening, 16 pixels at once, and add the term: fma(0, p, d) = d + 0 * p = d + (+0.0) when
  // p >= +0.0, and fma(1, p, d) = d + p with one rounding (p is finite for integer sources).
  // That holds for Rvp8u (every source value, sum term and product is >= +0.0) and for the
  // Rvp8s square. A negative Rvp8s value or product would need copysign(0, p) instead, which
  // differs from +0.0 when d is -0.0; those forms keep the mask factor.
  static constexpr bool kByteMask =
      Masked && Op != AccOp::Weighted &&
      (std::is_same_v<S, Rvp8u> || (std::is_same_v<S, Rvp8s> && Op == AccOp::Square));
  static constexpr int lanes = kByteMask ? 16 : 8;
  const S* src1;
  const S* src2;  // AddProduct only
  const Rvp8u* mask;  // masked forms only
  Rvp32f* dst;
  Rvp32f alpha;  // AddWeighted only

  void scalar(int i) const {
    const float s = static_cast<float>(src1[i]);
    const float d = dst[i];
    float r;
    if constexpr (!Masked) {
      if constexpr (Op == AccOp::Add) r = d + s;
      if constexpr (Op == AccOp::Square) r = rvp::fma(s, s, d);
      if constexpr (Op == AccOp::Product) r = rvp::fma(s, static_cast<float>(src2[i]), d);
      if constexpr (Op == AccOp::Weighted) r = rvp::fma(s - d, alpha, d);
    } else {
      const float m = mask[i] != 0 ? 1.0f : 0.0f;
      if constexpr (Op == AccOp::Add) r = rvp::fma(m, s, d);
      if constexpr (Op == AccOp::Square) r = rvp::fma(m, s * s, d);
      if constexpr (Op == AccOp::Product) r = rvp::fma(m, s * static_cast<float>(src2[i]), d);
      if constexpr (Op == AccOp::Weighted) r = rvp::fma(mask[i] != 0 ? alpha : 0.0f, s - d, d);
    }
    dst[i] = r;
  }

  // Eight bytes (the low half of v) widened exactly to single precision.
  static __m256 bytes8_as_f32(__m128i v) {
    if constexpr (std::is_same_v<S, Rvp8u>)
      return _mm256_cvtepi32_ps(_mm256_cvtepu8_epi32(v));
    else
      return _mm256_cvtepi32_ps(_mm256_cvtepi8_epi32(v));
  }

  void vector(int i) const {
    if constexpr (kByteMask) {
      const __m128i m = _mm_loadu_si128(reinterpret_cast<const __m128i*>(mask + i));
      const __m128i off = _mm_cmpeq_epi8(m, _mm_setzero_si128());
      const __m128i v =
          _mm_andnot_si128(off, _mm_loadu_si128(reinterpret_cast<const __m128i*>(src1 + i)));
      const __m256 lo = bytes8_as_f32(v);
      const __m256 hi = bytes8_as_f32(_mm_unpackhi_epi64(v, v));
      __m256 tlo, thi;
      if constexpr (Op == AccOp::Add) {
        tlo = lo;
        thi = hi;
      } else if constexpr (Op == AccOp::Square) {
        tlo = _mm256_mul_ps(lo, lo);
        thi = _mm256_mul_ps(hi, hi);
      } else {
        tlo = _mm256_mul_ps(lo, simd::load8_as_f32(src2 + i));
        thi = _mm256_mul_ps(hi, simd::load8_as_f32(src2 + i + 8));
      }
      _mm256_store_ps(dst + i, _mm256_add_ps(_mm256_load_ps(dst + i), tlo));
      _mm256_store_ps(dst + i + 8, _mm256_add_ps(_mm256_load_ps(dst + i + 8), thi));
      return;
    }
    const __m256 s = simd::load8_as_f32(src1 + i);
    const __m256 d = _mm256_load_ps(dst + i);  // the runner aligns the destination
    __m256 r;
    if constexpr (!Masked) {
      if constexpr (Op == AccOp::Add) r = _mm256_add_ps(d, s);
      if constexpr (Op == AccOp::Square) r = _mm256_fmadd_ps(s, s, d);
      if constexpr (Op == AccOp::Product) r = _mm256_fmadd_ps(s, simd::load8_as_f32(src2 + i), d);
      if constexpr (Op == AccOp::Weighted)
        r = _mm256_fmadd_ps(_mm256_sub_ps(s, d), _mm256_set1_ps(alpha), d);
    } else {
      const __m256 m =
          simd::select8_nonzero(mask + i, _mm256_set1_ps(Op == AccOp::Weighted ? alpha : 1.0f));
      if constexpr (Op == AccOp::Add) r = _mm256_fmadd_ps(m, s, d);
      if constexpr (Op == AccOp::Square) r = _mm256_fmadd_ps(m, _mm256_mul_ps(s, s), d);
      if constexpr (Op == AccOp::Product)
        r = _mm256_fmadd_ps(m, _mm256_mul_ps(s, simd::load8_as_f32(src2 + i)), d);
      if constexpr (Op == AccOp::Weighted) r = _mm256_fmadd_ps(m, _mm256_sub_ps(s, d), d);
    }
    _mm256_store_ps(dst + i, r);
  }
};

// dst = fma(round(s1 - s2), alpha, s2): the two-source weighted sum.
struct WeightedSumKernel {
  using Dst = Rvp32f;
  static constexpr int lanes = 8;
  const Rvp32f* src1;
  const Rvp32f* src2;
  Rvp32f* dst;
  Rvp32f alpha;

  void scalar(int i) const { dst[i] = rvp::fma(src1[i] - src2[i], alpha, src2[i]); }
  void vector(int i) const {
    const __m256 a = _mm256_loadu_ps(src1 + i);
    const __m256 b = _mm256_loadu_ps(src2 + i);
    _mm256_store_ps(dst + i, _mm256_fmadd_ps(_mm256_sub_ps(a, b), _mm256_set1_ps(alpha), b));
  }
};

// |a - b| per element. Unsigned types: larger minus smaller, always representable. Rvp32f: the
// rounded difference with its sign bit cleared (-0.0 and NaN signs included).
template <class T>
inline T abs_diff(T a, T b) {
  if constexpr (std::is_same_v<T, Rvp32f>)
    return clear_sign(a - b);
  else
    return a > b ? static_cast<T>(a - b) : static_cast<T>(b - a);
}

template <class T>
inline __m256i abs_diff_vec(__m256i a, __m256i b) {
  if constexpr (std::is_same_v<T, Rvp8u>)
    return _mm256_or_si256(_mm256_subs_epu8(a, b), _mm256_subs_epu8(b, a));
  else
    return _mm256_or_si256(_mm256_subs_epu16(a, b), _mm256_subs_epu16(b, a));
}

// Two images (Src2 = T) or an image and a constant (the constant broadcast, src2 unused).
template <class T, bool Constant>
struct AbsDiffKernel {
  using Dst = T;
  static constexpr int lanes = 32 / sizeof(T);
  const T* src1;
  const T* src2;
  T* dst;
  T value;

  void scalar(int i) const { dst[i] = abs_diff<T>(src1[i], Constant ? value : src2[i]); }
  void vector(int i) const {
    if constexpr (std::is_same_v<T, Rvp32f>) {
      const __m256 a = _mm256_loadu_ps(src1 + i);
      const __m256 b = Constant ? _mm256_set1_ps(value) : _mm256_loadu_ps(src2 + i);
      _mm256_store_ps(dst + i, simd::clear_sign(_mm256_sub_ps(a, b)));
    } else {
      const __m256i a = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(src1 + i));
      __m256i b;
      if constexpr (Constant)
        b = sizeof(T) == 1 ? _mm256_set1_epi8(static_cast<char>(value))
                           : _mm256_set1_epi16(static_cast<short>(value));
      else
        b = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(src2 + i));
      _mm256_store_si256(reinterpret_cast<__m256i*>(dst + i), abs_diff_vec<T>(a, b));
    }
  }
};

}  // namespace rvp::arith
