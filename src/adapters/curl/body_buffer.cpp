#include "adapters/curl/body_buffer.h"

#include <algorithm>

namespace mirelo::curl {

std::size_t BodyBuffer::Take(char* buffer, std::size_t capacity) {
  const std::size_t count = std::min(capacity, Size());
  std::copy_n(bytes_.data() + taken_, count, buffer);
  taken_ += count;
  // The taken front goes when it is at least half of all, so that each byte is moved once at most on the
  // average.
  if (taken_ * 2 >= bytes_.size()) {
    bytes_.erase(0, taken_);
    taken_ = 0;
  }
  return count;
}

}  // namespace mirelo::curl
