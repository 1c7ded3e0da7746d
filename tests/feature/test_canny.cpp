// Canny: kernels scalar vs AVX2, whole detections against a plain reference, the tie-breaks and
// threshold equalities, the 32-bit stack path, the bordered form against the filter family's
// derivatives, guarded images and buffers, check order with nothing written on error.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

#include "feature/canny.h"
#include "feature/canny_kernels.h"
#include "filter/fixed_filters.h"
#include "rvpcv.h"
#include "support/canny_ref.h"
#include "support/guarded.h"
#include "support/images.h"

namespace {

using rvpt::Guard;
using rvpt::GuardedBuffer;
using rvpt::GuardedImage;
using rvpt::TestImage;

int rnd(std::mt19937& rng, int lo, int hi) {
  return std::uniform_int_distribution<int>(lo, hi)(rng);
}

// ---- kernels --------------------------------------------------------------------------------

template <class F>
void check_derivative_kernel(std::mt19937& rng) {
  namespace k = rvp::canny;
  constexpr int r = F::K / 2;
  for (int trial = 0; trial < 300; ++trial) {
    const int w = rnd(rng, 1, 90);
    const bool in_mem = trial % 2 == 0;
    const int margin = in_mem ? r : 0, off = rnd(rng, 0, 5);
    std::vector<std::vector<uint8_t>> rows(F::K, std::vector<uint8_t>(off + w + 2 * margin));
    k::DerivRows s{};
    for (int i = 0; i < F::K; ++i) {
      for (auto& v : rows[i]) v = uint8_t(rng());
      s.rows[i] = rows[i].data() + off + margin;
    }
    s.width = w;
    s.in_memory = in_mem;
    std::vector<int16_t> ax(w), ay(w), bx(w), by(w);
    k::ref::derivative_row<F>(s, ax.data(), ay.data());
    k::avx2::derivative_row<F>(s, bx.data(), by.data());
    ASSERT_EQ(ax, bx) << "w " << w << " in_mem " << in_mem;
    ASSERT_EQ(ay, by);
  }
}

TEST(CannyKernels, DerivativeAvxMatchesScalar) {
  std::mt19937 rng(1);
  check_derivative_kernel<rvp::canny::Sobel3>(rng);
  check_derivative_kernel<rvp::canny::Sobel5>(rng);
  check_derivative_kernel<rvp::canny::Scharr3>(rng);
}

// The bordered form's taps are the filter family's SobelVert / SobelHoriz (dx / dy) and
// ScharrVert / ScharrHoriz kernels.
template <class F>
void expect_family_taps(rvp::filter::Fixed fx, rvp::filter::Fixed fy, bool five) {
  const auto kx = rvp::filter::fixed_kernel(fx, five), ky = rvp::filter::fixed_kernel(fy, five);
  ASSERT_EQ(kx.K, F::K);
  for (int i = 0; i < F::K; ++i) {
    EXPECT_EQ(kx.h[0][i], F::hx[i]);
    EXPECT_EQ(kx.v[0][i], F::vx[i]);
    EXPECT_EQ(ky.h[0][i], F::hy[i]);
    EXPECT_EQ(ky.v[0][i], F::vy[i]);
  }
}

TEST(CannyKernels, DerivativeTapsAreTheFilterFamilys) {
  using rvp::filter::Fixed;
  expect_family_taps<rvp::canny::Sobel3>(Fixed::SobelVert, Fixed::SobelHoriz, false);
  expect_family_taps<rvp::canny::Sobel5>(Fixed::SobelVert, Fixed::SobelHoriz, true);
  expect_family_taps<rvp::canny::Scharr3>(Fixed::ScharrVert, Fixed::ScharrHoriz, false);
}

TEST(CannyKernels, MagnitudeAvxMatchesScalar) {
  namespace k = rvp::canny;
  std::mt19937 rng(2);
  for (int trial = 0; trial < 600; ++trial) {
    const int n = rnd(rng, 1, 70), off = rnd(rng, 0, 7);
    const float low = float(rnd(rng, 0, 40));
    std::vector<float> m1(n), m2(n);
    std::vector<uint8_t> d1(n), d2(n);
    if (trial % 3 == 0) {  // 32f with NaN, infinities, zeros of both signs
      std::vector<float> dx(off + n), dy(off + n);
      for (int i = 0; i < off + n; ++i) {
        dx[i] = rvpt::special_float(rng);
        dy[i] = rnd(rng, 0, 3) == 0 ? dx[i] * 0.5f : rvpt::special_float(rng);
      }
      k::ref::magnitude_row(dx.data() + off, dy.data() + off, n, low, k::Norm::L1, m1.data(),
                            d1.data());
      k::avx2::magnitude_row(dx.data() + off, dy.data() + off, n, low, k::Norm::L1, m2.data(),
                             d2.data());
    } else {
      // 16s: full range for L1, the bordered form's range for L2; small values for sector edges.
      const bool l2 = trial % 3 == 1;
      const int lim = l2 ? 16320 : (trial % 2 ? 32768 : 30);
      std::vector<int16_t> dx(off + n), dy(off + n);
      for (int i = 0; i < off + n; ++i) {
        dx[i] = int16_t(std::max(-32768, rnd(rng, -lim, lim)));
        dy[i] = int16_t(std::max(-32768, rnd(rng, -lim, lim)));
      }
      const k::Norm norm = l2 ? k::Norm::L2 : k::Norm::L1;
      k::ref::magnitude_row(dx.data() + off, dy.data() + off, n, low, norm, m1.data(), d1.data());
      k::avx2::magnitude_row(dx.data() + off, dy.data() + off, n, low, norm, m2.data(), d2.data());
    }
    ASSERT_EQ(d1, d2) << "trial " << trial;
    for (int i = 0; i < n; ++i) ASSERT_TRUE(rvpt::same_bits(m1[i], m2[i])) << "trial " << trial;
  }
}

TEST(CannyKernels, SuppressionOutputAndSeedAvxMatchScalar) {
  namespace k = rvp::canny;
  std::mt19937 rng(3);
  for (int trial = 0; trial < 800; ++trial) {
    const int n = rnd(rng, 1, 70), off = rnd(rng, 0, 7);
    // Few distinct magnitudes so that ties are common; some NaN.
    std::vector<std::vector<float>> rows(3, std::vector<float>(off + n + 2));
    const bool sparse = trial % 4 == 0;  // long zero runs, as after the low cut on a photograph
    for (auto& r : rows)
      for (auto& v : r)
        v = rnd(rng, 0, 40) == 0               ? std::numeric_limits<float>::quiet_NaN()
            : (sparse && rnd(rng, 0, 19) != 0) ? 0.0f
                                               : float(rnd(rng, 0, 4));
    std::vector<uint8_t> dir(off + n);
    for (auto& d : dir) d = uint8_t(rnd(rng, 0, 3));
    const float high = float(rnd(rng, 0, 4)) - 0.5f * rnd(rng, 0, 1);
    std::vector<uint8_t> a(n, 0x55), b(n, 0x66);  // every byte must be written
    k::ref::suppress_row(rows[0].data() + off + 1, rows[1].data() + off + 1,
                         rows[2].data() + off + 1, dir.data() + off, n, high, a.data());
    k::avx2::suppress_row(rows[0].data() + off + 1, rows[1].data() + off + 1,
                          rows[2].data() + off + 1, dir.data() + off, n, high, b.data());
    ASSERT_EQ(a, b) << "trial " << trial;

    std::vector<uint8_t> map(off + n + 40);
    const uint8_t codes[] = {0, 0, 0, 0x80, 0x81, 0xFF, 0x7F, 0xFE};
    for (auto& v : map) v = codes[rnd(rng, 0, 7)];
    const int len = n + 40;
    std::vector<uint8_t> o1(off + len), o2(off + len, 7), o3(off + len, 9);
    k::ref::output_row(map.data() + off, len, o1.data() + off);
    k::avx2::output_row(map.data() + off, len, o2.data() + off, false);
    k::avx2::output_row(map.data() + off, len, o3.data() + off, true);
    _mm_sfence();
    for (int i = 0; i < len; ++i) {
      ASSERT_EQ(o1[off + i], o2[off + i]);
      ASSERT_EQ(o1[off + i], o3[off + i]);
    }
    ASSERT_EQ(o2[0], off ? 7 : o2[0]);  // nothing before the row

    for (int from = 0; from <= len; from += rnd(rng, 1, 9))
      ASSERT_EQ(k::ref::find_strong(map.data() + off, from, len),
                k::avx2::find_strong(map.data() + off, from, len));
  }
}

// ---- whole detections against the reference ---------------------------------------------------

// Derivative images with structure: a few random ramps and blobs over small noise, so edges,
// plateaus and ties all occur.
template <class T>
void fill_derivatives(TestImage<T>& dx, TestImage<T>& dy, std::mt19937& rng, int amp) {
  const int w = dx.width(), h = dx.height();
  const float cx = float(rnd(rng, 0, w)), cy = float(rnd(rng, 0, h));
  const int mode = rnd(rng, 0, 2);
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x) {
      float gx = float(rnd(rng, -amp, amp)), gy = float(rnd(rng, -amp, amp));
      if (mode == 1) {  // a ring around (cx, cy): radial gradients in every direction
        const float rx = x - cx, ry = y - cy, rr = std::sqrt(rx * rx + ry * ry);
        if (std::fabs(rr - 6.0f) < 2.0f) {
          gx += 40.0f * rx / (rr + 1e-3f);
          gy += 40.0f * ry / (rr + 1e-3f);
        }
      } else if (mode == 2) {
        gx = std::round(gx / 4) * 4;  // coarse values: many equal magnitudes
        gy = std::round(gy / 4) * 4;
      }
      dx.set(x, y, T(gx));
      dy.set(x, y, T(gy));
    }
}

