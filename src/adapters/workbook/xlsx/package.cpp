#include "adapters/workbook/xlsx/package.h"

#include <zip.h>

#include <algorithm>

#include "adapters/workbook/rules.h"
#include "adapters/workbook/xlsx/library_memory.h"
#include "spreadsheet/errors.h"

namespace mirelo::workbook {

namespace {

constexpr std::string_view kWholeFile = "archive";
// How files begin that hold an encrypted workbook or one of the format before .xlsx.
constexpr std::string_view kCompoundFile = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";
constexpr std::uint64_t kChunk = 64 << 10;

struct CloseFile {
  void operator()(zip_file_t* file) const { zip_fclose(file); }
};
using File = std::unique_ptr<zip_file_t, CloseFile>;

struct Error {
  zip_error_t error;
  Error() { zip_error_init(&error); }
  ~Error() { zip_error_fini(&error); }
  std::string text() { return zip_error_strerror(&error); }
};

}  // namespace

RuntimeError Damaged(std::string_view part, std::string_view what) {
  return Refused(std::string(part) + ": " + std::string(what));
}

struct Package::Archive {
  explicit Archive(std::span<const char> bytes) {
    Error error;
    zip_source_t* source = zip_source_buffer_create(bytes.data(), bytes.size(), 0, &error.error);
    if (source != nullptr) zip = zip_open_from_source(source, ZIP_RDONLY, &error.error);
    if (zip != nullptr) return;
    if (source != nullptr) zip_source_free(source);
    RequireMemory(error.error);
    const std::string why = error.text();
    throw Damaged(kWholeFile, "this is no .xlsx workbook (" + why + ")");
  }
  ~Archive() { zip_discard(zip); }
  Archive(const Archive&) = delete;
  Archive& operator=(const Archive&) = delete;

  std::int64_t Find(const std::string& part) const {
    return zip_name_locate(zip, part.c_str(), ZIP_FL_NOCASE);
  }

  zip_t* zip = nullptr;
};

Package::Package(std::span<const char> bytes, const LoadLimits& limits) : limits_(limits) {
  const std::string_view start(bytes.data(), std::min(bytes.size(), kCompoundFile.size()));
  if (start == kCompoundFile) {
    throw Damaged(kWholeFile, "this workbook is encrypted, or of the format before .xlsx");
  }
  archive_ = std::make_unique<Archive>(bytes);
  if (static_cast<std::size_t>(zip_get_num_entries(archive_->zip, 0)) > limits_.parts) {
    throw Damaged(kWholeFile, "too many parts");
  }
}

Package::~Package() = default;

bool Package::Has(const std::string& part) const { return archive_->Find(part) >= 0; }

std::string Package::Read(const std::string& part) {
  const std::int64_t index = archive_->Find(part);
  if (index < 0) throw Damaged(part, "this part is missing");
  zip_stat_t stat;
  if (zip_stat_index(archive_->zip, static_cast<std::uint64_t>(index), 0, &stat) != 0 ||
      (stat.valid & ZIP_STAT_COMP_SIZE) == 0) {
    throw Damaged(part, "the archive's entry is damaged");
  }
  if ((stat.valid & ZIP_STAT_ENCRYPTION_METHOD) != 0 && stat.encryption_method != ZIP_EM_NONE) {
    throw Damaged(part, "this part is encrypted");
  }
  const File file(zip_fopen_index(archive_->zip, static_cast<std::uint64_t>(index), 0));
  if (file == nullptr) {
    RequireMemory(*zip_get_error(archive_->zip));
    throw Damaged(part, zip_strerror(archive_->zip));
  }

  const std::uint64_t ratio_bytes = std::max(limits_.ratio_free_bytes, stat.comp_size * limits_.ratio);
  const std::uint64_t most = std::min({limits_.part_bytes, limits_.total_bytes - bytes_read_, ratio_bytes});
  std::string text;
  for (;;) {
    const std::size_t filled = text.size();
    text.resize(filled + static_cast<std::size_t>(std::min(kChunk, most - filled + 1)));
    const std::int64_t count = zip_fread(file.get(), text.data() + filled, text.size() - filled);
    if (count < 0) {
      RequireMemory(*zip_file_get_error(file.get()));
      throw Damaged(part, std::string("it cannot be unpacked (") + zip_file_strerror(file.get()) + ")");
    }
    text.resize(filled + static_cast<std::size_t>(count));
    if (text.size() > most) throw Damaged(part, "it unpacks to more than is safe to read");
    if (count == 0) break;
  }
  bytes_read_ += text.size();
  return text;
}

}  // namespace mirelo::workbook
