// Row and column kernels of the separable fixed-kernel filters (derivatives, Laplacian, box,
// Gaussian). Each has a scalar reference and an AVX2 version with bit-identical results.
//
// Row kernels read a bordered source row: out[i] = sum_k taps[k] * src[i + k * stride], i < n,
// where stride is the channel count (taps step whole pixels of interleaved data) and the
// bordered row holds at least n + (K - 1) * stride elements.
// Column kernels combine M intermediate rows element-wise: sum_m taps[m] * rows[m][i].
#pragma once

#include <immintrin.h>

#include <cmath>
#include <cstdint>

#include "core/numeric.h"
#include "rvpcv.h"

namespace rvp::filter {

// ---- 8-bit rows to 16-bit intermediates -------------------------------------------------------
// Exact 32-bit sum; with shift > 0 rounded half up and shifted right; saturated to 16 bits.

inline int16_t row_u8_value(const uint8_t* s, const int16_t* taps, int K, int stride, int shift) {
  int32_t acc = 0;
  for (int k = 0; k < K; ++k) acc += int32_t{taps[k]} * s[k * stride];
  if (shift > 0) acc = (acc + (1 << (shift - 1))) >> shift;
  return saturate<int16_t>(acc);
}

inline void row_u8_s16_scalar(const uint8_t* src, int16_t* out, int n, const int16_t* taps, int K,
                              int stride, int shift) {
  for (int i = 0; i < n; ++i) out[i] = row_u8_value(src + i, taps, K, stride, shift);
}

inline __m256i load16_u8_as_s16(const uint8_t* p) {
  return _mm256_cvtepu8_epi16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)));
}

inline __m256i tap_pair(int16_t a, int16_t b) {
  return _mm256_set1_epi32(int32_t(uint16_t(a)) | int32_t(uint32_t(uint16_t(b)) << 16));
}

inline void row_u8_s16_avx2(const uint8_t* src, int16_t* out, int n, const int16_t* taps, int K,
                            int stride, int shift) {
  int i = 0;
  const __m256i half = _mm256_set1_epi32(shift > 0 ? 1 << (shift - 1) : 0);
  const __m128i sh = _mm_cvtsi32_si128(shift);
  for (; i + 16 <= n; i += 16) {
    __m256i lo = _mm256_setzero_si256(), hi = _mm256_setzero_si256();
    int k = 0;
    for (; k + 1 < K; k += 2) {
      const __m256i a = load16_u8_as_s16(src + i + k * stride);
      const __m256i b = load16_u8_as_s16(src + i + (k + 1) * stride);
      const __m256i t = tap_pair(taps[k], taps[k + 1]);
      lo = _mm256_add_epi32(lo, _mm256_madd_epi16(_mm256_unpacklo_epi16(a, b), t));
      hi = _mm256_add_epi32(hi, _mm256_madd_epi16(_mm256_unpackhi_epi16(a, b), t));
    }
    if (k < K) {
      const __m256i a = load16_u8_as_s16(src + i + k * stride);
      const __m256i z = _mm256_setzero_si256();
      const __m256i t = tap_pair(taps[k], 0);
      lo = _mm256_add_epi32(lo, _mm256_madd_epi16(_mm256_unpacklo_epi16(a, z), t));
      hi = _mm256_add_epi32(hi, _mm256_madd_epi16(_mm256_unpackhi_epi16(a, z), t));
    }
    if (shift > 0) {
      lo = _mm256_sra_epi32(_mm256_add_epi32(lo, half), sh);
      hi = _mm256_sra_epi32(_mm256_add_epi32(hi, half), sh);
    }
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + i), _mm256_packs_epi32(lo, hi));
  }
  for (; i < n; ++i) out[i] = row_u8_value(src + i, taps, K, stride, shift);
}

// ---- 16-bit intermediates to the destination -------------------------------------------------

enum class ColOut {
  S16,       // exact sum saturated to Rvp16s
  S8Scaled,  // sum (as single) times `scale`, rounded half to even, saturated to Rvp8s
  U8Scaled,  // the same, saturated to Rvp8u
  U8Shift,   // (sum + 2^(shift-1)) >> shift, saturated to Rvp8u
};

template <ColOut O>
inline int32_t col_s16_sum(const int16_t* const* rows, const int16_t* taps, int M, int i) {
  int32_t acc = 0;
  for (int m = 0; m < M; ++m) acc += int32_t{taps[m]} * rows[m][i];
  return acc;
}

