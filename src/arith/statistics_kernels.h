// Row kernels of the norms, means, deviations and extrema. Each kernel folds one row of the
// selected channel into running accumulators; `ref::` states the arithmetic, `avx2::` computes
// the same with vectors and must match it bit for bit.
//
// Integer pixels are accumulated exactly: the vector kernels keep 32-bit lanes only for a
// bounded number of steps and widen them to 64 bits at the end of every row (and every
// kBlockSteps steps inside long rows), so no region size can overflow a sum.
//
// Rvp32f sums are formed in double precision in eight partial sums: element j of a row goes to
// partial j % 8, and the partials are combined in one fixed order (combine8). The vector path
// keeps the same eight partials in two registers, so the rounding is the same on both paths.
#pragma once

#include <immintrin.h>

#include <cmath>
#include <cstdint>
#include <algorithm>
#include <cstdlib>
#include <limits>
#include <type_traits>

#include "core/numeric.h"
#include "core/simd.h"
#include "rvpcv.h"

namespace rvp::arith {

// What a row kernel folds over the selected pixels. The per-pixel value v is x itself (Value,
// for means), |x| (Abs, for norms), |x1 - x2| (Diff), and for Rel the numerator as in Diff plus
// a denominator |x2| folded into a second accumulator.
enum class Form { Value, Abs, Diff, Rel };
enum Need : unsigned { kMax = 1, kSum = 2, kSq = 4, kCount = 8 };

// ---- integer pixels ----------------------------------------------------------------------

// One row's exact results: max v, sum v, sum v*v, number of selected pixels.
struct IntRow {
  uint32_t max = 0;
  int64_t sum = 0;
  uint64_t sq = 0;
  int64_t count = 0;
};

template <unsigned N>
inline void fold_int(IntRow& r, int32_t v) {
  if constexpr ((N & kMax) != 0) r.max = v > static_cast<int32_t>(r.max) ? uint32_t(v) : r.max;
  if constexpr ((N & kSum) != 0) r.sum += v;
  if constexpr ((N & kSq) != 0) r.sq += static_cast<uint64_t>(int64_t{v} * v);
  if constexpr ((N & kCount) != 0) ++r.count;
}

namespace ref {

// `a` (and `b` for Diff/Rel) point at the chosen channel of the row's first pixel; consecutive
// pixels are `stride` elements apart. `mask` is null in the unmasked forms.
template <class T, Form F, unsigned N>
inline void int_row(const T* a, const T* b, int stride, const Rvp8u* mask, int n, IntRow& num,
                    IntRow& den) {
  for (int j = 0; j < n; ++j) {
    if (mask != nullptr && mask[j] == 0) continue;
    const int32_t x = a[ptrdiff_t{j} * stride];
    if constexpr (F == Form::Value) fold_int<N>(num, x);
    if constexpr (F == Form::Abs) fold_int<N>(num, std::abs(x));
    if constexpr (F == Form::Diff || F == Form::Rel) {
      const int32_t y = b[ptrdiff_t{j} * stride];
      fold_int<N>(num, std::abs(x - y));
      if constexpr (F == Form::Rel) fold_int<N>(den, std::abs(y));
    }
  }
}

}  // namespace ref

namespace avx2 {

// Steps of 32 pixels between widenings of the 32-bit square sums: each lane gains at most
// 4 * 255 * 255 per step, so 8192 steps stay below 2^31.
constexpr int kBlockSteps = 8192;

inline uint64_t hsum_epi64(__m256i v) {
  alignas(32) uint64_t l[4];
  _mm256_store_si256(reinterpret_cast<__m256i*>(l), v);
  return l[0] + l[1] + l[2] + l[3];
}

// The 8 unsigned 32-bit lanes widened and added as 64-bit.
inline __m256i widen_add_epu32(__m256i acc64, __m256i v32) {
  const __m256i lo = _mm256_cvtepu32_epi64(_mm256_castsi256_si128(v32));
  const __m256i hi = _mm256_cvtepu32_epi64(_mm256_extracti128_si256(v32, 1));
  return _mm256_add_epi64(acc64, _mm256_add_epi64(lo, hi));
}

inline uint32_t hmax_epu8(__m256i v) {
  __m128i m = _mm_max_epu8(_mm256_castsi256_si128(v), _mm256_extracti128_si256(v, 1));
  m = _mm_max_epu8(m, _mm_srli_si128(m, 8));
  m = _mm_max_epu8(m, _mm_srli_si128(m, 4));
  m = _mm_max_epu8(m, _mm_srli_si128(m, 2));
  m = _mm_max_epu8(m, _mm_srli_si128(m, 1));
  return static_cast<uint32_t>(_mm_cvtsi128_si32(m) & 0xFF);
}

inline uint32_t hmin_epu8(__m256i v) {
  __m128i m = _mm_min_epu8(_mm256_castsi256_si128(v), _mm256_extracti128_si256(v, 1));
  m = _mm_min_epu8(m, _mm_srli_si128(m, 8));
  m = _mm_min_epu8(m, _mm_srli_si128(m, 4));
  m = _mm_min_epu8(m, _mm_srli_si128(m, 2));
  m = _mm_min_epu8(m, _mm_srli_si128(m, 1));
  return static_cast<uint32_t>(_mm_cvtsi128_si32(m) & 0xFF);
}

// Accumulators of one value stream of 8-bit unsigned values.
struct U8Lanes {
  __m256i max = _mm256_setzero_si256();
  __m256i sum = _mm256_setzero_si256();   // 4 x u64 (from sad)
  __m256i sq32 = _mm256_setzero_si256();  // 8 x u32, widened per block
  __m256i sq64 = _mm256_setzero_si256();
  __m256i cnt = _mm256_setzero_si256();  // 4 x u64

