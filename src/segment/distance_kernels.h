// Kernels of the distance transforms.
//
// Chamfer transforms run as two raster passes. Each pass splits a row into a part that does not
// depend on the row itself (the neighbours in the rows already finished: vectorised, `avx2::`)
// and the recurrence along the row (the left neighbour in the forward pass, the right one in
// the backward pass), which is a scalar chain. Both parts apply exactly the per-pixel rule of
// `ref::chamfer`, so the result is identical bit for bit: the minimum is exact and each sum is
// formed once from the same operands.
//
// Values are carried in the output type. Integer outputs saturate every sum at the type's
// maximum (weights are clamped to the maximum first, so no sum can wrap); float outputs use
// +infinity as the value of "no feature reached yet", so the float sums need no bound.
#pragma once

#include <immintrin.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "core/image.h"
#include "rvpcv.h"

namespace rvp::segment {

// Arithmetic value of an output type: the integer outputs compute in 32 bits.
template <class T>
using DistValue = std::conditional_t<std::is_same_v<T, Rvp32f>, float, uint32_t>;

template <class T>
constexpr DistValue<T> dist_max() {
  if constexpr (std::is_same_v<T, Rvp32f>)
    return std::numeric_limits<float>::infinity();
  else
    return std::numeric_limits<T>::max();
}

// Weights of a chamfer mask in the arithmetic of the output type. `c` is used by 5x5 only.
template <class T>
struct ChamferWeights {
  DistValue<T> a, b, c;
  bool five;  // 5x5 mask (knight steps) instead of 3x3
};

// The sum of a neighbour and a weight as the transform stores it.
template <class T>
inline DistValue<T> step_sum(DistValue<T> n, DistValue<T> w) {
  if constexpr (std::is_same_v<T, Rvp32f>) {
    return n + w;
  } else {
    const uint32_t s = n + w;  // n, w <= 65535: no wrap
    return s < dist_max<T>() ? s : dist_max<T>();
  }
}

template <class V>
inline V min_of(V x, V y) {
  return y < x ? y : x;
}

// Forward neighbours as (dx, dy, weight: 0 a, 1 b, 2 c); the backward pass mirrors them.
struct Offset {
  int dx, dy, w;
};
constexpr Offset kForward3[] = {{-1, 0, 0}, {0, -1, 0}, {-1, -1, 1}, {1, -1, 1}};
constexpr Offset kForward5[] = {{-1, 0, 0},  {0, -1, 0}, {-1, -1, 1}, {1, -1, 1},
                                {-1, -2, 2}, {1, -2, 2}, {-2, -1, 2}, {2, -1, 2}};

template <class T>
inline DistValue<T> weight_of(const ChamferWeights<T>& w, int k) {
  return k == 0 ? w.a : (k == 1 ? w.b : w.c);
}

namespace ref {

// The two-pass transform pixel by pixel, exactly as stated: the reference every faster path
// matches bit for bit. `src` may equal `dst` (in place); otherwise they must not overlap.
template <class T>
void chamfer(const Rvp8u* src, int srcStep, T* dst, int dstStep, int width, int height,
             const ChamferWeights<T>& w) {
  using V = DistValue<T>;
  const Offset* offs = w.five ? kForward5 : kForward3;
  const int n_offs = w.five ? 8 : 4;
  auto at = [&](int x, int y) -> V { return row(dst, dstStep, y)[x]; };
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      V v;
      if (row(src, srcStep, y)[x] == 0) {
        v = 0;
      } else {
        v = dist_max<T>();  // the first pixel has no visited neighbour and keeps this
        for (int k = 0; k < n_offs; ++k) {
          const int nx = x + offs[k].dx, ny = y + offs[k].dy;
          if (nx < 0 || nx >= width || ny < 0) continue;
          v = min_of(v, step_sum<T>(at(nx, ny), weight_of(w, offs[k].w)));
        }
      }
      row(dst, dstStep, y)[x] = static_cast<T>(v);
    }
  }
  for (int y = height - 1; y >= 0; --y) {
    for (int x = width - 1; x >= 0; --x) {
      V v = at(x, y);
      for (int k = 0; k < n_offs; ++k) {
        const int nx = x - offs[k].dx, ny = y - offs[k].dy;
        if (nx < 0 || nx >= width || ny >= height) continue;
        v = min_of(v, step_sum<T>(at(nx, ny), weight_of(w, offs[k].w)));
      }
      row(dst, dstStep, y)[x] = static_cast<T>(v);
    }
  }
}

