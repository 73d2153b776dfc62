// Attacks the reply to a request for quotes: whatever comes, the facade is handed one record for each ticker,
// which it can follow to its end.
//
// An input is the tickers, joined by commas, and behind the first NUL byte the reply.

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "automation/ansi.h"
#include "automation/number.h"
#include "automation/text.h"
#include "snapshot/column_vocabulary.h"
#include "wire/quote_reply.h"

namespace {

using namespace mirelo;
using wire::MendedReply;
using wire::QuoteFlaw;

constexpr std::size_t kMostTickers = 81;
constexpr double kGreatestVolume = 1e15;

void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "%s\n", what);
  std::abort();
}

bool IsSuccess(const std::string& body) { return EqualText(body.substr(0, body.find("\r\n")), "OK"); }

void RequireRecords(const MendedReply& reply, const std::vector<std::string>& tickers) {
  const std::vector<std::string> lines = Split(reply.body, "\r\n");
  Require(lines.size() == tickers.size() + 1, "a record for each ticker");
  for (std::size_t ticker = 0; ticker < tickers.size(); ++ticker) {
    const std::vector<std::string> fields = Split(lines[ticker + 1], ",");
    Require(fields.size() == kReplyFields, "all fields");
    const auto volume = ParseNumber(AnsiToText(fields[static_cast<std::size_t>(Column::Volume)]));
    Require(volume && std::abs(*volume) < kGreatestVolume, "a volume to count with");
    const std::string name = AnsiToText(fields.front());
    const auto is_named = [&](const std::string& other) { return EqualText(AnsiToText(other), name); };
    Require(is_named(tickers[ticker]) || std::ranges::none_of(tickers, is_named), "the record of another");
  }
}

void RequireFlaws(const MendedReply& reply, const std::vector<std::string>& tickers) {
  Require(std::ranges::is_sorted(reply.flaws, {}, &QuoteFlaw::ticker), "flaws by ticker");
  for (const QuoteFlaw& flaw : reply.flaws) {
    Require(flaw.ticker < tickers.size(), "a flaw of nobody");
    Require(flaw.kind != QuoteFlaw::Kind::MissingFields || (flaw.fields > 0 && flaw.fields < kReplyFields),
            "some fields are missing");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string input(reinterpret_cast<const char*>(data), size);
  const std::size_t end = std::min(input.find('\0'), size);
  const std::vector<std::string> tickers = Split(input.substr(0, end), ",");
  if (tickers.empty() || tickers.size() > kMostTickers) return 0;
  if (std::ranges::any_of(tickers, &std::string::empty)) return 0;  // which nobody asks for
  const std::string body = input.substr(std::min(end + 1, size));

  const MendedReply reply = wire::Mend(body, tickers, [&](std::string_view record) {
    Require(!record.empty() && body.find(record) != std::string::npos, "left out is a part of the reply");
  });
  if (!IsSuccess(body)) {
    Require(reply.body == body && reply.flaws.empty(), "what is no success stays as it is");
    return 0;
  }
  RequireRecords(reply, tickers);
  RequireFlaws(reply, tickers);
  Require(wire::Mend(reply.body, tickers).body == reply.body, "what is mended stays as it is");
  return 0;
}
