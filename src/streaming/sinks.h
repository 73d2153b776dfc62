#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "host/winsock_library.h"
#include "streaming/stream_internals.h"

namespace mirelo {

// The sinks that a connection calls. The connection may hold a sink longer than the stream lives, so the
// stream detaches itself from it when it goes; and a handler may let go of the stream, so each event holds
// the stream until it is done.
class cQTStreaming::BytesTransferSink : public host::BytesTransferEvents {
 public:
  explicit BytesTransferSink(cQTStreaming& stream) : stream_(&stream) {}
  void Detach() { stream_ = nullptr; }

  void OnBytesReceived(host::SocketConnection&, std::span<const std::uint8_t> bytes) override {
    if (stream_ == nullptr) return;
    const auto held = stream_->weak_from_this().lock();
    stream_->internals_->m_oBytesTransferEvents_OnBytesReceived(bytes);
  }

 private:
  cQTStreaming* stream_;
};

class cQTStreaming::ConnectionSink : public host::ConnectionEvents {
 public:
  explicit ConnectionSink(cQTStreaming& stream) : stream_(&stream) {}
  void Detach() { stream_ = nullptr; }

  void OnDisconnected(host::SocketConnection&, const std::string&) override {
    if (stream_ == nullptr) return;
    const auto held = stream_->weak_from_this().lock();
    stream_->internals_->m_oConnectionEvents_OnDisconnected();
  }

 private:
  cQTStreaming* stream_;
};

}  // namespace mirelo
