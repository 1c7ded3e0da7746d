// The rectangle kind on 8-bit rows when source and destination differ.
//
// The rectangle is separable: V is the extremum of the rectangle's source rows (rows mapped by
// the replicate rule, read in place from the caller's image), and an output pixel x is the
// extremum of V over columns x+off .. x+off+rw-1, clamped to the row.
//
// Per step, V of two (or, for tall rectangles, four) output rows goes to row buffers in one
// pass over the source rows that combines the rows they have in common once; then each output
// row takes its horizontal window from its buffer in a second pass, which stays in the
// first-level cache. Windows up to kRectDirectTaps wide read every tap; wider ones go through
// P, the extremum of `a` consecutive pixels, and then a few P taps spaced `a` pixels apart
// (the last one overlapping), so the cost grows with the square root of the width.
//
// Only the pixels whose window lies inside the row (the interior) go through the vector
// kernels; the few whose window is clamped take the extremum of the columns that remain,
// which is what replicating the edge pixel gives.
#pragma once

#include <immintrin.h>

#include <algorithm>
#include <cstdint>

#include "core/dispatch.h"
#include "core/image.h"
#include "morph/morph_engine.h"
#include "morph/morph_kernels.h"
#include "morph/morph_state.h"

namespace rvp::morph {

// Taps of one horizontal stage: out[i] = e(v[i + off[0]], ..., v[i + off[count-1]]).
struct Taps {
  int count;
  int off[8];
};

// Prefetch with intent to write: the destination rows of the next step are pulled into the
// cache in exclusive state while this step computes, so the stores later do not wait for the
// line to be fetched. Processors without the instruction execute it as a no-op.
inline void prefetch_for_write(const void* p) {
  asm volatile("prefetchw %0" : : "m"(*static_cast<const char*>(p)));
}

// Source rows that the next step reads for the first time go to the second-level cache ahead
// of the vertical pass that needs them.
inline void prefetch_to_l2(const void* p) {
  _mm_prefetch(static_cast<const char*>(p), _MM_HINT_T1);
}

namespace ref {

// Vertical extremum of one (d1 == nullptr) or two consecutive output rows over [i0, i1):
// d0 from src[0..rh-1], d1 from src[1..rh].
template <Extremum E>
void rect_rows(Rvp8u* d0, Rvp8u* d1, const Rvp8u* const* src, int rh, int i0, int i1) {
  for (int i = i0; i < i1; ++i) {
    Rvp8u e = src[0][i];
    for (int r = 1; r < rh; ++r) e = pick<E>(e, src[r][i]);
    d0[i] = e;
    if (d1 == nullptr) continue;
    e = src[1][i];
    for (int r = 2; r <= rh; ++r) e = pick<E>(e, src[r][i]);
    d1[i] = e;
  }
}

// Q of one output row over [0, n - c): e(V[i], V[i + c]), V from src[0..rh-1].
template <Extremum E>
void rect_rows_pair(Rvp8u* q, const Rvp8u* const* src, int rh, int c, int n) {
  auto v = [&](int i) {
    Rvp8u e = src[0][i];
    for (int r = 1; r < rh; ++r) e = pick<E>(e, src[r][i]);
    return e;
  };
  for (int i = 0; i + c < n; ++i) q[i] = pick<E>(v(i), v(i + c));
}

template <Extremum E>
void rect_taps(Rvp8u* out, const Rvp8u* v, const Taps& t, int i0, int i1) {
  for (int i = i0; i < i1; ++i) {
    Rvp8u e = v[i + t.off[0]];
    for (int k = 1; k < t.count; ++k) e = pick<E>(e, v[i + t.off[k]]);
    out[i] = e;
  }
}

}  // namespace ref

namespace avx2 {

using V8 = Vec<Rvp8u>;

template <Extremum E>
inline __m256i ext8(__m256i a, __m256i b) {
  return vpick<E, Rvp8u>(a, b);
}

// The kernels cover [i0, i1) (i1 - i0 >= 32) with 32-byte blocks from i0, except that the
// window kernel, after its first block, moves to blocks at which the output row is 32-byte
// aligned (stores that split a cache line cost twice); a ragged end gets one last block ending
// at i1. Overlapping blocks
// recompute values already written, which is harmless because no kernel reads what it writes.
inline int first_aligned(const void* base, int i0) {
  const int mis = int(reinterpret_cast<uintptr_t>(base) + unsigned(i0)) & 31;
  return i0 + (mis == 0 ? 32 : 32 - mis);
}

template <Extremum E, int RH>
void rect_rows_fixed(Rvp8u* d0, Rvp8u* d1, const Rvp8u* const* list, int rh_dyn, int i0, int i1) {
  const int rh = RH > 0 ? RH : rh_dyn;
  const Rvp8u* s[RH > 0 ? RH + 1 : 1];
  if constexpr (RH > 0)
    for (int r = 0; r < RH; ++r) s[r] = list[r];
  auto at = [&](int r) {
    if constexpr (RH > 0)
      return s[r];
    else
      return list[r];
  };
  const Rvp8u* last = d1 ? list[rh] : nullptr;
  auto one = [&](int i) __attribute__((always_inline)) {
    __m256i v = V8::load(at(0) + i);
#pragma GCC unroll 8
    for (int r = 1; r < rh; ++r) v = ext8<E>(v, V8::load(at(r) + i));
    V8::store(d0 + i, v);
  };
  auto two = [&](int i) __attribute__((always_inline)) {
    if (rh == 1) {
      V8::store(d0 + i, V8::load(at(0) + i));
      V8::store(d1 + i, V8::load(last + i));
      return;
    }
    __m256i c = V8::load(at(1) + i);
#pragma GCC unroll 8
    for (int r = 2; r < rh; ++r) c = ext8<E>(c, V8::load(at(r) + i));
    V8::store(d0 + i, ext8<E>(V8::load(at(0) + i), c));
    V8::store(d1 + i, ext8<E>(c, V8::load(last + i)));
  };
  int i = i0;
  if (d1 == nullptr) {
    for (; i + 32 <= i1; i += 32) one(i);
    if (i < i1) one(i1 - 32);
  } else {
    for (; i + 32 <= i1; i += 32) two(i);
    if (i < i1) two(i1 - 32);
  }
}

template <Extremum E>
void rect_rows(Rvp8u* d0, Rvp8u* d1, const Rvp8u* const* src, int rh, int i0, int i1) {
  with_int<0, 1, 2, 3, 4, 5, 6, 7>(rh, [&](auto RH) {
    rect_rows_fixed<E, decltype(RH)::value>(d0, d1, src, rh, i0, i1);
  });
}

// Bytes C..C+31 of the 64 bytes cur:nxt.
template <int C>
inline __m256i shift_in(__m256i cur, __m256i nxt) {
  return _mm256_alignr_epi8(_mm256_permute2x128_si256(cur, nxt, 0x21), cur, C);
}

// Q[i] = e(V[i], V[i + C]) over [0, n - C) for one output row, V being the vertical extremum
// of list[0..RH-1]; each block's V comes from registers with the next block's.
template <Extremum E, int RH, int C>
void rect_rows_pair_fixed(Rvp8u* q, const Rvp8u* const* list, int n) {
  const Rvp8u* s[RH];
  for (int r = 0; r < RH; ++r) s[r] = list[r];
  auto vert = [&](int i) __attribute__((always_inline)) {
    __m256i v = V8::load(s[0] + i);
#pragma GCC unroll 8
    for (int r = 1; r < RH; ++r) v = ext8<E>(v, V8::load(s[r] + i));
    return v;
  };
  const int end = n - C;
  __m256i cur = vert(0);
  int i = 0;
  for (; i + 64 <= n; i += 32) {
    const __m256i nxt = vert(i + 32);
    V8::store(q + i, ext8<E>(cur, shift_in<C>(cur, nxt)));
    cur = nxt;
  }
  for (; i < end; i += 32) {
    const int b = std::min(i, end - 32);
    V8::store(q + b, ext8<E>(vert(b), vert(b + C)));
  }
}

// rh <= 7, c in {1, 3, 4}, n >= 64.
template <Extremum E>
void rect_rows_pair(Rvp8u* q, const Rvp8u* const* list, int rh, int c, int n) {
  with_int<7, 1, 2, 3, 4, 5, 6>(rh, [&](auto RH) {
    with_int<4, 1, 3>(c, [&](auto C) {
      rect_rows_pair_fixed<E, decltype(RH)::value, decltype(C)::value>(q, list, n);
    });
  });
}

// Four consecutive output rows of a vertical window of rh >= 4 rows, src[0..rh+2]: the rows
// all four share are combined once, and the ends through running extrema from each side.
template <Extremum E, int RH>
void rect_rows4_fixed(Rvp8u* const* d, const Rvp8u* const* list, int rh_dyn, int i0, int i1) {
  const int rh = RH > 0 ? RH : rh_dyn;
  const Rvp8u* s[RH > 0 ? RH + 3 : 1];
  if constexpr (RH > 0)
    for (int r = 0; r < RH + 3; ++r) s[r] = list[r];
  auto at = [&](int r) {
    if constexpr (RH > 0)
      return s[r];
    else
      return list[r];
  };
  Rvp8u* d0 = d[0];
  Rvp8u* d1 = d[1];
  Rvp8u* d2 = d[2];
  Rvp8u* d3 = d[3];
  auto four = [&](int i) __attribute__((always_inline)) {
    __m256i mid = V8::load(at(3) + i);
#pragma GCC unroll 16
    for (int r = 4; r < rh; ++r) mid = ext8<E>(mid, V8::load(at(r) + i));
    const __m256i pre2 = V8::load(at(2) + i);
    const __m256i pre1 = ext8<E>(V8::load(at(1) + i), pre2);
    const __m256i pre0 = ext8<E>(V8::load(at(0) + i), pre1);
    const __m256i suf1 = V8::load(at(rh) + i);
    const __m256i suf2 = ext8<E>(suf1, V8::load(at(rh + 1) + i));
    const __m256i suf3 = ext8<E>(suf2, V8::load(at(rh + 2) + i));
    V8::store(d0 + i, ext8<E>(pre0, mid));
    V8::store(d1 + i, ext8<E>(ext8<E>(pre1, mid), suf1));
    V8::store(d2 + i, ext8<E>(ext8<E>(pre2, mid), suf2));
    V8::store(d3 + i, ext8<E>(mid, suf3));
  };
  int i = i0;
  for (; i + 32 <= i1; i += 32) four(i);
  if (i < i1) four(i1 - 32);
}

template <Extremum E>
void rect_rows4(Rvp8u* const* d, const Rvp8u* const* src, int rh, int i0, int i1) {
  with_int<0, 4, 5, 6, 7, 15>(rh, [&](auto RH) {
    rect_rows4_fixed<E, decltype(RH)::value>(d, src, rh, i0, i1);
  });
}

template <Extremum E, int N>
void rect_taps_fixed(Rvp8u* out, const Rvp8u* v, const Taps& t, int i0, int i1, const Rvp8u* next,
                     const Rvp8u* ahead) {
  const Rvp8u* p[N];
  for (int k = 0; k < N; ++k) p[k] = v + t.off[k];
  auto one = [&](int i) __attribute__((always_inline)) {
    __m256i e = V8::load(p[0] + i);
#pragma GCC unroll 8
    for (int k = 1; k < N; ++k) e = ext8<E>(e, V8::load(p[k] + i));
    V8::store(out + i, e);
  };
  one(i0);
  int i = first_aligned(out, i0);
  // The loop without prefetches has no tests for them (intermediate passes never prefetch).
  if (next == nullptr && ahead == nullptr) {
    for (; i + 64 <= i1; i += 64) {
      one(i);
      one(i + 32);
    }
  } else {
    for (; i + 64 <= i1; i += 64) {
      if (next != nullptr) prefetch_for_write(next + i);
      if (ahead != nullptr) prefetch_to_l2(ahead + i);
      one(i);
      one(i + 32);
    }
  }
  for (; i < i1; i += 32) one(std::min(i, i1 - 32));
}

// `next` (may be null): a destination row of the next step to prefetch for writing; `ahead`
// (may be null): a source row to prefetch into the second-level cache.
template <Extremum E>
void rect_taps(Rvp8u* out, const Rvp8u* v, const Taps& t, int i0, int i1,
               const Rvp8u* next = nullptr, const Rvp8u* ahead = nullptr) {
  with_int<8, 1, 2, 3, 4, 5, 6, 7>(t.count, [&](auto N) {
    rect_taps_fixed<E, decltype(N)::value>(out, v, t, i0, i1, next, ahead);
  });
}

}  // namespace avx2

// Left and right pixels whose window is clamped by the row ends: the extremum over
// [max(0, x+off), min(w-1, x+off+rw-1)] as a running prefix (left) or suffix (right). Those
// windows only reach the first and last rw-1 pixels of V: vl holds V from pixel 0, vr holds V
// from pixel rbase on (rbase <= w - rw + 1 or 0).
template <Extremum E>
void rect_edges(Rvp8u* out, const Rvp8u* vl, const Rvp8u* vr, int rbase, int w, int c, int off,
                int rw, int left, int right) {
  for (int ch = 0; ch < c; ++ch) {
    Rvp8u acc = vl[ch];
    int end = 0;
    for (int x = 0; x < left; ++x) {
      const int e = std::clamp(x + off + rw - 1, 0, w - 1);
      for (; end < e; ++end) acc = pick<E>(acc, vl[(end + 1) * c + ch]);
      out[x * c + ch] = acc;
    }
    acc = vr[(w - 1 - rbase) * c + ch];
    int begin = w - 1;
    for (int x = w - 1; x >= w - right; --x) {
      const int s = std::clamp(x + off, 0, w - 1);
      for (; begin > s; --begin) acc = pick<E>(acc, vr[(begin - 1 - rbase) * c + ch]);
      out[x * c + ch] = acc;
    }
  }
}

constexpr int kRectDirectTaps = 8;
constexpr int kRectEdgeTaps = kRectDirectTaps;

// Geometry of the horizontal stages of one call.
struct RectLayout {
  int n;            // bytes of a row
  int lo, hi;       // interior bytes [lo, hi)
  int left, right;  // clamped pixels on each side
  bool two;         // two horizontal stages (P, then taps on P)
  Taps pre;         // P taps on V (two stages only)
  Taps fin;         // output taps on V or on P
  // One-stage windows whose clamped bytes fit in 16 on a side take those 16 bytes with byte
  // shuffles: tap k of a shift reaching past the row end reads V's first (or last) 16 bytes
  // through edge_idx[0][k] (or edge_idx[1][k]), which repeats the edge pixel of each channel.
  bool edge_vec[2];
  // One-stage windows of two or more pixels on rows that go one at a time take Q, the
  // extremum of each pixel and the next, straight from the vertical pass (the shifted copy of V
  // comes from registers), and then half as many taps on Q as they would on V.
  bool pairs;
  Taps qfin;
  alignas(16) uint8_t edge_idx[2][kRectEdgeTaps][16];
};

constexpr int kRectMaxWidth = 64;  // widest window the staged path takes
constexpr int kRectMinInterior = 64;
constexpr int kRectGroup4 = 8;  // shortest rectangle whose rows go four at a time
// Short rectangles take two output rows a step only while the source rows, V buffers and
// destination rows of a step stay in the first-level cache; otherwise the reloads from the
// next level cost more than the shared vertical work saves.
constexpr int64_t kRectPairBytes = 40 * 1024;
constexpr int kRectPrefetchBytes = 8192;
constexpr int kRectAheadBytes = 4096;
constexpr int kRectAheadRows = 4;
constexpr int kRectPairRows = 7;  // tallest window whose Q pass is unrolled

// False when the row is too narrow for the staged path (or the window too wide).
inline bool rect_layout(int width, int c, int rw, int rh, int off, RectLayout* L) {
  if (rw > kRectMaxWidth) return false;
  L->n = width * c;
  L->left = std::max(0, -off);
  L->right = std::max(0, off + rw - 1);
  L->lo = L->left * c;
  L->hi = L->n - L->right * c;
  if (L->hi - L->lo < kRectMinInterior) return false;
  L->two = rw > kRectDirectTaps;
  L->edge_vec[0] = L->edge_vec[1] = false;
  L->pairs = !L->two && rw >= 2 && (c == 1 || c == 3 || c == 4);
  if (!L->two) {
    L->fin.count = rw;
    for (int j = 0; j < rw; ++j) L->fin.off[j] = (off + j) * c;
    L->qfin.count = (rw + 1) / 2;
    for (int m = 0; m + 1 < L->qfin.count; ++m) L->qfin.off[m] = (off + 2 * m) * c;
    L->qfin.off[L->qfin.count - 1] = (off + rw - 2) * c;
    L->edge_vec[0] = L->left > 0 && L->lo <= 16;
    L->edge_vec[1] = L->right > 0 && L->right * c <= 16;
    for (int k = 0; k < rw; ++k) {
      const int sh = L->fin.off[k];
      for (int j = 0; j < 16; ++j) {
        // Left block [0, 16): bytes before the row read pixel 0 of their channel.
        L->edge_idx[0][k][j] = uint8_t(j + sh >= 0 ? j + sh : j % c);
        // Right block [n - 16, n): bytes past the row read the last pixel of their channel.
        const int ch = ((j - 16) % c + c) % c;
        L->edge_idx[1][k][j] = uint8_t(j + sh <= 15 ? j + sh : 16 - c + ch);
      }
    }
  } else {
    int a = 2;
    while (a * a < rw) ++a;
    const int t = (rw + a - 1) / a;
    L->pre.count = a;
    for (int j = 0; j < a; ++j) L->pre.off[j] = j * c;
    L->fin.count = t;
    for (int k = 0; k + 1 < t; ++k) L->fin.off[k] = (off + k * a) * c;
    L->fin.off[t - 1] = (off + rw - a) * c;
  }
  return true;
}

namespace avx2 {

template <Extremum E>
inline __m128i ext16(__m128i a, __m128i b) {
  if constexpr (E == Extremum::Max)
    return _mm_max_epu8(a, b);
  else
    return _mm_min_epu8(a, b);
}

// The clamped pixels of a one-stage window (L.edge_vec): the first and last 16 bytes of the
// output row from V. Interior bytes among them get the value the interior kernel gives them.
template <Extremum E>
void rect_edges(Rvp8u* out, const Rvp8u* v, const RectLayout& L) {
  const int n = L.n;
  const Taps& t = L.fin;
  auto ld = [](const Rvp8u* p) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(p)); };
  auto idx = [&](int side, int k) {
    return _mm_load_si128(reinterpret_cast<const __m128i*>(L.edge_idx[side][k]));
  };
  if (L.edge_vec[0]) {
    const __m128i first = ld(v);
    __m128i e = t.off[0] < 0 ? _mm_shuffle_epi8(first, idx(0, 0)) : ld(v + t.off[0]);
    for (int k = 1; k < t.count; ++k)
      e = ext16<E>(e, t.off[k] < 0 ? _mm_shuffle_epi8(first, idx(0, k)) : ld(v + t.off[k]));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out), e);
  }
  if (L.edge_vec[1]) {
    const Rvp8u* b = v + n - 16;
    const __m128i last = ld(b);
    __m128i e = t.off[0] > 0 ? _mm_shuffle_epi8(last, idx(1, 0)) : ld(b + t.off[0]);
    for (int k = 1; k < t.count; ++k)
      e = ext16<E>(e, t.off[k] > 0 ? _mm_shuffle_epi8(last, idx(1, k)) : ld(b + t.off[k]));
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out + n - 16), e);
  }
}

}  // namespace avx2

