#pragma once

#include "com/system.h"

#include "com/held.h"

namespace mirelo::testing {

// The spreadsheet in memory, served as a spreadsheet program is: its application, made by these numbers, or
// by the names Mirelo.Spreadsheet and Mirelo.SpreadsheetProgram.
constexpr CLSID kInThisProcess{0x6B0E2F4A, 0x2D1B, 0x4C55, {0x9E, 0x2A, 0x51, 0x0C, 0x8B, 0x7D, 0x33, 0x01}};
constexpr CLSID kInItsOwnProcess{
    0x6B0E2F4A, 0x2D1B, 0x4C55, {0x9E, 0x2A, 0x51, 0x0C, 0x8B, 0x7D, 0x33, 0x02}};

// The semaphore that says how many of the calls to come the program refuses, as one does in which a cell is
// edited. Whoever wants refusals makes it.
constexpr const wchar_t* kRefusals = L"Local\\MireloSpreadsheetRefusals";

// A factory of applications, each with a workbook of its own.
com::Held<IClassFactory> SpreadsheetFactory();

}  // namespace mirelo::testing
