#include "adapters/workbook/model/book.h"

#include <algorithm>

#include "adapters/workbook/model/area_set.h"
#include "automation/text.h"

namespace mirelo::workbook {

namespace {

// The kind of sheet with the first free number above `count`.
std::string FreeName(const Book& book, const std::string& kind, std::size_t count) {
  for (std::size_t number = count + 1;; ++number) {
    std::string name = kind + std::to_string(number);
    if (book.FindSheet(name) == nullptr && book.FindChartSheet(name) == nullptr) return name;
  }
}

template <class T>
std::shared_ptr<T> FindByName(const std::vector<std::shared_ptr<T>>& all, std::string_view name) {
  const auto found =
      std::find_if(all.begin(), all.end(), [&](const auto& one) { return EqualText(one->name, name); });
  return found == all.end() ? nullptr : *found;
}

void FollowDeletion(Chart& chart, const std::shared_ptr<Sheet>& sheet, const Area& gone) {
  for (ChartSeries& series : chart.series) {
    if (series.values && series.sheet.lock() == sheet) series.values = AfterDeletion(*series.values, gone);
  }
}

}  // namespace

std::shared_ptr<Book> Book::New() {
  auto book = std::make_shared<Book>();
  book->sheets.push_back(std::make_shared<Sheet>("Sheet1"));
  return book;
}

std::shared_ptr<Sheet> Book::FindSheet(std::string_view sheet_name) const {
  return FindByName(sheets, sheet_name);
}

std::shared_ptr<Chart> Book::FindChartSheet(std::string_view sheet_name) const {
  return FindByName(chart_sheets, sheet_name);
}

std::size_t Book::IndexOf(const Sheet& sheet) const {
  const auto found =
      std::find_if(sheets.begin(), sheets.end(), [&](const auto& other) { return other.get() == &sheet; });
  return static_cast<std::size_t>(found - sheets.begin());
}

std::shared_ptr<Sheet> Book::AddSheet() {
  auto sheet = std::make_shared<Sheet>(FreeName(*this, "Sheet", sheets.size()));
  sheets.insert(sheets.begin() + static_cast<std::ptrdiff_t>(active), sheet);
  front_chart = nullptr;
  return sheet;
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
    for (const auto& chart : holder->charts.all) FollowDeletion(*chart, sheet, area);
  }
  for (const auto& chart : chart_sheets) FollowDeletion(*chart, sheet, area);
}

}  // namespace mirelo::workbook
