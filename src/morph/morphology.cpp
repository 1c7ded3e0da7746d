// Binary morphology: the state interfaces, dilation and erosion with borders, and the
// rectangle maximum/minimum filters.
#include <cstring>

#include "core/checks.h"
#include "core/image.h"
#include "core/memory.h"
#include "core/scratch.h"
#include "filter/border.h"
#include "morph/morph_engine.h"
#include "morph/morph_rect8.h"
#include "morph/morph_state.h"
#include "rvpcv.h"

namespace rvp::morph {
namespace {

template <class T>
constexpr int type_code() {
  if constexpr (sizeof(T) == 4)
    return rvp32f;
  else if constexpr (std::is_same_v<T, Rvp16u>)
    return rvp16u;
  else if constexpr (std::is_same_v<T, Rvp16s>)
    return rvp16s;
  else
    return rvp8u;
}

// The Border interface has no anchor argument: it uses the mask centre.
inline RvpiPoint centre(RvpiSize m) { return {(m.width - 1) / 2, (m.height - 1) / 2}; }

template <class T, int C, bool Bits>
RvpStatus border_get_size(int roiWidth, RvpiSize maskSize, int* pSpecSize, int* pBufferSize) {
  if (pSpecSize == nullptr || pBufferSize == nullptr) return rvpStsNullPtrErr;
  if (roiWidth < 1 || maskSize.width < 1 || maskSize.height < 1) return rvpStsSizeErr;
  const Shape s{roiWidth, maskSize.width, maskSize.height, C, int(sizeof(T))};
  const int64_t spec = border_state_bytes(s, Bits);
  const int64_t work = work_area_bytes(s);
  if (spec > INT_MAX || work > INT_MAX) return rvpStsSizeErr;
  *pSpecSize = int(spec);
  *pBufferSize = int(work);
  return rvpStsNoErr;
}

template <class T, int C, bool Bits>
RvpStatus border_init(int roiWidth, const Rvp8u* pMask, RvpiSize maskSize, void* pState,
                      const Rvp8u* pBuffer) {
  if (pMask == nullptr || pState == nullptr || pBuffer == nullptr) return rvpStsNullPtrErr;
  if (roiWidth < 1 || maskSize.width < 1 || maskSize.height < 1) return rvpStsSizeErr;
  return analyse(type_code<T>(), C, Bits, roiWidth, pMask, maskSize, centre(maskSize), Mode::Init,
                 Flavour::Border, pState, nullptr, nullptr);
}

template <class T, int C>
RvpStatus older_get_size(int roiWidth, const Rvp8u* pMask, RvpiSize maskSize, int* pSize) {
  if (pMask == nullptr || pSize == nullptr) return rvpStsNullPtrErr;
  return analyse(type_code<T>(), C, false, roiWidth, pMask, maskSize,
                 centre({std::max(maskSize.width, 1), std::max(maskSize.height, 1)}), Mode::Size,
                 Flavour::Older, nullptr, pSize, nullptr);
}

template <class T, int C>
RvpStatus older_init(int roiWidth, const Rvp8u* pMask, RvpiSize maskSize, RvpiPoint anchor,
                     void* pState) {
  return analyse(type_code<T>(), C, false, roiWidth, pMask, maskSize, anchor, Mode::Init,
                 Flavour::Older, pState, nullptr, nullptr);
}

template <class T, int C>
RvpStatus older_init_alloc(int roiWidth, const Rvp8u* pMask, RvpiSize maskSize, RvpiPoint anchor,
                           RvpiMorphState** ppState) {
  void* p = nullptr;
  const RvpStatus st =
      analyse(type_code<T>(), C, false, roiWidth, pMask, maskSize, anchor, Mode::Allocate,
              Flavour::Older, nullptr, nullptr, ppState == nullptr ? nullptr : &p);
  if (st == rvpStsNoErr) *ppState = static_cast<RvpiMorphState*>(p);
  return st;
}

// Copies the ROI (the empty mask).
template <class T, int C, bool Bits>
void copy_roi(const T* src, int srcStep, T* dst, int dstStep, RvpiSize roi) {
  if (src == dst && srcStep == dstStep) return;
  for (int y = 0; y < roi.height; ++y) {
    const T* s = row(src, srcStep, y);
    T* d = row(dst, dstStep, y);
    if constexpr (Bits) {
      const int full = roi.width >> 3, rest = roi.width & 7;
      std::memmove(d, s, size_t(full));
      if (rest) {
        const Rvp8u keep = Rvp8u(0xFFu >> rest);
        d[full] = Rvp8u((d[full] & keep) | (s[full] & ~keep));
      }
    } else {
      std::memmove(d, s, sizeof(T) * size_t(roi.width) * C);
    }
  }
}

// Checks shared by the Border and BorderReplicate forms after the null and size checks.
inline RvpStatus check_state(const StateHeader& h, uint32_t id, int code, int channels, bool bits,
                             int width) {
  if (width > h.max_width) return rvpStsSizeErr;
  if (h.id != id || h.type_code != code || h.channels != channels || h.bits != int(bits))
    return rvpStsContextMatchErr;
  return rvpStsNoErr;
}

template <Extremum E, class T, int C, bool Bits>
void process(const T* src, int srcStep, T* dst, int dstStep, RvpiSize roi, int borderType,
             const void* state, uint8_t* buffer) {
  const StateHeader h = read_header(state);
  if (h.kind == kEmpty) {
    copy_roi<T, C, Bits>(src, srcStep, dst, dstStep, roi);
    return;
  }
  const filter::Border b = filter::resolve_border(borderType);
  Plan p{roi.width,        roi.height,    C,
         h.mask_width,     h.mask_height, h.anchor_x,
         h.anchor_y,       Kind(h.kind),  {h.rect[0], h.rect[1], h.rect[2], h.rect[3]},
         state_mask(state)};
  if (b.flags != 0) p.kind = kGeneral;
  ScratchCarver carver(buffer);
  uint8_t* work = carver.take<uint8_t>(0);
  const int left = p.ax, right = p.mw - 1 - p.ax;
  if constexpr (Bits) {
    const Shape s{roi.width, p.mw, p.mh, 1, 1};
    Rvp8u* spare2 = work + table_bytes(s) + (int64_t{p.mh} + 1) * bordered_row_bytes(s);
    run_plan<E, Rvp8u>(p, BitRows(src, srcStep, roi, b, left, right),
                       BitSink{dst, dstStep, roi.width, spare2}, work);
  } else {
    // Outputs larger than 2 MiB and the largest cache bypass the cache. The third spare row
    // of the work area (after the two that the kinds use) holds each row before it is stored.
    const Shape s{roi.width, p.mw, p.mh, C, int(sizeof(T))};
    const bool stream = streaming_for(int64_t{roi.height} * roi.width * C * int64_t(sizeof(T)));
    T* spare3 = reinterpret_cast<T*>(work + table_bytes(s) + int64_t{p.mh} * bordered_row_bytes(s) +
                                     bordered_row_bytes(s));
    const StreamSink<T> streamed{dst, dstStep, roi.width * C, spare3};
    const PlainSink<T> plain{dst, dstStep};
    const bool direct = p.kind == kRect && static_cast<const void*>(src) != dst;
    if constexpr (std::is_same_v<T, Rvp8u>) {
      // Every row of the work area is free when rows are not staged for streaming.
      if (direct && !stream && run_rect_fused<E>(p, src, srcStep, dst, dstStep, work, p.mh + 2))
        return;
    }
    const PlainRows<T> rows(src, srcStep, roi, C, b, left, right);
    if (direct && stream)
      run_rect_direct<E, T>(p, src, srcStep, streamed, work);
    else if (direct)
      run_rect_direct<E, T>(p, src, srcStep, plain, work);
    else if (stream)
      run_plan<E, T>(p, rows, streamed, work);
    else
      run_plan<E, T>(p, rows, plain, work);
    if (stream) finish_streaming();
  }
}

template <Extremum E, class T, int C, bool Bits>
RvpStatus morph_border(const T* pSrc, int srcStep, T* pDst, int dstStep, RvpiSize roi,
                       int borderType, const T* valuePtr, const RvpiMorphState* pState,
                       Rvp8u* pBuffer) {
  if (pSrc == nullptr || pDst == nullptr || valuePtr == nullptr || pState == nullptr ||
      pBuffer == nullptr)
    return rvpStsNullPtrErr;
  if (auto st = check_roi(roi)) return st;
  // Steps are compared with the ROI width in elements, whatever the channel count.
  if (srcStep < roi.width || dstStep < roi.width) return rvpStsStepErr;
  if (auto st = filter::check_border(borderType, filter::BorderFamily::Morphology)) return st;
  const StateHeader h = read_header(pState);
  if (auto st = check_state(h, kBorderStateId, type_code<T>(), C, Bits, roi.width)) return st;
  if ((Bits || sizeof(T) == 2) && static_cast<const void*>(pSrc) == pDst)
    return rvpStsInplaceModeErr;
  process<E, T, C, Bits>(pSrc, srcStep, pDst, dstStep, roi, borderType, pState, pBuffer);
  return rvpStsNoErr;
}

template <Extremum E, class T, int C>
RvpStatus morph_replicate(const T* pSrc, int srcStep, T* pDst, int dstStep, RvpiSize roi,
                          int borderType, RvpiMorphState* pState) {
  if (pSrc == nullptr || pDst == nullptr || pState == nullptr) return rvpStsNullPtrErr;
  if (auto st = check_roi(roi)) return st;
  if (srcStep < roi.width || dstStep < roi.width) return rvpStsStepErr;
  if (borderType != rvpBorderRepl) return rvpStsBorderErr;
  const StateHeader h = read_header(pState);
  if (auto st = check_state(h, kOlderStateId, type_code<T>(), C, false, roi.width)) return st;
  process<E, T, C, false>(pSrc, srcStep, pDst, dstStep, roi, borderType, pState,
                          reinterpret_cast<uint8_t*>(pState) + h.work_offset);
  return rvpStsNoErr;
}

template <class T, int C>
RvpStatus filter_get_size(int roiWidth, RvpiSize maskSize, int* pBufferSize) {
  if (pBufferSize == nullptr) return rvpStsNullPtrErr;
  if (roiWidth < 1) return rvpStsSizeErr;
  if (maskSize.width < 1 || maskSize.height < 1) return rvpStsMaskSizeErr;
  const int64_t n =
      rect_filter_bytes({roiWidth, maskSize.width, maskSize.height, C, int(sizeof(T))});
  if (n > INT_MAX) return rvpStsSizeErr;
  *pBufferSize = int(n);
  return rvpStsNoErr;
}

template <Extremum E, class T, int C>
RvpStatus filter_rect(const T* pSrc, int srcStep, T* pDst, int dstStep, RvpiSize roi,
                      RvpiSize maskSize, RvpiPoint anchor, Rvp8u* pBuffer) {
  if (auto st = any_null(pSrc, pDst, pBuffer)) return st;
  if (auto st = check_roi(roi)) return st;
  if (auto st = check_steps({image<T>(srcStep, roi, C), image<T>(dstStep, roi, C)})) return st;
  if (maskSize.width < 1 || maskSize.height < 1) return rvpStsMaskSizeErr;
  if (anchor.x < 0 || anchor.x >= maskSize.width || anchor.y < 0 || anchor.y >= maskSize.height)
    return rvpStsAnchorErr;
  const Plan p{
      roi.width,      roi.height,      C,
      maskSize.width, maskSize.height, anchor.x,
      anchor.y,       kRect,           {maskSize.width, maskSize.height, anchor.x, anchor.y},
      nullptr};
  ScratchCarver carver(pBuffer);
  if (static_cast<const void*>(pSrc) != pDst) {
    if constexpr (std::is_same_v<T, Rvp8u>) {
      if (run_rect_fused<E>(p, pSrc, srcStep, pDst, dstStep, carver.take<uint8_t>(0), p.mh))
        return rvpStsNoErr;
    }
    run_rect_direct<E, T>(p, pSrc, srcStep, PlainSink<T>{pDst, dstStep}, carver.take<uint8_t>(0));
    return rvpStsNoErr;
  }
  run_plan<E, T>(p,
                 PlainRows<T>(pSrc, srcStep, roi, C, filter::resolve_border(rvpBorderRepl),
                              anchor.x, maskSize.width - 1 - anchor.x),
                 PlainSink<T>{pDst, dstStep}, carver.take<uint8_t>(0));
  return rvpStsNoErr;
}

}  // namespace
}  // namespace rvp::morph

