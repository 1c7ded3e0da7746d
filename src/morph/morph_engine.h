// The processing of the four kinds over bordered rows.
//
// Every kind reads source rows through a ring of mh bordered rows (the ROI row widened by the
// mask's extent left and right of the anchor, border rule applied), filled one source row
// ahead of the output row that first needs it. Because the ring is always filled up to the
// lowest row the mask reaches, an output row is written only after every source row that a
// later output still needs has been copied: source and destination may be the same image.
//
//   maskRect: each ring row is turned into its horizontal window extremum in place as it
//             arrives (log2 of the width in passes), and an output row is the extremum of the
//             rectangle's rows. Trimming the ROI on the side where the anchor lies outside the
//             rectangle and replicating the nearest computed column or row gives exactly these
//             values, because the replicated border already repeats the edge pixel.
//   maskRuns: one run length at a time: the rows holding runs of that length are combined,
//             the combined row gets its window extremum, and the result is taken at the runs'
//             common first column.
//   maskGeneral: the extremum over every nonzero position, sixteen rows per pass.
//   maskEmpty: a copy.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "core/image.h"
#include "core/scratch.h"
#include "filter/border.h"
#include "morph/morph_kernels.h"
#include "morph/morph_state.h"

namespace rvp::morph {

// Geometry of one call.
struct Plan {
  int width, height, channels;
  int mw, mh, ax, ay;
  Kind kind;
  int rect[4];
  const Rvp8u* mask;
};

// Bordered rows of an image of T.
template <class T>
class PlainRows {
 public:
  PlainRows(const T* src, int step, RvpiSize roi, int channels, filter::Border b, int left,
            int right)
      : bs_(src, step, roi, channels, b, nullptr, left, right) {}
  void fill(int y, T* out) const { bs_.fill_row(y, out); }

 private:
  filter::BorderedSource<T> bs_;
};

// Bordered rows of a 1u image, unpacked to one byte (0 or 1) per pixel.
class BitRows {
 public:
  BitRows(const Rvp8u* src, int step, RvpiSize roi, filter::Border b, int left, int right)
      : src_(src), step_(step), w_(roi.width), h_(roi.height), b_(b), left_(left), right_(right) {}
  void fill(int y, Rvp8u* out) const {
    const int my =
        filter::map_index(y, h_, b_.base, b_.in_mem(filter::kTop), b_.in_mem(filter::kBottom));
    const Rvp8u* s = row(src_, step_, my);
    avx2::unpack_bits(s, out + left_, w_);
    for (int x = -left_; x < 0; ++x) out[x + left_] = bit(s, x);
    for (int x = w_; x < w_ + right_; ++x) out[x + left_] = bit(s, x);
  }

