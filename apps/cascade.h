// Multi-scale object detection with Haar cascades, built only on rvpcv's exported functions:
// one classifier state per cascade stage, image scaling, integral images, window normalisation,
// stage chaining through the candidate mask, and grouping of overlapping hits.
//
// The cascade itself is plain data (HaarCascade); load_haar_cascade() (cascade_xml.cpp) fills
// it from a trained cascade in the common Haar XML format. The detector is header-only so that
// tests and benchmarks can use it without the XML reader.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "rvpcv.h"

namespace rvpcv_app {

struct HaarRect {
  RvpiRect rect;
  float weight;  // multiplies the rectangle's raw pixel sum
};
struct HaarWeak {
  std::vector<HaarRect> rects;
  bool tilted = false;
  float threshold = 0;  // compared with the weighted sum divided by the window's norm
  float left = 0;       // vote when the sum is below the threshold
  float right = 0;
};
struct HaarStage {
  std::vector<HaarWeak> weak;
  float threshold = 0;
};
struct HaarCascade {
  int width = 0, height = 0;
  std::vector<HaarStage> stages;
};

// Reads a stump-based Haar cascade (the XML layout of the widely distributed trained cascades).
// Returns false with a message for unreadable files and unsupported cascades (trees, LBP).
bool load_haar_cascade(const std::string& path, HaarCascade& out, std::string* error);

struct DetectParams {
  double scale_factor = 1.1;
  int min_neighbors = 3;  // 0: every raw candidate, ungrouped
  double group_eps = 0.2;
  int min_width = 0, min_height = 0;  // smallest window to try
  int max_width = 0, max_height = 0;  // largest (0: up to the image size)
  // Along each row of the scan grid, a window rejected by the first stage makes the scan skip
  // the next grid position (as the widely used reference detector does: same hits, less work).
  bool skip_after_first_reject = true;
};

// Windows whose inner rectangle has a standard deviation of at most this many gray levels are
// left out: nearly flat windows carry little structure and mostly give false hits. (Measured on
// photographs, the widely used reference detector draws the line at the same place.)
constexpr float kMinWindowDeviation = 10.0f;

// The stage threshold is lowered slightly so that a stage sum equal to it up to rounding
// still passes; trained thresholds sit exactly on training scores.
constexpr float kStageThresholdSlack = 1e-5f;

class HaarDetector {
 public:
  HaarDetector() = default;
  HaarDetector(const HaarDetector&) = delete;
  HaarDetector& operator=(const HaarDetector&) = delete;
  ~HaarDetector() { release(); }

  // Builds one classifier state per stage. False (with a message) when the library refuses.
  bool init(const HaarCascade& cascade, std::string* error) {
    release();
    width_ = cascade.width;
    height_ = cascade.height;
    tilted_ = false;
    if (width_ < 3 || height_ < 3) {  // the normalisation reads the window's inner rectangle
      if (error) *error = "the window must be at least 3 x 3";
      return false;
    }
    for (const HaarStage& st : cascade.stages) {
      std::vector<RvpiRect> rects;
      std::vector<Rvp32f> weights, thresholds, left, right;
      std::vector<int> num;
      std::vector<Rvp8u> tilt;
      for (const HaarWeak& w : st.weak) {
        for (const HaarRect& r : w.rects) {
          // A tilted rectangle reaches h - 1 columns left of x; nothing may leave the table.
          if (w.tilted && r.rect.x + 1 < r.rect.height) {
            if (error) *error = "a tilted rectangle reaches left of the window";
            release();
            return false;
          }
          rects.push_back(r.rect);
          weights.push_back(r.weight);
        }
        num.push_back(static_cast<int>(w.rects.size()));
        thresholds.push_back(w.threshold);
        left.push_back(w.left);
        right.push_back(w.right);
        tilt.push_back(w.tilted ? 1 : 0);
        tilted_ = tilted_ || w.tilted;
      }
      RvpiHaarClassifier_32f* state = nullptr;
      RvpStatus s = rvpiHaarClassifierInitAlloc_32f(&state, rects.data(), weights.data(),
                                                    thresholds.data(), left.data(), right.data(),
                                                    num.data(), static_cast<int>(num.size()));
      if (s == rvpStsNoErr) s = rvpiTiltHaarFeatures_32f(tilt.data(), 1, state);
      RvpiSize reach{0, 0};
      if (s == rvpStsNoErr) s = rvpiGetHaarClassifierSize_32f(state, &reach);
      if (s == rvpStsNoErr && (reach.width > width_ || reach.height > height_)) {
        rvpiHaarClassifierFree_32f(state);
        if (error)
          *error = "stage " + std::to_string(stages_.size()) + " reaches outside the window";
        release();
        return false;
      }
      if (s != rvpStsNoErr) {
        if (state != nullptr) rvpiHaarClassifierFree_32f(state);
        if (error)
          *error = "the library refused stage " + std::to_string(stages_.size()) + " (status " +
                   std::to_string(s) + ")";
        release();
        return false;
      }
      stages_.push_back({state, st.threshold - kStageThresholdSlack});
    }
    return true;
  }

