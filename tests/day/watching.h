#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "day/quote_watch.h"
#include "host/host.h"
#include "support/answering_internet.h"
#include "support/level1_wire.h"
#include "support/manual_clock.h"
#include "support/manual_loop.h"
#include "support/memory_registry.h"
#include "support/memory_vault.h"
#include "support/memory_winsock.h"
#include "support/recording_system.h"
#include "support/scripted_desktop.h"
#include "support/test_host.h"
#include "wire/side_host.h"

namespace mirelo::testing {

// A watch on a machine whose time the test moves, and with a QuoteTracker that the test plays.
class Watching : public ::testing::Test {
 protected:
  using About = day::QuoteQuestion::About;
  using Watched = std::unique_ptr<day::QuoteWatch::Watched>;

  Watching();
  ~Watching() override;

  void Save(const char* key, const char* text);
  // Settings by which quotes are streamed.
  void Streamed();
  // Whoever asks so is told by an entry of `told`.
  Watched Ask(const std::string& ticker, const std::optional<std::string>& column = "Last",
              About about = About::Value);
  std::string Status(const std::string& ticker, const std::optional<std::string>& column = "Last");
  void Pass(std::chrono::milliseconds time) { loop.Advance(time); }
  // As a cell that is calculated anew with all that hangs on it.
  void WorkFor(std::chrono::milliseconds time) { worked_ += time; }

  // The peer's part of a stream's conversation up to the first quote.
  void Converse();
  void Deliver(std::string_view bytes) { sockets->Newest().Deliver(bytes); }
  void Quote(const char* ticker, double price);
  // Streams a ticker until there is something.
  void BeginStreaming();
  // The tickers of each subscription, whose message has them in groups.
  std::vector<std::string> Subscriptions() const;

  // What QuoteTracker answers to a request for quotes.
  std::optional<std::string> Reply(const std::string& resource);

 private:
  std::chrono::microseconds worked_{0};

 protected:
  ManualLoop loop;
  ManualClock clock;
  MemoryRegistry registry;
  ScriptedDesktop desktop;
  RecordingSystem system;
  MemoryVault vault;
  TestHost host;
  host::HostScope installed{host};
  MemoryWinsock* sockets = nullptr;
  AnsweringInternet* internet = nullptr;
  std::optional<wire::SideHost> side;
  std::optional<day::QuoteWatch> watch;
  std::vector<std::string> told;  // whose answers changed
  bool answers = true;
  std::string last = "28.5";
};

}  // namespace mirelo::testing