template <class T>
std::vector<float> as_floats(const TestImage<T>& img) {
  std::vector<float> v;
  for (int y = 0; y < img.height(); ++y)
    for (int x = 0; x < img.width(); ++x) v.push_back(float(img.at(x, y)));
  return v;
}

template <class T>
RvpStatus call_canny(const T* dx, int dxs, const T* dy, int dys, Rvp8u* d, int ds, RvpiSize roi,
                     float lo, float hi, Rvp8u* buf) {
  if constexpr (std::is_same_v<T, Rvp16s>)
    return rvpiCanny_16s8u_C1R(dx, dxs, dy, dys, d, ds, roi, lo, hi, buf);
  else
    return rvpiCanny_32f8u_C1R(dx, dxs, dy, dys, d, ds, roi, lo, hi, buf);
}

template <class T>
void check_against_reference(int seed) {
  std::mt19937 rng(seed);
  const int sides[] = {1, 2, 3, 5, 8, 17, 33, 64};
  for (int trial = 0; trial < 260; ++trial) {
    const int w = trial < 64 ? sides[trial % 8] : rnd(rng, 1, 75);
    const int h = trial < 64 ? sides[trial / 8] : rnd(rng, 1, 30);
    const int e = int(sizeof(T));
    TestImage<T> dx(w, h, 1, e * rnd(rng, 0, 3), e * rnd(rng, 0, 3));
    TestImage<T> dy(w, h, 1, e * rnd(rng, 0, 3), e * rnd(rng, 0, 3));
    fill_derivatives(dx, dy, rng, trial % 2 ? 12 : 60);
    if constexpr (std::is_same_v<T, float>)
      if (trial % 5 == 0) dx.set(rnd(rng, 0, w - 1), rnd(rng, 0, h - 1), -0.0f);
    TestImage<Rvp8u> dst(w, h, 1, rnd(rng, 0, 5), rnd(rng, 0, 5));
    int size = 0;
    ASSERT_EQ(rvpiCannyGetSize({w, h}, &size), rvpStsNoErr);
    std::vector<Rvp8u> buf(size + 7);
    float lo = float(rnd(rng, 0, 30)), hi = lo + float(rnd(rng, 0, 40));
    if (trial % 7 == 0) hi = lo;
    ASSERT_EQ(call_canny(dx.ptr(), dx.step(), dy.ptr(), dy.step(), dst.ptr(), dst.step(), {w, h},
                         lo, hi, buf.data() + trial % 7),
              rvpStsNoErr);
    const auto want = rvpt::canny_reference(as_floats(dx), as_floats(dy), w, h, lo, hi);
    for (int y = 0; y < h; ++y)
      for (int x = 0; x < w; ++x)
        ASSERT_EQ(dst.at(x, y), want[size_t(y) * w + x])
            << w << "x" << h << " at " << x << "," << y << " trial " << trial;
    // Row padding untouched.
    for (int y = 0; y < h; ++y)
      for (int x = w; x < dst.step(); ++x) ASSERT_EQ(dst.row(y)[x], TestImage<Rvp8u>::kMarker);
  }
}

