#pragma once

#include <unistd.h>

#include <utility>

namespace mirelo::proc {

// Owns an open file or pipe, or none. Sockets, which Windows closes otherwise, and what else a loop waits for
// are poll::Descriptor.
class Descriptor {
 public:
  Descriptor() = default;
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() {
    if (number_ >= 0) ::close(number_);
  }
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }

  int number() const { return number_; }
  bool IsOpen() const { return number_ >= 0; }

 private:
  int number_ = -1;
};

}  // namespace mirelo::proc
