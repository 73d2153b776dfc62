#include "streaming/reference_stream.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <set>
#include <type_traits>
#include <utility>

#include "automation/ansi.h"
#include "automation/text.h"

namespace mirelo::testing {

namespace {

// Field ids by what they hold, and the names under which quotes show them.
const std::map<int, std::string> kDoubles{
    {2, "Bid_Price"},  {3, "Ask_Price"}, {4, "Last_Price"}, {5, "Change"},        {7, "OpenTicker"},
    {8, "Prev_Close"}, {12, "High"},     {13, "Low"},       {16, "Week_52_High"}, {17, "Week_52_Low"},
    {23, "Dividend"},  {24, "Earnings"}, {27, "PE"},        {30, "Yield"},        {31, "CloseTicker"},
};
const std::map<int, std::string> kVolumes{{6, "Volume"}, {19, "Prev_Volume"}, {22, "Average_Volume"}};
const std::map<int, std::string> kIntegers{{9, "Bid_Size"}, {10, "Ask_Size"},       {11, "Last_Size"},
                                           {20, "Trades"},  {21, "Avg_Trade_Size"}, {28, "Open_Interest"}};
const std::map<int, std::string> kTexts{
    {1, "Symbol"}, {18, "Company_Name"}, {25, "Exchange"}, {26, "Market_Cap"}};

std::string Exact(double number) {
  char text[40];
  std::snprintf(text, sizeof text, "%.17g", number);
  return text;
}

void Put(FlatQuote& quote, const std::string& name, double number) {
  if (number != 0) quote[name] = Exact(number);
}
void Put(FlatQuote& quote, const std::string& name, const std::string& text) {
  if (!text.empty()) quote[name] = text;
}

}  // namespace

FlatQuote Flat(const cQTData& q) {
  FlatQuote flat;
  const auto put = [&](const char* name, const auto& property) {
    if constexpr (std::is_convertible_v<decltype(property()), std::string>) {
      Put(flat, name, std::string(property()));
    } else {
      Put(flat, name, static_cast<double>(property()));
    }
  };
  put("NameID", q.NameID);
  put("Symbol", q.Symbol);
  put("Last_Price", q.Last_Price);
  put("Bid_Price", q.Bid_Price);
  put("Ask_Price", q.Ask_Price);
  put("Change", q.Change);
  put("Volume", q.Volume);
  put("Last_Volume", q.Last_Volume);
  put("OpenTicker", q.OpenTicker);
  put("Prev_Close", q.Prev_Close);
  put("Bid_Size", q.Bid_Size);
  put("Ask_Size", q.Ask_Size);
  put("Last_Size", q.Last_Size);
  put("High", q.High);
  put("Low", q.Low);
  put("Date_Time", q.Date_Time);
  put("Week_52_High", q.Week_52_High);
  put("Week_52_Low", q.Week_52_Low);
  put("Company_Name", q.Company_Name);
  put("Prev_Volume", q.Prev_Volume);
  put("Trades", q.Trades);
  put("Avg_Trade_Size", q.Avg_Trade_Size);
  put("Average_Volume", q.Average_Volume);
  put("Dividend", q.Dividend);
  put("Earnings", q.Earnings);
  put("Exchange", q.Exchange);
  put("Market_Cap", q.Market_Cap);
  put("PE", q.PE);
  put("Open_Interest", q.Open_Interest);
  put("Yield", q.Yield);
  put("CloseTicker", q.CloseTicker);
  put("Tick", q.Tick);
  put("UPC", q.UPC);
  return flat;
}

ReferenceStream::Outcome ReferenceStream::Receive(std::string_view chunk) {
  if (sources_pending_) return Outcome::Done;  // no quote record ends a source list
  if (chunk.size() < 3) return Outcome::Done;

  Bytes bytes;
  for (const char c : chunk) bytes.emplace_back(static_cast<std::uint8_t>(c));
  const std::string kind(chunk.substr(0, 2));
  try {
    if (kind == "OK" || kind == "LO") {
      // replies without tags
    } else if (kind == "ES") {
      sources_pending_ = true;
    } else if (kind == "S1" || kind == "HO" || kind == "HT" || (kind == "L1" && !pending_)) {
      Decode(bytes);
    } else if (kind == "L1") {
      const std::size_t pending_upper = pending_->size() - 1;
      const std::size_t chunk_upper = bytes.size() - 1;
      Bytes merged(pending_upper + chunk_upper + 1);
      for (std::size_t i = 0; i < pending_->size(); ++i) merged[i] = (*pending_)[i];
      for (const auto& byte : bytes) merged[pending_upper + 1] = byte;
      Decode(merged);
      pending_.reset();
    } else if (pending_) {
      Bytes merged = *pending_;
      for (const auto& byte : bytes) merged.push_back(byte);
      Decode(merged);
    }
  } catch (const Failure& failure) {
    return failure.outcome;
  }
  return Outcome::Done;
}

void ReferenceStream::Decode(const Bytes& data) {
  const long upper = static_cast<long>(data.size()) - 1;
  const auto at = [&](long i) -> std::uint8_t {
    if (i < 0 || i > upper) throw Failure{Outcome::SubscriptOutOfRange};
    return data[static_cast<std::size_t>(i)].value_or(0);
  };
  // The unsigned number in `count` bytes; 0 when they reach outside.
  const auto number = [&](long start, int count) -> std::uint64_t {
    if (start < 0 || start + count - 1 > upper) return 0;
    std::uint64_t value = 0;
    for (int i = count; i-- > 0;) value = value << 8 | at(start + i);
    return value;
  };
  const auto text = [&](long start, long count) {
    std::string result;
    if (start < 0 || start + count - 1 > upper) return result;
    for (long i = 0; i < count; ++i) result += static_cast<char>(at(start + i));
    return result;
  };

  const long n = upper;
  if (n <= 4) return;
  long pos = 0;
  long rec_start = 0;
  std::set<long> unwanted;  // where unwanted records stood
  do {
    const long length = static_cast<std::int16_t>(number(pos + 2, 2));
    if (pos + 1 > upper) break;
    const auto is_kind = [&](int first, int second) { return at(pos) == first && at(pos + 1) == second; };
    if (!is_kind(at(0), at(1)) && !is_kind('S', '1') && !is_kind('L', '1')) {
      rec_start = pos;
      pos += length;
      if (!unwanted.insert(rec_start).second) {  // round for ever: the switch ends it
        pending_.reset();
        throw Failure{Outcome::Endless};
      }
      continue;
    }
    if (pos > 32767) throw Failure{Outcome::Overflow};
    if (pos + length > n + 1) {
      pending_.emplace(data.begin() + pos, data.end());
      break;
    }
    pos += 4;
    Record record;
    do {
      const int id = static_cast<std::int16_t>(number(pos, 2));
      pos += 2;
      if (kDoubles.contains(id)) {
        const std::uint64_t bits = number(pos, 8);
        double value = 0;
        std::memcpy(&value, &bits, 8);
        record.numbers[id] = value;
        pos += 8;
      } else if (kVolumes.contains(id)) {
        record.numbers[id] = static_cast<std::int32_t>(number(pos, 4));
        pos += 8;
      } else if (kIntegers.contains(id)) {
        record.numbers[id] = static_cast<std::int32_t>(number(pos, 4));
        pos += 4;
      } else if (kTexts.contains(id)) {
        std::string value;
        for (std::uint8_t byte = at(pos++); byte != 0; byte = at(pos++)) value += static_cast<char>(byte);
        record.texts[id] = AnsiToText(value);
      } else if (id == 15) {
        const std::string stamp = text(pos, 14);
        pos += 14;
        if (!stamp.empty()) {
          record.texts[15] =
              AnsiToText(stamp.substr(0, 2) + "/" + stamp.substr(2, 2) + "/" + stamp.substr(4, 4) + " " +
                         stamp.substr(8, 2) + ":" + stamp.substr(10, 2) + ":" + stamp.substr(12, 2));
        }
      } else if (id == 14 || id == 29) {
        pos += 1;
      } else {
        pos += 4;
      }
    } while (pos < rec_start + length);
    rec_start = pos;
    Apply(record);
  } while (pos < n + 1);
  if (pos == n + 1) pending_.reset();
}

void ReferenceStream::Apply(const Record& record) {
  const auto number = [&](int id) {
    const auto found = record.numbers.find(id);
    return found == record.numbers.end() ? 0.0 : found->second;
  };
  const auto text = [&](int id) {
    const auto found = record.texts.find(id);
    return found == record.texts.end() ? std::string() : found->second;
  };

  State& state = states_[LCase(text(1))];
  bool changed = false;
  const auto take = [&](const std::string& name, double value, bool counts) {
    double& stored = state.numbers[name];
    if (!counts || value == stored) return;
    stored = value;
    changed = true;
  };
  take("last", number(4), number(4) > 0);
  take("bid", number(2), number(2) > 0);
  take("ask", number(3), number(3) > 0);
  take("change", number(5), number(5) != 0);
  take("volume", number(6), number(6) >= 1);
  take("high", number(12), number(12) > 0);
  take("low", number(13), number(13) > 0);
  take("bid size", number(9), number(9) >= 1);
  take("ask size", number(10), number(10) >= 1);
  take("low", number(13), number(13) > 0);
  take("average trade size", number(21), number(21) >= 1);
  take("open", number(7), number(7) > 0);
  take("trades", number(20), number(20) >= 1);
  take("52-week high", number(16), number(16) > 0);
  take("52-week low", number(17), number(17) > 0);
  if (!changed) return;

  FlatQuote quote;
  for (const auto& names : {kDoubles, kVolumes, kIntegers}) {
    for (const auto& [id, name] : names) Put(quote, name, number(id));
  }
  for (const auto& [id, name] : kTexts) Put(quote, name, text(id));
  Put(quote, "Date_Time", text(15));
  Put(quote, "Last_Volume", LastVolume(record, state));
  quote["NameID"] = "a" + std::to_string(next_key_++);
  published.push_back(std::move(quote));
}

double ReferenceStream::LastVolume(const Record& record, State& state) {
  const auto found = record.numbers.find(6);
  const double volume = found == record.numbers.end() ? 0.0 : found->second;
  if (!(volume > 0)) return 0;
  const auto stamp = record.texts.find(15);
  const std::string date = stamp == record.texts.end() ? std::string() : stamp->second;
  double& previous = state.numbers["previous volume"];
  double last = 0;
  if (previous == 0) {
    state.date_of_volume = date;
  } else if (LCase(date) == LCase(state.date_of_volume)) {
    last = volume - previous;
  } else {
    state.date_of_volume = date;
  }
  previous = volume;
  return last;
}

}  // namespace mirelo::testing