TEST(Canny, Derivatives16sMatchReference) { check_against_reference<Rvp16s>(10); }
TEST(Canny, Derivatives32fMatchReference) { check_against_reference<Rvp32f>(11); }

TEST(Canny, SpecialFloatsMatchReference) {
  std::mt19937 rng(12);
  for (int trial = 0; trial < 40; ++trial) {
    const int w = rnd(rng, 1, 40), h = rnd(rng, 1, 12);
    TestImage<float> dx(w, h), dy(w, h);
    rvpt::fill_random_special(dx, rng);
    rvpt::fill_random_special(dy, rng);
    TestImage<Rvp8u> dst(w, h);
    int size = 0;
    rvpiCannyGetSize({w, h}, &size);
    std::vector<Rvp8u> buf(size);
    ASSERT_EQ(rvpiCanny_32f8u_C1R(dx.ptr(), dx.step(), dy.ptr(), dy.step(), dst.ptr(), dst.step(),
                                  {w, h}, 1000.0f, 30000.0f, buf.data()),
              rvpStsNoErr);
    const auto want = rvpt::canny_reference(as_floats(dx), as_floats(dy), w, h, 1000, 30000);
    for (int y = 0; y < h; ++y)
      for (int x = 0; x < w; ++x) ASSERT_EQ(dst.at(x, y), want[size_t(y) * w + x]);
  }
}

// ---- the documented rules on hand-made inputs -------------------------------------------------

// Runs the 16s detector on derivative images given as row-major vectors.
std::vector<uint8_t> detect16(const std::vector<int16_t>& dx, const std::vector<int16_t>& dy, int w,
                              int h, float lo, float hi) {
  int size = 0;
  rvpiCannyGetSize({w, h}, &size);
  std::vector<Rvp8u> buf(size), dst(size_t(w) * h, 1);
  EXPECT_EQ(rvpiCanny_16s8u_C1R(dx.data(), 2 * w, dy.data(), 2 * w, dst.data(), w, {w, h}, lo, hi,
                                buf.data()),
            rvpStsNoErr);
  return dst;
}

TEST(Canny, PlateauKeepsItsFirstPixel) {
  // A run of equal magnitudes across a horizontal gradient: only its leftmost pixel survives;
  // the same plateau down a vertical gradient keeps only its top pixel.
  const int w = 9, h = 5;
  std::vector<int16_t> dx(w * h, 0), dy(w * h, 0);
  for (int x = 2; x <= 5; ++x) dx[2 * w + x] = 50;
  auto e = detect16(dx, dy, w, h, 10, 20);
  for (int i = 0; i < w * h; ++i) EXPECT_EQ(e[i], i == 2 * w + 2 ? 255 : 0) << i;
  std::vector<int16_t> vx(w * h, 0), vy(w * h, 0);
  for (int y = 1; y <= 3; ++y) vy[y * w + 4] = -50;
  e = detect16(vx, vy, w, h, 10, 20);
  for (int i = 0; i < w * h; ++i) EXPECT_EQ(e[i], i == 1 * w + 4 ? 255 : 0) << i;
  // Along a diagonal gradient both neighbours must be strictly smaller: no pixel of a diagonal
  // plateau survives.
  std::vector<int16_t> gx(w * h, 0), gy(w * h, 0);
  for (int k = 1; k <= 3; ++k) gx[k * w + k] = gy[k * w + k] = 30;
  e = detect16(gx, gy, w, h, 10, 20);
  for (int i = 0; i < w * h; ++i) EXPECT_EQ(e[i], 0) << i;
}

