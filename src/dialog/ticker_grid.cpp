// The tickers and the columns of the grid FG.

#include <cstdint>
#include <string>
#include <string_view>

#include "automation/text.h"
#include "core/known_setting.h"
#include "diagnostics/routine.h"
#include "dialog/column_widths.h"
#include "dialog/frmMirelo.h"
#include "dialog/grid_columns.h"

namespace mirelo {

namespace {

using forms::Grid;

constexpr std::string_view kFieldColumn = catalogue::DialogDefault(catalogue::kWidths, "");

// The first column is the fixed one, without a header.
std::string FormatOfFields(const std::string& list) { return Replace("= |" + list, ",", "|"); }

}  // namespace

void frmMirelo::AddTicker(const std::string& ticker, std::int32_t& /*unused*/) {
  Routine("Mirelo.frmMirelo.AddTicker", [&](Frame& frame) {
    if (ticker.empty()) return frame.pop();

    for (const std::int32_t row : frame.loop([&] { return Bounds{1, FG.Rows() - 1}; })) {
      if (frame.test([&] { return EqualText(FG.TextMatrix(row, TickerCol_), ticker); })) {
        STEP(FG.Row(row));
        return frame.pop();
      }
    }

    STEP(FG.Rows(FG.Rows() + 1));
    STEP(FG.TextMatrix(FG.Rows() - 1, TickerCol_, ticker));
    STEP(FG.Row(FG.Rows() - 1));
    if (frame.test([&] { return chkBuildCharts.Value() == 1; })) {
      const std::int32_t charts = FindField(frame, FG, kChartHeader);
      if (charts != kNoColumn) {
        STEP(FG.Cell(Grid::kCellPicture, FG.Rows() - 1, charts, ImageChart.Picture()));
      }
    }
    frame.pop();
  });
}

// The grid's columns while they are laid out. The statements are those of FGVertical.
struct frmMirelo::GridLayout {
  Frame& frame;
  frmMirelo& form;
  Grid& FG;

  // `keep`: the tickers go where the new columns have them.
  void Fields(bool keep);
  void Tickers(bool keep);

  std::int32_t WidthOf(const std::string& header, std::string_view default_width) const {
    return StoredColumnWidth(form, header, default_width);
  }
};

void frmMirelo::FGVertical(bool keep) {
  Routine("Mirelo.frmMirelo.FGVertical", [&](Frame& frame) {
    if (frame.test([&] { return chkVerTable.Value() == 1; })) {
      GridLayout{frame, *this, FG}.Fields(keep);
    } else {
      GridLayout{frame, *this, FG}.Tickers(keep);
    }
    frame.pop();
  });
}

void frmMirelo::GridLayout::Fields(bool keep) {
  const std::string& fields = form.VerticalFields_;
  STEP(FG.Editable(1));
  STEP(FG.Cols(static_cast<std::int32_t>(Split(fields, ",").size()) + 1));
  STEP(FG.FixedCols(1));
  if (keep) {
    for (const std::int32_t row : frame.loop([&] { return Bounds{1, FG.Rows() - 1}; })) {
      STEP(FG.TextMatrix(row, form.TickerCol_, FG.TextMatrix(row, form.TickerCol_ - 1)));
      STEP(FG.TextMatrix(row, form.TickerCol_ - 1, ""));
    }
  }
  if (frame.test([&] { return form.chkBuildCharts.Value() == 1; })) {
    STEP(FG.Cols(FG.Cols() + 1));
    STEP(FG.FormatString(FormatOfFields(fields + "," + kChartHeader)));
    STEP(FG.ColWidth(FG.Cols() - 1, WidthOf(kChartHeader, catalogue::kWideColumn)));
  } else {
    STEP(FG.FormatString(FormatOfFields(fields)));
  }
  STEP(FG.ColWidth(1, WidthOf(kTickerHeader, catalogue::kWideColumn)));
  // The column of charts is among these, so without a stored width it ends up as wide as a field.
  for (const std::int32_t col : frame.loop([&] { return Bounds{kFirstField, FG.Cols() - 1}; })) {
    STEP(FG.ColDataType(col, Grid::kBooleanColumn));
    STEP(FG.ColWidth(col, WidthOf(FG.TextMatrix(0, col), kFieldColumn)));
  }
}

void frmMirelo::GridLayout::Tickers(bool keep) {
  STEP(FG.Editable(0));
  if (keep) {
    for (const std::int32_t row : frame.loop([&] { return Bounds{1, FG.Rows() - 1}; })) {
      STEP(FG.TextMatrix(row, form.TickerCol_, FG.TextMatrix(row, form.TickerCol_ + 1)));
    }
  }
  STEP(FG.Cols(1));
  STEP(FG.FixedCols(0));
  STEP(FG.FormatString("= Ticker"));
  STEP(FG.ColWidth(0, WidthOf(kTickerHeader, catalogue::kWideColumn)));
}

void frmMirelo::AddToFGColCharts() {
  Routine("Mirelo.frmMirelo.AddToFGColCharts", [&](Frame& frame) {
    if (FindField(frame, FG, kChartHeader) != kNoColumn) return frame.pop();

    STEP(FG.Cols(FG.Cols() + 1));
    STEP(FG.TextMatrix(0, FG.Cols() - 1, kChartHeader));
    for (const std::int32_t row : frame.loop([&] { return Bounds{1, FG.Rows() - 1}; })) {
      STEP(FG.Cell(Grid::kCellPicture, row, FG.Cols() - 1, ImageChart.Picture()));
    }
    STEP(FG.ColDataType(FG.Cols() - 1, Grid::kBooleanColumn));
    frame.pop();
  });
}

void frmMirelo::DeleteFromFGColCharts() {
  Routine("Mirelo.frmMirelo.DeleteFromFGColCharts", [&](Frame& frame) {
    const std::int32_t charts = FindField(frame, FG, kChartHeader);
    if (charts == kNoColumn) return frame.pop();

    if (frame.test([&] { return charts != FG.Cols() - 1; })) {
      for (const std::int32_t row : frame.loop([&] { return Bounds{0, FG.Rows() - 1}; })) {
        for (const std::int32_t col : frame.loop([&] { return Bounds{charts, FG.Cols() - 2}; })) {
          STEP(FG.TextMatrix(row, col, FG.TextMatrix(row, col + 1)));
          STEP(FG.Cell(Grid::kCellPicture, row, col, FG.Picture(row, col + 1)));
        }
      }
    }
    STEP(FG.Cols(FG.Cols() - 1));
    frame.pop();
  });
}

}  // namespace mirelo
