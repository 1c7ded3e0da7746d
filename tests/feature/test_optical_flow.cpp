// Optical flow: known sub-pixel shifts of a smooth texture are recovered on every type, flat
// windows and points outside the image are lost with their level, the vector window kernel
// equals the scalar one, check order with nothing written, guarded level images.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>
#include <random>
#include <vector>

#include "feature/optical_flow_kernels.h"
#include "rvpcv.h"
#include "support/guarded.h"

namespace {

// A smooth texture: a few sinusoids, values in [0, 1].
double texture(double x, double y) {
  return 0.5 + 0.2 * std::sin(0.21 * x + 0.1 * y) + 0.15 * std::cos(0.13 * y - 0.07 * x + 1.0) +
         0.1 * std::sin(0.31 * x * 0.7 + 0.27 * y + 2.0) + 0.05 * std::cos(0.45 * x - 0.5 * y);
}

template <class T>
T to_pixel(double v) {
  if constexpr (std::is_same_v<T, Rvp8u>) return static_cast<T>(std::lround(v * 255.0));
  if constexpr (std::is_same_v<T, Rvp16u>) return static_cast<T>(std::lround(v * 60000.0));
  if constexpr (std::is_same_v<T, Rvp32f>) return static_cast<T>(v * 255.0);
}

const float kGauss5[5] = {1, 4, 6, 4, 1};

// A pyramid record that owns its level images, built with the 5x5 levels (8u) or the layers.
template <class T>
struct Pyr {
  RvpiPyramid* rec = nullptr;
  std::vector<std::vector<T>> levels;
  Pyr(int w, int h, int nlev, const std::function<T(int, int)>& px) {
    EXPECT_EQ(rvpiPyramidInitAlloc({w, h}, nlev, 2.0f, &rec), 0);
    levels.resize(nlev + 1);
    for (int l = 0; l <= nlev; ++l) {
      const RvpiSize s = rec->pRoi[l];
      levels[l].assign(size_t(s.width) * s.height, T(0));
      rec->pImage[l] = reinterpret_cast<Rvp8u*>(levels[l].data());
      rec->pStep[l] = s.width * int(sizeof(T));
    }
    for (int y = 0; y < h; ++y)
      for (int x = 0; x < w; ++x) levels[0][size_t(y) * w + x] = px(x, y);
    for (int l = 1; l <= nlev; ++l) {
      const RvpiSize a = rec->pRoi[l - 1], b = rec->pRoi[l];
      if constexpr (std::is_same_v<T, Rvp8u>) {
        int size = 0;
        rvpiPyrDownGetBufSize_Gauss5x5(a.width, rvp8u, 1, &size);
        std::vector<Rvp8u> buf(size);
        EXPECT_EQ(rvpiPyrDown_Gauss5x5_8u_C1R(levels[l - 1].data(), rec->pStep[l - 1],
                                              levels[l].data(), rec->pStep[l], a, buf.data()),
                  0);
      } else {
        RvpiPyramidDownState* st = nullptr;
        if constexpr (std::is_same_v<T, Rvp16u>) {
          EXPECT_EQ(rvpiPyramidLayerDownInitAlloc_16u_C1R(a, 2.0f, kGauss5, 5, 1, &st), 0);
          EXPECT_EQ(rvpiPyramidLayerDown_16u_C1R(levels[l - 1].data(), rec->pStep[l - 1],
                                                 levels[l].data(), rec->pStep[l], a, b, st),
                    0);
          rvpiPyramidLayerDownFree_16u_C1R(st);
        } else {
          EXPECT_EQ(rvpiPyramidLayerDownInitAlloc_32f_C1R(a, 2.0f, kGauss5, 5, 1, &st), 0);
          EXPECT_EQ(rvpiPyramidLayerDown_32f_C1R(levels[l - 1].data(), rec->pStep[l - 1],
                                                 levels[l].data(), rec->pStep[l], a, b, st),
                    0);
          rvpiPyramidLayerDownFree_32f_C1R(st);
        }
      }
    }
  }
  ~Pyr() { rvpiPyramidFree(rec); }
};

template <class T>
struct Flow;
#define RVPT_FLOW(t, T)                                                   \
  template <>                                                             \
  struct Flow<T> {                                                        \
    static constexpr auto init = rvpiOpticalFlowPyrLKInitAlloc_##t##_C1R; \
    static constexpr auto run = rvpiOpticalFlowPyrLK_##t##_C1R;           \
    static constexpr auto release = rvpiOpticalFlowPyrLKFree_##t##_C1R;   \
  };
RVPT_FLOW(8u, Rvp8u)
RVPT_FLOW(16u, Rvp16u)
RVPT_FLOW(32f, Rvp32f)
#undef RVPT_FLOW

struct Result {
  std::vector<RvpiPoint32f> next;
  std::vector<Rvp8s> status;
  std::vector<Rvp32f> error;
  RvpStatus st;
};

template <class T>
Result run_flow(const Pyr<T>& a, const Pyr<T>& b, const std::vector<RvpiPoint32f>& prev, int win,
                int max_lev, int max_iter = 30, float threshold = 1e-6f) {
  RvpiOptFlowPyrLKState* s = nullptr;
  EXPECT_EQ(Flow<T>::init(a.rec->pRoi[0], win, &s), 0);
  Result r;
  const int n = int(prev.size());
  r.next.assign(n, {-7.0f, -7.0f});
  r.status.assign(n, 99);
  r.error.assign(n, -9.0f);
  r.st = Flow<T>::run(a.rec, b.rec, prev.data(), r.next.data(), r.status.data(), r.error.data(), n,
                      win, max_lev, max_iter, threshold, s);
  Flow<T>::release(s);
  return r;
}

std::vector<RvpiPoint32f> grid(int w, int h, int margin, int stepx) {
  std::vector<RvpiPoint32f> pts;
  for (int y = margin; y < h - margin; y += stepx)
    for (int x = margin; x < w - margin; x += stepx) pts.push_back({x + 0.25f, y + 0.5f});
  return pts;
}

template <class T>
void recovers_shifts() {
  const int w = 160, h = 120;
  Pyr<T> a(w, h, 2, [](int x, int y) { return to_pixel<T>(texture(x, y)); });
  const double shifts[][2] = {{0.3, -0.7}, {2.6, 1.2}, {-5.4, 3.3}, {0.0, 0.0}};
  for (const auto& d : shifts) {
    Pyr<T> b(w, h, 2, [&](int x, int y) { return to_pixel<T>(texture(x - d[0], y - d[1])); });
    const auto prev = grid(w, h, 20, 9);
    for (int max_lev : {2, 1}) {
      const Result r = run_flow<T>(a, b, prev, 15, max_lev);
      ASSERT_EQ(r.st, 0);
      for (size_t i = 0; i < prev.size(); ++i) {
        ASSERT_EQ(r.status[i], 0) << i;
        EXPECT_NEAR(r.next[i].x - prev[i].x, d[0], 0.05) << "point " << i << " lev " << max_lev;
        EXPECT_NEAR(r.next[i].y - prev[i].y, d[1], 0.05) << "point " << i << " lev " << max_lev;
        EXPECT_GE(r.error[i], 0.0f);
        // The residual of a warped smooth texture: under 2 grey levels of an 8-bit image.
        EXPECT_LT(r.error[i], (std::is_same_v<T, Rvp16u> ? 2.0f * 60000.0f / 255.0f : 2.0f));
      }
    }
  }
}

TEST(OpticalFlow, RecoversKnownShifts8u) { recovers_shifts<Rvp8u>(); }
TEST(OpticalFlow, RecoversKnownShifts16u) { recovers_shifts<Rvp16u>(); }
TEST(OpticalFlow, RecoversKnownShifts32f) { recovers_shifts<Rvp32f>(); }

TEST(OpticalFlow, IdenticalImagesStayPutWithZeroError) {
  const int w = 90, h = 70;
  Pyr<Rvp8u> a(w, h, 1, [](int x, int y) { return to_pixel<Rvp8u>(texture(x, y)); });
  const auto prev = grid(w, h, 10, 7);
  const Result r = run_flow<Rvp8u>(a, a, prev, 9, 1);
  ASSERT_EQ(r.st, 0);
  for (size_t i = 0; i < prev.size(); ++i) {
    EXPECT_EQ(r.status[i], 0);
    EXPECT_EQ(r.next[i].x, prev[i].x);
    EXPECT_EQ(r.next[i].y, prev[i].y);
    EXPECT_EQ(r.error[i], 0.0f);
  }
}

TEST(OpticalFlow, MaxLevelZeroTracksSmallShifts) {
  const int w = 80, h = 60;
  Pyr<Rvp32f> a(w, h, 2, [](int x, int y) { return to_pixel<Rvp32f>(texture(x, y)); });
  Pyr<Rvp32f> b(w, h, 2, [](int x, int y) { return to_pixel<Rvp32f>(texture(x - 0.4, y + 0.6)); });
  const auto prev = grid(w, h, 12, 8);
  const Result r = run_flow<Rvp32f>(a, b, prev, 11, 0);
  ASSERT_EQ(r.st, 0);
  for (size_t i = 0; i < prev.size(); ++i) {
    EXPECT_EQ(r.status[i], 0);
    EXPECT_NEAR(r.next[i].x - prev[i].x, 0.4, 0.05);
    EXPECT_NEAR(r.next[i].y - prev[i].y, -0.6, 0.05);
  }
}

// Flat windows lose their points at the level they were lost at; points outside too.
TEST(OpticalFlow, FlatWindowsAndOutsidePointsAreLost) {
  const int w = 64, h = 64;
  // Left half flat, right half textured.
  auto px = [](int x, int y) { return to_pixel<Rvp8u>(x < 32 ? 0.5 : texture(x, y)); };
  Pyr<Rvp8u> a(w, h, 2, px);
  const std::vector<RvpiPoint32f> prev = {
      {6.0f, 30.0f}, {-40.0f, 10.0f}, {10.0f, 300.0f}, {std::nanf(""), 3.0f}, {50.0f, 30.0f}};
  for (int max_lev : {0, 1, 2}) {
    const Result r = run_flow<Rvp8u>(a, a, prev, 7, max_lev);
    ASSERT_EQ(r.st, 0);
    for (int i = 0; i < 4; ++i) {
      EXPECT_EQ(r.status[i], max_lev) << i;
      EXPECT_EQ(r.error[i], -1.0f) << i;
    }
    // The flat point's estimate is its start, scaled back to level 0.
    EXPECT_FLOAT_EQ(r.next[0].x, 6.0f);
    EXPECT_FLOAT_EQ(r.next[0].y, 30.0f);
    EXPECT_EQ(r.status[4], 0);
    EXPECT_EQ(r.error[4], 0.0f);
  }
}

// Windows crossing the image edge read the nearest edge pixel; guarded levels prove no read
// leaves the images.
TEST(OpticalFlow, WindowsAtTheEdgesStayInside) {
  for (rvpt::Guard g : {rvpt::Guard::After, rvpt::Guard::Before})
    for (int w : {17, 40}) {
      const int h = 23;
      rvpt::GuardedImage<Rvp8u> i1(w, h, 1, w, g), i2(w, h, 1, w, g);
      for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
          i1.row(y)[x] = to_pixel<Rvp8u>(texture(x, y));
          i2.row(y)[x] = to_pixel<Rvp8u>(texture(x - 0.5, y + 0.25));
        }
      RvpiPyramid *p1, *p2;
      ASSERT_EQ(rvpiPyramidInitAlloc({w, h}, 0, 2.0f, &p1), 0);
      ASSERT_EQ(rvpiPyramidInitAlloc({w, h}, 0, 2.0f, &p2), 0);
      p1->pImage[0] = i1.ptr();
      p2->pImage[0] = i2.ptr();
      p1->pStep[0] = p2->pStep[0] = w;
      std::vector<RvpiPoint32f> prev;
      for (float y : {0.0f, 0.5f, 5.0f, h - 1.5f, h - 1.0f})
        for (float x : {0.0f, 0.7f, 8.0f, w - 1.2f, w - 1.0f}) prev.push_back({x, y});
      std::vector<RvpiPoint32f> next(prev.size());
      std::vector<Rvp8s> status(prev.size());
      std::vector<Rvp32f> err(prev.size());
      RvpiOptFlowPyrLKState* s;
      for (int win : {5, 8, 21}) {
        ASSERT_EQ(rvpiOpticalFlowPyrLKInitAlloc_8u_C1R({w, h}, win, &s), 0);
        ASSERT_EQ(rvpiOpticalFlowPyrLK_8u_C1R(p1, p2, prev.data(), next.data(), status.data(),
                                              err.data(), int(prev.size()), win, 0, 20, 1e-4f, s),
                  0);
        rvpiOpticalFlowPyrLKFree_8u_C1R(s);
      }
      rvpiPyramidFree(p1);
      rvpiPyramidFree(p2);
    }
}

