#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "core/cMirelo.h"
#include "host/excel/application.h"
#include "host/host.h"
#include "support/answering_internet.h"
#include "support/manual_clock.h"
#include "support/manual_loop.h"
#include "support/memory_registry.h"
#include "support/memory_vault.h"
#include "support/memory_winsock.h"
#include "support/recording_system.h"
#include "support/scripted_desktop.h"
#include "support/test_host.h"

namespace mirelo {

// A person with a dialog, and a QuoteTracker that answers.
class Desk {
 public:
  // With all columns.
  Desk();
  explicit Desk(const std::string& columns);

  // How long Go takes in this workbook for so many tickers, TCK1 and so on, with every field ticked or none:
  // the press of the button alone. Negative when it was refused.
  enum class Fields { All, None };
  std::chrono::duration<double> Go(std::shared_ptr<host::excel::Application> application,
                                   std::int32_t tickers, Fields fields = Fields::All);

  cMirelo& Facade() { return *facade_; }

 private:
  testing::ManualLoop loop_;
  testing::ManualClock clock_;
  testing::MemoryRegistry registry_;
  testing::AnsweringInternet internet_;
  testing::ScriptedDesktop desktop_;
  testing::RecordingSystem system_;
  testing::MemoryWinsock sockets_;
  testing::MemoryVault vault_;
  testing::TestHost host_;
  std::optional<host::HostScope> installed_;
  std::optional<cMirelo> facade_;
};

}  // namespace mirelo
