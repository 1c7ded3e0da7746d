// Connected-component labelling internals, shared by the exports and their tests.
//
// Labels follow the raster order of each region's first pixel, as scanning the image and
// flood-filling every unlabelled pixel would give them. Two ways to get them:
//  - label_by_runs: a two-pass union-find over horizontal runs of nonzero pixels. Union always
//    keeps the smaller run index as the root, so a region's root is its first run in raster
//    order and numbering roots in index order reproduces the fill order. It applies only when
//    no fill could have run out of stack: every region has at most as many runs as the fill
//    stack in the same buffer holds (a fill never has more pending spans than its region has
//    runs). Otherwise it reports false without writing the image.
//  - label_by_fills: the definition itself, threshold then scan and fill; used when the runs
//    path does not apply.
#pragma once

#include <cstdint>

#include "rvpcv.h"

namespace rvp::seg {

// Runs [start, end] (inclusive) of nonzero pixels of one row, as pairs; returns the count.
int row_runs(const Rvp8u* row, int w, int32_t* runs);
int row_runs(const Rvp16u* row, int w, int32_t* runs);

// Labels src's nonzero pixels into dst (which may be src itself). Returns false, having
// written nothing, when the buffer is too small for the runs or a region has more runs than
// the fill stack of this buffer holds.
template <class S, class D>
bool label_by_runs(const S* src, int src_step, D* dst, int dst_step, int w, int h, int min_label,
                   int max_label, bool conn8, uint8_t* buf, int64_t buf_bytes, int* count);

// Scan-and-fill labelling of an image that holds 0 and `marker` only.
template <class D>
int label_by_fills(D* img, int step, int w, int h, D marker, int min_label, int max_label,
                   bool conn8, uint8_t* buf, int64_t buf_bytes);

}  // namespace rvp::seg