TEST(OpticalFlow, ChecksInOrderAndNothingWritten) {
  const int w = 40, h = 30;
  Pyr<Rvp8u> a(w, h, 1, [](int x, int y) { return to_pixel<Rvp8u>(texture(x, y)); });
  Pyr<Rvp8u> b(w, h, 1, [](int x, int y) { return to_pixel<Rvp8u>(texture(x, y)); });
  RvpiOptFlowPyrLKState* s = nullptr;
  RvpiOptFlowPyrLKState* const sentinel = reinterpret_cast<RvpiOptFlowPyrLKState*>(uintptr_t{8});
  RvpiOptFlowPyrLKState* s0 = sentinel;
  EXPECT_EQ(rvpiOpticalFlowPyrLKInitAlloc_8u_C1R({w, h}, 9, nullptr), rvpStsNullPtrErr);
  EXPECT_EQ(rvpiOpticalFlowPyrLKInitAlloc_8u_C1R({0, h}, 9, &s0), rvpStsSizeErr);
  EXPECT_EQ(rvpiOpticalFlowPyrLKInitAlloc_8u_C1R({w, h}, 0, &s0), rvpStsSizeErr);
  EXPECT_EQ(s0, sentinel);
  ASSERT_EQ(rvpiOpticalFlowPyrLKInitAlloc_8u_C1R({w, h}, 9, &s), 0);
  RvpiPoint32f prev[2] = {{10, 10}, {20, 15}}, next[2] = {{-1, -1}, {-1, -1}};
  Rvp8s status[2] = {55, 55};
  Rvp32f err[2] = {-5, -5};
  auto call = [&](const RvpiPyramid* p1, const RvpiPyramid* p2, const RvpiPoint32f* pp,
                  RvpiPoint32f* pn, Rvp8s* ps, Rvp32f* pe, int n, int win, int lev, int iter,
                  float thr, RvpiOptFlowPyrLKState* st) {
    return rvpiOpticalFlowPyrLK_8u_C1R(p1, p2, pp, pn, ps, pe, n, win, lev, iter, thr, st);
  };
  const RvpiPyramid* A = a.rec;
  const RvpiPyramid* B = b.rec;
  EXPECT_EQ(call(nullptr, B, prev, next, status, err, 2, 9, 1, 10, 0.01f, s), rvpStsNullPtrErr);
  EXPECT_EQ(call(A, nullptr, prev, next, status, err, 2, 9, 1, 10, 0.01f, s), rvpStsNullPtrErr);
  EXPECT_EQ(call(A, B, nullptr, next, status, err, 2, 9, 1, 10, 0.01f, s), rvpStsNullPtrErr);
  EXPECT_EQ(call(A, B, prev, nullptr, status, err, 2, 9, 1, 10, 0.01f, s), rvpStsNullPtrErr);
  EXPECT_EQ(call(A, B, prev, next, nullptr, err, 2, 9, 1, 10, 0.01f, s), rvpStsNullPtrErr);
  EXPECT_EQ(call(A, B, prev, next, status, nullptr, 2, 9, 1, 10, 0.01f, s), rvpStsNullPtrErr);
  EXPECT_EQ(call(A, B, prev, next, status, err, 0, 9, -1, 10, 0.01f, nullptr), rvpStsNullPtrErr);
  EXPECT_EQ(call(A, B, prev, next, status, err, 0, 9, -1, 10, 0.01f, s), rvpStsSizeErr);
  EXPECT_EQ(call(A, B, prev, next, status, err, 2, 0, -1, 10, 0.01f, s), rvpStsSizeErr);
  EXPECT_EQ(call(A, B, prev, next, status, err, 2, 11, -1, 10, 0.01f, s), rvpStsSizeErr);
  EXPECT_EQ(call(A, B, prev, next, status, err, 2, 9, -1, 10, 0.01f, s), rvpStsBadArgErr);
  EXPECT_EQ(call(A, B, prev, next, status, err, 2, 9, 1, 0, 0.01f, s), rvpStsBadArgErr);
  EXPECT_EQ(call(A, B, prev, next, status, err, 2, 9, 1, 10, -0.01f, s), rvpStsBadArgErr);
  EXPECT_EQ(call(A, B, prev, next, status, err, 2, 9, 1, 10, std::nanf(""), s), rvpStsBadArgErr);
  EXPECT_EQ(call(A, B, prev, next, status, err, 2, 9, 2, 10, 0.01f, s), rvpStsBadArgErr);
  Rvp8u* keep = b.rec->pImage[1];
  b.rec->pImage[1] = nullptr;
  EXPECT_EQ(call(A, B, prev, next, status, err, 2, 9, 1, 10, 0.01f, s), rvpStsNullPtrErr);
  b.rec->pImage[1] = keep;
  b.rec->pRoi[1].width -= 1;
  EXPECT_EQ(call(A, B, prev, next, status, err, 2, 9, 1, 10, 0.01f, s), rvpStsSizeErr);
  b.rec->pRoi[1].width += 1;
  b.rec->pStep[1] -= 1;
  EXPECT_EQ(call(A, B, prev, next, status, err, 2, 9, 1, 10, 0.01f, s), rvpStsStepErr);
  b.rec->pStep[1] += 1;
  b.rec->pRate[1] = 0.0;
  EXPECT_EQ(call(A, B, prev, next, status, err, 2, 9, 1, 10, 0.01f, s), rvpStsBadArgErr);
  b.rec->pRate[1] = 2.0;
  RvpiOptFlowPyrLKState* small = nullptr;
  ASSERT_EQ(rvpiOpticalFlowPyrLKInitAlloc_8u_C1R({w - 1, h}, 9, &small), 0);
  EXPECT_EQ(call(A, B, prev, next, status, err, 2, 9, 1, 10, 0.01f, small), rvpStsSizeErr);
  rvpiOpticalFlowPyrLKFree_8u_C1R(small);
  // A state made for another element type.
  RvpiOptFlowPyrLKState* s32 = nullptr;
  ASSERT_EQ(rvpiOpticalFlowPyrLKInitAlloc_32f_C1R({w, h}, 9, &s32), 0);
  EXPECT_EQ(call(A, B, prev, next, status, err, 2, 9, 1, 10, 0.01f, s32), rvpStsContextMatchErr);
  rvpiOpticalFlowPyrLKFree_32f_C1R(s32);
  EXPECT_EQ(next[0].x, -1.0f);
  EXPECT_EQ(status[0], 55);
  EXPECT_EQ(status[1], 55);
  EXPECT_EQ(err[1], -5.0f);
  EXPECT_EQ(call(A, B, prev, next, status, err, 2, 9, 1, 10, 0.01f, s), 0);
  EXPECT_EQ(status[0], 0);
  rvpiOpticalFlowPyrLKFree_8u_C1R(s);
  EXPECT_EQ(rvpiOpticalFlowPyrLKFree_8u_C1R(nullptr), 0);
}

