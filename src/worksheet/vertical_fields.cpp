// The columns of the grid that follow from the fields that vertical tables can show.

#include <cstdint>
#include <string>
#include <vector>

#include "automation/text.h"
#include "automation/variant.h"
#include "diagnostics/routine.h"
#include "dialog/frmMirelo.h"
#include "dialog/grid_columns.h"
#include "worksheet/comma_list.h"

namespace mirelo {

namespace {

using forms::Grid;

// Gives a column of the grid its ticks and pictures from the columns that the grid had before. A field that
// it did not have keeps what stood at its place before. Its statements are the calling routine's.
void RestoreField(Frame& frame, SettingsControls& form, const VariantArray& old, std::int32_t col) {
  Grid& FG = form.FG;
  std::int32_t from = kNoColumn;
  for (const std::int32_t old_col : frame.loop([&] { return Bounds{old.LBound(1), old.UBound(1)}; })) {
    if (frame.test([&] { return IsHeaderOf(FG, col, old(old_col, 0).ToText()); })) {
      from = old_col;
      break;
    }
  }

  bool ticks = from != kNoColumn;
  bool pictures = false;
  if (ticks && frame.test([&] { return IsHeaderOf(FG, col, kChartHeader); })) {
    pictures = true;
    ticks = FindChartFields(frame, FG).Complete();  // without both fields there is no chart
  }
  for (const std::int32_t row : frame.loop([&] { return Bounds{1, FG.Rows() - 1}; })) {
    if (ticks) STEP(FG.TextMatrix(row, col, old(from, row).ToText()));
    STEP(FG.Cell(Grid::kCellPicture, row, col, pictures ? form.ImageChart.Picture() : ""));
  }
}

}  // namespace

void frmMirelo::GetListVerticFields() {
  Routine("Mirelo.frmMirelo.GetListVerticFields", [&](Frame& frame) {
    bool kept = false;
    VariantArray old;  // the fields' columns of the grid as they are, header row included: column, row
    if (frame.test([&] { return chkVerTable.Value() == 1 && FG.Cols() > kFirstField; })) {
      kept = true;
      STEP(old = VariantArray(kFirstField, FG.Cols() - 1, 0, FG.Rows() - 1));
      for (const std::int32_t col : frame.loop([&] { return Bounds{kFirstField, FG.Cols() - 1}; })) {
        for (const std::int32_t row : frame.loop([&] { return Bounds{0, FG.Rows() - 1}; })) {
          STEP(old(col, row) = FG.TextMatrix(row, col));
        }
      }
    }

    STEP(VerticalFields_.clear());
    for (const std::int32_t i : frame.loop([&] { return Bounds{0, ListRight.ListCount() - 1}; })) {
      if (frame.test([&] { return CheckFieldForVerticalTable(ListRight.List(i)); })) {
        STEP(AppendName(VerticalFields_, ListRight.List(i)));
      }
    }
    STEP(CutLastComma(VerticalFields_));
    STEP(FGVertical(false));

    if (kept && chkVerTable.Value() == 1) {
      for (const std::int32_t col : frame.loop([&] { return Bounds{kFirstField, FG.Cols() - 1}; })) {
        RestoreField(frame, *this, old, col);
      }
    }
    frame.pop();
  });
}

}  // namespace mirelo
