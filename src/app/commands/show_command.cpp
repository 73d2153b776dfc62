#include "app/commands/show_command.h"

#include <algorithm>

#include "app/exit_code.h"
#include "app/output/sheet_text.h"
#include "app/output/shown_cells.h"
#include "app/output/text_table.h"
#include "app/workbook/spreadsheet_program.h"
#include "automation/runtime_error.h"
#include "automation/text.h"
#include "host/excel/application.h"
#include "host/excel/constants.h"
#include "host/excel/workbook.h"
#include "host/excel/worksheet.h"
#include "host/excel/worksheets.h"
#include "terminal/standard_streams.h"

namespace mirelo::app {

using terminal::ColorDepth;
using terminal::Err;
using terminal::Out;

namespace excel = host::excel;

namespace {

constexpr std::int32_t kLeastCell = 3;  // characters of a line that a column takes at least

std::string NamesOf(excel::Worksheets& sheets) {
  std::string names;
  for (std::int32_t i = 1; i <= sheets.Count(); ++i) {
    names += (i == 1 ? "" : ", ") + sheets.Item(i)->Name();
  }
  return names;
}

std::string Span(const std::string& one, const std::string& several, const std::string& first,
                 const std::string& last) {
  return first == last ? one + ' ' + first + " is" : several + ' ' + first + " to " + last + " are";
}

void TellColumns(ShownArea left_out) {
  Err() << Span("Column", "Columns", ColumnLetters(left_out.first_column),
                ColumnLetters(left_out.last_column))
        << " left out for want of room; --range " << AddressOf(left_out) << " shows the rest.\n";
}

// Of rows from `first` to `last` the last one that is shown where `most` are shown, which may be more than
// any sheet has.
std::int32_t LastShown(std::int32_t first, std::int32_t last, std::int32_t most) {
  return last - first < most ? last : first + most - 1;
}

void TellRows(ShownArea left_out, std::int32_t most) {
  Err() << Span("Row", "Rows", std::to_string(left_out.first_row), std::to_string(left_out.last_row))
        << " left out; ";
  left_out.last_row = LastShown(left_out.first_row, left_out.last_row, most);
  Err() << "--range " << AddressOf(left_out) << " shows what comes next, --rows 0 all.\n";
}

}  // namespace

ShowCommand::ShowCommand(command_line::Command& program)
    : command_(program.AddCommand("show", "Print a sheet of a workbook, with its colours in a terminal")) {
  command_.AddArgument("FILE", file_, "The .xlsx file").Require();
  auto sheet = command_.AddOption("SHEET,--sheet", sheet_,
                                  "The sheet's name, in letters of either case; without it the sheet in "
                                  "front is printed");
  auto list = command_.AddFlag("--list", list_, "Print the names of the sheets, and their sizes");
  auto range = command_.AddOption("--range", range_,
                                  "The cells to print, as A1:F20, or whole columns (B:D) or rows (5:9), in "
                                  "place of all that hold something");
  auto comments = command_.AddFlag("--comments", comments_, "Print the comments of the cells below them");
  command_.AddOption("--rows", rows_, "Print so many rows at most; 0 stands for all")
      .NotNegative()
      .ShowDefault();
  command_.AddFlag("--no-color", no_color_, "Print plain text in a terminal, too; NO_COLOR=1 does the same");
  list.Excludes(sheet).Excludes(range).Excludes(comments);
  command_.Footer(
      "In a terminal, columns that do not fit into a line are left out, and long texts are cut. The file is "
      "only read.\n"
      "Exit codes: 0 printed, 1 the file or the sheet cannot be read, 2 wrong usage.");
}

bool ShowCommand::IsChosen() const { return command_.IsChosen(); }

int ShowCommand::Run() {
  const auto document = SpreadsheetProgram()->Open(file_);
  const auto application = document->Application();
  if (list_) return List(*application);
  const auto sheet = ChosenSheet(*application);
  if (sheet != nullptr) return Show(*sheet);
  Err() << "error: " << file_.string() << " has no sheet \"" << sheet_
        << "\"; it has: " << NamesOf(*application->Worksheets()) << "\n";
  return kFailed;
}

int ShowCommand::List(excel::Application& application) const {
  TextTable table({"Sheet", "Rows", "Columns", "In front"});
  const auto sheets = application.Worksheets();
  const std::string in_front = application.ActiveSheet()->Name();
  for (std::int32_t i = 1; i <= sheets->Count(); ++i) {
    const auto sheet = sheets->Item(i);
    const ShownArea filled = FilledArea(*sheet);
    table.AddRow({sheet->Name(), std::to_string(filled.last_row), std::to_string(filled.last_column),
                  sheet->Name() == in_front ? "yes" : ""});
  }
  Out() << table.ToText(!no_color_ && terminal::DepthOfOutput() != ColorDepth::None);
  return kGood;
}

int ShowCommand::Show(excel::Worksheet& sheet) const {
  ShownArea wanted;
  try {
    wanted = range_.empty() ? FilledArea(sheet) : AreaAt(sheet, range_);
  } catch (const RuntimeError& error) {
    Err() << "error: --range: " << terminal::Indented(error.Description()) << " Write A1:F20, B:D or 5:9.\n";
    return kWrongUsage;
  }
  if (wanted.IsEmpty()) {
    Err() << "There is nothing on the sheet.\n";
    return kGood;
  }

  const std::size_t width = Out().LineWidth();
  ShownArea shown = wanted;
  if (rows_ > 0) shown.last_row = LastShown(shown.first_row, shown.last_row, rows_);
  if (width > 0) {
    const auto most = static_cast<std::int32_t>(width) / kLeastCell;
    shown.last_column = std::min(shown.last_column, shown.first_column + most);
  }
  const SheetText sheet_text =
      LayOut(ReadCells(sheet, shown), width, no_color_ ? ColorDepth::None : terminal::DepthOfOutput());
  shown.last_column = shown.first_column + static_cast<std::int32_t>(sheet_text.columns) - 1;
  Out() << sheet_text.text;
  if (comments_) PrintComments(sheet, shown);
  Out().Flush();
  if (!Out().Good()) return kGood;

  if (shown.last_column < wanted.last_column) {
    TellColumns({wanted.first_row, shown.last_column + 1, wanted.last_row, wanted.last_column});
  }
  if (shown.last_row < wanted.last_row) {
    TellRows({shown.last_row + 1, wanted.first_column, wanted.last_row, wanted.last_column}, rows_);
  }
  return kGood;
}

void ShowCommand::PrintComments(excel::Worksheet& sheet, const ShownArea& area) const {
  const auto comments = ReadComments(sheet, area);
  if (comments.empty()) Err() << "No cell of these has a comment.\n";
  for (const auto& [address, lines] : comments) {
    Out() << "\n" << address << ":";
    const std::string indent(address.size() + 1, ' ');
    for (const auto& line : lines) Out() << (&line == &lines.front() ? "" : indent) << " " << line << "\n";
  }
}

std::shared_ptr<excel::Worksheet> ShowCommand::ChosenSheet(excel::Application& application) const {
  const auto sheets = application.Worksheets();
  if (sheet_.empty()) {
    auto front = std::dynamic_pointer_cast<excel::Worksheet>(application.ActiveSheet());
    return front != nullptr ? front : sheets->Item(1);  // a chart sheet has no cells to show
  }
  for (std::int32_t i = 1; i <= sheets->Count(); ++i) {
    if (auto sheet = sheets->Item(i); EqualText(sheet->Name(), sheet_)) return sheet;
  }
  return nullptr;
}

}  // namespace mirelo::app
