#pragma once

#include <filesystem>

namespace mirelo::app {

enum class ExportTarget { Text, Database };

// What an export must not take the place of, as it is no older export and would be missed: error 75, with
// what stands there and what to do as text. `source` is the workbook that is exported.
//
// - a workbook, the source among them;
// - a database of another program, or one of quotes that a day appends to; where the export is no database,
//   any;
// - a database that another program has in use.
void RequireReplaceable(const std::filesystem::path& file, ExportTarget target,
                        const std::filesystem::path& source);

}  // namespace mirelo::app
