#pragma once

#include <chrono>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/table/CellRangeAddress.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <cstddef>
#include <vector>

namespace mirelo::libreoffice {

namespace css = com::sun::star;

// Reads the formulas of all open spreadsheets, a few at a time: so those are calculated that are due, which
// the office puts off as long as nobody looks at them.
class FormulaReader {
 public:
  // For the formulas that there are now.
  explicit FormulaReader(const css::uno::Reference<css::uno::XComponentContext>& context);

  // Reads on for so long, and then to the end of a small piece. False when all have been read.
  bool ReadOn(std::chrono::milliseconds time);

  // Whether there was a document that is not calculated by itself: its formulas stay as they are.
  bool HasLeftOut() const { return has_left_out_; }

 private:
  struct Piece {
    css::uno::Reference<css::sheet::XSpreadsheet> sheet;
    css::table::CellRangeAddress cells;
  };

  void Add(const css::uno::Reference<css::uno::XInterface>& document);
  void Add(const css::uno::Reference<css::sheet::XSpreadsheet>& sheet);

  std::vector<Piece> pieces_;
  std::size_t read_ = 0;
  bool has_left_out_ = false;
};

}  // namespace mirelo::libreoffice
