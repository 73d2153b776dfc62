#include "app/workbook/last_workbook.h"

#include <climits>
#include <fstream>
#include <string>
#include <system_error>

#include "app/state_folder.h"
#include "app/whole_file.h"
#include "automation/runtime_error.h"

namespace mirelo::app {

namespace fs = std::filesystem;

namespace {

constexpr const char* kName = "last-workbook";

fs::path FileOfLast() {
  const fs::path folder = StateFolder();
  return folder.empty() ? folder : folder / kName;
}

}  // namespace

LastWorkbook::LastWorkbook() : file_(FileOfLast()) {}

std::optional<fs::path> LastWorkbook::Recall() const {
  std::error_code ignored;
  if (!fs::is_regular_file(file_, ignored)) return std::nullopt;  // a pipe would be waited for
  std::ifstream stream(file_, std::ios::binary);
  std::string text(PATH_MAX + 1, '\0');
  stream.read(text.data(), static_cast<std::streamsize>(text.size()));
  text.resize(static_cast<std::size_t>(stream.gcount()));
  if (text.size() > PATH_MAX || !text.ends_with('\n')) return std::nullopt;
  text.pop_back();
  const fs::path workbook = text;
  const bool can_be_one = workbook.is_absolute() && text.find('\0') == std::string::npos;
  return can_be_one ? std::optional(workbook) : std::nullopt;
}

void LastWorkbook::Remember(const fs::path& workbook) const {
  const int number = Errors::PathFileAccess().Number();
  if (file_.empty())
    throw RuntimeError(number, "neither XDG_STATE_HOME nor HOME names a folder to remember it in");
  std::error_code failure;
  fs::create_directories(file_.parent_path(), failure);
  if (failure) throw RuntimeError(number, file_.parent_path().string() + ": " + failure.message());
  WriteWhole(file_, fs::absolute(workbook).string() + "\n");
}

}  // namespace mirelo::app
