#include "adapters/curl/transfer.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <climits>
#include <new>
#include <string_view>
#include <utility>

#include "adapters/curl/received_data.h"

namespace mirelo::curl {

namespace {

// The body that waits here unread when the server is no longer listened to, in bytes.
constexpr std::size_t kMostUnread = 262'144;

// The results for a connection that ended. Which of them it is when a server hangs up on a request is a
// matter of timing.
bool IsClosed(CURLcode result) {
  return result == CURLE_GOT_NOTHING || result == CURLE_RECV_ERROR || result == CURLE_SEND_ERROR;
}

host::WinInetApi::Failure FailureOf(CURLcode result, CURL* easy) {
  using Failure = host::WinInetApi::Failure;
  if (result == CURLE_COULDNT_RESOLVE_HOST) return Failure::UnknownHost;
  if (result == CURLE_OPERATION_TIMEDOUT) return Failure::TimedOut;
  if (result != CURLE_COULDNT_CONNECT) return Failure::NoReply;
  long error = 0;
  curl_easy_getinfo(easy, CURLINFO_OS_ERRNO, &error);
  if (error == ECONNREFUSED) return Failure::Refused;
  return error == ETIMEDOUT ? Failure::TimedOut : Failure::Unreachable;
}

// libcurl calls a line that is longer than it takes a want of memory; later versions have a result for it,
// which this one's header does not name.
bool IsOfTooLongALine(CURLcode result) {
  constexpr int kTooLarge = 100;
  return result == CURLE_OUT_OF_MEMORY || static_cast<int>(result) == kTooLarge;
}

std::string Counted(long long count, const std::string& unit) {
  return std::to_string(count) + " " + unit + (count == 1 ? "" : "s");
}

std::string InWords(std::chrono::milliseconds time) {
  const auto seconds = std::chrono::ceil<std::chrono::seconds>(time).count();
  return seconds % 60 == 0 ? Counted(seconds / 60, "minute") : Counted(seconds, "second");
}

}  // namespace

Transfer::Transfer(Multi& multi, Request request, Reading reading, const Limits& limits, Now now)
    : multi_(multi), request_(std::move(request)), reading_(reading), limits_(limits), now_(std::move(now)) {
  Start();
}

Transfer::~Transfer() { Stop(); }

void Transfer::Start() {
  easy_ = NewEasyHandle();
  DescribeRequest();
  multi_.Start(easy_.get(), *this);
}

// Tells the handle all that requests differ in.
void Transfer::DescribeRequest() {
  const auto set = [this](CURLoption option, auto value) { curl_easy_setopt(easy_.get(), option, value); };
  const auto set_text = [&](CURLoption option, const std::string& text) {
    set(option, text.empty() ? nullptr : text.c_str());
  };

  set(CURLOPT_URL, (request_.destination.origin + "/").c_str());
  set(CURLOPT_REQUEST_TARGET, request_.destination.target.c_str());
  set(CURLOPT_CUSTOMREQUEST, request_.verb.c_str());
  if (request_.body.empty()) {
    set(CURLOPT_HTTPGET, 1L);
  } else {
    set(CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(request_.body.size()));
    set(CURLOPT_POSTFIELDS, request_.body.data());
  }

  headers_.reset();
  AddHeader("Accept:");  // a name alone keeps libcurl from sending a header of its own
  if (request_.headers.empty()) AddHeader("Content-Type:");
  for (const std::string& header : request_.headers) AddHeader(header);
  set(CURLOPT_HTTPHEADER, headers_.get());
  set_text(CURLOPT_USERAGENT, request_.agent.value_or(std::string()));
  set_text(CURLOPT_REFERER, request_.referrer);
  set_text(CURLOPT_USERNAME, request_.user);
  set_text(CURLOPT_PASSWORD, request_.password);
  set(CURLOPT_CONNECTTIMEOUT_MS,
      static_cast<long>(std::min<long long>(request_.timeouts.connect.count(), INT_MAX)));

  // libcurl refuses a reply whose length is no number, and takes the end of a body that is too short for an
  // error. Here such a reply counts, so its length is looked after by OnBody.
  set(CURLOPT_IGNORE_CONTENT_LENGTH, 1L);
  set(CURLOPT_HEADERFUNCTION, HeaderCallback);
  set(CURLOPT_HEADERDATA, this);
  set(CURLOPT_WRITEFUNCTION, WriteCallback);
  set(CURLOPT_WRITEDATA, this);
  set(CURLOPT_CLOSESOCKETFUNCTION, CloseSocketCallback);
  set(CURLOPT_CLOSESOCKETDATA, this);
}

void Transfer::AddHeader(const std::string& line) {
  curl_slist* const longer = curl_slist_append(headers_.get(), line.c_str());
  if (longer == nullptr) throw std::bad_alloc();
  (void)headers_.release();
  headers_.reset(longer);
}

std::size_t Transfer::HeaderCallback(char* bytes, std::size_t size, std::size_t count, void* self) {
  try {
    return static_cast<Transfer*>(self)->OnHeaderLine({bytes, size * count}) ? size * count : 0;
  } catch (...) {
    return 0;  // libcurl is C: it fails the transfer then
  }
}

bool Transfer::OnHeaderLine(std::string_view line) {
  if (line.size() > limits_.head - head_.Size()) {
    return Refuse("its headers are larger than " + std::to_string(limits_.head >> 10) + " KiB");
  }
  head_.AddLine(line);
  if (!head_.Complete()) return true;
  const auto size = head_.BodySize();
  const bool has_body = request_.verb != "HEAD" && size != 0;
  if (!has_body || head_.RedirectsTo()) return false;
  // Who reads it as it comes is handed what there is of it, whatever was announced.
  if (reading_ == Reading::Whole && size > limits_.body) return RefuseBody();
  if (size) body_.Expect(std::min<std::uint64_t>(*size, kMostUnread));
  return true;
}

std::size_t Transfer::WriteCallback(char* bytes, std::size_t size, std::size_t count, void* self) {
  auto& transfer = *static_cast<Transfer*>(self);
  if (transfer.reading_ == Reading::AsItComes && transfer.body_.Size() >= kMostUnread) {
    transfer.paused_ = true;
    return CURL_WRITEFUNC_PAUSE;
  }
  try {
    return transfer.OnBody({bytes, size * count}) ? size * count : 0;
  } catch (...) {
    return 0;
  }
}

bool Transfer::OnBody(std::string_view bytes) {
  const auto size = head_.BodySize();
  if (size) bytes = bytes.substr(0, *size - body_received_);
  if (bytes.size() > limits_.body - body_received_) return RefuseBody();
  body_.Append(bytes);
  body_received_ += bytes.size();
  return body_received_ != size;
}

bool Transfer::RefuseBody() {
  return Refuse("it is larger than " + std::to_string(limits_.body >> 20) + " MiB");
}

// False, which breaks the transfer off where a callback of libcurl's gives it back.
bool Transfer::Refuse(std::string excess) {
  excess_ = std::move(excess);
  failed_ = true;
  return false;
}

int Transfer::CloseSocketCallback(void* self, curl_socket_t socket) {
  // libcurl tells a connection that closed inside the status line no differently from one that never replied.
  auto& transfer = *static_cast<Transfer*>(self);
  if (!transfer.head_.Begun()) transfer.heard_ = HasReceivedData(socket);
  return close(socket);
}

void Transfer::OnEnd(CURLcode result) {
  const auto location = head_.RedirectsTo();
  if (head_.Complete() && location && !failed_) return Follow(*location);
  if (!head_.Complete() && !failed_ && IsOfTooLongALine(result)) {
    Refuse("a line of its headers is longer than " + std::to_string(Limits::kHeadLine >> 10) + " KiB");
  }
  closed_before_reply_ = IsClosed(result) && !head_.Begun() && !heard_;
  why_ = FailureOf(result, easy_.get());
  ended_ = true;
}

void Transfer::Follow(const std::string& location) {
  const int status = head_.Status();
  const auto next = Redirected(request_.destination, location);
  head_ = ReplyHead();
  if (next && ++redirects_ > limits_.redirects) {
    Refuse("it leads on to another address more than " + std::to_string(limits_.redirects) + " times");
  }
  ended_ = !next || failed_;
  if (ended_) return;

  const bool asks_anew = status == 303 || ((status == 301 || status == 302) && request_.verb == "POST");
  if (asks_anew && request_.verb != "HEAD") {
    request_.verb = "GET";
    request_.body.clear();
    request_.headers.clear();
  }
  if (next->origin != request_.destination.origin) {
    request_.user.clear();  // meant for the first server alone
    request_.password.clear();
  }
  request_.destination = *next;
  Start();
}

bool Transfer::Sent() const {
  const bool is_whole = !stopped_ && !failed_;
  if (reading_ == Reading::Whole && !is_whole) return false;
  return head_.Complete() || closed_before_reply_;
}

std::size_t Transfer::TakeBody(char* buffer, std::size_t capacity) {
  const std::size_t count = body_.Take(buffer, capacity);
  if (paused_ && !ended_ && body_.Size() <= kMostUnread / 2) {
    paused_ = false;
    multi_.Resume(easy_.get());
  }
  return count;
}

void Transfer::Stop() {
  if (ended_) return;
  multi_.Stop(easy_.get());
  ended_ = true;
  stopped_ = true;
}

void Transfer::BeginWait() {
  OnActivity();
  if (waits_++ == 0) wait_began_ = last_activity_;
}

void Transfer::EndWait() {
  if (--waits_ == 0) waited_ += now_() - wait_began_;
}

void Transfer::GiveUp() {
  if (TimeLeft() <= Clock::duration::zero()) Refuse("it took more than " + InWords(WholeTime()));
  failed_ = true;
  why_ = host::WinInetApi::Failure::TimedOut;
  Stop();
}

Transfer::Clock::duration Transfer::Patience() const {
  return std::min(last_activity_ + StepTime() - now_(), TimeLeft());
}

Transfer::Clock::duration Transfer::LeastPatience() const {
  const host::HttpTimeouts& timeouts = request_.timeouts;
  return std::min<Clock::duration>(std::min({timeouts.connect, timeouts.send, timeouts.receive}), TimeLeft());
}

Transfer::Clock::duration Transfer::TimeLeft() const {
  return WholeTime() - waited_ - (now_() - wait_began_);
}

std::chrono::milliseconds Transfer::WholeTime() const {
  const host::HttpTimeouts& timeouts = request_.timeouts;
  return std::max({limits_.time, timeouts.connect, timeouts.send, timeouts.receive});
}

std::chrono::milliseconds Transfer::StepTime() const {
  curl_off_t connected = 0;  // microseconds that it took
  curl_off_t sent = 0;       // of the body
  curl_easy_getinfo(easy_.get(), CURLINFO_PRETRANSFER_TIME_T, &connected);
  curl_easy_getinfo(easy_.get(), CURLINFO_SIZE_UPLOAD_T, &sent);
  if (connected == 0) return request_.timeouts.connect;
  const bool sending = static_cast<std::size_t>(sent) < request_.body.size();
  return sending ? request_.timeouts.send : request_.timeouts.receive;
}

}  // namespace mirelo::curl
