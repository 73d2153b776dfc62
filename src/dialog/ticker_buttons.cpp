// The buttons beside the grid of tickers.

#include <cstdint>
#include <string>

#include "automation/text.h"
#include "automation/variant.h"
#include "core/CAppSettings.h"
#include "core/known_setting.h"
#include "diagnostics/routine.h"
#include "dialog/frmMirelo.h"

namespace mirelo {

namespace {

using forms::Grid;

constexpr DialogSetting kSortedUpwards{"Sort_Desc"};

// Swaps the texts of two rows. Its statements are the calling routine's.
void SwapRows(Frame& frame, Grid& grid, std::int32_t row, std::int32_t other) {
  std::string text;
  for (const std::int32_t col : frame.loop([&] { return Bounds{0, grid.Cols() - 1}; })) {
    STEP(text = grid.TextMatrix(row, col));
    STEP(grid.TextMatrix(row, col, grid.TextMatrix(other, col)));
    STEP(grid.TextMatrix(other, col, text));
  }
}

}  // namespace

void frmMirelo::ButAdd_Click() {
  Routine("Mirelo.frmMirelo.ButAdd_Click", [&](Frame& frame) {
    if (frame.test([&] { return !txtTicker.Text().empty(); })) {
      std::int32_t unused = 0;
      STEP(AddTicker(UCase(txtTicker.Text()), unused));
      STEP(txtTicker.Text(""));
    }
    STEP(txtTicker.SetFocus());
    frame.pop();
  });
}

void frmMirelo::ButDel_Click() {
  Routine("Mirelo.frmMirelo.ButDel_Click", [&](Frame& frame) {
    if (frame.test([&] { return FG.Row() >= 1; })) {
      std::int32_t removed = 0;
      STEP(removed = FG.Row());
      STEP(FG.RemoveItem(removed));
      if (removed > 1) STEP(FG.Select(removed - 1, TickerCol_));
    }
    STEP(FG.SetFocus());
    frame.pop();
  });
}

void frmMirelo::ButSort_Click() {
  Routine("Mirelo.frmMirelo.ButSort_Click", [&](Frame& frame) {
    // True sorts upwards, whatever the key says: the first press on a fresh system does.
    bool upwards = false;
    STEP(upwards = !Setting(kSortedUpwards).ToBoolean());
    STEP(Store().SaveSetting(catalogue::kSettings, kSortedUpwards.Key(), upwards));
    std::string ticker;
    STEP(ticker = FG.TextMatrix(FG.Row(), TickerCol_));
    STEP(FG.Select(1, TickerCol_));
    if (upwards) {
      STEP(FG.Sort(Grid::kSortAscending));
    } else {
      STEP(FG.Sort(Grid::kSortDescending));
    }
    for (const std::int32_t row : frame.loop([&] { return Bounds{1, FG.Rows() - 1}; })) {
      if (frame.test([&] { return EqualText(FG.TextMatrix(row, TickerCol_), ticker); })) {
        STEP(FG.Row(row));
        break;
      }
    }
    frame.pop();
  });
}

void frmMirelo::ButTickerUp_Click() {
  Routine("Mirelo.frmMirelo.ButTickerUp_Click", [&](Frame& frame) {
    if (frame.test([&] { return FG.Row() < 2; })) {
      STEP(FG.SetFocus());
      return frame.pop();
    }
    SwapRows(frame, FG, FG.Row(), FG.Row() - 1);
    STEP(FG.Select(FG.Row() - 1, TickerCol_));
    STEP(FG.SetFocus());
    frame.pop();
  });
}

void frmMirelo::ButTickerDown_Click() {
  Routine("Mirelo.frmMirelo.ButTickerDown_Click", [&](Frame& frame) {
    if (frame.test([&] { return FG.Row() == FG.Rows() - 1; })) {
      STEP(FG.SetFocus());
      return frame.pop();
    }
    SwapRows(frame, FG, FG.Row(), FG.Row() + 1);
    STEP(FG.Select(FG.Row() + 1, TickerCol_));
    STEP(FG.SetFocus());
    frame.pop();
  });
}

}  // namespace mirelo
