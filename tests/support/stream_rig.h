#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/CAppSettings.h"
#include "core/cMirelo.h"
#include "core/cQTData.h"
#include "core/cQTDatas.h"
#include "core/mGlobal.h"
#include "host/host.h"
#include "host/message_loop.h"
#include "streaming/cQTStreaming.h"
#include "support/level1_wire.h"
#include "support/manual_clock.h"
#include "support/memory_registry.h"
#include "support/memory_vault.h"
#include "support/memory_winsock.h"
#include "support/recording_system.h"
#include "support/scripted_desktop.h"
#include "support/test_host.h"

namespace mirelo::testing {

// A stream object between a facade and a peer that the user of the rig plays. Nothing is connected yet.
class StreamRig {
 public:
  explicit StreamRig(host::MessageLoop& loop)
      : scope_(host.Use(registry).Use(clock).Use(loop).Use(desktop).Use(system).Use(vault).Use(sockets)) {
    Renew();
  }
  ~StreamRig() { mGlobal::SetStreamingObject(nullptr); }

  // Makes the stream anew, as after a change of the settings that it reads when it is made.
  void Renew() {
    stream = std::make_shared<cQTStreaming>();
    stream->Owner(facade.get());
    stream->StartStop(true);
  }

  void Setting(std::string_view key, const Variant& value) {
    mGlobal::AppSettings().SaveSetting("Settings", key, Variant(value));
  }

  // The peer's part, on the newest connection.
  void Deliver(std::string_view chunk) { sockets.Newest().Deliver(chunk); }
  void Deliver(const Level1Wire& record) { Deliver(record.Bytes()); }
  // Nested in a handler of the stream's, which no socket library does.
  void DeliverOutOfTurn(std::string_view chunk) { sockets.Newest().DeliverOutOfTurn(chunk); }
  const std::vector<std::string>& Sent() { return sockets.Newest().sent; }

  // The client's part: all quotes that wait, taken and given back.
  std::vector<std::shared_ptr<cQTData>> Take() {
    std::vector<std::shared_ptr<cQTData>> quotes;
    const auto taken = stream->GetQTData();
    if (!taken) return quotes;
    for (const auto& quote : *taken) quotes.push_back(quote);
    stream->FreeQTDataBuffer();
    return quotes;
  }

  MemoryRegistry registry;
  ManualClock clock;
  ScriptedDesktop desktop;
  RecordingSystem system;
  MemoryVault vault;
  MemoryWinsock sockets;
  TestHost host;

 private:
  host::HostScope scope_;

 public:
  std::unique_ptr<cMirelo> facade = std::make_unique<cMirelo>();
  std::shared_ptr<cQTStreaming> stream;
};

}  // namespace mirelo::testing
