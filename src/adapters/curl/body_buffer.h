#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace mirelo::curl {

// The bytes of a reply's body that arrived and wait to be read.
class BodyBuffer {
 public:
  std::size_t Size() const { return bytes_.size() - taken_; }
  // Makes room for so many bytes at once.
  void Expect(std::size_t size) { bytes_.reserve(size); }
  void Append(std::string_view bytes) { bytes_ += bytes; }
  // Hands over up to `capacity` bytes, the oldest first, and returns how many.
  std::size_t Take(char* buffer, std::size_t capacity);

 private:
  std::string bytes_;
  std::size_t taken_ = 0;  // at the front
};

}  // namespace mirelo::curl
