// Gaussian filter with border: specification, size queries and the filtering for 8u, 16u, 16s
// and 32f, one or three channels, plus the single-call 32f form.
#include "filter/gaussian.h"

#include <cmath>
#include <cstring>
#include <type_traits>

#include "core/checks.h"
#include "core/dispatch.h"
#include "core/image.h"
#include "core/scratch.h"
#include "filter/border.h"
#include "filter/sep_engine.h"
#include "filter/sep_kernels.h"
#include "rvpcv.h"

namespace rvp::filter {
namespace {

constexpr uint32_t kGaussId = 0x53534147u;  // identifies an initialised specification

// The specification header; taps follow it at byte 32 (Rvp16s for 8u, Rvp32s for 16u/16s,
// each Rvp32f tap eight times for 32f). Caller memory carries no alignment: copied in and out.
struct GaussHeader {
  uint32_t id;
  int32_t K;
  int32_t type;
  int32_t border;
  int32_t shift;
  int32_t channels;
  int32_t max_width;
  int32_t reserved;
};
static_assert(sizeof(GaussHeader) == 32, "header layout");

int64_t spec_bytes(int K) { return 32 * int64_t{K} + 32; }

template <class S>
using GaussInter =
    std::conditional_t<std::is_same_v<S, Rvp8u>, Rvp16s,
                       std::conditional_t<std::is_same_v<S, Rvp32f>, Rvp32f, Rvp32s>>;

// Sub-buffers: the taps (4K bytes), for 8u a 16-bit copy of the bordered row, then the
// separable engine's bordered row and ring.
template <class S>
int64_t work_bytes(RvpiSize roi, int K, int ch) {
  int64_t extra = round_up(int64_t{K} * 4, kScratchAlign);
  if (std::is_same_v<S, Rvp8u>) extra += (int64_t{roi.width} + K - 1) * ch * 2;
  return sep_buffer_bytes<S, GaussInter<S>>(roi, K, 1, ch, extra);
}

int64_t work_bytes_for(int type, RvpiSize roi, int K, int ch) {
  switch (type) {
    case rvp8u:
      return work_bytes<Rvp8u>(roi, K, ch);
    case rvp16u:
      return work_bytes<Rvp16u>(roi, K, ch);
    case rvp16s:
      return work_bytes<Rvp16s>(roi, K, ch);
    default:
      return work_bytes<Rvp32f>(roi, K, ch);
  }
}

bool kernel_size_ok(int K) { return K >= 3 && K % 2 == 1; }
bool data_type_ok(int t) { return t == rvp8u || t == rvp16u || t == rvp16s || t == rvp32f; }

RvpStatus gauss_get_size(RvpiSize roi, int K, int type, int ch, int* spec, int* buf) {
  if (spec == nullptr || buf == nullptr) return rvpStsNullPtrErr;
  if (auto st = check_roi(roi)) return st;
  if (!kernel_size_ok(K)) return rvpStsBadArgErr;
  if (!data_type_ok(type)) return rvpStsDataTypeErr;
  if (ch != 1 && ch != 3) return rvpStsChannelErr;
  const int64_t w = work_bytes_for(type, roi, K, ch), s = spec_bytes(K);
  if (w < 0 || s > INT32_MAX) return rvpStsSizeErr;
  *spec = static_cast<int>(s);
  *buf = static_cast<int>(w);
  return rvpStsNoErr;
}

RvpStatus gauss_init(RvpiSize roi, int K, Rvp32f sigma, int border, int type, int ch, Rvp8u* spec,
                     Rvp8u* buffer) {
  if (auto st = any_null(spec, buffer)) return st;
  if (auto st = check_roi(roi)) return st;
  if (!kernel_size_ok(K)) return rvpStsBadArgErr;
  if (!data_type_ok(type)) return rvpStsDataTypeErr;
  if (ch != 1 && ch != 3) return rvpStsChannelErr;
  if (!(sigma > 0.0f)) return rvpStsBadArgErr;
  if (auto st = check_border(border, BorderFamily::Gaussian)) return st;

  GaussHeader h{kGaussId, K, type, border, 0, ch, roi.width, 0};
  uint8_t* taps = spec + sizeof(GaussHeader);
  // Normalised weight i, the same values gauss_weights produces, without a K-sized array.
  const int r = K / 2;
  const float d = 2.0f * sigma * sigma;
  auto raw = [&](int i) {
    const float q = static_cast<float>((i - r) * (i - r)) / d;
    return static_cast<float>(std::exp(-static_cast<double>(q)));
  };
  float sum = 0.0f;
  for (int i = 0; i < K; ++i) sum = sum + raw(i);
  auto weight_sum = [&](int i) { return raw(i) / sum; };
  if (type == rvp8u) {
    h.shift = kGaussShift8u;
    for (int i = 0; i < K; ++i) {
      const int16_t t = static_cast<int16_t>(gauss_int_tap(weight_sum(i), kGaussShift8u));
      std::memcpy(taps + 2 * i, &t, 2);
    }
  } else if (type == rvp32f) {
    for (int i = 0; i < K; ++i) {
      const float t = weight_sum(i);
      for (int j = 0; j < 8; ++j) std::memcpy(taps + 32 * i + 4 * j, &t, 4);
    }
  } else {
    h.shift = kGaussShift16;
    for (int i = 0; i < K; ++i) {
      const int32_t t = gauss_int_tap(weight_sum(i), kGaussShift16);
      std::memcpy(taps + 4 * i, &t, 4);
    }
  }
  std::memcpy(spec, &h, sizeof h);
  return rvpStsNoErr;
}

template <class S>
constexpr int type_code() {
  if constexpr (std::is_same_v<S, Rvp8u>) return rvp8u;
  if constexpr (std::is_same_v<S, Rvp16u>) return rvp16u;
  if constexpr (std::is_same_v<S, Rvp16s>) return rvp16s;
  return rvp32f;
}

// Filters with the taps given (as floats for 32f, integers otherwise) in `carver`'s buffer.
template <class S, int CH>
void gauss_run(const S* src, int srcStep, S* dst, int dstStep, RvpiSize roi, int K, int border,
               const S* value, const void* taps, ScratchCarver& carver) {
  const int r = K / 2;
  const BorderedSource<S> bsrc(src, srcStep, roi, CH, resolve_border(border), value, r, r);
  using I = GaussInter<S>;
  const int n = roi.width * CH;
  if constexpr (std::is_same_v<S, Rvp32f>) {
    const float* t = static_cast<const float*>(taps);
    run_separable<S, I>(
        bsrc, roi, CH, K, 1, carver,
        [&](int, const float* b, float* out, int nn) { row_f32_avx2(b, out, nn, t, K, CH); },
        [&](const float* const* rows, int y) {
          col_f32_avx2(rows, t, K, n, row(dst, dstStep, y), false, 1.0f);
        });
  } else if constexpr (std::is_same_v<S, Rvp8u>) {
    const int16_t* t = static_cast<const int16_t*>(taps);
    constexpr int kColShift = 2 * kGaussShift8u - kGaussRowDrop;
    const bool sym = symmetric(t, K);
    auto cols = [&](const Rvp16s* const* rows, int y) {
      Rvp8u* d = row(dst, dstStep, y);
      with_int<0, 3, 5, 7, 9, 11, 13>(sym ? K : 0, [&](auto KC) {
        if constexpr (decltype(KC)::value == 0)
          col_s16_avx2<ColOut::U8Shift>(rows, t, K, n, d, 1.0f, kColShift);
        else
          col_u8_sym_avx2<decltype(KC)::value>(rows, t, n, d, kColShift);
      });
    };
    if (sym && K <= 13) {
      // Strip by strip; the bordered strip row (16-bit, or bytes for the byte row pass) takes
      // the 8u-only sub-buffer and the ring the first K * strip * CH values of the engine's ring
      // rows.
      const int sp = gauss_u8_strip_pixels(K, CH, roi.width);
      int16_t* wide = carver.take<int16_t>((int64_t{sp} + K - 1) * CH);
      int16_t* ring[13];
      for (int k = 0; k < K; ++k) ring[k] = carver.take<int16_t>(int64_t{sp} * CH);
      const int q = gauss_split_shift(t, K);
      with_int<13, 3, 5, 7, 9, 11>(K, [&](auto KC) {
        constexpr int kK = decltype(KC)::value;
        if (q > 0)
          gauss_u8_split_strips<kK, CH>(bsrc, resolve_border(border), dst, dstStep, roi, t, q,
                                        reinterpret_cast<uint8_t*>(wide), ring, sp);
        else
          gauss_u8_sym_strips<kK, CH>(bsrc, dst, dstStep, roi, t, wide, ring, sp);
      });
      return;
    }
    run_separable<S, I>(
        bsrc, roi, CH, K, 1, carver,
        [&](int, const Rvp8u* b, Rvp16s* out, int nn) {
          row_u8_s16_avx2(b, out, nn, t, K, CH, kGaussRowDrop);
        },
        cols);
  } else {
    const int32_t* t = static_cast<const int32_t*>(taps);
    run_separable<S, I>(
        bsrc, roi, CH, K, 1, carver,
        [&](int, const S* b, int32_t* out, int nn) { gauss_row16(b, out, nn, t, K, CH); },
        [&](const int32_t* const* rows, int y) {
          gauss_col16(rows, row(dst, dstStep, y), n, t, K);
        });
  }
}

template <class S, int CH>
RvpStatus gauss_border(const S* src, int srcStep, S* dst, int dstStep, RvpiSize roi, const S* value,
                       const Rvp8u* spec, Rvp8u* buffer) {
  if (src == nullptr || dst == nullptr || (CH == 3 && value == nullptr) || spec == nullptr ||
      buffer == nullptr)
    return rvpStsNullPtrErr;
  if (auto st = check_roi(roi)) return st;
  if (auto st = check_steps({image<S>(srcStep, roi, CH), image<S>(dstStep, roi, CH)})) return st;
  GaussHeader h;
  std::memcpy(&h, spec, sizeof h);
  if (h.id != kGaussId || h.type != type_code<S>() || h.channels != CH)
    return rvpStsContextMatchErr;
  if (roi.width > h.max_width) return rvpStsSizeErr;

  ScratchCarver carver(buffer);
  const uint8_t* st = spec + sizeof(GaussHeader);
  void* taps;
  if constexpr (std::is_same_v<S, Rvp32f>) {
    float* t = carver.take<float>(h.K);
    for (int i = 0; i < h.K; ++i) std::memcpy(t + i, st + 32 * i, 4);
    taps = t;
  } else if constexpr (std::is_same_v<S, Rvp8u>) {
    int16_t* t = carver.take<int16_t>(2 * h.K);  // K*4 bytes reserved for the taps
    std::memcpy(t, st, 2 * size_t(h.K));
    taps = t;
  } else {
    int32_t* t = carver.take<int32_t>(h.K);
    std::memcpy(t, st, 4 * size_t(h.K));
    taps = t;
  }
  gauss_run<S, CH>(src, srcStep, dst, dstStep, roi, h.K, h.border, value, taps, carver);
  return rvpStsNoErr;
}

RvpStatus gauss_single_size(RvpiSize roi, int K, int* size) {
  if (size == nullptr) return rvpStsNullPtrErr;
  if (auto st = check_roi(roi)) return st;
  if (!kernel_size_ok(K)) return rvpStsBadArgErr;
  const int64_t w = work_bytes<Rvp32f>(roi, K, 1);
  if (w < 0) return rvpStsSizeErr;
  *size = static_cast<int>(w);
  return rvpStsNoErr;
}

RvpStatus gauss_single(const Rvp32f* src, int srcStep, Rvp32f* dst, int dstStep, RvpiSize roi,
                       int K, Rvp32f sigma, int border, Rvp32f value, Rvp8u* buffer) {
  if (auto st = any_null(src, dst, buffer)) return st;
  if (auto st = check_roi(roi)) return st;
  if (auto st = check_steps({image<Rvp32f>(srcStep, roi), image<Rvp32f>(dstStep, roi)})) return st;
  if (!kernel_size_ok(K)) return rvpStsBadArgErr;
  if (!(sigma > 0.0f)) return rvpStsBadArgErr;
  if (auto st = check_border(border, BorderFamily::Gaussian)) return st;
  ScratchCarver carver(buffer);
  float* t = carver.take<float>(K);
  gauss_weights(K, sigma, t);
  gauss_run<Rvp32f, 1>(src, srcStep, dst, dstStep, roi, K, border, &value, t, carver);
  return rvpStsNoErr;
}

}  // namespace
}  // namespace rvp::filter

