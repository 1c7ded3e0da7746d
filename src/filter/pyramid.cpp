// Gaussian pyramids: 5x5 down and up levels, level sizes for any rate, the pyramid record and
// general pyramid layers (any odd kernel, any rate in (1, 10]).
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>
#include <vector>

#include "core/checks.h"
#include "core/image.h"
#include "core/memory.h"
#include "core/numeric.h"
#include "core/scratch.h"
#include "filter/border.h"
#include "filter/pyramid_kernels.h"
#include "rvpcv.h"

namespace rvp::pyr {
using filter::mirror_index;
namespace {

inline int half_up(int n) { return n / 2 + (n & 1); }

// Mirrored pixels around an intermediate row of w pixels of C elements.
template <class A>
void pad_row(A* v, int w, int C, int pad) {
  for (int k = 1; k <= pad; ++k)
    for (int c = 0; c < C; ++c) {
      v[-k * C + c] = v[mirror_index(-k, w) * C + c];
      v[(w - 1 + k) * C + c] = v[mirror_index(int64_t{w} - 1 + k, w) * C + c];
    }
}

template <class T, int C>
RvpStatus pyr_down(const T* src, int srcStep, T* dst, int dstStep, RvpiSize roi, Rvp8u* buffer) {
  if (auto st = any_null(src, dst, buffer)) return st;
  if (auto st = check_roi(roi)) return st;
  const RvpiSize out{half_up(roi.width), half_up(roi.height)};
  if (auto st = check_steps({image<T>(srcStep, roi, C), image<T>(dstStep, out, C)})) return st;

  ScratchCarver carve(buffer);
  Acc<T>* v = carve.take<Acc<T>>(int64_t{roi.width + 4} * C) + 2 * C;
  T* tmp = carve.take<T>(int64_t{roi.width} * C);
  const int n = roi.width * C;
  for (int Y = 0; Y < out.height; ++Y) {
    const T* rows[5];
    for (int k = 0; k < 5; ++k)
      rows[k] = row(src, srcStep, mirror_index(2 * int64_t{Y} + k - 2, roi.height));
    avx2::down_vert<T>(rows, v, n);
    pad_row(v, roi.width, C, 2);
    avx2::down_horz<T>(v, row(dst, dstStep, Y), out.width, C, tmp);
  }
  return rvpStsNoErr;
}

template <class T, int C>
RvpStatus pyr_up(const T* src, int srcStep, T* dst, int dstStep, RvpiSize roi, Rvp8u* buffer) {
  if (auto st = any_null(src, dst, buffer)) return st;
  if (auto st = check_roi(roi)) return st;
  if (roi.width > std::numeric_limits<int>::max() / 2 ||
      roi.height > std::numeric_limits<int>::max() / 2)
    return rvpStsSizeErr;
  const RvpiSize out{2 * roi.width, 2 * roi.height};
  if (auto st = check_steps({image<T>(srcStep, roi, C), image<T>(dstStep, out, C)})) return st;

  ScratchCarver carve(buffer);
  const int64_t padded = int64_t{roi.width + 2} * C;
  Acc<T>* ve = carve.take<Acc<T>>(padded) + C;
  Acc<T>* vo = carve.take<Acc<T>>(padded) + C;
  T* tmp = carve.take<T>(2 * int64_t{roi.width} * C);
  const int n = roi.width * C;
  for (int Y = 0; Y < roi.height; ++Y) {
    const T* r0 = row(src, srcStep, mirror_index(int64_t{Y} - 1, roi.height));
    const T* r1 = row(src, srcStep, Y);
    const T* r2 = row(src, srcStep, mirror_index(int64_t{Y} + 1, roi.height));
    avx2::up_vert<T>(r0, r1, r2, ve, vo, n);
    pad_row(ve, roi.width, C, 1);
    pad_row(vo, roi.width, C, 1);
    avx2::up_horz<T>(ve, row(dst, dstStep, 2 * Y), roi.width, C, tmp);
    avx2::up_horz<T>(vo, row(dst, dstStep, 2 * Y + 1), roi.width, C, tmp);
  }
  return rvpStsNoErr;
}

RvpStatus buf_size(int width, RvpDataType type, int channels, int* size, bool down) {
  if (size == nullptr) return rvpStsNullPtrErr;
  if (width < 1) return rvpStsSizeErr;
  if (channels != 1 && channels != 3) return rvpStsNumChannelsErr;
  if (type != rvp8u && type != rvp8s && type != rvp32f) return rvpStsDataTypeErr;
  const int64_t total = down ? 6 * round_up(4 * int64_t{width} * channels, 16) + 64
                             : 4 * round_up(4 * (int64_t{width} + 2) * channels, 32) + 64;
  if (total > std::numeric_limits<int>::max()) return rvpStsSizeErr;
  *size = static_cast<int>(total);
  return rvpStsNoErr;
}

inline bool rate_ok(float r) { return r > 1.0f && r <= 10.0f; }

// Single-precision product truncated to an integer; products beyond the int range saturate.
inline int64_t trunc_product(int n, float rate) {
  const float p = static_cast<float>(n) * rate;
  return p >= 2147483648.0f ? int64_t{INT32_MAX} : static_cast<int64_t>(p);
}

// The up range of one dimension (saturated at INT_MAX for sizes near the int range).
void up_range(int n, float rate, int* lo, int* hi) {
  const int64_t a = trunc_product(n - 1, rate) + 1;
  const int64_t b = trunc_product(n, rate);
  const int64_t next = int64_t{n} + 1;
  *lo = n == 1 ? 1 : static_cast<int>(std::min<int64_t>(std::max(a, next), INT32_MAX));
  *hi = static_cast<int>(std::min<int64_t>(std::max(b, next), INT32_MAX));
}

void up_roi(RvpiSize s, float rate, RvpiSize* mn, RvpiSize* mx) {
  up_range(s.width, rate, &mn->width, &mx->width);
  up_range(s.height, rate, &mn->height, &mx->height);
}

RvpiSize down_roi(RvpiSize s, float rate) {
  auto start = [rate](int n) {
    const float q = 0.5f + static_cast<float>(n) / rate;
    return q >= 2147483648.0f ? INT32_MAX : std::max(1, static_cast<int>(q));
  };
  RvpiSize d{start(s.width), start(s.height)};
  for (int guard = 0; guard < 1 << 20; ++guard) {
    RvpiSize mn, mx;
    up_roi(d, rate, &mn, &mx);
    bool done = true;
    if (s.height < mn.height && d.height > 1) {
      --d.height, done = false;
    } else if (s.height > mx.height) {
      ++d.height, done = false;
    }
    if (s.width < mn.width && d.width > 1) {
      --d.width, done = false;
    } else if (s.width > mx.width) {
      ++d.width, done = false;
    }
    if (done) break;
  }
  return d;
}

bool fits_up(RvpiSize small, RvpiSize large, float rate) {
  RvpiSize mn, mx;
  up_roi(small, rate, &mn, &mx);
  return large.width >= mn.width && large.width <= mx.width && large.height >= mn.height &&
         large.height <= mx.height;
}

}  // namespace
}  // namespace rvp::pyr

