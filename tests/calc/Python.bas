REM  Runs the macros in Python of examples/calc in a document of its own, where people write 28,25, and ends the office.

Option Explicit

Sub Main
  Dim Document, Tries As Integer
  On Error GoTo Failed
  Document = NewDocument()
  SetLocale("de-DE")
  RunPython("quotes.py$ask_quotes")
  NoteCells("asked", Document, 0)
  ChooseStart(Document)
  RunPython("quotes.py$start_stream")
  For Tries = 1 To 200
    If Count(Document, 10) > 1 And Count(Document, 11) > 1 Then Exit For
    Wait 50
  Next Tries
  WithAnotherInFront(Document)
  RunPython("quotes.py$stop_stream")
  ChooseStart(Document)
  WithItsDocumentClosed(Document)
  NoteCells("streamed", Document, 10)
  RunPython("members.py$look")
  Note("end", "reached")
  GoTo Done
Failed:
  Note("failed", Err & " " & Replace(Error$, Chr(10), " ") & " in line " & Erl)
Done:
  On Error Resume Next
  Document.close(True)
  StarDesktop.terminate()
End Sub

REM  Whoever opens another document while quotes come.
Sub WithAnotherInFront(Document)
  Dim Other, Before, Tries As Integer
  Other = NewDocument()
  Note("another in front", EqualUnoObjects(ThisComponent, Other))
  Before = Count(Document, 10)
  For Tries = 1 To 200
    If Count(Document, 10) > Before + 1 Then Exit For
    Wait 50
  Next Tries
  Note("comes behind another", Count(Document, 10) > Before)
  Note("cells of another", Count(Other, 10) + Count(Other, 11))
  Other.close(True)
End Sub

Sub WithItsDocumentClosed(Document)
  Dim Other
  Other = NewDocument()
  RunPython("quotes.py$start_stream")
  Other.close(True)
  ChooseStart(Document)
End Sub

REM  It is refused: while a macro holds the library for that, else since the document has no quote table.
Sub ChooseStart(Document)
  ChooseCommand(Document, "start")
End Sub

Function NewDocument()
  Dim Made
  Made = StarDesktop.loadComponentFromURL("private:factory/scalc", "_blank", 0, Array())
  Made.CurrentController.Frame.activate()
  NewDocument = Made
End Function

Function Count(Document, Row As Long) As Double
  Count = Document.Sheets(0).getCellByPosition(3, Row).Value
End Function

Sub NoteCells(Title As String, Document, First As Long)
  Dim Column As Long, Row As Long, Shown As String
  For Row = First To First + 1
    For Column = 0 To 3
      Shown = Shown & Document.Sheets(0).getCellByPosition(Column, Row).String & "|"
    Next Column
  Next Row
  Note(Title, Shown)
End Sub
