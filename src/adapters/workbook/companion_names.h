#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace mirelo::workbook {

// What lies beside a workbook's file while a process has it: hidden files, named after the workbook's.

// The lock of those who hold the file (see FileHold): ".quotes.xlsx.mirelo-lock".
std::string LockNameOf(std::string_view file);
// The file's name in such a name.
std::optional<std::string> FileOfLock(std::string_view lock);

// The folder in which a new file is made: ".quotes.xlsx1234.tmp".
std::string WorkshopNameOf(std::string_view file, unsigned number);
bool IsWorkshopOf(std::string_view name, std::string_view file);

}  // namespace mirelo::workbook