// The clamped pixels of one output row from its V: by shuffles where the layout allows,
// by running extrema otherwise. After the interior kernel, which the shuffled bytes overlap.
template <Extremum E>
void rect_edges_row(Rvp8u* out, const Rvp8u* v, const RectLayout& L, int w, int c, int off,
                    int rw) {
  avx2::rect_edges<E>(out, v, L);
  rect_edges<E>(out, v, v, 0, w, c, off, rw, L.edge_vec[0] ? 0 : L.left,
                L.edge_vec[1] ? 0 : L.right);
}

// Output rows y..y+g-1 (g = 1, 2 or 4). `src` holds the source rows rh + g - 1 rows from the
// rectangle's first; v[0..g-1] and p are row buffers of n bytes (p with two stages, or for Q;
// may be null otherwise);
// next[k] are destination rows of the next step, ahead[k] source rows it reads first (or null).
template <Extremum E>
void rect_rows_out(const RectLayout& L, const Rvp8u* const* src, int rh, int w, int c, int off,
                   int rw, int g, Rvp8u* const* out, Rvp8u* const* v, Rvp8u* p,
                   const Rvp8u* const* next, const Rvp8u* const* ahead) {
  const int n = L.n;
  if (g == 1 && L.pairs && rh <= kRectPairRows && p != nullptr) {
    avx2::rect_rows_pair<E>(p, src, rh, c, n);
    // V itself only where the clamped pixels at both ends read it.
    avx2::rect_rows<E>(v[0], nullptr, src, rh, 0, 64);
    avx2::rect_rows<E>(v[0], nullptr, src, rh, n - 64, n);
    avx2::rect_taps<E>(out[0], p, L.qfin, L.lo, L.hi, next[0], ahead[0]);
    rect_edges_row<E>(out[0], v[0], L, w, c, off, rw);
    return;
  }
  if (g == 4)
    avx2::rect_rows4<E>(v, src, rh, 0, n);
  else
    avx2::rect_rows<E>(v[0], g == 2 ? v[1] : nullptr, src, rh, 0, n);
  for (int k = 0; k < g; ++k) {
    const Rvp8u* h = v[k];
    if (L.two) {
      avx2::rect_taps<E>(p, v[k], L.pre, 0, n - L.pre.off[L.pre.count - 1]);
      h = p;
    }
    avx2::rect_taps<E>(out[k], h, L.fin, L.lo, L.hi, next[k], ahead[k]);
    rect_edges_row<E>(out[k], v[k], L, w, c, off, rw);
  }
}

