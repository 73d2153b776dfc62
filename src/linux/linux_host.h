#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "automation/event.h"
#include "host/host.h"

namespace mirelo::curl {
class CurlInternet;
}

namespace mirelo::wire {
class ObservedSockets;
class OverridingRegistry;
}  // namespace mirelo::wire

namespace mirelo {

// The machine as the program uses it: poll(2), libcurl, a registry file, the terminal. A port is made when it
// is first asked for, so that a command which only prints help opens nothing.
class LinuxHost : public host::Host {
 public:
  // `registry_file` replaces the user's own registry when it is given.
  explicit LinuxHost(std::optional<std::filesystem::path> registry_file = std::nullopt);
  ~LinuxHost() override;

  // Gives a setting another text for the life of this host; the stored one stays as it is.
  void Override(const std::string& key, const std::string& text);

  // Whether one was given.
  bool IsOverridden(const std::string& key);

  // The same for the port of the HTTP interface, 1 to 65535.
  void OverrideHttpPort(int port);

  // These change the ports, and are to be called before a port is asked for. RunOn puts another loop in place
  // of poll(2), ShowOn another desktop in place of the terminal. FetchThrough wraps the HTTP client; called
  // again, it wraps what the calls before have made.
  using Wrap = std::function<std::unique_ptr<host::WinInetApi>(host::WinInetApi& inner)>;
  void RunOn(std::unique_ptr<host::MessageLoop> loop);
  void ShowOn(std::unique_ptr<host::Desktop> desktop);
  void FetchThrough(Wrap wrap);
  // Puts a wrapper around the desktop. It is made when the desktop is first asked for, so it wraps the one of
  // ShowOn whichever is called first.
  using WrapDesktop = std::function<std::unique_ptr<host::Desktop>(host::Desktop& inner)>;
  void ShowThrough(WrapDesktop wrap);
  // Keeps credentials in this folder in place of the user's own.
  void KeepCredentialsIn(const std::filesystem::path& folder);

  // From now on an HTTP reply is handed over only when all of it has come. One that is broken off before its
  // end fails, where it would otherwise pass for a short one.
  void WaitForWholeReplies();
  // Raised when an HTTP reply was broken off because it is larger, or takes longer, than any in order. The
  // text is for people.
  Event<const std::string&> ReplyBrokenOff;

  // Breaks off HTTP transfers that are under way, so that calls which wait for them return.
  void HangUp();
  // Raised before that: who waits wants to know that nobody answers for another reason.
  Event<> HangsUp;

  // Raised for a connection that the peer has ended or refused, not for one that is ended here; and for one
  // that was given up, for one of the reasons that wire::AlignedConnection tells. The text is for people. A
  // handler raises nothing: the stream hears of it after all handlers.
  Event<const std::string&> ConnectionDropped;
  // What sockets() gives, for who looks at what passes through it.
  wire::ObservedSockets& observed_sockets();

  host::MessageLoop& loop() override;
  host::Clock& clock() override;
  host::Registry& registry() override;
  host::WinInetApi& internet() override;
  host::WinsockLibrary& sockets() override;
  host::Desktop& desktop() override;
  host::OperatingSystem& system() override;
  host::CredentialVault& vault() override;

 private:
  wire::OverridingRegistry& overriding();
  curl::CurlInternet& plain_internet();

  std::optional<std::filesystem::path> registry_file_;
  std::unique_ptr<host::MessageLoop> loop_;
  std::unique_ptr<host::Clock> clock_;
  std::unique_ptr<host::Registry> stored_;
  std::unique_ptr<wire::OverridingRegistry> registry_;
  std::unique_ptr<curl::CurlInternet> internet_;
  bool waits_for_whole_replies_ = false;
  std::vector<Wrap> wraps_;                                           // not yet made
  std::vector<std::unique_ptr<host::WinInetApi>> wrapped_internets_;  // each around the one before
  std::unique_ptr<host::WinsockLibrary> plain_sockets_;
  std::unique_ptr<wire::ObservedSockets> sockets_;
  std::unique_ptr<host::Desktop> desktop_;
  WrapDesktop wrap_desktop_;  // not yet made
  std::unique_ptr<host::Desktop> wrapped_desktop_;
  std::unique_ptr<host::OperatingSystem> system_;
  std::unique_ptr<host::CredentialVault> vault_;
};

}  // namespace mirelo
