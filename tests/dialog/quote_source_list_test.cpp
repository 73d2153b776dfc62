#include <gmock/gmock.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

#include "automation/array.h"
#include "automation/text.h"
#include "diagnostics/CErrorHandler.h"
#include "dialog/frmMirelo.h"
#include "host/registry_names.h"
#include "streaming/cQTStreaming.h"
#include "streaming/first_sources.h"
#include "support/facade_test.h"
#include "support/logging_registry.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

constexpr char kList[] = "Settings\\QuoteSource\\List";
constexpr char kFirst[] = "Settings\\QuoteSource\\First";
constexpr char kSwiss[] = "Alpstein Finance (delayed)";

const std::vector<std::string> kFiles{"ABAX_FR.SDF",
                                      "ACTIVOBANK_PT.SDF",
                                      "ADVFNSTR.SDF",
                                      "AMSTR.SDF",
                                      "AMTRADE.SDF",
                                      "ANDREWEST_AU.SDF",
                                      "ASKRESEARCH.SDF",
                                      "ASX_AU.SDF",
                                      "BANCAM.SDF",
                                      "CAPITOL_FR.SDF",
                                      "CHOICETRADE.SDF",
                                      "CIBC_CA.SDF",
                                      "COMDIRECT_DE.SDF",
                                      "COMSEC_AU.SDF",
                                      "COTATIONS_FR.SDF",
                                      "CSWATCH.SDF",
                                      "CSWATCHDELAYED.SDF",
                                      "CSWSTR.SDF",
                                      "DIRABA_DE.SDF",
                                      "DIRECTA_IT.SDF",
                                      "DIRECTBR_AU.SDF",
                                      "DIRECTBR_NZ.SDF",
                                      "DIRFIN_FR.SDF",
                                      "DISNAT_CA.SDF",
                                      "DISNAT_CAM.SDF",
                                      "DISNAT_CAV.SDF",
                                      "EFINET.SDF",
                                      "ENORTHERN.SDF",
                                      "ESIGNAL.SDF",
                                      "ETRADESTR.SDF",
                                      "ETRADE_UK.SDF",
                                      "FACTOR_BR.SDF",
                                      "FIDELITY.SDF",
                                      "FINANCIALINE.SDF",
                                      "FINECO_IT.SDF",
                                      "FIRSTRADE.SDF",
                                      "FIRSTSTR.SDF",
                                      "FOOL_UK.SDF",
                                      "FORTUNEO_FR.SDF",
                                      "GLOB.SDF",
                                      "HSBC_CA.SDF",
                                      "HSBC_CAU.SDF",
                                      "IBSTR.SDF",
                                      "IMARKEDETDL_NO.SDF",
                                      "IMARKEDET_NO.SDF",
                                      "INTERQ.SDF",
                                      "INVESTRADE.SDF",
                                      "INVESTSHOPRT_BR.SDF",
                                      "INVESTSHOP_BR.SDF",
                                      "IQFEED.SDF",
                                      "JSE.SDF",
                                      "LOWTRADES.SDF",
                                      "LS_DE.SDF",
                                      "MACQUARIE_AU.SDF",
                                      "MARKETFEED.SDF",
                                      "MBT.SDF",
                                      "MONEY.SDF",
                                      "MONEYSTR.SDF",
                                      "NAFT_GR.SDF",
                                      "NATIONAL_AU.SDF",
                                      "NETWEALTH_AU.SDF",
                                      "OCSEC.SDF",
                                      "OPTXPRSTR.SDF",
                                      "PCQUOTE.SDF",
                                      "PROPHET.SDF",
                                      "PROPHETSTR.SDF",
                                      "QCOM.SDF",
                                      "RMLPN.SDF",
                                      "ROYALBANK_CA.SDF",
                                      "ROYALBANK_CAU.SDF",
                                      "SCHWAB.SDF",
                                      "SCOTTNEW.SDF",
                                      "SUNCORPMETWAY_AU.SDF",
                                      "SWISS.SDF",
                                      "TFPN_CA.SDF",
                                      "WALLETWATCH.SDF",
                                      "WEBLINK_AU.SDF",
                                      "WHOUSE_CA.SDF",
                                      "WHOUSE_UK.SDF",
                                      "WSTITALIA.SDF"};

TEST(FirstSources, AreEightyInTheOrderOfTheirFiles) {
  std::vector<std::string> files;
  for (const QuoteSourceRow& row : kFirstSources) files.emplace_back(row.file);
  EXPECT_THAT(files, SizeIs(80));
  EXPECT_EQ(files, kFiles);
}

