#include <gmock/gmock.h>

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "adapters/poll/poll_loop.h"
#include "adapters/poll/poll_winsock_library.h"
#include "automation/array.h"
#include "automation/text.h"
#include "core/status_run_query.h"
#include "dialog/frmMirelo.h"
#include "quotetracker/server.h"
#include "quotetracker/sources.h"
#include "streaming/cQTStreaming.h"
#include "support/facade_test.h"
#include "support/memory_vault.h"

namespace mirelo::testing {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr char kList[] = "Settings\\QuoteSource\\List";
constexpr char kFirst[] = "Settings\\QuoteSource\\First";

// The dialog, of which only the refresh of its quote sources is of interest here.
class RefreshingDialog : public frmMirelo {
 public:
  void Form_Load() override {}
  void Form_Activate() override {}
  void Form_Unload() override {}
};

quotetracker::ServerOptions With(const std::vector<std::string>& faults) {
  quotetracker::ServerOptions options;
  for (const std::string& fault : faults) {
    options.stream.faults.push_back(quotetracker::StreamFaultPlan::Parse(fault, 1));
  }
  return options;
}

// The dialog shown modally on the real loop, and the stand-in for QuoteTracker behind TCP.
class RefreshingSources : public FacadeTest {
 protected:
  explicit RefreshingSources(const std::vector<std::string>& faults = {}) : server(With(faults)) {
    host.Use(loop).Use(sockets).Use(vault);
    vault.credentials = {{host::CredentialVault::Credential::ApplicationName, "MireloDemo"},
                         {host::CredentialVault::Credential::ApplicationSecret, "demo-secret"}};
    Save("SocketPort", std::to_string(server.StreamPort()));
    form.frmAppSettings(&mGlobal::AppSettings());
    form.Owner(&*facade);
    form.lblStatus.Appearance.Subscribe([this] {
      if (statuses.empty() || statuses.back() != form.lblStatus.Caption()) {
        statuses.push_back(form.lblStatus.Caption());
      }
    });
  }
  ~RefreshingSources() override { mGlobal::SetStreamingObject(nullptr); }

  // Shows the dialog, where the person opens the tab Settings and does this.
  void InTheDialog(const std::function<void()>& acts) {
    desktop.person["frmMirelo"] = [&](forms::Form&) {
      form.C1TTickersSettings.UserSelect(1);
      acts();
    };
    desktop.ShowModal(form);
  }

  // Runs the dialog's loop until `done`, which may ask the server. A failure after ten seconds.
  void Await(const std::function<bool()>& done) {
    bool late = false;
    const auto patience = loop.StartTimer(std::chrono::seconds(10), [&] { late = true; });
    host::MessageLoop::Token tick = 0;
    const std::function<void()> again = [&] { tick = loop.StartTimer(std::chrono::milliseconds(5), again); };
    again();
    loop.RunUntil([&] { return late || done(); });
    loop.StopTimer(tick);
    loop.StopTimer(patience);
    EXPECT_FALSE(late) << "what was waited for never came";
  }
  void AwaitStatus(const std::string& status) {
    Await([&] { return form.lblStatus.Caption() == status; });
  }

  static std::vector<std::string> StoredNames() {
    Array<std::string> names;
    mGlobal::AppSettings().GetAllKeys(kList, names);
    return {names.begin(), names.end()};
  }

