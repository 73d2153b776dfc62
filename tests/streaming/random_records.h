#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "support/level1_wire.h"

namespace mirelo::testing {

// Well-formed Level I records with chance fields of few symbols, the same for the same seed.
class RandomRecords {
 public:
  explicit RandomRecords(unsigned seed) : random_(seed) {}

  std::string Next(std::string_view kind) {
    Level1Wire record(kind);
    if (!OneIn(20)) record.Symbol(std::array{"MSFT", "msft", "IBM", "L1X", "S1", "HO HO", ""}[random_() % 7]);
    for (int id = 2; id <= 31; ++id) {
      if (OneIn(3)) Field(record, id);
    }
    return record;
  }

  std::string Stream(int count, std::initializer_list<std::string_view> kinds) {
    const std::vector<std::string_view> choice(kinds);
    std::string bytes;
    for (int i = 0; i < count; ++i) bytes += Next(choice[random_() % choice.size()]);
    return bytes;
  }

 private:
  bool OneIn(unsigned n) { return random_() % n == 0; }

  void Field(Level1Wire& record, int id) {
    switch (id) {
      case 6:
      case 19:
      case 22:
        record.Long(id, static_cast<std::int64_t>(random_() % 5000));
        break;
      case 9:
      case 10:
      case 11:
      case 20:
      case 21:
      case 28:
        record.Integer(id, static_cast<std::int32_t>(random_() % 5) - 1);
        break;
      case 14:
      case 29:
        record.Fixed(id, OneIn(2) ? "+" : "-");
        break;
      case 15:
        record.Stamp(OneIn(2) ? "01202011083613" : "01202011083614");
        break;
      case 18:
      case 25:
      case 26:
        record.Text(id, std::string(random_() % 30, 'c'));
        break;
      default:
        record.Double(id, static_cast<double>(random_() % 6) / 4 - 0.25);
        break;
    }
  }

  std::mt19937 random_;
};

}  // namespace mirelo::testing
