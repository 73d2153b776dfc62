#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "quotetracker/level1_fields.h"

namespace mirelo::quotetracker {

// Writes Level I records as they stand on the stream, one behind the other, into a string of bytes:
//
//   std::string bytes;
//   Level1Encoder encoder(bytes);
//   encoder.Begin("S1")
//       .Text(Level1Field::kSymbol, "MSFT")
//       .Double(Level1Field::kLast, 26.54)
//       .LongVolume(Level1Field::kVolume, 61'200'300)
//       .End();
//
// A record is its kind (two characters), its length (signed 16-bit, all bytes counted) and its fields, each
// an id (16-bit) and a value; all numbers are little-endian. A member that does not suit the field's kind
// raises std::invalid_argument; for bytes that no good record has there are Id, Bytes and EndWithLength.
class Level1Encoder {
 public:
  static constexpr std::size_t kMostLength = 32'767;

  // Appends to `out`, which outlives the encoder.
  explicit Level1Encoder(std::string& out) : out_(out) {}

  // `kind` is "S1", "L1", "HO" or "HT"; other kinds of two characters are written too.
  Level1Encoder& Begin(std::string_view kind);

  Level1Encoder& Double(Level1Field field, double value);
  Level1Encoder& Integer(Level1Field field, std::int32_t value);
  Level1Encoder& LongVolume(Level1Field field, std::int64_t value);
  Level1Encoder& Text(Level1Field field, std::string_view text);  // without a byte 0 in it
  Level1Encoder& Character(Level1Field field, char character);
  Level1Encoder& Date(std::string_view digits);  // MMDDYYYYHHMMSS, 14 characters

  // Sets the record's length to what was written since Begin. Raises std::length_error above kMostLength.
  void End();

  // Any id, without a value.
  Level1Encoder& Id(std::int16_t id);
  // Bytes as they are.
  Level1Encoder& Bytes(std::string_view bytes);
  // Ends the record with a length that need not be true.
  void EndWithLength(std::int16_t length);

 private:
  template <typename Value>
  Level1Encoder& Number(Level1Field field, Value value);

  std::string& out_;
  std::size_t start_ = 0;  // of the record in out_
};

}  // namespace mirelo::quotetracker
