#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace mirelo::testing {

// The settings dialog in the windows of one toolkit, on an empty workbook, and a person in front of it who
// does what a test says, one thing after the other, while the dialog is up. What is done is done by mouse and
// keyboard, what is looked at is what the windows show. Controls go by their names.
class SettingsDialogRig {
 public:
  using Texts = std::vector<std::string>;
  enum Tab { kTickers, kSettings, kCharting, kFields };
  enum class Key { kReturn, kBlank, kEnd, kBackspace, kEscape };
  enum class Button { kOk, kNo };

  virtual ~SettingsDialogRig() = default;

  // Shows the dialog, in which all that was said is done.
  virtual std::int32_t LoadFrmMirelo() = 0;
  // What a cell of the quote table shows then, counted from 1.
  virtual std::string CellOf(std::int32_t row, std::int32_t column) = 0;

  virtual void Does(std::string what, std::function<void()> act) = 0;
  // Waits for a box that says `text`, and presses that button of it.
  virtual void Answers(const std::string& text, Button button) = 0;
  // In as many steps as it takes.
  virtual void AddsTicker(const std::string& ticker) = 0;

  // What a person can do at once.
  virtual void Open(Tab tab) = 0;
  virtual void Click(const std::string& control) = 0;
  virtual void Type(const std::string& text) = 0;  // into what has the focus
  virtual void Press(Key key) = 0;
  virtual void ClickCell(std::int32_t ticker, const std::string& header) = 0;  // tickers from 1
  virtual void ClickHeader(const std::string& header) = 0;
  // The arrows of a number's box, with which some toolkits make them one.
  virtual void ClickUpperArrow(const std::string& arrows, const std::string& box) = 0;
  virtual void ClickLowerArrow(const std::string& arrows, const std::string& box) = 0;
  virtual void ClickSecond(const std::string& list) = 0;
  virtual void ChooseNext(const std::string& combo) = 0;

  // What he sees.
  virtual std::string TextOf(const std::string& control) = 0;
  virtual Texts Items(const std::string& list) = 0;
  virtual bool IsShown(const std::string& control) = 0;
  virtual bool IsEnabled(const std::string& control) = 0;
  virtual bool IsTicked(const std::string& box) = 0;
  virtual std::int32_t ColorOf(const std::string& control) = 0;  // red in the high byte
  virtual Texts Tickers() = 0;
  virtual Texts Ticked() = 0;  // "MSFT Last", row after row
};

// Of the toolkit that the program of tests is about.
std::unique_ptr<SettingsDialogRig> NewSettingsDialogRig();

}  // namespace mirelo::testing
