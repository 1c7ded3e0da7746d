// Typed row access over pointer + byte step: the one place that does the address arithmetic.
#pragma once

#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace rvp {

template <class T>
inline T* row(T* base, int step, int y) {
  using Byte = std::conditional_t<std::is_const_v<T>, const uint8_t, uint8_t>;
  return reinterpret_cast<T*>(reinterpret_cast<Byte*>(base) + static_cast<ptrdiff_t>(step) * y);
}

}  // namespace rvp
