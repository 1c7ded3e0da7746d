// The hot loop of the tracker: sample the image-2 window bilinearly in fixed point and sum the
// image difference times the gradients. Every product is an integer below 2^31 and every
// partial sum an integer below 2^53, so the double sums are exact in any order and the vector
// path equals the scalar one bit for bit.
#pragma once

#include <immintrin.h>

#include <cstdint>

#include "rvpcv.h"

namespace rvp::flow {

// Bilinear position of a window: integer origin, fraction and the fixed-point weights
// (scaled by 2^14; w11 takes the remainder so the four sum to 2^14 exactly).
struct Bilinear {
  int ix, iy;
  float ax, ay;
  int w00, w01, w10, w11;
};

// Fixed-point sample: intensity * 128, rounded.
inline int32_t sample_fixed(int p00, int p01, int p10, int p11, const Bilinear& b) {
  return (b.w00 * p00 + b.w01 * p01 + b.w10 * p10 + b.w11 * p11 + 64) >> 7;
}

namespace ref {

// Window fully inside the image: origin (ix, iy), pixels (ix .. ix + win, iy .. iy + win).
inline void sum_b(const Rvp8u* img, int step, const Bilinear& b, const int32_t* iwin,
                  const int32_t* gx2, const int32_t* gy2, int win, double* bx, double* by) {
  double sx = 0.0, sy = 0.0;
  for (int j = 0; j < win; ++j) {
    const Rvp8u* r0 = img + static_cast<ptrdiff_t>(b.iy + j) * step + b.ix;
    const Rvp8u* r1 = r0 + step;
    for (int k = 0; k < win; ++k) {
      const int32_t d = iwin[j * win + k] - sample_fixed(r0[k], r0[k + 1], r1[k], r1[k + 1], b);
      sx += static_cast<double>(d * gx2[j * win + k]);
      sy += static_cast<double>(d * gy2[j * win + k]);
    }
  }
  *bx = sx;
  *by = sy;
}

}  // namespace ref

namespace avx2 {

inline void sum_b(const Rvp8u* img, int step, const Bilinear& b, const int32_t* iwin,
                  const int32_t* gx2, const int32_t* gy2, int win, double* bx, double* by) {
  const __m256i wtop = _mm256_set1_epi32((b.w01 << 16) | (b.w00 & 0xFFFF));
  const __m256i wbot = _mm256_set1_epi32((b.w11 << 16) | (b.w10 & 0xFFFF));
  const __m256i half = _mm256_set1_epi32(64);
  __m256d ax = _mm256_setzero_pd(), ay = _mm256_setzero_pd();
  double sx = 0.0, sy = 0.0;
  for (int j = 0; j < win; ++j) {
    const Rvp8u* r0 = img + static_cast<ptrdiff_t>(b.iy + j) * step + b.ix;
    const Rvp8u* r1 = r0 + step;
    int k = 0;
    for (; k + 8 <= win; k += 8) {
      const __m128i a0 = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(r0 + k));
      const __m128i a1 = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(r0 + k + 1));
      const __m128i c0 = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(r1 + k));
      const __m128i c1 = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(r1 + k + 1));
      const __m256i top = _mm256_cvtepu8_epi16(_mm_unpacklo_epi8(a0, a1));
      const __m256i bot = _mm256_cvtepu8_epi16(_mm_unpacklo_epi8(c0, c1));
      __m256i v = _mm256_add_epi32(_mm256_madd_epi16(top, wtop), _mm256_madd_epi16(bot, wbot));
      v = _mm256_srai_epi32(_mm256_add_epi32(v, half), 7);
      const int o = j * win + k;
      const __m256i d = _mm256_sub_epi32(
          _mm256_loadu_si256(reinterpret_cast<const __m256i*>(iwin + o)), v);
      const __m256i px = _mm256_mullo_epi32(
          d, _mm256_loadu_si256(reinterpret_cast<const __m256i*>(gx2 + o)));
      const __m256i py = _mm256_mullo_epi32(
          d, _mm256_loadu_si256(reinterpret_cast<const __m256i*>(gy2 + o)));
      ax = _mm256_add_pd(ax, _mm256_cvtepi32_pd(_mm256_castsi256_si128(px)));
      ax = _mm256_add_pd(ax, _mm256_cvtepi32_pd(_mm256_extracti128_si256(px, 1)));
      ay = _mm256_add_pd(ay, _mm256_cvtepi32_pd(_mm256_castsi256_si128(py)));
      ay = _mm256_add_pd(ay, _mm256_cvtepi32_pd(_mm256_extracti128_si256(py, 1)));
    }
    for (; k < win; ++k) {
      const int32_t d = iwin[j * win + k] - sample_fixed(r0[k], r0[k + 1], r1[k], r1[k + 1], b);
      sx += static_cast<double>(d * gx2[j * win + k]);
      sy += static_cast<double>(d * gy2[j * win + k]);
    }
  }
  alignas(32) double lx[4], ly[4];
  _mm256_store_pd(lx, ax);
  _mm256_store_pd(ly, ay);
  *bx = sx + ((lx[0] + lx[1]) + (lx[2] + lx[3]));
  *by = sy + ((ly[0] + ly[1]) + (ly[2] + ly[3]));
}

}  // namespace avx2
}  // namespace rvp::flow
