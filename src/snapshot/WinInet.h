#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "automation/event.h"
#include "automation/variant.h"

namespace mirelo {

// One HTTP transfer: set the properties, call Execute once, read Response. It works synchronously on the
// caller's thread through the host's internet port, and lets the host handle its pending events at each
// change of state and behind each chunk of the body. Other handlers, those of the caller included, may run
// there, and also inside a call of the port that waits for the server. A handler may call Cancel: it ends no
// wait, but is seen at the next check.
//
// A transfer that fails raises nothing: SuccessDone stays false and the last state tells why. What goes wrong
// otherwise (an overflow, a handler's error) is raised by every member as error 0x80040064, "WinInet
// component failure", with the member's dotted name ("Mirelo.WinInet.Execute") as source.
class WinInet : public Object {
 public:
  std::string_view TypeName() const override { return "WinInet"; }

  // The states that OnStateChanged reports. 10 is reserved. The good path is 1, 3, 6, 7, 9, 11.
  enum State : std::int32_t {
    kOpened = 1,
    kOpenFailed = 2,
    kConnected = 3,
    kConnectFailed = 4,
    kOpenRequestFailed = 5,
    kRequestOpened = 6,
    kRequestSent = 7,
    kSendFailed = 8,
    kReadingBody = 9,
    kFinished = 11,
    kCancelled = 12,
  };

  // After each chunk that was read, the last one of zero bytes included: seconds since the reading began, the
  // content length that the server announced (0 when none) and the bytes read so far.
  Event<float, std::int32_t, std::int32_t> OnProgress;
  // At each change of state: the new State.
  Event<std::int32_t> OnStateChanged;

  // Seconds for each step of the transfer; below 1 stands for 300. Execute raises when the milliseconds
  // overflow, which is above 2147483.
  std::int32_t TimeoutSec() const;
  void TimeoutSec(std::int32_t value);

  // Ends a running transfer at its next check. A call before Execute has no effect: Execute forgets it.
  void Cancel();

  // Runs the transfer. Any reply counts as success, whatever its HTTP status.
  void Execute();

  // True after a complete read.
  bool SuccessDone() const;
  void SuccessDone(bool value);

  // The reply's body, its bytes taken as text of the ANSI code page. Empty unless SuccessDone is true.
  std::string Response() const;
  void Response(std::string value);
  // As Response, which is empty from now on.
  std::string TakeResponse();

  // The reply's content type; keeps its earlier value when the reply has none.
  std::string ContentType() const;
  void ContentType(std::string value);

  // The request's body, sent as application/x-www-form-urlencoded; empty sends none.
  std::string PostQuery() const;
  void PostQuery(std::string value);

  // Kept only; never sent.
  std::string AcceptTypes() const;
  void AcceptTypes(std::string value);

  std::string Referer() const;
  void Referer(std::string value);

  // Path and query. Execute replaces it by its canonical form.
  std::string Resource() const;
  void Resource(std::string value);

  // The verb. Execute overwrites it with the one that the request was sent with.
  std::string Method() const;
  void Method(std::string value);

  std::string Password() const;
  void Password(std::string value);

  std::string UserName() const;
  void UserName(std::string value);

  // The server's port in 16 bits, so that 32768 to 65535 are negative; 0 selects 80.
  std::int16_t Port() const;
  void Port(std::int16_t value);

  // The server's name or dotted address.
  std::string HostName() const;
  void HostName(std::string value);

  // The user agent; no User-Agent is sent while it is empty.
  std::string AgentName() const;
  void AgentName(std::string value);

 private:
  using Handle = std::uint32_t;

  // The steps of Execute in their order. False from a step means that the transfer ended there: its last
  // state has been reported and its handles are closed.
  bool OpenInternet();
  bool ConnectToServer();
  bool OpenRequest();
  bool SendRequest();
  bool ReadHeaders();
  bool ReadBody();

  void SetTimeouts();
  // Ends the transfer in this state, for a step whose call failed. Always false, so that the step can return
  // it.
  bool Fail(State state);
  // Whether Cancel was called; the transfer is ended then.
  bool EndIfCancelled();

  void CloseHandles();
  void ChangeStatus(std::int32_t state);

  std::string agent_name_;
  std::string host_name_;
  std::int16_t port_ = 0;
  std::string user_name_;
  std::string password_;
  std::string method_;
  std::string resource_;
  std::string referer_;
  std::string accept_types_;
  std::string post_query_;
  std::string content_type_;
  std::string response_;
  std::int32_t state_ = 0;
  bool success_done_ = false;
  // Not reset when they are closed: a later transfer on this object that fails early closes them again.
  Handle internet_ = 0;
  Handle connection_ = 0;
  Handle request_ = 0;
  std::int32_t content_length_ = 0;
  std::int32_t bytes_read_ = 0;
  bool cancelled_ = false;
  std::int32_t timeout_ms_ = 0;
  std::int32_t timeout_sec_ = 0;
};

}  // namespace mirelo
