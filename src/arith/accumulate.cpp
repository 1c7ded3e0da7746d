// Accumulation (Add, AddSquare, AddProduct, AddWeighted) and absolute differences.
#include <type_traits>

#include "arith/accumulate_kernels.h"
#include "core/checks.h"
#include "core/image.h"
#include "rvpcv.h"

namespace rvp::arith {
namespace {

// One driver for every accumulation member. Absent images (src2 outside AddProduct, the mask
// outside the masked forms) are passed as null and never checked or read.
template <class S, AccOp Op, bool Masked>
RvpStatus accumulate(const S* src1, int src1Step, const S* src2, int src2Step,
                     const Rvp8u* mask, int maskStep, Rvp32f* acc, int accStep, RvpiSize roi,
                     Rvp32f alpha) {
  constexpr bool kTwoSources = Op == AccOp::Product;
  if (src1 == nullptr || (kTwoSources && src2 == nullptr) || (Masked && mask == nullptr) ||
      acc == nullptr)
    return rvpStsNullPtrErr;
  if (auto st = check_roi(roi)) return st;

  const StepRule r_src1 = image<S>(src1Step, roi);
  const StepRule r_src2 = kTwoSources ? image<S>(src2Step, roi) : kNoImage;
  const StepRule r_mask = Masked ? mask_image(maskStep, roi) : kNoImage;
  const StepRule r_acc = image<Rvp32f>(accStep, roi);
  if constexpr (std::is_same_v<S, Rvp32f>) {
    // One element type: every step against its width first, then every step for evenness.
    if (auto st = check_steps({r_src1, r_src2, r_mask, r_acc})) return st;
  } else {
    if (auto st = check_steps({r_src1, r_src2})) return st;
    if (auto st = check_steps({r_mask, r_acc})) return st;
  }

  const RvpiSize walk = packed_as_one_row(roi, {r_src1, r_src2, r_mask, r_acc});
  for (int y = 0; y < walk.height; ++y) {
    const AccumulateKernel<S, Op, Masked> k{
        row(src1, src1Step, y), kTwoSources ? row(src2, src2Step, y) : nullptr,
        Masked ? row(mask, maskStep, y) : nullptr, row(acc, accStep, y), alpha};
    simd::run_row(k, walk.width);
  }
  return rvpStsNoErr;
}

template <class T, bool Constant>
RvpStatus abs_diff_image(const T* src1, int src1Step, const T* src2, int src2Step, T* dst,
                   int dstStep, RvpiSize roi, int channels, T value) {
  if (src1 == nullptr || (!Constant && src2 == nullptr) || dst == nullptr)
    return rvpStsNullPtrErr;
  if (auto st = check_roi(roi)) return st;
  const StepRule r_src1 = image<T>(src1Step, roi, channels);
  const StepRule r_src2 = Constant ? kNoImage : image<T>(src2Step, roi, channels);
  const StepRule r_dst = image<T>(dstStep, roi, channels);
  if (auto st = check_steps({r_src1, r_src2, r_dst})) return st;

  // Channels are independent: a row of width x channels elements.
  const RvpiSize walk = packed_as_one_row({roi.width * channels, roi.height}, {r_src1, r_src2, r_dst});
  const int n = walk.width;
  for (int y = 0; y < walk.height; ++y) {
    const AbsDiffKernel<T, Constant> k{row(src1, src1Step, y),
                                       Constant ? nullptr : row(src2, src2Step, y),
                                       row(dst, dstStep, y), value};
    simd::run_row(k, n);
  }
  return rvpStsNoErr;
}

}  // namespace
}  // namespace rvp::arith

using rvp::arith::AccOp;
using rvp::arith::accumulate;

// ---- exports: one line each, forwarding to the drivers -------------------------------------

