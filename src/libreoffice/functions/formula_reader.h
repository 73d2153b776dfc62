#pragma once

#include <chrono>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/table/CellRangeAddress.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <vector>

namespace mirelo::libreoffice {

namespace css = com::sun::star;

// Reads the formulas of all open spreadsheets, a few at a time: so those are calculated that are due, which
// the office puts off as long as nobody looks at them. Sheets are looked through in the same way, since
// looking for the formulas of a large one takes long, too.
class FormulaReader {
 public:
  // For the sheets that there are now.
  explicit FormulaReader(const css::uno::Reference<css::uno::XComponentContext>& context);

  // Reads on for so long, and then to the end of a small piece. False when all have been read.
  bool ReadOn(std::chrono::milliseconds time);

  // Whether there was a document that is not calculated by itself: its formulas stay as they are.
  bool HasLeftOut() const { return has_left_out_; }

 private:
  using Sheet = css::uno::Reference<css::sheet::XSpreadsheet>;
  using Cells = css::table::CellRangeAddress;

  // How many cells are taken at once: more while that is quick, fewer where it is not.
  class Portion {
   public:
    explicit Portion(sal_Int32 most) : most_(most) {}
    // As many rows of this width, at least one.
    sal_Int32 Rows(const Cells& cells) const;
    void Note(std::chrono::steady_clock::duration taken);

   private:
    const sal_Int32 most_;
    sal_Int32 cells_ = 16;
  };

  void Add(const css::uno::Reference<css::uno::XInterface>& document);
  void ReadSome();
  void LookThroughSome();
  // Takes the first rows of what is left of the last of these cells.
  static Cells TakeRows(std::vector<Cells>& from, const Portion& portion);

  std::vector<Sheet> sheets_;    // the last one is being read
  bool is_begun_ = false;        // that one
  std::vector<Cells> unknown_;   // of the used cells of that sheet: those not looked through
  std::vector<Cells> formulas_;  // that were found and are to be read
  Portion at_once_{500};
  Portion looked_through_at_once_{100000};
  bool has_left_out_ = false;
};

}  // namespace mirelo::libreoffice
