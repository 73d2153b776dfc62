#pragma once

#include <exception>
#include <filesystem>
#include <functional>
#include <memory>

#include "adapters/workbook/file_stamp.h"
#include "adapters/workbook/process_copy.h"
#include "adapters/workbook/spreadsheet.h"
#include "host/documents.h"
#include "host/message_loop.h"

namespace mirelo::workbook {

// Saves a spreadsheet while this process goes on: a forked copy of the process saves the workbook as it was
// at the fork, and tells what this process has to know.
//
// The copy saves as Spreadsheet::Save does, and lets the file writer run in a process of its own, too. It
// waits until each loss was told here, so that a person knows before the file changes. It shares this
// process's hold on the file, and ends when this process ends: so nobody else gets the hold while the copy
// could still put a file in place. Where it breaks off, what it left is removed from here. Where it does not
// even end (see ProcessCopy::Kill), it is left behind, and that is told.
class SavingCopy : public host::Saving {
 public:
  struct Place {
    std::filesystem::path file;
    FileStamp known;  // as Spreadsheet::Save takes it
  };
  struct End {
    std::exception_ptr failure;  // null when it was saved
    FileStamp stamp;             // of what was put in place, also where the copy broke off after that
  };

  // Null where no copy can be made. `done` is called at the end, from the loop; this may be destroyed in it.
  static std::unique_ptr<SavingCopy> Begin(host::MessageLoop& loop, Spreadsheet& spreadsheet, Place place,
                                           Spreadsheet::Tell tell, std::function<void(const End&)> done);
  ~SavingCopy() override;
  SavingCopy(const SavingCopy&) = delete;
  SavingCopy& operator=(const SavingCopy&) = delete;

 private:
  SavingCopy(host::MessageLoop& loop, Spreadsheet& spreadsheet, Place place, Spreadsheet::Tell tell,
             std::function<void(const End&)> done);

  void Hear();
  void Take(const ProcessCopy::Message& message);
  void Finish();
  void Report();
  bool BreakOff();

  host::MessageLoop& loop_;
  Spreadsheet& spreadsheet_;
  Place place_;
  Spreadsheet::Tell tell_;
  std::function<void(const End&)> done_;
  std::unique_ptr<ProcessCopy> copy_;  // null when it is over
  host::MessageLoop::Token watch_ = 0;
  Spreadsheet::LossNotes notes_;
  FileStamp placing_;  // of what was about to be put in place
  bool has_reported_ = false;
  bool is_left_behind_ = false;
  End end_;
};

}  // namespace mirelo::workbook
