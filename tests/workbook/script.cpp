#include "workbook/script.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <cstdio>
#include <sstream>

namespace mirelo::testing {

std::vector<std::string> RunScript(const std::string& script, const std::filesystem::path& file) {
  const std::string command = "PYTHONIOENCODING=utf-8 " MIRELO_PYTHON " '" MIRELO_WORKBOOK_SCRIPTS "/" +
                              script + "' '" + file.string() + "' 2>&1";
  FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) return {"the script cannot be run"};
  std::string output;
  std::array<char, 4096> buffer;
  for (std::size_t count; (count = fread(buffer.data(), 1, buffer.size(), pipe)) > 0;)
    output.append(buffer.data(), count);
  EXPECT_EQ(pclose(pipe), 0) << output;
  std::vector<std::string> lines;
  std::istringstream in(output);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

}  // namespace mirelo::testing