template <ColOut O>
inline void col_s16_store(int32_t acc, void* dst, int i, float scale, int shift) {
  if constexpr (O == ColOut::S16) {
    static_cast<int16_t*>(dst)[i] = saturate<int16_t>(acc);
  } else if constexpr (O == ColOut::S8Scaled) {
    static_cast<int8_t*>(dst)[i] =
        saturate<int8_t>(static_cast<int32_t>(round_even(static_cast<float>(acc) * scale)));
  } else if constexpr (O == ColOut::U8Scaled) {
    static_cast<uint8_t*>(dst)[i] =
        saturate<uint8_t>(static_cast<int32_t>(round_even(static_cast<float>(acc) * scale)));
  } else {
    static_cast<uint8_t*>(dst)[i] = saturate<uint8_t>((acc + (1 << (shift - 1))) >> shift);
  }
}

template <ColOut O>
inline void col_s16_scalar(const int16_t* const* rows, const int16_t* taps, int M, int n, void* dst,
                           float scale, int shift) {
  for (int i = 0; i < n; ++i)
    col_s16_store<O>(col_s16_sum<O>(rows, taps, M, i), dst, i, scale, shift);
}

template <ColOut O>
inline void col_s16_avx2(const int16_t* const* rows, const int16_t* taps, int M, int n, void* dst,
                         float scale, int shift) {
  int i = 0;
  const __m256 vscale = _mm256_set1_ps(scale);
  const __m256i half = _mm256_set1_epi32(shift > 0 ? 1 << (shift - 1) : 0);
  const __m128i sh = _mm_cvtsi32_si128(shift);
  for (; i + 16 <= n; i += 16) {
    __m256i lo = _mm256_setzero_si256(), hi = _mm256_setzero_si256();
    int m = 0;
    for (; m + 1 < M; m += 2) {
      const __m256i a = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(rows[m] + i));
      const __m256i b = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(rows[m + 1] + i));
      const __m256i t = tap_pair(taps[m], taps[m + 1]);
      lo = _mm256_add_epi32(lo, _mm256_madd_epi16(_mm256_unpacklo_epi16(a, b), t));
      hi = _mm256_add_epi32(hi, _mm256_madd_epi16(_mm256_unpackhi_epi16(a, b), t));
    }
    if (m < M) {
      const __m256i a = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(rows[m] + i));
      const __m256i z = _mm256_setzero_si256();
      const __m256i t = tap_pair(taps[m], 0);
      lo = _mm256_add_epi32(lo, _mm256_madd_epi16(_mm256_unpacklo_epi16(a, z), t));
      hi = _mm256_add_epi32(hi, _mm256_madd_epi16(_mm256_unpackhi_epi16(a, z), t));
    }
    // lo/hi hold elements 0-3,8-11 and 4-7,12-15; the packs below restore the order.
    if constexpr (O == ColOut::S16) {
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(static_cast<int16_t*>(dst) + i),
                          _mm256_packs_epi32(lo, hi));
    } else {
      __m256i w;
      if constexpr (O == ColOut::U8Shift) {
        w = _mm256_packs_epi32(_mm256_sra_epi32(_mm256_add_epi32(lo, half), sh),
                               _mm256_sra_epi32(_mm256_add_epi32(hi, half), sh));
      } else {
        w = _mm256_packs_epi32(_mm256_cvtps_epi32(_mm256_mul_ps(_mm256_cvtepi32_ps(lo), vscale)),
                               _mm256_cvtps_epi32(_mm256_mul_ps(_mm256_cvtepi32_ps(hi), vscale)));
      }
      const __m256i b =
          O == ColOut::S8Scaled ? _mm256_packs_epi16(w, w) : _mm256_packus_epi16(w, w);
      const __m256i q = _mm256_permute4x64_epi64(b, 0x08);
      _mm_storeu_si128(reinterpret_cast<__m128i*>(static_cast<uint8_t*>(dst) + i),
                       _mm256_castsi256_si128(q));
    }
  }
  for (; i < n; ++i) col_s16_store<O>(col_s16_sum<O>(rows, taps, M, i), dst, i, scale, shift);
}

// ---- symmetric kernels (Gaussian)
// ---------------------------------------------------------------- Same results as
// row_u8_s16_scalar / col_s16_scalar<U8Shift> when taps[k] == taps[K-1-k] >= 0 and every row value
// lies in 0..4415 (8-bit pixels, taps summing to at most 4416 before the 8-bit drop): mirrored
// inputs are added before the multiply, and the multiply-adds take their pairs from neighbouring
// lanes, taps (t, 0) for even outputs and (0, t) for odd ones, so no lane shuffles are needed; even
// and odd results (each below 2^16) are merged by a shift.

