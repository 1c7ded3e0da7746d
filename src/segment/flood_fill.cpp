// Flood fills: plain, range and gradient rules, 4- and 8-connected, with their size queries.
#include <limits>
#include <type_traits>

#include "core/checks.h"
#include "rvpcv.h"
#include "segment/flood_fill_core.h"

namespace rvp::seg {
namespace {

enum class Rule { Plain, Range, Grad };

template <class T>
constexpr T type_max() {
  return std::numeric_limits<T>::max();
}

void write_region(RvpiConnectedComp* reg, const FillStats& fs, const double (&value)[3]) {
  reg->area = static_cast<Rvp64f>(fs.area);
  for (int c = 0; c < 3; ++c) reg->value[c] = value[c];
  reg->rect = {fs.x0, fs.y0, fs.x1 - fs.x0 + 1, fs.y1 - fs.y0 + 1};
}

// One driver for every member. For one-channel members the scalar arguments arrive as pointers
// to the caller's by-value copies, so the null checks only bite for three-channel members.
template <class T, int C, Rule R, bool Conn8>
RvpStatus flood_fill(T* img, int step, RvpiSize roi, RvpiPoint seed, const T* nv, const T* min_d,
                     const T* max_d, RvpiConnectedComp* reg, Rvp8u* buf) {
  if (img == nullptr || nv == nullptr ||
      (R != Rule::Plain && (min_d == nullptr || max_d == nullptr)) || reg == nullptr ||
      buf == nullptr)
    return rvpStsNullPtrErr;
  if (auto st = check_roi(roi)) return st;
  if (R == Rule::Grad && grad_buffer_bytes(roi) < 0) return rvpStsSizeErr;
  if (auto st = check_steps({image<T>(step, roi, C)})) return st;
  if (seed.x < 0 || seed.y < 0 || seed.x >= roi.width || seed.y >= roi.height)
    return rvpStsOutOfRangeErr;

  const int w = roi.width, h = roi.height;
  T* seed_px =
      reinterpret_cast<T*>(reinterpret_cast<uint8_t*>(img) + std::ptrdiff_t(step) * seed.y) +
      seed.x * C;
  double value[3] = {0, 0, 0};
  for (int c = 0; c < C; ++c) value[c] = static_cast<double>(nv[c]);
  FillStats fs;
  SpanEntry local[kLocalSpans];

  if constexpr (R == Rule::Grad) {
    GradAccept<T, C> ok;
    for (int c = 0; c < C; ++c) ok.lo_d[c] = min_d[c], ok.hi_d[c] = max_d[c];
    const int64_t mask_bytes = (int64_t(w) + 2) * (int64_t(h) + 2);
    VisitMask::init(buf, w, h);
    const VisitMask vm{buf, int64_t(w) + 2};
    const StackStorage s =
        carve_stack(buf + mask_bytes, grad_buffer_bytes(roi) - mask_bytes, local);
    SpanStack stack(s.base, s.fit, 0);
    gradient_fill<T, C>(img, step, w, h, seed.x, seed.y, Conn8, ok, vm, stack, fs);
    for (int y = fs.y0; y <= fs.y1; ++y) {
      T* r = reinterpret_cast<T*>(reinterpret_cast<uint8_t*>(img) + std::ptrdiff_t(step) * y);
      const uint8_t* m = vm.at(0, y);
      for (int x = fs.x0; x <= fs.x1; ++x)
        if (m[x]) put_pixel<T, C>(r + x * C, nv);
    }
  } else {
    if (same_pixel<T, C>(seed_px, nv)) return rvpStsNoErr;  // deliberate: nothing to do
    const StackStorage s = carve_stack(buf, fill_buffer_bytes(roi), local);
    if constexpr (R == Rule::Plain) {
      PlainAccept<T, C> ok;
      for (int c = 0; c < C; ++c) ok.v[c] = seed_px[c];
      SpanStack stack(s.base, s.fit, 0);
      value_fill<T, C>(img, step, w, h, seed.x, seed.y, Conn8, ok, nv, stack, fs);
    } else {
      RangeAccept<T, C> ok;
      for (int c = 0; c < C; ++c) {
        const T v = seed_px[c];
        if constexpr (std::is_floating_point_v<T>) {
          ok.lo[c] = v - min_d[c];
          ok.hi[c] = v + max_d[c];
        } else {
          const int32_t lo = int32_t(v) - int32_t(min_d[c]);
          const int32_t hi = int32_t(v) + int32_t(max_d[c]);
          ok.lo[c] = static_cast<T>(lo < 0 ? 0 : lo);
          ok.hi[c] = static_cast<T>(hi > int32_t(type_max<T>()) ? int32_t(type_max<T>()) : hi);
        }
        ok.nv[c] = nv[c];
      }
      SpanStack stack(s.base, s.fit, int64_t(w) * h / 4);
      value_fill<T, C>(img, step, w, h, seed.x, seed.y, Conn8, ok, nv, stack, fs);
    }
  }
  write_region(reg, fs, value);
  return rvpStsNoErr;
}

}  // namespace
}  // namespace rvp::seg

