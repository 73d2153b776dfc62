#pragma once

namespace mirelo::curl {

// Whether any data has arrived at a TCP socket since it was opened, read or not. False when the system cannot
// tell.
bool HasReceivedData(int socket);

}  // namespace mirelo::curl
