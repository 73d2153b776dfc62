#include "adapters/csv/csv_journal.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <utility>

#include "adapters/csv/csv_text.h"

namespace mirelo::csv {

namespace {

constexpr mode_t kMode = 0666;  // as far as the umask allows
constexpr std::int64_t kPiece = 4096;
// More rows than any file holds, and far enough below the greatest number to go on counting.
constexpr std::int64_t kMostRows = 1'000'000'000'000'000;
constexpr const char* kSource = "Mirelo.CsvJournal";

// Without waiting for somebody at the other end of a pipe, which is refused after this.
int Open(const std::filesystem::path& path) {
  return ::open(path.c_str(), O_RDWR | O_CREAT | O_APPEND | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, kMode);
}

std::string Header(const std::vector<host::DataColumn>& columns) {
  return std::string(CsvJournal::kNumber) + ',' + HeaderLine(columns);
}

}  // namespace

CsvJournal::CsvJournal(std::filesystem::path file, const std::vector<host::DataColumn>& columns)
    : path_(std::move(file)), file_(Open(path_)) {
  if (!file_.IsOpen()) Fail(errno);
  struct stat status {};
  if (::fstat(file_.number(), &status) != 0) Fail(errno);
  if (!S_ISREG(status.st_mode)) Refuse("it is no regular file");
  Lock();
  Begin(Header(columns));
  GoOn();
}

CsvJournal::~CsvJournal() = default;

void CsvJournal::Append(std::span<const host::DataRow> rows) {
  CheckThatItIsStillThere();
  std::int64_t number = number_;
  std::string text;
  for (const host::DataRow& row : rows) text += std::to_string(++number) + ',' + Line(row);
  Write(text, Size());
  number_ = number;
}

void CsvJournal::Settle() noexcept { static_cast<void>(::fdatasync(file_.number())); }

// A file system that knows no locks is no reason to keep nothing.
void CsvJournal::Lock() const {
  if (::flock(file_.number(), LOCK_EX | LOCK_NB) == 0) return;
  if (errno == EWOULDBLOCK) Refuse("another Mirelo appends to it; a database (.db) takes several at once");
}

// Of a file whose making was broken off a part of the header may be there.
void CsvJournal::Begin(const std::string& header) {
  const std::string beginning = Read(0, header.size());
  if (beginning == header) return;
  if (!std::string_view(header).starts_with(beginning) || Size() != std::ssize(beginning)) {
    Refuse("its first line is not the one of quotes that this version keeps");
  }
  Truncate(0);
  Write(header, 0);
}

void CsvJournal::GoOn() {
  const std::int64_t size = Size();
  const std::int64_t end = EndOfLastLine(size);
  const std::int64_t begin = BeginOfLineThatEndsAt(end);
  if (begin > 0) {
    const std::string line = Read(begin, static_cast<std::size_t>(end - begin));
    const auto comma = line.find(',');
    const char* const stop = line.data() + std::min(comma, line.size());
    const auto read = std::from_chars(line.data(), stop, number_);
    if (read.ec != std::errc() || read.ptr != stop) Refuse("its last line begins with no number");
    if (number_ < 0 || number_ > kMostRows) Refuse("its last line has a number that no quote can have");
  }
  if (end == size) return;
  Truncate(end);
  mended_ = path_.string() + " ended within a line, which was taken away (" + std::to_string(size - end) +
            (size - end == 1 ? " byte)" : " bytes)");
}

// Somebody who saves it in another program puts a new file in its place.
void CsvJournal::CheckThatItIsStillThere() const {
  struct stat open {};
  struct stat named {};
  const bool is_there = ::fstat(file_.number(), &open) == 0 && ::stat(path_.c_str(), &named) == 0 &&
                        open.st_dev == named.st_dev && open.st_ino == named.st_ino;
  if (!is_there) throw host::JournalReplaced(path_.string(), kSource);
}

std::int64_t CsvJournal::Size() const {
  struct stat status {};
  if (::fstat(file_.number(), &status) != 0) Fail(errno);
  return status.st_size;
}

std::string CsvJournal::Read(std::int64_t from, std::size_t count) const {
  std::string bytes(count, '\0');
  std::size_t done = 0;
  while (done < count) {
    const auto read =
        ::pread(file_.number(), bytes.data() + done, count - done, from + static_cast<std::int64_t>(done));
    if (read < 0 && errno == EINTR) continue;
    if (read < 0) Fail(errno);
    if (read == 0) break;
    done += static_cast<std::size_t>(read);
  }
  bytes.resize(done);
  return bytes;
}

// Behind the last line feed, of which the header has one.
std::int64_t CsvJournal::EndOfLastLine(std::int64_t size) const {
  for (std::int64_t end = size; end > 0;) {
    const std::int64_t begin = std::max<std::int64_t>(0, end - kPiece);
    const auto found = Read(begin, static_cast<std::size_t>(end - begin)).rfind('\n');
    if (found != std::string::npos) return begin + static_cast<std::int64_t>(found) + 1;
    end = begin;
  }
  return 0;
}

std::int64_t CsvJournal::BeginOfLineThatEndsAt(std::int64_t end) const { return EndOfLastLine(end - 1); }

void CsvJournal::Truncate(std::int64_t size) const {
  if (::ftruncate(file_.number(), size) != 0) Fail(errno);
}

// Where there was no room for all of it nothing is left of it.
void CsvJournal::Write(std::string_view text, std::int64_t size_before) const {
  while (!text.empty()) {
    const auto count = ::write(file_.number(), text.data(), text.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) {
      const int reason = errno;
      static_cast<void>(::ftruncate(file_.number(), size_before) == 0);
      Fail(reason);
    }
    text.remove_prefix(static_cast<std::size_t>(count));
  }
}

void CsvJournal::Refuse(const std::string& why) const { throw host::NoJournal(path_.string(), why, kSource); }

void CsvJournal::Fail(int reason) const { host::RaiseJournalFailure(path_.string(), reason); }

}  // namespace mirelo::csv
