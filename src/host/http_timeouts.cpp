#include "host/http_timeouts.h"

#include "host/wininet_api.h"

namespace mirelo::host {

bool HttpTimeouts::Set(std::uint32_t option, std::int32_t value) {
  const auto time = value < 1 ? kForever : std::chrono::milliseconds(value);
  switch (option) {
    case WinInetApi::kOptionConnectTimeout:
      connect = time;
      return true;
    case WinInetApi::kOptionSendTimeout:
      send = time;
      return true;
    case WinInetApi::kOptionReceiveTimeout:
      receive = time;
      return true;
    case WinInetApi::kOptionDataSendTimeout:
    case WinInetApi::kOptionDataReceiveTimeout:
      return true;
    default:
      return false;
  }
}

}  // namespace mirelo::host
