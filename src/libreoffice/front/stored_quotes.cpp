// What .xlsx files and their like have stored is what their cells show: cells of which the office has a value
// it does not calculate. So QUOTE would show an old quote for good, since its function is never called. This
// is told of each spreadsheet that is opened (Jobs.xcu), and has such a one calculated when it asks for
// quotes.

#include <sal/types.h>

#include <algorithm>
#include <com/sun/star/beans/NamedValue.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/lang/XServiceInfo.hpp>
#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/XCalculatable.hpp>
#include <com/sun/star/sheet/XCellRangeFormula.hpp>
#include <com/sun/star/sheet/XCellRangesQuery.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/table/CellRangeAddress.hpp>
#include <com/sun/star/table/XCellRange.hpp>
#include <com/sun/star/task/XJob.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <cppuhelper/implbase2.hxx>
#include <cppuhelper/supportsservice.hxx>

#include "libreoffice/front/border.h"

namespace mirelo::libreoffice {

namespace {

namespace css = com::sun::star;

using css::uno::Any;
using css::uno::Reference;
using css::uno::Sequence;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;

// So many rows of formulas are taken at once: all texts of a large sheet would be much.
constexpr sal_Int32 kRowsAtOnce = 1000;

Reference<css::frame::XModel> OpenedDocument(const Sequence<css::beans::NamedValue>& arguments) {
  for (const auto& argument : arguments) {
    Sequence<css::beans::NamedValue> environment;
    if (argument.Name != "Environment" || !(argument.Value >>= environment)) continue;
    for (const auto& part : environment) {
      if (part.Name == "Model") return Reference<css::frame::XModel>(part.Value, UNO_QUERY);
    }
  }
  return {};
}

// In all other files formulas of extensions are calculated when they are opened.
bool ShowsWhatWasStored(const Reference<css::frame::XModel>& document) {
  for (const auto& property : document->getArgs()) {
    rtl::OUString filter;
    if (property.Name == "FilterName" && (property.Value >>= filter))
      return filter.indexOf("Excel 2007") >= 0 || filter.indexOf("Office Open XML") >= 0;
  }
  return false;
}

// The office gives a function of an extension either name. Where another's ends alike, its document is
// calculated in vain, no more.
bool IsAboutQuotes(const rtl::OUString& formula) {
  const rtl::OUString name = formula.toAsciiUpperCase();
  return name.indexOf("QUOTE(") >= 0 || name.indexOf("QUOTE_STATUS(") >= 0 ||
         name.indexOf("QUOTE_AGE(") >= 0 || name.indexOf("MIRELO.FUNCTIONS.") >= 0;
}

bool HoldQuotes(const Reference<css::table::XCellRange>& sheet, const css::table::CellRangeAddress& cells) {
  for (sal_Int32 row = cells.StartRow; row <= cells.EndRow; row += kRowsAtOnce) {
    const sal_Int32 last = std::min(cells.EndRow, row + kRowsAtOnce - 1);
    const Reference<css::sheet::XCellRangeFormula> piece(
        sheet->getCellRangeByPosition(cells.StartColumn, row, cells.EndColumn, last), UNO_QUERY_THROW);
    for (const auto& formulas : piece->getFormulaArray()) {
      if (std::any_of(formulas.begin(), formulas.end(), IsAboutQuotes)) return true;
    }
  }
  return false;
}

bool HasQuotes(const Reference<css::sheet::XSpreadsheetDocument>& document) {
  const Reference<css::container::XIndexAccess> sheets(document->getSheets(), UNO_QUERY_THROW);
  for (sal_Int32 i = 0; i < sheets->getCount(); ++i) {
    const Reference<css::table::XCellRange> sheet(sheets->getByIndex(i), UNO_QUERY_THROW);
    const Reference<css::sheet::XCellRangesQuery> cells(sheet, UNO_QUERY_THROW);
    const auto found = cells->queryContentCells(css::sheet::CellFlags::FORMULA)->getRangeAddresses();
    for (const auto& range : found) {
      if (HoldQuotes(sheet, range)) return true;
    }
  }
  return false;
}

// All of the document: there is no other way that leaves it without a change and a step of Undo. Where the
// user calculates by hand, nothing is calculated before.
void CalculateStoredQuotes(const Reference<css::frame::XModel>& document) {
  const Reference<css::sheet::XSpreadsheetDocument> spreadsheet(document, UNO_QUERY);
  if (!spreadsheet.is() || !ShowsWhatWasStored(document)) return;
  const Reference<css::sheet::XCalculatable> calculated(document, UNO_QUERY_THROW);
  if (calculated->isAutomaticCalculationEnabled() && HasQuotes(spreadsheet)) calculated->calculateAll();
}

class StoredQuotes final : public cppu::WeakImplHelper2<css::task::XJob, css::lang::XServiceInfo> {
 public:
  Any SAL_CALL execute(const Sequence<css::beans::NamedValue>& arguments) override {
    return AtTheBorder([&] {
      const auto document = OpenedDocument(arguments);
      try {
        if (document.is()) CalculateStoredQuotes(document);
      } catch (const css::uno::Exception&) {  // it is being closed
      }
      return Any();
    });
  }

  rtl::OUString SAL_CALL getImplementationName() override { return "mirelo.impl.StoredQuotes"; }
  sal_Bool SAL_CALL supportsService(const rtl::OUString& name) override {
    return AtTheBorder([&] { return cppu::supportsService(this, name); });
  }
  Sequence<rtl::OUString> SAL_CALL getSupportedServiceNames() override {
    return AtTheBorder([] {
      const rtl::OUString name("mirelo.StoredQuotes");
      return Sequence<rtl::OUString>(&name, 1);
    });
  }
};

}  // namespace

}  // namespace mirelo::libreoffice

extern "C" SAL_DLLPUBLIC_EXPORT com::sun::star::uno::XInterface* mirelo_front_StoredQuotes(
    com::sun::star::uno::XComponentContext*, const com::sun::star::uno::Sequence<com::sun::star::uno::Any>&) {
  return cppu::acquire(new mirelo::libreoffice::StoredQuotes);
}
