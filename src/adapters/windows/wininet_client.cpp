#include "adapters/windows/system.h"

#include <wininet.h>

#include "adapters/windows/wininet_client.h"

#include <algorithm>
#include <atomic>
#include <memory>
#include <thread>
#include <utility>
#include <vector>

#include "adapters/poll/bell.h"
#include "host/canonical_url.h"
#include "host/http_lines.h"

namespace mirelo::windows {

namespace {

using std::chrono::milliseconds;

const char* TextOrNone(const std::string& text) { return text.empty() ? nullptr : text.c_str(); }

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
  if (agent && !host::FitsInHttpLine(*agent)) return 0;
  return Keep(Kind::Session, 0,
              ::InternetOpenA(agent ? agent->c_str() : nullptr, access_type, nullptr, nullptr, 0));
}

bool WinInetClient::InternetSetOptionA(Handle handle, std::uint32_t option, std::int32_t value) {
  const auto entry = handles_.find(handle);
  return entry != handles_.end() && entry->second.timeouts.Set(option, value);
}

host::WinInetApi::Handle WinInetClient::InternetConnectA(Handle internet, const std::string& host,
                                                         std::uint16_t port, const std::string& user,
                                                         const std::string& password, std::uint32_t service) {
  void* const session = SystemOf(internet, Kind::Session);
  if (session == nullptr || host.empty() || service != kServiceHttp) return 0;
  return Keep(Kind::Connection, internet,
              ::InternetConnectA(session, host.c_str(), port, TextOrNone(user), TextOrNone(password),
                                 INTERNET_SERVICE_HTTP, 0, 0));
}

std::optional<std::string> WinInetClient::InternetCanonicalizeUrlA(const std::string& url,
                                                                   std::uint32_t capacity,
                                                                   std::uint32_t flags) {
  std::string text(std::max<std::size_t>(capacity, 1), '\0');
  DWORD length = capacity;
  if (!::InternetCanonicalizeUrlA(url.c_str(), text.data(), &length, flags)) return std::nullopt;
  text.resize(std::min<std::size_t>(length, text.find('\0')));  // an empty one may come without a length
  return text;
}

host::WinInetApi::Handle WinInetClient::HttpOpenRequestA(Handle connection, const std::string& verb,
                                                         const std::string& object,
                                                         const std::string& version,
                                                         const std::string& referrer, std::uint32_t flags) {
  void* const server = SystemOf(connection, Kind::Connection);
  if (server == nullptr || version != "HTTP/1.0" || !host::IsHttpToken(verb) ||
      !host::FitsInHttpLine(referrer))
    return 0;
  const std::string used_verb = verb.empty() ? "GET" : verb;
  const DWORD never_asked_nor_kept =
      INTERNET_FLAG_NO_CACHE_WRITE | INTERNET_FLAG_NO_COOKIES | INTERNET_FLAG_NO_UI;
  const auto open = [=, target = host::RequestTarget(object)] {
    return ::HttpOpenRequestA(server, used_verb.c_str(), target.c_str(), version.c_str(),
                              TextOrNone(referrer), nullptr, flags | never_asked_nor_kept, 0);
  };
  const Handle handle = Keep(Kind::Request, connection, open());
  if (handle == 0) return 0;
  handles_.at(handle).verb = used_verb;
  handles_.at(handle).open_again = open;
  return handle;
}

bool WinInetClient::HttpSendRequestA(Handle request, const std::string& headers, const std::string& body) {
  const auto entry = handles_.find(request);
  if (entry == handles_.end() || entry->second.kind != Kind::Request) return false;
  PrepareToSend(entry->second);
  void* const system = entry->second.system;
  const Outcome outcome = WaitFor(
      request,
      [system, headers, sent = body]() mutable {
        return ::HttpSendRequestA(system, TextOrNone(headers), static_cast<DWORD>(headers.size()),
                                  sent.data(), static_cast<DWORD>(sent.size())) != FALSE;
      },
      TimeUntilTheHead(entry->second.timeouts));
  // A server that ends the connection without a word has been sent the request all the same.
  const bool is_sent = outcome.succeeded || outcome.error == ERROR_INTERNET_CONNECTION_ABORTED ||
                       outcome.error == ERROR_INTERNET_CONNECTION_RESET;
  last_failure_ = is_sent ? Failure::None : outcome.timed_out ? Failure::TimedOut : FailureOf(outcome.error);
  return is_sent;
}

// Windows sends a request once. What is sent again is a new one to it, and ends the waits for the reply to
// the former; which is closed behind the new one, or that might have its handle.
void WinInetClient::PrepareToSend(Entry& request) const {
  if (request.is_wanted != nullptr) {
    Entry former{.system = request.system, .is_wanted = request.is_wanted};
    request.system = request.open_again();
    GiveUp(former);
    request.body.clear();
    request.received = 0;
  }
  request.is_wanted = std::make_shared<std::atomic<bool>>(true);
  // A thread whose wait was given up ends by these. They come behind our own, as their ends look like those
  // of a connection.
  constexpr milliseconds kLongest(0x7FFFFFFF);
  const milliseconds behind_ours = TimeUntilTheHead(request.timeouts) + std::chrono::seconds(1);
  auto time = static_cast<DWORD>(std::min(behind_ours, kLongest).count());
  for (const std::uint32_t option : {kOptionConnectTimeout, kOptionSendTimeout, kOptionReceiveTimeout}) {
    ::InternetSetOptionA(request.system, option, &time, sizeof time);
  }
}

milliseconds WinInetClient::TimeUntilTheHead(const host::HttpTimeouts& timeouts) const {
  const milliseconds longest = std::max({limits_.head, timeouts.connect, timeouts.send, timeouts.receive});
  return std::min(timeouts.connect + timeouts.send + timeouts.receive, longest);
}

std::optional<std::string> WinInetClient::HttpQueryInfoA(Handle request, std::uint32_t level,
                                                         std::uint32_t capacity) {
  void* const system = SystemOf(request, Kind::Request);
  if (system == nullptr) return std::nullopt;
  if (level == kQueryRequestMethod) {
    const std::string& verb = handles_.at(request).verb;
    return verb.size() < capacity ? std::optional(verb) : std::nullopt;
  }
  if (level != kQueryContentType && level != kQueryContentLength) return std::nullopt;
  std::string text(capacity + std::size_t{16}, '\0');  // a short buffer is not refused everywhere
  auto length = static_cast<DWORD>(text.size());
  if (!::HttpQueryInfoA(system, level, text.data(), &length, nullptr) || length >= capacity)
    return std::nullopt;
  text.resize(length);
  return text;
}

bool WinInetClient::InternetReadFile(Handle request, char* buffer, std::uint32_t capacity,
                                     std::uint32_t& read) {
  read = 0;
  if (SystemOf(request, Kind::Request) == nullptr || handles_.at(request).is_wanted == nullptr) return false;
  if (handles_.at(request).body.empty() && !ReceiveMore(request)) return false;
  const auto entry = handles_.find(request);
  if (entry == handles_.end()) return true;  // a handler has closed it, which ends the body
  std::string& body = entry->second.body;
  read = static_cast<std::uint32_t>(body.copy(buffer, capacity));
  body.erase(0, read);
  return true;
}

// A thread for each read costs more than what it reads, so all that is there is taken at once.
bool WinInetClient::ReceiveMore(Handle request) {
  void* const system = handles_.at(request).system;
  const auto piece = std::make_shared<std::string>();
  const Outcome outcome = WaitFor(
      request,
      [system, piece] {
        DWORD size = 0;
        if (!::InternetQueryDataAvailable(system, &size, 0, 0)) return false;
        piece->resize(size);
        if (!::InternetReadFile(system, piece->data(), size, &size)) return false;
        piece->resize(size);
        return true;
      },
      handles_.at(request).timeouts.receive);
  if (outcome.timed_out) return false;
  const auto entry = handles_.find(request);
  if (entry == handles_.end() || !outcome.succeeded) return true;  // a broken connection is the body's end
  entry->second.received += piece->size();
  if (entry->second.received > limits_.body) return false;
  entry->second.body += *piece;
  return true;
}

// A call that waits for it returns.
bool WinInetClient::InternetCloseHandle(Handle handle) {
  auto node = handles_.extract(handle);
  if (node.empty()) return false;
  std::vector<Handle> children;
  for (const auto& [child, entry] : handles_) {
    if (entry.parent == handle) children.push_back(child);
  }
  for (const Handle child : children) InternetCloseHandle(child);
  GiveUp(node.mapped());
  return true;
}

host::WinInetApi::Handle WinInetClient::Keep(Kind kind, Handle parent, void* system) {
  if (system == nullptr) return 0;
  const auto above = handles_.find(parent);
  handles_.emplace(
      ++last_handle_,
      Entry{kind, parent, system, above == handles_.end() ? host::HttpTimeouts{} : above->second.timeouts});
  return last_handle_;
}

void* WinInetClient::SystemOf(Handle handle, Kind kind) const {
  const auto entry = handles_.find(handle);
  return entry == handles_.end() || entry->second.kind != kind ? nullptr : entry->second.system;
}

// The handle stays the caller's to close, and to send again; whatever else is asked of it fails.
void WinInetClient::GiveUp(Entry& entry) {
  if (entry.is_wanted != nullptr) *entry.is_wanted = false;
  if (entry.system != nullptr) ::InternetCloseHandle(std::exchange(entry.system, nullptr));
}

// The thread may be at work for longer than this frame waits: Windows does not always have a call return
// whose handle is closed. So all that it touches is its own, and it ends with Windows' own timeouts.
WinInetClient::Outcome WinInetClient::WaitFor(Handle request, std::function<bool()> call,
                                              milliseconds limit) {
  struct Errand {
    std::function<bool()> call;
    std::shared_ptr<std::atomic<bool>> is_wanted;
    Outcome outcome;
    poll::Bell done = poll::Bell::Open();
  };
  const auto errand = std::make_shared<Errand>();
  errand->call = std::move(call);
  errand->is_wanted = handles_.at(request).is_wanted;
  std::thread([errand] {
    // A handle that was closed before may be another's already.
    errand->outcome.succeeded = *errand->is_wanted && errand->call();
    if (!errand->outcome.succeeded) errand->outcome.error = ::GetLastError();
    errand->done.Ring();
  }).detach();

  // As long as it is wanted, the request is open.
  const std::atomic<bool>& is_wanted = *errand->is_wanted;
  bool has_returned = false;
  bool is_late = false;
  const Watched watched(loop_, errand->done.Number(),
                        [&](unsigned) { has_returned = has_returned || errand->done.Take(); });
  const Timer timer(loop_, limit, [&] {
    if (!is_wanted) return;
    is_late = true;
    GiveUp(handles_.at(request));
  });
  try {
    loop_.RunUntil([&] { return has_returned || !is_wanted; });
  } catch (...) {
    if (is_wanted) GiveUp(handles_.at(request));
    throw;
  }
  if (has_returned && is_wanted) return errand->outcome;
  return {.succeeded = false, .error = ERROR_INTERNET_OPERATION_CANCELLED, .timed_out = is_late};
}

}  // namespace mirelo::windows