  template <unsigned N>
  void add(__m256i v, __m256i ones_sel) {
    const __m256i zero = _mm256_setzero_si256();
    if constexpr ((N & kMax) != 0) max = _mm256_max_epu8(max, v);
    if constexpr ((N & kSum) != 0) sum = _mm256_add_epi64(sum, _mm256_sad_epu8(v, zero));
    if constexpr ((N & kSq) != 0) {
      // Even and odd bytes as 16-bit words (shifts and masks keep the shuffle port free for
      // the sum of absolute differences).
      const __m256i lo = _mm256_and_si256(v, _mm256_set1_epi16(0x00FF));
      const __m256i hi = _mm256_srli_epi16(v, 8);
      sq32 = _mm256_add_epi32(
          sq32, _mm256_add_epi32(_mm256_madd_epi16(lo, lo), _mm256_madd_epi16(hi, hi)));
    }
    if constexpr ((N & kCount) != 0) cnt = _mm256_add_epi64(cnt, _mm256_sad_epu8(ones_sel, zero));
  }
  void flush() {
    sq64 = widen_add_epu32(sq64, sq32);
    sq32 = _mm256_setzero_si256();
  }
  template <unsigned N>
  void store(IntRow& r) {
    if constexpr ((N & kSq) != 0) flush();
    if constexpr ((N & kMax) != 0) r.max = std::max(r.max, hmax_epu8(max));
    if constexpr ((N & kSum) != 0) r.sum += static_cast<int64_t>(hsum_epi64(sum));
    if constexpr ((N & kSq) != 0) r.sq += hsum_epi64(sq64);
    if constexpr ((N & kCount) != 0) r.count += static_cast<int64_t>(hsum_epi64(cnt));
  }
};

// Rvp8u, one channel: 32 pixels a step. Masked-off pixels become 0 (they add nothing to max,
// sums or squares) and count 0. Without a mask every vector pixel counts.
template <Form F, unsigned N, bool Masked>
inline void int_row_u8_body(const Rvp8u* a, const Rvp8u* b, const Rvp8u* mask, int n, IntRow& num,
                            IntRow& den) {
  U8Lanes ln, ld;
  const __m256i zero = _mm256_setzero_si256();
  const __m256i one = _mm256_set1_epi8(1);
  constexpr unsigned kVecNeed = Masked ? N : (N & ~unsigned{kCount});
  int j = 0;
  // One step of 32 pixels at column i.
  auto step = [&](int i) {
    __m256i x = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(a + i));
    __m256i y = zero;
    if constexpr (F == Form::Diff || F == Form::Rel)
      y = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(b + i));
    __m256i ones_sel = one;
    if constexpr (Masked) {
      const __m256i m = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(mask + i));
      const __m256i off = _mm256_cmpeq_epi8(m, zero);
      ones_sel = _mm256_andnot_si256(off, one);
      x = _mm256_andnot_si256(off, x);
      y = _mm256_andnot_si256(off, y);
    }
    if constexpr (F == Form::Value || F == Form::Abs) {
      ln.add<kVecNeed>(x, ones_sel);
    } else {
      ln.add<kVecNeed>(_mm256_or_si256(_mm256_subs_epu8(x, y), _mm256_subs_epu8(y, x)), ones_sel);
      if constexpr (F == Form::Rel) ld.add<kVecNeed>(y, ones_sel);
    }
  };
  // Blocks of at most kBlockSteps steps, two steps a turn, then the 32-bit lanes are widened.
  const int vec_end = n - n % 32;
  while (j < vec_end) {
    const int block_end = vec_end - j > kBlockSteps * 32 ? j + kBlockSteps * 32 : vec_end;
    for (; j + 64 <= block_end; j += 64) {
      step(j);
      step(j + 32);
    }
    if (j < block_end) {
      step(j);
      j += 32;
    }
    ln.flush();
    ld.flush();
  }
  ln.store<kVecNeed>(num);
  if constexpr (F == Form::Rel) ld.store<kVecNeed>(den);
  if constexpr (!Masked && (N & kCount) != 0) {
    num.count += j;
    den.count += F == Form::Rel ? j : 0;
  }
  ref::int_row<Rvp8u, F, N>(a + j, b == nullptr ? nullptr : b + j, 1,
                            mask == nullptr ? nullptr : mask + j, n - j, num, den);
}

