#pragma once

#include <sys/types.h>

#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/uno/Reference.hxx>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <string>
#include <vector>

#include "support/temp_directory.h"

namespace mirelo::testing {

namespace css = com::sun::star;

// A LibreOffice without a screen and with a profile of its own, in a process of its own: what ends it ends no
// test program. It starts when it is first asked for, and has ended when the tests are over.
class LiveOffice {
 public:
  using Document = css::uno::Reference<css::sheet::XSpreadsheetDocument>;

  // Raises std::runtime_error, with what the office had to say, where it does not come up.
  static LiveOffice& Get();
  // Ends it, if it was started. Whether it ended well.
  static bool End();

  // The office's own, over the connection.
  const css::uno::Reference<css::uno::XComponentContext>& Context() const { return context_; }

  // An empty spreadsheet in a window, with one sheet "Sheet1" in front. The one from before is closed.
  Document NewDocument();
  // The same, and quicker: the document from before, if it can be emptied.
  Document EmptyDocument();
  // One beside that from before, which both of these close.
  Document AnotherDocument();
  void Close();

 private:
  LiveOffice();
  ~LiveOffice();

  void Start();
  void Connect();
  bool Empty();
  Document Load() const;
  bool HasEnded();
  bool Finish();
  std::string Log() const;

  TempDirectory folder_;
  std::string pipe_;
  pid_t process_ = -1;
  int status_ = 0;
  css::uno::Reference<css::uno::XComponentContext> context_;
  Document document_;
  std::vector<Document> others_;
};

}  // namespace mirelo::testing
