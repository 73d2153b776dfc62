#pragma once

#include <chrono>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "automation/event.h"
#include "host/documents.h"
#include "host/log.h"
#include "host/message_loop.h"

namespace mirelo::app {

// Keeps a workbook in its file while somebody works on it: saves at intervals and at the end. Where that
// cannot be done it says so and goes on. A file that another program has changed meanwhile is left to it:
// from then on the workbook is saved beside it, under a name that was free.
class WorkbookKeeper {
 public:
  enum class Manner {
    kBeside,   // the work goes on meanwhile, wherever the document can be saved so
    kInPlace,  // nothing else runs meanwhile
  };

  // `before_saving` is called before each save, `tell_loss` with what host::Document::Save has to tell. All
  // must outlive this.
  WorkbookKeeper(host::MessageLoop& loop, host::Document& document, const std::filesystem::path& file,
                 std::function<void()> before_saving, host::Document::Tell tell_loss,
                 Manner manner = Manner::kBeside);
  // Breaks off what is being saved.
  ~WorkbookKeeper();
  WorkbookKeeper(const WorkbookKeeper&) = delete;
  WorkbookKeeper& operator=(const WorkbookKeeper&) = delete;

  // Saves before any quote has come, and waits for that, so that what keeps it from saving is told at once.
  void SaveAtStart() { SaveAndWait(); }

  // Saves every `interval` from now on; less often where nothing else runs for more than a twentieth of it. A
  // save that falls due while one is under way follows it.
  void SaveAtIntervals(std::chrono::milliseconds interval);

  // Saves now, between two intervals, because somebody wishes it.
  void SaveNow();

  // Saves for the last time, and waits for that in the loop. A workbook that its file cannot take is saved
  // beside it as well. The result is the file that holds it; empty when it could not be saved at all.
  std::filesystem::path SaveAtEnd();

  bool IsSaving() const { return saving_ != nullptr; }

  // "saved 14:05:12 (12.3 KB)", "not saved yet", "not saved: ..."; with ", saving since 14:05:42" where it
  // is.
  std::string State() const;

  // A line for a person: that it could not be saved, that it can be again, and that the last save takes its
  // time. What a handler raises is dropped; saving goes on.
  Event<const std::string&> Status;
  // For the log: that a save begins and what became of it, also where it is broken off, each with its number
  // from 1 on. A save that did not come to its file is a warning. A handler must raise nothing.
  Event<host::Log::Level, const std::string&> Noted;

 private:
  void AwaitInterval();
  void Save();
  void BeginToSave();
  void EndSaving(const std::exception_ptr& failure);
  bool SaveAndWait();
  void AwaitEndOfSaving();
  void TellOfWaiting(std::chrono::seconds pause);
  void LeaveTheFileToOthers();
  void Note(const std::string& line, host::Log::Level level = host::Log::Level::Info) const;
  void Tell(const std::string& line) const;

  host::MessageLoop& loop_;
  host::Document& document_;
  std::filesystem::path file_;
  std::function<void()> before_saving_;
  host::Document::Tell tell_loss_;
  Manner manner_;
  std::string state_ = "not saved yet";
  std::string saving_since_;
  std::string trouble_;
  std::unique_ptr<host::Saving> saving_;
  std::int64_t saves_ = 0;
  bool is_due_again_ = false;
  bool has_given_way_ = false;  // to another program, at the save before this one
  std::chrono::milliseconds interval_{};
  std::chrono::milliseconds stood_still_{};  // at the last save
  host::MessageLoop::Token timer_ = 0;
  host::MessageLoop::Token waiting_ = 0;
};

}  // namespace mirelo::app
