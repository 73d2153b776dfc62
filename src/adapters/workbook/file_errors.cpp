#include "adapters/workbook/file_errors.h"

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>

namespace mirelo::workbook {

namespace {

constexpr std::int32_t kDiskFull = 61;
constexpr std::int32_t kPermissionDenied = 70;
constexpr const char* kSource = "Workbook";

using Cause = host::FileFailure::Cause;

struct ReasonAndCause {
  int reason;
  Cause cause;
};
constexpr std::array kCauses{
    ReasonAndCause{ENOSPC, Cause::kNoRoom},         ReasonAndCause{EDQUOT, Cause::kNoRoom},
    ReasonAndCause{EFBIG, Cause::kSizeLimit},       ReasonAndCause{EACCES, Cause::kRights},
    ReasonAndCause{EPERM, Cause::kRights},          ReasonAndCause{EROFS, Cause::kReadOnly},
    ReasonAndCause{ENOENT, Cause::kNoFolder},       ReasonAndCause{ENOTDIR, Cause::kNoFolder},
    ReasonAndCause{ELOOP, Cause::kLinksInACircle},  ReasonAndCause{EISDIR, Cause::kNoRegularFile},
    ReasonAndCause{ENAMETOOLONG, Cause::kLongName},
};

Cause CauseOf(int reason) {
  const auto* found = std::ranges::find(kCauses, reason, &ReasonAndCause::reason);
  return found == kCauses.end() ? Cause::kOther : found->cause;
}

RuntimeError NoAccess(const std::string& why) {
  return RuntimeError(Errors::PathFileAccess().Number(), why, kSource);
}

}  // namespace

RuntimeError DiskFull(std::string why) { return RuntimeError(kDiskFull, std::move(why), kSource); }

RuntimeError PermissionDenied(std::string why) {
  return RuntimeError(kPermissionDenied, std::move(why), kSource);
}

host::FileFailure FileError(const std::string& doing, int reason) {
  const Cause cause = CauseOf(reason);
  const bool is_full = cause == Cause::kNoRoom || cause == Cause::kSizeLimit;
  const std::string text = doing + ": " + std::strerror(reason) +
                           (cause == Cause::kSizeLimit ? ", by the limit of file sizes (ulimit -f)" : "");
  return {is_full ? DiskFull(text) : NoAccess(text), cause};
}

host::FileFailure NoRegularFile(const std::string& doing, mode_t mode) {
  return {NoAccess(doing + (S_ISDIR(mode) ? ": it is a folder" : ": it is a device or a pipe, and no file")),
          Cause::kNoRegularFile};
}

}  // namespace mirelo::workbook
