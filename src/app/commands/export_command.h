#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "command_line/command.h"
#include "host/data_table.h"

namespace mirelo::app {

struct ExportedSheet;

// mirelo export: gives the rows of a workbook's tables to other programs. The workbook is only read.
class ExportCommand {
 public:
  explicit ExportCommand(command_line::Command& program);

  bool IsChosen() const;
  int Run();

 private:
  enum class Format { Csv, Json, Sqlite };

  Format ChosenFormat() const;
  int List(const std::vector<ExportedSheet>& sheets) const;
  // What is to be exported; no table where that has been told to be impossible.
  std::vector<host::DataTable> ReadWhatIsChosen(const std::vector<ExportedSheet>& sheets) const;
  void TellWhatThereIs(const std::vector<ExportedSheet>& sheets, const std::string& wanted) const;
  void Write(const std::vector<host::DataTable>& tables) const;
  bool IsForStandardOutput() const;

  command_line::Command command_;
  std::filesystem::path file_;
  std::string sheet_;
  std::string format_;
  std::filesystem::path output_ = "-";
  bool all_ = false;
  bool list_ = false;
};

}  // namespace mirelo::app
