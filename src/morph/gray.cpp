// Gray-level morphology: a structuring element whose values take part in the extremum.
// Dilation: max over mask positions inside the ROI of (source + mask value); erosion: min of
// (source - mask value). Positions that fall outside the ROI are left out, so the border needs
// no values. 8u works in 32-bit integers and clamps to 0..255; 32f works in floats.
#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "core/image.h"
#include "core/memory.h"
#include "rvpcv.h"

namespace rvp::morph {
namespace {

constexpr uint32_t kGrayId = 0x4D524731;  // "MRG1"

// Fields in order; the value array follows (aligned to 8 bytes).
struct GrayHeader {
  int32_t mask_width, mask_height;
  int32_t anchor_x, anchor_y;
  int32_t roi_width, roi_height;
  void* values;  // points at the state's own value array
  uint32_t id;
  int32_t elem;  // 4: Rvp32s values (8u), 5: Rvp32f values (32f)
};
constexpr int kGrayHeaderBytes = 48;
static_assert(sizeof(GrayHeader) <= kGrayHeaderBytes, "gray header");

int64_t gray_state_bytes(RvpiSize m) { return kGrayHeaderBytes + 4 * int64_t{m.width} * m.height; }

RvpStatus gray_checks(RvpiSize roi, const void* mask, RvpiSize m, RvpiPoint anchor) {
  if (roi.width < 1 || roi.height < 1 || m.width < 1 || m.height < 1) return rvpStsSizeErr;
  if (anchor.x < 0 || anchor.x >= m.width || anchor.y < 0 || anchor.y >= m.height)
    return rvpStsMaskSizeErr;
  (void)mask;
  return rvpStsNoErr;
}

// The state lives at any alignment: the header is copied in and out; the value array starts
// 48 bytes in and is read with memcpy.
void gray_build(uint8_t* mem, RvpiSize roi, const void* mask, RvpiSize m, RvpiPoint anchor,
                int elem) {
  GrayHeader h{};
  h.mask_width = m.width;
  h.mask_height = m.height;
  h.anchor_x = anchor.x;
  h.anchor_y = anchor.y;
  h.roi_width = roi.width;
  h.roi_height = roi.height;
  h.values = mem + kGrayHeaderBytes;
  h.id = kGrayId;
  h.elem = elem;
  std::memset(mem, 0, kGrayHeaderBytes);
  std::memcpy(mem, &h, sizeof h);
  std::memcpy(mem + kGrayHeaderBytes, mask, 4 * size_t(m.width) * m.height);
}

template <class V>
RvpStatus gray_get_size(RvpiSize roi, const V* pMask, RvpiSize m, int* pSize) {
  if (pMask == nullptr || pSize == nullptr) return rvpStsNullPtrErr;
  if (roi.width < 1 || roi.height < 1 || m.width < 1 || m.height < 1) return rvpStsSizeErr;
  const int64_t n = gray_state_bytes(m);
  if (n > INT_MAX) return rvpStsSizeErr;
  *pSize = int(n);
  return rvpStsNoErr;
}

template <class V>
RvpStatus gray_init(void* pState, RvpiSize roi, const V* pMask, RvpiSize m, RvpiPoint anchor) {
  if (pMask == nullptr || pState == nullptr) return rvpStsNullPtrErr;
  if (auto st = gray_checks(roi, pMask, m, anchor)) return st;
  if (gray_state_bytes(m) > INT_MAX) return rvpStsSizeErr;
  gray_build(static_cast<uint8_t*>(pState), roi, pMask, m, anchor,
             std::is_same_v<V, Rvp32f> ? 5 : 4);
  return rvpStsNoErr;
}

template <class V>
RvpStatus gray_init_alloc(void** ppState, RvpiSize roi, const V* pMask, RvpiSize m,
                          RvpiPoint anchor) {
  if (ppState == nullptr || pMask == nullptr) return rvpStsNullPtrErr;
  if (auto st = gray_checks(roi, pMask, m, anchor)) return st;
  const int64_t n = gray_state_bytes(m);
  if (n > INT_MAX) return rvpStsSizeErr;
  uint8_t* mem = static_cast<uint8_t*>(alloc_bytes(int(n)));
  if (mem == nullptr) return rvpStsMemAllocErr;
  gray_build(mem, roi, pMask, m, anchor, std::is_same_v<V, Rvp32f> ? 5 : 4);
  *ppState = mem;
  return rvpStsNoErr;
}

// T image element, V mask value. Each output pixel scans the mask rows that stay inside the
// ROI and, per row, the columns that stay inside it.
template <bool Dilate, class T, class V>
RvpStatus gray_apply(const T* pSrc, int srcStep, T* pDst, int dstStep, RvpiSize roi, int borderType,
                     const void* pState) {
  if (pSrc == nullptr || pDst == nullptr || pState == nullptr) return rvpStsNullPtrErr;
  if (roi.width < 1 || roi.height < 1) return rvpStsSizeErr;
  if (srcStep < roi.width || dstStep < roi.width) return rvpStsStepErr;
  if (borderType != rvpBorderRepl) return rvpStsBadArgErr;
  GrayHeader h;
  std::memcpy(&h, pState, sizeof h);
  if (roi.width > h.roi_width || roi.height > h.roi_height) return rvpStsSizeErr;
  const int want_elem = std::is_same_v<V, Rvp32f> ? 5 : 4;
  if (h.id != kGrayId || h.elem != want_elem) return rvpStsContextMatchErr;
  const uint8_t* values = static_cast<const uint8_t*>(pState) + kGrayHeaderBytes;
  const int mw = h.mask_width, mh = h.mask_height, ax = h.anchor_x, ay = h.anchor_y;
  using Acc = std::conditional_t<std::is_same_v<T, Rvp32f>, Rvp32f, int32_t>;
  for (int y = 0; y < roi.height; ++y) {
    T* d = row(pDst, dstStep, y);
    const int r_lo = std::max(0, ay - y), r_hi = std::min(mh, roi.height - y + ay);
    for (int x = 0; x < roi.width; ++x) {
      const int k_lo = std::max(0, ax - x), k_hi = std::min(mw, roi.width - x + ax);
      bool any = false;
      Acc e{};
      for (int r = r_lo; r < r_hi; ++r) {
        const T* s = row(pSrc, srcStep, y + r - ay);
        for (int k = k_lo; k < k_hi; ++k) {
          V mv;
          std::memcpy(&mv, values + 4 * (size_t(r) * mw + k), 4);
          T sv;
          std::memcpy(&sv, s + (x + k - ax), sizeof(T));
          // 8u: the 32-bit sum of the rule, formed in 64 bits so that an extreme mask value
          // saturates instead of wrapping.
          Acc v;
          if constexpr (std::is_same_v<T, Rvp32f>) {
            v = Dilate ? sv + mv : sv - mv;
          } else {
            const int64_t w = Dilate ? int64_t{sv} + mv : int64_t{sv} - mv;
            v = int32_t(std::clamp<int64_t>(w, INT32_MIN, INT32_MAX));
          }
          if (!any)
            e = v;
          else if (Dilate ? v > e : v < e)
            e = v;
          any = true;
        }
      }
      // The anchor always lies inside the mask and its position inside the ROI, so `any`
      // holds for every pixel.
      if constexpr (std::is_same_v<T, Rvp32f>)
        std::memcpy(d + x, &e, sizeof e);
      else
        d[x] = T(std::clamp<int32_t>(e, 0, 255));
    }
  }
  return rvpStsNoErr;
}

}  // namespace
}  // namespace rvp::morph