TEST(OpticalFlowKernel, VectorWindowSumEqualsScalar) {
  std::mt19937 rng(4);
  for (int iter = 0; iter < 400; ++iter) {
    const int win = 1 + int(rng() % 33), w = win + 1 + int(rng() % 20),
              h = win + 1 + int(rng() % 5);
    const int step = w + int(rng() % 9);
    std::vector<Rvp8u> img(size_t(step) * h);
    for (auto& v : img) v = Rvp8u(rng());
    const float ox = std::uniform_real_distribution<float>(0.0f, float(w - win - 1))(rng);
    const float oy = std::uniform_real_distribution<float>(0.0f, float(h - win - 1))(rng);
    rvp::flow::Bilinear b;
    b.ix = int(ox), b.iy = int(oy), b.ax = ox - b.ix, b.ay = oy - b.iy;
    b.w00 = int(rng() % 16385);
    b.w01 = int(rng() % (16385 - b.w00));
    b.w10 = int(rng() % (16385 - b.w00 - b.w01));
    b.w11 = 16384 - b.w00 - b.w01 - b.w10;
    if (iter % 5 == 0) b.w00 += 2, b.w11 -= 2;  // rounding can leave the last weight negative
    const int area = win * win;
    std::vector<int32_t> iw(area), gx(area), gy(area);
    for (int k = 0; k < area; ++k) {
      iw[k] = int(rng() % 32641);
      gx[k] = int(rng() % 65281) - 32640;
      gy[k] = int(rng() % 65281) - 32640;
    }
    double ax, ay, bx, by;
    rvp::flow::ref::sum_b(img.data(), step, b, iw.data(), gx.data(), gy.data(), win, &ax, &ay);
    rvp::flow::avx2::sum_b(img.data(), step, b, iw.data(), gx.data(), gy.data(), win, &bx, &by);
    ASSERT_EQ(ax, bx) << win;
    ASSERT_EQ(ay, by) << win;
  }
}

}  // namespace

