// Binary morphology against a brute-force reference: every kind, every type and channel count,
// replicate and in-memory borders on a region inside a larger image, both state interfaces,
// the rectangle filters, 1u bit packing, checks and their order, nothing written on error,
// guarded images and work buffers of exactly the queried size at odd addresses.
#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <random>
#include <vector>

#include "filter/border.h"
#include "morph/morph_state.h"
#include "rvpcv.h"
#include "support/guarded.h"
#include "support/images.h"

namespace {

using rvp::morph::Kind;

// ---- masks of each kind -------------------------------------------------------------------

struct Mask {
  int w, h;
  std::vector<Rvp8u> m;
  RvpiPoint anchor;
};

Rvp8u on(std::mt19937& rng) { return Rvp8u(std::uniform_int_distribution<int>(1, 255)(rng)); }

// kind_hint: 0 general, 1 rectangle, 2 runs, 3 empty. The analyser decides; the test reads
// the kind back from the state.
Mask make_mask(std::mt19937& rng, int hint) {
  std::uniform_int_distribution<int> side(1, 9);
  Mask k{side(rng), side(rng), {}, {}};
  k.m.assign(size_t(k.w) * k.h, 0);
  auto at = [&](int x, int y) -> Rvp8u& { return k.m[size_t(y) * k.w + x]; };
  int row_lo = 0, row_hi = k.h - 1;
  if (hint == 1) {
    const int rw = std::uniform_int_distribution<int>(1, k.w)(rng);
    const int rh = std::uniform_int_distribution<int>(1, k.h)(rng);
    const int c0 = std::uniform_int_distribution<int>(0, k.w - rw)(rng);
    const int r0 = std::uniform_int_distribution<int>(0, k.h - rh)(rng);
    for (int y = r0; y < r0 + rh; ++y)
      for (int x = c0; x < c0 + rw; ++x) at(x, y) = on(rng);
  } else if (hint == 2) {
    // Up to three lengths, each with its own start; rows pick one or stay empty.
    int start[9] = {}, len[9] = {};
    for (int l = 1; l <= k.w; ++l) {
      len[l - 1] = l;
      start[l - 1] = std::uniform_int_distribution<int>(0, k.w - l)(rng);
    }
    row_lo = k.h;
    row_hi = -1;
    for (int y = 0; y < k.h; ++y) {
      if (std::uniform_int_distribution<int>(0, 4)(rng) == 0) continue;
      const int i = std::uniform_int_distribution<int>(0, k.w - 1)(rng);
      for (int x = start[i]; x < start[i] + len[i]; ++x) at(x, y) = on(rng);
      row_lo = std::min(row_lo, y);
      row_hi = std::max(row_hi, y);
    }
    if (row_hi < 0) row_lo = 0, row_hi = k.h - 1;
  } else if (hint == 0) {
    for (auto& v : k.m) v = std::bernoulli_distribution(0.45)(rng) ? on(rng) : 0;
  }
  k.anchor = {std::uniform_int_distribution<int>(0, k.w - 1)(rng),
              std::uniform_int_distribution<int>(row_lo, row_hi)(rng)};
  return k;
}

// ---- brute-force reference ----------------------------------------------------------------

template <class T>
T extremum(bool dilate, T a, T b) {
  return dilate ? (a > b ? a : b) : (a < b ? a : b);
}

// Extremum over the nonzero positions in mask order; an empty mask copies.
template <class T>
std::vector<T> reference(const T* src, int step, RvpiSize roi, int ch, int border, const Mask& k,
                         RvpiPoint anchor, bool dilate) {
  const rvp::filter::BorderedSource<T> bs(src, step, roi, ch, rvp::filter::resolve_border(border),
                                          nullptr, 0, 0);
  std::vector<T> out(size_t(roi.width) * roi.height * ch);
  for (int y = 0; y < roi.height; ++y)
    for (int x = 0; x < roi.width; ++x)
      for (int c = 0; c < ch; ++c) {
        bool any = false;
        T e{};
        for (int r = 0; r < k.h; ++r)
          for (int q = 0; q < k.w; ++q) {
            if (k.m[size_t(r) * k.w + q] == 0) continue;
            const T v = bs.at(y + r - anchor.y, x + q - anchor.x, c);
            e = any ? extremum(dilate, e, v) : v;
            any = true;
          }
        out[(size_t(y) * roi.width + x) * ch + c] = any ? e : bs.at(y, x, c);
      }
  return out;
}

// ---- calling the exports generically ------------------------------------------------------

template <class T, int C>
struct Api;

#define RVPT_API(T, C, sfx, VALUE)                                                            \
  template <>                                                                                 \
  struct Api<T, C> {                                                                          \
    static RvpStatus border_size(int w, RvpiSize m, int* s, int* b) {                         \
      return rvpiMorphologyBorderGetSize_##sfx(w, m, s, b);                                   \
    }                                                                                         \
    static RvpStatus border_init(int w, const Rvp8u* k, RvpiSize m, void* st, Rvp8u* b) {     \
      return rvpiMorphologyBorderInit_##sfx(w, k, m, static_cast<RvpiMorphState*>(st), b);    \
    }                                                                                         \
    static RvpStatus run(bool dilate, const T* s, int ss, T* d, int ds, RvpiSize roi, int bt, \
                         const T* value, const void* st, Rvp8u* buf) {                        \
      auto state = static_cast<const RvpiMorphState*>(st);                                    \
      return dilate ? rvpiDilateBorder_##sfx(s, ss, d, ds, roi, bt, VALUE, state, buf)        \
                    : rvpiErodeBorder_##sfx(s, ss, d, ds, roi, bt, VALUE, state, buf);        \
    }                                                                                         \
  };
RVPT_API(Rvp8u, 1, 8u_C1R, *value)
RVPT_API(Rvp8u, 3, 8u_C3R, value)
RVPT_API(Rvp8u, 4, 8u_C4R, value)
RVPT_API(Rvp16u, 1, 16u_C1R, *value)
RVPT_API(Rvp16s, 1, 16s_C1R, *value)
RVPT_API(Rvp32f, 1, 32f_C1R, *value)
RVPT_API(Rvp32f, 3, 32f_C3R, value)
RVPT_API(Rvp32f, 4, 32f_C4R, value)

template <class T, int C>
struct Older;
#define RVPT_OLDER(T, C, sfx)                                                                 \
  template <>                                                                                 \
  struct Older<T, C> {                                                                        \
    static RvpStatus size(int w, const Rvp8u* k, RvpiSize m, int* s) {                        \
      return rvpiMorphologyGetSize_##sfx(w, k, m, s);                                         \
    }                                                                                         \
    static RvpStatus init(int w, const Rvp8u* k, RvpiSize m, RvpiPoint a, void* st) {         \
      return rvpiMorphologyInit_##sfx(w, k, m, a, static_cast<RvpiMorphState*>(st));          \
    }                                                                                         \
    static RvpStatus run(bool dilate, const T* s, int ss, T* d, int ds, RvpiSize roi, int bt, \
                         void* st) {                                                          \
      auto state = static_cast<RvpiMorphState*>(st);                                          \
      return dilate ? rvpiDilateBorderReplicate_##sfx(s, ss, d, ds, roi, bt, state)           \
                    : rvpiErodeBorderReplicate_##sfx(s, ss, d, ds, roi, bt, state);           \
    }                                                                                         \
    static RvpStatus filter_size(int w, RvpiSize m, int* b) {                                 \
      return rvpiFilterMaxGetBufferSize_##sfx(w, m, b);                                       \
    }                                                                                         \
    static RvpStatus filter(bool dilate, const T* s, int ss, T* d, int ds, RvpiSize roi,      \
                            RvpiSize m, RvpiPoint a, Rvp8u* b) {                              \
      return dilate ? rvpiFilterMaxBorderReplicate_##sfx(s, ss, d, ds, roi, m, a, b)          \
                    : rvpiFilterMinBorderReplicate_##sfx(s, ss, d, ds, roi, m, a, b);         \
    }                                                                                         \
  };
RVPT_OLDER(Rvp8u, 1, 8u_C1R)
RVPT_OLDER(Rvp8u, 3, 8u_C3R)
RVPT_OLDER(Rvp8u, 4, 8u_C4R)
RVPT_OLDER(Rvp32f, 1, 32f_C1R)
RVPT_OLDER(Rvp32f, 3, 32f_C3R)
RVPT_OLDER(Rvp32f, 4, 32f_C4R)

// Random elements over every channel (TestImage::set addresses pixels, not elements).
template <class T>
void fill_elems(rvpt::TestImage<T>& img, std::mt19937& rng) {
  for (int y = 0; y < img.height(); ++y)
    for (int x = 0; x < img.width(); ++x)
      for (int c = 0; c < img.channels(); ++c) img.set(x, y, rvpt::random_value<T>(rng), c);
}

template <class T>
const T* row_of(const T* p, int step, int y) {
  return reinterpret_cast<const T*>(reinterpret_cast<const uint8_t*>(p) + size_t(step) * y);
}

RvpiPoint centre(const Mask& k) { return {(k.w - 1) / 2, (k.h - 1) / 2}; }

template <class T, int C>
void expect_region(const rvpt::TestImage<T>& dst, const std::vector<T>& want, const char* what) {
  for (int y = 0; y < dst.height(); ++y)
    for (int x = 0; x < dst.width() * C; ++x)
      ASSERT_TRUE(rvpt::same_bits(dst.at(x / C, y, x % C), want[size_t(y) * dst.width() * C + x]))
          << what << " at element " << x << ", row " << y << " of " << dst.width() << "x"
          << dst.height();
}

// Random masks of every kind, random borders, a region inside a larger image; the Border
// interface (centre anchor) and, for 8u/32f, the older interface (any anchor).
template <class T, int C>
void kinds_match_reference(uint32_t seed) {
  using A = Api<T, C>;
  std::mt19937 rng(seed);
  int seen[4] = {};
  const int borders[] = {1, 6, 0x11, 0x21, 0x41, 0x81, 0x31, 0xC1, 0xF1, 0x56};
  for (int trial = 0; trial < 160; ++trial) {
    const Mask k = make_mask(rng, trial % 4);
    const int w = std::uniform_int_distribution<int>(1, 45)(rng);
    const int h = std::uniform_int_distribution<int>(1, 12)(rng);
    const int margin = 10;
    rvpt::TestImage<T> big(w + 2 * margin, h + 2 * margin, C, 3, trial % 5);
    fill_elems(big, rng);
    const T* src = reinterpret_cast<const T*>(reinterpret_cast<const uint8_t*>(big.row(margin)) +
                                              margin * C * sizeof(T));
    const RvpiSize roi{w, h};
    const int border = borders[trial % 10];
    const bool dilate = trial % 3 != 0;

    int spec = 0, bufsize = 0;
    ASSERT_EQ(A::border_size(w + trial % 3, {k.w, k.h}, &spec, &bufsize), 0);
    std::vector<uint8_t> state(spec + 1), buffer(bufsize + 1);
    uint8_t dummy = 0;
    ASSERT_EQ(A::border_init(w + trial % 3, k.m.data(), {k.w, k.h}, state.data() + 1, &dummy), 0);
    const Kind kind = Kind(rvp::morph::read_header(state.data() + 1).kind);
    SCOPED_TRACE(::testing::Message()
                 << "trial " << trial << " mask " << k.w << "x" << k.h << " anchor " << k.anchor.x
                 << "," << k.anchor.y << " border " << border << " kind " << kind << " mask "
                 << ::testing::PrintToString(k.m));
    ++seen[kind];
    rvpt::TestImage<T> dst(w, h, C, 5, 3);
    const std::vector<uint8_t> before = dst.bytes();
    const T value[4] = {};
    ASSERT_EQ(A::run(dilate, src, big.step(), dst.ptr(), dst.step(), roi, border, value,
                     state.data() + 1, buffer.data() + 1),
              0);
    const auto want = reference(src, big.step(), roi, C, border, k, centre(k), dilate);
    expect_region<T, C>(dst, want, "border interface");
    // Row padding and the bytes around the region are untouched.
    for (int y = 0; y < h; ++y)
      for (int b = w * C * int(sizeof(T)); b < dst.step(); ++b)
        ASSERT_EQ(dst.bytes()[3 + size_t(y) * dst.step() + b],
                  before[3 + size_t(y) * dst.step() + b]);

    if constexpr (std::is_same_v<T, Rvp8u> || std::is_same_v<T, Rvp32f>) {
      using O = Older<T, C>;
      int size = 0;
      ASSERT_EQ(O::size(w, k.m.data(), {k.w, k.h}, &size), 0);
      std::vector<uint8_t> older(size + 3);
      ASSERT_EQ(O::init(w, k.m.data(), {k.w, k.h}, k.anchor, older.data() + 3), 0);
      rvpt::TestImage<T> d2(w, h, C, 1, 1);
      ASSERT_EQ(O::run(dilate, src, big.step(), d2.ptr(), d2.step(), roi, 1, older.data() + 3), 0);
      expect_region<T, C>(d2, reference(src, big.step(), roi, C, 1, k, k.anchor, dilate),
                          "older interface");
      // In place gives the same values.
      rvpt::TestImage<T> io(w, h, C, 2, 0);
      for (int y = 0; y < h; ++y)
        std::memcpy(io.row(y), row_of(src, big.step(), y), sizeof(T) * w * C);
      ASSERT_EQ(O::run(dilate, io.ptr(), io.step(), io.ptr(), io.step(), roi, 1, older.data() + 3),
                0);
      expect_region<T, C>(io, reference(src, big.step(), roi, C, 1, k, k.anchor, dilate),
                          "in place");
    }
  }
  for (int kind = 0; kind < 4; ++kind) EXPECT_GT(seen[kind], 3) << "kind " << kind;
}

TEST(Morphology, KindsMatchReference8u) {
  kinds_match_reference<Rvp8u, 1>(1);
  kinds_match_reference<Rvp8u, 3>(2);
  kinds_match_reference<Rvp8u, 4>(3);
}
TEST(Morphology, KindsMatchReference16) {
  kinds_match_reference<Rvp16u, 1>(4);
  kinds_match_reference<Rvp16s, 1>(5);
}
TEST(Morphology, KindsMatchReference32f) {
  kinds_match_reference<Rvp32f, 1>(6);
  kinds_match_reference<Rvp32f, 3>(7);
  kinds_match_reference<Rvp32f, 4>(8);
}

// The run kind of 32f C3 starts at mask area 17: a 1x16 and a 1x17 column with the same
// scattered rows (the 17th row empty) go the general and the run way, with the same values.
// Rows without gaps make a rectangle at any area.
TEST(Morphology, Area16Versus17For32fC3) {
  std::mt19937 rng(11);
  const int w = 37, h = 23;
  rvpt::TestImage<Rvp32f> src(w, h, 3);
  fill_elems(src, rng);
  Rvp8u column[17] = {1, 0, 1, 1, 0, 0, 1, 0, 1, 1, 1, 0, 0, 1, 0, 1, 0};
  std::vector<Rvp32f> out[2];
  const Kind want[2] = {rvp::morph::kGeneral, rvp::morph::kRuns};
  for (int i = 0; i < 2; ++i) {
    const RvpiSize m{1, 16 + i};
    int size;
    ASSERT_EQ(rvpiMorphologyGetSize_32f_C3R(w, column, m, &size), 0);
    std::vector<uint8_t> st(size);
    auto* state = reinterpret_cast<RvpiMorphState*>(st.data());
    ASSERT_EQ(rvpiMorphologyInit_32f_C3R(w, column, m, {0, 6}, state), 0);
    EXPECT_EQ(rvp::morph::read_header(st.data()).kind, want[i]) << "area " << m.height;
    rvpt::TestImage<Rvp32f> dst(w, h, 3);
    ASSERT_EQ(rvpiErodeBorderReplicate_32f_C3R(src.ptr(), src.step(), dst.ptr(), dst.step(), {w, h},
                                               1, state),
              0);
    out[i].assign(reinterpret_cast<const Rvp32f*>(dst.bytes().data()),
                  reinterpret_cast<const Rvp32f*>(dst.bytes().data()) + size_t(w) * h * 3);
    Mask k{1, m.height, std::vector<Rvp8u>(column, column + m.height), {0, 6}};
    expect_region<Rvp32f, 3>(
        dst, reference(src.ptr(), src.step(), {w, h}, 3, 1, k, k.anchor, false), "column");
  }
  EXPECT_EQ(out[0], out[1]);
  // The same threshold for C4 is 49; C1 has none.
  const Rvp8u runs[4] = {1, 0, 1, 1};  // 2x2: lengths 1 and 2, both from column 0
  const int codes[3][2] = {
      {1, rvp::morph::kRuns}, {3, rvp::morph::kGeneral}, {4, rvp::morph::kGeneral}};
  for (const auto& c : codes) {
    int size;
    ASSERT_EQ(rvpiMorphologyGetSize_32f_C1R(4, runs, {2, 2}, &size), 0);
    std::vector<uint8_t> st(size + 4096);
    auto* state = reinterpret_cast<RvpiMorphState*>(st.data());
    const RvpStatus s = c[0] == 1   ? rvpiMorphologyInit_32f_C1R(4, runs, {2, 2}, {0, 0}, state)
                        : c[0] == 3 ? rvpiMorphologyInit_32f_C3R(4, runs, {2, 2}, {0, 0}, state)
                                    : rvpiMorphologyInit_32f_C4R(4, runs, {2, 2}, {0, 0}, state);
    ASSERT_EQ(s, 0);
    EXPECT_EQ(rvp::morph::read_header(st.data()).kind, c[1]) << "channels " << c[0];
  }
  // 8u keeps the run kind at any area.
  int size;
  ASSERT_EQ(rvpiMorphologyGetSize_8u_C3R(4, runs, {2, 2}, &size), 0);
  std::vector<uint8_t> st(size);
  ASSERT_EQ(rvpiMorphologyInit_8u_C3R(4, runs, {2, 2}, {0, 0},
                                      reinterpret_cast<RvpiMorphState*>(st.data())),
            0);
  EXPECT_EQ(rvp::morph::read_header(st.data()).kind, rvp::morph::kRuns);
}

// An anchor on a zero element outside the rectangle shifts the result; the uncovered edge
// repeats the nearest computed value.
TEST(Morphology, AnchorOutsideRectangleReplicatesEdge) {
  const Rvp8u mask[5] = {0, 0, 0, 1, 1};  // rectangle at columns 3..4, anchor at 0
  const int w = 8;
  const Rvp8u src[w] = {1, 9, 2, 3, 7, 4, 5, 6};
  int size;
  ASSERT_EQ(rvpiMorphologyGetSize_8u_C1R(w, mask, {5, 1}, &size), 0);
  std::vector<uint8_t> st(size);
  auto* state = reinterpret_cast<RvpiMorphState*>(st.data());
  ASSERT_EQ(rvpiMorphologyInit_8u_C1R(w, mask, {5, 1}, {0, 0}, state), 0);
  EXPECT_EQ(rvp::morph::read_header(st.data()).kind, rvp::morph::kRect);
  Rvp8u dst[w];
  ASSERT_EQ(rvpiDilateBorderReplicate_8u_C1R(src, w, dst, w, {w, 1}, 1, state), 0);
  const Rvp8u want[w] = {7, 7, 5, 6, 6, 6, 6, 6};  // max of src[x + 3], src[x + 4]
  for (int x = 0; x < w; ++x) EXPECT_EQ(dst[x], want[x]) << x;
}

// A full rectangle through the state equals the rectangle filter with the same anchor.
TEST(Morphology, FullRectangleEqualsMinMaxFilter) {
  using O3 = Older<Rvp32f, 3>;
  std::mt19937 rng(12);
  for (int trial = 0; trial < 40; ++trial) {
    const int mw = std::uniform_int_distribution<int>(1, 9)(rng);
    const int mh = std::uniform_int_distribution<int>(1, 9)(rng);
    const RvpiPoint a{std::uniform_int_distribution<int>(0, mw - 1)(rng),
                      std::uniform_int_distribution<int>(0, mh - 1)(rng)};
    const int w = std::uniform_int_distribution<int>(1, 70)(rng), h = 7;
    const bool dilate = trial % 2;
    std::vector<Rvp8u> mask(size_t(mw) * mh, 255);
    rvpt::TestImage<Rvp32f> src(w, h, 3);
    fill_elems(src, rng);
    int size, fsize;
    ASSERT_EQ(rvpiMorphologyGetSize_32f_C3R(w, mask.data(), {mw, mh}, &size), 0);
    std::vector<uint8_t> st(size);
    auto* state = reinterpret_cast<RvpiMorphState*>(st.data());
    ASSERT_EQ(rvpiMorphologyInit_32f_C3R(w, mask.data(), {mw, mh}, a, state), 0);
    ASSERT_EQ(rvpiFilterMinGetBufferSize_32f_C3R(w, {mw, mh}, &fsize), 0);
    std::vector<uint8_t> fb(fsize);
    rvpt::TestImage<Rvp32f> d1(w, h, 3), d2(w, h, 3);
    ASSERT_EQ(O3::run(dilate, src.ptr(), src.step(), d1.ptr(), d1.step(), {w, h}, 1, state), 0);
    ASSERT_EQ(O3::filter(dilate, src.ptr(), src.step(), d2.ptr(), d2.step(), {w, h}, {mw, mh}, a,
                         fb.data()),
              0);
    EXPECT_EQ(d1.bytes(), d2.bytes());
  }
}

// The rectangle-filter size of 32f C1 follows mh*2*(4W+32) + 32 + mh*32.
TEST(Morphology, BufferSizeFormulas) {
  int b = 0;
  ASSERT_EQ(rvpiFilterMaxGetBufferSize_32f_C1R(100, {5, 3}, &b), 0);
  EXPECT_EQ(b, 3 * 2 * (400 + 32) + 32 + 3 * 32);
  int spec = 0, buf = 0;
  ASSERT_EQ(rvpiMorphologyBorderGetSize_16s_C1R(100, {5, 3}, &spec, &buf), 0);
  EXPECT_EQ(spec, 33 * 16 + 16 * 3 + 160);
  ASSERT_EQ(rvpiMorphologyBorderGetSize_1u_C1R(100, {5, 4}, &spec, &buf), 0);
  EXPECT_EQ(spec, 3 * 32 + 96);
  const Rvp8u zeros[6] = {};
  int size = 0;
  ASSERT_EQ(rvpiMorphologyGetSize_8u_C1R(10, zeros, {3, 2}, &size), 0);
  EXPECT_EQ(size, 16 + 96);
  const Rvp8u ones[6] = {1, 1, 1, 1, 1, 1};
  ASSERT_EQ(rvpiMorphologyGetSize_8u_C1R(10, ones, {3, 2}, &size), 0);
  EXPECT_GT(size, 33 * 16 + 16 * 2 + 160);
  EXPECT_EQ(rvpiFilterMaxGetBufferSize_32f_C1R(100, {0, 3}, &b), rvpStsMaskSizeErr);
  EXPECT_EQ(rvpiFilterMaxGetBufferSize_32f_C1R(0, {0, 3}, &b), rvpStsSizeErr);
  EXPECT_EQ(rvpiFilterMaxGetBufferSize_32f_C1R(1, {1, 1}, nullptr), rvpStsNullPtrErr);
}

// ---- 1u -----------------------------------------------------------------------------------

TEST(Morphology, BitPackedMostSignificantBitFirst) {
  std::mt19937 rng(13);
  const int borders[] = {1, 6, 0x41, 0x81, 0x11};
  for (int trial = 0; trial < 120; ++trial) {
    const Mask k = make_mask(rng, trial % 4);
    const int w = std::uniform_int_distribution<int>(1, 80)(rng);
    const int h = std::uniform_int_distribution<int>(1, 9)(rng);
    const int mb = 2, mr = 8;                                 // margin bytes, margin rows
    const int step = (w + 7) / 8 + 2 * mb + (w + trial % 4);  // at least w: step >= width
    std::vector<Rvp8u> img(size_t(step) * (h + 2 * mr));
    for (auto& v : img) v = Rvp8u(rng());
    const Rvp8u* src = img.data() + size_t(step) * mr + mb;
    const int border = borders[trial % 5];
    const bool dilate = trial % 2;
    int spec, bufsize;
    ASSERT_EQ(rvpiMorphologyBorderGetSize_1u_C1R(w, {k.w, k.h}, &spec, &bufsize), 0);
    std::vector<uint8_t> st(spec), buf(bufsize);
    auto* state = reinterpret_cast<RvpiMorphState*>(st.data());
    uint8_t dummy;
    ASSERT_EQ(rvpiMorphologyBorderInit_1u_C1R(w, k.m.data(), {k.w, k.h}, state, &dummy), 0);
    std::vector<Rvp8u> dst(size_t(step) * h);
    for (auto& v : dst) v = Rvp8u(rng());
    const std::vector<Rvp8u> before = dst;
    const RvpStatus s = dilate ? rvpiDilateBorder_1u_C1R(src, step, dst.data(), step, {w, h},
                                                         border, 0, state, buf.data())
                               : rvpiErodeBorder_1u_C1R(src, step, dst.data(), step, {w, h}, border,
                                                        0, state, buf.data());
    ASSERT_EQ(s, 0);
    // Reference on the bits, pixel x at bit 7 - x % 8 of byte x / 8 (negative x: bytes before).
    const rvp::filter::Border b = rvp::filter::resolve_border(border);
    auto bit = [&](int y, int x) {
      const int my = rvp::filter::map_index(y, h, b.base, b.in_mem(rvp::filter::kTop),
                                            b.in_mem(rvp::filter::kBottom));
      const int mx = rvp::filter::map_index(x, w, b.base, b.in_mem(rvp::filter::kLeft),
                                            b.in_mem(rvp::filter::kRight));
      const Rvp8u* r = src + ptrdiff_t(step) * my;
      return (r[mx >> 3] >> (7 - (mx & 7))) & 1;
    };
    const RvpiPoint a = centre(k);
    for (int y = 0; y < h; ++y) {
      for (int x = 0; x < w; ++x) {
        int e = -1;
        for (int r = 0; r < k.h; ++r)
          for (int q = 0; q < k.w; ++q)
            if (k.m[size_t(r) * k.w + q]) {
              const int v = bit(y + r - a.y, x + q - a.x);
              e = e < 0 ? v : (dilate ? std::max(e, v) : std::min(e, v));
            }
        if (e < 0) e = bit(y, x);
        ASSERT_EQ((dst[size_t(y) * step + x / 8] >> (7 - x % 8)) & 1, e)
            << "trial " << trial << " x " << x << " y " << y;
      }
      // Bits past the width and bytes past the row are untouched.
      const int last = (w - 1) / 8;
      const Rvp8u keep = Rvp8u(0xFF >> (w - last * 8));
      ASSERT_EQ(dst[size_t(y) * step + last] & keep, before[size_t(y) * step + last] & keep);
      for (int i = last + 1; i < step; ++i)
        ASSERT_EQ(dst[size_t(y) * step + i], before[size_t(y) * step + i]);
    }
  }
}

// ---- checks --------------------------------------------------------------------------------

TEST(Morphology, ChecksInOrderAndNothingWritten) {
  const Rvp8u mask[9] = {0, 1, 0, 1, 1, 1, 0, 1, 0};
  const int w = 10, h = 6;
  int spec, bufsize;
  ASSERT_EQ(rvpiMorphologyBorderGetSize_8u_C3R(w, {3, 3}, &spec, &bufsize), 0);
  std::vector<uint8_t> st(spec, 0x5A), buf(bufsize, 0x3C);
  auto* state = reinterpret_cast<RvpiMorphState*>(st.data());
  // Init: null before size, size before anything is written.
  EXPECT_EQ(rvpiMorphologyBorderInit_8u_C3R(0, mask, {3, 3}, state, nullptr), rvpStsNullPtrErr);
  EXPECT_EQ(rvpiMorphologyBorderInit_8u_C3R(0, mask, {3, 3}, state, buf.data()), rvpStsSizeErr);
  EXPECT_EQ(rvpiMorphologyBorderInit_8u_C3R(w, mask, {3, 0}, state, buf.data()), rvpStsSizeErr);
  EXPECT_TRUE(std::all_of(st.begin(), st.end(), [](uint8_t v) { return v == 0x5A; }));
  ASSERT_EQ(rvpiMorphologyBorderInit_8u_C3R(w, mask, {3, 3}, state, buf.data()), 0);

  Rvp8u src[3 * w * h] = {}, dst[3 * w * h];
  std::memset(dst, 0x77, sizeof dst);
  const Rvp8u value[3] = {};
  const std::vector<uint8_t> st0 = st, buf0 = buf;
  struct Bad {
    RvpStatus want;
    std::function<RvpStatus()> call;
  } bad[] = {
      {rvpStsNullPtrErr,
       [&] {
         return rvpiDilateBorder_8u_C3R(nullptr, 3 * w, dst, 3 * w, {0, h}, 1, value, state,
                                        buf.data());
       }},
      {rvpStsNullPtrErr,
       [&] {
         return rvpiDilateBorder_8u_C3R(src, 3 * w, dst, 3 * w, {w, h}, 1, nullptr, state,
                                        buf.data());
       }},
      {rvpStsNullPtrErr,
       [&] {
         return rvpiErodeBorder_8u_C3R(src, 3 * w, dst, 3 * w, {w, h}, 1, value, state, nullptr);
       }},
      {rvpStsSizeErr,
       [&] {
         return rvpiDilateBorder_8u_C3R(src, 0, dst, 3 * w, {w, 0}, 1, value, state, buf.data());
       }},
      {rvpStsStepErr,
       [&] {
         return rvpiDilateBorder_8u_C3R(src, w - 1, dst, 3 * w, {w, h}, 0, value, state,
                                        buf.data());
       }},
      {rvpStsStepErr,
       [&] {
         return rvpiDilateBorder_8u_C3R(src, 3 * w, dst, -3, {w, h}, 1, value, state, buf.data());
       }},
      {rvpStsBorderErr,
       [&] {
         return rvpiDilateBorder_8u_C3R(src, 3 * w, dst, 3 * w, {w, h}, 0, value, state,
                                        buf.data());
       }},
      {rvpStsBorderErr,
       [&] {
         return rvpiErodeBorder_8u_C3R(src, 3 * w, dst, 3 * w, {w, h}, 0x12, value, state,
                                       buf.data());
       }},
      {rvpStsSizeErr,
       [&] {
         return rvpiDilateBorder_8u_C3R(src, 3 * w + 3, dst, 3 * w + 3, {w + 1, h - 1}, 1, value,
                                        state, buf.data());
       }},
      {rvpStsContextMatchErr,
       [&] {
         return rvpiDilateBorder_8u_C4R(src, 3 * w, dst, 3 * w, {7, h}, 1, value, state,
                                        buf.data());
       }},
  };
  for (const Bad& b : bad) {
    EXPECT_EQ(b.call(), b.want);
    for (size_t i = 0; i < sizeof dst; ++i) ASSERT_EQ(dst[i], 0x77);
    ASSERT_EQ(st, st0);
    ASSERT_EQ(buf, buf0);
  }
  // A step between the width and three times the width passes the element-count check.
  EXPECT_EQ(rvpiDilateBorder_8u_C3R(src, w + 1, dst, 2 * w, {w, 2}, 1, value, state, buf.data()),
            0);

  // In place is refused for 16u, 16s and 1u.
  ASSERT_EQ(rvpiMorphologyBorderGetSize_16s_C1R(w, {3, 3}, &spec, &bufsize), 0);
  std::vector<uint8_t> st16(spec), buf16(bufsize);
  auto* s16 = reinterpret_cast<RvpiMorphState*>(st16.data());
  ASSERT_EQ(rvpiMorphologyBorderInit_16s_C1R(w, mask, {3, 3}, s16, buf16.data()), 0);
  Rvp16s img[w * h] = {};
  EXPECT_EQ(rvpiDilateBorder_16s_C1R(img, 2 * w, img, 2 * w, {w, h}, 1, 0, s16, buf16.data()),
            rvpStsInplaceModeErr);

  // Older interface: anchor -34 after sizes; BorderReplicate accepts exactly 1.
  int size = 0;
  RvpiMorphState* alloc = reinterpret_cast<RvpiMorphState*>(&size);
  EXPECT_EQ(rvpiMorphologyInitAlloc_8u_C1R(w, nullptr, {3, 3}, {1, 1}, &alloc), rvpStsNullPtrErr);
  EXPECT_EQ(rvpiMorphologyInitAlloc_8u_C1R(w, mask, {0, 3}, {3, 1}, &alloc), rvpStsSizeErr);
  EXPECT_EQ(rvpiMorphologyInitAlloc_8u_C1R(w, mask, {3, 3}, {3, 1}, &alloc), rvpStsAnchorErr);
  EXPECT_EQ(rvpiMorphologyInitAlloc_8u_C1R(w, mask, {3, 3}, {1, -1}, &alloc), rvpStsAnchorErr);
  EXPECT_EQ(alloc, reinterpret_cast<RvpiMorphState*>(&size));
  EXPECT_EQ(rvpiMorphologyInitAlloc_8u_C1R(w, mask, {3, 3}, {1, 1}, nullptr), rvpStsNullPtrErr);
  ASSERT_EQ(rvpiMorphologyInitAlloc_8u_C1R(w, mask, {3, 3}, {1, 1}, &alloc), 0);
  EXPECT_EQ(rvpiErodeBorderReplicate_8u_C1R(src, w, dst, w, {w, h}, 6, alloc), rvpStsBorderErr);
  EXPECT_EQ(rvpiErodeBorderReplicate_8u_C1R(src, w, dst, w, {w, h}, 1, alloc), 0);
  rvpiMorphologyFree(alloc);

  // Rectangle filter: mask size -33, anchor -34, byte steps.
  std::memset(dst, 0x77, sizeof dst);
  Rvp8u fb[4096];
  EXPECT_EQ(
      rvpiFilterMaxBorderReplicate_8u_C3R(src, 3 * w - 1, dst, 3 * w, {w, h}, {3, 3}, {1, 1}, fb),
      rvpStsStepErr);
  EXPECT_EQ(rvpiFilterMaxBorderReplicate_8u_C3R(src, 3 * w, dst, 3 * w, {w, h}, {0, 3}, {1, 1}, fb),
            rvpStsMaskSizeErr);
  EXPECT_EQ(rvpiFilterMinBorderReplicate_8u_C3R(src, 3 * w, dst, 3 * w, {w, h}, {3, 3}, {1, 3}, fb),
            rvpStsAnchorErr);
  EXPECT_EQ(rvpiFilterMinBorderReplicate_32f_C1R(reinterpret_cast<Rvp32f*>(src), 4 * w + 2,
                                                 reinterpret_cast<Rvp32f*>(dst), 4 * w, {w, 1},
                                                 {3, 3}, {1, 1}, fb),
            rvpStsNotEvenStepErr);
  for (size_t i = 0; i < sizeof dst; ++i) ASSERT_EQ(dst[i], 0x77) << "rectangle filter wrote";
}

// ---- guarded memory ------------------------------------------------------------------------

// Images whose last (or first) byte touches an inaccessible page, and state and work buffers of
// exactly the queried size ending at the guard page at odd addresses.
template <class T, int C>
void guarded_runs(uint32_t seed) {
  using A = Api<T, C>;
  std::mt19937 rng(seed);
  for (int w = 1; w <= 40; w += 1 + w / 8) {
    for (rvpt::Guard g : {rvpt::Guard::After, rvpt::Guard::Before}) {
      const Mask k = make_mask(rng, w % 4);
      const int h = 1 + w % 5;
      const int step = w * C * int(sizeof(T)) + (w % 3) * int(sizeof(T));
      rvpt::GuardedImage<T> src(w, h, C, step, g), dst(w, h, C, step, g);
      for (int y = 0; y < h; ++y)
        for (int x = 0; x < w * C; ++x) src.row(y)[x] = rvpt::random_value<T>(rng);
      int spec, bufsize;
      ASSERT_EQ(A::border_size(w, {k.w, k.h}, &spec, &bufsize), 0);
      rvpt::GuardedBuffer st(size_t(spec) + 1, rvpt::Guard::After);
      rvpt::GuardedBuffer buf(size_t(bufsize) + 1, rvpt::Guard::After);
      const T value[4] = {};
      ASSERT_EQ(A::border_init(w, k.m.data(), {k.w, k.h}, st.data() + 1, buf.data() + 1), 0);
      ASSERT_EQ(A::run(w % 2, src.ptr(), step, dst.ptr(), step, {w, h}, 1, value, st.data() + 1,
                       buf.data() + 1),
                0);
      const auto want = reference<T>(src.ptr(), step, {w, h}, C, 1, k, centre(k), w % 2);
      for (int y = 0; y < h; ++y)
        for (int x = 0; x < w * C; ++x)
          ASSERT_TRUE(rvpt::same_bits(dst.row(y)[x], want[size_t(y) * w * C + x]));
    }
  }
}

TEST(Morphology, GuardedImagesAndExactBuffers) {
  guarded_runs<Rvp8u, 1>(21);
  guarded_runs<Rvp8u, 3>(22);
  guarded_runs<Rvp16s, 1>(23);
  guarded_runs<Rvp32f, 4>(24);
}

TEST(Morphology, RectangleFilterGuardedExactBuffer) {
  std::mt19937 rng(25);
  for (int w = 1; w <= 64; w += 3) {
    const int mw = 1 + w % 9, mh = 1 + w % 4;
    const RvpiPoint a{w % mw, w % mh};
    const int h = 3, step = 4 * w;
    rvpt::GuardedImage<Rvp32f> src(w, h, 1, step, rvpt::Guard::After),
        dst(w, h, 1, step, rvpt::Guard::Before);
    for (int y = 0; y < h; ++y)
      for (int x = 0; x < w; ++x) src.row(y)[x] = rvpt::random_value<Rvp32f>(rng);
    int bs;
    ASSERT_EQ(rvpiFilterMaxGetBufferSize_32f_C1R(w, {mw, mh}, &bs), 0);
    rvpt::GuardedBuffer buf(size_t(bs) + 3, rvpt::Guard::After);
    ASSERT_EQ(rvpiFilterMaxBorderReplicate_32f_C1R(src.ptr(), step, dst.ptr(), step, {w, h},
                                                   {mw, mh}, a, buf.data() + 3),
              0);
    Mask k{mw, mh, std::vector<Rvp8u>(size_t(mw) * mh, 1), a};
    const auto want = reference<Rvp32f>(src.ptr(), step, {w, h}, 1, 1, k, a, true);
    for (int y = 0; y < h; ++y)
      for (int x = 0; x < w; ++x) ASSERT_EQ(dst.row(y)[x], want[size_t(y) * w + x]);
  }
}

}  // namespace
