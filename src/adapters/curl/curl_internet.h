#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "adapters/curl/limits.h"
#include "adapters/curl/multi.h"
#include "adapters/curl/transfer.h"
#include "automation/event.h"
#include "host/message_loop.h"
#include "host/wininet_api.h"

namespace mirelo::curl {

// The machine's HTTP client over libcurl. Each request has a connection of its own and bypasses caches and
// proxies. Calls that wait run the message loop, so requests can nest: a handler that runs meanwhile may make
// its own, and may close the handle that is waited for, which ends the wait.
//
// Handles are never given twice. A handle passes its timeouts on to those that are opened from it, at that
// moment.
//
// A reply that oversteps the limits is broken off: its request fails, or when that has counted as sent
// already, its body ends there.
class CurlInternet final : public host::WinInetApi {
 public:
  // The loop must outlive this. `now` is the time by which stalls are told; it must not go back.
  explicit CurlInternet(host::MessageLoop& loop, Transfer::Now now = Transfer::Clock::now,
                        const Limits& limits = {});

  // From now on a request counts as sent only when the whole reply has come, and fails when the reply was
  // broken off before its end. Without this, callers read a body as it comes, and one that was broken off
  // passes for a short one with those who do not look at what a read returns.
  void WaitForWholeReplies() { reading_ = Reading::Whole; }

  // Raised when a reply has overstepped the limits, once for each; the text says to people which one and of
  // which server. The call that waits for the reply returns after that.
  Event<const std::string&> BrokenOff;

  // Fails for an agent that would break its header line.
  Handle InternetOpenA(const std::optional<std::string>& agent, std::uint32_t access_type) override;
  // Knows the five timeouts; those of data connections, which HTTP has none of, are taken and have no effect.
  // A value below 1 is for ever.
  bool InternetSetOptionA(Handle handle, std::uint32_t option, std::int32_t value) override;
  // Fails for an empty host and for services other than HTTP.
  Handle InternetConnectA(Handle internet, const std::string& host, std::uint16_t port,
                          const std::string& user, const std::string& password,
                          std::uint32_t service) override;
  std::optional<std::string> InternetCanonicalizeUrlA(const std::string& url, std::uint32_t capacity,
                                                      std::uint32_t flags) override;
  // Fails for a verb or referrer that would break its line, and for versions other than HTTP/1.0. An empty
  // verb is GET.
  Handle HttpOpenRequestA(Handle connection, const std::string& verb, const std::string& object,
                          const std::string& version, const std::string& referrer,
                          std::uint32_t flags) override;
  bool HttpSendRequestA(Handle handle, const std::string& headers, const std::string& body) override;
  std::optional<std::string> HttpQueryInfoA(Handle handle, std::uint32_t level,
                                            std::uint32_t capacity) override;
  // False when the server sent nothing for as long as the receive timeout, or overstepped the limits.
  bool InternetReadFile(Handle handle, char* buffer, std::uint32_t capacity, std::uint32_t& read) override;
  bool InternetCloseHandle(Handle handle) override;
  Failure LastFailure() const override { return last_failure_; }

  // Breaks off all transfers, as closing their requests would; the handles stay open. Calls that wait for one
  // return.
  void StopTransfers();

  // How many handles are open: a caller that leaks one shows here.
  std::size_t OpenHandles() const { return handles_.size(); }

 private:
  enum class Kind { Internet, Connection, Request };
  struct Entry {
    Kind kind;
    Handle parent;
    Request request = {};                     // what is known of it so far
    std::shared_ptr<Transfer> transfer = {};  // of a request that was sent
    bool told = false;                        // that it overstepped the limits
  };

  // A cache of the server that was named last, and its origin. Most transfers go to the same server as the
  // one before, and checking its name takes libcurl longer than all the rest of naming it.
  struct Server {
    std::string host;
    std::uint16_t port = 0;
    std::string origin;
  };

  const std::string& OriginOf(const std::string& host, std::uint16_t port);
  // A new handle, and its entry to be filled in.
  std::pair<Handle, Entry&> Open(Kind kind, Handle parent);
  // Null when the handle isn't open, or of another kind.
  Entry* Find(Handle handle, Kind kind);
  // Null for a request that was not sent.
  std::shared_ptr<Transfer> FindTransfer(Handle handle);
  // Waits for the transfer that the handle has.
  template <class Condition>
  void WaitUntil(Handle handle, Transfer& transfer, Condition condition);
  void TellExcess(Handle handle, const Transfer& transfer);

  host::MessageLoop& loop_;
  Transfer::Now now_;
  Limits limits_;
  Reading reading_ = Reading::AsItComes;
  Multi multi_;
  Server last_server_;
  Failure last_failure_ = Failure::None;
  Handle last_handle_ = 0;
  std::map<Handle, Entry> handles_;
};

}  // namespace mirelo::curl
