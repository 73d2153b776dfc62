#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "automation/text.h"

namespace mirelo {

namespace {

using Pieces = std::vector<std::string_view>;

// Eight bytes at a time, in one machine word.
using Word = std::uint64_t;
constexpr Word kEach = 0x0101010101010101;
constexpr Word kLowBits = 0x7F * kEach;

// Sets the high bit of each byte that is 0, and no other bit.
constexpr Word ZeroBytes(Word word) { return ~(((word & kLowBits) + kLowBits) | word | kLowBits); }
static_assert(ZeroBytes(0x00FF'8001'7F00'0100) == 0x8000'0000'0080'0080);

// Adds the pieces of a text behind one another.
class Cutter {
 public:
  Cutter(std::string_view text, Pieces& pieces) : begin_(text.data()), pieces_(pieces) {}

  // Ends a piece at `end`; the next one begins behind a delimiter of so many bytes.
  void Cut(const char* end, std::size_t delimiter) {
    pieces_.emplace_back(begin_, static_cast<std::size_t>(end - begin_));
    begin_ = end + delimiter;
  }

 private:
  const char* begin_;
  Pieces& pieces_;
};

// The pieces of lists are short, so that a search for each would cost more than to look at all bytes.
void SplitAtByte(std::string_view text, char delimiter, Pieces& pieces) {
  static_assert(std::endian::native == std::endian::little);
  const Word sought = kEach * static_cast<unsigned char>(delimiter);
  Cutter cutter(text, pieces);
  const char* at = text.data();
  const char* const end = at + text.size();
  for (; end - at >= static_cast<std::ptrdiff_t>(sizeof(Word)); at += sizeof(Word)) {
    Word word;
    std::memcpy(&word, at, sizeof word);
    for (Word found = ZeroBytes(word ^ sought); found != 0; found &= found - 1) {
      cutter.Cut(at + std::countr_zero(found) / 8, 1);
    }
  }
  for (; at != end; ++at) {
    if (*at == delimiter) cutter.Cut(at, 1);
  }
  cutter.Cut(end, 0);
}

}  // namespace

void Split(std::string_view text, std::string_view delimiter, std::vector<std::string_view>& pieces) {
  pieces.clear();
  if (text.empty()) return;
  if (delimiter.empty()) return pieces.push_back(text);
  if (delimiter.size() == 1) return SplitAtByte(text, delimiter.front(), pieces);
  Cutter cutter(text, pieces);
  for (std::size_t at = 0; (at = text.find(delimiter, at)) != std::string_view::npos;
       at += delimiter.size()) {
    cutter.Cut(text.data() + at, delimiter.size());
  }
  cutter.Cut(text.data() + text.size(), 0);
}

std::vector<std::string> Split(std::string_view text, std::string_view delimiter) {
  std::vector<std::string_view> pieces;
  Split(text, delimiter, pieces);
  return {pieces.begin(), pieces.end()};
}

std::string Join(const std::vector<std::string>& pieces, std::string_view delimiter) {
  std::string text;
  for (const std::string& piece : pieces) {
    if (&piece != &pieces.front()) text.append(delimiter);
    text.append(piece);
  }
  return text;
}

}  // namespace mirelo
