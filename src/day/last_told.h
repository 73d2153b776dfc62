#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace mirelo::day {

// What a day has told last, for a person who sees one line of it at a time. That is what hinders quotes, for
// as long as none has come since; an explanation is not driven out by what goes on beside it, such as calling
// again.
class LastTold {
 public:
  // `quotes` is how many had come in the day by then.
  void Tell(const std::string& text, std::int64_t quotes);
  // The same for what a person has to see to.
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
