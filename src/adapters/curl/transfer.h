#pragma once

#include <curl/curl.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "adapters/curl/body_buffer.h"
#include "adapters/curl/easy_handle.h"
#include "adapters/curl/limits.h"
#include "adapters/curl/multi.h"
#include "adapters/curl/redirect.h"
#include "adapters/curl/reply_head.h"
#include "host/http_timeouts.h"
#include "host/wininet_api.h"

namespace mirelo::curl {

// One request, all of it that is sent.
struct Request {
  Destination destination;
  std::string verb;
  std::optional<std::string> agent;
  std::string user;
  std::string password;
  std::string referrer;
  std::vector<std::string> headers;  // "name: value"
  std::string body;
  host::HttpTimeouts timeouts;
};

// When a reply may be read.
enum class Reading {
  AsItComes,  // a body that nobody reads is left with the server when some of it waits here
  Whole,      // all of it is taken first
};

// A request on its way and its reply as it arrives, over a connection of its own. It goes on whenever the
// loop runs.
class Transfer final : private Multi::Client {
 public:
  using Clock = std::chrono::steady_clock;

  using Now = std::function<Clock::time_point()>;

  // Sends the request, over HTTP/1.0. `multi` must outlive the transfer.
  Transfer(Multi& multi, Request request, Reading reading, const Limits& limits, Now now);
  ~Transfer();
  Transfer(const Transfer&) = delete;
  Transfer& operator=(const Transfer&) = delete;

  // Whether the waiting for the reply is over: it may be read, or there will be none.
  bool Settled() const { return ended_ || (head_.Complete() && reading_ == Reading::AsItComes); }
  // Whether there is a reply to read. It is an empty one if the connection closed before any of it came.
  bool Sent() const;
  const ReplyHead& Head() const { return head_; }
  // The verb as it was sent at last: a redirect may turn it into GET.
  const std::string& Verb() const { return request_.verb; }

  // Whether a read of the body need not wait: some of it is here, or no more will come.
  bool BodySettled() const { return ended_ || body_.Size() > 0; }
  std::size_t TakeBody(char* buffer, std::size_t capacity);

  // Breaks the transfer off, which has ended then.
  void Stop();

  // Called when somebody begins to wait for the transfer, and when they have ended. Only the time in between
  // counts against the timeouts: the other side is not to blame for the time before.
  void BeginWait();
  void EndWait();

  // These are for whoever waits.

  // How long the other side may still take to do something, or to come to the end, before it is given up.
  Clock::duration Patience() const;
  // The shortest time in which Patience can run out, whatever the transfer does meanwhile.
  Clock::duration LeastPatience() const;
  void OnActivity() override { last_activity_ = now_(); }
  // Breaks the transfer off because Patience has run out.
  void GiveUp();

  // Why there is no reply to read, when there is none.
  host::WinInetApi::Failure Why() const { return why_; }
  // Whether it was given up, or has overstepped a limit.
  bool Failed() const { return failed_; }
  // Which of the limits it has overstepped, for people; empty for none.
  const std::string& Excess() const { return excess_; }

 private:
  struct Cleanup {
    void operator()(curl_slist* list) const { curl_slist_free_all(list); }
  };

  static std::size_t HeaderCallback(char* bytes, std::size_t size, std::size_t count, void* self);
  static std::size_t WriteCallback(char* bytes, std::size_t size, std::size_t count, void* self);
  static int CloseSocketCallback(void* self, curl_socket_t socket);

  void Start();
  void DescribeRequest();
  void AddHeader(const std::string& line);

  // Whether libcurl is to go on after this line, or these bytes.
  bool OnHeaderLine(std::string_view line);
  bool OnBody(std::string_view bytes);

  bool RefuseBody();
  bool Refuse(std::string excess);

  void OnEnd(CURLcode result) override;
  void Follow(const std::string& location);
  std::chrono::milliseconds StepTime() const;
  std::chrono::milliseconds WholeTime() const;
  Clock::duration TimeLeft() const;

  Multi& multi_;
  Request request_;
  Reading reading_;
  Limits limits_;
  Now now_;
  int redirects_ = 0;

  EasyHandle easy_;
  std::unique_ptr<curl_slist, Cleanup> headers_;
  bool paused_ = false;
  bool heard_ = false;  // bytes of a reply had come when the connection was closed

  ReplyHead head_;
  BodyBuffer body_;
  std::uint64_t body_received_ = 0;
  bool ended_ = false;
  bool closed_before_reply_ = false;
  bool stopped_ = false;
  bool failed_ = false;
  std::string excess_;
  host::WinInetApi::Failure why_ = host::WinInetApi::Failure::NoReply;

  Clock::time_point last_activity_;
  int waits_ = 0;  // that go on, one inside the other
  Clock::time_point wait_began_;
  Clock::duration waited_{};  // before the one that goes on
};

}  // namespace mirelo::curl
