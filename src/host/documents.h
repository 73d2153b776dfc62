#pragma once

#include <exception>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "automation/runtime_error.h"

namespace mirelo::host {

namespace excel {
class Application;
}

class MessageLoop;

// A save that goes on beside the program. Destroyed before its end, it is broken off: the file is the old
// one, or the new one, whole in any case.
class Saving {
 public:
  virtual ~Saving() = default;
};

// A document of the spreadsheet program: one workbook, and the file where it is kept.
class Document {
 public:
  using Tell = std::function<void(const std::string& sentence)>;

  virtual ~Document() = default;

  // The spreadsheet program with this document as its active workbook. What was got from it stays good when
  // the document is gone.
  virtual std::shared_ptr<excel::Application> Application() const = 0;

  // What the document's file holds and saving the document as it is now would leave out or change: one
  // sentence for each such thing. What was given once is not given again.
  virtual std::vector<std::string> NewLosses() = 0;

  // What a person made and works with, such as formulas, that would be lost if this sheet were changed before
  // the document is saved: worth a question first. Settings and formats do not count, since most programs
  // leave some on every sheet. Asking does not take the sentences from NewLosses. Empty for a sheet that the
  // document does not have.
  virtual std::vector<std::string> WorkLostByChange(const std::string& /*sheet*/) { return {}; }

  // Saves it. The file changes at once and as a whole, or stays as it was. `tell` is called with each of
  // NewLosses, and with what saving itself loses, before the file changes.
  //
  // When `file` is the document's own: raises ChangedMeanwhile, and leaves the file as it is, if another
  // program has saved it since the document was opened or last saved. When it is another file: raises
  // ChangedMeanwhile if it exists; once saved, it is the document's own. Error 61 when the disk is full; 70
  // when somebody else holds the file; 75 when it cannot be written; 1004 when the document is more than a
  // file can hold.
  virtual void Save(const std::filesystem::path& file, const Tell& tell) = 0;

  // Begins to save it as Save does, and goes on beside the caller. What is saved is the document as it is
  // now, whatever becomes of it meanwhile. From the loop, `tell` is called as Save would, and at the end
  // `done`: with what Save would have raised, or with null. What `tell` raises breaks the save off, and comes
  // to `done`. Document and loop must outlive the result, and the document is not saved otherwise meanwhile.
  //
  // Null, and nothing has begun, where the machine cannot do that now: then Save will have to do.
  using Done = std::function<void(std::exception_ptr failure)>;
  virtual std::unique_ptr<Saving> SaveBeside(MessageLoop& loop, const std::filesystem::path& file, Tell tell,
                                             Done done) = 0;
};

// Error 70, raised by Save in place of writing over what another program has saved.
class ChangedMeanwhile : public RuntimeError {
 public:
  explicit ChangedMeanwhile(const RuntimeError& refusal) : RuntimeError(refusal) {}
};

// Raised where the file system refuses something: error 61 or 75, and what it is that a person has to mend.
class FileFailure : public RuntimeError {
 public:
  enum class Cause {
    kNoRoom,
    kSizeLimit,  // of files, in the shell
    kRights,     // of this user
    kReadOnly,   // the whole file system
    kNoFolder,   // where the file is to be
    kLinksInACircle,
    kNoRegularFile,  // a folder, a device or a pipe
    kLongName,
    kOther,
  };

  FileFailure(const RuntimeError& failure, Cause cause) : RuntimeError(failure), cause_(cause) {}
  Cause Why() const { return cause_; }

 private:
  Cause cause_;
};

// The right to save a file. Others are refused it until this object is destroyed.
class DocumentHold {
 public:
  virtual ~DocumentHold() = default;

  // Whether others are refused indeed: not where the file system knows no locks.
  virtual bool IsLocked() const = 0;
};

// Where documents come from.
class Documents {
 public:
  virtual ~Documents() = default;

  // An empty one, which no file keeps yet.
  virtual std::unique_ptr<Document> New() = 0;

  // The document of a file. Error 53 when there is none, 75 when it cannot be read; 1004 when it is no
  // workbook, is damaged or goes beyond what is taken, with a text that says so.
  virtual std::unique_ptr<Document> Open(const std::filesystem::path& file) = 0;

  // To be taken before the file is opened, by who will save it; it need not be there yet. Error 70 when
  // another process has it, with a text that names it where it is known; 75 when the file is none that could
  // be saved; 61 when the disk is full.
  virtual std::unique_ptr<DocumentHold> Hold(const std::filesystem::path& file) = 0;

  // Raises the error by which Save would refuse, as far as that can be told before there is anything to save.
  virtual void RequireSavable(const std::filesystem::path& file) = 0;
};

}  // namespace mirelo::host
