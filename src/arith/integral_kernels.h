// Row kernels of the summed-area tables. Each kernel writes elements 1..w of one table row from
// one source row and the table row above it; the drivers write the start value into column 0.
//
// Integer tables wrap modulo 2^32, so any summation order gives the same bits and the vector
// versions are free to form prefix sums in registers. The float tables are not: the row sum is
// formed exactly in integers inside blocks of 16 pixels, each block's prefixes are converted to
// single precision and added to the single-precision carry of the blocks before (one rounding),
// and the element above is added last (one rounding). Double tables add the exact integer row
// prefix of squares, converted to double, to the element above (one rounding). The scalar and
// vector versions below follow exactly those steps.
#pragma once

#include <immintrin.h>

#include <cmath>
#include <cstdint>
#include <type_traits>

#include "rvpcv.h"

namespace rvp::arith {

constexpr int kIntegralBlock = 16;

// ---- scalar references ----------------------------------------------------------------------
namespace ref {

// 32-bit wrapping sum: dst[x+1] = above[x+1] + src[0..x].
inline void integral_row_32s(const Rvp8u* src, const Rvp32s* above, Rvp32s* dst, int w) {
  uint32_t r = 0;
  for (int x = 0; x < w; ++x) {
    r += src[x];
    dst[x + 1] = static_cast<Rvp32s>(static_cast<uint32_t>(above[x + 1]) + r);
  }
}

inline void sqr_row_32s(const Rvp8u* src, const Rvp32s* above, Rvp32s* dst, int w) {
  uint32_t r = 0;
  for (int x = 0; x < w; ++x) {
    r += uint32_t{src[x]} * src[x];
    dst[x + 1] = static_cast<Rvp32s>(static_cast<uint32_t>(above[x + 1]) + r);
  }
}

inline void integral_row_32f(const Rvp8u* src, const Rvp32f* above, Rvp32f* dst, int w) {
  float carry = 0.0f;
  for (int b = 0; b < w; b += kIntegralBlock) {
    const int end = b + kIntegralBlock < w ? b + kIntegralBlock : w;
    int32_t p = 0;
    float last = carry;
    for (int x = b; x < end; ++x) {
      p += src[x];
      last = carry + static_cast<float>(p);
      dst[x + 1] = above[x + 1] + last;
    }
    carry = last;
  }
}

// Exact integer prefix of squares (below 2^53 for any row that fits a signed 32-bit width).
inline void sqr_row_64f(const Rvp8u* src, const Rvp64f* above, Rvp64f* dst, int w) {
  int64_t r = 0;
  for (int x = 0; x < w; ++x) {
    r += int64_t{src[x]} * src[x];
    dst[x + 1] = above[x + 1] + static_cast<double>(r);
  }
}

}  // namespace ref

// ---- AVX2 ---------------------------------------------------------------------------------------
namespace avx2 {

// Inclusive prefix sum of eight 32-bit lanes (wrapping).
inline __m256i prefix8(__m256i v) {
  v = _mm256_add_epi32(v, _mm256_slli_si256(v, 4));
  v = _mm256_add_epi32(v, _mm256_slli_si256(v, 8));
  // Lane-half 1 gets the total of half 0.
  const __m256i low_total = _mm256_permutevar8x32_epi32(v, _mm256_set1_epi32(3));
  return _mm256_add_epi32(v, _mm256_blend_epi32(_mm256_setzero_si256(), low_total, 0xF0));
}

inline __m256i load8u_as_32(const Rvp8u* p) {
  return _mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)));
}

inline __m256i last_lane(__m256i v) { return _mm256_permutevar8x32_epi32(v, _mm256_set1_epi32(7)); }

