#pragma once

#include <gmock/gmock.h>

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "adapters/workbook/spreadsheet.h"
#include "dialog/frmMirelo.h"
#include "support/facade_test.h"
#include "support/memory_vault.h"
#include "support/memory_winsock.h"

namespace mirelo::testing {

// The settings dialog as the macros open it, over a workbook of one empty sheet, and a person who works in
// it.
//
//   Show([&](frmMirelo& form) {
//     form.txtSec.UserEdit("5");
//     form.ButCancel.UserPress();
//   });
//
// A test that announces no answers to failure reports fails when there is one.
class DialogTest : public FacadeTest {
 protected:
  DialogTest() {
    host.Use(sockets).Use(vault);
    facade->m_ObjExcelApplication(spreadsheet.Application());
  }
  void TearDown() override {
    if (!expects_reports_) {
      for (const auto& report : desktop.reports) ADD_FAILURE() << report.text;
    }
  }

  // Tabs of the dialog. A person reaches only what the current one shows.
  static constexpr std::int32_t kTickers = 0;
  static constexpr std::int32_t kSettings = 1;
  static constexpr std::int32_t kCharting = 2;
  static constexpr std::int32_t kFields = 3;

  // What LoadFrmMirelo answers when the person does this. A dialog that is still up is then closed by its
  // close box.
  std::int32_t Show(std::function<void(frmMirelo& form)> acts = [](frmMirelo&) {}) {
    desktop.person["frmMirelo"] = [acts = std::move(acts)](forms::Form& form) {
      acts(dynamic_cast<frmMirelo&>(form));
    };
    return facade->LoadFrmMirelo();
  }

  void Answers(std::initializer_list<std::string> answers) {
    expects_reports_ = true;
    FacadeTest::Answers(answers);
  }

  // Done while the first report is open.
  void Mend(std::function<void()> mending) {
    desktop.while_open = [this, mending = std::move(mending)] {
      if (desktop.reports.size() == 1) mending();
    };
  }

  // Reading this setting fails with error 0x80044284 until it is saved again.
  void Damage(const char* key) {
    host::Registry::Key section = 0;
    stored.RegCreateKeyExA(host::Registry::kCurrentUser, "Software\\Kestrin\\Dovanta2\\Settings",
                           host::Registry::kAllAccess, section);
    stored.RegSetValueExA(section, key, host::Registry::kSz, "", 0);
    stored.RegCloseKey(section);
  }

  static Variant Stored(const char* section, const char* key) {
    return mGlobal::AppSettings().GetSetting(section, key, Variant());
  }
  static Variant StoredWidth(const char* header) { return Stored("Settings\\WidthField", header); }

  // The routines that were entered and not left, the innermost last.
  static std::vector<std::string> CallStack() {
    std::vector<std::string> names;
    for (const auto& entry : mGlobal::ErrorHandler().CallStack()) names.push_back(entry.procedure);
    return names;
  }

  MemoryWinsock sockets;
  MemoryVault vault;
  workbook::Spreadsheet spreadsheet = workbook::Spreadsheet::New();

 private:
  bool expects_reports_ = false;
};

}  // namespace mirelo::testing
