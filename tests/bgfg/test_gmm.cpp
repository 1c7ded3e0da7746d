// Gaussian-mixture background model: buffer size and layout, the rate rule, the edge cases of
// the update (first call, numFrames 1, pruning to no modes, one component), refusals that leave
// everything untouched, scalar against AVX2 over long synthetic sequences, guarded images.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "bgfg/gmm_kernels.h"
#include "core/image.h"
#include "rvpcv.h"
#include "support/guarded.h"
#include "support/images.h"

namespace {

using rvp::bgfg::GmmHeader;
using rvp::bgfg::GmmPlanes;

RvpFGMModel default_model() {
  RvpFGMModel m{};
  m.numFrames = 500;
  m.numGauss = 5;
  m.varInit = 15.0f;
  m.varMin = 4.0f;
  m.varMax = 75.0f;
  m.varThreshold = 16.0f;
  m.bgRatio = 0.9f;
  m.varThresholdGen = 9.0f;
  m.complexityReduction = 0.05f;
  m.shadowValue = 127;
  m.shadowDetection = 1;
  m.shadowTau = 0.5f;
  return m;
}

// Byte i of row y of an image, whatever its channel count.
Rvp8u& byte_at(rvpt::TestImage<Rvp8u>& img, int i, int y) { return img.row(y)[i]; }

// Every pixel byte of a (possibly multi-channel) image random.
void fill_bytes(rvpt::TestImage<Rvp8u>& img, std::mt19937& rng) {
  for (int y = 0; y < img.height(); ++y)
    for (int i = 0; i < img.width() * img.channels(); ++i) byte_at(img, i, y) = Rvp8u(rng());
}

int64_t a32(int64_t v) { return (v + 31) / 32 * 32; }

// A model in an ordinary vector, started `offset` bytes past a 64-byte boundary.
struct State {
  State(RvpiSize roi, int max_gauss, const RvpFGMModel& model, int offset = 0) {
    EXPECT_EQ(rvpiFGMMGetBufferSize_8u_C3R(roi, max_gauss, &size), rvpStsNoErr);
    storage.assign(size_t(size) + 128, 0x5C);
    base = storage.data() + ((-reinterpret_cast<uintptr_t>(storage.data())) & 63) + offset;
    EXPECT_EQ(rvpiFGMMInit_8u_C3R(roi, max_gauss, &model, base), rvpStsNoErr);
  }
  // The state from its aligned header to the end of the planes (the bytes around them depend
  // on the buffer's alignment).
  std::vector<uint8_t> bytes() {
    const GmmPlanes g = planes();
    const auto* from = reinterpret_cast<const uint8_t*>(rvp::bgfg::state_header(base));
    const auto* to = reinterpret_cast<const uint8_t*>(g.data + 4 * g.plane * g.max_gauss);
    return std::vector<uint8_t>(from, to);
  }
  GmmPlanes planes() {
    GmmHeader* h;
    return rvp::bgfg::carve_planes(base, &h);
  }
  GmmHeader& header() { return *rvp::bgfg::state_header(base); }
  int size = 0;
  std::vector<uint8_t> storage;
  uint8_t* base = nullptr;
};

// The driver with the scalar reference in place of the vector rows.
void scalar_frame(const Rvp8u* src, int src_step, Rvp8u* dst, int dst_step, RvpiSize roi,
                  Rvp8u* state, const RvpFGMModel* model, double rate) {
  GmmHeader* h;
  const GmmPlanes g = rvp::bgfg::carve_planes(state, &h);
  if (model != nullptr) h->model = *model;
  const rvp::bgfg::GmmParams q = rvp::bgfg::frame_params(h->model, h->frame_count, rate);
  ++h->frame_count;
  for (int y = 0; y < roi.height; ++y)
    rvp::bgfg::ref::update_row(g, q, int64_t{y} * roi.width, rvp::row(src, src_step, y),
                               rvp::row(dst, dst_step, y), roi.width);
}

// A synthetic video: a smooth textured background with sensor noise, moving boxes of flat and
// textured colour, each casting a shadow (the background darkened by a factor in 0.5 .. 0.8)
// beside it, and now and then a sudden global brightness step.
class Scene {
 public:
  Scene(int w, int h, uint32_t seed, int noise = 4, int objects = 3)
      : w_(w), h_(h), noise_(noise), rng_(seed), bg_(size_t(w) * h * 3) {
    std::uniform_real_distribution<float> phase(0.0f, 6.3f);
    const float p0 = phase(rng_), p1 = phase(rng_), p2 = phase(rng_);
    for (int y = 0; y < h; ++y)
      for (int x = 0; x < w; ++x) {
        uint8_t* px = &bg_[(size_t(y) * w + x) * 3];
        px[0] = uint8_t(128 + 100 * std::sin(0.11f * x + p0) * std::cos(0.07f * y));
        px[1] = uint8_t(128 + 90 * std::sin(0.05f * (x + y) + p1));
        px[2] = uint8_t(20 + (x * 7 + y * 3 + int(30 * p2)) % 200);
      }
    std::uniform_int_distribution<int> coord(0, std::max(w, h));
    std::uniform_int_distribution<int> colour(0, 255);
    std::uniform_int_distribution<int> speed(-3, 3);
    for (int i = 0; i < objects; ++i)
      boxes_.push_back({coord(rng_) % std::max(w, 1),
                        coord(rng_) % std::max(h, 1),
                        3 + coord(rng_) % 9,
                        3 + coord(rng_) % 9,
                        speed(rng_) | 1,
                        speed(rng_),
                        {uint8_t(colour(rng_)), uint8_t(colour(rng_)), uint8_t(colour(rng_))},
                        0.5f + 0.1f * (i % 4)});
  }

