#pragma once

#include <curl/curl.h>

#include <memory>
#include <unordered_map>

#include "host/message_loop.h"

namespace mirelo::curl {

// Runs libcurl's transfers on the message loop, any number side by side.
//
// libcurl's callbacks may not call back into the same multi handle, and a yield in one could end up there. So
// what they call only takes notes; all that may have consequences happens in Client::OnEnd, which is called
// from outside of libcurl.
class Multi {
 public:
  // Whoever started a transfer.
  class Client {
   public:
    // A socket of the transfer is ready: the other side has taken or sent something.
    virtual void OnActivity() = 0;
    // The transfer is over, and its handle may be cleaned up.
    virtual void OnEnd(CURLcode result) = 0;

   protected:
    ~Client() = default;
  };

  // The loop must outlive this.
  explicit Multi(host::MessageLoop& loop);
  // All transfers must have ended or been stopped before.
  ~Multi();
  Multi(const Multi&) = delete;
  Multi& operator=(const Multi&) = delete;

  // Starts the transfer that `easy` describes and takes it as far as it goes without waiting; it may be over
  // already on return; one that libcurl does not take ends with CURLE_FAILED_INIT. `easy` and `client` must
  // live until OnEnd or Stop. The handle's CURLOPT_PRIVATE is used.
  void Start(CURL* easy, Client& client);
  // Breaks a transfer off; OnEnd is not called.
  void Stop(CURL* easy);
  // Goes on with a transfer that its write callback paused; it may be over on return.
  void Resume(CURL* easy);

 private:
  struct Cleanup {
    void operator()(CURLM* multi) const { curl_multi_cleanup(multi); }
  };

  static int SocketCallback(CURL* easy, curl_socket_t socket, int what, void* self, void*);
  static int TimerCallback(CURLM*, long milliseconds, void* self);

  void WatchSocket(CURL* easy, curl_socket_t socket, int what);
  void SetTimer(long milliseconds);
  // Tells libcurl that a socket is ready, or that time has passed, and hands over what ended by that.
  void Act(curl_socket_t socket, int ready);
  void HandOverEnded();

  host::MessageLoop& loop_;
  std::unordered_map<curl_socket_t, host::MessageLoop::Token> watches_;
  host::MessageLoop::Token timer_ = 0;
  bool due_ = false;  // libcurl asked to be called at once
  std::unique_ptr<CURLM, Cleanup> multi_;
};

}  // namespace mirelo::curl
