// Test images in ordinary memory with a chosen start offset and row padding, random fills, and
// byte-for-byte snapshots for "nothing written on error" checks.
#pragma once

#include <cstdint>
#include <cstring>
#include <limits>
#include <random>
#include <type_traits>
#include <vector>

#include "rvpcv.h"

namespace rvpt {

// Image with `offset` bytes before the first pixel (to test any alignment) and `pad` extra
// bytes at the end of each row. The padding and the bytes around the image are filled with a
// marker so tests can check they were not touched.
template <class T>
class TestImage {
 public:
  TestImage(int width, int height, int channels = 1, int pad = 0, int offset = 0)
      : width_(width), height_(height), channels_(channels),
        step_(static_cast<int>(width * channels * sizeof(T)) + pad), offset_(offset),
        storage_(size_t(offset) + size_t(step_) * height + 64, kMarker) {}

  static constexpr uint8_t kMarker = 0xA7;
  T* ptr() { return reinterpret_cast<T*>(storage_.data() + offset_); }
  const T* ptr() const { return reinterpret_cast<const T*>(storage_.data() + offset_); }
  int step() const { return step_; }
  int width() const { return width_; }
  int height() const { return height_; }
  int channels() const { return channels_; }
  RvpiSize size() const { return {width_, height_}; }
  T* row(int y) { return reinterpret_cast<T*>(storage_.data() + offset_ + size_t(step_) * y); }
  const T* row(int y) const {
    return reinterpret_cast<const T*>(storage_.data() + offset_ + size_t(step_) * y);
  }
  // Element access through memcpy: pointers may be deliberately misaligned.
  T at(int x, int y, int c = 0) const {
    T v;
    std::memcpy(&v, reinterpret_cast<const uint8_t*>(row(y)) + (size_t(x) * channels_ + c) * sizeof(T),
                sizeof(T));
    return v;
  }
  void set(int x, int y, T v, int c = 0) {
    std::memcpy(reinterpret_cast<uint8_t*>(row(y)) + (size_t(x) * channels_ + c) * sizeof(T), &v,
                sizeof(T));
  }
  const std::vector<uint8_t>& bytes() const { return storage_; }

 private:
  int width_, height_, channels_, step_, offset_;
  std::vector<uint8_t> storage_;
};

// Uniform random values over the whole type (floats: a moderate range; see fill_random_special).
template <class T>
T random_value(std::mt19937& rng) {
  if constexpr (std::is_floating_point_v<T>) {
    return std::uniform_real_distribution<T>(T(-1000), T(1000))(rng);
  } else {
    using W = std::conditional_t<std::is_signed_v<T>, int64_t, uint64_t>;
    return static_cast<T>(std::uniform_int_distribution<W>(std::numeric_limits<T>::lowest(),
                                                           std::numeric_limits<T>::max())(rng));
  }
}

template <class T>
void fill_random(TestImage<T>& img, std::mt19937& rng) {
  for (int y = 0; y < img.height(); ++y)
    for (int x = 0; x < img.width() * img.channels(); ++x) img.set(x, y, random_value<T>(rng));
}

// Floats with the values that break careless code mixed in: NaN, ±inf, ±0, huge and tiny.
inline float special_float(std::mt19937& rng) {
  static const float kSpecial[] = {std::numeric_limits<float>::quiet_NaN(),
                                   -std::numeric_limits<float>::quiet_NaN(),
                                   std::numeric_limits<float>::infinity(),
                                   -std::numeric_limits<float>::infinity(),
                                   0.0f, -0.0f, 1e30f, -1e30f, 1e-40f, 16777217.0f};
  if (std::uniform_int_distribution<int>(0, 7)(rng) == 0)
    return kSpecial[std::uniform_int_distribution<size_t>(0, std::size(kSpecial) - 1)(rng)];
  return std::uniform_real_distribution<float>(-70000.f, 70000.f)(rng);
}

template <class T>
void fill_random_special(TestImage<T>& img, std::mt19937& rng) {
  for (int y = 0; y < img.height(); ++y)
    for (int x = 0; x < img.width() * img.channels(); ++x) {
      if constexpr (std::is_same_v<T, float>)
        img.set(x, y, special_float(rng));
      else
        img.set(x, y, random_value<T>(rng));
    }
}

// A mask with roughly `density` of its bytes nonzero (nonzero values vary, not just 255).
inline void fill_mask(TestImage<Rvp8u>& m, std::mt19937& rng, double density = 0.5) {
  std::bernoulli_distribution on(density);
  std::uniform_int_distribution<int> val(1, 255);
  for (int y = 0; y < m.height(); ++y)
    for (int x = 0; x < m.width(); ++x) m.set(x, y, on(rng) ? static_cast<Rvp8u>(val(rng)) : 0);
}

// Bitwise equality for floats (NaN payloads and zero signs included).
template <class T>
bool same_bits(T a, T b) {
  return std::memcmp(&a, &b, sizeof(T)) == 0;
}

// The library's result contract: bit for bit, except that a NaN result may carry either input
// NaN's payload and sign (IEEE 754 leaves the choice open; a compiler may swap the operands of a
// commutative operation). Non-float types: plain equality.
template <class T>
bool same_result(T a, T b) {
  if constexpr (std::is_floating_point_v<T>) {
    if (a != a && b != b) return true;
  }
  return same_bits(a, b);
}

inline uint32_t float_bits(float v) {
  uint32_t b;
  std::memcpy(&b, &v, 4);
  return b;
}

}  // namespace rvpt