inline bool symmetric(const int16_t* taps, int K) {
  if (K % 2 == 0) return false;
  for (int k = 0; k < K / 2; ++k)
    if (taps[k] != taps[K - 1 - k]) return false;
  for (int k = 0; k < K; ++k)
    if (taps[k] < 0) return false;
  return true;
}

// ev/od: sums over j < N of t_j * v_j for the even and the odd 16-bit lanes, in 32-bit lanes.
template <int N>
inline void madd_even_odd(const __m256i* v, const __m256i* te, const __m256i* to, __m256i& ev,
                          __m256i& od) {
  ev = _mm256_madd_epi16(v[0], te[0]);
  od = _mm256_madd_epi16(v[0], to[0]);
#pragma GCC unroll 8
  for (int j = 1; j < N; ++j) {
    ev = _mm256_add_epi32(ev, _mm256_madd_epi16(v[j], te[j]));
    od = _mm256_add_epi32(od, _mm256_madd_epi16(v[j], to[j]));
  }
}

template <int K>
inline void sym_taps(const int16_t* taps, __m256i* te, __m256i* to) {
  for (int j = 0; j <= K / 2; ++j) {
    te[j] = tap_pair(taps[j], 0);
    to[j] = tap_pair(0, taps[j]);
  }
}

// Rounds (v + 2^(s-1)) >> s in the even and odd 32-bit lanes and merges them into 16-bit lanes.
inline __m256i merge_even_odd(__m256i ev, __m256i od, __m256i half, __m128i sh) {
  ev = _mm256_srl_epi32(_mm256_add_epi32(ev, half), sh);
  od = _mm256_srl_epi32(_mm256_add_epi32(od, half), sh);
  return _mm256_or_si256(ev, _mm256_slli_epi32(od, 16));
}

// On a bordered row already widened to 16 bits (n + (K-1)*stride elements, values 0..255).
template <int K>
inline void row_wide_sym_avx2(const int16_t* wide, int16_t* out, int n, const int16_t* taps,
                              int stride, int shift) {
  constexpr int R = K / 2, N = R + 1;
  __m256i te[N], to[N];
  sym_taps<K>(taps, te, to);
  const __m256i half = _mm256_set1_epi32(1 << (shift - 1));
  const __m128i sh = _mm_cvtsi32_si128(shift);
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
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + i), merge_even_odd(ev, od, half, sh));
  }
  for (; i < n; ++i) {
    int32_t acc = 0;
    for (int k = 0; k < K; ++k) acc += int32_t{taps[k]} * wide[i + k * stride];
    out[i] = saturate<int16_t>((acc + (1 << (shift - 1))) >> shift);
  }
}

// The same from an 8-bit bordered row, widened into `wide` first.
template <int K>
inline void row_u8_sym_avx2(const uint8_t* src, int16_t* wide, int16_t* out, int n,
                            const int16_t* taps, int stride, int shift) {
  const int len = n + (K - 1) * stride;
  int j = 0;
  for (; j + 16 <= len; j += 16)
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(wide + j), load16_u8_as_s16(src + j));
  for (; j < len; ++j) wide[j] = src[j];
  row_wide_sym_avx2<K>(wide, out, n, taps, stride, shift);
}

template <int K>
inline void col_u8_sym_avx2(const int16_t* const* rows, const int16_t* taps, int n, uint8_t* dst,
                            int shift) {
  constexpr int R = K / 2, N = R + 1;
  __m256i te[N], to[N];
  sym_taps<K>(taps, te, to);
  const int16_t* r[K];
  for (int k = 0; k < K; ++k) r[k] = rows[k];
  const __m256i half = _mm256_set1_epi32(1 << (shift - 1));
  const __m128i sh = _mm_cvtsi32_si128(shift);
  auto ld = [](const int16_t* p) {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
  };
  auto block = [&](int i) {
    __m256i v[N];
#pragma GCC unroll 8
    for (int k = 0; k < R; ++k) v[k] = _mm256_add_epi16(ld(r[k] + i), ld(r[K - 1 - k] + i));
    v[R] = ld(r[R] + i);
    __m256i ev, od;
    madd_even_odd<N>(v, te, to, ev, od);
    return merge_even_odd(ev, od, half, sh);  // 16 results, each below 2^16
  };
  int i = 0;
  for (; i + 32 <= n; i += 32) {
    const __m256i a = block(i), b = block(i + 16);
    const __m256i q = _mm256_permute4x64_epi64(_mm256_packus_epi16(a, b), 0xD8);
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(dst + i), q);
  }
  for (; i + 16 <= n; i += 16) {
    const __m256i w = block(i);
    const __m256i q = _mm256_permute4x64_epi64(_mm256_packus_epi16(w, w), 0x08);
    _mm_storeu_si128(reinterpret_cast<__m128i*>(dst + i), _mm256_castsi256_si128(q));
  }
  for (; i < n; ++i)
    col_s16_store<ColOut::U8Shift>(col_s16_sum<ColOut::U8Shift>(r, taps, K, i), dst, i, 1.0f,
                                   shift);
}

