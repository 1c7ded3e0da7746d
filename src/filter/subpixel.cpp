// Sub-pixel copies (whole rectangle inside the caller's image, or crossing its edge) and
// sampling along digital lines.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <type_traits>

#include "core/checks.h"
#include "core/image.h"
#include "core/numeric.h"
#include "core/simd.h"
#include "filter/subpixel_kernels.h"
#include "rvpcv.h"

namespace rvp::subpix {
namespace {

// The fraction of a position, with its floor: the interpolation stays finite for any input.
inline float fraction(float d, float floor_value) {
  float f = d - std::trunc(d);
  if (f < 0.0f) f += 1.0f;
  return std::max(f, floor_value);
}
constexpr float kFloorX = 0.000001f;
constexpr float kFloorY = 0.000000001f;

inline Weights weights(float fx, float fy) {
  return {(1.0f - fy) * (1.0f - fx), fx * (1.0f - fy), fy * (1.0f - fx), fx * fy};
}

// Destination conversion of the Sfs member: v * 2^-sf in double, rounded half to even.
inline Rvp16u scaled(float v, int sf) {
  const double t = std::ldexp(static_cast<double>(v), -std::clamp(sf, -1024, 1024));
  return saturate<Rvp16u>(round_even(t));
}

template <class S, class D, bool Sfs>
RvpStatus copy(const S* src, int srcStep, D* dst, int dstStep, RvpiSize roi, float dx, float dy,
               int sf) {
  if (auto st = any_null(src, dst)) return st;
  if (auto st = check_roi(roi)) return st;
  if (auto st = check_steps({image<S>(srcStep, roi), image<D>(dstStep, roi)})) return st;
  const Weights w = weights(fraction(dx, kFloorX), fraction(dy, kFloorY));
  for (int y = 0; y < roi.height; ++y) {
    const S* r0 = row(src, srcStep, y);
    const S* r1 = row(src, srcStep, y + 1);
    D* d = row(dst, dstStep, y);
    if constexpr (Sfs) {
      for (int x = 0; x < roi.width; ++x)
        d[x] = scaled(CopyKernel<S, D>::interp(w, r0[x], r0[x + 1], r1[x], r1[x + 1]), sf);
    } else {
      simd::run_row(CopyKernel<S, D>{r0, r1, d, w}, roi.width);
    }
  }
  return rvpStsNoErr;
}

// Tap pair of one axis at position p: clamped indices, fraction, and whether clamping was needed.
struct Tap {
  int i0, i1;
  float f;
  bool inside;
};
inline Tap tap(float p, int n, float floor_value) {
  const float fl = std::floor(p);
  const int64_t i = static_cast<int64_t>(std::clamp(fl, -4.0e9f, 4.0e9f));
  Tap t;
  t.f = std::max(p - fl, floor_value);
  t.inside = i >= 0 && i + 1 <= n - 1;
  t.i0 = static_cast<int>(std::clamp<int64_t>(i, 0, n - 1));
  t.i1 = static_cast<int>(std::clamp<int64_t>(i + 1, 0, n - 1));
  return t;
}

template <class S, class D, bool Sfs>
RvpStatus intersect(const S* src, int srcStep, RvpiSize sroi, D* dst, int dstStep, RvpiSize droi,
                    RvpiPoint32f pt, RvpiPoint* pmin, RvpiPoint* pmax, int sf) {
  if (auto st = any_null(src, dst, pmin, pmax)) return st;
  if (auto st = check_roi(sroi)) return st;
  if (auto st = check_roi(droi)) return st;
  if (auto st = check_steps({image<S>(srcStep, sroi), image<D>(dstStep, droi)})) return st;
  if (!std::isfinite(pt.x) || !std::isfinite(pt.y)) return rvpStsBadArgErr;

  const float ox = pt.x - static_cast<float>(droi.width - 1) * 0.5f;
  const float oy = pt.y - static_cast<float>(droi.height - 1) * 0.5f;
  RvpiPoint lo{droi.width, droi.height}, hi{-1, -1};
  for (int x = 0; x < droi.width; ++x)
    if (tap(ox + static_cast<float>(x), sroi.width, kFloorX).inside) {
      lo.x = std::min(lo.x, x);
      hi.x = std::max(hi.x, x);
    }
  for (int y = 0; y < droi.height; ++y) {
    const Tap ty = tap(oy + static_cast<float>(y), sroi.height, kFloorY);
    if (ty.inside) {
      lo.y = std::min(lo.y, y);
      hi.y = std::max(hi.y, y);
    }
    const S* r0 = row(src, srcStep, ty.i0);
    const S* r1 = row(src, srcStep, ty.i1);
    D* d = row(dst, dstStep, y);
    for (int x = 0; x < droi.width; ++x) {
      const Tap tx = tap(ox + static_cast<float>(x), sroi.width, kFloorX);
      const float v =
          CopyKernel<S, D>::interp(weights(tx.f, ty.f), r0[tx.i0], r0[tx.i1], r1[tx.i0], r1[tx.i1]);
      if constexpr (Sfs)
        d[x] = scaled(v, sf);
      else if constexpr (std::is_same_v<D, Rvp32f>)
        d[x] = v;
      else
        d[x] = saturate<D>(round_even(v));
    }
  }
  if (hi.x < 0 || hi.y < 0) lo = {0, 0}, hi = {-1, -1};
  *pmin = lo;
  *pmax = hi;
  return rvpStsNoErr;
}

// round(a / b) for b > 0, halves away from zero, exactly.
inline int64_t div_round(int64_t a, int64_t b) {
  return a >= 0 ? (2 * a + b) / (2 * b) : -((-2 * a + b) / (2 * b));
}

template <class T, int C>
RvpStatus sample_line(const T* src, int srcStep, RvpiSize roi, T* dst, RvpiPoint p1, RvpiPoint p2) {
  if (auto st = any_null(src, dst)) return st;
  if (auto st = check_roi(roi)) return st;
  if (auto st = check_steps({image<T>(srcStep, roi, C)})) return st;
  auto in = [&](RvpiPoint p) {
    return p.x >= 0 && p.y >= 0 && p.x < roi.width && p.y < roi.height;
  };
  if (!in(p1) || !in(p2)) return rvpStsOutOfRangeErr;
  const int64_t dx = int64_t{p2.x} - p1.x, dy = int64_t{p2.y} - p1.y;
  const int64_t n = std::max(dx < 0 ? -dx : dx, dy < 0 ? -dy : dy);
  if (n + 1 > INT32_MAX) return rvpStsErr;
  for (int64_t i = 0; i <= n; ++i) {
    const int64_t x = n == 0 ? p1.x : p1.x + div_round(i * dx, n);
    const int64_t y = n == 0 ? p1.y : p1.y + div_round(i * dy, n);
    const T* s = row(src, srcStep, static_cast<int>(y)) + x * C;
    for (int c = 0; c < C; ++c) dst[i * C + c] = s[c];
  }
  return rvpStsNoErr;
}

}  // namespace
}  // namespace rvp::subpix

