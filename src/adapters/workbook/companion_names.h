#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace mirelo::workbook {

// What lies beside a workbook's file while a process has it: hidden files, named after the workbook's.

// The lock of those who hold the file (see FileHold): ".quotes.xlsx.mirelo-lock".
std::string LockNameOf(std::string_view file);
// The workbook's file name, out of the name of its lock; nothing for a name of another form.
std::optional<std::string> FileOfLock(std::string_view lock);

// The folder in which a new file is made: ".quotes.xlsx-1234.tmp".
std::string WorkshopNameOf(std::string_view file, unsigned number);
// The names of the workbooks' files that a folder of this name may be of. More than one only for folders of
// former versions, which had nothing between the file's name and the number: ".day12.tmp" may be of "day" and
// of "day1".
std::vector<std::string> FilesOfWorkshop(std::string_view name);

}  // namespace mirelo::workbook
