// Gaussian kernel construction shared by the specification functions and the single-call
// 32f Gaussian, and the integer arithmetic of the Gaussian passes.
#pragma once

#include <cmath>
#include <cstdint>

#include <algorithm>
#include <cstring>

#include "core/image.h"
#include "core/numeric.h"
#include "filter/border.h"
#include "filter/sep_kernels.h"
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

// ---- 8-bit symmetric row and column kernels
// The same arithmetic as row_wide_sym_avx2 / col_u8_sym_avx2 (mirrored inputs added first,
// even and odd outputs from multiply-adds against (t, 0) and (0, t) tap pairs) with the two
// fixed shifts of the 8-bit Gaussian, so even and odd 32-bit sums are merged by a word blend:
// a rounded even sum shifted down lands in the low word with a zero high word, and a rounded
// odd sum is shifted so that its result occupies the high word. Valid under `symmetric` taps.

// out[i] = (sum_k taps[k] * src[i + k * stride] + 128) >> 8, i < n; src holds the pixels as
// bytes or widened to 16 bits.
template <int K, class P>
inline void gauss_row_sym_scalar(const P* src, int16_t* out, int n, const int16_t* taps,
                                 int stride) {
  for (int i = 0; i < n; ++i) {
    int32_t acc = 0;
    for (int k = 0; k < K; ++k) acc += int32_t{taps[k]} * src[i + k * stride];
    out[i] = int16_t((acc + (1 << (kGaussRowDrop - 1))) >> kGaussRowDrop);
  }
}

template <int K>
inline void gauss_row_sym_avx2(const int16_t* wide, int16_t* out, int n, const int16_t* taps,
                               int stride) {
  constexpr int R = K / 2, N = R + 1;
  __m256i te[N], to[N];
  sym_taps<K>(taps, te, to);
  const __m256i half = _mm256_set1_epi32(1 << (kGaussRowDrop - 1));
  auto ld = [](const int16_t* p) {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
  };
  int i = 0;
  for (; i + 16 <= n; i += 16) {
    __m256i v[N];
#pragma GCC unroll 8
    for (int k = 0; k < R; ++k)
      v[k] = _mm256_add_epi16(ld(wide + i + k * stride), ld(wide + i + (K - 1 - k) * stride));
    v[R] = ld(wide + i + R * stride);
    __m256i ev, od;
    madd_even_odd<N>(v, te, to, ev, od);
    ev = _mm256_srli_epi32(_mm256_add_epi32(ev, half), kGaussRowDrop);
    od = _mm256_slli_epi32(_mm256_add_epi32(od, half), 16 - kGaussRowDrop);
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + i), _mm256_blend_epi16(ev, od, 0xAA));
  }
  gauss_row_sym_scalar<K>(wide + i, out + i, n - i, taps, stride);
}

// One channel: neighbouring pixels are neighbouring lanes, so a multiply-add against
// (t_k, t_k+1) pairs gives two taps of one output per 32-bit lane without adding mirrored
// inputs first; the even outputs come from rows starting at i + k, the odd ones at i + k + 1.
// For odd K the last pair is (t_K-1, 0), whose zero meets the element after the bordered row's
// end: the vector loop stops one element early so that element is never read.
template <int K>
inline void gauss_row_c1_avx2(const int16_t* wide, int16_t* out, int n, const int16_t* taps) {
  constexpr int P = (K + 1) / 2;
  __m256i tp[P];
  for (int j = 0; j < P; ++j)
    tp[j] = tap_pair(taps[2 * j], 2 * j + 1 < K ? taps[2 * j + 1] : int16_t{0});
  const __m256i half = _mm256_set1_epi32(1 << (kGaussRowDrop - 1));
  auto ld = [](const int16_t* p) {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
  };
  int i = 0;
  for (; i + 17 <= n; i += 16) {
    __m256i ev = _mm256_add_epi32(half, _mm256_madd_epi16(ld(wide + i), tp[0]));
    __m256i od = _mm256_add_epi32(half, _mm256_madd_epi16(ld(wide + i + 1), tp[0]));
#pragma GCC unroll 8
    for (int j = 1; j < P; ++j) {
      ev = _mm256_add_epi32(ev, _mm256_madd_epi16(ld(wide + i + 2 * j), tp[j]));
      od = _mm256_add_epi32(od, _mm256_madd_epi16(ld(wide + i + 2 * j + 1), tp[j]));
    }
    ev = _mm256_srli_epi32(ev, kGaussRowDrop);
    od = _mm256_slli_epi32(od, 16 - kGaussRowDrop);
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + i), _mm256_blend_epi16(ev, od, 0xAA));
  }
  gauss_row_sym_scalar<K>(wide + i, out + i, n - i, taps, 1);
}

