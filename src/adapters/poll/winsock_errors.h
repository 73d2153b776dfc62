#pragma once

#include <string>

namespace mirelo::poll {

// Brings Windows' sockets into use. They stay so until the process ends.
void StartWinsock();

// What people are told of an error of Windows' sockets, in the words that other systems have for it: those of
// Windows are in any language, and several sentences long.
std::string WinsockText(int error);

}  // namespace mirelo::poll
