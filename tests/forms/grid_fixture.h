#pragma once

#include <gmock/gmock.h>

#include <cstdint>
#include <string>
#include <vector>

#include "forms/control_test.h"
#include "forms/grid.h"

namespace mirelo::testing {

// A grid of a header, three rows and, as in the dialog's vertical mode, a fixed column and check cells.
//
//            | Ticker | Last | Bid
//            | MSFT   |      |
//            | IBM    |      |
//            | AAPL   |      |
class GridTest : public ControlTest {
 protected:
  GridTest() {
    grid.FormatString("= |Ticker|Last|Bid");
    grid.Rows(4);
    grid.FixedCols(1);
    grid.Editable(1);
    for (const std::int32_t col : {2, 3}) grid.ColDataType(col, forms::Grid::kBooleanColumn);
    grid.TextMatrix(1, 1, "MSFT");
    grid.TextMatrix(2, 1, "IBM");
    grid.TextMatrix(3, 1, "AAPL");
    grid.Select(1, 1);
    grid.BeforeEdit.Subscribe([this](std::int32_t row, std::int32_t col, bool&) {
      raised.push_back("BeforeEdit " + Cell(row, col));
    });
    grid.AfterEdit.Subscribe(
        [this](std::int32_t row, std::int32_t col) { raised.push_back("AfterEdit " + Cell(row, col)); });
    grid.Click.Subscribe([this] { raised.push_back("Click"); });
  }

  std::string Cell(std::int32_t row, std::int32_t col) const {
    return std::to_string(row) + "," + std::to_string(col) + " '" + grid.TextMatrix(row, col) + "'";
  }
  std::vector<std::string> Texts(std::int32_t col) const {
    std::vector<std::string> texts;
    for (std::int32_t row = 0; row < grid.Rows(); ++row) texts.push_back(grid.TextMatrix(row, col));
    return texts;
  }
  // Row, column, the other end's row and column.
  std::vector<std::int32_t> Selection() const {
    return {grid.Row(), grid.Col(), grid.RowSel(), grid.ColSel()};
  }

  forms::Grid grid{form, "FG", nullptr};
};

}  // namespace mirelo::testing