#define RVP_ACC_EXPORTS(t, S)                                                                   \
  RvpStatus rvpiAdd_##t##_C1IMR(const S* pSrc, int srcStep, const Rvp8u* pMask, int maskStep,  \
                                Rvp32f* pSrcDst, int srcDstStep, RvpiSize roiSize) {            \
    return accumulate<S, AccOp::Add, true>(pSrc, srcStep, nullptr, 0, pMask, maskStep, pSrcDst, \
                                           srcDstStep, roiSize, 0.0f);                          \
  }                                                                                             \
  RvpStatus rvpiAddSquare_##t##_C1IR(const S* pSrc, int srcStep, Rvp32f* pSrcDst,               \
                                     int srcDstStep, RvpiSize roiSize) {                        \
    return accumulate<S, AccOp::Square, false>(pSrc, srcStep, nullptr, 0, nullptr, 0, pSrcDst,  \
                                               srcDstStep, roiSize, 0.0f);                      \
  }                                                                                             \
  RvpStatus rvpiAddSquare_##t##_C1IMR(const S* pSrc, int srcStep, const Rvp8u* pMask,           \
                                      int maskStep, Rvp32f* pSrcDst, int srcDstStep,            \
                                      RvpiSize roiSize) {                                       \
    return accumulate<S, AccOp::Square, true>(pSrc, srcStep, nullptr, 0, pMask, maskStep,       \
                                              pSrcDst, srcDstStep, roiSize, 0.0f);              \
  }                                                                                             \
  RvpStatus rvpiAddProduct_##t##_C1IR(const S* pSrc1, int src1Step, const S* pSrc2,             \
                                      int src2Step, Rvp32f* pSrcDst, int srcDstStep,            \
                                      RvpiSize roiSize) {                                       \
    return accumulate<S, AccOp::Product, false>(pSrc1, src1Step, pSrc2, src2Step, nullptr, 0,   \
                                                pSrcDst, srcDstStep, roiSize, 0.0f);            \
  }                                                                                             \
  RvpStatus rvpiAddProduct_##t##_C1IMR(const S* pSrc1, int src1Step, const S* pSrc2,            \
                                       int src2Step, const Rvp8u* pMask, int maskStep,          \
                                       Rvp32f* pSrcDst, int srcDstStep, RvpiSize roiSize) {     \
    return accumulate<S, AccOp::Product, true>(pSrc1, src1Step, pSrc2, src2Step, pMask,         \
                                               maskStep, pSrcDst, srcDstStep, roiSize, 0.0f);   \
  }                                                                                             \
  RvpStatus rvpiAddWeighted_##t##_C1IR(const S* pSrc, int srcStep, Rvp32f* pSrcDst,             \
                                       int srcDstStep, RvpiSize roiSize, Rvp32f alpha) {        \
    return accumulate<S, AccOp::Weighted, false>(pSrc, srcStep, nullptr, 0, nullptr, 0,        \
                                                 pSrcDst, srcDstStep, roiSize, alpha);          \
  }                                                                                             \
  RvpStatus rvpiAddWeighted_##t##_C1IMR(const S* pSrc, int srcStep, const Rvp8u* pMask,         \
                                        int maskStep, Rvp32f* pSrcDst, int srcDstStep,          \
                                        RvpiSize roiSize, Rvp32f alpha) {                       \
    return accumulate<S, AccOp::Weighted, true>(pSrc, srcStep, nullptr, 0, pMask, maskStep,     \
                                                pSrcDst, srcDstStep, roiSize, alpha);           \
  }

RVP_ACC_EXPORTS(8u32f, Rvp8u)
RVP_ACC_EXPORTS(8s32f, Rvp8s)
RVP_ACC_EXPORTS(16u32f, Rvp16u)
RVP_ACC_EXPORTS(32f, Rvp32f)
#undef RVP_ACC_EXPORTS

#define RVP_ADD_EXPORT(t, S)                                                                    \
  RvpStatus rvpiAdd_##t##_C1IR(const S* pSrc, int srcStep, Rvp32f* pSrcDst, int srcDstStep,    \
                               RvpiSize roiSize) {                                              \
    return accumulate<S, AccOp::Add, false>(pSrc, srcStep, nullptr, 0, nullptr, 0, pSrcDst,     \
                                            srcDstStep, roiSize, 0.0f);                         \
  }
RVP_ADD_EXPORT(8u32f, Rvp8u)
RVP_ADD_EXPORT(8s32f, Rvp8s)
RVP_ADD_EXPORT(16u32f, Rvp16u)
#undef RVP_ADD_EXPORT