// dst[i] = saturate((sum_k taps[k] * rows[k][i] + 2^15) >> 16), i < n.
template <int K>
inline void gauss_col_sym_scalar(const int16_t* const* rows, const int16_t* taps, int n,
                                 uint8_t* dst) {
  constexpr int kShift = 2 * kGaussShift8u - kGaussRowDrop;
  for (int i = 0; i < n; ++i) {
    int32_t acc = 0;
    for (int k = 0; k < K; ++k) acc += int32_t{taps[k]} * rows[k][i];
    dst[i] = saturate<uint8_t>((acc + (1 << (kShift - 1))) >> kShift);
  }
}

template <int K>
inline void gauss_col_sym_avx2(const int16_t* const* rows, const int16_t* taps, int n,
                               uint8_t* dst) {
  constexpr int R = K / 2, N = R + 1;
  constexpr int kShift = 2 * kGaussShift8u - kGaussRowDrop;
  static_assert(kShift == 16, "the odd sums' results must land in the high word");
  __m256i te[N], to[N];
  sym_taps<K>(taps, te, to);
  const int16_t* r[K];
  for (int k = 0; k < K; ++k) r[k] = rows[k];
  const __m256i half = _mm256_set1_epi32(1 << (kShift - 1));
  auto ld = [](const int16_t* p) {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
  };
  auto block = [&](int i) {  // 16 results in 16-bit lanes, each below 2^10
    __m256i v[N];
#pragma GCC unroll 8
    for (int k = 0; k < R; ++k) v[k] = _mm256_add_epi16(ld(r[k] + i), ld(r[K - 1 - k] + i));
    v[R] = ld(r[R] + i);
    __m256i ev, od;
    madd_even_odd<N>(v, te, to, ev, od);
    ev = _mm256_srli_epi32(_mm256_add_epi32(ev, half), kShift);
    return _mm256_blend_epi16(ev, _mm256_add_epi32(od, half), 0xAA);
  };
  int i = 0;
  for (; i + 32 <= n; i += 32) {
    const __m256i a = block(i), b = block(i + 16);
    const __m256i q = _mm256_permute4x64_epi64(_mm256_packus_epi16(a, b), 0xD8);
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(dst + i), q);
  }
  const int16_t* rest[K];
  for (int k = 0; k < K; ++k) rest[k] = r[k] + i;
  gauss_col_sym_scalar<K>(rest, taps, n - i, dst + i);
}

// ---- 8-bit symmetric kernels in vertical strips
// The image is filtered strip by strip: every strip runs the row pass into a ring of K
// intermediate rows only as wide as the strip, so the column pass reads them from the core's own
// cache instead of streaming K full-width rows through the shared one for every output row.
// Strips recompute K - 1 bordered pixels of the row pass at each seam; the values are the same as
// for a full-width row. Narrow strips cost more than they save, though: the source and the
// destination are then walked in row pieces, which the hardware prefetchers follow poorly (an
// L1-sized ring made 1920-pixel three-channel images about 15% slower than a full-width one).

constexpr int kGaussPrefetchRows = 2;

// Pixels per strip: the ring stays within 256 KiB, a part of a per-core L2; a multiple of 32
// pixels, at most the width.
inline int gauss_u8_strip_pixels(int K, int ch, int width) {
  const int p = std::max(32, ((int{1} << 17) / (K * ch)) & ~31);
  return std::min(p, width);
}

// Bordered pixels x0 - r .. x0 + np + r - 1 of bordered row y, widened to 16 bits.
inline void gauss_u8_fill_strip(const BorderedSource<uint8_t>& b, int y, int x0, int np, int r,
                                int ch, int width, int16_t* out) {
  const uint8_t* s = b.source_row(y);
  const int lo = x0 - r, hi = x0 + np + r;
  for (int x = lo; x < hi;) {
    if (s != nullptr && x >= 0 && x < width) {
      const int e = std::min(hi, width);
      const uint8_t* p = s + ptrdiff_t(x) * ch;
      int16_t* d = out + (x - lo) * ch;
      const int n = (e - x) * ch;
      int i = 0;
      for (; i + 16 <= n; i += 16)
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(d + i), load16_u8_as_s16(p + i));
      for (; i < n; ++i) d[i] = p[i];
      x = e;
    } else {
      for (int c = 0; c < ch; ++c) out[(x - lo) * ch + c] = b.at(y, x, c);
      ++x;
    }
  }
}

