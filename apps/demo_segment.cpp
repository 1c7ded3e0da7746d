// Demo: segmentation. A colour-coded label image of the thresholded photograph, and a
// gradient flood fill of one region of the colour photograph with its region record.
#include <cstdint>
#include <vector>

#include "registry.h"
#include "rvpcv.h"

namespace {

// A stable, well-spread colour per label (0 stays black).
void label_colour(int label, uint8_t* rgb) {
  if (label == 0) {
    rgb[0] = rgb[1] = rgb[2] = 0;
    return;
  }
  uint32_t h = uint32_t(label) * 2654435761u;
  h ^= h >> 13;
  rgb[0] = uint8_t(64 + (h & 0xBF));
  rgb[1] = uint8_t(64 + ((h >> 8) & 0xBF));
  rgb[2] = uint8_t(64 + ((h >> 16) & 0xBF));
}

void segment_demo(rvpcv_app::DemoContext& ctx) {
  const rvpcv_app::Image& g = ctx.gray;
  const int w = g.width, h = g.height;
  const RvpiSize roi{w, h};

  // Threshold, then label the 8-connected bright regions.
  std::vector<Rvp8u> bin(size_t(w) * h);
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x) bin[size_t(y) * w + x] = g.row(y)[x] > 110 ? 255 : 0;
  std::vector<Rvp32s> labels(size_t(w) * h);
  int bytes = 0, regions = 0;
  rvpiLabelMarkersGetBufferSize_8u32s_C1R(roi, &bytes);
  std::vector<Rvp8u> buf(static_cast<size_t>(bytes));
  const RvpStatus st = rvpiLabelMarkers_8u32s_C1R(bin.data(), w, labels.data(), 4 * w, roi, 1,
                                                  2147483646, 0, &regions, buf.data());
  ctx.out() << "  gray > 110, 8-connected regions: " << regions << " (status " << st << ")\n";
  rvpcv_app::Image coloured = rvpcv_app::make_image(w, h, 3);
  for (int y = 0; y < h; ++y)
    for (int x = 0; x < w; ++x) label_colour(labels[size_t(y) * w + x], coloured.row(y) + 3 * x);
  ctx.save("segment_labels.png", coloured);

  // Gradient fill of the colour photograph from a point on the backdrop.
  rvpcv_app::Image filled = ctx.photo;
  int grad_bytes = 0;
  rvpiFloodFillGetSize_Grad(roi, &grad_bytes);
  std::vector<Rvp8u> grad_buf(static_cast<size_t>(grad_bytes));
  const Rvp8u nv[3] = {255, 0, 255}, d[3] = {3, 3, 3};
  const RvpiPoint seed{w * 3 / 5, h / 10};
  RvpiConnectedComp reg{};
  const RvpStatus fs = rvpiFloodFill_Grad8Con_8u_C3IR(filled.row(0), filled.step(), roi, seed, nv,
                                                      d, d, &reg, grad_buf.data());
  ctx.out() << "  gradient fill (+-3 per step) from (" << seed.x << "," << seed.y << "), status "
            << fs << ": area " << reg.area << ", value (" << reg.value[0] << "," << reg.value[1]
            << "," << reg.value[2] << "), rect x " << reg.rect.x << " y " << reg.rect.y << " w "
            << reg.rect.width << " h " << reg.rect.height << "\n";
  ctx.save("segment_floodfill.png", filled);
}

}  // namespace

RVPCV_DEMO_STEP(segment_demo, 60);
