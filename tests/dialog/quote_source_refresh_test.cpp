#include <gmock/gmock.h>

#include <chrono>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "adapters/poll/poll_winsock_library.h"
#include "automation/array.h"
#include "automation/text.h"
#include "core/status_run_query.h"
#include "dialog/dialog_test.h"
#include "quotetracker/server.h"
#include "streaming/cQTStreaming.h"
#include "support/tested_loop.h"

namespace mirelo::testing {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;

constexpr char kListSection[] = "Settings\\QuoteSource\\List";
constexpr char kFirstSection[] = "Settings\\QuoteSource\\First";

quotetracker::ServerOptions With(const std::vector<std::string>& faults) {
  quotetracker::ServerOptions options;
  for (const std::string& fault : faults) {
    options.stream.faults.push_back(quotetracker::StreamFaultPlan::Parse(fault, 1));
  }
  return options;
}

// The dialog on the real loop, and the stand-in for QuoteTracker behind TCP.
class RefreshingSources : public DialogTest {
 protected:
  explicit RefreshingSources(const std::vector<std::string>& faults = {}) : server(With(faults)) {
    host.Use(its_loop).Use(tcp);
    vault.credentials = {{MemoryVault::Credential::ApplicationName, "MireloDemo"},
                         {MemoryVault::Credential::ApplicationSecret, "demo-secret"}};
    Save("SocketPort", std::to_string(server.StreamPort()));
  }
  ~RefreshingSources() override { mGlobal::SetStreamingObject(nullptr); }

  // The person opens the tab Settings, asks for streaming, and does this.
  void InTheDialog(const std::function<void(frmMirelo& form)>& acts) {
    Show([&](frmMirelo& form) {
      form.C1TTickersSettings.UserSelect(kSettings);
      form.txtSec.UserEdit("0");
      form.lblStatus.Appearance.Subscribe([&] {
        const std::string& status = form.lblStatus.Caption();
        if (statuses.empty() || statuses.back() != status) statuses.push_back(status);
      });
      acts(form);
    });
  }

  // Runs the dialog's loop until `done`, which may ask the server. A failure after ten seconds.
  void Await(const std::function<bool()>& done) {
    bool late = false;
    const auto patience = its_loop.StartTimer(std::chrono::seconds(10), [&] { late = true; });
    host::MessageLoop::Token tick = 0;
    const std::function<void()> again = [&] {
      tick = its_loop.StartTimer(std::chrono::milliseconds(5), again);
    };
    again();
    its_loop.RunUntil([&] { return late || done(); });
    its_loop.StopTimer(tick);
    its_loop.StopTimer(patience);
    EXPECT_FALSE(late) << "what was waited for never came";
  }
  void AwaitEnd() {
    Await([] { return mGlobal::StreamingObject() == nullptr; });
  }

  static std::set<std::string> StoredNames() {
    Array<std::string> names;
    mGlobal::AppSettings().GetAllKeys(kListSection, names);
    return {names.begin(), names.end()};
  }
  // The first-run list and that of the stand-in, which share a source.
  static constexpr std::int32_t kFirstRun = 80;
  static constexpr std::int32_t kRefreshed = 170;