  int window_width() const { return width_; }
  int window_height() const { return height_; }

  // Runs every stage over the windows of an 8-bit gray image whose top-left corner lies on the
  // grid of `grid_step` (both coordinates multiples of it); returns the survivors' corners.
  std::vector<RvpiPoint> candidates(const Rvp8u* img, int step, int w, int h, int grid_step,
                                    bool skip_after_first_reject = true) {
    std::vector<RvpiPoint> out;
    const RvpiSize pos{w - width_ + 1, h - height_ + 1};
    if (pos.width < 1 || pos.height < 1 || stages_.empty()) return out;
    prepare_tables(img, step, w, h, pos);
    // Candidate mask: grid positions whose window is not nearly flat.
    mask_.assign(size_t(pos.width) * pos.height, 0);
    for (int v = 0; v < pos.height; v += grid_step)
      for (int u = 0; u < pos.width; u += grid_step)
        mask_[size_t(v) * pos.width + u] = norm_[size_t(v) * pos.width + u] > kMinWindowDeviation;
    const float area = float(width_ - 2) * float(height_ - 2);
    for (float& n : norm_) n *= area;
    int positive = 0;
    if (skip_after_first_reject) before_.assign(mask_.begin(), mask_.end());
    for (size_t k = 0; k < stages_.size(); ++k) {
      const Stage& s = stages_[k];
      const RvpStatus st =
          tilted_
              ? rvpiApplyMixedHaarClassifier_32s32f_C1R(
                    sum_.data(), (w + 1) * 4, tilt_.data(), (w + 2) * 4, norm_.data(),
                    pos.width * 4, mask_.data(), pos.width, pos, &positive, s.threshold, s.state)
              : rvpiApplyHaarClassifier_32s32f_C1R(sum_.data(), (w + 1) * 4, norm_.data(),
                                                   pos.width * 4, mask_.data(), pos.width, pos,
                                                   &positive, s.threshold, s.state);
      if (st != rvpStsNoErr) return out;
      if (k == 0 && skip_after_first_reject) positive = skip_after_reject(pos, grid_step);
      if (positive == 0) return out;
    }
    for (int v = 0; v < pos.height; ++v)
      for (int u = 0; u < pos.width; ++u)
        if (mask_[size_t(v) * pos.width + u]) out.push_back({u, v});
    return out;
  }

  // Scans the image at scales factor^k (k = 0, 1, ...); raw hits in original coordinates go to
  // `raw` when given; returns the grouped detections.
  std::vector<RvpiRect> detect(const Rvp8u* img, int step, int w, int h, const DetectParams& p,
                               std::vector<RvpiRect>* raw = nullptr);

 private:
  struct Stage {
    RvpiHaarClassifier_32f* state;
    float threshold;
  };

  // Walks each grid row: a position that was evaluated and rejected by the first stage makes
  // the next grid position unevaluated. Returns the survivors left.
  int skip_after_reject(RvpiSize pos, int grid_step) {
    int positive = 0;
    for (int v = 0; v < pos.height; v += grid_step) {
      Rvp8u* m = mask_.data() + size_t(v) * pos.width;
      const Rvp8u* b = before_.data() + size_t(v) * pos.width;
      bool skip = false;
      for (int u = 0; u < pos.width; u += grid_step) {
        if (skip) {
          m[u] = 0;
          skip = false;
          continue;
        }
        skip = b[u] != 0 && m[u] == 0;
        positive += m[u] != 0;
      }
    }
    return positive;
  }