// ---- layer states ---------------------------------------------------------------------------

struct RvpiPyramidDownState {
  RvpiSize max_src;
  float rate;
  int ksize;
  int channels;
  int elem_size;
  float scale;    // 1 / S^2
  float* kernel;  // ksize taps
  float* vrow;    // vertical pass, max_src.width * channels
  float* sm0;     // two smoothed rows
  float* sm1;
};

struct RvpiPyramidUpState {
  RvpiSize max_dst;
  float rate;
  int ksize;
  int channels;
  int elem_size;
  float* kernel;
};

namespace rvp::pyr {
namespace {

// The kernel checks shared by both InitAlloc forms; writes the kernel sum.
RvpStatus check_layer_args(RvpiSize roi, float rate, const float* kernel, int ksize, int mode,
                           double* sum) {
  if (auto st = check_roi(roi)) return st;
  if (!rate_ok(rate)) return rvpStsBadArgErr;
  if (ksize < 1) return rvpStsSizeErr;
  if (ksize % 2 == 0) return rvpStsBadArgErr;
  double s = 0.0;
  for (int k = 0; k < ksize; ++k) s += kernel[k];
  if (s == 0.0 || !std::isfinite(s)) return rvpStsBadArgErr;
  if (mode != 1) return rvpStsBadArgErr;
  *sum = s;
  return rvpStsNoErr;
}

template <class T>
inline T to_elem(float v) {
  if constexpr (std::is_same_v<T, Rvp32f>)
    return v;
  else
    return saturate<T>(std::floor(v + 0.5f));
}

template <class T, int C>
RvpStatus layer_down_init(RvpiSize srcRoi, float rate, const float* kernel, int ksize, int mode,
                          RvpiPyramidDownState** pp) {
  if (auto st = any_null(kernel, pp)) return st;
  double sum = 0.0;
  if (auto st = check_layer_args(srcRoi, rate, kernel, ksize, mode, &sum)) return st;
  const int64_t row_floats = int64_t{srcRoi.width} * C;
  const int64_t bytes = round_up(sizeof(RvpiPyramidDownState), 32) +
                        round_up(4 * int64_t{ksize}, 32) + 3 * round_up(4 * row_floats, 32);
  if (bytes > std::numeric_limits<int>::max()) return rvpStsMemAllocErr;
  auto* mem = static_cast<uint8_t*>(alloc_bytes(static_cast<int>(bytes)));
  if (mem == nullptr) return rvpStsMemAllocErr;
  auto* s = reinterpret_cast<RvpiPyramidDownState*>(mem);
  uint8_t* p = mem + round_up(sizeof(RvpiPyramidDownState), 32);
  s->max_src = srcRoi;
  s->rate = rate;
  s->ksize = ksize;
  s->channels = C;
  s->elem_size = sizeof(T);
  s->scale = static_cast<float>(1.0 / (sum * sum));
  s->kernel = reinterpret_cast<float*>(p);
  std::memcpy(s->kernel, kernel, sizeof(float) * ksize);
  p += round_up(4 * int64_t{ksize}, 32);
  s->vrow = reinterpret_cast<float*>(p);
  p += round_up(4 * row_floats, 32);
  s->sm0 = reinterpret_cast<float*>(p);
  p += round_up(4 * row_floats, 32);
  s->sm1 = reinterpret_cast<float*>(p);
  *pp = s;
  return rvpStsNoErr;
}

// One source row smoothed in both directions and scaled: out[x*C + c].
template <class T, int C>
void smooth_row(const T* src, int srcStep, RvpiSize roi, int y, const RvpiPyramidDownState* s,
                float* out) {
  const int r = s->ksize / 2;
  const int n = roi.width * C;
  float* v = s->vrow;
  for (int k = 0; k < s->ksize; ++k) {
    const T* p = row(src, srcStep, mirror_index(int64_t{y} + k - r, roi.height));
    const float t = s->kernel[k];
    if (k == 0)
      for (int e = 0; e < n; ++e) v[e] = static_cast<float>(p[e]) * t;
    else
      for (int e = 0; e < n; ++e) v[e] = v[e] + static_cast<float>(p[e]) * t;
  }
  for (int x = 0; x < roi.width; ++x)
    for (int c = 0; c < C; ++c) {
      float a = v[mirror_index(int64_t{x} - r, roi.width) * C + c] * s->kernel[0];
      for (int k = 1; k < s->ksize; ++k)
        a = a + v[mirror_index(int64_t{x} + k - r, roi.width) * C + c] * s->kernel[k];
      out[x * C + c] = a * s->scale;
    }
}

// Integer part and fraction of X * rate, clamped to the last pixel.
inline void sample_pos(int X, float rate, int n, int* i, float* f) {
  const float p = static_cast<float>(X) * rate;
  int ip = static_cast<int>(p);
  float fp = p - static_cast<float>(ip);
  if (ip >= n - 1) ip = n - 1, fp = 0.0f;
  *i = ip;
  *f = fp;
}

template <class T, int C>
RvpStatus layer_down(const T* src, int srcStep, T* dst, int dstStep, RvpiSize srcRoi,
                     RvpiSize dstRoi, const RvpiPyramidDownState* s) {
  if (auto st = any_null(src, dst, s)) return st;
  if (auto st = check_roi(srcRoi)) return st;
  if (auto st = check_roi(dstRoi)) return st;
  if (srcRoi.width > s->max_src.width || srcRoi.height > s->max_src.height ||
      !fits_up(dstRoi, srcRoi, s->rate))
    return rvpStsSizeErr;
  if (auto st = check_steps({image<T>(srcStep, srcRoi, C), image<T>(dstStep, dstRoi, C)}))
    return st;
  if (s->channels != C || s->elem_size != int{sizeof(T)}) return rvpStsContextMatchErr;

  float* sm0 = s->sm0;
  float* sm1 = s->sm1;
  const int n = srcRoi.width * C;
  for (int Y = 0; Y < dstRoi.height; ++Y) {
    int iy;
    float fy;
    sample_pos(Y, s->rate, srcRoi.height, &iy, &fy);
    smooth_row<T, C>(src, srcStep, srcRoi, iy, s, sm0);
    if (fy != 0.0f) {
      smooth_row<T, C>(src, srcStep, srcRoi, iy + 1, s, sm1);
      for (int e = 0; e < n; ++e) sm0[e] = sm0[e] * (1.0f - fy) + sm1[e] * fy;
    }
    T* d = row(dst, dstStep, Y);
    for (int X = 0; X < dstRoi.width; ++X) {
      int ix;
      float fx;
      sample_pos(X, s->rate, srcRoi.width, &ix, &fx);
      for (int c = 0; c < C; ++c) {
        const float a = sm0[ix * C + c];
        d[X * C + c] = to_elem<T>(fx == 0.0f ? a : a * (1.0f - fx) + sm0[(ix + 1) * C + c] * fx);
      }
    }
  }
  return rvpStsNoErr;
}

template <class T, int C>
RvpStatus layer_up_init(RvpiSize dstRoi, float rate, const float* kernel, int ksize, int mode,
                        RvpiPyramidUpState** pp) {
  if (auto st = any_null(kernel, pp)) return st;
  double sum = 0.0;
  if (auto st = check_layer_args(dstRoi, rate, kernel, ksize, mode, &sum)) return st;
  const int64_t bytes = round_up(sizeof(RvpiPyramidUpState), 32) + 4 * int64_t{ksize};
  if (bytes > std::numeric_limits<int>::max()) return rvpStsMemAllocErr;
  auto* mem = static_cast<uint8_t*>(alloc_bytes(static_cast<int>(bytes)));
  if (mem == nullptr) return rvpStsMemAllocErr;
  auto* s = reinterpret_cast<RvpiPyramidUpState*>(mem);
  s->max_dst = dstRoi;
  s->rate = rate;
  s->ksize = ksize;
  s->channels = C;
  s->elem_size = sizeof(T);
  s->kernel = reinterpret_cast<float*>(mem + round_up(sizeof(RvpiPyramidUpState), 32));
  std::memcpy(s->kernel, kernel, sizeof(float) * ksize);
  *pp = s;
  return rvpStsNoErr;
}

// Sources of destination pixel x: mirrored indices and weights, in increasing j. A pixel has at
// most r + 2 sources (|j - x / rate| < (r + 1) / 2).
struct Taps {
  int count;
  float wsum;
  int* idx;
  float* w;
};

inline int taps_capacity(int ksize) { return ksize / 2 + 3; }

void up_taps(int x, int n, const RvpiPyramidUpState* s, Taps* t) {
  const int r = s->ksize / 2;
  const double rate = s->rate;
  const double centre = x / rate;
  const int lo = static_cast<int>(std::floor(centre - (r + 1) / 2.0)) - 1;
  const int hi = static_cast<int>(std::ceil(centre + (r + 1) / 2.0)) + 1;
  const int cap = taps_capacity(s->ksize);
  t->count = 0;
  t->wsum = 0.0f;
  for (int j = lo; j <= hi; ++j) {
    const double pos = (j * rate - x) * 2.0 / rate + r;
    if (!(pos > -1.0 && pos < s->ksize)) continue;
    const int i0 = static_cast<int>(std::floor(pos));
    const double f = pos - i0;
    const double k0 = i0 >= 0 ? s->kernel[i0] : 0.0;
    const double k1 = i0 + 1 < s->ksize ? s->kernel[i0 + 1] : 0.0;
    const float w = static_cast<float>(f == 0.0 ? k0 : k0 * (1.0 - f) + k1 * f);
    if (w == 0.0f || t->count == cap) continue;
    t->idx[t->count] = mirror_index(j, n);
    t->w[t->count] = w;
    t->wsum = t->count == 0 ? w : t->wsum + w;
    ++t->count;
  }
}

template <class T, int C>
RvpStatus layer_up(const T* src, int srcStep, T* dst, int dstStep, RvpiSize srcRoi, RvpiSize dstRoi,
                   const RvpiPyramidUpState* s) {
  if (auto st = any_null(src, dst, s)) return st;
  if (auto st = check_roi(srcRoi)) return st;
  if (auto st = check_roi(dstRoi)) return st;
  if (dstRoi.width > s->max_dst.width || dstRoi.height > s->max_dst.height ||
      !fits_up(srcRoi, dstRoi, s->rate))
    return rvpStsSizeErr;
  if (auto st = check_steps({image<T>(srcStep, srcRoi, C), image<T>(dstStep, dstRoi, C)}))
    return st;
  if (s->channels != C || s->elem_size != int{sizeof(T)}) return rvpStsContextMatchErr;

  const int n = srcRoi.width * C;
  // One allocation: the intermediate row, the column taps, then the tap arrays (+1 row's worth
  // for the vertical taps).
  const int64_t cap = taps_capacity(s->ksize);
  const int64_t bytes =
      4 * int64_t{n} + int64_t{sizeof(Taps)} * dstRoi.width + 8 * cap * (int64_t{dstRoi.width} + 1);
  if (bytes > std::numeric_limits<int>::max()) return rvpStsMemAllocErr;
  void* mem = alloc_bytes(static_cast<int>(bytes));
  if (mem == nullptr) return rvpStsMemAllocErr;
  auto* xt = static_cast<Taps*>(mem);
  int* idx = reinterpret_cast<int*>(xt + dstRoi.width);
  float* wts = reinterpret_cast<float*>(idx + cap * (int64_t{dstRoi.width} + 1));
  float* v = wts + cap * (int64_t{dstRoi.width} + 1);
  for (int x = 0; x < dstRoi.width; ++x) xt[x] = Taps{0, 0.0f, idx + cap * x, wts + cap * x};
  for (int x = 0; x < dstRoi.width; ++x) up_taps(x, srcRoi.width, s, &xt[x]);

  for (int y = 0; y < dstRoi.height; ++y) {
    Taps yt{0, 0.0f, idx + cap * dstRoi.width, wts + cap * dstRoi.width};
    up_taps(y, srcRoi.height, s, &yt);
    for (int k = 0; k < yt.count; ++k) {
      const T* p = row(src, srcStep, yt.idx[k]);
      const float w = yt.w[k];
      if (k == 0)
        for (int e = 0; e < n; ++e) v[e] = static_cast<float>(p[e]) * w;
      else
        for (int e = 0; e < n; ++e) v[e] = v[e] + static_cast<float>(p[e]) * w;
    }
    T* d = row(dst, dstStep, y);
    for (int x = 0; x < dstRoi.width; ++x) {
      const Taps& t = xt[x];
      const float scale = 1.0f / (yt.wsum * t.wsum);
      for (int c = 0; c < C; ++c) {
        float a = v[t.idx[0] * C + c] * t.w[0];
        for (int k = 1; k < t.count; ++k) a = a + v[t.idx[k] * C + c] * t.w[k];
        d[x * C + c] = to_elem<T>(a * scale);
      }
    }
  }
  free_bytes(mem);
  return rvpStsNoErr;
}

}  // namespace
}  // namespace rvp::pyr

