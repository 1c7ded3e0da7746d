// Row kernels of the 5x5 Gaussian pyramid. Both directions are separable: a vertical pass
// combines source rows element by element into an intermediate row, a horizontal pass filters
// that row and writes the destination. Integer images keep the intermediate in 16 bits (the
// sums of 8-bit pixels never leave 16 bits, and the horizontal sums are formed modulo 2^16 and
// read back as unsigned for 8u, signed for 8s, which is exact); 32f keeps floats and fixes the
// order of the additions so the vector and scalar paths give the same bits:
//   down, per pass:  ((((p0 + p1*4) + p2*6) + p3*4) + p4), then * (1/256)
//   up, per pass:    even (p0 + p1*6) + p2, odd p1*4 + p2*4, then * (1/64)
// Integer results: (sum + 128) >> 8 (down) and (sum + 32) >> 6 (up), arithmetic shifts, so
// halves round up.
//
// The intermediate row `v` is padded by the caller with mirrored pixels: two pixels on each
// side for the down pass, one for the up pass (`v` points at element 0 of the row).
#pragma once

#include <immintrin.h>

#include <cstdint>
#include <type_traits>

#include "rvpcv.h"

namespace rvp::pyr {

template <class T>
using Acc = std::conditional_t<std::is_same_v<T, Rvp32f>, Rvp32f, int16_t>;

template <class T>
inline T down_final(int s) {
  return static_cast<T>((s + 128) >> 8);
}
template <class T>
inline T up_final(int s) {
  return static_cast<T>((s + 32) >> 6);
}
// The unsigned reading of a 16-bit intermediate for 8u, the signed one for 8s.
template <class T>
inline int widen(int16_t v) {
  return std::is_same_v<T, Rvp8u> ? int(uint16_t(v)) : int(v);
}

namespace ref {

template <class T>
void down_vert(const T* const r[5], Acc<T>* v, int n) {
  for (int i = 0; i < n; ++i) {
    if constexpr (std::is_same_v<T, Rvp32f>) {
      float a = r[0][i];
      a = a + r[1][i] * 4.0f;
      a = a + r[2][i] * 6.0f;
      a = a + r[3][i] * 4.0f;
      a = a + r[4][i];
      v[i] = a;
    } else {
      v[i] = static_cast<int16_t>(r[0][i] + 4 * r[1][i] + 6 * r[2][i] + 4 * r[3][i] + r[4][i]);
    }
  }
}

// dst[X*C + c] for X < out_w from the padded intermediate row.
template <class T>
void down_horz(const Acc<T>* v, T* dst, int out_w, int C) {
  for (int X = 0; X < out_w; ++X)
    for (int c = 0; c < C; ++c) {
      const Acc<T>* p = v + 2 * X * C + c;
      if constexpr (std::is_same_v<T, Rvp32f>) {
        float a = p[-2 * C];
        a = a + p[-C] * 4.0f;
        a = a + p[0] * 6.0f;
        a = a + p[C] * 4.0f;
        a = a + p[2 * C];
        dst[X * C + c] = a * (1.0f / 256.0f);
      } else {
        const int s = p[-2 * C] + 4 * p[-C] + 6 * p[0] + 4 * p[C] + p[2 * C];
        dst[X * C + c] = down_final<T>(widen<T>(static_cast<int16_t>(s)));
      }
    }
}

template <class T>
void up_vert(const T* r0, const T* r1, const T* r2, Acc<T>* ve, Acc<T>* vo, int n) {
  for (int i = 0; i < n; ++i) {
    if constexpr (std::is_same_v<T, Rvp32f>) {
      ve[i] = (r0[i] + r1[i] * 6.0f) + r2[i];
      vo[i] = r1[i] * 4.0f + r2[i] * 4.0f;
    } else {
      ve[i] = static_cast<int16_t>(r0[i] + 6 * r1[i] + r2[i]);
      vo[i] = static_cast<int16_t>(4 * (r1[i] + r2[i]));
    }
  }
}

// dst pixels 2X and 2X + 1 for X < in_w from the padded intermediate row.
template <class T>
void up_horz(const Acc<T>* v, T* dst, int in_w, int C) {
  for (int X = 0; X < in_w; ++X)
    for (int c = 0; c < C; ++c) {
      const Acc<T>* p = v + X * C + c;
      if constexpr (std::is_same_v<T, Rvp32f>) {
        dst[2 * X * C + c] = ((p[-C] + p[0] * 6.0f) + p[C]) * (1.0f / 64.0f);
        dst[(2 * X + 1) * C + c] = (p[0] * 4.0f + p[C] * 4.0f) * (1.0f / 64.0f);
      } else {
        dst[2 * X * C + c] = up_final<T>(p[-C] + 6 * p[0] + p[C]);
        dst[(2 * X + 1) * C + c] = up_final<T>(4 * (p[0] + p[C]));
      }
    }
}

}  // namespace ref

namespace avx2 {

// Sixteen 8-bit elements widened to 16 bits, or eight floats.
template <class T>
inline __m256i load16(const T* p) {
  const __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
  if constexpr (std::is_same_v<T, Rvp8u>)
    return _mm256_cvtepu8_epi16(b);
  else
    return _mm256_cvtepi8_epi16(b);
}
inline __m256i ld(const int16_t* p) {
  return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
}
inline void st(int16_t* p, __m256i v) { _mm256_storeu_si256(reinterpret_cast<__m256i*>(p), v); }
inline __m256i x4(__m256i a) { return _mm256_slli_epi16(a, 2); }
inline __m256i x6(__m256i a) {
  return _mm256_add_epi16(_mm256_slli_epi16(a, 2), _mm256_slli_epi16(a, 1));
}

// Two vectors of sixteen 16-bit results, already shifted, as 32 bytes in order.
template <class T>
inline __m256i pack_bytes(__m256i lo, __m256i hi) {
  const __m256i p =
      std::is_same_v<T, Rvp8u> ? _mm256_packus_epi16(lo, hi) : _mm256_packs_epi16(lo, hi);
  return _mm256_permute4x64_epi64(p, 0xD8);
}
template <class T>
inline __m256i shift_down(__m256i s) {
  s = _mm256_add_epi16(s, _mm256_set1_epi16(128));
  return std::is_same_v<T, Rvp8u> ? _mm256_srli_epi16(s, 8) : _mm256_srai_epi16(s, 8);
}
template <class T>
inline __m256i shift_up(__m256i s) {
  return _mm256_srai_epi16(_mm256_add_epi16(s, _mm256_set1_epi16(32)), 6);
}

template <class T>
void down_vert(const T* const r[5], Acc<T>* v, int n) {
  int i = 0;
  if constexpr (std::is_same_v<T, Rvp32f>) {
    const __m256 k4 = _mm256_set1_ps(4.0f), k6 = _mm256_set1_ps(6.0f);
    for (; i + 8 <= n; i += 8) {
      __m256 a = _mm256_loadu_ps(r[0] + i);
      a = _mm256_add_ps(a, _mm256_mul_ps(_mm256_loadu_ps(r[1] + i), k4));
      a = _mm256_add_ps(a, _mm256_mul_ps(_mm256_loadu_ps(r[2] + i), k6));
      a = _mm256_add_ps(a, _mm256_mul_ps(_mm256_loadu_ps(r[3] + i), k4));
      a = _mm256_add_ps(a, _mm256_loadu_ps(r[4] + i));
      _mm256_storeu_ps(v + i, a);
    }
  } else {
    for (; i + 16 <= n; i += 16) {
      __m256i a = _mm256_add_epi16(load16(r[0] + i), load16(r[4] + i));
      a = _mm256_add_epi16(a, x4(_mm256_add_epi16(load16(r[1] + i), load16(r[3] + i))));
      a = _mm256_add_epi16(a, x6(load16(r[2] + i)));
      st(v + i, a);
    }
  }
  const T* tail[5] = {r[0] + i, r[1] + i, r[2] + i, r[3] + i, r[4] + i};
  ref::down_vert<T>(tail, v + i, n - i);
}

// The full-resolution horizontal filter of elements [0, n) into h (then decimated).
template <class T>
void down_horz_full(const Acc<T>* v, T* h, int n, int C) {
  int i = 0;
  if constexpr (std::is_same_v<T, Rvp32f>) {
    const __m256 k4 = _mm256_set1_ps(4.0f), k6 = _mm256_set1_ps(6.0f);
    const __m256 scale = _mm256_set1_ps(1.0f / 256.0f);
    for (; i + 8 <= n; i += 8) {
      const float* p = v + i;
      __m256 a = _mm256_loadu_ps(p - 2 * C);
      a = _mm256_add_ps(a, _mm256_mul_ps(_mm256_loadu_ps(p - C), k4));
      a = _mm256_add_ps(a, _mm256_mul_ps(_mm256_loadu_ps(p), k6));
      a = _mm256_add_ps(a, _mm256_mul_ps(_mm256_loadu_ps(p + C), k4));
      a = _mm256_add_ps(a, _mm256_loadu_ps(p + 2 * C));
      _mm256_storeu_ps(h + i, _mm256_mul_ps(a, scale));
    }
    for (; i < n; ++i) {
      const float* p = v + i;
      float a = p[-2 * C];
      a = a + p[-C] * 4.0f;
      a = a + p[0] * 6.0f;
      a = a + p[C] * 4.0f;
      a = a + p[2 * C];
      h[i] = a * (1.0f / 256.0f);
    }
  } else {
    for (; i + 32 <= n; i += 32) {
      __m256i s[2];
      for (int k = 0; k < 2; ++k) {
        const int16_t* p = v + i + 16 * k;
        __m256i a = _mm256_add_epi16(ld(p - 2 * C), ld(p + 2 * C));
        a = _mm256_add_epi16(a, x4(_mm256_add_epi16(ld(p - C), ld(p + C))));
        s[k] = shift_down<T>(_mm256_add_epi16(a, x6(ld(p))));
      }
      _mm256_storeu_si256(reinterpret_cast<__m256i*>(h + i), pack_bytes<T>(s[0], s[1]));
    }
    for (; i < n; ++i) {
      const int16_t* p = v + i;
      const int s = p[-2 * C] + 4 * p[-C] + 6 * p[0] + 4 * p[C] + p[2 * C];
      h[i] = down_final<T>(widen<T>(static_cast<int16_t>(s)));
    }
  }
}

// Down pass: full-resolution filter into `tmp` (at least 2*out_w*C elements), then every
// second pixel into dst.
template <class T>
void down_horz(const Acc<T>* v, T* dst, int out_w, int C, T* tmp) {
  if constexpr (!std::is_same_v<T, Rvp32f>) {
    if (C == 1) {
      // Decimated directly: with pairs (v[2X], v[2X+1]) as 32-bit lanes, output X is
      // madd(pair X-1, (1, 4)) + madd(pair X, (6, 4)) + madd(pair X+1, (1, 0)).
      const __m256i k14 = _mm256_set1_epi32((4 << 16) | 1);
      const __m256i k64 = _mm256_set1_epi32((4 << 16) | 6);
      const __m256i k10 = _mm256_set1_epi32(1);
      const __m256i half = _mm256_set1_epi32(128);
      int X = 0;
      for (; 2 * X + 33 <= 2 * out_w; X += 16) {
        __m256i r[2];
        for (int k = 0; k < 2; ++k) {
          const int16_t* p = v + 2 * (X + 8 * k);
          __m256i sum = _mm256_madd_epi16(ld(p - 2), k14);
          sum = _mm256_add_epi32(sum, _mm256_madd_epi16(ld(p), k64));
          sum = _mm256_add_epi32(sum, _mm256_madd_epi16(ld(p + 2), k10));
          r[k] = _mm256_srai_epi32(_mm256_add_epi32(sum, half), 8);
        }
        const __m256i p16 = _mm256_permute4x64_epi64(_mm256_packs_epi32(r[0], r[1]), 0xD8);
        const __m256i p8 =
            std::is_same_v<T, Rvp8u> ? _mm256_packus_epi16(p16, p16) : _mm256_packs_epi16(p16, p16);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(dst + X),
                         _mm256_castsi256_si128(_mm256_permute4x64_epi64(p8, 0x08)));
      }
      ref::down_horz<T>(v + 2 * X, dst + X, out_w - X, 1);
      return;
    }
  }
  const int n = (2 * out_w - 1) * C;
  down_horz_full<T>(v, tmp, n, C);
  int X = 0;
  if (C == 1) {
    if constexpr (std::is_same_v<T, Rvp32f>) {
      for (; 2 * X + 16 <= n; X += 8) {
        const __m256 a = _mm256_loadu_ps(tmp + 2 * X), b = _mm256_loadu_ps(tmp + 2 * X + 8);
        const __m256 e = _mm256_shuffle_ps(a, b, _MM_SHUFFLE(2, 0, 2, 0));
        _mm256_storeu_ps(dst + X,
                         _mm256_castpd_ps(_mm256_permute4x64_pd(_mm256_castps_pd(e), 0xD8)));
      }
    } else {
      for (; 2 * X + 32 <= n; X += 16) {
        __m256i a = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(tmp + 2 * X));
        a = _mm256_and_si256(a, _mm256_set1_epi16(0x00FF));
        const __m256i p = _mm256_permute4x64_epi64(_mm256_packus_epi16(a, a), 0x08);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(dst + X), _mm256_castsi256_si128(p));
      }
    }
  }
  if constexpr (std::is_same_v<T, Rvp32f>) {
    if (C == 3) {
      // Pixel by pixel as four-float moves; the fourth float is rewritten by the next pixel.
      for (; X + 2 <= out_w; ++X) _mm_storeu_ps(dst + 3 * X, _mm_loadu_ps(tmp + 6 * X));
    }
  } else {
    if (C == 3) {
      // Four output pixels from two 16-byte loads (pixels 2X, 2X+2 of each), stored as 16
      // bytes of which the last 4 are rewritten by the next step.
      const __m128i pick = _mm_setr_epi8(0, 1, 2, 6, 7, 8, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1);
      const __m128i pick_hi =
          _mm_setr_epi8(-1, -1, -1, -1, -1, -1, 0, 1, 2, 6, 7, 8, -1, -1, -1, -1);
      for (; 3 * X + 16 <= 3 * out_w && 6 * X + 28 <= n; X += 4) {
        const __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i*>(tmp + 6 * X));
        const __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i*>(tmp + 6 * X + 12));
        _mm_storeu_si128(reinterpret_cast<__m128i*>(dst + 3 * X),
                         _mm_or_si128(_mm_shuffle_epi8(a, pick), _mm_shuffle_epi8(b, pick_hi)));
      }
    }
  }
  for (; X < out_w; ++X)
    for (int c = 0; c < C; ++c) dst[X * C + c] = tmp[2 * X * C + c];
}