TEST(Canny, DiagonalDirectionFollowsTheSigns) {
  // One pixel of magnitude 40 at the centre with a diagonal gradient, and one larger neighbour.
  // Same signs compare with below-right and above-left; opposite signs with below-left and
  // above-right. The larger neighbour suppresses the centre only when it lies on that diagonal.
  const int w = 5, h = 5, c = 2 * w + 2;
  const int corners[4] = {-w - 1, -w + 1, w - 1, w + 1};  // above-left, above-right, ...
  for (int sx : {1, -1})
    for (int sy : {1, -1})
      for (int corner : corners) {
        std::vector<int16_t> dx(w * h, 0), dy(w * h, 0);
        dx[c] = int16_t(20 * sx);
        dy[c] = int16_t(20 * sy);
        dx[c + corner] = 30;  // horizontal, magnitude 30 + 20 = 50 > 40
        dy[c + corner] = 20;
        const auto e = detect16(dx, dy, w, h, 1, 1);
        const bool same = sx == sy;
        const bool on_axis =
            same ? (corner == -w - 1 || corner == w + 1) : (corner == -w + 1 || corner == w - 1);
        EXPECT_EQ(e[c], on_axis ? 0 : 255) << sx << " " << sy << " " << corner;
      }
}

TEST(Canny, ThresholdEqualities) {
  // A lone pixel of magnitude 30 (diagonal gradient, zero neighbours): a magnitude equal to the
  // high threshold is no seed; just above it is.
  const int w = 5, h = 3, c = 1 * w + 2;
  std::vector<int16_t> dx(w * h, 0), dy(w * h, 0);
  dx[c] = 20;
  dy[c] = 10;
  EXPECT_EQ(detect16(dx, dy, w, h, 30, 30)[c], 0);
  EXPECT_EQ(detect16(dx, dy, w, h, 29, 29.99f)[c], 255);
  EXPECT_EQ(detect16(dx, dy, w, h, 10, 30)[c], 0);
  // A magnitude equal to the low threshold stays a candidate and joins a strong neighbour's
  // edge; just below the low threshold it is cut.
  dx[c + 1] = 60;
  dy[c + 1] = 30;  // magnitude 90, diagonal; its compared neighbours are 0
  auto e = detect16(dx, dy, w, h, 30, 50);
  EXPECT_EQ(e[c], 255);
  EXPECT_EQ(e[c + 1], 255);
  e = detect16(dx, dy, w, h, 30.01f, 50);
  EXPECT_EQ(e[c], 0);
  EXPECT_EQ(e[c + 1], 255);
  // lowThresh = highThresh: candidates above it are edges, equal ones are not seeds.
  e = detect16(dx, dy, w, h, 30, 30);
  EXPECT_EQ(e[c], 255);
  dx[c + 1] = 20;
  dy[c + 1] = 10;
  e = detect16(dx, dy, w, h, 30, 30);
  EXPECT_EQ(e[c] | e[c + 1], 0);
}

TEST(Canny, EdgesReachTheFrameButNeverCrossIt) {
  // The first and last columns can be edges (their outside neighbours count as 0).
  const int w = 6, h = 4;
  std::vector<int16_t> dx(w * h, 0), dy(w * h, 0);
  for (int y = 0; y < h; ++y) {
    dx[y * w + 0] = 40;
    dx[y * w + w - 1] = -40;
  }
  const auto e = detect16(dx, dy, w, h, 10, 20);
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x) EXPECT_EQ(e[y * w + x], (x == 0 || x == w - 1) ? 255 : 0);
}

TEST(Canny, HysteresisWithTinyStackGivesTheSameMap) {
  namespace k = rvp::canny;
  std::mt19937 rng(5);
  for (int trial = 0; trial < 60; ++trial) {
    const int w = rnd(rng, 1, 60), h = rnd(rng, 1, 40), ms = w + 2;
    std::vector<uint8_t> map(size_t(ms) * (h + 2), k::kNone);
    for (int y = 1; y <= h; ++y)
      for (int x = 1; x <= w; ++x) {
        const int v = rnd(rng, 0, 9);
        map[size_t(y) * ms + x] = v < 4 ? k::kNone : (v < 9 ? k::kWeak : k::kStrong);
      }
    auto big = map, small = map;
    std::vector<uint16_t> s1(2 * size_t(w) * h);
    // The small stack ends at a guard page: a push beyond its capacity faults.
    const int cap = rnd(rng, 1, 3);
    GuardedBuffer s2(sizeof(uint32_t) * 2 * cap, Guard::After);
    k::hysteresis(big.data(), w, h, s1.data(), int64_t(w) * h);
    k::hysteresis(small.data(), w, h, reinterpret_cast<uint32_t*>(s2.data()), cap);
    ASSERT_EQ(big, small) << "trial " << trial;
    for (uint8_t v : big) ASSERT_TRUE(v == k::kNone || v == k::kWeak || v == k::kEdge);
  }
}

