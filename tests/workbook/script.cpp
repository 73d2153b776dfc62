#include "workbook/script.h"

#include <gmock/gmock.h>

#include <array>
#include <cstddef>
#include <cstdio>
#include <sstream>

#include "support/file_text.h"
#include "support/office_profile.h"
#include "support/temp_directory.h"

namespace mirelo::testing {

namespace {

// What a command prints. One that does not end with 0 is a failure of the test.
std::string OutputOf(const std::string& command) {
  FILE* pipe = popen((command + " 2>&1").c_str(), "r");
  if (pipe == nullptr) {
    ADD_FAILURE() << "this cannot be run: " << command;
    return "";
  }
  std::string output;
  std::array<char, 4096> buffer;
  for (std::size_t count; (count = fread(buffer.data(), 1, buffer.size(), pipe)) > 0;)
    output.append(buffer.data(), count);
  EXPECT_EQ(pclose(pipe), 0) << command << "\n" << output;
  return output;
}

}  // namespace

std::vector<std::string> RunScript(const std::string& script, const std::filesystem::path& file) {
  const std::string output =
      OutputOf("PYTHONIOENCODING=utf-8 " MIRELO_PYTHON " '" MIRELO_WORKBOOK_SCRIPTS "/" + script + "' '" +
               file.string() + "'");
  std::vector<std::string> lines;
  std::istringstream in(output);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

const std::string& PersonsWorkbook() {
  static const std::string bytes = [] {
    const TempDirectory folder;
    EXPECT_THAT(RunScript("write_sheets_of_a_person.py", folder / "person.xlsx"), ::testing::IsEmpty());
    return TextOfFile(folder / "person.xlsx");
  }();
  return bytes;
}

// The time is that of a program that hangs; on a busy machine it takes long. It ends with 0 as well when it
// could not read the file.
void ConvertWithCalc(const std::filesystem::path& file, const std::string& format) {
  const std::string folder = file.parent_path().string();
  PrepareOfficeProfile(file.parent_path() / "profile");
  const std::string output = OutputOf(
      "LC_ALL=C.UTF-8 timeout 140 '" MIRELO_SOFFICE "' '-env:UserInstallation=file://" + folder +
      "/profile' --headless --convert-to '" + format + "' --outdir '" + folder + "' '" + file.string() + "'");
  EXPECT_NE(output.find(" -> "), std::string::npos) << "nothing was converted: " << output;
}

}  // namespace mirelo::testing
