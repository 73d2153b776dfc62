#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "app/child_process.h"

namespace mirelo::testing {

// The stand-in for QuoteTracker as a process that can be ended and started again at the ports that it had.
class TrackerProcess {
 public:
  // Nothing is started yet.
  explicit TrackerProcess(std::string address = "127.0.0.1") : address_(std::move(address)) {}

  // Returns when it serves. `more` are further arguments of the program.
  void Start(const std::vector<std::string>& more = {});
  // In order.
  void End() { process_.reset(); }
  // On the spot, wherever it is.
  void Kill();
  void Stall();
  void GoOn();

  int HttpPort() const { return http_port_; }
  int StreamPort() const { return stream_port_; }

 private:
  int Number(const std::string& head);

  std::string address_;
  std::unique_ptr<app::ChildProcess> process_;
  int http_port_ = 0;
  int stream_port_ = 0;
};

}  // namespace mirelo::testing
