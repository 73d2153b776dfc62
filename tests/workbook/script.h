#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace mirelo::testing {

// The lines that a Python script of this folder prints about a file. One that does not end with 0 is a
// failure of the test.
std::vector<std::string> RunScript(const std::string& script, const std::filesystem::path& file);

}  // namespace mirelo::testing
