#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/cQTData.h"

namespace mirelo::testing {

// A quote as names and values, to be compared and printed. Numbers are written exactly; what is 0 or empty is
// left out.
using FlatQuote = std::map<std::string, std::string>;
FlatQuote Flat(const cQTData& quote);

// The rules by which chunks become quotes, written down once more: step by step, byte by byte, slowly, and
// sharing no code with the decoder. It knows chunks of quote records only, and a source list that never ends.
//
// The arrival's date and time are left out, and the user's format is empty, so that a stamp shows as it is
// sent.
class ReferenceStream {
 public:
  enum class Outcome { Done, SubscriptOutOfRange, Overflow, Endless };

  Outcome Receive(std::string_view chunk);

  std::vector<FlatQuote> published;

 private:
  // An element is a byte, or empty and reads as 0.
  using Bytes = std::vector<std::optional<std::uint8_t>>;
  struct Record {
    std::map<int, double> numbers;
    std::map<int, std::string> texts;
  };
  struct State {
    std::map<std::string, double> numbers;
    std::string date_of_volume;
  };
  struct Failure {
    Outcome outcome;
  };

  void Decode(const Bytes& data);
  void Apply(const Record& record);
  double LastVolume(const Record& record, State& state);

  std::map<std::string, State> states_;
  std::optional<Bytes> pending_;
  bool sources_pending_ = false;
  int next_key_ = 0;
};

}  // namespace mirelo::testing
