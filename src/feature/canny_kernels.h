// Row kernels of the Canny detector. Each has a scalar reference (`ref::`) that states the
// arithmetic and an AVX2 version (`avx2::`) with bit-identical results.
//
// The detector works on rows of a framed candidate map (one byte per pixel plus a one-pixel
// frame) and on a ring of three single-precision magnitude rows with a zero at each end:
//   derivative_row  8-bit source rows -> dx, dy (Sobel / Scharr, 16-bit exact)   [bordered form]
//   magnitude_row   dx, dy -> magnitude (low-threshold cut) and a direction code per pixel
//   suppress_row    three magnitude rows + direction codes -> candidate codes of one map row
//   output_row      map row -> 0 / 255 destination row
//   find_strong     next strong candidate in a run of map bytes (seeds the hysteresis)
#pragma once

#include <immintrin.h>

#include <cmath>
#include <cstdint>
#include <cstring>

#include "core/numeric.h"
#include "rvpcv.h"

namespace rvp::canny {

// tan 22.5 and tan 67.5 degrees in single precision: the direction sectors.
constexpr float kTan22 = 0.41421357f;
constexpr float kTan67 = 2.4142137f;

// Direction codes: which pair of neighbours a pixel is compared with.
enum : uint8_t {
  kDirHoriz = 0,     // left, right
  kDirVert = 1,      // above, below
  kDirDiagOpp = 2,   // dx, dy of opposite signs: below-left, above-right
  kDirDiagSame = 3,  // same signs: below-right, above-left
};

// Map codes: the top bit marks a candidate; strong candidates carry the low bit until the
// hysteresis reaches them; 0xFF is an edge pixel.
enum : uint8_t { kNone = 0, kWeak = 0x80, kStrong = 0x81, kEdge = 0xFF };

enum class Norm { L1, L2 };

// ---- derivative filters of the bordered form -----------------------------------------------
// dx = sum_k sum_j vx[k] hx[j] src(y + k - r, x + j - r), dy likewise: the 8u16s results of the
// filter family's SobelVert / SobelHoriz (Sobel) and ScharrVert / ScharrHoriz (Scharr) kernels,
// i.e. dx is right minus left and dy is bottom minus top. Every value fits 16 bits, so 16-bit
// wrap-around sums are exact.
struct Sobel3 {
  static constexpr int K = 3;
  static constexpr int16_t hx[3] = {-1, 0, 1}, vx[3] = {1, 2, 1};
  static constexpr int16_t hy[3] = {1, 2, 1}, vy[3] = {-1, 0, 1};
};
struct Sobel5 {
  static constexpr int K = 5;
  static constexpr int16_t hx[5] = {-1, -2, 0, 2, 1}, vx[5] = {1, 4, 6, 4, 1};
  static constexpr int16_t hy[5] = {1, 4, 6, 4, 1}, vy[5] = {-1, -2, 0, 2, 1};
};
struct Scharr3 {
  static constexpr int K = 3;
  static constexpr int16_t hx[3] = {-1, 0, 1}, vx[3] = {3, 10, 3};
  static constexpr int16_t hy[3] = {3, 10, 3}, vy[3] = {-1, 0, 1};
};

// Source rows for one output row: rows[k] is the source row y + k - r (already mapped through
// the border rule). Columns outside 0..width-1 are read from memory (`in_memory`) or clamped
// to the edge (replicate).
struct DerivRows {
  const uint8_t* rows[5];
  int width;
  bool in_memory;
};

template <class F>
inline void derivative_px(const DerivRows& s, int x, int16_t* dx, int16_t* dy) {
  constexpr int r = F::K / 2;
  int32_t ax = 0, ay = 0;
  for (int k = 0; k < F::K; ++k)
    for (int j = 0; j < F::K; ++j) {
      int c = x + j - r;
      if (!s.in_memory) c = c < 0 ? 0 : (c >= s.width ? s.width - 1 : c);
      const int32_t p = s.rows[k][c];
      ax += F::vx[k] * F::hx[j] * p;
      ay += F::vy[k] * F::hy[j] * p;
    }
  *dx = static_cast<int16_t>(ax);
  *dy = static_cast<int16_t>(ay);
}

namespace ref {
template <class F>
inline void derivative_row(const DerivRows& s, int16_t* dx, int16_t* dy) {
  for (int x = 0; x < s.width; ++x) derivative_px<F>(s, x, dx + x, dy + x);
}
}  // namespace ref

namespace avx2 {

// acc += c * v with the tap known at compile time after unrolling (0 skipped, +-1 and 2 without
// a multiply).
inline __m256i add_tap(__m256i acc, __m256i v, int c) {
  if (c == 0) return acc;
  if (c == 1) return _mm256_add_epi16(acc, v);
  if (c == -1) return _mm256_sub_epi16(acc, v);
  if (c == 2) return _mm256_add_epi16(acc, _mm256_add_epi16(v, v));
  if (c == -2) return _mm256_sub_epi16(acc, _mm256_add_epi16(v, v));
  return _mm256_add_epi16(acc, _mm256_mullo_epi16(v, _mm256_set1_epi16(static_cast<int16_t>(c))));
}

// Sixteen columns x..x+15, every window inside readable memory.
template <class F>
inline void derivative16(const DerivRows& s, int x, int16_t* dx, int16_t* dy) {
  constexpr int K = F::K, r = K / 2;
  __m256i sx[K], sy[K];
#pragma GCC unroll 5
  for (int j = 0; j < K; ++j) {
    sx[j] = _mm256_setzero_si256();
    sy[j] = _mm256_setzero_si256();
#pragma GCC unroll 5
    for (int k = 0; k < K; ++k) {
      if (F::hx[j] == 0 && F::hy[j] == 0) continue;
      const __m256i p = _mm256_cvtepu8_epi16(
          _mm_loadu_si128(reinterpret_cast<const __m128i*>(s.rows[k] + x + j - r)));
      if (F::hx[j] != 0) sx[j] = add_tap(sx[j], p, F::vx[k]);
      if (F::hy[j] != 0) sy[j] = add_tap(sy[j], p, F::vy[k]);
    }
  }
  __m256i ax = _mm256_setzero_si256(), ay = _mm256_setzero_si256();
#pragma GCC unroll 5
  for (int j = 0; j < K; ++j) {
    ax = add_tap(ax, sx[j], F::hx[j]);
    ay = add_tap(ay, sy[j], F::hy[j]);
  }
  _mm256_storeu_si256(reinterpret_cast<__m256i*>(dx + x), ax);
  _mm256_storeu_si256(reinterpret_cast<__m256i*>(dy + x), ay);
}

template <class F>
inline void derivative_row(const DerivRows& s, int16_t* dx, int16_t* dy) {
  constexpr int r = F::K / 2;
  const int w = s.width;
  // Columns whose whole window lies in readable memory run in vectors of 16; the last vector
  // overlaps the one before instead of leaving a scalar remainder (it recomputes equal values).
  const int lo = s.in_memory ? 0 : r;
  const int hi = s.in_memory ? w : w - r;  // exclusive end of the vector range
  int x = 0;
  for (; x < lo && x < w; ++x) derivative_px<F>(s, x, dx + x, dy + x);
  if (hi - x >= 16) {
    for (; x + 16 <= hi; x += 16) derivative16<F>(s, x, dx, dy);
    if (x < hi) {
      derivative16<F>(s, hi - 16, dx, dy);
      x = hi;
    }
  }
  for (; x < w; ++x) derivative_px<F>(s, x, dx + x, dy + x);
}

}  // namespace avx2

// ---- magnitude and direction ---------------------------------------------------------------
// L1: m = |dx| + |dy| in single precision. L2 (16-bit derivatives of the bordered form only,
// |d| <= 16320): m = sqrt of the exact integer dx*dx + dy*dy converted to single precision.
// m < low becomes 0 (equality stays). Direction from ax = |dx|, ay = |dy| in single precision:
// ay < ax * tan22.5 horizontal, else ay > ax * tan67.5 vertical, else diagonal, opposite signs
// judged by the sign bits of dx and dy (so -0.0 counts as negative).

inline float to_f(int16_t v) { return static_cast<float>(v); }
inline float to_f(float v) { return v; }
inline bool sign_bit(int16_t v) { return v < 0; }
inline bool sign_bit(float v) { return std::signbit(v); }

namespace ref {
template <class T>
inline void magnitude_row(const T* dx, const T* dy, int n, float low, Norm norm, float* mag,
                          uint8_t* dir) {
  for (int x = 0; x < n; ++x) {
    const float ax = clear_sign(to_f(dx[x])), ay = clear_sign(to_f(dy[x]));
    float m = ax + ay;
    if constexpr (sizeof(T) == 2) {
      if (norm == Norm::L2) {
        const int32_t a = dx[x], b = dy[x];
        m = std::sqrt(static_cast<float>(a * a + b * b));
      }
    }
    mag[x] = m < low ? 0.0f : m;
    uint8_t d;
    if (ay < ax * kTan22)
      d = kDirHoriz;
    else if (ay > ax * kTan67)
      d = kDirVert;
    else
      d = sign_bit(dx[x]) != sign_bit(dy[x]) ? kDirDiagOpp : kDirDiagSame;
    dir[x] = d;
  }
}
}  // namespace ref

namespace avx2 {

// Low bytes of the eight 32-bit lanes, stored as eight bytes.
inline void store8_lanes_u8(uint8_t* p, __m256i v) {
  const __m256i sh = _mm256_shuffle_epi8(
      v, _mm256_setr_epi8(0, 4, 8, 12, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, 0, 4, 8, 12,
                          -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1, -1));
  const __m128i b = _mm_unpacklo_epi32(_mm256_castsi256_si128(sh), _mm256_extracti128_si256(sh, 1));
  _mm_storel_epi64(reinterpret_cast<__m128i*>(p), b);
}

// Eight dx or dy values widened exactly to single precision, and their sign bits as masks.
inline void load8(const int16_t* p, __m256* f, __m256i* sign) {
  const __m256i i = _mm256_cvtepi16_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)));
  *f = _mm256_cvtepi32_ps(i);
  *sign = _mm256_srai_epi32(i, 31);
}
inline void load8(const float* p, __m256* f, __m256i* sign) {
  *f = _mm256_loadu_ps(p);
  *sign = _mm256_srai_epi32(_mm256_castps_si256(*f), 31);
}

