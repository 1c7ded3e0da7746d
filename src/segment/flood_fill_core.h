// Scan-line span fills shared by the flood-fill exports and the labeller.
//
// Two engines:
//  - value_fill: the plain and range rules. A pixel is "done" when it holds the new value, so
//    the acceptance test is "inside the interval and not equal to the new value"; the plain rule
//    needs no second test because its interval is the seed value and the new value differs.
//  - gradient_fill: each pixel is tested against the already-filled neighbour that reaches it;
//    a visited mask with a frame of ones records what is done, the new value is written last.
//
// Pending spans live on a stack of 24-byte entries in the caller's buffer. The range rule keeps
// its deliberate capacity limit (a push that brings the count to width*height/4 empties the
// stack and ends the fill after the scan in progress). The stack never grows beyond the
// caller's buffer: a push that would not fit ends a plain fill the same way, and makes a
// gradient fill finish with whole-image sweeps over its visited mask (same result, no memory).
#pragma once

#include <immintrin.h>

#include <climits>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "rvpcv.h"

namespace rvp::seg {

// One pending span: row, inclusive ends, the inclusive ends of the span it was found from, and
// dir (the row y + dir is the row it was found from).
struct SpanEntry {
  int32_t y, left, right, parent_left, parent_right, dir;
};
static_assert(sizeof(SpanEntry) == 24, "span entries are six 32-bit words");

// Entries that a small buffer always gets, so that images of fewer than four pixels (whose
// queried buffers hold one entry) still fill completely.
constexpr int64_t kLocalSpans = 4;

class SpanStack {
 public:
  // `fit` entries of storage at `base`; `limit` 0 means no capacity rule.
  SpanStack(SpanEntry* base, int64_t fit, int64_t limit) : base_(base), fit_(fit), limit_(limit) {}

  void push(const SpanEntry& e) {
    if (stopped_) return;
    if (count_ == fit_) {
      stopped_ = true;
      count_ = 0;
      return;
    }
    base_[count_++] = e;
    if (limit_ != 0 && count_ == limit_) {
      count_ = 0;
      stopped_ = true;
    }
  }
  bool empty() const { return count_ == 0; }
  SpanEntry pop() { return base_[--count_]; }
  bool stopped() const { return stopped_; }

