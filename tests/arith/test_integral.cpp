// Integral, squared and tilted tables and window deviations: exact values against brute-force
// sums, vector kernels against their references, checks, and guarded images.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

#include "arith/integral_kernels.h"
#include "rvpcv.h"
#include "support/guarded.h"
#include "support/images.h"

namespace {

using rvpt::TestImage;

// Sum of f(pixel) over the pixels for which in(px, py) holds, in 64-bit integers.
template <class In, class F>
int64_t brute_sum(const TestImage<Rvp8u>& s, In in, F f) {
  int64_t acc = 0;
  for (int py = 0; py < s.height(); ++py)
    for (int px = 0; px < s.width(); ++px)
      if (in(px, py)) acc += f(s.at(px, py));
  return acc;
}
int64_t id(Rvp8u v) { return v; }
int64_t sqr(Rvp8u v) { return int64_t{v} * v; }

// The cone of tilted table element (x, R): rows up to s = R - 2, widening upwards.
bool in_cone(int px, int py, int x, int r) {
  const int s = r - 2, d = s - py;
  return d >= 0 && px >= x - 1 - d && px <= x + d;
}

TEST(Integral, UprightTablesEqualBruteForceSums) {
  std::mt19937 rng(11);
  for (int w : {1, 2, 7, 8, 9, 15, 16, 17, 31, 33, 70})
    for (int h : {1, 3, 6}) {
      const int pad = int(rng() % 9), off = int(rng() % 8);
      TestImage<Rvp8u> src(w, h, 1, pad, off);
      rvpt::fill_random(src, rng);
      const RvpiSize roi{w, h};
      TestImage<Rvp32s> i32(w + 1, h + 1, 1, 4 * int(rng() % 3), 4 * int(rng() % 3));
      TestImage<Rvp32s> q32(w + 1, h + 1, 1, 4, 0);
      TestImage<Rvp32f> f32(w + 1, h + 1, 1, 0, 4);
      TestImage<Rvp64f> q64(w + 1, h + 1, 1, 8, 8);
      TestImage<Rvp32s> i32b(w + 1, h + 1);
      TestImage<Rvp32f> f32b(w + 1, h + 1);
      TestImage<Rvp64f> q64b(w + 1, h + 1);
      const Rvp32s val = -7;
      ASSERT_EQ(rvpiIntegral_8u32s_C1R(src.ptr(), src.step(), i32b.ptr(), i32b.step(), roi, val),
                0);
      ASSERT_EQ(rvpiSqrIntegral_8u32s_C1R(src.ptr(), src.step(), i32.ptr(), i32.step(), q32.ptr(),
                                          q32.step(), roi, val, 5),
                0);
      ASSERT_EQ(rvpiIntegral_8u32f_C1R(src.ptr(), src.step(), f32b.ptr(), f32b.step(), roi, 3.0f),
                0);
      ASSERT_EQ(rvpiSqrIntegral_8u32f64f_C1R(src.ptr(), src.step(), f32.ptr(), f32.step(),
                                             q64.ptr(), q64.step(), roi, 3.0f, 0.25),
                0);
      TestImage<Rvp32s> i32c(w + 1, h + 1);
      ASSERT_EQ(rvpiSqrIntegral_8u32s64f_C1R(src.ptr(), src.step(), i32c.ptr(), i32c.step(),
                                             q64b.ptr(), q64b.step(), roi, val, 0.5),
                0);
      for (int y = 0; y <= h; ++y)
        for (int x = 0; x <= w; ++x) {
          auto in = [&](int px, int py) { return px < x && py < y; };
          const int64_t s1 = brute_sum(src, in, id), s2 = brute_sum(src, in, sqr);
          ASSERT_EQ(i32.at(x, y), val + s1) << w << "x" << h << " at " << x << "," << y;
          ASSERT_EQ(i32b.at(x, y), val + s1);
          ASSERT_EQ(i32c.at(x, y), val + s1);
          ASSERT_EQ(q32.at(x, y), static_cast<Rvp32s>(uint32_t(5 + s2)));
          ASSERT_EQ(f32.at(x, y), 3.0f + float(s1));  // sums below 2^24: exact
          ASSERT_EQ(f32b.at(x, y), 3.0f + float(s1));
          ASSERT_EQ(q64.at(x, y), 0.25 + double(s2));
          ASSERT_EQ(q64b.at(x, y), 0.5 + double(s2));
        }
    }
}

TEST(Integral, FloatSourceKeepsRunningRowSumOrder) {
  std::mt19937 rng(3);
  TestImage<Rvp32f> src(37, 5, 1, 12, 4);
  rvpt::fill_random_special(src, rng);
  TestImage<Rvp32f> dst(38, 6, 1, 0, 8);
  ASSERT_EQ(rvpiIntegral_32f_C1R(src.ptr(), src.step(), dst.ptr(), dst.step(), src.size()), 0);
  for (int y = 0; y <= 5; ++y) {
    float r = 0.0f;
    for (int x = 0; x <= 37; ++x) {
      float expect = 0.0f;
      if (x > 0 && y > 0) {
        r += src.at(x - 1, y - 1);
        expect = r + dst.at(x, y - 1);
      }
      // A NaN's payload depends on operand order inside one addition, which is not specified.
      if (std::isnan(expect))
        ASSERT_TRUE(std::isnan(dst.at(x, y))) << x << "," << y;
      else
        ASSERT_TRUE(rvpt::same_bits(dst.at(x, y), expect)) << x << "," << y;
    }
  }
}

TEST(Integral, WrapsModulo32BitsSilently) {
  // A 1x1 source: the only non-start element is the pixel plus the start value, wrapped.
  const Rvp8u px = 200;
  Rvp32s t[4], q[4];
  ASSERT_EQ(rvpiSqrIntegral_8u32s_C1R(&px, 1, t, 8, q, 8, {1, 1}, INT32_MAX, INT32_MAX - 100), 0);
  EXPECT_EQ(t[0], INT32_MAX);
  EXPECT_EQ(t[2], INT32_MAX);
  EXPECT_EQ(t[3], static_cast<Rvp32s>(uint32_t{INT32_MAX} + 200u));
  EXPECT_EQ(q[3], static_cast<Rvp32s>(uint32_t{INT32_MAX} - 100u + 40000u));
}

TEST(Integral, TiltedTablesEqualBruteForceCones) {
  std::mt19937 rng(5);
  for (int w : {1, 2, 3, 8, 17, 40})
    for (int h : {1, 2, 5, 9}) {
      TestImage<Rvp8u> src(w, h, 1, int(rng() % 5), int(rng() % 4));
      rvpt::fill_random(src, rng);
      const RvpiSize roi{w, h};
      TestImage<Rvp32s> t32(w + 2, h + 2, 1, 4, 0), q32(w + 2, h + 2), t32b(w + 2, h + 2),
          t32c(w + 2, h + 2);
      TestImage<Rvp32f> t32f(w + 2, h + 2, 1, 0, 4), t32fb(w + 2, h + 2);
      TestImage<Rvp64f> q64(w + 2, h + 2), q64b(w + 2, h + 2);
      ASSERT_EQ(rvpiTiltedIntegral_8u32s_C1R(src.ptr(), src.step(), t32.ptr(), t32.step(), roi, 9),
                0);
      ASSERT_EQ(
          rvpiTiltedIntegral_8u32f_C1R(src.ptr(), src.step(), t32f.ptr(), t32f.step(), roi, 1.5f),
          0);
      ASSERT_EQ(rvpiTiltedSqrIntegral_8u32s_C1R(src.ptr(), src.step(), t32b.ptr(), t32b.step(),
                                                q32.ptr(), q32.step(), roi, 0, -3),
                0);
      ASSERT_EQ(rvpiTiltedSqrIntegral_8u32s64f_C1R(src.ptr(), src.step(), t32c.ptr(), t32c.step(),
                                                   q64.ptr(), q64.step(), roi, 0, 0.5),
                0);
      ASSERT_EQ(rvpiTiltedSqrIntegral_8u32f64f_C1R(src.ptr(), src.step(), t32fb.ptr(), t32fb.step(),
                                                   q64b.ptr(), q64b.step(), roi, -1.0f, 2.0),
                0);
      for (int r = 0; r < h + 2; ++r)
        for (int x = 0; x < w + 2; ++x) {
          auto in = [&](int px, int py) { return in_cone(px, py, x, r); };
          const int64_t s1 = brute_sum(src, in, id), s2 = brute_sum(src, in, sqr);
          ASSERT_EQ(t32.at(x, r), 9 + s1) << w << "x" << h << " at " << x << "," << r;
          ASSERT_EQ(t32b.at(x, r), s1);
          ASSERT_EQ(t32c.at(x, r), s1);
          ASSERT_EQ(q32.at(x, r), -3 + s2);
          ASSERT_EQ(t32f.at(x, r), 1.5f + float(s1));
          ASSERT_EQ(t32fb.at(x, r), -1.0f + float(s1));
          ASSERT_EQ(q64.at(x, r), 0.5 + double(s2));
          ASSERT_EQ(q64b.at(x, r), 2.0 + double(s2));
        }
    }
}

// Deviation of a pixel set from brute-force sums, by the same formula the library documents.
float expected_dev(double s1, double s2, double area) {
  return rvp::arith::window_deviation(s1, s2, 1.0 / area);
}

TEST(RectStdDev, UprightAndTiltedWindowsEqualBruteForce) {
  std::mt19937 rng(8);
  const int W = 30, H = 26;
  TestImage<Rvp8u> src(W, H);
  rvpt::fill_random(src, rng);
  const RvpiSize full{W, H};
  TestImage<Rvp32s> i32(W + 1, H + 1), q32(W + 1, H + 1);
  TestImage<Rvp32f> f32(W + 1, H + 1);
  TestImage<Rvp64f> q64(W + 1, H + 1);
  ASSERT_EQ(rvpiSqrIntegral_8u32s_C1R(src.ptr(), src.step(), i32.ptr(), i32.step(), q32.ptr(),
                                      q32.step(), full, 0, 0),
            0);
  ASSERT_EQ(rvpiSqrIntegral_8u32f64f_C1R(src.ptr(), src.step(), f32.ptr(), f32.step(), q64.ptr(),
                                         q64.step(), full, 0, 0),
            0);
  TestImage<Rvp32s> ti32(W + 2, H + 2), tq32(W + 2, H + 2);
  TestImage<Rvp32f> tf32(W + 2, H + 2);
  TestImage<Rvp64f> tq64(W + 2, H + 2);
  ASSERT_EQ(rvpiTiltedSqrIntegral_8u32s_C1R(src.ptr(), src.step(), ti32.ptr(), ti32.step(),
                                            tq32.ptr(), tq32.step(), full, 0, 0),
            0);
  ASSERT_EQ(rvpiTiltedSqrIntegral_8u32f64f_C1R(src.ptr(), src.step(), tf32.ptr(), tf32.step(),
                                               tq64.ptr(), tq64.step(), full, 0, 0),
            0);

  const RvpiRect rects[] = {{0, 0, 1, 1}, {1, 2, 3, 4}, {4, 1, 5, 3}, {3, 0, 2, 4}, {6, 3, 7, 6}};
  for (const RvpiRect& rc : rects)
    for (bool tilted : {false, true}) {
      if (tilted && rc.x + 1 < rc.height) continue;
      const int reach_x = rc.x + rc.width + (tilted ? 1 : 0);
      const int reach_y = tilted ? rc.y + rc.width + rc.height + 1 : rc.y + rc.height;
      const RvpiSize roi{W + 1 - reach_x, H + 1 - reach_y + (tilted ? 1 : 0)};
      ASSERT_GE(roi.width, 1);
      ASSERT_GE(roi.height, 1);
      TestImage<Rvp32f> d1(roi.width, roi.height), d2(roi.width, roi.height);
      TestImage<Rvp32s> d3(roi.width, roi.height);
      const int sf = 2;
      if (tilted) {
        ASSERT_EQ(rvpiTiltedRectStdDev_32s32f_C1R(ti32.ptr(), ti32.step(), tq64.ptr(), tq64.step(),
                                                  d1.ptr(), d1.step(), roi, rc),
                  0);
        ASSERT_EQ(rvpiTiltedRectStdDev_32f_C1R(tf32.ptr(), tf32.step(), tq64.ptr(), tq64.step(),
                                               d2.ptr(), d2.step(), roi, rc),
                  0);
        ASSERT_EQ(rvpiTiltedRectStdDev_32s_C1RSfs(ti32.ptr(), ti32.step(), tq32.ptr(), tq32.step(),
                                                  d3.ptr(), d3.step(), roi, rc, -sf),
                  0);
      } else {
        ASSERT_EQ(rvpiRectStdDev_32s32f_C1R(i32.ptr(), i32.step(), q64.ptr(), q64.step(), d1.ptr(),
                                            d1.step(), roi, rc),
                  0);
        ASSERT_EQ(rvpiRectStdDev_32f_C1R(f32.ptr(), f32.step(), q64.ptr(), q64.step(), d2.ptr(),
                                         d2.step(), roi, rc),
                  0);
        ASSERT_EQ(rvpiRectStdDev_32s_C1RSfs(i32.ptr(), i32.step(), q32.ptr(), q32.step(), d3.ptr(),
                                            d3.step(), roi, rc, -sf),
                  0);
      }
      for (int j = 0; j < roi.height; ++j)
        for (int i = 0; i < roi.width; ++i) {
          const int x0 = i + rc.x, y0 = j + rc.y;
          int64_t n = 0;
          auto in = [&](int px, int py) {
            bool r;
            if (!tilted) {
              r = px >= x0 && px < x0 + rc.width && py >= y0 && py < y0 + rc.height;
            } else {
              const int u = px + py, v = py - px;
              r = u > x0 + y0 && u <= x0 + y0 + 2 * rc.width && v >= y0 - x0 &&
                  v <= y0 - x0 + 2 * rc.height - 1;
            }
            n += r;
            return r;
          };
          const double s1 = double(brute_sum(src, in, id)), s2 = double(brute_sum(src, in, sqr));
          const double area = tilted ? 2.0 * rc.width * rc.height : double(rc.width) * rc.height;
          // The whole tilted window lies inside the image here, so it has exactly `area` pixels.
          ASSERT_EQ(double(n) / 2, area) << "tilted " << tilted;
          const float e = expected_dev(s1, s2, area);
          ASSERT_EQ(d1.at(i, j), e)
              << "tilted " << tilted << " rect " << rc.x << "," << rc.y << " pos " << i << "," << j;
          ASSERT_EQ(d2.at(i, j), e);
          ASSERT_EQ(d3.at(i, j), static_cast<Rvp32s>(std::nearbyint(double(e) * (1 << sf))));
        }
    }
}

TEST(RectStdDev, FlatWindowsGiveZeroNotNaN) {
  // Squared sums slightly below the square of the sum: the variance clamps to 0.
  const Rvp32f sum[4] = {0.0f, 0.0f, 0.0f, 3.0f};
  const Rvp64f sq[4] = {0.0, 0.0, 0.0, 8.999999};
  Rvp32f dev = -1.0f;
  ASSERT_EQ(rvpiRectStdDev_32f_C1R(sum, 8, sq, 16, &dev, 4, {1, 1}, {0, 0, 1, 1}), 0);
  EXPECT_EQ(rvpt::float_bits(dev), 0u);
  Rvp32s idev = -1;
  const Rvp32s isum[4] = {0, 0, 0, 3}, isq[4] = {0, 0, 0, 8};
  ASSERT_EQ(rvpiRectStdDev_32s_C1RSfs(isum, 8, isq, 8, &idev, 4, {1, 1}, {0, 0, 1, 1}, 0), 0);
  EXPECT_EQ(idev, 0);
  // Scale factor: round half to even, saturation.
  const Rvp32s s2[4] = {0, 0, 0, 0}, q2[4] = {0, 0, 0, 25};  // variance 25: deviation 5
  ASSERT_EQ(rvpiRectStdDev_32s_C1RSfs(s2, 8, q2, 8, &idev, 4, {1, 1}, {0, 0, 1, 1}, 1), 0);
  EXPECT_EQ(idev, 2);  // 5 / 2 = 2.5 -> 2
  ASSERT_EQ(rvpiRectStdDev_32s_C1RSfs(s2, 8, q2, 8, &idev, 4, {1, 1}, {0, 0, 1, 1}, -40), 0);
  EXPECT_EQ(idev, INT32_MAX);
}

// ---- vector kernels against their references ------------------------------------------------

TEST(IntegralKernels, Avx2MatchesReferenceBitForBit) {
  namespace ar = rvp::arith;
  std::mt19937 rng(21);
  for (int trial = 0; trial < 300; ++trial) {
    const int w = 1 + int(rng() % 90), off = int(rng() % 8);
    std::vector<Rvp8u> src(w + 8);
    for (auto& v : src) v = Rvp8u(rng());
    const Rvp8u* s = src.data() + (off % 8 < int(src.size()) - w ? off % 8 : 0);
    std::vector<Rvp32s> a32(w + 1), r1(w + 1, 0), r2(w + 1, 0);
    std::vector<Rvp32f> af(w + 1), f1(w + 1), f2(w + 1);
    std::vector<Rvp64f> ad(w + 1), d1(w + 1), d2(w + 1), d3(w + 1);
    std::vector<Rvp32s> p1(w + 1), p2(w + 1);
    for (int i = 0; i <= w; ++i) {
      a32[i] = Rvp32s(rng());
      af[i] = std::uniform_real_distribution<float>(-3e7f, 3e7f)(rng);  // rounding happens
      ad[i] = std::uniform_real_distribution<double>(-1e17, 1e17)(rng);
    }
    ar::ref::integral_row_32s(s, a32.data(), r1.data(), w);
    ar::avx2::integral_row_32s(s, a32.data(), r2.data(), w);
    ASSERT_EQ(r1, r2) << "w " << w;
    ar::ref::sqr_row_32s(s, a32.data(), r1.data(), w);
    ar::avx2::sqr_row_32s(s, a32.data(), r2.data(), w);
    ASSERT_EQ(r1, r2);
    ar::ref::integral_row_32f(s, af.data(), f1.data(), w);
    ar::avx2::integral_row_32f(s, af.data(), f2.data(), w);
    for (int i = 1; i <= w; ++i) ASSERT_TRUE(rvpt::same_bits(f1[i], f2[i])) << w << " " << i;
    ar::ref::sqr_row_64f(s, ad.data(), d1.data(), w);
    ar::avx2::sqr_row_64f(s, ad.data(), d2.data(), w);
    ar::avx2::pair_row_32s64f(s, a32.data(), p2.data(), ad.data(), d3.data(), w);
    ar::ref::integral_row_32s(s, a32.data(), p1.data(), w);
    for (int i = 1; i <= w; ++i) {
      ASSERT_TRUE(rvpt::same_bits(d1[i], d2[i]));
      ASSERT_TRUE(rvpt::same_bits(d1[i], d3[i]));
      ASSERT_EQ(p1[i], p2[i]);
    }
  }
}

TEST(IntegralKernels, FloatRowFollowsBlocksOf16) {
  // A row whose running sum passes 2^24: the carry between blocks is rounded to single
  // precision, the prefix inside a block is exact.
  const int w = 70000;
  std::vector<Rvp8u> s(w, 255);
  std::vector<Rvp32f> above(w + 1, 0.0f), out(w + 1);
  rvp::arith::avx2::integral_row_32f(s.data(), above.data(), out.data(), w);
  float carry = 0.0f;
  for (int b = 0; b < w; b += 16) {
    for (int k = 0; k < 16 && b + k < w; ++k)
      ASSERT_EQ(out[b + k + 1], carry + float(255 * (k + 1))) << b + k;
    carry = out[std::min(b + 16, w)];
  }
}

// ---- checks ------------------------------------------------------------------------------------

TEST(Integral, StatusCodesInOrderAndNothingWritten) {
  Rvp8u src[64] = {};
  std::vector<uint8_t> d(512, 0x5A), q(1024, 0x5A);
  const auto d0 = d, q0 = q;
  auto* d32 = reinterpret_cast<Rvp32s*>(d.data());
  auto* q64 = reinterpret_cast<Rvp64f*>(q.data());
  const RvpiSize roi{4, 3};
  struct Case {
    RvpStatus want;
    const Rvp8u* s;
    int ss, ds, qs;
    RvpiSize r;
  };
  const Case cases[] = {
      {rvpStsNullPtrErr, nullptr, 4, 20, 40, {0, 3}},  // null before size
      {rvpStsSizeErr, src, 4, 20, 40, {0, 3}},         // size before step
      {rvpStsSizeErr, src, 4, 20, 40, {4, 0}},
      {rvpStsStepErr, src, 3, 20, 40, roi},
      {rvpStsStepErr, src, 4, 16, 40, roi},  // needs 4w + 4
      {rvpStsStepErr, src, 4, 22, 32, roi},  // -14 of the squared table before -108
      {rvpStsNotEvenStepErr, src, 4, 22, 40, roi},
      {rvpStsNotEvenStepErr, src, 4, 20, 44, roi},  // squared 64f: multiple of 8
      {rvpStsStepErr, src, -4, 20, 40, roi},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(rvpiSqrIntegral_8u32s64f_C1R(c.s, c.ss, d32, c.ds, q64, c.qs, c.r, 1, 1.0), c.want);
    EXPECT_EQ(d, d0);
    EXPECT_EQ(q, q0);
  }
  EXPECT_EQ(rvpiSqrIntegral_8u32s_C1R(src, 4, d32, 20, nullptr, 20, roi, 0, 0), rvpStsNullPtrErr);
  EXPECT_EQ(rvpiIntegral_32f_C1R(reinterpret_cast<Rvp32f*>(src), 18, reinterpret_cast<Rvp32f*>(d32),
                                 20, roi),
            rvpStsNotEvenStepErr);
  EXPECT_EQ(rvpiIntegral_32f_C1R(reinterpret_cast<Rvp32f*>(src), 12, reinterpret_cast<Rvp32f*>(d32),
                                 20, roi),
            rvpStsStepErr);
  // Tilted tables need (w + 2) elements per row.
  EXPECT_EQ(rvpiTiltedIntegral_8u32s_C1R(src, 4, d32, 20, roi, 0), rvpStsStepErr);
  EXPECT_EQ(rvpiTiltedIntegral_8u32f_C1R(src, 4, reinterpret_cast<Rvp32f*>(d32), 26, roi, 0),
            rvpStsNotEvenStepErr);
  EXPECT_EQ(rvpiTiltedSqrIntegral_8u32s64f_C1R(src, 4, d32, 24, q64, 44, roi, 0, 0), rvpStsStepErr);
  EXPECT_EQ(d, d0);
  EXPECT_EQ(q, q0);
  // A width whose row bytes overflow 32 bits is a step error, not a wrap.
  EXPECT_EQ(rvpiIntegral_8u32s_C1R(src, INT32_MAX, d32, INT32_MAX, {INT32_MAX, 1}, 0),
            rvpStsStepErr);
}

TEST(RectStdDev, StatusCodesInOrderAndNothingWritten) {
  std::vector<Rvp32s> t(64, 0);
  std::vector<Rvp64f> q(64, 0.0);
  std::vector<Rvp32f> d(16, 7.0f);
  const auto d0 = d;
  const RvpiSize roi{2, 2};
  const RvpiRect ok{1, 1, 2, 2};  // tables need 2 + 1 + 2 = 5 elements
  struct Case {
    RvpStatus want;
    int ss, qs, ds;
    RvpiSize r;
    RvpiRect rc;
  };
  const Case cases[] = {
      {rvpStsSizeErr, 20, 40, 8, {2, 0}, ok},
      {rvpStsStepErr, 16, 40, 8, roi, ok},
      {rvpStsStepErr, 20, 32, 8, roi, ok},
      {rvpStsStepErr, 20, 40, 4, roi, ok},
      {rvpStsNotEvenStepErr, 22, 40, 8, roi, ok},
      {rvpStsNotEvenStepErr, 20, 44, 8, roi, ok},
      {rvpStsNotEvenStepErr, 20, 40, 10, roi, ok},
      {rvpStsBadArgErr, 20, 40, 8, roi, {-1, 1, 2, 2}},
      {rvpStsBadArgErr, 20, 40, 8, roi, {1, -1, 2, 2}},
      {rvpStsBadArgErr, 20, 40, 8, roi, {1, 1, 0, 2}},  // zero width refused
      {rvpStsBadArgErr, 20, 40, 8, roi, {1, 1, 2, 0}},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(rvpiRectStdDev_32s32f_C1R(t.data(), c.ss, q.data(), c.qs, d.data(), c.ds, c.r, c.rc),
              c.want);
    EXPECT_EQ(d, d0);
  }
  EXPECT_EQ(rvpiRectStdDev_32s32f_C1R(t.data(), 20, nullptr, 40, d.data(), 8, {0, 0}, ok),
            rvpStsNullPtrErr);
  // Tilted: one more column, and the window may not reach left of the table.
  EXPECT_EQ(rvpiTiltedRectStdDev_32s32f_C1R(t.data(), 20, q.data(), 48, d.data(), 8, roi, ok),
            rvpStsStepErr);
  EXPECT_EQ(
      rvpiTiltedRectStdDev_32s32f_C1R(t.data(), 24, q.data(), 48, d.data(), 8, roi, {1, 1, 2, 3}),
      rvpStsBadArgErr);
  EXPECT_EQ(
      rvpiTiltedRectStdDev_32s32f_C1R(t.data(), 28, q.data(), 56, d.data(), 8, roi, {2, 1, 2, 3}),
      rvpStsNoErr);
  EXPECT_EQ(rvpiRectStdDev_32s_C1RSfs(t.data(), 20, t.data(), 22,
                                      reinterpret_cast<Rvp32s*>(d.data()), 8, roi, ok, 0),
            rvpStsNotEvenStepErr);
}

// ---- guarded images ----------------------------------------------------------------------------

TEST(Integral, GuardedImagesStayInside) {
  using rvpt::Guard;
  using rvpt::GuardedImage;
  std::mt19937 rng(2);
  for (int w = 1; w <= 70; w += (w < 20 ? 1 : 7))
    for (Guard g : {Guard::After, Guard::Before}) {
      const int h = 3;
      GuardedImage<Rvp8u> src(w, h, 1, w + int(rng() % 3), g);
      for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) src.row(y)[x] = Rvp8u(rng());
      const RvpiSize roi{w, h};
      GuardedImage<Rvp32s> i32(w + 1, h + 1, 1, 4 * (w + 1), g);
      GuardedImage<Rvp64f> q64(w + 1, h + 1, 1, 8 * (w + 1), g);
      GuardedImage<Rvp32f> f32(w + 1, h + 1, 1, 4 * (w + 1), g);
      ASSERT_EQ(rvpiSqrIntegral_8u32s64f_C1R(src.ptr(), src.step(), i32.ptr(), i32.step(),
                                             q64.ptr(), q64.step(), roi, 0, 0),
                0);
      ASSERT_EQ(rvpiSqrIntegral_8u32f64f_C1R(src.ptr(), src.step(), f32.ptr(), f32.step(),
                                             q64.ptr(), q64.step(), roi, 0, 0),
                0);
      GuardedImage<Rvp32s> q32(w + 1, h + 1, 1, 4 * (w + 1), g);
      ASSERT_EQ(rvpiSqrIntegral_8u32s_C1R(src.ptr(), src.step(), i32.ptr(), i32.step(), q32.ptr(),
                                          q32.step(), roi, 0, 0),
                0);
      GuardedImage<Rvp32s> t32(w + 2, h + 2, 1, 4 * (w + 2), g);
      GuardedImage<Rvp64f> tq(w + 2, h + 2, 1, 8 * (w + 2), g);
      ASSERT_EQ(rvpiTiltedSqrIntegral_8u32s64f_C1R(src.ptr(), src.step(), t32.ptr(), t32.step(),
                                                   tq.ptr(), tq.step(), roi, 0, 0),
                0);
      // Deviations over the whole table: windows 1x1 upright, and 1x1 tilted (reach +1).
      GuardedImage<Rvp32f> dev(w, h, 1, 4 * w, g);
      ASSERT_EQ(rvpiRectStdDev_32s32f_C1R(i32.ptr(), i32.step(), q64.ptr(), q64.step(), dev.ptr(),
                                          dev.step(), roi, {0, 0, 1, 1}),
                0);
      GuardedImage<Rvp32f> tdev(w, h - 1 > 0 ? h - 1 : 1, 1, 4 * w, g);
      ASSERT_EQ(
          rvpiTiltedRectStdDev_32s32f_C1R(t32.ptr(), t32.step(), tq.ptr(), tq.step(), tdev.ptr(),
                                          tdev.step(), {w, tdev.height()}, {0, 0, 1, 1}),
          0);
      const Rvp32f* fsrc = f32.ptr();
      GuardedImage<Rvp32f> f2(w + 2, h + 2, 1, 4 * (w + 2), g);
      ASSERT_EQ(rvpiIntegral_32f_C1R(fsrc, f32.step(), f2.ptr(), f2.step(), {w + 1, h + 1}), 0);
    }
}

}  // namespace
