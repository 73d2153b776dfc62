// The list of quote sources, fetched from QuoteTracker by a person at the dialog.

#include <string>

#include "adapters/poll/poll_winsock_library.h"
#include "core/CAppSettings.h"
#include "core/mGlobal.h"
#include "quotetracker/login.h"
#include "quotetracker/server.h"
#include "quotetracker/sources.h"
#include "windows/views/settings_dialog_rig.h"

namespace mirelo::windows {
namespace {

class SourceList : public ::testing::Test, protected SettingsDialogOnWindows {
 protected:
  SourceList() {
    const quotetracker::Credentials known;
    vault.credentials = {{testing::MemoryVault::Credential::ApplicationName, known.app_name},
                         {testing::MemoryVault::Credential::ApplicationSecret, known.app_secret}};
    host.Use(sockets);
    mGlobal::AppSettings().SaveSetting("Settings", "SocketPort", std::to_string(server.StreamPort()));
    mGlobal::AppSettings().SaveSetting("Settings", "Webaddress", "127.0.0.1");
  }
  ~SourceList() override { mGlobal::SetStreamingObject(nullptr); }

  void PressesUpdate() {
    person.Does("open the settings", [this] { Open(kSettings); });
    person.Does("ask for streaming", [this] { person.Replace("txtSec", "0"); });
    person.Does("press Update", [this] {
      EXPECT_TRUE(person.IsEnabled("ButUpDate"));
      person.Click("ButUpDate");
    });
  }

  // As the box on the screen has them.
  LRESULT SourceCount() const { return ::SendMessageW(person.Find("ComQuoteSource"), CB_GETCOUNT, 0, 0); }

  quotetracker::Server server;
  poll::PollWinsockLibrary sockets{loop};
};

TEST_F(SourceList, ComesFromQuoteTracker) {
  PressesUpdate();
  person.Waits("the list",
               [this] { return person.TextOf("lblStatus") == "Data source list updated successfully"; });
  person.Does("look, and cancel", [this] {
    EXPECT_EQ(SourceCount(), 170) << "those of the first run and the stand-in's";
    const auto& [file, name] = quotetracker::Level1Sources().front();
    EXPECT_EQ(mGlobal::AppSettings().GetSetting("Settings\\QuoteSource\\List", name, "").ToText(), file);
    person.Click("ButCancel");
  });
  EXPECT_EQ(facade->LoadFrmMirelo(), 2);
}

TEST_F(SourceList, StaysAsItIsWhereQuoteTrackerHangsUp) {
  server.SetStreamFaults({quotetracker::StreamFaultPlan::Parse("reset@sources", 1)});
  PressesUpdate();
  person.Waits("the end", [this] {
    return person.TextOf("lblStatus") == "Connected" && server.StreamConnections() == 0;
  });
  person.Does("look, and cancel", [this] {
    EXPECT_EQ(SourceCount(), 80);
    person.Click("ButCancel");
  });
  EXPECT_EQ(facade->LoadFrmMirelo(), 2);
}

}  // namespace
}  // namespace mirelo::windows
