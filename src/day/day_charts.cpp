#include "day/day_charts.h"

#include <algorithm>
#include <exception>
#include <utility>

#include "automation/runtime_error.h"
#include "automation/text.h"
#include "core/cMirelo.h"
#include "host/excel/application.h"
#include "host/excel/constants.h"
#include "host/excel/shape.h"
#include "host/excel/shapes.h"
#include "host/excel/sheet.h"
#include "host/excel/worksheet.h"

namespace mirelo::day {

namespace excel = host::excel;

namespace {

// Of the macros' rows.
constexpr std::int32_t kEarlier = 1;
constexpr std::int32_t kLatest = 2;
constexpr std::int32_t kFilled = 1;
constexpr std::int32_t kChange = 2;

std::size_t ColumnOf(const std::vector<std::string>& columns, const char* name) {
  const auto found =
      std::ranges::find_if(columns, [&](const auto& column) { return EqualText(column, name); });
  return static_cast<std::size_t>(found - columns.begin());
}

bool HasCharts(excel::Worksheet& sheet) {
  const auto shapes = sheet.Shapes();
  for (std::int32_t i = 1; i <= shapes->Count(); ++i) {
    if (shapes->Item(i)->Type() == excel::msoChart) return true;
  }
  return false;
}

}  // namespace

DayCharts::DayCharts(excel::Application& application, cMirelo& facade,
                     const std::vector<std::string>& columns)
    : application_(application),
      facade_(facade),
      price_column_(ColumnOf(columns, "Last")),
      change_column_(ColumnOf(columns, "Change")),
      wanted_(facade.BuildCharts() != 0),
      points_(facade.ChartPoints()),
      style_(facade.ChartStyle()),
      color_points_(facade.ColorPoints()),
      grey_out_(facade.GreyOut()) {}

void DayCharts::Add(std::size_t ticker, std::shared_ptr<excel::Worksheet> sheet) {
  if (!wanted_ || !HasCharts(*sheet)) return;
  charted_.emplace(ticker, Charted{std::move(sheet), VariantArray(kEarlier, kLatest, kFilled, kChange)});
}

void DayCharts::Take(std::size_t ticker, const QuoteRow& row) {
  const auto found = charted_.find(ticker);
  if (found == charted_.end()) return;
  VariantArray& rows = found->second.rows;
  double& price = found->second.price;
  const Variant change = ChangeOf(row, price);
  if (price_column_ < row.size()) price = row[price_column_].ToNumber();
  if (rows(kEarlier, kFilled).IsEmpty()) {
    rows(kEarlier, kFilled) = true;
    rows(kEarlier, kChange) = change;
    return;
  }
  if (!rows(kLatest, kFilled).IsEmpty()) rows(kEarlier, kChange) = rows(kLatest, kChange);
  rows(kLatest, kFilled) = true;
  rows(kLatest, kChange) = change;
}

// The change of the day, or, where the table does not show it, that from the quote before.
double DayCharts::ChangeOf(const QuoteRow& row, double price_before) const {
  if (change_column_ < row.size()) return row[change_column_].ToNumber();
  if (price_column_ >= row.size() || price_before == 0) return 0;
  return row[price_column_].ToNumber() - price_before;
}

void DayCharts::Update(std::size_t ticker) {
  const auto found = charted_.find(ticker);
  if (found == charted_.end()) return;
  Charted& charted = found->second;
  if (charted.waits > 0) {
    --charted.waits;
    return;
  }
  const auto front = application_.ActiveSheet();
  try {
    facade_.Update_Charts(charted.sheet, Variant(charted.rows), points_, style_, color_points_, grey_out_);
    if (told_of_ != ticker) return;
    untold_.push_back("Charts follow again at " + charted.sheet->Name());
    told_of_.reset();
  } catch (const std::exception&) {
    const std::string why = CurrentError().Description();
    NoteFailure(ticker, charted, why);
    if (charted.failures == kMostFailures) GiveUp(ticker, why);
    if (front) front->Select();
  }
}

void DayCharts::NoteFailure(std::size_t ticker, Charted& charted, const std::string& why) {
  charted.waits = 1 << charted.failures;
  ++charted.failures;
  if (told_of_) return;
  untold_.push_back("Charts stand still at " + charted.sheet->Name() + ": " + why);
  told_of_ = ticker;
}

// After this another table's charts may be told of.
void DayCharts::GiveUp(std::size_t ticker, const std::string& why) {
  untold_.push_back("Charts stand still for the rest of the day at " + charted_.at(ticker).sheet->Name() +
                    ": " + why);
  charted_.erase(ticker);
  if (told_of_ == ticker) told_of_.reset();
}

}  // namespace mirelo::day
