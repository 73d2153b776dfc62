#pragma once

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "app/interrupt.h"
#include "core/cMirelo.h"
#include "host/documents.h"
#include "host/host.h"
#include "linux/linux_host.h"
#include "wire/asked_server.h"
#include "wire/mended_replies.h"

namespace mirelo::app {

struct GlobalOptions;

// What a command needs around it: this machine installed as the host, one live facade, Ctrl-C when it is
// wanted.
class Session {
 public:
  explicit Session(const GlobalOptions& options);

  LinuxHost& host() { return host_; }
  // The part of the host's HTTP client that mends replies to requests for quotes.
  wire::MendedReplies& replies();
  // What became of the last request over HTTP.
  const wire::AskedServer& asked();
  // The keys of those settings of the section "Settings" that were given to this command and hold for it
  // alone.
  std::set<std::string> given_here;
  // The document that the settings dialog is shown for, so that it can be asked what Go would lose of it;
  // null for one that is not kept.
  host::Document* document = nullptr;
  // Where nobody can be asked: whether Go is to be pressed whatever it costs (--yes), and whether it was not
  // pressed because of its costs, which were told then.
  bool accepts_costs = false;
  bool refused_costs = false;
  // The spreadsheet program, and the files that it keeps.
  host::Documents& documents() { return *documents_; }
  // Made when first asked for.
  cMirelo& facade();
  // From the first call on, Ctrl-C is a request that this object tells of; before, it ends the program as
  // usual.
  Interrupt& interrupt();

 private:
  bool AcceptsCosts(const std::vector<std::string>& costs);

  bool shows_windows_;
  wire::MendedReplies* replies_ = nullptr;  // the host's, as soon as it is made
  wire::AskedServer* asked_ = nullptr;      // the same
  LinuxHost host_;
  host::HostScope scope_{host_};
  std::unique_ptr<host::Documents> documents_;
  std::unique_ptr<Interrupt> interrupt_;
  std::unique_ptr<cMirelo> facade_;
};

}  // namespace mirelo::app
