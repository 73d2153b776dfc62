// The guide's table of limits is that of the code.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <iterator>
#include <string>

#include "adapters/curl/limits.h"
#include "wire/aligned_connection.h"
#include "wire/mended_replies.h"
#include "wire/message_aligner.h"
#include "wire/subscribed_symbols.h"

namespace mirelo::app {
namespace {

using ::testing::HasSubstr;

std::string LimitsInGuide() {
  std::ifstream file(MIRELO_SOURCE_DIR "/docs/guide.md");
  const std::string guide(std::istreambuf_iterator<char>(file), {});
  const auto begin = guide.find("\n## Limits\n");
  return begin == std::string::npos ? "" : guide.substr(begin, guide.find("\n## ", begin + 1) - begin);
}

std::string KiB(std::size_t bytes) { return std::to_string(bytes >> 10) + " KiB"; }
std::string MiB(std::size_t bytes) { return std::to_string(bytes >> 20) + " MiB"; }

// "100,000".
std::string Grouped(std::size_t number) {
  std::string digits = std::to_string(number);
  for (std::size_t at = digits.size(); at > 3; at -= 3) digits.insert(at - 3, ",");
  return digits;
}

std::string InSeconds(std::chrono::milliseconds time) {
  return std::to_string(std::chrono::floor<std::chrono::seconds>(time).count()) + " seconds";
}

// As in "a quarter of a second".
std::string InPartOfSecond(std::chrono::milliseconds time) {
  switch (std::chrono::milliseconds(1000) / time) {
    case 2:
      return "half a second";
    case 4:
      return "a quarter of a second";
    default:
      return std::to_string(time.count()) + " milliseconds";
  }
}

TEST(GuideLimits, AreThoseOfTheCode) {
  const curl::Limits limits;
  const std::string guide = LimitsInGuide();
  EXPECT_THAT(guide, HasSubstr("over HTTP | " + MiB(limits.body) + ", " + KiB(limits.head) + " of headers, " +
                               KiB(curl::Limits::kHeadLine) + " for a line of them, " +
                               std::to_string(limits.redirects) + " redirects, " +
                               std::to_string(std::chrono::floor<std::chrono::minutes>(limits.time).count()) +
                               " minutes in all |"));
  EXPECT_THAT(guide, HasSubstr("of such a reply | " + Grouped(wire::MendedReplies::kMostFields) + " |"));
  EXPECT_THAT(guide,
              HasSubstr("list of quote sources | " + MiB(wire::MessageAligner::kLongestSources) + " |"));
  EXPECT_THAT(guide, HasSubstr("reply on the stream | " + KiB(wire::MessageAligner::kLongestReply) + " |"));
  EXPECT_THAT(
      guide, HasSubstr("rest of a quote on the stream | " + InSeconds(wire::MessageAligner::kRecordPatience) +
                       "; " + InPartOfSecond(wire::MessageAligner::kPatience) + " where"));
  EXPECT_THAT(guide, HasSubstr("while its quotes are being used | " +
                               MiB(wire::AlignedConnection::kMostLater) + " |"));
  EXPECT_THAT(guide,
              HasSubstr("QuoteTracker does not read | " + MiB(wire::AlignedConnection::kMostUnsent) + " |"));
  EXPECT_THAT(guide, HasSubstr("not asked for | " + Grouped(wire::SubscribedSymbols::kMostOthers) +
                               " tickers a connection, of " +
                               std::to_string(wire::SubscribedSymbols::kLongestOther) + " letters each |"));
}

}  // namespace
}  // namespace mirelo::app
