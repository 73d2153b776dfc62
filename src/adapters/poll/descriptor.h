#pragma once

#include <utility>

namespace mirelo::poll {

// Owns an open descriptor, or none.
class Descriptor {
 public:
  Descriptor() = default;
  // Takes the result of the call that opened it. A failure is raised from errno: error 67 ("Too many files")
  // when process or machine have none left, else 440 with the system's text.
  explicit Descriptor(int opened);
  ~Descriptor() { Close(); }
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }

  int Number() const { return number_; }  // -1: none
  void Close();

 private:
  int number_ = -1;
};

}  // namespace mirelo::poll