template <class T>
inline void magnitude_row(const T* dx, const T* dy, int n, float low, Norm norm, float* mag,
                          uint8_t* dir) {
  const __m256 abs_mask = _mm256_castsi256_ps(_mm256_set1_epi32(0x7FFFFFFF));
  const __m256 vlow = _mm256_set1_ps(low), t22 = _mm256_set1_ps(kTan22),
               t67 = _mm256_set1_ps(kTan67);
  const __m256i three = _mm256_set1_epi32(3), one = _mm256_set1_epi32(1);
  int x = 0;
  for (; x + 8 <= n; x += 8) {
    __m256 fx, fy;
    __m256i sx, sy;
    load8(dx + x, &fx, &sx);
    load8(dy + x, &fy, &sy);
    const __m256 ax = _mm256_and_ps(fx, abs_mask), ay = _mm256_and_ps(fy, abs_mask);
    __m256 m;
    if constexpr (sizeof(T) == 2) {
      if (norm == Norm::L2) {
        const __m256i ix = _mm256_cvtps_epi32(fx), iy = _mm256_cvtps_epi32(fy);
        const __m256i sq = _mm256_add_epi32(_mm256_mullo_epi32(ix, ix), _mm256_mullo_epi32(iy, iy));
        m = _mm256_sqrt_ps(_mm256_cvtepi32_ps(sq));
      } else {
        m = _mm256_add_ps(ax, ay);
      }
    } else {
      m = _mm256_add_ps(ax, ay);
    }
    m = _mm256_andnot_ps(_mm256_cmp_ps(m, vlow, _CMP_LT_OQ), m);
    _mm256_storeu_ps(mag + x, m);
    const __m256i h = _mm256_castps_si256(_mm256_cmp_ps(ay, _mm256_mul_ps(ax, t22), _CMP_LT_OQ));
    const __m256i v = _mm256_castps_si256(_mm256_cmp_ps(ay, _mm256_mul_ps(ax, t67), _CMP_GT_OQ));
    __m256i d = _mm256_add_epi32(three, _mm256_xor_si256(sx, sy));  // 2 when signs differ
    d = _mm256_blendv_epi8(d, one, v);
    d = _mm256_andnot_si256(h, d);
    store8_lanes_u8(dir + x, d);
  }
  if (x < n) ref::magnitude_row(dx + x, dy + x, n - x, low, norm, mag + x, dir + x);
}

}  // namespace avx2

