#pragma once

#include <array>
#include <charconv>
#include <cstdint>
#include <string>

namespace mirelo {

// The keys under which quotes are published: "a" and a running number from 0 on, "a0" first. Behind
// 2147483640 (0x7FFFFFF8) the number goes on at 1.
class QuoteKeys {
 public:
  static constexpr std::int32_t kLast = 0x7FFFFFF8;

  explicit QuoteKeys(std::int32_t first = 0) : next_(first) {}

  std::string Next() {
    std::array<char, 12> text{'a'};
    const auto end = std::to_chars(text.data() + 1, text.data() + text.size(), next_).ptr;
    if (next_ < kLast) {
      ++next_;
    } else {
      next_ = 1;
      started_again_ = true;
    }
    return {text.data(), end};
  }

  // Whether a key may have been given before.
  bool HaveStartedAgain() const { return started_again_; }

 private:
  std::int32_t next_;
  bool started_again_ = false;
};

}  // namespace mirelo