using rvp::seg::flood_fill;
using rvp::seg::Rule;

RvpStatus rvpiFloodFillGetSize(RvpiSize roiSize, int* pBufferSize) {
  if (pBufferSize == nullptr) return rvpStsNullPtrErr;
  if (auto st = rvp::check_roi(roiSize)) return st;
  *pBufferSize = rvp::seg::fill_buffer_bytes(roiSize);
  return rvpStsNoErr;
}

RvpStatus rvpiFloodFillGetSize_Grad(RvpiSize roiSize, int* pBufferSize) {
  if (pBufferSize == nullptr) return rvpStsNullPtrErr;
  if (auto st = rvp::check_roi(roiSize)) return st;
  const int64_t bytes = rvp::seg::grad_buffer_bytes(roiSize);
  if (bytes < 0) return rvpStsSizeErr;
  *pBufferSize = static_cast<int>(bytes);
  return rvpStsNoErr;
}

// ---- exports: one line each, forwarding to the driver --------------------------------------

#define RVP_FILL_PLAIN(op, conn8, t, T)                                                           \
  RvpStatus rvpiFloodFill_##op##_##t##_C1IR(T* pImage, int imageStep, RvpiSize roiSize,           \
                                            RvpiPoint seed, T newVal, RvpiConnectedComp* pRegion, \
                                            Rvp8u* pBuffer) {                                     \
    return flood_fill<T, 1, Rule::Plain, conn8>(pImage, imageStep, roiSize, seed, &newVal,        \
                                                nullptr, nullptr, pRegion, pBuffer);              \
  }
#define RVP_FILL_PLAIN3(op, conn8, t, T)                                                           \
  RvpStatus rvpiFloodFill_##op##_##t##_C3IR(T* pImage, int imageStep, RvpiSize roiSize,            \
                                            RvpiPoint seed, const T* newVal,                       \
                                            RvpiConnectedComp* pRegion, Rvp8u* pBuffer) {          \
    return flood_fill<T, 3, Rule::Plain, conn8>(pImage, imageStep, roiSize, seed, newVal, nullptr, \
                                                nullptr, pRegion, pBuffer);                        \
  }
#define RVP_FILL_DELTA(op, rule, conn8, t, T)                                                  \
  RvpStatus rvpiFloodFill_##op##_##t##_C1IR(T* pImage, int imageStep, RvpiSize roiSize,        \
                                            RvpiPoint seed, T newVal, T minDelta, T maxDelta,  \
                                            RvpiConnectedComp* pRegion, Rvp8u* pBuffer) {      \
    return flood_fill<T, 1, rule, conn8>(pImage, imageStep, roiSize, seed, &newVal, &minDelta, \
                                         &maxDelta, pRegion, pBuffer);                         \
  }                                                                                            \
  RvpStatus rvpiFloodFill_##op##_##t##_C3IR(                                                   \
      T* pImage, int imageStep, RvpiSize roiSize, RvpiPoint seed, const T* newVal,             \
      const T* minDelta, const T* maxDelta, RvpiConnectedComp* pRegion, Rvp8u* pBuffer) {      \
    return flood_fill<T, 3, rule, conn8>(pImage, imageStep, roiSize, seed, newVal, minDelta,   \
                                         maxDelta, pRegion, pBuffer);                          \
  }

#define RVP_FILL_PLAIN_ALL(op, conn8)     \
  RVP_FILL_PLAIN(op, conn8, 8u, Rvp8u)    \
  RVP_FILL_PLAIN3(op, conn8, 8u, Rvp8u)   \
  RVP_FILL_PLAIN(op, conn8, 16u, Rvp16u)  \
  RVP_FILL_PLAIN3(op, conn8, 16u, Rvp16u) \
  RVP_FILL_PLAIN(op, conn8, 32s, Rvp32s)  \
  RVP_FILL_PLAIN(op, conn8, 32f, Rvp32f)  \
  RVP_FILL_PLAIN3(op, conn8, 32f, Rvp32f)
#define RVP_FILL_DELTA_ALL(op, rule, conn8)    \
  RVP_FILL_DELTA(op, rule, conn8, 8u, Rvp8u)   \
  RVP_FILL_DELTA(op, rule, conn8, 16u, Rvp16u) \
  RVP_FILL_DELTA(op, rule, conn8, 32f, Rvp32f)

RVP_FILL_PLAIN_ALL(4Con, false)
RVP_FILL_PLAIN_ALL(8Con, true)
RVP_FILL_DELTA_ALL(Range4Con, Rule::Range, false)
RVP_FILL_DELTA_ALL(Range8Con, Rule::Range, true)
RVP_FILL_DELTA_ALL(Grad4Con, Rule::Grad, false)
RVP_FILL_DELTA_ALL(Grad8Con, Rule::Grad, true)