// Sixteen pixels per step. The block totals are formed off the carry's dependency chain, so
// the chain from one block to the next is a single vector add.
template <bool Square>
inline void row_32s(const Rvp8u* src, const Rvp32s* above, Rvp32s* dst, int w) {
  __m256i carry = _mm256_setzero_si256();
  int x = 0;
  auto ld = [](const Rvp32s* p) { return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p)); };
  auto st = [](Rvp32s* p, __m256i v) { _mm256_storeu_si256(reinterpret_cast<__m256i*>(p), v); };
  for (; x + 16 <= w; x += 16) {
    __m256i v0 = load8u_as_32(src + x);
    __m256i v1 = load8u_as_32(src + x + 8);
    if (Square) v0 = _mm256_mullo_epi32(v0, v0), v1 = _mm256_mullo_epi32(v1, v1);
    const __m256i p0 = prefix8(v0);
    const __m256i p1 = _mm256_add_epi32(prefix8(v1), last_lane(p0));
    st(dst + x + 1, _mm256_add_epi32(ld(above + x + 1), _mm256_add_epi32(p0, carry)));
    st(dst + x + 9, _mm256_add_epi32(ld(above + x + 9), _mm256_add_epi32(p1, carry)));
    carry = _mm256_add_epi32(carry, last_lane(p1));
  }
  for (; x + 8 <= w; x += 8) {
    __m256i v = load8u_as_32(src + x);
    if (Square) v = _mm256_mullo_epi32(v, v);
    const __m256i p = _mm256_add_epi32(prefix8(v), carry);
    st(dst + x + 1, _mm256_add_epi32(ld(above + x + 1), p));
    carry = last_lane(p);
  }
  uint32_t r = static_cast<uint32_t>(_mm256_cvtsi256_si32(carry));
  for (; x < w; ++x) {
    r += Square ? uint32_t{src[x]} * src[x] : uint32_t{src[x]};
    dst[x + 1] = static_cast<Rvp32s>(static_cast<uint32_t>(above[x + 1]) + r);
  }
}

// Prefix sums of sixteen pixels formed in 16-bit lanes (at most 16 * 255), widened to 32 bits.
inline void prefix16_u8(const Rvp8u* p, __m256i& lo, __m256i& hi) {
  __m256i v = _mm256_cvtepu8_epi16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)));
  v = _mm256_add_epi16(v, _mm256_slli_si256(v, 2));
  v = _mm256_add_epi16(v, _mm256_slli_si256(v, 4));
  v = _mm256_add_epi16(v, _mm256_slli_si256(v, 8));
  // Element 7 (the first half's total) broadcast, then moved to the upper half only.
  __m256i t = _mm256_shufflehi_epi16(v, 0xFF);
  t = _mm256_unpackhi_epi64(t, t);
  v = _mm256_add_epi16(v, _mm256_permute2x128_si256(t, t, 0x08));
  lo = _mm256_cvtepu16_epi32(_mm256_castsi256_si128(v));
  hi = _mm256_cvtepu16_epi32(_mm256_extracti128_si256(v, 1));
}

inline void integral_row_32s(const Rvp8u* src, const Rvp32s* above, Rvp32s* dst, int w) {
  __m256i carry = _mm256_setzero_si256();
  int x = 0;
  for (; x + 16 <= w; x += 16) {
    __m256i p0, p1;
    prefix16_u8(src + x, p0, p1);
    const __m256i a0 = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(above + x + 1));
    const __m256i a1 = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(above + x + 9));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(dst + x + 1),
                        _mm256_add_epi32(a0, _mm256_add_epi32(p0, carry)));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(dst + x + 9),
                        _mm256_add_epi32(a1, _mm256_add_epi32(p1, carry)));
    carry = _mm256_add_epi32(carry, last_lane(p1));
  }
  uint32_t r = static_cast<uint32_t>(_mm256_cvtsi256_si32(carry));
  for (; x < w; ++x) {
    r += src[x];
    dst[x + 1] = static_cast<Rvp32s>(static_cast<uint32_t>(above[x + 1]) + r);
  }
}
inline void sqr_row_32s(const Rvp8u* src, const Rvp32s* above, Rvp32s* dst, int w) {
  row_32s<true>(src, above, dst, w);
}