template <Form F, unsigned N>
inline void int_row_u8(const Rvp8u* a, const Rvp8u* b, const Rvp8u* mask, int n, IntRow& num,
                       IntRow& den) {
  if (mask != nullptr)
    int_row_u8_body<F, N, true>(a, b, mask, n, num, den);
  else
    int_row_u8_body<F, N, false>(a, b, mask, n, num, den);
}

// Sum, square sum and count of Rvp8u pixels over a whole region, one channel. The vector lanes
// are carried from row to row (no per-row horizontal sums) and widened every kBlockSteps steps
// of each lane set; two lane sets take alternate steps so the sums form two independent chains.
// The totals are exact. Mean_StdDev's square sum is defined as the per-row square sums added in
// double precision; callers use this whole-region total only where every partial sum of that
// addition is an integer below 2^53, so both give the same double.
template <bool Masked>
struct U8Moments {
  static constexpr unsigned kNeed = Masked ? (kSum | kSq | kCount) : (kSum | kSq);
  U8Lanes l0, l1;
  int steps = 0;  // steps of either lane set since the last widening (an upper bound)
  IntRow rest;    // the scalar tails, and the vector pixel count when unmasked

  void row(const Rvp8u* a, const Rvp8u* mask, int n) {
    const __m256i zero = _mm256_setzero_si256();
    const __m256i one = _mm256_set1_epi8(1);
    auto step = [&](U8Lanes& l, int i) {
      __m256i x = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(a + i));
      __m256i ones_sel = one;
      if constexpr (Masked) {
        const __m256i m = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(mask + i));
        const __m256i off = _mm256_cmpeq_epi8(m, zero);
        ones_sel = _mm256_andnot_si256(off, one);
        x = _mm256_andnot_si256(off, x);
      }
      l.add<kNeed>(x, ones_sel);
    };
    const int vec_end = n - n % 32;
    int j = 0;
    while (j < vec_end) {
      if (steps == kBlockSteps) {
        l0.flush();
        l1.flush();
        steps = 0;
      }
      const int take = std::min((vec_end - j) / 32, kBlockSteps - steps);
      const int end = j + take * 32;
      for (; j + 128 <= end; j += 128) {
        step(l0, j);
        step(l1, j + 32);
        step(l0, j + 64);
        step(l1, j + 96);
      }
      for (; j < end; j += 32) step(l0, j);
      steps += take;
    }
    if constexpr (!Masked) rest.count += j;
    IntRow unused;
    ref::int_row<Rvp8u, Form::Value, kSum | kSq | kCount>(
        a + j, nullptr, 1, Masked ? mask + j : nullptr, n - j, rest, unused);
  }

  IntRow total() {
    IntRow r = rest;
    l0.store<kNeed>(r);
    l1.store<kNeed>(r);
    return r;
  }
};

