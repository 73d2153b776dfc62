#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "adapters/workbook/model/book.h"
#include "adapters/workbook/rules.h"
#include "spreadsheet/charts/chart_home.h"
#include "spreadsheet/charts/chart_place.h"

namespace mirelo::workbook {

// A chart of the workbook in memory, where a client found it.
class BookChart final : public ChartHome {
 public:
  // `sheet` is null for a chart sheet.
  BookChart(std::shared_ptr<Book> book, std::shared_ptr<Sheet> sheet, std::shared_ptr<Chart> chart)
      : book_(std::move(book)), sheet_(std::move(sheet)), chart_(std::move(chart)) {}

  Chart& Get() override;
  void Changed() override {}
  std::int32_t Index() override;
  void Select() override;
  void Delete() override;
  std::shared_ptr<host::excel::Worksheet> Worksheet() override;
  std::shared_ptr<host::excel::Workbook> Workbook() override;
  ChartBox WholeSheet() override;
  void Rename(std::string_view name) override;
  std::shared_ptr<ChartHome> MoveTo(std::string_view worksheet) override;
  std::optional<PlottedCells> CellsOf(host::excel::Range& range) override;

 private:
  // The list that the chart is in: the charts of its sheet, or the chart sheets.
  std::vector<std::shared_ptr<Chart>>& All() const;

  std::shared_ptr<Book> book_;
  std::shared_ptr<Sheet> sheet_;
  std::shared_ptr<Chart> chart_;
};

// A chart as clients hold it; `sheet` is null for a chart sheet.
inline ChartPlace PlaceOf(std::shared_ptr<Book> book, std::shared_ptr<Sheet> sheet,
                          std::shared_ptr<Chart> chart) {
  return ChartPlace(std::make_shared<BookChart>(std::move(book), std::move(sheet), std::move(chart)));
}

}  // namespace mirelo::workbook
