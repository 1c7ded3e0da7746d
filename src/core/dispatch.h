// Run-time integers onto compile-time ones: kernels specialised for a few sizes (unrolled
// windows, fixed tap counts, channel counts) are reached through one call instead of a switch
// ladder per kernel.
#pragma once

#include <type_traits>
#include <utility>

namespace rvp {

namespace detail {

template <int Fallback, class F>
decltype(auto) with_int_in(int, F& f, std::integer_sequence<int>) {
  return f(std::integral_constant<int, Fallback>{});
}

template <int Fallback, class F, int N, int... Rest>
decltype(auto) with_int_in(int v, F& f, std::integer_sequence<int, N, Rest...>) {
  if (v == N) return f(std::integral_constant<int, N>{});
  return with_int_in<Fallback>(v, f, std::integer_sequence<int, Rest...>{});
}

}  // namespace detail

// f(std::integral_constant<int, N>{}) for the first N of Ns equal to v, or
// f(std::integral_constant<int, Fallback>{}) when none is.
template <int Fallback, int... Ns, class F>
decltype(auto) with_int(int v, F&& f) {
  return detail::with_int_in<Fallback>(v, f, std::integer_sequence<int, Ns...>{});
}

}  // namespace rvp
