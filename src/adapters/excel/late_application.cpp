#include "adapters/excel/late_application.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "adapters/excel/late.h"
#include "automation/variant.h"
#include "host/excel/application.h"
#include "host/excel/chart.h"
#include "host/excel/charts.h"
#include "host/excel/range.h"
#include "host/excel/selectable.h"
#include "host/excel/shape.h"
#include "host/excel/sheet.h"
#include "host/excel/window.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"

namespace mirelo::excel {

namespace {

class LateWindow : public LateOf<host::excel::Window> {
 public:
  using LateOf::LateOf;

  std::shared_ptr<host::excel::Range> VisibleRange() override { return Get("VisibleRange"); }
};

class LateWorkbook : public LateOf<host::excel::Workbook> {
 public:
  using LateOf::LateOf;

  std::string Name() override { return Get("Name"); }
  std::shared_ptr<host::excel::Worksheets> Worksheets() override { return Get("Worksheets"); }
  std::shared_ptr<host::excel::Charts> Charts() override { return Get("Charts"); }
  std::shared_ptr<host::excel::Sheet> Sheets(std::string_view name) override { return Get("Sheets", name); }
  std::shared_ptr<host::excel::Sheet> ActiveSheet() override { return Get("ActiveSheet"); }
};

class LateApplication : public LateOf<host::excel::Application> {
 public:
  using LateOf::LateOf;

  std::shared_ptr<host::excel::Workbook> ActiveWorkbook() override { return Get("ActiveWorkbook"); }
  std::shared_ptr<host::excel::Sheet> ActiveSheet() override { return Get("ActiveSheet"); }
  std::shared_ptr<host::excel::Range> ActiveCell() override { return Get("ActiveCell"); }
  std::shared_ptr<host::excel::Selectable> Selection() override { return Get("Selection"); }
  std::shared_ptr<host::excel::Window> ActiveWindow() override { return Get("ActiveWindow"); }
  std::shared_ptr<host::excel::Worksheets> Worksheets() override { return Get("Worksheets"); }
  std::shared_ptr<host::excel::Charts> Charts() override { return Get("Charts"); }
  std::shared_ptr<host::excel::Range> Range(std::string_view address) override {
    return Get("Range", address);
  }
  std::shared_ptr<host::excel::Range> Cells() override { return Get("Cells"); }
  std::shared_ptr<host::excel::Range> Cells(std::int32_t row, std::int32_t column) override {
    return Get("Cells", row, column);
  }
  bool ScreenUpdating() override { return Get("ScreenUpdating"); }
  void ScreenUpdating(bool on) override { Let("ScreenUpdating", on); }
};

}  // namespace

template <>
std::shared_ptr<host::excel::Window> As(const Variant& result) {
  return LateObject<LateWindow>(result);
}
template <>
std::shared_ptr<host::excel::Workbook> As(const Variant& result) {
  return LateObject<LateWorkbook>(result);
}
// A chart sheet or a worksheet.
template <>
std::shared_ptr<host::excel::Sheet> As(const Variant& result) {
  if (result.TypeName() == "Chart") return As<host::excel::Chart>(result);
  return As<host::excel::Worksheet>(result);
}
// Cells, or what floats over them.
template <>
std::shared_ptr<host::excel::Selectable> As(const Variant& result) {
  if (result.TypeName() == "Range") return As<host::excel::Range>(result);
  return As<host::excel::Shape>(result);
}

std::shared_ptr<host::excel::Application> LateBoundApplication(
    const std::shared_ptr<ForeignObject>& application) {
  return LateObject<LateApplication>(application);
}

}  // namespace mirelo::excel
