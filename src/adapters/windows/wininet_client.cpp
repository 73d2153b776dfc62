#include "adapters/windows/system.h"

#include <wininet.h>

#include "adapters/windows/wininet_client.h"

#include <algorithm>
#include <memory>
#include <thread>
#include <utility>
#include <vector>

#include "adapters/poll/bell.h"

namespace mirelo::windows {

namespace {

using std::chrono::milliseconds;

const char* TextOrNone(const std::string& text) { return text.empty() ? nullptr : text.c_str(); }

bool FitsInLine(const std::string& text) {
  return std::none_of(text.begin(), text.end(), [](char c) { return c == '\r' || c == '\n' || c == '\0'; });
}

host::WinInetApi::Failure FailureOf(DWORD error) {
  using Failure = host::WinInetApi::Failure;
  switch (error) {
    case ERROR_INTERNET_NAME_NOT_RESOLVED:
      return Failure::UnknownHost;
    case ERROR_INTERNET_CANNOT_CONNECT:
      return Failure::Refused;
    case ERROR_INTERNET_TIMEOUT:
      return Failure::TimedOut;
    default:
      return Failure::NoReply;
  }
}

// A timer until the end of a block.
class Timer {
 public:
  Timer(host::MessageLoop& loop, milliseconds delay, std::function<void()> handler)
      : loop_(loop), token_(loop.StartTimer(delay, std::move(handler))) {}
  ~Timer() { loop_.StopTimer(token_); }
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;

 private:
  host::MessageLoop& loop_;
  host::MessageLoop::Token token_;
};

// A watch until the end of a block.
class Watched {
 public:
  Watched(host::MessageLoop& loop, int descriptor, std::function<void(unsigned)> handler)
      : loop_(loop), token_(loop.Watch(descriptor, host::MessageLoop::kRead, std::move(handler))) {}
  ~Watched() { loop_.Unwatch(token_); }
  Watched(const Watched&) = delete;
  Watched& operator=(const Watched&) = delete;

