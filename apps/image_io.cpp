#include "image_io.h"

#include <algorithm>
#include <cmath>
#include <limits>

#define STB_IMAGE_IMPLEMENTATION
#define STB_IMAGE_WRITE_IMPLEMENTATION
#include <stb/stb_image.h>
#include <stb/stb_image_write.h>

namespace rvpcv_app {

Image make_image(int width, int height, int channels) {
  Image img;
  img.width = width;
  img.height = height;
  img.channels = channels;
  img.pixels.assign(size_t(width) * height * channels, 0);
  return img;
}

bool load_image(const std::string& path, Image& out, int channels) {
  int w = 0, h = 0, n = 0;
  unsigned char* data = stbi_load(path.c_str(), &w, &h, &n, channels);
  if (data == nullptr) return false;
  const int c = channels == 0 ? n : channels;
  out = make_image(w, h, c);
  std::copy(data, data + size_t(w) * h * c, out.pixels.begin());
  stbi_image_free(data);
  return true;
}

bool save_png(const std::string& path, const Image& img) {
  return stbi_write_png(path.c_str(), img.width, img.height, img.channels, img.pixels.data(),
                        img.step()) != 0;
}

Image to_gray(const Image& rgb) {
  if (rgb.channels == 1) return rgb;
  Image g = make_image(rgb.width, rgb.height, 1);
  for (int y = 0; y < rgb.height; ++y)
    for (int x = 0; x < rgb.width; ++x) {
      const uint8_t* p = rgb.row(y) + x * rgb.channels;
      g.row(y)[x] = static_cast<uint8_t>((299 * p[0] + 587 * p[1] + 114 * p[2] + 500) / 1000);
    }
  return g;
}

Image float_to_gray(const float* data, int width, int height, int step_bytes) {
  auto at = [&](int x, int y) {
    return reinterpret_cast<const float*>(reinterpret_cast<const uint8_t*>(data) +
                                          size_t(step_bytes) * y)[x];
  };
  float lo = std::numeric_limits<float>::infinity(), hi = -lo;
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x)
      if (std::isfinite(at(x, y))) lo = std::min(lo, at(x, y)), hi = std::max(hi, at(x, y));
  Image g = make_image(width, height, 1);
  const float scale = hi > lo ? 255.0f / (hi - lo) : 0.0f;
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) {
      const float v = at(x, y);
      g.row(y)[x] = std::isfinite(v) ? static_cast<uint8_t>(std::lround((v - lo) * scale)) : 255;
    }
  return g;
}

}  // namespace rvpcv_app
