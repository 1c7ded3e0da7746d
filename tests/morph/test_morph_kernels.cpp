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
