#pragma once

#include <cstdint>
#include <cstring>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace mirelo::quotetracker {

// A Level I record taken apart, by field id.
struct ReadRecord {
  std::string kind;
  std::map<int, double> numbers;
  std::map<int, std::string> texts;
  std::string Symbol() const { return texts.at(1); }
};

// Takes records apart strictly: raises std::runtime_error for anything but whole records of whole fields. It
// shares nothing with the encoder, so that both cannot be wrong alike.
class RecordReader {
 public:
  static std::vector<ReadRecord> ReadAll(std::string_view bytes) {
    std::vector<ReadRecord> records;
    while (!bytes.empty()) records.push_back(Take(bytes));
    return records;
  }

  // The length of the record at the front, or 0 if it has not come whole yet.
  static std::size_t WholeLength(std::string_view bytes) {
    if (bytes.size() < 4) return 0;
    const auto length = static_cast<std::size_t>(Number<std::int16_t>(bytes.substr(2)));
    return length <= bytes.size() ? length : 0;
  }

  static ReadRecord Take(std::string_view& bytes) {
    const std::size_t length = WholeLength(bytes);
    if (length < 4) throw std::runtime_error("no whole record");
    ReadRecord record;
    record.kind = bytes.substr(0, 2);
    for (std::string_view fields = bytes.substr(4, length - 4); !fields.empty();) TakeField(fields, record);
    bytes.remove_prefix(length);
    return record;
  }

 private:
  template <typename Value>
  static Value Number(std::string_view bytes) {
    if (bytes.size() < sizeof(Value)) throw std::runtime_error("a field is cut off");
    Value value;
    std::memcpy(&value, bytes.data(), sizeof value);
    return value;
  }

  template <typename Value>
  static double TakeNumber(std::string_view& fields) {
    const auto value = static_cast<double>(Number<Value>(fields));
    fields.remove_prefix(sizeof(Value));
    return value;
  }

  static std::string TakeText(std::string_view& fields, std::size_t width, std::size_t end) {
    if (fields.size() < width + end) throw std::runtime_error("a text is cut off");
    std::string text(fields.substr(0, width));
    fields.remove_prefix(width + end);
    return text;
  }

  static void TakeField(std::string_view& fields, ReadRecord& record) {
    const int id = static_cast<int>(TakeNumber<std::int16_t>(fields));
    switch (id) {
      case 1:
      case 18:
      case 25:
      case 26:
        record.texts[id] = TakeText(fields, fields.find('\0'), 1);
        return;
      case 14:
      case 29:
        record.texts[id] = TakeText(fields, 1, 0);
        return;
      case 15:
        record.texts[id] = TakeText(fields, 14, 0);
        return;
      case 6:
      case 19:
      case 22:
        record.numbers[id] = TakeNumber<std::int64_t>(fields);
        return;
      case 9:
      case 10:
      case 11:
      case 20:
      case 21:
      case 28:
        record.numbers[id] = TakeNumber<std::int32_t>(fields);
        return;
      default:
        if (id < 1 || id > 31) throw std::runtime_error("a field has no known id");
        record.numbers[id] = TakeNumber<double>(fields);
    }
  }
};

}  // namespace mirelo::quotetracker