// Filters the whole region with symmetric non-negative 8-bit taps (see `symmetric`). `wide`
// holds (strip_px + K - 1) * CH values, `ring` K rows of strip_px * CH values each.
template <int K, int CH>
void gauss_u8_sym_strips(const BorderedSource<uint8_t>& b, uint8_t* dst, int dstStep,
                         RvpiSize roi, const int16_t* taps, int16_t* wide, int16_t* const* ring,
                         int strip_px) {
  constexpr int r = K / 2;
  for (int x0 = 0; x0 < roi.width; x0 += strip_px) {
    const int np = std::min(strip_px, roi.width - x0), n = np * CH;
    // Source bytes of the strip (its bordered pixels inside the region).
    const int p0 = std::max(0, x0 - r) * CH, p1 = std::min(roi.width, x0 + np + r) * CH;
    const bool pieces = strip_px < roi.width;
    auto produce = [&](int j) {
      // Strips narrower than the region read each source row in pieces, which the hardware
      // prefetchers follow poorly: ask for a later row's piece while this one is filtered.
      const uint8_t* ahead = pieces ? b.source_row(j + kGaussPrefetchRows) : nullptr;
      if (ahead != nullptr)
        for (int i = p0; i < p1; i += 64)
          _mm_prefetch(reinterpret_cast<const char*>(ahead + i), _MM_HINT_T0);
      gauss_u8_fill_strip(b, j, x0, np, r, CH, roi.width, wide);
      int16_t* out = ring[((j + r) % K + K) % K];
      if constexpr (CH == 1)
        gauss_row_c1_avx2<K>(wide, out, n, taps);
      else
        gauss_row_sym_avx2<K>(wide, out, n, taps, CH);
    };
    for (int j = -r; j < r; ++j) produce(j);
    const int16_t* list[K];
    for (int y = 0; y < roi.height; ++y) {
      produce(y + r);
      for (int k = 0; k < K; ++k) list[k] = ring[(y + k) % K];
      gauss_col_sym_avx2<K>(list, taps, n, row(dst, dstStep, y) + ptrdiff_t(x0) * CH);
    }
  }
}

// ---- 8-bit row pass straight from the source bytes
// Each tap splits as t = a * 2^q + b with 0 <= b < 2^q, so that a and b fit the signed-byte
// operand of a byte multiply-add. With A = sum a_k x_k and B = sum b_k x_k the row sum is
// S = 2^q A + B, and (S + 128) >> 8 == (A + ((B + 128) >> q)) >> (8 - q) exactly: 2^q A is a
// multiple of 2^q, so the bits of B + 128 dropped by the first shift never carry into bit 8.
// A and B + 128 are summed in wrapping 16-bit lanes and shifted logically, which is exact as long
// as no multiply-add pair saturates and no true sum reaches 2^16; gauss_split_shift checks that on
// the actual taps. The 128 rides in the last multiply-add: the unpaired last tap is matched with a
// constant pixel 2 and the constant tap 64 (and 0 in the A sum).

constexpr int kSplitRoundPixel = 2, kSplitRoundTap = 64;

// Whether taps split at 2^q keep every step of gauss_row_split_avx2 exact for 8-bit pixels.
inline bool gauss_split_ok(const int16_t* taps, int K, int q) {
  if (K % 2 == 0) return false;
  const int mask = (1 << q) - 1;
  int64_t sa = 0, sb = 0;
  for (int k = 0; k < K; ++k) {
    if (taps[k] < 0 || (taps[k] >> q) > 127) return false;
    sa += taps[k] >> q;
    sb += taps[k] & mask;
  }
  for (int k = 0; k < K; k += 2) {  // multiply-add pairs; the last one carries the rounding term
    const bool last = k + 1 == K;
    const int pa = (taps[k] >> q) + (last ? 0 : taps[k + 1] >> q);
    const int pb = (taps[k] & mask) + (last ? 0 : taps[k + 1] & mask);
    if (255 * pa > 32767 || 255 * pb + kSplitRoundPixel * kSplitRoundTap > 32767) return false;
  }
  const int64_t b_round = 255 * sb + 128;
  return b_round <= 65535 && 255 * sa + (b_round >> q) <= 65535;
}

