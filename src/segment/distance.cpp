// Distance transforms: standard chamfer weights, the chamfer transforms with 3x3 and 5x5 masks
// the exact Euclidean transform and fast marching.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <type_traits>

#include "core/checks.h"
#include "core/image.h"
#include "core/scratch.h"
#include "rvpcv.h"
#include "segment/distance_kernels.h"

namespace rvp::segment {
namespace {

// Standard weights, in the order a, b, c.
constexpr float kWeights32f[2][3][3] = {
    {{1.0f, 1.0f, 0.0f}, {1.0f, 2.0f, 0.0f}, {0.955f, 1.3693f, 0.0f}},
    {{1.0f, 1.0f, 2.0f}, {1.0f, 2.0f, 3.0f}, {1.0f, 1.4f, 2.1969f}}};
constexpr Rvp32s kWeights32s[2][3][3] = {{{1, 1, 0}, {1, 2, 0}, {2, 3, 0}},
                                         {{1, 1, 2}, {1, 2, 3}, {5, 7, 11}}};

template <class M>
RvpStatus standard_mask(int kernelSize, int norm, M* metrics, const M (&table)[2][3][3]) {
  if (metrics == nullptr) return rvpStsNullPtrErr;
  if (kernelSize != 3 && kernelSize != 5) return rvpStsSizeErr;
  if (norm < 0 || norm > 2) return rvpStsBadArgErr;
  const int k = kernelSize == 5 ? 1 : 0;
  for (int i = 0; i < (k ? 3 : 2); ++i) metrics[i] = table[k][norm][i];
  return rvpStsNoErr;
}

// Integer weights must be at least 1; float weights positive and finite.
inline bool bad_weight(Rvp32s w) { return w < 1; }
inline bool bad_weight(Rvp32f w) { return !(w > 0.0f) || std::isinf(w); }

// The knight step can never beat a path of straight and diagonal steps when this holds, and
// the 3x3 mask then gives the same distances at less cost.
inline bool knight_never_wins(Rvp32s a, Rvp32s b, Rvp32s c) {
  return int64_t{c} >= int64_t{a} + std::min(2 * int64_t{a}, int64_t{b});
}
inline bool knight_never_wins(Rvp32f a, Rvp32f b, Rvp32f c) {
  return c >= a + std::min(2.0f * a, b);
}

template <class T, class M>
DistValue<T> to_value(M w) {
  if constexpr (std::is_same_v<T, Rvp32f>)
    return w;
  else  // a sum never exceeds the maximum, so a larger weight acts as the maximum
    return static_cast<uint32_t>(std::min<int64_t>(w, dist_max<T>()));
}

// One driver for every chamfer member: `src == dst` for the in-place form.
template <class T, bool Five, bool InPlace>
RvpStatus chamfer(const Rvp8u* src, int srcStep, T* dst, int dstStep, RvpiSize roi,
                  const std::conditional_t<std::is_same_v<T, Rvp32f>, Rvp32f, Rvp32s>* metrics) {
  if (auto st = any_null(src, dst, metrics)) return st;
  if (auto st = check_roi(roi)) return st;
  if constexpr (InPlace) {
    if (auto st = check_steps({image<Rvp8u>(srcStep, roi)})) return st;
  } else if constexpr (std::is_same_v<T, Rvp8u>) {
    if (auto st = check_steps({image<Rvp8u>(srcStep, roi), image<T>(dstStep, roi)})) return st;
  } else {
    if (auto st = check_steps({image<Rvp8u>(srcStep, roi)})) return st;
    if (auto st = check_steps({image<T>(dstStep, roi)})) return st;
  }
  const int n_weights = Five ? 3 : 2;
  for (int i = 0; i < n_weights; ++i)
    if (bad_weight(metrics[i])) return rvpStsMetricErr;

  const bool five = Five && !knight_never_wins(metrics[0], metrics[1], metrics[2]);
  const ChamferWeights<T> w{to_value<T>(metrics[0]), to_value<T>(metrics[1]),
                            five ? to_value<T>(metrics[2]) : DistValue<T>(0), five};
  chamfer_rows(src, srcStep, dst, dstStep, roi.width, roi.height, w);
  return rvpStsNoErr;
}

int64_t true_distance_buffer_bytes(RvpiSize roi) {
  const int64_t n = std::max(round_up(roi.width, 4), round_up(roi.height, 4));
  return 24 * n + 56;
}

RvpStatus true_distance(const Rvp8u* src, int srcStep, Rvp32f* dst, int dstStep, RvpiSize roi,
                        Rvp8u* buffer) {
  if (auto st = any_null(src, dst, buffer)) return st;
  if (auto st = check_roi(roi)) return st;
  if (auto st = check_steps({image<Rvp8u>(srcStep, roi)})) return st;
  if (auto st = check_steps({image<Rvp32f>(dstStep, roi)})) return st;
  if (true_distance_buffer_bytes(roi) > INT32_MAX) return rvpStsSizeErr;

  const int w = roi.width, h = roi.height;
  for (int y = 0; y < h; ++y)
    avx2::column_down_row(row(src, srcStep, y), y ? row(dst, dstStep, y - 1) : nullptr,
                          row(dst, dstStep, y), w);
  for (int y = h - 2; y >= 0; --y)
    avx2::column_up_row(row(dst, dstStep, y + 1), row(dst, dstStep, y), w);

  // Carved by hand rather than in 32-byte sub-buffers: the buffer holds six 32-bit words per
  // pixel of the longer side, and the row pass needs five (two doubles and an int).
  ScratchCarver carve(buffer);
  EnvelopeScratch s;
  s.f = carve.take<double>(0);
  s.z = s.f + w;
  s.v = reinterpret_cast<int*>(s.z + w + 1);
  for (int y = 0; y < h; ++y) envelope_row(row(dst, dstStep, y), w, s);
  return rvpStsNoErr;
}

RvpStatus fast_marching(const Rvp8u* src, int srcStep, Rvp32f* dst, int dstStep, RvpiSize roi,
                        Rvp32f radius, Rvp8u* buffer) {
  if (auto st = any_null(src, dst, buffer)) return st;
  if (auto st = check_roi(roi)) return st;
  if (auto st = check_steps({image<Rvp8u>(srcStep, roi)})) return st;
  if (auto st = check_steps({image<Rvp32f>(dstStep, roi)})) return st;
  if (FastMarcher::buffer_bytes(roi) > INT32_MAX) return rvpStsSizeErr;
  if (!(radius >= 0.0f)) return rvpStsBadArgErr;  // negative or NaN
  FastMarcher(dst, dstStep, roi, buffer).run(src, srcStep, radius);
  return rvpStsNoErr;
}

}  // namespace
}  // namespace rvp::segment

