#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "automation/text.h"
#include "dialog/dialog_test.h"
#include "dialog/scripted_portfolios.h"
#include "host/excel/application.h"
#include "host/excel/range.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"

namespace mirelo::testing {

using Texts = std::vector<std::string>;

// A QuoteTracker that answers, and a person who opens the dialog, gives it tickers and presses Go.
class GoTest : public DialogTest {
 protected:
  using Acts = std::function<void(frmMirelo& form)>;

  GoTest() {
    internet.answer = [this](const AnsweringInternet::Request& request) { return tracker(request); };
  }

  // What LoadFrmMirelo answers when the person replaces the tickers by these, does this, and presses Go.
  std::int32_t Go(
      const Texts& tickers, const Acts& acts = [](frmMirelo&) {}) {
    return Show([&](frmMirelo& form) {
      while (form.FG.Rows() > 1) {
        form.FG.Row(1);
        form.ButDel.UserPress();
      }
      for (const std::string& ticker : tickers) {
        form.txtTicker.UserEdit(ticker);
        form.ButAdd.UserPress();
      }
      acts(form);
      form.ButGo.UserPress();
    });
  }
  static void Columns(const std::string& names) { Save("ListRight", names); }

  host::excel::Application& Excel() { return *spreadsheet.Application(); }
  std::shared_ptr<host::excel::Worksheets> Sheets() { return Excel().ActiveWorkbook()->Worksheets(); }
  Texts SheetNames() {
    Texts names;
    for (std::int32_t i = 1; i <= Sheets()->Count(); ++i) names.push_back(Sheets()->Item(i)->Name());
    return names;
  }

  std::shared_ptr<host::excel::Range> Cell(std::string_view address) {
    return Sheets()->Item("Dovanta2_Quotes")->Range(address);
  }
  std::string Text(std::string_view address) { return Cell(address)->Value().ToText(); }
  // Texts of cells to the right, or down, from one.
  Texts Row(std::string_view first, std::int32_t count) {
    Texts texts;
    for (std::int32_t i = 1; i <= count; ++i) texts.push_back(Cell(first)->Cells(1, i)->Value().ToText());
    return texts;
  }
  Texts Column(std::string_view first, std::int32_t count) {
    Texts texts;
    for (std::int32_t i = 1; i <= count; ++i) texts.push_back(Cell(first)->Cells(i, 1)->Value().ToText());
    return texts;
  }

  ScriptedPortfolios tracker;
};

}  // namespace mirelo::testing