  // Frame t into an image of the scene's size (any step).
  void frame(int t, rvpt::TestImage<Rvp8u>& img) {
    std::uniform_int_distribution<int> noise(-noise_, noise_);
    const int lift = (t / 37) % 2 == 1 ? 25 : 0;  // illumination steps
    for (int y = 0; y < h_; ++y)
      for (int x = 0; x < w_; ++x) {
        const uint8_t* b = &bg_[(size_t(y) * w_ + x) * 3];
        float px[3] = {float(b[0] + lift), float(b[1] + lift), float(b[2] + lift)};
        for (const Box& o : boxes_) {
          const int ox = pos(o.x + o.vx * t, w_), oy = pos(o.y + o.vy * t, h_);
          if (inside(x - ox - 2, y - oy - 2, o))
            for (float& c : px) c *= o.shade;
          if (inside(x - ox, y - oy, o))
            for (int c = 0; c < 3; ++c) px[c] = o.rgb[c] + ((x + y) % 5) * (o.rgb[c] & 1) * 8;
        }
        for (int c = 0; c < 3; ++c)
          img.set(x, y, uint8_t(std::clamp(int(px[c]) + noise(rng_), 0, 255)), c);
      }
  }

 private:
  struct Box {
    int x, y, w, h, vx, vy;
    uint8_t rgb[3];
    float shade;
  };
  static int pos(int v, int n) { return ((v % n) + n) % n; }
  static bool inside(int dx, int dy, const Box& o) {
    return dx >= 0 && dy >= 0 && dx < o.w && dy < o.h;
  }
  int w_, h_, noise_;
  std::mt19937 rng_;
  std::vector<uint8_t> bg_;
  std::vector<Box> boxes_;
};

// ---- size query and Init ----------------------------------------------------------------------

TEST(FGMMGetBufferSize, FormulaAndRefusals) {
  for (RvpiSize roi : {RvpiSize{1, 1}, RvpiSize{7, 3}, RvpiSize{640, 480}, RvpiSize{33, 1}})
    for (int n : {1, 3, 5, 8, 255}) {
      int size = -1;
      ASSERT_EQ(rvpiFGMMGetBufferSize_8u_C3R(roi, n, &size), rvpStsNoErr);
      const int64_t px = int64_t{roi.width} * roi.height;
      EXPECT_EQ(size, a32(16 * px * n) + 3 * a32(8 * n) + 416 + a32(px) + 2 * a32(4 * px * n))
          << roi.width << "x" << roi.height << " n=" << n;
    }
  struct Case {
    RvpiSize roi;
    int n;
    bool null;
    RvpStatus want;
  };
  const Case cases[] = {
      {{0, 5}, 0, true, rvpStsNullPtrErr},  // null first, whatever else is wrong
      {{0, 5}, 0, false, rvpStsSizeErr},    // size before the component count
      {{5, -1}, 3, false, rvpStsSizeErr},
      {{5, 5}, 0, false, rvpStsBadArgErr},
      {{5, 5}, -2, false, rvpStsBadArgErr},
      {{5, 5}, 256, false, rvpStsBadArgErr},        // the mode count is one byte
      {{8192, 8192}, 5, false, rvpStsSizeErr},      // does not fit a 32-bit count
      {{65536, 65536}, 255, false, rvpStsSizeErr},  // nor would its products
  };
  for (const Case& c : cases) {
    int size = -12345;
    EXPECT_EQ(rvpiFGMMGetBufferSize_8u_C3R(c.roi, c.n, c.null ? nullptr : &size), c.want);
    EXPECT_EQ(size, -12345);
  }
}

TEST(FGMMInit, LayoutWithinTheQueriedBytesAtAnyAlignment) {
  const RvpFGMModel model = default_model();
  for (RvpiSize roi : {RvpiSize{1, 1}, RvpiSize{13, 5}, RvpiSize{64, 2}})
    for (int n : {1, 4})
      for (rvpt::Guard where : {rvpt::Guard::After, rvpt::Guard::Before}) {
        int size = 0;
        ASSERT_EQ(rvpiFGMMGetBufferSize_8u_C3R(roi, n, &size), rvpStsNoErr);
        for (int offset = 0; offset < 32; offset += 5) {
          // The guarded region is exactly the queried size (its start varies with offset).
          rvpt::GuardedBuffer buf(size_t(size) + offset, where);
          Rvp8u* state = buf.data() + offset;
          ASSERT_EQ(rvpiFGMMInit_8u_C3R(roi, n, &model, state), rvpStsNoErr);
          GmmHeader* h;
          const GmmPlanes g = rvp::bgfg::carve_planes(state, &h);
          EXPECT_EQ(h->frame_count, 0);
          EXPECT_EQ(h->max_gauss, n);
          EXPECT_EQ(h->model.numGauss, n);  // Init uses the maximum, not pModel->numGauss
          EXPECT_EQ(h->model.varInit, model.varInit);
          const int64_t px = int64_t{roi.width} * roi.height;
          for (int64_t p = 0; p < px; ++p) {
            ASSERT_EQ(g.modes[p], 0);
            for (int k = 0; k < n; ++k) {
              ASSERT_EQ(g.order[k * px + p], k);
              ASSERT_EQ(g.weights[k * px + p], 0.0f);
              for (int c = 0; c < 4; ++c) ASSERT_EQ(g.data[(k * px + p) * 4 + c], 0.0f);
            }
          }
          // Every byte of the buffer was zeroed apart from the header and the order planes.
          const uint8_t* end = reinterpret_cast<const uint8_t*>(g.data + 4 * px * n);
          EXPECT_LE(end, state + size);
          for (const uint8_t* b = state; b < reinterpret_cast<const uint8_t*>(h); ++b)
            ASSERT_EQ(*b, 0);
          for (const uint8_t* b = end; b < state + size; ++b) ASSERT_EQ(*b, 0);
        }
      }
}

TEST(FGMMInit, RefusalsWriteNothing) {
  const RvpFGMModel model = default_model();
  std::vector<uint8_t> buf(4096, 0x3C);
  const std::vector<uint8_t> before = buf;
  EXPECT_EQ(rvpiFGMMInit_8u_C3R({4, 4}, 2, nullptr, buf.data()), rvpStsNullPtrErr);
  EXPECT_EQ(rvpiFGMMInit_8u_C3R({4, 4}, 2, &model, nullptr), rvpStsNullPtrErr);
  EXPECT_EQ(rvpiFGMMInit_8u_C3R({0, 4}, 0, &model, buf.data()), rvpStsSizeErr);
  EXPECT_EQ(rvpiFGMMInit_8u_C3R({4, 0}, 2, &model, buf.data()), rvpStsSizeErr);
  EXPECT_EQ(rvpiFGMMInit_8u_C3R({4, 4}, 0, &model, buf.data()), rvpStsBadArgErr);
  EXPECT_EQ(rvpiFGMMInit_8u_C3R({4, 4}, 256, &model, buf.data()), rvpStsBadArgErr);
  EXPECT_EQ(rvpiFGMMInit_8u_C3R({40000, 40000}, 5, &model, buf.data()), rvpStsSizeErr);
  EXPECT_EQ(buf, before);
}

// ---- the rate rule and the edge cases -----------------------------------------------------

TEST(FGMMForeground, FirstCallCreatesOneComponentPerPixel) {
  const RvpiSize roi{21, 4};
  std::mt19937 rng(3);
  rvpt::TestImage<Rvp8u> src(roi.width, roi.height, 3, 5, 1);
  fill_bytes(src, rng);
  for (int x = 0; x < 3; ++x)
    for (int c = 0; c < 3; ++c) src.set(x, 1, 0, c);  // black pixels: D = 0
  for (int shadow : {0, 1})
    for (double rate : {-1.0, 0.0, 0.3}) {  // the first call ignores the rate
      RvpFGMModel model = default_model();
      model.shadowDetection = uint8_t(shadow);
      model.shadowValue = 77;
      State st(roi, 4, model, 8);
      rvpt::TestImage<Rvp8u> mask(roi.width, roi.height, 1, 3, 2);
      ASSERT_EQ(rvpiFGMMForeground_8u_C3R(src.ptr(), src.step(), mask.ptr(), mask.step(), roi,
                                          st.base, nullptr, rate),
                rvpStsNoErr);
      EXPECT_EQ(st.header().frame_count, 1);
      const GmmPlanes g = st.planes();
      for (int y = 0; y < roi.height; ++y)
        for (int x = 0; x < roi.width; ++x) {
          const int64_t p = int64_t{y} * roi.width + x;
          ASSERT_EQ(g.modes[p], 1);
          ASSERT_EQ(g.weights[p], 1.0f);
          const float* r = g.data + (int64_t{g.order[p]} * g.plane + p) * 4;
          for (int c = 0; c < 3; ++c) ASSERT_EQ(r[c], float(src.at(x, y, c)));
          ASSERT_EQ(r[3], model.varInit);
          const bool black = y == 1 && x < 3;
          ASSERT_EQ(mask.at(x, y), shadow && !black ? 77 : 255) << x << "," << y;
        }
      // The pad bytes of the mask rows were not touched.
      for (int y = 0; y < roi.height; ++y)
        for (int b = roi.width; b < mask.step(); ++b)
          ASSERT_EQ(mask.bytes()[2 + size_t(y) * mask.step() + b], rvpt::TestImage<Rvp8u>::kMarker);
      // The background is the frame itself.
      rvpt::TestImage<Rvp8u> bg(roi.width, roi.height, 3, 1, 3);
      ASSERT_EQ(rvpiFGMMBackground_8u_C3R(bg.ptr(), bg.step(), roi, st.base), rvpStsNoErr);
      for (int y = 0; y < roi.height; ++y)
        for (int x = 0; x < 3 * roi.width; ++x) ASSERT_EQ(byte_at(bg, x, y), byte_at(src, x, y));
    }
}

// The second call folds an identical frame in: the matched component's variance moves towards
// 0 at the rate r = alpha / w, alpha being the given rate or the default 1 / min(4, numFrames).
TEST(FGMMForeground, RateRuleAfterTheFirstCall) {
  const RvpiSize roi{9, 2};
  rvpt::TestImage<Rvp8u> src(roi.width, roi.height, 3);
  std::mt19937 rng(5);
  fill_bytes(src, rng);
  struct Case {
    int num_frames;
    double rate;
    double alpha;
  };
  for (const Case c : {Case{500, -1.0, 0.25}, Case{3, -1.0, 1.0 / 3}, Case{500, 0.1, 0.1},
                       Case{500, 0.0, 0.0}, Case{2, -0.5, 0.5}}) {
    RvpFGMModel model = default_model();
    model.numFrames = c.num_frames;
    State st(roi, 3, model);
    std::vector<Rvp8u> mask(size_t(roi.width) * roi.height);
    for (int f = 0; f < 2; ++f)
      ASSERT_EQ(rvpiFGMMForeground_8u_C3R(src.ptr(), src.step(), mask.data(), roi.width, roi,
                                          st.base, nullptr, c.rate),
                rvpStsNoErr);
    const float alpha = float(c.alpha);
    const float w = std::fma(1.0f - alpha, 1.0f, -alpha * model.complexityReduction) + alpha;
    const float var = std::clamp(std::fma(alpha / w, 0.0f - 15.0f, 15.0f), 4.0f, 75.0f);
    const GmmPlanes g = st.planes();
    for (int64_t p = 0; p < g.plane; ++p) {
      ASSERT_EQ(g.modes[p], 1);
      ASSERT_EQ(g.weights[p], 1.0f);
      ASSERT_EQ(g.data[(g.order[p] * g.plane + p) * 4 + 3], var) << c.num_frames << " " << c.rate;
      ASSERT_EQ(mask[p], 0);
    }
  }
}

// numFrames 1: alpha is 1 at every default-rate call, so each pixel holds exactly one
// component of weight 1, and a pixel that matched nothing holds the new frame exactly.
TEST(FGMMForeground, NumFramesOneKeepsOnlyTheNewestComponent) {
  const RvpiSize roi{19, 3};
  RvpFGMModel model = default_model();
  model.numFrames = 1;
  State st(roi, 5, model, 4);
  Scene scene(roi.width, roi.height, 11, 30, 2);
  rvpt::TestImage<Rvp8u> src(roi.width, roi.height, 3);
  std::vector<Rvp8u> mask(size_t(roi.width) * roi.height);
  std::vector<float> means(size_t(3) * roi.width * roi.height);
  int unmatched = 0;
  for (int t = 0; t < 12; ++t) {
    scene.frame(t, src);
    ASSERT_EQ(rvpiFGMMForeground_8u_C3R(src.ptr(), src.step(), mask.data(), roi.width, roi, st.base,
                                        nullptr, -1.0),
              rvpStsNoErr);
    const GmmPlanes g = st.planes();
    for (int64_t p = 0; p < g.plane; ++p) {
      ASSERT_EQ(g.modes[p], 1);
      ASSERT_EQ(g.weights[p], 1.0f);
      const float* r = g.data + (g.order[p] * g.plane + p) * 4;
      const int x = int(p % roi.width), y = int(p / roi.width);
      float d2 = 0;
      for (int c = 0; c < 3; ++c) d2 += std::pow(means[3 * p + c] - src.at(x, y, c), 2.0f);
      if (t > 0 && d2 > 1.01f * model.varThreshold * model.varMax) {
        // Neither a match nor background was possible: a fresh component at the pixel's
        // colour, of which the pixel is a shadow.
        ++unmatched;
        for (int c = 0; c < 3; ++c) ASSERT_EQ(r[c], float(src.at(x, y, c)));
        ASSERT_EQ(r[3], model.varInit);
        ASSERT_EQ(mask[p], r[0] + r[1] + r[2] == 0 ? 255 : model.shadowValue);
      }
      for (int c = 0; c < 3; ++c) means[3 * p + c] = r[c];
    }
  }
  EXPECT_GT(unmatched, 10);
}

TEST(FGMMForeground, PruningCanLeaveNoModes) {
  const RvpiSize roi{11, 2};
  rvpt::TestImage<Rvp8u> src(roi.width, roi.height, 3);
  std::mt19937 rng(9);
  fill_bytes(src, rng);
  RvpFGMModel model = default_model();
  model.numGauss = 3;
  State st(roi, 3, model);
  std::vector<Rvp8u> mask(size_t(roi.width) * roi.height, 99);
  auto call = [&](const RvpFGMModel* m, double rate) {
    ASSERT_EQ(rvpiFGMMForeground_8u_C3R(src.ptr(), src.step(), mask.data(), roi.width, roi, st.base,
                                        m, rate),
              rvpStsNoErr);
  };
  call(nullptr, -1.0);
  // alpha 0.5, prune 0.75: the decayed weight -0.25 matches, becomes 0.25 and is still below
  // prune: the count drops to 0, the matched component keeps its stored 0.25, nothing is
  // created (it matched) and the pixel is background.
  model.complexityReduction = 1.5f;
  call(&model, 0.5);
  GmmPlanes g = st.planes();
  for (int64_t p = 0; p < g.plane; ++p) {
    ASSERT_EQ(g.modes[p], 0);
    ASSERT_EQ(g.weights[p], 0.25f);
    ASSERT_EQ(mask[p], 0);
  }
  rvpt::TestImage<Rvp8u> bg(roi.width, roi.height, 3);
  ASSERT_EQ(rvpiFGMMBackground_8u_C3R(bg.ptr(), bg.step(), roi, st.base), rvpStsNoErr);
  for (int y = 0; y < roi.height; ++y)
    for (int x = 0; x < 3 * roi.width; ++x) ASSERT_EQ(byte_at(bg, x, y), 0);  // no components
  // The next frame finds no mode and creates one of weight 1; with shadows on, a pixel that
  // equals its only component is a shadow of it (a = 1, e² = 0).
  model.complexityReduction = 0.05f;
  call(&model, 0.5);
  g = st.planes();
  for (int64_t p = 0; p < g.plane; ++p) {
    ASSERT_EQ(g.modes[p], 1);
    const float* r = g.data + (g.order[p] * g.plane + p) * 4;
    ASSERT_EQ(r[3], model.varInit);
    ASSERT_EQ(g.weights[p], 1.0f);
    const bool black = r[0] == 0 && r[1] == 0 && r[2] == 0;
    ASSERT_EQ(mask[p], black ? 255 : model.shadowValue);
  }

  // Only the count shrinks, from the end, while the position advances: of four modes that all
  // fall below prune, positions 0 and 1 are zeroed and dropped and the loop stops at position
  // 2. Their counted sum is 0, so the normalisation divides 0 by 0 (NaN weights, as IEEE
  // division gives); the unmatched pixel then adds a component at position 2 with weight alpha.
  State multi(roi, 4, default_model());
  for (int t = 0; t < 4; ++t) {  // four different colours per pixel: four modes
    for (int y = 0; y < roi.height; ++y)
      for (int x = 0; x < 3 * roi.width; ++x) byte_at(src, x, y) = Rvp8u(40 * t + (x % 3) * 5);
    ASSERT_EQ(rvpiFGMMForeground_8u_C3R(src.ptr(), src.step(), mask.data(), roi.width, roi,
                                        multi.base, nullptr, 0.2),
              rvpStsNoErr);
  }
  g = multi.planes();
  for (int64_t p = 0; p < g.plane; ++p) ASSERT_EQ(g.modes[p], 4);
  RvpFGMModel harsh = default_model();
  harsh.numGauss = 4;
  harsh.complexityReduction = 3.0f;  // prune 0.6 at alpha 0.2: every decayed weight falls below
  for (int y = 0; y < roi.height; ++y)
    for (int x = 0; x < 3 * roi.width; ++x) byte_at(src, x, y) = 250;  // matches nothing
  ASSERT_EQ(rvpiFGMMForeground_8u_C3R(src.ptr(), src.step(), mask.data(), roi.width, roi,
                                      multi.base, &harsh, 0.2),
            rvpStsNoErr);
  g = multi.planes();
  for (int64_t p = 0; p < g.plane; ++p) {
    ASSERT_EQ(g.modes[p], 3);
    EXPECT_TRUE(std::isnan(g.weights[p]) && std::isnan(g.weights[g.plane + p]));
    ASSERT_EQ(g.weights[2 * g.plane + p], 0.2f);
    const float* r = g.data + (g.order[2 * g.plane + p] * g.plane + p) * 4;
    ASSERT_EQ(r[0], 250.0f);
    ASSERT_EQ(r[3], harsh.varInit);
  }
}

// A state whose first position is weak (possible after earlier prunes): the pruned position 0
// stays in place with weight 0 while the count shrinks from the end, and after the new
// component the reordering pass does not stop at position 2 (weight above alpha) but goes on
// to exchange positions 0 and 1. Run through the vector rows (8 pixels) and the reference
// (tail pixels) alike.
TEST(FGMMForeground, ReorderPassVisitsEveryPosition) {
  const RvpiSize roi{11, 1};
  RvpFGMModel model = default_model();
  model.numGauss = 3;
  model.shadowDetection = 0;
  model.complexityReduction = 0.5f;  // prune 0.1 at alpha 0.2
  State st(roi, 3, model);
  st.header().frame_count = 1;  // not the first call: the given rate applies
  GmmPlanes g = st.planes();
  const float w0[3] = {0.01f, 0.6f, 0.39f};
  for (int64_t p = 0; p < g.plane; ++p) {
    g.modes[p] = 3;
    for (int k = 0; k < 3; ++k) {
      g.weights[k * g.plane + p] = w0[k];
      g.order[k * g.plane + p] = 2 - k;  // any permutation of the slots
      float* r = g.data + ((2 - k) * g.plane + p) * 4;
      r[0] = r[1] = r[2] = 10.0f * k;
      r[3] = 15.0f;
    }
  }
  std::vector<Rvp8u> src(3 * 11, 200), mask(11);
  ASSERT_EQ(rvpiFGMMForeground_8u_C3R(src.data(), 33, mask.data(), 11, roi, st.base, &model, 0.2),
            rvpStsNoErr);
  g = st.planes();
  for (int64_t p = 0; p < g.plane; ++p) {
    ASSERT_EQ(g.modes[p], 3);
    EXPECT_EQ(g.weights[p], (0.8f * 0.6f - 0.1f) / (0.8f * 0.6f - 0.1f) * 0.8f);
    EXPECT_EQ(g.weights[g.plane + p], 0.0f);
    EXPECT_EQ(g.weights[2 * g.plane + p], 0.2f);
    EXPECT_EQ(g.order[p], 1);                // the former position 1
    EXPECT_EQ(g.order[g.plane + p], 2);      // the pruned former position 0
    EXPECT_EQ(g.order[2 * g.plane + p], 0);  // the new component took the free slot
    EXPECT_EQ(g.data[p * 4], 200.0f);
    EXPECT_EQ(mask[p], 255);
  }
}

TEST(FGMMForeground, OneComponentIsReplacedWithWeightOne) {
  const RvpiSize roi{10, 2};
  for (bool via_num_gauss : {false, true}) {
    RvpFGMModel model = default_model();
    State st(roi, via_num_gauss ? 5 : 1, model);
    model.numGauss = 1;
    rvpt::TestImage<Rvp8u> a(roi.width, roi.height, 3), b(roi.width, roi.height, 3);
    for (int y = 0; y < roi.height; ++y)
      for (int x = 0; x < 3 * roi.width; ++x) {
        byte_at(a, x, y) = Rvp8u(20 + x);
        byte_at(b, x, y) = Rvp8u(200 - x);
      }
    std::vector<Rvp8u> mask(size_t(roi.width) * roi.height);
    for (const auto* img : {&a, &a, &b}) {
      ASSERT_EQ(rvpiFGMMForeground_8u_C3R(img->ptr(), img->step(), mask.data(), roi.width, roi,
                                          st.base, &model, 0.1),
                rvpStsNoErr);
    }
    const GmmPlanes g = st.planes();
    for (int64_t p = 0; p < g.plane; ++p) {
      ASSERT_EQ(g.modes[p], 1);
      ASSERT_EQ(g.weights[p], 1.0f);
      const float* r = g.data + (g.order[p] * g.plane + p) * 4;
      for (int c = 0; c < 3; ++c) ASSERT_EQ(r[c], float(b.at(int(p % roi.width), 0, c)));
      ASSERT_EQ(r[3], model.varInit);
      // The only component is the pixel itself: a shadow of it (a = 1, e² = 0).
      ASSERT_EQ(mask[p], model.shadowValue);
    }
  }
}

// ---- argument checks: order, and nothing written on refusal -----------------------------------

TEST(FGMMForeground, RefusalsLeaveStateAndMaskUnchanged) {
  const RvpiSize roi{12, 3};
  State st(roi, 3, default_model(), 16);
  Scene scene(roi.width, roi.height, 2);
  rvpt::TestImage<Rvp8u> src(roi.width, roi.height, 3);
  std::vector<Rvp8u> mask(size_t(roi.width) * roi.height, 0x11);
  for (int t = 0; t < 5; ++t) {
    scene.frame(t, src);
    ASSERT_EQ(rvpiFGMMForeground_8u_C3R(src.ptr(), src.step(), mask.data(), roi.width, roi, st.base,
                                        nullptr, -1),
              rvpStsNoErr);
  }
  std::fill(mask.begin(), mask.end(), 0x11);
  const std::vector<uint8_t> state_before = st.bytes();
  const std::vector<Rvp8u> mask_before = mask;
  RvpFGMModel too_many = default_model();
  too_many.numGauss = 4;
  RvpFGMModel none = default_model();
  none.numGauss = 0;
  const int s = src.step();
  struct Case {
    const Rvp8u* src;
    int src_step;
    Rvp8u* dst;
    int dst_step;
    RvpiSize roi;
    Rvp8u* state;
    const RvpFGMModel* model;
    RvpStatus want;
  };
  Rvp8u* d = mask.data();
  const Case cases[] = {
      {nullptr, 0, d, 0, {0, 0}, st.base, &too_many, rvpStsNullPtrErr},
      {src.ptr(), s, nullptr, 12, roi, st.base, nullptr, rvpStsNullPtrErr},
      {src.ptr(), s, d, 12, roi, nullptr, nullptr, rvpStsNullPtrErr},
      {src.ptr(), 0, d, 12, {0, 3}, st.base, &too_many, rvpStsStepErr},  // step before size
      {src.ptr(), s, d, -12, roi, st.base, nullptr, rvpStsStepErr},
      {src.ptr(), s, d, 12, {0, 3}, st.base, &too_many, rvpStsSizeErr},  // size before numGauss
      {src.ptr(), s, d, 12, {12, -3}, st.base, nullptr, rvpStsSizeErr},
      {src.ptr(), s, d, 12, {11, 3}, st.base, nullptr, rvpStsSizeErr},  // not the Init size
      {src.ptr(), s, d, 12, {12, 4}, st.base, nullptr, rvpStsSizeErr},
      {src.ptr(), s, d, 12, roi, st.base, &too_many, rvpStsBadArgErr},
      {src.ptr(), s, d, 12, roi, st.base, &none, rvpStsBadArgErr},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(rvpiFGMMForeground_8u_C3R(c.src, c.src_step, c.dst, c.dst_step, c.roi, c.state,
                                        c.model, -1),
              c.want);
    EXPECT_EQ(st.bytes(), state_before);
    EXPECT_EQ(mask, mask_before);
  }
  // Background: its own three checks, in the same order.
  std::vector<Rvp8u> bg(size_t(3 * roi.width) * roi.height, 0x22);
  const std::vector<Rvp8u> bg_before = bg;
  EXPECT_EQ(rvpiFGMMBackground_8u_C3R(nullptr, 0, {0, 0}, st.base), rvpStsNullPtrErr);
  EXPECT_EQ(rvpiFGMMBackground_8u_C3R(bg.data(), 36, roi, nullptr), rvpStsNullPtrErr);
  EXPECT_EQ(rvpiFGMMBackground_8u_C3R(bg.data(), 0, {0, 3}, st.base), rvpStsStepErr);
  EXPECT_EQ(rvpiFGMMBackground_8u_C3R(bg.data(), 36, {0, 3}, st.base), rvpStsSizeErr);
  EXPECT_EQ(rvpiFGMMBackground_8u_C3R(bg.data(), 36, {12, 2}, st.base), rvpStsSizeErr);
  EXPECT_EQ(bg, bg_before);
  EXPECT_EQ(st.bytes(), state_before);
  // A header that no Init wrote is refused as a size mismatch, before any plane is used.
  for (int field : {0, 1}) {
    State bad(roi, 3, default_model());
    if (field == 0) bad.header().max_gauss = 300;
    if (field == 1) bad.header().model.numGauss = 4;
    auto raw = [&] { return std::vector<uint8_t>(bad.base, bad.base + bad.size); };
    const std::vector<uint8_t> bad_before = raw();
    EXPECT_EQ(rvpiFGMMForeground_8u_C3R(src.ptr(), s, d, 12, roi, bad.base, nullptr, -1),
              rvpStsSizeErr);
    EXPECT_EQ(rvpiFGMMBackground_8u_C3R(bg.data(), 36, roi, bad.base), rvpStsSizeErr);
    EXPECT_EQ(raw(), bad_before);
  }
  EXPECT_EQ(bg, bg_before);
  EXPECT_EQ(mask, mask_before);
  // Positive steps below the row width are accepted (a single row never uses them).
  const RvpiSize one_row{5, 1};
  State small(one_row, 2, default_model());
  EXPECT_EQ(
      rvpiFGMMForeground_8u_C3R(src.ptr(), 1, mask.data(), 1, one_row, small.base, nullptr, -1),
      rvpStsNoErr);
  EXPECT_EQ(rvpiFGMMBackground_8u_C3R(bg.data(), 1, one_row, small.base), rvpStsNoErr);
}

TEST(FGMMForeground, GivenParametersReplaceTheStoredOnes) {
  const RvpiSize roi{4, 1};
  State st(roi, 5, default_model());
  const Rvp8u src[12] = {10, 20, 30, 40, 50, 60, 70, 80, 90, 100, 110, 120};
  Rvp8u mask[4];
  RvpFGMModel m = default_model();
  m.numGauss = 2;
  m.reserved = 1234;
  m.shadowTau = 0.7f;
  ASSERT_EQ(rvpiFGMMForeground_8u_C3R(src, 12, mask, 4, roi, st.base, &m, -1), rvpStsNoErr);
  EXPECT_EQ(std::memcmp(&st.header().model, &m, sizeof m), 0);
  ASSERT_EQ(rvpiFGMMForeground_8u_C3R(src, 12, mask, 4, roi, st.base, nullptr, -1), rvpStsNoErr);
  EXPECT_EQ(std::memcmp(&st.header().model, &m, sizeof m), 0);
  EXPECT_EQ(st.header().frame_count, 2);
}

// ---- behaviour on a scene -------------------------------------------------------------------

// A static textured background with noise and moving boxes with shadows: after a warm-up the
// boxes are foreground, their shadows carry the shadow value, the rest is background, and the
// rendered background is the static scene.
TEST(FGMMForeground, SeparatesMovingObjectsShadowsAndBackground) {
  const int w = 96, h = 48;
  const RvpiSize roi{w, h};
  State st(roi, 5, default_model(), 12);
  Scene scene(w, h, 21, 3, 3);
  rvpt::TestImage<Rvp8u> src(w, h, 3), still(w, h, 3);
  std::vector<Rvp8u> mask(size_t(w) * h);
  Scene empty(w, h, 21, 0, 0);
  empty.frame(0, still);  // the same background, no noise, no boxes
  int bg_right = 0, bg_total = 0, fg_right = 0, fg_total = 0;
  for (int t = 0; t < 36; ++t) {  // before the first illumination step
    scene.frame(t, src);
    ASSERT_EQ(
        rvpiFGMMForeground_8u_C3R(src.ptr(), src.step(), mask.data(), w, roi, st.base, nullptr, -1),
        rvpStsNoErr);
    if (t < 20) continue;
    for (int y = 0; y < h; ++y)
      for (int x = 0; x < w; ++x) {
        bool changed = false;
        for (int c = 0; c < 3; ++c) changed |= std::abs(src.at(x, y, c) - still.at(x, y, c)) > 12;
        if (!changed) {
          ++bg_total;
          bg_right += mask[size_t(y) * w + x] == 0;
        } else {
          ++fg_total;
          fg_right += mask[size_t(y) * w + x] != 0;
        }
      }
  }
  EXPECT_GT(bg_right, 0.995 * bg_total);
  EXPECT_GT(fg_right, 0.9 * fg_total);
  int shadows = 0;
  for (Rvp8u v : mask) shadows += v == 127;
  EXPECT_GT(shadows, 0);
  rvpt::TestImage<Rvp8u> bg(w, h, 3);
  ASSERT_EQ(rvpiFGMMBackground_8u_C3R(bg.ptr(), bg.step(), roi, st.base), rvpStsNoErr);
  int close = 0;
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < 3 * w; ++x)
      close += std::abs(byte_at(bg, x, y) - byte_at(still, x, y)) <= 3;
  // Pixels that boxes crossed early, while the rate was still high, may keep a box colour
  // among their background components: allow a few percent.
  EXPECT_GT(close, 0.95 * 3 * w * h);
}

