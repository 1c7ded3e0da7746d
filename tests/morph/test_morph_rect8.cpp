// The 8-bit rectangle path: every AVX2 kernel against its scalar reference bit for bit (random
// lengths, start offsets, row offsets and steps, nothing written outside the range), and the
// whole path against a brute-force clamped rectangle for every anchor, inside and outside the
// rectangle, with the work area of each interface.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <random>
#include <vector>

#include "morph/morph_rect8.h"
#include "rvpcv.h"
#include "support/guarded.h"

namespace {

using rvp::morph::Extremum;
namespace m = rvp::morph;

int uni(std::mt19937& rng, int lo, int hi) {
  return std::uniform_int_distribution<int>(lo, hi)(rng);
}

std::vector<Rvp8u> noise(std::mt19937& rng, size_t n) {
  std::vector<Rvp8u> v(n);
  for (auto& x : v) x = Rvp8u(rng());
  return v;
}

// Rows of random bytes at random offsets inside one pool (so they may share cache lines).
struct Rows {
  std::vector<Rvp8u> pool;
  std::vector<const Rvp8u*> ptr;
  Rows(std::mt19937& rng, int count, int len) {
    const int step = len + uni(rng, 0, 40);
    pool = noise(rng, size_t(step) * count + 64);
    for (int r = 0; r < count; ++r) ptr.push_back(pool.data() + size_t(r) * step + uni(rng, 0, 63));
  }
};

constexpr Rvp8u kFill = 0xA5;

// Output buffers with guard bytes around [i0, i1); checks the scalar and vector results agree
// and that nothing outside the range changed.
void expect_same_in_range(const std::vector<Rvp8u>& a, const std::vector<Rvp8u>& b, int i0, int i1,
                          const char* what) {
  for (size_t i = 0; i < a.size(); ++i) {
    const bool inside = int(i) >= i0 && int(i) < i1;
    ASSERT_EQ(a[i], b[i]) << what << " at " << i;
    if (!inside) {
      ASSERT_EQ(b[i], kFill) << what << " wrote outside at " << i;
    }
  }
}

template <Extremum E>
void vertical_kernels(std::mt19937& rng) {
  for (int trial = 0; trial < 300; ++trial) {
    const int rh = uni(rng, 1, 17);
    const int n = uni(rng, 32, 300);
    const int i0 = uni(rng, 0, n - 32), i1 = uni(rng, i0 + 32, n);
    Rows src(rng, rh + 3, n);
    for (int g : {1, 2, 4}) {
      if (g == 4 && rh < 4) continue;
      std::vector<std::vector<Rvp8u>> want(g, std::vector<Rvp8u>(n, kFill)),
          got(g, std::vector<Rvp8u>(n, kFill));
      for (int k = 0; k < g; ++k)
        m::ref::rect_rows<E>(want[k].data(), nullptr, src.ptr.data() + k, rh, i0, i1);
      if (g == 4) {
        Rvp8u* d[4] = {got[0].data(), got[1].data(), got[2].data(), got[3].data()};
        m::avx2::rect_rows4<E>(d, src.ptr.data(), rh, i0, i1);
      } else {
        m::avx2::rect_rows<E>(got[0].data(), g == 2 ? got[1].data() : nullptr, src.ptr.data(), rh,
                              i0, i1);
      }
      for (int k = 0; k < g; ++k) expect_same_in_range(want[k], got[k], i0, i1, "rows");
      // The reference's own pair form equals two single rows.
      if (g == 2) {
        std::vector<Rvp8u> p0(n, kFill), p1(n, kFill);
        m::ref::rect_rows<E>(p0.data(), p1.data(), src.ptr.data(), rh, i0, i1);
        ASSERT_EQ(p0, want[0]);
        ASSERT_EQ(p1, want[1]);
      }
    }
  }
}

// Q (each pixel's vertical extremum with the next pixel's): every channel count, over rows
// whose length is not a multiple of the block, nothing written at or past n - c.
template <Extremum E>
void pair_kernels(std::mt19937& rng) {
  for (int trial = 0; trial < 300; ++trial) {
    const int rh = uni(rng, 1, 7);
    const int c = std::array<int, 3>{1, 3, 4}[trial % 3];
    const int n = uni(rng, 64, 300);
    Rows src(rng, rh, n);
    std::vector<Rvp8u> want(size_t(n) + 32, kFill), got(size_t(n) + 32, kFill);
    m::ref::rect_rows_pair<E>(want.data(), src.ptr.data(), rh, c, n);
    m::avx2::rect_rows_pair<E>(got.data(), src.ptr.data(), rh, c, n);
    expect_same_in_range(want, got, 0, n - c, "pairs");
  }
}

template <Extremum E>
void horizontal_kernels(std::mt19937& rng) {
  for (int trial = 0; trial < 400; ++trial) {
    const int n = uni(rng, 32, 400);
    const int margin = 70;
    std::vector<Rvp8u> v = noise(rng, size_t(n) + 2 * margin);
    m::Taps t{uni(rng, 1, 8), {}};
    for (int k = 0; k < t.count; ++k) t.off[k] = uni(rng, -margin, margin - 32);
    const int i0 = uni(rng, 0, n - 32), i1 = uni(rng, i0 + 32, n);
    // An odd start of the output exercises the first unaligned block.
    const int shift = uni(rng, 0, 31);
    std::vector<Rvp8u> want(size_t(n) + 32, kFill), got(size_t(n) + 32, kFill),
        next(size_t(n) + 32, 0);
    m::ref::rect_taps<E>(want.data() + shift, v.data() + margin, t, i0, i1);
    m::avx2::rect_taps<E>(got.data() + shift, v.data() + margin, t, i0, i1,
                          trial % 2 ? next.data() : nullptr, trial % 3 ? v.data() : nullptr);
    expect_same_in_range(want, got, i0 + shift, i1 + shift, "taps");
  }
}

// The clamped pixels of a row: the interior from the scalar taps, then the edges by the
// shuffled form (where the layout allows it) against the running extrema alone, over whole
// rows with guard bytes on both sides. Anchors inside and outside the window.
template <Extremum E>
void edge_kernels(std::mt19937& rng, int* shuffled) {
  for (int trial = 0; trial < 600; ++trial) {
    const int c = std::array<int, 3>{1, 3, 4}[trial % 3];
    const int rw = uni(rng, 1, 8), rh = 1;
    const int off = uni(rng, -rw - 2, 2);
    const int w = uni(rng, 1, 160);
    m::RectLayout L;
    if (!m::rect_layout(w, c, rw, rh, off, &L)) continue;
    const int n = L.n, margin = 32;
    const std::vector<Rvp8u> v = noise(rng, size_t(n));
    std::vector<Rvp8u> want(size_t(n) + 2 * margin, kFill), got = want;
    m::ref::rect_taps<E>(want.data() + margin, v.data(), L.fin, L.lo, L.hi);
    m::ref::rect_taps<E>(got.data() + margin, v.data(), L.fin, L.lo, L.hi);
    m::rect_edges<E>(want.data() + margin, v.data(), v.data(), 0, w, c, off, rw, L.left, L.right);
    m::rect_edges_row<E>(got.data() + margin, v.data(), L, w, c, off, rw);
    *shuffled += L.edge_vec[0] + L.edge_vec[1];
    ASSERT_EQ(want, got) << "c" << c << " rw " << rw << " off " << off << " w " << w;
  }
}

TEST(MorphRect8, VectorKernelsMatchScalar) {
  std::mt19937 rng(31);
  vertical_kernels<Extremum::Max>(rng);
  vertical_kernels<Extremum::Min>(rng);
  pair_kernels<Extremum::Max>(rng);
  pair_kernels<Extremum::Min>(rng);
  horizontal_kernels<Extremum::Max>(rng);
  horizontal_kernels<Extremum::Min>(rng);
  int shuffled = 0;
  edge_kernels<Extremum::Max>(rng, &shuffled);
  edge_kernels<Extremum::Min>(rng, &shuffled);
  EXPECT_GT(shuffled, 600);
}

// The reference of the whole rectangle: rows y - ay .. y - ay + rh - 1 of the rectangle's
// first row and columns x - ax .. x - ax + rw - 1 (ax, ay relative to the rectangle), both
// clamped to the image.
template <Extremum E>
std::vector<Rvp8u> brute(const Rvp8u* src, int step, int w, int h, int c, int rw, int rh, int ax,
                         int ay) {
  std::vector<Rvp8u> out(size_t(w) * h * c);
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x)
      for (int ch = 0; ch < c; ++ch) {
        Rvp8u e = src[size_t(std::clamp(y - ay, 0, h - 1)) * step +
                      size_t(std::clamp(x - ax, 0, w - 1)) * c + ch];
        for (int t = 0; t < rh; ++t)
          for (int j = 0; j < rw; ++j) {
            const int sy = std::clamp(y - ay + t, 0, h - 1), sx = std::clamp(x - ax + j, 0, w - 1);
            e = m::pick<E>(e, src[size_t(sy) * step + size_t(sx) * c + ch]);
          }
        out[(size_t(y) * w + x) * c + ch] = e;
      }
  return out;
}