using rvp::segment::chamfer;

RvpStatus rvpiGetDistanceTransformMask_32f(int kernelSize, int norm, Rvp32f* pMetrics) {
  return rvp::segment::standard_mask(kernelSize, norm, pMetrics, rvp::segment::kWeights32f);
}
RvpStatus rvpiGetDistanceTransformMask_32s(int kernelSize, int norm, Rvp32s* pMetrics) {
  return rvp::segment::standard_mask(kernelSize, norm, pMetrics, rvp::segment::kWeights32s);
}
RvpStatus rvpiGetDistanceTransformMask(int maskType, Rvp32f* pMetrics) {
  const int norm = maskType % 10;  // negative codes give a negative remainder: refused here
  if (norm < 0 || norm > 2) return rvpStsBadArgErr;
  return rvpiGetDistanceTransformMask_32f(maskType / 10, norm, pMetrics);
}

RvpStatus rvpiDistanceTransform_3x3_8u_C1R(const Rvp8u* pSrc, int srcStep, Rvp8u* pDst, int dstStep,
                                           RvpiSize roiSize, const Rvp32s* pMetrics) {
  return chamfer<Rvp8u, false, false>(pSrc, srcStep, pDst, dstStep, roiSize, pMetrics);
}
RvpStatus rvpiDistanceTransform_5x5_8u_C1R(const Rvp8u* pSrc, int srcStep, Rvp8u* pDst, int dstStep,
                                           RvpiSize roiSize, const Rvp32s* pMetrics) {
  return chamfer<Rvp8u, true, false>(pSrc, srcStep, pDst, dstStep, roiSize, pMetrics);
}
RvpStatus rvpiDistanceTransform_3x3_8u_C1IR(Rvp8u* pSrcDst, int srcDstStep, RvpiSize roiSize,
                                            const Rvp32s* pMetrics) {
  return chamfer<Rvp8u, false, true>(pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize, pMetrics);
}
RvpStatus rvpiDistanceTransform_5x5_8u_C1IR(Rvp8u* pSrcDst, int srcDstStep, RvpiSize roiSize,
                                            const Rvp32s* pMetrics) {
  return chamfer<Rvp8u, true, true>(pSrcDst, srcDstStep, pSrcDst, srcDstStep, roiSize, pMetrics);
}
RvpStatus rvpiDistanceTransform_3x3_8u16u_C1R(const Rvp8u* pSrc, int srcStep, Rvp16u* pDst,
                                              int dstStep, RvpiSize roiSize,
                                              const Rvp32s* pMetrics) {
  return chamfer<Rvp16u, false, false>(pSrc, srcStep, pDst, dstStep, roiSize, pMetrics);
}
RvpStatus rvpiDistanceTransform_5x5_8u16u_C1R(const Rvp8u* pSrc, int srcStep, Rvp16u* pDst,
                                              int dstStep, RvpiSize roiSize,
                                              const Rvp32s* pMetrics) {
  return chamfer<Rvp16u, true, false>(pSrc, srcStep, pDst, dstStep, roiSize, pMetrics);
}
RvpStatus rvpiDistanceTransform_3x3_8u32f_C1R(const Rvp8u* pSrc, int srcStep, Rvp32f* pDst,
                                              int dstStep, RvpiSize roiSize,
                                              const Rvp32f* pMetrics) {
  return chamfer<Rvp32f, false, false>(pSrc, srcStep, pDst, dstStep, roiSize, pMetrics);
}
RvpStatus rvpiDistanceTransform_5x5_8u32f_C1R(const Rvp8u* pSrc, int srcStep, Rvp32f* pDst,
                                              int dstStep, RvpiSize roiSize,
                                              const Rvp32f* pMetrics) {
  return chamfer<Rvp32f, true, false>(pSrc, srcStep, pDst, dstStep, roiSize, pMetrics);
}