TEST(Canny, WideRegionUsesTheWideStackWithTheSameResult) {
  // A strip 65533 wide (32-bit coordinates) and one 65532 wide (16-bit coordinates) with the same
  // derivatives in the first 65532 columns and zeros in the extra column: same edges.
  const int w16 = 65532, w32 = 65533, h = 3;
  ASSERT_TRUE(rvp::canny::wide_stack({w32, h}));
  ASSERT_FALSE(rvp::canny::wide_stack({w16, h}));
  std::mt19937 rng(6);
  std::vector<int16_t> dx(size_t(w32) * h, 0), dy(size_t(w32) * h, 0);
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w16 - 1; ++x) {
      const bool band = (x / 700) % 3 == 0;
      dx[size_t(y) * w32 + x] = int16_t(rnd(rng, -30, 30) + (band ? 80 : 0));
      dy[size_t(y) * w32 + x] = int16_t(rnd(rng, -30, 30));
    }
  std::vector<int16_t> dx16(size_t(w16) * h), dy16(size_t(w16) * h);
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w16; ++x) {
      dx16[size_t(y) * w16 + x] = dx[size_t(y) * w32 + x];
      dy16[size_t(y) * w16 + x] = dy[size_t(y) * w32 + x];
    }
  const auto wide = detect16(dx, dy, w32, h, 20, 60);
  const auto narrow = detect16(dx16, dy16, w16, h, 20, 60);
  size_t edges = 0;
  for (int y = 0; y < h; ++y) {
    for (int x = 0; x < w16; ++x) {
      ASSERT_EQ(wide[size_t(y) * w32 + x], narrow[size_t(y) * w16 + x]) << x << "," << y;
      edges += narrow[size_t(y) * w16 + x] != 0;
    }
    ASSERT_EQ(wide[size_t(y) * w32 + w16], 0);
  }
  EXPECT_GT(edges, 1000u);
  // A tall strip takes the wide path through its height; checked against the reference.
  const int tw = 2, th = 65540;
  std::vector<int16_t> tx(size_t(tw) * th), ty(size_t(tw) * th);
  for (size_t i = 0; i < tx.size(); ++i) {
    tx[i] = int16_t(rnd(rng, -40, 40));
    ty[i] = int16_t(rnd(rng, -40, 40) + ((i / 2 / 500) % 2 ? 70 : 0));
  }
  const auto tall = detect16(tx, ty, tw, th, 20, 70);
  const auto want = rvpt::canny_reference(std::vector<float>(tx.begin(), tx.end()),
                                          std::vector<float>(ty.begin(), ty.end()), tw, th, 20, 70);
  ASSERT_EQ(tall, want);
}

// ---- the bordered form --------------------------------------------------------------------

struct BorderCase {
  int filter, mask, border, norm;
};

// dx and dy of the bordered form from the filter family's exports: Sobel dx is the negated
// NegVert result, Sobel dy the dx of the transposed image; Scharr uses ScharrVert / ScharrHoriz.
void filter_derivatives(const std::vector<Rvp8u>& img, int W, int H, int margin, int w, int h,
                        const BorderCase& c, std::vector<float>* dx, std::vector<float>* dy) {
  const Rvp8u* roi = img.data() + size_t(margin) * W + margin;
  std::vector<Rvp16s> gx(size_t(w) * h), gy(size_t(w) * h);
  int size = 0;
  if (c.filter == rvpCannyScharr) {
    rvpiFilterScharrVertGetBufferSize_8u16s_C1R({w, h}, &size);
    std::vector<Rvp8u> buf(size);
    ASSERT_EQ(rvpiFilterScharrVertBorder_8u16s_C1R(roi, W, gx.data(), 2 * w, {w, h}, c.border, 0,
                                                   buf.data()),
              0);
    ASSERT_EQ(rvpiFilterScharrHorizBorder_8u16s_C1R(roi, W, gy.data(), 2 * w, {w, h}, c.border, 0,
                                                    buf.data()),
              0);
  } else {
    std::vector<Rvp8u> t(img.size());
    for (int y = 0; y < H; ++y)
      for (int x = 0; x < W; ++x) t[size_t(x) * H + y] = img[size_t(y) * W + x];
    int s2 = 0;
    rvpiFilterSobelNegVertGetBufferSize_8u16s_C1R({w, h}, c.mask, &size);
    rvpiFilterSobelNegVertGetBufferSize_8u16s_C1R({h, w}, c.mask, &s2);
    std::vector<Rvp8u> buf(std::max(size, s2));
    std::vector<Rvp16s> ty(size_t(w) * h);
    ASSERT_EQ(rvpiFilterSobelNegVertBorder_8u16s_C1R(roi, W, gx.data(), 2 * w, {w, h}, c.mask,
                                                     c.border, 0, buf.data()),
              0);
    ASSERT_EQ(
        rvpiFilterSobelNegVertBorder_8u16s_C1R(t.data() + size_t(margin) * H + margin, H, ty.data(),
                                               2 * h, {h, w}, c.mask, c.border, 0, buf.data()),
        0);
    for (auto& v : gx) v = Rvp16s(-v);
    for (int y = 0; y < h; ++y)
      for (int x = 0; x < w; ++x) gy[size_t(y) * w + x] = Rvp16s(-ty[size_t(x) * h + y]);
  }
  dx->assign(gx.begin(), gx.end());
  dy->assign(gy.begin(), gy.end());
}

TEST(CannyBorder, MatchesFilterDerivativesAndReference) {
  std::mt19937 rng(7);
  const BorderCase cases[] = {
      {rvpCannySobel, 33, 1, rvpCannyNormL1},  {rvpCannySobel, 33, 6, rvpCannyNormL2},
      {rvpCannySobel, 55, 1, rvpCannyNormL2},  {rvpCannySobel, 55, 6, rvpCannyNormL1},
      {rvpCannyScharr, 33, 1, rvpCannyNormL1}, {rvpCannyScharr, 33, 6, rvpCannyNormL2}};
  for (const BorderCase& c : cases)
    for (int trial = 0; trial < 40; ++trial) {
      const int w = trial < 4 ? 1 + trial % 2 : rnd(rng, 1, 70);
      const int h = trial < 4 ? 1 + trial / 2 : rnd(rng, 1, 25);
      const int margin = 2, W = w + 2 * margin, H = h + 2 * margin;
      // A smooth picture with a few sharp shapes.
      std::vector<Rvp8u> img(size_t(W) * H);
      const int cx = rnd(rng, 0, W), cy = rnd(rng, 0, H), rad = rnd(rng, 2, 12);
      for (int y = 0; y < H; ++y)
        for (int x = 0; x < W; ++x) {
          const bool in = (x - cx) * (x - cx) + (y - cy) * (y - cy) < rad * rad;
          img[size_t(y) * W + x] =
              Rvp8u(std::clamp(40 + 3 * x + (in ? 120 : 0) + rnd(rng, -6, 6), 0, 255));
        }
      std::vector<float> dx, dy;
      filter_derivatives(img, W, H, margin, w, h, c, &dx, &dy);
      const float lo = float(rnd(rng, 10, 80)), hi = lo + float(rnd(rng, 0, 200));
      int size = 0;
      ASSERT_EQ(rvpiCannyBorderGetSize({w, h}, c.mask, &size), rvpStsNoErr);
      std::vector<Rvp8u> buf(size), dst(size_t(w) * h, 3);
      ASSERT_EQ(
          rvpiCannyBorder_8u_C1R(img.data() + size_t(margin) * W + margin, W, dst.data(), w, {w, h},
                                 c.filter, c.mask, c.border, 0, lo, hi, c.norm, buf.data()),
          rvpStsNoErr);
      const auto want = rvpt::canny_reference(dx, dy, w, h, lo, hi, c.norm == rvpCannyNormL2);
      ASSERT_EQ(dst, want) << "filter " << c.filter << " mask " << c.mask << " border " << c.border
                           << " " << w << "x" << h;
    }
}

