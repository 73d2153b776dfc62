#include <cstdint>
#include <string>
#include <vector>

#include "automation/array.h"
#include "automation/variant.h"
#include "streaming/stream_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr char kList[] = "Settings\\QuoteSource\\List";

class Subscribing : public StreamTest {
 protected:
  std::string GroupsOf(const Variant& tickers) {
    stream->connect();
    stream->arrTickers(tickers);
    Deliver("OK<STREAMER>SWISS.SDF</STREAMER>");
    const std::string head = "<L1QUOTES><ReqType>SUB</ReqType><Symbols>";
    const std::string end = "</Symbols></L1QUOTES>\xFF";
    const std::string message = Sent().back();
    EXPECT_TRUE(message.starts_with(head) && message.ends_with(end)) << message;
    return message.substr(head.size(), message.size() - head.size() - end.size());
  }
  static VariantArray Tickers(int count) {
    std::vector<std::string> tickers;
    for (int i = 1; i <= count; ++i) tickers.push_back("s" + std::to_string(i));
    return VariantArray::OfTexts(tickers);
  }
};

TEST_F(Subscribing, PutsFourSymbolsInTheFirstGroupAndFiveInLaterOnes) {
  struct Case {
    int count;
    const char* groups;
  };
  for (const auto& [count, groups] : {
           Case{0, ""},
           {1, "s1"},
           {4, "s1,s2,s3,s4"},
           {5, "s1,s2,s3,s4</Symbols><Symbols>s5"},
           {6, "s1,s2,s3,s4</Symbols><Symbols>s5,s6"},
           {9, "s1,s2,s3,s4</Symbols><Symbols>s5,s6,s7,s8,s9"},
           {10, "s1,s2,s3,s4</Symbols><Symbols>s5,s6,s7,s8,s9</Symbols><Symbols>s10"},
           {14, "s1,s2,s3,s4</Symbols><Symbols>s5,s6,s7,s8,s9</Symbols><Symbols>s10,s11,s12,s13,s14"},
       }) {
    EXPECT_EQ(GroupsOf(Tickers(count)), groups) << count;
  }
}

TEST_F(Subscribing, TakesArraysOfAnyBounds) {
  VariantArray tickers(3, 4);
  tickers(3) = "IBM";
  tickers(4) = "MSFT";
  EXPECT_EQ(GroupsOf(tickers), "IBM,MSFT");
}

TEST_F(Subscribing, ChangesNoSymbol) {
  EXPECT_EQ(GroupsOf(VariantArray::OfTexts({" ibm ", "", "<A>", "B,C"})), " ibm ,,<A>,B,C");
}

