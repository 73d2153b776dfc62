#include "adapters/workbook/files.h"

#include <string>
#include <utility>
#include <vector>

#include "adapters/workbook/file_hold.h"
#include "adapters/workbook/file_stamp.h"
#include "adapters/workbook/saving_copy.h"
#include "adapters/workbook/spreadsheet.h"

namespace mirelo::workbook {

namespace fs = std::filesystem;

namespace {

class FileDocument : public host::Document {
 public:
  // `stamp` is that of the file before it was read, or of none.
  FileDocument(Spreadsheet spreadsheet, fs::path file, const FileStamp& stamp)
      : spreadsheet_(std::move(spreadsheet)), file_(std::move(file)), stamp_(stamp) {}

  std::shared_ptr<host::excel::Application> Application() const override {
    return spreadsheet_.Application();
  }
  std::vector<std::string> NewLosses() override { return spreadsheet_.NewLosses(); }
  std::vector<std::string> WorkLostByChange(const std::string& sheet) override {
    return spreadsheet_.WorkLostByChange(sheet);
  }

  void Save(const fs::path& file, const Tell& tell) override {
    IsSavedIn(file, spreadsheet_.Save(file, tell, StampKnownOf(file)));
  }

  std::unique_ptr<host::Saving> SaveBeside(host::MessageLoop& loop, const fs::path& file, Tell tell,
                                           Done done) override {
    const auto end = [this, file, done = std::move(done)](const SavingCopy::End& end) {
      if (end.stamp.IsOfAFile()) IsSavedIn(file, end.stamp);
      done(end.failure);
    };
    return SavingCopy::Begin(loop, spreadsheet_, {file, StampKnownOf(file)}, std::move(tell), end);
  }

 private:
  FileStamp StampKnownOf(const fs::path& file) const {
    return fs::absolute(file) == file_ ? stamp_ : FileStamp();
  }
  void IsSavedIn(const fs::path& file, const FileStamp& stamp) {
    stamp_ = stamp;
    file_ = fs::absolute(file);
  }

  Spreadsheet spreadsheet_;
  fs::path file_;
  FileStamp stamp_;  // of the file as it was read or saved here
};

class Held : public host::DocumentHold {
 public:
  explicit Held(const fs::path& file) : hold_(file) {}
  bool IsLocked() const override { return hold_.IsLocked(); }

 private:
  FileHold hold_;
};

}  // namespace

std::unique_ptr<host::Document> Files::New() {
  return std::make_unique<FileDocument>(Spreadsheet::New(), fs::path(), FileStamp());
}

// What is saved there while it is read is not what was read, so the stamp is taken before.
std::unique_ptr<host::Document> Files::Open(const fs::path& file) {
  const FileStamp stamp(file);
  return std::make_unique<FileDocument>(Spreadsheet::Open(file), fs::absolute(file), stamp);
}

std::unique_ptr<host::DocumentHold> Files::Hold(const fs::path& file) { return std::make_unique<Held>(file); }

void Files::RequireSavable(const fs::path& file) { Spreadsheet::RequireSavable(file); }

}  // namespace mirelo::workbook
