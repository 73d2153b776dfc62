REM  Runs the macros of examples/calc in a document of its own, notes what it finds, and ends the office.

Option Explicit

Sub Main
  Dim Document
  On Error GoTo Failed
  GlobalScope.BasicLibraries.loadLibrary("Examples")
  Document = StarDesktop.loadComponentFromURL(ConvertToURL(Environ("MIRELO_TABLE")), "_blank", 0, Array())

  AskQuotes
  NoteCells("asked", Document, 0)

  StartStream
  AwaitQuotes(Document)
  StopStream
  NoteCells("streamed", Document, 10)
  Note("status", Status)

  ShowSettings  ' nobody is there to press Go, so it is cancelled
  Note("stays as it was when cancelled", IsNull(Stream))

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

Sub AwaitQuotes(Document)
  Dim Tries As Integer
  For Tries = 1 To 200
    If HasQuotes(Document, 10) And HasQuotes(Document, 11) Then Exit For
    Wait 100  ' the office has its events meanwhile, and the stream its steps
  Next Tries
End Sub

Sub WriteThroughTheFacade(Document)
  Dim Application
  Facade.ExcelApplication = Document
  Application = Facade.ExcelApplication
  Application.Range("B30").Value = "1,234"
  Note("read back", Application.Range("B30").Value)
  Note("in the document", Document.Sheets(0).getCellRangeByName("B30").Value)
  Note("front sheet", Application.ActiveSheet.Name)
End Sub

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