// Interleaves the even and odd output pixels of three-channel 8-bit rows: eight pixels of each
// (24 bytes) become 48 output bytes, written as three 16-byte stores.
template <class T>
int interleave3(const T* te, const T* to, T* dst, int in_w) {
  constexpr char z = -1;
  // Output bytes 0-15: E0 O0 E1 O1 E2 O2[0] from the first 16 bytes of E and O.
  const __m128i m0e = _mm_setr_epi8(0, 1, 2, z, z, z, 3, 4, 5, z, z, z, 6, 7, 8, z);
  const __m128i m0o = _mm_setr_epi8(z, z, z, 0, 1, 2, z, z, z, 3, 4, 5, z, z, z, 6);
  // Bytes 16-31: O2[1..2] E3 O3 E4 O4 E5[0..1]; E from E[8..23], O from O[0..15].
  const __m128i m1e = _mm_setr_epi8(z, z, 1, 2, 3, z, z, z, 4, 5, 6, z, z, z, 7, 8);
  const __m128i m1o = _mm_setr_epi8(7, 8, z, z, z, 9, 10, 11, z, z, z, 12, 13, 14, z, z);
  // Bytes 32-47: E5[2] O5 E6 O6 E7 O7 from E[8..23] and O[8..23].
  const __m128i m2e = _mm_setr_epi8(9, z, z, z, 10, 11, 12, z, z, z, 13, 14, 15, z, z, z);
  const __m128i m2o = _mm_setr_epi8(z, 7, 8, 9, z, z, z, 10, 11, 12, z, z, z, 13, 14, 15);
  int X = 0;
  for (; X + 8 <= in_w; X += 8) {
    const T* e = te + 3 * X;
    const T* o = to + 3 * X;
    const __m128i ea = _mm_loadu_si128(reinterpret_cast<const __m128i*>(e));
    const __m128i eb = _mm_loadu_si128(reinterpret_cast<const __m128i*>(e + 8));
    const __m128i oa = _mm_loadu_si128(reinterpret_cast<const __m128i*>(o));
    const __m128i ob = _mm_loadu_si128(reinterpret_cast<const __m128i*>(o + 8));
    T* d = dst + 6 * X;
    _mm_storeu_si128(reinterpret_cast<__m128i*>(d),
                     _mm_or_si128(_mm_shuffle_epi8(ea, m0e), _mm_shuffle_epi8(oa, m0o)));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(d + 16),
                     _mm_or_si128(_mm_shuffle_epi8(eb, m1e), _mm_shuffle_epi8(oa, m1o)));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(d + 32),
                     _mm_or_si128(_mm_shuffle_epi8(eb, m2e), _mm_shuffle_epi8(ob, m2o)));
  }
  return X;
}