// The part of a pass that reads only finished rows, for pixel x. `n1` is the row one step
// back in the pass direction (above in the forward pass, below in the backward pass), `n2`
// the one two steps back (5x5 only), either null when it lies outside the image. The row
// offsets are symmetric in x, so the same code serves both passes.
template <class T>
inline DistValue<T> finished_rows_min(const T* n1, const T* n2, int x, int width,
                                      const ChamferWeights<T>& w, DistValue<T> v) {
  if (n1 != nullptr) {
    v = min_of(v, step_sum<T>(n1[x], w.a));
    if (x - 1 >= 0) v = min_of(v, step_sum<T>(n1[x - 1], w.b));
    if (x + 1 < width) v = min_of(v, step_sum<T>(n1[x + 1], w.b));
    if (w.five) {
      if (x - 2 >= 0) v = min_of(v, step_sum<T>(n1[x - 2], w.c));
      if (x + 2 < width) v = min_of(v, step_sum<T>(n1[x + 2], w.c));
    }
  }
  if (w.five && n2 != nullptr) {
    if (x - 1 >= 0) v = min_of(v, step_sum<T>(n2[x - 1], w.c));
    if (x + 1 < width) v = min_of(v, step_sum<T>(n2[x + 1], w.c));
  }
  return v;
}

// Forward pass, finished-row part of one row: d[x] = 0 for a zero source pixel, otherwise the
// minimum over the rows above (the type's maximum where there is none). `src` may equal `d`.
template <class T>
void forward_rows_part(const Rvp8u* src, T* d, const T* up1, const T* up2, int width,
                       const ChamferWeights<T>& w) {
  for (int x = 0; x < width; ++x) {
    const bool zero = src[x] == 0;
    const DistValue<T> v = finished_rows_min(up1, up2, x, width, w, dist_max<T>());
    d[x] = zero ? T(0) : static_cast<T>(v);
  }
}

// Backward pass, finished-row part: d[x] = min(d[x], the rows below plus their weights).
template <class T>
void backward_rows_part(T* d, const T* dn1, const T* dn2, int width, const ChamferWeights<T>& w) {
  for (int x = 0; x < width; ++x)
    d[x] = static_cast<T>(finished_rows_min(dn1, dn2, x, width, w, DistValue<T>(d[x])));
}

}  // namespace ref

// The in-row recurrence d[x] = min(d[x], d[x - 1] + a) (forward; the backward pass runs it
// from the right). Every value already lies at or below the maximum, so the minimum with the
// stored value saturates the sum by itself.
//
// A single chain is bound by the latency of an add and a min per pixel. The row is therefore
// cut into kChainSegments pieces whose chains run interleaved, each starting as if nothing came
// from its left, and the pieces are then repaired from left to right. The repair is exact:
// adding a weight is monotonic (also when rounded), so with e(x) the chain of the true value
// left of a piece (e(x) = d(x - 1) + a), the true value is min(piece value, e(x)); and once
// e(x) >= piece value it stays so for the rest of the row, which ends the repair (usually after
// a few pixels).
constexpr int kChainSegments = 4;

