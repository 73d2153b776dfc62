#include "adapters/workbook/xlsx/package_editor.h"

#include <zip.h>

#include <algorithm>
#include <cstring>
#include <exception>
#include <utility>

#include "adapters/workbook/rules.h"
#include "adapters/workbook/xlsx/library_memory.h"
#include "spreadsheet/errors.h"

namespace mirelo::workbook {

namespace {

RuntimeError CannotPack(std::string_view part, std::string_view why) {
  return Refused(std::string(part) + ": this part cannot be packed (" + std::string(why) + ")");
}

RuntimeError CannotPack(std::string_view part, zip_t* archive) {
  RequireMemory(*zip_get_error(archive));
  return CannotPack(part, zip_strerror(archive));
}

// A part's text for the archive library, which asks for it when the part's turn comes.
class LateSource {
 public:
  explicit LateSource(const PackageEditor::Make& make, std::exception_ptr& failure)
      : make_(make), failure_(failure) {}

  static zip_int64_t Answer(void* self, void* data, zip_uint64_t size, zip_source_cmd_t command) {
    return static_cast<LateSource*>(self)->Answer(data, size, command);
  }

 private:
  zip_int64_t Answer(void* data, zip_uint64_t size, zip_source_cmd_t command) {
    switch (command) {
      case ZIP_SOURCE_STAT:
        return MakeText() ? Stat(static_cast<zip_stat_t*>(data)) : -1;
      case ZIP_SOURCE_OPEN:
        read_ = 0;
        return MakeText() ? 0 : -1;
      case ZIP_SOURCE_READ:
        return Read(static_cast<char*>(data), size);
      case ZIP_SOURCE_CLOSE:
        text_ = {};
        is_made_ = false;
        return 0;
      case ZIP_SOURCE_ERROR:
        return zip_error_to_data(&error_, data, size);
      case ZIP_SOURCE_FREE:
        delete this;
        return 0;
      case ZIP_SOURCE_SUPPORTS:
        return ZIP_SOURCE_SUPPORTS_READABLE;
      default:
        zip_error_set(&error_, ZIP_ER_OPNOTSUPP, 0);
        return -1;
    }
  }

  // Errors do not pass through the library; they are kept for whoever called it.
  bool MakeText() {
    if (is_made_) return true;
    try {
      text_ = make_();
      is_made_ = true;
    } catch (...) {
      failure_ = std::current_exception();
      zip_error_set(&error_, ZIP_ER_INTERNAL, 0);
    }
    return is_made_;
  }

  zip_int64_t Stat(zip_stat_t* stat) const {
    zip_stat_init(stat);
    stat->size = text_.size();
    stat->valid = ZIP_STAT_SIZE;
    return sizeof(*stat);
  }

  zip_int64_t Read(char* data, zip_uint64_t size) {
    const std::size_t count = std::min<std::size_t>(static_cast<std::size_t>(size), text_.size() - read_);
    std::memcpy(data, text_.data() + read_, count);
    read_ += count;
    return static_cast<zip_int64_t>(count);
  }

  PackageEditor::Make make_;
  std::exception_ptr& failure_;
  std::string text_;
  std::size_t read_ = 0;
  bool is_made_ = false;
  zip_error_t error_{};
};

}  // namespace

struct PackageEditor::Archive {
  explicit Archive(std::span<const char> file) {
    zip_error_t error{};
    source = zip_source_buffer_create(file.data(), file.size(), 0, &error);
    if (source != nullptr) zip = zip_open_from_source(source, ZIP_RDONLY, &error);
    if (zip == nullptr) {
      zip_source_free(source);
      RequireMemory(error);
      throw Refused("archive: this is no .xlsx workbook");
    }
  }
  ~Archive() { zip_discard(zip); }
  Archive(const Archive&) = delete;
  Archive& operator=(const Archive&) = delete;

