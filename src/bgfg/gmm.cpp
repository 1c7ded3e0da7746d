// Gaussian-mixture background model: buffer size, state layout, per-frame update and the
// background rendering.
#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstring>

#include "bgfg/gmm_kernels.h"
#include "core/checks.h"
#include "core/image.h"
#include "core/memory.h"
#include "core/scratch.h"
#include "rvpcv.h"

static_assert(sizeof(RvpFGMModel) == 48, "the parameter record is 48 bytes");
static_assert(offsetof(RvpFGMModel, varInit) == 12, "4 reserved bytes follow numGauss");
static_assert(offsetof(RvpFGMModel, shadowValue) == 40 && offsetof(RvpFGMModel, shadowTau) == 44,
              "parameter record layout");

namespace rvp::bgfg {

namespace {

// The mode count is one byte per pixel.
constexpr int kMaxGauss = 255;

constexpr int64_t align32(int64_t v) { return (v + 31) / 32 * 32; }

// Bytes of the caller's buffer for a valid size and component count; -1 past a signed 32-bit
// count. Products are bounded before they are formed, so nothing overflows.
int64_t buffer_bytes(RvpiSize roi, int n) {
  const int64_t pixels = int64_t{roi.width} * roi.height;
  if (pixels > INT_MAX || pixels * n > INT_MAX) return -1;
  const int64_t cells = pixels * n;
  const int64_t total = align32(16 * cells) + 3 * align32(8 * int64_t{n}) + 416 + align32(pixels) +
                        2 * align32(4 * cells);
  return total > INT_MAX ? -1 : total;
}

}  // namespace

namespace {

RvpStatus buffer_size(RvpiSize roi, int max_gauss, int* size) {
  if (auto st = any_null(size)) return st;
  if (auto st = check_roi(roi)) return st;
  if (max_gauss < 1 || max_gauss > kMaxGauss) return rvpStsBadArgErr;
  const int64_t bytes = buffer_bytes(roi, max_gauss);
  if (bytes < 0) return rvpStsSizeErr;
  *size = static_cast<int>(bytes);
  return rvpStsNoErr;
}

RvpStatus init(RvpiSize roi, int max_gauss, const RvpFGMModel* model, Rvp8u* state) {
  if (auto st = any_null(model, state)) return st;
  if (auto st = check_roi(roi)) return st;
  if (max_gauss < 1 || max_gauss > kMaxGauss) return rvpStsBadArgErr;
  const int64_t bytes = buffer_bytes(roi, max_gauss);
  if (bytes < 0) return rvpStsSizeErr;

  zero_8u(state, static_cast<int>(bytes));
  GmmHeader* h = state_header(state);
  h->frame_count = 0;
  h->max_gauss = max_gauss;
  h->width = roi.width;
  h->height = roi.height;
  std::memcpy(&h->model, model, sizeof(RvpFGMModel));
  h->model.numGauss = max_gauss;
  GmmHeader* carved;
  const GmmPlanes g = carve_planes(state, &carved);
  for (int k = 0; k < max_gauss; ++k) std::fill_n(g.order + k * g.plane, g.plane, k);
  return rvpStsNoErr;
}

// The per-frame calls check, in order: null pointers, steps below 1, then the size, which
// must also be the one the state was prepared for (the planes are laid out for it).
RvpStatus check_size(RvpiSize roi, const Rvp8u* state) {
  if (auto st = check_roi(roi)) return st;
  // A header that does not describe a state for this region (never the case after Init) is
  // refused before its plane layout is trusted.
  const GmmHeader* h = state_header(state);
  const bool fits = h->width == roi.width && h->height == roi.height && h->max_gauss >= 1 &&
                    h->max_gauss <= kMaxGauss && h->model.numGauss >= 1 &&
                    h->model.numGauss <= h->max_gauss;
  return fits ? rvpStsNoErr : rvpStsSizeErr;
}

RvpStatus foreground(const Rvp8u* src, int src_step, Rvp8u* dst, int dst_step, RvpiSize roi,
                     Rvp8u* state, const RvpFGMModel* model, double learning_rate) {
  if (auto st = any_null(src, dst, state)) return st;
  if (src_step < 1 || dst_step < 1) return rvpStsStepErr;
  if (auto st = check_size(roi, state)) return st;
  GmmHeader* h;
  const GmmPlanes g = carve_planes(state, &h);
  if (model != nullptr && (model->numGauss < 1 || model->numGauss > h->max_gauss))
    return rvpStsBadArgErr;

  if (model != nullptr) std::memcpy(&h->model, model, sizeof(RvpFGMModel));
  const GmmParams q = frame_params(h->model, h->frame_count, learning_rate);
  if (h->frame_count < INT_MAX) ++h->frame_count;
  for (int y = 0; y < roi.height; ++y)
    avx2::update_row(g, q, int64_t{y} * roi.width, row(src, src_step, y), row(dst, dst_step, y),
                     roi.width);
  return rvpStsNoErr;
}

RvpStatus background(Rvp8u* dst, int dst_step, RvpiSize roi, const Rvp8u* state) {
  if (auto st = any_null(dst, state)) return st;
  if (dst_step < 1) return rvpStsStepErr;
  if (auto st = check_size(roi, state)) return st;
  GmmHeader* h;
  const GmmPlanes g = carve_planes(const_cast<Rvp8u*>(state), &h);  // only read below
  for (int y = 0; y < roi.height; ++y) {
    avx2::background_row(g, h->model.bgRatio, int64_t{y} * roi.width, row(dst, dst_step, y),
                         roi.width);
  }
  return rvpStsNoErr;
}

}  // namespace
}  // namespace rvp::bgfg

// ---- exports -------------------------------------------------------------------------------

RvpStatus rvpiFGMMGetBufferSize_8u_C3R(RvpiSize roiSize, int maxNGauss, int* pBufSize) {
  return rvp::bgfg::buffer_size(roiSize, maxNGauss, pBufSize);
}

RvpStatus rvpiFGMMInit_8u_C3R(RvpiSize roiSize, int maxNGauss, const RvpFGMModel* pModel,
                              Rvp8u* pState) {
  return rvp::bgfg::init(roiSize, maxNGauss, pModel, pState);
}

RvpStatus rvpiFGMMForeground_8u_C3R(const Rvp8u* pSrc, int srcStep, Rvp8u* pDst, int dstStep,
                                    RvpiSize roiSize, Rvp8u* pState, const RvpFGMModel* pModel,
                                    Rvp64f learningRate) {
  return rvp::bgfg::foreground(pSrc, srcStep, pDst, dstStep, roiSize, pState, pModel, learningRate);
}

RvpStatus rvpiFGMMBackground_8u_C3R(Rvp8u* pDst, int dstStep, RvpiSize roiSize,
                                    const Rvp8u* pState) {
  return rvp::bgfg::background(pDst, dstStep, roiSize, pState);
}
