// Image files for the command-line tool, through stb's image codecs (libstb-dev).
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace rvpcv_app {

// Interleaved 8-bit pixels, `channels` per pixel (1 gray, 3 RGB, 4 RGBA), rows packed.
struct Image {
  int width = 0, height = 0, channels = 0;
  std::vector<uint8_t> pixels;
  int step() const { return width * channels; }
  uint8_t* row(int y) { return pixels.data() + size_t(y) * step(); }
  const uint8_t* row(int y) const { return pixels.data() + size_t(y) * step(); }
};

Image make_image(int width, int height, int channels);

// Loads PNG/JPEG/BMP/...; `channels` 0 keeps the file's count, 1 or 3 converts.
bool load_image(const std::string& path, Image& out, int channels = 0);
bool save_png(const std::string& path, const Image& img);

// BT.601 luma of an RGB image, rounded.
Image to_gray(const Image& rgb);

// A float map scaled linearly so its finite minimum is 0 and maximum 255 (constant maps → 0).
Image float_to_gray(const float* data, int width, int height, int step_bytes);

}  // namespace rvpcv_app