// Both tables of the 32s/64f pair in one pass over the source row.
inline void pair_row_32s64f(const Rvp8u* src, const Rvp32s* above, Rvp32s* dst,
                            const Rvp64f* above_sq, Rvp64f* dst_sq, int w) {
  __m256i carry = _mm256_setzero_si256();
  __m256d carry_sq = _mm256_setzero_pd();  // exact integer, below 2^53
  int x = 0;
  for (; x + 8 <= w; x += 8) {
    const __m256i v = load8u_as_32(src + x);
    const __m256i p = _mm256_add_epi32(prefix8(v), carry);
    const __m256i a = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(above + x + 1));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(dst + x + 1), _mm256_add_epi32(a, p));
    carry = last_lane(p);
    // Squares: the block prefix (at most 8 * 65025) is exact in 32 bits and in double.
    const __m256i q = prefix8(_mm256_mullo_epi32(v, v));
    const __m256d q_lo = _mm256_add_pd(_mm256_cvtepi32_pd(_mm256_castsi256_si128(q)), carry_sq);
    const __m256d q_hi =
        _mm256_add_pd(_mm256_cvtepi32_pd(_mm256_extracti128_si256(q, 1)), carry_sq);
    _mm256_storeu_pd(dst_sq + x + 1, _mm256_add_pd(_mm256_loadu_pd(above_sq + x + 1), q_lo));
    _mm256_storeu_pd(dst_sq + x + 5, _mm256_add_pd(_mm256_loadu_pd(above_sq + x + 5), q_hi));
    carry_sq = _mm256_permute4x64_pd(q_hi, 0xFF);
  }
  uint32_t r = static_cast<uint32_t>(_mm256_cvtsi256_si32(carry));
  int64_t r_sq = static_cast<int64_t>(_mm256_cvtsd_f64(carry_sq));
  for (; x < w; ++x) {
    r += src[x];
    r_sq += int64_t{src[x]} * src[x];
    dst[x + 1] = static_cast<Rvp32s>(static_cast<uint32_t>(above[x + 1]) + r);
    dst_sq[x + 1] = above_sq[x + 1] + static_cast<double>(r_sq);
  }
}

inline void sqr_row_64f(const Rvp8u* src, const Rvp64f* above, Rvp64f* dst, int w) {
  __m256d carry_sq = _mm256_setzero_pd();
  int x = 0;
  for (; x + 8 <= w; x += 8) {
    const __m256i v = load8u_as_32(src + x);
    const __m256i q = prefix8(_mm256_mullo_epi32(v, v));
    const __m256d q_lo = _mm256_add_pd(_mm256_cvtepi32_pd(_mm256_castsi256_si128(q)), carry_sq);
    const __m256d q_hi =
        _mm256_add_pd(_mm256_cvtepi32_pd(_mm256_extracti128_si256(q, 1)), carry_sq);
    _mm256_storeu_pd(dst + x + 1, _mm256_add_pd(_mm256_loadu_pd(above + x + 1), q_lo));
    _mm256_storeu_pd(dst + x + 5, _mm256_add_pd(_mm256_loadu_pd(above + x + 5), q_hi));
    carry_sq = _mm256_permute4x64_pd(q_hi, 0xFF);
  }
  int64_t r_sq = static_cast<int64_t>(_mm256_cvtsd_f64(carry_sq));
  for (; x < w; ++x) {
    r_sq += int64_t{src[x]} * src[x];
    dst[x + 1] = above[x + 1] + static_cast<double>(r_sq);
  }
}