template <class T, int Dir>
inline void chain(T* d, int width, DistValue<T> a) {
  using V = DistValue<T>;
  // Pixel i of the pass order lies at d[at(i)].
  auto at = [&](int i) { return Dir > 0 ? i : width - 1 - i; };
  const int seg = width / kChainSegments;
  if (seg < 8) {
    V prev = d[at(0)];
    for (int i = 1; i < width; ++i) {
      const V v = min_of(V(d[at(i)]), V(prev + a));
      d[at(i)] = static_cast<T>(v);
      prev = v;
    }
    return;
  }
  V prev[kChainSegments];
  for (int k = 0; k < kChainSegments; ++k) prev[k] = d[at(k * seg)];
  for (int i = 1; i < seg; ++i) {
    for (int k = 0; k < kChainSegments; ++k) {
      const int x = at(k * seg + i);
      const V v = min_of(V(d[x]), V(prev[k] + a));
      d[x] = static_cast<T>(v);
      prev[k] = v;
    }
  }
  V last = prev[kChainSegments - 1];
  for (int i = kChainSegments * seg; i < width; ++i) {
    const V v = min_of(V(d[at(i)]), V(last + a));
    d[at(i)] = static_cast<T>(v);
    last = v;
  }
  for (int k = 1; k < kChainSegments; ++k) {
    V e = V(d[at(k * seg - 1)]) + a;
    for (int i = k * seg; i < width; ++i) {
      const int x = at(i);
      if (!(e < V(d[x]))) break;
      d[x] = static_cast<T>(e);
      e = e + a;
    }
  }
}

template <class T>
inline void forward_chain(T* d, int width, DistValue<T> a) {
  chain<T, 1>(d, width, a);
}

template <class T>
inline void backward_chain(T* d, int width, DistValue<T> a) {
  chain<T, -1>(d, width, a);
}

namespace avx2 {

// Lane operations per output type: saturating add of a broadcast weight, minimum, and the
// lanes whose source byte is zero.
template <class T>
struct Lanes;

template <>
struct Lanes<Rvp8u> {
  using Vec = __m256i;
  static constexpr int kCount = 32;
  static Vec load(const Rvp8u* p) { return _mm256_loadu_si256(reinterpret_cast<const Vec*>(p)); }
  static void store(Rvp8u* p, Vec v) { _mm256_storeu_si256(reinterpret_cast<Vec*>(p), v); }
  static Vec weight(uint32_t w) { return _mm256_set1_epi8(static_cast<char>(w)); }
  static Vec add(Vec v, Vec w) { return _mm256_adds_epu8(v, w); }
  static Vec min(Vec x, Vec y) { return _mm256_min_epu8(x, y); }
  static Vec maxv() { return _mm256_set1_epi8(-1); }
  static Vec clear_zero_sources(const Rvp8u* s, Vec v) {
    const Vec z = _mm256_cmpeq_epi8(_mm256_loadu_si256(reinterpret_cast<const Vec*>(s)),
                                    _mm256_setzero_si256());
    return _mm256_andnot_si256(z, v);
  }
};

template <>
struct Lanes<Rvp16u> {
  using Vec = __m256i;
  static constexpr int kCount = 16;
  static Vec load(const Rvp16u* p) { return _mm256_loadu_si256(reinterpret_cast<const Vec*>(p)); }
  static void store(Rvp16u* p, Vec v) { _mm256_storeu_si256(reinterpret_cast<Vec*>(p), v); }
  static Vec weight(uint32_t w) { return _mm256_set1_epi16(static_cast<short>(w)); }
  static Vec add(Vec v, Vec w) { return _mm256_adds_epu16(v, w); }
  static Vec min(Vec x, Vec y) { return _mm256_min_epu16(x, y); }
  static Vec maxv() { return _mm256_set1_epi16(-1); }
  static Vec clear_zero_sources(const Rvp8u* s, Vec v) {
    const Vec src = _mm256_cvtepu8_epi16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(s)));
    return _mm256_andnot_si256(_mm256_cmpeq_epi16(src, _mm256_setzero_si256()), v);
  }
};