TEST_F(Subscribing, AsksForAllSymbolsInOneRequest) {
  const std::string groups = GroupsOf(Tickers(10'000));
  EXPECT_TRUE(groups.ends_with("s10000"));
  EXPECT_EQ(Sent().size(), 1u);
}

TEST_F(StreamTest, EndsAllSubscriptionsWithOneMessage) {
  stream->connect();
  stream->stop_sub();
  EXPECT_THAT(Sent(), ElementsAre("<L1QUOTES><ReqType>UNSUBALL</ReqType></L1QUOTES>\xFF"));
}

class ParsingSources : public StreamTest {
 protected:
  ParsingSources() {
    stream->connect();
    status_texts.clear();
  }
  static std::string Item(const std::string& file, const std::string& name) {
    return "<SOURCE><FILENAME>" + file + "</FILENAME><NAME>" + name + "</NAME></SOURCE>";
  }
  static std::string Stored(const std::string& name) {
    return mGlobal::AppSettings().GetSetting(kList, name, "(none)").ToText();
  }
  static bool StoredAny() {
    Array<std::string> names;
    return mGlobal::AppSettings().GetAllKeys(kList, names);
  }
};

TEST_F(ParsingSources, StoresTheFileOfEachNameAndReports) {
  Deliver("ES 17<SOURCES><SOURCETYPE>L1</SOURCETYPE>" + Item("AMSTR.SDF", "Streamer (Clients Only)") +
          Item("IQFEED.SDF", " IQFeed US") + "</SOURCES>");
  EXPECT_EQ(Stored("Streamer (Clients Only)"), "AMSTR.SDF");
  EXPECT_EQ(Stored(" IQFeed US"), "IQFEED.SDF");
  EXPECT_THAT(status_texts, ElementsAre("Data source list updated successfully"));
  EXPECT_THAT(processes, ElementsAre(1));
}

TEST_F(ParsingSources, SkipsItemsThatLackFileOrName) {
  Deliver("ES<SOURCES><SOURCETYPE>L1</SOURCETYPE>" + Item("", "Alpha") + Item("B.SDF", "") +
          "<SOURCE>nothing</SOURCE>" + Item("C.SDF", "Gamma") + "</SOURCES>");
  EXPECT_EQ(Stored("Alpha"), "(none)");
  EXPECT_EQ(Stored("Gamma"), "C.SDF");
  EXPECT_THAT(processes, ElementsAre(1));
}

TEST_F(ParsingSources, KeepsOnlyLevelOneSources) {
  for (const char* type : {"TRADE", "SNAPNEWS", "STRNEWS", "L2", "", " L1"}) {
    Deliver(std::string("ES<SOURCES><SOURCETYPE>") + type + "</SOURCETYPE>" + Item("A.SDF", "Alpha") +
            "</SOURCES>");
  }
  EXPECT_FALSE(StoredAny());
  EXPECT_EQ(processes.size(), 6u) << "which is a success all the same";
}

TEST_F(ParsingSources, ReportsAListThatEndsBeforeItBegins) {
  Deliver("ES</SOURCES><SOURCES>");
  EXPECT_THAT(status_texts, ElementsAre("Data source list is not updated"));
  EXPECT_THAT(processes, IsEmpty());
}

TEST_F(ParsingSources, GoesOnWithoutABeginning) {
  Deliver("ES<SOURCETYPE>L1</SOURCETYPE>" + Item("A.SDF", "Alpha") + "</SOURCES>");
  EXPECT_EQ(Stored("Alpha"), "A.SDF");
}

TEST_F(ParsingSources, TakesTheTypeFromTheTwelfthCharacterWithoutItsOpeningTag) {
  Deliver("ES<SOURCES>L1</SOURCETYPE>" + Item("A.SDF", "Alpha") + "</SOURCES>");
  EXPECT_EQ(Stored("Alpha"), "A.SDF");
  Deliver("ES <SOURCES>L1</SOURCETYPE>" + Item("B.SDF", "Beta") + "</SOURCES>");
  EXPECT_EQ(Stored("Beta"), "(none)") << "which is the bracket here";
  EXPECT_THAT(processes, ElementsAre(1, 1));
}

TEST_F(ParsingSources, ReportsTheErrorOfAListWithoutAnyItem) {
  Deliver("ES<SOURCES><SOURCETYPE>L1</SOURCETYPE></SOURCES>");
  EXPECT_THAT(status_texts, ElementsAre("5  Invalid procedure call or argument"));
  EXPECT_THAT(processes, IsEmpty());
}

TEST_F(ParsingSources, EndsAtAnItemThatIsNotClosed) {
  Deliver("ES<SOURCES><SOURCETYPE>L1</SOURCETYPE>" + Item("A.SDF", "Alpha") +
          "<SOURCE><FILENAME>B.SDF</FILENAME><NAME>Beta</NAME></SOURCES>");
  EXPECT_EQ(Stored("Alpha"), "A.SDF");
  EXPECT_EQ(Stored("Beta"), "(none)");
  EXPECT_THAT(processes, ElementsAre(1));
}

TEST_F(ParsingSources, RaisesAnErrorWithoutAClosedSourceType) {
  for (const char* text : {"ES<SOURCES><SOURCETYPE>L1<SOURCE></SOURCE></SOURCES>", "ES</SOURCES>",
                           "ES<SOURCES></SOURCETYPE><SOURCETYPE>L1<SOURCE></SOURCE></SOURCES>",
                           "ES<SOURCES><SOURCE></SOURCE></SOURCES><SOURCETYPE>L1</SOURCETYPE>"}) {
    EXPECT_EQ(ErrorNumberOf(text), 5) << text;
  }
  EXPECT_THAT(status_texts, IsEmpty());
  EXPECT_THAT(processes, IsEmpty());
}

TEST_F(ParsingSources, KeepsTheItemsBeforeOneThatFails) {
  // A registry that refuses the second name.
  class Refusing : public MemoryRegistry {
   public:
    std::int32_t RegSetValueExA(Key key, const std::string& name, std::uint32_t type, const char* data,
                                std::uint32_t size) override {
      if (name == "Beta") return kAccessDenied;
      return MemoryRegistry::RegSetValueExA(key, name, type, data, size);
    }
  } refusing;
  host.Use(refusing);
  Deliver("ES<SOURCES><SOURCETYPE>L1</SOURCETYPE>" + Item("A.SDF", "Alpha") + Item("B.SDF", "Beta") +
          Item("C.SDF", "Gamma") + "</SOURCES>");
  EXPECT_EQ(Stored("Alpha"), "A.SDF");
  EXPECT_EQ(Stored("Gamma"), "(none)");
  EXPECT_THAT(status_texts, ElementsAre("-2147204479  Failed saving the application setting"));
  EXPECT_THAT(processes, IsEmpty());
  host.Use(registry);
}

TEST_F(ParsingSources, OverwritesAndKeepsWhatWasThereBefore) {
  mGlobal::AppSettings().SaveSetting(kList, "Old", Variant("OLD.SDF"));
  mGlobal::AppSettings().SaveSetting(kList, "Alpha", Variant("WAS.SDF"));
  Deliver("ES<SOURCES><SOURCETYPE>L1</SOURCETYPE>" + Item("IS.SDF", "Alpha") + "</SOURCES>");
  EXPECT_EQ(Stored("Old"), "OLD.SDF");
  EXPECT_EQ(Stored("Alpha"), "IS.SDF");
}

}  // namespace
}  // namespace mirelo::testing