 private:
  host::MessageLoop& loop_;
  host::MessageLoop::Token token_;
};

}  // namespace

WinInetClient::~WinInetClient() {
  while (!handles_.empty()) InternetCloseHandle(handles_.begin()->first);
}

host::WinInetApi::Handle WinInetClient::InternetOpenA(const std::optional<std::string>& agent,
                                                      std::uint32_t access_type) {
  if (agent && !FitsInLine(*agent)) return 0;
  return Keep(0, ::InternetOpenA(agent ? agent->c_str() : nullptr, access_type, nullptr, nullptr, 0));
}

// Waits are ended here, as well: what Windows makes of its own timeouts differs from one to the other.
bool WinInetClient::InternetSetOptionA(Handle handle, std::uint32_t option, std::int32_t value) {
  const auto entry = handles_.find(handle);
  if (entry == handles_.end()) return false;
  Timeouts& timeouts = entry->second.timeouts;
  const milliseconds time = value < 1 ? kLongestWait : std::min(milliseconds(value), kLongestWait);
  auto count = static_cast<DWORD>(time.count());
  if (void* const system = entry->second.system; system != nullptr) {
    ::InternetSetOptionA(system, option, &count, sizeof count);
  }
  switch (option) {
    case kOptionConnectTimeout:
      timeouts.connect = time;
      return true;
    case kOptionSendTimeout:
      timeouts.send = time;
      return true;
    case kOptionReceiveTimeout:
      timeouts.receive = time;
      return true;
    case kOptionDataSendTimeout:
    case kOptionDataReceiveTimeout:
      return true;
    default:
      return false;
  }
}

host::WinInetApi::Handle WinInetClient::InternetConnectA(Handle internet, const std::string& host,
                                                         std::uint16_t port, const std::string& user,
                                                         const std::string& password, std::uint32_t service) {
  void* const session = SystemOf(internet);
  if (session == nullptr || host.empty() || service != kServiceHttp) return 0;
  const INTERNET_PORT at = port != 0 ? port : INTERNET_DEFAULT_HTTP_PORT;
  return Keep(internet, ::InternetConnectA(session, host.c_str(), at, TextOrNone(user), TextOrNone(password),
                                           INTERNET_SERVICE_HTTP, 0, 0));
}

std::optional<std::string> WinInetClient::InternetCanonicalizeUrlA(const std::string& url,
                                                                   std::uint32_t capacity,
                                                                   std::uint32_t flags) {
  std::string text(std::max<std::size_t>(capacity, 1), '\0');
  DWORD length = capacity;
  if (!::InternetCanonicalizeUrlA(url.c_str(), text.data(), &length, flags)) return std::nullopt;
  text.resize(length);
  return text;
}

host::WinInetApi::Handle WinInetClient::HttpOpenRequestA(Handle connection, const std::string& verb,
                                                         const std::string& object,
                                                         const std::string& version,
                                                         const std::string& referrer, std::uint32_t flags) {
  void* const server = SystemOf(connection);
  if (server == nullptr || version != "HTTP/1.0" || !FitsInLine(verb + referrer)) return 0;
  const std::string used_verb = verb.empty() ? "GET" : verb;
  const DWORD never_asked_nor_kept =
      INTERNET_FLAG_NO_CACHE_WRITE | INTERNET_FLAG_NO_COOKIES | INTERNET_FLAG_NO_UI;
  const Handle handle =
      Keep(connection, ::HttpOpenRequestA(server, used_verb.c_str(), object.c_str(), version.c_str(),
                                          TextOrNone(referrer), nullptr, flags | never_asked_nor_kept, 0));
  if (handle != 0) handles_.at(handle).verb = used_verb;
  return handle;
}

bool WinInetClient::HttpSendRequestA(Handle request, const std::string& headers, const std::string& body) {
  void* const system = SystemOf(request);
  if (system == nullptr) return false;
  const Timeouts& timeouts = handles_.at(request).timeouts;
  const Milliseconds limit = std::min(timeouts.connect + timeouts.send + timeouts.receive, kLongestWait);
  const Outcome outcome = WaitFor(
      request,
      [system, headers, sent = body]() mutable {
        return ::HttpSendRequestA(system, TextOrNone(headers), static_cast<DWORD>(headers.size()),
                                  sent.data(), static_cast<DWORD>(sent.size())) != FALSE;
      },
      limit);
  // A server that ends the connection without a word has been sent the request all the same.
  const bool is_sent = outcome.succeeded || outcome.error == ERROR_INTERNET_CONNECTION_ABORTED ||
                       outcome.error == ERROR_INTERNET_CONNECTION_RESET;
  last_failure_ = is_sent ? Failure::None : outcome.timed_out ? Failure::TimedOut : FailureOf(outcome.error);
  return is_sent;
}

std::optional<std::string> WinInetClient::HttpQueryInfoA(Handle request, std::uint32_t level,
                                                         std::uint32_t capacity) {
  void* const system = SystemOf(request);
  if (system == nullptr) return std::nullopt;
  if (level == kQueryRequestMethod) {
    const std::string& verb = handles_.at(request).verb;
    return verb.size() < capacity ? std::optional(verb) : std::nullopt;
  }
  if (level != kQueryContentType && level != kQueryContentLength) return std::nullopt;
  std::string text(std::max<std::size_t>(capacity, 1), '\0');
  DWORD length = capacity;
  if (!::HttpQueryInfoA(system, level, text.data(), &length, nullptr)) return std::nullopt;
  text.resize(length);
  return text;
}

bool WinInetClient::InternetReadFile(Handle request, char* buffer, std::uint32_t capacity,
                                     std::uint32_t& read) {
  read = 0;
  void* const system = SystemOf(request);
  if (system == nullptr) return false;
  struct Piece {
    std::vector<char> bytes;
    DWORD size = 0;
  };
  const auto piece = std::make_shared<Piece>();
  piece->bytes.resize(capacity);
  const Outcome outcome = WaitFor(
      request,
      [system, piece] {
        return ::InternetReadFile(system, piece->bytes.data(), static_cast<DWORD>(piece->bytes.size()),
                                  &piece->size) != FALSE;
      },
      handles_.at(request).timeouts.receive);
  const auto entry = handles_.find(request);
  if (outcome.timed_out || entry == handles_.end()) return false;
  if (!outcome.succeeded) return true;  // the connection broke: that is the body's end
  entry->second.read += piece->size;
  if (entry->second.read > kLongestBody) return false;
  std::copy_n(piece->bytes.begin(), piece->size, buffer);
  read = piece->size;
  return true;
}

// A call that waits for it returns.
bool WinInetClient::InternetCloseHandle(Handle handle) {
  const auto node = handles_.extract(handle);
  if (node.empty()) return false;
  std::vector<Handle> children;
  for (const auto& [child, entry] : handles_) {
    if (entry.parent == handle) children.push_back(child);
  }
  for (const Handle child : children) InternetCloseHandle(child);
  if (node.mapped().system != nullptr) ::InternetCloseHandle(node.mapped().system);
  return true;
}

host::WinInetApi::Handle WinInetClient::Keep(Handle parent, void* system) {
  if (system == nullptr) return 0;
  const auto above = handles_.find(parent);
  handles_.emplace(++last_handle_,
                   Entry{parent, system, above == handles_.end() ? Timeouts{} : above->second.timeouts});
  return last_handle_;
}

void* WinInetClient::SystemOf(Handle handle) const {
  const auto entry = handles_.find(handle);
  return entry == handles_.end() ? nullptr : entry->second.system;
}

// The handle stays the caller's to close; whatever is asked of it fails.
void WinInetClient::GiveUp(Handle handle) {
  const auto entry = handles_.find(handle);
  if (entry == handles_.end() || entry->second.system == nullptr) return;
  ::InternetCloseHandle(std::exchange(entry->second.system, nullptr));
}

// The thread may be at work for longer than this frame waits: Windows does not always have a call return
// whose handle is closed. So all that it touches is its own, and it ends with Windows' own timeouts.
WinInetClient::Outcome WinInetClient::WaitFor(Handle handle, std::function<bool()> call, Milliseconds limit) {
  struct Errand {
    std::function<bool()> call;
    Outcome outcome;
    poll::Bell done = poll::Bell::Open();
  };
  const auto errand = std::make_shared<Errand>();
  errand->call = std::move(call);
  std::thread([errand] {
    errand->outcome.succeeded = errand->call();
    if (!errand->outcome.succeeded) errand->outcome.error = ::GetLastError();
    errand->done.Ring();
  }).detach();

  bool has_returned = false;
  bool is_late = false;
  const Watched watched(loop_, errand->done.Number(),
                        [&](unsigned) { has_returned = has_returned || errand->done.Take(); });
  const Timer timer(loop_, limit, [&] {
    is_late = true;
    GiveUp(handle);
  });
  try {
    loop_.RunUntil([&] { return has_returned || SystemOf(handle) == nullptr; });
  } catch (...) {
    GiveUp(handle);
    throw;
  }
  if (has_returned && !is_late) return errand->outcome;
  return {.succeeded = false, .error = ERROR_INTERNET_OPERATION_CANCELLED, .timed_out = is_late};
}

}  // namespace mirelo::windows