template <>
struct Lanes<Rvp32f> {
  using Vec = __m256;
  static constexpr int kCount = 8;
  static Vec load(const Rvp32f* p) { return _mm256_loadu_ps(p); }
  static void store(Rvp32f* p, Vec v) { _mm256_storeu_ps(p, v); }
  static Vec weight(float w) { return _mm256_set1_ps(w); }
  static Vec add(Vec v, Vec w) { return _mm256_add_ps(v, w); }
  static Vec min(Vec x, Vec y) { return _mm256_min_ps(x, y); }
  static Vec maxv() { return _mm256_set1_ps(std::numeric_limits<float>::infinity()); }
  static Vec clear_zero_sources(const Rvp8u* s, Vec v) {
    const __m256i src = _mm256_cvtepu8_epi32(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(s)));
    const __m256i z = _mm256_cmpeq_epi32(src, _mm256_setzero_si256());
    return _mm256_andnot_ps(_mm256_castsi256_ps(z), v);
  }
};

// Minimum over the finished rows for lanes x..x+kCount-1, all of whose neighbours lie inside
// the row (margin 1 for 3x3, 2 for 5x5).
template <class T, class L = Lanes<T>>
inline typename L::Vec rows_min(const T* n1, const T* n2, int x, const ChamferWeights<T>& w,
                                typename L::Vec v) {
  const auto wa = L::weight(w.a), wb = L::weight(w.b);
  if (n1 != nullptr) {
    v = L::min(v, L::add(L::load(n1 + x), wa));
    v = L::min(v, L::add(L::load(n1 + x - 1), wb));
    v = L::min(v, L::add(L::load(n1 + x + 1), wb));
  }
  if (w.five) {
    const auto wc = L::weight(w.c);
    if (n1 != nullptr) {
      v = L::min(v, L::add(L::load(n1 + x - 2), wc));
      v = L::min(v, L::add(L::load(n1 + x + 2), wc));
    }
    if (n2 != nullptr) {
      v = L::min(v, L::add(L::load(n2 + x - 1), wc));
      v = L::min(v, L::add(L::load(n2 + x + 1), wc));
    }
  }
  return v;
}

template <class T>
void forward_rows_part(const Rvp8u* src, T* d, const T* up1, const T* up2, int width,
                       const ChamferWeights<T>& w) {
  using L = Lanes<T>;
  const int margin = w.five ? 2 : 1;
  int x = 0;
  for (; x < std::min(margin, width); ++x)
    d[x] = src[x] == 0
               ? T(0)
               : static_cast<T>(ref::finished_rows_min(up1, up2, x, width, w, dist_max<T>()));
  for (; x + L::kCount <= width - margin; x += L::kCount)
    L::store(d + x, L::clear_zero_sources(src + x, rows_min(up1, up2, x, w, L::maxv())));
  for (; x < width; ++x)
    d[x] = src[x] == 0
               ? T(0)
               : static_cast<T>(ref::finished_rows_min(up1, up2, x, width, w, dist_max<T>()));
}

template <class T>
void backward_rows_part(T* d, const T* dn1, const T* dn2, int width, const ChamferWeights<T>& w) {
  using L = Lanes<T>;
  const int margin = w.five ? 2 : 1;
  int x = 0;
  for (; x < std::min(margin, width); ++x)
    d[x] = static_cast<T>(ref::finished_rows_min(dn1, dn2, x, width, w, DistValue<T>(d[x])));
  for (; x + L::kCount <= width - margin; x += L::kCount)
    L::store(d + x, rows_min(dn1, dn2, x, w, L::load(d + x)));
  for (; x < width; ++x)
    d[x] = static_cast<T>(ref::finished_rows_min(dn1, dn2, x, width, w, DistValue<T>(d[x])));
}

}  // namespace avx2

