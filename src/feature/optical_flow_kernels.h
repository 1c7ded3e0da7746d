// The hot loop of the tracker: sample the image-2 window bilinearly in fixed point and sum the
// image difference times the gradients. Every product is an integer below 2^31 and every
// partial sum an integer below 2^53, so the sums (64-bit integers in the vector path, doubles
// in the scalar one) are exact in any order and the two paths agree bit for bit.
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

// n fixed-point samples of a window row: reads r0[0..n] and r1[0..n].
inline void sample_row(const Rvp8u* r0, const Rvp8u* r1, const Bilinear& b, int32_t* out, int n) {
  for (int k = 0; k < n; ++k) out[k] = sample_fixed(r0[k], r0[k + 1], r1[k], r1[k + 1], b);
}

// Doubled central differences of the window inside a patch with a one-pixel margin (patch row
// length pw = win + 2), the window values, and the exact sums of the gradient products.
inline void gradients(const int32_t* patch, int win, int32_t* gx2, int32_t* gy2, int32_t* vals,
                      double sums[3]) {
  const int pw = win + 2;
  double xx = 0.0, xy = 0.0, yy = 0.0;
  for (int j = 0; j < win; ++j)
    for (int k = 0; k < win; ++k) {
      const int32_t* q = patch + (j + 1) * pw + (k + 1);
      const int32_t dx = q[1] - q[-1], dy = q[pw] - q[-pw];
      gx2[j * win + k] = dx;
      gy2[j * win + k] = dy;
      vals[j * win + k] = q[0];
      xx += static_cast<double>(dx * dx);
      xy += static_cast<double>(dx * dy);
      yy += static_cast<double>(dy * dy);
    }
  sums[0] = xx, sums[1] = xy, sums[2] = yy;
}
}  // namespace ref

namespace avx2 {

// Two 16-bit weights as one 32-bit lane (low, high) for madd; a weight may be -1 or -2 when the
// rounding of the others overshoots, so the packing goes through unsigned arithmetic.
inline int pair16(int lo, int hi) {
  return static_cast<int>((static_cast<uint32_t>(hi) << 16) |
                          (static_cast<uint32_t>(lo) & 0xFFFFu));
}

inline __m256i bilinear8(const Rvp8u* r0, const Rvp8u* r1, __m256i wtop, __m256i wbot) {
  const __m128i a0 = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(r0));
  const __m128i a1 = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(r0 + 1));
  const __m128i c0 = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(r1));
  const __m128i c1 = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(r1 + 1));
  const __m256i top = _mm256_cvtepu8_epi16(_mm_unpacklo_epi8(a0, a1));
  const __m256i bot = _mm256_cvtepu8_epi16(_mm_unpacklo_epi8(c0, c1));
  const __m256i v = _mm256_add_epi32(_mm256_madd_epi16(top, wtop), _mm256_madd_epi16(bot, wbot));
  return _mm256_srai_epi32(_mm256_add_epi32(v, _mm256_set1_epi32(64)), 7);
}

inline void sample_row(const Rvp8u* r0, const Rvp8u* r1, const Bilinear& b, int32_t* out, int n) {
  const __m256i wtop = _mm256_set1_epi32(pair16(b.w00, b.w01));
  const __m256i wbot = _mm256_set1_epi32(pair16(b.w10, b.w11));
  int k = 0;
  for (; k + 8 <= n; k += 8)
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + k), bilinear8(r0 + k, r1 + k, wtop, wbot));
  if (k < n && n >= 8) {  // the last eight again (equal values rewritten)
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + n - 8),
                        bilinear8(r0 + n - 8, r1 + n - 8, wtop, wbot));
    k = n;
  }
  for (; k < n; ++k) out[k] = sample_fixed(r0[k], r0[k + 1], r1[k], r1[k + 1], b);
}

// acc (four 64-bit lanes) + the eight products a * b of 32-bit lanes, exactly.
inline __m256i add_products(__m256i acc, __m256i a, __m256i b) {
  const __m256i even = _mm256_mul_epi32(a, b);
  const __m256i odd = _mm256_mul_epi32(_mm256_srli_epi64(a, 32), _mm256_srli_epi64(b, 32));
  return _mm256_add_epi64(acc, _mm256_add_epi64(even, odd));
}
inline double hsum(__m256i v) {
  alignas(32) int64_t l[4];
  _mm256_store_si256(reinterpret_cast<__m256i*>(l), v);
  return static_cast<double>((l[0] + l[1]) + (l[2] + l[3]));
}