using rvp::morph::Extremum;
namespace m = rvp::morph;

// ---- exports --------------------------------------------------------------------------------

#define RVP_MORPH_BORDER(sfx, T, C, Bits, VALUE_T, VALUE_PTR)                                   \
  RvpStatus rvpiMorphologyBorderGetSize_##sfx(int roiWidth, RvpiSize maskSize, int* pSpecSize,  \
                                              int* pBufferSize) {                               \
    return m::border_get_size<T, C, Bits>(roiWidth, maskSize, pSpecSize, pBufferSize);          \
  }                                                                                             \
  RvpStatus rvpiMorphologyBorderInit_##sfx(int roiWidth, const Rvp8u* pMask, RvpiSize maskSize, \
                                           RvpiMorphState* pState, Rvp8u* pBuffer) {            \
    return m::border_init<T, C, Bits>(roiWidth, pMask, maskSize, pState, pBuffer);              \
  }                                                                                             \
  RvpStatus rvpiDilateBorder_##sfx(const T* pSrc, int srcStep, T* pDst, int dstStep,            \
                                   RvpiSize roiSize, RvpiBorderType borderType,                 \
                                   VALUE_T borderValue, const RvpiMorphState* pState,           \
                                   Rvp8u* pBuffer) {                                            \
    return m::morph_border<Extremum::Max, T, C, Bits>(pSrc, srcStep, pDst, dstStep, roiSize,    \
                                                      borderType, VALUE_PTR, pState, pBuffer);  \
  }                                                                                             \
  RvpStatus rvpiErodeBorder_##sfx(const T* pSrc, int srcStep, T* pDst, int dstStep,             \
                                  RvpiSize roiSize, RvpiBorderType borderType,                  \
                                  VALUE_T borderValue, const RvpiMorphState* pState,            \
                                  Rvp8u* pBuffer) {                                             \
    return m::morph_border<Extremum::Min, T, C, Bits>(pSrc, srcStep, pDst, dstStep, roiSize,    \
                                                      borderType, VALUE_PTR, pState, pBuffer);  \
  }

