// One-dimensional Sobel factors of any odd length and derivative order.
#include <vector>

#include "core/numeric.h"
#include "rvpcv.h"

namespace rvp::filter {
namespace {

// Builds the factor in place: cleared, last tap 1, then kernelSize-1-order smoothing passes
// (multiply by 1 + z) and `order` difference passes (multiply by z - 1), each pass running
// from the first tap to the last so that every tap reads its right neighbour before that
// neighbour changes. The values are binomial-like integers, exact in double.
template <class T>
RvpStatus gen_sobel(T* dst, int K, int order, int sign) {
  if (dst == nullptr) return rvpStsNullPtrErr;
  if (K < 1 || K % 2 == 0 || order < 0 || order >= K || sign == 0) return rvpStsBadArgErr;
  std::vector<double> a(static_cast<size_t>(K), 0.0);
  a[K - 1] = 1.0;
  for (int p = 0; p < K - 1 - order; ++p)
    for (int i = 0; i + 1 < K; ++i) a[i] = a[i] + a[i + 1];
  for (int p = 0; p < order; ++p)
    for (int i = 0; i + 1 < K; ++i) a[i] = a[i] - a[i + 1];
  for (int i = 0; i < K; ++i) {
    const double v = sign < 0 ? -a[i] : a[i];
    if constexpr (std::is_same_v<T, Rvp16s>)
      dst[i] = saturate<Rvp16s>(v);
    else
      dst[i] = static_cast<T>(v);
  }
  return rvpStsNoErr;
}

}  // namespace
}  // namespace rvp::filter

RvpStatus rvpiGenSobelKernel_16s(Rvp16s* pDst, int kernelSize, int order, int sign) {
  return rvp::filter::gen_sobel(pDst, kernelSize, order, sign);
}
RvpStatus rvpiGenSobelKernel_32f(Rvp32f* pDst, int kernelSize, int order, int sign) {
  return rvp::filter::gen_sobel(pDst, kernelSize, order, sign);
}
