REM  Runs the macros of examples/calc in a document of its own, notes what it finds, and ends the office.

Option Explicit

Global IsGerman As Boolean

Sub Main
  Dim Document
  On Error GoTo Failed
  GlobalScope.BasicLibraries.loadLibrary("Examples")
  Document = StarDesktop.loadComponentFromURL(ConvertToURL(Environ("MIRELO_TABLE")), "_blank", 0, Array())

  AskQuotes
  NoteCells("asked", Document, 0)
  NoteMenu("behind asking", Document)
  AskWhereTheLocaleChanges(Document)

  StartStream
  AwaitQuotes(Document)
  WithAnotherInFront(Document)
  StopStream
  NoteCells("streamed", Document, 10)
  Note("status", Status)
  NoteMenu("behind the stream", Document)
  WithItsDocumentClosed(Document)

  Settings(Document)
  NoteMenu("behind the settings", Document)
  InGerman(Document)
  Formulas(Document)

  Prepare
  WriteThroughTheFacade(Document)
  Errors
  Identity
  Note("end", "reached")
  GoTo Done
Failed:
  Note("failed", Err & " " & Error$ & " in line " & Erl)
Done:
  On Error Resume Next
  Document.close(True)
  StarDesktop.terminate()
End Sub

REM  Amid the request somebody has the office speak German, where numbers are written in another way.
Sub AskWhereTheLocaleChanges(Document)
  Dim Cells
  createUnoService("com.sun.star.awt.AsyncCallback").addCallback(CreateUnoListener("German_", "com.sun.star.awt.XCallback"), Empty)
  AskQuotes
  Note("became German meanwhile", IsGerman)
  Cells = Document.Sheets.getByName("Quotes").getCellRangeByName("B1:B2").getDataArray()
  Note("asked while it became German", Cells(0)(0) > 0 And Cells(1)(0) > 0)
  SetLocale("")
  AskQuotes
End Sub

Sub German_notify(Data)
  SetLocale("de-DE")
  IsGerman = True
End Sub

Sub German_disposing(Event)
End Sub

Sub AwaitQuotes(Document)
  Dim Tries As Integer
  For Tries = 1 To 200
    If HasQuotes(Document, 10) And HasQuotes(Document, 11) Then Exit For
    Wait 100  ' the office has its events meanwhile, and the stream its steps
  Next Tries
End Sub

REM  Whoever opens another document while quotes come.
Sub WithAnotherInFront(Document)
  Dim Other, Before, Tries As Integer
  Other = NewDocument()
  Note("another in front", EqualUnoObjects(ThisComponent, Other))
  Before = CountOf(Document)
  For Tries = 1 To 200
    If CountOf(Document) > Before + 3 Then Exit For
    Wait 50
  Next Tries
  Note("comes behind another", CountOf(Document) > Before)
  Note("sheets of another", Join(Other.Sheets.ElementNames, ","))
  Other.close(True)
  Document.CurrentController.Frame.activate()
  Note("front", EqualUnoObjects(ThisComponent, Document))
End Sub

Function CountOf(Document) As Double
  CountOf = Document.Sheets.getByName("Quotes").getCellByPosition(3, 10).Value
End Function

Sub WithItsDocumentClosed(Document)
  Dim Other
  Other = NewDocument()
  StartStream
  AwaitSheet(Other)
  Note("stream of another", Other.Sheets.hasByName("Quotes"))
  Other.close(True)
  Document.CurrentController.Frame.activate()
  Note("front", EqualUnoObjects(ThisComponent, Document))
  Note("ends with its document", IsNull(Stream))
  NoteMenu("behind a closed document", Document)
End Sub

Sub AwaitSheet(Document)
  Dim Tries As Integer
  For Tries = 1 To 200
    If Document.Sheets.hasByName("Quotes") Then Exit For
    Wait 50
  Next Tries
End Sub

