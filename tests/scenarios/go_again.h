#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "adapters/sqlite/sqlite_registry.h"
#include "adapters/workbook/spreadsheet.h"
#include "dialog/dialog_test.h"
#include "dialog/scripted_portfolios.h"
#include "host/excel/application.h"
#include "host/excel/range.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "support/temp_directory.h"

namespace mirelo::testing {

using Texts = std::vector<std::string>;

// A person with a workbook file and settings of their own, who comes back again and again: each time the
// program starts anew, reads both files, shows the dialog, and saves the workbook after Go.
class GoAgain : public DialogTest {
 public:
  // What the person does in the dialog.
  static void AddTickers(frmMirelo& form, const Texts& tickers) {
    for (const std::string& ticker : tickers) {
      form.txtTicker.UserEdit(ticker);
      form.ButAdd.UserPress();
    }
  }
  static void RemoveTicker(frmMirelo& form, std::int32_t row) {
    form.FG.UserClickCell(row, form.chkVerTable.Value());
    form.ButDel.UserPress();
  }
  // Ticks a field of the ticker in a row of the grid.
  static void Tick(frmMirelo& form, std::int32_t row, std::string_view field) {
    for (std::int32_t col = 2; col < form.FG.Cols(); ++col) {
      if (form.FG.TextMatrix(0, col) == field) return form.FG.UserClickCell(row, col);
    }
    ADD_FAILURE() << "the grid has no field " << field;
  }
  static void TickAll(frmMirelo& form) {
    for (std::int32_t row = 1; row < form.FG.Rows(); ++row) {
      for (std::int32_t col = 2; col < form.FG.Cols(); ++col) {
        if (form.FG.TextMatrix(row, col) != "-1") form.FG.UserClickCell(row, col);
      }
    }
  }
  // Moves a column to the other list.
  static void ShowColumn(frmMirelo& form, const std::string& name) { DoubleClick(form, form.ListLeft, name); }
  static void HideColumn(frmMirelo& form, const std::string& name) {
    DoubleClick(form, form.ListRight, name);
  }

 private:
  static void DoubleClick(frmMirelo& form, forms::ListBox& list, const std::string& name) {
    const std::int32_t tab = form.C1TTickersSettings.CurrTab();
    form.C1TTickersSettings.UserSelect(kFields);
    for (std::int32_t i = 0; i < list.ListCount(); ++i) {
      if (list.List(i) != name) continue;
      list.UserDoubleClick(i);
      form.C1TTickersSettings.UserSelect(tab);
      return;
    }
    ADD_FAILURE() << "no column " << name;
  }

 protected:
  using Acts = std::function<void(frmMirelo& form)>;

  GoAgain() {
    internet.answer = [this](const AnsweringInternet::Request& request) { return tracker(request); };
    Restart();
  }
  ~GoAgain() override { facade.reset(); }

  // What LoadFrmMirelo answers when the person comes back, does this, and presses Go.
  std::int32_t Go(const Acts& acts = [](frmMirelo&) {}) {
    Restart();
    const std::int32_t result = Show([&](frmMirelo& form) {
      acts(form);
      form.ButGo.UserPress();
    });
    spreadsheet.Save(File());
    return result;
  }

  // What the person, or macros, do with the workbook meanwhile.
  void Edit(const std::function<void()>& edits) {
    Restart();
    edits();
    spreadsheet.Save(File());
  }

  std::filesystem::path File() const { return folder / "quotes.xlsx"; }
  std::shared_ptr<host::excel::Workbook> Book() { return spreadsheet.Application()->ActiveWorkbook(); }
  std::shared_ptr<host::excel::Worksheet> Sheet(std::string_view name) {
    return Book()->Worksheets()->Item(name);
  }
  std::shared_ptr<host::excel::Worksheet> Table() { return Sheet("Dovanta2_Quotes"); }
  std::shared_ptr<host::excel::Worksheet> Vertical(const std::string& ticker) {
    return Sheet("Quotes_Vertical(" + ticker + ")");
  }
  bool Exists(std::string_view sheet) {
    for (std::int32_t i = 1; i <= Book()->Worksheets()->Count(); ++i) {
      if (Book()->Worksheets()->Item(i)->Name() == sheet) return true;
    }
    return false;
  }

  const TempDirectory folder;
  ScriptedPortfolios tracker;

 private:
  void Restart() {
    facade.reset();
    settings_.emplace(folder / "registry.db");
    host.Use(*settings_);
    facade.emplace();
    spreadsheet =
        std::filesystem::exists(File()) ? workbook::Spreadsheet::Open(File()) : workbook::Spreadsheet::New();
    facade->m_ObjExcelApplication(spreadsheet.Application());
  }

  std::optional<sqlite::SqliteRegistry> settings_;
};

}  // namespace mirelo::testing
