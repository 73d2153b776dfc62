#pragma once

namespace mirelo::windows {

// After this call the classes accept objects of a spreadsheet program from clients: its application, chart
// sheets and embedded charts, worksheets, cells. They are known by the names of their classes, and an
// application by having worksheets, too. Clients are given the program's own objects back.
void TakeSpreadsheetPrograms();

}  // namespace mirelo::windows