  void release() {
    for (Stage& s : stages_) rvpiHaarClassifierFree_32f(s.state);
    stages_.clear();
  }

  void prepare_tables(const Rvp8u* img, int step, int w, int h, RvpiSize pos) {
    const RvpiSize roi{w, h};
    sum_.resize(size_t(w + 1) * (h + 1));
    sq_.resize(size_t(w + 1) * (h + 1));
    rvpiSqrIntegral_8u32s64f_C1R(img, step, sum_.data(), (w + 1) * 4, sq_.data(), (w + 1) * 8, roi,
                                 0, 0.0);
    if (tilted_) {
      tilt_.resize(size_t(w + 2) * (h + 2));
      rvpiTiltedIntegral_8u32s_C1R(img, step, tilt_.data(), (w + 2) * 4, roi, 0);
    }
    // Deviation of each window's inner rectangle; candidates() turns it into the feature
    // normalisation (deviation times the rectangle's area).
    const RvpiRect inner{1, 1, width_ - 2, height_ - 2};
    norm_.resize(size_t(pos.width) * pos.height);
    rvpiRectStdDev_32s32f_C1R(sum_.data(), (w + 1) * 4, sq_.data(), (w + 1) * 8, norm_.data(),
                              pos.width * 4, pos, inner);
  }