// The whole transform through the row kernels. `src` may equal `dst` (in place).
template <class T>
void chamfer_rows(const Rvp8u* src, int srcStep, T* dst, int dstStep, int width, int height,
                  const ChamferWeights<T>& w) {
  for (int y = 0; y < height; ++y) {
    T* d = row(dst, dstStep, y);
    const T* up1 = y >= 1 ? row(dst, dstStep, y - 1) : nullptr;
    const T* up2 = y >= 2 ? row(dst, dstStep, y - 2) : nullptr;
    avx2::forward_rows_part(row(src, srcStep, y), d, up1, up2, width, w);
    forward_chain(d, width, w.a);
  }
  for (int y = height - 1; y >= 0; --y) {
    T* d = row(dst, dstStep, y);
    const T* dn1 = y + 1 < height ? row(dst, dstStep, y + 1) : nullptr;
    const T* dn2 = y + 2 < height ? row(dst, dstStep, y + 2) : nullptr;
    avx2::backward_rows_part(d, dn1, dn2, width, w);
    backward_chain(d, width, w.a);
  }
}

// ---- exact Euclidean transform -------------------------------------------------------------
//
// Two separable passes. The column pass writes into the destination the distance from each
// pixel to the nearest zero pixel of its column (+infinity when the column has none); these
// are small integers, exact in single precision. The row pass then takes, for each pixel, the
// minimum over the row of (x - q)^2 + g(q)^2 as the lower envelope of parabolas, in double
// precision so that every squared distance is an exact integer, and stores the square root
// rounded once to single precision.

namespace ref {

// Column pass over one row: `up` is the row above (already done), null for the first row.
inline void column_down_row(const Rvp8u* src, const Rvp32f* up, Rvp32f* g, int width) {
  for (int x = 0; x < width; ++x)
    g[x] = src[x] == 0 ? 0.0f : (up ? up[x] + 1.0f : std::numeric_limits<float>::infinity());
}

inline void column_up_row(const Rvp32f* dn, Rvp32f* g, int width) {
  for (int x = 0; x < width; ++x) g[x] = min_of(g[x], dn[x] + 1.0f);
}

}  // namespace ref

namespace avx2 {

inline void column_down_row(const Rvp8u* src, const Rvp32f* up, Rvp32f* g, int width) {
  using L = Lanes<Rvp32f>;
  int x = 0;
  const __m256 one = _mm256_set1_ps(1.0f);
  for (; x + 8 <= width; x += 8) {
    const __m256 v = up ? _mm256_add_ps(_mm256_loadu_ps(up + x), one) : L::maxv();
    _mm256_storeu_ps(g + x, L::clear_zero_sources(src + x, v));
  }
  ref::column_down_row(src + x, up ? up + x : nullptr, g + x, width - x);
}

inline void column_up_row(const Rvp32f* dn, Rvp32f* g, int width) {
  int x = 0;
  const __m256 one = _mm256_set1_ps(1.0f);
  for (; x + 8 <= width; x += 8)
    _mm256_storeu_ps(
        g + x, _mm256_min_ps(_mm256_loadu_ps(g + x), _mm256_add_ps(_mm256_loadu_ps(dn + x), one)));
  ref::column_up_row(dn + x, g + x, width - x);
}

}  // namespace avx2

// Scratch of the row pass, for rows of up to `n` pixels.
struct EnvelopeScratch {
  double* f;  // squared column distances of the row (n)
  double* z;  // boundaries between the envelope's parabolas (n + 1)
  int* v;     // positions of the envelope's parabolas (n)
};

