#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "host/http_timeouts.h"
#include "host/message_loop.h"
#include "host/wininet_api.h"

namespace mirelo::windows {

// The HTTP client of Windows. Its calls that wait do so on a thread of their own, while the loop goes on
// here; so requests can nest: a handler that runs meanwhile may make its own, and may close the handle that
// is waited for, which ends the wait.
//
// Handles are never given twice, and a handle passes its timeouts on to those that are opened from it, at
// that moment. Proxies are those that the machine has for programs.
//
// Of its own accord it asks Windows for three things that every request is to have, whoever makes it: replies
// are not kept on this machine, no cookies of the user's other programs are sent along or kept, and no window
// of Windows' asks whoever is there for a password.
//
// What a reply's head is, and where redirects lead, is up to Windows, which tells a server the user only when
// it is asked for it. The verb is the one that was asked for, also behind a redirect that turned it into
// another.
class WinInetClient final : public host::WinInetApi {
 public:
  // What a reply may come to before it is broken off. No server that means well gets there.
  struct Limits {
    std::uint64_t body = std::uint64_t{64} << 20;  // bytes; reading more of it fails
    // How long a request may take until its reply's head is there. Where a client allows more than this for
    // one step alone, the whole may take as long as that step.
    std::chrono::milliseconds head = std::chrono::minutes(5);
  };

  // The loop must outlive this.
  explicit WinInetClient(host::MessageLoop& loop) : WinInetClient(loop, Limits{}) {}
  WinInetClient(host::MessageLoop& loop, const Limits& limits) : loop_(loop), limits_(limits) {}
  ~WinInetClient() override;
  WinInetClient(const WinInetClient&) = delete;
  WinInetClient& operator=(const WinInetClient&) = delete;

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
  Handle HttpOpenRequestA(Handle connection, const std::string& verb, const std::string& object,
                          const std::string& version, const std::string& referrer,
                          std::uint32_t flags) override;
  bool HttpSendRequestA(Handle request, const std::string& headers, const std::string& body) override;
  std::optional<std::string> HttpQueryInfoA(Handle request, std::uint32_t level,
                                            std::uint32_t capacity) override;
  // False when the server sent nothing for as long as the receive timeout, and when the body is too long.
  bool InternetReadFile(Handle request, char* buffer, std::uint32_t capacity, std::uint32_t& read) override;
  bool InternetCloseHandle(Handle handle) override;
  Failure LastFailure() const override { return last_failure_; }

  // How many handles are open: a caller that leaks one shows here.
  std::size_t OpenHandles() const { return handles_.size(); }

 private:
  enum class Kind { Session, Connection, Request };
  struct Entry {
    Kind kind = Kind::Session;
    Handle parent = 0;
    void* system = nullptr;  // Windows' own handle; null once a wait was given up
    host::HttpTimeouts timeouts = {};
    // What follows is of requests.
    std::string verb = {};  // as it was asked for: what a redirect made of it, Windows keeps to itself
    std::function<void*()> open_again = {};
    std::shared_ptr<std::atomic<bool>> is_wanted =
        {};                      // shared with the threads of its calls: false once nobody waits for it
    std::string body = {};       // what has come of the reply's and was not read yet
    std::uint64_t received = 0;  // of that body
  };

  struct Outcome {
    bool succeeded = false;
    unsigned long error = 0;  // Windows'
    bool timed_out = false;
  };

  Handle Keep(Kind kind, Handle parent, void* system);
  // Null for a handle that isn't open, or of another kind.
  void* SystemOf(Handle handle, Kind kind) const;
  std::chrono::milliseconds TimeUntilTheHead(const host::HttpTimeouts& timeouts) const;
  void PrepareToSend(Entry& request) const;
  static void GiveUp(Entry& entry);
  bool ReceiveMore(Handle request);
  Outcome WaitFor(Handle request, std::function<bool()> call, std::chrono::milliseconds limit);

  host::MessageLoop& loop_;
  const Limits limits_;
  std::map<Handle, Entry> handles_;
  Handle last_handle_ = 0;
  Failure last_failure_ = Failure::None;
};

}  // namespace mirelo::windows