// Channel c of 8 interleaved three-channel pixels, from the three vectors holding elements
// 0..7, 8..15 and 16..23 of those pixels. Element c + 3i sits in lane (c + 3i) % 8 of vector
// (c + 3i) / 8, and these lanes are all distinct (3 and 8 are coprime): two blends gather the
// eight elements into one vector, one permutation puts them in pixel order.
struct Channel3 {
  __m256i from1, from2, order;
  explicit Channel3(int c) {
    alignas(32) int32_t m1[8], m2[8], p[8];
    for (int i = 0; i < 8; ++i) {
      const int k = c + 3 * i;
      m1[k % 8] = k / 8 == 1 ? -1 : 0;
      m2[k % 8] = k / 8 == 2 ? -1 : 0;
      p[i] = k % 8;
    }
    from1 = _mm256_load_si256(reinterpret_cast<const __m256i*>(m1));
    from2 = _mm256_load_si256(reinterpret_cast<const __m256i*>(m2));
    order = _mm256_load_si256(reinterpret_cast<const __m256i*>(p));
  }
  __m256i gather(__m256i v0, __m256i v1, __m256i v2) const {
    const __m256i t = _mm256_blendv_epi8(_mm256_blendv_epi8(v0, v1, from1), v2, from2);
    return _mm256_permutevar8x32_epi32(t, order);
  }
  __m256 gather(__m256 v0, __m256 v1, __m256 v2) const {
    const __m256 t = _mm256_blendv_ps(_mm256_blendv_ps(v0, v1, _mm256_castsi256_ps(from1)), v2,
                                      _mm256_castsi256_ps(from2));
    return _mm256_permutevar8x32_ps(t, order);
  }
};

// Rvp8u, Rvp8s and Rvp16u, with 8 pixels a step in 32-bit lanes. Sums and counts stay in
// 32-bit lanes for at most kWideSteps steps (65535 per lane a step) before they are widened;
// squares of 16-bit values need 64 bits at once (even and odd lanes multiplied apart).
constexpr int kWideSteps = 16384;

template <class T>
inline __m256i load8_epi32(const T* p) {
  if constexpr (std::is_same_v<T, Rvp8u>)
    return _mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)));
  else if constexpr (std::is_same_v<T, Rvp8s>)
    return _mm256_cvtepi8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(p)));
  else
    return _mm256_cvtepu16_epi32(_mm_loadu_si128(reinterpret_cast<const __m128i*>(p)));
}

// Pixels j..j+7 of the chosen channel; `p` points at that channel of pixel 0, so for three
// channels the pixel starts at p - c and exactly the 24 elements of the 8 pixels are read.
template <class T, int Ch>
inline __m256i load8_channel(const T* p, int j, int c, const Channel3& g) {
  if constexpr (Ch == 1) {
    return load8_epi32(p + j);
  } else {
    const T* q = p - c + 3 * j;
    return g.gather(load8_epi32(q), load8_epi32(q + 8), load8_epi32(q + 16));
  }
}

template <int Ch>
inline __m256 load8_channel(const Rvp32f* p, int j, int c, const Channel3& g) {
  if constexpr (Ch == 1) {
    return _mm256_loadu_ps(p + j);
  } else {
    const Rvp32f* q = p - c + 3 * j;
    return g.gather(_mm256_loadu_ps(q), _mm256_loadu_ps(q + 8), _mm256_loadu_ps(q + 16));
  }
}

template <class T>
struct I32Lanes {
  __m256i max = _mm256_setzero_si256();
  __m256i sum32 = _mm256_setzero_si256(), sum64 = _mm256_setzero_si256();
  __m256i sq32 = _mm256_setzero_si256(), sq64 = _mm256_setzero_si256();
  __m256i cnt32 = _mm256_setzero_si256(), cnt64 = _mm256_setzero_si256();

