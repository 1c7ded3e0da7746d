// Accumulation and absolute differences against OpenCV on the photograph.
//
// The scene: a slow pan over the photograph (frame k is a 448x448 window moved
// by (3k, 2k) pixels), each colour channel in turn, as 8u, as 16u (scaled by
// 257 to span the full range) and as 32f (scaled to [0, 1], so squares and
// products are not exact in single precision). Masks come from another channel
// of the same frame. Accumulators collect several frames, and every update is
// compared with OpenCV's update of the same accumulator state.
//
// Where both libraries round once at the same point the results must be
// identical. Where they round at different points, the difference is bounded in
// units in the last place of the result, and each such test also checks, with
// its own scalar arithmetic, that the data do reach the rounding difference
// (otherwise the bound would be trivially met).
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include <opencv2/core.hpp>
#include <opencv2/imgcodecs.hpp>
#include <opencv2/imgproc.hpp>

#include "rvpcv.h"

namespace {

constexpr int kSide = 448;
constexpr int kFrames = 8;

const cv::Mat& photo_bgr() {
  static const cv::Mat m = cv::imread(RVPCV_DATA_DIR "/astronaut.png", cv::IMREAD_COLOR);
  return m;
}

// Channel c of the photograph in the given depth: 8u as is, 16u times 257, 32f
// divided by 255.
cv::Mat channel(int c, int depth) {
  std::vector<cv::Mat> ch;
  cv::split(photo_bgr(), ch);
  cv::Mat out;
  if (depth == CV_8U) out = ch[c];
  if (depth == CV_16U) ch[c].convertTo(out, CV_16U, 257.0);
  if (depth == CV_32F) ch[c].convertTo(out, CV_32F, 1.0 / 255.0);
  return out;
}

// Frame k of the pan: a view into the full image, so its step is the full
// image's step.
cv::Mat frame(const cv::Mat& full, int k) { return full(cv::Rect(3 * k, 2 * k, kSide, kSide)); }

cv::Mat mask_of(int c, int k) {
  cv::Mat m;
  cv::threshold(frame(channel((c + 1) % 3, CV_8U), k), m, 100, 255, cv::THRESH_BINARY);
  return m;
}

// A 32f image inside a larger one, one pixel in from the left: its rows start 4
// bytes past a 32-byte boundary, so the scalar prologue, the vector body and
// the tail all run.
cv::Mat offset_f32(const cv::Mat& init) {
  cv::Mat big(init.rows + 1, init.cols + 9, CV_32F, cv::Scalar(0));
  cv::Mat view = big(cv::Rect(1, 1, init.cols, init.rows));
  init.copyTo(view);
  return view;
}

int step(const cv::Mat& m) { return static_cast<int>(m.step); }
RvpiSize roi(const cv::Mat& m) { return {m.cols, m.rows}; }

int64_t ordered(float v) {
  int32_t i;
  std::memcpy(&i, &v, 4);
  return i < 0 ? -int64_t(i & 0x7FFFFFFF) : int64_t(i);
}
int64_t ulp_distance(float a, float b) { return std::llabs(ordered(a) - ordered(b)); }

// How two 32f images compare, and how often a third one (the test's own
// arithmetic with the other rounding) differs from the first.
struct Stats {
  int64_t pixels = 0, identical = 0, max_ulp = 0, alt_differs = 0;
  void add(const cv::Mat& ours, const cv::Mat& theirs, const cv::Mat* alt) {
    for (int y = 0; y < ours.rows; ++y)
      for (int x = 0; x < ours.cols; ++x) {
        const float a = ours.at<float>(y, x), b = theirs.at<float>(y, x);
        ++pixels;
        const int64_t d = ulp_distance(a, b);
        if (std::memcmp(&a, &b, 4) == 0) ++identical;
        max_ulp = std::max(max_ulp, d);
        if (alt && ulp_distance(a, alt->at<float>(y, x)) != 0) ++alt_differs;
      }
  }
  std::string text() const {
    return std::to_string(identical) + " of " + std::to_string(pixels) + " identical, max " +
           std::to_string(max_ulp) + " ulp; other rounding differs at " +
           std::to_string(alt_differs);
  }
};

// One accumulation step: sources s1 (and s2 for products), the mask (empty when
// unmasked) and the accumulator updated in place.
using Step =
    std::function<void(const cv::Mat& s1, const cv::Mat& s2, const cv::Mat& mask, cv::Mat& acc)>;
using OursStep = std::function<RvpStatus(const cv::Mat& s1, const cv::Mat& s2, const cv::Mat& mask,
                                         cv::Mat& acc)>;

enum class Start { Zero, FirstFrame };

// Runs kFrames updates per channel with both libraries from the same
// accumulator state and collects the comparison. `alt`, when given, computes
// the update with the rounding the other library is expected to use, from the
// state before the update.
Stats run_frames(int depth, bool masked, Start start, const OursStep& ours, const Step& theirs,
                 const Step& alt = nullptr) {
  Stats st;
  for (int c = 0; c < 3; ++c) {
    const cv::Mat full = channel(c, depth);
    cv::Mat init(kSide, kSide, CV_32F, cv::Scalar(0));
    if (start == Start::FirstFrame) frame(full, 0).convertTo(init, CV_32F);
    cv::Mat acc = offset_f32(init);
    for (int k = 0; k < kFrames; ++k) {
      const cv::Mat s1 = frame(full, k), s2 = frame(full, k + 1);
      const cv::Mat mask = masked ? mask_of(c, k) : cv::Mat();
      cv::Mat theirs_acc = acc.clone(), alt_acc = acc.clone();
      EXPECT_EQ(ours(s1, s2, mask, acc), rvpStsNoErr);
      theirs(s1, s2, mask, theirs_acc);
      if (alt) alt(s1, s2, mask, alt_acc);
      st.add(acc, theirs_acc, alt ? &alt_acc : nullptr);
    }
  }
  return st;
}

void expect_identical(const Stats& st) {
  EXPECT_GT(st.pixels, 0);
  EXPECT_EQ(st.identical, st.pixels) << st.text();
}

// The rounding difference is bounded by `max_ulp`, and the data reach it: the
// other rounding, computed by the test, differs from ours at some pixels.
void expect_bounded(const Stats& st, int64_t max_ulp) {
  EXPECT_GT(st.pixels, 0);
  EXPECT_LE(st.max_ulp, max_ulp) << st.text();
  EXPECT_GT(st.alt_differs, 0) << "the data never reach the rounding difference: " << st.text();
  std::printf("  %s\n", st.text().c_str());
}

template <class T>
const T* p(const cv::Mat& m) {
  return m.ptr<T>();
}
float* pacc(cv::Mat& m) { return m.ptr<float>(); }

// Scalar arithmetic of the other rounding, for the non-vacuity checks:
// element-wise over the sources converted to float.
void for_each(const cv::Mat& s1, const cv::Mat& s2, const cv::Mat& mask, cv::Mat& acc,
              const std::function<float(float s1, float s2, float d)>& f) {
  cv::Mat a, b;
  s1.convertTo(a, CV_32F);
  s2.convertTo(b, CV_32F);
  for (int y = 0; y < acc.rows; ++y)
    for (int x = 0; x < acc.cols; ++x) {
      if (!mask.empty() && mask.at<uint8_t>(y, x) == 0) continue;
      float& d = acc.at<float>(y, x);
      d = f(a.at<float>(y, x), b.at<float>(y, x), d);
    }
}

// ---- absolute differences: exact for every type -------------------------------------------------

TEST(CrossAccumulate, AbsDiffMatchesExactly) {
  ASSERT_FALSE(photo_bgr().empty()) << "missing " RVPCV_DATA_DIR "/astronaut.png";
  for (int depth : {CV_8U, CV_16U, CV_32F}) {
    for (int c = 0; c < 3; ++c) {
      const cv::Mat full = channel(c, depth);
      for (int k = 0; k < kFrames; ++k) {
        const cv::Mat a = frame(full, k), b = frame(full, k + 1);
        cv::Mat ours(a.size(), a.type()), theirs;
        RvpStatus st = rvpStsErr;
        if (depth == CV_8U)
          st = rvpiAbsDiff_8u_C1R(p<Rvp8u>(a), step(a), p<Rvp8u>(b), step(b), ours.ptr<Rvp8u>(),
                                  step(ours), roi(a));
        if (depth == CV_16U)
          st = rvpiAbsDiff_16u_C1R(p<Rvp16u>(a), step(a), p<Rvp16u>(b), step(b), ours.ptr<Rvp16u>(),
                                   step(ours), roi(a));
        if (depth == CV_32F)
          st = rvpiAbsDiff_32f_C1R(p<Rvp32f>(a), step(a), p<Rvp32f>(b), step(b), ours.ptr<Rvp32f>(),
                                   step(ours), roi(a));
        ASSERT_EQ(st, rvpStsNoErr);
        cv::absdiff(a, b, theirs);
        ASSERT_EQ(cv::norm(ours, theirs, cv::NORM_INF), 0.0)
            << "depth " << depth << " channel " << c << " frame " << k;
        ASSERT_GT(cv::countNonZero(theirs),
                  kSide * kSide / 2);  // the frames do differ
      }
    }
  }
}

TEST(CrossAccumulate, AbsDiffColourMatchesExactly) {
  const cv::Mat& full = photo_bgr();
  ASSERT_FALSE(full.empty());
  for (int k = 0; k < kFrames; ++k) {
    const cv::Mat a = frame(full, k), b = frame(full, k + 1);
    cv::Mat ours(a.size(), CV_8UC3), theirs;
    ASSERT_EQ(rvpiAbsDiff_8u_C3R(p<Rvp8u>(a), step(a), p<Rvp8u>(b), step(b), ours.ptr<Rvp8u>(),
                                 step(ours), roi(a)),
              rvpStsNoErr);
    cv::absdiff(a, b, theirs);
    ASSERT_EQ(cv::norm(ours, theirs, cv::NORM_INF), 0.0) << "frame " << k;
  }
}

// OpenCV takes the constant as a Scalar and saturates it to the image type;
// ours clamps the same way, so out-of-range constants are compared with their
// clamped value.
TEST(CrossAccumulate, AbsDiffConstantMatchesExactly) {
  ASSERT_FALSE(photo_bgr().empty());
  for (int c = 0; c < 3; ++c) {
    const cv::Mat a8 = frame(channel(c, CV_8U), c), a16 = frame(channel(c, CV_16U), c),
                  a32 = frame(channel(c, CV_32F), c);
    for (int value : {-5, 0, 1, 99, 128, 254, 255, 300}) {
      cv::Mat ours(a8.size(), CV_8U), theirs;
      ASSERT_EQ(rvpiAbsDiffC_8u_C1R(p<Rvp8u>(a8), step(a8), ours.ptr<Rvp8u>(), step(ours), roi(a8),
                                    value),
                rvpStsNoErr);
      cv::absdiff(a8, cv::Scalar(std::clamp(value, 0, 255)), theirs);
      EXPECT_EQ(cv::norm(ours, theirs, cv::NORM_INF), 0.0) << "8u value " << value;
    }
    for (int value : {-1, 0, 257, 25700, 40000, 65535, 70000}) {
      cv::Mat ours(a16.size(), CV_16U), theirs;
      ASSERT_EQ(rvpiAbsDiffC_16u_C1R(p<Rvp16u>(a16), step(a16), ours.ptr<Rvp16u>(), step(ours),
                                     roi(a16), value),
                rvpStsNoErr);
      cv::absdiff(a16, cv::Scalar(std::clamp(value, 0, 65535)), theirs);
      EXPECT_EQ(cv::norm(ours, theirs, cv::NORM_INF), 0.0) << "16u value " << value;
    }
    for (float value : {0.0f, 0.1f, 0.4f, 1.0f / 3.0f, 1.0f, -2.5f}) {
      cv::Mat ours(a32.size(), CV_32F), theirs;
      ASSERT_EQ(rvpiAbsDiffC_32f_C1R(p<Rvp32f>(a32), step(a32), ours.ptr<Rvp32f>(), step(ours),
                                     roi(a32), value),
                rvpStsNoErr);
      cv::absdiff(a32, cv::Scalar(value), theirs);
      EXPECT_EQ(cv::norm(ours, theirs, cv::NORM_INF), 0.0) << "32f value " << value;
    }
  }
}

// ---- Add: one rounding of d + s in both libraries, masked or not --------------------------------

TEST(CrossAccumulate, AddMatchesExactly) {
  ASSERT_FALSE(photo_bgr().empty());
  const Step cv_add = [](const cv::Mat& s, const cv::Mat&, const cv::Mat& m, cv::Mat& acc) {
    cv::accumulate(s, acc, m);
  };
  for (bool masked : {false, true}) {
    SCOPED_TRACE(masked ? "masked" : "unmasked");
    expect_identical(run_frames(
        CV_8U, masked, Start::Zero,
        [masked](const cv::Mat& s, const cv::Mat&, const cv::Mat& m, cv::Mat& acc) {
          return masked ? rvpiAdd_8u32f_C1IMR(p<Rvp8u>(s), step(s), p<Rvp8u>(m), step(m), pacc(acc),
                                              step(acc), roi(acc))
                        : rvpiAdd_8u32f_C1IR(p<Rvp8u>(s), step(s), pacc(acc), step(acc), roi(acc));
        },
        cv_add));
    expect_identical(run_frames(
        CV_16U, masked, Start::Zero,
        [masked](const cv::Mat& s, const cv::Mat&, const cv::Mat& m, cv::Mat& acc) {
          return masked
                     ? rvpiAdd_16u32f_C1IMR(p<Rvp16u>(s), step(s), p<Rvp8u>(m), step(m), pacc(acc),
                                            step(acc), roi(acc))
                     : rvpiAdd_16u32f_C1IR(p<Rvp16u>(s), step(s), pacc(acc), step(acc), roi(acc));
        },
        cv_add));
  }
  // 32f exists only masked; its sums of values in [0, 1] round at nearly every
  // pixel.
  expect_identical(run_frames(
      CV_32F, true, Start::Zero,
      [](const cv::Mat& s, const cv::Mat&, const cv::Mat& m, cv::Mat& acc) {
        return rvpiAdd_32f_C1IMR(p<Rvp32f>(s), step(s), p<Rvp8u>(m), step(m), pacc(acc), step(acc),
                                 roi(acc));
      },
      cv_add));
}

// ---- AddSquare / AddProduct --------------------------------------------------------------------
// 8u squares and products are below 2^24 and exact, so however either library orders its
// roundings the result is one rounding of the exact sum: identical. 16u and 32f squares and
// products need rounding:
// - Unmasked, ours fuses the product into the addition (one rounding). OpenCV's results are
//   identical: it also rounds once here. That this is not an accident of the data is checked by
//   the test's own round-the-product-first arithmetic, which differs at many pixels.
// - Masked, ours rounds the product first and then adds (the mask factor rides on the fused
//   update), while OpenCV may still round once. Both are within half an ulp of their own exact
//   values; since products, squares and the accumulated sums are all non-negative here, the sum
//   is at least the product, and the two results are at most 1 ulp of the result apart. The
//   test's fused arithmetic differs from ours at many pixels, so the 1 ulp bound is exercised.

RvpStatus ours_square(int depth, bool masked, const cv::Mat& s, const cv::Mat& m, cv::Mat& acc) {
  float* d = pacc(acc);
  if (depth == CV_8U)
    return masked ? rvpiAddSquare_8u32f_C1IMR(p<Rvp8u>(s), step(s), p<Rvp8u>(m), step(m), d,
                                              step(acc), roi(acc))
                  : rvpiAddSquare_8u32f_C1IR(p<Rvp8u>(s), step(s), d, step(acc), roi(acc));
  if (depth == CV_16U)
    return masked ? rvpiAddSquare_16u32f_C1IMR(p<Rvp16u>(s), step(s), p<Rvp8u>(m), step(m), d,
                                               step(acc), roi(acc))
                  : rvpiAddSquare_16u32f_C1IR(p<Rvp16u>(s), step(s), d, step(acc), roi(acc));
  return masked ? rvpiAddSquare_32f_C1IMR(p<Rvp32f>(s), step(s), p<Rvp8u>(m), step(m), d, step(acc),
                                          roi(acc))
                : rvpiAddSquare_32f_C1IR(p<Rvp32f>(s), step(s), d, step(acc), roi(acc));
}

RvpStatus ours_product(int depth, bool masked, const cv::Mat& s1, const cv::Mat& s2,
                       const cv::Mat& m, cv::Mat& acc) {
  float* d = pacc(acc);
  if (depth == CV_8U)
    return masked ? rvpiAddProduct_8u32f_C1IMR(p<Rvp8u>(s1), step(s1), p<Rvp8u>(s2), step(s2),
                                               p<Rvp8u>(m), step(m), d, step(acc), roi(acc))
                  : rvpiAddProduct_8u32f_C1IR(p<Rvp8u>(s1), step(s1), p<Rvp8u>(s2), step(s2), d,
                                              step(acc), roi(acc));
  if (depth == CV_16U)
    return masked ? rvpiAddProduct_16u32f_C1IMR(p<Rvp16u>(s1), step(s1), p<Rvp16u>(s2), step(s2),
                                                p<Rvp8u>(m), step(m), d, step(acc), roi(acc))
                  : rvpiAddProduct_16u32f_C1IR(p<Rvp16u>(s1), step(s1), p<Rvp16u>(s2), step(s2), d,
                                               step(acc), roi(acc));
  return masked ? rvpiAddProduct_32f_C1IMR(p<Rvp32f>(s1), step(s1), p<Rvp32f>(s2), step(s2),
                                           p<Rvp8u>(m), step(m), d, step(acc), roi(acc))
                : rvpiAddProduct_32f_C1IR(p<Rvp32f>(s1), step(s1), p<Rvp32f>(s2), step(s2), d,
                                          step(acc), roi(acc));
}

// The two orders of rounding, in the test's own arithmetic (volatile keeps the
// compiler from fusing the first).
float rounded_then_added(float a, float b, float d) {
  volatile float prod = a * b;
  return prod + d;
}
float fused(float a, float b, float d) { return std::fma(a, b, d); }

TEST(CrossAccumulate, AddSquareAndProductByType) {
  ASSERT_FALSE(photo_bgr().empty());
  const Step cv_square = [](const cv::Mat& s, const cv::Mat&, const cv::Mat& m, cv::Mat& acc) {
    cv::accumulateSquare(s, acc, m);
  };
  const Step cv_product = [](const cv::Mat& s1, const cv::Mat& s2, const cv::Mat& m, cv::Mat& acc) {
    cv::accumulateProduct(s1, s2, acc, m);
  };
  for (int depth : {CV_8U, CV_16U, CV_32F}) {
    for (bool masked : {false, true}) {
      SCOPED_TRACE("depth " + std::to_string(depth) + (masked ? " masked" : " unmasked"));
      // The rounding order ours does not use.
      const auto other = masked ? fused : rounded_then_added;
      const Step alt_square = [other](const cv::Mat& s, const cv::Mat&, const cv::Mat& m,
                                      cv::Mat& acc) { for_each(s, s, m, acc, other); };
      const Step alt_product = [other](const cv::Mat& s1, const cv::Mat& s2, const cv::Mat& m,
                                       cv::Mat& acc) { for_each(s1, s2, m, acc, other); };
      const Stats sq = run_frames(
          depth, masked, Start::Zero,
          [depth, masked](const cv::Mat& s, const cv::Mat&, const cv::Mat& m, cv::Mat& acc) {
            return ours_square(depth, masked, s, m, acc);
          },
          cv_square, alt_square);
      const Stats pr = run_frames(
          depth, masked, Start::Zero,
          [depth, masked](const cv::Mat& s1, const cv::Mat& s2, const cv::Mat& m, cv::Mat& acc) {
            return ours_product(depth, masked, s1, s2, m, acc);
          },
          cv_product, alt_product);
      if (depth == CV_8U) {
        expect_identical(sq);
        expect_identical(pr);
      } else if (!masked) {
        expect_identical(sq);
        expect_identical(pr);
        EXPECT_GT(sq.alt_differs, 0) << sq.text();
        EXPECT_GT(pr.alt_differs, 0) << pr.text();
      } else {
        expect_bounded(sq, 1);
        expect_bounded(pr, 1);
      }
    }
  }
}

// ---- AddWeighted --------------------------------------------------------------------------------
// Ours: d + alpha*(s - d) as fma(round(s - d), alpha, d). OpenCV's documented
// form is (1 - alpha)*d + alpha*s, which rounds 1 - alpha, both products and
// the sum. With s, d >= 0 and 0 < alpha <= 1/2, call R the exact result; R >=
// (1 - alpha)*d >= d/2 and R >= alpha*s. OpenCV's form: rounding 1 - alpha
// costs at most d*2^-25 <= R*2^-24 < 1 ulp(R), each product at most half an ulp
// (both are <= R), the sum half an ulp: below 2.5 ulp in all. Ours: the
// rounding error of s - d, scaled by alpha, is at most alpha*|s - d|*2^-24, and
// alpha*|s - d| <= R when alpha <= 1/2, so below 1 ulp, plus half an ulp for
// the fused update. The two results are less than 4 ulp apart, i.e. at most 3.
// (For alpha above 1/2 our bound grows like alpha / (1 - alpha): the rounded
// difference is scaled by more than the result holds.) Masked-off pixels are
// left unchanged by both. At alpha = 1/2 both forms round the same
// exactly-halved terms, so the alphas here avoid it.

float weighted_other(float s, float, float d, float alpha) {
  volatile float beta = 1.0f - alpha;
  volatile float a = d * beta, b = s * alpha;
  return a + b;
}

TEST(CrossAccumulate, AddWeightedRunningAverage) {
  ASSERT_FALSE(photo_bgr().empty());
  for (float alpha : {0.05f, 0.1f, 0.3f, 0.45f}) {
    for (int depth : {CV_8U, CV_16U, CV_32F}) {
      for (bool masked : {false, true}) {
        SCOPED_TRACE("alpha " + std::to_string(alpha) + " depth " + std::to_string(depth) +
                     (masked ? " masked" : " unmasked"));
        const OursStep ours = [=](const cv::Mat& s, const cv::Mat&, const cv::Mat& m,
                                  cv::Mat& acc) {
          float* d = pacc(acc);
          if (depth == CV_8U)
            return masked ? rvpiAddWeighted_8u32f_C1IMR(p<Rvp8u>(s), step(s), p<Rvp8u>(m), step(m),
                                                        d, step(acc), roi(acc), alpha)
                          : rvpiAddWeighted_8u32f_C1IR(p<Rvp8u>(s), step(s), d, step(acc), roi(acc),
                                                       alpha);
          if (depth == CV_16U)
            return masked ? rvpiAddWeighted_16u32f_C1IMR(p<Rvp16u>(s), step(s), p<Rvp8u>(m),
                                                         step(m), d, step(acc), roi(acc), alpha)
                          : rvpiAddWeighted_16u32f_C1IR(p<Rvp16u>(s), step(s), d, step(acc),
                                                        roi(acc), alpha);
          return masked ? rvpiAddWeighted_32f_C1IMR(p<Rvp32f>(s), step(s), p<Rvp8u>(m), step(m), d,
                                                    step(acc), roi(acc), alpha)
                        : rvpiAddWeighted_32f_C1IR(p<Rvp32f>(s), step(s), d, step(acc), roi(acc),
                                                   alpha);
        };
        const Step theirs = [alpha](const cv::Mat& s, const cv::Mat&, const cv::Mat& m,
                                    cv::Mat& acc) { cv::accumulateWeighted(s, acc, alpha, m); };
        const Step alt = [alpha](const cv::Mat& s, const cv::Mat& s2, const cv::Mat& m,
                                 cv::Mat& acc) {
          for_each(s, s2, m, acc,
                   [alpha](float a, float b, float d) { return weighted_other(a, b, d, alpha); });
        };
        const Stats st = run_frames(depth, masked, Start::FirstFrame, ours, theirs, alt);
        expect_bounded(st, 3);
      }
    }
  }
}

// Two-source form against cv::addWeighted(s1, alpha, s2, 1 - alpha, 0): the
// in-place form with s = s1 and d = s2, so the same roundings and the same 3
// ulp bound for alpha <= 1/2.
TEST(CrossAccumulate, AddWeightedTwoSources) {
  ASSERT_FALSE(photo_bgr().empty());
  for (float alpha : {0.05f, 0.25f, 0.4f}) {
    Stats st;
    for (int c = 0; c < 3; ++c) {
      const cv::Mat full = channel(c, CV_32F);
      for (int k = 0; k < kFrames; ++k) {
        const cv::Mat a = frame(full, k), b = frame(full, k + 1);
        cv::Mat ours = offset_f32(cv::Mat::zeros(a.size(), CV_32F)), theirs, alt = b.clone();
        ASSERT_EQ(rvpiAddWeighted_32f_C1R(p<Rvp32f>(a), step(a), p<Rvp32f>(b), step(b), pacc(ours),
                                          step(ours), roi(a), alpha),
                  rvpStsNoErr);
        cv::addWeighted(a, alpha, b, 1.0 - alpha, 0.0, theirs);
        for_each(a, b, cv::Mat(), alt,
                 [alpha](float s1, float, float s2) { return weighted_other(s1, 0, s2, alpha); });
        st.add(ours, theirs, &alt);
      }
    }
    SCOPED_TRACE("alpha " + std::to_string(alpha));
    expect_bounded(st, 3);
  }
}

}  // namespace
