// Haar cascade stages: state construction, tilting, window size, and evaluation under a mask.
#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "core/checks.h"
#include "core/image.h"
#include "core/memory.h"
#include "detect/haar_kernels.h"
#include "rvpcv.h"

namespace rvp::detect {
namespace {

constexpr int kHeaderBytes = 56;
constexpr int kRecordBytes = 32;
constexpr int kFeatureBytes = 36;

template <class V>
constexpr bool kFloat = std::is_same_v<V, Rvp32f>;

bool bad_rect(const RvpiRect& r) { return r.x < 0 || r.y < 0 || r.width < 1 || r.height < 1; }

// trunc(w) == -1 exactly when -2 < w <= -1 (NaN fails both comparisons).
template <class V>
bool leading_minus_one(V w) {
  if constexpr (kFloat<V>)
    return w > -2.0f && w <= -1.0f;
  else
    return w == -1;
}

template <class V>
HaarFeature<V> upright_corners(const RvpiRect& r, V weight) {
  return {r.x + r.width, r.y + r.height, r.x, r.y + r.height, r.x + r.width, r.y, r.x, r.y, weight};
}

template <class V>
HaarFeature<V> tilted_corners(int x, int y, int w, int h, V weight) {
  return {x + w - h, y + w + h, x - h, y + h, x + w, y + w, x, y, weight};
}

template <class V>
HaarFeature<V> tilted_corners_flag0(int x, int y, int w, int h, V weight) {
  return {x, y + h, x - h, y, x + w, y + h - w, x + w - h, y - w, weight};
}

// The bounding-rectangle rule: W and H are compared as extents but assigned right and bottom
// edges, and the minimum is subtracted once at the end.
template <class V>
void bound_features(HaarHeader<V>* h, int x0, int y0, int w0, int h0) {
  int min_x = x0, min_y = y0, W = w0, H = h0;
  const HaarFeature<V>* f = h->count > 0 ? h->first[0].first : nullptr;
  for (int i = 0; i < h->rect_count; ++i, ++f) {
    min_x = std::min(min_x, f->dx);
    min_y = std::min(min_y, f->dy);
    if (f->ax > min_x + W) W = f->ax;
    if (f->ay > min_y + H) H = f->ay;
  }
  h->bound_x = min_x;
  h->bound_y = min_y;
  h->bound_width = W - min_x;
  h->bound_height = H - min_y;
}

// Null, count and per-classifier size checks shared by the four constructors; also the block
// size (-9 when it does not fit the allocator's signed 32-bit count).
template <class S, class V>
RvpStatus check_init(S** ppState, const RvpiRect* pFeature, const V* pWeight, const V* pThreshold,
                     const V* pVal1, const V* pVal2, const int* pNum, int length,
                     int64_t* rect_count) {
  if (ppState == nullptr || pFeature == nullptr || pWeight == nullptr || pThreshold == nullptr ||
      pVal1 == nullptr || pVal2 == nullptr || pNum == nullptr)
    return rvpStsNullPtrErr;
  if (length < 0) return rvpStsSizeErr;
  int64_t m = 0;
  for (int i = 0; i < length; ++i) {
    if (pNum[i] < 1) return rvpStsSizeErr;
    m += pNum[i];
  }
  *rect_count = m;
  return rvpStsNoErr;
}

template <class V>
void* alloc_state(int length, int64_t m) {
  const int64_t bytes = kHeaderBytes + int64_t{kRecordBytes} * length + int64_t{kFeatureBytes} * m;
  if (bytes > INT_MAX) return nullptr;
  void* block = rvpMalloc(static_cast<int>(bytes));
  if (block != nullptr) std::memset(block, 0, static_cast<size_t>(bytes));
  return block;
}

template <class V>
HaarHeader<V>* layout(void* block, int length, int64_t m) {
  auto* h = static_cast<HaarHeader<V>*>(block);
  h->count = length;
  h->rect_count = static_cast<int32_t>(m);
  h->first = reinterpret_cast<HaarRecord<V>*>(static_cast<uint8_t*>(block) + kHeaderBytes);
  return h;
}

template <class V>
HaarFeature<V>* feature_area(HaarHeader<V>* h) {
  return reinterpret_cast<HaarFeature<V>*>(reinterpret_cast<uint8_t*>(h->first) +
                                           int64_t{kRecordBytes} * h->count);
}

template <class V>
bool all_leading_minus_one(const V* pWeight, const int* pNum, int length) {
  int64_t at = 0;
  for (int i = 0; i < length; ++i) {
    if (!leading_minus_one(pWeight[at])) return false;
    at += pNum[i];
  }
  return true;
}

template <class S, class V>
RvpStatus haar_init(S** ppState, const RvpiRect* pFeature, const V* pWeight, const V* pThreshold,
                    const V* pVal1, const V* pVal2, const int* pNum, int length) {
  int64_t m = 0;
  if (auto st = check_init(ppState, pFeature, pWeight, pThreshold, pVal1, pVal2, pNum, length, &m))
    return st;
  if constexpr (kFloat<V>) {
    for (int64_t k = 0; k < m; ++k)
      if (bad_rect(pFeature[k])) return rvpStsBadArgErr;
  }
  void* block = alloc_state<V>(length, m);
  if (block == nullptr) return rvpStsMemAllocErr;
  HaarHeader<V>* h = layout<V>(block, length, m);

  HaarRecord<V>* rec = h->first;
  HaarFeature<V>* feat = feature_area(h);
  int n2 = 0, n3 = 0;
  bool bad = false;
  // Classifier i owns the input rectangles from index `at`.
  auto store = [&](int i, int64_t at) {
    rec->rect_count = pNum[i];
    rec->first = feat;
    rec->threshold = pThreshold[i];
    rec->left = pVal1[i];
    rec->right = pVal2[i];
    rec->tag = static_cast<int32_t>(static_cast<uint32_t>(i) * 256u);
    for (int k = 0; k < pNum[i]; ++k) {
      const RvpiRect& r = pFeature[at + k];
      bad = bad || bad_rect(r);
      *feat++ = upright_corners(r, pWeight[at + k]);
    }
    ++rec;
  };
  // Two-rectangle classifiers first, then three-rectangle ones, then the rest.
  for (int pass = 0; pass < 3; ++pass) {
    if (pass == 2 && n2 + n3 == length) break;
    int64_t at = 0;
    for (int i = 0; i < length; at += pNum[i], ++i) {
      const bool take = pass == 0   ? pNum[i] == 2
                        : pass == 1 ? pNum[i] == 3
                                    : (pNum[i] != 2 && pNum[i] != 3);
      if (!take) continue;
      store(i, at);
      n2 += pass == 0;
      n3 += pass == 1;
    }
  }

  if (bad) {  // only the integer flavour gets here: it validates while filling
    rvpFree(block);
    *ppState = nullptr;
    return rvpStsBadArgErr;
  }
  if (length > 0)
    bound_features(h, pFeature[0].x, pFeature[0].y, pFeature[0].width, pFeature[0].height);
  if constexpr (kFloat<V>) {
    h->counts[0] = n2;
    h->counts[1] = n2 + n3;
    h->counts[2] = static_cast<int32_t>(m);
    h->leading_minus_one = all_leading_minus_one(pWeight, pNum, length) ? 1 : 0;
  } else {
    h->counts[0] = static_cast<int32_t>(m);
    h->counts[1] = n2;
    h->counts[2] = n2 + n3;
  }
  *ppState = reinterpret_cast<S*>(block);
  return rvpStsNoErr;
}

template <class S, class V>
RvpStatus tilted_init(S** ppState, const RvpiRect* pFeature, const V* pWeight, const V* pThreshold,
                      const V* pVal1, const V* pVal2, const int* pNum, int length) {
  int64_t m = 0;
  if (auto st = check_init(ppState, pFeature, pWeight, pThreshold, pVal1, pVal2, pNum, length, &m))
    return st;
  void* block = alloc_state<V>(length, m);
  if (block == nullptr) return rvpStsMemAllocErr;
  HaarHeader<V>* h = layout<V>(block, length, m);
  HaarRecord<V>* rec = h->first;
  HaarFeature<V>* feat = feature_area(h);
  bool bad = false;
  int64_t at = 0;
  for (int i = 0; i < length; ++i, ++rec) {
    rec->rect_count = pNum[i];
    rec->first = feat;
    rec->threshold = pThreshold[i];
    rec->left = pVal1[i];
    rec->right = pVal2[i];
    rec->tag = static_cast<int32_t>(static_cast<uint32_t>(i) * 256u + 1u);
    for (int k = 0; k < pNum[i]; ++k, ++at) {
      const RvpiRect& r = pFeature[at];
      bad = bad || bad_rect(r) || r.x + 1 < r.height;
      *feat++ = tilted_corners(r.x, r.y, r.width, r.height, pWeight[at]);
    }
  }
  if (bad) {
    rvpFree(block);
    *ppState = nullptr;
    return rvpStsBadArgErr;
  }
  if (length > 0) {
    const RvpiRect& r0 = pFeature[0];
    bound_features(h, r0.x, r0.y, r0.width - r0.height, r0.width + r0.height);
  }
  h->tilted = 1;
  if constexpr (kFloat<V>) {
    h->counts[2] = static_cast<int32_t>(m);
    h->leading_minus_one = all_leading_minus_one(pWeight, pNum, length) ? 1 : 0;
  } else {
    h->counts[0] = static_cast<int32_t>(m);
  }
  *ppState = reinterpret_cast<S*>(block);
  return rvpStsNoErr;
}

template <class V, class S>
RvpStatus tilt_features(const Rvp8u* pMask, int flag, S* pState) {
  if (pMask == nullptr || pState == nullptr) return rvpStsNullPtrErr;
  auto* h = reinterpret_cast<HaarHeader<V>*>(pState);
  if (h->tilted & 1) return rvpStsBadArgErr;
  bool any = false;
  for (int i = 0; i < h->count; ++i) {
    if (pMask[i] == 0) continue;
    any = true;
    HaarRecord<V>* c = h->first;
    HaarRecord<V>* end = c + h->count;
    while (c != end && (c->tag >> 8) != i) ++c;
    if (c == end) continue;
    // The index is dropped on purpose: i only rises, so a cleared tag is never searched again.
    c->tag = 1;
    for (int k = 0; k < c->rect_count; ++k) {
      HaarFeature<V>& f = c->first[k];
      const int x = f.dx, y = f.dy, w = f.ax - f.dx, hh = f.ay - f.dy;
      f = flag != 0 ? tilted_corners(x, y, w, hh, f.weight)
                    : tilted_corners_flag0(x, y, w, hh, f.weight);
    }
  }
  if (any) h->tilted |= 1;
  return rvpStsNoErr;
}

template <class V, class S>
RvpStatus classifier_size(const S* pState, RvpiSize* pSize) {
  if (pState == nullptr || pSize == nullptr) return rvpStsNullPtrErr;
  const auto* h = reinterpret_cast<const HaarHeader<V>*>(pState);
  int w = 0, hh = 0;
  if (h->count > 0) {
    const HaarFeature<V>* f = h->first[0].first;
    for (int i = 0; i < h->rect_count; ++i, ++f) {
      w = std::max(w, f->cx);
      hh = std::max(hh, f->ay);
    }
  }
  *pSize = {w, hh};
  return rvpStsNoErr;
}

// ---- apply ------------------------------------------------------------------------------------

enum class Flavour { F32, S32F, S32 };

template <Flavour F>
using TableOf = std::conditional_t<F == Flavour::F32, Rvp32f, Rvp32s>;
template <Flavour F>
using ValueOf = std::conditional_t<F == Flavour::S32, Rvp32s, Rvp32f>;

template <class T>
CornerOffsets offsets_of(const HaarFeature<T>& f, ptrdiff_t elems_per_row) {
  return {f.ay * elems_per_row + f.ax, f.by * elems_per_row + f.bx, f.cy * elems_per_row + f.cx,
          f.dy * elems_per_row + f.dx};
}

// Integer stage sum (non-mixed _32s): wrapping int32 products, sums and scaled thresholds.
inline int32_t stage_sum_i(const Rvp32s* win, int32_t norm, const HaarHeader<Rvp32s>& h,
                           const CornerOffsets* offs) {
  uint32_t t = 0;
  const HaarRecord<Rvp32s>* c = h.first;
  for (int i = 0; i < h.count; ++i, ++c) {
    uint32_t s = 0;
    for (int k = 0; k < c->rect_count; ++k, ++offs)
      s +=
          static_cast<uint32_t>(rect_sum_i(win, *offs)) * static_cast<uint32_t>(c->first[k].weight);
    const int32_t scaled =
        static_cast<int32_t>(static_cast<uint32_t>(c->threshold) * static_cast<uint32_t>(norm));
    t += static_cast<uint32_t>(static_cast<int32_t>(s) < scaled ? c->left : c->right);
  }
  return static_cast<int32_t>(t);
}

template <Flavour F, class S>
RvpStatus apply(const TableOf<F>* pSrc, int srcStep, const ValueOf<F>* pNorm, int normStep,
                Rvp8u* pMask, int maskStep, RvpiSize roi, int* pPositive, ValueOf<F> threshold,
                const S* pState) {
  using T = TableOf<F>;
  using V = ValueOf<F>;
  if (pSrc == nullptr || pNorm == nullptr || pMask == nullptr || pPositive == nullptr ||
      pState == nullptr)
    return rvpStsNullPtrErr;
  if (auto st = check_roi(roi)) return st;
  if (auto st =
          check_steps({image<T>(srcStep, roi), image<V>(normStep, roi), mask_image(maskStep, roi)}))
    return st;
  const auto& h = *reinterpret_cast<const HaarHeader<V>*>(pState);
  CornerOffsets* offs = nullptr;
  if (h.rect_count > 0) {
    const int64_t bytes = int64_t{h.rect_count} * int64_t{sizeof(CornerOffsets)};
    offs = bytes > INT_MAX ? nullptr : static_cast<CornerOffsets*>(rvpMalloc(int(bytes)));
    if (offs == nullptr) return rvpStsMemAllocErr;
    const HaarFeature<V>* f = h.first[0].first;
    for (int i = 0; i < h.rect_count; ++i) offs[i] = offsets_of(f[i], srcStep / int{sizeof(T)});
  }

  int positive = 0;
  for (int v = 0; v < roi.height; ++v) {
    const T* src_row = row(pSrc, srcStep, v);
    const V* norm = row(pNorm, normStep, v);
    Rvp8u* mask = row(pMask, maskStep, v);
    int u = 0;
    if constexpr (F != Flavour::S32) {
      // Blocks of eight positions with at least three active: one vector pass.
      for (; u + 8 <= roi.width; u += 8) {
        uint64_t m8;
        std::memcpy(&m8, mask + u, 8);
        if (m8 == 0) continue;
        int active = 0;
        for (int j = 0; j < 8; ++j) active += mask[u + j] != 0;
        if (active < 3) {
          for (int j = 0; j < 8; ++j) {
            if (mask[u + j] == 0) continue;
            const float t = ref::stage_sum_f(src_row + u + j, norm[u + j], h, offs);
            if (t < threshold)
              mask[u + j] = 0;
            else
              ++positive;
          }
          continue;
        }
        const __m256 t = avx2::stage_sum8_f(src_row + u, _mm256_loadu_ps(norm + u), h, offs);
        const int below =
            _mm256_movemask_ps(_mm256_cmp_ps(t, _mm256_set1_ps(threshold), _CMP_LT_OQ));
        for (int j = 0; j < 8; ++j) {
          if (mask[u + j] == 0) continue;
          if (below >> j & 1)
            mask[u + j] = 0;
          else
            ++positive;
        }
      }
    }
    for (; u < roi.width; ++u) {
      if (mask[u] == 0) continue;
      bool reject;
      if constexpr (F == Flavour::S32)
        reject = stage_sum_i(src_row + u, norm[u], h, offs) < threshold;
      else
        reject = ref::stage_sum_f(src_row + u, norm[u], h, offs) < threshold;
      if (reject)
        mask[u] = 0;
      else
        ++positive;
    }
  }
  rvpFree(offs);
  *pPositive = positive;
  return rvpStsNoErr;
}

// Mixed: tilted classifiers (tag bit 0) read the tilted table, whose element (1, 1) is the
// window origin; upright ones read the integral table. Corners are addressed per position.
template <Flavour F, class S>
RvpStatus apply_mixed(const TableOf<F>* pSrc, int srcStep, const TableOf<F>* pTilt, int tiltStep,
                      const ValueOf<F>* pNorm, int normStep, Rvp8u* pMask, int maskStep,
                      RvpiSize roi, int* pPositive, ValueOf<F> threshold, const S* pState,
                      int scaleFactor) {
  using T = TableOf<F>;
  using V = ValueOf<F>;
  if (pSrc == nullptr || pTilt == nullptr || pNorm == nullptr || pMask == nullptr ||
      pPositive == nullptr || pState == nullptr)
    return rvpStsNullPtrErr;
  if (auto st = check_roi(roi)) return st;
  if (auto st = check_steps({image<T>(srcStep, roi), image<T>(tiltStep, roi),
                             image<V>(normStep, roi), mask_image(maskStep, roi)}))
    return st;
  if (F == Flavour::S32 && scaleFactor > 0) return rvpStsBadArgErr;
  const auto& h = *reinterpret_cast<const HaarHeader<V>*>(pState);
  const ptrdiff_t src_elems = srcStep / int{sizeof(T)}, tilt_elems = tiltStep / int{sizeof(T)};
  const int shift = -scaleFactor;

  int positive = 0;
  for (int v = 0; v < roi.height; ++v) {
    const V* norm = row(pNorm, normStep, v);
    Rvp8u* mask = row(pMask, maskStep, v);
    for (int u = 0; u < roi.width; ++u) {
      if (mask[u] == 0) continue;
      const T* upright = row(pSrc, srcStep, v) + u;
      const T* tilted = row(pTilt, tiltStep, v + 1) + u + 1;
      V t = 0;
      uint32_t ti = 0;
      const HaarRecord<V>* c = h.first;
      for (int i = 0; i < h.count; ++i, ++c) {
        const bool is_tilted = c->tag & 1;
        const T* base = is_tilted ? tilted : upright;
        const ptrdiff_t elems = is_tilted ? tilt_elems : src_elems;
        if constexpr (F == Flavour::S32) {
          int64_t s = 0;
          for (int k = 0; k < c->rect_count; ++k)
            s += int64_t{rect_sum_i(base, offsets_of(c->first[k], elems))} * c->first[k].weight;
          const int64_t shifted =
              shift >= 64 ? 0 : static_cast<int64_t>(static_cast<uint64_t>(s) << shift);
          ti +=
              static_cast<uint32_t>(shifted < int64_t{c->threshold} * norm[u] ? c->left : c->right);
        } else {
          float s = 0.0f;
          for (int k = 0; k < c->rect_count; ++k)
            s += rect_sum_f(base, offsets_of(c->first[k], elems)) * c->first[k].weight;
          t += s < c->threshold * norm[u] ? c->left : c->right;
        }
      }
      bool reject;
      if constexpr (F == Flavour::S32)
        reject = static_cast<int32_t>(ti) < threshold;
      else
        reject = t < threshold;
      if (reject)
        mask[u] = 0;
      else
        ++positive;
    }
  }
  *pPositive = positive;
  return rvpStsNoErr;
}

}  // namespace
}  // namespace rvp::detect

