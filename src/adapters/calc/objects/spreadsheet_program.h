#pragma once

#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <functional>
#include <memory>

#include "adapters/calc/objects/interfaces.h"
#include "host/excel/application.h"

namespace mirelo::calc {

// A document that is open in the office, as the one workbook of a spreadsheet program. It stays open when
// this is forgotten.
//
// Once the document is closed all members of all objects raise error 1004, and `gone` is called, once, while
// the office closes it and on the office's own thread. It must not ask the office for anything. What a person
// does in the document meanwhile is theirs: see Document about their undo list, and host::excel::Application
// about what is in front of them.
std::shared_ptr<host::excel::Application> ApplicationOf(
    const Reference<css::uno::XComponentContext>& context,
    const Reference<css::sheet::XSpreadsheetDocument>& document, std::function<void()> gone = {});

}  // namespace mirelo::calc
