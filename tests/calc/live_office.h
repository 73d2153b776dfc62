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

  // Nothing of a hidden one is painted, which is most of what a new document takes.
  enum class Window { kShown, kHidden };

  static LiveOffice& Get();

  const css::uno::Reference<css::uno::XComponentContext>& Context() const { return OfficeOfTests(); }

  // An empty spreadsheet in a window, with one sheet "Sheet1" in front. The one from before is closed.
  Document NewDocument(Window window = Window::kShown);
  // The same, and quicker: the document from before, if it can be emptied.
  Document EmptyDocument(Window window);
  // One beside that from before, which both of these close.
  Document AnotherDocument(Window window);
  Document OpenBeside(const rtl::OUString& url);
  void Close();

 private:
  LiveOffice() = default;

  bool Empty();
  Document Load(const rtl::OUString& url, Window window) const;

  Document document_;
  Window window_ = Window::kShown;
  std::vector<Document> others_;
};

}  // namespace mirelo::testing