 private:
  SpanEntry* base_;
  int64_t fit_;
  int64_t limit_;
  int64_t count_ = 0;
  bool stopped_ = false;
};

// Stack storage carved from a caller buffer of `bytes` bytes (as the size query reported it):
// aligned up to 8, as many whole entries as fit; tiny buffers fall back to `local`.
struct StackStorage {
  SpanEntry* base;
  int64_t fit;
};
inline StackStorage carve_stack(uint8_t* buf, int64_t bytes, SpanEntry* local) {
  const int64_t pad = int64_t((-reinterpret_cast<uintptr_t>(buf)) & 7u);
  const int64_t fit = bytes > pad ? (bytes - pad) / int64_t(sizeof(SpanEntry)) : 0;
  if (fit < kLocalSpans) return {local, kLocalSpans};
  return {reinterpret_cast<SpanEntry*>(buf + pad), fit};
}

// The byte count of the plain/range size query: 6*w*h + 32 in 64 bits, truncated to 32 bits.
inline int32_t fill_buffer_bytes(RvpiSize roi) {
  const int64_t v = 6 * int64_t(roi.width) * roi.height + 32;
  return static_cast<int32_t>(static_cast<uint32_t>(static_cast<uint64_t>(v)));
}
// The gradient size query: (w+2)(h+2) + 64 + 48wh/3 in 64 bits (-1 when above INT_MAX).
inline int64_t grad_buffer_bytes(RvpiSize roi) {
  const int64_t w = roi.width, h = roi.height;
  const int64_t v = (w + 2) * (h + 2) + 64 + (48 * w * h) / 3;
  return v > INT_MAX ? -1 : v;
}

// Area and bounding box of the filled pixels, kept as spans are filled (so the record is exact
// even when a limit drops pending spans).
struct FillStats {
  int64_t area = 0;
  int x0 = INT_MAX, y0 = INT_MAX, x1 = -1, y1 = -1;
  void add(int y, int l, int r) {
    area += r - l + 1;
    if (l < x0) x0 = l;
    if (r > x1) x1 = r;
    if (y < y0) y0 = y;
    if (y > y1) y1 = y;
  }
};

template <class T, int C>
inline bool same_pixel(const T* p, const T* v) {
  for (int c = 0; c < C; ++c)
    if (!(p[c] == v[c])) return false;
  return true;
}
template <class T, int C>
inline void put_pixel(T* p, const T* v) {
  for (int c = 0; c < C; ++c) p[c] = v[c];
}

// Plain rule: equal to the seed value (float equality: -0 equals +0, NaN equals nothing).
template <class T, int C>
struct PlainAccept {
  T v[C];
  bool operator()(const T* p) const { return same_pixel<T, C>(p, v); }
};

// Range rule: every channel inside [lo, hi] and the pixel not already holding the new value.
template <class T, int C>
struct RangeAccept {
  T lo[C], hi[C], nv[C];
  bool operator()(const T* p) const {
    for (int c = 0; c < C; ++c)
      if (!(lo[c] <= p[c] && p[c] <= hi[c])) return false;
    return !same_pixel<T, C>(p, nv);
  }
};

// Acceptance of 32 consecutive one-channel 8-bit pixels at once (bit i: pixel i accepted), for
// the rules where it is cheap; other types test pixel by pixel. Both give the same spans.
template <class Accept>
struct Accept32 {
  static constexpr bool kHas = false;
};
template <>
struct Accept32<PlainAccept<Rvp8u, 1>> {
  static constexpr bool kHas = true;
  static uint32_t of(const PlainAccept<Rvp8u, 1>& a, const Rvp8u* p) {
    const __m256i v = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
    return uint32_t(_mm256_movemask_epi8(_mm256_cmpeq_epi8(v, _mm256_set1_epi8(char(a.v[0])))));
  }
};
template <>
struct Accept32<RangeAccept<Rvp8u, 1>> {
  static constexpr bool kHas = true;
  static uint32_t of(const RangeAccept<Rvp8u, 1>& a, const Rvp8u* p) {
    const __m256i v = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(p));
    const __m256i above_lo =
        _mm256_cmpeq_epi8(_mm256_max_epu8(v, _mm256_set1_epi8(char(a.lo[0]))), v);
    const __m256i below_hi =
        _mm256_cmpeq_epi8(_mm256_min_epu8(v, _mm256_set1_epi8(char(a.hi[0]))), v);
    const __m256i is_nv = _mm256_cmpeq_epi8(v, _mm256_set1_epi8(char(a.nv[0])));
    return uint32_t(
        _mm256_movemask_epi8(_mm256_andnot_si256(is_nv, _mm256_and_si256(above_lo, below_hi))));
  }
};

// Run searches on one row for a value-tested rule, pixel by pixel or 32 pixels at a time.
template <class T, int C, class Accept>
struct RowSearch {
  const Accept& ok;
  int w;
  using V = Accept32<Accept>;
  // Last index of the run of acceptable pixels that continues to the right of x.
  int right_end(const T* r, int x) const {
    int i = x + 1;
    if constexpr (V::kHas) {
      for (; i + 32 <= w; i += 32) {
        const uint32_t stop = ~V::of(ok, r + i);
        if (stop) return i + __builtin_ctz(stop) - 1;
      }
    }
    while (i < w && ok(r + i * C)) ++i;
    return i - 1;
  }
  // First index of the run of acceptable pixels that continues to the left of x.
  int left_end(const T* r, int x) const {
    int i = x - 1;
    if constexpr (V::kHas) {
      for (; i - 31 >= 0; i -= 32) {
        const uint32_t stop = ~V::of(ok, r + i - 31);
        if (stop) return i - 31 + (31 - __builtin_clz(stop)) + 1;
      }
    }
    while (i >= 0 && ok(r + i * C)) --i;
    return i + 1;
  }
  // First acceptable index in [x, b], or a value above b.
  int next(const T* r, int x, int b) const {
    if constexpr (V::kHas) {
      for (; x + 32 <= b + 1; x += 32) {
        const uint32_t hit = V::of(ok, r + x);
        if (hit) return x + __builtin_ctz(hit);
      }
    }
    while (x <= b && !ok(r + x * C)) ++x;
    return x;
  }
};

template <class T, int C>
inline void put_span(T* r, int l, int rt, const T* nv) {
  if constexpr (C == 1 && sizeof(T) == 1) {
    std::memset(r + l, int(nv[0]), size_t(rt - l + 1));
  } else {
    for (int x = l; x <= rt; ++x) put_pixel<T, C>(r + x * C, nv);
  }
}