  // v: the value (negative only in the Value form of Rvp8s); on: -1 selected, 0 masked off
  // (v is already 0 there).
  template <unsigned N>
  void add(__m256i v, __m256i on) {
    if constexpr ((N & kMax) != 0) max = _mm256_max_epi32(max, v);
    if constexpr ((N & kSum) != 0) sum32 = _mm256_add_epi32(sum32, v);
    if constexpr ((N & kSq) != 0) {
      if constexpr (sizeof(T) == 1) {  // at most 65025 a lane a step
        sq32 = _mm256_add_epi32(sq32, _mm256_mullo_epi32(v, v));
      } else {
        const __m256i odd = _mm256_srli_epi64(v, 32);
        sq64 = _mm256_add_epi64(
            sq64, _mm256_add_epi64(_mm256_mul_epu32(v, v), _mm256_mul_epu32(odd, odd)));
      }
    }
    if constexpr ((N & kCount) != 0) cnt32 = _mm256_sub_epi32(cnt32, on);
  }
  void flush() {
    sum64 = _mm256_add_epi64(
        sum64, _mm256_add_epi64(_mm256_cvtepi32_epi64(_mm256_castsi256_si128(sum32)),
                                _mm256_cvtepi32_epi64(_mm256_extracti128_si256(sum32, 1))));
    sq64 = widen_add_epu32(sq64, sq32);
    cnt64 = widen_add_epu32(cnt64, cnt32);
    sum32 = sq32 = cnt32 = _mm256_setzero_si256();
  }
  template <unsigned N>
  void store(IntRow& r) {
    flush();
    if constexpr ((N & kMax) != 0) {
      alignas(32) int32_t m[8];
      _mm256_store_si256(reinterpret_cast<__m256i*>(m), max);
      for (int32_t v : m) r.max = v > static_cast<int32_t>(r.max) ? uint32_t(v) : r.max;
    }
    if constexpr ((N & kSum) != 0) r.sum += static_cast<int64_t>(hsum_epi64(sum64));
    if constexpr ((N & kSq) != 0) r.sq += hsum_epi64(sq64);
    if constexpr ((N & kCount) != 0) r.count += static_cast<int64_t>(hsum_epi64(cnt64));
  }
};

template <class T, Form F, unsigned N, int Ch = 1>
inline void int_row_i32(const T* a, const T* b, const Rvp8u* mask, int n, IntRow& num, IntRow& den,
                        int c = 0) {
  const Channel3 g(c);
  I32Lanes<T> ln, ld;
  const __m256i zero = _mm256_setzero_si256();
  int j = 0;
  int steps = 0;
  for (; j + 8 <= n; j += 8) {
    __m256i on = _mm256_set1_epi32(-1);
    if (mask != nullptr)
      on = _mm256_xor_si256(
          _mm256_cmpeq_epi32(
              _mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(mask + j))),
              zero),
          on);
    const __m256i x = _mm256_and_si256(load8_channel<T, Ch>(a, j, c, g), on);
    if constexpr (F == Form::Value) ln.template add<N>(x, on);
    if constexpr (F == Form::Abs) ln.template add<N>(_mm256_abs_epi32(x), on);
    if constexpr (F == Form::Diff || F == Form::Rel) {
      const __m256i y = _mm256_and_si256(load8_channel<T, Ch>(b, j, c, g), on);
      ln.template add<N>(_mm256_abs_epi32(_mm256_sub_epi32(x, y)), on);
      if constexpr (F == Form::Rel) ld.template add<N>(_mm256_abs_epi32(y), on);
    }
    if (++steps == kWideSteps) {
      ln.flush();
      ld.flush();
      steps = 0;
    }
  }
  ln.template store<N>(num);
  if constexpr (F == Form::Rel) ld.template store<N>(den);
  ref::int_row<T, F, N>(a + ptrdiff_t{j} * Ch, b == nullptr ? nullptr : b + ptrdiff_t{j} * Ch, Ch,
                        mask == nullptr ? nullptr : mask + j, n - j, num, den);
}

}  // namespace avx2

// ---- Rvp32f pixels -----------------------------------------------------------------------

struct FloatAcc {
  double sum[8] = {};
  double sq[8] = {};
  double max = 0.0;  // of |v|; NaN pixels are recorded in `nan` instead
  bool nan = false;
  int64_t count = 0;
};

inline double combine8(const double* l) {
  return ((l[0] + l[4]) + (l[2] + l[6])) + ((l[1] + l[5]) + (l[3] + l[7]));
}

