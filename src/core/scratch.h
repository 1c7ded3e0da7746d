// Scratch buffers in caller memory. A size query reports each sub-buffer rounded up to 32 bytes
// plus 64 bytes of slack; the consumer aligns the caller's pointer up to 32 bytes and carves the
// sub-buffers in the same order. The slack covers the alignment, so a buffer of exactly the
// queried size works at any address.
#pragma once

#include <climits>
#include <cstddef>
#include <cstdint>
#include <initializer_list>

namespace rvp {

constexpr int64_t kScratchAlign = 32;
constexpr int64_t kScratchSlack = 64;

constexpr int64_t round_up(int64_t v, int64_t a) { return (v + a - 1) / a * a; }

// Total bytes for sub-buffers of the given sizes; -1 when it does not fit a signed 32-bit count.
inline int64_t scratch_bytes(std::initializer_list<int64_t> sub_buffers) {
  int64_t total = kScratchSlack;
  for (int64_t b : sub_buffers) total += round_up(b, kScratchAlign);
  return total > INT_MAX ? -1 : total;
}

class ScratchCarver {
 public:
  explicit ScratchCarver(void* buffer)
      : next_(static_cast<uint8_t*>(buffer) +
              ((-reinterpret_cast<uintptr_t>(buffer)) & (kScratchAlign - 1))) {}

  // The next sub-buffer of `count` elements, 32-byte aligned; advances by the rounded size.
  template <class T>
  T* take(int64_t count) {
    T* p = reinterpret_cast<T*>(next_);
    next_ += round_up(count * int64_t{sizeof(T)}, kScratchAlign);
    return p;
  }

  const uint8_t* cursor() const { return next_; }

 private:
  uint8_t* next_;
};

}  // namespace rvp
