// Norms, means, deviations and extrema against OpenCV on the photograph, its gray version and
// each of its channels (read through the channel-of-interest forms), under several masks.
//
// Where the arithmetic coincides the results must be identical: integer norms (exact sums), the
// extrema and their positions. Elsewhere the differences are bounded:
//  - 8-bit means: both sums are exact, but OpenCV multiplies by 1/n where we divide by n, so the
//    means may differ in the last bit (one rounding more on its side).
//  - OpenCV's relative norms divide by (denominator + DBL_EPSILON); ours divide by the
//    denominator, so they differ by about one part in 10^16.
//  - Rvp32f differences: OpenCV rounds x1 - x2 to single precision before accumulating; ours
//    are formed exactly in double. Each difference may then differ by one part in 2^24, so
//    the L1/L2 norms of differences (and the relative norms) agree to about 1e-7 relative; the
//    maxima agree exactly here (differences of nearby values are exact in single precision).
//  - Deviations: OpenCV subtracts mean^2 from E[x^2] in two roundings and clamps at 0; ours
//    fuses the subtraction. Rvp32f sums are accumulated in a different order. Both give
//    relative differences around 1e-12 or below.
#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstdio>
#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>
#include <vector>

#include "rvpcv.h"

namespace {

struct Photo {
  cv::Mat rgb8, gray8, rgb32, gray32, shifted8, shifted32;
  std::vector<cv::Mat> masks;
};

const Photo& photo() {
  static const Photo loaded = [] {
    Photo p;
    const cv::Mat bgr = cv::imread(RVPCV_DATA_DIR "/astronaut.png", cv::IMREAD_COLOR);
    if (bgr.empty()) return p;
    // Odd width: rows do not end on a vector boundary.
    const cv::Rect roi(0, 0, bgr.cols - 5, bgr.rows - 1), moved(3, 1, bgr.cols - 5, bgr.rows - 1);
    p.rgb8 = bgr(roi).clone();
    p.shifted8 = bgr(moved).clone();
    cv::cvtColor(p.rgb8, p.gray8, cv::COLOR_BGR2GRAY);
    p.rgb8.convertTo(p.rgb32, CV_32F, 1.0 / 255);
    p.shifted8.convertTo(p.shifted32, CV_32F, 1.0 / 255);
    p.gray8.convertTo(p.gray32, CV_32F, 1.0 / 255);
    cv::Mat bright, ones(p.gray8.size(), CV_8U, cv::Scalar(1)), sparse(p.gray8.size(), CV_8U);
    cv::threshold(p.gray8, bright, 90, 255, cv::THRESH_BINARY);
    cv::RNG rng(7);
    rng.fill(sparse, cv::RNG::UNIFORM, 0, 2);
    sparse = sparse.mul(cv::Mat(p.gray8.size(), CV_8U, cv::Scalar(3)));
    p.masks = {ones, bright, sparse};
    return p;
  }();
  return loaded;
}

#define REQUIRE_PHOTO() \
  if (photo().rgb8.empty()) GTEST_SKIP() << "astronaut.png not found in data/"

int S(const cv::Mat& m) { return static_cast<int>(m.step); }
RvpiSize roi_of(const cv::Mat& m) { return {m.cols, m.rows}; }

const int kCv[3] = {cv::NORM_INF, cv::NORM_L1, cv::NORM_L2};

struct Tally {
  explicit Tally(const char* n) : name(n) {}
  const char* name;
  int same = 0, total = 0;
  void add(double a, double b) {
    ++total;
    same += a == b;
  }
  ~Tally() {
    if (total) std::printf("    %s identical to OpenCV: %d of %d\n", name, same, total);
  }
};

TEST(CrossCheckStatistics, Norms8uExact) {
  REQUIRE_PHOTO();
  const Photo& p = photo();
  using N1 = decltype(&rvpiNorm_Inf_8u_C1MR);
  using N3 = decltype(&rvpiNorm_Inf_8u_C3CMR);
  using D1 = decltype(&rvpiNormDiff_Inf_8u_C1MR);
  using D3 = decltype(&rvpiNormDiff_Inf_8u_C3CMR);
  const N1 n1[3] = {rvpiNorm_Inf_8u_C1MR, rvpiNorm_L1_8u_C1MR, rvpiNorm_L2_8u_C1MR};
  const N3 n3[3] = {rvpiNorm_Inf_8u_C3CMR, rvpiNorm_L1_8u_C3CMR, rvpiNorm_L2_8u_C3CMR};
  const D1 d1[3] = {rvpiNormDiff_Inf_8u_C1MR, rvpiNormDiff_L1_8u_C1MR, rvpiNormDiff_L2_8u_C1MR};
  const D3 d3[3] = {rvpiNormDiff_Inf_8u_C3CMR, rvpiNormDiff_L1_8u_C3CMR, rvpiNormDiff_L2_8u_C3CMR};
  const D3 r3[3] = {rvpiNormRel_Inf_8u_C3CMR, rvpiNormRel_L1_8u_C3CMR, rvpiNormRel_L2_8u_C3CMR};
  Tally exact("8u norms and norms of differences"), rel("8u relative norms");
  cv::Mat g2;
  cv::cvtColor(p.shifted8, g2, cv::COLOR_BGR2GRAY);
  for (const cv::Mat& m : p.masks)
    for (int k = 0; k < 3; ++k) {
      Rvp64f r = -1;
      ASSERT_EQ(n1[k](p.gray8.data, S(p.gray8), m.data, S(m), roi_of(m), &r), 0);
      EXPECT_EQ(r, cv::norm(p.gray8, kCv[k], m));
      exact.add(r, cv::norm(p.gray8, kCv[k], m));
      ASSERT_EQ(d1[k](p.gray8.data, S(p.gray8), g2.data, S(g2), m.data, S(m), roi_of(m), &r), 0);
      EXPECT_EQ(r, cv::norm(p.gray8, g2, kCv[k], m));
      exact.add(r, cv::norm(p.gray8, g2, kCv[k], m));
      for (int coi = 1; coi <= 3; ++coi) {
        cv::Mat c1, c2;
        cv::extractChannel(p.rgb8, c1, coi - 1);
        cv::extractChannel(p.shifted8, c2, coi - 1);
        ASSERT_EQ(n3[k](p.rgb8.data, S(p.rgb8), m.data, S(m), roi_of(m), coi, &r), 0);
        EXPECT_EQ(r, cv::norm(c1, kCv[k], m));
        exact.add(r, cv::norm(c1, kCv[k], m));
        ASSERT_EQ(d3[k](p.rgb8.data, S(p.rgb8), p.shifted8.data, S(p.shifted8), m.data, S(m),
                        roi_of(m), coi, &r),
                  0);
        EXPECT_EQ(r, cv::norm(c1, c2, kCv[k], m));
        exact.add(r, cv::norm(c1, c2, kCv[k], m));
        ASSERT_EQ(r3[k](p.rgb8.data, S(p.rgb8), p.shifted8.data, S(p.shifted8), m.data, S(m),
                        roi_of(m), coi, &r),
                  0);
        const double cv_rel = cv::norm(c1, c2, kCv[k] | cv::NORM_RELATIVE, m);
        EXPECT_NEAR(r, cv_rel, 4e-16 * r);  // OpenCV adds DBL_EPSILON to the denominator
        rel.add(r, cv_rel);
      }
    }
}

TEST(CrossCheckStatistics, Norms32fBounded) {
  REQUIRE_PHOTO();
  const Photo& p = photo();
  using N3 = decltype(&rvpiNorm_Inf_32f_C3CMR);
  using D3 = decltype(&rvpiNormDiff_Inf_32f_C3CMR);
  const N3 n3[3] = {rvpiNorm_Inf_32f_C3CMR, rvpiNorm_L1_32f_C3CMR, rvpiNorm_L2_32f_C3CMR};
  const D3 d3[3] = {rvpiNormDiff_Inf_32f_C3CMR, rvpiNormDiff_L1_32f_C3CMR,
                    rvpiNormDiff_L2_32f_C3CMR};
  const D3 r3[3] = {rvpiNormRel_Inf_32f_C3CMR, rvpiNormRel_L1_32f_C3CMR, rvpiNormRel_L2_32f_C3CMR};
  Tally t("32f norms");
  for (const cv::Mat& m : p.masks)
    for (int k = 0; k < 3; ++k)
      for (int coi = 1; coi <= 3; ++coi) {
        cv::Mat c1, c2;
        cv::extractChannel(p.rgb32, c1, coi - 1);
        cv::extractChannel(p.shifted32, c2, coi - 1);
        Rvp64f r = -1;
        // Infinity norms are maxima: exact. Sums: same values, another order.
        const double tol = k == 0 ? 0.0 : 1e-12;
        ASSERT_EQ(n3[k](reinterpret_cast<const Rvp32f*>(p.rgb32.data), S(p.rgb32), m.data, S(m),
                        roi_of(m), coi, &r),
                  0);
        EXPECT_NEAR(r, cv::norm(c1, kCv[k], m), tol * r);
        t.add(r, cv::norm(c1, kCv[k], m));
        ASSERT_EQ(d3[k](reinterpret_cast<const Rvp32f*>(p.rgb32.data), S(p.rgb32),
                        reinterpret_cast<const Rvp32f*>(p.shifted32.data), S(p.shifted32), m.data,
                        S(m), roi_of(m), coi, &r),
                  0);
        // Differences rounded to single precision on the OpenCV side.
        const double dtol = k == 0 ? 6e-8 : 1.2e-7;
        EXPECT_NEAR(r, cv::norm(c1, c2, kCv[k], m), dtol * r);
        t.add(r, cv::norm(c1, c2, kCv[k], m));
        ASSERT_EQ(r3[k](reinterpret_cast<const Rvp32f*>(p.rgb32.data), S(p.rgb32),
                        reinterpret_cast<const Rvp32f*>(p.shifted32.data), S(p.shifted32), m.data,
                        S(m), roi_of(m), coi, &r),
                  0);
        const double cv_rel = cv::norm(c1, c2, kCv[k] | cv::NORM_RELATIVE, m);
        EXPECT_NEAR(r, cv_rel, (2 * dtol + 4e-16) * r);
        t.add(r, cv_rel);
      }
}

TEST(CrossCheckStatistics, MeanAndDeviation) {
  REQUIRE_PHOTO();
  const Photo& p = photo();
  Tally means("means"), devs("deviations");
  for (const cv::Mat& m : p.masks) {
    cv::Scalar cm, cs;
    // 8u gray: exact integer sums; the mean is one division, as in OpenCV.
    Rvp64f mean = -1, sd = -1, mean_only = -1;
    cv::meanStdDev(p.gray8, cm, cs, m);
    ASSERT_EQ(
        rvpiMean_StdDev_8u_C1MR(p.gray8.data, S(p.gray8), m.data, S(m), roi_of(m), &mean, &sd), 0);
    ASSERT_EQ(rvpiMean_8u_C1MR(p.gray8.data, S(p.gray8), m.data, S(m), roi_of(m), &mean_only), 0);
    EXPECT_NEAR(mean, cm[0], 2.3e-16 * mean);
    EXPECT_NEAR(mean_only, cv::mean(p.gray8, m)[0], 2.3e-16 * mean);
    EXPECT_NEAR(sd, cs[0], 1e-12 * sd);
    means.add(mean, cm[0]);
    devs.add(sd, cs[0]);
    for (int coi = 1; coi <= 3; ++coi) {
      cv::Mat c8, c32;
      cv::extractChannel(p.rgb8, c8, coi - 1);
      cv::extractChannel(p.rgb32, c32, coi - 1);
      cv::meanStdDev(c8, cm, cs, m);
      ASSERT_EQ(rvpiMean_StdDev_8u_C3CMR(p.rgb8.data, S(p.rgb8), m.data, S(m), roi_of(m), coi,
                                         &mean, &sd),
                0);
      EXPECT_NEAR(mean, cm[0], 2.3e-16 * mean);
      EXPECT_NEAR(sd, cs[0], 1e-12 * sd);
      means.add(mean, cm[0]);
      devs.add(sd, cs[0]);
      cv::meanStdDev(c32, cm, cs, m);
      ASSERT_EQ(rvpiMean_StdDev_32f_C3CMR(reinterpret_cast<const Rvp32f*>(p.rgb32.data), S(p.rgb32),
                                          m.data, S(m), roi_of(m), coi, &mean, &sd),
                0);
      EXPECT_NEAR(mean, cm[0], 1e-12 * mean);
      EXPECT_NEAR(sd, cs[0], 1e-9 * sd);
      means.add(mean, cm[0]);
      devs.add(sd, cs[0]);
    }
  }
  // Unmasked forms equal the masked forms under an all-ones mask.
  Rvp64f a = 0, b = 0, c = 0, d = 0;
  const cv::Mat& ones = p.masks[0];
  rvpiMean_StdDev_32f_C1R(reinterpret_cast<const Rvp32f*>(p.gray32.data), S(p.gray32), roi_of(ones),
                          &a, &b);
  rvpiMean_StdDev_32f_C1MR(reinterpret_cast<const Rvp32f*>(p.gray32.data), S(p.gray32), ones.data,
                           S(ones), roi_of(ones), &c, &d);
  EXPECT_EQ(a, c);
  EXPECT_EQ(b, d);
}

TEST(CrossCheckStatistics, ExtremaAndPositions) {
  REQUIRE_PHOTO();
  const Photo& p = photo();
  Tally t("extrema with positions");
  auto compare = [&](const cv::Mat& c, const cv::Mat* m, float lo, float hi, RvpiPoint plo,
                     RvpiPoint phi) {
    double clo, chi;
    cv::Point cplo, cphi;
    if (m)
      cv::minMaxLoc(c, &clo, &chi, &cplo, &cphi, *m);
    else
      cv::minMaxLoc(c, &clo, &chi, &cplo, &cphi);
    EXPECT_EQ(lo, static_cast<float>(clo));
    EXPECT_EQ(hi, static_cast<float>(chi));
    EXPECT_EQ(plo.x, cplo.x);
    EXPECT_EQ(plo.y, cplo.y);
    EXPECT_EQ(phi.x, cphi.x);
    EXPECT_EQ(phi.y, cphi.y);
    t.add(plo.x + 10000.0 * plo.y + lo, cplo.x + 10000.0 * cplo.y + clo);
    t.add(phi.x + 10000.0 * phi.y + hi, cphi.x + 10000.0 * cphi.y + chi);
  };
  Rvp32f lo, hi;
  RvpiPoint plo, phi;
  ASSERT_EQ(rvpiMinMaxIndx_8u_C1R(p.gray8.data, S(p.gray8), roi_of(p.gray8), &lo, &hi, &plo, &phi),
            0);
  compare(p.gray8, nullptr, lo, hi, plo, phi);
  ASSERT_EQ(rvpiMinMaxIndx_32f_C1R(reinterpret_cast<const Rvp32f*>(p.gray32.data), S(p.gray32),
                                   roi_of(p.gray32), &lo, &hi, &plo, &phi),
            0);
  compare(p.gray32, nullptr, lo, hi, plo, phi);
  for (const cv::Mat& m : p.masks)
    for (int coi = 1; coi <= 3; ++coi) {
      cv::Mat c8, c32;
      cv::extractChannel(p.rgb8, c8, coi - 1);
      cv::extractChannel(p.rgb32, c32, coi - 1);
      ASSERT_EQ(rvpiMinMaxIndx_8u_C3CMR(p.rgb8.data, S(p.rgb8), m.data, S(m), roi_of(m), coi, &lo,
                                        &hi, &plo, &phi),
                0);
      compare(c8, &m, lo, hi, plo, phi);
      ASSERT_EQ(rvpiMinMaxIndx_32f_C3CR(reinterpret_cast<const Rvp32f*>(p.rgb32.data), S(p.rgb32),
                                        roi_of(m), coi, &lo, &hi, &plo, &phi),
                0);
      compare(c32, nullptr, lo, hi, plo, phi);
      ASSERT_EQ(rvpiMinMaxIndx_32f_C1MR(reinterpret_cast<const Rvp32f*>(p.gray32.data), S(p.gray32),
                                        m.data, S(m), roi_of(m), &lo, &hi, &plo, &phi),
                0);
      compare(p.gray32, &m, lo, hi, plo, phi);
    }
}

}  // namespace
