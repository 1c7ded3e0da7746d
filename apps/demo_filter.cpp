// Demo: fixed-kernel filters. Gradient magnitude from the two Scharr derivatives, and a
// Gaussian-smoothed copy of the colour photograph.
#include <algorithm>
#include <cmath>
#include <vector>

#include "registry.h"
#include "rvpcv.h"

namespace {

void filter_demo(rvpcv_app::DemoContext& ctx) {
  const rvpcv_app::Image& g = ctx.gray;
  const RvpiSize roi{g.width, g.height};
  const int n = g.width * g.height;
  std::vector<Rvp16s> dx(n), dy(n);
  // Scharr derivatives in both directions (right minus left, bottom minus top).
  int sx = 0, sy = 0;
  rvpiFilterScharrVertGetBufferSize_8u16s_C1R(roi, &sx);
  rvpiFilterScharrHorizGetBufferSize_8u16s_C1R(roi, &sy);
  std::vector<Rvp8u> buf(std::max(sx, sy));
  const RvpStatus st = rvpiFilterScharrVertBorder_8u16s_C1R(g.row(0), g.step(), dx.data(),
                                                            g.width * 2, roi, 1, 0, buf.data());
  const RvpStatus st2 = rvpiFilterScharrHorizBorder_8u16s_C1R(g.row(0), g.step(), dy.data(),
                                                              g.width * 2, roi, 1, 0, buf.data());
  std::vector<float> mag(n);
  for (int i = 0; i < n; ++i) mag[i] = std::sqrt(float(dx[i]) * dx[i] + float(dy[i]) * dy[i]);
  ctx.out() << "  Scharr gradient magnitude, status " << st << " " << st2 << "\n";
  ctx.save("filter_gradient_magnitude.png",
           rvpcv_app::float_to_gray(mag.data(), g.width, g.height, g.width * 4));

  const rvpcv_app::Image& p = ctx.photo;
  rvpcv_app::Image blur = rvpcv_app::make_image(p.width, p.height, 3);
  int spec_size = 0, buf_size = 0;
  rvpiFilterGaussianGetBufferSize(roi, 15, rvp8u, 3, &spec_size, &buf_size);
  std::vector<Rvp8u> spec(spec_size), work(buf_size);
  const Rvp8u border[3] = {0, 0, 0};
  RvpStatus gs = rvpiFilterGaussianInit(roi, 15, 4.0f, 1, rvp8u, 3, spec.data(), work.data());
  if (gs == 0)
    gs = rvpiFilterGaussianBorder_8u_C3R(p.row(0), p.step(), blur.row(0), blur.step(), roi, border,
                                         spec.data(), work.data());
  ctx.out() << "  Gaussian blur 15x15, sigma 4, status " << gs << "\n";
  ctx.save("filter_gaussian_blur.png", blur);
}

}  // namespace

RVPCV_DEMO_STEP(filter_demo, 30);