TEST(CannyBorder, WideStripTakesTheWideStack) {
  // 65540 x 4: 32-bit stack coordinates in the bordered form's smaller buffer.
  const int w = 65540, h = 4, margin = 2, W = w + 2 * margin, H = h + 2 * margin;
  ASSERT_TRUE(rvp::canny::wide_stack({w, h}));
  std::mt19937 rng(9);
  std::vector<Rvp8u> img(size_t(W) * H);
  for (int y = 0; y < H; ++y)
    for (int x = 0; x < W; ++x)
      img[size_t(y) * W + x] = Rvp8u(((x / 37 + y) % 2 ? 200 : 40) + rnd(rng, -20, 20));
  for (const BorderCase& c : {BorderCase{rvpCannySobel, 33, 1, rvpCannyNormL1},
                              BorderCase{rvpCannyScharr, 33, 6, rvpCannyNormL2}}) {
    std::vector<float> dx, dy;
    filter_derivatives(img, W, H, margin, w, h, c, &dx, &dy);
    int size = 0;
    ASSERT_EQ(rvpiCannyBorderGetSize({w, h}, c.mask, &size), rvpStsNoErr);
    std::vector<Rvp8u> buf(size), dst(size_t(w) * h, 3);
    ASSERT_EQ(
        rvpiCannyBorder_8u_C1R(img.data() + size_t(margin) * W + margin, W, dst.data(), w, {w, h},
                               c.filter, c.mask, c.border, 0, 100, 400, c.norm, buf.data()),
        rvpStsNoErr);
    const auto want = rvpt::canny_reference(dx, dy, w, h, 100, 400, c.norm == rvpCannyNormL2);
    ASSERT_EQ(dst, want);
    EXPECT_GT(std::count(dst.begin(), dst.end(), 255), 10000);
  }
}

// ---- guarded images and buffers -------------------------------------------------------------

TEST(Canny, GuardedImagesAndExactBuffers) {
  std::mt19937 rng(8);
  for (int w = 1; w <= 70; w += (w < 20 ? 1 : 7))
    for (Guard g : {Guard::After, Guard::Before}) {
      const int h = rnd(rng, 1, 9);
      GuardedImage<Rvp16s> dx(w, h, 1, 2 * w, g), dy(w, h, 1, 2 * w + 4, g);
      GuardedImage<Rvp32f> fx(w, h, 1, 4 * w, g), fy(w, h, 1, 4 * w, g);
      GuardedImage<Rvp8u> dst(w, h, 1, w, g);
      for (int y = 0; y < h; ++y)
        for (int x = 0; x < w; ++x) {
          dx.row(y)[x] = Rvp16s(rnd(rng, -90, 90));
          dy.row(y)[x] = Rvp16s(rnd(rng, -90, 90));
          fx.row(y)[x] = float(dx.row(y)[x]);
          fy.row(y)[x] = float(dy.row(y)[x]);
        }
      int size = 0;
      rvpiCannyGetSize({w, h}, &size);
      // Exact size ending at the guard page, from every alignment class of interest.
      for (int shift : {0, 1, 31}) {
        GuardedBuffer gb(size_t(size) + shift, Guard::After);
        Rvp8u* buf = gb.data() + shift;
        ASSERT_EQ(rvpiCanny_16s8u_C1R(dx.ptr(), dx.step(), dy.ptr(), dy.step(), dst.ptr(),
                                      dst.step(), {w, h}, 30, 80, buf),
                  rvpStsNoErr);
        std::vector<Rvp8u> a(dst.ptr(), dst.ptr() + size_t(w) * h);
        ASSERT_EQ(rvpiCanny_32f8u_C1R(fx.ptr(), fx.step(), fy.ptr(), fy.step(), dst.ptr(),
                                      dst.step(), {w, h}, 30, 80, buf),
                  rvpStsNoErr);
        ASSERT_EQ(a, std::vector<Rvp8u>(dst.ptr(), dst.ptr() + size_t(w) * h));
      }

      // The bordered form: replicate reads only the region; 6 reads the margin around it.
      for (int mask : {33, 55}) {
        const int r = mask == 55 ? 2 : 1;
        GuardedImage<Rvp8u> src(w, h, 1, w, g);
        GuardedImage<Rvp8u> big(w + 2 * r, h + 2 * r, 1, w + 2 * r, g);
        for (int y = 0; y < h; ++y)
          for (int x = 0; x < w; ++x) src.row(y)[x] = Rvp8u(rnd(rng, 0, 255));
        for (int y = 0; y < h + 2 * r; ++y)
          for (int x = 0; x < w + 2 * r; ++x) big.row(y)[x] = Rvp8u(rnd(rng, 0, 255));
        int bsize = 0;
        rvpiCannyBorderGetSize({w, h}, mask, &bsize);
        for (int shift : {0, 1, 17, 31}) {
          GuardedBuffer bb(size_t(bsize) + shift, Guard::After);
          Rvp8u* p = bb.data() + shift;
          ASSERT_EQ(rvpiCannyBorder_8u_C1R(src.ptr(), src.step(), dst.ptr(), dst.step(), {w, h},
                                           rvpCannySobel, mask, 1, 0, 40, 90, rvpCannyNormL2, p),
                    rvpStsNoErr);
          ASSERT_EQ(
              rvpiCannyBorder_8u_C1R(big.row(r) + r, big.step(), dst.ptr(), dst.step(), {w, h},
                                     rvpCannySobel, mask, 6, 0, 40, 90, rvpCannyNormL1, p),
              rvpStsNoErr);
        }
      }
    }
}