// Replaces the column distances g of one row by the Euclidean distances.
inline void envelope_row(Rvp32f* g, int width, const EnvelopeScratch& s) {
  constexpr double kInf = std::numeric_limits<double>::infinity();
  int k = -1;
  for (int q = 0; q < width; ++q) {
    if (std::isinf(g[q])) continue;  // no zero pixel in this column: never the nearest
    const double gq = g[q];
    const double fq = gq * gq;
    s.f[q] = fq;
    const double fq_q2 = fq + double(q) * q;
    if (k < 0) {
      k = 0;
      s.v[0] = q;
      s.z[0] = -kInf;
      s.z[1] = kInf;
      continue;
    }
    double cut;
    for (;;) {
      const int p = s.v[k];
      // Where the parabola at q overtakes the one at p. The exact crossing is a fraction with
      // denominator at most 2 * width: when it is not an integer it lies far further from the
      // nearest integer than the double rounding error, and when it is, both parabolas give
      // the same distance there, so rounding never changes a result.
      cut = (fq_q2 - (s.f[p] + double(p) * p)) / (2.0 * (q - p));
      if (cut > s.z[k]) break;
      --k;  // z[0] is -infinity: k never drops below 0
    }
    ++k;
    s.v[k] = q;
    s.z[k] = cut;
    s.z[k + 1] = kInf;
  }
  if (k < 0) {
    for (int q = 0; q < width; ++q) g[q] = std::numeric_limits<float>::infinity();
    return;
  }
  int j = 0;
  for (int q = 0; q < width; ++q) {
    while (s.z[j + 1] < q) ++j;
    const int p = s.v[j];
    const double dx = q - p;
    // Exact integer squared distance; its double square root rounded to single is the
    // correctly rounded single-precision distance.
    g[q] = static_cast<float>(std::sqrt(dx * dx + s.f[p]));
  }
}

// ---- fast marching ----------------------------------------------------------------------------
//
// The first-order upwind solution of |grad T| = 1 with T = 0 on the zero pixels. Pixels become
// final in increasing order of their tentative value (ties: upper row first, then left column
// first), and a pixel's tentative value is updated, whenever a 4-neighbour becomes final, to
// min(current, eikonal_update(a, b)) with a, b the smallest final horizontal and vertical
// neighbours.
//
// The tentative values live in the destination. The queue over them is a tournament that needs
// no per-pixel entries, so it fits the small buffer (a quarter byte per pixel plus 16 bytes per
// row): a bit per pixel for "final", the minimum tentative value of each block of 32 pixels of a
// row, and a binary tree over the rows' minima. Taking the minimum descends the tree to the row,
// scans the row's block minima and then the block. Making a pixel final rescans its block and
// row; a neighbour whose value drops only lowers the minima above it.

// The value at a pixel whose smallest final neighbours are a (horizontal) and b (vertical),
// +infinity for none. Solves (t - a)^2 + (t - b)^2 = 1 when both take part, else t = min + 1;
// in double, rounded once.
inline float eikonal_update(float a, float b) {
  if (b < a) std::swap(a, b);
  if (std::isinf(a)) return a;
  const double da = a, db = b;
  if (!(db - da < 1.0)) return static_cast<float>(da + 1.0);  // b infinite included
  const double diff = db - da;
  return static_cast<float>((da + db + std::sqrt(2.0 - diff * diff)) * 0.5);
}

class FastMarcher {
 public:
  static int64_t buffer_bytes(RvpiSize roi) {
    return (int64_t{roi.height} + 34) * ((int64_t{roi.width} + 31) / 32 * 32 + 5) + 40;
  }

  // `buffer` holds at least buffer_bytes(roi) bytes at any alignment.
  FastMarcher(Rvp32f* dst, int dstStep, RvpiSize roi, void* buffer)
      : t_(dst), step_(dstStep), w_(roi.width), h_(roi.height), wq_((roi.width + 31) / 32) {
    rows_ = 1;
    while (rows_ < h_) rows_ *= 2;
    auto* base = static_cast<uint8_t*>(buffer);
    base += (-reinterpret_cast<uintptr_t>(base)) & 31;
    known_ = reinterpret_cast<uint32_t*>(base);
    block_min_ = reinterpret_cast<float*>(known_ + int64_t{h_} * wq_);
    tree_ = block_min_ + int64_t{h_} * wq_;
  }

