// The 8-bit Gaussian's strip driver and kernels against scalar references of the documented
// integer arithmetic: random widths, heights, strip widths (seams anywhere), offsets and steps.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <vector>

#include "filter/border.h"
#include "filter/gaussian.h"
#include "support/guarded.h"
#include "support/images.h"

namespace {

using rvp::filter::BorderedSource;

// Symmetric 8-bit taps of a random sigma, as rvpiFilterGaussianInit stores them. Sigmas below
// about 0.45 put most of the weight on the centre tap, which the byte row pass cannot split.
std::vector<int16_t> random_taps(int K, std::mt19937 &rng, float lo = 0.4f) {
  std::vector<float> w(K);
  rvp::filter::gauss_weights(K, std::uniform_real_distribution<float>(lo, 5.0f)(rng), w.data());
  std::vector<int16_t> t(K);
  for (int i = 0; i < K; ++i) t[i] = int16_t(rvp::filter::gauss_int_tap(w[i], 12));
  return t;
}

uint8_t reference(const BorderedSource<uint8_t> &b, const std::vector<int16_t> &t, int y, int x,
                  int c) {
  const int K = int(t.size()), r = K / 2;
  int64_t acc = 0;
  for (int ky = 0; ky < K; ++ky) {
    int64_t row = 0;
    for (int kx = 0; kx < K; ++kx) row += int64_t{t[kx]} * b.at(y + ky - r, x + kx - r, c);
    acc += t[ky] * ((row + 128) >> 8);
  }
  return uint8_t(std::clamp<int64_t>((acc + (1 << 15)) >> 16, 0, 255));
}

// Runs the strip driver the public call picks for these taps: the byte row pass when the taps
// split exactly, the widened one otherwise (or always, with `widened`).
template <int K, int CH>
void run_strips(const BorderedSource<uint8_t> &b, int border, uint8_t *dst, int step, RvpiSize roi,
                const int16_t *taps, int strip, bool widened) {
  std::vector<int16_t> wide(size_t(strip + K - 1) * CH);
  std::vector<uint8_t> bytes(size_t(strip + K - 1) * CH);
  std::vector<std::vector<int16_t>> rows(K, std::vector<int16_t>(size_t(strip) * CH));
  int16_t *ring[K];
  for (int k = 0; k < K; ++k) ring[k] = rows[k].data();
  const int q = rvp::filter::gauss_split_shift(taps, K);
  if (q > 0 && !widened)
    rvp::filter::gauss_u8_split_strips<K, CH>(b, rvp::filter::resolve_border(border), dst, step,
                                              roi, taps, q, bytes.data(), ring, strip);
  else
    rvp::filter::gauss_u8_sym_strips<K, CH>(b, dst, step, roi, taps, wide.data(), ring, strip);
}

template <int CH>
void run_any(int K, const BorderedSource<uint8_t> &b, int border, uint8_t *dst, int step,
             RvpiSize roi, const int16_t *taps, int strip, bool widened) {
  switch (K) {
    case 3:
      return run_strips<3, CH>(b, border, dst, step, roi, taps, strip, widened);
    case 5:
      return run_strips<5, CH>(b, border, dst, step, roi, taps, strip, widened);
    case 7:
      return run_strips<7, CH>(b, border, dst, step, roi, taps, strip, widened);
    case 11:
      return run_strips<11, CH>(b, border, dst, step, roi, taps, strip, widened);
    default:
      return run_strips<13, CH>(b, border, dst, step, roi, taps, strip, widened);
  }
}

// The vector row and column kernels against their scalar references, on random lengths, start
// offsets (unaligned rows) and row spacings.
template <int K>
void kernels_match(std::mt19937 &rng) {
  const std::vector<int16_t> t = random_taps(K, rng);
  for (int rep = 0; rep < 20; ++rep) {
    const int n = std::uniform_int_distribution<int>(1, 200)(rng);
    const int off = std::uniform_int_distribution<int>(0, 15)(rng);
    for (int stride : {1, 3}) {
      std::vector<int16_t> wide(size_t(off + n + (K - 1) * stride));
      for (auto &v : wide) v = int16_t(std::uniform_int_distribution<int>(0, 255)(rng));
      std::vector<int16_t> want(n), got(n, -1);
      rvp::filter::gauss_row_sym_scalar<K>(wide.data() + off, want.data(), n, t.data(), stride);
      rvp::filter::gauss_row_sym_avx2<K>(wide.data() + off, got.data(), n, t.data(), stride);
      ASSERT_EQ(got, want) << "row K " << K << " n " << n << " stride " << stride;
      if (stride == 1) {
        std::fill(got.begin(), got.end(), -1);
        // Exactly the bordered row: a read past its end would leave the vector (ASan sees it).
        std::vector<int16_t> exact(wide.begin() + off, wide.end());
        rvp::filter::gauss_row_c1_avx2<K>(exact.data(), got.data(), n, t.data());
        ASSERT_EQ(got, want) << "row c1 K " << K << " n " << n;
      }
    }
    // Column rows anywhere in one block with a random spacing; values span the row pass's range.
    const int spacing = n + std::uniform_int_distribution<int>(0, 40)(rng);
    std::vector<int16_t> block(size_t(off + spacing * K));
    for (auto &v : block) v = int16_t(std::uniform_int_distribution<int>(0, 4415)(rng));
    const int16_t *rows[K];
    for (int k = 0; k < K; ++k) rows[k] = block.data() + off + k * spacing;
    std::vector<uint8_t> want(n), got(n + 1, 0xA5);
    rvp::filter::gauss_col_sym_scalar<K>(rows, t.data(), n, want.data());
    rvp::filter::gauss_col_sym_avx2<K>(rows, t.data(), n, got.data());
    ASSERT_EQ(std::vector<uint8_t>(got.begin(), got.begin() + n), want) << "col K " << K;
    ASSERT_EQ(got[n], 0xA5) << "col K " << K << " wrote past n";
  }
}

TEST(GaussianStrips, VectorKernelsMatchScalar) {
  std::mt19937 rng(99);
  kernels_match<3>(rng);
  kernels_match<5>(rng);
  kernels_match<7>(rng);
  kernels_match<9>(rng);
  kernels_match<11>(rng);
  kernels_match<13>(rng);
}

// Symmetric taps of random values up to `hi`, not necessarily a Gaussian: they probe the byte
// row pass's exactness check from both sides of its limits.
std::vector<int16_t> random_sym_taps(int K, int hi, std::mt19937 &rng) {
  std::vector<int16_t> t(K);
  for (int k = 0; k <= K / 2; ++k)
    t[k] = t[K - 1 - k] = int16_t(std::uniform_int_distribution<int>(0, hi)(rng));
  return t;
}

// The byte row pass against the plain arithmetic on every tap set the check accepts, with random
// and with all-255 pixels (every sum at its largest: any overflow the check missed shows), and
// the column pass on rows in block order.
template <int K>
void split_kernels_match(std::mt19937 &rng) {
  int accepted = 0;
  for (int rep = 0; rep < 80; ++rep) {
    const std::vector<int16_t> t =
        rep % 2 ? random_taps(K, rng, 0.1f) : random_sym_taps(K, rep % 4 ? 4095 : 900, rng);
    const int q = rvp::filter::gauss_split_shift(t.data(), K);
    if (q == 0) continue;
    ASSERT_TRUE(rvp::filter::gauss_split_ok(t.data(), K, q));
    ++accepted;
    const int n = std::uniform_int_distribution<int>(1, 200)(rng);
    const int off = std::uniform_int_distribution<int>(0, 31)(rng);
    for (int stride : {1, 3})
      for (bool full : {false, true}) {
        // Exactly the bordered row after `off` bytes: a read past its end leaves the vector.
        std::vector<uint8_t> src(size_t(off + n + (K - 1) * stride), 255);
        if (!full)
          for (auto &v : src) v = uint8_t(rng());
        const std::vector<int16_t> wide(src.begin() + off, src.end());
        std::vector<int16_t> want(n), got(n + 1, -7);
        rvp::filter::gauss_row_sym_scalar<K>(wide.data(), want.data(), n, t.data(), stride);
        rvp::filter::gauss_row_split_avx2<K>(src.data() + off, got.data(), n, t.data(), q, stride);
        for (int i = 0; i < n; ++i)
          ASSERT_EQ(got[rvp::filter::gauss_block_pos(i, n)], want[i])
              << "K " << K << " q " << q << " n " << n << " stride " << stride << " at " << i;
        ASSERT_EQ(got[n], -7) << "wrote past n";
      }
    // Column pass: the same rows in natural order (scalar) and in block order (vector).
    const int spacing = n + std::uniform_int_distribution<int>(0, 40)(rng);
    std::vector<int16_t> natural(size_t(spacing) * K), blocked(size_t(off + spacing * K));
    for (auto &v : natural) v = int16_t(std::uniform_int_distribution<int>(0, 4415)(rng));
    const int16_t *nrows[K], *brows[K];
    for (int k = 0; k < K; ++k) {
      nrows[k] = natural.data() + k * spacing;
      brows[k] = blocked.data() + off + k * spacing;
      for (int i = 0; i < n; ++i)
        blocked[size_t(off + k * spacing + rvp::filter::gauss_block_pos(i, n))] = nrows[k][i];
    }
    std::vector<uint8_t> want(n), got(n + 1, 0xA5);
    rvp::filter::gauss_col_sym_scalar<K>(nrows, t.data(), n, want.data());
    rvp::filter::gauss_col_pairs_avx2<K>(brows, t.data(), n, got.data());
    ASSERT_EQ(std::vector<uint8_t>(got.begin(), got.begin() + n), want) << "col K " << K;
    ASSERT_EQ(got[n], 0xA5) << "col K " << K << " wrote past n";
  }
  EXPECT_GT(accepted, 20) << "K " << K;
}

TEST(GaussianStrips, ByteRowPassMatchesScalar) {
  std::mt19937 rng(5);
  split_kernels_match<3>(rng);
  split_kernels_match<5>(rng);
  split_kernels_match<7>(rng);
  split_kernels_match<9>(rng);
  split_kernels_match<11>(rng);
  split_kernels_match<13>(rng);
}

// Which taps take the byte row pass: the usual sigmas of the short kernels do; a centre tap of
// 4096 (or any tap of 127 * 2^q + 2^q and above) does not, nor does a set whose low parts could
// wrap a 16-bit sum.
TEST(GaussianStrips, ByteRowPassAcceptance) {
  for (int K : {3, 5, 7})
    for (float sigma = 0.5f; sigma <= 6.0f; sigma += 0.25f) {
      std::vector<float> w(K);
      rvp::filter::gauss_weights(K, sigma, w.data());
      std::vector<int16_t> t(K);
      for (int i = 0; i < K; ++i) t[i] = int16_t(rvp::filter::gauss_int_tap(w[i], 12));
      EXPECT_GT(rvp::filter::gauss_split_shift(t.data(), K), 0) << "K " << K << " s " << sigma;
    }
  const int16_t centre[5] = {0, 0, 4096, 0, 0};
  EXPECT_EQ(rvp::filter::gauss_split_shift(centre, 5), 0);
  const int16_t big[3] = {1, 4094, 1};  // a = 127 at q = 5 (255 at q = 4)
  EXPECT_EQ(rvp::filter::gauss_split_shift(big, 3), 5);
  const int16_t pair[5] = {2100, 2100, 0, 2100, 2100};  // 255 * (65 + 65) saturates at q = 5
  EXPECT_EQ(rvp::filter::gauss_split_shift(pair, 5), 0);
  std::vector<int16_t> low(13, 31);  // 255 * 31 * 13 + 128 wraps at q = 5; 15s fit at q = 4
  EXPECT_FALSE(rvp::filter::gauss_split_ok(low.data(), 13, 5));
  EXPECT_TRUE(rvp::filter::gauss_split_ok(low.data(), 13, 4));
}

TEST(GaussianStrips, MatchesScalarReferenceAcrossSeams) {
  std::mt19937 rng(20261122);
  for (int ch : {1, 3})
    for (int K : {3, 5, 7, 11, 13})
      for (int border : {0, 1, 6, 0x10 | 1, 0xA0 | 1, 0x40 | 0, 0x80 | 1})
        for (int rep = 0; rep < 4; ++rep) {
          const int w = std::uniform_int_distribution<int>(1, 150)(rng);
          const int h = std::uniform_int_distribution<int>(1, 9)(rng);
          const int strip_choices[] = {1,  7, 11,    32,
                                       33, w, w + 5, rvp::filter::gauss_u8_strip_pixels(K, ch, w)};
          const int strip =
              std::min(w, strip_choices[std::uniform_int_distribution<int>(0, 7)(rng)]);
          const int pad = 8;  // room for the in-memory borders
          rvpt::TestImage<uint8_t> img(w + 2 * pad, h + 2 * pad, ch, rep * 5,
                                       std::uniform_int_distribution<int>(0, 31)(rng));
          rvpt::fill_random(img, rng);
          const uint8_t value[3] = {9, 200, 77};
          const uint8_t *origin = img.row(pad) + pad * ch;
          const RvpiSize roi{w, h};
          const BorderedSource<uint8_t> b(origin, img.step(), roi, ch,
                                          rvp::filter::resolve_border(border), value, K / 2, K / 2);
          const std::vector<int16_t> t = random_taps(K, rng, 0.1f);
          ASSERT_TRUE(rvp::filter::symmetric(t.data(), K));
          const int dstep = w * ch + std::uniform_int_distribution<int>(0, 40)(rng);
          for (bool widened : {false, true}) {
            rvpt::GuardedImage<uint8_t> dst(w, h, ch, dstep, rvpt::Guard::After);
            if (ch == 1)
              run_any<1>(K, b, border, dst.ptr(), dst.step(), roi, t.data(), strip, widened);
            else
              run_any<3>(K, b, border, dst.ptr(), dst.step(), roi, t.data(), strip, widened);
            for (int y = 0; y < h; ++y)
              for (int x = 0; x < w; ++x)
                for (int c = 0; c < ch; ++c)
                  ASSERT_EQ(dst.row(y)[x * ch + c], reference(b, t, y, x, c))
                      << "K " << K << " ch " << ch << " border " << border << " w " << w
                      << " strip " << strip << " widened " << widened << " at " << x << "," << y;
          }
        }
}

// The public call on regions that fill their buffers exactly: source and destination touch a
// guard page just after the region or just before it, the work buffer has exactly the queried
// size. The byte row pass reads interior blocks straight from the source rows, so any block
// wrongly taken as interior would fault here.
TEST(GaussianStrips, GuardedWidths1To70) {
  std::mt19937 rng(70);
  for (int W = 1; W <= 70; ++W)
    for (int ch : {1, 3})
      for (int K : {3, 5, 7}) {
        const RvpiSize roi{W, 2 + W % 4};
        const int border = W % 2;  // constant or replicate: nothing outside the region is read
        const float sigma = std::uniform_real_distribution<float>(0.5f, 3.0f)(rng);
        int ss = 0, bs = 0;
        ASSERT_EQ(rvpiFilterGaussianGetBufferSize(roi, K, rvp8u, ch, &ss, &bs), 0);
        std::vector<Rvp8u> spec(static_cast<size_t>(ss));
        rvpt::GuardedBuffer buf(size_t(bs), rvpt::Guard::After);
        ASSERT_EQ(rvpiFilterGaussianInit(roi, K, sigma, border, rvp8u, ch, spec.data(), buf.data()),
                  0);
        std::vector<float> w(K);
        rvp::filter::gauss_weights(K, sigma, w.data());
        std::vector<int16_t> t(K);
        for (int i = 0; i < K; ++i) t[i] = int16_t(rvp::filter::gauss_int_tap(w[i], 12));
        for (auto where : {rvpt::Guard::After, rvpt::Guard::Before}) {
          rvpt::GuardedImage<uint8_t> src(W, roi.height, ch, W * ch, where);
          for (size_t i = 0; i < src.byte_count(); ++i) src.bytes()[i] = uint8_t(rng());
          rvpt::GuardedImage<uint8_t> dst(W, roi.height, ch, W * ch, where);
          const uint8_t value[3] = {40, 0, 255};
          const RvpStatus st =
              ch == 1
                  ? rvpiFilterGaussianBorder_8u_C1R(src.ptr(), src.step(), dst.ptr(), dst.step(),
                                                    roi, value[0], spec.data(), buf.data())
                  : rvpiFilterGaussianBorder_8u_C3R(src.ptr(), src.step(), dst.ptr(), dst.step(),
                                                    roi, value, spec.data(), buf.data());
          ASSERT_EQ(st, 0);
          const BorderedSource<uint8_t> b(src.ptr(), src.step(), roi, ch,
                                          rvp::filter::resolve_border(border), value, K / 2, K / 2);
          for (int y = 0; y < roi.height; ++y)
            for (int x = 0; x < W; ++x)
              for (int c = 0; c < ch; ++c)
                ASSERT_EQ(dst.row(y)[x * ch + c], reference(b, t, y, x, c))
                    << "W " << W << " ch " << ch << " K " << K << " at " << x << "," << y;
        }
      }
}

// The public path on a region wide enough for two full strips and a partial one.
TEST(GaussianStrips, WideRegionThroughPublicCall) {
  std::mt19937 rng(7);
  for (int ch : {1, 3})
    for (int K : {5, 11}) {
      const RvpiSize roi{2 * rvp::filter::gauss_u8_strip_pixels(K, ch, 1 << 20) + 37, 4};
      int ss = 0, bs = 0;
      ASSERT_EQ(rvpiFilterGaussianGetBufferSize(roi, K, rvp8u, ch, &ss, &bs), 0);
      rvpt::GuardedBuffer spec(size_t(ss), rvpt::Guard::After);
      rvpt::GuardedBuffer buf(size_t(bs), rvpt::Guard::After);
      const float sigma = 0.3f * ((K - 1) * 0.5f - 1) + 0.8f;
      ASSERT_EQ(rvpiFilterGaussianInit(roi, K, sigma, 1, rvp8u, ch, spec.data(), buf.data()), 0);
      rvpt::TestImage<uint8_t> src(roi.width, roi.height, ch, 3, 1);
      rvpt::fill_random(src, rng);
      rvpt::GuardedImage<uint8_t> dst(roi.width, roi.height, ch, roi.width * ch,
                                      rvpt::Guard::After);
      const uint8_t value[3] = {0, 0, 0};
      const RvpStatus st =
          ch == 1 ? rvpiFilterGaussianBorder_8u_C1R(src.ptr(), src.step(), dst.ptr(), dst.step(),
                                                    roi, 0, spec.data(), buf.data())
                  : rvpiFilterGaussianBorder_8u_C3R(src.ptr(), src.step(), dst.ptr(), dst.step(),
                                                    roi, value, spec.data(), buf.data());
      ASSERT_EQ(st, 0);
      const BorderedSource<uint8_t> b(src.ptr(), src.step(), roi, ch,
                                      rvp::filter::resolve_border(1), value, K / 2, K / 2);
      std::vector<float> w(K);
      rvp::filter::gauss_weights(K, sigma, w.data());
      std::vector<int16_t> t(K);
      for (int i = 0; i < K; ++i) t[i] = int16_t(rvp::filter::gauss_int_tap(w[i], 12));
      for (int y = 0; y < roi.height; ++y)
        for (int x = 0; x < roi.width; ++x)
          for (int c = 0; c < ch; ++c)
            ASSERT_EQ(dst.row(y)[x * ch + c], reference(b, t, y, x, c))
                << "K " << K << " ch " << ch << " at " << x << "," << y;
    }
}

}  // namespace
