REM  Does to the tables of a day what people do to tables, and notes whether quotes still stand where they belong.
REM
REM  The whole part of a price says whose it is: MSFT has 10 as Last, 20 as Bid and 30 as Ask, IBM 110, 120 and 130.

Option Explicit

Const Table = "Dovanta2_Quotes"
Const History = "Quotes_Vertical(MSFT)"

Sub Main
  Dim Document
  On Error GoTo Failed
  Document = Opened("quotes.xlsx")
  ChooseCommand(Document, "start")
  Tables(Document)
  Histories(Document)
  Looks(Document)
  Steps(Document)
  Hiding(Document)
  Saving(Document)
  Document.close(True)
  Note("end", "reached")
  GoTo Done
Failed:
  Note("failed", Err & " " & Error$ & " in line " & Erl)
Done:
  On Error Resume Next
  StarDesktop.terminate()
End Sub

Sub Tables(Document)
  Dim Sheet
  Sheet = Document.Sheets.getByName(Table)
  Note("at first", Quotes(Document))
  Sheet.Rows.insertByIndex(0, 2)
  Note("below inserted rows", Quotes(Document))
  Sheet.Columns.insertByIndex(2, 1)
  Sheet.getCellByPosition(2, 4).String = "my note"
  Note("beside an inserted column", Quotes(Document))
  Note("my note", Sheet.getCellByPosition(2, 4).String)
  SortRows(Sheet.getCellRangeByName("A5:E6"))
  Note("in sorted rows", Quotes(Document))
  Sheet.Columns.removeByIndex(3, 1)
  Sheet.getCellRangeByName("D4").String = "Mine"
  Sheet.getCellRangeByName("D5:D6").setDataArray(Array(Array(7), Array(8)))
  Note("without a deleted column", Quotes(Document))
  Note("my numbers", Sheet.getCellRangeByName("D5").Value & " " & Sheet.getCellRangeByName("D6").Value)
  Sheet.getCellRangeByName("B5:C5").clearContents(7)
  Sheet.getCellRangeByName("A5").String = "GE"
  Note("without a ticker", Quotes(Document))
  UndoSteps(Document, 99)
  Note("behind undoing all that", Quotes(Document))
  Sheet.Rows.removeByIndex(0, 1)
  Note("above a deleted row", Quotes(Document))
  UndoSteps(Document, 1)
End Sub

Sub Looks(Document)
  Dim Sheet, Filter, Condition(0) As New com.sun.star.sheet.TableFilterField
  Sheet = Document.Sheets.getByName(Table)
  Sheet.getCellRangeByName("B3:C3").merge(True)
  Note("in merged cells", Quotes(Document))
  Sheet.getCellRangeByName("B3:C3").merge(False)
  Note("in cells taken apart", Quotes(Document))
  Sheet.getCellRangeByName("B3:D4").clearContents(7)
  Note("in emptied cells", Quotes(Document))
  Sheet.copyRange(Sheet.getCellRangeByName("B4").CellAddress, Sheet.getCellRangeByName("B3:D3").RangeAddress)
  Note("in cells that were pasted over", Quotes(Document))
  Filter = Sheet.getCellRangeByName("A2:D4").createFilterDescriptor(True)
  Condition(0).Field = 0
  Condition(0).Operator = com.sun.star.sheet.FilterOperator.EQUAL
  Condition(0).StringValue = "IBM"
  Filter.ContainsHeader = True
  Filter.setFilterFields(Condition())
  Sheet.getCellRangeByName("A2:D4").filter(Filter)
  Note("filtered away", Sheet.Rows.getByIndex(2).IsVisible)
  Note("in rows that are filtered away", Quotes(Document))
  Filter.setFilterFields(Array())
  Sheet.getCellRangeByName("A2:D4").filter(Filter)
  Document.CurrentController.setActiveSheet(Document.Sheets.getByIndex(0))
  Sheet.IsVisible = False
  Note("on a hidden sheet", Quotes(Document))
  Sheet.IsVisible = True
  Document.CurrentController.setActiveSheet(Sheet)
  Document.CurrentController.freezeAtPosition(1, 2)
  Note("below frozen rows", Quotes(Document))
