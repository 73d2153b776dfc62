#pragma once

#include <vector>

#include "automation_server/class.h"

// The spreadsheet's object model as automation clients call it: the members of host/excel by the names and
// arguments that its clients know. Nobody makes these objects; the application hands them out.
namespace mirelo::automation_server::excel {

void AddProgramClasses(std::vector<Class>& classes);    // Application, Window, Workbook, the two Sheets
void AddSheetClasses(std::vector<Class>& classes);      // Worksheet, Range
void AddFormatClasses(std::vector<Class>& classes);     // Font, Interior, Border, conditions
void AddShapeClasses(std::vector<Class>& classes);      // Comment, Shapes, Shape
void AddChartClasses(std::vector<Class>& classes);      // Chart and what holds it, Series, Point
void AddChartPartClasses(std::vector<Class>& classes);  // Axis, titles, areas, fills

}  // namespace mirelo::automation_server::excel
