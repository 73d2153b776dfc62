REM  Has many quotes come into a document, and notes how many came, what stands in the table then, and what memory they took.

Option Explicit

Const Table = "Dovanta2_Quotes"
Const Patience = 30  ' seconds in which some quote is to come

Sub Main
  Dim Document, Ticker
  On Error GoTo Failed
  Document = StarDesktop.loadComponentFromURL(ConvertToURL(Environ("MIRELO_FOLDER") & "/quotes.xlsx"), "_blank", 0, Array())
  Note("opened", "True")
  AwaitFile(Environ("MIRELO_FOLDER") & "/begin")
  ChooseCommand(Document, "start")
  Following(Document, Val(Environ("MIRELO_QUOTES")))
  For Each Ticker In Array("MSFT", "IBM")
    Note("table of " & Ticker, RowOf(Document.Sheets.getByName(Table), Ticker))
    Note("history of " & Ticker, Ticker & LastOf(Document.Sheets.getByName("Quotes_Vertical(" & Ticker & ")")))
  Next Ticker
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

Sub Following(Document, Awaited As Long)
  Dim Came As Long, Before As Long, Deadline As Date, IsEarly As Boolean
  IsEarly = True
  Deadline = Now() + Patience / 86400
  Do While Came < Awaited And Now() < Deadline
    Wait 50
    Before = Came
    Came = Quotes(Document)
    If Came > Before Then Deadline = Now() + Patience / 86400
    If IsEarly And Came * 10 >= Awaited Then
      Note("memory early", Memory())
      IsEarly = False
    End If
  Loop
  Wait 500  ' for what would be too much
  Note("memory in the end", Memory())
  Note("quotes", Quotes(Document))
End Sub

' As the status bar tells it.
Function Quotes(Document) As Long
  Dim Line
  Line = Split(StatesIn(Document), "Mirelo: ")
  If UBound(Line) > 0 Then Quotes = Val(Line(1))
End Function

Function RowOf(Sheet, Ticker) As String
  Dim Row As Long
  For Row = 2 To 3
    If Sheet.getCellByPosition(0, Row).String = Ticker Then RowOf = Ticker & Numbers(Sheet.getCellRangeByPosition(1, Row, 2, Row))
  Next Row
End Function

Function LastOf(Sheet) As String
  Dim Cursor, Row As Long
  Cursor = Sheet.createCursor()
  Cursor.gotoEndOfUsedArea(False)
  Row = Cursor.RangeAddress.EndRow
  LastOf = Numbers(Sheet.getCellRangeByPosition(0, Row, 1, Row))
End Function

Function Numbers(Range) As String
  Dim Value
  For Each Value In Range.getDataArray()(0)
    Numbers = Numbers & " " & Value
  Next Value
End Function

' What the process has for itself alone, in KB.
Function Memory() As Long
  Dim Status, Line As String
  Status = createUnoService("com.sun.star.io.TextInputStream")
  Status.setInputStream(createUnoService("com.sun.star.ucb.SimpleFileAccess").openFileRead("file:///proc/self/status"))
  Do While Not Status.isEOF()
    Line = Status.readLine()
    If Left(Line, 8) = "RssAnon:" Then Memory = Val(Trim(Replace(Mid(Line, 9), Chr(9), " ")))
  Loop
  Status.closeInput()
End Function

Sub AwaitFile(Name As String)
  Dim Deadline As Date
  Deadline = Now() + Patience / 86400
  Do While Not FileExists(Name)
    If Now() > Deadline Then Error 1000
    Wait 20
  Loop
End Sub
