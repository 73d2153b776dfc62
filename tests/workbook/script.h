#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace mirelo::testing {

// The lines that a Python script of this folder prints about a file. One that does not end with 0 is a
// failure of the test.
std::vector<std::string> RunScript(const std::string& script, const std::filesystem::path& file);

// The bytes of a workbook with sheets of a person's own: a script writes it, once in a process.
const std::string& PersonsWorkbook();

// Has LibreOffice Calc convert a file into its folder, where that program's settings come to lie as well.
// `format` is what its option of that name takes. A failure of the test when it does not.
void ConvertWithCalc(const std::filesystem::path& file, const std::string& format);

}  // namespace mirelo::testing