// ---- exports --------------------------------------------------------------------------------

using rvp::pyr::pyr_down;
using rvp::pyr::pyr_up;

#define RVP_PYR_EXPORTS(t, T, C)                                                                 \
  RvpStatus rvpiPyrDown_Gauss5x5_##t##_C##C##R(const T* pSrc, int srcStep, T* pDst, int dstStep, \
                                               RvpiSize roiSize, Rvp8u* pBuffer) {               \
    return pyr_down<T, C>(pSrc, srcStep, pDst, dstStep, roiSize, pBuffer);                       \
  }                                                                                              \
  RvpStatus rvpiPyrUp_Gauss5x5_##t##_C##C##R(const T* pSrc, int srcStep, T* pDst, int dstStep,   \
                                             RvpiSize roiSize, Rvp8u* pBuffer) {                 \
    return pyr_up<T, C>(pSrc, srcStep, pDst, dstStep, roiSize, pBuffer);                         \
  }
RVP_PYR_EXPORTS(8u, Rvp8u, 1)
RVP_PYR_EXPORTS(8u, Rvp8u, 3)
RVP_PYR_EXPORTS(8s, Rvp8s, 1)
RVP_PYR_EXPORTS(8s, Rvp8s, 3)
RVP_PYR_EXPORTS(32f, Rvp32f, 1)
RVP_PYR_EXPORTS(32f, Rvp32f, 3)
#undef RVP_PYR_EXPORTS

