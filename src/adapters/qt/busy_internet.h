#pragma once

#include <cstdint>
#include <string>

#include "host/wininet_wrapper.h"

namespace mirelo::qt {

// HTTP as another adapter does it, with a cursor that says so while a call waits for the network.
class BusyInternet final : public host::WinInetWrapper {
 public:
  // A Qt application must exist, and outlive this.
  using host::WinInetWrapper::WinInetWrapper;

  // These wait.
  bool HttpSendRequestA(Handle request, const std::string& headers, const std::string& body) override;
  bool InternetReadFile(Handle request, char* buffer, std::uint32_t capacity, std::uint32_t& read) override;
};

}  // namespace mirelo::qt
