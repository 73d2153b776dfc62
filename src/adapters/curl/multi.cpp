#include "adapters/curl/multi.h"

#include <new>
#include <utility>

namespace mirelo::curl {

namespace {

// How often in a row libcurl may ask to be called at once before the loop gets a turn in between.
constexpr int kMostRounds = 8;

// Once for the process, before the first handle is made.
bool GlobalInit() {
  static const bool done = curl_global_init(CURL_GLOBAL_ALL) == CURLE_OK;
  return done;
}

Multi::Client& ClientOf(CURL* easy) {
  void* client = nullptr;
  curl_easy_getinfo(easy, CURLINFO_PRIVATE, &client);
  return *static_cast<Multi::Client*>(client);
}

}  // namespace

Multi::Multi(host::MessageLoop& loop) : loop_(loop), multi_(GlobalInit() ? curl_multi_init() : nullptr) {
  if (multi_ == nullptr) throw std::bad_alloc();
  curl_multi_setopt(multi_.get(), CURLMOPT_SOCKETFUNCTION, SocketCallback);
  curl_multi_setopt(multi_.get(), CURLMOPT_SOCKETDATA, this);
  curl_multi_setopt(multi_.get(), CURLMOPT_TIMERFUNCTION, TimerCallback);
  curl_multi_setopt(multi_.get(), CURLMOPT_TIMERDATA, this);
}

Multi::~Multi() {
  multi_.reset();
  loop_.StopTimer(timer_);
  for (const auto& [socket, watch] : watches_) loop_.Unwatch(watch);
}

void Multi::Start(CURL* easy, Client& client) {
  curl_easy_setopt(easy, CURLOPT_PRIVATE, static_cast<void*>(&client));
  if (curl_multi_add_handle(multi_.get(), easy) != CURLM_OK) return client.OnEnd(CURLE_FAILED_INIT);
  Act(CURL_SOCKET_TIMEOUT, 0);
}

void Multi::Stop(CURL* easy) { curl_multi_remove_handle(multi_.get(), easy); }

void Multi::Resume(CURL* easy) {
  // What had come when the transfer was paused is handed over in here, and may be the end of it. Then libcurl
  // tells so here and nowhere else.
  if (const CURLcode result = curl_easy_pause(easy, CURLPAUSE_CONT); result != CURLE_OK) {
    Stop(easy);
    return ClientOf(easy).OnEnd(result);
  }
  Act(CURL_SOCKET_TIMEOUT, 0);
}

void Multi::Act(curl_socket_t socket, int ready) {
  int running = 0;
  due_ = false;
  curl_multi_socket_action(multi_.get(), socket, ready, &running);
  for (int round = 0; due_ && round < kMostRounds; ++round) {
    due_ = false;
    curl_multi_socket_action(multi_.get(), CURL_SOCKET_TIMEOUT, 0, &running);
  }
  if (due_) SetTimer(1);
  HandOverEnded();
}

void Multi::HandOverEnded() {
  int waiting = 0;
  while (const CURLMsg* message = curl_multi_info_read(multi_.get(), &waiting)) {
    if (message->msg != CURLMSG_DONE) continue;
    CURL* const easy = message->easy_handle;
    const CURLcode result = message->data.result;  // the message goes with the handle
    curl_multi_remove_handle(multi_.get(), easy);
    ClientOf(easy).OnEnd(result);
  }
}

int Multi::SocketCallback(CURL* easy, curl_socket_t socket, int what, void* self, void*) {
  try {
    static_cast<Multi*>(self)->WatchSocket(easy, socket, what);
    return 0;
  } catch (...) {
    return -1;  // libcurl is C: it fails its transfers then
  }
}

int Multi::TimerCallback(CURLM*, long milliseconds, void* self) {
  try {
    static_cast<Multi*>(self)->SetTimer(milliseconds);
    return 0;
  } catch (...) {
    return -1;
  }
}

void Multi::WatchSocket(CURL* easy, curl_socket_t socket, int what) {
  const auto known = watches_.find(socket);
  if (what == CURL_POLL_REMOVE) {
    if (known == watches_.end()) return;
    loop_.Unwatch(known->second);
    watches_.erase(known);
    return;
  }
  unsigned interest = 0;
  if (what & CURL_POLL_IN) interest |= host::MessageLoop::kRead;
  if (what & CURL_POLL_OUT) interest |= host::MessageLoop::kWrite;
  if (known != watches_.end()) return loop_.Rewatch(known->second, interest);
  Client& client = ClientOf(easy);
  watches_[socket] = loop_.Watch(socket, interest, [this, socket, &client](unsigned ready) {
    client.OnActivity();
    int bits = 0;
    if (ready & host::MessageLoop::kRead) bits |= CURL_CSELECT_IN;
    if (ready & host::MessageLoop::kWrite) bits |= CURL_CSELECT_OUT;
    Act(socket, bits);
  });
}

void Multi::SetTimer(long milliseconds) {
  loop_.StopTimer(std::exchange(timer_, 0));
  due_ = milliseconds == 0;
  if (milliseconds <= 0) return;
  timer_ = loop_.StartTimer(host::MessageLoop::Milliseconds(milliseconds), [this] {
    timer_ = 0;
    Act(CURL_SOCKET_TIMEOUT, 0);
  });
}

}  // namespace mirelo::curl
