#pragma once

#include <cstddef>
#include <string>

namespace mirelo {

// Overwrites bytes that must not stay in memory. The compiler does not leave it out, as it may where nobody
// reads them again.
void Wipe(void* bytes, std::size_t size);

// Wipes a string at the end of the block, with all the memory that it has then. Memory that the string gives
// up earlier by growing is not wiped, so reserve enough before the text comes.
class WipedAtEnd {
 public:
  explicit WipedAtEnd(std::string& text) : text_(text) {}
  ~WipedAtEnd();
  WipedAtEnd(const WipedAtEnd&) = delete;
  WipedAtEnd& operator=(const WipedAtEnd&) = delete;

 private:
  std::string& text_;
};

}  // namespace mirelo
