// Morphology kernels: every AVX2 kernel against its scalar reference, bit for bit, on random
// lengths, offsets, row counts and the float values that break careless code.
#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "morph/morph_kernels.h"
#include "support/images.h"

namespace {

using rvp::morph::Extremum;

template <class T>
T rnd(std::mt19937& rng) {
  if constexpr (std::is_same_v<T, float>)
    return rvpt::special_float(rng);
  else
    return rvpt::random_value<T>(rng);
}

template <Extremum E, class T>
void check_reduce(std::mt19937& rng) {
  for (int trial = 0; trial < 300; ++trial) {
    const int n = std::uniform_int_distribution<int>(0, 150)(rng);
    const int count = std::uniform_int_distribution<int>(1, 17)(rng);
    std::vector<std::vector<T>> rows(count);
    std::vector<const T*> ptr(count);
    for (int r = 0; r < count; ++r) {
      const int off = std::uniform_int_distribution<int>(0, 9)(rng);
      rows[r].resize(n + off + 1);
      for (auto& v : rows[r]) v = rnd<T>(rng);
      ptr[r] = rows[r].data() + off;
    }
    std::vector<T> a(n + 2), b(n + 2);
    rvp::morph::ref::reduce_rows<E, T>(a.data() + 1, ptr.data(), count, n);
    rvp::morph::avx2::reduce_rows<E, T>(b.data() + 1, ptr.data(), count, n);
    for (int i = 0; i < n + 2; ++i) ASSERT_TRUE(rvpt::same_bits(a[i], b[i])) << i;

    // Two outputs of a vertical window sharing rows.
    if (count >= 3) {
      std::vector<T> p0(n + 1), p1(n + 1), q0(n + 1), q1(n + 1);
      rvp::morph::ref::reduce_pair<E, T>(p0.data(), p1.data(), ptr.data(), count - 1, n);
      rvp::morph::avx2::reduce_pair<E, T>(q0.data(), q1.data(), ptr.data(), count - 1, n);
      for (int i = 0; i < n; ++i)
        ASSERT_TRUE(rvpt::same_bits(p0[i], q0[i]) && rvpt::same_bits(p1[i], q1[i])) << i;
      // Without NaN the pair equals two separate windows.
      if constexpr (!std::is_same_v<T, float>) {
        std::vector<T> w0(n + 1), w1(n + 1);
        rvp::morph::ref::reduce_rows<E, T>(w0.data(), ptr.data(), count - 1, n);
        rvp::morph::ref::reduce_rows<E, T>(w1.data(), ptr.data() + 1, count - 1, n);
        for (int i = 0; i < n; ++i) ASSERT_TRUE(w0[i] == p0[i] && w1[i] == p1[i]) << i;
      }
    }

    // In place, the way the window passes use it.
    const int len = std::uniform_int_distribution<int>(1, 40)(rng);
    const int stride = std::uniform_int_distribution<int>(1, 4)(rng);
    std::vector<T> w(n + 1);
    for (auto& v : w) v = rnd<T>(rng);
    std::vector<T> x = w, y = w;
    rvp::morph::window_inplace<E, T, false>(x.data(), n, len, stride);
    rvp::morph::window_inplace<E, T, true>(y.data(), n, len, stride);
    for (int i = 0; i < n + 1; ++i) ASSERT_TRUE(rvpt::same_bits(x[i], y[i])) << i;
    // And the scalar window is the plain definition (on values without NaN).
    if constexpr (!std::is_same_v<T, float>) {
      for (int i = 0; i + (len - 1) * stride < n; ++i) {
        T e = w[i];
        for (int j = 1; j < len; ++j) e = rvp::morph::pick<E>(e, w[i + j * stride]);
        ASSERT_EQ(e, x[i]) << "window " << len << " at " << i;
      }
    }
  }
}

TEST(MorphKernels, ReduceAndWindowAvxMatchScalar) {
  std::mt19937 rng(7);
  check_reduce<Extremum::Max, Rvp8u>(rng);
  check_reduce<Extremum::Min, Rvp8u>(rng);
  check_reduce<Extremum::Max, Rvp16u>(rng);
  check_reduce<Extremum::Min, Rvp16u>(rng);
  check_reduce<Extremum::Max, Rvp16s>(rng);
  check_reduce<Extremum::Min, Rvp16s>(rng);
  check_reduce<Extremum::Max, Rvp32f>(rng);
  check_reduce<Extremum::Min, Rvp32f>(rng);
}

TEST(MorphKernels, BitPackingAvxMatchesScalar) {
  std::mt19937 rng(8);
  for (int trial = 0; trial < 400; ++trial) {
    const int n = std::uniform_int_distribution<int>(1, 200)(rng);
    const int off = std::uniform_int_distribution<int>(0, 5)(rng);
    std::vector<Rvp8u> bits(off + (n + 7) / 8 + 1);
    for (auto& v : bits) v = Rvp8u(rng());
    std::vector<Rvp8u> a(n), b(n);
    rvp::morph::ref::unpack_bits(bits.data() + off, a.data(), n);
    rvp::morph::avx2::unpack_bits(bits.data() + off, b.data(), n);
    ASSERT_EQ(a, b);
    for (int x = 0; x < n; ++x)  // most significant bit first
      ASSERT_EQ(a[x], (bits[off + x / 8] >> (7 - x % 8)) & 1);

    std::vector<Rvp8u> bytes(n);
    for (auto& v : bytes) v = std::bernoulli_distribution(0.5)(rng) ? Rvp8u(rng() | 1) : 0;
    std::vector<Rvp8u> p = bits, q = bits;
    rvp::morph::ref::pack_bits(bytes.data(), p.data() + off, n);
    rvp::morph::avx2::pack_bits(bytes.data(), q.data() + off, n);
    ASSERT_EQ(p, q);
    std::vector<Rvp8u> back(n);
    rvp::morph::ref::unpack_bits(p.data() + off, back.data(), n);
    for (int x = 0; x < n; ++x) ASSERT_EQ(back[x], bytes[x] != 0);
    // Bits past n in the last byte keep their value; bytes around are untouched.
    const int last = off + (n - 1) / 8;
    const Rvp8u keep = Rvp8u(0xFF >> (n - (n - 1) / 8 * 8));
    ASSERT_EQ(p[last] & keep, bits[last] & keep);
    for (size_t i = 0; i < bits.size(); ++i)
      if (int(i) < off || int(i) > last) {
        ASSERT_EQ(p[i], bits[i]);
      }
  }
}

}  // namespace