template <class T>
void up_vert(const T* r0, const T* r1, const T* r2, Acc<T>* ve, Acc<T>* vo, int n) {
  int i = 0;
  if constexpr (std::is_same_v<T, Rvp32f>) {
    const __m256 k4 = _mm256_set1_ps(4.0f), k6 = _mm256_set1_ps(6.0f);
    for (; i + 8 <= n; i += 8) {
      const __m256 a = _mm256_loadu_ps(r0 + i), b = _mm256_loadu_ps(r1 + i),
                   c = _mm256_loadu_ps(r2 + i);
      _mm256_storeu_ps(ve + i, _mm256_add_ps(_mm256_add_ps(a, _mm256_mul_ps(b, k6)), c));
      _mm256_storeu_ps(vo + i, _mm256_add_ps(_mm256_mul_ps(b, k4), _mm256_mul_ps(c, k4)));
    }
  } else {
    for (; i + 16 <= n; i += 16) {
      const __m256i a = load16(r0 + i), b = load16(r1 + i), c = load16(r2 + i);
      st(ve + i, _mm256_add_epi16(_mm256_add_epi16(a, c), x6(b)));
      st(vo + i, x4(_mm256_add_epi16(b, c)));
    }
  }
  ref::up_vert<T>(r0 + i, r1 + i, r2 + i, ve + i, vo + i, n - i);
}

