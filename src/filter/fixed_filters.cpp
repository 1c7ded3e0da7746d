// Sobel, Scharr, Laplacian and Lowpass filters with border: a row pass and a column pass over
// the bordered source (the kernels of fixed_filters.h, the arithmetic of sep_kernels.h).
#include "filter/fixed_filters.h"

#include <type_traits>

#include "core/checks.h"
#include "core/image.h"
#include "core/scratch.h"
#include "filter/border.h"
#include "filter/sep_engine.h"
#include "filter/sep_kernels.h"
#include "rvpcv.h"

namespace rvp::filter {
namespace {

// Intermediate type: 16-bit for 8-bit sources (every row factor keeps 255·Σ|h| below 2^15).
template <class S>
using Inter = std::conditional_t<std::is_same_v<S, Rvp32f>, Rvp32f, Rvp16s>;

RvpStatus mask_kind(int mask, bool* five) {
  if (mask != 33 && mask != 55) return rvpStsMaskSizeErr;
  *five = mask == 55;
  return rvpStsNoErr;
}

template <class S>
int64_t fixed_buffer_bytes(RvpiSize roi, Fixed f, bool five) {
  const FixedKernel k = fixed_kernel(f, five);
  return sep_buffer_bytes<S, Inter<S>>(roi, k.K, k.terms, 1);
}

template <class S>
RvpStatus fixed_size(Fixed f, RvpiSize roi, int mask, int* size) {
  if (size == nullptr) return rvpStsNullPtrErr;
  if (auto st = check_roi(roi)) return st;
  bool five = false;
  if (auto st = mask_kind(mask, &five)) return st;
  const int64_t bytes = fixed_buffer_bytes<S>(roi, f, five);
  if (bytes < 0) return rvpStsSizeErr;
  *size = static_cast<int>(bytes);
  return rvpStsNoErr;
}

template <class S, class D>
RvpStatus fixed_filter(Fixed f, const S* src, int srcStep, D* dst, int dstStep, RvpiSize roi,
                       int mask, int borderType, S borderValue, Rvp8u* buffer) {
  if (auto st = any_null(src, dst, buffer)) return st;
  if (auto st = check_roi(roi)) return st;
  if (auto st = check_steps({image<S>(srcStep, roi), image<D>(dstStep, roi)})) return st;
  if (auto st = check_border(borderType, BorderFamily::Derivative)) return st;
  bool five = false;
  if (auto st = mask_kind(mask, &five)) return st;

  const FixedKernel k = fixed_kernel(f, five);
  const int r = k.K / 2;
  const BorderedSource<S> bsrc(src, srcStep, roi, 1, resolve_border(borderType), &borderValue, r,
                               r);
  ScratchCarver carver(buffer);
  using I = Inter<S>;
  if constexpr (std::is_same_v<S, Rvp32f>) {
    float h[2][5], v[10];
    for (int t = 0; t < k.terms; ++t)
      for (int i = 0; i < k.K; ++i) {
        h[t][i] = k.h[t][i];
        v[t * k.K + i] = k.v[t][i];
      }
    const bool scaled = f == Fixed::Lowpass;
    const float scale = 1.0f / static_cast<float>(k.K * k.K);
    run_separable<S, I>(
        bsrc, roi, 1, k.K, k.terms, carver,
        [&](int t, const float* b, float* out, int n) { row_f32_avx2(b, out, n, h[t], k.K, 1); },
        [&](const float* const* rows, int y) {
          col_f32_avx2(rows, v, k.terms * k.K, roi.width, row(dst, dstStep, y), scaled, scale);
        });
  } else {
    int16_t v[10];
    for (int t = 0; t < k.terms; ++t)
      for (int i = 0; i < k.K; ++i) v[t * k.K + i] = k.v[t][i];
    const float scale = 1.0f / static_cast<float>(kernel_abs_sum(k));
    const int M = k.terms * k.K;
    run_separable<S, I>(
        bsrc, roi, 1, k.K, k.terms, carver,
        [&](int t, const Rvp8u* b, Rvp16s* out, int n) {
          if (k.K == 3)
            row_u8_s16w_avx2<3>(b, out, n, k.h[t]);
          else
            row_u8_s16w_avx2<5>(b, out, n, k.h[t]);
        },
        [&](const Rvp16s* const* rows, int y) {
          D* d = row(dst, dstStep, y);
          constexpr ColOut O = std::is_same_v<D, Rvp16s>  ? ColOut::S16
                               : std::is_same_v<D, Rvp8s> ? ColOut::S8Scaled
                                                          : ColOut::U8Scaled;
          switch (M) {
            case 3:
              col_s16w_avx2<3, O>(rows, v, roi.width, d, scale);
              break;
            case 5:
              col_s16w_avx2<5, O>(rows, v, roi.width, d, scale);
              break;
            case 6:
              col_s16w_avx2<6, O>(rows, v, roi.width, d, scale);
              break;
            default:
              col_s16w_avx2<10, O>(rows, v, roi.width, d, scale);
          }
        });
  }
  return rvpStsNoErr;
}

}  // namespace
}  // namespace rvp::filter