// ---- scalar reference against the AVX2 rows ---------------------------------------------------

// Empty when the two states are identical, else where they first differ.
std::string state_diff(State& a, State& b) {
  const std::vector<uint8_t> x = a.bytes(), y = b.bytes();
  if (x == y) return "";
  size_t i = 0;
  while (i < x.size() && x[i] == y[i]) ++i;
  const GmmPlanes g = a.planes();
  const uint8_t* at = reinterpret_cast<const uint8_t*>(rvp::bgfg::state_header(a.base)) + i;
  std::string where = "header";
  auto in = [&](const void* p, int64_t bytes) {
    auto* b0 = static_cast<const uint8_t*>(p);
    return at >= b0 && at < b0 + bytes;
  };
  const int64_t cells = g.plane * g.max_gauss;
  if (in(g.modes, g.plane)) where = "modes pixel " + std::to_string(at - g.modes);
  if (in(g.weights, 4 * cells))
    where =
        "weights cell " + std::to_string((at - reinterpret_cast<const uint8_t*>(g.weights)) / 4);
  if (in(g.order, 4 * cells))
    where = "order cell " + std::to_string((at - reinterpret_cast<const uint8_t*>(g.order)) / 4);
  if (in(g.data, 16 * cells))
    where = "data float " + std::to_string((at - reinterpret_cast<const uint8_t*>(g.data)) / 4);
  return "state differs at byte " + std::to_string(i) + " (" + where + ")";
}

