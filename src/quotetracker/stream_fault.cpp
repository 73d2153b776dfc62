#include "quotetracker/stream_fault.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <stdexcept>

namespace mirelo::quotetracker {
namespace {

constexpr std::size_t kLengthAt = 2;  // in a record
constexpr std::size_t kHeadLength = 4;
constexpr int kMostLength = 32'767;
constexpr int kAddedByLongLength = 1'000;

template <typename Value>
struct Named {
  std::string_view text;
  Value value;
};

constexpr std::array kFaults{
    Named<StreamFault>{"drop", StreamFault::kDrop},
    Named<StreamFault>{"reset", StreamFault::kReset},
    Named<StreamFault>{"stall", StreamFault::kStall},
    Named<StreamFault>{"truncate", StreamFault::kTruncate},
    Named<StreamFault>{"garbage", StreamFault::kGarbage},
    Named<StreamFault>{"split", StreamFault::kSplit},
    Named<StreamFault>{"long-length", StreamFault::kLongLength},
    Named<StreamFault>{"short-length", StreamFault::kShortLength},
    Named<StreamFault>{"zero-length", StreamFault::kZeroLength},
    Named<StreamFault>{"negative-length", StreamFault::kNegativeLength},
};

constexpr std::array kSteps{
    Named<StreamStep>{"greeting", StreamStep::kGreeting},
    Named<StreamStep>{"login", StreamStep::kLogin},
    Named<StreamStep>{"sources", StreamStep::kSources},
    Named<StreamStep>{"streamer", StreamStep::kStreamer},
    Named<StreamStep>{"quotes", StreamStep::kQuotes},
};

template <typename Names>
auto ValueOf(const Names& names, std::string_view wanted, const char* what) {
  std::string all;
  for (const auto& name : names) {
    if (name.text == wanted) return name.value;
    all += all.empty() ? "" : ", ";
    all += name.text;
  }
  throw std::invalid_argument("\"" + std::string(wanted) + "\" is no " + what + " of the stream; there are " +
                              all);
}

int LyingLength(int length, StreamFault fault) {
  switch (fault) {
    case StreamFault::kLongLength:
      return std::min(length + kAddedByLongLength, kMostLength);
    case StreamFault::kShortLength:
      return length / 2;
    case StreamFault::kNegativeLength:
      return -length;
    default:
      return 0;
  }
}

}  // namespace

StreamFaultPlan StreamFaultPlan::Parse(std::string_view text, std::uint64_t seed) {
  const auto at = text.find('@');
  if (at == std::string_view::npos) {
    throw std::invalid_argument("\"" + std::string(text) + "\" names no step, as drop@greeting does");
  }
  const auto colon = text.find(':', at);
  const auto rule = colon == std::string_view::npos ? std::string_view() : text.substr(colon + 1);
  StreamFaultPlan plan;
  plan.fault = ValueOf(kFaults, text.substr(0, at), "fault");
  plan.step =
      ValueOf(kSteps, text.substr(at + 1, colon == std::string_view::npos ? colon : colon - at - 1), "step");
  plan.rule = FaultRule::Parse(rule, seed);
  if (plan.fault >= StreamFault::kLongLength && plan.step != StreamStep::kQuotes) {
    throw std::invalid_argument("only quotes have a length that can lie");
  }
  return plan;
}

void LieAboutLength(std::string& records, StreamFault fault) {
  if (records.size() < kHeadLength) return;
  const auto low = static_cast<unsigned char>(records[kLengthAt]);
  const auto high = static_cast<unsigned char>(records[kLengthAt + 1]);
  const auto lie = static_cast<std::uint16_t>(LyingLength(low + 256 * high, fault));
  records[kLengthAt] = static_cast<char>(lie & 0xFF);
  records[kLengthAt + 1] = static_cast<char>(lie >> 8);
}

}  // namespace mirelo::quotetracker
