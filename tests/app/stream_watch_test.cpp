#include "app/stream_watch.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "core/cMirelo.h"
#include "host/host.h"
#include "linux/linux_host.h"
#include "support/loopback_server.h"
#include "support/temp_directory.h"
#include "wire/observed_sockets.h"

namespace mirelo::app {
namespace {

using testing::LoopbackServer;
using testing::TempDirectory;

// A stream's port that takes connections, and says nothing.
class SilentStream : public ::testing::Test {
 protected:
  SilentStream() {
    host.Override("SocketPort", std::to_string(silent.Port()));
    watch.emplace(host);
    watch->Told.Subscribe([this](const std::string& text) { told.push_back(text); });
  }

  // Until the watch has asked over HTTP.
  void AwaitQuestion(const std::function<void()>& asked) {
    host.loop().StartTimer(std::chrono::milliseconds(5), [this, asked] {
      if (silent.Connections() > 0) return asked();
      AwaitQuestion(asked);
    });
  }

  TempDirectory folder;
  LinuxHost host{folder / "registry.db"};
  host::HostScope installed{host};
  LoopbackServer silent{[](LoopbackServer::Peer& peer) { peer.ReceiveAll(); }};
  cMirelo facade;
  std::optional<StreamWatch> watch;
  std::vector<std::string> told;
};

TEST_F(SilentStream, IsToldOfWhereNobodyAnswersInTimeOverHttpEither) {
  host.observed_sockets().Connected.Raise();
  host.loop().RunUntil([&] { return !told.empty(); });
  EXPECT_THAT(told,
              ::testing::ElementsAre(::testing::HasSubstr("Something listens there, and says nothing")));
}

TEST_F(SilentStream, IsNotToldOfWhereItIsHungUpWhileItIsAsked) {
  bool hung_up = false;
  AwaitQuestion([&] {
    hung_up = true;
    host.HangUp();
  });
  host.observed_sockets().Connected.Raise();
  host.loop().RunUntil([&] { return hung_up; });
  EXPECT_THAT(told, ::testing::IsEmpty());
}

}  // namespace
}  // namespace mirelo::app