template <unsigned N>
inline void fold_double(FloatAcc& r, double v, int lane, bool on) {
  if constexpr ((N & kMax) != 0) {
    if (std::isnan(v)) r.nan = true;
    if (std::fabs(v) > r.max) r.max = std::fabs(v);
  }
  if constexpr ((N & kSum) != 0) r.sum[lane] += v;
  if constexpr ((N & kSq) != 0) r.sq[lane] += v * v;
  if constexpr ((N & kCount) != 0) r.count += on;
}

namespace ref {

template <Form F, unsigned N>
inline void float_row(const Rvp32f* a, const Rvp32f* b, int stride, const Rvp8u* mask, int n,
                      FloatAcc& num, FloatAcc& den, int first = 0) {
  // A masked-off pixel folds as 0.0 (as the vector path's zeroed lanes do: adding +0.0 can
  // turn a -0.0 partial into +0.0) but is not counted.
  for (int j = first; j < n; ++j) {
    const bool on = mask == nullptr || mask[j] != 0;
    const double x = on ? a[ptrdiff_t{j} * stride] : 0.0;
    const int lane = j & 7;
    if constexpr (F == Form::Value) fold_double<N>(num, x, lane, on);
    if constexpr (F == Form::Abs) fold_double<N>(num, std::fabs(x), lane, on);
    if constexpr (F == Form::Diff || F == Form::Rel) {
      const double y = on ? b[ptrdiff_t{j} * stride] : 0.0;
      fold_double<N>(num, std::fabs(x - y), lane, on);
      if constexpr (F == Form::Rel) fold_double<N>(den, std::fabs(y), lane, on);
    }
  }
}

}  // namespace ref

namespace avx2 {

struct F64Lanes {
  __m256d sum_lo, sum_hi, sq_lo, sq_hi;
  __m256d max = _mm256_setzero_pd();
  __m256d nan = _mm256_setzero_pd();

  explicit F64Lanes(const FloatAcc& r)
      : sum_lo(_mm256_loadu_pd(r.sum)),
        sum_hi(_mm256_loadu_pd(r.sum + 4)),
        sq_lo(_mm256_loadu_pd(r.sq)),
        sq_hi(_mm256_loadu_pd(r.sq + 4)) {}

  // Four values v (already |v| where the form takes absolute values; 0 where masked off).
  template <unsigned N>
  void add(__m256d& s, __m256d& q, __m256d v) {
    if constexpr ((N & kMax) != 0) {
      nan = _mm256_or_pd(nan, _mm256_cmp_pd(v, v, _CMP_UNORD_Q));
      max = _mm256_max_pd(v, max);  // a NaN v leaves max as it was
    }
    if constexpr ((N & kSum) != 0) s = _mm256_add_pd(s, v);
    if constexpr ((N & kSq) != 0) q = _mm256_add_pd(q, _mm256_mul_pd(v, v));
  }
  template <unsigned N>
  void add8(__m256d lo, __m256d hi) {
    add<N>(sum_lo, sq_lo, lo);
    add<N>(sum_hi, sq_hi, hi);
  }
  template <unsigned N>
  void store(FloatAcc& r) const {
    _mm256_storeu_pd(r.sum, sum_lo);
    _mm256_storeu_pd(r.sum + 4, sum_hi);
    _mm256_storeu_pd(r.sq, sq_lo);
    _mm256_storeu_pd(r.sq + 4, sq_hi);
    if constexpr ((N & kMax) != 0) {
      alignas(32) double m[4];
      _mm256_store_pd(m, max);
      for (double v : m) r.max = v > r.max ? v : r.max;
      if (_mm256_movemask_pd(nan) != 0) r.nan = true;
    }
  }
};

inline __m256d lo_pd(__m256 v) { return _mm256_cvtps_pd(_mm256_castps256_ps128(v)); }
inline __m256d hi_pd(__m256 v) { return _mm256_cvtps_pd(_mm256_extractf128_ps(v, 1)); }

// Rvp32f, one channel or channel c of three: 8 pixels a step, lanes as in ref::float_row.
// Masked-off pixels are zeroed before conversion so that NaN or infinity there never reaches a sum.
template <Form F, unsigned N, int Ch = 1>
inline void float_row(const Rvp32f* a, const Rvp32f* b, const Rvp8u* mask, int n, FloatAcc& num,
                      FloatAcc& den, int c = 0) {
  const Channel3 g(c);
  F64Lanes ln(num), ld(den);
  const __m256d sign = _mm256_castsi256_pd(_mm256_set1_epi64x(0x7FFFFFFFFFFFFFFF));
  const __m256 all = _mm256_castsi256_ps(_mm256_set1_epi32(-1));
  int64_t count = 0;
  int j = 0;
  for (; j + 8 <= n; j += 8) {
    const __m256 sel = mask != nullptr ? simd::mask8_nonzero(mask + j) : all;
    const __m256 x = _mm256_and_ps(load8_channel<Ch>(a, j, c, g), sel);
    if constexpr ((N & kCount) != 0)
      count += __builtin_popcount(static_cast<unsigned>(_mm256_movemask_ps(sel)));
    if constexpr (F == Form::Value) {
      ln.add8<N>(lo_pd(x), hi_pd(x));
    } else if constexpr (F == Form::Abs) {
      const __m256 ax = simd::clear_sign(x);
      ln.add8<N>(lo_pd(ax), hi_pd(ax));
    } else {
      const __m256 y = _mm256_and_ps(load8_channel<Ch>(b, j, c, g), sel);
      const __m256d dlo = _mm256_and_pd(_mm256_sub_pd(lo_pd(x), lo_pd(y)), sign);
      const __m256d dhi = _mm256_and_pd(_mm256_sub_pd(hi_pd(x), hi_pd(y)), sign);
      ln.add8<N>(dlo, dhi);
      if constexpr (F == Form::Rel) {
        const __m256 ay = simd::clear_sign(y);
        ld.add8<N>(lo_pd(ay), hi_pd(ay));
      }
    }
  }
  ln.store<N>(num);
  num.count += count;
  if constexpr (F == Form::Rel) {
    ld.store<N>(den);
    den.count += count;
  }
  ref::float_row<F, N>(a, b, Ch, mask, n, num, den, j);
}

}  // namespace avx2