// ---- 16-bit wrap-around forms of the fixed kernels ---------------------------------------------
// The fixed derivative, Laplacian and box kernels keep every row value within 255 * 16 and
// every final value within 255 * 112 in magnitude, so sums formed with 16-bit wrap-around
// arithmetic are exact: these kernels give the same values as the 32-bit ones above, with
// twice the lanes.

inline void row_u8_s16w_scalar(const uint8_t* src, int16_t* out, int n, const int16_t* taps,
                               int K) {
  for (int i = 0; i < n; ++i) {
    uint16_t acc = 0;
    for (int k = 0; k < K; ++k) acc = uint16_t(acc + uint16_t(taps[k] * src[i + k]));
    out[i] = int16_t(acc);
  }
}

template <int K>
inline void row_u8_s16w_avx2(const uint8_t* src, int16_t* out, int n, const int16_t* taps) {
  __m256i t[K];
  for (int k = 0; k < K; ++k) t[k] = _mm256_set1_epi16(taps[k]);
  int i = 0;
  for (; i + 16 <= n; i += 16) {
    __m256i acc = _mm256_mullo_epi16(load16_u8_as_s16(src + i), t[0]);
#pragma GCC unroll 16
    for (int k = 1; k < K; ++k)
      acc = _mm256_add_epi16(acc, _mm256_mullo_epi16(load16_u8_as_s16(src + i + k), t[k]));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + i), acc);
  }
  if (i < n) row_u8_s16w_scalar(src + i, out + i, n - i, taps, K);
}

template <ColOut O>
inline void col_s16w_store(int16_t v, void* dst, int i, float scale) {
  if constexpr (O == ColOut::S16)
    static_cast<int16_t*>(dst)[i] = v;
  else
    col_s16_store<O>(int32_t{v}, dst, i, scale, 0);
}

template <ColOut O>
inline void col_s16w_scalar(const int16_t* const* rows, const int16_t* taps, int M, int n,
                            void* dst, float scale) {
  for (int i = 0; i < n; ++i) {
    uint16_t acc = 0;
    for (int m = 0; m < M; ++m) acc = uint16_t(acc + uint16_t(taps[m] * rows[m][i]));
    col_s16w_store<O>(int16_t(acc), dst, i, scale);
  }
}

template <int M, ColOut O>
inline void col_s16w_avx2(const int16_t* const* rows, const int16_t* taps, int n, void* dst,
                          float scale) {
  static_assert(O != ColOut::U8Shift, "wrap-around columns have no shift form");
  __m256i t[M];
  const int16_t* r[M];
  for (int m = 0; m < M; ++m) {
    t[m] = _mm256_set1_epi16(taps[m]);
    r[m] = rows[m];
  }
  const __m256 vs = _mm256_set1_ps(scale);
  int i = 0;
  for (; i + 16 <= n; i += 16) {
    __m256i acc = _mm256_setzero_si256();
#pragma GCC unroll 16
    for (int m = 0; m < M; ++m)
      acc = _mm256_add_epi16(
          acc,
          _mm256_mullo_epi16(_mm256_loadu_si256(reinterpret_cast<const __m256i*>(r[m] + i)), t[m]));
    if constexpr (O == ColOut::S16) {
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(static_cast<int16_t*>(dst) + i), acc);
    } else {
      const __m256i lo = _mm256_cvtepi16_epi32(_mm256_castsi256_si128(acc));
      const __m256i hi = _mm256_cvtepi16_epi32(_mm256_extracti128_si256(acc, 1));
      const __m256i a = _mm256_cvtps_epi32(_mm256_mul_ps(_mm256_cvtepi32_ps(lo), vs));
      const __m256i b = _mm256_cvtps_epi32(_mm256_mul_ps(_mm256_cvtepi32_ps(hi), vs));
      // packs interleaves 128-bit lanes: a0 b0 | a1 b1 -> reorder to a0 a1 b0 b1.
      const __m256i w = _mm256_permute4x64_epi64(_mm256_packs_epi32(a, b), 0xD8);
      const __m256i q =
          O == ColOut::S8Scaled ? _mm256_packs_epi16(w, w) : _mm256_packus_epi16(w, w);
      _mm_storeu_si128(reinterpret_cast<__m128i*>(static_cast<uint8_t*>(dst) + i),
                       _mm256_castsi256_si128(_mm256_permute4x64_epi64(q, 0x08)));
    }
  }
  if (i < n) {
    const int16_t* tail[M];
    for (int m = 0; m < M; ++m) tail[m] = rows[m] + i;
    void* d = static_cast<uint8_t*>(dst) + size_t(i) * (O == ColOut::S16 ? 2 : 1);
    col_s16w_scalar<O>(tail, taps, M, n - i, d, scale);
  }
}

