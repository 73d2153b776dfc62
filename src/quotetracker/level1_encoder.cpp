#include "quotetracker/level1_encoder.h"

#include <bit>
#include <stdexcept>

namespace mirelo::quotetracker {
namespace {

constexpr std::size_t kKindWidth = 2;
constexpr std::size_t kDateWidth = 14;

void Require(bool condition, const char* otherwise) {
  if (!condition) throw std::invalid_argument(otherwise);
}

void Check(Level1Field field, Level1Kind kind) {
  const bool known = field >= Level1Field::kSymbol && field <= Level1Field::kClose;
  Require(known && KindOf(field) == kind, "the field has a value of another kind");
}

// Lays an unsigned number down in little-endian order.
template <typename Value>
void Lay(Value value, char* at) {
  for (std::size_t i = 0; i < sizeof value; ++i) at[i] = static_cast<char>(value >> (8 * i));
}

}  // namespace

Level1Encoder& Level1Encoder::Begin(std::string_view kind) {
  Require(kind.size() == kKindWidth, "a record's kind has two characters");
  start_ = out_.size();
  out_ += kind;
  out_.append(2, '\0');
  return *this;
}

Level1Encoder& Level1Encoder::Double(Level1Field field, double value) {
  Check(field, Level1Kind::kDouble);
  return Number(field, std::bit_cast<std::uint64_t>(value));
}

Level1Encoder& Level1Encoder::Integer(Level1Field field, std::int32_t value) {
  Check(field, Level1Kind::kInteger);
  return Number(field, static_cast<std::uint32_t>(value));
}

Level1Encoder& Level1Encoder::LongVolume(Level1Field field, std::int64_t value) {
  Check(field, Level1Kind::kLongVolume);
  return Number(field, static_cast<std::uint64_t>(value));
}

Level1Encoder& Level1Encoder::Text(Level1Field field, std::string_view text) {
  Require(text.find('\0') == std::string_view::npos, "a text ends at its first byte 0");
  Check(field, Level1Kind::kZeroText);
  Id(static_cast<std::int16_t>(field));
  out_ += text;
  out_ += '\0';
  return *this;
}

Level1Encoder& Level1Encoder::Character(Level1Field field, char character) {
  Check(field, Level1Kind::kCharacter);
  Id(static_cast<std::int16_t>(field));
  out_ += character;
  return *this;
}

Level1Encoder& Level1Encoder::Date(std::string_view digits) {
  Require(digits.size() == kDateWidth, "a date has 14 digits");
  Id(static_cast<std::int16_t>(Level1Field::kDate));
  out_ += digits;
  return *this;
}

void Level1Encoder::End() {
  const std::size_t length = out_.size() - start_;
  if (length > kMostLength) throw std::length_error("a record has at most 32767 bytes");
  EndWithLength(static_cast<std::int16_t>(length));
}

Level1Encoder& Level1Encoder::Id(std::int16_t id) {
  char bytes[2];
  Lay(static_cast<std::uint16_t>(id), bytes);
  out_.append(bytes, sizeof bytes);
  return *this;
}

Level1Encoder& Level1Encoder::Bytes(std::string_view bytes) {
  out_ += bytes;
  return *this;
}

void Level1Encoder::EndWithLength(std::int16_t length) {
  const auto bits = static_cast<std::uint16_t>(length);
  out_[start_ + kKindWidth] = static_cast<char>(bits & 0xFF);
  out_[start_ + kKindWidth + 1] = static_cast<char>(bits >> 8);
}

template <typename Value>
Level1Encoder& Level1Encoder::Number(Level1Field field, Value value) {
  // Id and value by one append: a busy stream is made of little else.
  char bytes[2 + sizeof value];
  Lay(static_cast<std::uint16_t>(field), bytes);
  Lay(value, bytes + 2);
  out_.append(bytes, sizeof bytes);
  return *this;
}

}  // namespace mirelo::quotetracker
