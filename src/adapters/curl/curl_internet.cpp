#include "adapters/curl/curl_internet.h"

#include <algorithm>
#include <chrono>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "adapters/curl/redirect.h"
#include "adapters/curl/stall_timer.h"
#include "automation/ansi.h"
#include "host/canonical_url.h"
#include "host/http_lines.h"

namespace mirelo::curl {

namespace {

// The lines of a block of headers, whose last one may stand without a line end.
std::vector<std::string> Lines(std::string_view block) {
  std::vector<std::string> lines;
  while (!block.empty()) {
    const std::size_t end = std::min(block.find("\r\n"), block.size());
    if (end > 0) lines.emplace_back(block.substr(0, end));
    block.remove_prefix(std::min(end + 2, block.size()));
  }
  return lines;
}

// A server on this machine often replies sooner than a sleeping thread wakes up. So the first moment of a
// wait is spent awake where there are several processors, giving way to a server that was put on this one.
// Whether the condition came to hold.
template <class Condition>
bool HoldsBeforeSleep(host::MessageLoop& loop, const Condition& condition) {
  static const bool server_can_run = std::thread::hardware_concurrency() > 1;
  constexpr std::chrono::microseconds kAwake(100);
  const auto end = std::chrono::steady_clock::now() + (server_can_run ? kAwake : kAwake.zero());
  while (!condition()) {
    if (std::chrono::steady_clock::now() >= end) return false;
    std::this_thread::yield();
    loop.Yield();
  }
  return true;
}

std::optional<std::string> WithinCapacity(const std::optional<std::string>& text, std::uint32_t capacity) {
  const bool fits = text && text->size() < capacity;  // with its terminator
  return fits ? text : std::nullopt;
}

}  // namespace

CurlInternet::CurlInternet(host::MessageLoop& loop, Transfer::Now now, const Limits& limits)
    : loop_(loop), now_(std::move(now)), limits_(limits), multi_(loop) {}

host::WinInetApi::Handle CurlInternet::InternetOpenA(const std::optional<std::string>& agent,
                                                     std::uint32_t /*access_type*/) {
  if (agent && !host::FitsInHttpLine(*agent)) return 0;
  const auto [handle, entry] = Open(Kind::Internet, 0);
  entry.request.agent = agent;
  return handle;
}

bool CurlInternet::InternetSetOptionA(Handle handle, std::uint32_t option, std::int32_t value) {
  const auto entry = handles_.find(handle);
  return entry != handles_.end() && entry->second.request.timeouts.Set(option, value);
}

host::WinInetApi::Handle CurlInternet::InternetConnectA(Handle internet, const std::string& host,
                                                        std::uint16_t port, const std::string& user,
                                                        const std::string& password, std::uint32_t service) {
  const Entry* const parent = Find(internet, Kind::Internet);
  if (parent == nullptr || host.empty() || service != kServiceHttp) return 0;
  const auto [handle, entry] = Open(Kind::Connection, internet);
  entry.request = parent->request;
  entry.request.destination.origin = OriginOf(host, port);
  entry.request.user = user;
  entry.request.password = password;
  return handle;
}

std::optional<std::string> CurlInternet::InternetCanonicalizeUrlA(const std::string& url,
                                                                  std::uint32_t capacity,
                                                                  std::uint32_t /*flags*/) {
  return WithinCapacity(host::CanonicalUrl(url), capacity);
}

host::WinInetApi::Handle CurlInternet::HttpOpenRequestA(Handle connection, const std::string& verb,
                                                        const std::string& object, const std::string& version,
                                                        const std::string& referrer,
                                                        std::uint32_t /*flags*/) {
  const Entry* const parent = Find(connection, Kind::Connection);
  if (parent == nullptr || !host::IsHttpToken(verb) || version != "HTTP/1.0" ||
      !host::FitsInHttpLine(referrer))
    return 0;
  const auto [handle, entry] = Open(Kind::Request, connection);
  entry.request = parent->request;
  entry.request.destination.target = host::RequestTarget(object);
  entry.request.verb = verb.empty() ? "GET" : verb;
  entry.request.referrer = referrer;
  return handle;
}

bool CurlInternet::HttpSendRequestA(Handle handle, const std::string& headers, const std::string& body) {
  Entry* const entry = Find(handle, Kind::Request);
  if (entry == nullptr || entry->request.destination.origin.empty()) return false;
  if (entry->transfer) entry->transfer->Stop();
  Request request = entry->request;
  request.headers = Lines(headers);
  request.body = body;
  // This frame has a reference of its own: a handler that runs meanwhile may close the request.
  const auto transfer = entry->transfer =
      std::make_shared<Transfer>(multi_, std::move(request), reading_, limits_, now_);
  entry->told = false;
  WaitUntil(handle, *transfer, [&] { return transfer->Settled(); });
  last_failure_ = transfer->Sent() ? Failure::None : transfer->Why();
  return transfer->Sent();
}

std::optional<std::string> CurlInternet::HttpQueryInfoA(Handle handle, std::uint32_t level,
                                                        std::uint32_t capacity) {
  const auto transfer = FindTransfer(handle);
  if (transfer == nullptr) return std::nullopt;
  switch (level) {
    case kQueryContentType:
      return WithinCapacity(transfer->Head().ContentType(), capacity);
    case kQueryContentLength:
      return WithinCapacity(transfer->Head().ContentLength(), capacity);
    case kQueryRequestMethod:
      return WithinCapacity(transfer->Verb(), capacity);
    default:
      return std::nullopt;
  }
}

bool CurlInternet::InternetReadFile(Handle handle, char* buffer, std::uint32_t capacity,
                                    std::uint32_t& read) {
  read = 0;
  const auto transfer = FindTransfer(handle);
  if (transfer == nullptr) return false;
  WaitUntil(handle, *transfer, [&] { return transfer->BodySettled(); });
  read = static_cast<std::uint32_t>(transfer->TakeBody(buffer, capacity));
  return read > 0 || !transfer->Failed();
}

bool CurlInternet::InternetCloseHandle(Handle handle) {
  const auto node = handles_.extract(handle);
  if (node.empty()) return false;
  if (const auto& transfer = node.mapped().transfer) transfer->Stop();
  std::vector<Handle> children;
  for (const auto& [child, entry] : handles_) {
    if (entry.parent == handle) children.push_back(child);
  }
  for (const Handle child : children) InternetCloseHandle(child);
  return true;
}

void CurlInternet::StopTransfers() {
  for (const auto& [handle, entry] : handles_) {
    if (entry.transfer) entry.transfer->Stop();
  }
}

const std::string& CurlInternet::OriginOf(const std::string& host, std::uint16_t port) {
  if (host != last_server_.host || port != last_server_.port) {
    last_server_ = {host, port, HttpOrigin(host, port)};
  }
  return last_server_.origin;
}

std::pair<host::WinInetApi::Handle, CurlInternet::Entry&> CurlInternet::Open(Kind kind, Handle parent) {
  const auto entry = handles_.emplace_hint(handles_.end(), ++last_handle_, Entry{kind, parent});
  return {last_handle_, entry->second};
}

CurlInternet::Entry* CurlInternet::Find(Handle handle, Kind kind) {
  const auto entry = handles_.find(handle);
  return entry != handles_.end() && entry->second.kind == kind ? &entry->second : nullptr;
}

std::shared_ptr<Transfer> CurlInternet::FindTransfer(Handle handle) {
  const Entry* const entry = Find(handle, Kind::Request);
  return entry != nullptr ? entry->transfer : nullptr;
}

template <class Condition>
void CurlInternet::WaitUntil(Handle handle, Transfer& transfer, Condition condition) {
  if (!condition()) {
    const StallTimer timer(loop_, transfer);
    if (!HoldsBeforeSleep(loop_, condition)) loop_.RunUntil(condition);
  }
  if (!transfer.Excess().empty()) TellExcess(handle, transfer);
}

void CurlInternet::TellExcess(Handle handle, const Transfer& transfer) {
  Entry* const entry = Find(handle, Kind::Request);
  if (entry == nullptr || entry->transfer.get() != &transfer || std::exchange(entry->told, true)) return;
  BrokenOff.Raise("The reply of " + AnsiToText(entry->request.destination.origin) +
                  " was broken off: " + transfer.Excess());
}

}  // namespace mirelo::curl
