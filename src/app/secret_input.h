#pragma once

#include "host/secret.h"

namespace mirelo::app {

// Asks for a credential, by the name of it, and reads a line from the standard input into guarded memory:
// byte by byte, so that no buffer has a copy. Error 5 when there is no line, or one of more than 4096 bytes.
host::Secret Ask(const char* what);

// The same with what is typed kept off the screen.
host::Secret AskInSecret(const char* what);

}  // namespace mirelo::app