RvpStatus rvpiTrueDistanceTransformGetBufferSize_8u32f_C1R(RvpiSize roiSize, int* pBufferSize) {
  if (pBufferSize == nullptr) return rvpStsNullPtrErr;
  if (auto st = rvp::check_roi(roiSize)) return st;
  const int64_t bytes = rvp::segment::true_distance_buffer_bytes(roiSize);
  if (bytes > INT32_MAX) return rvpStsSizeErr;
  *pBufferSize = static_cast<int>(bytes);
  return rvpStsNoErr;
}
RvpStatus rvpiTrueDistanceTransform_8u32f_C1R(const Rvp8u* pSrc, int srcStep, Rvp32f* pDst,
                                              int dstStep, RvpiSize roiSize, Rvp8u* pBuffer) {
  return rvp::segment::true_distance(pSrc, srcStep, pDst, dstStep, roiSize, pBuffer);
}

RvpStatus rvpiFastMarchingGetBufferSize_8u32f_C1R(RvpiSize roiSize, int* pBufferSize) {
  if (pBufferSize == nullptr) return rvpStsNullPtrErr;
  if (auto st = rvp::check_roi(roiSize)) return st;
  const int64_t bytes = rvp::segment::FastMarcher::buffer_bytes(roiSize);
  if (bytes > INT32_MAX) return rvpStsSizeErr;
  *pBufferSize = static_cast<int>(bytes);
  return rvpStsNoErr;
}
RvpStatus rvpiFastMarching_8u32f_C1R(const Rvp8u* pSrc, int srcStep, Rvp32f* pDst, int dstStep,
                                     RvpiSize roiSize, Rvp32f radius, Rvp8u* pBuffer) {
  return rvp::segment::fast_marching(pSrc, srcStep, pDst, dstStep, roiSize, radius, pBuffer);
}
