#pragma once

#include <chrono>
#include <cstdint>
#include <string_view>

#include "scenarios/day_rig.h"
#include "support/level1_wire.h"

namespace mirelo::testing {

// A day of streamed quotes of MSFT and IBM, with a history of MSFT.
class StreamDay : public Day {
 protected:
  // A write may have to wait for as long as that before it took twice, however slow the machine is.
  static constexpr std::chrono::seconds kWritePause{1};

  StreamDay();

  // The peer's part of the conversation up to the first quote.
  void Converse();
  void BeginStreaming();
  void Deliver(std::string_view bytes) { winsock.Newest().Deliver(bytes); }
  // A quote, and the moment until it stands in the sheets.
  void Quote(const Level1Wire& record);
  static Level1Wire Of(const char* ticker) { return Level1Wire().Symbol(ticker); }
  static Level1Wire Trade(double last, std::int64_t volume, const char* stamp = "01202011093000") {
    return Of("MSFT").Last(last).Volume(volume).Stamp(stamp);
  }
};

}  // namespace mirelo::testing
