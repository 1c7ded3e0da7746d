// The tool's detector helpers: image scaling, grouping of hits, and the scan's skip rule.
#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <vector>

#include "../../apps/cascade.h"

namespace {

TEST(CascadeResize, FollowsTheBilinearFormulaAndSameSizeCopies) {
  std::mt19937 rng(1);
  const int w = 37, h = 22;  // odd width: the last output column replicates the edge
  std::vector<Rvp8u> src(w * h);
  for (auto& v : src) v = Rvp8u(rng());
  std::vector<Rvp8u> same(w * h);
  rvpcv_app::resize_bilinear(src.data(), w, w, h, same.data(), w, w, h);
  EXPECT_EQ(same, src);
  const int dw = 18, dh = 11;
  std::vector<Rvp8u> half(dw * dh);
  rvpcv_app::resize_bilinear(src.data(), w, w, h, half.data(), dw, dw, dh);
  for (int y = 0; y < dh; ++y)
    for (int x = 0; x < dw; ++x) {
      // Source position (x + 0.5) * 37/18 - 0.5: not exactly 2x + 0.5 horizontally, so check
      // against the bilinear formula with 11-bit weights and round-half-up.
      const double fx = (x + 0.5) * double(w) / dw - 0.5, fy = (y + 0.5) * 2.0 - 0.5;
      const int x0 = int(fx), y0 = int(fy);
      const int ax = int(std::lround((fx - x0) * 2048)), ay = int(std::lround((fy - y0) * 2048));
      auto px = [&](int xx, int yy) { return int(src[yy * w + std::min(xx, w - 1)]); };
      const int64_t top = px(x0, y0) * (2048 - ax) + px(x0 + 1, y0) * ax;
      const int64_t bot = px(x0, y0 + 1) * (2048 - ax) + px(x0 + 1, y0 + 1) * ax;
      const int64_t v = (top * (2048 - ay) + bot * ay + (int64_t{1} << 21)) >> 22;
      ASSERT_EQ(half[y * dw + x], v) << x << "," << y;
    }
}

TEST(CascadeGroup, ClustersNeedMoreThanMinNeighborsAndAverage) {
  std::vector<RvpiRect> r = {{100, 100, 50, 50}, {102, 98, 52, 50},
                             {98, 102, 48, 52},  {101, 101, 50, 50},   // a cluster of four
                             {300, 40, 30, 30},  {302, 41, 30, 30},    // a cluster of two
                             {10, 10, 20, 20}};                        // a loner
  EXPECT_EQ(rvpcv_app::group_rectangles(r, 0, 0.2).size(), r.size());  // ungrouped
  auto g = rvpcv_app::group_rectangles(r, 1, 0.2);
  ASSERT_EQ(g.size(), 2u);
  EXPECT_EQ(g[0].x, 100);  // (100 + 102 + 98 + 101) / 4 = 100.25
  EXPECT_EQ(g[0].y, 100);
  EXPECT_EQ(g[0].width, 50);
  EXPECT_EQ(g[1].x, 301);  // 301.0
  g = rvpcv_app::group_rectangles(r, 3, 0.2);
  ASSERT_EQ(g.size(), 1u);
  EXPECT_EQ(g[0].height, 51);  // (50 + 50 + 52 + 50) / 4 = 50.5 -> 51
  // A small well-supported box inside a big one with more support is dropped.
  std::vector<RvpiRect> nested;
  for (int i = 0; i < 6; ++i) nested.push_back({0 + i % 2, 0, 100, 100});
  for (int i = 0; i < 4; ++i) nested.push_back({40, 40 + i % 2, 20, 20});
  g = rvpcv_app::group_rectangles(nested, 2, 0.2);
  ASSERT_EQ(g.size(), 1u);
  EXPECT_EQ(g[0].width, 100);
}

// A one-stage cascade whose single classifier passes windows brighter on the left than on the
// right: the candidates are exactly those windows (with deviation above the flat limit), and the
// skip rule removes the grid position after each first-stage rejection.
TEST(CascadeDetector, CandidatesFollowTheStageAndTheSkipRule) {
  rvpcv_app::HaarCascade c;
  c.width = c.height = 6;
  rvpcv_app::HaarWeak weak;
  weak.rects = {{{0, 0, 3, 6}, 1.0f}, {{3, 0, 3, 6}, -1.0f}};
  weak.threshold = 0.0f;  // left - right below 0 -> vote 0, else 1
  weak.left = 0.0f;
  weak.right = 1.0f;
  c.stages.push_back({{weak}, 0.5f});
  rvpcv_app::HaarDetector det;
  std::string err;
  ASSERT_TRUE(det.init(c, &err)) << err;
  // Stripes: columns alternate blocks of bright and dark, so windows alternate pass/fail.
  const int w = 40, h = 12;
  std::vector<Rvp8u> img(w * h);
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x) img[y * w + x] = ((x / 4) % 2) ? 20 : 220;
  auto pass = [&](int u, int v) {
    int64_t l = 0, r = 0;
    for (int y = v; y < v + 6; ++y)
      for (int x = u; x < u + 6; ++x) (x < u + 3 ? l : r) += img[y * w + x];
    return l - r >= 0;
  };
  for (bool skip : {false, true}) {
    const auto got = det.candidates(img.data(), w, w, h, 2, skip);
    std::vector<RvpiPoint> want;
    for (int v = 0; v + 6 <= h; v += 2) {
      bool skip_next = false;
      for (int u = 0; u + 6 <= w; u += 2) {
        if (skip && skip_next) {
          skip_next = false;
          continue;
        }
        const bool p = pass(u, v);
        skip_next = !p;
        if (p) want.push_back({u, v});
      }
    }
    ASSERT_EQ(got.size(), want.size()) << "skip " << skip;
    for (size_t i = 0; i < got.size(); ++i) {
      EXPECT_EQ(got[i].x, want[i].x);
      EXPECT_EQ(got[i].y, want[i].y);
    }
  }
}

