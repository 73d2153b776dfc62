#include <cstdint>
#include <memory>
#include <string>

#include "automation/ansi.h"
#include "automation/text.h"
#include "core/known_setting.h"
#include "core/mGlobal.h"
#include "host/desktop.h"
#include "host/host.h"
#include "host/winsock_library.h"
#include "streaming/sinks.h"
#include "streaming/stream_internals.h"

namespace mirelo {

namespace {

std::int32_t IntegerIn(FacadeSetting setting) { return setting.In(mGlobal::AppSettings()).ToInt32(); }

std::string OnOneLine(std::string_view description) { return Replace(description, "\r\n", ""); }

void ShowError(const RuntimeError& error) {
  using host::Desktop;
  host::Host::Current().desktop().MessageBox(error.Description(), Desktop::kOkOnly, Desktop::kDefaultTitle);
}

}  // namespace

cQTStreaming::cQTStreaming() : internals_(std::make_unique<Internals>(*this)) {}

cQTStreaming::~cQTStreaming() = default;

cQTStreaming::Internals::Internals(cQTStreaming& owner)
    : stream(owner),
      m_oBytesTransferEvents(std::make_shared<BytesTransferSink>(owner)),
      m_oConnectionEvents(std::make_shared<ConnectionSink>(owner)),
      arrival(IntegerIn(FacadeSetting("DisplacementHour")), IntegerIn(FacadeSetting("DisplacementMinute"))) {}

cQTStreaming::Internals::~Internals() {
  m_oBytesTransferEvents->Detach();
  m_oConnectionEvents->Detach();
  try {
    if (ConnectionObject && (ConnectionObject->State() & host::SocketConnection::kConnected) != 0) {
      ConnectionObject->Disconnect();
    }
  } catch (...) {  // nobody is left to hear of it
  }
}

bool cQTStreaming::connect() {
  const std::int32_t port = IntegerIn(FacadeSetting("SocketPort"));
  const std::string host = FacadeSetting("Webaddress").In(mGlobal::AppSettings()).ToText();
  OnStatusText.Raise("Connection started...");
  try {
    internals_->OpenConnection(host + ":" + std::to_string(port));
  } catch (...) {
    const RuntimeError error = CurrentError();
    ShowError(error);
    OnStatusText.Raise(OnOneLine(error.Description()));
  }
  return false;
}

void cQTStreaming::Internals::OpenConnection(const std::string& host_and_port) {
  using Library = host::WinsockLibrary;
  Library& library = host::Host::Current().sockets();

  const auto address = library.CreateAddress(Library::kInet);
  address->SetText(host_and_port);
  const auto protocol = library.FindProtocol(Library::kInet, Library::kStream, Library::kTcp);
  ConnectionObject = library.CreateConnection(*protocol);
  BytesTransferCookie =
      ConnectionObject->Subscribe(m_oBytesTransferEvents, host::SocketConnection::kBytesTransfer);
  ConnectionEventsCookie =
      ConnectionObject->Subscribe(m_oConnectionEvents, host::SocketConnection::kConnectionEvents);

  stream.OnStatusText.Raise("Connecting to host...");
  LoginMessage.clear();
  ConnectionObject->Connect(*address);
}

Variant cQTStreaming::DisConnect() {
  StartStop_ = false;
  try {
    const auto& connection = internals_->ConnectionObject;
    if (connection && connection->State() != host::SocketConnection::kClosed) connection->Disconnect();
  } catch (...) {
    OnStatusText.Raise(OnOneLine(CurrentError().Description()));
  }
  return {};
}

void cQTStreaming::SendWinsock(const std::string& as_cmd) {
  try {
    const auto& connection = internals_->ConnectionObject;
    if (as_cmd.empty() || !connection) return;
    if (connection->State() == host::SocketConnection::kDropped) return;
    connection->Send(TextToAnsi(as_cmd));
  } catch (...) {
    ShowError(CurrentError());
  }
}

void cQTStreaming::Internals::m_oConnectionEvents_OnDisconnected() {
  ConnectionObject->Unsubscribe(ConnectionEventsCookie);
  ConnectionObject->Unsubscribe(BytesTransferCookie);
}

void cQTStreaming::DovantaFormatUserDate(std::string value) {
  DovantaFormatUserDate_ = std::move(value);
  internals_->stamps.Forget();
  internals_->arrival.Forget();
}

}  // namespace mirelo
