REM  Has quotes come into a document while the test kills who sends them, or this office; notes what comes of it.

Option Explicit

Const Table = "Dovanta2_Quotes"
Const Patience = 20  ' seconds for each thing that is to come

REM  Who sends them is killed, and comes back.
Sub WithoutSender
  Dim Document, Came As Long
  On Error GoTo Failed
  Document = Begun()
  Came = QuotesTold(Document)
  Note("comes", Came > 0)
  Note("kill the sender", Came)
  AwaitFile("killed")
  Came = SettledQuotes(Document)
  Note("without a sender", StatesIn(Document))
  ChooseCommand(Document, "status")
  Note("bring the sender back", Came)
  AwaitFile("back")
  Note("comes again", ComesBehind(Document, Came))
  Note("with the sender", StatesIn(Document))
  ChooseCommand(Document, "status")
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

REM  This office is killed: what was saved before has quotes in it.
Sub Dying
  Dim Document, Came As Long
  On Error GoTo Failed
  Document = Begun()
  Document.Sheets.getByName(Table).getCellRangeByName("H1").String = "saved in the day"
  Document.store()
  Came = QuotesTold(Document)
  Note("kill the office", ComesBehind(Document, Came))
  Do While True
    Wait 100
  Loop
Failed:
  Note("failed", Err & " " & Error$ & " in line " & Erl)
  On Error Resume Next
  StarDesktop.terminate()
End Sub

REM  The same document, in the office that is started behind the one that was killed.
Sub Behind
  Dim Document
  On Error GoTo Failed
  Document = Begun()
  Note("read-only behind a kill", Document.isReadonly())
  Note("saved before the kill", Document.Sheets.getByName(Table).getCellRangeByName("H1").String)
  Note("comes behind a kill", ComesBehind(Document, QuotesTold(Document)))
  Document.store()
  ChooseCommand(Document, "stop")
  Document.close(True)
  Note("end behind a kill", "reached")
  GoTo Done
Failed:
  Note("failed", Err & " " & Error$ & " in line " & Erl)
Done:
  On Error Resume Next
  StarDesktop.terminate()
End Sub

Function Begun()
  Dim Document
  Document = StarDesktop.loadComponentFromURL(ConvertToURL(Environ("MIRELO_FOLDER") & "/quotes.xlsx"), "_blank", 0, Array())
  ChooseCommand(Document, "start")
  If Not ComesBehind(Document, 0) Then Error 1000
  Begun = Document
End Function

Function ComesBehind(Document, Came As Long) As Boolean
  Dim Deadline As Date
  Deadline = Now() + Patience / 86400
  Do While QuotesTold(Document) <= Came And Now() < Deadline
    Wait 50
  Loop
  ComesBehind = QuotesTold(Document) > Came
End Function

' What was sent before the kill may come a little later.
Function SettledQuotes(Document) As Long
  Dim Before As Long
  Do
    Before = QuotesTold(Document)
    Wait 500
  Loop While QuotesTold(Document) > Before
  SettledQuotes = Before
End Function
