// Haar classifier state layout and the per-position evaluation of one stage.
//
// The state is one block: a 56-byte header, then one 32-byte record per classifier (regrouped
// by rectangle count), then one 36-byte record per rectangle. Its layout is part of the
// interface (callers inspect it), so the structs below are checked byte for byte.
#pragma once

#include <immintrin.h>

#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "rvpcv.h"

namespace rvp::detect {

template <class V>
struct HaarFeature {
  int32_t ax, ay, bx, by, cx, cy, dx, dy;  // corners A, B, C, D (x then y)
  V weight;
};

template <class V>
struct HaarRecord {
  int32_t rect_count;
  int32_t reserved;
  HaarFeature<V>* first;
  V threshold;
  V left;       // vote when the feature sum is below the scaled threshold
  V right;      // vote otherwise
  int32_t tag;  // input index * 256, + 1 when tilted
};

template <class V>
struct HaarHeader {
  int32_t count;
  int32_t rect_count;
  HaarRecord<V>* first;
  int32_t bound_x, bound_y, bound_width, bound_height;
  int32_t tilted;             // bit 0: at least one classifier is tilted
  int32_t counts[3];          // order by flavour (see the header file)
  int32_t leading_minus_one;  // _32f only
  int32_t reserved;
};

static_assert(sizeof(HaarFeature<float>) == 36 && sizeof(HaarFeature<int32_t>) == 36);
static_assert(sizeof(HaarRecord<float>) == 32 && sizeof(HaarRecord<int32_t>) == 32);
static_assert(sizeof(HaarHeader<float>) == 56 && offsetof(HaarHeader<float>, first) == 8 &&
              offsetof(HaarHeader<float>, tilted) == 32 &&
              offsetof(HaarHeader<float>, leading_minus_one) == 48);

// Element offsets of the four corners of a feature in one image (y * elements per row + x).
struct CornerOffsets {
  ptrdiff_t a, b, c, d;
};

// ---- per-flavour arithmetic -------------------------------------------------------------------

// Float votes: rectangle sums in float (from float tables) or wrapped int32 converted to float.
template <class T>
inline float rect_sum_f(const T* p, const CornerOffsets& o) {
  if constexpr (std::is_same_v<T, Rvp32f>) {
    return ((p[o.a] - p[o.b]) - p[o.c]) + p[o.d];
  } else {
    const uint32_t r = static_cast<uint32_t>(p[o.a]) - static_cast<uint32_t>(p[o.b]) -
                       static_cast<uint32_t>(p[o.c]) + static_cast<uint32_t>(p[o.d]);
    return static_cast<float>(static_cast<int32_t>(r));
  }
}

inline int32_t rect_sum_i(const Rvp32s* p, const CornerOffsets& o) {
  return static_cast<int32_t>(static_cast<uint32_t>(p[o.a]) - static_cast<uint32_t>(p[o.b]) -
                              static_cast<uint32_t>(p[o.c]) + static_cast<uint32_t>(p[o.d]));
}

namespace ref {

// Stage sum of one window (float flavours): classifiers and features in stored order.
template <class T>
inline float stage_sum_f(const T* win, float norm, const HaarHeader<float>& h,
                         const CornerOffsets* offs) {
  float t = 0.0f;
  const HaarRecord<float>* c = h.first;
  for (int i = 0; i < h.count; ++i, ++c) {
    float s = 0.0f;
    for (int k = 0; k < c->rect_count; ++k, ++offs)
      s += rect_sum_f(win, *offs) * c->first[k].weight;
    t += s < c->threshold * norm ? c->left : c->right;
  }
  return t;
}

}  // namespace ref

namespace avx2 {

// Stage sums of eight consecutive windows (float flavours). Window j's corners lie at the
// offsets of window 0 plus j, so every corner read is one contiguous load; the arithmetic is
// the scalar reference's, lane by lane.
template <class T>
inline __m256 load_rect_sum(const T* p, const CornerOffsets& o) {
  if constexpr (std::is_same_v<T, Rvp32f>) {
    const __m256 ab = _mm256_sub_ps(_mm256_loadu_ps(p + o.a), _mm256_loadu_ps(p + o.b));
    return _mm256_add_ps(_mm256_sub_ps(ab, _mm256_loadu_ps(p + o.c)), _mm256_loadu_ps(p + o.d));
  } else {
    auto ld = [](const T* q) { return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(q)); };
    const __m256i r = _mm256_add_epi32(
        _mm256_sub_epi32(_mm256_sub_epi32(ld(p + o.a), ld(p + o.b)), ld(p + o.c)), ld(p + o.d));
    return _mm256_cvtepi32_ps(r);
  }
}

template <class T>
inline __m256 stage_sum8_f(const T* win, __m256 norm, const HaarHeader<float>& h,
                           const CornerOffsets* offs) {
  __m256 t = _mm256_setzero_ps();
  const HaarRecord<float>* c = h.first;
  for (int i = 0; i < h.count; ++i, ++c) {
    __m256 s = _mm256_setzero_ps();
    for (int k = 0; k < c->rect_count; ++k, ++offs)
      s = _mm256_add_ps(
          s, _mm256_mul_ps(load_rect_sum(win, *offs), _mm256_set1_ps(c->first[k].weight)));
    const __m256 below =
        _mm256_cmp_ps(s, _mm256_mul_ps(_mm256_set1_ps(c->threshold), norm), _CMP_LT_OQ);
    t = _mm256_add_ps(t,
                      _mm256_blendv_ps(_mm256_set1_ps(c->right), _mm256_set1_ps(c->left), below));
  }
  return t;
}

}  // namespace avx2
}  // namespace rvp::detect
