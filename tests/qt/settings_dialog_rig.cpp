#include "views/settings_dialog_rig.h"

#include <QComboBox>
#include <QImage>
#include <QListWidget>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "host/excel/range.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "qt/settings_dialog_test.h"

namespace mirelo::qt {

namespace {

// The settings dialog in Qt's windows, on an empty workbook in memory. It asks the stand-in for QuoteTracker.
class SettingsDialogInQt : public testing::SettingsDialogRig {
 public:
  std::int32_t LoadFrmMirelo() override { return screen_.rig.facade->LoadFrmMirelo(); }
  std::string CellOf(std::int32_t row, std::int32_t column) override {
    const auto sheets = screen_.rig.spreadsheet.Application()->Worksheets();
    return sheets->Item("Dovanta2_Quotes")->Cells(row, column)->Value().ToText();
  }

  void Does(std::string what, std::function<void()> act) override {
    screen_.person.Does(std::move(what), std::move(act));
  }
  void Answers(const std::string& text, Button button) override {
    screen_.person.Answers(text, button == Button::kOk ? "OK" : "No");
  }
  void AddsTicker(const std::string& ticker) override {
    screen_.person.Does("add " + ticker, [ticker] { DialogOnScreen::AddTickers({ticker}); });
  }

  void Open(Tab tab) override { DialogOnScreen::Open(static_cast<DialogOnScreen::Tab>(tab)); }
  void Click(const std::string& control) override { DialogOnScreen::Click(control); }
  void Type(const std::string& text) override { Person::Type(text); }
  void Press(Key key) override { Person::Press(KeyOf(key)); }
  void ClickCell(std::int32_t ticker, const std::string& header) override {
    DialogOnScreen::ClickCell(ticker - 1, header);
  }
  void ClickHeader(const std::string& header) override { DialogOnScreen::ClickHeader(header); }
  void ClickUpperArrow(const std::string& /*arrows*/, const std::string& box) override {
    QWidget* const number = Person::Find(box);
    Person::Click(number, QPoint(number->width() - 6, 6));
  }
  void ClickLowerArrow(const std::string& /*arrows*/, const std::string& box) override {
    QWidget* const number = Person::Find(box);
    Person::Click(number, QPoint(number->width() - 6, number->height() - 6));
  }
  void ClickSecond(const std::string& list) override {
    Person::Click(Person::Find<QListWidget>(list)->viewport(), DialogOnScreen::PlaceOf(list, 1));
  }
  void ChooseNext(const std::string& combo) override {
    Person::Find(combo)->setFocus();
    Person::Press(Qt::Key_Down);
  }

  std::string TextOf(const std::string& control) override { return DialogOnScreen::TextOf(control); }
  Texts Items(const std::string& list) override { return DialogOnScreen::Items(list); }
  bool IsShown(const std::string& control) override { return Person::Find(control)->isVisible(); }
  bool IsEnabled(const std::string& control) override { return Person::Find(control)->isEnabled(); }
  bool IsTicked(const std::string& box) override { return DialogOnScreen::IsTicked(box); }
  std::int32_t ColorOf(const std::string& control) override {
    const QImage seen = Person::Find(control)->grab().toImage();
    return static_cast<std::int32_t>(seen.pixel(seen.width() / 2, seen.height() / 2) & 0xFFFFFF);
  }
  Texts Tickers() override { return DialogOnScreen::Tickers(); }
  Texts Ticked() override {
    Texts ticked;
    const Texts tickers = Tickers();
    for (std::size_t row = 0; row < tickers.size(); ++row) {
      for (const std::string& field : DialogOnScreen::TickedFields(static_cast<int>(row)))
        ticked.push_back(tickers[row] + " " + field);
    }
    return ticked;
  }

 private:
  static Qt::Key KeyOf(Key key) {
    switch (key) {
      case Key::kReturn:
        return Qt::Key_Return;
      case Key::kBlank:
        return Qt::Key_Space;
      case Key::kEnd:
        return Qt::Key_End;
      case Key::kBackspace:
        return Qt::Key_Backspace;
      case Key::kEscape:
        return Qt::Key_Escape;
    }
    return Qt::Key_unknown;
  }

  DialogOnScreen screen_;
};

}  // namespace

}  // namespace mirelo::qt

namespace mirelo::testing {

std::unique_ptr<SettingsDialogRig> NewSettingsDialogRig() {
  return std::make_unique<qt::SettingsDialogInQt>();
}

}  // namespace mirelo::testing