// The split (5 or 4) the byte row pass uses for these taps, or 0 when neither is exact.
inline int gauss_split_shift(const int16_t* taps, int K) {
  for (int q : {5, 4})
    if (gauss_split_ok(taps, K, q)) return q;
  return 0;
}

// Position in a ring row of element i when whole 32-element blocks are stored in the order the
// byte unpacks produce (elements 0-7, 16-23, 8-15, 24-31): the middle two groups of eight trade
// places. Elements of the tail (i >= n rounded down to 32) keep their place.
inline int gauss_block_pos(int i, int n) {
  if (i >= (n & ~31)) return i;
  const int j = i & 24;
  return j == 8 ? i + 8 : j == 16 ? i - 8 : i;
}

// Whole 32-element blocks of the byte row pass for the split at 2^Q; returns the elements done.
// Each half block (the low or the high byte unpack) is finished before the next starts, which
// keeps the accumulators and tap vectors in registers.
template <int K, int Q>
inline int gauss_row_split_blocks(const uint8_t* src, int16_t* out, int n, const int16_t* taps,
                                  int stride) {
  static_assert(K % 2 == 1, "the last tap is paired with the rounding term");
  constexpr int P = (K + 1) / 2, kMask = (1 << Q) - 1;
  __m256i ta[P], tb[P];
  auto byte_pair = [](int lo, int hi) {
    return _mm256_set1_epi16(int16_t(uint16_t(uint8_t(lo)) | uint16_t(uint8_t(hi)) << 8));
  };
  for (int j = 0; j < P; ++j) {
    const int t0 = taps[2 * j];
    const bool paired = 2 * j + 1 < K;
    const int t1 = paired ? taps[2 * j + 1] : 0;
    ta[j] = byte_pair(t0 >> Q, t1 >> Q);
    tb[j] = byte_pair(t0 & kMask, paired ? t1 & kMask : kSplitRoundTap);
  }
  const __m256i round_px = _mm256_set1_epi8(kSplitRoundPixel);
  auto ld = [](const uint8_t* p) {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
  };
  auto half = [&](const uint8_t* p, auto unpack) {
    __m256i a = _mm256_setzero_si256(), b = _mm256_setzero_si256();
#pragma GCC unroll 8
    for (int j = 0; j < P; ++j) {
      const __m256i x = ld(p + 2 * j * stride);
      const __m256i v = unpack(x, 2 * j + 1 < K ? ld(p + (2 * j + 1) * stride) : round_px);
      a = _mm256_add_epi16(a, _mm256_maddubs_epi16(v, ta[j]));
      b = _mm256_add_epi16(b, _mm256_maddubs_epi16(v, tb[j]));
    }
    return _mm256_srli_epi16(_mm256_add_epi16(a, _mm256_srli_epi16(b, Q)), kGaussRowDrop - Q);
  };
  int i = 0;
  for (; i + 32 <= n; i += 32) {
    const __m256i lo =
        half(src + i, [](__m256i x, __m256i y) { return _mm256_unpacklo_epi8(x, y); });
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + i), lo);
    const __m256i hi =
        half(src + i, [](__m256i x, __m256i y) { return _mm256_unpackhi_epi8(x, y); });
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + i + 16), hi);
  }
  return i;
}

// The row pass from bytes (n + (K - 1) * stride readable elements at src) under taps for which
// gauss_split_ok(taps, K, q) holds. Whole 32-element blocks are written in block order (see
// gauss_block_pos), the remaining n % 32 elements in natural order.
template <int K>
inline void gauss_row_split_avx2(const uint8_t* src, int16_t* out, int n, const int16_t* taps,
                                 int q, int stride) {
  const int i = q == 5 ? gauss_row_split_blocks<K, 5>(src, out, n, taps, stride)
                       : gauss_row_split_blocks<K, 4>(src, out, n, taps, stride);
  gauss_row_sym_scalar<K>(src + i, out + i, n - i, taps, stride);
}

