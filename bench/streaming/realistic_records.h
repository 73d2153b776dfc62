#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace mirelo::bench {

// Level I records as a busy stream sends them: the symbol, and of bid, ask, last, change, volume, open, the
// sizes, high, low and date a subset that is chance, 12 fields with the symbol on average. The same for the
// same seed.
class RealisticRecords {
 public:
  struct Options {
    int symbols = 500;
    int records = 0;
    // Whether each record of a symbol carries another price and a higher volume than the one before; else a
    // symbol repeats itself.
    bool moving = false;
    unsigned seed = 2011;
  };

  explicit RealisticRecords(const Options& options);

  // All records, one behind the other.
  const std::string& bytes() const { return bytes_; }
  int count() const { return count_; }
  // The same bytes in chunks of 1 to 8 KiB, which end inside records as a socket's do; but never where the
  // cut itself would lose a record (in its head, or so that two bytes are left).
  std::vector<std::string> Chunks() const;
  // A chunk for each symbol with one record of all its fields.
  std::vector<std::string> Opening() const;

 private:
  struct Quote {
    std::string symbol;
    double last = 0;
    std::int64_t volume = 0;
  };
  enum class Subset { kChance, kAll };

  void Append(std::string& out, const Quote& quote, int stamp_second, Subset subset) const;

  mutable std::mt19937 random_;
  std::vector<Quote> quotes_;
  std::string bytes_;
  std::vector<std::size_t> starts_;  // of the records in `bytes_`
  int count_ = 0;
};

}  // namespace mirelo::bench