// ---- extrema -----------------------------------------------------------------------------

// A row's extremes over its selected, non-NaN pixels, starting from the largest finite single
// value (min) and its negative (max), so a row without such pixels leaves both unchanged.
struct RowExtremes {
  float min = std::numeric_limits<float>::max();
  float max = -std::numeric_limits<float>::max();
  bool any = false;  // at least one selected pixel (NaN included)
};

namespace ref {

template <class T>
inline RowExtremes row_extremes(const T* a, int stride, const Rvp8u* mask, int n) {
  RowExtremes r;
  for (int j = 0; j < n; ++j) {
    if (mask != nullptr && mask[j] == 0) continue;
    r.any = true;
    const float x = static_cast<float>(a[ptrdiff_t{j} * stride]);
    if (x < r.min) r.min = x;
    if (x > r.max) r.max = x;
  }
  return r;
}

}  // namespace ref

namespace avx2 {

inline RowExtremes row_extremes_u8(const Rvp8u* a, const Rvp8u* mask, int n) {
  const __m256i zero = _mm256_setzero_si256();
  __m256i vmin = _mm256_set1_epi8(-1), vmax = zero, any = zero;
  int j = 0;
  for (; j + 32 <= n; j += 32) {
    const __m256i x = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(a + j));
    if (mask != nullptr) {
      const __m256i m = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(mask + j));
      const __m256i off = _mm256_cmpeq_epi8(m, zero);  // masked-off: 255 for min, 0 for max
      any = _mm256_or_si256(any, m);
      vmin = _mm256_min_epu8(vmin, _mm256_or_si256(x, off));
      vmax = _mm256_max_epu8(vmax, _mm256_andnot_si256(off, x));
    } else {
      vmin = _mm256_min_epu8(vmin, x);
      vmax = _mm256_max_epu8(vmax, x);
    }
  }
  RowExtremes r = ref::row_extremes(a + j, 1, mask == nullptr ? nullptr : mask + j, n - j);
  const bool vec_any = j > 0 && (mask == nullptr || !_mm256_testz_si256(any, any));
  if (vec_any) {
    r.any = true;
    r.min = std::min(r.min, static_cast<float>(hmin_epu8(vmin)));
    r.max = std::max(r.max, static_cast<float>(hmax_epu8(vmax)));
  }
  return r;
}

