#pragma once

#include <filesystem>
#include <optional>
#include <string>

class QWidget;

namespace mirelo::qt {

class QtLoop;

// What files a box shows beside the folders.
struct FileKind {
  const char* filter;  // as "Workbooks (*.xlsx)"
  const char* ending;  // without its dot
};

// Modal boxes that ask for a file, above a window (null for above none). Nothing when the person wants none.
// They are Qt's own, which are the same on every desktop.
//
// The first takes files that are there only. It begins in `folder`; where that is empty or gone, where the
// person keeps documents. The second takes any name, proposes one, and asks nothing about a file that is
// there.
std::optional<std::filesystem::path> AskForFile(QtLoop& loop, QWidget* above, const char* title,
                                                const FileKind& kind, const std::filesystem::path& folder);
std::optional<std::filesystem::path> AskForNewFile(QtLoop& loop, QWidget* above, const char* title,
                                                   const FileKind& kind, const std::filesystem::path& folder,
                                                   const std::string& name);

}  // namespace mirelo::qt
