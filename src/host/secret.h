#pragma once

#include <cstddef>
#include <string_view>

namespace mirelo::host {

// A text that must not stay in memory. It is never copied, only handed on, and its memory is wiped when it is
// let go of.
class Secret {
 public:
  // Wipes memory and gives it back.
  using Release = void (*)(char* memory, std::size_t size);

  Secret() = default;
  // Takes over memory that holds the text, and how it is given back: an adapter may have memory that is kept
  // out of core dumps and, where the system grants that, out of the swap.
  Secret(char* memory, std::size_t size, Release release)
      : memory_(memory), size_(size), length_(size), release_(release) {}
  // A secret with a copy of this text, in ordinary memory of the program.
  static Secret Copy(std::string_view text);

  ~Secret();
  Secret(Secret&& other) noexcept;
  Secret& operator=(Secret&& other) noexcept;

  std::string_view text() const { return {memory_, length_}; }

  // For filling the memory after it was made: write to data(), then Shorten to the length of the text if
  // there was room for more.
  char* data() { return memory_; }
  void Shorten(std::size_t length) { length_ = length; }

 private:
  char* memory_ = nullptr;
  std::size_t size_ = 0;  // of the memory
  std::size_t length_ = 0;
  Release release_ = nullptr;
};

}  // namespace mirelo::host
