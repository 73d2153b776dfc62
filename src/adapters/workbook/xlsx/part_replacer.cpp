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
#include "adapters/workbook/file_errors.h"
#include "adapters/workbook/rules.h"
#include "adapters/workbook/xlsx/library_memory.h"
#include "spreadsheet/errors.h"

namespace mirelo::workbook {

namespace {

constexpr zip_uint16_t kNoTime = 0;
constexpr zip_uint16_t kFirstDay = 1 << 5 | 1;  // 1 January 1980, which the writer gives all parts
constexpr zip_int64_t kToItsEnd = -1;

[[noreturn]] void Fail(const std::string& why) {
  throw Refused("The workbook cannot be written: its charts cannot be put into the file (" + why + ").");
}

[[noreturn]] void Fail(zip_t* archive) {
  RequireMemory(*zip_get_error(archive));
  Fail(std::string(zip_strerror(archive)));
}

struct FreeZipSource {
  void operator()(zip_source_t* source) const { zip_source_free(source); }
};
using ZipSource = std::unique_ptr<zip_source_t, FreeZipSource>;

struct DiscardArchive {
  void operator()(zip_t* archive) const { zip_discard(archive); }
};
using Archive = std::unique_ptr<zip_t, DiscardArchive>;

// Opens a buffer as an archive, which takes it over; the buffer stays the caller's as well.
Archive OpenArchive(zip_source_t* buffer, int flags) {
  if (buffer == nullptr) throw Errors::OutOfMemory();
  Archive archive(zip_open_from_source(buffer, flags, nullptr));
  if (archive == nullptr) Fail("it is no archive");
  zip_source_keep(buffer);
  return archive;
}

// An archive that is made anew from another one. To change the other one itself would be less work, but then
// libzip frees a buffer that is not its own.
class Repacker {
 public:
  explicit Repacker(const std::vector<char>& old)
      : old_buffer_(zip_source_buffer_create(old.data(), old.size(), 0, nullptr)),
        old_(OpenArchive(old_buffer_.get(), ZIP_RDONLY)),
        new_buffer_(zip_source_buffer_create(nullptr, 0, 0, nullptr)),
        new_(OpenArchive(new_buffer_.get(), ZIP_TRUNCATE)) {}

  // The texts must live until the packing is done.
  std::vector<char> Pack(const std::map<std::string, std::string>& texts) {
    std::size_t replaced = 0;
    const zip_int64_t count = zip_get_num_entries(old_.get(), 0);
    for (zip_int64_t i = 0; i < count; ++i) {
      const auto index = static_cast<zip_uint64_t>(i);
      const char* name = zip_get_name(old_.get(), index, 0);
      if (name == nullptr) Fail(old_.get());
      const auto text = texts.find(name);
      if (text != texts.end()) ++replaced;
      Add(name, text == texts.end() ? AsPacked(index) : Of(text->second));
    }
    if (replaced != texts.size()) Fail("a part is missing");
    return Close();
  }

 private:
  zip_source_t* AsPacked(zip_uint64_t index) {
    return zip_source_zip(new_.get(), old_.get(), index, ZIP_FL_COMPRESSED, 0, kToItsEnd);
  }
  zip_source_t* Of(const std::string& text) {
    return zip_source_buffer(new_.get(), text.data(), text.size(), 0);
  }

  void Add(const char* name, zip_source_t* source) {
    if (source == nullptr) Fail(new_.get());
    const zip_int64_t index = zip_file_add(new_.get(), name, source, ZIP_FL_ENC_UTF_8);
    if (index < 0) {
      zip_source_free(source);
      Fail(new_.get());
    }
    if (zip_file_set_dostime(new_.get(), static_cast<zip_uint64_t>(index), kNoTime, kFirstDay, 0) != 0)
      Fail(new_.get());
  }

  std::vector<char> Close() {
    if (zip_close(new_.get()) != 0) Fail(new_.get());
    static_cast<void>(new_.release());  // closing has freed it
    zip_stat_t stat;
    if (zip_source_stat(new_buffer_.get(), &stat) != 0 || zip_source_open(new_buffer_.get()) != 0)
      Fail("it cannot be read again");
    std::vector<char> bytes(static_cast<std::size_t>(stat.size));
    const zip_int64_t count = zip_source_read(new_buffer_.get(), bytes.data(), bytes.size());
    zip_source_close(new_buffer_.get());
    if (count != static_cast<zip_int64_t>(bytes.size())) Fail("it cannot be read again");
    return bytes;
  }

  // Archives go before their buffers, and the new one before the old one that it reads.
  ZipSource old_buffer_;
  Archive old_;
  ZipSource new_buffer_;
  Archive new_;
};

struct CloseStdioFile {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

void Overwrite(const std::filesystem::path& file, const std::vector<char>& bytes) {
  std::unique_ptr<std::FILE, CloseStdioFile> out(std::fopen(file.c_str(), "wb"));
  const bool is_written = out != nullptr &&
                          std::fwrite(bytes.data(), 1, bytes.size(), out.get()) == bytes.size() &&
                          std::fclose(out.release()) == 0;
  if (!is_written) throw FileError("The workbook cannot be written", errno);
}

}  // namespace

void ReplaceParts(const std::filesystem::path& file, const std::map<std::string, std::string>& texts) {
  const std::vector<char> bytes = ReadWholeFile(file, std::numeric_limits<std::uint64_t>::max());
  Overwrite(file, Repacker(bytes).Pack(texts));
}

}  // namespace mirelo::workbook