REM  Whose buttons a person presses. The table on the sheet knows how its quotes come.
Sub Settings(Document)
  RunPython("person.py$press", "Cancel")
  ShowSettings
  Note("stays as it was when cancelled", IsNull(Stream))
  NoteMenu("behind cancelling", Document)

  Document.Sheets.removeByName("Quotes")
  RunPython("person.py$press", "Go")
  ShowSettings
  Note("streams behind Go", Not IsNull(Stream))
  AwaitQuotes(Document)
  StopStream
  NoteCells("streamed behind Go", Document, 10)

  Document.Sheets.getByName("Dovanta2_Quotes").getCellByPosition(0, 0).String = "SnapShot( 10 sec)"
  Document.Sheets.removeByName("Quotes")
  RunPython("person.py$press", "Go")
  ShowSettings
  Note("no stream behind Go", IsNull(Stream))
  NoteCells("asked behind Go", Document, 0)
  RunPython("person.py$press", "")
End Sub

REM  Where people write 28,25.
Sub InGerman(Document)
  Dim Cell
  Cell = Document.Sheets.getByName("Quotes").getCellByPosition(8, 0)
  SetLocale("de-DE")
  WriteField(Cell, "4.5", False)
  Note("in German", Cell.String & " " & (Cell.Type = com.sun.star.table.CellContentType.VALUE))
  SetLocale("")
End Sub

Sub Formulas(Document)
  Dim Cell
  Cell = Document.Sheets.getByName("Quotes").getCellByPosition(7, 0)
  WriteField(Cell, "=1+1", False)
  Note("a formula from outside", Cell.String)
  WriteField(Cell, "1.5", True)
  Note("a ticker of digits", Cell.Type = com.sun.star.table.CellContentType.TEXT)
End Sub

REM  Whether the menu is free for a day.
Sub NoteMenu(Title As String, Document)
  ChooseCommand(Document, "start")
  Note("menu " & Title, StatesIn(Document))
  ChooseCommand(Document, "stop")
End Sub

Sub WriteThroughTheFacade(Document)
  Dim Application
  Facade.ExcelApplication = Document
  Application = Facade.ExcelApplication
  Application.Range("B30").Value = "1,234"
  Note("read back", Application.Range("B30").Value)
  Note("in the document", Document.Sheets(0).getCellRangeByName("B30").Value)
  Note("front sheet", Application.ActiveSheet.Name)
  Application.Range("B32:C33").Value = WholeNumbers()
  Note("table of whole numbers", Application.Range("C33").Value)
  Application.Range("B34:C35").Value = Array(Array(True, False), Array(False, True))
  Note("table of booleans", Application.Range("C35").Value)
End Sub

Function WholeNumbers()
  Dim Numbers(1 To 2, 1 To 2) As Long
  Numbers(2, 2) = 70000
  WholeNumbers = Numbers
End Function

Sub Errors
  Note("no such member", FailureOf(Facade, 1))
  Note("argument left out", FailureOf(Facade, 2))
  Note("wrong type", FailureOf(Facade, 3))
  Note("unknown to Basic", FailureOf(createUnoService("mirelo.cQTDatas"), 4))
End Sub

Function FailureOf(Called, Which As Integer) As String
  On Error GoTo Failed
  FailureOf = "none"
  If Which = 1 Then Called.NoSuchMember = 1
  If Which = 2 Then Called.DownloadURL()
  If Which = 3 Then Called.StatusRunWorkQT = "no number"
  If Which = 4 Then Called.Item("no such key")
  Exit Function
Failed:
  FailureOf = Err & " " & Replace(Error$, Chr(10), " ")
End Function

Sub Identity
  Dim Facade, Stream, Datas
  Datas = createUnoService("mirelo.cQTDatas")
  Stream = createUnoService("mirelo.cQTStreaming")
  Stream.QTConteiner = Datas
  Note("same object", EqualUnoObjects(Stream.QTConteiner, Datas))
End Sub

Function HasQuotes(Document, Row As Long) As Boolean
  Dim Sheet
  If Not Document.Sheets.hasByName("Quotes") Then Exit Function
  Sheet = Document.Sheets.getByName("Quotes")
  HasQuotes = Sheet.getCellByPosition(1, Row).Value > 0 And Sheet.getCellByPosition(3, Row).Value > 1
End Function

Sub NoteCells(Title As String, Document, First As Long)
  Dim Column As Long, Row As Long, Shown As String
  For Row = First To First + 1
    For Column = 0 To 3
      Shown = Shown & Document.Sheets.getByName("Quotes").getCellByPosition(Column, Row).String & "|"
    Next Column
  Next Row
  Note(Title, Shown)
End Sub