// The span fill over a value-tested rule. Fills from (sx, sy), which the caller has checked.
template <class T, int C, class Accept>
void value_fill(T* img, int step, int w, int h, int sx, int sy, bool conn8, const Accept& ok,
                const T* nv, SpanStack& st, FillStats& fs) {
  auto rowp = [&](int y) {
    return reinterpret_cast<T*>(reinterpret_cast<uint8_t*>(img) + std::ptrdiff_t(step) * y);
  };
  const RowSearch<T, C, Accept> rs{ok, w};
  // Scan row y over [a, b]; every span found is filled and pushed with the given parent/dir.
  // The runs are found on the row before it is written: a span is a maximal run, so filling
  // it afterwards changes nothing the searches could see.
  auto scan = [&](int y, int a, int b, int pl, int pr, int dir) {
    T* r = rowp(y);
    for (int x = rs.next(r, a, b); x <= b;) {
      const int l = rs.left_end(r, x), rt = rs.right_end(r, x);
      put_span<T, C>(r, l, rt, nv);
      fs.add(y, l, rt);
      st.push({y, l, rt, pl, pr, dir});
      x = rs.next(r, rt + 2, b);  // rt + 1 is not acceptable (or past the row)
    }
  };

  T* seed_row = rowp(sy);
  const int l = rs.left_end(seed_row, sx), r = rs.right_end(seed_row, sx);
  put_span<T, C>(seed_row, l, r, nv);
  fs.add(sy, l, r);
  if (h == 1) return;
  st.push({sy, l, r, r + 1, r, sy == h - 1 ? -1 : 1});
  const int ext = conn8 ? 1 : 0;
  while (!st.empty()) {
    const SpanEntry e = st.pop();
    const int a = e.left - ext < 0 ? 0 : e.left - ext;
    const int b = e.right + ext > w - 1 ? w - 1 : e.right + ext;
    const int ahead = e.y - e.dir;
    if (static_cast<unsigned>(ahead) < static_cast<unsigned>(h)) {
      scan(ahead, a, b, e.left, e.right, e.dir);
      if (st.stopped()) break;
    }
    const int back = e.y + e.dir;
    if (static_cast<unsigned>(back) < static_cast<unsigned>(h)) {
      if (a <= e.parent_left - 1) {
        scan(back, a, e.parent_left - 1 < b ? e.parent_left - 1 : b, e.left, e.right, -e.dir);
        if (st.stopped()) break;
      }
      const int a2 = e.parent_right + 1 > a ? e.parent_right + 1 : a;
      if (a2 <= b) {
        scan(back, a2, b, e.left, e.right, -e.dir);
        if (st.stopped()) break;
      }
    }
  }
}

// ---- gradient rule --------------------------------------------------------------------------

// c - minDelta <= n <= c + maxDelta, per channel. Integers: the unsigned 32-bit form, which
// is exact for 8- and 16-bit data; floats: the bounds are rounded single-precision values.
template <class T, int C>
struct GradAccept {
  T lo_d[C], hi_d[C];
  bool operator()(const T* c, const T* n) const {
    for (int k = 0; k < C; ++k) {
      if constexpr (std::is_floating_point_v<T>) {
        if (!(c[k] - lo_d[k] <= n[k] && n[k] <= c[k] + hi_d[k])) return false;
      } else {
        const uint32_t d = uint32_t(n[k]) + uint32_t(lo_d[k]) - uint32_t(c[k]);
        if (d > uint32_t(lo_d[k]) + uint32_t(hi_d[k])) return false;
      }
    }
    return true;
  }
};

// Visited mask of (w+2) x (h+2) bytes whose frame is 1: scans stop at the edges by themselves.
struct VisitMask {
  uint8_t* m;
  int64_t stride;
  uint8_t* at(int x, int y) const { return m + (y + 1) * stride + (x + 1); }
  static void init(uint8_t* m, int w, int h) {
    const int64_t s = int64_t(w) + 2;
    std::memset(m, 1, size_t(s));
    for (int y = 0; y < h; ++y) {
      uint8_t* r = m + (y + 1) * s;
      r[0] = 1;
      std::memset(r + 1, 0, size_t(w));
      r[w + 1] = 1;
    }
    std::memset(m + (int64_t(h) + 1) * s, 1, size_t(s));
  }
};

