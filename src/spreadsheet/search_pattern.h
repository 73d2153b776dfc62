#pragma once

#include <string_view>
#include <vector>

namespace mirelo::spreadsheet {

// A text to search for in other texts: "*" stands for any text, "?" for any character, and "~" takes a "*",
// "?" or "~" behind it as it is. Letters of either case are the same.
class SearchPattern {
 public:
  explicit SearchPattern(std::string_view text);

  // Whether it matches every text, being nothing but stars.
  bool MatchesAnything() const;
  // Whether a part of the text matches.
  bool Matches(std::string_view text) const;

 private:
  enum class Kind { Character, AnyCharacter, AnyText };
  struct Piece {
    Kind kind;
    char32_t character;  // a capital, where there is one
  };
  std::vector<Piece> pieces_;  // begins and ends with any text
};

}  // namespace mirelo::spreadsheet
