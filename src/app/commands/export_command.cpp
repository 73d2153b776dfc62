#include "app/commands/export_command.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "adapters/csv/csv_text.h"
#include "adapters/sqlite/export_image.h"
#include "app/exit_code.h"
#include "app/options.h"
#include "app/output/export_target.h"
#include "app/output/exported_tables.h"
#include "app/output/quote_output.h"
#include "app/output/text_table.h"
#include "app/whole_file.h"
#include "app/workbook/spreadsheet_program.h"
#include "automation/text.h"
#include "host/documents.h"
#include "host/excel/application.h"
#include "terminal/standard_streams.h"
#include "worksheet/quote_table.h"

namespace mirelo::app {

using terminal::Err;
using terminal::Out;

namespace {

std::string NamesOf(const std::vector<ExportedSheet>& sheets) {
  std::string names;
  for (const ExportedSheet& sheet : sheets) names += (names.empty() ? "" : ", ") + sheet.name;
  return names;
}

// Each line is handed over as it is made, to a file or to a stream.
template <class HandOver>
void MakeLines(const host::DataTable& table, bool is_csv, const HandOver& hand_over) {
  if (is_csv) hand_over(csv::HeaderLine(table.columns));
  for (const host::DataRow& row : table.rows) {
    hand_over(is_csv ? csv::Line(row) : JsonText(table.columns, row));
  }
}

void Print(const host::DataTable& table, bool is_csv) {
  MakeLines(table, is_csv, [](const std::string& line) { Out() << terminal::Lines(line); });
}

std::string TextOf(const host::DataTable& table, bool is_csv) {
  std::string text;
  MakeLines(table, is_csv, [&](const std::string& line) { text += line; });
  return text;
}

}  // namespace

ExportCommand::ExportCommand(command_line::Command& program)
    : command_(program.AddCommand(
          "export", "Give the rows of a workbook's quote table or histories to other programs")) {
  command_.AddArgument("FILE", file_, "The .xlsx file").Require();
  auto sheet = command_.AddOption("--sheet", sheet_,
                                  "The sheet to export, in letters of either case; without it the quote "
                                  "table, Dovanta2_Quotes, is");
  auto all = command_.AddFlag("--all", all_,
                              "Export all histories, each row with its ticker in front; a database gets "
                              "the quote table besides");
  auto list = command_.AddFlag("--list", list_, "Print the names of the sheets that can be exported");
  auto format =
      command_
          .AddOption("--format", format_,
                     "csv (with a line of column names first), json (one object a row and line) or sqlite "
                     "(a database file); without it what the output file's ending says, otherwise csv")
          .OneOf({"csv", "json", "sqlite"});
  auto output = command_
                    .AddOption("--output", output_,
                               "The file to write, which takes the place of an older one as a whole; - "
                               "is the standard output")
                    .ValueName("FILE")
                    .ShowDefault();
  sheet.Excludes(all);
  list.Excludes(sheet).Excludes(all).Excludes(format).Excludes(output);
  command_.Footer(
      "Numbers have all their digits, days and times are 2026-11-22 and 14:05:12, an empty cell is nothing.\n"
      "In csv a text that begins with =, +, -, @ or an apostrophe gets an apostrophe in front, so that no\n"
      "spreadsheet takes it for a formula. A database has the tables quote_table and history. A day may "
      "save\n"
      "the workbook meanwhile.\n"
      "Exit codes: 0 exported, 1 the workbook or the sheet cannot be read or the output not be written,\n"
      "2 wrong usage.");
}

bool ExportCommand::IsChosen() const { return command_.IsChosen(); }

int ExportCommand::Run() {
  if (ChosenFormat() == Format::Sqlite && IsForStandardOutput()) {
    Err() << "a database goes into a file: name one with --output FILE.db\n";
    return kWrongUsage;
  }
  if (!IsForStandardOutput()) {
    const auto kind = ChosenFormat() == Format::Sqlite ? ExportTarget::Database : ExportTarget::Text;
    RequireReplaceable(output_, kind, file_);
  }
  const auto document = SpreadsheetProgram()->Open(file_);
  const auto sheets = ExportedSheets(*document->Application());
  if (list_) return List(sheets);
  const std::vector<host::DataTable> tables = ReadWhatIsChosen(sheets);
  if (tables.empty()) return kFailed;
  Write(tables);
  return kGood;
}

ExportCommand::Format ExportCommand::ChosenFormat() const {
  std::string wanted = format_;
  if (wanted.empty()) wanted = Mid(LCase(output_.extension().string()), 2);
  if (wanted == "json") return Format::Json;
  return wanted == "sqlite" || wanted == "db" ? Format::Sqlite : Format::Csv;
}

bool ExportCommand::IsForStandardOutput() const { return output_ == kStandardStream; }

int ExportCommand::List(const std::vector<ExportedSheet>& sheets) const {
  TextTable table({"Sheet", "Holds"});
  for (const ExportedSheet& sheet : sheets) {
    table.AddRow({sheet.name, sheet.IsQuoteTable() ? "the quote table" : "the history of " + sheet.ticker});
  }
  Out() << table.ToText(Out().IsTerminal());
  return kGood;
}

std::vector<host::DataTable> ExportCommand::ReadWhatIsChosen(const std::vector<ExportedSheet>& sheets) const {
  const bool is_database = ChosenFormat() == Format::Sqlite;
  const std::string wanted = sheet_.empty() ? kQuoteTable : sheet_;
  const auto named =
      std::ranges::find_if(sheets, [&](const ExportedSheet& each) { return EqualText(each.name, wanted); });
  const bool has_histories =
      std::ranges::any_of(sheets, [](const ExportedSheet& each) { return !each.IsQuoteTable(); });
  if (all_ ? !has_histories : named == sheets.end()) {
    TellWhatThereIs(sheets, all_ ? "history" : "sheet \"" + wanted + "\"");
    return {};
  }
  std::vector<host::DataTable> tables;
  if (!all_) {
    // A history in a database is the same whether it is exported alone or with all others.
    const bool takes_ticker = is_database && !named->IsQuoteTable();
    tables.push_back(takes_ticker ? ReadHistories({*named}) : ReadTable(*named));
    return tables;
  }
  if (is_database && named != sheets.end()) tables.push_back(ReadTable(*named));
  tables.push_back(ReadHistories(sheets));
  return tables;
}

void ExportCommand::TellWhatThereIs(const std::vector<ExportedSheet>& sheets,
                                    const std::string& wanted) const {
  Err() << "error: " << file_.string() << " has no " << wanted << " that can be exported; ";
  if (sheets.empty()) {
    Err() << "it has neither a quote table nor a history\n";
  } else {
    Err() << "it has: " << NamesOf(sheets) << "\n";
  }
}

void ExportCommand::Write(const std::vector<host::DataTable>& tables) const {
  if (ChosenFormat() == Format::Sqlite)
    return WriteWhole(output_, sqlite::ExportImage(tables), NewFile::kUsual);
  const bool is_csv = ChosenFormat() == Format::Csv;
  if (IsForStandardOutput()) return Print(tables.front(), is_csv);
  WriteWhole(output_, TextOf(tables.front(), is_csv), NewFile::kUsual);
}

}  // namespace mirelo::app