RvpStatus rvpiPyrDownGetBufSize_Gauss5x5(int roiWidth, RvpDataType dataType, int numChannels,
                                         int* pBufSize) {
  return rvp::pyr::buf_size(roiWidth, dataType, numChannels, pBufSize, true);
}
RvpStatus rvpiPyrUpGetBufSize_Gauss5x5(int roiWidth, RvpDataType dataType, int numChannels,
                                       int* pBufSize) {
  return rvp::pyr::buf_size(roiWidth, dataType, numChannels, pBufSize, false);
}

RvpStatus rvpiGetPyramidDownROI(RvpiSize srcRoi, RvpiSize* pDstRoi, Rvp32f rate) {
  if (pDstRoi == nullptr) return rvpStsNullPtrErr;
  if (auto st = rvp::check_roi(srcRoi)) return st;
  if (!rvp::pyr::rate_ok(rate)) return rvpStsBadArgErr;
  *pDstRoi = rvp::pyr::down_roi(srcRoi, rate);
  return rvpStsNoErr;
}

RvpStatus rvpiGetPyramidUpROI(RvpiSize srcRoi, RvpiSize* pDstRoiMin, RvpiSize* pDstRoiMax,
                              Rvp32f rate) {
  if (auto st = rvp::any_null(pDstRoiMin, pDstRoiMax)) return st;
  if (auto st = rvp::check_roi(srcRoi)) return st;
  if (!rvp::pyr::rate_ok(rate)) return rvpStsBadArgErr;
  RvpiSize mn, mx;
  rvp::pyr::up_roi(srcRoi, rate, &mn, &mx);
  *pDstRoiMin = mn;
  *pDstRoiMax = mx;
  return rvpStsNoErr;
}