// ---- single precision ---------------------------------------------------------------------------
// When both operands of an addition are NaN, the instruction returns the first one. The
// compiler treats additions (intrinsics included) as commutative and may swap them, so the
// scalar and vector sums name their operand order in the instruction itself; products always
// have a finite tap as one operand and need no pinning.
inline float mul_ord(float a, float b) { return a * b; }
inline float add_ord(float a, float b) {
  float r;
  asm("vaddss %2, %1, %0" : "=x"(r) : "x"(a), "x"(b));
  return r;
}
inline __m256 add_ps_ord(__m256 a, __m256 b) {
  __m256 r;
  asm("vaddps %2, %1, %0" : "=x"(r) : "x"(a), "x"(b));
  return r;
}

inline float row_f32_value(const float* s, const float* taps, int K, int stride) {
  float acc = 0.0f;
  bool first = true;
  for (int k = 0; k < K; ++k) {
    if (taps[k] == 0.0f) continue;
    const float p = mul_ord(taps[k], s[k * stride]);
    acc = first ? p : add_ord(acc, p);
    first = false;
  }
  return acc;
}

inline void row_f32_scalar(const float* src, float* out, int n, const float* taps, int K,
                           int stride) {
  for (int i = 0; i < n; ++i) out[i] = row_f32_value(src + i, taps, K, stride);
}

// The nonzero taps, unrolled: offsets in elements from the first, values.
template <int NZ>
inline void row_f32_nz(const float* src, float* out, int n, const int* off, const float* tv) {
  __m256 t[NZ];
  for (int k = 0; k < NZ; ++k) t[k] = _mm256_set1_ps(tv[k]);
  int i = 0;
  for (; i + 8 <= n; i += 8) {
    __m256 acc = _mm256_mul_ps(t[0], _mm256_loadu_ps(src + i + off[0]));
#pragma GCC unroll 16
    for (int k = 1; k < NZ; ++k)
      acc = add_ps_ord(acc, _mm256_mul_ps(t[k], _mm256_loadu_ps(src + i + off[k])));
    _mm256_storeu_ps(out + i, acc);
  }
  for (; i < n; ++i) {
    float acc = mul_ord(tv[0], src[i + off[0]]);
    for (int k = 1; k < NZ; ++k) acc = add_ord(acc, mul_ord(tv[k], src[i + off[k]]));
    out[i] = acc;
  }
}

inline void row_f32_avx2(const float* src, float* out, int n, const float* taps, int K,
                         int stride) {
  int off[8];
  float tv[8];
  int nz = 0;
  for (int k = 0; k < K && K <= 8; ++k)
    if (taps[k] != 0.0f) {
      off[nz] = k * stride;
      tv[nz++] = taps[k];
    }
  if (K <= 8) {
    switch (nz) {
      case 0:
        for (int i = 0; i < n; ++i) out[i] = 0.0f;
        return;
      case 1:
        row_f32_nz<1>(src, out, n, off, tv);
        return;
      case 2:
        row_f32_nz<2>(src, out, n, off, tv);
        return;
      case 3:
        row_f32_nz<3>(src, out, n, off, tv);
        return;
      case 4:
        row_f32_nz<4>(src, out, n, off, tv);
        return;
      case 5:
        row_f32_nz<5>(src, out, n, off, tv);
        return;
      default:
        break;
    }
  }
  int i = 0;
  for (; i + 8 <= n; i += 8) {
    __m256 acc = _mm256_setzero_ps();
    bool first = true;
    for (int k = 0; k < K; ++k) {
      if (taps[k] == 0.0f) continue;
      const __m256 p =
          _mm256_mul_ps(_mm256_set1_ps(taps[k]), _mm256_loadu_ps(src + i + k * stride));
      acc = first ? p : add_ps_ord(acc, p);
      first = false;
    }
    _mm256_storeu_ps(out + i, acc);
  }
  for (; i < n; ++i) out[i] = row_f32_value(src + i, taps, K, stride);
}