  int width_ = 0, height_ = 0;
  bool tilted_ = false;
  std::vector<Stage> stages_;
  std::vector<Rvp32s> sum_, tilt_;
  std::vector<Rvp64f> sq_;
  std::vector<Rvp32f> norm_;
  std::vector<Rvp8u> mask_, before_;
};

// Bilinear scaling of an 8-bit gray image (pixel centres aligned, 11-bit fixed-point weights,
// edges replicated): the detector's image pyramid.
inline void resize_bilinear(const Rvp8u* src, int src_step, int sw, int sh, Rvp8u* dst,
                            int dst_step, int dw, int dh) {
  constexpr int kBits = 11, kOne = 1 << kBits;
  auto taps = [](int s, int d, std::vector<int>& idx, std::vector<int>& wt) {
    idx.resize(d);
    wt.resize(d);
    const double scale = double(s) / d;
    for (int i = 0; i < d; ++i) {
      double f = (i + 0.5) * scale - 0.5;
      int i0 = int(std::floor(f));
      double a = f - i0;
      if (i0 < 0) i0 = 0, a = 0;
      if (i0 >= s - 1) i0 = s - 1, a = 0;
      idx[i] = i0;
      wt[i] = int(std::lround(a * kOne));
    }
  };
  std::vector<int> xi, xw, yi, yw;
  taps(sw, dw, xi, xw);
  taps(sh, dh, yi, yw);
  std::vector<int> r0(dw), r1(dw);
  auto horizontal = [&](int y, std::vector<int>& r) {
    const Rvp8u* s = src + size_t(src_step) * y;
    for (int x = 0; x < dw; ++x) {
      const int i = xi[x], a = xw[x];
      const int right = i + 1 < sw ? s[i + 1] : s[i];
      r[x] = s[i] * (kOne - a) + right * a;
    }
  };
  int have0 = -1, have1 = -1;
  for (int y = 0; y < dh; ++y) {
    const int i = yi[y], b = yw[y], i1 = std::min(i + 1, sh - 1);
    if (have0 != i) {
      if (have1 == i)
        std::swap(r0, r1), have0 = i, have1 = -1;
      else
        horizontal(i, r0), have0 = i;
    }
    if (have1 != i1) horizontal(i1, r1), have1 = i1;
    Rvp8u* d = dst + size_t(dst_step) * y;
    for (int x = 0; x < dw; ++x) {
      const int64_t v = int64_t{r0[x]} * (kOne - b) + int64_t{r1[x]} * b;
      d[x] = static_cast<Rvp8u>((v + (int64_t{1} << (2 * kBits - 1))) >> (2 * kBits));
    }
  }
}

// Clusters rectangles whose corners all lie within eps * (mean of the smaller sides) of each
// other, averages each cluster, keeps clusters with more than min_neighbors members, and drops
// a kept rectangle that lies inside a larger one with clearly more support.
inline std::vector<RvpiRect> group_rectangles(const std::vector<RvpiRect>& rects, int min_neighbors,
                                              double eps) {
  if (min_neighbors <= 0) return rects;
  const int n = static_cast<int>(rects.size());
  std::vector<int> parent(n);
  for (int i = 0; i < n; ++i) parent[i] = i;
  auto find = [&](int i) {
    while (parent[i] != i) i = parent[i] = parent[parent[i]];
    return i;
  };
  auto similar = [&](const RvpiRect& a, const RvpiRect& b) {
    const double delta = eps * (std::min(a.width, b.width) + std::min(a.height, b.height)) * 0.5;
    return std::abs(a.x - b.x) <= delta && std::abs(a.y - b.y) <= delta &&
           std::abs(a.x + a.width - b.x - b.width) <= delta &&
           std::abs(a.y + a.height - b.y - b.height) <= delta;
  };
  for (int i = 0; i < n; ++i)
    for (int j = i + 1; j < n; ++j)
      if (similar(rects[i], rects[j])) parent[find(i)] = find(j);
  std::vector<int> label(n, -1), members;
  std::vector<double> sx, sy, sw, sh;
  for (int i = 0; i < n; ++i) {
    const int r = find(i);
    if (label[r] < 0) {
      label[r] = static_cast<int>(members.size());
      members.push_back(0);
      sx.push_back(0), sy.push_back(0), sw.push_back(0), sh.push_back(0);
    }
    const int c = label[r];
    ++members[c];
    sx[c] += rects[i].x, sy[c] += rects[i].y, sw[c] += rects[i].width, sh[c] += rects[i].height;
  }
  std::vector<RvpiRect> avg;
  std::vector<int> support;
  for (size_t c = 0; c < members.size(); ++c) {
    if (members[c] <= min_neighbors) continue;
    const double k = 1.0 / members[c];
    avg.push_back({int(std::lround(sx[c] * k)), int(std::lround(sy[c] * k)),
                   int(std::lround(sw[c] * k)), int(std::lround(sh[c] * k))});
    support.push_back(members[c]);
  }
  std::vector<RvpiRect> out;
  for (size_t i = 0; i < avg.size(); ++i) {
    bool inside = false;
    for (size_t j = 0; j < avg.size() && !inside; ++j) {
      if (i == j || support[j] < std::max(3, support[i])) continue;
      const int dx = int(std::lround(avg[j].width * eps)),
                dy = int(std::lround(avg[j].height * eps));
      inside = avg[i].x >= avg[j].x - dx && avg[i].y >= avg[j].y - dy &&
               avg[i].x + avg[i].width <= avg[j].x + avg[j].width + dx &&
               avg[i].y + avg[i].height <= avg[j].y + avg[j].height + dy;
    }
    if (!inside) out.push_back(avg[i]);
  }
  return out;
}

inline std::vector<RvpiRect> HaarDetector::detect(const Rvp8u* img, int step, int w, int h,
                                                  const DetectParams& p,
                                                  std::vector<RvpiRect>* raw) {
  std::vector<RvpiRect> hits;
  std::vector<Rvp8u> scaled;
  const int max_w = p.max_width > 0 ? p.max_width : w, max_h = p.max_height > 0 ? p.max_height : h;
  for (double f = 1.0;; f *= p.scale_factor) {
    const int ww = int(std::lround(width_ * f)), wh = int(std::lround(height_ * f));
    const int sw = int(std::lround(w / f)), sh = int(std::lround(h / f));
    if (sw < width_ || sh < height_ || ww > max_w || wh > max_h) break;
    if (ww < p.min_width || wh < p.min_height) continue;
    const Rvp8u* level = img;
    int level_step = step;
    if (sw != w || sh != h) {
      scaled.resize(size_t(sw) * sh);
      resize_bilinear(img, step, w, h, scaled.data(), sw, sw, sh);
      level = scaled.data();
      level_step = sw;
    }
    // Large scales are scanned densely; fine scales every other position, which the next
    // scale's overlap makes up for.
    const int grid = f > 2.0 ? 1 : 2;
    for (const RvpiPoint& c :
         candidates(level, level_step, sw, sh, grid, p.skip_after_first_reject))
      hits.push_back({int(std::lround(c.x * f)), int(std::lround(c.y * f)), ww, wh});
  }
  if (raw) *raw = hits;
  return group_rectangles(hits, p.min_neighbors, p.group_eps);
}

}  // namespace rvpcv_app
