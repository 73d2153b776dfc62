#include "wire/asked_server.h"

#include <algorithm>
#include <cstddef>

#include "automation/ansi.h"

namespace mirelo::wire {

host::WinInetApi::Handle AskedServer::InternetConnectA(Handle internet, const std::string& host,
                                                       std::uint16_t port, const std::string& user,
                                                       const std::string& password, std::uint32_t service) {
  host_ = AnsiToText(host);
  port_ = port;
  beginning_.clear();
  return inner().InternetConnectA(internet, host, port, user, password, service);
}

bool AskedServer::InternetReadFile(Handle request, char* buffer, std::uint32_t capacity,
                                   std::uint32_t& read) {
  const bool good = inner().InternetReadFile(request, buffer, capacity, read);
  const std::size_t room = kBeginning - beginning_.size();
  if (good) beginning_.append(buffer, std::min<std::size_t>(room, read));
  return good;
}

}  // namespace mirelo::wire
