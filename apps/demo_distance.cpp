// Demo: distance maps of a thresholded photograph. The dark parts of the picture are the
// features; every other pixel shows its distance to the nearest one, exact Euclidean, by the
// 5x5 chamfer mask and by fast marching, scaled to the full gray range.
#include <vector>

#include "registry.h"
#include "rvpcv.h"

namespace {

void distance_demo(rvpcv_app::DemoContext& ctx) {
  const rvpcv_app::Image& g = ctx.gray;
  const int w = g.width, h = g.height;
  const RvpiSize roi{w, h};
  rvpcv_app::Image bin = rvpcv_app::make_image(w, h, 1);
  for (size_t i = 0; i < bin.pixels.size(); ++i) bin.pixels[i] = g.pixels[i] < 60 ? 0 : 255;
  ctx.save("distance_threshold.png", bin);

  std::vector<Rvp32f> dist(size_t(w) * h);
  int bytes = 0;
  rvpiTrueDistanceTransformGetBufferSize_8u32f_C1R(roi, &bytes);
  std::vector<Rvp8u> buffer(static_cast<size_t>(bytes));
  RvpStatus st = rvpiTrueDistanceTransform_8u32f_C1R(bin.row(0), bin.step(), dist.data(), w * 4,
                                                     roi, buffer.data());
  ctx.out() << "  exact Euclidean distance to the dark pixels (gray < 60), status " << st << "\n";
  ctx.save("distance_euclidean.png", rvpcv_app::float_to_gray(dist.data(), w, h, w * 4));

  Rvp32f metrics[3];
  rvpiGetDistanceTransformMask(52, metrics);
  st =
      rvpiDistanceTransform_5x5_8u32f_C1R(bin.row(0), bin.step(), dist.data(), w * 4, roi, metrics);
  ctx.out() << "  5x5 chamfer (1, 1.4, 2.1969), status " << st << "\n";
  ctx.save("distance_chamfer5x5.png", rvpcv_app::float_to_gray(dist.data(), w, h, w * 4));

  // Fast marching in a band of 25 pixels around the dark parts; beyond it the map is +infinity
  // (shown white).
  rvpiFastMarchingGetBufferSize_8u32f_C1R(roi, &bytes);
  buffer.assign(static_cast<size_t>(bytes), 0);
  st = rvpiFastMarching_8u32f_C1R(bin.row(0), bin.step(), dist.data(), w * 4, roi, 25.0f,
                                  buffer.data());
  ctx.out() << "  fast marching, band of radius 25, status " << st << "\n";
  ctx.save("distance_fast_marching.png", rvpcv_app::float_to_gray(dist.data(), w, h, w * 4));
}

}  // namespace

RVPCV_DEMO_STEP(distance_demo, 64);
