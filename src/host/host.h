#pragma once

namespace mirelo::host {

class Clock;
class CredentialVault;
class Desktop;
class MessageLoop;
class OperatingSystem;
class Registry;
class WinInetApi;
class WinsockLibrary;

// Everything that the system asks of the machine it runs on, as one object that hands out the ports. The
// ports live as long as the host. An implementation that lacks a port raises error 445 ("Object doesn't
// support this action") when it is asked for.
class Host {
 public:
  virtual ~Host() = default;

  virtual MessageLoop& loop() = 0;
  virtual Clock& clock() = 0;
  virtual Registry& registry() = 0;
  virtual WinInetApi& internet() = 0;
  virtual WinsockLibrary& sockets() = 0;
  virtual Desktop& desktop() = 0;
  virtual OperatingSystem& system() = 0;
  virtual CredentialVault& vault() = 0;

  // The host that is installed. Error 91 when none is.
  static Host& Current();
};

// Installs a host for the time of its own life and puts back the one before it. Public classes take no host
// as an argument, since automation clients create them without any: install one first.
class HostScope {
 public:
  explicit HostScope(Host& host);
  ~HostScope();
  HostScope(const HostScope&) = delete;
  HostScope& operator=(const HostScope&) = delete;

 private:
  Host* previous_;
};

}  // namespace mirelo::host