RVP_MORPH_BORDER(1u_C1R, Rvp8u, 1, true, Rvp8u, &borderValue)
RVP_MORPH_BORDER(8u_C1R, Rvp8u, 1, false, Rvp8u, &borderValue)
RVP_MORPH_BORDER(8u_C3R, Rvp8u, 3, false, const Rvp8u*, borderValue)
RVP_MORPH_BORDER(8u_C4R, Rvp8u, 4, false, const Rvp8u*, borderValue)
RVP_MORPH_BORDER(16u_C1R, Rvp16u, 1, false, Rvp16u, &borderValue)
RVP_MORPH_BORDER(16s_C1R, Rvp16s, 1, false, Rvp16s, &borderValue)
RVP_MORPH_BORDER(32f_C1R, Rvp32f, 1, false, Rvp32f, &borderValue)
RVP_MORPH_BORDER(32f_C3R, Rvp32f, 3, false, const Rvp32f*, borderValue)
RVP_MORPH_BORDER(32f_C4R, Rvp32f, 4, false, const Rvp32f*, borderValue)

#define RVP_MORPH_OLDER(sfx, T, C)                                                                \
  RvpStatus rvpiMorphologyGetSize_##sfx(int roiWidth, const Rvp8u* pMask, RvpiSize maskSize,      \
                                        int* pSize) {                                             \
    return m::older_get_size<T, C>(roiWidth, pMask, maskSize, pSize);                             \
  }                                                                                               \
  RvpStatus rvpiMorphologyInit_##sfx(int roiWidth, const Rvp8u* pMask, RvpiSize maskSize,         \
                                     RvpiPoint anchor, RvpiMorphState* pState) {                  \
    return m::older_init<T, C>(roiWidth, pMask, maskSize, anchor, pState);                        \
  }                                                                                               \
  RvpStatus rvpiMorphologyInitAlloc_##sfx(int roiWidth, const Rvp8u* pMask, RvpiSize maskSize,    \
                                          RvpiPoint anchor, RvpiMorphState** ppState) {           \
    return m::older_init_alloc<T, C>(roiWidth, pMask, maskSize, anchor, ppState);                 \
  }                                                                                               \
  RvpStatus rvpiDilateBorderReplicate_##sfx(const T* pSrc, int srcStep, T* pDst, int dstStep,     \
                                            RvpiSize roiSize, RvpiBorderType borderType,          \
                                            RvpiMorphState* pState) {                             \
    return m::morph_replicate<Extremum::Max, T, C>(pSrc, srcStep, pDst, dstStep, roiSize,         \
                                                   borderType, pState);                           \
  }                                                                                               \
  RvpStatus rvpiErodeBorderReplicate_##sfx(const T* pSrc, int srcStep, T* pDst, int dstStep,      \
                                           RvpiSize roiSize, RvpiBorderType borderType,           \
                                           RvpiMorphState* pState) {                              \
    return m::morph_replicate<Extremum::Min, T, C>(pSrc, srcStep, pDst, dstStep, roiSize,         \
                                                   borderType, pState);                           \
  }                                                                                               \
  RvpStatus rvpiFilterMaxGetBufferSize_##sfx(int roiWidth, RvpiSize maskSize, int* pBufferSize) { \
    return m::filter_get_size<T, C>(roiWidth, maskSize, pBufferSize);                             \
  }                                                                                               \
  RvpStatus rvpiFilterMinGetBufferSize_##sfx(int roiWidth, RvpiSize maskSize, int* pBufferSize) { \
    return m::filter_get_size<T, C>(roiWidth, maskSize, pBufferSize);                             \
  }                                                                                               \
  RvpStatus rvpiFilterMaxBorderReplicate_##sfx(const T* pSrc, int srcStep, T* pDst, int dstStep,  \
                                               RvpiSize roiSize, RvpiSize maskSize,               \
                                               RvpiPoint anchor, Rvp8u* pBuffer) {                \
    return m::filter_rect<Extremum::Max, T, C>(pSrc, srcStep, pDst, dstStep, roiSize, maskSize,   \
                                               anchor, pBuffer);                                  \
  }                                                                                               \
  RvpStatus rvpiFilterMinBorderReplicate_##sfx(const T* pSrc, int srcStep, T* pDst, int dstStep,  \
                                               RvpiSize roiSize, RvpiSize maskSize,               \
                                               RvpiPoint anchor, Rvp8u* pBuffer) {                \
    return m::filter_rect<Extremum::Min, T, C>(pSrc, srcStep, pDst, dstStep, roiSize, maskSize,   \
                                               anchor, pBuffer);                                  \
  }

RVP_MORPH_OLDER(8u_C1R, Rvp8u, 1)
RVP_MORPH_OLDER(8u_C3R, Rvp8u, 3)
RVP_MORPH_OLDER(8u_C4R, Rvp8u, 4)
RVP_MORPH_OLDER(32f_C1R, Rvp32f, 1)
RVP_MORPH_OLDER(32f_C3R, Rvp32f, 3)
RVP_MORPH_OLDER(32f_C4R, Rvp32f, 4)

RvpStatus rvpiMorphologyFree(RvpiMorphState* pState) {
  rvp::free_bytes(pState);
  return rvpStsNoErr;
}
