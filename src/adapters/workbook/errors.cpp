#include "adapters/workbook/errors.h"

#include <cerrno>
#include <cstdint>
#include <cstring>

namespace mirelo::workbook {

namespace {

constexpr std::int32_t kDiskFull = 61;
constexpr std::int32_t kPermissionDenied = 70;
constexpr const char* kSource = "Workbook";

}  // namespace

RuntimeError Refused(std::string why) {
  return RuntimeError(host::excel::kApplicationError, std::move(why), kSource);
}

RuntimeError DiskFull(std::string why) { return RuntimeError(kDiskFull, std::move(why), kSource); }

RuntimeError PermissionDenied(std::string why) {
  return RuntimeError(kPermissionDenied, std::move(why), kSource);
}

RuntimeError FileError(const std::string& doing, int reason) {
  const std::string text = doing + ": " + std::strerror(reason) +
                           (reason == EFBIG ? ", by the limit of file sizes (ulimit -f)" : "");
  if (reason == ENOSPC || reason == EDQUOT || reason == EFBIG) return DiskFull(text);
  return RuntimeError(Errors::PathFileAccess().Number(), text, kSource);
}

}  // namespace mirelo::workbook
