// How far a sheet is used, and how far it reaches.

#include <cstdint>
#include <memory>
#include <string>

#include "automation/variant.h"
#include "diagnostics/routine.h"
#include "dialog/frmMirelo.h"
#include "host/excel/application.h"
#include "host/excel/range.h"
#include "host/excel/sheet.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"

namespace mirelo {

using host::excel::Range;
using host::excel::Sheet;
using host::excel::Worksheet;

namespace {

// Of the sheet in front; error 91 when it is empty.
std::shared_ptr<Range> LastFilledCell(host::excel::Application& excel, host::excel::XlSearchOrder order) {
  const auto end = Referred(excel.ActiveCell().get()).SpecialCells(host::excel::xlCellTypeLastCell);
  auto found = excel.Cells()->Find("*", *end, order, host::excel::xlPrevious);
  Referred(found.get());
  return found;
}

// Brings a sheet to the front and selects a cell of it; the statements are GotoLastCell's.
void GoBackTo(Frame& frame, Sheet& front, const std::shared_ptr<Range>& cell) {
  host::excel::XlSheetType type{};
  STEP(type = front.Type());
  if (type == host::excel::xlSheetChart) {
    STEP(front.Select());
  } else if (type == host::excel::xlSheetWorksheet) {
    STEP(front.Select());
    frame.ignore_failures();
    bool exists = false;
    STEP(Referred(cell.get()).Address(); exists = true);
    if (exists) STEP(cell->Select());
    frame.report_failures();
  }
}

}  // namespace

void frmMirelo::GiveSheetLimits(const std::string& sheet, std::int32_t& row_limit,
                                std::int32_t& last_column) {
  Routine("Mirelo.frmMirelo.GiveSheetLimits", [&](Frame& frame) {
    std::shared_ptr<Worksheet> table;
    const auto last = [&] {
      return Referred(table.get()).Cells(1, 1)->SpecialCells(host::excel::xlCellTypeLastCell);
    };
    STEP(table = Worksheets()->Item(sheet));
    // Nothing lies beyond the last used cell, so that from there on one arrives at the sheet's edges.
    STEP(row_limit = last()->End(host::excel::xlDown)->Row() - 1);
    STEP(last_column = last()->End(host::excel::xlToRight)->Column());
    frame.pop();
  });
}

std::string frmMirelo::GotoLastCell(const std::string& sheet, const std::string& first) {
  return Function<std::string>("Mirelo.frmMirelo.GotoLastCell", {}, [&](Frame& frame, std::string& address) {
    std::shared_ptr<Sheet> front;
    std::shared_ptr<Range> cell;
    STEP(front = Excel().ActiveSheet());
    frame.ignore_failures();  // a chart sheet has no active cell
    STEP(cell = Excel().ActiveCell());
    frame.report_failures();

    std::shared_ptr<Worksheet> target;
    STEP(target = Excel().Worksheets()->Item(sheet));
    STEP(Referred(target.get()).Select());
    STEP(Referred(target.get()).Range(first)->Select());

    std::shared_ptr<Range> last;
    STEP(last = Excel().Range(first)->SpecialCells(host::excel::xlCellTypeLastCell));
    if (frame.test([&] {
          const Variant value = Referred(last.get()).Value();
          return value == Variant("") || value == Variant(" ");
        })) {
      // Used up to an empty cell, which may have a format: the last row and the last column with
      // something in them.
      std::int32_t row = 0;
      std::int32_t column = 0;
      STEP(row = LastFilledCell(Excel(), host::excel::xlByRows)->Row());
      STEP(column = LastFilledCell(Excel(), host::excel::xlByColumns)->Column());
      STEP(address = Excel().Cells(row, column)->Address(false, false));
    } else {
      STEP(address = Referred(last.get()).Address(false, false));
    }

    if (front) GoBackTo(frame, *front, cell);
    frame.pop();
  });
}

}  // namespace mirelo
