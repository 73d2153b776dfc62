#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "adapters/sqlite/database.h"
#include "host/data_table.h"

namespace mirelo::sqlite {

// A name as SQL has it, whatever characters it holds.
std::string QuotedName(std::string_view name);

// "Last" REAL: a column as CREATE TABLE and ALTER TABLE have it. One that may hold anything has no type, so
// that values stay what they are.
std::string ColumnDefinition(const host::DataColumn& column);

std::string CreateTable(std::string_view table, const std::vector<host::DataColumn>& columns);

// INSERT of a row with a parameter for each of the columns.
std::string InsertInto(std::string_view table, const std::vector<host::DataColumn>& columns);

// Binds the values from left to right. They must stay as they are until the end of the run.
void BindRow(Run& run, const host::DataRow& row);

}  // namespace mirelo::sqlite
