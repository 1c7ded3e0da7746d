// Motion-history update: the documented edge cases, the vector path against the scalar path on
// random widths and alignments with special values, argument checks, guarded images.
#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <random>
#include <vector>

#include "arith/motion_kernels.h"
#include "rvpcv.h"
#include "support/guarded.h"
#include "support/images.h"

namespace {

using rvpt::TestImage;
const float kNaN = std::numeric_limits<float>::quiet_NaN();

// One pixel through the 8u member.
float update_one(float h, Rvp8u s, float ts, float dur) {
  Rvp32f mhi = h;
  EXPECT_EQ(rvpiUpdateMotionHistory_8u32f_C1IR(&s, 1, &mhi, 4, {1, 1}, ts, dur), 0);
  return mhi;
}

TEST(MotionHistory, EdgeCases) {
  // t = 10 - 4 = 6: equal kept, just below cleared, above timestamp kept.
  EXPECT_EQ(update_one(6.0f, 0, 10.0f, 4.0f), 6.0f);
  EXPECT_EQ(rvpt::float_bits(update_one(std::nextafter(6.0f, 0.0f), 0, 10.0f, 4.0f)), 0u);
  EXPECT_EQ(update_one(25.0f, 0, 10.0f, 4.0f), 25.0f);
  // -0.0 below t = +0.0 becomes +0.0; with t = -0.0 it is kept.
  EXPECT_EQ(rvpt::float_bits(update_one(-0.0f, 0, 3.0f, 3.0f)), 0u);
  EXPECT_EQ(rvpt::float_bits(update_one(-0.0f, 0, -0.0f, 0.0f)), 0x80000000u);
  // A nonzero silhouette stamps, whatever the history held (NaN included).
  EXPECT_EQ(update_one(kNaN, 9, 10.0f, 4.0f), 10.0f);
  EXPECT_EQ(update_one(-1e30f, 1, 10.0f, 0.0f), 10.0f);
  // A positive NaN is above every number: never cleared; a negative one is cleared.
  EXPECT_EQ(rvpt::float_bits(update_one(kNaN, 0, 10.0f, 4.0f)), rvpt::float_bits(kNaN));
  EXPECT_EQ(rvpt::float_bits(update_one(-kNaN, 0, 10.0f, 4.0f)), 0u);
  // Time going backwards is not an error.
  EXPECT_EQ(update_one(8.0f, 0, 5.0f, 1.0f), 8.0f);
  EXPECT_EQ(update_one(3.5f, 0, 5.0f, 1.0f), 0.0f);
}

TEST(MotionHistory, FloatSilhouetteZeroAndNaN) {
  const Rvp32f sil[4] = {-0.0f, 0.0f, kNaN, 1e-45f};
  Rvp32f mhi[4] = {7, 7, 7, 7};
  EXPECT_EQ(rvpiUpdateMotionHistory_32f_C1IR(sil, 16, mhi, 16, {4, 1}, 9.0f, 5.0f), 0);
  EXPECT_EQ(mhi[0], 7.0f);
  EXPECT_EQ(mhi[1], 7.0f);
  EXPECT_EQ(mhi[2], 9.0f);
  EXPECT_EQ(mhi[3], 9.0f);
}

template <class S>
void vector_matches_scalar(std::mt19937& rng) {
  for (int trial = 0; trial < 80; ++trial) {
    const int n = int(rng() % 100);
    const int off = int(rng() % 8);
    TestImage<Rvp32f> h(n + off + 1, 1);
    TestImage<S> s(n + off + 1, 1);
    rvpt::fill_random_special(h, rng);
    rvpt::fill_random_special(s, rng);
    for (int x = 0; x < n + off; ++x)
      if (rng() % 2) s.set(x, 0, S(0));
    if (trial % 3 == 0)
      for (int x = 0; x < n + off; ++x) h.set(x, 0, x % 2 ? -0.0f : 0.0f);
    std::vector<Rvp32f> ref(h.ptr(), h.ptr() + n + off);
    const float ts = trial % 3 == 0 ? 0.0f : rvpt::special_float(rng);
    const float t = ts - 2.5f;
    int32_t tb, sb;
    std::memcpy(&tb, &t, 4);
    std::memcpy(&sb, &ts, 4);
    const rvp::arith::MotionKernel<S> kv{s.ptr() + off, h.ptr() + off, rvp::arith::order_key(tb),
                                         sb};
    const rvp::arith::MotionKernel<S> kr{s.ptr() + off, ref.data() + off, rvp::arith::order_key(tb),
                                         sb};
    rvp::simd::run_row(kv, n);
    rvp::simd::run_row_scalar(kr, n);
    ASSERT_EQ(std::memcmp(h.ptr(), ref.data(), 4 * size_t(n + off)), 0) << n << " " << off;
  }
}

TEST(MotionHistory, VectorMatchesScalar) {
  std::mt19937 rng(31);
  vector_matches_scalar<Rvp8u>(rng);
  vector_matches_scalar<Rvp16u>(rng);
  vector_matches_scalar<Rvp32f>(rng);
}

// The order key against floating-point order on all non-NaN pairs of a sample of values.
TEST(MotionHistory, OrderKeyFollowsFloatOrder) {
  const float v[] = {-std::numeric_limits<float>::infinity(),
                     -1e30f,
                     -1.0f,
                     -1e-45f,
                     -0.0f,
                     0.0f,
                     1e-45f,
                     1.0f,
                     1e30f,
                     std::numeric_limits<float>::infinity()};
  for (size_t i = 0; i < std::size(v); ++i)
    for (size_t j = 0; j < std::size(v); ++j) {
      int32_t a, b;
      std::memcpy(&a, &v[i], 4);
      std::memcpy(&b, &v[j], 4);
      EXPECT_EQ(rvp::arith::order_key(a) < rvp::arith::order_key(b), i < j) << v[i] << v[j];
    }
}

TEST(MotionHistory, ChecksAndNothingWritten) {
  TestImage<Rvp16u> s(9, 3);
  TestImage<Rvp32f> h(9, 3);
  std::memset(h.ptr(), 0x41, size_t(h.step()) * 3);
  const auto before = h.bytes();
  const RvpiSize roi{9, 3};
  auto call = [&](const Rvp16u* sp, int ss, Rvp32f* hp, int hs, RvpiSize r, float dur) {
    return rvpiUpdateMotionHistory_16u32f_C1IR(sp, ss, hp, hs, r, 1.0f, dur);
  };
  EXPECT_EQ(call(nullptr, 18, h.ptr(), 36, {0, 3}, -1.0f), -8);
  EXPECT_EQ(call(s.ptr(), 18, nullptr, 36, roi, 1.0f), -8);
  EXPECT_EQ(call(s.ptr(), 18, h.ptr(), 36, {9, 0}, -1.0f), -6);
  EXPECT_EQ(call(s.ptr(), 17, h.ptr(), 37, roi, -1.0f), -14);
  EXPECT_EQ(call(s.ptr(), 19, h.ptr(), 32, roi, -1.0f), -14);
  EXPECT_EQ(call(s.ptr(), 19, h.ptr(), 36, roi, -1.0f), -108);
  EXPECT_EQ(call(s.ptr(), 18, h.ptr(), 38, roi, -1.0f), -108);
  EXPECT_EQ(call(s.ptr(), -18, h.ptr(), 36, roi, -1.0f), -14);
  EXPECT_EQ(call(s.ptr(), 18, h.ptr(), 36, roi, -1.0f), -11);
  EXPECT_EQ(call(s.ptr(), 18, h.ptr(), 36, roi, -1e-45f), -11);
  EXPECT_EQ(h.bytes(), before);
  EXPECT_EQ(call(s.ptr(), 18, h.ptr(), 36, roi, -0.0f), 0);  // -0.0 is not below 0
  EXPECT_EQ(rvpiUpdateMotionHistory_8u32f_C1IR(reinterpret_cast<Rvp8u*>(s.ptr()), 9, h.ptr(), 36,
                                               roi, 1.0f, 0.0f),
            0);
  EXPECT_EQ(rvpiUpdateMotionHistory_32f_C1IR(h.ptr(), 38, h.ptr(), 36, roi, 1.0f, 0.0f), -108);
}

TEST(MotionHistory, GuardedImages) {
  for (int w = 1; w <= 70; ++w)
    for (rvpt::Guard g : {rvpt::Guard::After, rvpt::Guard::Before}) {
      rvpt::GuardedImage<Rvp8u> s8(w, 3, 1, w + 5, g);
      rvpt::GuardedImage<Rvp32f> sf(w, 3, 1, 4 * w, g);
      rvpt::GuardedImage<Rvp32f> h(w, 3, 1, 4 * w + 4, g);
      std::memset(s8.bytes(), 1, s8.byte_count());
      std::memset(sf.bytes(), 0, sf.byte_count());
      std::memset(h.bytes(), 0, h.byte_count());
      EXPECT_EQ(rvpiUpdateMotionHistory_8u32f_C1IR(s8.ptr(), s8.step(), h.ptr(), h.step(), {w, 3},
                                                   2.0f, 1.0f),
                0);
      EXPECT_EQ(h.row(2)[w - 1], 2.0f);
      EXPECT_EQ(rvpiUpdateMotionHistory_32f_C1IR(sf.ptr(), sf.step(), h.ptr(), h.step(), {w, 3},
                                                 9.0f, 1.0f),
                0);
      EXPECT_EQ(h.row(0)[0], 0.0f);
    }
}

}  // namespace
