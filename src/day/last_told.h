#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace mirelo::day {

// The one status line of a day, for a person who sees no more: the last message that says why no quotes come,
// until one comes. An explanation outranks what is merely told, so that reconnecting does not drive out a
// refused login.
class LastTold {
 public:
  // `quotes` is how many had come in the day by then.
  void Tell(const std::string& text, std::int64_t quotes);
  // As Tell, for what a person has to see to.
  void Explain(const std::string& text, std::int64_t quotes);

  // Empty when quotes have come since then, or nothing was told.
  std::string Line(std::int64_t quotes) const;
  // What was told, each text once where it was told last, the newest at the end.
  const std::vector<std::string>& Lines() const { return lines_; }

 private:
  static constexpr std::size_t kMostLines = 6;

  struct Said {
    std::string text;
    std::int64_t quotes = 0;
  };

  void Keep(const std::string& text);

  Said told_;
  Said explained_;
  std::vector<std::string> lines_;
};

}  // namespace mirelo::day