inline void gradients(const int32_t* patch, int win, int32_t* gx2, int32_t* gy2, int32_t* vals,
                      double sums[3]) {
  const int pw = win + 2;
  __m256i axx = _mm256_setzero_si256(), axy = axx, ayy = axx;
  double xx = 0.0, xy = 0.0, yy = 0.0;
  auto ld = [](const int32_t* p) {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
  };
  for (int j = 0; j < win; ++j) {
    int k = 0;
    for (; k + 8 <= win; k += 8) {
      const int32_t* q = patch + (j + 1) * pw + (k + 1);
      const __m256i dx = _mm256_sub_epi32(ld(q + 1), ld(q - 1));
      const __m256i dy = _mm256_sub_epi32(ld(q + pw), ld(q - pw));
      const int o = j * win + k;
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(gx2 + o), dx);
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(gy2 + o), dy);
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(vals + o), ld(q));
      axx = add_products(axx, dx, dx);
      axy = add_products(axy, dx, dy);
      ayy = add_products(ayy, dy, dy);
    }
    if (k < win && win >= 8) {
      // The last eight columns again: stores repeat equal values, products of the lanes
      // already summed are masked to zero.
      const int k0 = win - 8;
      const __m256i keep = _mm256_cmpgt_epi32(
          _mm256_add_epi32(_mm256_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7), _mm256_set1_epi32(k0)),
          _mm256_set1_epi32(k - 1));
      const int32_t* q = patch + (j + 1) * pw + (k0 + 1);
      const __m256i dx = _mm256_sub_epi32(ld(q + 1), ld(q - 1));
      const __m256i dy = _mm256_sub_epi32(ld(q + pw), ld(q - pw));
      const int o = j * win + k0;
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(gx2 + o), dx);
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(gy2 + o), dy);
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(vals + o), ld(q));
      const __m256i mx = _mm256_and_si256(dx, keep);
      axx = add_products(axx, mx, dx);
      axy = add_products(axy, mx, dy);
      ayy = add_products(ayy, _mm256_and_si256(dy, keep), dy);
      k = win;
    }
    for (; k < win; ++k) {
      const int32_t* q = patch + (j + 1) * pw + (k + 1);
      const int32_t dx = q[1] - q[-1], dy = q[pw] - q[-pw];
      gx2[j * win + k] = dx;
      gy2[j * win + k] = dy;
      vals[j * win + k] = q[0];
      xx += static_cast<double>(dx * dx);
      xy += static_cast<double>(dx * dy);
      yy += static_cast<double>(dy * dy);
    }
  }
  sums[0] = xx + hsum(axx), sums[1] = xy + hsum(axy), sums[2] = yy + hsum(ayy);
}

inline void sum_b(const Rvp8u* img, int step, const Bilinear& b, const int32_t* iwin,
                  const int32_t* gx2, const int32_t* gy2, int win, double* bx, double* by) {
  const __m256i wtop = _mm256_set1_epi32(pair16(b.w00, b.w01));
  const __m256i wbot = _mm256_set1_epi32(pair16(b.w10, b.w11));
  auto ld = [](const int32_t* p) {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
  };
  __m256i ax = _mm256_setzero_si256(), ay = ax;
  double sx = 0.0, sy = 0.0;
  for (int j = 0; j < win; ++j) {
    const Rvp8u* r0 = img + static_cast<ptrdiff_t>(b.iy + j) * step + b.ix;
    const Rvp8u* r1 = r0 + step;
    int k = 0;
    for (; k + 8 <= win; k += 8) {
      const int o = j * win + k;
      const __m256i d = _mm256_sub_epi32(ld(iwin + o), bilinear8(r0 + k, r1 + k, wtop, wbot));
      ax = add_products(ax, d, ld(gx2 + o));
      ay = add_products(ay, d, ld(gy2 + o));
    }
    if (k < win && win >= 8) {
      // The last eight columns again, with the lanes already summed masked to zero.
      const int k0 = win - 8;
      const __m256i keep = _mm256_cmpgt_epi32(
          _mm256_add_epi32(_mm256_setr_epi32(0, 1, 2, 3, 4, 5, 6, 7), _mm256_set1_epi32(k0)),
          _mm256_set1_epi32(k - 1));
      const int o = j * win + k0;
      const __m256i d = _mm256_and_si256(
          keep, _mm256_sub_epi32(ld(iwin + o), bilinear8(r0 + k0, r1 + k0, wtop, wbot)));
      ax = add_products(ax, d, ld(gx2 + o));
      ay = add_products(ay, d, ld(gy2 + o));
      k = win;
    }
    for (; k < win; ++k) {
      const int32_t d = iwin[j * win + k] - sample_fixed(r0[k], r0[k + 1], r1[k], r1[k + 1], b);
      sx += static_cast<double>(d * gx2[j * win + k]);
      sy += static_cast<double>(d * gy2[j * win + k]);
    }
  }
  *bx = sx + hsum(ax);
  *by = sy + hsum(ay);
}

}  // namespace avx2
}  // namespace rvp::flow