struct Variant {
  int max_gauss;
  int shadow;
  float complexity;
  float bg_ratio;
  int noise;
};

TEST(FGMMKernels, VectorMatchesScalarOverLongSequences) {
  const Variant variants[] = {{5, 1, 0.05f, 0.9f, 4},
                              {3, 0, 0.05f, 0.9f, 8},
                              {1, 1, 0.05f, 0.9f, 2},
                              {4, 1, 0.4f, 0.6f, 12},
                              {6, 1, 0.0f, 0.95f, 20}};
  std::mt19937 rng(77);
  int vi = 0;
  for (const Variant& v : variants) {
    const int w = std::uniform_int_distribution<int>(1, 70)(rng);
    const int h = 1 + vi % 3;
    const RvpiSize roi{w, h};
    RvpFGMModel model = default_model();
    model.numGauss = v.max_gauss;
    model.shadowDetection = uint8_t(v.shadow);
    model.complexityReduction = v.complexity;
    model.bgRatio = v.bg_ratio;
    model.numFrames = 40;
    State vec(roi, v.max_gauss, model, vi * 7 % 32), ref(roi, v.max_gauss, model, vi * 3 % 32);
    rvpt::TestImage<Rvp8u> src(w, h, 3, vi % 4, vi % 3);
    rvpt::TestImage<Rvp8u> mv(w, h, 1, 1, 1), mr(w, h, 1, 1, 1);
    Scene scene(w, h, 100 + vi, v.noise, 1 + w / 12);
    for (int t = 0; t < 300; ++t) {
      scene.frame(t, src);
      // Vary the rate, the component count in use and the prior along the sequence.
      double rate = -1.0;
      if (t % 50 == 25) rate = 0.5;
      if (t % 70 == 60) rate = 0.0;
      RvpFGMModel now = model;
      const RvpFGMModel* given = nullptr;
      if (t % 90 == 45) {
        now.numGauss = std::max(1, v.max_gauss - 2);
        now.complexityReduction = 0.5f;
        given = &now;
      } else if (t % 90 == 60) {
        given = &model;
      }
      ASSERT_EQ(rvpiFGMMForeground_8u_C3R(src.ptr(), src.step(), mv.ptr(), mv.step(), roi, vec.base,
                                          given, rate),
                rvpStsNoErr);
      scalar_frame(src.ptr(), src.step(), mr.ptr(), mr.step(), roi, ref.base, given, rate);
      ASSERT_EQ(mv.bytes(), mr.bytes()) << "variant " << vi << " frame " << t << " width " << w;
      ASSERT_EQ(state_diff(vec, ref), "") << "variant " << vi << " frame " << t << " width " << w;
      if (t % 10 == 9) {
        // The rendered background: the export (vector rows) against the reference rows.
        rvpt::TestImage<Rvp8u> bv(w, h, 3, vi % 5, vi % 2), br(w, h, 3, vi % 5, vi % 2);
        ASSERT_EQ(rvpiFGMMBackground_8u_C3R(bv.ptr(), bv.step(), roi, vec.base), rvpStsNoErr);
        const GmmPlanes g = ref.planes();
        for (int y = 0; y < h; ++y)
          rvp::bgfg::ref::background_row(g, ref.header().model.bgRatio, int64_t{y} * w, br.row(y),
                                         w);
        ASSERT_EQ(bv.bytes(), br.bytes()) << "variant " << vi << " frame " << t;
      }
    }
    ++vi;
  }
}