End Sub

Sub Histories(Document)
  Dim Sheet
  Sheet = Document.Sheets.getByName(History)
  Sheet.Name = "My MSFT"
  Note("in a renamed history", Grows(Sheet))
  Sheet.Rows.insertByIndex(0, 1)
  Note("in a history below a row", Grows(Sheet))
  Sheet.Rows.removeByIndex(4, 2)
  Note("in a history without two rows", Grows(Sheet))
  Sheet.Columns.removeByIndex(0, 1)
  Note("in a history without a field", Grows(Sheet))
End Sub

REM  The person's steps are taken back one after the other while quotes come.
Sub Steps(Document)
  Dim Sheet, Number As Long
  Note("steps", Join(Document.UndoManager.AllUndoActionTitles, ", "))
  Document.Sheets.insertNewByName("Own", 0)
  Sheet = Document.Sheets.getByName("Own")
  For Number = 1 To 25
    Sheet.getCellByPosition(0, Number - 1).Value = Number
    If Number Mod 5 = 0 Then Document.Sheets.getByName(Table).Rows.insertByIndex(0, 1)
  Next Number
  For Number = 1 To 20
    Document.UndoManager.undo()
    Wait 20
  Next Number
  Note("behind twenty steps back", Quotes(Document))
  Note("steps taken back", Sheet.getCellByPosition(0, 8).Value & " " & Sheet.getCellByPosition(0, 9).Value)
End Sub

REM  The history of the ticker whose sheet is as Go has left it.
Sub Hiding(Document)
  Dim Sheet
  Sheet = Document.Sheets.getByName("Quotes_Vertical(IBM)")
  Note("cells of charts", CellsOfCharts(Sheet))
  Sheet.IsVisible = False
  Note("charts of a hidden history", ChartsFollow(Sheet, CellsOfCharts(Sheet)))
  Sheet.IsVisible = True
  Note("charts of a history that is seen again", ChartsFollow(Sheet, CellsOfCharts(Sheet)))
End Sub

Function ChartsFollow(Sheet, Before As String) As Boolean
  Dim Tries As Integer
  For Tries = 1 To 300
    ChartsFollow = CellsOfCharts(Sheet) <> Before
    If ChartsFollow Then Exit For
    Wait 50
  Next Tries
End Function

Function CellsOfCharts(Sheet) As String
  Dim Number As Long
  For Number = 0 To Sheet.Charts.Count - 1
    CellsOfCharts = CellsOfCharts & Join(Sheet.Charts.getByIndex(Number).EmbeddedObject.getUsedRangeRepresentations(), " ") & " "
  Next Number
End Function

Sub Saving(Document)
  Document.storeAsURL(ConvertToURL(Environ("MIRELO_FOLDER") & "/other.xlsx"), Array(Argument("FilterName", "Calc MS Excel 2007 XML")))
  Note("behind saving as another kind", Quotes(Document))
End Sub

Sub SortRows(Range)
  Dim Field(0) As New com.sun.star.table.TableSortField
  Field(0).Field = 0
  Field(0).IsAscending = Range.getCellByPosition(0, 0).String > Range.getCellByPosition(0, 1).String
  Range.sort(Array(Argument("SortFields", Field()), Argument("ContainsHeader", False)))
End Sub

Sub UndoSteps(Document, Count As Long)
  Dim Number As Long
  For Number = 1 To Count
    If UBound(Document.UndoManager.AllUndoActionTitles) >= 0 Then Document.UndoManager.undo()
  Next Number
End Sub

