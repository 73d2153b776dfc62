// The two lists of columns, which Go stores behind all other settings and right before it builds the table.

#include "support/logging_registry.h"
#include "worksheet/go_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;

class ListsOfColumns : public GoTest {
 protected:
  // The texts of the two lists, as stored.
  Texts StoredLists() {
    return {Stored("Settings", "ListLeft").ToText(), Stored("Settings", "ListRight").ToText()};
  }
};

TEST_F(ListsOfColumns, AreStored) {
  Save("ListLeft", "Open,Tick");
  Columns("Ticker,Bid,Last");
  Go({"MSFT"}, [](frmMirelo& form) {
    form.C1TTickersSettings.UserSelect(kFields);
    form.ListRight.UserSelect(2);
    form.ButUp.Enabled(true);
    form.ListLeft.UserDoubleClick(0);
  });
  EXPECT_THAT(StoredLists(), ElementsAre("Tick", "Ticker,Bid,Last,Open"));
}

TEST_F(ListsOfColumns, AreStoredBehindAllOtherSettings) {
  LoggingRegistry log(registry);
  host.Use(log);
  Go({"MSFT"});
  host.Use(registry);
  Texts names;
  for (const auto& write : log.writes) {
    if (write.section == "Settings") names.push_back(write.name);
  }
  ASSERT_GE(names.size(), 3U);
  EXPECT_THAT(Texts(names.end() - 3, names.end()),
              ElementsAre("DisplacementMinute", "ListLeft", "ListRight"));
}

// Settings that cannot be stored are passed over in silence, but not the lists.

TEST_F(ListsOfColumns, AreReportedWhereTheyCannotBeStoredAndTheTableIsBuiltAllTheSame) {
  tracker.on_request = [&](const std::string&) { registry.FailAlways("RegSetValueExA"); };
  Answers({"IGNORE", "IGNORE"});
  EXPECT_EQ(Go({"MSFT"}), 78);
  EXPECT_THAT(ReportedRoutines(), ElementsAre("Mirelo.frmMirelo.save_settings_and_create_table",
                                              "Mirelo.frmMirelo.save_settings_and_create_table"));
  EXPECT_EQ(Text("A2"), "Ticker");
  EXPECT_THAT(StoredLists(), ElementsAre("", ""));
}

TEST_F(ListsOfColumns, AreStoredOnceTheyCanBe) {
  Columns("Ticker,Last");
  tracker.on_request = [&](const std::string&) { registry.FailAlways("RegSetValueExA"); };
  Answers({"RETRY"});
  Mend([&] { registry.Fail("RegSetValueExA", 1000); });
  EXPECT_EQ(Go({"MSFT"}), 78);
  EXPECT_EQ(desktop.reports.size(), 1U);
  EXPECT_EQ(StoredLists().back(), "Ticker,Last");
}

TEST_F(ListsOfColumns, KeepTheTableFromBeingBegunWhenStoringThemIsAborted) {
  tracker.on_request = [&](const std::string&) { registry.FailAlways("RegSetValueExA"); };
  Answers({"ABORT"});
  EXPECT_EQ(Go({"MSFT"}), 2);
  EXPECT_THAT(SheetNames(), ElementsAre("Sheet1"));
  EXPECT_TRUE(Excel().ScreenUpdating());
}

TEST_F(ListsOfColumns, AreEmptyTextsWhereTheyAreEmpty) {
  Save("ListLeft", "Open");
  Columns("Ticker,Bid");
  Go({"MSFT"}, [](frmMirelo& form) {
    form.C1TTickersSettings.UserSelect(kFields);
    form.ListLeft.UserDoubleClick(0);
  });
  EXPECT_THAT(StoredLists(), ElementsAre("", "Ticker,Bid,Open"));
}

}  // namespace
}  // namespace mirelo::testing
