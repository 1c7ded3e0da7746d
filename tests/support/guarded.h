// Guarded images: an image whose last byte (or first byte) touches an inaccessible page, so any
// read or write past the region faults at once instead of going unnoticed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <random>

namespace rvpt {

enum class Guard { After, Before };

class GuardedBuffer {
 public:
  // `bytes` usable bytes; with Guard::After the byte after the last is on a PROT_NONE page,
  // with Guard::Before the byte before the first is.
  GuardedBuffer(size_t bytes, Guard where);
  ~GuardedBuffer();
  GuardedBuffer(const GuardedBuffer&) = delete;
  GuardedBuffer& operator=(const GuardedBuffer&) = delete;
  uint8_t* data() const { return data_; }
  size_t size() const { return bytes_; }

 private:
  void* map_ = nullptr;
  size_t map_bytes_ = 0;
  uint8_t* data_ = nullptr;
  size_t bytes_ = 0;
};

// An image of width x height pixels of `channels` elements of T with row step `step` bytes
// (at least the row width), laid out so that the last byte of its last row (Guard::After) or the
// first byte of its first row (Guard::Before) touches the guard page.
template <class T>
class GuardedImage {
 public:
  GuardedImage(int width, int height, int channels, int step, Guard where)
      : width_(width), height_(height), channels_(channels), step_(step),
        buf_(static_cast<size_t>(step) * (height - 1) + size_t(width) * channels * sizeof(T),
             where) {}
  T* ptr() const { return reinterpret_cast<T*>(buf_.data()); }
  int step() const { return step_; }
  T* row(int y) const { return reinterpret_cast<T*>(buf_.data() + size_t(step_) * y); }
  int width() const { return width_; }
  int height() const { return height_; }
  // Bytes of the buffer (rows and the gaps between them).
  uint8_t* bytes() const { return buf_.data(); }
  size_t byte_count() const { return buf_.size(); }

 private:
  int width_, height_, channels_, step_;
  GuardedBuffer buf_;
};

}  // namespace rvpt
