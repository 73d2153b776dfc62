REM  Has the office work for long while quotes come into a document, and notes what stands in the tables then. What comes
REM  meanwhile waits, or comes between two steps of the work where the office handles its events there.

Option Explicit

Const Table = "Dovanta2_Quotes"
Const Patience = 30  ' seconds in which some quote is to come
Const Rows = 60000

Sub Main
  Dim Document, Ticker
  On Error GoTo Failed
  Document = Opened("quotes.xlsx")
  FillOwnSheet(Document)
  Document.UndoManager.clear()
  Note("opened", "True")
  AwaitFile("begin")
  ChooseCommand(Document, "start")
  Awaiting(Document, 1)
  Saving(Document, "ods", "calc8")
  Sorting(Document)
  Calculating(Document)
  Saving(Document, "xlsx", "Calc MS Excel 2007 XML")
  AwaitingTheLast(Document, Val(Environ("MIRELO_LAST_VOLUME")))
  Note("quotes", QuotesTold(Document))
  For Each Ticker In Array("MSFT", "IBM")
    Note("table of " & Ticker, RowOf(Document.Sheets.getByName(Table), Ticker))
    Note("history of " & Ticker, LastOf(Document.Sheets.getByName("Quotes_Vertical(" & Ticker & ")")))
    Note("rows of " & Ticker, RowsIn(Document.Sheets.getByName("Quotes_Vertical(" & Ticker & ")")))
  Next Ticker
  Note("steps", Join(Document.UndoManager.AllUndoActionTitles, ", "))
  Document.UndoManager.undo()
  Note("behind a step back", Document.Sheets.getByName("Own").getCellRangeByName("A1").Value & RowOf(Document.Sheets.getByName(Table), "MSFT"))
  ChooseCommand(Document, "stop")
  Document.close(True)
  Note("end", "reached")
  GoTo Done
Failed:
  Note("failed", Err & " " & Error$ & " in line " & Erl)
Done:
  On Error Resume Next
  StarDesktop.terminate()
End Sub

Sub FillOwnSheet(Document)
  Dim Sheet
  Document.Sheets.insertNewByName("Own", Document.Sheets.Count)
  Sheet = Document.Sheets.getByName("Own")
  Sheet.getCellRangeByName("A1").Value = 1
  Sheet.getCellRangeByName("A1:A" & Rows).fillSeries(com.sun.star.sheet.FillDirection.TO_BOTTOM, com.sun.star.sheet.FillMode.LINEAR, com.sun.star.sheet.FillDateMode.FILL_DATE_DAY, 1, 9999999)
  Sheet.getCellRangeByName("B1:B" & Rows).setDataArray(Sheet.getCellRangeByName("A1:A" & Rows).getDataArray())
  Sheet.getCellRangeByName("D1").Formula = "=SUMPRODUCT(SQRT(A$1:A$" & Rows & ")*B$1:B$" & Rows & "*ROW())"
  Sheet.getCellRangeByName("D1:D30").fillAuto(com.sun.star.sheet.FillDirection.TO_BOTTOM, 1)
End Sub

Sub Saving(Document, Kind As String, Filter As String)
  Dim Came As Long, Begun As Double
  Came = QuotesTold(Document)
  Begun = CDbl(Timer)
  Document.storeToURL(ConvertToURL(Environ("MIRELO_FOLDER") & "/saved." & Kind), Array(Argument("FilterName", Filter)))
  NoteWork(Document, "saving " & Kind, Came, Begun)
End Sub

Sub Sorting(Document)
  Dim Field(0) As New com.sun.star.table.TableSortField, Came As Long, Begun As Double
  Field(0).Field = 0
  Field(0).IsAscending = False
  Came = QuotesTold(Document)
  Begun = CDbl(Timer)
  Document.Sheets.getByName("Own").getCellRangeByName("A1:B" & Rows).sort(Array(Argument("SortFields", Field()), Argument("ContainsHeader", False)))
  NoteWork(Document, "sorting", Came, Begun)
End Sub

Sub Calculating(Document)
  Dim Came As Long, Begun As Double
  Came = QuotesTold(Document)
  Begun = CDbl(Timer)
  Document.calculateAll()
  NoteWork(Document, "calculating", Came, Begun)
End Sub

' What it took, and whether some came until a moment behind it.
Sub NoteWork(Document, What As String, Came As Long, Begun As Double)
  Note("seconds of " & What, CDbl(Timer) - Begun)
  Wait 300
  Note("comes behind " & What, QuotesTold(Document) > Came)
End Sub

Sub Awaiting(Document, Count As Long)
  Dim Before As Long, Deadline As Date
  Deadline = Now() + Patience / 86400
  Do While QuotesTold(Document) < Count And Now() < Deadline
    Before = QuotesTold(Document)
    Wait 50
    If QuotesTold(Document) > Before Then Deadline = Now() + Patience / 86400
  Loop
  Wait 300  ' until what came is written
End Sub

Sub AwaitingTheLast(Document, Volume As Long)
  Dim Sheet, Deadline As Date
  Sheet = Document.Sheets.getByName(Table)
  Deadline = Now() + Patience / 86400
  Do While Sheet.getCellRangeByName("C3").Value + Sheet.getCellRangeByName("C4").Value < 2 * Volume And Now() < Deadline
    Wait 50
  Loop
  Wait 300
End Sub
