#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <string>

#include "automation/event.h"
#include "host/documents.h"
#include "host/message_loop.h"

namespace mirelo::app {

// Keeps a workbook in its file while somebody works on it: saves at intervals and at the end. Where that
// cannot be done it says so and goes on. A file that another program has changed meanwhile is left to it:
// from then on the workbook is saved beside it, under a name that was free.
class WorkbookKeeper {
 public:
  // `before_saving` is called before each save, `tell_loss` with what host::Document::Save has to tell. All
  // must outlive this.
  WorkbookKeeper(host::MessageLoop& loop, host::Document& document, const std::filesystem::path& file,
                 std::function<void()> before_saving, host::Document::Tell tell_loss);
  ~WorkbookKeeper();
  WorkbookKeeper(const WorkbookKeeper&) = delete;
  WorkbookKeeper& operator=(const WorkbookKeeper&) = delete;

  // Saves every `interval` from now on; less often where a save takes more than a twentieth of the interval,
  // since nothing else runs meanwhile.
  void SaveAtIntervals(std::chrono::milliseconds interval);

  // Saves for the last time. A workbook that its file cannot take is saved beside it as well. The result is
  // the file that holds it; empty when it could not be saved at all.
  std::filesystem::path SaveAtEnd();

  // "saved 14:05:12", "not saved yet", "not saved: ...".
  const std::string& State() const { return state_; }

  // A line for a person: that it could not be saved, and that it can be again. What a handler raises is
  // dropped; saving goes on.
  Event<const std::string&> Status;

 private:
  bool Save();
  std::string TroubleOfSaving();
  void SaveWhereNobodyElseDid();
  void LeaveTheFileToOthers();
  void Tell(const std::string& line) const;

  host::MessageLoop& loop_;
  host::Document& document_;
  std::filesystem::path file_;
  std::function<void()> before_saving_;
  host::Document::Tell tell_loss_;
  std::string state_ = "not saved yet";
  std::string trouble_;
  std::chrono::milliseconds worked_{};  // at the last save
  host::MessageLoop::Token timer_ = 0;
};

}  // namespace mirelo::app