using rvp::filter::Fixed;
using rvp::filter::fixed_filter;
using rvp::filter::fixed_size;

#define RVP_FIXED_MASK(name, F, tn, S, D)                                                 \
  RvpStatus rvpiFilter##name##Border_##tn##_C1R(                                          \
      const S* pSrc, int srcStep, D* pDst, int dstStep, RvpiSize roiSize, int mask,       \
      RvpiBorderType borderType, S borderValue, Rvp8u* pBuffer) {                         \
    return fixed_filter<S, D>(F, pSrc, srcStep, pDst, dstStep, roiSize, mask, borderType, \
                              borderValue, pBuffer);                                      \
  }                                                                                       \
  RvpStatus rvpiFilter##name##GetBufferSize_##tn##_C1R(RvpiSize roiSize, int mask,        \
                                                       int* pBufferSize) {                \
    return fixed_size<S>(F, roiSize, mask, pBufferSize);                                  \
  }

#define RVP_FIXED_3(name, F)                    \
  RVP_FIXED_MASK(name, F, 32f, Rvp32f, Rvp32f)  \
  RVP_FIXED_MASK(name, F, 8u16s, Rvp8u, Rvp16s) \
  RVP_FIXED_MASK(name, F, 8u8s, Rvp8u, Rvp8s)

RVP_FIXED_3(SobelNegVert, Fixed::NegVert)
RVP_FIXED_3(SobelHorizSecond, Fixed::HorizSecond)
RVP_FIXED_3(SobelVertSecond, Fixed::VertSecond)
RVP_FIXED_3(SobelCross, Fixed::Cross)
RVP_FIXED_3(Laplacian, Fixed::Laplacian)
RVP_FIXED_MASK(SobelHoriz, Fixed::SobelHoriz, 8u8s, Rvp8u, Rvp8s)
RVP_FIXED_MASK(SobelVert, Fixed::SobelVert, 8u8s, Rvp8u, Rvp8s)
RVP_FIXED_MASK(Lowpass, Fixed::Lowpass, 32f, Rvp32f, Rvp32f)
RVP_FIXED_MASK(Lowpass, Fixed::Lowpass, 8u, Rvp8u, Rvp8u)
#undef RVP_FIXED_3
#undef RVP_FIXED_MASK

#define RVP_SCHARR(name, F, tn, S, D)                                                             \
  RvpStatus rvpiFilter##name##Border_##tn##_C1R(const S* pSrc, int srcStep, D* pDst, int dstStep, \
                                                RvpiSize roiSize, RvpiBorderType borderType,      \
                                                S borderValue, Rvp8u* pBuffer) {                  \
    return fixed_filter<S, D>(F, pSrc, srcStep, pDst, dstStep, roiSize, 33, borderType,           \
                              borderValue, pBuffer);                                              \
  }                                                                                               \
  RvpStatus rvpiFilter##name##GetBufferSize_##tn##_C1R(RvpiSize roiSize, int* pBufferSize) {      \
    return fixed_size<S>(F, roiSize, 33, pBufferSize);                                            \
  }
RVP_SCHARR(ScharrHoriz, Fixed::ScharrHoriz, 32f, Rvp32f, Rvp32f)
RVP_SCHARR(ScharrHoriz, Fixed::ScharrHoriz, 8u16s, Rvp8u, Rvp16s)
RVP_SCHARR(ScharrHoriz, Fixed::ScharrHoriz, 8u8s, Rvp8u, Rvp8s)
RVP_SCHARR(ScharrVert, Fixed::ScharrVert, 32f, Rvp32f, Rvp32f)
RVP_SCHARR(ScharrVert, Fixed::ScharrVert, 8u16s, Rvp8u, Rvp16s)
RVP_SCHARR(ScharrVert, Fixed::ScharrVert, 8u8s, Rvp8u, Rvp8s)
#undef RVP_SCHARR