namespace {

TEST(OpticalFlowKernel, VectorSamplingAndGradientsEqualScalar) {
  std::mt19937 rng(6);
  for (int iter = 0; iter < 300; ++iter) {
    const int n = 1 + int(rng() % 40);
    std::vector<Rvp8u> r0(n + 1), r1(n + 1);
    for (auto& v : r0) v = Rvp8u(rng());
    for (auto& v : r1) v = Rvp8u(rng());
    rvp::flow::Bilinear b{};
    b.w00 = int(rng() % 16385);
    b.w01 = int(rng() % (16385 - b.w00));
    b.w10 = int(rng() % (16385 - b.w00 - b.w01));
    b.w11 = 16384 - b.w00 - b.w01 - b.w10;
    if (iter % 5 == 0) b.w00 += 1, b.w11 -= 1;
    std::vector<int32_t> a(n), c(n);
    rvp::flow::ref::sample_row(r0.data(), r1.data(), b, a.data(), n);
    rvp::flow::avx2::sample_row(r0.data(), r1.data(), b, c.data(), n);
    ASSERT_EQ(a, c);

    const int win = n, pw = win + 2;
    std::vector<int32_t> patch(pw * pw);
    for (auto& v : patch) v = int(rng() % 32641);
    std::vector<int32_t> gx(win * win), gy(win * win), vals(win * win);
    std::vector<int32_t> hx(win * win), hy(win * win), hv(win * win);
    double s1[3], s2[3];
    rvp::flow::ref::gradients(patch.data(), win, gx.data(), gy.data(), vals.data(), s1);
    rvp::flow::avx2::gradients(patch.data(), win, hx.data(), hy.data(), hv.data(), s2);
    ASSERT_EQ(gx, hx);
    ASSERT_EQ(gy, hy);
    ASSERT_EQ(vals, hv);
    for (int k = 0; k < 3; ++k) ASSERT_EQ(s1[k], s2[k]);
  }
}

}  // namespace
