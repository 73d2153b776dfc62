#pragma once

#include <utility>

namespace mirelo::poll {

// Owns an open descriptor, a socket or something else that a loop can wait for; or none.
class Descriptor {
 public:
  Descriptor() = default;
  // Negative: none.
  explicit Descriptor(int number) : number_(number) {}
  // Takes the result of the call that opened it. What that call failed of is raised: error 67 ("Too many
  // files") when process or machine have none left, else 440 with the system's text.
  static Descriptor Opened(int result);
  ~Descriptor() { Close(); }
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }

  int Number() const { return number_; }
  bool IsOpen() const { return number_ >= 0; }
  void Close();

 private:
  int number_ = -1;
};

}  // namespace mirelo::poll