using rvp::detect::Flavour;

// ---- exports ---------------------------------------------------------------------------------

RvpStatus rvpiHaarClassifierInitAlloc_32f(RvpiHaarClassifier_32f** ppState,
                                          const RvpiRect* pFeature, const Rvp32f* pWeight,
                                          const Rvp32f* pThreshold, const Rvp32f* pVal1,
                                          const Rvp32f* pVal2, const int* pNum, int length) {
  return rvp::detect::haar_init(ppState, pFeature, pWeight, pThreshold, pVal1, pVal2, pNum, length);
}
RvpStatus rvpiHaarClassifierInitAlloc_32s(RvpiHaarClassifier_32s** ppState,
                                          const RvpiRect* pFeature, const Rvp32s* pWeight,
                                          const Rvp32s* pThreshold, const Rvp32s* pVal1,
                                          const Rvp32s* pVal2, const int* pNum, int length) {
  return rvp::detect::haar_init(ppState, pFeature, pWeight, pThreshold, pVal1, pVal2, pNum, length);
}
RvpStatus rvpiTiltedHaarClassifierInitAlloc_32f(RvpiHaarClassifier_32f** ppState,
                                                const RvpiRect* pFeature, const Rvp32f* pWeight,
                                                const Rvp32f* pThreshold, const Rvp32f* pVal1,
                                                const Rvp32f* pVal2, const int* pNum, int length) {
  return rvp::detect::tilted_init(ppState, pFeature, pWeight, pThreshold, pVal1, pVal2, pNum,
                                  length);
}
RvpStatus rvpiTiltedHaarClassifierInitAlloc_32s(RvpiHaarClassifier_32s** ppState,
                                                const RvpiRect* pFeature, const Rvp32s* pWeight,
                                                const Rvp32s* pThreshold, const Rvp32s* pVal1,
                                                const Rvp32s* pVal2, const int* pNum, int length) {
  return rvp::detect::tilted_init(ppState, pFeature, pWeight, pThreshold, pVal1, pVal2, pNum,
                                  length);
}

