// Runs a separable filter (a sum of one or more row-times-column terms) over a bordered
// source: each source row is widened through the border model once, filtered horizontally into
// a ring of K intermediate rows per term, and every output row combines the K rows around it.
// Working memory comes from the caller's buffer; `sep_buffer_bytes` is its size.
#pragma once

#include <cstdint>
#include <type_traits>

#include "core/image.h"
#include "core/scratch.h"
#include "filter/border.h"

namespace rvp::filter {

constexpr int kMaxTerms = 2;

// Sub-buffers in carving order: the bordered row, then terms*K ring rows.
template <class S, class I>
inline int64_t sep_buffer_bytes(RvpiSize roi, int K, int terms, int ch, int64_t extra = 0) {
  const int64_t row_bytes = round_up(int64_t{roi.width} * ch * int64_t{sizeof(I)}, kScratchAlign);
  const int64_t border_bytes = (int64_t{roi.width} + K - 1) * ch * int64_t{sizeof(S)};
  int64_t total = kScratchSlack + round_up(extra, kScratchAlign) +
                  round_up(border_bytes, kScratchAlign) + int64_t{terms} * K * row_bytes;
  if (K > 64) total += 2 * round_up(int64_t{terms} * K * int64_t{sizeof(void*)}, kScratchAlign);
  return total > INT32_MAX ? -1 : total;
}

// row_fn(term, const S* bordered_row, I* out, n) filters one bordered row into `out` (n values);
// col_fn(const I* const* rows, y) writes output row y from terms*K rows (term-major, row
// y - K/2 + k at index term*K + k). `carver` is positioned after any sub-buffers the caller took.
// B: element type of the bordered row handed to row_fn (the source type, or a wider one the
// source is converted to on the way; sep_buffer_bytes<B, I> then sizes the buffer).
template <class S, class I, class B = S, class RowFn, class ColFn>
void run_separable(const BorderedSource<S>& src, RvpiSize roi, int ch, int K, int terms,
                   ScratchCarver& carver, const RowFn& row_fn, const ColFn& col_fn) {
  const int r = K / 2;
  const int n = roi.width * ch;
  B* bordered = carver.take<B>((int64_t{roi.width} + K - 1) * ch);
  I* ring[kMaxTerms][64];
  I** ring_rows[kMaxTerms];
  // Rings longer than the fixed table (long Gaussian kernels) keep their pointers in the buffer.
  I** big = K > 64 ? carver.take<I*>(int64_t{terms} * K) : nullptr;
  for (int t = 0; t < terms; ++t) ring_rows[t] = big ? big + t * K : ring[t];
  for (int t = 0; t < terms; ++t)
    for (int k = 0; k < K; ++k) ring_rows[t][k] = carver.take<I>(n);

  auto produce = [&](int j) {  // source row j into its ring slot (j + r) mod K
    if constexpr (std::is_same_v<B, S>)
      src.fill_row(j, bordered);
    else
      src.template fill_row_as<B>(j, bordered);
    const int slot = ((j + r) % K + K) % K;
    for (int t = 0; t < terms; ++t) row_fn(t, bordered, ring_rows[t][slot], n);
  };
  const I* list_small[kMaxTerms * 64];
  const I** list =
      big ? const_cast<const I**>(reinterpret_cast<I**>(carver.take<I*>(int64_t{terms} * K)))
          : list_small;
  for (int j = -r; j < r; ++j) produce(j);
  for (int y = 0; y < roi.height; ++y) {
    produce(y + r);
    for (int t = 0; t < terms; ++t)
      for (int k = 0; k < K; ++k) list[t * K + k] = ring_rows[t][(y + k) % K];
    col_fn(list, y);
  }
}

}  // namespace rvp::filter
