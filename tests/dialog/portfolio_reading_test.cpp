#include <cstdint>
#include <optional>
#include <string>

#include "diagnostics/CErrorHandler.h"
#include "dialog/portfolio_test.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

std::vector<std::string> TextsOf(const Variant& symbols) {
  std::vector<std::string> texts;
  const VariantArray& array = symbols.AsArray();
  for (std::int32_t i = array.LBound(); i <= array.UBound(); ++i) texts.push_back(array(i).ToText());
  return texts;
}

// GetPortfolioTickersFromQT, which other routines of the dialog call.
class ReadingThePortfolio : public PortfolioTest {
 protected:
  bool Read() { return form.GetPortfolioTickersFromQT(symbols); }

  void ExpectMessage(const ScriptedDesktop::Box& box) {
    EXPECT_FALSE(Read());
    EXPECT_THAT(desktop.boxes, ElementsAre(box));
    EXPECT_THAT(desktop.reports, IsEmpty());
    EXPECT_EQ(symbols.ToText(), "as before");
  }

  Variant symbols = "as before";
};

TEST_F(ReadingThePortfolio, GivesTheSymbolsAsTextsFromIndexZero) {
  ASSERT_TRUE(Read());
  EXPECT_EQ(symbols.AsArray().LBound(), 0);
  EXPECT_THAT(TextsOf(symbols), ElementsAre("MSFT", "IBM", "GE"));
  EXPECT_THAT(desktop.boxes, IsEmpty());
  EXPECT_THAT(mGlobal::ErrorHandler().CallStack(), IsEmpty());
}

TEST_F(ReadingThePortfolio, ReadsTheFirstPortfolioOnly) {
  ASSERT_TRUE(Read());
  EXPECT_THAT(internet.Resources(), ElementsAre("/req?EnumPorts()", "/req?EnumPortSymbols(Main)"));
}

TEST_F(ReadingThePortfolio, SendsTheNameOfThePortfolioAsItIs) {
  tracker.names = "OK\r\nMy (best) 10% & more ,Other";
  ASSERT_TRUE(Read());
  EXPECT_EQ(internet.Resources().back(), "/req?EnumPortSymbols(My (best) 10% & more )");
}

TEST_F(ReadingThePortfolio, AsksAtTheAddressAndPortThatTheDialogShows) {
  Save("Webaddress", "stored.example");
  Save("HTTPPort", "1");
  form.txtWebAddress.UserEdit("shown.example");
  form.C1TTickersSettings.UserSelect(1);
  form.txtWebAddress.UserEdit("shown.example");
  form.txtHTTPPort.UserEdit("8080");
  ASSERT_TRUE(Read());
  ASSERT_THAT(internet.requests, SizeIs(2));
  for (const auto& request : internet.requests) {
    SCOPED_TRACE(request.resource);
    EXPECT_EQ(request.host, "shown.example");
    EXPECT_EQ(request.port, 8080);
    EXPECT_EQ(request.verb, "GET");
    EXPECT_EQ(request.body, "");
  }
}

// Ports from 32768 on are negative in the 16 bits that a port has.
TEST_F(ReadingThePortfolio, TakesAPortByItsNegativeForm) {
  form.txtHTTPPort.Text("-25536");
  ASSERT_TRUE(Read());
  EXPECT_EQ(internet.requests[0].port, 40000);
}

TEST_F(ReadingThePortfolio, RefusesAPortThatIsNoNumberBeforeAnyRequest) {
  for (const char* port : {"80a", "", "port", "16239 or so", "0x10"}) {
    SCOPED_TRACE(port);
    desktop.boxes.clear();
    form.C1TTickersSettings.CurrTab(1);
    form.txtTicker.SetFocus();
    form.txtHTTPPort.Text(port);
    ExpectMessage({"The value must be a digit.", 16, "Dovanta2"});
    EXPECT_EQ(form.C1TTickersSettings.CurrTab(), 0);
    EXPECT_TRUE(form.txtHTTPPort.HasFocus());
  }
  EXPECT_THAT(internet.requests, IsEmpty());
}

TEST_F(ReadingThePortfolio, TellsThatNobodyAnswers) {
  struct Case {
    const char* silent;
    std::optional<std::string> names, symbols;
    std::size_t requests;
  };
  for (const Case& c :
       {Case{"names", std::nullopt, "OK\r\nA", 1}, Case{"names, empty", "", "OK\r\nA", 1},
        Case{"symbols", "OK\r\nMain", std::nullopt, 2}, Case{"symbols, empty", "OK\r\nMain", "", 2}}) {
    SCOPED_TRACE(c.silent);
    desktop.boxes.clear();
    internet.requests.clear();
    tracker.names = c.names;
    tracker.symbols = c.symbols;
    ExpectMessage(kRunQuoteTracker);
    EXPECT_THAT(internet.requests, SizeIs(c.requests));
  }
}

