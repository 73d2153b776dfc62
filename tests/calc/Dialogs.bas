REM  Chooses the menu's commands that show something, while a person (dialog_person.py) comes to see to it, and notes what comes
REM  of it.

Option Explicit

Const Table = "Dovanta2_Quotes"
Const Patience = 20  ' seconds

Sub Main
  Dim Here, There
  On Error GoTo Failed
  Here = NewDocument("Here")
  There = NewDocument("There")
  ChooseCommand(Here, "help")
  Boxing
  Cancelling(Here)
  Going(Here, There)
  EndingADay(Here)
  Here.setModified(False)  ' or the office asks whether to store it
  AskNobody
  CancellingWhileItAsks(There)
  Note("end", "reached")
  HavingCellsAsk(There)
  Exit Sub  ' the person ends the office
Failed:
  Note("failed", Err & " " & Replace(Error$, Chr(10), " ") & " in line " & Erl)
Done:
  On Error Resume Next
  StarDesktop.terminate()
End Sub

REM  A box lies above a document that somebody closes meanwhile.
Sub Boxing
  Dim Document
  Document = NewDocument("Closes")
  RunPython("dialog_person.py$to_close_below_the_box")
  ChooseCommand(Document, "status")
  Note("open behind the box", IsOpen("Closes"))
End Sub

Sub Cancelling(Document)
  RunPython("dialog_person.py$to_cancel")
  ChooseCommand(Document, "settings")
  Note("seconds when cancelled", Stored("Seconds"))
  Note("table when cancelled", Document.Sheets.hasByName(Table))
End Sub

REM  Other documents are in front of the one whose settings are shown; one of them is closed meanwhile.
Sub Going(Here, There)
  NewDocument("Beside").CurrentController.Frame.activate()
  RunPython("dialog_person.py$to_go")
  ChooseCommand(Here, "settings")
  Note("open beside the dialog", IsOpen("Beside"))
  Note("seconds", Stored("Seconds"))
  Note("tickers", Tickers(Here))
  Note("table in front", There.Sheets.hasByName(Table))
  Note("states behind the dialog", StatesIn(Here))
End Sub

REM  A day ends with a box, beside which another window presses Start.
Sub EndingADay(Document)
  RunPython("dialog_person.py$to_start_beside_the_box")
  ChooseCommand(Document, "start")
  AwaitQuotes(Document)
  Document.Sheets.getByName(Table).protect("")
  AwaitFile("answered")
  Document.Sheets.getByName(Table).unprotect("")
  ChooseCommand(Document, "start")
  Note("states behind the boxes", StatesIn(Document))
  ChooseCommand(Document, "stop")
End Sub

REM  From here on nobody answers.
Sub AskNobody
  Settings().SaveSetting("Settings", "HTTPPort", Environ("MIRELO_MUTE_PORT"))
End Sub

Sub CancellingWhileItAsks(Document)
  Dim Begun As Date
  RunPython("dialog_person.py$to_cancel_while_it_asks")
  Begun = Now()
  ChooseCommand(Document, "settings")
  Note("cancelled in time", Now() < Begun + Patience / 86400)
  Note("states behind cancelling", StatesIn(Document))
End Sub

REM  Their request waits when the office is to end.
Sub HavingCellsAsk(Document)
  RunPython("dialog_person.py$to_leave_while_cells_ask")
  Document.Sheets.getByIndex(0).getCellRangeByName("H1").Formula = "=QUOTE(""MSFT"")"
  Document.setModified(False)
End Sub

Function NewDocument(Title As String)
  Dim Document
  Document = StarDesktop.loadComponentFromURL("private:factory/scalc", "_blank", 0, Array())
  Document.setTitle(Title)
  NewDocument = Document
End Function

Function IsOpen(Title As String) As Boolean
  Dim All
  All = StarDesktop.Components.createEnumeration()
  Do While All.hasMoreElements()
    IsOpen = IsOpen Or All.nextElement().Title = Title
  Loop
End Function

Function Stored(Key As String) As String
  Stored = Settings().GetSetting("Settings", Key, "nothing")
End Function

Function Settings()
  Dim Made
  Made = createUnoService("mirelo.CAppSettings")
  Made.Init("Kestrin", "Dovanta2")
  Settings = Made
End Function

Sub AwaitQuotes(Document)
  Dim Deadline As Date
  Deadline = Now() + Patience / 86400
  Do While Document.Sheets.getByName(Table).getCellRangeByName("B3").Value = 0
    If Now() > Deadline Then Error 1000
    Wait 20
  Loop
End Sub

Function Tickers(Document) As String
  Dim Row
  If Not Document.Sheets.hasByName(Table) Then Exit Function
  For Each Row In Document.Sheets.getByName(Table).getCellRangeByName("A2:A5").getDataArray()
    Tickers = Tickers & Row(0) & "|"
  Next Row
End Function