TEST(FirstSources, BearTheTextsThatPeopleKnow) {
  const QuoteSourceRow known[]{
      {"ABAX_FR.SDF", "Abax (France) - RealTime (Customers Only)"},
      {"AMSTR.SDF", "TD AMERITRADE - Streamer (Clients Only)"},
      {"AMTRADE.SDF", "TD AMERITRADE - Snapshot (Clients Only)"},
      {"COTATIONS_FR.SDF", "Cotations (France) RealTime (Subscribers Only"},
      {"ESIGNAL.SDF", "eSignal STREAMING (Customers)"},
      {"IQFEED.SDF", " IQFeed US - STREAMING RealTime (Subscription)"},
      {"OCSEC.SDF", "OC Securities"},
      {"RMLPN.SDF", "RML Trading - Penson"},
      {"SWISS.SDF", kSwiss},
  };
  for (const QuoteSourceRow& row : known) {
    SCOPED_TRACE(row.file);
    const auto found = std::ranges::find(kFirstSources, row.file, &QuoteSourceRow::file);
    ASSERT_NE(found, kFirstSources.end());
    EXPECT_EQ(found->text, row.text);
  }
}

// The registry keeps one value for a name, and finds names without regard to case.
TEST(FirstSources, BearTextsThatDifferByMoreThanCaseAndBlanks) {
  std::set<std::string> texts;
  for (const QuoteSourceRow& row : kFirstSources) {
    SCOPED_TRACE(row.file);
    EXPECT_TRUE(texts.insert(UCase(Trim(row.text))).second);
    EXPECT_FALSE(Trim(row.text).empty());
    EXPECT_LE(row.text.size(), host::kLongestValueName);
  }
}

class QuoteSourceList : public FacadeTest {
 protected:
  QuoteSourceList() {
    host.Use(log);
    form.frmAppSettings(&mGlobal::AppSettings());
    form.Owner(&*facade);
  }

  void Source(const std::string& text, const std::string& file = "X.SDF") {
    mGlobal::AppSettings().SaveSetting(kList, text, Variant(file));
  }
  void First(const std::string& text) {
    mGlobal::AppSettings().SaveSetting(kFirst, "ComQuoteSource", Variant(text));
  }
  std::string StoredFirst() const {
    return mGlobal::AppSettings().GetSetting(kFirst, "ComQuoteSource", "none").ToText();
  }
  static std::size_t StoredSources() {
    Array<std::string> names;
    mGlobal::AppSettings().GetAllKeys(kList, names);
    return static_cast<std::size_t>(std::distance(names.begin(), names.end()));
  }

  LoggingRegistry log{registry};
  frmMirelo form;
  forms::ComboBox& box = form.ComQuoteSource;
};

TEST_F(QuoteSourceList, IsWrittenOnAFirstRunAndThenItsDefault) {
  form.AddListQuoteSource("");
  std::vector<LoggingRegistry::Write> expected;
  for (const QuoteSourceRow& row : kFirstSources) {
    expected.push_back({kList, std::string(row.text), host::Registry::kSz, std::string(row.file)});
  }
  expected.push_back({kFirst, "ComQuoteSource", host::Registry::kSz, kSwiss});
  EXPECT_EQ(log.writes, expected);
  EXPECT_THAT(mGlobal::ErrorHandler().CallStack(), IsEmpty());
}

TEST_F(QuoteSourceList, ShowsTheDefaultOnAFirstRun) {
  form.AddListQuoteSource("");
  EXPECT_EQ(box.Text(), kSwiss);
  EXPECT_EQ(box.ListCount(), 80);
  EXPECT_EQ(StoredFirst(), kSwiss);
}

TEST_F(QuoteSourceList, IsShownInTheOrderOfTheAlphabetBlanksInFront) {
  form.AddListQuoteSource("");
  EXPECT_TRUE(std::ranges::is_sorted(
      box.Items(), [](const auto& a, const auto& b) { return StrComp(a, b, Compare::Text) < 0; }));
  EXPECT_EQ(box.List(0), " ADVFN - STREAMING RealTime (Subscription)");
  EXPECT_EQ(box.List(3), " IQFeed US - STREAMING RealTime (Subscription)");
}

TEST_F(QuoteSourceList, IsWrittenIntoASectionWithoutValues) {
  host::Registry::Key key = 0;
  registry.RegCreateKeyExA(host::Registry::kCurrentUser, std::string("Software\\Kestrin\\Dovanta2\\") + kList,
                           host::Registry::kAllAccess, key);
  registry.RegCloseKey(key);
  form.AddListQuoteSource("");
  EXPECT_EQ(StoredSources(), 80U);
}

TEST_F(QuoteSourceList, IsNotMixedWithOneThatIsThere) {
  Source("Only one");
  First("Another");
  log.writes.clear();
  form.AddListQuoteSource("");
  EXPECT_THAT(log.writes, IsEmpty());
  EXPECT_THAT(box.Items(), ElementsAre("Only one"));
  EXPECT_EQ(box.Text(), "Another") << "though it is not in the list";
}