// Every branch of the vector block, with random states: random frames against a model that
// has seen a few random frames, at widths that put pixels in the vector body and the tail.
TEST(FGMMKernels, VectorMatchesScalarOnRandomFrames) {
  std::mt19937 rng(5);
  for (int trial = 0; trial < 40; ++trial) {
    const int w = std::uniform_int_distribution<int>(8, 40)(rng);
    const RvpiSize roi{w, 2};
    RvpFGMModel model = default_model();
    model.numGauss = 1 + trial % 6;
    model.numFrames = 3 + trial;
    model.shadowTau = trial % 2 ? 0.5f : 0.0f;
    model.varThreshold = 16.0f + 8 * (trial % 3);
    State vec(roi, model.numGauss, model, trial % 32), ref(roi, model.numGauss, model, 0);
    rvpt::TestImage<Rvp8u> src(w, 2, 3), palette(w, 2, 3);
    fill_bytes(palette, rng);
    std::vector<Rvp8u> mv(size_t(w) * 2), mr(size_t(w) * 2);
    for (int t = 0; t < 30; ++t) {
      // Pixels drawn from a small palette with noise, so that matches, misses and shadows mix.
      for (int y = 0; y < 2; ++y)
        for (int x = 0; x < w; ++x) {
          const int pick = std::uniform_int_distribution<int>(0, 3)(rng);
          const float shade = pick == 3 ? 0.6f : 1.0f;
          for (int c = 0; c < 3; ++c) {
            const int base = palette.at((x + pick) % w, y, c);
            const int n = std::uniform_int_distribution<int>(-3, 3)(rng);
            src.set(x, y, Rvp8u(std::clamp(int(base * shade) + n, 0, 255)), c);
          }
        }
      ASSERT_EQ(rvpiFGMMForeground_8u_C3R(src.ptr(), src.step(), mv.data(), w, roi, vec.base,
                                          nullptr, -1),
                rvpStsNoErr);
      scalar_frame(src.ptr(), src.step(), mr.data(), w, roi, ref.base, nullptr, -1);
      ASSERT_EQ(mv, mr) << trial << " " << t;
      ASSERT_EQ(state_diff(vec, ref), "") << trial << " " << t;
    }
  }
}