// Blocks of 16: the integer block prefix (exact), converted, added to the float carry.
inline void integral_row_32f(const Rvp8u* src, const Rvp32f* above, Rvp32f* dst, int w) {
  __m256 carry = _mm256_setzero_ps();
  int x = 0;
  for (; x + kIntegralBlock <= w; x += kIntegralBlock) {
    const __m256i p0 = prefix8(load8u_as_32(src + x));
    const __m256i p1 = _mm256_add_epi32(prefix8(load8u_as_32(src + x + 8)), last_lane(p0));
    const __m256 s0 = _mm256_add_ps(carry, _mm256_cvtepi32_ps(p0));
    const __m256 s1 = _mm256_add_ps(carry, _mm256_cvtepi32_ps(p1));
    _mm256_storeu_ps(dst + x + 1, _mm256_add_ps(_mm256_loadu_ps(above + x + 1), s0));
    _mm256_storeu_ps(dst + x + 9, _mm256_add_ps(_mm256_loadu_ps(above + x + 9), s1));
    carry = _mm256_permutevar8x32_ps(s1, _mm256_set1_epi32(7));
  }
  // The last, partial block: same arithmetic one element at a time.
  const float c = _mm256_cvtss_f32(carry);
  int32_t p = 0;
  for (; x < w; ++x) {
    p += src[x];
    dst[x + 1] = above[x + 1] + (c + static_cast<float>(p));
  }
}

}  // namespace avx2

// ---- tilted tables ------------------------------------------------------------------------
//
// Element (x, R) of a tilted table (rows R >= 2 are fed by source row s = R - 2) is the start
// value plus the sum of the source pixels (px, py) with py <= s and
// x - 1 - (s - py) <= px <= x + (s - py): a 45-degree cone whose lowest row holds the two pixels
// x - 1 and x of row s and which widens by one pixel on each side per row upwards. In rotated
// coordinates u = px + py, v = py - px the cone is the quadrant u <= x + s, v <= s - x + 1, which
// is what makes four corners bound a 45-degree rectangle. Rows 0 and 1 hold empty cones.
//
// Inside the row the recurrence is R[x] = S[x-1] + S[x] + P[x-1] + P[x+1] - PP[x]. At the edges
// the terms outside the table cancel exactly (the cone of column -1 one row up equals the cone of
// column 0 two rows up, and likewise on the right), which gives R[0] = S[0] + P[1] and
// R[w+1] = P[w]: columns 0 and w+1 hold true cone sums too, so corners read there are exact.
// Floating tables add in the order written: ((pair + P[x-1]) + P[x+1]) - PP[x], where the pixel
// pair (or its squares) is an exact integer.
namespace ref {

template <class V, bool Square>
inline void tilted_row(const Rvp8u* s, const V* p, const V* pp, V* r, int w) {
  auto px = [&](int x) -> uint32_t {  // S[x] as an exact integer, 0 outside the row
    return (x < 0 || x >= w) ? 0u : (Square ? uint32_t{s[x]} * s[x] : uint32_t{s[x]});
  };
  for (int x = 0; x <= w; ++x) {
    const uint32_t pair = px(x - 1) + px(x);
    if constexpr (std::is_same_v<V, Rvp32s>) {
      const uint32_t left = x > 0 ? static_cast<uint32_t>(p[x - 1]) : 0u;
      const uint32_t drop = x > 0 ? static_cast<uint32_t>(pp[x]) : 0u;
      r[x] = static_cast<Rvp32s>(pair + left + static_cast<uint32_t>(p[x + 1]) - drop);
    } else {
      if (x == 0)
        r[0] = static_cast<V>(pair) + p[1];
      else
        r[x] = ((static_cast<V>(pair) + p[x - 1]) + p[x + 1]) - pp[x];
    }
  }
  r[w + 1] = p[w];
}

}  // namespace ref

// ---- rectangle deviation --------------------------------------------------------------------

// Variance from the window sums in double, rounded once to single, negative clamped to zero,
// then the single-precision root. The clamp keeps rounding noise on flat windows from giving NaN.
inline float window_deviation(double s1, double s2, double inv_area) {
  const double mean = s1 * inv_area;
  const double var = s2 * inv_area - mean * mean;
  float v = static_cast<float>(var);
  if (v < 0.0f) v = 0.0f;
  return std::sqrt(v);
}

}  // namespace rvp::arith
