#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/journal.h"
#include "support/temp_directory.h"

namespace mirelo::testing {

using host::DataColumn;
using host::DataRow;

// What the journals of these tests hold.
const std::vector<DataColumn>& TestColumns();
// A row of them.
DataRow TestRow(const std::string& text, double number = 1.5);

// What a file holds, byte for byte.
std::string Content(const std::filesystem::path& file);

// The rows of a query, their values joined by commas; NULL is nothing.
std::vector<std::string> Query(const std::filesystem::path& file, const std::string& sql);
// Runs statements.
void Change(const std::filesystem::path& file, const std::string& sql);

// One of the ways to keep a journal, and how its rows are read back: as the lines of comma-separated values.
struct TestedJournal {
  const char* name;
  const char* file;
  std::function<std::unique_ptr<host::Journal>(const std::filesystem::path&)> open;
  std::function<std::vector<std::string>(const std::filesystem::path&)> rows;
};
const std::vector<TestedJournal>& TestedJournals();

}  // namespace mirelo::testing
