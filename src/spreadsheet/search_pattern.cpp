#include "spreadsheet/search_pattern.h"

#include <algorithm>
#include <cstddef>

#include "automation/utf8.h"

namespace mirelo::spreadsheet {

namespace {

std::vector<char32_t> Capitals(std::string_view text) {
  std::vector<char32_t> capitals;
  for (std::size_t i = 0; i < text.size();) {
    const utf8::Character character = utf8::Decode(text, i);
    capitals.push_back(utf8::Upper(character.code));
    i += character.length;
  }
  return capitals;
}

constexpr bool IsSpecial(char32_t c) { return c == U'*' || c == U'?' || c == U'~'; }

}  // namespace

SearchPattern::SearchPattern(std::string_view text) {
  const std::vector<char32_t> characters = Capitals(text);
  pieces_.push_back({Kind::AnyText, 0});
  for (std::size_t i = 0; i < characters.size(); ++i) {
    if (characters[i] == U'~' && i + 1 < characters.size() && IsSpecial(characters[i + 1])) {
      pieces_.push_back({Kind::Character, characters[++i]});
    } else if (characters[i] == U'*') {
      pieces_.push_back({Kind::AnyText, 0});
    } else {
      pieces_.push_back({characters[i] == U'?' ? Kind::AnyCharacter : Kind::Character, characters[i]});
    }
  }
  pieces_.push_back({Kind::AnyText, 0});
}

bool SearchPattern::MatchesAnything() const {
  return std::all_of(pieces_.begin(), pieces_.end(),
                     [](const Piece& piece) { return piece.kind == Kind::AnyText; });
}

bool SearchPattern::Matches(std::string_view text) const {
  const std::vector<char32_t> characters = Capitals(text);
  std::size_t piece = 0;
  std::size_t at = 0;
  std::size_t star = 0;    // the last piece of any text so far
  std::size_t resume = 0;  // where the text behind it goes on when it takes one character more
  while (at < characters.size()) {
    if (piece < pieces_.size() && pieces_[piece].kind == Kind::AnyText) {
      star = piece++;
      resume = at;
    } else if (piece < pieces_.size() &&
               (pieces_[piece].kind == Kind::AnyCharacter || pieces_[piece].character == characters[at])) {
      ++piece;
      ++at;
    } else {
      piece = star + 1;
      at = ++resume;
    }
  }
  return std::all_of(pieces_.begin() + static_cast<std::ptrdiff_t>(piece), pieces_.end(),
                     [](const Piece& left) { return left.kind == Kind::AnyText; });
}

}  // namespace mirelo::spreadsheet