  void run(const Rvp8u* src, int srcStep, float radius) {
    constexpr float kInf = std::numeric_limits<float>::infinity();
    for (int y = 0; y < h_; ++y) {
      const Rvp8u* s = row(src, srcStep, y);
      float* t = row(t_, step_, y);
      uint32_t* k = known_ + int64_t{y} * wq_;
      for (int q = 0; q < wq_; ++q) k[q] = 0;
      for (int x = 0; x < w_; ++x) {
        t[x] = s[x] == 0 ? 0.0f : kInf;
        if (s[x] == 0) k[x >> 5] |= 1u << (x & 31);
      }
    }
    // The first band: every pixel next to a zero pixel.
    for (int y = 0; y < h_; ++y)
      for (int x = 0; x < w_; ++x)
        if (!known(x, y) && has_known_neighbour(x, y)) at(x, y) = update_value(x, y);
    for (int y = 0; y < h_; ++y) {
      for (int q = 0; q < wq_; ++q) refresh_block(y, q);
      tree_[rows_ + y] = row_min(y);
    }
    for (int i = rows_ + h_; i < 2 * rows_; ++i) tree_[i] = kInf;
    for (int i = rows_ - 1; i >= 1; --i) tree_[i] = std::min(tree_[2 * i], tree_[2 * i + 1]);

    // Unreached pixels stay +infinity and are never taken, whatever the radius.
    while (tree_[1] <= radius && tree_[1] < kInf) {
      int node = 1;
      while (node < rows_) node = tree_[2 * node] <= tree_[2 * node + 1] ? 2 * node : 2 * node + 1;
      const int y = node - rows_;
      const float m = tree_[node];
      accept(find_in_row(y, m), y);
    }
    // Beyond the radius nothing is final: those pixels are +infinity.
    for (int y = 0; y < h_; ++y)
      for (int x = 0; x < w_; ++x)
        if (!known(x, y)) at(x, y) = kInf;
  }

