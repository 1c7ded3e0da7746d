// Demo: accumulation and differences. A running average of drifting copies of the photograph
// (a motion blur built from rvpiAddWeighted) and the absolute difference of two of them.
#include <vector>

#include "registry.h"
#include "rvpcv.h"

namespace {

void accumulate_demo(rvpcv_app::DemoContext& ctx) {
  const rvpcv_app::Image& g = ctx.gray;
  const int w = g.width - 16, h = g.height;
  const RvpiSize roi{w, h};
  std::vector<Rvp32f> avg(size_t(w) * h, 0.0f);
  const int acc_step = w * 4;
  // First frame sets the average exactly (alpha 1 copies the source).
  rvpiAddWeighted_8u32f_C1IR(g.row(0), g.step(), avg.data(), acc_step, roi, 1.0f);
  for (int shift = 1; shift < 16; ++shift)
    rvpiAddWeighted_8u32f_C1IR(g.row(0) + shift, g.step(), avg.data(), acc_step, roi, 0.25f);
  ctx.out() << "  running average of 16 drifting frames (alpha 0.25)\n";
  ctx.save("accumulate_running_average.png", rvpcv_app::float_to_gray(avg.data(), w, h, acc_step));

  rvpcv_app::Image diff = rvpcv_app::make_image(w, h, 3);
  const RvpStatus st = rvpiAbsDiff_8u_C3R(ctx.photo.row(0), ctx.photo.step(),
                                          ctx.photo.row(0) + 3 * 6, ctx.photo.step(),
                                          diff.row(0), diff.step(), roi);
  ctx.out() << "  |frame - frame shifted 6 px|, status " << st << "\n";
  ctx.save("accumulate_absdiff.png", diff);
}

}  // namespace

RVPCV_DEMO_STEP(accumulate_demo, 10);
