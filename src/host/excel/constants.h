#pragma once

#include <cstdint>

namespace mirelo::host::excel {

// Values of the spreadsheet's enumerations, under its own names.

enum XlDirection : std::int32_t { xlDown = -4121, xlToLeft = -4159, xlToRight = -4161, xlUp = -4162 };

enum XlHAlign : std::int32_t {
  xlHAlignGeneral = 1,  // text to the left, numbers to the right, booleans and errors in the middle
  xlHAlignFill = 5,
  xlHAlignCenterAcrossSelection = 7,
  xlHAlignCenter = -4108,
  xlHAlignDistributed = -4117,
  xlHAlignJustify = -4130,
  xlHAlignLeft = -4131,
  xlHAlignRight = -4152,
};

enum XlDeleteShiftDirection : std::int32_t { xlShiftUp = -4162 };

// The edges of a range, and the lines between its cells.
enum XlBordersIndex : std::int32_t {
  xlEdgeLeft = 7,
  xlEdgeTop = 8,
  xlEdgeBottom = 9,
  xlEdgeRight = 10,
  xlInsideVertical = 11,
  xlInsideHorizontal = 12,
};

enum XlLineStyle : std::int32_t {
  xlContinuous = 1,
  xlDashDot = 4,
  xlDashDotDot = 5,
  xlSlantDashDot = 13,
  xlDash = -4115,
  xlDot = -4118,
  xlDouble = -4119,
  xlLineStyleNone = -4142,
};

enum XlBorderWeight : std::int32_t { xlHairline = 1, xlThin = 2, xlThick = 4, xlMedium = -4138 };

enum XlFormatConditionType : std::int32_t { xlCellValue = 1, xlExpression = 2 };

enum XlFormatConditionOperator : std::int32_t {
  xlBetween = 1,
  xlNotBetween = 2,
  xlEqual = 3,
  xlNotEqual = 4,
  xlGreater = 5,
  xlLess = 6,
  xlGreaterEqual = 7,
  xlLessEqual = 8,
};

enum XlCellType : std::int32_t { xlCellTypeLastCell = 11 };

enum XlSearchOrder : std::int32_t { xlByRows = 1, xlByColumns = 2 };
enum XlSearchDirection : std::int32_t { xlNext = 1, xlPrevious = 2 };

enum XlSheetType : std::int32_t { xlSheetChart = 3, xlSheetWorksheet = -4167 };

enum MsoTriState : std::int32_t { msoFalse = 0, msoTrue = -1 };

// The shape of a sheet's floating object. A chart is one.
enum MsoShapeType : std::int32_t { msoChart = 3, msoComment = 4 };

enum XlChartType : std::int32_t { xlColumnClustered = 51, xlLineMarkers = 65 };
// Whether each column or each row of the source is a series.
enum XlRowCol : std::int32_t { xlRows = 1, xlColumns = 2 };
enum XlChartLocation : std::int32_t { xlLocationAsNewSheet = 1, xlLocationAsObject = 2 };
enum XlAxisType : std::int32_t { xlCategory = 1, xlValue = 2 };
enum XlAxisGroup : std::int32_t { xlPrimary = 1, xlSecondary = 2 };

enum XlMarkerStyle : std::int32_t {
  xlMarkerStyleSquare = 1,
  xlMarkerStyleDiamond = 2,
  xlMarkerStyleTriangle = 3,
  xlMarkerStyleCircle = 8,
  xlMarkerStyleAutomatic = -4105,
  xlMarkerStyleNone = -4142,
};

enum MsoGradientStyle : std::int32_t { msoGradientHorizontal = 1, msoGradientVertical = 2 };

enum XlPattern : std::int32_t { xlPatternNone = -4142, xlPatternAutomatic = -4105, xlPatternSolid = 1 };

// A line of a chart that nobody drew: the chart's own choice.
inline constexpr std::int32_t xlLineStyleAutomatic = -4105;

// Colour indexes besides those of the palette, which run from 1 to 56.
enum XlColorIndex : std::int32_t {
  xlColorIndexNone = -4142,       // no fill, no line
  xlColorIndexAutomatic = -4105,  // the colour that text and lines have when nobody chose one
};

// The error by which the spreadsheet refuses: a bad address or name, a value out of its range, a cell off the
// sheet.
inline constexpr std::int32_t kApplicationError = 1004;

}  // namespace mirelo::host::excel
