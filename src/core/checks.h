// Argument checks shared by every export. Each returns rvpStsNoErr (0) or the first failing
// status, so a driver reads as the rule it enforces:
//   if (auto st = any_null(pSrc, pDst)) return st;
//   if (auto st = check_roi(roiSize)) return st;
//   if (auto st = check_steps({image<Rvp16u>(srcStep, roiSize), image<Rvp32f>(dstStep, roiSize)}))
//     return st;
#pragma once

#include <cstdint>
#include <initializer_list>

#include "rvpcv.h"

namespace rvp {

// Null-pointer check over all pointer arguments, in argument order.
template <class... P>
inline RvpStatus any_null(const P*... ptrs) {
  const bool null = ((ptrs == nullptr) || ...);
  return null ? rvpStsNullPtrErr : rvpStsNoErr;
}

inline RvpStatus check_roi(RvpiSize roi) {
  return (roi.width < 1 || roi.height < 1) ? rvpStsSizeErr : rvpStsNoErr;
}

// One image's step against its row. The row width is computed in 64 bits so that a huge width
// is refused as a step error instead of wrapping; a negative step is below any row width.
struct StepRule {
  int step;
  int64_t row_bytes;
  int elem_size;
};

template <class T>
inline StepRule image(int step, RvpiSize roi, int channels = 1) {
  return {step, int64_t{roi.width} * channels * int64_t{sizeof(T)}, int{sizeof(T)}};
}

// A mask is one byte per pixel whatever the data type.
inline StepRule mask_image(int step, RvpiSize roi) { return image<Rvp8u>(step, roi); }

// A group of images is tested for -14 first (every image), then for -108 (every multi-byte
// image). Callers list groups in the order the family prescribes.
inline RvpStatus check_steps(std::initializer_list<StepRule> group) {
  for (const StepRule& r : group)
    if (int64_t{r.step} < r.row_bytes) return rvpStsStepErr;
  for (const StepRule& r : group)
    if (r.elem_size > 1 && r.step % r.elem_size != 0) return rvpStsNotEvenStepErr;
  return rvpStsNoErr;
}

}  // namespace rvp

namespace rvp {
// A placeholder for an image a member does not have: passes every step test.
constexpr StepRule kNoImage{0, 0, 1};
}  // namespace rvp

namespace rvp {
// Element-wise work over images whose rows follow each other without gaps can run as one long
// row: fewer row starts and prologues, same results. Returns the region to walk; absent images
// (kNoImage) do not prevent it.
inline RvpiSize packed_as_one_row(RvpiSize roi, std::initializer_list<StepRule> images) {
  for (const StepRule& r : images)
    if (int64_t{r.step} != r.row_bytes) return roi;
  const int64_t n = int64_t{roi.width} * roi.height;
  return n <= INT32_MAX ? RvpiSize{static_cast<int>(n), 1} : roi;
}
}  // namespace rvp