// Random rectangles (narrow and wide, short and tall), anchors anywhere inside the mask, the
// rectangle anywhere in it, so the anchor often lies outside the rectangle; the work area of
// the state interfaces (mask rows + 2) and of the rectangle filter (mask rows); narrow rows
// and some wide ones.
TEST(MorphRect8, WholePathMatchesClampedRectangle) {
  std::mt19937 rng(32);
  int staged = 0;
  for (int trial = 0; trial < 360; ++trial) {
    const int c = std::array<int, 3>{1, 3, 4}[trial % 3];
    const bool big = trial % 4 == 0;
    const int rw = big ? uni(rng, 9, 70) : uni(rng, 1, 8);
    const int rh = trial % 5 == 0 ? uni(rng, 8, 17) : uni(rng, 1, 7);
    const int mw = rw + uni(rng, 0, 3), mh = rh + uni(rng, 0, 3);
    const int c0 = uni(rng, 0, mw - rw), r0 = uni(rng, 0, mh - rh);
    const int ax = uni(rng, 0, mw - 1), ay = uni(rng, 0, mh - 1);
    // Some rows wide enough that short rectangles go one output row a step.
    const bool wide = trial % 10 == 3;
    const int w = wide ? uni(rng, 1200, 2100) : uni(rng, 1, 160), h = uni(rng, 1, wide ? 4 : 13);
    const int step = w * c + uni(rng, 0, 40);
    std::vector<Rvp8u> src = noise(rng, size_t(step) * h + 1);
    const m::Plan p{w, h, c, mw, mh, ax, ay, m::kRect, {rw, rh, ax - c0, ay - r0}, nullptr};
    const m::Shape shape{w, mw, mh, c, 1};
    const bool filter = trial % 2 == 1;
    const int rows = filter ? mh : mh + 2;
    std::vector<uint8_t> work(size_t(m::work_need(shape)) + 64);
    uint8_t* wk = work.data() + ((-reinterpret_cast<uintptr_t>(work.data())) & 31);
    std::vector<Rvp8u> dst(size_t(step) * h + 1, kFill);
    for (Extremum e : {Extremum::Max, Extremum::Min}) {
      std::fill(dst.begin(), dst.end(), kFill);
      const bool ran =
          e == Extremum::Max
              ? m::run_rect_fused<Extremum::Max>(p, src.data(), step, dst.data(), step, wk, rows)
              : m::run_rect_fused<Extremum::Min>(p, src.data(), step, dst.data(), step, wk, rows);
      if (!ran) {
        // Declined: nothing written.
        ASSERT_TRUE(std::all_of(dst.begin(), dst.end(), [](Rvp8u v) { return v == kFill; }));
        continue;
      }
      ++staged;
      const auto want =
          e == Extremum::Max
              ? brute<Extremum::Max>(src.data(), step, w, h, c, rw, rh, ax - c0, ay - r0)
              : brute<Extremum::Min>(src.data(), step, w, h, c, rw, rh, ax - c0, ay - r0);
      for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w * c; ++x)
          ASSERT_EQ(dst[size_t(y) * step + x], want[size_t(y) * w * c + x])
              << "trial " << trial << " rect " << rw << "x" << rh << " c" << c << " w " << w
              << " at " << x << "," << y;
        for (int x = w * c; x < step; ++x) ASSERT_EQ(dst[size_t(y) * step + x], kFill);
      }
    }
  }
  // Most cases are wide enough for the staged path; the rest prove it declines cleanly.
  EXPECT_GT(staged, 300);
}

