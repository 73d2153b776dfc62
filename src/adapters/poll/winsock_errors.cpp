#include <winsock2.h>

#include <algorithm>
#include <array>

#include "adapters/poll/winsock_errors.h"

namespace mirelo::poll {

namespace {

struct ErrorText {
  int error;
  const char* text;
};
constexpr std::array kErrorTexts{
    ErrorText{WSAEACCES, "Permission denied"},
    ErrorText{WSAEADDRINUSE, "Address already in use"},
    ErrorText{WSAEADDRNOTAVAIL, "Cannot assign requested address"},
    ErrorText{WSAECONNABORTED, "Software caused connection abort"},
    ErrorText{WSAECONNREFUSED, "Connection refused"},
    ErrorText{WSAECONNRESET, "Connection reset by peer"},
    ErrorText{WSAEHOSTUNREACH, "No route to host"},
    ErrorText{WSAENETDOWN, "Network is down"},
    ErrorText{WSAENETRESET, "Network dropped connection on reset"},
    ErrorText{WSAENETUNREACH, "Network is unreachable"},
    ErrorText{WSAENOBUFS, "No buffer space available"},
    ErrorText{WSAETIMEDOUT, "Connection timed out"},
    ErrorText{WSAHOST_NOT_FOUND, "Name or service not known"},
    ErrorText{WSANO_DATA, "Name or service not known"},
    ErrorText{WSANO_RECOVERY, "Non-recoverable failure in name resolution"},
    ErrorText{WSATRY_AGAIN, "Temporary failure in name resolution"},
};

}  // namespace

void StartWinsock() {
  static const int started = [] {
    WSADATA data{};
    return ::WSAStartup(MAKEWORD(2, 2), &data);
  }();
  (void)started;  // a call of the sockets says what is wrong
}

std::string WinsockText(int error) {
  const auto* const known = std::ranges::find(kErrorTexts, error, &ErrorText::error);
  if (known != kErrorTexts.end()) return known->text;
  return "Error " + std::to_string(error) + " of Windows' sockets";
}

}  // namespace mirelo::poll
