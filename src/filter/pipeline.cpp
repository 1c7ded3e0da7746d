// Row and column halves of a separable filter, driven by the caller one strip at a time.
#include <cstdlib>

#include "core/checks.h"
#include "core/image.h"
#include "core/scratch.h"
#include "filter/border.h"
#include "filter/pipeline_kernels.h"
#include "rvpcv.h"

namespace rvp::filter {
namespace {

template <class Tap>
bool sum_abs_below(const Tap* k, int K, double limit) {
  double s = 0;
  for (int i = 0; i < K; ++i) s += std::abs(static_cast<double>(k[i]));
  return s < limit;
}

template <PipeForm F, int KC, int CH, class S, class D, class Tap>
void row_pass(const S* src, int srcStep, D* const* dst, RvpiSize roi, const Tap* kernel, int Kr,
              int anchor, Border border, const S* value, float recip, bool exact, int32_t m) {
  const int K = KC > 0 ? KC : Kr;
  const int W = roi.width;
  const bool mem_l = border.in_mem(kLeft), mem_r = border.in_mem(kRight);
  const int x_in0 = anchor;                // first column whose taps all lie inside
  const int x_in1 = W - (K - 1 - anchor);  // one past the last such column
  const bool splits = F == PipeForm::S16 || F == PipeForm::U8S16;
  for (int y = 0; y < roi.height; ++y) {
    const S* s = row(src, srcStep, y);
    D* d = dst[y];
    for (int x = 0; x < W; ++x) {
      const bool round = !splits || row_column_rounds(x, W, anchor);
      if (x >= x_in0 && x < x_in1) {
        const S* p = s + ptrdiff_t(x - anchor) * CH;
        for (int c = 0; c < CH; ++c) {
          auto get = [p, c](int k) { return p[k * CH + c]; };
          d[x * CH + c] = row_value<F, S, D, Tap>(kernel, K, get, recip, exact, m, round);
        }
      } else {
        for (int c = 0; c < CH; ++c) {
          auto get = [&](int k) -> S {
            const int i = map_index(x + k - anchor, W, border.base, mem_l, mem_r);
            return i == kConstantIndex ? value[c] : s[ptrdiff_t(i) * CH + c];
          };
          d[x * CH + c] = row_value<F, S, D, Tap>(kernel, K, get, recip, exact, m, round);
        }
      }
    }
  }
}

template <PipeForm F, int CH, class S, class D, class Tap>
RvpStatus row_pipeline(const S* src, int srcStep, D* const* dst, RvpiSize roi, const Tap* kernel,
                       int K, int anchor, int borderType, const S* value, int divisor,
                       Rvp8u* buffer) {
  if (auto st = any_null(src, dst, kernel, buffer)) return st;
  if (auto st = check_roi(roi)) return st;
  for (int y = 0; y < roi.height; ++y)
    if (dst[y] == nullptr) return rvpStsNullPtrErr;
  if (CH == 3 && value == nullptr) return rvpStsNullPtrErr;
  if (K < 1) return rvpStsSizeErr;
  if (anchor < 0 || anchor >= K) return rvpStsAnchorErr;
  if (auto st = check_steps({image<S>(srcStep, roi, CH)})) return st;
  if (auto st = check_border(borderType, BorderFamily::Pipeline)) return st;
  if constexpr (F == PipeForm::U16) {
    if (divisor < 1) return rvpStsBadArgErr;
  } else if constexpr (F != PipeForm::F32) {
    if (divisor == 0) return rvpStsBadArgErr;
  }

  const Border border = resolve_border(borderType);
  const float recip = F == PipeForm::F32 ? 1.0f : 1.0f / static_cast<float>(divisor);
  const bool exact = sum_abs_below(kernel, K, 65535.0);
  const int32_t m = F == PipeForm::Low ? low_multiplier(divisor) : 0;
  switch (K) {
    case 3:
      row_pass<F, 3, CH>(src, srcStep, dst, roi, kernel, K, anchor, border, value, recip, exact, m);
      break;
    case 5:
      row_pass<F, 5, CH>(src, srcStep, dst, roi, kernel, K, anchor, border, value, recip, exact, m);
      break;
    default:
      row_pass<F, 0, CH>(src, srcStep, dst, roi, kernel, K, anchor, border, value, recip, exact, m);
  }
  return rvpStsNoErr;
}

template <PipeForm F, int CH, class S, class D, class Tap>
RvpStatus column_pipeline(const S* const* src, D* dst, int dstStep, RvpiSize roi, const Tap* kernel,
                          int K, int divisor, Rvp8u* buffer) {
  if (auto st = any_null(src, dst, kernel)) return st;
  if (auto st = check_roi(roi)) return st;
  for (int y = 0; y < roi.height + K - 1; ++y)
    if (src[y] == nullptr) return rvpStsNullPtrErr;
  if (K < 1) return rvpStsSizeErr;
  if (auto st = check_steps({image<D>(dstStep, roi, CH)})) return st;
  if (buffer == nullptr) return rvpStsNullPtrErr;
  if (F != PipeForm::F32 && divisor == 0) return rvpStsBadArgErr;

  // Taps scaled by the single-precision reciprocal, on the stack (the queried buffer of the
  // narrow-row forms is smaller than K floats for long kernels). Longer kernels scale each tap
  // as it is used, which gives the same values.
  const float recip = F == PipeForm::F32 ? 1.0f : 1.0f / static_cast<float>(divisor);
  constexpr int kMaxLocal = 256;
  float local[kMaxLocal];
  const float* scaled = nullptr;
  if (K <= kMaxLocal) {
    for (int k = 0; k < K; ++k) local[k] = static_cast<float>(kernel[k]) * recip;
    scaled = local;
  }
  const int32_t m = F == PipeForm::Low ? low_multiplier(divisor) : 0;
  const int n = roi.width * CH;
  for (int y = 0; y < roi.height; ++y) {
    D* d = row(dst, dstStep, y);
    const S* const* rows = src + y;
    switch (K) {
      case 3:
        column_row<3, F, S, D, Tap>(rows, d, n, kernel, scaled, recip, K, m);
        break;
      case 5:
        column_row<5, F, S, D, Tap>(rows, d, n, kernel, scaled, recip, K, m);
        break;
      default:
        column_row<0, F, S, D, Tap>(rows, d, n, kernel, scaled, recip, K, m);
    }
  }
  return rvpStsNoErr;
}

RvpStatus write_size(int* p, RvpiSize roi, int K, int64_t bytes) {
  if (p == nullptr) return rvpStsNullPtrErr;
  if (auto st = check_roi(roi)) return st;
  if (K < 1) return rvpStsSizeErr;
  if (bytes > INT32_MAX) return rvpStsSizeErr;
  *p = static_cast<int>(bytes);
  return rvpStsNoErr;
}

int64_t r4(int64_t v) { return round_up(v, 4); }
int64_t r8(int64_t v) { return round_up(v, 8); }

}  // namespace
}  // namespace rvp::filter