namespace m = rvp::morph;

RvpStatus rvpiMorphGrayGetSize_8u_C1R(RvpiSize roiSize, const Rvp32s* pMask, RvpiSize maskSize,
                                      int* pSize) {
  return m::gray_get_size(roiSize, pMask, maskSize, pSize);
}
RvpStatus rvpiMorphGrayGetSize_32f_C1R(RvpiSize roiSize, const Rvp32f* pMask, RvpiSize maskSize,
                                       int* pSize) {
  return m::gray_get_size(roiSize, pMask, maskSize, pSize);
}
RvpStatus rvpiMorphGrayInit_8u_C1R(RvpiMorphGrayState_8u* pState, RvpiSize roiSize,
                                   const Rvp32s* pMask, RvpiSize maskSize, RvpiPoint anchor) {
  return m::gray_init(pState, roiSize, pMask, maskSize, anchor);
}
RvpStatus rvpiMorphGrayInit_32f_C1R(RvpiMorphGrayState_32f* pState, RvpiSize roiSize,
                                    const Rvp32f* pMask, RvpiSize maskSize, RvpiPoint anchor) {
  return m::gray_init(pState, roiSize, pMask, maskSize, anchor);
}
RvpStatus rvpiMorphGrayInitAlloc_8u_C1R(RvpiMorphGrayState_8u** ppState, RvpiSize roiSize,
                                        const Rvp32s* pMask, RvpiSize maskSize, RvpiPoint anchor) {
  return m::gray_init_alloc(reinterpret_cast<void**>(ppState), roiSize, pMask, maskSize, anchor);
}
RvpStatus rvpiMorphGrayInitAlloc_32f_C1R(RvpiMorphGrayState_32f** ppState, RvpiSize roiSize,
                                         const Rvp32f* pMask, RvpiSize maskSize, RvpiPoint anchor) {
  return m::gray_init_alloc(reinterpret_cast<void**>(ppState), roiSize, pMask, maskSize, anchor);
}
RvpStatus rvpiMorphGrayFree_8u_C1R(RvpiMorphGrayState_8u* pState) {
  rvp::free_bytes(pState);
  return rvpStsNoErr;
}
RvpStatus rvpiMorphGrayFree_32f_C1R(RvpiMorphGrayState_32f* pState) {
  rvp::free_bytes(pState);
  return rvpStsNoErr;
}
RvpStatus rvpiGrayDilateBorder_8u_C1R(const Rvp8u* pSrc, int srcStep, Rvp8u* pDst, int dstStep,
                                      RvpiSize roiSize, RvpiBorderType borderType,
                                      const RvpiMorphGrayState_8u* pState) {
  return m::gray_apply<true, Rvp8u, Rvp32s>(pSrc, srcStep, pDst, dstStep, roiSize, borderType,
                                            pState);
}
RvpStatus rvpiGrayErodeBorder_8u_C1R(const Rvp8u* pSrc, int srcStep, Rvp8u* pDst, int dstStep,
                                     RvpiSize roiSize, RvpiBorderType borderType,
                                     const RvpiMorphGrayState_8u* pState) {
  return m::gray_apply<false, Rvp8u, Rvp32s>(pSrc, srcStep, pDst, dstStep, roiSize, borderType,
                                             pState);
}
RvpStatus rvpiGrayDilateBorder_32f_C1R(const Rvp32f* pSrc, int srcStep, Rvp32f* pDst, int dstStep,
                                       RvpiSize roiSize, RvpiBorderType borderType,
                                       const RvpiMorphGrayState_32f* pState) {
  return m::gray_apply<true, Rvp32f, Rvp32f>(pSrc, srcStep, pDst, dstStep, roiSize, borderType,
                                             pState);
}
RvpStatus rvpiGrayErodeBorder_32f_C1R(const Rvp32f* pSrc, int srcStep, Rvp32f* pDst, int dstStep,
                                      RvpiSize roiSize, RvpiBorderType borderType,
                                      const RvpiMorphGrayState_32f* pState) {
  return m::gray_apply<false, Rvp32f, Rvp32f>(pSrc, srcStep, pDst, dstStep, roiSize, borderType,
                                              pState);
}