// The column pass on rows whose whole 32-element blocks are in block order. The mirrored rows are
// added first (m_k = r_k + r_K-1-k, k < K/2, then the centre row); neighbours in that list are
// interleaved so that one multiply-add per pair of taps gives two taps of one output in each
// 32-bit lane, with every multiplier lane useful. When the list has odd length its last member
// is paired with the constant 2 and the tap 2^14, which adds the rounding term.
template <int K>
inline void gauss_col_pairs_avx2(const int16_t* const* rows, const int16_t* taps, int n,
                                 uint8_t* dst) {
  constexpr int R = K / 2, N = R + 1, P = (N + 1) / 2;
  constexpr int kShift = 2 * kGaussShift8u - kGaussRowDrop;
  constexpr bool kRoundInPair = N % 2 == 1;
  static_assert(kShift == 16, "the rounding pair adds 2 * 2^14");
  __m256i tp[P];
  for (int j = 0; j < P; ++j) {
    const int16_t hi = 2 * j + 1 < N ? taps[2 * j + 1] : int16_t{1 << (kShift - 2)};
    tp[j] = tap_pair(taps[2 * j], hi);
  }
  const int16_t* r[K];
  for (int k = 0; k < K; ++k) r[k] = rows[k];
  const __m256i two = _mm256_set1_epi16(2), half = _mm256_set1_epi32(1 << (kShift - 1));
  auto ld = [](const int16_t* p) {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
  };
  auto block = [&](int i) {  // 16 results in 16-bit lanes, natural order within the 16
    __m256i v[2 * P];
#pragma GCC unroll 8
    for (int k = 0; k < R; ++k) v[k] = _mm256_add_epi16(ld(r[k] + i), ld(r[K - 1 - k] + i));
    v[R] = ld(r[R] + i);
    if constexpr (kRoundInPair) v[N] = two;
    __m256i lo = _mm256_madd_epi16(_mm256_unpacklo_epi16(v[0], v[1]), tp[0]);
    __m256i hi = _mm256_madd_epi16(_mm256_unpackhi_epi16(v[0], v[1]), tp[0]);
#pragma GCC unroll 8
    for (int j = 1; j < P; ++j) {
      lo = _mm256_add_epi32(
          lo, _mm256_madd_epi16(_mm256_unpacklo_epi16(v[2 * j], v[2 * j + 1]), tp[j]));
      hi = _mm256_add_epi32(
          hi, _mm256_madd_epi16(_mm256_unpackhi_epi16(v[2 * j], v[2 * j + 1]), tp[j]));
    }
    if constexpr (!kRoundInPair) {
      lo = _mm256_add_epi32(lo, half);
      hi = _mm256_add_epi32(hi, half);
    }
    return _mm256_packus_epi32(_mm256_srli_epi32(lo, kShift), _mm256_srli_epi32(hi, kShift));
  };
  int i = 0;
  for (; i + 32 <= n; i += 32) {
    const __m256i q = _mm256_packus_epi16(block(i), block(i + 16));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(dst + i), q);
  }
  const int16_t* rest[K];
  for (int k = 0; k < K; ++k) rest[k] = r[k] + i;
  gauss_col_sym_scalar<K>(rest, taps, n - i, dst + i);
}

// The bordered pixels of a strip that lie left or right of the region (at most K - 1 of them):
// where each one reads from in a source row (column mx), or its value when it is the border
// value. Built once per strip, so that filling a row's edges needs no index mapping.
struct GaussEdges {
  struct Pixel {
    int p, mx;  // position in the bordered strip row; source column or kConstantIndex
    uint8_t v[3];
  };
  Pixel px[16];
  int count = 0;

  GaussEdges(const BorderedSource<uint8_t>& b, Border border, int xb, int np, int r, int ch,
             int width) {
    for (int p = 0; p < np + 2 * r; ++p) {
      const int x = xb + p;
      if (x >= 0 && x < width) continue;
      Pixel& e = px[count++];
      e.p = p;
      e.mx = map_index(x, width, border.base, border.in_mem(kLeft), border.in_mem(kRight));
      for (int c = 0; c < ch; ++c) e.v[c] = b.at(0, x, c);  // read only when mx is constant
    }
  }

  // Bordered pixels xb + p, p0 <= p < p1, of the row whose source row is s, as bytes at
  // out + p * ch: the region's part copied, the edge pixels from the table.
  void fill(const uint8_t* s, int xb, int p0, int p1, int ch, int width, uint8_t* out) const {
    const int c0 = std::max(p0, -xb), c1 = std::min(p1, width - xb);
    if (c1 > c0)
      std::memcpy(out + ptrdiff_t(c0) * ch, s + (ptrdiff_t(xb) + c0) * ch, size_t(c1 - c0) * ch);
    for (int k = 0; k < count; ++k) {
      const Pixel& e = px[k];
      if (e.p < p0 || e.p >= p1) continue;
      for (int c = 0; c < ch; ++c)
        out[ptrdiff_t(e.p) * ch + c] =
            e.mx == kConstantIndex ? e.v[c] : s[ptrdiff_t(e.mx) * ch + c];
    }
  }
};

