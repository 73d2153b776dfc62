// Failures of the settings dialog, and what the person answers in the error dialog above it.

#include <QPlainTextEdit>

#include "qt/settings_dialog_test.h"

namespace mirelo::qt {
namespace {

class FailuresOnScreen : public SettingsDialog {
 protected:
  // Reading this setting fails with error 0x80044284 until it is saved again.
  void Damage(const char* key) {
    host::Registry::Key section = 0;
    rig.registry.RegCreateKeyExA(host::Registry::kCurrentUser, "Software\\Kestrin\\Dovanta2\\Settings",
                                 host::Registry::kAllAccess, section);
    rig.registry.RegSetValueExA(section, key, host::Registry::kSz, "", 0);
    rig.registry.RegCloseKey(section);
  }
  static bool IsReportUp() { return Person::TopWindow()->windowTitle() == QLatin1String("Error"); }

  void AnswersReport(
      const char* button, std::function<void()> before = [] {}) {
    person.Waits("the report", [] { return Person::TopWindow() != nullptr && IsReportUp(); });
    person.Does("read and answer it", [button, before] {
      const QString report = Find<QPlainTextEdit>("txtErrorMessage")->toPlainText();
      EXPECT_TRUE(report.contains(QLatin1String("Mirelo.frmMirelo."))) << report.toStdString();
      EXPECT_FALSE(Find("btnSend")->isEnabled());
      before();
      Click(button);
    });
    person.Waits("what lies below it", [] { return Person::TopWindow() != nullptr && !IsReportUp(); });
  }
};

TEST_F(FailuresOnScreen, AreIgnoredAndTheNextStatementRuns) {
  person.Does("press On", [&] {
    Open(kSettings);
    Damage("FillColorON");
    Click("ButOn");
  });
  AnswersReport("btnIgnore");
  person.Does("pick a color from the palette that comes up all the same", [] {
    EXPECT_EQ(Person::TopWindow()->windowTitle(), QLatin1String("Fill Color (On)"));
    Click("L1(17)");
  });
  Show();
  EXPECT_EQ(rig.Stored("FillColorON"), "32768");
}

TEST_F(FailuresOnScreen, HaveTheDialogFilledAnew) {
  person.Does("change a setting and sort", [&] {
    Open(kSettings);
    Replace("txtWebAddress", "192.0.2.1");
    Open(kTickers);
    AddTickers({"MSFT"});
    Damage("Sort_Desc");
    Click("ButSort");
  });
  AnswersReport("btnAbort");
  person.Does("look", [&] {
    EXPECT_EQ(TextOf("txtWebAddress"), "127.0.0.1");
    EXPECT_TRUE(Tickers().empty());
  });
  Show();
}

TEST_F(FailuresOnScreen, AreMendedAndRetried) {
  person.Does("press On", [&] {
    Damage("FillColorON");
    Open(kSettings);
    Click("ButOn");
  });
  AnswersReport("btnRetry", [&] { rig.Save("FillColorON", "255"); });
  person.Does("pick green", [] { Click("L1(17)"); });
  Show();
  EXPECT_EQ(rig.Stored("FillColorON"), "32768");
}

TEST_F(FailuresOnScreen, AreAbortedByTheirButton) {
  person.Does("press Off", [&] {
    Damage("FillColorOFF");
    Open(kSettings);
    Click("ButOff");
  });
  AnswersReport("btnAbort", [&] { rig.Save("FillColorOFF", "255"); });
  person.Does("look", [] { EXPECT_EQ(Person::TopWindow()->windowTitle(), QLatin1String("Dovanta")); });
  Show();
  EXPECT_EQ(rig.Stored("FillColorOFF"), "255");
}

}  // namespace
}  // namespace mirelo::qt