  zip_source_t* source = nullptr;
  zip_t* zip = nullptr;
};

PackageEditor::PackageEditor(std::span<const char> file) : old_(std::make_unique<Archive>(file)) {
  for (zip_int64_t i = 0; i < zip_get_num_entries(old_->zip, 0); ++i) {
    const char* name = zip_get_name(old_->zip, static_cast<zip_uint64_t>(i), 0);
    if (name != nullptr) parts_.try_emplace(KeyOf(name), Part{name, i, nullptr});
  }
}

PackageEditor::~PackageEditor() = default;

// By the letters of ASCII, as the archive library finds names.
std::string PackageEditor::KeyOf(std::string_view name) {
  std::string key(name);
  for (char& c : key) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return key;
}

bool PackageEditor::Has(const std::string& part) const { return parts_.contains(KeyOf(part)); }

void PackageEditor::Put(const std::string& part, std::string text) {
  PutLater(part, [text = std::move(text)] { return text; });
}

void PackageEditor::PutLater(const std::string& part, Make make) {
  const auto [place, is_new] = parts_.try_emplace(KeyOf(part), Part{part, -1, nullptr});
  place->second.make = std::move(make);
}

void PackageEditor::KeepOnly(const std::set<std::string>& parts) {
  std::set<std::string> keys;
  for (const std::string& part : parts) keys.insert(KeyOf(part));
  std::erase_if(parts_, [&](const auto& entry) { return !keys.contains(entry.first); });
}

namespace {

// An archive that grows in memory.
class NewArchive {
 public:
  NewArchive() : buffer_(zip_source_buffer_create(nullptr, 0, 0, nullptr)) {
    if (buffer_ == nullptr) throw Errors::OutOfMemory();
    zip_source_keep(buffer_);
    zip_ = zip_open_from_source(buffer_, ZIP_CREATE | ZIP_TRUNCATE, nullptr);
    if (zip_ == nullptr) {
      zip_source_free(buffer_);
      zip_source_free(buffer_);
      throw Errors::OutOfMemory();
    }
  }
  ~NewArchive() {
    if (zip_ != nullptr) zip_discard(zip_);
    zip_source_free(buffer_);
  }
  NewArchive(const NewArchive&) = delete;
  NewArchive& operator=(const NewArchive&) = delete;

  void Copy(const std::string& name, zip_t* from, std::int64_t index) {
    Add(name, zip_source_zip(zip_, from, static_cast<zip_uint64_t>(index), ZIP_FL_COMPRESSED, 0, -1));
  }

  void Add(const std::string& name, const PackageEditor::Make& make) {
    auto late = std::make_unique<LateSource>(make, failure_);
    zip_source_t* source = zip_source_function(zip_, LateSource::Answer, late.get());
    if (source != nullptr) late.release();  // NOLINT(bugprone-unused-return-value): the library frees it
    Add(name, source);
  }

  std::vector<char> Close() {
    if (zip_close(zip_) != 0) {
      if (failure_) std::rethrow_exception(failure_);
      throw CannotPack("archive", zip_);
    }
    zip_ = nullptr;
    return Bytes();
  }

 private:
  void Add(const std::string& name, zip_source_t* source) {
    if (source == nullptr) throw CannotPack(name, zip_);
    if (zip_file_add(zip_, name.c_str(), source, ZIP_FL_ENC_UTF_8) >= 0) return;
    zip_source_free(source);
    throw CannotPack(name, zip_);
  }

  std::vector<char> Bytes() {
    zip_stat_t stat;
    if (zip_source_stat(buffer_, &stat) != 0 || zip_source_open(buffer_) != 0)
      throw CannotPack("archive", "its bytes cannot be read");
    std::vector<char> bytes(static_cast<std::size_t>(stat.size));
    const zip_int64_t count = zip_source_read(buffer_, bytes.data(), bytes.size());
    zip_source_close(buffer_);
    if (count != static_cast<zip_int64_t>(bytes.size()))
      throw CannotPack("archive", "its bytes cannot be read");
    return bytes;
  }

  std::exception_ptr failure_;
  zip_source_t* buffer_;
  zip_t* zip_ = nullptr;
};

}  // namespace

std::vector<char> PackageEditor::Pack(const std::string& first) {
  NewArchive archive;
  const auto add = [&](const Part& part) {
    if (part.make) {
      archive.Add(part.name, part.make);
    } else {
      archive.Copy(part.name, old_->zip, part.old_index);
    }
  };
  const auto head = parts_.find(KeyOf(first));
  if (head != parts_.end()) add(head->second);
  for (auto it = parts_.begin(); it != parts_.end(); ++it) {
    if (it != head) add(it->second);
  }
  return archive.Close();
}

}  // namespace mirelo::workbook
