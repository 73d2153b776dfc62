#pragma once

#include <com/sun/star/uno/XComponentContext.hpp>

#include "libreoffice/errand/errand.h"

namespace mirelo::libreoffice {

namespace css = com::sun::star;

// Runs a command line of the program mirelo in this office as if that were the program: with LibreOffice Calc
// as its spreadsheet program. The office's process ends with the command, by its exit code; an office that
// has nobody's documents open loses nothing by that. `line` leads to whoever has started the office.
//
// The command begins when the office has come to its main loop.
void RunCommandLater(const css::uno::Reference<css::uno::XComponentContext>& context, int line,
                     CommandLine command);

}  // namespace mirelo::libreoffice