// Both flavours release the same kind of block.
static RvpStatus free_state(void* pState) {
  if (pState == nullptr) return rvpStsNullPtrErr;
  rvpFree(pState);
  return rvpStsNoErr;
}
RvpStatus rvpiHaarClassifierFree_32f(RvpiHaarClassifier_32f* pState) { return free_state(pState); }
RvpStatus rvpiHaarClassifierFree_32s(RvpiHaarClassifier_32s* pState) { return free_state(pState); }

RvpStatus rvpiGetHaarClassifierSize_32f(const RvpiHaarClassifier_32f* pState, RvpiSize* pSize) {
  return rvp::detect::classifier_size<Rvp32f>(pState, pSize);
}
RvpStatus rvpiGetHaarClassifierSize_32s(const RvpiHaarClassifier_32s* pState, RvpiSize* pSize) {
  return rvp::detect::classifier_size<Rvp32s>(pState, pSize);
}

RvpStatus rvpiTiltHaarFeatures_32f(const Rvp8u* pMask, int flag, RvpiHaarClassifier_32f* pState) {
  return rvp::detect::tilt_features<Rvp32f>(pMask, flag, pState);
}
RvpStatus rvpiTiltHaarFeatures_32s(const Rvp8u* pMask, int flag, RvpiHaarClassifier_32s* pState) {
  return rvp::detect::tilt_features<Rvp32s>(pMask, flag, pState);
}