// ---- non-maximum suppression ---------------------------------------------------------------
// prev, cur, next point at pixel 0 of the magnitude rows above, at and below the row; element
// -1 and element n of each are readable (zero outside the region). Straight directions: the
// neighbour before (left, above) must be strictly smaller, the one after may be equal; diagonal
// directions: both strictly smaller. A zero magnitude never qualifies (some neighbour must be
// strictly smaller and magnitudes are never negative); a NaN neither (every comparison fails).
// Candidates get kWeak, those above `high` kStrong.

namespace ref {
inline void suppress_row(const float* prev, const float* cur, const float* next, const uint8_t* dir,
                         int n, float high, uint8_t* map) {
  for (int x = 0; x < n; ++x) {
    const float m = cur[x];
    bool c;
    switch (dir[x]) {
      case kDirHoriz:
        c = cur[x - 1] < m && cur[x + 1] <= m;
        break;
      case kDirVert:
        c = prev[x] < m && next[x] <= m;
        break;
      case kDirDiagOpp:
        c = next[x - 1] < m && prev[x + 1] < m;
        break;
      default:
        c = next[x + 1] < m && prev[x - 1] < m;
        break;
    }
    map[x] = !c ? kNone : (m > high ? kStrong : kWeak);
  }
}
}  // namespace ref

