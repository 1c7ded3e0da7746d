#include "support/guarded.h"

#include <sys/mman.h>
#include <unistd.h>

#include <stdexcept>

namespace rvpt {

GuardedBuffer::GuardedBuffer(size_t bytes, Guard where) : bytes_(bytes) {
  const size_t page = static_cast<size_t>(sysconf(_SC_PAGESIZE));
  const size_t body = (bytes + page - 1) / page * page;
  map_bytes_ = body + page;
  map_ = mmap(nullptr, map_bytes_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (map_ == MAP_FAILED) throw std::runtime_error("mmap failed");
  auto* base = static_cast<uint8_t*>(map_);
  if (where == Guard::After) {
    mprotect(base + body, page, PROT_NONE);
    data_ = base + body - bytes;
  } else {
    mprotect(base, page, PROT_NONE);
    data_ = base + page;
  }
  std::memset(data_, 0xA5, bytes_);
}

GuardedBuffer::~GuardedBuffer() {
  if (map_ != nullptr && map_ != MAP_FAILED) munmap(map_, map_bytes_);
}

}  // namespace rvpt
