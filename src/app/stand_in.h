#pragma once

#include <string>
#include <vector>

#include "app/child_process.h"

namespace mirelo::app {

// The QuoteTracker stand-in as a process of its own, on ports that the kernel chose. It ends with this
// object.
class StandIn {
 public:
  // Starts the program quotetracker that lies beside this one and waits until it listens. Error 53 when it
  // cannot be started, error 75 when it did not say its ports.
  explicit StandIn(const std::vector<std::string>& arguments = {});

  int HttpPort() const { return http_port_; }
  int StreamPort() const { return stream_port_; }

 private:
  ChildProcess process_;
  int http_port_ = 0;
  int stream_port_ = 0;
};

}  // namespace mirelo::app