using rvp::filter::column_pipeline;
using rvp::filter::PipeForm;
using rvp::filter::row_pipeline;
using rvp::filter::write_size;

// ---- row filter ----------------------------------------------------------------------------

#define RVP_ROW_DIV(name, F, S, D, Tap)                                                            \
  RvpStatus rvpiFilterRowBorderPipeline_##name##_C1R(                                              \
      const S* pSrc, int srcStep, D** ppDst, RvpiSize roiSize, const Tap* pKernel, int kernelSize, \
      int xAnchor, RvpiBorderType borderType, S borderValue, int divisor, Rvp8u* pBuffer) {        \
    return row_pipeline<F, 1>(pSrc, srcStep, ppDst, roiSize, pKernel, kernelSize, xAnchor,         \
                              borderType, &borderValue, divisor, pBuffer);                         \
  }                                                                                                \
  RvpStatus rvpiFilterRowBorderPipeline_##name##_C3R(                                              \
      const S* pSrc, int srcStep, D** ppDst, RvpiSize roiSize, const Tap* pKernel, int kernelSize, \
      int xAnchor, RvpiBorderType borderType, const S borderValue[3], int divisor,                 \
      Rvp8u* pBuffer) {                                                                            \
    return row_pipeline<F, 3>(pSrc, srcStep, ppDst, roiSize, pKernel, kernelSize, xAnchor,         \
                              borderType, borderValue, divisor, pBuffer);                          \
  }