// Through the exports on guarded images: a rectangular mask with the anchor anywhere (older
// interface) and the rectangle filter, wide enough for the staged path, regions touching an
// inaccessible page on either side.
TEST(MorphRect8, GuardedExportsMatchClampedRectangle) {
  std::mt19937 rng(33);
  for (int trial = 0; trial < 60; ++trial) {
    const bool c3 = trial % 2 == 1;
    const int c = c3 ? 3 : 1;
    const int mw = uni(rng, 1, 16), mh = uni(rng, 1, 16);
    const RvpiPoint a{uni(rng, 0, mw - 1), uni(rng, 0, mh - 1)};
    const int w = uni(rng, 40, 200), h = uni(rng, 1, 9);
    const int step = w * c + uni(rng, 0, 5);
    const rvpt::Guard g = trial % 4 < 2 ? rvpt::Guard::After : rvpt::Guard::Before;
    rvpt::GuardedImage<Rvp8u> src(w, h, c, step, g), dst(w, h, c, step, g);
    for (int y = 0; y < h; ++y)
      for (int x = 0; x < w * c; ++x) src.row(y)[x] = Rvp8u(rng());
    const bool dilate = trial % 3 != 0;
    if (trial % 4 == 1 || trial % 4 == 2) {
      int bs = 0;
      ASSERT_EQ(c3 ? rvpiFilterMaxGetBufferSize_8u_C3R(w, {mw, mh}, &bs)
                   : rvpiFilterMaxGetBufferSize_8u_C1R(w, {mw, mh}, &bs),
                0);
      rvpt::GuardedBuffer buf(size_t(bs) + 1, rvpt::Guard::After);
      auto f =
          c3 ? (dilate ? rvpiFilterMaxBorderReplicate_8u_C3R : rvpiFilterMinBorderReplicate_8u_C3R)
             : (dilate ? rvpiFilterMaxBorderReplicate_8u_C1R : rvpiFilterMinBorderReplicate_8u_C1R);
      ASSERT_EQ(f(src.ptr(), step, dst.ptr(), step, {w, h}, {mw, mh}, a, buf.data() + 1), 0);
      const auto want = dilate ? brute<Extremum::Max>(src.ptr(), step, w, h, c, mw, mh, a.x, a.y)
                               : brute<Extremum::Min>(src.ptr(), step, w, h, c, mw, mh, a.x, a.y);
      for (int y = 0; y < h; ++y)
        for (int x = 0; x < w * c; ++x)
          ASSERT_EQ(dst.row(y)[x], want[size_t(y) * w * c + x]) << "filter trial " << trial;
      continue;
    }
    // A rectangle of ones inside a larger zero mask: the anchor may sit on a zero element.
    const int rw = uni(rng, 1, mw), rh = uni(rng, 1, mh);
    const int c0 = uni(rng, 0, mw - rw), r0 = uni(rng, 0, mh - rh);
    std::vector<Rvp8u> mask(size_t(mw) * mh, 0);
    for (int y = r0; y < r0 + rh; ++y)
      for (int x = c0; x < c0 + rw; ++x) mask[size_t(y) * mw + x] = 1;
    int size = 0;
    ASSERT_EQ(c3 ? rvpiMorphologyGetSize_8u_C3R(w, mask.data(), {mw, mh}, &size)
                 : rvpiMorphologyGetSize_8u_C1R(w, mask.data(), {mw, mh}, &size),
              0);
    rvpt::GuardedBuffer state(size_t(size) + 1, rvpt::Guard::After);
    auto* st = reinterpret_cast<RvpiMorphState*>(state.data() + 1);
    ASSERT_EQ(c3 ? rvpiMorphologyInit_8u_C3R(w, mask.data(), {mw, mh}, a, st)
                 : rvpiMorphologyInit_8u_C1R(w, mask.data(), {mw, mh}, a, st),
              0);
    auto f = c3 ? (dilate ? rvpiDilateBorderReplicate_8u_C3R : rvpiErodeBorderReplicate_8u_C3R)
                : (dilate ? rvpiDilateBorderReplicate_8u_C1R : rvpiErodeBorderReplicate_8u_C1R);
    ASSERT_EQ(f(src.ptr(), step, dst.ptr(), step, {w, h}, rvpBorderRepl, st), 0);
    const auto want =
        dilate ? brute<Extremum::Max>(src.ptr(), step, w, h, c, rw, rh, a.x - c0, a.y - r0)
               : brute<Extremum::Min>(src.ptr(), step, w, h, c, rw, rh, a.x - c0, a.y - r0);
    for (int y = 0; y < h; ++y)
      for (int x = 0; x < w * c; ++x)
        ASSERT_EQ(dst.row(y)[x], want[size_t(y) * w * c + x]) << "state trial " << trial;
  }
}

}  // namespace
