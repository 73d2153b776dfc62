#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

#include "adapters/calc/charts/drawn_chart.h"
#include "adapters/calc/objects/document.h"
#include "adapters/calc/objects/document_sheet.h"
#include "spreadsheet/charts/chart_home.h"
#include "spreadsheet/charts/chart_place.h"

namespace mirelo::calc {

// A chart on a sheet, as clients hold it.
class SheetChart final : public spreadsheet::ChartHome {
 public:
  SheetChart(std::shared_ptr<DocumentSheet> sheet, std::shared_ptr<DrawnChart> chart)
      : sheet_(std::move(sheet)), chart_(std::move(chart)) {}

  spreadsheet::Chart& Get() override;
  void Changed() override;
  std::int32_t Index() override;
  void Select() override;
  void Delete() override;
  std::shared_ptr<host::excel::Worksheet> Worksheet() override;
  std::shared_ptr<host::excel::Workbook> Workbook() override;
  spreadsheet::ChartBox WholeSheet() override;
  void Rename(std::string_view name) override;
  std::shared_ptr<spreadsheet::ChartHome> MoveTo(std::string_view worksheet) override;
  std::optional<spreadsheet::PlottedCells> CellsOf(host::excel::Range& range) override;

 private:
  template <class Body>
  decltype(auto) Ask(Body&& body) const;

  std::shared_ptr<DocumentSheet> sheet_;
  std::shared_ptr<DrawnChart> chart_;
};

// A chart sheet, which is nowhere but here.
class ChartSheet final : public spreadsheet::ChartHome {
 public:
  ChartSheet(std::shared_ptr<Document> document, std::shared_ptr<spreadsheet::Chart> chart)
      : document_(std::move(document)), chart_(std::move(chart)) {}

  spreadsheet::Chart& Get() override;
  void Changed() override {}
  std::int32_t Index() override;
  void Select() override;
  void Delete() override;
  std::shared_ptr<host::excel::Worksheet> Worksheet() override { return nullptr; }
  std::shared_ptr<host::excel::Workbook> Workbook() override;
  spreadsheet::ChartBox WholeSheet() override { return {}; }
  void Rename(std::string_view name) override;
  std::shared_ptr<spreadsheet::ChartHome> MoveTo(std::string_view worksheet) override;
  std::optional<spreadsheet::PlottedCells> CellsOf(host::excel::Range& range) override;

 private:
  std::shared_ptr<Document> document_;
  std::shared_ptr<spreadsheet::Chart> chart_;
};

inline spreadsheet::ChartPlace PlaceOf(std::shared_ptr<DocumentSheet> sheet,
                                       std::shared_ptr<DrawnChart> chart) {
  return spreadsheet::ChartPlace(std::make_shared<SheetChart>(std::move(sheet), std::move(chart)));
}
inline spreadsheet::ChartPlace PlaceOf(std::shared_ptr<Document> document,
                                       std::shared_ptr<spreadsheet::Chart> chart) {
  return spreadsheet::ChartPlace(std::make_shared<ChartSheet>(std::move(document), std::move(chart)));
}

}  // namespace mirelo::calc