TEST_F(ReadingThePortfolio, TellsThatSomethingElseAnswers) {
  for (const char* reply : {"ERROR\r\nMain", "\r\nOK\r\nMain", "OK \r\nMain", "OKAY\r\nMain", "OK\nMain",
                            "<html><body>It works!</body></html>"}) {
    SCOPED_TRACE(reply);
    desktop.boxes.clear();
    internet.requests.clear();
    tracker = {};
    tracker.names = reply;
    ExpectMessage(kAdjustPort);
    EXPECT_THAT(internet.requests, SizeIs(1));

    desktop.boxes.clear();
    tracker = {};
    tracker.symbols = reply;
    ExpectMessage(kAdjustPort);
    EXPECT_THAT(internet.requests, SizeIs(3));
  }
}

TEST_F(ReadingThePortfolio, AcceptsAnOkInAnyCase) {
  tracker.names = "ok\r\nMain";
  tracker.symbols = "Ok\r\nA,B";
  ASSERT_TRUE(Read());
  EXPECT_THAT(TextsOf(symbols), ElementsAre("A", "B"));
}

TEST_F(ReadingThePortfolio, EndsWithoutAWordWhenThereIsNoPortfolio) {
  for (const char* names : {"OK\r\n", "OK\r\n\r\n", "OK\r\n,Second"}) {
    SCOPED_TRACE(names);
    tracker.names = names;
    EXPECT_FALSE(Read());
  }
  EXPECT_THAT(internet.requests, SizeIs(3));
  EXPECT_THAT(desktop.boxes, IsEmpty());
  EXPECT_THAT(desktop.reports, IsEmpty());
  EXPECT_THAT(mGlobal::ErrorHandler().CallStack(), IsEmpty());
}

TEST_F(ReadingThePortfolio, GivesAnEmptyArrayForAnEmptyPortfolio) {
  tracker.symbols = "OK\r\n\r\n";
  ASSERT_TRUE(Read());
  EXPECT_EQ(symbols.AsArray().LBound(), 0);
  EXPECT_EQ(symbols.AsArray().UBound(), -1);
}

TEST_F(ReadingThePortfolio, KeepsSymbolsAsTheyStand) {
  tracker.symbols = "OK\r\n msft,,a b\r\nignored,line";
  ASSERT_TRUE(Read());
  EXPECT_THAT(TextsOf(symbols), ElementsAre(" msft", "", "a b"));
}

TEST_F(ReadingThePortfolio, ReportsAReplyWithoutASecondLine) {
  tracker.names = "OK";
  Answers({"ABORT"});
  EXPECT_FALSE(Read());
  EXPECT_THAT(ReportedErrors(), ElementsAre(9));
  EXPECT_THAT(desktop.reports[0].text,
              ::testing::HasSubstr("\tin Mirelo.frmMirelo.GetPortfolioTickersFromQT at line 0"));
  EXPECT_THAT(desktop.boxes, IsEmpty());
}

TEST_F(ReadingThePortfolio, LeavesItsNameOnTheCallStackBehindAMessage) {
  tracker.names.reset();
  Read();
  ASSERT_THAT(mGlobal::ErrorHandler().CallStack(), SizeIs(1));
  EXPECT_EQ(mGlobal::ErrorHandler().CallStack()[0].procedure, "Mirelo.frmMirelo.GetPortfolioTickersFromQT");
}

TEST_F(ReadingThePortfolio, AsksAgainWithAPortThatWasMended) {
  form.txtHTTPPort.Text("40000");
  Mend([&] { form.txtHTTPPort.Text("16239"); });
  Answers({"RETRY"});
  EXPECT_TRUE(Read());
  EXPECT_THAT(ReportedErrors(), ElementsAre(6));
  EXPECT_THAT(internet.requests, SizeIs(2));
}

TEST_F(ReadingThePortfolio, TakesARequestThatIsIgnoredForOneWithoutReply) {
  form.txtHTTPPort.Text("40000");
  Answers({"IGNORE"});
  EXPECT_FALSE(Read());
  EXPECT_THAT(ReportedErrors(), ElementsAre(6));
  EXPECT_THAT(desktop.boxes, ElementsAre(kRunQuoteTracker));
  EXPECT_THAT(internet.requests, IsEmpty());
}

TEST_F(ReadingThePortfolio, IsFalseWhenItIsAborted) {
  form.txtHTTPPort.Text("40000");
  Answers({"ABORT"});
  EXPECT_FALSE(Read());
  EXPECT_THAT(desktop.boxes, IsEmpty());
  EXPECT_THAT(mGlobal::ErrorHandler().CallStack(), IsEmpty());
}

TEST_F(ReadingThePortfolio, ReportsThatThereIsNoFacade) {
  form.Owner(nullptr);
  Answers({"ABORT"});
  EXPECT_FALSE(Read());
  EXPECT_THAT(ReportedErrors(), ElementsAre(91));
}

}  // namespace
}  // namespace mirelo::testing
