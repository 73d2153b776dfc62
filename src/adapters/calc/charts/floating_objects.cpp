#include "adapters/calc/objects/floating_objects.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

#include "adapters/calc/charts/chart_homes.h"
#include "adapters/calc/charts/comment_box.h"
#include "adapters/calc/charts/document_charts.h"
#include "adapters/calc/objects/document.h"
#include "adapters/calc/objects/front.h"
#include "automation/runtime_error.h"
#include "automation/text.h"
#include "host/excel/chart.h"
#include "spreadsheet/charts/chart_object.h"
#include "spreadsheet/charts/chart_shape.h"
#include "spreadsheet/refusals.h"

namespace mirelo::calc {

namespace excel = host::excel;

using spreadsheet::Area;

namespace Refusals = spreadsheet::Refusals;

namespace {

class SheetShapes final : public excel::Shapes {
 public:
  explicit SheetShapes(std::shared_ptr<DocumentSheet> sheet) : sheet_(std::move(sheet)) {}

  std::int32_t Count() override {
    return sheet_->document().Ask([&] {
      return static_cast<std::int32_t>(DocumentCharts::Of(sheet_->document()).On(*sheet_).size() +
                                       CellsOfCommentBoxes(*sheet_).size());
    });
  }

  std::shared_ptr<excel::Shape> Item(std::int32_t index) override {
    return sheet_->document().Ask([&] {
      const auto all = All();
      if (index < 1 || static_cast<std::size_t>(index) > all.size()) throw Refusals::NoSuchShape();
      return all[static_cast<std::size_t>(index) - 1];
    });
  }

  std::shared_ptr<excel::Shape> Item(std::string_view name) override {
    return sheet_->document().Ask([&] {
      for (const auto& shape : All()) {
        if (EqualText(shape->Name(), name)) return shape;
      }
      throw Refusals::NoSuchShape(name);
    });
  }

 private:
  std::vector<std::shared_ptr<excel::Shape>> All() const {
    std::vector<std::shared_ptr<excel::Shape>> all;
    for (const auto& chart : DocumentCharts::Of(sheet_->document()).On(*sheet_))
      all.push_back(std::make_shared<spreadsheet::ChartShape>(PlaceOf(sheet_, chart)));
    for (const auto& [row, column] : CellsOfCommentBoxes(*sheet_))
      all.push_back(std::make_shared<CommentBox>(CellBlock{sheet_, Area::Cell(row, column)}));
    return all;
  }

  std::shared_ptr<DocumentSheet> sheet_;
};

class ChartSheets final : public excel::Charts {
 public:
  explicit ChartSheets(std::shared_ptr<Document> document) : document_(std::move(document)) {}

  std::int32_t Count() override { return static_cast<std::int32_t>(All().size()); }

  std::shared_ptr<excel::Chart> Item(std::int32_t index) override {
    if (index < 1 || index > Count()) throw Errors::SubscriptOutOfRange();
    return Of(All()[static_cast<std::size_t>(index) - 1]);
  }

  std::shared_ptr<excel::Chart> Item(std::string_view name) override {
    auto chart = document_->Ask([&] { return DocumentCharts::Of(*document_).FindSheet(name); });
    if (chart == nullptr) throw Errors::SubscriptOutOfRange();
    return Of(std::move(chart));
  }

  std::shared_ptr<excel::Chart> Add() override {
    return document_->Ask([&] {
      document_->CheckNotOnlyForReading();
      auto chart = std::make_shared<spreadsheet::Chart>();
      chart->name = FreeName();
      All().push_back(chart);
      document_->Front().ShowChartSheet([document = document_.get(), chart] {
        return std::make_shared<spreadsheet::ChartObject>(PlaceOf(document->shared_from_this(), chart));
      });
      return Of(std::move(chart));
    });
  }

 private:
  std::vector<std::shared_ptr<spreadsheet::Chart>>& All() const {
    return document_->Ask([&]() -> std::vector<std::shared_ptr<spreadsheet::Chart>>& {
      return DocumentCharts::Of(*document_).Sheets();
    });
  }

  std::shared_ptr<spreadsheet::ChartObject> Of(std::shared_ptr<spreadsheet::Chart> chart) const {
    return std::make_shared<spreadsheet::ChartObject>(PlaceOf(document_, std::move(chart)));
  }

  std::string FreeName() const {
    for (std::size_t number = All().size() + 1;; ++number) {
      std::string name = "Chart" + std::to_string(number);
      if (document_->Find(name) == nullptr && DocumentCharts::Of(*document_).FindSheet(name) == nullptr)
        return name;
    }
  }

  std::shared_ptr<Document> document_;
};

// The comment whose box this is; null when it is that of none.
std::shared_ptr<excel::Selectable> CommentBoxAt(const std::shared_ptr<DocumentSheet>& sheet,
                                                const Reference<css::drawing::XShape>& shape) {
  for (const auto& [row, column] : CellsOfCommentBoxes(*sheet)) {
    auto box = std::make_shared<CommentBox>(CellBlock{sheet, Area::Cell(row, column)});
    if (box->IsIn(shape)) return box;
  }
  return nullptr;
}

}  // namespace

std::shared_ptr<excel::Charts> ChartsOf(const std::shared_ptr<Document>& document) {
  return std::make_shared<ChartSheets>(document);
}

std::shared_ptr<excel::Sheet> FindChartSheet(const std::shared_ptr<Document>& document,
                                             std::string_view name) {
  auto chart = DocumentCharts::Of(*document).FindSheet(name);
  if (chart == nullptr) return nullptr;
  return std::make_shared<spreadsheet::ChartObject>(PlaceOf(document, std::move(chart)));
}

std::shared_ptr<excel::Shapes> ShapesOf(const std::shared_ptr<DocumentSheet>& sheet) {
  return std::make_shared<SheetShapes>(sheet);
}

std::shared_ptr<excel::Selectable> ShapeOf(const std::shared_ptr<DocumentSheet>& sheet,
                                           const Reference<css::drawing::XShape>& shape) {
  if (auto chart = DocumentCharts::Of(sheet->document()).Find(*sheet, shape))
    return std::make_shared<spreadsheet::ChartShape>(PlaceOf(sheet, std::move(chart)));
  return CommentBoxAt(sheet, shape);
}

void DrawCharts(Document& document, bool on) { DocumentCharts::Of(document).Draw(on); }

void ResizeColumns(DocumentSheet& sheet, const std::function<void()>& resize) {
  DocumentCharts& charts = DocumentCharts::Of(sheet.document());
  charts.FollowColumns(sheet);
  resize();
  charts.FollowColumns(sheet);
}

void FollowDeletion(const CellBlock& gone) {
  DocumentCharts::Of(gone.document()).FollowDeletion(*gone.sheet, gone.area);
}

std::shared_ptr<excel::Shape> CommentBoxOf(const CellBlock& cell) {
  return std::make_shared<CommentBox>(cell);
}

}  // namespace mirelo::calc
