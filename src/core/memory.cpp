#include "core/memory.h"

#include <immintrin.h>

#include <cstring>

#include "rvpcore.h"

namespace rvp {

void* alloc_bytes(int len) { return len < 1 ? nullptr : rvpMalloc(len); }
void free_bytes(void* p) { rvpFree(p); }

bool streaming_for(int64_t bytes) {
  if (bytes <= kStreamingThreshold) return false;  // no query for small buffers
  int cache = 0;
  const RvpStatus st = rvpGetMaxCacheSizeB(&cache);
  return use_streaming_stores(bytes, st, cache);
}

namespace detail {
namespace {

// A 32-byte vector whose byte j is elem[(phase + j) % elem_size]: the fill pattern as seen from
// a store that starts `phase` bytes into the buffer.
__m256i pattern_at(const uint8_t* elem, int elem_size, int64_t phase) {
  alignas(32) uint8_t v[32];
  for (int j = 0; j < 32; ++j) v[j] = elem[(phase + j) % elem_size];
  return _mm256_load_si256(reinterpret_cast<const __m256i*>(v));
}

void fill_scalar(uint8_t* dst, int64_t bytes, const uint8_t* elem, int elem_size,
                 int64_t phase) {
  for (int64_t k = 0; k < bytes; ++k) dst[k] = elem[(phase + k) % elem_size];
}

}  // namespace

void fill_cached(uint8_t* dst, int64_t bytes, const uint8_t* elem, int elem_size) {
  const __m256i v = pattern_at(elem, elem_size, 0);
  int64_t k = 0;
  // 32 is a multiple of every element size, so the pattern vector never needs rotating here.
  for (; k + 32 <= bytes; k += 32) _mm256_storeu_si256(reinterpret_cast<__m256i*>(dst + k), v);
  fill_scalar(dst + k, bytes - k, elem, elem_size, k);
}

void fill_streaming(uint8_t* dst, int64_t bytes, const uint8_t* elem, int elem_size) {
  int64_t head = static_cast<int64_t>((-reinterpret_cast<uintptr_t>(dst)) & 63);
  if (head > bytes) head = bytes;
  fill_scalar(dst, head, elem, elem_size, 0);
  const __m256i v = pattern_at(elem, elem_size, head);
  int64_t k = head;
  for (; k + 64 <= bytes; k += 64) {
    _mm256_stream_si256(reinterpret_cast<__m256i*>(dst + k), v);
    _mm256_stream_si256(reinterpret_cast<__m256i*>(dst + k + 32), v);
  }
  fill_scalar(dst + k, bytes - k, elem, elem_size, k);
  _mm_sfence();  // streamed data visible to later loads on any thread
}

void copy_small(const uint8_t* src, uint8_t* dst, int64_t bytes) {
  int64_t k = 0;
  for (; k + 32 <= bytes; k += 32)
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(dst + k),
                        _mm256_loadu_si256(reinterpret_cast<const __m256i*>(src + k)));
  for (; k < bytes; ++k) dst[k] = src[k];
}

// Large copies: align the destination, then four aligned stores per iteration.
void copy_block(const uint8_t* src, uint8_t* dst, int64_t bytes) {
  int64_t head = static_cast<int64_t>((-reinterpret_cast<uintptr_t>(dst)) & 31);
  if (head > bytes) head = bytes;
  copy_small(src, dst, head);
  int64_t k = head;
  for (; k + 128 <= bytes; k += 128) {
    const __m256i a = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(src + k));
    const __m256i b = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(src + k + 32));
    const __m256i c = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(src + k + 64));
    const __m256i d = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(src + k + 96));
    _mm256_store_si256(reinterpret_cast<__m256i*>(dst + k), a);
    _mm256_store_si256(reinterpret_cast<__m256i*>(dst + k + 32), b);
    _mm256_store_si256(reinterpret_cast<__m256i*>(dst + k + 64), c);
    _mm256_store_si256(reinterpret_cast<__m256i*>(dst + k + 96), d);
  }
  copy_small(src + k, dst + k, bytes - k);
}

}  // namespace detail

namespace {

template <class T>
RvpStatus fill(T* dst, int count, T value, bool alignment_allows_streaming = true) {
  if (dst == nullptr) return rvpStsNullPtrErr;
  if (count < 1) return rvpStsBadArgErr;
  uint8_t elem[sizeof(T)];
  std::memcpy(elem, &value, sizeof(T));
  const int64_t bytes = int64_t{count} * int64_t{sizeof(T)};
  auto* d = reinterpret_cast<uint8_t*>(dst);
  if (alignment_allows_streaming && streaming_for(bytes))
    detail::fill_streaming(d, bytes, elem, sizeof(T));
  else
    detail::fill_cached(d, bytes, elem, sizeof(T));
  return rvpStsNoErr;
}

}  // namespace

RvpStatus zero_8u(Rvp8u* dst, int count) { return fill<Rvp8u>(dst, count, 0); }
RvpStatus zero_32s(Rvp32s* dst, int count) { return fill<Rvp32s>(dst, count, 0); }
RvpStatus set_32f(Rvp32f value, Rvp32f* dst, int count) { return fill(dst, count, value); }
RvpStatus set_8u(Rvp8u value, Rvp8u* dst, int count) { return fill(dst, count, value); }
RvpStatus set_16u(Rvp16u value, Rvp16u* dst, int count) {
  return fill(dst, count, value, reinterpret_cast<uintptr_t>(dst) % 2 == 0);
}

RvpStatus copy_8u(const Rvp8u* src, Rvp8u* dst, int count) {
  if (src == nullptr || dst == nullptr) return rvpStsNullPtrErr;
  if (count < 1) return rvpStsBadArgErr;
  if (copy_8u_uses_block_kernel(count))
    detail::copy_block(src, dst, count);
  else
    detail::copy_small(src, dst, count);
  return rvpStsNoErr;
}

RvpStatus copy_32s(const Rvp32s* src, Rvp32s* dst, int count) {
  if (src == nullptr || dst == nullptr) return rvpStsNullPtrErr;
  if (count < 1) return rvpStsBadArgErr;
  const int64_t chunk = copy_32s_chunk(count);
  for (int64_t done = 0; done < count;) {
    const int64_t n = count - done < chunk ? count - done : chunk;
    copy_8u(reinterpret_cast<const Rvp8u*>(src + done), reinterpret_cast<Rvp8u*>(dst + done),
            static_cast<int>(n * 4));
    done += n;
  }
  return rvpStsNoErr;
}

}  // namespace rvp
