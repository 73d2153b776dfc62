#include <algorithm>
#include <string>

#include "automation/array.h"
#include "diagnostics/CErrorHandler.h"
#include "streaming/stream_test.h"
#include "support/faulty_registry.h"

namespace mirelo::testing {
namespace {

constexpr char kListOfSources[] = "Settings\\QuoteSource\\List";

class GivingStreamerFiles : public StreamTest {
 protected:
  GivingStreamerFiles() {
    Source("Provider (delayed)", "SWISS.SDF");
    Source(" IQFeed US - STREAMING", "IQFEED.SDF");
  }
  static void Source(const std::string& name, const std::string& file) {
    mGlobal::AppSettings().SaveSetting(kListOfSources, name, Variant(file));
  }
};

TEST_F(GivingStreamerFiles, FindsADisplayTextWithoutRegardToCaseAndBlanksAround) {
  EXPECT_EQ(stream->GiveStreamerFile("Provider (delayed)"), "SWISS.SDF");
  EXPECT_EQ(stream->GiveStreamerFile("  pROVIDER (DELAYED) "), "SWISS.SDF");
}

TEST_F(GivingStreamerFiles, FindsATextThatIsStoredWithALeadingBlankWithoutIt) {
  EXPECT_EQ(stream->GiveStreamerFile("IQFeed US - STREAMING"), "IQFEED.SDF");
  EXPECT_EQ(stream->GiveStreamerFile(" IQFeed US - STREAMING"), "IQFEED.SDF");
}

TEST_F(GivingStreamerFiles, GivesNothingForWhatIsNotListed) {
  EXPECT_EQ(stream->GiveStreamerFile("Provider"), "");
  EXPECT_EQ(stream->GiveStreamerFile("Provider  (delayed)"), "");
}

TEST_F(GivingStreamerFiles, GivesNothingForAMissingOrBlankArgument) {
  EXPECT_EQ(stream->GiveStreamerFile(), "");
  EXPECT_EQ(stream->GiveStreamerFile("   "), "");
}

TEST_F(GivingStreamerFiles, TakesTheFirstOfNamesThatDifferInBlanksOnly) {
  Source("Twice", "ONE.SDF");
  Source("Twice ", "TWO.SDF");
  Array<std::string> names;
  mGlobal::AppSettings().GetAllKeys(kListOfSources, names);
  const auto first =
      std::find_if(names.begin(), names.end(), [](const auto& n) { return n.starts_with("Twice"); });
  EXPECT_EQ(stream->GiveStreamerFile("twice"), *first == "Twice" ? "ONE.SDF" : "TWO.SDF");
}

TEST_F(StreamTest, GivesNoStreamerFileWithoutASectionOrFromAnEmptyOne) {
  EXPECT_EQ(stream->GiveStreamerFile("Provider"), "");
  host::Registry::Key key = 0;
  registry.RegCreateKeyExA(host::Registry::kCurrentUser,
                           "Software\\Kestrin\\Dovanta2\\Settings\\QuoteSource\\List",
                           host::Registry::kAllAccess, key);
  registry.RegCloseKey(key);
  EXPECT_EQ(stream->GiveStreamerFile("Provider"), "");
  EXPECT_TRUE(desktop.reports.empty());
}

TEST_F(GivingStreamerFiles, GivesNothingFromAListThatBrokeOff) {
  Array<std::string> names;
  ASSERT_TRUE(mGlobal::AppSettings().GetAllKeys(kListOfSources, names));
  const std::string first = names(1);
  const std::string file = stream->GiveStreamerFile(first);
  FaultyRegistry faulty(registry);
  host.Use(faulty);
  faulty.Raise("RegEnumValueA", 2);
  EXPECT_EQ(stream->GiveStreamerFile(first), "") << "though its name had been read";
  EXPECT_EQ(stream->GiveStreamerFile(first), file);
  EXPECT_TRUE(desktop.reports.empty());
  EXPECT_TRUE(mGlobal::ErrorHandler().CallStack().empty());
  host.Use(registry);
}

class FailingStreamerFile : public GivingStreamerFiles {
 protected:
  // A value that the store can't read: a text of no bytes.
  FailingStreamerFile() {
    host::Registry::Key key = 0;
    registry.RegCreateKeyExA(host::Registry::kCurrentUser,
                             "Software\\Kestrin\\Dovanta2\\Settings\\QuoteSource\\List",
                             host::Registry::kAllAccess, key);
    registry.RegSetValueExA(key, "Damaged", host::Registry::kSz, "", 0);
    registry.RegCloseKey(key);
  }
};

TEST_F(FailingStreamerFile, IsReportedAndGivesNothingWhenAborted) {
  desktop.report_answers = {"ABORT"};
  EXPECT_EQ(stream->GiveStreamerFile("Damaged"), "");
  ASSERT_EQ(desktop.reports.size(), 1u);
  EXPECT_THAT(desktop.reports[0].text,
              ::testing::HasSubstr("in Mirelo.cQTStreaming.GiveStreamerFile at line 0"));
  EXPECT_THAT(desktop.reports[0].text, ::testing::HasSubstr("CAppSettings component failure"));
}

TEST_F(FailingStreamerFile, IsTriedAgainOnRetry) {
  desktop.report_answers = {"RETRY", "IGNORE"};
  EXPECT_EQ(stream->GiveStreamerFile("Damaged"), "");
  EXPECT_EQ(desktop.reports.size(), 2u);
}

TEST_F(GivingStreamerFiles, LeavesNothingOnTheCallStack) {
  stream->GiveStreamerFile();
  stream->GiveStreamerFile("unknown");
  stream->GiveStreamerFile("Provider (delayed)");
  EXPECT_TRUE(mGlobal::ErrorHandler().CallStack().empty());
}

}  // namespace
}  // namespace mirelo::testing