// Up pass. One channel interleaves even and odd outputs in registers; three channels write
// the even and odd pixels through `tmp` (2*in_w*C elements).
template <class T>
void up_horz(const Acc<T>* v, T* dst, int in_w, int C, T* tmp) {
  int X = 0;
  if constexpr (std::is_same_v<T, Rvp32f>) {
    const __m256 k4 = _mm256_set1_ps(4.0f), k6 = _mm256_set1_ps(6.0f);
    const __m256 scale = _mm256_set1_ps(1.0f / 64.0f);
    if (C == 1) {
      for (; X + 8 <= in_w; X += 8) {
        const __m256 l = _mm256_loadu_ps(v + X - 1), m = _mm256_loadu_ps(v + X),
                     r = _mm256_loadu_ps(v + X + 1);
        const __m256 e =
            _mm256_mul_ps(_mm256_add_ps(_mm256_add_ps(l, _mm256_mul_ps(m, k6)), r), scale);
        const __m256 o =
            _mm256_mul_ps(_mm256_add_ps(_mm256_mul_ps(m, k4), _mm256_mul_ps(r, k4)), scale);
        const __m256 lo = _mm256_unpacklo_ps(e, o), hi = _mm256_unpackhi_ps(e, o);
        _mm256_storeu_ps(dst + 2 * X, _mm256_permute2f128_ps(lo, hi, 0x20));
        _mm256_storeu_ps(dst + 2 * X + 8, _mm256_permute2f128_ps(lo, hi, 0x31));
      }
    } else {
      const int n = in_w * C;
      T* te = tmp;
      T* to = tmp + n;
      int i = 0;
      for (; i + 8 <= n; i += 8) {
        const __m256 l = _mm256_loadu_ps(v + i - C), m = _mm256_loadu_ps(v + i),
                     r = _mm256_loadu_ps(v + i + C);
        _mm256_storeu_ps(
            te + i, _mm256_mul_ps(_mm256_add_ps(_mm256_add_ps(l, _mm256_mul_ps(m, k6)), r), scale));
        _mm256_storeu_ps(
            to + i,
            _mm256_mul_ps(_mm256_add_ps(_mm256_mul_ps(m, k4), _mm256_mul_ps(r, k4)), scale));
      }
      for (; i < n; ++i) {
        te[i] = ((v[i - C] + v[i] * 6.0f) + v[i + C]) * (1.0f / 64.0f);
        to[i] = (v[i] * 4.0f + v[i + C] * 4.0f) * (1.0f / 64.0f);
      }
      // Four-float moves per pixel; the fourth float is rewritten by the following store.
      for (; X + 2 <= in_w; ++X) {
        _mm_storeu_ps(dst + 6 * X, _mm_loadu_ps(te + 3 * X));
        _mm_storeu_ps(dst + 6 * X + 3, _mm_loadu_ps(to + 3 * X));
      }
      for (; X < in_w; ++X)
        for (int c = 0; c < C; ++c) {
          dst[2 * X * C + c] = te[X * C + c];
          dst[(2 * X + 1) * C + c] = to[X * C + c];
        }
      return;
    }
  } else {
    if (C == 1) {
      for (; X + 16 <= in_w; X += 16) {
        const __m256i l = ld(v + X - 1), m = ld(v + X), r = ld(v + X + 1);
        const __m256i e = shift_up<T>(_mm256_add_epi16(_mm256_add_epi16(l, r), x6(m)));
        const __m256i o = shift_up<T>(x4(_mm256_add_epi16(m, r)));
        const __m256i lo = _mm256_unpacklo_epi16(e, o), hi = _mm256_unpackhi_epi16(e, o);
        const __m256i p =
            std::is_same_v<T, Rvp8u> ? _mm256_packus_epi16(lo, hi) : _mm256_packs_epi16(lo, hi);
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(dst + 2 * X), p);
      }
    } else {
      const int n = in_w * C;
      T* te = tmp;
      T* to = tmp + n;
      int i = 0;
      for (; i + 32 <= n; i += 32) {
        __m256i e[2], o[2];
        for (int k = 0; k < 2; ++k) {
          const int16_t* p = v + i + 16 * k;
          const __m256i l = ld(p - C), m = ld(p), r = ld(p + C);
          e[k] = shift_up<T>(_mm256_add_epi16(_mm256_add_epi16(l, r), x6(m)));
          o[k] = shift_up<T>(x4(_mm256_add_epi16(m, r)));
        }
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(te + i), pack_bytes<T>(e[0], e[1]));
        _mm256_storeu_si256(reinterpret_cast<__m256i*>(to + i), pack_bytes<T>(o[0], o[1]));
      }
      for (; i < n; ++i) {
        te[i] = up_final<T>(v[i - C] + 6 * v[i] + v[i + C]);
        to[i] = up_final<T>(4 * (v[i] + v[i + C]));
      }
      if (C == 3) X = interleave3<T>(te, to, dst, in_w);
      for (; X < in_w; ++X)
        for (int c = 0; c < C; ++c) {
          dst[2 * X * C + c] = te[X * C + c];
          dst[(2 * X + 1) * C + c] = to[X * C + c];
        }
      return;
    }
  }
  ref::up_horz<T>(v + X * C, dst + 2 * X * C, in_w - X, C);
}

}  // namespace avx2
}  // namespace rvp::pyr
