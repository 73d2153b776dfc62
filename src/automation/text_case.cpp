#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "automation/text.h"
#include "automation/utf8.h"

namespace mirelo {

namespace {

// Eight characters of ASCII at a time, in one machine word.
using Word = std::uint64_t;
constexpr Word kEach = 0x0101010101010101;
constexpr Word kHighBits = 0x80 * kEach;

template <class Part>
Word LoadPart(const char* from) {
  Part part;
  std::memcpy(&part, from, sizeof part);
  return part;
}

// One to seven bytes, put together from parts that overlap rather than byte by byte.
static_assert(std::endian::native == std::endian::little);
Word LoadShort(const char* from, std::size_t count) {
  if (count >= 4) {
    return LoadPart<std::uint32_t>(from) | LoadPart<std::uint32_t>(from + count - 4) << 8 * (count - 4);
  }
  const std::size_t middle = count / 2;
  const std::size_t last = count - 1;
  return LoadPart<std::uint8_t>(from) | LoadPart<std::uint8_t>(from + middle) << 8 * middle |
         LoadPart<std::uint8_t>(from + last) << 8 * last;
}

// The next up to eight bytes from `position`, which lies inside the text; zeros stand for what is behind its
// end.
Word Load(std::string_view text, std::size_t position) {
  const char* from = text.data() + position;
  const std::size_t count = text.size() - position;
  return count >= sizeof(Word) ? LoadPart<Word>(from) : LoadShort(from, count);
}

// Lowers A to Z in each byte of a word that is ASCII throughout. The high bit of each byte is free, so that
// it can take the carry of a comparison.
constexpr Word LowerAscii(Word word) {
  const Word from_a = word + (0x80 - 'A') * kEach;
  const Word past_z = word + (0x80 - 'Z' - 1) * kEach;
  return word | (((from_a & ~past_z) & kHighBits) >> 2);
}
static_assert(LowerAscii(0x5B5A41407B7A6130) == 0x5B7A61407B7A6130);

template <char32_t Change(char32_t)>
std::string ChangeCase(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  for (std::size_t position = 0; position < text.size();) {
    const utf8::Character character = utf8::Decode(text, position);
    utf8::Append(result, Change(character.code));
    position += character.length;
  }
  return result;
}

constexpr std::uint64_t Mix(std::uint64_t hash, Word word) {
  hash = (hash ^ word) * 0x9E3779B97F4A7C15;  // 2^64 divided by the golden ratio
  return hash ^ (hash >> 32);
}

struct Hash {
  std::size_t value;
  bool ascii;
};

// The hash of a text whose characters beyond ASCII are in lower case already; ASCII is lowered here.
Hash HashLowered(std::string_view text) {
  std::uint64_t hash = text.size();
  Word all = 0;
  for (std::size_t position = 0; position < text.size(); position += sizeof(Word)) {
    const Word word = Load(text, position);
    hash = Mix(hash, (word & kHighBits) == 0 ? LowerAscii(word) : word);
    all |= word;
  }
  return {static_cast<std::size_t>(Mix(hash, 0)), (all & kHighBits) == 0};
}

// -1, 0 or 1 by the lower-case characters, decoded one by one.
std::int32_t CompareLowered(std::string_view a, std::string_view b) {
  std::size_t at_a = 0;
  std::size_t at_b = 0;
  while (at_a < a.size() && at_b < b.size()) {
    const utf8::Character from_a = utf8::Decode(a, at_a);
    const utf8::Character from_b = utf8::Decode(b, at_b);
    const char32_t lower_a = utf8::Lower(from_a.code);
    const char32_t lower_b = utf8::Lower(from_b.code);
    if (lower_a != lower_b) return lower_a < lower_b ? -1 : 1;
    at_a += from_a.length;
    at_b += from_b.length;
  }
  if (at_a < a.size()) return 1;
  return at_b < b.size() ? -1 : 0;
}

}  // namespace

std::string UCase(std::string_view text) { return ChangeCase<utf8::Upper>(text); }
std::string LCase(std::string_view text) { return ChangeCase<utf8::Lower>(text); }

bool EqualText(std::string_view a, std::string_view b) {
  const std::size_t common = std::min(a.size(), b.size());
  for (std::size_t position = 0; position < common; position += sizeof(Word)) {
    const Word from_a = Load(a, position);
    const Word from_b = Load(b, position);
    if (((from_a | from_b) & kHighBits) != 0)
      return CompareLowered(a.substr(position), b.substr(position)) == 0;
    if (LowerAscii(from_a) != LowerAscii(from_b)) return false;
  }
  return a.size() == b.size();
}

std::int32_t StrComp(std::string_view a, std::string_view b, Compare compare) {
  if (compare == Compare::Text) return CompareLowered(a, b);
  const int order = a.compare(b);
  return (order > 0) - (order < 0);
}

std::size_t HashText(std::string_view text) {
  const Hash hash = HashLowered(text);
  return hash.ascii ? hash.value : HashLowered(LCase(text)).value;
}

}  // namespace mirelo
