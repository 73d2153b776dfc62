#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace mirelo::workbook {

// Makes a new .xlsx file out of the parts of an old one. Parts that are kept are copied as they are packed.
// Names are found without regard to case.
class PackageEditor {
 public:
  // `file` must outlive the editor. Error 1004 for what is no archive.
  explicit PackageEditor(std::span<const char> file);
  ~PackageEditor();
  PackageEditor(const PackageEditor&) = delete;
  PackageEditor& operator=(const PackageEditor&) = delete;

  bool Has(const std::string& part) const;

  // Adds a part, or replaces it.
  void Put(const std::string& part, std::string text);
  // The same for a large part: its text is made only while the file is packed, and let go of at once. `make`
  // may raise errors.
  using Make = std::function<std::string()>;
  void PutLater(const std::string& part, Make make);

  // Forgets the parts that are not among these.
  void KeepOnly(const std::set<std::string>& parts);

  // The bytes of the new file; the part `first` is the first one in it.
  std::vector<char> Pack(const std::string& first);

 private:
  struct Archive;
  struct Part {
    std::string name;
    std::int64_t old_index;  // in the old archive, where there is no `make`
    Make make;
  };

  static std::string KeyOf(std::string_view name);

  std::unique_ptr<Archive> old_;
  std::map<std::string, Part> parts_;  // by key
};

}  // namespace mirelo::workbook
