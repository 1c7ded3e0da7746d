// The morphology state: what the shape analyser stores about a structuring element, the size
// formulas of the state and the work area, and the analyser itself.
#pragma once

#include <algorithm>
#include <climits>
#include <cstdint>
#include <cstring>

#include "core/memory.h"
#include "core/scratch.h"
#include "rvpcv.h"

namespace rvp::morph {

enum Kind : int32_t { kGeneral = 0, kRect = 1, kRuns = 2, kEmpty = 3 };

// Identifies a state made by this library (and which interface made it).
constexpr uint32_t kBorderStateId = 0x4D524231;  // "MRB1"
constexpr uint32_t kOlderStateId = 0x4D524F31;   // "MRO1"

// The fields at the start of the state. The state lives in caller memory of any alignment, so
// it is always copied in and out with memcpy.
struct StateHeader {
  int32_t max_width;  // widest ROI accepted later
  int32_t mask_height;
  int32_t type_code;  // 1 (8u and 1u), 5 (16u), 7 (16s), 13 (32f)
  int32_t channels;
  int32_t roi_width;   // the same width again
  int32_t reserved;    // -1
  int32_t total_size;  // bytes of the whole state
  int32_t kind;
  int32_t rect[4];  // maskRect: width, height, anchor x and y relative to the rectangle
  int32_t mask_width;
  int32_t anchor_x;
  int32_t anchor_y;
  int32_t work_offset;  // older interface: where the embedded work area starts; 0 otherwise
  int32_t work_size;
  uint32_t id;
  int32_t bits;  // 1 for the bit-packed 1u state
};
constexpr int kHeaderBytes = 96;  // header, then the mask copy
static_assert(sizeof(StateHeader) <= kHeaderBytes, "state header");

inline int64_t r16(int64_t v) { return round_up(v, 16); }

// Everything the size formulas depend on.
struct Shape {
  int width;   // ROI width in pixels
  int mw, mh;  // mask size
  int channels;
  int elem;  // bytes per element of the working rows (1u rows work unpacked: 1)
};

inline int64_t mask_area(const Shape& s) { return r16(int64_t{s.mw} * s.mh); }

// One bordered working row: the ROI plus mw - 1 pixels of border, 32-byte aligned.
inline int64_t bordered_row_bytes(const Shape& s) {
  return round_up((int64_t{s.width} + s.mw - 1) * s.channels * s.elem, kScratchAlign);
}

// What the processing carves, in this order: a table of 16 bytes per mask row, a ring of mh
// bordered rows and two spare bordered rows (plus the alignment of the caller's pointer).
inline int64_t table_bytes(const Shape& s) { return round_up(16 * int64_t{s.mh}, kScratchAlign); }
inline int64_t work_need(const Shape& s) {
  return kScratchAlign + table_bytes(s) + (int64_t{s.mh} + 2) * bordered_row_bytes(s);
}

// The separable rectangle filter: mh * 2 * (W*c*e + 32) + 32 + mh * 32, or what the filter
// carves (a ring of mh bordered rows) when a mask wider than the ROI needs more.
inline int64_t rect_filter_bytes(const Shape& s) {
  const int64_t formula =
      int64_t{s.mh} * 2 * (int64_t{s.width} * s.channels * s.elem + 32) + 32 + int64_t{s.mh} * 32;
  const int64_t need = kScratchAlign + table_bytes(s) + int64_t{s.mh} * bordered_row_bytes(s);
  return std::max(formula, need);
}

// Rows per block of the general path: the smallest block height for which the row-block area
// (mh*s + 1) * (W*c*e + 32) holds the working rows.
inline int64_t block_rows(const Shape& s) {
  const int64_t row = int64_t{s.width} * s.channels * s.elem + 32;
  const int64_t need = work_need(s) - row;
  const int64_t per = int64_t{s.mh} * row;
  return std::max<int64_t>(1, (need + per - 1) / per);
}

inline int64_t work_area_bytes(const Shape& s) {
  const int64_t sb = block_rows(s);
  const int64_t row_block =
      (int64_t{s.mh} * sb + 1) * (int64_t{s.width} * s.channels * s.elem + 32) + 40 +
      int64_t{s.mh} * 40;
  return std::max(rect_filter_bytes(s), row_block) + r16(24 * sb) + mask_area(s) +
         r16(16 * sb + 64);
}

inline int64_t border_state_bytes(const Shape& s, bool bits) {
  const int64_t a = mask_area(s);
  return bits ? 3 * a + 96 : 33 * a + 16 * int64_t{s.mh} + 160;
}

// Result of the analysis of a mask.
struct Analysis {
  Kind kind;
  int32_t rect[4];
};

// Classifies the mask. `elem_type` and `channels` only matter for the 32f area thresholds.
inline Analysis analyse_mask(const Rvp8u* mask, int mw, int mh, int ax, int ay, int type_code,
                             int channels) {
  Analysis a{kEmpty, {1, 1, 0, 0}};
  uint8_t any = 0;
  for (int64_t i = 0; i < int64_t{mw} * mh; ++i) any |= mask[i];
  if (any == 0) return a;

  // Per row: first nonzero column, run end, whether the row is one run.
  int first_row = -1, last_row = -1, nonzero_rows = 0;
  bool one_run_each = true, same_run = true, consecutive = true;
  int ref_first = -1, ref_len = -1, min_first = INT_MAX, max_end = 0;
  for (int r = 0; r < mh; ++r) {
    const Rvp8u* m = mask + int64_t{r} * mw;
    int f = 0;
    while (f < mw && m[f] == 0) ++f;
    if (f == mw) continue;
    int e = f;
    while (e < mw && m[e] != 0) ++e;
    for (int k = e; k < mw; ++k)
      if (m[k] != 0) one_run_each = false;
    if (first_row < 0) first_row = r;
    if (last_row >= 0 && last_row != r - 1) consecutive = false;
    last_row = r;
    ++nonzero_rows;
    if (ref_first < 0) {
      ref_first = f;
      ref_len = e - f;
    } else if (f != ref_first || e - f != ref_len) {
      same_run = false;
    }
    min_first = std::min(min_first, f);
    max_end = std::max(max_end, e);
  }

  if (one_run_each && same_run && consecutive) {
    a.kind = kRect;
    a.rect[0] = max_end - min_first;
    a.rect[1] = nonzero_rows;
    a.rect[2] = ax - min_first;
    a.rect[3] = ay - first_row;
    return a;
  }
  a.kind = kGeneral;
  if (!one_run_each || ay < first_row || ay > last_row) return a;
  // Equal run lengths must start at the same column.
  for (int r = 0; r < mh; ++r) {
    const Rvp8u* m = mask + int64_t{r} * mw;
    int f = 0;
    while (f < mw && m[f] == 0) ++f;
    if (f == mw) continue;
    int e = f;
    while (e < mw && m[e] != 0) ++e;
    for (int q = r + 1; q < mh; ++q) {
      const Rvp8u* n = mask + int64_t{q} * mw;
      int g = 0;
      while (g < mw && n[g] == 0) ++g;
      if (g == mw) continue;
      int h = g;
      while (h < mw && n[h] != 0) ++h;
      if (h - g == e - f && g != f) return a;
    }
  }
  const int64_t area = int64_t{mw} * mh;
  if (type_code == rvp32f && ((channels == 3 && area < 17) || (channels == 4 && area < 49)))
    return a;
  a.kind = kRuns;
  return a;
}

enum class Mode { Size = 0, Init = 1, Allocate = 2 };
enum class Flavour { Border, Older };

// The one shape analyser behind every initialisation entry point.
//   Size: writes the state size (older interface: state plus work area) to *size.
//   Init: builds the state in `state`.
//   Allocate: gets the memory from rvpMalloc, builds the state, stores the pointer in *pp.
inline RvpStatus analyse(int type_code, int channels, bool bits, int roi_width, const Rvp8u* mask,
                         RvpiSize msize, RvpiPoint anchor, Mode mode, Flavour flavour, void* state,
                         int* size, void** pp) {
  if (mask == nullptr) return rvpStsNullPtrErr;
  if (roi_width < 1 || msize.width < 1 || msize.height < 1) return rvpStsSizeErr;
  if (anchor.x < 0 || anchor.x >= msize.width || anchor.y < 0 || anchor.y >= msize.height)
    return rvpStsAnchorErr;
  if ((mode == Mode::Size && size == nullptr) || (mode == Mode::Init && state == nullptr) ||
      (mode == Mode::Allocate && pp == nullptr))
    return rvpStsNullPtrErr;

  const int elem = type_code == rvp32f ? 4 : (type_code == rvp8u ? 1 : 2);
  const Shape s{roi_width, msize.width, msize.height, channels, elem};
  const Analysis an =
      analyse_mask(mask, msize.width, msize.height, anchor.x, anchor.y, type_code, channels);
  const int64_t a = mask_area(s);
  int64_t state_bytes = border_state_bytes(s, bits);
  int64_t work_offset = 0, work_bytes = 0;
  if (flavour == Flavour::Older) {
    if (an.kind == kEmpty) {
      state_bytes = a + 96;
    } else {
      work_offset = state_bytes;
      work_bytes = work_area_bytes(s);
      state_bytes += work_bytes;
    }
  }
  if (state_bytes > INT_MAX) return rvpStsSizeErr;
  if (mode == Mode::Size) {
    *size = int(state_bytes);
    return rvpStsNoErr;
  }
  uint8_t* mem = static_cast<uint8_t*>(state);
  if (mode == Mode::Allocate) {
    mem = static_cast<uint8_t*>(alloc_bytes(int(state_bytes)));
    if (mem == nullptr) return rvpStsMemAllocErr;
  }
  StateHeader h{};
  h.max_width = roi_width;
  h.mask_height = msize.height;
  h.type_code = type_code;
  h.channels = channels;
  h.roi_width = roi_width;
  h.reserved = -1;
  h.total_size = int32_t(state_bytes);
  h.kind = an.kind;
  std::memcpy(h.rect, an.rect, sizeof h.rect);
  h.mask_width = msize.width;
  h.anchor_x = anchor.x;
  h.anchor_y = anchor.y;
  h.work_offset = int32_t(work_offset);
  h.work_size = int32_t(work_bytes);
  h.id = flavour == Flavour::Border ? kBorderStateId : kOlderStateId;
  h.bits = bits ? 1 : 0;
  std::memcpy(mem, &h, sizeof h);
  std::memset(mem + sizeof h, 0, kHeaderBytes - sizeof h);
  const int64_t n = int64_t{msize.width} * msize.height;
  std::memcpy(mem + kHeaderBytes, mask, size_t(n));
  std::memset(mem + kHeaderBytes + n, 0, size_t(a - n));
  if (mode == Mode::Allocate) *pp = mem;
  return rvpStsNoErr;
}

inline StateHeader read_header(const void* state) {
  StateHeader h;
  std::memcpy(&h, state, sizeof h);
  return h;
}

inline const Rvp8u* state_mask(const void* state) {
  return static_cast<const Rvp8u*>(state) + kHeaderBytes;
}

}  // namespace rvp::morph