RVP_ROW_DIV(8u16s, PipeForm::U8S16, Rvp8u, Rvp16s, Rvp16s)
RVP_ROW_DIV(16s, PipeForm::S16, Rvp16s, Rvp16s, Rvp16s)
RVP_ROW_DIV(16u, PipeForm::U16, Rvp16u, Rvp16u, Rvp16s)
RVP_ROW_DIV(Low_16s, PipeForm::Low, Rvp16s, Rvp16s, Rvp16s)
#undef RVP_ROW_DIV

RvpStatus rvpiFilterRowBorderPipeline_32f_C1R(const Rvp32f* pSrc, int srcStep, Rvp32f** ppDst,
                                              RvpiSize roiSize, const Rvp32f* pKernel,
                                              int kernelSize, int xAnchor,
                                              RvpiBorderType borderType, Rvp32f borderValue,
                                              Rvp8u* pBuffer) {
  return row_pipeline<PipeForm::F32, 1>(pSrc, srcStep, ppDst, roiSize, pKernel, kernelSize, xAnchor,
                                        borderType, &borderValue, 1, pBuffer);
}
RvpStatus rvpiFilterRowBorderPipeline_32f_C3R(const Rvp32f* pSrc, int srcStep, Rvp32f** ppDst,
                                              RvpiSize roiSize, const Rvp32f* pKernel,
                                              int kernelSize, int xAnchor,
                                              RvpiBorderType borderType,
                                              const Rvp32f borderValue[3], Rvp8u* pBuffer) {
  return row_pipeline<PipeForm::F32, 3>(pSrc, srcStep, ppDst, roiSize, pKernel, kernelSize, xAnchor,
                                        borderType, borderValue, 1, pBuffer);
}

// ---- column filter -------------------------------------------------------------------------

#define RVP_COL(name, F, S, D, Tap, CH)                                                           \
  RvpStatus rvpiFilterColumnPipeline_##name(const S* const* ppSrc, D* pDst, int dstStep,          \
                                            RvpiSize roiSize, const Tap* pKernel, int kernelSize, \
                                            int divisor, Rvp8u* pBuffer) {                        \
    return column_pipeline<F, CH>(ppSrc, pDst, dstStep, roiSize, pKernel, kernelSize, divisor,    \
                                  pBuffer);                                                       \
  }

RVP_COL(16s_C1R, PipeForm::S16, Rvp16s, Rvp16s, Rvp16s, 1)
RVP_COL(16s_C3R, PipeForm::S16, Rvp16s, Rvp16s, Rvp16s, 3)
RVP_COL(16s8u_C1R, PipeForm::S16, Rvp16s, Rvp8u, Rvp16s, 1)
RVP_COL(16s8u_C3R, PipeForm::S16, Rvp16s, Rvp8u, Rvp16s, 3)
RVP_COL(16s8s_C1R, PipeForm::S16, Rvp16s, Rvp8s, Rvp16s, 1)
RVP_COL(16s8s_C3R, PipeForm::S16, Rvp16s, Rvp8s, Rvp16s, 3)
RVP_COL(16u_C1R, PipeForm::U16, Rvp16u, Rvp16u, Rvp16s, 1)
RVP_COL(16u_C3R, PipeForm::U16, Rvp16u, Rvp16u, Rvp16s, 3)
RVP_COL(Low_16s_C1R, PipeForm::Low, Rvp16s, Rvp16s, Rvp16s, 1)
RVP_COL(Low_16s_C3R, PipeForm::Low, Rvp16s, Rvp16s, Rvp16s, 3)
#undef RVP_COL