// gauss_u8_sym_strips with the byte row pass (taps passing gauss_split_ok(taps, K, q)). Blocks
// whose bordered reach stays on pixels held in memory (inside the region, or on a side the
// border selector declares in memory) are read straight from the source row; the blocks at the
// region's edges, and rows that are wholly the border value, read a bordered copy in `bord`,
// which holds (strip_px + K - 1) * CH bytes. `ring` holds K rows of strip_px * CH values.
template <int K, int CH>
void gauss_u8_split_strips(const BorderedSource<uint8_t>& b, Border border, uint8_t* dst,
                           int dstStep, RvpiSize roi, const int16_t* taps, int q, uint8_t* bord,
                           int16_t* const* ring, int strip_px) {
  static_assert(K <= 17, "GaussEdges holds at most 16 edge pixels");
  constexpr int r = K / 2, reach = (K - 1) * CH;
  // Pixels that may be read straight from a source row.
  const int64_t xl = border.in_mem(kLeft) ? INT64_MIN / 4 : 0;
  const int64_t xr = border.in_mem(kRight) ? INT64_MAX / 4 : roi.width;
  for (int x0 = 0; x0 < roi.width; x0 += strip_px) {
    const int np = std::min(strip_px, roi.width - x0), n = np * CH, nb = n / 32;
    const int xb = x0 - r;
    // Elements [e_lo, e_hi) of the bordered strip row lie on directly readable pixels; blocks
    // bl .. br - 1 read only those.
    const int64_t e_lo = std::max<int64_t>(0, (xl - xb) * CH);
    const int64_t e_hi = std::min<int64_t>(n + reach, (xr - xb) * CH);
    int bl = int(std::min<int64_t>(nb, (e_lo + 31) / 32));
    int br = e_hi - reach - 32 >= 0 ? int(std::min<int64_t>(nb, (e_hi - reach - 32) / 32 + 1)) : 0;
    if (br <= bl) bl = br = 0;
    // Bordered pixels the copied parts need: those under blocks 0 .. bl - 1, and from block br on.
    const int lp1 = bl > 0 ? (32 * bl + reach + CH - 1) / CH : 0;
    const int rp0 = 32 * br / CH;
    const GaussEdges edges(b, border, xb, np, r, CH, roi.width);
    const bool pieces = strip_px < roi.width;
    const int s0 = std::max(0, x0 - r) * CH, s1 = std::min(roi.width, x0 + np + r) * CH;
    auto produce = [&](int j) {
      const uint8_t* ahead = pieces ? b.source_row(j + kGaussPrefetchRows) : nullptr;
      if (ahead != nullptr)
        for (int i = s0; i < s1; i += 64)
          _mm_prefetch(reinterpret_cast<const char*>(ahead + i), _MM_HINT_T0);
      const uint8_t* s = b.source_row(j);
      int16_t* out = ring[((j + r) % K + K) % K];
      if (s == nullptr) {  // the border value throughout
        for (int p = 0; p < np + 2 * r; ++p)
          for (int c = 0; c < CH; ++c) bord[p * CH + c] = b.at(j, xb + p, c);
        gauss_row_split_avx2<K>(bord, out, n, taps, q, CH);
        return;
      }
      if (bl > 0) {
        edges.fill(s, xb, 0, lp1, CH, roi.width, bord);
        gauss_row_split_avx2<K>(bord, out, 32 * bl, taps, q, CH);
      }
      if (br > bl)
        gauss_row_split_avx2<K>(s + (ptrdiff_t(xb) * CH + 32 * bl), out + 32 * bl, 32 * (br - bl),
                                taps, q, CH);
      if (br * 32 < n) {
        edges.fill(s, xb, rp0, np + 2 * r, CH, roi.width, bord);
        gauss_row_split_avx2<K>(bord + 32 * br, out + 32 * br, n - 32 * br, taps, q, CH);
      }
    };
    for (int j = -r; j < r; ++j) produce(j);
    const int16_t* list[K];
    for (int y = 0; y < roi.height; ++y) {
      produce(y + r);
      for (int k = 0; k < K; ++k) list[k] = ring[(y + k) % K];
      gauss_col_pairs_avx2<K>(list, taps, n, row(dst, dstStep, y) + ptrdiff_t(x0) * CH);
    }
  }
}

}  // namespace rvp::filter
