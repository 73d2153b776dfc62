#include "linux/linux_host.h"

#include <cstdint>
#include <utility>

#include "adapters/curl/curl_internet.h"
#include "adapters/headless/console_desktop.h"
#include "adapters/headless/linux_system.h"
#include "adapters/headless/system_clock.h"
#include "adapters/poll/poll_loop.h"
#include "adapters/poll/poll_winsock_library.h"
#include "adapters/sodium/sodium_vault.h"
#include "adapters/sqlite/sqlite_registry.h"
#include "wire/observed_sockets.h"
#include "wire/overriding_registry.h"

namespace mirelo {

namespace {

template <class Made, class Port, class... Arguments>
Port& MadeOnce(std::unique_ptr<Port>& port, Arguments&&... arguments) {
  if (!port) port = std::make_unique<Made>(std::forward<Arguments>(arguments)...);
  return *port;
}

}  // namespace

LinuxHost::LinuxHost(std::optional<std::filesystem::path> registry_file)
    : registry_file_(std::move(registry_file)) {}

LinuxHost::~LinuxHost() = default;

void LinuxHost::Override(const std::string& key, const std::string& text) {
  overriding().Override(key, text);
}

bool LinuxHost::IsOverridden(const std::string& key) { return overriding().IsOverridden(key); }

// The facade holds the port as a signed 16-bit integer, so that ports from 32768 on are negative in it.
void LinuxHost::OverrideHttpPort(int port) {
  Override("HTTPPort", std::to_string(static_cast<std::int16_t>(static_cast<std::uint16_t>(port))));
}

void LinuxHost::RunOn(std::unique_ptr<host::MessageLoop> loop) { loop_ = std::move(loop); }
void LinuxHost::ShowOn(std::unique_ptr<host::Desktop> desktop) { desktop_ = std::move(desktop); }
void LinuxHost::FetchThrough(Wrap wrap) { wraps_.push_back(std::move(wrap)); }

void LinuxHost::ShowThrough(WrapDesktop wrap) { wrap_desktop_ = std::move(wrap); }

void LinuxHost::KeepCredentialsIn(const std::filesystem::path& folder) {
  vault_ = std::make_unique<sodium::SodiumVault>(folder);
}

void LinuxHost::WaitForWholeReplies() {
  waits_for_whole_replies_ = true;
  if (internet_) internet_->WaitForWholeReplies();
}

void LinuxHost::HangUp() {
  HangsUp.Raise();
  if (internet_) internet_->StopTransfers();
}

host::MessageLoop& LinuxHost::loop() { return MadeOnce<poll::PollLoop>(loop_); }
host::Clock& LinuxHost::clock() { return MadeOnce<headless::SystemClock>(clock_); }
host::Registry& LinuxHost::registry() { return overriding(); }
host::WinInetApi& LinuxHost::internet() {
  host::WinInetApi& plain = plain_internet();
  for (const Wrap& wrap : std::exchange(wraps_, {})) {
    wrapped_internets_.push_back(wrap(wrapped_internets_.empty() ? plain : *wrapped_internets_.back()));
  }
  return wrapped_internets_.empty() ? plain : *wrapped_internets_.back();
}
host::WinsockLibrary& LinuxHost::sockets() { return observed_sockets(); }
host::Desktop& LinuxHost::desktop() {
  host::Desktop& plain = MadeOnce<headless::ConsoleDesktop>(desktop_);
  if (wrap_desktop_) wrapped_desktop_ = std::exchange(wrap_desktop_, nullptr)(plain);
  return wrapped_desktop_ ? *wrapped_desktop_ : plain;
}
host::OperatingSystem& LinuxHost::system() { return MadeOnce<headless::LinuxSystem>(system_); }
host::CredentialVault& LinuxHost::vault() { return MadeOnce<sodium::SodiumVault>(vault_); }

wire::ObservedSockets& LinuxHost::observed_sockets() {
  if (!sockets_) {
    auto& plain = MadeOnce<poll::PollWinsockLibrary>(plain_sockets_, loop());
    sockets_ = std::make_unique<wire::ObservedSockets>(plain, loop());
    sockets_->Dropped.Subscribe([this](const std::string& reason) { ConnectionDropped.Raise(reason); });
  }
  return *sockets_;
}

curl::CurlInternet& LinuxHost::plain_internet() {
  if (!internet_) {
    internet_ = std::make_unique<curl::CurlInternet>(loop());
    internet_->BrokenOff.Subscribe([this](const std::string& text) { ReplyBrokenOff.Raise(text); });
    if (waits_for_whole_replies_) internet_->WaitForWholeReplies();
  }
  return *internet_;
}

wire::OverridingRegistry& LinuxHost::overriding() {
  if (!registry_) {
    auto& stored = registry_file_ ? MadeOnce<sqlite::SqliteRegistry>(stored_, *registry_file_)
                                  : MadeOnce<sqlite::SqliteRegistry>(stored_);
    registry_ = std::make_unique<wire::OverridingRegistry>(stored);
  }
  return *registry_;
}

}  // namespace mirelo