// ---- guarded images -----------------------------------------------------------------------

TEST(FGMMGuarded, NoAccessOutsideTheRegions) {
  std::vector<int> widths;
  for (int w = 1; w <= 70; ++w) widths.push_back(w);
  widths.push_back(257);
  widths.push_back(1001);
  RvpFGMModel model = default_model();
  for (int w : widths)
    for (rvpt::Guard where : {rvpt::Guard::After, rvpt::Guard::Before}) {
      const int h = w > 100 ? 2 : 3;
      const RvpiSize roi{w, h};
      int size = 0;
      ASSERT_EQ(rvpiFGMMGetBufferSize_8u_C3R(roi, 3, &size), rvpStsNoErr);
      rvpt::GuardedBuffer state(size_t(size), where);
      ASSERT_EQ(rvpiFGMMInit_8u_C3R(roi, 3, &model, state.data()), rvpStsNoErr);
      rvpt::GuardedImage<Rvp8u> src(w, h, 3, 3 * w, where);
      rvpt::GuardedImage<Rvp8u> mask(w, h, 1, w, where);
      rvpt::GuardedImage<Rvp8u> bg(w, h, 3, 3 * w, where);
      std::mt19937 rng{static_cast<uint32_t>(w)};
      for (int t = 0; t < 4; ++t) {
        for (size_t i = 0; i < src.byte_count(); ++i)
          src.bytes()[i] = Rvp8u(t < 2 ? 100 + i % 7 : rng());
        ASSERT_EQ(rvpiFGMMForeground_8u_C3R(src.ptr(), src.step(), mask.ptr(), mask.step(), roi,
                                            state.data(), nullptr, -1),
                  rvpStsNoErr);
      }
      ASSERT_EQ(rvpiFGMMBackground_8u_C3R(bg.ptr(), bg.step(), roi, state.data()), rvpStsNoErr);
    }
}

}  // namespace