// The cache-bypassing output path (taken only for outputs larger than the largest cache, so
// it cannot be reached through the exports on a test machine) writes the same rows as the
// ordinary one, for every kind and both rectangle paths, and nothing beyond them.
#include "morph/morph_engine.h"

namespace {

TEST(MorphEngine, StreamedRowsMatchPlainRows) {
  using namespace rvp::morph;
  std::mt19937 rng(9);
  for (int trial = 0; trial < 200; ++trial) {
    const int mw = std::uniform_int_distribution<int>(1, 7)(rng);
    const int mh = std::uniform_int_distribution<int>(1, 7)(rng);
    std::vector<Rvp8u> mask(size_t(mw) * mh);
    const int style = trial % 3;
    for (int r = 0; r < mh; ++r)
      for (int k = 0; k < mw; ++k)
        mask[size_t(r) * mw + k] = style == 0   ? 1
                                   : style == 1 ? Rvp8u(k <= r % mw)
                                                : Rvp8u(rng() & 1);
    const int ax = std::uniform_int_distribution<int>(0, mw - 1)(rng);
    const int ay = std::uniform_int_distribution<int>(0, mh - 1)(rng);
    const int w = std::uniform_int_distribution<int>(1, 100)(rng), h = 6, c = 1 + trial % 4;
    const Analysis an = analyse_mask(mask.data(), mw, mh, ax, ay, rvp16u, c);
    if (an.kind == kEmpty) continue;
    const Plan p{
        w,          h, c, mw, mh, ax, ay, an.kind, {an.rect[0], an.rect[1], an.rect[2], an.rect[3]},
        mask.data()};
    const int n = w * c, step = (n + 3) * 2;
    std::vector<Rvp16u> src(size_t(step / 2) * h), a(src.size(), 0x5555), b(src.size(), 0x5555);
    for (auto& v : src) v = Rvp16u(rng());
    const Shape shape{w, mw, mh, c, 2};
    std::vector<uint8_t> work(size_t(work_need(shape)) + 64);
    uint8_t* wk = work.data() + ((-reinterpret_cast<uintptr_t>(work.data())) & 31);
    auto* spare3 = reinterpret_cast<Rvp16u*>(wk + table_bytes(shape) +
                                             (int64_t{mh} + 1) * bordered_row_bytes(shape));
    const PlainRows<Rvp16u> rows(src.data(), step, {w, h}, c, rvp::filter::resolve_border(1), ax,
                                 mw - 1 - ax);
    const PlainSink<Rvp16u> plain{a.data(), step};
    const StreamSink<Rvp16u> streamed{b.data(), step, n, spare3};
    if (trial % 2 == 0 && an.kind == kRect) {
      run_rect_direct<Extremum::Min, Rvp16u>(p, src.data(), step, plain, wk);
      run_rect_direct<Extremum::Min, Rvp16u>(p, src.data(), step, streamed, wk);
    } else {
      run_plan<Extremum::Min, Rvp16u>(p, rows, plain, wk);
      run_plan<Extremum::Min, Rvp16u>(p, rows, streamed, wk);
    }
    finish_streaming();
    ASSERT_EQ(a, b) << "trial " << trial << " kind " << an.kind;
    for (int y = 0; y < h; ++y)
      for (int x = n; x < step / 2; ++x) ASSERT_EQ(b[size_t(y) * (step / 2) + x], 0x5555);
  }
}

}  // namespace
