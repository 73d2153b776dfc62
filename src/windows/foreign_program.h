#pragma once

namespace mirelo::windows {

// From now on the objects of a spreadsheet program that clients hand in are what the classes take: its
// application, chart sheets and embedded charts, worksheets, cells. They are known by the names of their
// classes, and an application by having worksheets, too. Clients are given the program's own objects back.
void TakeSpreadsheetPrograms();

}  // namespace mirelo::windows
