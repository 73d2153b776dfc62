#include "person/dialog_person.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "automation/text.h"
#include "dialog/frmMirelo.h"
#include "dialog/grid_columns.h"
#include "dialog/tabs.h"
#include "person/attended_desktop.h"
#include "person/dialog_controls.h"

namespace mirelo {

namespace {

// What the dialog ought to hold after the acts before.
std::int32_t Expected(std::optional<std::int32_t> place, const std::string& text) {
  if (!place) throw Unfulfilled("the dialog has not taken \"" + text + "\"");
  return *place;
}

// --- Columns -------------------------------------------------------------------------------------------

std::optional<std::int32_t> PlaceIn(const std::vector<std::string>& texts, const std::string& wanted) {
  const auto found = std::ranges::find_if(texts, [&](const auto& text) { return EqualText(text, wanted); });
  if (found == texts.end()) return std::nullopt;
  return static_cast<std::int32_t>(found - texts.begin());
}

void Select(forms::ListBox& list, const std::string& column) {
  list.UserSelect(Expected(PlaceIn(list.Items(), column), column));
}

// The columns in front of which the dialog lets nothing stand, and whose place it does not change.
const std::string& FirstColumn(const frmMirelo& form) { return form.ListRight.List(0); }

void CheckColumns(const frmMirelo& form, const std::vector<std::string>& wanted) {
  if (form.ListRight.ListCount() == 0) throw Unfulfilled("the dialog shows no columns");
  for (auto column = wanted.begin(); column != wanted.end(); ++column) {
    if (!PlaceIn(form.ListLeft.Items(), *column) && !PlaceIn(form.ListRight.Items(), *column)) {
      throw Unfulfilled("there is no column \"" + *column + "\"; there are " +
                        Join(form.ListRight.Items(), ",") + "," + Join(form.ListLeft.Items(), ","));
    }
    if (PlaceIn({wanted.begin(), column}, *column))
      throw Unfulfilled("\"" + *column + "\" stands there twice");
  }
  const auto first = PlaceIn(wanted, FirstColumn(form));
  if (first && *first != 0) throw Unfulfilled("the dialog keeps \"" + FirstColumn(form) + "\" in front");
}

// Moves what is shown too much and too little, so that what stays keeps its ticks, and then each column up to
// its place.
void ArrangeColumns(frmMirelo& form, std::vector<std::string> wanted) {
  CheckColumns(form, wanted);
  if (!PlaceIn(wanted, FirstColumn(form))) wanted.insert(wanted.begin(), FirstColumn(form));
  form.C1TTickersSettings.UserSelect(kFieldsTab);

  const std::vector<std::string> shown = form.ListRight.Items();
  for (const std::string& column : shown) {
    if (PlaceIn(wanted, column)) continue;
    Select(form.ListRight, column);
    form.ButLeft.UserPress();
  }
  for (const std::string& column : wanted) {
    if (PlaceIn(form.ListRight.Items(), column)) continue;
    Select(form.ListLeft, column);
    form.ButRight.UserPress();
  }
  for (std::int32_t place = 1; place < static_cast<std::int32_t>(wanted.size()); ++place) {
    const std::string& column = wanted[static_cast<std::size_t>(place)];
    Select(form.ListRight, column);
    for (std::int32_t i = form.ListRight.ListIndex(); i > place; --i) form.ButUp.UserPress();
  }
}

// The columns that are wished, or shown, and behind them those that histories need.
std::vector<std::string> WithHistory(const frmMirelo& form, const DialogWishes& wishes) {
  std::vector<std::string> columns = wishes.columns.empty() ? form.ListRight.Items() : wishes.columns;
  for (const std::string& field : wishes.history) {
    if (!PlaceIn(columns, field)) columns.push_back(field);
  }
  return columns;
}

// --- Tickers -------------------------------------------------------------------------------------------

std::int32_t TickerColumn(const frmMirelo& form) { return form.chkVerTable.Value(); }

const std::string& TickerOf(const frmMirelo& form, std::int32_t row) {
  return form.FG.TextMatrix(row, TickerColumn(form));
}

std::optional<std::int32_t> RowOf(const frmMirelo& form, const std::string& ticker) {
  for (std::int32_t row = 1; row < form.FG.Rows(); ++row) {
    if (EqualText(TickerOf(form, row), ticker)) return row;
  }
  return std::nullopt;
}

void ArrangeTickers(frmMirelo& form, const std::vector<std::string>& wanted) {
  form.C1TTickersSettings.UserSelect(kTickersTab);
  for (std::int32_t row = form.FG.Rows() - 1; row >= 1; --row) {
    if (PlaceIn(wanted, TickerOf(form, row))) continue;
    form.FG.UserClickCell(row, TickerColumn(form));
    form.ButDel.UserPress();
  }
  for (const std::string& ticker : wanted) {
    form.txtTicker.UserEdit(ticker);
    form.ButAdd.UserPress();
  }
  std::int32_t place = 1;
  for (const std::string& ticker : wanted) {
    std::int32_t row = Expected(RowOf(form, ticker), ticker);
    if (row < place) continue;  // named before
    form.FG.UserClickCell(row, TickerColumn(form));
    for (; row > place; --row) form.ButTickerUp.UserPress();
    ++place;
  }
}

// --- Ticks of vertical tables --------------------------------------------------------------------------

std::int32_t FieldColumn(const frmMirelo& form, const std::string& field) {
  const std::string header = EqualText(field, "Charts") ? kChartHeader : field;
  std::string known;
  for (std::int32_t col = kFirstField; col < form.FG.Cols(); ++col) {
    if (EqualText(form.FG.TextMatrix(0, col), header)) return col;
    known += (known.empty() ? "" : ", ") + form.FG.TextMatrix(0, col);
  }
  throw Unfulfilled("vertical tables have no field \"" + field + "\"; they have " + known);
}

void TickField(frmMirelo& form, const DialogWishes::Tick& tick) {
  form.C1TTickersSettings.UserSelect(kTickersTab);
  if (form.chkVerTable.Value() == 0) throw Unfulfilled("there are no vertical tables", "VerticalTable=1");
  const auto row = RowOf(form, tick.ticker);
  if (!row) throw Unfulfilled("\"" + tick.ticker + "\" is not among the tickers");
  const std::int32_t col = FieldColumn(form, tick.field);
  if (form.FG.TextMatrix(*row, col) == kTicked) return;
  form.FG.UserClickCell(*row, col);
  if (form.FG.TextMatrix(*row, col) != kTicked) throw Unfulfilled("the dialog does not let it be ticked");
}

}  // namespace

DialogPerson::DialogPerson(const DialogWishes& wishes, AttendedDesktop& desktop, WishSpelling spelling)
    : wishes_(wishes), desktop_(desktop), spelling_(spelling) {
  desktop_.Attend("frmMirelo", [this](forms::Form& form) { Work(dynamic_cast<frmMirelo&>(form)); });
}

void DialogPerson::Work(frmMirelo& form) {
  complaint_.reset();
  try {
    if (desktop_.Unattended() == 0) Fulfil(form);
  } catch (const Unfulfilled& unfulfilled) {
    complaint_ = {TextOf(unfulfilled), true};
  }
  // Where a failure was reported, what the dialog holds is not what it should.
  if (desktop_.Unattended() > 0) complaint_ = {"the dialog has reported a failure", false};
  if (complaint_) {
    form.ButCancel.UserPress();
  } else {
    form.ButGo.UserPress();
  }
}

std::string DialogPerson::TextOf(const Unfulfilled& unfulfilled) const {
  std::string text = unfulfilled.what();
  if (const std::string& setting = unfulfilled.setting_to_add(); !setting.empty())
    text.append("; add ").append(spelling_.setting).append(setting);
  return text;
}

// Says what a wish was before why it cannot be.
template <class Act>
void DialogPerson::For(const std::string& wish, Act act) const {
  try {
    act();
  } catch (const Unfulfilled& unfulfilled) {
    throw Unfulfilled(wish + ": " + unfulfilled.what(), unfulfilled.setting_to_add());
  }
}

// What is stored at once comes last, when nothing can be refused any more.
void DialogPerson::Fulfil(frmMirelo& form) {
  const std::string name(spelling_.name);
  if (!wishes_.columns.empty() || !wishes_.history.empty()) {
    For(name + "columns", [&] { ArrangeColumns(form, WithHistory(form, wishes_)); });
  }
  if (!wishes_.tickers.empty()) ArrangeTickers(form, wishes_.tickers);
  if (form.FG.Rows() < 2) throw Unfulfilled("which tickers? Name them with " + name + "tickers MSFT,IBM");
  FulfilSettings(form, false);
  for (const DialogWishes::Tick& tick : wishes_.ticks) {
    For(name + "tick " + tick.ticker + ":" + tick.field, [&] { TickField(form, tick); });
  }
  for (std::int32_t row = 1; row < form.FG.Rows(); ++row) TickHistory(form, TickerOf(form, row));
  FulfilSettings(form, true);
}

void DialogPerson::TickHistory(frmMirelo& form, const std::string& ticker) {
  const std::string name(spelling_.name);
  const std::string history = name + "history ";
  for (const std::string& field : wishes_.history)
    For(history + field, [&] { TickField(form, {ticker, field}); });
  if (wishes_.charts) For(name + "charts", [&] { TickField(form, {ticker, "Charts"}); });
}

void DialogPerson::FulfilSettings(frmMirelo& form, bool stored_at_once) {
  for (const DialogControl& control : DialogControls()) {
    if (control.stores_at_once != stored_at_once) continue;
    for (const DialogWishes::Setting& setting : wishes_.settings) {
      if (setting.key != control.key) continue;
      form.C1TTickersSettings.UserSelect(control.tab);
      For(setting.key, [&] { control.act({form, desktop_}, setting.value); });
    }
  }
}

}  // namespace mirelo