RvpStatus rvpiAddWeighted_32f_C1R(const Rvp32f* pSrc1, int src1Step, const Rvp32f* pSrc2,
                                  int src2Step, Rvp32f* pDst, int dstStep, RvpiSize roiSize,
                                  Rvp32f alpha) {
  using namespace rvp;
  if (auto st = any_null(pSrc1, pSrc2, pDst)) return st;
  if (auto st = check_roi(roiSize)) return st;
  const StepRule r1 = image<Rvp32f>(src1Step, roiSize), r2 = image<Rvp32f>(src2Step, roiSize),
                 rd = image<Rvp32f>(dstStep, roiSize);
  if (auto st = check_steps({r1, r2, rd})) return st;
  const RvpiSize walk = packed_as_one_row(roiSize, {r1, r2, rd});
  for (int y = 0; y < walk.height; ++y) {
    const arith::WeightedSumKernel k{row(pSrc1, src1Step, y), row(pSrc2, src2Step, y),
                                     row(pDst, dstStep, y), alpha};
    simd::run_row(k, walk.width);
  }
  return rvpStsNoErr;
}

using rvp::arith::abs_diff_image;

RvpStatus rvpiAbsDiff_8u_C1R(const Rvp8u* pSrc1, int src1Step, const Rvp8u* pSrc2, int src2Step,
                             Rvp8u* pDst, int dstStep, RvpiSize roiSize) {
  return abs_diff_image<Rvp8u, false>(pSrc1, src1Step, pSrc2, src2Step, pDst, dstStep, roiSize, 1, 0);
}
RvpStatus rvpiAbsDiff_8u_C3R(const Rvp8u* pSrc1, int src1Step, const Rvp8u* pSrc2, int src2Step,
                             Rvp8u* pDst, int dstStep, RvpiSize roiSize) {
  return abs_diff_image<Rvp8u, false>(pSrc1, src1Step, pSrc2, src2Step, pDst, dstStep, roiSize, 3, 0);
}
RvpStatus rvpiAbsDiff_16u_C1R(const Rvp16u* pSrc1, int src1Step, const Rvp16u* pSrc2,
                              int src2Step, Rvp16u* pDst, int dstStep, RvpiSize roiSize) {
  return abs_diff_image<Rvp16u, false>(pSrc1, src1Step, pSrc2, src2Step, pDst, dstStep, roiSize, 1, 0);
}
RvpStatus rvpiAbsDiff_32f_C1R(const Rvp32f* pSrc1, int src1Step, const Rvp32f* pSrc2,
                              int src2Step, Rvp32f* pDst, int dstStep, RvpiSize roiSize) {
  return abs_diff_image<Rvp32f, false>(pSrc1, src1Step, pSrc2, src2Step, pDst, dstStep, roiSize, 1, 0);
}

// The integer constants are clamped into the type's range after the checks: out of range is not
// an error, -5 acts as 0 and 300 as 255.
RvpStatus rvpiAbsDiffC_8u_C1R(const Rvp8u* pSrc, int srcStep, Rvp8u* pDst, int dstStep,
                              RvpiSize roiSize, Rvp32s value) {
  return abs_diff_image<Rvp8u, true>(pSrc, srcStep, nullptr, 0, pDst, dstStep, roiSize, 1,
                               rvp::clamp_to<Rvp8u>(value, 0, 255));
}
RvpStatus rvpiAbsDiffC_16u_C1R(const Rvp16u* pSrc, int srcStep, Rvp16u* pDst, int dstStep,
                               RvpiSize roiSize, Rvp32s value) {
  return abs_diff_image<Rvp16u, true>(pSrc, srcStep, nullptr, 0, pDst, dstStep, roiSize, 1,
                                rvp::clamp_to<Rvp16u>(value, 0, 65535));
}
RvpStatus rvpiAbsDiffC_32f_C1R(const Rvp32f* pSrc, int srcStep, Rvp32f* pDst, int dstStep,
                               RvpiSize roiSize, Rvp32f value) {
  return abs_diff_image<Rvp32f, true>(pSrc, srcStep, nullptr, 0, pDst, dstStep, roiSize, 1, value);
}