// Tilted features go through the mixed stage and the tilted table: two 45-degree rectangles,
// the windows that pass are those whose first rectangle outweighs the second.
TEST(CascadeDetector, TiltedFeaturesReadTheDocumentedRectangles) {
  rvpcv_app::HaarCascade c;
  c.width = c.height = 8;
  rvpcv_app::HaarWeak weak;
  weak.tilted = true;
  weak.rects = {{{3, 0, 2, 2}, 1.0f}, {{5, 2, 2, 3}, -1.0f}};
  weak.threshold = 0.0f;
  weak.left = 0.0f;
  weak.right = 1.0f;
  c.stages.push_back({{weak}, 0.5f});
  rvpcv_app::HaarDetector det;
  std::string err;
  ASSERT_TRUE(det.init(c, &err)) << err;
  std::mt19937 rng(3);
  const int w = 30, h = 20;
  std::vector<Rvp8u> img(w * h);
  for (auto& v : img) v = Rvp8u(rng());
  auto rect_sum = [&](int u0, int v0, RvpiRect r) {
    int64_t s = 0;
    for (int py = 0; py < h; ++py)
      for (int px = 0; px < w; ++px) {
        const int x = px - u0, y = py - v0, u = x + y, v = y - x;
        if (u > r.x + r.y && u <= r.x + r.y + 2 * r.width && v >= r.y - r.x &&
            v <= r.y - r.x + 2 * r.height - 1)
          s += img[py * w + px];
      }
    return s;
  };
  std::vector<RvpiPoint> want;
  for (int v = 0; v + 8 <= h; ++v)
    for (int u = 0; u + 8 <= w; ++u) {
      double s1 = 0, s2 = 0;  // the flat-window rule on the inner 6 x 6
      for (int y = v + 1; y < v + 7; ++y)
        for (int x = u + 1; x < u + 7; ++x)
          s1 += img[y * w + x], s2 += double(img[y * w + x]) * img[y * w + x];
      const double sd = std::sqrt(s2 / 36 - (s1 / 36) * (s1 / 36));
      ASSERT_GT(std::fabs(sd - 10.0), 0.01);  // no borderline window in this image
      if (sd > 10.0 && rect_sum(u, v, weak.rects[0].rect) - rect_sum(u, v, weak.rects[1].rect) >= 0)
        want.push_back({u, v});
    }
  const auto got = det.candidates(img.data(), w, w, h, 1, false);
  ASSERT_EQ(got.size(), want.size());
  ASSERT_GT(want.size(), 10u);
  for (size_t i = 0; i < got.size(); ++i) {
    EXPECT_EQ(got[i].x, want[i].x);
    EXPECT_EQ(got[i].y, want[i].y);
  }
}

}  // namespace