REM  Waits until quotes have come to all their cells, or for a while; says which have got some, and where a price stands that
REM  is another one's.
Function Quotes(Document) As String
  Dim Sheet, Head As Long, Before, Tries As Integer, Row As Long, Column As Long, Waiting As Boolean
  Sheet = Document.Sheets.getByName(Table)
  For Tries = 1 To 300
    Head = HeadOf(Sheet)
    If IsEmpty(Before) Then Before = Numbers(Sheet)
    Wait 50
    Quotes = ""
    Waiting = False
    For Row = 0 To 12
      For Column = 1 To 6
        If CodeOf(TickerIn(Sheet, Row), CaptionIn(Sheet, Head, Column)) > 0 And Row > Head Then
          If Sheet.getCellByPosition(Column, Row).Value <> Before(Row)(Column) Then
            Quotes = Quotes & TickerIn(Sheet, Row) & "." & CaptionIn(Sheet, Head, Column) & " "
          Else
            Waiting = True
          End If
        End If
      Next Column
    Next Row
    If Not Waiting Then Exit For
  Next Tries
  Quotes = Quotes & WrongIn(Sheet, Head)
End Function

Function WrongIn(Sheet, Head As Long) As String
  Dim Row As Long, Column As Long, Code As Long, Cell
  For Row = 0 To 12
    For Column = 1 To 6
      Cell = Sheet.getCellByPosition(Column, Row)
      Code = Int(Cell.Value)
      If Code >= 10 And Code <> CodeOf(TickerIn(Sheet, Row), CaptionIn(Sheet, Head, Column)) Then
        WrongIn = WrongIn & "wrong: " & Cell.AbsoluteName & "=" & Cell.Value & " "
      End If
    Next Column
  Next Row
End Function

Function Numbers(Sheet)
  Numbers = Sheet.getCellRangeByPosition(0, 0, 7, 13).getDataArray()
End Function

Function HeadOf(Sheet) As Long
  Do While Sheet.getCellByPosition(0, HeadOf).String <> "Ticker" And HeadOf < 12
    HeadOf = HeadOf + 1
  Loop
End Function

Function TickerIn(Sheet, Row As Long) As String
  TickerIn = Sheet.getCellByPosition(0, Row).String
End Function

Function CaptionIn(Sheet, Head As Long, Column As Long) As String
  CaptionIn = Sheet.getCellByPosition(Column, Head).String
End Function

Function CodeOf(Ticker As String, Caption As String) As Long
  Dim Found As Long
  Found = InStr("Last Bid  Ask  ", Caption & " ")
  If Caption = "" Or Found = 0 Then Exit Function
  CodeOf = 10 * ((Found - 1) \ 5 + 1)
  If Ticker = "IBM" Then CodeOf = CodeOf + 100
  If Ticker <> "IBM" And Ticker <> "MSFT" Then CodeOf = 0
End Function

REM  Whether rows are added at the foot of a history, each price in its own column and none left out.
Function Grows(Sheet) As String
  Dim First As Long, Foot As Long, Before As Long, Tries As Integer, Column As Long, Row As Long, Cell
  First = 0
  Do While CodeOf("MSFT", Sheet.getCellByPosition(0, First).String) = 0 And First < 10
    First = First + 1
  Loop
  Before = FootOf(Sheet, First)
  For Tries = 1 To 300
    Wait 50
    If FootOf(Sheet, First) > Before + 1 Then Exit For
  Next Tries
  Grows = IIf(FootOf(Sheet, First) > Before + 1, "grows", "stands")
  Foot = FootOf(Sheet, First)
  For Row = Foot - 3 To Foot + 2
    For Column = 0 To 3
      Cell = Sheet.getCellByPosition(Column, Row)
      If CaptionIn(Sheet, First, Column) = "LastVolume" Then  ' no price
      ElseIf Row < Foot And CaptionIn(Sheet, First, Column) <> "" Or Cell.Value <> 0 Then
        If Int(Cell.Value) <> CodeOf("MSFT", CaptionIn(Sheet, First, Column)) Then Grows = Grows & " wrong: " & Cell.AbsoluteName & "=" & Cell.String
      End If
    Next Column
  Next Row
End Function

REM  The first row below the captions without a number.
Function FootOf(Sheet, First As Long) As Long
  Dim Filled
  Filled = Sheet.getCellRangeByPosition(0, First + 1, 0, First + 5000).queryContentCells(com.sun.star.sheet.CellFlags.VALUE).RangeAddresses
  FootOf = First + 1
  If UBound(Filled) >= 0 Then FootOf = IIf(Filled(0).StartRow = First + 1, Filled(0).EndRow + 1, First + 1)
End Function
