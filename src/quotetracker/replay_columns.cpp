#include "quotetracker/replay_columns.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <stdexcept>
#include <system_error>

#include "automation/runtime_error.h"
#include "automation/visible_text.h"
#include "quotetracker/ascii.h"

namespace mirelo::quotetracker {
namespace {

// Each of these takes a field's text into the quote; false when it cannot be read.
using Reader = bool (*)(std::string_view text, Quote& quote);

template <Price Quote::*kMember>
bool ReadPrice(std::string_view text, Quote& quote) {
  const auto price = ParsePrice(text);
  if (price) quote.*kMember = *price;
  return price.has_value();
}

template <auto kMember>
bool ReadCount(std::string_view text, Quote& quote) {
  auto& member = quote.*kMember;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), member);
  return error == std::errc{} && end == text.data() + text.size() && member >= 0;
}

// The one text in the columns; what mirelo prints as comma-separated lines is escaped.
bool ReadTicker(std::string_view text, Quote& quote) try {
  quote.ticker = Unescaped(text);
  return !text.empty();
} catch (const RuntimeError&) {
  return false;
}

template <std::size_t kWidth>
bool ReadDigits(std::string_view text, std::array<char, kWidth>& into) {
  if (text.size() != kWidth) return false;
  std::ranges::copy(text, into.begin());
  return true;
}

bool ReadDate(std::string_view text, Quote& quote) {
  return ReadDigits(text, quote.stamp.date) && ParseMoment(text, "00:00:00");
}

bool ReadTime(std::string_view text, Quote& quote) {
  return ReadDigits(text, quote.stamp.time) && ParseMoment("01/01/2000", text);
}

bool ReadTick(std::string_view text, Quote& quote) {
  for (const Tick tick : {Tick::kUp, Tick::kDown, Tick::kSame}) {
    if (text.size() != 1 || ToUpper(text[0]) != static_cast<char>(tick)) continue;
    quote.tick = tick;
    return true;
  }
  return false;
}

struct Column {
  std::string_view name;
  Reader read;
  bool required = false;
};

constexpr std::array kColumns{
    Column{"Ticker", ReadTicker, true},
    Column{"Date", ReadDate, true},
    Column{"Time", ReadTime, true},
    Column{"Last", ReadPrice<&Quote::last>},
    Column{"Bid", ReadPrice<&Quote::bid>},
    Column{"Ask", ReadPrice<&Quote::ask>},
    Column{"Change", ReadPrice<&Quote::change>},
    Column{"Tick", ReadTick},
    Column{"Volume", ReadCount<&Quote::volume>},
    Column{"High", ReadPrice<&Quote::high>},
    Column{"Low", ReadPrice<&Quote::low>},
    Column{"BidSize", ReadCount<&Quote::bid_size>},
    Column{"AskSize", ReadCount<&Quote::ask_size>},
    Column{"LastVolume", ReadCount<&Quote::last_volume>},
    Column{"AvgTrade", ReadCount<&Quote::average_trade>},
    Column{"NumTrades", ReadCount<&Quote::trades>},
    Column{"Open", ReadPrice<&Quote::open>},
    Column{"52w Low", ReadPrice<&Quote::low_52>},
    Column{"52w High", ReadPrice<&Quote::high_52>},
};

// Takes the text up to the next comma off a line; false when nothing is left.
bool TakeField(std::string_view& line, bool& more, std::string_view& field) {
  if (!more) return false;
  const auto comma = line.find(',');
  field = Trimmed(line.substr(0, comma));
  more = comma != std::string_view::npos;
  line.remove_prefix(more ? comma + 1 : line.size());
  return true;
}

std::string Quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

}  // namespace

std::string ReplayColumns::Names() {
  std::string names;
  for (const Column& column : kColumns) (names += names.empty() ? "" : ",") += column.name;
  return names;
}

ReplayColumns::ReplayColumns(std::string_view header) {
  std::string_view name;
  for (bool more = true; TakeField(header, more, name);) {
    const auto known =
        std::ranges::find_if(kColumns, [&](const Column& column) { return SameText(column.name, name); });
    if (known == kColumns.end()) throw std::invalid_argument("unknown column " + Quoted(name));
    const auto place = static_cast<std::size_t>(known - kColumns.begin());
    if (std::ranges::count(columns_, place) > 0) throw std::invalid_argument("two columns " + Quoted(name));
    columns_.push_back(place);
  }
  for (std::size_t place = 0; place < kColumns.size(); ++place) {
    if (!kColumns[place].required || std::ranges::count(columns_, place) > 0) continue;
    throw std::invalid_argument("no column " + Quoted(kColumns[place].name));
  }
}

Quote ReplayColumns::Read(std::string_view line) const {
  Quote quote;
  std::string_view text;
  std::size_t count = 0;
  for (bool more = true; TakeField(line, more, text); ++count) {
    if (count == columns_.size()) throw std::invalid_argument("more fields than columns");
    const Column& column = kColumns[columns_[count]];
    if (text.empty() && !column.required) continue;
    if (!column.read(text, quote)) {
      throw std::invalid_argument(Quoted(text) + " cannot stand in column " + Quoted(column.name));
    }
  }
  if (count < columns_.size()) throw std::invalid_argument("fewer fields than columns");
  return quote;
}

bool ReplayColumns::HaveLastVolume() const {
  return std::ranges::any_of(columns_,
                             [](std::size_t column) { return kColumns[column].name == "LastVolume"; });
}

}  // namespace mirelo::quotetracker
