REM  Has many quotes come into a document, and notes how many came, what stands in the table then, and what memory they took.

Option Explicit

Const Table = "Dovanta2_Quotes"
Const Patience = 30  ' seconds in which some quote is to come

Sub Main
  Dim Document, Ticker
  On Error GoTo Failed
  Document = StarDesktop.loadComponentFromURL(ConvertToURL(Environ("MIRELO_FOLDER") & "/quotes.xlsx"), "_blank", 0, Array())
  Note("opened", "True")
  AwaitFile("begin")
  ChooseCommand(Document, "start")
  Following(Document, Val(Environ("MIRELO_QUOTES")))
  For Each Ticker In Array("MSFT", "IBM")
    Note("table of " & Ticker, Ticker & RowOf(Document.Sheets.getByName(Table), Ticker))
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
    Came = QuotesTold(Document)
    If Came > Before Then Deadline = Now() + Patience / 86400
    If IsEarly And Came * 10 >= Awaited Then
      Note("memory early", Memory())
      IsEarly = False
    End If
  Loop
  Wait 500  ' for what would be too much
  Note("memory in the end", Memory())
  Note("quotes", QuotesTold(Document))
End Sub

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
