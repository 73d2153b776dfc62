#include "adapters/workbook/xlsx/part_replacer.h"

#include <zip.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <memory>
#include <vector>

#include "adapters/workbook/atomic_file.h"
#include "adapters/workbook/errors.h"

namespace mirelo::workbook {

namespace {

constexpr zip_uint16_t kNoTime = 0;
constexpr zip_uint16_t kFirstDay = 1 << 5 | 1;  // 1 January 1980, which the writer gives all parts

[[noreturn]] void Fail(const std::string& why) {
  throw Refused("The workbook cannot be written: its charts cannot be put into the file (" + why + ").");
}

struct FreeSource {
  void operator()(zip_source_t* source) const { zip_source_free(source); }
};
using Source = std::unique_ptr<zip_source_t, FreeSource>;

struct DiscardArchive {
  void operator()(zip_t* archive) const { zip_discard(archive); }
};
using Archive = std::unique_ptr<zip_t, DiscardArchive>;

// An archive in memory, where it is made anew.
class MemoryArchive {
 public:
  explicit MemoryArchive(const std::vector<char>& bytes)
      : source_(zip_source_buffer_create(bytes.data(), bytes.size(), 0, nullptr)) {
    if (source_ == nullptr) throw Errors::OutOfMemory();
    archive_.reset(zip_open_from_source(source_.get(), 0, nullptr));
    if (archive_ == nullptr) Fail("it is no archive");
    zip_source_keep(source_.get());  // as the archive has taken it over
  }

  // `text` must live until Close.
  void Replace(const std::string& part, const std::string& text) {
    const std::int64_t index = zip_name_locate(archive_.get(), part.c_str(), 0);
    if (index < 0) Fail("there is no part " + part);
    const auto place = static_cast<std::uint64_t>(index);
    zip_source_t* source = zip_source_buffer(archive_.get(), text.data(), text.size(), 0);
    if (source == nullptr) throw Errors::OutOfMemory();
    if (zip_file_replace(archive_.get(), place, source, 0) != 0) {
      zip_source_free(source);
      Fail(zip_strerror(archive_.get()));
    }
    if (zip_file_set_dostime(archive_.get(), place, kNoTime, kFirstDay, 0) != 0)
      Fail(zip_strerror(archive_.get()));
  }

  std::vector<char> Close() {
    if (zip_close(archive_.get()) != 0) Fail(zip_strerror(archive_.get()));
    archive_.release();
    zip_stat_t stat;
    if (zip_source_stat(source_.get(), &stat) != 0 || zip_source_open(source_.get()) != 0)
      Fail("it cannot be read again");
    std::vector<char> bytes(static_cast<std::size_t>(stat.size));
    const std::int64_t count = zip_source_read(source_.get(), bytes.data(), bytes.size());
    zip_source_close(source_.get());
    if (count != static_cast<std::int64_t>(bytes.size())) Fail("it cannot be read again");
    return bytes;
  }

 private:
  Source source_;
  Archive archive_;  // goes first
};

struct CloseFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

void Overwrite(const std::filesystem::path& file, const std::vector<char>& bytes) {
  std::unique_ptr<std::FILE, CloseFile> out(std::fopen(file.c_str(), "wb"));
  const bool is_written = out != nullptr &&
                          std::fwrite(bytes.data(), 1, bytes.size(), out.get()) == bytes.size() &&
                          std::fclose(out.release()) == 0;
  if (!is_written) throw FileError("The workbook cannot be written", errno);
}

}  // namespace

void ReplaceParts(const std::filesystem::path& file, const std::map<std::string, std::string>& texts) {
  const std::vector<char> bytes = ReadWholeFile(file, std::numeric_limits<std::uint64_t>::max());
  MemoryArchive archive(bytes);
  for (const auto& [part, text] : texts) archive.Replace(part, text);
  Overwrite(file, archive.Close());
}

}  // namespace mirelo::workbook