RvpStatus rvpiApplyHaarClassifier_32f_C1R(const Rvp32f* pSrc, int srcStep, const Rvp32f* pNorm,
                                          int normStep, Rvp8u* pMask, int maskStep,
                                          RvpiSize roiSize, int* pPositive, Rvp32f threshold,
                                          const RvpiHaarClassifier_32f* pState) {
  return rvp::detect::apply<Flavour::F32>(pSrc, srcStep, pNorm, normStep, pMask, maskStep, roiSize,
                                          pPositive, threshold, pState);
}
RvpStatus rvpiApplyHaarClassifier_32s32f_C1R(const Rvp32s* pSrc, int srcStep, const Rvp32f* pNorm,
                                             int normStep, Rvp8u* pMask, int maskStep,
                                             RvpiSize roiSize, int* pPositive, Rvp32f threshold,
                                             const RvpiHaarClassifier_32f* pState) {
  return rvp::detect::apply<Flavour::S32F>(pSrc, srcStep, pNorm, normStep, pMask, maskStep, roiSize,
                                           pPositive, threshold, pState);
}
RvpStatus rvpiApplyHaarClassifier_32s_C1RSfs(const Rvp32s* pSrc, int srcStep, const Rvp32s* pNorm,
                                             int normStep, Rvp8u* pMask, int maskStep,
                                             RvpiSize roiSize, int* pPositive, Rvp32s threshold,
                                             const RvpiHaarClassifier_32s* pState,
                                             int scaleFactor) {
  return rvp::detect::apply<Flavour::S32>(pSrc, srcStep, pNorm, normStep, pMask, maskStep, roiSize,
                                          pPositive, threshold, pState);
}
RvpStatus rvpiApplyMixedHaarClassifier_32f_C1R(const Rvp32f* pSrc, int srcStep, const Rvp32f* pTilt,
                                               int tiltStep, const Rvp32f* pNorm, int normStep,
                                               Rvp8u* pMask, int maskStep, RvpiSize roiSize,
                                               int* pPositive, Rvp32f threshold,
                                               const RvpiHaarClassifier_32f* pState) {
  return rvp::detect::apply_mixed<Flavour::F32>(pSrc, srcStep, pTilt, tiltStep, pNorm, normStep,
                                                pMask, maskStep, roiSize, pPositive, threshold,
                                                pState, 0);
}
RvpStatus rvpiApplyMixedHaarClassifier_32s32f_C1R(const Rvp32s* pSrc, int srcStep,
                                                  const Rvp32s* pTilt, int tiltStep,
                                                  const Rvp32f* pNorm, int normStep, Rvp8u* pMask,
                                                  int maskStep, RvpiSize roiSize, int* pPositive,
                                                  Rvp32f threshold,
                                                  const RvpiHaarClassifier_32f* pState) {
  return rvp::detect::apply_mixed<Flavour::S32F>(pSrc, srcStep, pTilt, tiltStep, pNorm, normStep,
                                                 pMask, maskStep, roiSize, pPositive, threshold,
                                                 pState, 0);
}
RvpStatus rvpiApplyMixedHaarClassifier_32s_C1RSfs(
    const Rvp32s* pSrc, int srcStep, const Rvp32s* pTilt, int tiltStep, const Rvp32s* pNorm,
    int normStep, Rvp8u* pMask, int maskStep, RvpiSize roiSize, int* pPositive, Rvp32s threshold,
    const RvpiHaarClassifier_32s* pState, int scaleFactor) {
  return rvp::detect::apply_mixed<Flavour::S32>(pSrc, srcStep, pTilt, tiltStep, pNorm, normStep,
                                                pMask, maskStep, roiSize, pPositive, threshold,
                                                pState, scaleFactor);
}