// The rectangle kind through the staged path; false (nothing written) when it does not
// apply. `rows` bordered row buffers of the work area follow the pointer table (which holds
// two pointers per mask row).
template <Extremum E>
bool run_rect_fused(const Plan& p, const Rvp8u* src, int step, Rvp8u* dst, int dstep, uint8_t* work,
                    int rows) {
  const Shape shape{p.width, p.mw, p.mh, p.channels, 1};
  const int c = p.channels;
  const int rw = p.rect[0], rh = p.rect[1];
  const int off = -p.rect[2], r0 = p.ay - p.rect[3];
  RectLayout L;
  if (!rect_layout(p.width, c, rw, rh, off, &L)) return false;
  // Rows per step: four share the vertical work of tall rectangles best, two that of short
  // ones on narrow rows; each needs its own V buffer (plus one P buffer with two stages).
  const int extra = L.two ? 1 : 0;
  int group = 1;
  if (rh >= kRectGroup4 && rows >= 4 + extra)
    group = 4;
  else if (rh >= 2 && rows >= 2 + extra && (int64_t{rh} + 5) * L.n <= kRectPairBytes)
    group = 2;
  else if (rows < 1 + extra)
    return false;
  const Rvp8u** table = reinterpret_cast<const Rvp8u**>(work);
  const int64_t rb = bordered_row_bytes(shape);
  auto buf = [&](int k) { return work + table_bytes(shape) + k * rb; };
  Rvp8u* v[4] = {};
  for (int k = 0; k < group; ++k) v[k] = buf(k);
  // P of two stages, or Q of single rows when a buffer is left for it.
  Rvp8u* pbuf = L.two || rows > group ? buf(group) : nullptr;
  // The next step's destination rows are prefetched while they fit in the first-level cache
  // next to the source rows and buffers in use; wider rows would only evict those.
  const bool prefetch = int64_t{group} * L.n <= kRectPrefetchBytes;
  // The new source rows of the next step are prefetched on short rows under windows of four
  // rows or more; on longer rows, or when a step is short, the hardware prefetch does as well
  // and the extra requests only compete with it.
  const bool ahead_src = L.n <= kRectAheadBytes && rh >= kRectAheadRows;
  for (int y = 0; y < p.height;) {
    int g = std::min(group, p.height - y);
    if (g == 3) g = 2;
    for (int t = 0; t < rh + g - 1; ++t)
      table[t] = row(src, step, std::clamp(y - p.ay + r0 + t, 0, p.height - 1));
    Rvp8u* out[4] = {};
    const Rvp8u* next[4] = {};
    const Rvp8u* ahead[4] = {};
    for (int k = 0; k < g; ++k) {
      out[k] = row(dst, dstep, y + k);
      if (prefetch && y + g + k < p.height) next[k] = row(dst, dstep, y + g + k);
      // Row k of the next step's g new source rows (it follows this step's rh + g - 1).
      const int s = y + g - p.ay + r0 + rh - 1 + k;
      if (ahead_src && s >= 0 && s < p.height) ahead[k] = row(src, step, s);
    }
    rect_rows_out<E>(L, table, rh, p.width, c, off, rw, g, out, v, pbuf, next, ahead);
    y += g;
  }
  return true;
}

}  // namespace rvp::morph
