#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "adapters/excel/late.h"
#include "automation/variant.h"
#include "host/excel/chart.h"
#include "host/excel/charts.h"
#include "host/excel/range.h"
#include "host/excel/shapes.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"

namespace mirelo::excel {

namespace {

class LateWorksheet : public LateOf<host::excel::Worksheet> {
 public:
  using LateOf::LateOf;

  std::string Name() override { return Get("Name"); }
  void Name(std::string_view name) override { Let("Name", name); }
  void Select() override { Get("Select"); }
  std::int32_t Index() override { return Get("Index"); }
  void Activate() override { Get("Activate"); }
  std::shared_ptr<host::excel::Range> Range(std::string_view address) override {
    return Get("Range", address);
  }
  std::shared_ptr<host::excel::Range> Range(std::string_view first, std::string_view last) override {
    return Get("Range", first, last);
  }
  std::shared_ptr<host::excel::Range> Range(host::excel::Range& first, host::excel::Range& last) override {
    return Get("Range", first, last);
  }
  std::shared_ptr<host::excel::Range> Cells() override { return Get("Cells"); }
  std::shared_ptr<host::excel::Range> Cells(std::int32_t row, std::int32_t column) override {
    return Get("Cells", row, column);
  }
  std::shared_ptr<host::excel::Shapes> Shapes() override { return Get("Shapes"); }
  std::shared_ptr<host::excel::Range> Rows() override { return Get("Rows"); }
  std::shared_ptr<host::excel::Range> Columns() override { return Get("Columns"); }
  std::shared_ptr<host::excel::Range> Rows(std::string_view rows) override { return Get("Rows", rows); }
  std::shared_ptr<host::excel::Range> Columns(std::string_view columns) override {
    return Get("Columns", columns);
  }
};

class LateWorksheets : public LateOf<host::excel::Worksheets> {
 public:
  using LateOf::LateOf;

  std::int32_t Count() override { return Get("Count"); }
  std::shared_ptr<host::excel::Worksheet> Item(std::int32_t index) override { return Get("Item", index); }
  std::shared_ptr<host::excel::Worksheet> Item(std::string_view name) override { return Get("Item", name); }
  std::shared_ptr<host::excel::Worksheet> Add() override { return Get("Add"); }
};

class LateCharts : public LateOf<host::excel::Charts> {
 public:
  using LateOf::LateOf;

  std::int32_t Count() override { return Get("Count"); }
  std::shared_ptr<host::excel::Chart> Item(std::int32_t index) override { return Get("Item", index); }
  std::shared_ptr<host::excel::Chart> Item(std::string_view name) override { return Get("Item", name); }
  std::shared_ptr<host::excel::Chart> Add() override { return Get("Add"); }
};

}  // namespace

template <>
std::shared_ptr<host::excel::Worksheet> As(const Variant& result) {
  return LateObject<LateWorksheet>(result);
}
template <>
std::shared_ptr<host::excel::Worksheets> As(const Variant& result) {
  return LateObject<LateWorksheets>(result);
}
template <>
std::shared_ptr<host::excel::Charts> As(const Variant& result) {
  return LateObject<LateCharts>(result);
}

}  // namespace mirelo::excel
