// A file of quotes from anywhere, to which rows are to be appended: it is refused in words for people and
// left as it was, or its whole lines stay, a part of one goes and is told of, and rows go on behind them.
//
// An input is the file.

#include <sys/mman.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "adapters/csv/csv_journal.h"
#include "host/data_table.h"
#include "host/journal.h"

namespace {

using mirelo::csv::CsvJournal;
using mirelo::host::DataRow;

constexpr std::string_view kHeader = "Number,Ticker,Last\n";
// More rows than any file holds: a file that somebody has numbered so takes one more, and is refused then.
constexpr std::int64_t kMostRows = 1'000'000'000'000'000;

void Require(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "%s\n", what);
  std::abort();
}

// A file that lives in memory.
class MemoryFile {
 public:
  MemoryFile() : path_("/proc/self/fd/" + std::to_string(::memfd_create("journal", 0))) {}

  const std::string& Path() const { return path_; }
  void Fill(std::string_view bytes) const { std::ofstream(path_, std::ios::binary) << bytes; }
  std::string Bytes() const {
    std::ostringstream bytes;
    bytes << std::ifstream(path_, std::ios::binary).rdbuf();
    return bytes.str();
  }

 private:
  std::string path_;
};

// Appends a row. What the journal says that it has mended.
std::string AppendOne(const std::string& path) {
  CsvJournal journal(path, {{"Ticker"}, {"Last"}});
  const std::vector<DataRow> rows{{std::string("A"), 1.5}};
  journal.Append(rows);
  return journal.Mended();
}

// The number of the last line of what was in order; 0 where there is the header alone.
std::int64_t LastNumber(std::string_view lines) {
  lines.remove_suffix(1);
  const std::size_t begin = lines.rfind('\n');
  return begin == std::string_view::npos ? 0 : std::stoll(std::string(lines.substr(begin + 1)));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const MemoryFile file;
  const std::string found(reinterpret_cast<const char*>(data), size);
  file.Fill(found);
  std::string mended;
  try {
    mended = AppendOne(file.Path());
  } catch (const mirelo::host::JournalRefused& refusal) {
    Require(refusal.Number() == 75, "the error's number");
    Require(refusal.Description().starts_with("Quotes cannot be appended to " + file.Path() + ": it"),
            "words for people");
    Require(file.Bytes() == found, "what is refused is left alone");
    return 0;
  }
  const bool has_header = found.starts_with(kHeader);
  Require(has_header || kHeader.starts_with(found), "another first line is refused");
  const std::string whole = has_header ? found.substr(0, found.rfind('\n') + 1) : std::string(kHeader);
  Require(mended.empty() == (!has_header || whole.size() == found.size()), "a part of a line is told of");
  const std::int64_t last = LastNumber(whole);
  const std::string first_row = std::to_string(last + 1) + ",A,1.5\n";
  Require(file.Bytes() == whole + first_row, "lines stay, and a row follows");

  if (last == kMostRows) return 0;
  Require(AppendOne(file.Path()).empty(), "what was appended is in order");
  Require(file.Bytes() == whole + first_row + std::to_string(last + 2) + ",A,1.5\n", "another row follows");
  return 0;
}
