REM  What stands in the tables of quotes that have the columns Ticker, Last, Volume, and in histories of Last and Volume.

Option Explicit

REM  Of one of the first two tickers: " 28.25 1000".
Function RowOf(Sheet, Ticker) As String
  Dim Row As Long
  For Row = 2 To 3
    If Sheet.getCellByPosition(0, Row).String = Ticker Then RowOf = Numbers(Sheet.getCellRangeByPosition(1, Row, 2, Row))
  Next Row
End Function

REM  The same of a history's last row.
Function LastOf(Sheet) As String
  LastOf = Numbers(Sheet.getCellRangeByPosition(0, RowsIn(Sheet) - 1, 1, RowsIn(Sheet) - 1))
End Function

REM  Captions among them.
Function RowsIn(Sheet) As Long
  Dim Cursor
  Cursor = Sheet.createCursor()
  Cursor.gotoEndOfUsedArea(False)
  RowsIn = Cursor.RangeAddress.EndRow + 1
End Function

Function Numbers(Range) As String
  Dim Value
  For Each Value In Range.getDataArray()(0)
    Numbers = Numbers & " " & Value
  Next Value
End Function
