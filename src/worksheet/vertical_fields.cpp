// Which fields the tables can show, and the columns of the grid that follow from them.

#include <cstdint>
#include <string>
#include <vector>

#include "automation/text.h"
#include "automation/variant.h"
#include "diagnostics/routine.h"
#include "dialog/frmMirelo.h"
#include "dialog/grid_columns.h"
#include "snapshot/column_vocabulary.h"
#include "worksheet/comma_list.h"

namespace mirelo {

namespace {

using forms::Grid;

bool IsKnown(const std::string& name) { return FindColumn(UCase(name)) != nullptr; }

bool FitsVerticalTable(const std::string& name) {
  const ColumnRow* const column = FindColumn(UCase(name));
  return column != nullptr && column->in_histories == kInHistories;
}

Bounds BoundsOf(const std::vector<std::string>& names) {
  return {0, static_cast<std::int32_t>(names.size()) - 1};
}

}  // namespace

bool frmMirelo::CheckFieldForVerticalTable(const std::string& name) {
  return Function("Mirelo.frmMirelo.CheckFieldForVerticalTable", false, [&](Frame& frame, bool& fits) {
    STEP(fits = FitsVerticalTable(name));
    frame.pop();
  });
}

bool frmMirelo::CheckFieldHeaderTable(const std::string& name) {
  return Function("Mirelo.frmMirelo.CheckFieldHeaderTable", false, [&](Frame& frame, bool& known) {
    STEP(known = IsKnown(name));
    frame.pop();
  });
}

std::string frmMirelo::GiveListVerticFields(const std::string& list) {
  return Function<std::string>("Mirelo.frmMirelo.GiveListVerticFields", {},
                               [&](Frame& frame, std::string& fields) {
                                 std::vector<std::string> names;
                                 STEP(names = Split(list, ","));
                                 for (const std::int32_t i : frame.loop([&] { return BoundsOf(names); })) {
                                   const std::string& name = names[static_cast<std::size_t>(i)];
                                   if (frame.test([&] { return CheckFieldForVerticalTable(name); })) {
                                     STEP(AppendName(fields, name));
                                   }
                                 }
                                 STEP(CutLastComma(fields));
                                 frame.pop();
                               });
}

std::string frmMirelo::NullDublicatForListRight(const std::string& list) {
  return Function<std::string>("Mirelo.frmMirelo.NullDublicatForListRight", {},
                               [&](Frame& frame, std::string& result) {
                                 std::vector<std::string> names;
                                 STEP(names = Split(list, ","));
                                 for (auto name = names.begin(); name != names.end(); ++name) {
                                   if (name->empty()) continue;
                                   for (auto later = name + 1; later != names.end(); ++later) {
                                     if (frame.test([&] { return EqualText(*name, *later); }))
                                       STEP(later->clear());
                                   }
                                 }
                                 for (const std::string& name : names) {
                                   if (!name.empty()) STEP(AppendName(result, name));
                                 }
                                 STEP(CutLastComma(result));
                                 frame.pop();
                               });
}

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
        RestoreField(frame, old, col);
      }
    }
    frame.pop();
  });
}

// A field that the grid did not have keeps what stood at its place before.
void frmMirelo::RestoreField(Frame& frame, const VariantArray& old, std::int32_t col) {
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
    STEP(FG.Cell(Grid::kCellPicture, row, col, pictures ? ImageChart.Picture() : ""));
  }
}

}  // namespace mirelo