RvpStatus rvpiPyramidInitAlloc(RvpiSize roiSize, int level, Rvp32f rate, RvpiPyramid** ppPyr) {
  using rvp::round_up;
  if (ppPyr == nullptr) return rvpStsNullPtrErr;
  if (auto st = rvp::check_roi(roiSize)) return st;
  if (level < 0 || !rvp::pyr::rate_ok(rate)) return rvpStsBadArgErr;
  const int64_t n = int64_t{level} + 1;
  const int64_t head = round_up(sizeof(RvpiPyramid), 16);
  const int64_t bytes = head + round_up(n * int64_t{sizeof(Rvp8u*)}, 16) +
                        round_up(n * int64_t{sizeof(int)}, 16) +
                        round_up(n * int64_t{sizeof(RvpiSize)}, 16) + n * int64_t{sizeof(Rvp64f)};
  if (bytes > std::numeric_limits<int>::max()) return rvpStsMemAllocErr;
  auto* mem = static_cast<uint8_t*>(rvp::alloc_bytes(static_cast<int>(bytes)));
  if (mem == nullptr) return rvpStsMemAllocErr;
  auto* pyr = reinterpret_cast<RvpiPyramid*>(mem);
  uint8_t* p = mem + head;
  pyr->pImage = reinterpret_cast<Rvp8u**>(p);
  p += round_up(n * int64_t{sizeof(Rvp8u*)}, 16);
  pyr->pStep = reinterpret_cast<int*>(p);
  p += round_up(n * int64_t{sizeof(int)}, 16);
  pyr->pRoi = reinterpret_cast<RvpiSize*>(p);
  p += round_up(n * int64_t{sizeof(RvpiSize)}, 16);
  pyr->pRate = reinterpret_cast<Rvp64f*>(p);
  pyr->pState = nullptr;
  pyr->level = level;
  for (int64_t i = 0; i < n; ++i) {
    pyr->pImage[i] = nullptr;
    pyr->pStep[i] = 0;
    pyr->pRoi[i] = i == 0 ? roiSize : rvp::pyr::down_roi(pyr->pRoi[i - 1], rate);
    pyr->pRate[i] = i == 0 ? 1.0 : pyr->pRate[i - 1] * static_cast<double>(rate);
  }
  *ppPyr = pyr;
  return rvpStsNoErr;
}

