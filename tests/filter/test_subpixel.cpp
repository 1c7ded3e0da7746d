// Sub-pixel copies and line sampling: the weights and floors, every member against the stated
// arithmetic, vector rows against scalar rows, the rectangle crossing the image edge, lines,
// check order with nothing written, guarded images.
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "core/simd.h"
#include "filter/subpixel_kernels.h"
#include "rvpcv.h"
#include "support/guarded.h"
#include "support/images.h"

namespace {

using rvpt::TestImage;

float frac(float d, float floor_value) {
  float f = d - std::trunc(d);
  if (f < 0) f += 1;
  return std::max(f, floor_value);
}

// The stated arithmetic for one destination element.
float interp(float fx, float fy, float a, float b, float c, float d) {
  const float w00 = (1 - fy) * (1 - fx), w01 = fx * (1 - fy), w10 = fy * (1 - fx), w11 = fx * fy;
  float v = w00 * a;
  v = v + w01 * b;
  v = v + w10 * c;
  v = v + w11 * d;
  return v;
}

template <class S, class D>
using CopyFn = RvpStatus (*)(const S*, int, D*, int, RvpiSize, Rvp32f, Rvp32f);

template <class D>
D convert(float v) {
  if constexpr (std::is_same_v<D, float>)
    return v;
  else
    return static_cast<D>(
        std::min(std::max(std::nearbyint(v), 0.0f), float(std::numeric_limits<D>::max())));
}

template <class S, class D>
void copy_member(CopyFn<S, D> fn, std::mt19937& rng) {
  for (int iter = 0; iter < 150; ++iter) {
    const int w = 1 + int(rng() % 150), h = 1 + int(rng() % 5);
    TestImage<S> src(w + 1, h + 1, 1, int(rng() % 4) * int(sizeof(S)),
                     int(rng() % 8) * int(sizeof(S)));
    TestImage<D> dst(w, h, 1, int(rng() % 4) * int(sizeof(D)), int(rng() % 8) * int(sizeof(D)));
    rvpt::fill_random(src, rng);
    const float dx = std::uniform_real_distribution<float>(-20, 20)(rng);
    const float dy =
        iter % 5 == 0 ? float(int(rng() % 7)) : std::uniform_real_distribution<float>(-20, 20)(rng);
    ASSERT_EQ(fn(src.ptr(), src.step(), dst.ptr(), dst.step(), {w, h}, dx, dy), 0);
    const float fx = frac(dx, 0.000001f), fy = frac(dy, 0.000000001f);
    for (int y = 0; y < h; ++y)
      for (int x = 0; x < w; ++x) {
        const D want = convert<D>(
            interp(fx, fy, src.at(x, y), src.at(x + 1, y), src.at(x, y + 1), src.at(x + 1, y + 1)));
        ASSERT_TRUE(rvpt::same_result(dst.at(x, y), want)) << x << "," << y << " w " << w;
      }
  }
}

TEST(CopySubpix, EveryMemberFollowsTheWeights) {
  std::mt19937 rng(1);
  copy_member<Rvp8u, Rvp8u>(rvpiCopySubpix_8u_C1R, rng);
  copy_member<Rvp8u, Rvp32f>(rvpiCopySubpix_8u32f_C1R, rng);
  copy_member<Rvp16u, Rvp16u>(rvpiCopySubpix_16u_C1R, rng);
  copy_member<Rvp16u, Rvp32f>(rvpiCopySubpix_16u32f_C1R, rng);
  copy_member<Rvp32f, Rvp32f>(rvpiCopySubpix_32f_C1R, rng);
}

TEST(CopySubpix, IntegerPositionCopiesAndNegativeFractions) {
  TestImage<Rvp16u> src(9, 4);
  std::mt19937 rng(2);
  rvpt::fill_random(src, rng);
  TestImage<Rvp32f> dst(8, 3);
  ASSERT_EQ(
      rvpiCopySubpix_16u32f_C1R(src.ptr(), src.step(), dst.ptr(), dst.step(), {8, 3}, 3.0f, 0.0f),
      0);
  for (int y = 0; y < 3; ++y)
    for (int x = 0; x < 8; ++x) EXPECT_NEAR(dst.at(x, y), src.at(x, y), 0.07) << x;  // floors only
  TestImage<Rvp16u> d16(8, 3);
  ASSERT_EQ(
      rvpiCopySubpix_16u_C1R(src.ptr(), src.step(), d16.ptr(), d16.step(), {8, 3}, -5.0f, 2.0f), 0);
  for (int y = 0; y < 3; ++y)
    for (int x = 0; x < 8; ++x) EXPECT_EQ(d16.at(x, y), src.at(x, y));
  // dx = -0.25 uses fx = 0.75.
  ASSERT_EQ(
      rvpiCopySubpix_16u32f_C1R(src.ptr(), src.step(), dst.ptr(), dst.step(), {8, 3}, -0.25f, 0.5f),
      0);
  EXPECT_EQ(dst.at(2, 1),
            interp(0.75f, 0.5f, src.at(2, 1), src.at(3, 1), src.at(2, 2), src.at(3, 2)));
  EXPECT_NEAR(
      dst.at(2, 1),
      0.125 * src.at(2, 1) + 0.375 * src.at(3, 1) + 0.125 * src.at(2, 2) + 0.375 * src.at(3, 2),
      0.01);
}

TEST(CopySubpix, ScaleFactorMember) {
  TestImage<Rvp8u> src(5, 2);
  for (int x = 0; x < 5; ++x) src.set(x, 0, Rvp8u(50 * x)), src.set(x, 1, Rvp8u(50 * x));
  TestImage<Rvp16u> dst(4, 1);
  for (int sf : {-8, -2, 0, 1, 3}) {
    ASSERT_EQ(rvpiCopySubpix_8u16u_C1R_Sfs(src.ptr(), src.step(), dst.ptr(), dst.step(), {4, 1},
                                           0.5f, 0.0f, sf),
              0);
    for (int x = 0; x < 4; ++x) {
      const float v = interp(0.5f, 0.000000001f, src.at(x, 0), src.at(x + 1, 0), src.at(x, 1),
                             src.at(x + 1, 1));
      const double want = std::min(65535.0, std::nearbyint(std::ldexp(double(v), -sf)));
      EXPECT_EQ(dst.at(x, 0), want) << "sf " << sf << " x " << x;
    }
  }
  EXPECT_EQ(dst.at(1, 0), (75 + 4) >> 3);  // 75 / 8 = 9.375 -> 9
}

template <class S, class D>
void rows_match(std::mt19937& rng) {
  for (int iter = 0; iter < 300; ++iter) {
    const int n = 1 + int(rng() % 100), off = int(rng() % 8);
    std::vector<S> r0(n + 1 + off), r1(n + 1 + off);
    for (auto& v : r0) v = rvpt::random_value<S>(rng);
    for (auto& v : r1)
      v = std::is_same_v<S, float> ? rvpt::special_float(rng) : rvpt::random_value<S>(rng);
    const float fx = std::uniform_real_distribution<float>(0, 1)(rng);
    const float fy = std::uniform_real_distribution<float>(0, 1)(rng);
    const rvp::subpix::Weights w{(1 - fy) * (1 - fx), fx * (1 - fy), fy * (1 - fx), fx * fy};
    std::vector<D> a(n + 8), b(n + 8);
    const int doff = int(rng() % 4);
    rvp::simd::run_row(
        rvp::subpix::CopyKernel<S, D>{r0.data() + off, r1.data() + off, a.data() + doff, w}, n);
    rvp::simd::run_row_scalar(
        rvp::subpix::CopyKernel<S, D>{r0.data() + off, r1.data() + off, b.data() + doff, w}, n);
    for (int k = 0; k < n + 8; ++k) ASSERT_TRUE(rvpt::same_result(a[k], b[k])) << k;
  }
}

TEST(CopySubpix, VectorRowsEqualScalarRows) {
  std::mt19937 rng(3);
  rows_match<Rvp8u, Rvp8u>(rng);
  rows_match<Rvp8u, Rvp32f>(rng);
  rows_match<Rvp16u, Rvp16u>(rng);
  rows_match<Rvp16u, Rvp32f>(rng);
  rows_match<Rvp32f, Rvp32f>(rng);
}

TEST(CopySubpix, ChecksAndNothingWritten) {
  TestImage<Rvp16u> src(9, 5);
  TestImage<Rvp32f> dst(8, 4);
  const auto before = dst.bytes();
  const int ss = src.step(), ds = dst.step();
  auto f = rvpiCopySubpix_16u32f_C1R;
  EXPECT_EQ(f(nullptr, ss, dst.ptr(), ds, {8, 4}, 0.5f, 0.5f), rvpStsNullPtrErr);
  EXPECT_EQ(f(src.ptr(), ss, nullptr, ds, {8, 4}, 0.5f, 0.5f), rvpStsNullPtrErr);
  EXPECT_EQ(f(src.ptr(), ss, dst.ptr(), ds, {0, 4}, 0.5f, 0.5f), rvpStsSizeErr);
  EXPECT_EQ(f(src.ptr(), 15, dst.ptr(), ds, {8, 4}, 0.5f, 0.5f), rvpStsStepErr);
  EXPECT_EQ(f(src.ptr(), 17, dst.ptr(), 31, {8, 4}, 0.5f, 0.5f), rvpStsStepErr);
  EXPECT_EQ(f(src.ptr(), 17, dst.ptr(), ds, {8, 4}, 0.5f, 0.5f), rvpStsNotEvenStepErr);
  EXPECT_EQ(f(src.ptr(), ss, dst.ptr(), 34, {8, 4}, 0.5f, 0.5f), rvpStsNotEvenStepErr);
  EXPECT_EQ(dst.bytes(), before);
}

TEST(CopySubpix, GuardedImages) {
  for (rvpt::Guard g : {rvpt::Guard::After, rvpt::Guard::Before})
    for (int w = 1; w <= 70; ++w) {
      const int h = 1 + w % 3;
      rvpt::GuardedImage<Rvp8u> s8(w + 1, h + 1, 1, w + 1, g), d8(w, h, 1, w, g);
      rvpt::GuardedImage<Rvp16u> s16(w + 1, h + 1, 1, 2 * w + 2, g), d16(w, h, 1, 2 * w, g);
      rvpt::GuardedImage<Rvp32f> s32(w + 1, h + 1, 1, 4 * w + 4, g), d32(w, h, 1, 4 * w, g);
      const RvpiSize roi{w, h};
      ASSERT_EQ(rvpiCopySubpix_8u_C1R(s8.ptr(), s8.step(), d8.ptr(), d8.step(), roi, 0.3f, 0.6f),
                0);
      ASSERT_EQ(
          rvpiCopySubpix_8u32f_C1R(s8.ptr(), s8.step(), d32.ptr(), d32.step(), roi, 0.3f, 0.6f), 0);
      ASSERT_EQ(rvpiCopySubpix_8u16u_C1R_Sfs(s8.ptr(), s8.step(), d16.ptr(), d16.step(), roi, 0.3f,
                                             0.6f, -2),
                0);
      ASSERT_EQ(
          rvpiCopySubpix_16u_C1R(s16.ptr(), s16.step(), d16.ptr(), d16.step(), roi, 0.3f, 0.6f), 0);
      ASSERT_EQ(
          rvpiCopySubpix_16u32f_C1R(s16.ptr(), s16.step(), d32.ptr(), d32.step(), roi, 0.3f, 0.6f),
          0);
      ASSERT_EQ(
          rvpiCopySubpix_32f_C1R(s32.ptr(), s32.step(), d32.ptr(), d32.step(), roi, 0.3f, 0.6f), 0);
      // The intersecting copy reads only the source region, whatever the rectangle.
      RvpiPoint mn, mx;
      for (float p : {-3.5f, 0.2f, float(w) * 0.5f, float(w) + 2.7f})
        ASSERT_EQ(
            rvpiCopySubpixIntersect_16u32f_C1R(s16.ptr(), s16.step(), {w + 1, h + 1}, d32.ptr(),
                                               d32.step(), roi, {p, p * 0.3f}, &mn, &mx),
            0);
    }
}

// ---- the rectangle crossing the edge ----------------------------------------------------------

TEST(CopySubpixIntersect, InsideEqualsTheCopyAndEdgesRepeat) {
  std::mt19937 rng(5);
  TestImage<Rvp8u> src(40, 30);
  rvpt::fill_random(src, rng);
  const RvpiSize sroi{40, 30};
  TestImage<Rvp32f> a(9, 7), b(9, 7);
  RvpiPoint mn{-5, -5}, mx{-5, -5};
  // Centre (20.3, 11.8): origin (16.3, 8.8), entirely inside.
  ASSERT_EQ(rvpiCopySubpixIntersect_8u32f_C1R(src.ptr(), src.step(), sroi, a.ptr(), a.step(),
                                              {9, 7}, {20.3f, 11.8f}, &mn, &mx),
            0);
  const float ox = 20.3f - 4.0f, oy = 11.8f - 3.0f;
  ASSERT_EQ(
      rvpiCopySubpix_8u32f_C1R(src.row(8) + 16, src.step(), b.ptr(), b.step(), {9, 7}, ox, oy), 0);
  for (int y = 0; y < 7; ++y)
    for (int x = 0; x < 9; ++x) ASSERT_EQ(a.at(x, y), b.at(x, y));
  EXPECT_EQ(mn.x, 0);
  EXPECT_EQ(mn.y, 0);
  EXPECT_EQ(mx.x, 8);
  EXPECT_EQ(mx.y, 6);

  // Centre (1.5, 28.5) of a 9x7 rectangle: origin (-2.5, 25.5); columns 0..2 and rows 4..6
  // need clamping.
  ASSERT_EQ(rvpiCopySubpixIntersect_8u32f_C1R(src.ptr(), src.step(), sroi, a.ptr(), a.step(),
                                              {9, 7}, {1.5f, 28.5f}, &mn, &mx),
            0);
  EXPECT_EQ(mn.x, 3);
  EXPECT_EQ(mx.x, 8);
  EXPECT_EQ(mn.y, 0);
  EXPECT_EQ(mx.y, 3);
  // Column 0 samples at x = -2.5: both taps clamp to column 0; row 6 at y = 31.5 clamps to 29.
  EXPECT_FLOAT_EQ(a.at(0, 6), float(src.at(0, 29)));
  EXPECT_NEAR(a.at(0, 0), 0.5 * src.at(0, 25) + 0.5 * src.at(0, 26), 1e-3);

  // Entirely outside: empty range, every pixel an edge pixel.
  ASSERT_EQ(rvpiCopySubpixIntersect_8u32f_C1R(src.ptr(), src.step(), sroi, a.ptr(), a.step(),
                                              {9, 7}, {-100.0f, -100.0f}, &mn, &mx),
            0);
  EXPECT_EQ(mn.x, 0);
  EXPECT_EQ(mx.x, -1);
  EXPECT_EQ(mx.y, -1);
  for (int y = 0; y < 7; ++y)
    for (int x = 0; x < 9; ++x) ASSERT_FLOAT_EQ(a.at(x, y), float(src.at(0, 0)));

  // Checks.
  const auto before = a.bytes();
  RvpiPoint keep{7, 7};
  EXPECT_EQ(rvpiCopySubpixIntersect_8u32f_C1R(src.ptr(), src.step(), sroi, a.ptr(), a.step(),
                                              {9, 7}, {1, 1}, nullptr, &keep),
            rvpStsNullPtrErr);
  EXPECT_EQ(rvpiCopySubpixIntersect_8u32f_C1R(src.ptr(), src.step(), {0, 30}, a.ptr(), a.step(),
                                              {9, 7}, {1, 1}, &keep, &keep),
            rvpStsSizeErr);
  EXPECT_EQ(rvpiCopySubpixIntersect_8u32f_C1R(src.ptr(), 39, sroi, a.ptr(), a.step(), {9, 7},
                                              {1, 1}, &keep, &keep),
            rvpStsStepErr);
  EXPECT_EQ(rvpiCopySubpixIntersect_8u32f_C1R(src.ptr(), src.step(), sroi, a.ptr(), 38, {9, 7},
                                              {1, 1}, &keep, &keep),
            rvpStsNotEvenStepErr);
  EXPECT_EQ(rvpiCopySubpixIntersect_8u32f_C1R(src.ptr(), src.step(), sroi, a.ptr(), a.step(),
                                              {9, 7}, {std::nanf(""), 1}, &keep, &keep),
            rvpStsBadArgErr);
  EXPECT_EQ(a.bytes(), before);
  EXPECT_EQ(keep.x, 7);

  // The Sfs member: the same sampling, scaled by 2^-sf.
  TestImage<Rvp16u> s(9, 7);
  ASSERT_EQ(rvpiCopySubpixIntersect_8u16u_C1R_Sfs(src.ptr(), src.step(), sroi, s.ptr(), s.step(),
                                                  {9, 7}, {20.3f, 11.8f}, &mn, &mx, -4),
            0);
  for (int y = 0; y < 7; ++y)
    for (int x = 0; x < 9; ++x)
      ASSERT_EQ(s.at(x, y), std::nearbyint(b.at(x, y) * 16.0)) << x << "," << y;
}

// ---- lines ------------------------------------------------------------------------------------

TEST(SampleLine, PixelsAlongTheLine) {
  TestImage<Rvp16u> img(50, 40, 3);
  for (int y = 0; y < 40; ++y)
    for (int x = 0; x < 50; ++x)
      for (int c = 0; c < 3; ++c) img.set(x, y, Rvp16u(1000 * c + 50 * y + x), c);
  struct Case {
    RvpiPoint a, b;
  };
  const Case cases[] = {{{3, 4}, {3, 4}},   {{0, 0}, {49, 0}}, {{10, 39}, {10, 2}},
                        {{0, 0}, {39, 39}}, {{5, 5}, {12, 8}}, {{40, 30}, {1, 2}},
                        {{7, 1}, {9, 30}}};
  for (const Case& k : cases) {
    const int dx = k.b.x - k.a.x, dy = k.b.y - k.a.y, n = std::max(std::abs(dx), std::abs(dy));
    std::vector<Rvp16u> out(3 * (n + 1) + 3, 0xBEEF);
    ASSERT_EQ(rvpiSampleLine_16u_C3R(img.ptr(), img.step(), {50, 40}, out.data(), k.a, k.b), 0);
    for (int i = 0; i <= n; ++i) {
      // Rounded to nearest, halves away from zero.
      const double tx = n ? double(i) * dx / n : 0.0, ty = n ? double(i) * dy / n : 0.0;
      const int x = k.a.x + int(std::copysign(std::floor(std::fabs(tx) + 0.5), tx));
      const int y = k.a.y + int(std::copysign(std::floor(std::fabs(ty) + 0.5), ty));
      for (int c = 0; c < 3; ++c) ASSERT_EQ(out[3 * i + c], img.at(x, y, c)) << i;
    }
    EXPECT_EQ(out[3 * (n + 1)], 0xBEEF);  // nothing past the last sample
    // The first and last samples are the end points.
    EXPECT_EQ(out[0], img.at(k.a.x, k.a.y));
    EXPECT_EQ(out[3 * n], img.at(k.b.x, k.b.y));
  }
}

TEST(SampleLine, ChecksAndOtherMembers) {
  TestImage<Rvp8u> img(10, 8);
  std::vector<Rvp8u> out(64, 7);
  EXPECT_EQ(rvpiSampleLine_8u_C1R(nullptr, 10, {10, 8}, out.data(), {0, 0}, {1, 1}),
            rvpStsNullPtrErr);
  EXPECT_EQ(rvpiSampleLine_8u_C1R(img.ptr(), 10, {10, 8}, nullptr, {0, 0}, {1, 1}),
            rvpStsNullPtrErr);
  EXPECT_EQ(rvpiSampleLine_8u_C1R(img.ptr(), 10, {0, 8}, out.data(), {0, 0}, {1, 1}),
            rvpStsSizeErr);
  EXPECT_EQ(rvpiSampleLine_8u_C1R(img.ptr(), 9, {10, 8}, out.data(), {0, 0}, {1, 1}),
            rvpStsStepErr);
  EXPECT_EQ(rvpiSampleLine_8u_C1R(img.ptr(), 10, {10, 8}, out.data(), {10, 0}, {1, 1}),
            rvpStsOutOfRangeErr);
  EXPECT_EQ(rvpiSampleLine_8u_C1R(img.ptr(), 10, {10, 8}, out.data(), {0, 0}, {1, -1}),
            rvpStsOutOfRangeErr);
  EXPECT_EQ(out, std::vector<Rvp8u>(64, 7));
  TestImage<Rvp32f> f(6, 6, 3);
  std::vector<Rvp32f> fo(18);
  EXPECT_EQ(rvpiSampleLine_32f_C3R(f.ptr(), f.step(), {6, 6}, fo.data(), {0, 0}, {5, 5}), 0);
  EXPECT_EQ(rvpiSampleLine_32f_C1R(f.ptr(), f.step(), {6, 6}, fo.data(), {0, 5}, {5, 0}), 0);
  EXPECT_EQ(rvpiSampleLine_32f_C1R(f.ptr(), f.step() + 2, {6, 6}, fo.data(), {0, 5}, {5, 0}),
            rvpStsNotEvenStepErr);
  EXPECT_EQ(rvpiSampleLine_8u_C3R(img.ptr(), 10, {3, 8}, out.data(), {0, 0}, {2, 7}), 0);
  std::vector<Rvp16u> so(10);
  TestImage<Rvp16u> s(5, 5);
  EXPECT_EQ(rvpiSampleLine_16u_C1R(s.ptr(), s.step(), {5, 5}, so.data(), {4, 4}, {0, 2}), 0);
}

}  // namespace
