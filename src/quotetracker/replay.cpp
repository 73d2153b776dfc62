#include "quotetracker/replay.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <limits>
#include <stdexcept>
#include <unordered_map>
#include <utility>

#include "quotetracker/ascii.h"
#include "quotetracker/replay_columns.h"

namespace mirelo::quotetracker {
namespace {

// The next line that is not empty, without its end; counts the lines passed.
bool TakeLine(std::istream& text, std::string& line, std::size_t& number) {
  while (std::getline(text, line)) {
    ++number;
    if (line.ends_with('\r')) line.pop_back();
    if (!line.empty()) return true;
  }
  return false;
}

// Spreadsheets put a byte order mark in front of what they save as UTF-8.
std::string_view WithoutMark(std::string_view line) {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  return line.starts_with(kMark) ? line.substr(kMark.size()) : line;
}

// A volume that falls is that of a new day, of which nothing is known before.
std::int32_t TradedBetween(std::int64_t before, std::int64_t after) {
  constexpr std::int64_t kMost = std::numeric_limits<std::int32_t>::max();
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(after - before, 0, kMost));
}

}  // namespace

Replay::Replay(std::istream& text, const std::string& name, double speed, Clock wall)
    : speed_(speed), wall_(std::move(wall)), began_(wall_()) {
  std::string line;
  std::size_t number = 0;
  try {
    if (!TakeLine(text, line, number)) throw std::invalid_argument("no column \"Ticker\"");
    const ReplayColumns columns(WithoutMark(line));
    std::unordered_map<std::string, std::int64_t> volumes;
    while (TakeLine(text, line, number)) {
      Quote quote = columns.Read(line);
      if (!columns.HaveLastVolume()) {
        std::int64_t& before = volumes.try_emplace(UpperCase(quote.ticker), quote.volume).first->second;
        quote.last_volume = TradedBetween(std::exchange(before, quote.volume), quote.volume);
      }
      const Moment moment = ParseMoment(quote.stamp.Date(), quote.stamp.Time()).value();
      if (!lines_.empty() && moment < lines_.back().moment) {
        throw std::invalid_argument("an earlier time than the line above");
      }
      lines_.push_back({moment, std::move(quote)});
    }
    if (lines_.empty()) throw std::invalid_argument("no quotes");
  } catch (const std::invalid_argument& error) {
    throw std::runtime_error(name + ", line " + std::to_string(number) + ": " + error.what());
  }
}

std::unique_ptr<Replay> Replay::FromFile(const std::string& path, double speed, Clock wall) {
  std::ifstream file(path, std::ios::binary);
  file.peek();  // a folder can be opened, but not read
  if (file.bad() || !file.is_open())
    throw std::runtime_error(path + ": cannot be read: " + std::strerror(errno));
  return std::make_unique<Replay>(file, path, speed, std::move(wall));
}

Moment Replay::Now() {
  const auto passed = static_cast<double>((wall_() - began_).count()) * speed_;
  return lines_.front().moment + std::chrono::milliseconds(std::llround(passed));
}

const Quote& Replay::Look(std::string_view ticker) {
  Due();
  const auto found = current_.find(UpperCase(ticker));
  return found != current_.end() ? lines_[found->second].quote : Unknown(ticker);
}

const Quote& Replay::Unknown(std::string_view ticker) {
  unknown_ = Quote{};
  unknown_.ticker = ticker;
  unknown_.stamp = ToStamp(Now());
  return unknown_;
}

std::size_t Replay::Due() {
  for (const Moment now = Now(); due_ < lines_.size() && lines_[due_].moment <= now; ++due_) {
    current_.insert_or_assign(UpperCase(lines_[due_].quote.ticker), due_);
  }
  return due_;
}

// The lines of the wanted tickers, from the one that was due next at the time of subscribing.
class Replay::Updates : public QuoteUpdates {
 public:
  Updates(Replay& replay, std::vector<std::string> tickers)
      : replay_(replay), next_(replay.Due()), tickers_(std::move(tickers)) {
    for (std::size_t i = 0; i < tickers_.size(); ++i) {
      const std::string ticker = UpperCase(tickers_[i]);
      wanted_.emplace(ticker, i);
      const auto current = replay_.current_.find(ticker);
      given_.push_back(current != replay_.current_.end() ? current->second : kNone);
    }
  }

  const Quote& Look(std::size_t ticker) override {
    const std::size_t line = given_[ticker];
    return line == kNone ? replay_.Unknown(tickers_[ticker]) : replay_.lines_[line].quote;
  }

  QuoteChange Next() override {
    for (const std::size_t due = replay_.Due(); next_ < due;) {
      const std::size_t line = next_++;
      const Quote& quote = replay_.lines_[line].quote;
      const auto wanted = wanted_.find(UpperCase(quote.ticker));
      if (wanted == wanted_.end()) continue;
      given_[wanted->second] = line;
      return {&quote, wanted->second};
    }
    return {};
  }

 private:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  Replay& replay_;
  std::size_t next_;
  std::vector<std::string> tickers_;  // as the client writes them
  std::vector<std::size_t> given_;    // of each ticker, the line that was given last
  std::unordered_map<std::string, std::size_t> wanted_;
};

std::unique_ptr<QuoteUpdates> Replay::Subscribe(const std::vector<std::string>& tickers) {
  return std::make_unique<Updates>(*this, tickers);
}

}  // namespace mirelo::quotetracker
