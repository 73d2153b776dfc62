#include "automation/wipe.h"

namespace mirelo {

void Wipe(void* bytes, std::size_t size) {
  auto* byte = static_cast<volatile char*>(bytes);
  for (std::size_t i = 0; i < size; ++i) byte[i] = 0;
}

WipedAtEnd::~WipedAtEnd() {
  text_.resize(text_.capacity());  // never more than there is room for
  Wipe(text_.data(), text_.size());
}

}  // namespace mirelo
