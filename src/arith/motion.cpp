// Motion-history update: forget history older than the duration, stamp the current silhouette.
#include <cstdint>
#include <cstring>

#include "arith/motion_kernels.h"
#include "core/checks.h"
#include "core/image.h"
#include "rvpcv.h"

namespace rvp::arith {
namespace {

template <class S>
RvpStatus update_motion_history(const S* silh, int silhStep, Rvp32f* mhi, int mhiStep, RvpiSize roi,
                                Rvp32f timestamp, Rvp32f duration) {
  if (auto st = any_null(silh, mhi)) return st;
  if (auto st = check_roi(roi)) return st;
  if (auto st = check_steps({image<S>(silhStep, roi), image<Rvp32f>(mhiStep, roi)})) return st;
  if (0.0f > duration) return rvpStsOutOfRangeErr;

  const Rvp32f t = timestamp - duration;
  int32_t t_bits, stamp_bits;
  std::memcpy(&t_bits, &t, 4);
  std::memcpy(&stamp_bits, &timestamp, 4);
  const int32_t key_t = order_key(t_bits);
  for (int y = 0; y < roi.height; ++y) {
    const MotionKernel<S> k{row(silh, silhStep, y), row(mhi, mhiStep, y), key_t, stamp_bits};
    simd::run_row(k, roi.width);
  }
  return rvpStsNoErr;
}

}  // namespace
}  // namespace rvp::arith

RvpStatus rvpiUpdateMotionHistory_8u32f_C1IR(const Rvp8u* pSilhouette, int silhStep, Rvp32f* pMHI,
                                             int mhiStep, RvpiSize roiSize, Rvp32f timestamp,
                                             Rvp32f mhiDuration) {
  return rvp::arith::update_motion_history(pSilhouette, silhStep, pMHI, mhiStep, roiSize, timestamp,
                                           mhiDuration);
}
RvpStatus rvpiUpdateMotionHistory_16u32f_C1IR(const Rvp16u* pSilhouette, int silhStep, Rvp32f* pMHI,
                                              int mhiStep, RvpiSize roiSize, Rvp32f timestamp,
                                              Rvp32f mhiDuration) {
  return rvp::arith::update_motion_history(pSilhouette, silhStep, pMHI, mhiStep, roiSize, timestamp,
                                           mhiDuration);
}
RvpStatus rvpiUpdateMotionHistory_32f_C1IR(const Rvp32f* pSilhouette, int silhStep, Rvp32f* pMHI,
                                           int mhiStep, RvpiSize roiSize, Rvp32f timestamp,
                                           Rvp32f mhiDuration) {
  return rvp::arith::update_motion_history(pSilhouette, silhStep, pMHI, mhiStep, roiSize, timestamp,
                                           mhiDuration);
}
