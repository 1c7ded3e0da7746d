// Morphology kernels: element-wise maximum or minimum over a list of rows, the in-place
// sliding-window extremum built from it, and the bit packing of 1u rows.
//
// Every kernel has a scalar reference (ref::) and an AVX2 version (avx2::) with bit-identical
// results. The extremum of two values is `a > b ? a : b` (maximum) and `a < b ? a : b`
// (minimum), the definition of the vector max/min instructions, so even NaN and signed zeros
// come out the same in both versions: the second operand wins every tie and every unordered
// comparison.
#pragma once

#include <immintrin.h>

#include <cstdint>
#include <cstring>
#include <type_traits>

#include "rvpcv.h"

namespace rvp::morph {

enum class Extremum { Max, Min };

template <Extremum E, class T>
inline T pick(T a, T b) {
  if constexpr (E == Extremum::Max)
    return a > b ? a : b;
  else
    return a < b ? a : b;
}

// AVX2 traits per element type: lanes, load/store, the extremum.
template <class T>
struct Vec;

template <>
struct Vec<Rvp8u> {
  static constexpr int kLanes = 32;
  using V = __m256i;
  static V load(const Rvp8u* p) { return _mm256_loadu_si256(reinterpret_cast<const V*>(p)); }
  static void store(Rvp8u* p, V v) { _mm256_storeu_si256(reinterpret_cast<V*>(p), v); }
  static V max(V a, V b) { return _mm256_max_epu8(a, b); }
  static V min(V a, V b) { return _mm256_min_epu8(a, b); }
};
template <>
struct Vec<Rvp16u> {
  static constexpr int kLanes = 16;
  using V = __m256i;
  static V load(const Rvp16u* p) { return _mm256_loadu_si256(reinterpret_cast<const V*>(p)); }
  static void store(Rvp16u* p, V v) { _mm256_storeu_si256(reinterpret_cast<V*>(p), v); }
  static V max(V a, V b) { return _mm256_max_epu16(a, b); }
  static V min(V a, V b) { return _mm256_min_epu16(a, b); }
};
template <>
struct Vec<Rvp16s> {
  static constexpr int kLanes = 16;
  using V = __m256i;
  static V load(const Rvp16s* p) { return _mm256_loadu_si256(reinterpret_cast<const V*>(p)); }
  static void store(Rvp16s* p, V v) { _mm256_storeu_si256(reinterpret_cast<V*>(p), v); }
  static V max(V a, V b) { return _mm256_max_epi16(a, b); }
  static V min(V a, V b) { return _mm256_min_epi16(a, b); }
};
template <>
struct Vec<Rvp32f> {
  static constexpr int kLanes = 8;
  using V = __m256;
  static V load(const Rvp32f* p) { return _mm256_loadu_ps(p); }
  static void store(Rvp32f* p, V v) { _mm256_storeu_ps(p, v); }
  // vmaxps/vminps: first operand when the comparison holds, else the second.
  static V max(V a, V b) { return _mm256_max_ps(a, b); }
  static V min(V a, V b) { return _mm256_min_ps(a, b); }
};

template <Extremum E, class T>
inline typename Vec<T>::V vpick(typename Vec<T>::V a, typename Vec<T>::V b) {
  if constexpr (E == Extremum::Max)
    return Vec<T>::max(a, b);
  else
    return Vec<T>::min(a, b);
}

// Scalar element access that tolerates any address (32f rows may sit at odd steps).
template <class T>
inline T ld(const T* p) {
  T v;
  std::memcpy(&v, p, sizeof(T));
  return v;
}
template <class T>
inline void st(T* p, T v) {
  std::memcpy(p, &v, sizeof(T));
}

namespace ref {

// dst[i] = e(...e(e(src[0][i], src[1][i]), src[2][i])..., src[count-1][i]) for i < n,
// count >= 1. dst may be src[0] (and in-place window passes rely on that); every other source
// must not overlap dst below its own index.
template <Extremum E, class T>
void reduce_rows(T* dst, const T* const* src, int count, int n) {
  for (int i = 0; i < n; ++i) {
    T v = ld(src[0] + i);
    for (int r = 1; r < count; ++r) v = pick<E>(v, ld(src[r] + i));
    st(dst + i, v);
  }
}

// Two consecutive outputs of a vertical window of rh >= 2 rows, src[0..rh]: the rows both
// windows share are combined once. c = e(...e(src[1], src[2])..., src[rh-1]);
// d0 = e(src[0], c), d1 = e(c, src[rh]).
template <Extremum E, class T>
void reduce_pair(T* d0, T* d1, const T* const* src, int rh, int n) {
  for (int i = 0; i < n; ++i) {
    T c = ld(src[1] + i);
    for (int r = 2; r < rh; ++r) c = pick<E>(c, ld(src[r] + i));
    st(d0 + i, pick<E>(ld(src[0] + i), c));
    st(d1 + i, pick<E>(c, ld(src[rh] + i)));
  }
}

}  // namespace ref

namespace avx2 {

template <Extremum E, class T, int RH>
void reduce_pair_fixed(T* d0, T* d1, const T* const* list, int rh_dyn, int n) {
  using X = Vec<T>;
  constexpr int L = X::kLanes;
  const int rh = RH > 0 ? RH : rh_dyn;
  const T* src[RH > 0 ? RH + 1 : 1];
  if constexpr (RH > 0)
    for (int r = 0; r <= RH; ++r) src[r] = list[r];
  auto at = [&](int r) {
    if constexpr (RH > 0)
      return src[r];
    else
      return list[r];
  };
  int i = 0;
  for (; i + L <= n; i += L) {
    typename X::V c = X::load(at(1) + i);
#pragma GCC unroll 8
    for (int r = 2; r < rh; ++r) c = vpick<E, T>(c, X::load(at(r) + i));
    X::store(d0 + i, vpick<E, T>(X::load(at(0) + i), c));
    X::store(d1 + i, vpick<E, T>(c, X::load(at(rh) + i)));
  }
  for (; i < n; ++i) {
    T c = ld(at(1) + i);
    for (int r = 2; r < rh; ++r) c = pick<E>(c, ld(at(r) + i));
    st(d0 + i, pick<E>(ld(at(0) + i), c));
    st(d1 + i, pick<E>(c, ld(at(rh) + i)));
  }
}

template <Extremum E, class T>
void reduce_pair(T* d0, T* d1, const T* const* src, int rh, int n) {
  switch (rh) {
    case 2:
      return reduce_pair_fixed<E, T, 2>(d0, d1, src, rh, n);
    case 3:
      return reduce_pair_fixed<E, T, 3>(d0, d1, src, rh, n);
    case 4:
      return reduce_pair_fixed<E, T, 4>(d0, d1, src, rh, n);
    case 5:
      return reduce_pair_fixed<E, T, 5>(d0, d1, src, rh, n);
    case 6:
      return reduce_pair_fixed<E, T, 6>(d0, d1, src, rh, n);
    case 7:
      return reduce_pair_fixed<E, T, 7>(d0, d1, src, rh, n);
    default:
      return reduce_pair_fixed<E, T, 0>(d0, d1, src, rh, n);
  }
}

// A fixed number of rows: the row pointers stay in registers and the taps unroll.
template <Extremum E, class T, int N>
void reduce_fixed(T* dst, const T* const* src_list, int n) {
  using X = Vec<T>;
  constexpr int L = X::kLanes;
  const T* src[N];
  for (int r = 0; r < N; ++r) src[r] = src_list[r];
  int i = 0;
  for (; i + 2 * L <= n; i += 2 * L) {
    typename X::V v = X::load(src[0] + i), w = X::load(src[0] + i + L);
#pragma GCC unroll 8
    for (int r = 1; r < N; ++r) {
      v = vpick<E, T>(v, X::load(src[r] + i));
      w = vpick<E, T>(w, X::load(src[r] + i + L));
    }
    X::store(dst + i, v);
    X::store(dst + i + L, w);
  }
  for (; i + L <= n; i += L) {
    typename X::V v = X::load(src[0] + i);
#pragma GCC unroll 8
    for (int r = 1; r < N; ++r) v = vpick<E, T>(v, X::load(src[r] + i));
    X::store(dst + i, v);
  }
  for (; i < n; ++i) {
    T v = ld(src[0] + i);
    for (int r = 1; r < N; ++r) v = pick<E>(v, ld(src[r] + i));
    st(dst + i, v);
  }
}

template <Extremum E, class T>
void reduce_rows(T* dst, const T* const* src, int count, int n) {
  switch (count) {
    case 1:
      return reduce_fixed<E, T, 1>(dst, src, n);
    case 2:
      return reduce_fixed<E, T, 2>(dst, src, n);
    case 3:
      return reduce_fixed<E, T, 3>(dst, src, n);
    case 4:
      return reduce_fixed<E, T, 4>(dst, src, n);
    case 5:
      return reduce_fixed<E, T, 5>(dst, src, n);
    case 6:
      return reduce_fixed<E, T, 6>(dst, src, n);
    case 7:
      return reduce_fixed<E, T, 7>(dst, src, n);
    default:
      break;
  }
  using X = Vec<T>;
  constexpr int L = X::kLanes;
  int i = 0;
  // Each block is loaded completely before it is stored, and stores only reach indices below
  // the next block's loads: in-place use with dst == src[0] and src[r] ahead of dst is safe.
  for (; i + L <= n; i += L) {
    typename X::V v = X::load(src[0] + i);
    for (int r = 1; r < count; ++r) v = vpick<E, T>(v, X::load(src[r] + i));
    X::store(dst + i, v);
  }
  for (; i < n; ++i) {
    T v = ld(src[0] + i);
    for (int r = 1; r < count; ++r) v = pick<E>(v, ld(src[r] + i));
    st(dst + i, v);
  }
}

}  // namespace avx2

// The kernels the drivers call.
template <Extremum E, class T>
inline void reduce_rows(T* dst, const T* const* src, int count, int n) {
  avx2::reduce_rows<E, T>(dst, src, count, n);
}

// In place: buf[i] becomes the extremum of buf[i + j*stride], j = 0..len-1, for every
// i < n - (len-1)*stride (the positions whose whole window lies in the row). Windows double in
// length (1, 2, 4, ...) and a last overlapping step finishes any length, so the cost grows with
// log2(len) instead of len.
template <Extremum E, class T, bool Vector = true>
void window_inplace(T* buf, int n, int len, int stride) {
  int k = 1;
  while (2 * k <= len) {
    const T* src[2] = {buf, buf + k * stride};
    const int m = n - (2 * k - 1) * stride;
    if (m <= 0) return;
    if constexpr (Vector)
      avx2::reduce_rows<E, T>(buf, src, 2, m);
    else
      ref::reduce_rows<E, T>(buf, src, 2, m);
    k *= 2;
  }
  if (len > k) {
    const T* src[2] = {buf, buf + (len - k) * stride};
    const int m = n - (len - 1) * stride;
    if (m <= 0) return;
    if constexpr (Vector)
      avx2::reduce_rows<E, T>(buf, src, 2, m);
    else
      ref::reduce_rows<E, T>(buf, src, 2, m);
  }
}

// out[i] (i < n_out) becomes the extremum of buf[start + i + j*stride], j = 0..len-1, combined
// with the old out[i] when `accumulate` is set. Short windows read their taps directly in one
// pass; longer ones double in place inside buf first (buf is clobbered), then one last pass
// writes out.
template <Extremum E, class T>
void window_into(T* out, T* buf, int n_buf, int n_out, int len, int stride, int start,
                 bool accumulate) {
  constexpr int kDirect = 6;
  const T* src[kDirect + 1];
  int cnt = 0;
  if (accumulate) src[cnt++] = out;
  if (len <= kDirect) {
    for (int j = 0; j < len; ++j) src[cnt++] = buf + start + j * stride;
    avx2::reduce_rows<E, T>(out, src, cnt, n_out);
    return;
  }
  int k = 1;
  while (2 * k < len) {
    const T* two[2] = {buf, buf + k * stride};
    avx2::reduce_rows<E, T>(buf, two, 2, n_buf - (2 * k - 1) * stride);
    k *= 2;
  }
  src[cnt++] = buf + start;
  src[cnt++] = buf + start + (len - k) * stride;
  avx2::reduce_rows<E, T>(out, src, cnt, n_out);
}

// 1u rows: eight pixels a byte, the first pixel in the most significant bit.
namespace ref {

// bytes[x] = bit x of the row (0 or 1), x < n.
inline void unpack_bits(const Rvp8u* bits, Rvp8u* bytes, int n) {
  for (int x = 0; x < n; ++x) bytes[x] = (bits[x >> 3] >> (7 - (x & 7))) & 1;
}

// Writes pixels 0..n-1 from bytes (nonzero = set); bits of the last byte past n keep their
// value.
inline void pack_bits(const Rvp8u* bytes, Rvp8u* bits, int n) {
  int x = 0;
  for (; x + 8 <= n; x += 8) {
    Rvp8u b = 0;
    for (int j = 0; j < 8; ++j) b = Rvp8u(b | ((bytes[x + j] != 0) << (7 - j)));
    bits[x >> 3] = b;
  }
  if (x < n) {
    Rvp8u b = bits[x >> 3];
    for (int j = 0; x + j < n; ++j) {
      const Rvp8u m = Rvp8u(1u << (7 - j));
      b = Rvp8u(bytes[x + j] ? (b | m) : (b & ~m));
    }
    bits[x >> 3] = b;
  }
}

}  // namespace ref

namespace avx2 {

inline void unpack_bits(const Rvp8u* bits, Rvp8u* bytes, int n) {
  // Each byte of 4 source bytes is broadcast to 8 lanes and tested against its bit.
  const __m256i shuffle = _mm256_setr_epi8(0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 1, 1, 1, 1, 2, 2, 2,
                                           2, 2, 2, 2, 2, 3, 3, 3, 3, 3, 3, 3, 3);
  const __m256i bitsel = _mm256_setr_epi8(
      char(0x80), 0x40, 0x20, 0x10, 8, 4, 2, 1, char(0x80), 0x40, 0x20, 0x10, 8, 4, 2, 1,
      char(0x80), 0x40, 0x20, 0x10, 8, 4, 2, 1, char(0x80), 0x40, 0x20, 0x10, 8, 4, 2, 1);
  const __m256i one = _mm256_set1_epi8(1);
  int x = 0;
  for (; x + 32 <= n; x += 32) {
    uint32_t w;
    std::memcpy(&w, bits + (x >> 3), 4);
    const __m256i v = _mm256_set1_epi32(int(w));
    // Broadcast within 128-bit lanes: lane 0 takes bytes 0,1, lane 1 bytes 2,3.
    const __m256i s = _mm256_shuffle_epi8(v, shuffle);
    const __m256i hit = _mm256_cmpeq_epi8(_mm256_and_si256(s, bitsel), bitsel);
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(bytes + x), _mm256_and_si256(hit, one));
  }
  ref::unpack_bits(bits + (x >> 3), bytes + x, n - x);
}

inline void pack_bits(const Rvp8u* bytes, Rvp8u* bits, int n) {
  int x = 0;
  for (; x + 32 <= n; x += 32) {
    const __m256i v = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(bytes + x));
    const __m256i nz =
        _mm256_xor_si256(_mm256_cmpeq_epi8(v, _mm256_setzero_si256()), _mm256_set1_epi8(-1));
    // movemask puts pixel x+j in bit j; the packing wants it in bit 7 - (j & 7) of byte j/8.
    uint32_t m = uint32_t(_mm256_movemask_epi8(nz));
    for (int b = 0; b < 4; ++b) {
      uint8_t byte = uint8_t(m >> (8 * b));
      byte = uint8_t(((byte * 0x0802u & 0x22110u) | (byte * 0x8020u & 0x88440u)) * 0x10101u >> 16);
      bits[(x >> 3) + b] = byte;
    }
  }
  ref::pack_bits(bytes + x, bits + (x >> 3), n - x);
}

}  // namespace avx2

}  // namespace rvp::morph
