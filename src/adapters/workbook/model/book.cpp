#include "adapters/workbook/model/book.h"

#include <algorithm>
#include <utility>

#include "spreadsheet/charts/follow_deletion.h"

namespace mirelo::workbook {

namespace {

// The kind of sheet with the first free number above `count`.
std::string FreeName(const Book& book, const std::string& kind, std::size_t count) {
  for (std::size_t number = count + 1;; ++number) {
    std::string name = kind + std::to_string(number);
    if (book.FindSheet(name) == nullptr && book.FindChartSheet(name) == nullptr) return name;
  }
}

}  // namespace

std::shared_ptr<Book> Book::New() {
  auto book = std::make_shared<Book>();
  book->InsertSheet(0, std::make_shared<Sheet>("Sheet1"));
  return book;
}

std::shared_ptr<Sheet> Book::FindSheet(std::string_view sheet_name) const {
  const auto found = by_name_.find(sheet_name);
  return found == by_name_.end() ? nullptr : found->second;
}

std::shared_ptr<Chart> Book::FindChartSheet(std::string_view sheet_name) const {
  const auto found = std::find_if(chart_sheets.begin(), chart_sheets.end(),
                                  [&](const auto& chart) { return EqualText(chart->name, sheet_name); });
  return found == chart_sheets.end() ? nullptr : *found;
}

std::size_t Book::IndexOf(const Sheet& sheet) const {
  const auto found =
      std::find_if(sheets.begin(), sheets.end(), [&](const auto& other) { return other.get() == &sheet; });
  return static_cast<std::size_t>(found - sheets.begin());
}

std::shared_ptr<Sheet> Book::AddSheet() {
  auto sheet = std::make_shared<Sheet>(FreeName(*this, "Sheet", sheets.size()));
  InsertSheet(active, sheet);
  front_chart = nullptr;
  return sheet;
}

void Book::InsertSheet(std::size_t index, std::shared_ptr<Sheet> sheet) {
  by_name_.emplace(sheet->name, sheet);
  sheets.insert(sheets.begin() + static_cast<std::ptrdiff_t>(index), std::move(sheet));
}

void Book::RenameSheet(Sheet& sheet, std::string_view new_name) {
  std::string name(new_name);
  std::string key = name;
  auto entry = by_name_.extract(sheet.name);
  entry.key() = std::move(key);
  by_name_.insert(std::move(entry));
  sheet.name = std::move(name);
}

std::shared_ptr<Chart> Book::AddChartSheet() {
  auto chart = std::make_shared<Chart>();
  chart->name = FreeName(*this, "Chart", chart_sheets.size());
  chart_sheets.push_back(chart);
  front_chart = chart;
  return chart;
}

void Book::BringToFront(const Sheet& sheet) {
  active = IndexOf(sheet);
  front_chart = nullptr;
}

void Book::DeleteCells(const std::shared_ptr<Sheet>& sheet, const Area& area) {
  sheet->Delete(area);
  for (const auto& holder : sheets) {
    for (const auto& chart : holder->charts.all) FollowDeletion(*chart, *sheet, area);
  }
  for (const auto& chart : chart_sheets) FollowDeletion(*chart, *sheet, area);
}

}  // namespace mirelo::workbook
