#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>

#include "adapters/poll/descriptor.h"
#include "app/calc/office_process.h"
#include "app/temporary_folder.h"
#include "automation/event.h"
#include "host/message_loop.h"
#include "libreoffice/errand/errand.h"
#include "libreoffice/errand/lines.h"

namespace mirelo::app {

struct OfficePlace;

// An office that this program starts for an errand: with a profile in a temporary folder, with the extension,
// and with a line on which both speak. It is killed at destruction where it still runs then, and nothing of
// it is left.
class OwnOffice {
 public:
  struct Manner {
    bool headless = true;
    bool at_terminal = false;  // see OfficeStart
  };
  // The loop must outlive this.
  OwnOffice(host::MessageLoop& loop, const OfficePlace& place, Manner manner);
  ~OwnOffice();
  OwnOffice(const OwnOffice&) = delete;
  OwnOffice& operator=(const OwnOffice&) = delete;

  // A folder that is gone when this is.
  const std::filesystem::path& Folder() const { return folder_.Path(); }

  // Keeps a descriptor open in the office, under the same number. To be called before Run.
  void Keep(int descriptor) { start_.descriptors.push_back(descriptor); }
  // Has it run this errand, and returns when it has ended: its exit code. Raises error 53 when it cannot be
  // started.
  int Run(const libreoffice::Errand& errand);

  void Send(const std::string& line) const { line_.Send(line); }
  void Signal(int signal) { process_->Signal(signal); }
  // Kills it. `why` is for people, as "LibreOffice did not end".
  void GiveUp(const std::string& why);
  void GiveUpIn(std::chrono::milliseconds time, const std::string& why);

  // Whether it has said anything, so that it came as far as the extension.
  bool HasSpoken() const { return has_spoken_; }
  // Tells a person that it has ended too early, why, and what it printed.
  void TellOfEarlyEnd(int code, const std::string& what_is_lost) const;

  // A line that it said.
  Event<const std::string&> Said;

 private:
  void Start();
  void LookLater();
  void Look();
  void Listen();

  host::MessageLoop& loop_;
  TemporaryFolder folder_;
  poll::Descriptor ours_;
  poll::Descriptor theirs_;
  libreoffice::Lines line_;
  OfficeStart start_;
  std::unique_ptr<OfficeProcess> process_;
  bool has_spoken_ = false;
  std::optional<int> code_;
  std::string given_up_;
  host::MessageLoop::Token watch_ = 0;
  host::MessageLoop::Token looking_ = 0;
  host::MessageLoop::Token giving_up_ = 0;
};

}  // namespace mirelo::app
