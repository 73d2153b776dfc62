#include "snapshot/WinInet.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

#include "automation/ansi.h"
#include "automation/number.h"
#include "automation/runtime_error.h"
#include "host/clock.h"
#include "host/host.h"
#include "host/message_loop.h"
#include "host/wininet_api.h"

namespace mirelo {

namespace {

using host::WinInetApi;

constexpr std::int32_t kComponentFailure = ErrorNumber(0x80040064);
constexpr std::int32_t kDefaultTimeoutSec = 300;
constexpr std::uint32_t kBufferSize = 4096;      // of every call that fills one
constexpr std::int32_t kMostExpected = 1 << 20;  // bytes; a length that a server claims may be anything
constexpr std::string_view kHttpVersion = "HTTP/1.0";
constexpr std::string_view kFormHeader = "Content-Type: application/x-www-form-urlencoded";

// In the order in which they are set. Receive and send stand twice, as the calls always went out.
constexpr std::uint32_t kTimeoutOptions[] = {
    WinInetApi::kOptionConnectTimeout,  WinInetApi::kOptionReceiveTimeout,
    WinInetApi::kOptionSendTimeout,     WinInetApi::kOptionReceiveTimeout,
    WinInetApi::kOptionSendTimeout,     WinInetApi::kOptionDataReceiveTimeout,
    WinInetApi::kOptionDataSendTimeout,
};

// Runs a member's body. Whatever fails in it is raised as the component's one error, in the member's name.
template <class Body>
auto Member(const char* name, Body&& body) {
  return AnyFailureAs(
      [&] {
        return RuntimeError(kComponentFailure, "WinInet component failure",
                            std::string("Mirelo.WinInet.") + name);
      },
      std::forward<Body>(body));
}

WinInetApi& Internet() { return host::Host::Current().internet(); }
host::MessageLoop& Loop() { return host::Host::Current().loop(); }
double Timer() { return host::Host::Current().clock().SecondsSinceMidnight(); }

}  // namespace

void WinInet::Execute() {
  Member("Execute", [&] {
    success_done_ = false;
    content_length_ = 0;
    bytes_read_ = 0;
    cancelled_ = false;
    if (!OpenInternet()) return;
    SetTimeouts();
    if (!ConnectToServer()) return;
    if (!OpenRequest()) return;
    if (!SendRequest()) return;
    if (!ReadHeaders()) return;
    if (!ReadBody()) return;
    CloseHandles();
    success_done_ = true;
    ChangeStatus(kFinished);
  });
}

bool WinInet::OpenInternet() {
  const auto agent = agent_name_.empty() ? std::nullopt : std::optional(TextToAnsi(agent_name_));
  internet_ = Internet().InternetOpenA(agent, WinInetApi::kOpenTypePreconfig);
  if (internet_ == 0) {
    ChangeStatus(kOpenFailed);  // nothing to close; older handles stay as they are
    return false;
  }
  ChangeStatus(kOpened);
  return !EndIfCancelled();
}

void WinInet::SetTimeouts() {
  if (timeout_sec_ < 1) timeout_sec_ = kDefaultTimeoutSec;
  timeout_ms_ = MultiplyChecked(timeout_sec_, 1000);
  for (const auto option : kTimeoutOptions) Internet().InternetSetOptionA(internet_, option, timeout_ms_);
}

bool WinInet::ConnectToServer() {
  connection_ =
      Internet().InternetConnectA(internet_, TextToAnsi(host_name_), static_cast<std::uint16_t>(port_),
                                  TextToAnsi(user_name_), TextToAnsi(password_), WinInetApi::kServiceHttp);
  if (connection_ == 0) return Fail(kConnectFailed);
  ChangeStatus(kConnected);
  return !EndIfCancelled();
}

bool WinInet::OpenRequest() {
  const auto canonical =
      Internet().InternetCanonicalizeUrlA(TextToAnsi(resource_), kBufferSize, WinInetApi::kBrowserMode);
  if (canonical) resource_ = AnsiToText(*canonical);
  request_ =
      Internet().HttpOpenRequestA(connection_, TextToAnsi(method_), TextToAnsi(resource_),
                                  std::string(kHttpVersion), TextToAnsi(referer_), WinInetApi::kFlagReload);
  if (request_ == 0) return Fail(kOpenRequestFailed);
  ChangeStatus(kRequestOpened);
  return !EndIfCancelled();
}

bool WinInet::SendRequest() {
  const bool has_body = !post_query_.empty();
  const std::string headers = has_body ? std::string(kFormHeader) : std::string();
  if (!Internet().HttpSendRequestA(request_, headers, TextToAnsi(post_query_))) return Fail(kSendFailed);
  ChangeStatus(kRequestSent);
  return !EndIfCancelled();
}

bool WinInet::ReadHeaders() {
  const auto query = [&](std::uint32_t level) {
    return Internet().HttpQueryInfoA(request_, level, kBufferSize);
  };
  if (const auto type = query(WinInetApi::kQueryContentType)) content_type_ = AnsiToText(*type);
  if (EndIfCancelled()) return false;
  if (const auto length = query(WinInetApi::kQueryContentLength))
    content_length_ = RoundToInt32(Val(*length));
  if (EndIfCancelled()) return false;
  if (const auto method = query(WinInetApi::kQueryRequestMethod)) method_ = AnsiToText(*method);
  if (EndIfCancelled()) return false;
  ChangeStatus(kReadingBody);  // a Cancel in here is seen behind the first read
  return true;
}

bool WinInet::ReadBody() {
  response_.clear();
  response_.reserve(static_cast<std::size_t>(std::clamp(content_length_, 0, kMostExpected)));
  const double start = Timer();
  std::array<char, kBufferSize> buffer;
  for (bool finished = false; !finished;) {
    std::uint32_t count = 0;
    buffer.fill(' ');
    // Only the count decides: a read that fails ends the body as its end does.
    Internet().InternetReadFile(request_, buffer.data(), kBufferSize, count);
    // A count above the buffer's size adds the whole buffer and no more.
    AppendAnsi(response_, std::string_view(buffer.data(), std::min(count, kBufferSize)));
    finished = count == 0;
    if (EndIfCancelled()) return false;
    bytes_read_ = AddChecked(bytes_read_, static_cast<std::int32_t>(count));
    OnProgress.Raise(static_cast<float>(Timer() - start), content_length_, bytes_read_);
    Loop().Yield();
  }
  return true;
}

bool WinInet::Fail(State state) {
  ChangeStatus(state);
  CloseHandles();
  return false;
}

bool WinInet::EndIfCancelled() {
  if (!cancelled_) return false;
  ChangeStatus(kCancelled);
  CloseHandles();
  return true;
}

void WinInet::CloseHandles() {
  Member("CloseHandles", [&] {
    for (const Handle handle : {request_, connection_, internet_}) {
      if (handle != 0) Internet().InternetCloseHandle(handle);
    }
  });
}

void WinInet::ChangeStatus(std::int32_t state) {
  Member("ChangeStatus", [&] {
    state_ = state;
    OnStateChanged.Raise(state);
    Loop().Yield();
  });
}

void WinInet::Cancel() {
  Member("Cancel", [&] { cancelled_ = true; });
}

std::int32_t WinInet::TimeoutSec() const {
  return Member("TimeoutSec", [&] { return timeout_sec_; });
}
void WinInet::TimeoutSec(std::int32_t value) {
  Member("TimeoutSec", [&] { timeout_sec_ = value; });
}

bool WinInet::SuccessDone() const {
  return Member("SuccessDone", [&] { return success_done_; });
}
void WinInet::SuccessDone(bool value) {
  Member("SuccessDone", [&] { success_done_ = value; });
}

std::string WinInet::Response() const {
  return Member("Response", [&] { return success_done_ ? response_ : std::string(); });
}
std::string WinInet::TakeResponse() {
  return Member("Response", [&] { return success_done_ ? std::exchange(response_, {}) : std::string(); });
}
void WinInet::Response(std::string value) {
  Member("Response", [&] { response_ = std::move(value); });
}

std::string WinInet::ContentType() const {
  return Member("ContentType", [&] { return content_type_; });
}
void WinInet::ContentType(std::string value) {
  Member("ContentType", [&] { content_type_ = std::move(value); });
}

std::string WinInet::PostQuery() const {
  return Member("PostQuery", [&] { return post_query_; });
}
void WinInet::PostQuery(std::string value) {
  Member("PostQuery", [&] { post_query_ = std::move(value); });
}

std::string WinInet::AcceptTypes() const {
  return Member("AcceptTypes", [&] { return accept_types_; });
}
void WinInet::AcceptTypes(std::string value) {
  Member("AcceptTypes", [&] { accept_types_ = std::move(value); });
}

std::string WinInet::Referer() const {
  return Member("Referer", [&] { return referer_; });
}
void WinInet::Referer(std::string value) {
  Member("Referer", [&] { referer_ = std::move(value); });
}

std::string WinInet::Resource() const {
  return Member("Resource", [&] { return resource_; });
}
void WinInet::Resource(std::string value) {
  Member("Resource", [&] { resource_ = std::move(value); });
}

std::string WinInet::Method() const {
  return Member("Method", [&] { return method_; });
}
void WinInet::Method(std::string value) {
  Member("Method", [&] { method_ = std::move(value); });
}

std::string WinInet::Password() const {
  return Member("Password", [&] { return password_; });
}
void WinInet::Password(std::string value) {
  Member("Password", [&] { password_ = std::move(value); });
}

std::string WinInet::UserName() const {
  return Member("UserName", [&] { return user_name_; });
}
void WinInet::UserName(std::string value) {
  Member("UserName", [&] { user_name_ = std::move(value); });
}

std::int16_t WinInet::Port() const {
  return Member("Port", [&] { return port_; });
}
void WinInet::Port(std::int16_t value) {
  Member("Port", [&] { port_ = value; });
}

std::string WinInet::HostName() const {
  return Member("HostName", [&] { return host_name_; });
}
void WinInet::HostName(std::string value) {
  Member("HostName", [&] { host_name_ = std::move(value); });
}

std::string WinInet::AgentName() const {
  return Member("AgentName", [&] { return agent_name_; });
}
void WinInet::AgentName(std::string value) {
  Member("AgentName", [&] { agent_name_ = std::move(value); });
}

}  // namespace mirelo