using rvp::filter::gauss_border;

RvpStatus rvpiFilterGaussianGetBufferSize(RvpiSize roiSize, int kernelSize, RvpDataType dataType,
                                          int numChannels, int* pSpecSize, int* pBufferSize) {
  return rvp::filter::gauss_get_size(roiSize, kernelSize, dataType, numChannels, pSpecSize,
                                     pBufferSize);
}

RvpStatus rvpiFilterGaussianInit(RvpiSize roiSize, int kernelSize, Rvp32f sigma,
                                 RvpiBorderType borderType, RvpDataType dataType, int numChannels,
                                 Rvp8u* pSpec, Rvp8u* pBuffer) {
  return rvp::filter::gauss_init(roiSize, kernelSize, sigma, borderType, dataType, numChannels,
                                 pSpec, pBuffer);
}

#define RVP_GAUSS(tn, S)                                                                           \
  RvpStatus rvpiFilterGaussianBorder_##tn##_C1R(const S* pSrc, int srcStep, S* pDst, int dstStep,  \
                                                RvpiSize roiSize, S borderValue,                   \
                                                const Rvp8u* pSpec, Rvp8u* pBuffer) {              \
    return gauss_border<S, 1>(pSrc, srcStep, pDst, dstStep, roiSize, &borderValue, pSpec,          \
                              pBuffer);                                                            \
  }                                                                                                \
  RvpStatus rvpiFilterGaussianBorder_##tn##_C3R(const S* pSrc, int srcStep, S* pDst, int dstStep,  \
                                                RvpiSize roiSize, const S borderValue[3],          \
                                                const Rvp8u* pSpec, Rvp8u* pBuffer) {              \
    return gauss_border<S, 3>(pSrc, srcStep, pDst, dstStep, roiSize, borderValue, pSpec, pBuffer); \
  }
RVP_GAUSS(8u, Rvp8u)
RVP_GAUSS(16u, Rvp16u)
RVP_GAUSS(16s, Rvp16s)
RVP_GAUSS(32f, Rvp32f)
#undef RVP_GAUSS

RvpStatus rvpiFilterGaussGetBufferSize_32f_C1R(RvpiSize roiSize, int kernelSize, int* pBufferSize) {
  return rvp::filter::gauss_single_size(roiSize, kernelSize, pBufferSize);
}

RvpStatus rvpiFilterGaussBorder_32f_C1R(const Rvp32f* pSrc, int srcStep, Rvp32f* pDst, int dstStep,
                                        RvpiSize roiSize, int kernelSize, Rvp32f sigma,
                                        RvpiBorderType borderType, Rvp32f borderValue,
                                        Rvp8u* pBuffer) {
  return rvp::filter::gauss_single(pSrc, srcStep, pDst, dstStep, roiSize, kernelSize, sigma,
                                   borderType, borderValue, pBuffer);
}
