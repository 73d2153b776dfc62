#pragma once

#include <sys/types.h>

#include <string>
#include <utility>

#include "automation/runtime_error.h"
#include "host/documents.h"

namespace mirelo::workbook {

// What the file system refuses, by its errno: number 61 (disk full) where there is no room, else 75.
host::FileFailure FileError(const std::string& doing, int reason);

// Number 75: a folder, a device or a pipe stands where a file is due. `mode` is that of stat(2).
host::FileFailure NoRegularFile(const std::string& doing, mode_t mode);

// Number 70: somebody else has the file.
RuntimeError PermissionDenied(std::string why);

// Number 61.
RuntimeError DiskFull(std::string why);

}  // namespace mirelo::workbook
