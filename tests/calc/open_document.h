#pragma once

#include <gtest/gtest.h>

#include <com/sun/star/document/XUndoManager.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <memory>
#include <string>
#include <string_view>

#include "adapters/calc/objects/interfaces.h"
#include "adapters/calc/objects/spreadsheet_program.h"
#include "calc/live_office.h"
#include "host/excel/application.h"
#include "host/excel/range.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"

namespace mirelo::testing {

// A document in LibreOffice, which clients hold as a spreadsheet program and a person works in by the
// office's own means.
class OpenDocument : public ::testing::Test {
 protected:
  calc::Reference<css::sheet::XSpreadsheet> Tab(std::string_view name = "Sheet1") const;
  // What the person does, in the undo list as well.
  void Type(std::string_view address, double number) const;
  double Typed(std::string_view address) const;
  calc::Reference<css::document::XUndoManager> UndoManager() const;
  sal_Int32 StepCount() const { return UndoManager()->getAllUndoActionTitles().getLength(); }
  // The titles of the steps, from the latest back.
  std::string StepTitles() const;
  calc::Reference<css::sheet::XSpreadsheetView> View() const;
  std::string TabInFront() const;
  void Protect(std::string_view name = "Sheet1") const;
  void CloseDocument() const;

  std::shared_ptr<host::excel::Range> Cells(std::string_view address) const { return sheet->Range(address); }

  LiveOffice::Document document = LiveOffice::Get().NewDocument();
  // What is held for a document may outlive a test, and hears when its document is closed after that.
  std::shared_ptr<int> times_gone = std::make_shared<int>(0);
  std::shared_ptr<host::excel::Application> application =
      calc::ApplicationOf(LiveOffice::Get().Context(), document, [gone = times_gone] { ++*gone; });
  std::shared_ptr<host::excel::Worksheets> sheets = application->Worksheets();
  std::shared_ptr<host::excel::Worksheet> sheet = sheets->Item(1);
};

}  // namespace mirelo::testing
