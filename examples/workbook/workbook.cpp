// Writes the quotes of some tickers into the first sheet of a workbook, which is made when it is absent:
//
//   workbook 16239 quotes.xlsx MSFT IBM
//
// The first argument is the port of QuoteTracker's HTTP interface. The columns are those that the user chose.

#include <mirelo.h>

#include <exception>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

namespace {

using mirelo::workbook::Spreadsheet;

Spreadsheet OpenOrNew(const std::filesystem::path& file) {
  return std::filesystem::exists(file) ? Spreadsheet::Open(file) : Spreadsheet::New();
}

int Run(int port, const std::filesystem::path& file, const std::vector<std::string>& tickers) {
  mirelo::LinuxHost machine;
  const mirelo::host::HostScope installed(machine);
  machine.OverrideHttpPort(port);

  // What the macros of a spreadsheet hand over is their program. Here it is one in memory.
  Spreadsheet spreadsheet = OpenOrNew(file);
  mirelo::cMirelo facade;
  facade.ExcelApplication(spreadsheet.Application());

  facade.LoadMasPosition();
  facade.masPrevVolume(mirelo::VariantArray(1, static_cast<std::int32_t>(tickers.size()), 1, 2));
  const mirelo::Variant reply = facade.GetLastQuote(mirelo::VariantArray::OfTexts(tickers));
  if (!reply.IsArray()) return 1;  // the message was shown on the machine's desktop: the terminal

  // The whole table at once, as a block of cells. Texts are taken as if they were typed: numbers become
  // numbers and dates dates.
  const mirelo::VariantArray& table = reply.AsArray();
  const auto sheet = facade.m_ObjExcelApplication()->Worksheets()->Item(1);
  sheet->Cells(1, 1)->Resize(table.UBound(1), table.UBound(2))->Value(reply);
  sheet->Cells()->EntireColumn()->AutoFit();

  spreadsheet.Save(file);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 4) {
    std::cerr << "usage: workbook PORT FILE TICKER...\n";
    return 2;
  }
  try {
    return Run(std::stoi(argv[1]), argv[2], {argv + 3, argv + argc});
  } catch (const std::exception& error) {  // failures of the library are mirelo::RuntimeError
    std::cerr << "error: " << error.what() << '\n';
    return 1;
  }
}
