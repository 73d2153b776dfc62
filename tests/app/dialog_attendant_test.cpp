// What the program stands by for while somebody uses the settings dialog.

#include "person/dialog_attendant.h"

#include <gmock/gmock.h>

#include <functional>
#include <string>
#include <vector>

#include "adapters/headless/console_desktop.h"
#include "adapters/workbook/spreadsheet.h"
#include "dialog/frmMirelo.h"
#include "person/attended_desktop.h"
#include "support/facade_test.h"
#include "terminal/output.h"

namespace mirelo::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

class Attendant : public FacadeTest {
 protected:
  Attendant() {
    host.Use(desktop);
    facade->m_ObjExcelApplication(spreadsheet.Application());
  }

  // The person is asked what Go may cost, and answers so.
  bool answer = false;
  std::vector<std::string> asked;
  GoGuard guard{nullptr, [this](const std::vector<std::string>& costs) {
                  asked = costs;
                  return answer;
                }};

  void Use(const std::function<void(frmMirelo& form)>& act) {
    desktop.Attend("frmMirelo", [&](forms::Form& form) {
      AttendTo(form, guard);
      act(dynamic_cast<frmMirelo&>(form));
    });
    facade->LoadFrmMirelo();
  }
  static std::vector<std::string> Tickers(const frmMirelo& form) {
    std::vector<std::string> tickers;
    for (std::int32_t row = 1; row < form.FG.Rows(); ++row) tickers.push_back(form.FG.TextMatrix(row, 1));
    return tickers;
  }
  static void Add(frmMirelo& form, const std::string& text) {
    form.txtTicker.UserEdit(text);
    form.ButAdd.UserPress();
  }

  terminal::TextOutput printed;
  AttendedDesktop desktop{printed};
  workbook::Spreadsheet spreadsheet = workbook::Spreadsheet::New();
};

TEST_F(Attendant, AddsEachTickerOfAListThatWasTyped) {
  Use([](frmMirelo& form) {
    Add(form, "GE, f T");
    EXPECT_THAT(Tickers(form), ElementsAre("GE", "F", "T"));
    EXPECT_EQ(form.txtTicker.Text(), "");
    EXPECT_TRUE(form.txtTicker.HasFocus());
    Add(form, " msft ");
    Add(form, " ,");
    EXPECT_THAT(Tickers(form), ElementsAre("GE", "F", "T", "MSFT"));
  });
  EXPECT_EQ(printed.Text(), "");
}

TEST_F(Attendant, RefusesWhatCanBeNoTickerAndLeavesItInTheBox) {
  Use([](frmMirelo& form) {
    Add(form, "GE F(T)");
    EXPECT_THAT(Tickers(form), IsEmpty());
    EXPECT_EQ(form.txtTicker.Text(), "GE F(T)");
  });
  EXPECT_THAT(printed.Text(), HasSubstr("\"F(T)\" is no ticker"));
}

TEST_F(Attendant, AsksBeforeGoWhatItCosts) {
  int pressed = 0;
  Use([&](frmMirelo& form) {
    form.ButGo.Click.Subscribe([&] { ++pressed; });
    Add(form, "TWELVE_CHARS");
    form.ButGo.UserPress();
    EXPECT_THAT(asked, ElementsAre(HasSubstr("TWELVE_CHARS will be missing")));
    EXPECT_EQ(pressed, 0);
    answer = true;
    form.ButGo.UserPress();
    EXPECT_EQ(pressed, 1);
  });
}

TEST_F(Attendant, AsksNothingWhereGoCostsNothing) {
  int pressed = 0;
  Use([&](frmMirelo& form) {
    form.ButGo.Click.Subscribe([&] { ++pressed; });
    Add(form, "MSFT");
    form.ButGo.UserPress();
  });
  EXPECT_EQ(pressed, 1);
  EXPECT_THAT(asked, IsEmpty());
}

TEST_F(Attendant, LetsNoAddressBeStoredThatIsNone) {
  int pressed = 0;
  Use([&](frmMirelo& form) {
    form.ButGo.Click.Subscribe([&] { ++pressed; });
    form.C1TTickersSettings.UserSelect(1);
    form.txtWebAddress.UserEdit("127.0.0.1:8080");
    form.ButGo.UserPress();
    form.txtWebAddress.UserEdit("127.0.0.1");
    form.txtSocketPort.UserEdit("x");
    form.ButGo.UserPress();
  });
  EXPECT_EQ(pressed, 0);
  EXPECT_THAT(printed.Text(),
              HasSubstr("Webaddress: \"127.0.0.1:8080\" is not allowed here: the value must be a "
                        "host name or an address alone"));
  EXPECT_THAT(printed.Text(), HasSubstr("SocketPort: \"x\" is not allowed here"));
}

}  // namespace
}  // namespace mirelo::testing