TEST(CannyBuffers, SizesFollowTheFormulasAndHoldTheWork) {
  int s = 0;
  ASSERT_EQ(rvpiCannyGetSize({1920, 1080}, &s), rvpStsNoErr);
  EXPECT_EQ(s, 5 * 1922 * 1082 + 160 + 16 * 1920);
  ASSERT_EQ(rvpiCannyGetSize({65533, 2}, &s), rvpStsNoErr);
  EXPECT_EQ(s, 9 * 65535 * 4 + 160 + 16 * 65533);
  ASSERT_EQ(rvpiCannyGetSize({3, 65533}, &s), rvpStsNoErr);
  EXPECT_EQ(s, 9 * 5 * 65535 + 160 + 48);
  ASSERT_EQ(rvpiCannyGetSize({65532, 4000}, &s), rvpStsNoErr);
  EXPECT_EQ(s, 5 * 65534 * 4002 + 160 + 16 * 65532);
  EXPECT_EQ(rvpiCannyGetSize({40000, 40000}, &s), rvpStsSizeErr);
  auto r32 = [](int64_t v) { return (v + 31) / 32 * 32; };
  for (int mask : {33, 55})
    for (RvpiSize roi : {RvpiSize{1920, 1080}, RvpiSize{1, 7}, RvpiSize{4, 3}, RvpiSize{100, 2}}) {
      const int m = mask == 55 ? 5 : 3;
      const int64_t a = roi.width - 1 + m, b = (roi.height - 1 + m) * a;
      const int64_t want = r32(16 * a) + r32(b) + r32(4 * b) + 64 +
                           (std::min(roi.width, roi.height) < m ? r32(b) : 0);
      ASSERT_EQ(rvpiCannyBorderGetSize(roi, mask, &s), rvpStsNoErr);
      EXPECT_EQ(s, want) << roi.width << "x" << roi.height << " mask " << mask;
    }
  // Phase one's sub-buffers fit the reported sizes at the worst alignment, and what follows the
  // map holds a full stack of one pair per pixel in the direct forms.
  for (int w = 1; w <= 80; ++w)
    for (int h = 1; h <= 80; h += (h < 12 ? 1 : 9)) {
      const RvpiSize roi{w, h};
      ASSERT_LE(rvp::canny::phase_one_bytes(roi, false), rvp::canny::buffer_bytes(roi));
      const int64_t map = 31 + r32(int64_t(w + 2) * (h + 2));
      ASSERT_GE(rvp::canny::buffer_bytes(roi) - map, 4 * int64_t(w) * h);
      for (int m : {3, 5})
        ASSERT_LE(rvp::canny::phase_one_bytes(roi, true), rvp::canny::border_buffer_bytes(roi, m))
            << w << "x" << h << " m " << m;
    }
}

// ---- checks -----------------------------------------------------------------------------------

