#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "adapters/curl/curl_internet.h"
#include "adapters/poll/poll_winsock_library.h"
#include "adapters/qt/qt_desktop.h"
#include "adapters/qt/qt_loop.h"
#include "adapters/workbook/spreadsheet.h"
#include "automation/variant.h"
#include "core/CAppSettings.h"
#include "core/cMirelo.h"
#include "core/mGlobal.h"
#include "host/host.h"
#include "quotetracker/server.h"
#include "support/manual_clock.h"
#include "support/memory_registry.h"
#include "support/memory_vault.h"
#include "support/recording_system.h"
#include "support/test_host.h"

namespace mirelo::qt {

// The program as a person with a screen has it: windows, sockets and HTTP are real, the workbook is one empty
// sheet, and QuoteTracker's stand-in is what the settings name.
class DialogRig {
 public:
  explicit DialogRig(quotetracker::ServerOptions options = {}) : server(std::move(options)) {
    host.Use(loop).Use(desktop).Use(internet).Use(sockets);
    host.Use(clock).Use(registry).Use(system).Use(vault);
    vault.credentials = {{testing::MemoryVault::Credential::ApplicationName, "MireloDemo"},
                         {testing::MemoryVault::Credential::ApplicationSecret, "demo-secret"}};
    facade.emplace();
    facade->m_ObjExcelApplication(spreadsheet.Application());
    // Ports from 32768 on are negative in the 16 bits that a port has.
    Save("HTTPPort", std::to_string(static_cast<std::int16_t>(server.HttpPort())));
    Save("SocketPort", std::to_string(server.StreamPort()));
  }

  static void Save(const char* key, const std::string& text) {
    mGlobal::AppSettings().SaveSetting("Settings", key, Variant(text));
  }
  static std::string Stored(const char* key) {
    return mGlobal::AppSettings().GetSetting("Settings", key, Variant("")).ToText();
  }

  quotetracker::Server server;
  QtLoop loop;
  QtDesktop desktop{loop};
  curl::CurlInternet internet{loop};
  poll::PollWinsockLibrary sockets{loop};
  testing::ManualClock clock;
  testing::MemoryRegistry registry;
  testing::RecordingSystem system;
  testing::MemoryVault vault;
  testing::TestHost host;
  host::HostScope installed{host};
  workbook::Spreadsheet spreadsheet = workbook::Spreadsheet::New();
  std::optional<cMirelo> facade;
};

}  // namespace mirelo::qt
