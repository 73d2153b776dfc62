#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

#include "adapters/poll/poll_loop.h"
#include "host/host.h"
#include "snapshot/WinInet.h"
#include "support/error_number.h"
#include "support/manual_clock.h"
#include "support/scripted_wininet.h"
#include "support/test_host.h"

namespace mirelo::testing {

// A transfer against a scripted internet port, with all that it reports.
class ScriptedTransfer : public ::testing::Test {
 protected:
  using States = std::vector<std::int32_t>;
  using Progress = std::tuple<float, std::int32_t, std::int32_t>;

  ScriptedTransfer() {
    host.Use(loop).Use(clock).Use(internet);
    transfer.OnStateChanged.Subscribe([this](std::int32_t state) { states.push_back(state); });
    transfer.OnProgress.Subscribe([this](float seconds, std::int32_t length, std::int32_t read) {
      progress.emplace_back(seconds, length, read);
    });
  }

  // Cancels from the handler of a state.
  void CancelAt(std::int32_t at) {
    transfer.OnStateChanged.Subscribe([this, at](std::int32_t state) {
      if (state == at) transfer.Cancel();
    });
  }

  // The handles that were closed, in order.
  std::vector<std::string> Closed() const {
    std::vector<std::string> closed;
    for (const std::string& call : internet.calls) {
      if (call.starts_with("InternetCloseHandle")) closed.push_back(call);
    }
    return closed;
  }

  poll::PollLoop loop;
  ManualClock clock;
  ScriptedWinInet internet;
  TestHost host;
  host::HostScope scope{host};
  WinInet transfer;
  States states;
  std::vector<Progress> progress;
};

const std::vector<std::string> kAllHandles = {"InternetCloseHandle(3)", "InternetCloseHandle(2)",
                                              "InternetCloseHandle(1)"};

inline void ExpectComponentFailure(const RuntimeError& error, const std::string& member) {
  ExpectError(error, 0x80040064, "WinInet component failure", "Mirelo.WinInet." + member);
}

}  // namespace mirelo::testing
