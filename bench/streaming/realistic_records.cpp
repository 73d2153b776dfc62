#include "realistic_records.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string_view>

#include "support/level1_wire.h"

namespace mirelo::bench {

namespace {

using testing::Level1Wire;

constexpr int kQuotesASecond = 5'000;

// Three letters, four from the 17,577th on.
std::string SymbolOf(int number) {
  std::string symbol;
  for (int letters = 0; letters < 3 || number > 0; ++letters, number /= 26) {
    symbol += static_cast<char>('A' + number % 26);
  }
  return symbol;
}

// MMDDYYYYHHMMSS, `second` seconds into the trading day.
std::string Stamp(int second) {
  std::array<char, 32> text{};
  const int since_midnight = 9 * 3600 + 30 * 60 + second % (6 * 3600);
  std::snprintf(text.data(), text.size(), "01202011%02d%02d%02d", since_midnight / 3600,
                since_midnight / 60 % 60, since_midnight % 60);
  return text.data();
}

bool BeginsLikeAKind(std::string_view bytes) {
  constexpr std::array<std::string_view, 7> kKinds{"OK", "LO", "S1", "L1", "HO", "HT", "ES"};
  return std::ranges::any_of(kKinds, [&](std::string_view kind) { return bytes.starts_with(kind); });
}

}  // namespace

RealisticRecords::RealisticRecords(const Options& options) : random_(options.seed), count_(options.records) {
  for (int i = 0; i < options.symbols; ++i) {
    quotes_.push_back({SymbolOf(i), 10.0 + 0.01 * static_cast<double>(random_() % 9'000),
                       1'000 + static_cast<std::int64_t>(random_() % 100'000)});
  }
  for (int i = 0; i < options.records; ++i) {
    Quote& quote = quotes_[random_() % quotes_.size()];
    // A quote is some seconds old when it is sent.
    const int second = i / kQuotesASecond + static_cast<int>(random_() % 5);
    if (options.moving) {
      quote.last += (random_() % 2 == 0 ? 0.01 : -0.01) * static_cast<double>(1 + random_() % 5);
      quote.volume += 100 * static_cast<std::int64_t>(1 + random_() % 10);
    }
    starts_.push_back(bytes_.size());
    Append(bytes_, quote, second, Subset::kChance);
  }
}

std::vector<std::string> RealisticRecords::Opening() const {
  std::vector<std::string> chunks;
  for (const Quote& quote : quotes_) Append(chunks.emplace_back(), quote, 0, Subset::kAll);
  return chunks;
}

void RealisticRecords::Append(std::string& out, const Quote& quote, int stamp_second, Subset subset) const {
  // With the symbol 12 of 13 fields on average.
  const auto carries = [&] { return subset == Subset::kAll || random_() % 12 != 0; };
  Level1Wire record("S1");
  record.Symbol(quote.symbol);
  if (carries()) record.Bid(quote.last - 0.02);
  if (carries()) record.Ask(quote.last + 0.02);
  if (carries()) record.Last(quote.last);
  if (carries()) record.Change(0.35);
  if (carries()) record.Volume(quote.volume);
  if (carries()) record.Double(7, 25.5);
  if (carries()) record.Integer(9, 300);
  if (carries()) record.Integer(10, 500);
  if (carries()) record.LastSize(100);
  if (carries()) record.High(27.5);
  if (carries()) record.Low(24.25);
  if (carries()) record.Stamp(Stamp(stamp_second));
  out += record.Bytes();
}

std::vector<std::string> RealisticRecords::Chunks() const {
  std::mt19937 random(8192);
  std::vector<std::string> chunks;
  const std::string_view bytes = bytes_;
  for (std::size_t at = 0; at < bytes.size();) {
    std::size_t end = std::min(bytes.size(), at + 1024 + random() % (8192 - 1024 + 1));
    const auto loses = [&] {
      if (end == bytes.size()) return false;
      const std::size_t start = *std::prev(std::upper_bound(starts_.begin(), starts_.end(), end));
      const std::size_t next = *std::upper_bound(starts_.begin(), starts_.end(), end);
      const std::size_t into = end - start;
      return (into > 0 && into < 6) || next - end < 3 || (into > 0 && BeginsLikeAKind(bytes.substr(end)));
    };
    while (loses()) --end;
    chunks.emplace_back(bytes.substr(at, end - at));
    at = end;
  }
  return chunks;
}

}  // namespace mirelo::bench