 private:
  float& at(int x, int y) { return row(t_, step_, y)[x]; }
  // The leftmost non-final pixel of row y whose value is m (the row's minimum).
  int find_in_row(int y, float m) {
    const float* b = block_min_ + int64_t{y} * wq_;
    const __m256 mv = _mm256_set1_ps(m);
    int q = 0;
    for (;; q += 8) {
      if (q + 8 > wq_) {
        while (b[q] != m) ++q;
        break;
      }
      const int hits = _mm256_movemask_ps(_mm256_cmp_ps(_mm256_loadu_ps(b + q), mv, _CMP_EQ_OQ));
      if (hits) {
        q += __builtin_ctz(unsigned(hits));
        break;
      }
    }
    const float* t = row(t_, step_, y) + q * 32;
    const uint32_t open = ~known_[int64_t{y} * wq_ + q];
    const int n = std::min(32, w_ - q * 32);
    uint32_t eq = 0;
    for (int i = 0; i < n; ++i) eq |= uint32_t(t[i] == m) << i;
    return q * 32 + __builtin_ctz(eq & open);
  }
  bool known(int x, int y) const { return (known_[int64_t{y} * wq_ + (x >> 5)] >> (x & 31)) & 1u; }
  bool has_known_neighbour(int x, int y) const {
    return (x > 0 && known(x - 1, y)) || (x + 1 < w_ && known(x + 1, y)) ||
           (y > 0 && known(x, y - 1)) || (y + 1 < h_ && known(x, y + 1));
  }
  float known_or_inf(int x, int y) {
    return known(x, y) ? at(x, y) : std::numeric_limits<float>::infinity();
  }
  float update_value(int x, int y) {
    constexpr float kInf = std::numeric_limits<float>::infinity();
    const float a =
        std::min(x > 0 ? known_or_inf(x - 1, y) : kInf, x + 1 < w_ ? known_or_inf(x + 1, y) : kInf);
    const float b =
        std::min(y > 0 ? known_or_inf(x, y - 1) : kInf, y + 1 < h_ ? known_or_inf(x, y + 1) : kInf);
    return eikonal_update(a, b);
  }
  // A neighbour of a pixel just made final: its value can only drop, and the minima of its
  // block, row and the tree above can only drop with it, so no rescan is needed.
  void relax(int x, int y) {
    if (known(x, y)) return;
    const float v = update_value(x, y);
    if (!(v < at(x, y))) return;
    at(x, y) = v;
    float& bm = block_min_[int64_t{y} * wq_ + (x >> 5)];
    if (!(v < bm)) return;
    bm = v;
    for (int node = rows_ + y; node >= 1 && v < tree_[node]; node /= 2) tree_[node] = v;
  }
  // Minimum over the non-final pixels of block q of row y.
  void refresh_block(int y, int q) {
    const float* t = row(t_, step_, y) + q * 32;
    const uint32_t bits = known_[int64_t{y} * wq_ + q];
    const int n = std::min(32, w_ - q * 32);
    float m = std::numeric_limits<float>::infinity();
    if (n == 32) {
      // Lane i of group g is pixel 8g + i; its final bit selects +infinity instead of the value.
      const __m256i lane_bit = _mm256_setr_epi32(1, 2, 4, 8, 16, 32, 64, 128);
      const __m256 inf = _mm256_set1_ps(m);
      __m256 acc = inf;
      for (int g = 0; g < 4; ++g) {
        const __m256i b = _mm256_and_si256(_mm256_set1_epi32(int(bits >> (8 * g))), lane_bit);
        const __m256 fin = _mm256_castsi256_ps(_mm256_cmpeq_epi32(b, lane_bit));
        acc = _mm256_min_ps(acc, _mm256_blendv_ps(_mm256_loadu_ps(t + 8 * g), inf, fin));
      }
      m = hmin(acc);
    } else {
      for (int i = 0; i < n; ++i)
        if (!((bits >> i) & 1u) && t[i] < m) m = t[i];
    }
    block_min_[int64_t{y} * wq_ + q] = m;
  }
  static float hmin(__m256 v) {
    __m128 m = _mm_min_ps(_mm256_castps256_ps128(v), _mm256_extractf128_ps(v, 1));
    m = _mm_min_ps(m, _mm_movehl_ps(m, m));
    m = _mm_min_ss(m, _mm_movehdup_ps(m));
    return _mm_cvtss_f32(m);
  }
  float row_min(int y) const {
    const float* b = block_min_ + int64_t{y} * wq_;
    int q = 0;
    float m = std::numeric_limits<float>::infinity();
    if (wq_ >= 8) {
      __m256 acc = _mm256_loadu_ps(b);
      for (q = 8; q + 8 <= wq_; q += 8) acc = _mm256_min_ps(acc, _mm256_loadu_ps(b + q));
      m = hmin(acc);
    }
    for (; q < wq_; ++q) m = std::min(m, b[q]);
    return m;
  }
  void refresh_row(int y) {
    int node = rows_ + y;
    const float m = row_min(y);
    if (tree_[node] == m) return;
    tree_[node] = m;
    for (node /= 2; node >= 1; node /= 2) {
      const float v = std::min(tree_[2 * node], tree_[2 * node + 1]);
      if (tree_[node] == v) break;
      tree_[node] = v;
    }
  }
  // Makes (x, y) final (it holds the smallest value of the image), relaxes its neighbours and
  // rescans its own block and row, whose minimum it was.
  void accept(int x, int y) {
    known_[int64_t{y} * wq_ + (x >> 5)] |= 1u << (x & 31);
    refresh_block(y, x >> 5);
    refresh_row(y);
    if (x > 0) relax(x - 1, y);
    if (x + 1 < w_) relax(x + 1, y);
    if (y > 0) relax(x, y - 1);
    if (y + 1 < h_) relax(x, y + 1);
  }

  Rvp32f* t_;
  int step_, w_, h_, wq_, rows_;
  uint32_t* known_;
  float* block_min_;
  float* tree_;
};

}  // namespace rvp::segment
