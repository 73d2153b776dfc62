#include "adapters/workbook/companion_names.h"

#include <cstddef>

namespace mirelo::workbook {

namespace {

constexpr std::string_view kHidden = ".";
constexpr std::string_view kLock = ".mirelo-lock";
constexpr std::string_view kWorkshop = ".tmp";
constexpr char kBeforeNumber = '-';

}  // namespace

std::string LockNameOf(std::string_view file) { return std::string(kHidden).append(file).append(kLock); }

std::optional<std::string> FileOfLock(std::string_view lock) {
  if (!lock.starts_with(kHidden) || !lock.ends_with(kLock) || lock.size() <= kHidden.size() + kLock.size())
    return std::nullopt;
  return std::string(lock.substr(kHidden.size(), lock.size() - kHidden.size() - kLock.size()));
}

std::string WorkshopNameOf(std::string_view file, unsigned number) {
  return std::string(kHidden).append(file) + kBeforeNumber + std::to_string(number).append(kWorkshop);
}

std::vector<std::string> FilesOfWorkshop(std::string_view name) {
  if (!name.starts_with(kHidden) || !name.ends_with(kWorkshop)) return {};
  if (name.size() < kHidden.size() + kWorkshop.size()) return {};
  name.remove_prefix(kHidden.size());
  name.remove_suffix(kWorkshop.size());
  const std::size_t digits = name.find_last_not_of("0123456789") + 1;
  if (digits == 0 || digits == name.size()) return {};
  if (name[digits - 1] == kBeforeNumber && digits > 1) return {std::string(name.substr(0, digits - 1))};
  std::vector<std::string> files;
  for (std::size_t end = digits; end < name.size(); ++end) files.emplace_back(name.substr(0, end));
  return files;
}

}  // namespace mirelo::workbook