namespace avx2 {
inline void suppress_row(const float* prev, const float* cur, const float* next, const uint8_t* dir,
                         int n, float high, uint8_t* map) {
  const __m256 vhigh = _mm256_set1_ps(high);
  const __m256i weak = _mm256_set1_epi32(kWeak), strong_bit = _mm256_set1_epi32(1);
  int x = 0;
  for (; x + 8 <= n; x += 8) {
    const __m256 m = _mm256_loadu_ps(cur + x);
    // Runs of zero magnitudes (most of a photograph after the low cut) are never candidates.
    if (_mm256_movemask_ps(_mm256_cmp_ps(m, _mm256_setzero_ps(), _CMP_EQ_OQ)) == 0xFF) {
      std::memset(map + x, kNone, 8);
      continue;
    }
    auto lt = [&](const float* p) { return _mm256_cmp_ps(_mm256_loadu_ps(p), m, _CMP_LT_OQ); };
    auto le = [&](const float* p) { return _mm256_cmp_ps(_mm256_loadu_ps(p), m, _CMP_LE_OQ); };
    const __m256 c0 = _mm256_and_ps(lt(cur + x - 1), le(cur + x + 1));
    const __m256 c1 = _mm256_and_ps(lt(prev + x), le(next + x));
    const __m256 c2 = _mm256_and_ps(lt(next + x - 1), lt(prev + x + 1));
    const __m256 c3 = _mm256_and_ps(lt(next + x + 1), lt(prev + x - 1));
    const __m256i d =
        _mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(dir + x)));
    // Lane masks of the direction codes: bit 0 picks within a pair, bit 1 picks the pair.
    const __m256 b0 = _mm256_castsi256_ps(_mm256_slli_epi32(d, 31));
    const __m256 b1 = _mm256_castsi256_ps(_mm256_slli_epi32(d, 30));
    const __m256 straight = _mm256_blendv_ps(c0, c1, b0);
    const __m256 diagonal = _mm256_blendv_ps(c2, c3, b0);
    const __m256i c = _mm256_castps_si256(_mm256_blendv_ps(straight, diagonal, b1));
    const __m256i s = _mm256_castps_si256(_mm256_cmp_ps(m, vhigh, _CMP_GT_OQ));
    const __m256i code =
        _mm256_and_si256(c, _mm256_or_si256(weak, _mm256_and_si256(s, strong_bit)));
    store8_lanes_u8(map + x, code);
  }
  if (x < n) ref::suppress_row(prev + x, cur + x, next + x, dir + x, n - x, high, map + x);
}
}  // namespace avx2

// ---- output --------------------------------------------------------------------------------
namespace ref {
inline void output_row(const uint8_t* map, int n, uint8_t* dst) {
  for (int x = 0; x < n; ++x) dst[x] = map[x] == kEdge ? 255 : 0;
}
}  // namespace ref

namespace avx2 {
// `stream`: whole 32-byte blocks that start on a 32-byte boundary bypass the cache (the caller
// fences once after the last row).
inline void output_row(const uint8_t* map, int n, uint8_t* dst, bool stream) {
  const __m256i edge = _mm256_set1_epi8(static_cast<char>(kEdge));
  int x = 0;
  if (stream) {
    const int head = static_cast<int>((-reinterpret_cast<uintptr_t>(dst)) & 31);
    if (n - head >= 32) {
      ref::output_row(map, head, dst);
      for (x = head; x + 32 <= n; x += 32) {
        const __m256i v = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(map + x));
        _mm256_stream_si256(reinterpret_cast<__m256i*>(dst + x), _mm256_cmpeq_epi8(v, edge));
      }
    }
  }
  for (; x + 32 <= n; x += 32) {
    const __m256i v = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(map + x));
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(dst + x), _mm256_cmpeq_epi8(v, edge));
  }
  if (x < n) ref::output_row(map + x, n - x, dst + x);
}
}  // namespace avx2

// ---- seeds of the hysteresis ---------------------------------------------------------------
// Index of the first kStrong byte in p[from..n), or n.
namespace ref {
inline int64_t find_strong(const uint8_t* p, int64_t from, int64_t n) {
  for (int64_t i = from; i < n; ++i)
    if (p[i] == kStrong) return i;
  return n;
}
}  // namespace ref

namespace avx2 {
inline int64_t find_strong(const uint8_t* p, int64_t from, int64_t n) {
  const __m256i strong = _mm256_set1_epi8(static_cast<char>(kStrong));
  int64_t i = from;
  for (; i + 32 <= n; i += 32) {
    const __m256i v = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p + i));
    const uint32_t bits = static_cast<uint32_t>(_mm256_movemask_epi8(_mm256_cmpeq_epi8(v, strong)));
    if (bits != 0) return i + __builtin_ctz(bits);
  }
  return ref::find_strong(p, i, n);
}
}  // namespace avx2

}  // namespace rvp::canny
