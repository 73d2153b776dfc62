#include "host/journal.h"

#include <cerrno>
#include <cstring>

namespace mirelo::host {

namespace {

constexpr const char* kSource = "Mirelo.Journal";
constexpr std::int32_t kDiskFull = 61;

}  // namespace

JournalRefused NoJournal(const std::string& file, const std::string& why, const char* source) {
  return {Errors::PathFileAccess().Number(), "Quotes cannot be appended to " + file + ": " + why, source};
}

RuntimeError JournalReplaced(const std::string& file, const char* source) {
  return {Errors::PathFileAccess().Number(), file + " was taken away or replaced while it was in use",
          source};
}

void RaiseJournalFailure(const std::string& file, int reason) {
  const std::string text = file + " cannot be written: " + std::strerror(reason);
  switch (reason) {
    case ENOENT:
    case ENOTDIR:
    case EISDIR:
    case ELOOP:
    case ENAMETOOLONG:
    case ENXIO:
      throw JournalRefused(Errors::PathFileAccess().Number(), text, kSource);
    case ENOSPC:
#ifdef EDQUOT  // not every machine has quotas
    case EDQUOT:
#endif
    case EFBIG:
      throw RuntimeError(kDiskFull, text, kSource);
    default:
      throw RuntimeError(Errors::PathFileAccess().Number(), text, kSource);
  }
}

}  // namespace mirelo::host