template <class T, int C>
void gradient_fill(T* img, int step, int w, int h, int sx, int sy, bool conn8,
                   const GradAccept<T, C>& ok, const VisitMask& vm, SpanStack& st, FillStats& fs) {
  auto pix = [&](int x, int y) {
    return reinterpret_cast<T*>(reinterpret_cast<uint8_t*>(img) + std::ptrdiff_t(step) * y) + x * C;
  };
  // Grow the span through the freshly visited (x, y) while the horizontal neighbour passes
  // against the pixel that reaches it.
  auto grow = [&](int x, int y, int& l, int& r) {
    r = x;
    while (!*vm.at(r + 1, y) && ok(pix(r, y), pix(r + 1, y))) *vm.at(++r, y) = 1;
    l = x;
    while (!*vm.at(l - 1, y) && ok(pix(l, y), pix(l - 1, y))) *vm.at(--l, y) = 1;
  };
  // Row y over [a, b], each candidate tested against the source span's pixels adjacent to it
  // (the one above/below for 4-connectivity, any of the three for 8-connectivity).
  auto scan = [&](int y, int a, int b, int sy_, int sl, int sr, int pl, int pr, int dir) {
    for (int x = a; x <= b; ++x) {
      if (*vm.at(x, y)) continue;
      bool pass = false;
      if (!conn8) {
        pass = ok(pix(x, sy_), pix(x, y));
      } else {
        const int u0 = x - 1 < sl ? sl : x - 1, u1 = x + 1 > sr ? sr : x + 1;
        for (int u = u0; u <= u1 && !pass; ++u) pass = ok(pix(u, sy_), pix(x, y));
      }
      if (!pass) continue;
      *vm.at(x, y) = 1;
      int l, r;
      grow(x, y, l, r);
      fs.add(y, l, r);
      st.push({y, l, r, pl, pr, dir});
      x = r;  // r + 1 failed only horizontally; it is tested against the source next
    }
  };

  *vm.at(sx, sy) = 1;
  int l, r;
  grow(sx, sy, l, r);
  fs.add(sy, l, r);
  st.push({sy, l, r, r + 1, r, 1});
  const int ext = conn8 ? 1 : 0;
  while (!st.empty()) {
    const SpanEntry e = st.pop();
    const int a = e.left - ext < 0 ? 0 : e.left - ext;
    const int b = e.right + ext > w - 1 ? w - 1 : e.right + ext;
    const int ahead = e.y - e.dir;
    if (static_cast<unsigned>(ahead) < static_cast<unsigned>(h)) {
      scan(ahead, a, b, e.y, e.left, e.right, e.left, e.right, e.dir);
      if (st.stopped()) break;
    }
    const int back = e.y + e.dir;
    if (static_cast<unsigned>(back) < static_cast<unsigned>(h)) {
      if (a <= e.parent_left - 1) {
        scan(back, a, e.parent_left - 1 < b ? e.parent_left - 1 : b, e.y, e.left, e.right, e.left,
             e.right, -e.dir);
        if (st.stopped()) break;
      }
      const int a2 = e.parent_right + 1 > a ? e.parent_right + 1 : a;
      if (a2 <= b) {
        scan(back, a2, b, e.y, e.left, e.right, e.left, e.right, -e.dir);
        if (st.stopped()) break;
      }
    }
  }
  if (!st.stopped()) return;
  // The stack ran out of room: finish with sweeps over the mask until nothing joins. The
  // result is the same set, because a pixel joins exactly when some visited neighbour passes.
  for (bool changed = true; changed;) {
    changed = false;
    for (int pass = 0; pass < 2; ++pass) {
      for (int yy = 0; yy < h; ++yy) {
        const int y = pass == 0 ? yy : h - 1 - yy;
        for (int xx = 0; xx < w; ++xx) {
          const int x = pass == 0 ? xx : w - 1 - xx;
          if (*vm.at(x, y)) continue;
          bool join = false;
          for (int dy = -1; dy <= 1 && !join; ++dy)
            for (int dx = -1; dx <= 1 && !join; ++dx) {
              if ((dx == 0 && dy == 0) || (!conn8 && dx != 0 && dy != 0)) continue;
              const int nx = x + dx, ny = y + dy;
              if (nx < 0 || ny < 0 || nx >= w || ny >= h || !*vm.at(nx, ny)) continue;
              join = ok(pix(nx, ny), pix(x, y));
            }
          if (join) {
            *vm.at(x, y) = 1;
            fs.add(y, x, x);
            changed = true;
          }
        }
      }
    }
  }
}

}  // namespace rvp::seg
