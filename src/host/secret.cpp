#include "host/secret.h"

#include <algorithm>
#include <utility>

#include "automation/wipe.h"

namespace mirelo::host {

Secret Secret::Copy(std::string_view text) {
  auto* memory = new char[text.size()];
  std::copy(text.begin(), text.end(), memory);
  return Secret(memory, text.size(), [](char* bytes, std::size_t size) {
    Wipe(bytes, size);
    delete[] bytes;
  });
}

Secret::~Secret() {
  if (release_ != nullptr) release_(memory_, size_);
}

Secret::Secret(Secret&& other) noexcept
    : memory_(std::exchange(other.memory_, nullptr)),
      size_(std::exchange(other.size_, 0)),
      length_(std::exchange(other.length_, 0)),
      release_(std::exchange(other.release_, nullptr)) {}

Secret& Secret::operator=(Secret&& other) noexcept {
  Secret taken(std::move(other));
  std::swap(memory_, taken.memory_);
  std::swap(size_, taken.size_);
  std::swap(length_, taken.length_);
  std::swap(release_, taken.release_);
  return *this;
}

}  // namespace mirelo::host
