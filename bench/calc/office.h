#pragma once

#include <chrono>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/uno/Reference.hxx>
#include <com/sun/star/uno/XComponentContext.hpp>

namespace mirelo {

namespace css = com::sun::star;

// The office that runs the benchmarks, on its main thread.
css::uno::Reference<css::uno::XComponentContext> OfficeContext();

// The office goes on by itself for so long, as while a macro waits.
void LetTheOfficeRun(std::chrono::milliseconds time);

// A new spreadsheet in a window, which is closed in the end.
class OpenDocument {
 public:
  OpenDocument();
  ~OpenDocument();
  OpenDocument(const OpenDocument&) = delete;
  OpenDocument& operator=(const OpenDocument&) = delete;

  const css::uno::Reference<css::frame::XModel>& Model() const { return model_; }
  css::uno::Reference<css::sheet::XSpreadsheetDocument> Spreadsheet() const;

 private:
  css::uno::Reference<css::frame::XModel> model_;
};

}  // namespace mirelo
