#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "host/excel/application.h"

namespace mirelo {
struct RegionalFormat;
}

namespace mirelo::workbook {

struct Book;
class FileStamp;
struct LoadLimits;
class Origin;
struct Sheet;

// The spreadsheet program in memory, with one workbook: new, or loaded from an .xlsx file. The objects that
// clients got from it stay good when it is gone.
class Spreadsheet {
 public:
  // A workbook with one empty sheet, "Sheet1". Typed text is read in the way of the region, which is
  // RegionalFormat::Standard() where none is given.
  static Spreadsheet New();
  static Spreadsheet New(const RegionalFormat& regional);

  // Loads a file. Error 53 when there is none, 75 when it cannot be read; 1004 when it is no .xlsx workbook,
  // is damaged or goes beyond the limits, with a text that names the file, the part of it and what is wrong
  // there.
  static Spreadsheet Open(const std::filesystem::path& file);
  static Spreadsheet Open(const std::filesystem::path& file, const RegionalFormat& regional);
  static Spreadsheet Open(const std::filesystem::path& file, const RegionalFormat& regional,
                          const LoadLimits& limits);

  std::shared_ptr<host::excel::Application> Application() const { return application_; }

  // What the loaded file holds that will be missing, or be something else, once the workbook as it is now is
  // saved over it: one sentence each, in the file's order, and each until it was saved so. Sheets that nobody
  // changed, and what belongs to no sheet, are saved as they stand in the file wherever that can be, so that
  // most losses come with the first change of their sheet. Empty for a new workbook. Reads the loaded file
  // again when it holds such things.
  std::vector<std::string> Losses() const;
  // The Losses() that NewLosses has not given before.
  std::vector<std::string> NewLosses();

  // What of a person's work saving would lose besides if the sheet of this name were changed (see
  // host::Document).
  std::vector<std::string> WorkLostByChange(const std::string& sheet) const;

  // Saves as .xlsx. The file changes at once and as a whole: until then, and whenever saving fails or is cut
  // off, an old file stays as it was. The new one keeps the old one's permissions, and a symbolic link goes
  // on pointing at it. Error 61 when the disk is full, or what was written does not read back; 70 when
  // another process holds the file (see FileHold), or another program has it open or locked; 75 when the file
  // or its folder cannot be written; 1004 when the workbook is more than a file can hold. Numbers keep 16
  // significant digits.
  //
  // `tell` is called with each of NewLosses before anything is written. A loaded file may be damaged in a way
  // that shows only when sheets are saved as they stand in it. Then all is written anew, now and from then
  // on: `tell` is called with a sentence that says so, and with what is lost by that, before the file
  // changes.
  using Tell = std::function<void(const std::string& sentence)>;
  void Save(const std::filesystem::path& file, const Tell& tell);

  // The same, and with `known`, the file is replaced only while that is its stamp, or when it is gone; one
  // that another program has changed, or made, raises host::ChangedMeanwhile. The result is the stamp of what
  // was saved, with which `placing` is called right before the file changes.
  using Placing = std::function<void(const FileStamp&)>;
  FileStamp Save(const std::filesystem::path& file, const Tell& tell, const std::optional<FileStamp>& known,
                 const Placing& placing = {});

  // Saves for callers that have asked for the losses before. Where all must be written anew this raises error
  // 1004, so that nothing is lost that nobody was told of; NewLosses has the losses then, and the next saving
  // goes on.
  void Save(const std::filesystem::path& file);

  // What is known of losses by now.
  struct LossNotes {
    std::set<std::string> told;      // that NewLosses has given
    std::set<std::string> suffered;  // that saving has made, so that they are not ahead any more
    bool keeps_no_sheet = false;     // since kept sheets did not read back as they stand in the loaded file
  };
  const LossNotes& Notes() const { return notes_; }

  // For a caller that has a forked copy of this process save it. TakeOver takes over what the copy has come
  // to know of losses, WasSavedIn the name of the file in which the copy has saved it.
  void TakeOver(const LossNotes& notes);
  void WasSavedIn(const std::filesystem::path& file);

  // Raises the error by which Save would refuse, as far as that can be told before there is anything to save.
  static void RequireSavable(const std::filesystem::path& file);

 private:
  explicit Spreadsheet(std::shared_ptr<Book> book, std::shared_ptr<Origin> origin = nullptr);

  using Kept = std::set<const Sheet*>;
  std::optional<Kept> KeptSheets() const;
  std::vector<std::string> Losses(const std::optional<Kept>& kept) const;
  std::vector<std::string> NewLosses(const std::optional<Kept>& kept);
  FileStamp Save(const std::filesystem::path& file, std::optional<Kept> kept, const Tell& tell_problem,
                 const std::optional<FileStamp>& known, const Placing& placing);
  // Writes the new file `fresh`, with the sheets of `kept` as they stand in the loaded file. Where these do
  // not read back, `kept` is emptied, all is written anew, and `tell_problem` is called.
  void Write(const std::filesystem::path& fresh, std::optional<Kept>& kept, const Tell& tell_problem);
  void KeepNoSheet();

  std::shared_ptr<Book> book_;
  std::shared_ptr<host::excel::Application> application_;
  std::shared_ptr<Origin> origin_;  // null when nothing of the loaded file would be lost
  LossNotes notes_;
};

}  // namespace mirelo::workbook