// Column: the running sum over all M rows, then times `scale` when `scaled`.
inline float col_f32_value(const float* const* rows, const float* taps, int M, int i, bool scaled,
                           float scale) {
  float acc = 0.0f;
  bool first = true;
  for (int m = 0; m < M; ++m) {
    if (taps[m] == 0.0f) continue;
    const float p = mul_ord(taps[m], rows[m][i]);
    acc = first ? p : add_ord(acc, p);
    first = false;
  }
  return scaled ? mul_ord(acc, scale) : acc;
}

inline void col_f32_scalar(const float* const* rows, const float* taps, int M, int n, float* dst,
                           bool scaled, float scale) {
  for (int i = 0; i < n; ++i) dst[i] = col_f32_value(rows, taps, M, i, scaled, scale);
}

template <int NZ>
inline void col_f32_nz(const float* const* rows, const float* tv, int n, float* dst, bool scaled,
                       float scale) {
  __m256 t[NZ];
  const float* r[NZ];
  for (int k = 0; k < NZ; ++k) {
    t[k] = _mm256_set1_ps(tv[k]);
    r[k] = rows[k];
  }
  const __m256 vs = _mm256_set1_ps(scale);
  int i = 0;
  for (; i + 8 <= n; i += 8) {
    __m256 acc = _mm256_mul_ps(t[0], _mm256_loadu_ps(r[0] + i));
#pragma GCC unroll 16
    for (int k = 1; k < NZ; ++k)
      acc = add_ps_ord(acc, _mm256_mul_ps(t[k], _mm256_loadu_ps(r[k] + i)));
    if (scaled) acc = _mm256_mul_ps(acc, vs);
    _mm256_storeu_ps(dst + i, acc);
  }
  for (; i < n; ++i) {
    float acc = mul_ord(tv[0], r[0][i]);
    for (int k = 1; k < NZ; ++k) acc = add_ord(acc, mul_ord(tv[k], r[k][i]));
    dst[i] = scaled ? mul_ord(acc, scale) : acc;
  }
}

inline void col_f32_avx2(const float* const* rows, const float* taps, int M, int n, float* dst,
                         bool scaled, float scale) {
  if (M <= 12) {
    const float* r[12];
    float tv[12];
    int nz = 0;
    for (int m = 0; m < M; ++m)
      if (taps[m] != 0.0f) {
        r[nz] = rows[m];
        tv[nz++] = taps[m];
      }
    switch (nz) {
      case 1:
        col_f32_nz<1>(r, tv, n, dst, scaled, scale);
        return;
      case 2:
        col_f32_nz<2>(r, tv, n, dst, scaled, scale);
        return;
      case 3:
        col_f32_nz<3>(r, tv, n, dst, scaled, scale);
        return;
      case 4:
        col_f32_nz<4>(r, tv, n, dst, scaled, scale);
        return;
      case 5:
        col_f32_nz<5>(r, tv, n, dst, scaled, scale);
        return;
      case 6:
        col_f32_nz<6>(r, tv, n, dst, scaled, scale);
        return;
      case 8:
        col_f32_nz<8>(r, tv, n, dst, scaled, scale);
        return;
      default:
        break;
    }
  }
  int i = 0;
  const __m256 vs = _mm256_set1_ps(scale);
  for (; i + 8 <= n; i += 8) {
    __m256 acc = _mm256_setzero_ps();
    bool first = true;
    for (int m = 0; m < M; ++m) {
      if (taps[m] == 0.0f) continue;
      const __m256 p = _mm256_mul_ps(_mm256_set1_ps(taps[m]), _mm256_loadu_ps(rows[m] + i));
      acc = first ? p : add_ps_ord(acc, p);
      first = false;
    }
    if (scaled) acc = _mm256_mul_ps(acc, vs);
    _mm256_storeu_ps(dst + i, acc);
  }
  for (; i < n; ++i) dst[i] = col_f32_value(rows, taps, M, i, scaled, scale);
}

}  // namespace rvp::filter