// Rvp32f, one channel or channel c of three (`a` points at the channel of pixel 0).
template <int Ch = 1>
inline RowExtremes row_extremes_f32(const Rvp32f* a, const Rvp8u* mask, int n, int c = 0) {
  const Channel3 g(c);
  const __m256 all = _mm256_castsi256_ps(_mm256_set1_epi32(-1));
  __m256 vmin = _mm256_set1_ps(std::numeric_limits<float>::max());
  __m256 vmax = _mm256_set1_ps(-std::numeric_limits<float>::max());
  __m256 any = _mm256_setzero_ps();
  int j = 0;
  for (; j + 8 <= n; j += 8) {
    __m256 x = load8_channel<Ch>(a, j, c, g);
    if (mask != nullptr) {
      const __m256 sel = simd::mask8_nonzero(mask + j);
      any = _mm256_or_ps(any, sel);
      x = _mm256_or_ps(x, _mm256_xor_ps(sel, all));  // masked-off lanes become NaN
    }
    // With a NaN first operand the second is returned: NaN pixels never move an extreme.
    vmin = _mm256_min_ps(x, vmin);
    vmax = _mm256_max_ps(x, vmax);
  }
  RowExtremes r =
      ref::row_extremes(a + ptrdiff_t{j} * Ch, Ch, mask == nullptr ? nullptr : mask + j, n - j);
  if (j > 0 && (mask == nullptr || _mm256_movemask_ps(any) != 0)) r.any = true;
  alignas(32) float lmin[8], lmax[8];
  _mm256_store_ps(lmin, vmin);
  _mm256_store_ps(lmax, vmax);
  for (int l = 0; l < 8; ++l) {
    if (lmin[l] < r.min) r.min = lmin[l];
    if (lmax[l] > r.max) r.max = lmax[l];
  }
  return r;
}

// Integer pixels in 32-bit lanes (Rvp8s, Rvp16u, and every three-channel form): masked-off
// lanes hold the largest value for the minimum and the smallest for the maximum, and count
// only through `any`.
template <class T, int Ch>
inline RowExtremes row_extremes_i32(const T* a, const Rvp8u* mask, int n, int c) {
  const Channel3 g(c);
  const __m256i zero = _mm256_setzero_si256();
  const __m256i hi = _mm256_set1_epi32(std::numeric_limits<int32_t>::max());
  const __m256i lo = _mm256_set1_epi32(std::numeric_limits<int32_t>::min());
  __m256i vmin = hi, vmax = lo, any = zero;
  int j = 0;
  for (; j + 8 <= n; j += 8) {
    const __m256i x = load8_channel<T, Ch>(a, j, c, g);
    if (mask != nullptr) {
      const __m256i off = _mm256_cmpeq_epi32(
          _mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(mask + j))), zero);
      any = _mm256_or_si256(any, _mm256_xor_si256(off, _mm256_set1_epi32(-1)));
      vmin = _mm256_min_epi32(vmin, _mm256_blendv_epi8(x, hi, off));
      vmax = _mm256_max_epi32(vmax, _mm256_blendv_epi8(x, lo, off));
    } else {
      vmin = _mm256_min_epi32(vmin, x);
      vmax = _mm256_max_epi32(vmax, x);
    }
  }
  RowExtremes r =
      ref::row_extremes(a + ptrdiff_t{j} * Ch, Ch, mask == nullptr ? nullptr : mask + j, n - j);
  if (j > 0 && (mask == nullptr || !_mm256_testz_si256(any, any))) {
    r.any = true;
    alignas(32) int32_t lmin[8], lmax[8];
    _mm256_store_si256(reinterpret_cast<__m256i*>(lmin), vmin);
    _mm256_store_si256(reinterpret_cast<__m256i*>(lmax), vmax);
    for (int l = 0; l < 8; ++l) {
      // Lanes that never saw a selected pixel still hold the sentinels: skip them.
      if (lmin[l] != std::numeric_limits<int32_t>::max())
        r.min = std::min(r.min, static_cast<float>(lmin[l]));
      if (lmax[l] != std::numeric_limits<int32_t>::min())
        r.max = std::max(r.max, static_cast<float>(lmax[l]));
    }
  }
  return r;
}

}  // namespace avx2

}  // namespace rvp::arith
