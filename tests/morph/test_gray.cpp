// Gray-level morphology against a direct evaluation of the rule, checks and their order,
// nothing written on error, guarded images.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

#include "rvpcv.h"
#include "support/guarded.h"

namespace {

// The rule: positions inside the ROI only; dilation adds, erosion subtracts.
template <class T, class V>
T reference_pixel(const T* src, int step_elems, RvpiSize roi, const std::vector<V>& mask, int mw,
                  int mh, RvpiPoint a, int x, int y, bool dilate) {
  double e = 0;
  bool any = false;
  for (int r = 0; r < mh; ++r)
    for (int k = 0; k < mw; ++k) {
      const int sx = x + k - a.x, sy = y + r - a.y;
      if (sx < 0 || sy < 0 || sx >= roi.width || sy >= roi.height) continue;
      const double s = double(src[size_t(sy) * step_elems + sx]);
      const double v =
          dilate ? s + double(mask[size_t(r) * mw + k]) : s - double(mask[size_t(r) * mw + k]);
      if constexpr (std::is_same_v<T, Rvp32f>) {
        // Same single-precision arithmetic as the library.
        const float f = dilate ? float(s) + float(mask[size_t(r) * mw + k])
                               : float(s) - float(mask[size_t(r) * mw + k]);
        if (!any || (dilate ? f > e : f < e)) e = f;
      } else {
        if (!any || (dilate ? v > e : v < e)) e = v;
      }
      any = true;
    }
  if constexpr (std::is_same_v<T, Rvp32f>)
    return T(e);
  else
    return T(std::clamp(e, 0.0, 255.0));
}

template <class T, class V>
void run_random(uint32_t seed) {
  std::mt19937 rng(seed);
  for (int trial = 0; trial < 60; ++trial) {
    const int mw = std::uniform_int_distribution<int>(1, 6)(rng);
    const int mh = std::uniform_int_distribution<int>(1, 6)(rng);
    const RvpiPoint a{std::uniform_int_distribution<int>(0, mw - 1)(rng),
                      std::uniform_int_distribution<int>(0, mh - 1)(rng)};
    const int w = std::uniform_int_distribution<int>(1, 40)(rng);
    const int h = std::uniform_int_distribution<int>(1, 9)(rng);
    std::vector<V> mask(size_t(mw) * mh);
    for (auto& v : mask) v = V(std::uniform_int_distribution<int>(-60, 60)(rng));
    const bool dilate = trial % 2;
    const int step = (w + trial % 3) * int(sizeof(T));
    rvpt::GuardedImage<T> src(w, h, 1, step, rvpt::Guard::After),
        dst(w, h, 1, step, trial % 4 < 2 ? rvpt::Guard::After : rvpt::Guard::Before);
    for (int y = 0; y < h; ++y)
      for (int x = 0; x < w; ++x) {
        if constexpr (std::is_same_v<T, Rvp32f>)
          src.row(y)[x] = std::uniform_real_distribution<float>(-100, 100)(rng);
        else
          src.row(y)[x] = T(rng());
      }
    int size = 0;
    RvpStatus st;
    if constexpr (std::is_same_v<T, Rvp8u>)
      st = rvpiMorphGrayGetSize_8u_C1R({w + 1, h}, mask.data(), {mw, mh}, &size);
    else
      st = rvpiMorphGrayGetSize_32f_C1R({w + 1, h}, mask.data(), {mw, mh}, &size);
    ASSERT_EQ(st, 0);
    ASSERT_EQ(size, 48 + 4 * mw * mh);
    rvpt::GuardedBuffer state(size_t(size) + 1, rvpt::Guard::After);
    if constexpr (std::is_same_v<T, Rvp8u>) {
      auto* s = reinterpret_cast<RvpiMorphGrayState_8u*>(state.data() + 1);
      ASSERT_EQ(rvpiMorphGrayInit_8u_C1R(s, {w + 1, h}, mask.data(), {mw, mh}, a), 0);
      st = dilate ? rvpiGrayDilateBorder_8u_C1R(src.ptr(), step, dst.ptr(), step, {w, h}, 1, s)
                  : rvpiGrayErodeBorder_8u_C1R(src.ptr(), step, dst.ptr(), step, {w, h}, 1, s);
    } else {
      auto* s = reinterpret_cast<RvpiMorphGrayState_32f*>(state.data() + 1);
      ASSERT_EQ(rvpiMorphGrayInit_32f_C1R(s, {w + 1, h}, mask.data(), {mw, mh}, a), 0);
      st = dilate ? rvpiGrayDilateBorder_32f_C1R(src.ptr(), step, dst.ptr(), step, {w, h}, 1, s)
                  : rvpiGrayErodeBorder_32f_C1R(src.ptr(), step, dst.ptr(), step, {w, h}, 1, s);
    }
    ASSERT_EQ(st, 0);
    for (int y = 0; y < h; ++y)
      for (int x = 0; x < w; ++x)
        ASSERT_EQ(dst.row(y)[x], (reference_pixel<T, V>(src.ptr(), step / int(sizeof(T)), {w, h},
                                                        mask, mw, mh, a, x, y, dilate)))
            << "trial " << trial << " x " << x << " y " << y;
  }
}

TEST(GrayMorphology, MatchesRule8u) { run_random<Rvp8u, Rvp32s>(31); }
TEST(GrayMorphology, MatchesRule32f) { run_random<Rvp32f, Rvp32f>(32); }

// 8u clamps both ways; erosion subtracts the mask value.
TEST(GrayMorphology, ClampAndSign) {
  const Rvp32s mask[3] = {100, 0, -300};
  const Rvp8u src[4] = {200, 10, 250, 0};
  Rvp8u dst[4];
  RvpiMorphGrayState_8u* s = nullptr;
  ASSERT_EQ(rvpiMorphGrayInitAlloc_8u_C1R(&s, {4, 1}, mask, {3, 1}, {1, 0}), 0);
  ASSERT_EQ(rvpiGrayDilateBorder_8u_C1R(src, 4, dst, 4, {4, 1}, 1, s), 0);
  // x0: {src0+0, src1-300}; x1: {src0+100, src1, src2-300}; x2: {110, 250, -300}; x3: {350, 0}
  const Rvp8u dil[4] = {200, 255, 250, 255};
  for (int x = 0; x < 4; ++x) EXPECT_EQ(dst[x], dil[x]) << x;
  ASSERT_EQ(rvpiGrayErodeBorder_8u_C1R(src, 4, dst, 4, {4, 1}, 1, s), 0);
  // x0: {200, 310}; x1: {100, 10, 550}; x2: {-90, 250, 300}; x3: {150, 0}
  const Rvp8u ero[4] = {200, 10, 0, 0};
  for (int x = 0; x < 4; ++x) EXPECT_EQ(dst[x], ero[x]) << x;
  rvpiMorphGrayFree_8u_C1R(s);
}

TEST(GrayMorphology, ChecksInOrderAndNothingWritten) {
  const Rvp32f mask[4] = {1, 2, 3, 4};
  std::vector<uint8_t> mem(64, 0x11);
  auto* s = reinterpret_cast<RvpiMorphGrayState_32f*>(mem.data());
  EXPECT_EQ(rvpiMorphGrayInit_32f_C1R(s, {0, 1}, nullptr, {2, 2}, {0, 0}), rvpStsNullPtrErr);
  EXPECT_EQ(rvpiMorphGrayInit_32f_C1R(s, {0, 1}, mask, {2, 2}, {2, 0}), rvpStsSizeErr);
  EXPECT_EQ(rvpiMorphGrayInit_32f_C1R(s, {4, 1}, mask, {2, 0}, {0, 0}), rvpStsSizeErr);
  EXPECT_EQ(rvpiMorphGrayInit_32f_C1R(s, {4, 1}, mask, {2, 2}, {2, 0}), rvpStsMaskSizeErr);
  EXPECT_EQ(rvpiMorphGrayInit_32f_C1R(s, {4, 1}, mask, {2, 2}, {0, -1}), rvpStsMaskSizeErr);
  RvpiMorphGrayState_32f* keep = s;
  EXPECT_EQ(rvpiMorphGrayInitAlloc_32f_C1R(&keep, {4, 1}, mask, {2, 2}, {0, 2}), rvpStsMaskSizeErr);
  EXPECT_EQ(keep, s);
  EXPECT_TRUE(std::all_of(mem.begin(), mem.end(), [](uint8_t v) { return v == 0x11; }));
  int size;
  EXPECT_EQ(rvpiMorphGrayGetSize_32f_C1R({4, 3}, mask, {2, 2}, nullptr), rvpStsNullPtrErr);
  EXPECT_EQ(rvpiMorphGrayGetSize_32f_C1R({4, 0}, mask, {2, 2}, &size), rvpStsSizeErr);
  ASSERT_EQ(rvpiMorphGrayInit_32f_C1R(s, {4, 3}, mask, {2, 2}, {1, 1}), 0);

  Rvp32f src[12] = {}, dst[12];
  std::fill(dst, dst + 12, 7.f);
  const RvpStatus want[] = {rvpStsNullPtrErr, rvpStsSizeErr, rvpStsStepErr,
                            rvpStsBadArgErr,  rvpStsSizeErr, rvpStsSizeErr};
  const RvpStatus got[] = {
      rvpiGrayDilateBorder_32f_C1R(src, 16, dst, 16, {4, 3}, 1, nullptr),
      rvpiGrayDilateBorder_32f_C1R(src, 16, dst, 16, {4, 0}, 6, s),
      rvpiGrayDilateBorder_32f_C1R(src, 3, dst, 16, {4, 3}, 6, s),  // elements, not bytes
      rvpiGrayErodeBorder_32f_C1R(src, 16, dst, 16, {4, 3}, 6, s),
      rvpiGrayErodeBorder_32f_C1R(src, 20, dst, 20, {5, 2}, 1, s),
      rvpiGrayErodeBorder_32f_C1R(src, 16, dst, 16, {4, 4}, 1, s)};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(got[i], want[i]) << i;
  for (float v : dst) ASSERT_EQ(v, 7.f);
  // A state of the other type is refused.
  EXPECT_EQ(
      rvpiGrayDilateBorder_8u_C1R(reinterpret_cast<Rvp8u*>(src), 4, reinterpret_cast<Rvp8u*>(dst),
                                  4, {4, 3}, 1, reinterpret_cast<RvpiMorphGrayState_8u*>(s)),
      rvpStsContextMatchErr);
  for (float v : dst) ASSERT_EQ(v, 7.f);
}

}  // namespace
