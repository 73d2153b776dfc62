#pragma once

#include <filesystem>

#include "app/options.h"
#include "app/session.h"
#include "app/stand_in.h"
#include "app/temporary_folder.h"
#include "person/dialog_wishes.h"

namespace mirelo::app {

// What a working day without QuoteTracker and without settings needs: the stand-in, and settings and
// credentials that are gone with this object. The user's own settings and credentials are not looked at.
class Demonstration {
 public:
  // Error 53 or 75 when the stand-in cannot be started.
  Demonstration();

  // The given options, with the demonstration's settings.
  GlobalOptions Options(GlobalOptions given) const;
  // Has the session use the stand-in.
  void Prepare(Session& session) const;
  // The same for one in another process: where its settings and credentials are to be, and the ports.
  const std::filesystem::path& Folder() const { return folder_.Path(); }
  int HttpPort() const { return stand_in_.HttpPort(); }
  int StreamPort() const { return stand_in_.StreamPort(); }
  // What is done in the settings dialog, where it isn't wished otherwise: six tickers are streamed, each with
  // a vertical table and charts.
  DialogWishes Wishes(DialogWishes given) const;

 private:
  TemporaryFolder folder_;
  StandIn stand_in_;
};

}  // namespace mirelo::app
