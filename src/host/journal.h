#pragma once

#include <span>
#include <string>

#include "automation/runtime_error.h"
#include "host/data_table.h"

namespace mirelo::host {

// A file of rows that only grows, in a format of other programs. It is opened by its adapter, which makes it
// where it is absent, sees that it is one, and mends what a process that was killed has left of it.
//
// Every row has a number in front, which rises with the order in which rows were appended.
class Journal {
 public:
  virtual ~Journal() = default;

  // Appends the rows, all or none. From its return on they are there whatever becomes of this process. Error
  // 61 when the disk is full, 70 while another process keeps the file locked, 75 for anything else that the
  // file system refuses. The journal is of no use after an error; another one may be opened.
  virtual void Append(std::span<const DataRow> rows) = 0;

  // Flushes what was appended to the disk. Failures are not reported: the rows have left this process, and
  // the system writes them anyway.
  virtual void Settle() noexcept = 0;

  // What was mended when it was opened, a sentence for a person; empty where there was nothing to do.
  virtual std::string Mended() const { return {}; }
};

// Raised where a file is none that rows may be appended to, so that trying again would not help: it is
// something else, of another version, another process's alone, or its name leads nowhere.
class JournalRefused : public RuntimeError {
 public:
  using RuntimeError::RuntimeError;
};

// Error 75 of the adapter `source`, "Quotes cannot be appended to FILE: " and why.
JournalRefused NoJournal(const std::string& file, const std::string& why, const char* source);

// Error 75 of the adapter `source`, "FILE was taken away or replaced while it was in use".
RuntimeError JournalReplaced(const std::string& file, const char* source);

// Raises what the file system refuses, by its errno: JournalRefused where the name is at fault, otherwise
// error 61 or 75. The text is "FILE cannot be written: " and the reason.
[[noreturn]] void RaiseJournalFailure(const std::string& file, int reason);

}  // namespace mirelo::host
