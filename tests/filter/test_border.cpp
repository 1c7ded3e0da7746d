// The shared border model: acceptance per family, the 6 -> 0xF0 rewrite, and bordered rows for
// every base type and side-flag combination against the plain reference.
#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "filter/border.h"
#include "support/filter_ref.h"
#include "support/images.h"

using rvp::filter::BorderFamily;
using rvp::filter::check_border;

TEST(Border, AcceptanceTablePerFamily) {
  for (int t = -2; t < 0x300; ++t) {
    const int base = t & 0xF;
    const bool flagged = (t & 0xF0) != 0;
    const bool exact016 = t == 0 || t == 1 || t == 6;
    EXPECT_EQ(check_border(t, BorderFamily::Pipeline), exact016 ? 0 : rvpStsBadArgErr) << t;
    EXPECT_EQ(check_border(t, BorderFamily::Corner), exact016 ? 0 : rvpStsBorderErr) << t;
    EXPECT_EQ(check_border(t, BorderFamily::Canny), (t == 1 || t == 6) ? 0 : rvpStsBorderErr) << t;
    const bool deriv = (base <= 4 || base == 6) && (t >= 0 && (t < 16 || flagged));
    EXPECT_EQ(check_border(t, BorderFamily::Derivative), deriv ? 0 : rvpStsBadArgErr) << t;
    const int no_flags = t & ~0xF0;
    const bool gauss = no_flags == 0 || no_flags == 1 || no_flags == 6;
    EXPECT_EQ(check_border(t, BorderFamily::Gaussian), gauss ? 0 : rvpStsBorderErr) << t;
    EXPECT_EQ(check_border(t, BorderFamily::Morphology),
              (base == 1 || base == 6) ? 0 : rvpStsBorderErr)
        << t;
  }
  // The documented edge cases.
  EXPECT_EQ(check_border(5, BorderFamily::Derivative), rvpStsBadArgErr);
  EXPECT_EQ(check_border(0x100, BorderFamily::Derivative), rvpStsBadArgErr);
  EXPECT_EQ(check_border(0x113, BorderFamily::Derivative), 0);
  EXPECT_EQ(check_border(0x11, BorderFamily::Pipeline), rvpStsBadArgErr);
  EXPECT_EQ(check_border(2, BorderFamily::Pipeline), rvpStsBadArgErr);
  EXPECT_EQ(check_border(2, BorderFamily::Gaussian), rvpStsBorderErr);
}

TEST(Border, SixBecomesConstantWithAllSidesInMemory) {
  const auto b = rvp::filter::resolve_border(6);
  EXPECT_EQ(b.base, 0);
  EXPECT_EQ(b.flags, 0xF0);
  const auto c = rvp::filter::resolve_border(0x53);
  EXPECT_EQ(c.base, 3);
  EXPECT_EQ(c.flags, 0x50);
}

TEST(Border, MapIndexDocumentedPatterns) {
  using rvp::filter::map_index;
  // a b c: mirror 3 reads c b | a b c, mirror 4 reads b a | a b c.
  EXPECT_EQ(map_index(-1, 3, 3, false, false), 1);
  EXPECT_EQ(map_index(-2, 3, 3, false, false), 2);
  EXPECT_EQ(map_index(-1, 3, 4, false, false), 0);
  EXPECT_EQ(map_index(-2, 3, 4, false, false), 1);
  EXPECT_EQ(map_index(3, 3, 2, false, false), 0);
  EXPECT_EQ(map_index(-1, 1, 3, false, false), 0);  // one pixel: repeated
  EXPECT_EQ(map_index(-1, 3, 0, false, false), rvp::filter::kConstantIndex);
  EXPECT_EQ(map_index(-1, 3, 0, true, false), -1);
}

// Every base type and every side-flag combination, sizes down to 1, borders wider than the
// region, regions inside a larger image read through the flags.
TEST(Border, BorderedRowsMatchReference) {
  std::mt19937 rng(11);
  const int big_w = 40, big_h = 30;
  rvpt::TestImage<Rvp16s> img(big_w, big_h, 3);
  rvpt::fill_all(img, rng);
  const Rvp16s value[3] = {-7, 1234, 99};
  for (int base : {0, 1, 2, 3, 4, 6})
    for (int flags = 0; flags < 256; flags += 16)
      for (int w : {1, 2, 3, 7})
        for (int h : {1, 2, 5}) {
          const int type = base | flags;
          const int x0 = 12, y0 = 11, left = 9, right = 8;
          const RvpiSize roi{w, h};
          const Rvp16s* origin = img.row(y0) + 3 * x0;
          rvp::filter::BorderedSource<Rvp16s> src(
              origin, img.step(), roi, 3, rvp::filter::resolve_border(type), value, left, right);
          rvpt::RefBorder<Rvp16s> ref{origin, img.step(), w, h, 3, type, value};
          std::vector<Rvp16s> out(size_t(left + w + right) * 3);
          for (int y = -9; y < h + 9; ++y) {
            src.fill_row(y, out.data());
            for (int x = -left; x < w + right; ++x)
              for (int c = 0; c < 3; ++c) {
                ASSERT_EQ(out[size_t(x + left) * 3 + c], ref.at(y, x, c))
                    << "type " << type << " w " << w << " h " << h << " y " << y << " x " << x;
                ASSERT_EQ(src.at(y, x, c), ref.at(y, x, c));
              }
          }
        }
}

// The widening variant gives the same values as the plain bordered row, every width.
TEST(Border, WidenedRowsEqualPlainRows) {
  std::mt19937 rng(12);
  rvpt::TestImage<Rvp8u> img(90, 5, 3);
  rvpt::fill_all(img, rng);
  const Rvp8u value[3] = {200, 3, 77};
  for (int w = 1; w <= 70; ++w)
    for (int type : {0, 1, 2, 3, 4, 0x41}) {
      const int ch = 1 + (w % 2) * 2;
      rvp::filter::BorderedSource<Rvp8u> src(img.row(1) + 3 * 6, img.step(), {w, 3}, ch,
                                             rvp::filter::resolve_border(type), value, 5, 4);
      std::vector<Rvp8u> plain(size_t(w + 9) * ch);
      std::vector<Rvp16s> wide(size_t(w + 9) * ch);
      for (int y = -2; y < 5; ++y) {
        src.fill_row(y, plain.data());
        src.fill_row_as<Rvp16s>(y, wide.data());
        for (size_t i = 0; i < plain.size(); ++i) ASSERT_EQ(wide[i], plain[i]) << w << " " << i;
      }
    }
}
