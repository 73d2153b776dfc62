// What a click in the grid does to the ticks.

#include <cstdint>
#include <optional>
#include <string>

#include "core/message_box.h"
#include "diagnostics/routine.h"
#include "dialog/frmMirelo.h"
#include "dialog/grid_columns.h"
#include "host/desktop.h"

namespace mirelo {

namespace {

using forms::Grid;

constexpr const char* kLastMissing = "Add the 'Last' column for the vertical output.";
constexpr const char* kLastVolumeMissing = "Add  the 'LastVolume' column for the vertical output.";
constexpr const char* kChartFieldsMissing =
    "You should have the 'Last' and 'LastVolume' fields in the vertical table to build charts.";

void Inform(const char* text) { ShowMessage(text, host::Desktop::kInformation); }

bool HeadsChartField(const Grid& grid, std::int32_t col) {
  return IsHeaderOf(grid, col, kLastHeader) || IsHeaderOf(grid, col, kLastVolumeHeader);
}

// The actions of a click that selected several cells. The first cell of the selection is what decides; which
// one that is, the action says. Their statements are FG_Click's.
struct SelectionClick {
  Frame& frame;
  Grid& FG;
  bool charts;  // whether charts are to be built

  void OnColumn();
  void OnRow();
  void OnGrid();

 private:
  bool IsTicked(std::int32_t row, std::int32_t col);
  void SetColumn(std::int32_t col, const char* tick);
  // Without a tick for charts, the row's cell of charts stays as it is.
  void SetRow(std::int32_t row, const char* tick, std::optional<const char*> chart_tick);
  void TickCharts();
  // Whether the cells of charts are ticked where all others are: without both fields there is no chart.
  bool MayTickCharts() { return !charts || FindChartFields(frame, FG).Complete(); }
};

void SelectionClick::OnColumn() {
  const std::int32_t col = FG.Col();
  if (IsTicked(FG.Row(), col)) {
    if (frame.test([&] { return charts && HeadsChartField(FG, col); })) {
      SetColumn(FG.Cols() - 1, kUnticked);  // the column of charts, whatever its header says
    }
    SetColumn(col, kUnticked);
  } else if (frame.test([&] { return IsHeaderOf(FG, col, kChartHeader); })) {
    TickCharts();
  } else {
    SetColumn(col, kTicked);
  }
}

void SelectionClick::TickCharts() {
  const ChartFields fields = FindChartFields(frame, FG);
  if (!fields.Complete()) {
    STEP(Inform(kChartFieldsMissing));
    return;
  }
  SetColumn(FG.Col(), kTicked);
  SetColumn(fields.last, kTicked);
  SetColumn(fields.last_volume, kTicked);
}

void SelectionClick::OnRow() {
  const std::int32_t row = FG.Row();
  if (IsTicked(row, kFirstField)) {
    SetRow(row, kUnticked, kUnticked);
  } else {
    SetRow(row, kTicked, MayTickCharts() ? std::optional(kTicked) : std::nullopt);
  }
}

void SelectionClick::OnGrid() {
  const char* tick = kUnticked;
  const char* chart_tick = kUnticked;
  if (!IsTicked(1, kFirstField)) {
    tick = kTicked;
    if (MayTickCharts()) chart_tick = kTicked;
  }
  for (const std::int32_t row : frame.loop([&] { return Bounds{1, FG.Rows() - 1}; })) {
    SetRow(row, tick, chart_tick);
  }
}

bool SelectionClick::IsTicked(std::int32_t row, std::int32_t col) {
  return frame.test([&] {
    const std::string& text = FG.TextMatrix(row, col);
    return !text.empty() && text != kUnticked;
  });
}

void SelectionClick::SetColumn(std::int32_t col, const char* tick) {
  for (const std::int32_t row : frame.loop([&] { return Bounds{1, FG.Rows() - 1}; })) {
    STEP(FG.TextMatrix(row, col, tick));
  }
}

void SelectionClick::SetRow(std::int32_t row, const char* tick, std::optional<const char*> chart_tick) {
  for (const std::int32_t col : frame.loop([&] { return Bounds{kFirstField, FG.Cols() - 1}; })) {
    if (frame.test([&] { return !IsHeaderOf(FG, col, kChartHeader); })) {
      STEP(FG.TextMatrix(row, col, tick));
    } else if (chart_tick) {
      STEP(FG.TextMatrix(row, col, *chart_tick));
    }
  }
}

}  // namespace

void frmMirelo::FG_Click() {
  Routine("Mirelo.frmMirelo.FG_Click", [&](Frame& frame) {
    const bool one_cell = FG.Row() == FG.RowSel() && FG.Col() == FG.ColSel();
    SelectionClick click{frame, FG, chkBuildCharts.Value() == 1};
    if (chkVerTable.Value() == 0 || one_cell) {
      STEP(FG.Select(FG.Row(), FG.Col(), FG.Row(), FG.Col()));
    } else if (FG.Row() == FG.Col()) {
      // The corner selects from row 1 and column 1 on. So do the header of column 1 and the fixed cell of row
      // 1, and they count as the corner.
      click.OnGrid();
    } else if (FG.Col() == FG.ColSel()) {
      if (FG.Col() != TickerCol_) click.OnColumn();
    } else {
      click.OnRow();
    }
    frame.pop();
  });
}

void frmMirelo::FG_BeforeEdit(std::int32_t /*row*/, std::int32_t col, bool& cancel) {
  Routine("Mirelo.frmMirelo.FG_BeforeEdit", [&](Frame& frame) {
    if (chkVerTable.Value() == 1 && col == TickerCol_) cancel = true;
    frame.pop();
  });
}

void frmMirelo::FG_AfterEdit(std::int32_t row, std::int32_t col) {
  Routine("Mirelo.frmMirelo.FG_AfterEdit", [&](Frame& frame) {
    const auto holds = [&](const char* tick) {
      return frame.test([&] { return FG.TextMatrix(row, col) == tick; });
    };
    // A chart needs both fields: ticking it ticks them, unticking one of them unticks it.
    if (frame.test([&] { return IsHeaderOf(FG, col, kChartHeader); })) {
      if (holds(kTicked)) {
        const ChartFields fields = FindChartFields(frame, FG);
        if (fields.last == kNoColumn) {
          STEP(Inform(kLastMissing));
          STEP(FG.TextMatrix(row, col, kUnticked));
        }
        if (fields.last_volume == kNoColumn) {
          STEP(Inform(kLastVolumeMissing));
          STEP(FG.TextMatrix(row, col, kUnticked));
        }
        if (fields.Complete()) {
          STEP(FG.TextMatrix(row, fields.last, kTicked));
          STEP(FG.TextMatrix(row, fields.last_volume, kTicked));
        }
      }
    } else if (frame.test([&] { return HeadsChartField(FG, col); }) && holds(kUnticked)) {
      if (frame.test(
              [&] { return chkBuildCharts.Value() == 1 && IsHeaderOf(FG, FG.Cols() - 1, kChartHeader); })) {
        STEP(FG.TextMatrix(row, FG.Cols() - 1, kUnticked));
      }
    }
    frame.pop();
  });
}

}  // namespace mirelo