using rvp::subpix::copy;
using rvp::subpix::intersect;

#define RVP_SUBPIX_EXPORTS(t, S, D)                                                               \
  RvpStatus rvpiCopySubpix_##t##_C1R(const S* pSrc, int srcStep, D* pDst, int dstStep,            \
                                     RvpiSize roiSize, Rvp32f dx, Rvp32f dy) {                    \
    return copy<S, D, false>(pSrc, srcStep, pDst, dstStep, roiSize, dx, dy, 0);                   \
  }                                                                                               \
  RvpStatus rvpiCopySubpixIntersect_##t##_C1R(                                                    \
      const S* pSrc, int srcStep, RvpiSize srcRoiSize, D* pDst, int dstStep, RvpiSize dstRoiSize, \
      RvpiPoint32f point, RvpiPoint* pMin, RvpiPoint* pMax) {                                     \
    return intersect<S, D, false>(pSrc, srcStep, srcRoiSize, pDst, dstStep, dstRoiSize, point,    \
                                  pMin, pMax, 0);                                                 \
  }
RVP_SUBPIX_EXPORTS(8u, Rvp8u, Rvp8u)
RVP_SUBPIX_EXPORTS(8u32f, Rvp8u, Rvp32f)
RVP_SUBPIX_EXPORTS(16u, Rvp16u, Rvp16u)
RVP_SUBPIX_EXPORTS(16u32f, Rvp16u, Rvp32f)
RVP_SUBPIX_EXPORTS(32f, Rvp32f, Rvp32f)
#undef RVP_SUBPIX_EXPORTS

RvpStatus rvpiCopySubpix_8u16u_C1R_Sfs(const Rvp8u* pSrc, int srcStep, Rvp16u* pDst, int dstStep,
                                       RvpiSize roiSize, Rvp32f dx, Rvp32f dy, int scaleFactor) {
  return copy<Rvp8u, Rvp16u, true>(pSrc, srcStep, pDst, dstStep, roiSize, dx, dy, scaleFactor);
}
RvpStatus rvpiCopySubpixIntersect_8u16u_C1R_Sfs(const Rvp8u* pSrc, int srcStep, RvpiSize srcRoiSize,
                                                Rvp16u* pDst, int dstStep, RvpiSize dstRoiSize,
                                                RvpiPoint32f point, RvpiPoint* pMin,
                                                RvpiPoint* pMax, int scaleFactor) {
  return intersect<Rvp8u, Rvp16u, true>(pSrc, srcStep, srcRoiSize, pDst, dstStep, dstRoiSize, point,
                                        pMin, pMax, scaleFactor);
}

#define RVP_LINE_EXPORT(t, T, C)                                                                \
  RvpStatus rvpiSampleLine_##t##_C##C##R(const T* pSrc, int srcStep, RvpiSize roiSize, T* pDst, \
                                         RvpiPoint pt1, RvpiPoint pt2) {                        \
    return rvp::subpix::sample_line<T, C>(pSrc, srcStep, roiSize, pDst, pt1, pt2);              \
  }
RVP_LINE_EXPORT(8u, Rvp8u, 1)
RVP_LINE_EXPORT(8u, Rvp8u, 3)
RVP_LINE_EXPORT(16u, Rvp16u, 1)
RVP_LINE_EXPORT(16u, Rvp16u, 3)
RVP_LINE_EXPORT(32f, Rvp32f, 1)
RVP_LINE_EXPORT(32f, Rvp32f, 3)
#undef RVP_LINE_EXPORT