  quotetracker::Server server;
  TestedLoop its_loop;
  poll::PollWinsockLibrary tcp{its_loop};
  std::vector<std::string> statuses;  // that the dialog showed from then on
};

TEST_F(RefreshingSources, TellsItsStepsAndFillsTheBox) {
  mGlobal::AppSettings().SaveSetting(kListSection, "Mine", Variant("MINE.SDF"));
  mGlobal::AppSettings().SaveSetting(kFirstSection, "ComQuoteSource", Variant("Chosen last"));
  InTheDialog([&](frmMirelo& form) {
    form.lblStatus.Caption("left over");
    statuses.clear();
    form.ButUpDate.UserPress();
    AwaitEnd();
    EXPECT_EQ(form.ComQuoteSource.ListCount(), 92) << "two of the 92 sources have one name";
    EXPECT_EQ(form.ComQuoteSource.Text(), "Chosen last");
    EXPECT_EQ((std::set<std::string>{form.ComQuoteSource.Items().begin(), form.ComQuoteSource.Items().end()}),
              StoredNames());
  });
  EXPECT_THAT(statuses, ElementsAre("", "Connection started...", "Connecting to host...", "Connected",
                                    "Data source list updated successfully"));
  EXPECT_EQ(facade->StatusRunWorkQT(), Status_ENUMSOURCES_L1);
  EXPECT_THAT(desktop.boxes, IsEmpty());
}

TEST_F(RefreshingSources, ClosesItsConnectionAtTheEnd) {
  InTheDialog([&](frmMirelo& form) {
    form.ButUpDate.UserPress();
    const std::weak_ptr<cQTStreaming> stream = mGlobal::StreamingObject();
    ASSERT_FALSE(stream.expired());
    Await([&] { return stream.expired() && server.StreamConnections() == 0; });
    EXPECT_EQ(form.lblStatus.Caption(), "Data source list updated successfully");
  });
  EXPECT_EQ(its_loop.WatchCount(), 0U);
}

TEST_F(RefreshingSources, AddsToTheFirstRunListAndOverwrites) {
  mGlobal::AppSettings().SaveSetting(kFirstSection, "ComQuoteSource", Variant("not yet"));
  InTheDialog([&](frmMirelo& form) {
    ASSERT_EQ(form.ComQuoteSource.ListCount(), kFirstRun);
    mGlobal::AppSettings().SaveSetting(kListSection, "No longer listed", Variant("OLD.SDF"));
    mGlobal::AppSettings().SaveSetting(kListSection, "Arbor Financial (delayed)", Variant("OLD.SDF"));
    form.ButUpDate.UserPress();
    AwaitEnd();
    EXPECT_EQ(form.ComQuoteSource.ListCount(), kRefreshed + 1);
    for (const char* name : {"No longer listed", "OC Securities", "Vistula (Polska) - delayed"}) {
      EXPECT_THAT(form.ComQuoteSource.Items(), Contains(name));
    }
    EXPECT_EQ(form.ComQuoteSource.Text(), "Alpstein Finance (delayed)");
  });
  EXPECT_EQ(mGlobal::AppSettings().GetSetting(kListSection, "Arbor Financial (delayed)", "").ToText(),
            "ARBOR.SDF");
}

TEST_F(RefreshingSources, CanBeDoneAgain) {
  InTheDialog([&](frmMirelo& form) {
    for (int i = 0; i < 3; ++i) {
      form.ButUpDate.UserPress();
      AwaitEnd();
    }
    EXPECT_EQ(form.ComQuoteSource.ListCount(), kRefreshed);
  });
  EXPECT_THAT(server.StreamMessages(), SizeIs(6));
}

TEST_F(RefreshingSources, ReplacesARefreshThatIsUnderWay) {
  InTheDialog([&](frmMirelo& form) {
    form.ButUpDate.UserPress();
    const std::weak_ptr<cQTStreaming> first = mGlobal::StreamingObject();
    form.ButUpDate.UserPress();
    EXPECT_TRUE(first.expired());
    AwaitEnd();
    EXPECT_EQ(form.ComQuoteSource.ListCount(), kRefreshed);
  });
  Await([&] { return server.StreamConnections() == 0; });
}

TEST_F(RefreshingSources, DoesNotHearAStreamThatWasReplaced) {
  InTheDialog([&](frmMirelo& form) {
    form.ButUpDate.UserPress();
    const auto first = mGlobal::StreamingObject();
    form.ButUpDate.UserPress();
    const std::string status = form.lblStatus.Caption();
    first->OnStatusText.Raise("from the first");
    first->PerformanceFollowingProcess.Raise(1);
    EXPECT_EQ(form.lblStatus.Caption(), status);
    EXPECT_NE(mGlobal::StreamingObject(), nullptr);
  });
}

TEST_F(RefreshingSources, EndsWithTheDialog) {
  std::weak_ptr<cQTStreaming> stream;
  InTheDialog([&](frmMirelo& form) {
    form.ButUpDate.UserPress();
    Await([&] { return server.StreamConnections() == 1; });
    stream = mGlobal::StreamingObject();
    form.ButCancel.UserPress();
    EXPECT_EQ(mGlobal::StreamingObject(), nullptr);
  });
  EXPECT_TRUE(stream.expired());
  Await([&] { return server.StreamConnections() == 0; });
  EXPECT_THAT(StoredNames(), SizeIs(kFirstRun));
}

TEST_F(RefreshingSources, StopsAtWrongCredentials) {
  vault.credentials[MemoryVault::Credential::ApplicationSecret] = "not the secret";
  InTheDialog([&](frmMirelo& form) {
    form.ButUpDate.UserPress();
    Await([&] { return form.lblStatus.Caption().starts_with("Off. "); });
    EXPECT_THAT(form.lblStatus.Caption().substr(5), Not(IsEmpty()));
    EXPECT_NE(mGlobal::StreamingObject(), nullptr) << "until the dialog ends";
  });
  EXPECT_THAT(StoredNames(), SizeIs(kFirstRun));
}

TEST_F(RefreshingSources, ShowsWhyAnAddressCannotBeUsed) {
  Save("Webaddress", "no such address");
  InTheDialog([&](frmMirelo& form) {
    form.ButUpDate.UserPress();
    Await([&] { return !desktop.boxes.empty(); });
    ASSERT_THAT(desktop.boxes, SizeIs(1));
    EXPECT_EQ(desktop.boxes[0].style, 0);
    EXPECT_EQ(desktop.boxes[0].title, "Mirelo");
    EXPECT_EQ(form.lblStatus.Caption(), Replace(desktop.boxes[0].text, "\r\n", ""));
  });
}

TEST_F(RefreshingSources, ReportsASettingThatIsNoPort) {
  Save("SocketPort", "a port");
  Answers({"ABORT"});
  InTheDialog([&](frmMirelo& form) { form.ButUpDate.UserPress(); });
  ASSERT_THAT(desktop.reports, SizeIs(1));
  EXPECT_THAT(desktop.reports[0].text, HasSubstr("Error: 13, (Type mismatch)"));
  EXPECT_THAT(desktop.reports[0].text, HasSubstr("\tin Mirelo.frmMirelo.ButUpDate_Click at line 0"));
  EXPECT_THAT(statuses, IsEmpty()) << "the status line was empty and stays so";
}

TEST_F(RefreshingSources, ConnectsAtTheSecondTryWithAMendedPort) {
  Save("SocketPort", "a port");
  Answers({"RETRY"});
  Mend([&] { Save("SocketPort", std::to_string(server.StreamPort())); });
  InTheDialog([&](frmMirelo& form) {
    form.ButUpDate.UserPress();
    AwaitEnd();
    EXPECT_EQ(form.ComQuoteSource.ListCount(), kRefreshed);
  });
  EXPECT_THAT(server.StreamMessages(), SizeIs(2));
}

TEST_F(RefreshingSources, ReportsASourceChosenLastThatCannotBeRead) {
  InTheDialog([&](frmMirelo& form) {
    form.ReloadOnActivate(false);  // the return from the report shall not fill the dialog anew
    form.ButUpDate.UserPress();
    Await([&] { return form.lblStatus.Caption() == "Connected"; });
    registry.Raise("RegQueryValueExA");
    Answers({"IGNORE"});
    AwaitEnd();
    EXPECT_EQ(form.ComQuoteSource.ListCount(), kRefreshed);
    EXPECT_EQ(form.ComQuoteSource.Text(), "");
  });
  ASSERT_THAT(desktop.reports, SizeIs(1));
  EXPECT_THAT(desktop.reports[0].text, HasSubstr("\tin Mirelo.frmMirelo.AddListQuoteSource at line 0"));
}

// A process that no stream tells of today ends the connection, too; one that belongs to quotes is none of the
// dialog's.
TEST_F(RefreshingSources, ActsByTheProcessThatTheStreamTells) {
  struct Case {
    std::int16_t process;
    bool ends;
    bool fills;
  };
  InTheDialog([&](frmMirelo& form) {
    for (const Case& c :
         {Case{0, true, false}, Case{1, true, true}, Case{5, false, false}, Case{2, false, false}}) {
      SCOPED_TRACE(c.process);
      form.ComQuoteSource.Clear();
      form.ButUpDate.UserPress();
      const auto stream = mGlobal::StreamingObject();
      stream->StartStop(true);
      stream->PerformanceFollowingProcess.Raise(c.process);
      EXPECT_EQ(stream->StartStop(), !c.ends) << "a disconnected stream has stopped";
      EXPECT_EQ(mGlobal::StreamingObject() == nullptr, c.ends);
      EXPECT_EQ(form.ComQuoteSource.ListCount(), c.fills ? kFirstRun : 0);
    }
  });
}

TEST_F(RefreshingSources, OutlivesADialogThatIsThrownAwayWithoutSpeakingToIt) {
  auto dialog = std::make_unique<frmMirelo>();
  dialog->frmAppSettings(&mGlobal::AppSettings());
  dialog->Owner(&*facade);
  dialog->C1TTickersSettings.UserSelect(kSettings);
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
  InTheDialog([&](frmMirelo& form) {
    form.ButUpDate.UserPress();
    Await([&] { return its_loop.WatchCount() == 0; });
    EXPECT_EQ(form.lblStatus.Caption(), GetParam().last_status);
    EXPECT_EQ(form.ComQuoteSource.ListCount(), kFirstRun);

    server.SetStreamFaults({});
    form.ButUpDate.UserPress();
    AwaitEnd();
    EXPECT_EQ(form.lblStatus.Caption(), "Data source list updated successfully");
    EXPECT_EQ(form.ComQuoteSource.ListCount(), kRefreshed);
  });
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
