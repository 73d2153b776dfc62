#pragma once

#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/uno/Reference.hxx>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <rtl/ustring.hxx>
#include <vector>

#include "calc/office_of_tests.h"

namespace mirelo::testing {

// Documents in a LibreOffice without a screen. They are closed, and it has ended, when the tests are over.
class LiveOffice {
 public:
  using Document = css::uno::Reference<css::sheet::XSpreadsheetDocument>;

  static LiveOffice& Get();

  const css::uno::Reference<css::uno::XComponentContext>& Context() const { return OfficeOfTests(); }

  // An empty spreadsheet in a window, with one sheet "Sheet1" in front. The one from before is closed.
  Document NewDocument();
  // The same, and quicker: the document from before, if it can be emptied.
  Document EmptyDocument();
  // One beside that from before, which both of these close.
  Document AnotherDocument();
  Document OpenBeside(const rtl::OUString& url);
  void Close();

 private:
  LiveOffice() = default;

  bool Empty();
  Document Load(const rtl::OUString& url) const;

  Document document_;
  std::vector<Document> others_;
};

}  // namespace mirelo::testing
