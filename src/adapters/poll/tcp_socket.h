#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "adapters/poll/descriptor.h"
#include "adapters/poll/ipv4.h"

namespace mirelo::poll {

// A TCP socket that never blocks, with the errors of the system it is one of: 0 is none.
class TcpSocket {
 public:
  struct Passed {
    std::ptrdiff_t count;  // of bytes; -1 with an error
    int error;
  };

  TcpSocket() = default;  // none
  // Sends what it is given at once, and keeps urgent bytes in their place. Error 67 when no descriptor is
  // left.
  static TcpSocket Open();

  // For a loop to watch. -1: none
  int Number() const { return descriptor_.Number(); }
  void Close() { descriptor_.Close(); }

  // Why it cannot be connected, as far as that is known at once; otherwise it becomes ready for writing.
  int StartConnecting(Ipv4 ip, std::uint16_t port);
  // How connecting has ended.
  int TakeError();

  Passed Send(const char* bytes, std::size_t size);
  // A count of 0 is the end of what the peer sends.
  Passed Receive(char* bytes, std::size_t size);
  void EndSending();
  // After sending has failed: what the peer had sent is still received, and then an end.
  void EndAfterFailure();

  // Whether that is no failure: it is to be tried again when the socket is ready.
  static bool WouldBlock(int error);
  // What people are told of an error of connecting, sending or receiving.
  static std::string ReasonFor(int error);

 private:
  Descriptor descriptor_;
};

}  // namespace mirelo::poll