 private:
  Rvp8u bit(const Rvp8u* s, int x) const {
    const int mx =
        filter::map_index(x, w_, b_.base, b_.in_mem(filter::kLeft), b_.in_mem(filter::kRight));
    // Pixels left of the ROI (in memory) sit in the bytes before it: floor division.
    const int byte = mx >> 3;
    return (s[byte] >> (7 - (mx & 7))) & 1;
  }
  const Rvp8u* src_;
  int step_, w_, h_;
  filter::Border b_;
  int left_, right_;
};

// Output rows written in place.
template <class T>
struct PlainSink {
  T* dst;
  int step;
  T* target(int y) const { return row(dst, step, y); }
  void commit(int, const T*) const {}
};

// Output rows of an image too large for the cache: computed in a spare row, then written with
// cache-bypassing stores (the caller fences once at the end with finish_streaming()).
template <class T>
struct StreamSink {
  T* dst;
  int step;
  int n;  // elements per row
  T* spare;
  T* target(int) const { return spare; }
  void commit(int y, const T* out) const {
    uint8_t* d = reinterpret_cast<uint8_t*>(row(dst, step, y));
    const uint8_t* s = reinterpret_cast<const uint8_t*>(out);
    const int64_t bytes = int64_t{n} * int64_t(sizeof(T));
    int64_t head = std::min<int64_t>(bytes, (-reinterpret_cast<uintptr_t>(d)) & 31);
    std::memcpy(d, s, size_t(head));
    int64_t i = head;
    for (; i + 32 <= bytes; i += 32)
      _mm256_stream_si256(reinterpret_cast<__m256i*>(d + i),
                          _mm256_loadu_si256(reinterpret_cast<const __m256i*>(s + i)));
    std::memcpy(d + i, s + i, size_t(bytes - i));
  }
};
inline void finish_streaming() { _mm_sfence(); }

// Output rows of a 1u image: computed as bytes in a spare row, then packed.
struct BitSink {
  Rvp8u* dst;
  int step;
  int width;
  Rvp8u* spare;
  Rvp8u* target(int) const { return spare; }
  void commit(int y, const Rvp8u* bytes) const { avx2::pack_bits(bytes, row(dst, step, y), width); }
};

inline int ring_slot(int j, int n) {
  const int m = j % n;
  return m < 0 ? m + n : m;
}

// Runs the plan: rows come from `rows`, results go to `sink`, `work` is the carved area of
// work_need() bytes (already aligned). Not used for maskEmpty.
template <Extremum E, class T, class Rows, class Sink>
void run_plan(const Plan& p, const Rows& rows, const Sink& sink, uint8_t* work) {
  const Shape shape{p.width, p.mw, p.mh, p.channels, int(sizeof(T))};
  const int64_t rb = bordered_row_bytes(shape);
  const int c = p.channels;
  const int nb = (p.width + p.mw - 1) * c;  // elements of a bordered row
  const int n = p.width * c;                // elements of an output row
  const T** table = reinterpret_cast<const T**>(work);
  T* ring = reinterpret_cast<T*>(work + table_bytes(shape));
  T* spare = reinterpret_cast<T*>(work + table_bytes(shape) + p.mh * rb);
  auto slot = [&](int j) {
    return reinterpret_cast<T*>(reinterpret_cast<uint8_t*>(ring) + ring_slot(j, p.mh) * rb);
  };

  const bool rect = p.kind == kRect;
  const int rw = p.rect[0], rh = p.rect[1];
  const int c0 = p.ax - p.rect[2], r0 = p.ay - p.rect[3];  // rectangle's first column, row
  auto load = [&](int j) {
    T* s = slot(j);
    rows.fill(j, s);
    if (rect) window_inplace<E, T>(s, nb, rw, c);
  };

  // Runs, sorted by length: (first column, length) per group, rows listed in mask order.
  int groups = 0;
  int32_t* run_first = nullptr;
  int32_t* run_len = nullptr;
  if (p.kind == kRuns) {
    // Table layout inside the 16*mh bytes: mh row indices' lengths, then per-group data.
    run_first = reinterpret_cast<int32_t*>(reinterpret_cast<uint8_t*>(table) + 8 * p.mh);
    run_len = run_first + p.mh;
    for (int r = 0; r < p.mh; ++r) {
      const Rvp8u* m = p.mask + int64_t{r} * p.mw;
      int f = 0;
      while (f < p.mw && m[f] == 0) ++f;
      if (f == p.mw) continue;
      int e = f;
      while (e < p.mw && m[e] != 0) ++e;
      int g = 0;
      while (g < groups && run_len[g] != e - f) ++g;
      if (g == groups) {
        run_first[g] = f;
        run_len[g] = e - f;
        ++groups;
      }
    }
  }

  for (int j = -p.ay; j < p.mh - p.ay - 1; ++j) load(j);
  for (int y = 0; y < p.height; ++y) {
    load(y - p.ay + p.mh - 1);
    T* out = sink.target(y);
    if (rect) {
      for (int t = 0; t < rh; ++t) table[t] = slot(y - p.ay + r0 + t) + c0 * c;
      reduce_rows<E, T>(out, table, rh, n);
    } else if (p.kind == kRuns) {
      for (int g = 0; g < groups; ++g) {
        // A row's single run is [f, f + len) exactly when both ends are set and the bytes
        // just outside are not.
        const int f = run_first[g], e = run_first[g] + run_len[g];
        int cnt = 0;
        for (int r = 0; r < p.mh; ++r) {
          const Rvp8u* m = p.mask + int64_t{r} * p.mw;
          if (m[f] != 0 && m[e - 1] != 0 && (e == p.mw || m[e] == 0) && (f == 0 || m[f - 1] == 0))
            table[cnt++] = slot(y - p.ay + r);
        }
        reduce_rows<E, T>(spare, table, cnt, nb);
        window_into<E, T>(out, spare, nb, n, run_len[g], c, f * c, g > 0);
      }
    } else {
      const T* chunk[16];
      int cnt = 0;
      bool first = true;
      for (int r = 0; r < p.mh; ++r) {
        const Rvp8u* m = p.mask + int64_t{r} * p.mw;
        const T* base = slot(y - p.ay + r);
        for (int k = 0; k < p.mw; ++k) {
          if (m[k] == 0) continue;
          if (cnt == 16) {
            reduce_rows<E, T>(out, chunk, cnt, n);
            first = false;
            cnt = 0;
          }
          if (cnt == 0 && !first) chunk[cnt++] = out;
          chunk[cnt++] = base + k * c;
        }
      }
      reduce_rows<E, T>(out, chunk, cnt, n);
    }
    sink.commit(y, out);
  }
}

// maskRect when source and destination differ: per output row, the extremum of the
// rectangle's source rows (read in place, rows mapped by the replicate rule) goes into a
// bordered spare row, its edges are replicated, and the horizontal window writes the output.
// Two passes per row, no copy of the source.
template <Extremum E, class T, class Sink>
void run_rect_direct(const Plan& p, const T* src, int step, const Sink& sink, uint8_t* work) {
  const Shape shape{p.width, p.mw, p.mh, p.channels, int(sizeof(T))};
  const int c = p.channels, n = p.width * c;
  const int rw = p.rect[0], rh = p.rect[1];
  const int off = -p.rect[2], r0 = p.ay - p.rect[3];  // window start relative to x; first row
  const int left = std::max(0, -off), right = std::max(0, off + rw - 1);
  const T** table = reinterpret_cast<const T**>(work);
  T* tmp = reinterpret_cast<T*>(work + table_bytes(shape));
  const int n_tmp = (p.width + left + right) * c;
  T* tmp2 = tmp + bordered_row_bytes(shape) / int64_t(sizeof(T));
  auto finish = [&](int y, T* t) {
    T* mid = t + left * c;
    for (int i = 0; i < left; ++i)
      for (int ch = 0; ch < c; ++ch) t[i * c + ch] = mid[ch];
    for (int i = 0; i < right; ++i)
      for (int ch = 0; ch < c; ++ch) mid[n + i * c + ch] = mid[n - c + ch];
    T* out = sink.target(y);
    window_into<E, T>(out, t, n_tmp, n, rw, c, (off + left) * c, false);
    sink.commit(y, out);
  };
  // Output rows in pairs where the rectangle has two rows or more: the rows both windows
  // cover are combined once.
  for (int y = 0; y < p.height;) {
    const bool pair = rh >= 2 && y + 1 < p.height;
    for (int t = 0; t < rh + (pair ? 1 : 0); ++t) {
      const int j = std::clamp(y - p.ay + r0 + t, 0, p.height - 1);
      table[t] = row(src, step, j);
    }
    if (pair) {
      avx2::reduce_pair<E, T>(tmp + left * c, tmp2 + left * c, table, rh, n);
      finish(y, tmp);
      finish(y + 1, tmp2);
      y += 2;
    } else {
      reduce_rows<E, T>(tmp + left * c, table, rh, n);
      finish(y, tmp);
      y += 1;
    }
  }
}

}  // namespace rvp::morph
