// Haar stages: state layout, regrouping and its summation order, tilting, window size, the
// apply functions against brute-force window sums, vector against scalar, checks and guards.
#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <vector>

#include "detect/haar_kernels.h"
#include "rvpcv.h"
#include "support/guarded.h"
#include "support/images.h"

namespace {

using rvp::detect::HaarFeature;
using rvp::detect::HaarHeader;
using rvp::detect::HaarRecord;
using rvpt::TestImage;

template <class V>
const HaarHeader<V>& header(const void* s) {
  return *static_cast<const HaarHeader<V>*>(s);
}

// Six classifiers with 1, 3, 2, 4, 2, 3 rectangles.
struct Cascade {
  std::vector<RvpiRect> rects;
  std::vector<int> num{1, 3, 2, 4, 2, 3};
  std::vector<Rvp32f> weight, thr, v1, v2;
  Cascade() {
    int k = 0;
    for (int n : num)
      for (int j = 0; j < n; ++j, ++k) {
        rects.push_back({1 + k % 3, 2 + k % 4, 2 + k % 5, 1 + k % 2});
        weight.push_back(k % 4 == 0 ? -1.0f : 0.5f * float(k + 1));
      }
    for (size_t i = 0; i < num.size(); ++i) {
      thr.push_back(0.1f * float(i));
      v1.push_back(float(i));
      v2.push_back(-float(i));
    }
  }
};

TEST(HaarState, LayoutRegroupsAndRecordsEverything) {
  Cascade c;
  RvpiHaarClassifier_32f* s = nullptr;
  ASSERT_EQ(rvpiHaarClassifierInitAlloc_32f(&s, c.rects.data(), c.weight.data(), c.thr.data(),
                                            c.v1.data(), c.v2.data(), c.num.data(), 6),
            0);
  const auto& h = header<Rvp32f>(s);
  const auto* base = reinterpret_cast<const uint8_t*>(s);
  EXPECT_EQ(h.count, 6);
  EXPECT_EQ(h.rect_count, 15);
  EXPECT_EQ(reinterpret_cast<const uint8_t*>(h.first), base + 56);
  EXPECT_EQ(h.tilted, 0);
  EXPECT_EQ(h.counts[0], 2);
  EXPECT_EQ(h.counts[1], 4);
  EXPECT_EQ(h.counts[2], 15);
  EXPECT_EQ(h.leading_minus_one, 0);  // classifier 1 starts with weight 1.0
  // Two-rectangle classifiers (2, 4), then three (1, 5), then the rest (0, 3).
  const int order[] = {2, 4, 1, 5, 0, 3};
  int first_rect[6], at = 0;
  for (int i = 0; i < 6; ++i) first_rect[i] = at, at += c.num[i];
  const auto* feat = reinterpret_cast<const HaarFeature<Rvp32f>*>(base + 56 + 32 * 6);
  for (int k = 0; k < 6; ++k) {
    const HaarRecord<Rvp32f>& r = h.first[k];
    const int i = order[k];
    EXPECT_EQ(r.tag, i * 256) << k;
    EXPECT_EQ(r.rect_count, c.num[i]);
    EXPECT_EQ(r.first, feat);
    EXPECT_EQ(r.threshold, c.thr[i]);
    EXPECT_EQ(r.left, c.v1[i]);
    EXPECT_EQ(r.right, c.v2[i]);
    for (int j = 0; j < c.num[i]; ++j, ++feat) {
      const RvpiRect& q = c.rects[first_rect[i] + j];
      const int want[8] = {
          q.x + q.width, q.y + q.height, q.x, q.y + q.height, q.x + q.width, q.y, q.x, q.y};
      EXPECT_EQ(std::memcmp(feat, want, sizeof want), 0);
      EXPECT_EQ(feat->weight, c.weight[first_rect[i] + j]);
    }
  }
  RvpiSize size{-1, -1};
  ASSERT_EQ(rvpiGetHaarClassifierSize_32f(s, &size), 0);
  int max_cx = 0, max_ay = 0;
  for (const RvpiRect& q : c.rects) {
    max_cx = std::max(max_cx, q.x + q.width);
    max_ay = std::max(max_ay, q.y + q.height);
  }
  EXPECT_EQ(size.width, max_cx);
  EXPECT_EQ(size.height, max_ay);
  EXPECT_EQ(rvpiHaarClassifierFree_32f(s), 0);

  // The integer flavour stores its counts in another order.
  std::vector<Rvp32s> wi(15, -1), ti(6, 3), ai(6, 1), bi(6, 2);
  RvpiHaarClassifier_32s* si = nullptr;
  ASSERT_EQ(rvpiHaarClassifierInitAlloc_32s(&si, c.rects.data(), wi.data(), ti.data(), ai.data(),
                                            bi.data(), c.num.data(), 6),
            0);
  EXPECT_EQ(header<Rvp32s>(si).counts[0], 15);
  EXPECT_EQ(header<Rvp32s>(si).counts[1], 2);
  EXPECT_EQ(header<Rvp32s>(si).counts[2], 4);
  EXPECT_EQ(header<Rvp32s>(si).leading_minus_one, 0);
  EXPECT_EQ(rvpiHaarClassifierFree_32s(si), 0);
}

TEST(HaarState, BoundingRectangleFollowsTheMixedRule) {
  // First rect (2, 3, 4, 5); a second classifier's rect (0, 1, 1, 1) and (5, 6, 10, 2).
  const RvpiRect rects[] = {{2, 3, 4, 5}, {0, 1, 1, 1}, {5, 6, 10, 2}};
  const int num[] = {1, 2};
  const Rvp32f w[] = {-1.5f, -1.0f, 2.0f}, t[] = {0, 0}, a[] = {0, 0}, b[] = {0, 0};
  RvpiHaarClassifier_32f* s = nullptr;
  ASSERT_EQ(rvpiHaarClassifierInitAlloc_32f(&s, rects, w, t, a, b, num, 2), 0);
  // Stored order: classifier 1 (2 rects) then classifier 0.
  // (0,1,1,1): minX 0, minY 1; A (1, 2): 1 > 0 + 4? no; 2 > 1 + 5? no.
  // (5,6,10,2): A (15, 8): 15 > 0 + 4 -> W = 15; 8 > 1 + 5 -> H = 8.
  // (2,3,4,5): A (6, 8): 6 > 15? no; 8 > 9? no.  Result (0, 1, 15 - 0, 8 - 1).
  const auto& h = header<Rvp32f>(s);
  EXPECT_EQ(h.bound_x, 0);
  EXPECT_EQ(h.bound_y, 1);
  EXPECT_EQ(h.bound_width, 15);
  EXPECT_EQ(h.bound_height, 7);
  EXPECT_EQ(h.leading_minus_one, 1);  // -1.5 and -1.0 both truncate to -1
  rvpiHaarClassifierFree_32f(s);
  const Rvp32f w2[] = {-2.0f, -1.0f, 2.0f};
  ASSERT_EQ(rvpiHaarClassifierInitAlloc_32f(&s, rects, w2, t, a, b, num, 2), 0);
  EXPECT_EQ(header<Rvp32f>(s).leading_minus_one, 0);
  rvpiHaarClassifierFree_32f(s);
}

TEST(HaarState, ConstructorChecks) {
  Cascade c;
  RvpiHaarClassifier_32f* s = reinterpret_cast<RvpiHaarClassifier_32f*>(&c);  // a marker
  RvpiHaarClassifier_32f* const marker = s;
  const RvpiRect* r = c.rects.data();
  const Rvp32f *w = c.weight.data(), *t = c.thr.data(), *a = c.v1.data(), *b = c.v2.data();
  const int* n = c.num.data();
  EXPECT_EQ(rvpiHaarClassifierInitAlloc_32f(nullptr, r, w, t, a, b, n, 6), rvpStsNullPtrErr);
  EXPECT_EQ(rvpiHaarClassifierInitAlloc_32f(&s, nullptr, w, t, a, b, n, 6), rvpStsNullPtrErr);
  EXPECT_EQ(rvpiHaarClassifierInitAlloc_32f(&s, r, w, t, a, b, nullptr, -1), rvpStsNullPtrErr);
  EXPECT_EQ(rvpiHaarClassifierInitAlloc_32f(&s, r, w, t, a, nullptr, n, 6), rvpStsNullPtrErr);
  EXPECT_EQ(rvpiHaarClassifierInitAlloc_32f(&s, r, w, t, a, b, n, -1), rvpStsSizeErr);
  std::vector<int> zero = c.num;
  zero[4] = 0;
  EXPECT_EQ(rvpiHaarClassifierInitAlloc_32f(&s, r, w, t, a, b, zero.data(), 6), rvpStsSizeErr);
  EXPECT_EQ(rvpiTiltedHaarClassifierInitAlloc_32f(&s, r, w, t, a, b, zero.data(), 6),
            rvpStsSizeErr);
  for (RvpiRect bad :
       {RvpiRect{-1, 0, 1, 1}, RvpiRect{0, -1, 1, 1}, RvpiRect{0, 0, 0, 1}, RvpiRect{0, 0, 1, 0}}) {
    std::vector<RvpiRect> rr = c.rects;
    rr[7] = bad;
    EXPECT_EQ(rvpiHaarClassifierInitAlloc_32f(&s, rr.data(), w, t, a, b, n, 6), rvpStsBadArgErr);
    EXPECT_EQ(s, marker);  // untouched
    std::vector<Rvp32s> wi(15, 1), ti(6, 0);
    RvpiHaarClassifier_32s* si = reinterpret_cast<RvpiHaarClassifier_32s*>(&c);
    EXPECT_EQ(rvpiHaarClassifierInitAlloc_32s(&si, rr.data(), wi.data(), ti.data(), ti.data(),
                                              ti.data(), n, 6),
              rvpStsBadArgErr);
    EXPECT_EQ(si, nullptr);
  }
  // Tilted: also refuses a height above x + 1, and sets the pointer to null.
  std::vector<RvpiRect> rr(15, RvpiRect{3, 0, 2, 4});
  ASSERT_EQ(rvpiTiltedHaarClassifierInitAlloc_32f(&s, rr.data(), w, t, a, b, n, 6), 0);
  const auto& h = header<Rvp32f>(s);
  EXPECT_EQ(h.tilted, 1);
  EXPECT_EQ(h.counts[0], 0);
  EXPECT_EQ(h.counts[1], 0);
  EXPECT_EQ(h.counts[2], 15);
  for (int i = 0; i < 6; ++i) EXPECT_EQ(h.first[i].tag, i * 256 + 1);  // input order
  const int tc[8] = {3 + 2 - 4, 0 + 2 + 4, 3 - 4, 0 + 4, 3 + 2, 0 + 2, 3, 0};
  EXPECT_EQ(std::memcmp(h.first[0].first, tc, sizeof tc), 0);
  // Bounding start (3, 0, 2 - 4, 2 + 4); every D is (3, 0) and A (1, 6): 1 > 3 - 2 fails and
  // 6 > 0 + 6 fails, so W = -2 - 3 and H = 6 - 0.
  EXPECT_EQ(h.bound_x, 3);
  EXPECT_EQ(h.bound_width, -5);
  EXPECT_EQ(h.bound_height, 6);
  rvpiHaarClassifierFree_32f(s);
  rr[9] = {2, 0, 2, 4};
  EXPECT_EQ(rvpiTiltedHaarClassifierInitAlloc_32f(&s, rr.data(), w, t, a, b, n, 6),
            rvpStsBadArgErr);
  EXPECT_EQ(s, nullptr);
  EXPECT_EQ(rvpiHaarClassifierFree_32f(nullptr), rvpStsNullPtrErr);
  EXPECT_EQ(rvpiHaarClassifierFree_32s(nullptr), rvpStsNullPtrErr);
  EXPECT_EQ(rvpiGetHaarClassifierSize_32f(nullptr, nullptr), rvpStsNullPtrErr);
}

TEST(HaarState, TiltSelectedClassifiersOnce) {
  Cascade c;
  for (int flag : {0, 1}) {
    RvpiHaarClassifier_32f* s = nullptr;
    ASSERT_EQ(rvpiHaarClassifierInitAlloc_32f(&s, c.rects.data(), c.weight.data(), c.thr.data(),
                                              c.v1.data(), c.v2.data(), c.num.data(), 6),
              0);
    const Rvp8u none[6] = {};
    ASSERT_EQ(rvpiTiltHaarFeatures_32f(none, flag, s), 0);
    EXPECT_EQ(header<Rvp32f>(s).tilted, 0);
    const Rvp8u mask[6] = {0, 0, 7, 0, 0, 1};  // input classifiers 2 and 5
    ASSERT_EQ(rvpiTiltHaarFeatures_32f(mask, flag, s), 0);
    const auto& h = header<Rvp32f>(s);
    EXPECT_EQ(h.tilted & 1, 1);
    // Stored order 2, 4, 1, 5, 0, 3: records 0 and 3 were tilted.
    const int tags[6] = {1, 4 * 256, 1 * 256, 1, 0, 3 * 256};
    for (int k = 0; k < 6; ++k) EXPECT_EQ(h.first[k].tag, tags[k]) << k;
    const RvpiRect& q = c.rects[1 + 3];  // first rect of input classifier 2
    const int x = q.x, y = q.y, w = q.width, hh = q.height;
    const int want1[8] = {x + w - hh, y + w + hh, x - hh, y + hh, x + w, y + w, x, y};
    const int want0[8] = {x, y + hh, x - hh, y, x + w, y + hh - w, x + w - hh, y - w};
    EXPECT_EQ(std::memcmp(h.first[0].first, flag ? want1 : want0, sizeof want1), 0);
    EXPECT_EQ(rvpiTiltHaarFeatures_32f(mask, flag, s), rvpStsBadArgErr);
    EXPECT_EQ(rvpiTiltHaarFeatures_32f(nullptr, flag, s), rvpStsNullPtrErr);
    rvpiHaarClassifierFree_32f(s);
  }
}

// ---- apply --------------------------------------------------------------------------------------

struct Tables {
  TestImage<Rvp8u> img;
  TestImage<Rvp32s> sum, tilt;
  TestImage<Rvp32f> sumf, tiltf;
  Tables(int w, int h, std::mt19937& rng)
      : img(w, h),
        sum(w + 1, h + 1, 1, 8),
        tilt(w + 2, h + 2, 1, 4),
        sumf(w + 1, h + 1),
        tiltf(w + 2, h + 2) {
    rvpt::fill_random(img, rng);
    rvpiIntegral_8u32s_C1R(img.ptr(), img.step(), sum.ptr(), sum.step(), img.size(), 0);
    rvpiIntegral_8u32f_C1R(img.ptr(), img.step(), sumf.ptr(), sumf.step(), img.size(), 0);
    rvpiTiltedIntegral_8u32s_C1R(img.ptr(), img.step(), tilt.ptr(), tilt.step(), img.size(), 0);
    rvpiTiltedIntegral_8u32f_C1R(img.ptr(), img.step(), tiltf.ptr(), tiltf.step(), img.size(), 0);
  }
  // Brute-force sum over the pixels of window (u, v) for which in(px, py) holds (window coords).
  template <class In>
  int64_t sum_where(int u, int v, In in) const {
    int64_t s = 0;
    for (int py = 0; py < img.height(); ++py)
      for (int px = 0; px < img.width(); ++px)
        if (in(px - u, py - v)) s += img.at(px, py);
    return s;
  }
};

enum class Kind { Upright, Tilt1, Tilt0 };

// The pixels of rect (x, y, w, h) for each kind, as the documented geometry gives them.
bool in_rect(Kind k, const RvpiRect& r, int px, int py) {
  const int u = px + py, v = py - px, x = r.x, y = r.y, w = r.width, h = r.height;
  switch (k) {
    case Kind::Upright:
      return px >= x && px < x + w && py >= y && py < y + h;
    case Kind::Tilt1:
      return u > x + y && u <= x + y + 2 * w && v >= y - x && v <= y - x + 2 * h - 1;
    case Kind::Tilt0:
      return u > x + y - h && u <= x + y + h && v >= y - x - 2 * w + h && v <= y - x + h - 1;
  }
  return false;
}

// One classifier, one rectangle of weight 1, vote 1 below the threshold and 0 above, stage
// threshold 0.5: a position survives exactly when its rectangle sum is below threshold_c * norm.
TEST(HaarApply, RectangleSumsOfEveryKindAreExact) {
  std::mt19937 rng(6);
  Tables t(26, 24, rng);
  const RvpiSize roi{10, 8};
  const RvpiRect rects[] = {{3, 2, 3, 4}, {4, 5, 3, 2}, {5, 4, 2, 3}};  // valid for every kind
  for (const RvpiRect& rc : rects)
    for (Kind kind : {Kind::Upright, Kind::Tilt1, Kind::Tilt0})
      for (int flavour = 0; flavour < 3; ++flavour) {  // 32f, 32s32f, 32s
        const int num = 1;
        // Thresholds straddle each position's exact sum: +0.5 -> survive, -0.5 -> reject.
        for (int side : {1, -1}) {
          TestImage<Rvp8u> mask(roi.width, roi.height, 1, 3);
          TestImage<Rvp32f> norm(roi.width, roi.height);
          TestImage<Rvp32s> normi(roi.width, roi.height);
          std::vector<int64_t> exact(roi.width * roi.height);
          for (int v = 0; v < roi.height; ++v)
            for (int u = 0; u < roi.width; ++u) {
              exact[v * roi.width + u] =
                  t.sum_where(u, v, [&](int px, int py) { return in_rect(kind, rc, px, py); });
              mask.set(u, v, Rvp8u(1 + (u + v) % 200));
              // threshold_c 1 times norm = sum + side/2 (integers: times 2 with threshold 2)
              norm.set(u, v, float(exact[v * roi.width + u]) + 0.5f * float(side));
              normi.set(u, v, Rvp32s(exact[v * roi.width + u]) + (side > 0 ? 1 : 0));
            }
          const auto mask0 = mask.bytes();
          int positive = -1;
          RvpStatus st;
          if (flavour < 2) {
            const Rvp32f w = 1.0f, thr = 1.0f, a = 1.0f, b = 0.0f;
            RvpiHaarClassifier_32f* s = nullptr;
            ASSERT_EQ(
                kind == Kind::Tilt1
                    ? rvpiTiltedHaarClassifierInitAlloc_32f(&s, &rc, &w, &thr, &a, &b, &num, 1)
                    : rvpiHaarClassifierInitAlloc_32f(&s, &rc, &w, &thr, &a, &b, &num, 1),
                0);
            const Rvp8u one = 1;
            if (kind == Kind::Tilt0) {
              ASSERT_EQ(rvpiTiltHaarFeatures_32f(&one, 0, s), 0);
            }
            if (kind == Kind::Upright && flavour == 0)
              st = rvpiApplyHaarClassifier_32f_C1R(t.sumf.ptr(), t.sumf.step(), norm.ptr(),
                                                   norm.step(), mask.ptr(), mask.step(), roi,
                                                   &positive, 0.5f, s);
            else if (kind == Kind::Upright)
              st = rvpiApplyHaarClassifier_32s32f_C1R(t.sum.ptr(), t.sum.step(), norm.ptr(),
                                                      norm.step(), mask.ptr(), mask.step(), roi,
                                                      &positive, 0.5f, s);
            else if (flavour == 0)
              st = rvpiApplyMixedHaarClassifier_32f_C1R(
                  t.sumf.ptr(), t.sumf.step(), t.tiltf.ptr(), t.tiltf.step(), norm.ptr(),
                  norm.step(), mask.ptr(), mask.step(), roi, &positive, 0.5f, s);
            else
              st = rvpiApplyMixedHaarClassifier_32s32f_C1R(
                  t.sum.ptr(), t.sum.step(), t.tilt.ptr(), t.tilt.step(), norm.ptr(), norm.step(),
                  mask.ptr(), mask.step(), roi, &positive, 0.5f, s);
            rvpiHaarClassifierFree_32f(s);
          } else {
            const Rvp32s w = 1, thr = 1, a = 1, b = 0;
            RvpiHaarClassifier_32s* s = nullptr;
            ASSERT_EQ(
                kind == Kind::Tilt1
                    ? rvpiTiltedHaarClassifierInitAlloc_32s(&s, &rc, &w, &thr, &a, &b, &num, 1)
                    : rvpiHaarClassifierInitAlloc_32s(&s, &rc, &w, &thr, &a, &b, &num, 1),
                0);
            const Rvp8u one = 1;
            if (kind == Kind::Tilt0) {
              ASSERT_EQ(rvpiTiltHaarFeatures_32s(&one, 0, s), 0);
            }
            if (kind == Kind::Upright)
              st = rvpiApplyHaarClassifier_32s_C1RSfs(t.sum.ptr(), t.sum.step(), normi.ptr(),
                                                      normi.step(), mask.ptr(), mask.step(), roi,
                                                      &positive, 1, s, 5);
            else
              st = rvpiApplyMixedHaarClassifier_32s_C1RSfs(
                  t.sum.ptr(), t.sum.step(), t.tilt.ptr(), t.tilt.step(), normi.ptr(), normi.step(),
                  mask.ptr(), mask.step(), roi, &positive, 1, s, 0);
            rvpiHaarClassifierFree_32s(s);
          }
          ASSERT_EQ(st, 0);
          int expect_pos = 0;
          for (int v = 0; v < roi.height; ++v)
            for (int u = 0; u < roi.width; ++u) {
              const Rvp8u want = side > 0 ? Rvp8u(1 + (u + v) % 200) : 0;
              ASSERT_EQ(mask.at(u, v), want)
                  << "kind " << int(kind) << " flavour " << flavour << " at " << u << "," << v;
              expect_pos += side > 0;
            }
          EXPECT_EQ(positive, expect_pos);
          // Padding bytes of the mask were not touched.
          for (int v = 0; v < roi.height; ++v)
            for (int p = 0; p < 3; ++p)
              EXPECT_EQ(mask.bytes()[size_t(v) * mask.step() + roi.width + p],
                        mask0[size_t(v) * mask.step() + roi.width + p]);
        }
      }
}

TEST(HaarApply, VotesSumInStoredOrder) {
  // Every feature sum is 0, below the threshold 1: each classifier casts its left vote.
  // Stored order (two rectangles, three, then one): 4 + (-1e8) rounds to -1e8 (a tie at a
  // spacing of 8, to even), + 1e8 gives 0. Input order would give 1e8 - 1e8 + 4 = 4.
  const RvpiRect r = {0, 0, 1, 1};
  const RvpiRect rects[] = {r, r, r, r, r, r};
  const int num[] = {1, 3, 2};  // stored: classifier 2 (2 rects), 1 (3 rects), 0 (1 rect)
  const Rvp32f w[6] = {0, 0, 0, 0, 0, 0}, thr[3] = {1, 1, 1};  // S = 0 < 1: left votes
  const Rvp32f left[3] = {1e8f, -1e8f, 4.0f}, right[3] = {0, 0, 0};
  RvpiHaarClassifier_32f* s = nullptr;
  ASSERT_EQ(rvpiHaarClassifierInitAlloc_32f(&s, rects, w, thr, left, right, num, 3), 0);
  Rvp32s sum[4] = {0, 0, 0, 0};
  Rvp32f norm = 1.0f;
  Rvp8u mask = 1;
  int positive = -1;
  // Stage threshold 2: survives only with the input-order sum 4.
  ASSERT_EQ(
      rvpiApplyHaarClassifier_32s32f_C1R(sum, 8, &norm, 4, &mask, 1, {1, 1}, &positive, 2.0f, s),
      0);
  EXPECT_EQ(mask, 0);
  EXPECT_EQ(positive, 0);
  mask = 1;
  ASSERT_EQ(
      rvpiApplyHaarClassifier_32s32f_C1R(sum, 8, &norm, 4, &mask, 1, {1, 1}, &positive, 0.0f, s),
      0);
  EXPECT_EQ(mask, 1);  // 0 >= 0 survives, mask byte unchanged
  EXPECT_EQ(positive, 1);
  rvpiHaarClassifierFree_32f(s);
}

TEST(HaarApply, EmptyStageAndEmptyMask) {
  RvpiRect r{0, 0, 1, 1};
  Rvp32f f = 0;
  int n = 1;
  RvpiHaarClassifier_32f* s = nullptr;
  ASSERT_EQ(rvpiHaarClassifierInitAlloc_32f(&s, &r, &f, &f, &f, &f, &n, 0), 0);
  RvpiSize size{-1, -1};
  ASSERT_EQ(rvpiGetHaarClassifierSize_32f(s, &size), 0);
  EXPECT_EQ(size.width, 0);
  EXPECT_EQ(size.height, 0);
  Rvp32s sum[64] = {};
  Rvp32f norm[16] = {};
  Rvp8u mask[16] = {0, 3, 0, 255, 1, 0, 9, 0, 0, 0, 0, 0, 0, 0, 0, 4};
  int positive = -1;
  ASSERT_EQ(
      rvpiApplyHaarClassifier_32s32f_C1R(sum, 16, norm, 16, mask, 4, {4, 4}, &positive, -0.5f, s),
      0);
  EXPECT_EQ(positive, 5);
  EXPECT_EQ(mask[3], 255);
  ASSERT_EQ(
      rvpiApplyHaarClassifier_32s32f_C1R(sum, 16, norm, 16, mask, 4, {4, 4}, &positive, 0.5f, s),
      0);
  EXPECT_EQ(positive, 0);
  for (Rvp8u m : mask) EXPECT_EQ(m, 0);
  positive = -1;
  ASSERT_EQ(rvpiApplyMixedHaarClassifier_32s32f_C1R(sum, 16, sum, 16, norm, 16, mask, 4, {4, 4},
                                                    &positive, -0.5f, s),
            0);
  EXPECT_EQ(positive, 0);
  rvpiHaarClassifierFree_32f(s);
}

TEST(HaarApply, IntegerFlavoursWrapAndShift) {
  // Rectangle sum 10, weight 3: S = 30. Non-mixed _32s: threshold_c * norm wraps in 32 bits.
  const RvpiRect r{0, 0, 1, 1};
  const int n = 1;
  const Rvp32s w = 3, thr = 65536, a = 1, b = -1;
  RvpiHaarClassifier_32s* s = nullptr;
  ASSERT_EQ(rvpiHaarClassifierInitAlloc_32s(&s, &r, &w, &thr, &a, &b, &n, 1), 0);
  const Rvp32s sum[4] = {0, 0, 0, 10};
  Rvp32s norm = 65536;  // 65536 * 65536 wraps to 0: 30 < 0 is false -> right vote -1
  Rvp8u mask = 1;
  int positive = -1;
  ASSERT_EQ(
      rvpiApplyHaarClassifier_32s_C1RSfs(sum, 8, &norm, 4, &mask, 1, {1, 1}, &positive, 0, s, 99),
      0);
  EXPECT_EQ(mask, 0);
  // Mixed _32s: 64-bit products, no wrap: 30 < 2^32 -> left vote 1.
  mask = 1;
  ASSERT_EQ(rvpiApplyMixedHaarClassifier_32s_C1RSfs(sum, 8, sum, 8, &norm, 4, &mask, 1, {1, 1},
                                                    &positive, 0, s, 0),
            0);
  EXPECT_EQ(mask, 1);
  // Shift left by -scaleFactor, compared with threshold 65536 * norm 1.
  norm = 1;
  ASSERT_EQ(rvpiApplyMixedHaarClassifier_32s_C1RSfs(sum, 8, sum, 8, &norm, 4, &mask, 1, {1, 1},
                                                    &positive, 0, s, -11),
            0);
  EXPECT_EQ(mask, 1);  // 30 << 11 = 61440 < 65536
  ASSERT_EQ(rvpiApplyMixedHaarClassifier_32s_C1RSfs(sum, 8, sum, 8, &norm, 4, &mask, 1, {1, 1},
                                                    &positive, 0, s, -12),
            0);
  EXPECT_EQ(mask, 0);
  mask = 1;
  EXPECT_EQ(rvpiApplyMixedHaarClassifier_32s_C1RSfs(sum, 8, sum, 8, &norm, 4, &mask, 1, {1, 1},
                                                    &positive, 0, s, 1),
            rvpStsBadArgErr);
  rvpiHaarClassifierFree_32s(s);
}

// Random multi-classifier stages on dense and sparse masks: the vector blocks and the scalar
// columns agree with a per-position reference evaluation.
TEST(HaarApply, VectorBlocksMatchScalarReference) {
  std::mt19937 rng(9);
  for (int trial = 0; trial < 40; ++trial) {
    const int W = 20 + int(rng() % 50), H = 18 + int(rng() % 6);
    Tables t(W, H, rng);
    std::vector<RvpiRect> rects;
    std::vector<int> num;
    std::vector<Rvp32f> wt, th, a, b;
    const int count = 1 + int(rng() % 8);
    for (int i = 0; i < count; ++i) {
      num.push_back(1 + int(rng() % 4));
      for (int k = 0; k < num.back(); ++k) {
        const int x = int(rng() % 8), y = int(rng() % 8);
        rects.push_back({x, y, 1 + int(rng() % 8), 1 + int(rng() % 8)});
        wt.push_back(std::uniform_real_distribution<float>(-3, 3)(rng));
      }
      th.push_back(std::uniform_real_distribution<float>(-0.05f, 0.05f)(rng));
      a.push_back(std::uniform_real_distribution<float>(-1, 1)(rng));
      b.push_back(std::uniform_real_distribution<float>(-1, 1)(rng));
    }
    RvpiHaarClassifier_32f* s = nullptr;
    ASSERT_EQ(rvpiHaarClassifierInitAlloc_32f(&s, rects.data(), wt.data(), th.data(), a.data(),
                                              b.data(), num.data(), count),
              0);
    RvpiSize win;
    rvpiGetHaarClassifierSize_32f(s, &win);
    const RvpiSize roi{W + 1 - win.width, H + 1 - win.height};
    TestImage<Rvp32f> norm(roi.width, roi.height, 1, 0, 4 * int(rng() % 3));
    for (int v = 0; v < roi.height; ++v)
      for (int u = 0; u < roi.width; ++u) norm.set(u, v, float(rng() % 2000));
    TestImage<Rvp8u> mask0(roi.width, roi.height, 1, int(rng() % 5), int(rng() % 5));
    rvpt::fill_mask(mask0, rng, trial % 2 ? 0.9 : 0.3);
    const float stage = std::uniform_real_distribution<float>(-1, 1)(rng);
    const auto& h = header<Rvp32f>(s);
    for (bool float_table : {false, true}) {
      // Reference, position by position, through the scalar stage sum.
      const int tstep = float_table ? t.sumf.step() : t.sum.step();
      std::vector<rvp::detect::CornerOffsets> offs;
      for (int k = 0; k < h.rect_count; ++k) {
        const auto& f = h.first[0].first[k];
        const ptrdiff_t e = tstep / 4;
        offs.push_back({f.ay * e + f.ax, f.by * e + f.bx, f.cy * e + f.cx, f.dy * e + f.dx});
      }
      TestImage<Rvp8u> mask = mask0;
      std::vector<Rvp8u> want(roi.width * roi.height);
      int want_pos = 0;
      for (int v = 0; v < roi.height; ++v)
        for (int u = 0; u < roi.width; ++u) {
          Rvp8u m = mask.at(u, v);
          if (m != 0) {
            const float T = float_table ? rvp::detect::ref::stage_sum_f(
                                              t.sumf.row(v) + u, norm.at(u, v), h, offs.data())
                                        : rvp::detect::ref::stage_sum_f(
                                              t.sum.row(v) + u, norm.at(u, v), h, offs.data());
            if (T < stage)
              m = 0;
            else
              ++want_pos;
          }
          want[v * roi.width + u] = m;
        }
      int positive = -1;
      if (float_table)
        ASSERT_EQ(
            rvpiApplyHaarClassifier_32f_C1R(t.sumf.ptr(), t.sumf.step(), norm.ptr(), norm.step(),
                                            mask.ptr(), mask.step(), roi, &positive, stage, s),
            0);
      else
        ASSERT_EQ(
            rvpiApplyHaarClassifier_32s32f_C1R(t.sum.ptr(), t.sum.step(), norm.ptr(), norm.step(),
                                               mask.ptr(), mask.step(), roi, &positive, stage, s),
            0);
      EXPECT_EQ(positive, want_pos);
      for (int v = 0; v < roi.height; ++v)
        for (int u = 0; u < roi.width; ++u) ASSERT_EQ(mask.at(u, v), want[v * roi.width + u]);
    }
    rvpiHaarClassifierFree_32f(s);
  }
}

TEST(HaarApply, ChecksInOrderAndNothingWritten) {
  RvpiRect r{0, 0, 1, 1};
  Rvp32f f = 1;
  int n = 1;
  RvpiHaarClassifier_32f* s = nullptr;
  ASSERT_EQ(rvpiHaarClassifierInitAlloc_32f(&s, &r, &f, &f, &f, &f, &n, 1), 0);
  Rvp32s sum[64] = {};
  Rvp32f norm[64] = {};
  Rvp8u mask[64];
  std::memset(mask, 1, sizeof mask);
  int positive = -7;
  struct Case {
    RvpStatus want;
    RvpiSize roi;
    int ss, ns, ms;
  };
  const Case cases[] = {
      {rvpStsSizeErr, {0, 2}, 16, 16, 4},        {rvpStsStepErr, {4, 2}, 12, 16, 4},
      {rvpStsStepErr, {4, 2}, 16, 12, 4},        {rvpStsStepErr, {4, 2}, 18, 16, 3},
      {rvpStsNotEvenStepErr, {4, 2}, 18, 16, 4}, {rvpStsNotEvenStepErr, {4, 2}, 16, 17, 4},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(rvpiApplyHaarClassifier_32s32f_C1R(sum, c.ss, norm, c.ns, mask, c.ms, c.roi,
                                                 &positive, 0, s),
              c.want);
    EXPECT_EQ(rvpiApplyMixedHaarClassifier_32s32f_C1R(sum, c.ss, sum, c.ss, norm, c.ns, mask, c.ms,
                                                      c.roi, &positive, 0, s),
              c.want);
  }
  EXPECT_EQ(
      rvpiApplyHaarClassifier_32s32f_C1R(sum, 16, norm, 16, mask, 4, {0, 0}, &positive, 0, nullptr),
      rvpStsNullPtrErr);
  EXPECT_EQ(rvpiApplyMixedHaarClassifier_32s32f_C1R(sum, 16, nullptr, 16, norm, 16, mask, 4, {4, 2},
                                                    &positive, 0, s),
            rvpStsNullPtrErr);
  EXPECT_EQ(rvpiApplyHaarClassifier_32f_C1R(reinterpret_cast<Rvp32f*>(sum), 16, norm, 16, mask, 4,
                                            {4, 2}, nullptr, 0, s),
            rvpStsNullPtrErr);
  EXPECT_EQ(positive, -7);
  for (Rvp8u m : mask) EXPECT_EQ(m, 1);
  rvpiHaarClassifierFree_32f(s);
}

TEST(HaarApply, GuardedImagesStayInside) {
  using rvpt::Guard;
  using rvpt::GuardedImage;
  std::mt19937 rng(12);
  const RvpiRect rects[] = {{0, 0, 3, 2}, {1, 1, 2, 2}, {2, 0, 2, 3}};
  const int num[] = {2, 1};
  const Rvp32f w[] = {1, -2, 0.5f}, th[] = {0.01f, -0.01f}, a[] = {1, -1}, b[] = {-1, 1};
  RvpiHaarClassifier_32f* up = nullptr;
  RvpiHaarClassifier_32f* mixed = nullptr;
  ASSERT_EQ(rvpiHaarClassifierInitAlloc_32f(&up, rects, w, th, a, b, num, 2), 0);
  ASSERT_EQ(rvpiHaarClassifierInitAlloc_32f(&mixed, rects, w, th, a, b, num, 2), 0);
  const Rvp8u tilt_second[] = {0, 1};
  ASSERT_EQ(rvpiTiltHaarFeatures_32f(tilt_second, 1, mixed), 0);  // (2,0,2,3): x + 1 >= h
  RvpiSize win;
  rvpiGetHaarClassifierSize_32f(up, &win);  // 4 x 3; the tilted one reaches C.x = 4, A.y = 5
  for (int W = 6; W <= 40; W += 5)
    for (Guard g : {Guard::After, Guard::Before}) {
      const int H = 9;
      TestImage<Rvp8u> img(W, H);
      rvpt::fill_random(img, rng);
      // Tables sized exactly; windows whose corners reach the last row and column.
      GuardedImage<Rvp32s> sum(W + 1, H + 1, 1, 4 * (W + 1), g);
      GuardedImage<Rvp32s> tilt(W + 2, H + 2, 1, 4 * (W + 2), g);
      rvpiIntegral_8u32s_C1R(img.ptr(), img.step(), sum.ptr(), sum.step(), img.size(), 0);
      rvpiTiltedIntegral_8u32s_C1R(img.ptr(), img.step(), tilt.ptr(), tilt.step(), img.size(), 0);
      const RvpiSize roi{W + 1 - 4, H + 1 - 5};
      GuardedImage<Rvp32f> norm(roi.width, roi.height, 1, 4 * roi.width, g);
      GuardedImage<Rvp8u> mask(roi.width, roi.height, 1, roi.width, g);
      for (int v = 0; v < roi.height; ++v)
        for (int u = 0; u < roi.width; ++u) norm.row(v)[u] = 100.0f, mask.row(v)[u] = 1;
      int positive = 0;
      ASSERT_EQ(rvpiApplyHaarClassifier_32s32f_C1R(sum.ptr(), sum.step(), norm.ptr(), norm.step(),
                                                   mask.ptr(), mask.step(), roi, &positive, -5, up),
                0);
      ASSERT_EQ(rvpiApplyMixedHaarClassifier_32s32f_C1R(
                    sum.ptr(), sum.step(), tilt.ptr(), tilt.step(), norm.ptr(), norm.step(),
                    mask.ptr(), mask.step(), roi, &positive, -5, mixed),
                0);
    }
  rvpiHaarClassifierFree_32f(up);
  rvpiHaarClassifierFree_32f(mixed);
}

}  // namespace