TEST(Canny, ChecksInOrderAndNothingWrittenOnError) {
  const int w = 8, h = 4;
  std::vector<Rvp16s> d(w * h, 5);
  std::vector<Rvp32f> f(w * h, 5);
  std::vector<Rvp8u> dst(w * h, 0x5A), buf(4096, 0x3C), src(w * h, 9);
  const auto dst0 = dst, buf0 = buf;
  const RvpiSize roi{w, h};
  struct Case {
    RvpStatus want;
    RvpStatus got16, got32;
  };
  auto c16 = [&](const Rvp16s* a, int as, const Rvp16s* b, int bs, Rvp8u* o, int os, RvpiSize r,
                 float lo, float hi,
                 Rvp8u* bf) { return rvpiCanny_16s8u_C1R(a, as, b, bs, o, os, r, lo, hi, bf); };
  auto c32 = [&](const Rvp32f* a, int as, const Rvp32f* b, int bs, Rvp8u* o, int os, RvpiSize r,
                 float lo, float hi,
                 Rvp8u* bf) { return rvpiCanny_32f8u_C1R(a, as, b, bs, o, os, r, lo, hi, bf); };
  const float nan = std::numeric_limits<float>::quiet_NaN();
  const Case cases[] = {
      {rvpStsNullPtrErr, c16(nullptr, 0, d.data(), 2 * w, dst.data(), w, {0, 0}, -1, 0, buf.data()),
       c32(f.data(), 4 * w, f.data(), 4 * w, dst.data(), w, roi, 1, 2, nullptr)},
      {rvpStsSizeErr, c16(d.data(), 1, d.data(), 1, dst.data(), 1, {0, h}, -1, 0, buf.data()),
       c32(f.data(), 4 * w, f.data(), 4 * w, dst.data(), w, {w, -1}, 1, 2, buf.data())},
      {rvpStsStepErr,
       c16(d.data(), 2 * w, d.data(), 2 * w - 2, dst.data(), w, roi, -1, 0, buf.data()),
       c32(f.data(), 4 * w + 2, f.data(), 4 * w, dst.data(), w - 1, roi, -1, 0, buf.data())},
      {rvpStsStepErr, c16(d.data(), -2 * w, d.data(), 2 * w, dst.data(), w, roi, 1, 2, buf.data()),
       c32(f.data(), 4 * w, f.data(), 4 * w - 4, dst.data(), w, roi, 1, 2, buf.data())},
      {rvpStsNotEvenStepErr,
       c16(d.data(), 2 * w, d.data(), 2 * w + 1, dst.data(), w, roi, -1, 0, buf.data()),
       c32(f.data(), 4 * w + 2, f.data(), 4 * w, dst.data(), w, roi, -1, 0, buf.data())},
      {rvpStsBadArgErr,
       c16(d.data(), 2 * w, d.data(), 2 * w, dst.data(), w, roi, -1, 0, buf.data()),
       c32(f.data(), 4 * w, f.data(), 4 * w, dst.data(), w, roi, 3, 2.5f, buf.data())},
      {rvpStsBadArgErr,
       c16(d.data(), 2 * w, d.data(), 2 * w, dst.data(), w, roi, nan, 1, buf.data()),
       c32(f.data(), 4 * w, f.data(), 4 * w, dst.data(), w, roi, 1, nan, buf.data())},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(c.got16, c.want);
    EXPECT_EQ(c.got32, c.want);
  }
  auto cb = [&](const Rvp8u* s, int ss, Rvp8u* o, int os, RvpiSize r, int ft, int mask, int bt,
                float lo, float hi, int norm, Rvp8u* bf) {
    return rvpiCannyBorder_8u_C1R(s, ss, o, os, r, ft, mask, bt, 0, lo, hi, norm, bf);
  };
  const Rvp8u* s = src.data();
  Rvp8u* o = dst.data();
  Rvp8u* b = buf.data();
  EXPECT_EQ(cb(nullptr, w, o, w, roi, 0, 33, 1, 1, 2, 1, b), rvpStsNullPtrErr);
  EXPECT_EQ(cb(s, w, o, w, roi, 0, 33, 1, 1, 2, 1, nullptr), rvpStsNullPtrErr);
  EXPECT_EQ(cb(s, 0, o, 0, {0, h}, 9, 34, 2, -1, 2, 7, b), rvpStsSizeErr);
  EXPECT_EQ(cb(s, w, o, w - 1, roi, 9, 34, 2, -1, 2, 7, b), rvpStsStepErr);
  EXPECT_EQ(cb(s, w, o, w, roi, 9, 34, 2, -1, 2, 7, b), rvpStsMaskSizeErr);
  EXPECT_EQ(cb(s, w, o, w, roi, 9, 55, 2, -1, 2, 7, b), rvpStsBorderErr);
  for (int bt : {0, 2, 3, 4, 0x11, 0x16, 0xF0, 7})
    EXPECT_EQ(cb(s, w, o, w, roi, 0, 33, bt, 1, 2, 1, b), rvpStsBorderErr) << bt;
  EXPECT_EQ(cb(s, w, o, w, roi, 2, 55, 6, -1, 2, 7, b), rvpStsBadArgErr);
  EXPECT_EQ(cb(s, w, o, w, roi, rvpCannyScharr, 55, 6, -1, 2, 7, b), rvpStsMaskSizeErr);
  EXPECT_EQ(cb(s, w, o, w, roi, rvpCannyScharr, 33, 6, -1, 2, 0, b), rvpStsBadArgErr);
  EXPECT_EQ(cb(s, w, o, w, roi, rvpCannySobel, 55, 1, 3, 2, 2, b), rvpStsBadArgErr);
  EXPECT_EQ(dst, dst0);
  EXPECT_EQ(buf, buf0);

  // A region too large for a 32-bit buffer size fails with the size checks, before the steps;
  // 50000000 x 2 fits for the 3x3 mask but not for 5x5.
  EXPECT_EQ(c16(d.data(), 2, d.data(), 2, o, 1, {40000, 40000}, -1, 0, b), rvpStsSizeErr);
  EXPECT_EQ(cb(s, 1, o, 1, {40000, 40000}, 9, 34, 2, -1, 2, 7, b), rvpStsSizeErr);
  EXPECT_EQ(cb(s, 1, o, 1, {50000000, 2}, 0, 55, 1, 1, 2, 1, b), rvpStsSizeErr);
  EXPECT_EQ(cb(s, 1, o, 1, {50000000, 2}, 0, 33, 1, 1, 2, 1, b), rvpStsStepErr);

  int size = -7;
  EXPECT_EQ(rvpiCannyGetSize(roi, nullptr), rvpStsNullPtrErr);
  EXPECT_EQ(rvpiCannyGetSize({1, 0}, &size), rvpStsSizeErr);
  EXPECT_EQ(rvpiCannyBorderGetSize({0, 1}, 35, nullptr), rvpStsNullPtrErr);
  EXPECT_EQ(rvpiCannyBorderGetSize({0, 1}, 35, &size), rvpStsSizeErr);
  EXPECT_EQ(rvpiCannyBorderGetSize({1, 1}, 53, &size), rvpStsMaskSizeErr);
  EXPECT_EQ(size, -7);
}

}  // namespace
