#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace mirelo::testing {

// Builds the bytes of a Level I record field by field, in the order of the calls, byte by byte and without
// knowing the decoder. `Bytes()` puts the head in front.
//
//   Level1Wire("S1").Symbol("MSFT").Last(28.35).Volume(1'200).Bytes()
class Level1Wire {
 public:
  explicit Level1Wire(std::string_view kind = "S1") : kind_(kind) {}

  Level1Wire& Symbol(std::string_view text) { return Text(1, text); }
  Level1Wire& Bid(double value) { return Double(2, value); }
  Level1Wire& Ask(double value) { return Double(3, value); }
  Level1Wire& Last(double value) { return Double(4, value); }
  Level1Wire& Change(double value) { return Double(5, value); }
  Level1Wire& Volume(std::int64_t value) { return Long(6, value); }
  Level1Wire& LastSize(std::int32_t value) { return Integer(11, value); }
  Level1Wire& High(double value) { return Double(12, value); }
  Level1Wire& Low(double value) { return Double(13, value); }
  // MMDDYYYYHHMMSS
  Level1Wire& Stamp(std::string_view text) { return Fixed(15, text); }

  Level1Wire& Double(int id, double value) {
    std::uint64_t bits = 0;
    static_assert(sizeof bits == sizeof value);
    __builtin_memcpy(&bits, &value, sizeof bits);
    return Id(id).Number(bits, 8);
  }
  Level1Wire& Long(int id, std::int64_t value) { return Id(id).Number(static_cast<std::uint64_t>(value), 8); }
  Level1Wire& Integer(int id, std::int32_t value) {
    return Id(id).Number(static_cast<std::uint32_t>(value), 4);
  }
  Level1Wire& Text(int id, std::string_view text) { return Id(id).Raw(text).Raw(std::string_view("\0", 1)); }
  Level1Wire& Fixed(int id, std::string_view text) { return Id(id).Raw(text); }
  Level1Wire& Id(int id) { return Number(static_cast<std::uint16_t>(id), 2); }
  Level1Wire& Raw(std::string_view bytes) {
    fields_ += bytes;
    return *this;
  }

  // States another length than the true one.
  Level1Wire& Length(std::int16_t length) {
    length_ = length;
    return *this;
  }

  std::string Bytes() const {
    const auto true_length = static_cast<std::int16_t>(kind_.size() + 2 + fields_.size());
    const auto length = static_cast<std::uint16_t>(length_.value_or(true_length));
    return kind_ + static_cast<char>(length & 0xFF) + static_cast<char>(length >> 8) + fields_;
  }
  operator std::string() const { return Bytes(); }

 private:
  Level1Wire& Number(std::uint64_t value, int width) {
    for (int i = 0; i < width; ++i) fields_ += static_cast<char>(value >> (8 * i) & 0xFF);
    return *this;
  }

  std::string kind_;
  std::string fields_;
  std::optional<std::int16_t> length_;
};

}  // namespace mirelo::testing