TEST_F(QuoteSourceList, ReplacesWhatTheBoxHeld) {
  box.AddItem("old");
  Source("new");
  form.AddListQuoteSource("");
  form.AddListQuoteSource("");
  EXPECT_THAT(box.Items(), ElementsAre("new"));
}

TEST_F(QuoteSourceList, ShowsTheTextThatIsAskedForIfItIsListed) {
  Source("Plain");
  Source(" Blank in front");
  First("chosen last");
  struct Case {
    const char* asked;
    const char* shown;
  };
  for (const Case& c :
       {Case{"Plain", "Plain"}, Case{"  pLAIN ", "Plain"}, Case{"Blank in front", " Blank in front"},
        Case{" BLANK IN FRONT", " Blank in front"}, Case{"Plain text", "chosen last"},
        Case{"False", "chosen last"}, Case{"", "chosen last"}, Case{"   ", "chosen last"}}) {
    SCOPED_TRACE(c.asked);
    form.AddListQuoteSource(c.asked);
    EXPECT_EQ(box.Text(), c.shown);
    EXPECT_EQ(box.ListCount(), 2);
  }
}

TEST_F(QuoteSourceList, ShowsTheLastOfNamesThatDifferInBlanksOnly) {
  Source("Twice");
  Source("Twice ");
  Array<std::string> names;
  mGlobal::AppSettings().GetAllKeys(kList, names);
  form.AddListQuoteSource("twice");
  EXPECT_EQ(box.Text(), names(names.UBound()));
}

TEST_F(QuoteSourceList, ShowsNothingWithoutASourceChosenLast) {
  Source("Plain");
  form.AddListQuoteSource("unknown");
  EXPECT_EQ(box.Text(), "");
}

TEST_F(QuoteSourceList, NamesTheFileOfEachSource) {
  form.AddListQuoteSource("");
  cQTStreaming stream;
  for (const QuoteSourceRow& row : kFirstSources) {
    SCOPED_TRACE(row.file);
    EXPECT_EQ(stream.GiveStreamerFile(row.text), row.file);
    EXPECT_EQ(stream.GiveStreamerFile("  " + LCase(Trim(row.text)) + " "), row.file);
  }
}

TEST_F(QuoteSourceList, KeepsTheRestWhenARowCannotBeStoredAndThatIsIgnored) {
  registry.Fail("RegSetValueExA", 3);
  Answers({"IGNORE"});
  form.AddListQuoteSource("");
  EXPECT_EQ(StoredSources(), 79U);
  EXPECT_EQ(box.Text(), kSwiss);
  ASSERT_THAT(desktop.reports, SizeIs(1));
  EXPECT_THAT(desktop.reports[0].text, HasSubstr("(Failed saving the application setting)"));
  EXPECT_THAT(desktop.reports[0].text, HasSubstr("\tin Mirelo.frmMirelo.AddListQuoteSource at line 0"));
}

TEST_F(QuoteSourceList, StoresARowAtTheSecondTry) {
  registry.Fail("RegSetValueExA", 80);
  Answers({"RETRY"});
  form.AddListQuoteSource("");
  EXPECT_EQ(StoredSources(), 80U);
  EXPECT_THAT(log.writes, SizeIs(82));
}

TEST_F(QuoteSourceList, LeavesTheBoxAsItWasWhenItIsAborted) {
  box.AddItem("old");
  registry.Fail("RegSetValueExA", 3);
  Answers({"ABORT"});
  form.AddListQuoteSource("");
  EXPECT_THAT(box.Items(), ElementsAre("old"));
  EXPECT_EQ(StoredSources(), 2U);
  EXPECT_THAT(mGlobal::ErrorHandler().CallStack(), IsEmpty());
}

TEST_F(QuoteSourceList, IsNotWrittenOverOneThatCannotBeReadToItsEnd) {
  Source("A");
  Source("B");
  log.writes.clear();
  registry.Raise("RegEnumValueA", 2);
  form.AddListQuoteSource("");
  EXPECT_THAT(log.writes, IsEmpty());
  EXPECT_EQ(box.ListCount(), 1);
}

TEST_F(QuoteSourceList, ReportsAFirstSourceThatCannotBeRead) {
  Source("A");
  First("A");
  registry.Raise("RegQueryValueExA");
  Answers({"IGNORE"});
  form.AddListQuoteSource("");
  ASSERT_THAT(desktop.reports, SizeIs(1));
  EXPECT_THAT(box.Items(), ElementsAre("A"));
}

}  // namespace
}  // namespace mirelo::testing