RvpStatus rvpiFilterColumnPipeline_32f_C1R(const Rvp32f* const* ppSrc, Rvp32f* pDst, int dstStep,
                                           RvpiSize roiSize, const Rvp32f* pKernel, int kernelSize,
                                           Rvp8u* pBuffer) {
  return column_pipeline<PipeForm::F32, 1>(ppSrc, pDst, dstStep, roiSize, pKernel, kernelSize, 1,
                                           pBuffer);
}
RvpStatus rvpiFilterColumnPipeline_32f_C3R(const Rvp32f* const* ppSrc, Rvp32f* pDst, int dstStep,
                                           RvpiSize roiSize, const Rvp32f* pKernel, int kernelSize,
                                           Rvp8u* pBuffer) {
  return column_pipeline<PipeForm::F32, 3>(ppSrc, pDst, dstStep, roiSize, pKernel, kernelSize, 1,
                                           pBuffer);
}

// ---- buffer sizes --------------------------------------------------------------------------

#define RVP_SIZE(fn, expr)                                           \
  RvpStatus fn(RvpiSize roiSize, int kernelSize, int* pBufferSize) { \
    const int64_t K = kernelSize, W = roiSize.width;                 \
    (void)W;                                                         \
    (void)K;                                                         \
    return write_size(pBufferSize, roiSize, kernelSize, (expr));     \
  }

using rvp::filter::r4;
using rvp::filter::r8;
RVP_SIZE(rvpiFilterRowBorderPipelineGetBufferSize_16s_C1R, 48 * K + 112)
RVP_SIZE(rvpiFilterRowBorderPipelineGetBufferSize_16s_C3R, 40 * K + 96)
RVP_SIZE(rvpiFilterRowBorderPipelineGetBufferSize_16u_C1R, 64 * K + 96)
RVP_SIZE(rvpiFilterRowBorderPipelineGetBufferSize_16u_C3R, 128 * K + 96)
RVP_SIZE(rvpiFilterRowBorderPipelineGetBufferSize_32f_C1R, 96 * K + 96)
RVP_SIZE(rvpiFilterRowBorderPipelineGetBufferSize_32f_C3R, 288 * K + 96)
RVP_SIZE(rvpiFilterRowBorderPipelineGetBufferSize_8u16s_C1R, 32 * (K + K / 4) + 2 * K + 66)
RVP_SIZE(rvpiFilterRowBorderPipelineGetBufferSize_8u16s_C3R, 60 * K + 144)
RVP_SIZE(rvpiFilterRowBorderPipelineGetBufferSize_Low_16s_C1R, 24 * K + 96)
RVP_SIZE(rvpiFilterRowBorderPipelineGetBufferSize_Low_16s_C3R, 208 * K + 96)
RVP_SIZE(rvpiFilterColumnPipelineGetBufferSize_16s_C1R, 12 * r4(W) + 64)
RVP_SIZE(rvpiFilterColumnPipelineGetBufferSize_16s8u_C1R, 12 * r4(W) + 64)
RVP_SIZE(rvpiFilterColumnPipelineGetBufferSize_16s8s_C1R, 12 * r4(W) + 64)
RVP_SIZE(rvpiFilterColumnPipelineGetBufferSize_16s_C3R, 36 * r4(W) + 64)
RVP_SIZE(rvpiFilterColumnPipelineGetBufferSize_16s8u_C3R, 36 * r4(W) + 64)
RVP_SIZE(rvpiFilterColumnPipelineGetBufferSize_16s8s_C3R, 36 * r4(W) + 64)
RVP_SIZE(rvpiFilterColumnPipelineGetBufferSize_16u_C1R, 4 * (2 * r4(W) + 8 * K) + 64)
RVP_SIZE(rvpiFilterColumnPipelineGetBufferSize_16u_C3R, 4 * (2 * r4(3 * W) + 8 * K) + 64)
RVP_SIZE(rvpiFilterColumnPipelineGetBufferSize_32f_C1R, 32 * K + 32)
RVP_SIZE(rvpiFilterColumnPipelineGetBufferSize_32f_C3R, 32 * K + 32)
RVP_SIZE(rvpiFilterColumnPipelineGetBufferSize_Low_16s_C1R, 12 * r8(W) + 64)
RVP_SIZE(rvpiFilterColumnPipelineGetBufferSize_Low_16s_C3R, 36 * r8(W) + 64)
#undef RVP_SIZE
