// The border model shared by every bordered family (pipeline, fixed-kernel filters, Gaussian,
// pyramids, morphology, corners, Canny).
//
// A selector holds a base rule in its low four bits (0 constant, 1 replicate, 2 wrap, 3 mirror
// without the edge pixel, 4 mirror with it, 6 all sides in memory) and side flags 0x10 top,
// 0x20 bottom, 0x40 left, 0x80 right for sides whose neighbours exist in the caller's image.
// Families differ in which selectors they accept and in the status they report for a bad one;
// `check_border` holds that table in one place. After acceptance `resolve_border` rewrites 6 to
// 0xF0 (constant base, every side in memory) so the readers below only know base rule + flags.
//
// Coordinates map independently: a row index outside the region is either kept (its side is in
// memory), mapped into the region by the base rule, or marked constant; columns the same. A
// pixel is the border value when either of its coordinates is constant.
#pragma once

#include <immintrin.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "core/image.h"
#include "rvpcv.h"

namespace rvp::filter {

enum class BorderFamily {
  Pipeline,    // exactly 0, 1 or 6; -5
  Derivative,  // base 0..4 or 6, higher bits only together with a side flag; -5
  Gaussian,    // base (side flags removed) 0, 1 or 6; -225
  Morphology,  // base (low four bits) 1 or 6; -225
  Corner,      // exactly 0, 1 or 6; -225
  Canny,       // exactly 1 or 6; -225
};

constexpr int kSideFlags = 0xF0;
constexpr int kTop = 0x10, kBottom = 0x20, kLeft = 0x40, kRight = 0x80;

inline RvpStatus check_border(int type, BorderFamily family) {
  const int base = type & 0xF;
  switch (family) {
    case BorderFamily::Pipeline:
      return (type == 0 || type == 1 || type == 6) ? rvpStsNoErr : rvpStsBadArgErr;
    case BorderFamily::Derivative: {
      const bool base_ok = base <= 4 || base == 6;
      const bool high_ok = (type & ~0xF) == 0 || (type & kSideFlags) != 0;
      return (base_ok && high_ok) ? rvpStsNoErr : rvpStsBadArgErr;
    }
    case BorderFamily::Gaussian: {
      const int b = type & ~kSideFlags;
      return (b == 0 || b == 1 || b == 6) ? rvpStsNoErr : rvpStsBorderErr;
    }
    case BorderFamily::Morphology:
      return (base == 1 || base == 6) ? rvpStsNoErr : rvpStsBorderErr;
    case BorderFamily::Corner:
      return (type == 0 || type == 1 || type == 6) ? rvpStsNoErr : rvpStsBorderErr;
    case BorderFamily::Canny:
      return (type == 1 || type == 6) ? rvpStsNoErr : rvpStsBorderErr;
  }
  return rvpStsBadArgErr;
}

// An accepted selector in working form.
struct Border {
  int base = 1;   // 0..4 (6 has become 0 with all flags)
  int flags = 0;  // kTop | kBottom | kLeft | kRight
  bool in_mem(int side) const { return (flags & side) != 0; }
};

inline Border resolve_border(int type) {
  Border b;
  if ((type & 0xF) == 6) {
    b.base = 0;
    b.flags = kSideFlags;
  } else {
    b.base = type & 0xF;
    b.flags = type & kSideFlags;
  }
  return b;
}

constexpr int kConstantIndex = INT32_MIN;

// Maps index i of a line of n elements (n >= 1) to the index that supplies its value, or
// kConstantIndex when the border value applies. Indices on a side held in memory are returned
// as they are (negative or >= n).
// The index is taken in 64 bits so callers can form positions like 2y + k - 2 near the top of
// the int range without overflow; the result is always a valid int (or kConstantIndex).
inline int map_index(int64_t i, int n, int base, bool mem_low, bool mem_high) {
  if (i >= 0 && i < n) return static_cast<int>(i);
  if ((i < 0 && mem_low) || (i >= n && mem_high)) return static_cast<int>(i);
  switch (base) {
    case 0:
      return kConstantIndex;
    case 1:
      return i < 0 ? 0 : n - 1;
    case 2: {
      const int64_t m = i % n;
      return static_cast<int>(m < 0 ? m + n : m);
    }
    case 3: {  // c b | a b c : period 2(n-1)
      if (n == 1) return 0;
      const int64_t p = 2 * int64_t{n - 1};
      int64_t m = i % p;
      if (m < 0) m += p;
      return static_cast<int>(m < n ? m : p - m);
    }
    default: {  // 4: b a | a b c : period 2n
      const int64_t p = 2 * int64_t{n};
      int64_t m = i % p;
      if (m < 0) m += p;
      return static_cast<int>(m < n ? m : p - 1 - m);
    }
  }
}

// Mirror without repeating the edge pixel, never reading outside 0..n-1: the pyramids' rule.
inline int mirror_index(int64_t i, int n) {
  return map_index(i, n, rvpBorderMirror, false, false);
}

// Produces bordered source rows of a region: row y (which may lie outside 0..height-1) widened
// by `left` pixels before and `right` pixels after, channels interleaved. Families that filter
// a strip call `fill_row` for each of the height + vertical-border rows they need.
template <class T>
class BorderedSource {
 public:
  BorderedSource(const T* src, int step, RvpiSize roi, int channels, Border border, const T* value,
                 int left, int right)
      : src_(src),
        step_(step),
        w_(roi.width),
        h_(roi.height),
        ch_(channels),
        b_(border),
        left_(left),
        right_(right) {
    for (int c = 0; c < ch_ && c < 4; ++c) value_[c] = value ? value[c] : T(0);
  }

