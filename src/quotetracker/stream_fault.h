#pragma once

#include <string>
#include <string_view>

#include "quotetracker/fault_rule.h"

namespace mirelo::quotetracker {

// The steps of a conversation on the stream, by what the server sends.
enum class StreamStep { kGreeting, kLogin, kSources, kStreamer, kQuotes };

// What can go wrong with what the server sends.
enum class StreamFault {
  kNone,
  kDrop,            // closed instead
  kReset,           // torn down instead
  kStall,           // nothing is sent from here on, and nothing is closed
  kTruncate,        // half of it, then closed
  kGarbage,         // random bytes instead, as many
  kSplit,           // in two chunks, with a pause between
  kLongLength,      // a record's length above its bytes
  kShortLength,     // half of its bytes
  kZeroLength,      // 0
  kNegativeLength,  // below 0
};

// Which fault strikes, at which step and when. As text: name "@" step, then, if not each time, a colon and a
// rule: "drop@greeting", "garbage@quotes:25%". The names are drop, reset, stall, truncate, garbage, split
// and, for quotes only, long-length, short-length, zero-length, negative-length; the steps are greeting,
// login, sources, streamer and quotes. A batch of records is one occasion; a length that lies is its first
// record's.
struct StreamFaultPlan {
  StreamFault fault = StreamFault::kNone;
  StreamStep step = StreamStep::kGreeting;
  FaultRule rule;

  // Raises std::invalid_argument with an explanation for other text.
  static StreamFaultPlan Parse(std::string_view text, std::uint64_t seed);

  // Counts an occasion if it is of this plan's step, and gives the fault that strikes at it.
  StreamFault Next(StreamStep now) { return now == step && rule.Strikes() ? fault : StreamFault::kNone; }
};

// Makes the first record of some bytes lie about its length. `fault` is one of the four.
void LieAboutLength(std::string& records, StreamFault fault);

}  // namespace mirelo::quotetracker