RvpStatus rvpiPyramidFree(RvpiPyramid* pPyr) {
  rvp::free_bytes(pPyr);
  return rvpStsNoErr;
}

#define RVP_LAYER_EXPORTS(t, T, C)                                                                 \
  RvpStatus rvpiPyramidLayerDownInitAlloc_##t##_C##C##R(                                           \
      RvpiSize srcRoi, Rvp32f rate, const Rvp32f* pKernel, int kerSize, int mode,                  \
      RvpiPyramidDownState** ppState) {                                                            \
    return rvp::pyr::layer_down_init<T, C>(srcRoi, rate, pKernel, kerSize, mode, ppState);         \
  }                                                                                                \
  RvpStatus rvpiPyramidLayerDown_##t##_C##C##R(const T* pSrc, int srcStep, T* pDst, int dstStep,   \
                                               RvpiSize srcRoiSize, RvpiSize dstRoiSize,           \
                                               const RvpiPyramidDownState* pState) {               \
    return rvp::pyr::layer_down<T, C>(pSrc, srcStep, pDst, dstStep, srcRoiSize, dstRoiSize,        \
                                      pState);                                                     \
  }                                                                                                \
  RvpStatus rvpiPyramidLayerDownFree_##t##_C##C##R(RvpiPyramidDownState* pState) {                 \
    rvp::free_bytes(pState);                                                                       \
    return rvpStsNoErr;                                                                            \
  }                                                                                                \
  RvpStatus rvpiPyramidLayerUpInitAlloc_##t##_C##C##R(RvpiSize dstRoi, Rvp32f rate,                \
                                                      const Rvp32f* pKernel, int kerSize,          \
                                                      int mode, RvpiPyramidUpState** ppState) {    \
    return rvp::pyr::layer_up_init<T, C>(dstRoi, rate, pKernel, kerSize, mode, ppState);           \
  }                                                                                                \
  RvpStatus rvpiPyramidLayerUp_##t##_C##C##R(const T* pSrc, int srcStep, T* pDst, int dstStep,     \
                                             RvpiSize srcRoiSize, RvpiSize dstRoiSize,             \
                                             const RvpiPyramidUpState* pState) {                   \
    return rvp::pyr::layer_up<T, C>(pSrc, srcStep, pDst, dstStep, srcRoiSize, dstRoiSize, pState); \
  }                                                                                                \
  RvpStatus rvpiPyramidLayerUpFree_##t##_C##C##R(RvpiPyramidUpState* pState) {                     \
    rvp::free_bytes(pState);                                                                       \
    return rvpStsNoErr;                                                                            \
  }
RVP_LAYER_EXPORTS(8u, Rvp8u, 1)
RVP_LAYER_EXPORTS(8u, Rvp8u, 3)
RVP_LAYER_EXPORTS(16u, Rvp16u, 1)
RVP_LAYER_EXPORTS(16u, Rvp16u, 3)
RVP_LAYER_EXPORTS(32f, Rvp32f, 1)
RVP_LAYER_EXPORTS(32f, Rvp32f, 3)
#undef RVP_LAYER_EXPORTS