  int width_out() const { return left_ + w_ + right_; }

  // Source row for row index y, or nullptr when the whole row is the border value.
  const T* source_row(int y) const {
    const int my = map_index(y, h_, b_.base, b_.in_mem(kTop), b_.in_mem(kBottom));
    if (my == kConstantIndex) return nullptr;
    return row(src_, step_, my);
  }

  // Writes (left + width + right) * channels elements for bordered row y into `out`.
  void fill_row(int y, T* out) const {
    const T* s = source_row(y);
    const int n_out = width_out();
    if (s == nullptr) {
      for (int x = 0; x < n_out; ++x)
        for (int c = 0; c < ch_; ++c) out[x * ch_ + c] = value_[c];
      return;
    }
    std::memcpy(out + left_ * ch_, s, sizeof(T) * size_t(w_) * ch_);
    for (int x = -left_; x < 0; ++x) edge_pixel(s, x, out + (x + left_) * ch_);
    for (int x = w_; x < w_ + right_; ++x) edge_pixel(s, x, out + (x + left_) * ch_);
  }

  // fill_row writing a wider element type (8-bit rows widened to 16 bits for kernels that
  // work on 16-bit lanes): the same values, converted.
  template <class U>
  void fill_row_as(int y, U* out) const {
    const T* s = source_row(y);
    const int n_out = width_out();
    if (s == nullptr) {
      for (int x = 0; x < n_out; ++x)
        for (int c = 0; c < ch_; ++c) out[x * ch_ + c] = static_cast<U>(value_[c]);
      return;
    }
    widen(s, out + left_ * ch_, w_ * ch_);
    T px[4];
    for (int x = -left_; x < 0; ++x) {
      edge_pixel(s, x, px);
      for (int c = 0; c < ch_; ++c) out[(x + left_) * ch_ + c] = static_cast<U>(px[c]);
    }
    for (int x = w_; x < w_ + right_; ++x) {
      edge_pixel(s, x, px);
      for (int c = 0; c < ch_; ++c) out[(x + left_) * ch_ + c] = static_cast<U>(px[c]);
    }
  }

  // One value of bordered row y, column x, channel c (the plain definition; tests and the
  // scalar references use it).
  T at(int y, int x, int c) const {
    const int my = map_index(y, h_, b_.base, b_.in_mem(kTop), b_.in_mem(kBottom));
    const int mx = map_index(x, w_, b_.base, b_.in_mem(kLeft), b_.in_mem(kRight));
    if (my == kConstantIndex || mx == kConstantIndex) return value_[c];
    return row(src_, step_, my)[ptrdiff_t(mx) * ch_ + c];
  }

 private:
  template <class U>
  static void widen(const T* s, U* d, int n) {
    int i = 0;
    if constexpr (std::is_same_v<T, uint8_t> && std::is_same_v<U, int16_t>) {
      for (; i + 16 <= n; i += 16)
        _mm256_storeu_si256(
            reinterpret_cast<__m256i*>(d + i),
            _mm256_cvtepu8_epi16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(s + i))));
    }
    for (; i < n; ++i) d[i] = static_cast<U>(s[i]);
  }

  void edge_pixel(const T* s, int x, T* out) const {
    const int mx = map_index(x, w_, b_.base, b_.in_mem(kLeft), b_.in_mem(kRight));
    for (int c = 0; c < ch_; ++c)
      out[c] = mx == kConstantIndex ? value_[c] : s[ptrdiff_t(mx) * ch_ + c];
  }

  const T* src_;
  int step_, w_, h_, ch_;
  Border b_;
  int left_, right_;
  T value_[4] = {};
};

}  // namespace rvp::filter
