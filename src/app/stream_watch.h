#pragma once

#include <chrono>
#include <cstddef>
#include <set>
#include <span>
#include <string>

#include "automation/event.h"
#include "host/message_loop.h"

namespace mirelo {
class LinuxHost;
}

namespace mirelo::app {

// Listens beside a stream for what else than QuoteTracker may answer at its port, and says so within seconds:
// QuoteTracker greets whoever calls it, at once. What stays silent is asked once more, over HTTP; where that
// is hung up, by whoever ends the stream, nothing is said of it.
class StreamWatch {
 public:
  // How long a greeting may take.
  static constexpr std::chrono::seconds kPatience{3};

  // Begins to listen. The host must outlive it, with a live facade. `given_here` are the keys of settings
  // that hold for this process alone.
  explicit StreamWatch(LinuxHost& host, std::set<std::string> given_here = {});
  ~StreamWatch();
  StreamWatch(const StreamWatch&) = delete;
  StreamWatch& operator=(const StreamWatch&) = delete;

  // Whether something else was found there for certain, which has been told: there will be no quotes.
  bool HasFoundAnother() const { return found_another_; }

  // A sentence or two for a person, each once.
  Event<const std::string&> Told;

 private:
  void OnConnected();
  void OnReceived(std::span<const std::uint8_t> bytes);
  void OnDropped();
  void OnSilence();
  void TellAnother(const std::string& what);
  void Tell(const std::string& text);
  std::string Place();
  std::string ReplyOverHttp();

  LinuxHost& machine_;
  const std::set<std::string> given_here_;
  std::string host_;
  std::string port_;
  std::string greeting_;  // as far as it has come
  bool connected_ = false;
  bool greeted_ = false;
  bool found_another_ = false;
  bool hung_up_ = false;  // while it asked over HTTP
  std::set<std::string> told_;
  host::MessageLoop::Token patience_ = 0;
  Event<>::Cookie on_connected_;
  Event<std::span<const std::uint8_t>>::Cookie on_received_;
  Event<const std::string&>::Cookie on_dropped_;
  Event<>::Cookie on_hang_up_;
};

}  // namespace mirelo::app
