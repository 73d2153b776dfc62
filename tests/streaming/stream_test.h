#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "support/error_number.h"
#include "support/level1_wire.h"
#include "support/manual_loop.h"
#include "support/stream_rig.h"

namespace mirelo::testing {

// What StreamTest needs built before its rig.
struct WithManualLoop {
  ManualLoop loop;
};

// A stream on a loop whose time the test moves; what it tells its owner is recorded.
class StreamTest : public ::testing::Test, protected WithManualLoop, protected StreamRig {
 protected:
  StreamTest() : StreamRig(loop) { Listen(); }

  void Renew() {
    StreamRig::Renew();
    Listen();
  }

  // A record that publishes a quote of this symbol, once.
  static std::string Quote(std::string_view symbol, std::string_view kind = "S1") {
    return Level1Wire(kind).Symbol(symbol).Last(1);
  }
  // The number of the error that a chunk raises, 0 without one.
  std::int32_t ErrorNumberOf(std::string_view chunk) {
    return NumberOf([&] { Deliver(chunk); });
  }
  std::vector<std::string> TakeSymbols() {
    std::vector<std::string> symbols;
    for (const auto& quote : Take()) symbols.push_back(quote->Symbol());
    return symbols;
  }

  std::vector<std::string> status_texts;
  std::vector<std::int16_t> processes;
  int events = 0;  // of QTDatas

 private:
  void Listen() {
    stream->OnStatusText.Subscribe([this](const std::string& text) { status_texts.push_back(text); });
    stream->PerformanceFollowingProcess.Subscribe(
        [this](std::int16_t process) { processes.push_back(process); });
    stream->QTDatas.Subscribe([this] { ++events; });
  }
};

}  // namespace mirelo::testing