  MemoryVault vault;
  quotetracker::Server server;
  poll::PollLoop loop;
  poll::PollWinsockLibrary sockets{loop};
  RefreshingDialog form;
  std::vector<std::string> statuses;  // of the dialog, each that differed from the one before
};

TEST_F(RefreshingSources, TellsItsStepsAndFillsTheBox) {
  mGlobal::AppSettings().SaveSetting(kFirst, "ComQuoteSource", Variant("Chosen last"));
  form.lblStatus.Caption("left over");
  statuses.clear();
  InTheDialog([&] {
    form.ButUpDate.UserPress();
    Await([&] { return mGlobal::StreamingObject() == nullptr; });
  });
  EXPECT_THAT(statuses, ElementsAre("", "Connection started...", "Connecting to host...", "Connected",
                                    "Data source list updated successfully"));
  EXPECT_EQ(facade->StatusRunWorkQT(), Status_ENUMSOURCES_L1);
  EXPECT_EQ(form.ComQuoteSource.ListCount(), static_cast<std::int32_t>(StoredNames().size()));
  EXPECT_EQ(form.ComQuoteSource.ListCount(), 91) << "two of the 92 sources have one name";
  EXPECT_EQ(form.ComQuoteSource.Text(), "Chosen last");
  EXPECT_THAT(desktop.boxes, IsEmpty());
  EXPECT_THAT(desktop.reports, IsEmpty());
}

TEST_F(RefreshingSources, ClosesItsConnectionAtTheEnd) {
  InTheDialog([&] {
    form.ButUpDate.UserPress();
    const std::weak_ptr<cQTStreaming> stream = mGlobal::StreamingObject();
    ASSERT_FALSE(stream.expired());
    AwaitStatus("Data source list updated successfully");
    Await([&] { return stream.expired() && server.StreamConnections() == 0; });
  });
  EXPECT_EQ(loop.WatchCount(), 0U);
}

TEST_F(RefreshingSources, AddsToTheFirstRunListAndOverwrites) {
  form.AddListQuoteSource("");
  mGlobal::AppSettings().SaveSetting(kList, "Harmless name of old", Variant("OLD.SDF"));
  mGlobal::AppSettings().SaveSetting(kList, "Arbor Financial (delayed)", Variant("OLD.SDF"));
  InTheDialog([&] {
    form.ButUpDate.UserPress();
    Await([&] { return mGlobal::StreamingObject() == nullptr; });
  });
  EXPECT_THAT(form.ComQuoteSource.Items(), Contains("Harmless name of old"));
  EXPECT_THAT(form.ComQuoteSource.Items(), Contains("OC Securities"));
  EXPECT_THAT(form.ComQuoteSource.Items(), Contains("Vistula (Polska) - delayed"));
  EXPECT_EQ(mGlobal::AppSettings().GetSetting(kList, "Arbor Financial (delayed)", "").ToText(), "ARBOR.SDF");
  EXPECT_EQ(form.ComQuoteSource.Text(), "Alpstein Finance (delayed)");
}

TEST_F(RefreshingSources, CanBeDoneAgain) {
  InTheDialog([&] {
    for (int i = 0; i < 3; ++i) {
      form.ButUpDate.UserPress();
      Await([&] { return mGlobal::StreamingObject() == nullptr; });
    }
  });
  EXPECT_EQ(form.ComQuoteSource.ListCount(), 91);
}

TEST_F(RefreshingSources, ReplacesARefreshThatIsUnderWay) {
  InTheDialog([&] {
    form.ButUpDate.UserPress();
    const std::weak_ptr<cQTStreaming> first = mGlobal::StreamingObject();
    form.ButUpDate.UserPress();
    EXPECT_TRUE(first.expired());
    Await([&] { return mGlobal::StreamingObject() == nullptr; });
  });
  EXPECT_EQ(form.ComQuoteSource.ListCount(), 91);
  Await([&] { return server.StreamConnections() == 0; });
}

TEST_F(RefreshingSources, DoesNotHearAStreamThatWasReplaced) {
  form.ButUpDate.UserPress();
  form.C1TTickersSettings.UserSelect(1);
  form.ButUpDate.UserPress();
  const auto first = mGlobal::StreamingObject();
  form.ButUpDate.UserPress();
  const std::string status = form.lblStatus.Caption();
  first->OnStatusText.Raise("from the first");
  first->PerformanceFollowingProcess.Raise(1);
  EXPECT_EQ(form.lblStatus.Caption(), status);
  EXPECT_NE(mGlobal::StreamingObject(), nullptr);
}

TEST_F(RefreshingSources, StopsAtWrongCredentials) {
  vault.credentials[host::CredentialVault::Credential::ApplicationSecret] = "not the secret";
  InTheDialog([&] {
    form.ButUpDate.UserPress();
    Await([&] { return form.lblStatus.Caption().starts_with("Off. "); });
  });
  EXPECT_THAT(form.lblStatus.Caption().substr(5), ::testing::Not(IsEmpty()));
  EXPECT_THAT(StoredNames(), IsEmpty());
  EXPECT_NE(mGlobal::StreamingObject(), nullptr) << "until the dialog ends";
}

TEST_F(RefreshingSources, ShowsWhyAnAddressCannotBeUsed) {
  Save("Webaddress", "no such address");
  InTheDialog([&] {
    form.ButUpDate.UserPress();
    Await([&] { return !desktop.boxes.empty() || statuses.size() > 3; });
  });
  ASSERT_THAT(desktop.boxes, SizeIs(1));
  EXPECT_EQ(desktop.boxes[0].style, 0);
  EXPECT_EQ(desktop.boxes[0].title, "");
  EXPECT_EQ(form.lblStatus.Caption(), Replace(desktop.boxes[0].text, "\r\n", ""));
}

TEST_F(RefreshingSources, ReportsASettingThatIsNoPort) {
  Save("SocketPort", "a port");
  Answers({"ABORT"});
  InTheDialog([&] { form.ButUpDate.UserPress(); });
  ASSERT_THAT(desktop.reports, SizeIs(1));
  EXPECT_THAT(desktop.reports[0].text, HasSubstr("Error: 13, (Type mismatch)"));
  EXPECT_THAT(desktop.reports[0].text, HasSubstr("\tin Mirelo.frmMirelo.ButUpDate_Click at line 0"));
  EXPECT_EQ(statuses, std::vector<std::string>{}) << "the status line was empty and stays so";
}

TEST_F(RefreshingSources, ConnectsAtTheSecondTryWithAMendedPort) {
  Save("SocketPort", "a port");
  Answers({"RETRY"});
  desktop.while_open = [&] { Save("SocketPort", std::to_string(server.StreamPort())); };
  InTheDialog([&] {
    form.ButUpDate.UserPress();
    Await([&] { return mGlobal::StreamingObject() == nullptr; });
  });
  EXPECT_EQ(form.ComQuoteSource.ListCount(), 91);
  EXPECT_EQ(server.StreamMessages().size(), 2U);
}

TEST_F(RefreshingSources, ReportsASourceChosenLastThatCannotBeRead) {
  mGlobal::AppSettings().SaveSetting(kFirst, "ComQuoteSource", Variant("Chosen last"));
  InTheDialog([&] {
    form.ButUpDate.UserPress();
    AwaitStatus("Connected");
    registry.Raise("RegQueryValueExA");
    Answers({"IGNORE"});
    Await([&] { return mGlobal::StreamingObject() == nullptr; });
  });
  ASSERT_THAT(desktop.reports, SizeIs(1));
  EXPECT_THAT(desktop.reports[0].text, HasSubstr("\tin Mirelo.frmMirelo.AddListQuoteSource at line 0"));
  EXPECT_EQ(form.ComQuoteSource.ListCount(), 91);
}

// A process that the stream does not know of today ends the connection, too; one that belongs to quotes is
// none of the dialog's.
TEST_F(RefreshingSources, ActsByTheProcessThatTheStreamTells) {
  struct Case {
    std::int16_t process;
    bool ends;
    std::int32_t sources;
  };
  for (const Case& c : {Case{0, true, 0}, Case{1, true, 80}, Case{5, false, 0}, Case{2, false, 0}}) {
    SCOPED_TRACE(c.process);
    form.ComQuoteSource.Clear();
    form.C1TTickersSettings.UserSelect(1);
    form.ButUpDate.UserPress();
    const auto stream = mGlobal::StreamingObject();
    stream->StartStop(true);
    stream->PerformanceFollowingProcess.Raise(c.process);
    EXPECT_EQ(stream->StartStop(), !c.ends) << "a disconnected stream has stopped";
    EXPECT_EQ(mGlobal::StreamingObject() == nullptr, c.ends);
    EXPECT_EQ(form.ComQuoteSource.ListCount(), c.sources);
  }
}

TEST_F(RefreshingSources, OutlivesTheDialogWithoutSpeakingToIt) {
  auto dialog = std::make_unique<RefreshingDialog>();
  dialog->frmAppSettings(&mGlobal::AppSettings());
  dialog->Owner(&*facade);
  dialog->C1TTickersSettings.UserSelect(1);
  dialog->ButUpDate.UserPress();
  dialog.reset();
  const auto stream = mGlobal::StreamingObject();
  ASSERT_NE(stream, nullptr);
  EXPECT_FALSE(stream->OnStatusText.HasSubscribers());
  EXPECT_FALSE(stream->PerformanceFollowingProcess.HasSubscribers());
}

// Where the peer breaks off, and the last that the dialog says then.
struct Break {
  const char* fault;
  const char* last_status;
};

class RefreshBrokenOff : public RefreshingSources, public ::testing::WithParamInterface<Break> {
 protected:
  RefreshBrokenOff() : RefreshingSources({GetParam().fault}) {}
};

TEST_P(RefreshBrokenOff, LeavesTheLastStatusAndTheListAndCanBeDoneAnew) {
  form.AddListQuoteSource("");
  InTheDialog([&] {
    form.ButUpDate.UserPress();
    Await([&] { return loop.WatchCount() == 0; });
    EXPECT_EQ(form.lblStatus.Caption(), GetParam().last_status);
    EXPECT_EQ(form.ComQuoteSource.ListCount(), 80);

    server.SetStreamFaults({});
    form.ButUpDate.UserPress();
    Await([&] { return mGlobal::StreamingObject() == nullptr; });
  });
  EXPECT_EQ(form.lblStatus.Caption(), "Data source list updated successfully");
  EXPECT_GT(form.ComQuoteSource.ListCount(), 80);
  EXPECT_THAT(desktop.reports, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Peers, RefreshBrokenOff,
                         ::testing::Values(Break{"drop@greeting", "Connecting to host..."},
                                           Break{"reset@greeting", "Connecting to host..."},
                                           Break{"drop@login", "Connecting to host..."},
                                           Break{"drop@sources", "Connected"},
                                           Break{"reset@sources", "Connected"},
                                           Break{"truncate@sources", "Connected"}),
                         [](const auto& test) {
                           std::string name = test.param.fault;
                           return name.replace(name.find('@'), 1, "At");
                         });

}  // namespace
}  // namespace mirelo::testing
