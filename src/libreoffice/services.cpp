// The services that LibreOffice makes by their names (mirelo.components): one for each class that macros can
// make. A new one is a line here and there.

#include <sal/types.h>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/uno/Any.hxx>
#include <com/sun/star/uno/RuntimeException.hpp>
#include <com/sun/star/uno/Sequence.hxx>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <functional>
#include <memory>
#include <string_view>
#include <utility>

#include "adapters/calc/objects/spreadsheet_program.h"
#include "automation/runtime_error.h"
#include "automation_server/classes.h"
#include "libreoffice/machine.h"
#include "libreoffice/office_day.h"
#include "libreoffice/office_process.h"
#include "uno/errors.h"
#include "uno/invocation.h"
#include "uno/own_thread.h"
#include "uno/text.h"
#include "uno/values.h"

namespace mirelo::libreoffice {

namespace {

// Whoever speaks with the office from another process is on another thread here.
void RequireMainThread() {
  if (IsMainThread()) return;
  throw css::uno::RuntimeException(
      uno::OfficeText("Mirelo can be used by macros within LibreOffice alone, on its main thread"), {});
}

// The library has one facade at a time, and a day holds it.
void RequireFreeLibrary(const css::uno::Reference<css::uno::XComponentContext>& context,
                        std::string_view class_name) {
  if (class_name != "cMirelo" || !OfficeDay::Of(context).IsBusy()) return;
  throw RuntimeError(5, "Mirelo is at work in an open document. Stop its day, or close its settings, first");
}

// Macros hand a document in where the library wants a spreadsheet program: m.ExcelApplication =
// ThisComponent.
void TakeDocumentsForApplications(const css::uno::Reference<css::uno::XComponentContext>& context) {
  uno::TakeOfficeObjectsFor(
      [context](const css::uno::Reference<css::uno::XInterface>& object) -> std::shared_ptr<Object> {
        const css::uno::Reference<css::sheet::XSpreadsheetDocument> document(object, css::uno::UNO_QUERY);
        return document.is() ? calc::ApplicationOf(context, document) : nullptr;
      });
}

// A thread of a macro's in Python may be the last that holds an object. Other threads read this, so it is set
// once.
void HaveThreadsLetGoHere(const css::uno::Reference<css::uno::XComponentContext>& context) {
  static const bool done = [&] {
    uno::LetGoThrough(
        [office = OfficeOf(context)](std::function<void()> step) { return office->Post(std::move(step)); });
    return true;
  }();
  static_cast<void>(done);
}

css::uno::XInterface* NewObject(css::uno::XComponentContext* context, std::string_view class_name) {
  return uno::AtTheBorder([&]() -> css::uno::XInterface* {
    RequireMainThread();
    Machine::Of(context);
    RequireFreeLibrary(context, class_name);
    TakeDocumentsForApplications(context);
    HaveThreadsLetGoHere(context);
    css::uno::Reference<css::script::XInvocation> made =
        uno::InvocationOf(automation_server::CreateObject(class_name));
    made->acquire();  // the caller's
    return made.get();
  });
}

}  // namespace

}  // namespace mirelo::libreoffice

#define SERVICE(Class)                                                             \
  extern "C" SAL_DLLPUBLIC_EXPORT com::sun::star::uno::XInterface* mirelo_##Class( \
      com::sun::star::uno::XComponentContext* context,                             \
      const com::sun::star::uno::Sequence<com::sun::star::uno::Any>&) {            \
    return mirelo::libreoffice::NewObject(context, #Class);                        \
  }

SERVICE(cMirelo)
SERVICE(cQTStreaming)
SERVICE(cQTData)
SERVICE(cQTDatas)
SERVICE(cTickerDateTime)
SERVICE(cTickerDateTimes)
SERVICE(CAppSettings)
SERVICE(WinInet)
