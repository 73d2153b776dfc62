#include "adapters/workbook/companion_names.h"

namespace mirelo::workbook {

namespace {

constexpr std::string_view kHidden = ".";
constexpr std::string_view kLock = ".mirelo-lock";
constexpr std::string_view kWorkshop = ".tmp";

}  // namespace

std::string LockNameOf(std::string_view file) { return std::string(kHidden).append(file).append(kLock); }

std::optional<std::string> FileOfLock(std::string_view lock) {
  if (!lock.starts_with(kHidden) || !lock.ends_with(kLock) || lock.size() <= kHidden.size() + kLock.size())
    return std::nullopt;
  return std::string(lock.substr(kHidden.size(), lock.size() - kHidden.size() - kLock.size()));
}

std::string WorkshopNameOf(std::string_view file, unsigned number) {
  return std::string(kHidden).append(file).append(std::to_string(number)).append(kWorkshop);
}

bool IsWorkshopOf(std::string_view name, std::string_view file) {
  if (!name.starts_with(kHidden) || !name.ends_with(kWorkshop)) return false;
  name.remove_prefix(kHidden.size());
  name.remove_suffix(kWorkshop.size());
  if (!name.starts_with(file)) return false;
  name.remove_prefix(file.size());
  return !name.empty() && name.find_first_not_of("0123456789") == std::string_view::npos;
}

}  // namespace mirelo::workbook
