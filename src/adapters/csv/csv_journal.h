#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/proc/descriptor.h"
#include "host/journal.h"

namespace mirelo::csv {

// A journal of comma-separated values (csv_text.h) under a line of column names. Rows are appended by whole
// lines; a line that was cut off by an end of the process or the machine is taken away when the file is
// opened again. The file is this process's alone as long as it is open (flock), where its file system knows
// locks.
class CsvJournal final : public host::Journal {
 public:
  // The name of the first column, in front of `columns`.
  static constexpr std::string_view kNumber = "Number";

  // Raises host::JournalRefused for a file with another first line, for one whose last line is not numbered,
  // for what is no regular file, and while another process appends to it.
  CsvJournal(std::filesystem::path file, const std::vector<host::DataColumn>& columns);
  ~CsvJournal() override;
  CsvJournal(const CsvJournal&) = delete;
  CsvJournal& operator=(const CsvJournal&) = delete;

  void Append(std::span<const host::DataRow> rows) override;
  void Settle() noexcept override;
  std::string Mended() const override { return mended_; }

 private:
  void Lock() const;
  void Begin(const std::string& header);
  void GoOn();
  void CheckThatItIsStillThere() const;
  std::int64_t Size() const;
  std::string Read(std::int64_t from, std::size_t count) const;
  std::int64_t EndOfLastLine(std::int64_t size) const;
  std::int64_t BeginOfLineThatEndsAt(std::int64_t end) const;
  void Truncate(std::int64_t size) const;
  void Write(std::string_view text, std::int64_t size_before) const;
  [[noreturn]] void Refuse(const std::string& why) const;
  [[noreturn]] void Fail(int reason) const;

  std::filesystem::path path_;
  proc::Descriptor file_;
  std::int64_t number_ = 0;  // of the last row
  std::string mended_;
};

}  // namespace mirelo::csv
